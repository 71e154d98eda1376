#include <gtest/gtest.h>

#include <string>

#include "math/random/orvRandomNumberGenerator.h"
#include "orvCore.h"
#include "support/orvCoreTestSupport.h"
#include "system/log/orvCoreLog.h"

namespace
{

class CoreLifecycleTest : public ::testing::Test
{
protected:
    void SetUp() override { orv::useCoreDefaultAllocator(); }
};

TEST_F(CoreLifecycleTest, NestedStartsNeedAsManyFinishes)
{
    orv::initCore();
    orv::initCore();
    EXPECT_EQ(2u, orv::getCoreInitCount());
    orv::finishCore();
    EXPECT_EQ(1u, orv::getCoreInitCount());
    EXPECT_TRUE(orv::isCoreLogValid());
    orv::finishCore();
    EXPECT_EQ(0u, orv::getCoreInitCount());
    EXPECT_FALSE(orv::isCoreLogValid());
}

TEST_F(CoreLifecycleTest, UnmatchedFinishWrapsTheCountAndTheNextStartDoesNoSetUp)
{
    orv::finishCore();
    EXPECT_EQ(4294967295u, orv::getCoreInitCount());
    orv::initCore();
    EXPECT_EQ(0u, orv::getCoreInitCount());
    EXPECT_FALSE(orv::isCoreLogValid());
    orv::initCore();
    EXPECT_EQ(1u, orv::getCoreInitCount());
    EXPECT_TRUE(orv::isCoreLogValid());
    orv::finishCore();
}

TEST_F(CoreLifecycleTest, RestartReseedsTheProcessWideGenerator)
{
    orv::initCore();
    const uint32_t first = orv::getRNG().rand();
    orv::getRNG().rand();
    orv::finishCore();
    orv::initCore();
    EXPECT_EQ(0u, orv::getRNG().getSeed());
    EXPECT_EQ(first, orv::getRNG().rand());
    orv::finishCore();
}

TEST_F(CoreLifecycleTest, CEntryPointsForwardToTheLibrary)
{
    orvUseCoreDefaultAllocator();
    EXPECT_NE(nullptr, orv::getDefaultAllocator());
    orvInitCore();
    EXPECT_EQ(1u, orv::getCoreInitCount());
    orvFinishCore();
    EXPECT_EQ(0u, orv::getCoreInitCount());
}

using CoreLifecycleDeathTest = CoreLifecycleTest;

TEST_F(CoreLifecycleDeathTest, StartWithoutAnAllocatorIsFatal)
{
    EXPECT_DEATH(
        {
            orv::setDefaultAllocator(nullptr);
            orv::initCore();
        },
        "Orvane assert failed: orv::getDefaultAllocator\\(\\) != NULL");
}

TEST(ProductInformationTest, CoreInformationHasTheLibraryTexts)
{
    const orv::ProductInformation& info = orv::getCoreProductInformation();
    EXPECT_STREQ("OrvaneCore", info.getProductName());
    EXPECT_STREQ("5.2[d749892]-2015/09/02", info.getVersionLabel());
    EXPECT_STREQ("2015/09/02", info.getReleaseDate());
    EXPECT_EQ(5u, info.getMajorVersion());
    EXPECT_EQ(2u, info.getMinorVersion());
    const std::string full = info.getCString();
    EXPECT_EQ(0u, full.find("OrvaneCore - 5.2.0.0 - Release 5.2[d749892]-2015/09/02 of 2015/09/02 - "));
}

TEST(ProductInformationTest, EmptyDescriptionHasNoTrailingSeparator)
{
    const orv::ProductInformation info("Tool", "", 1, 2, 3, 4, "label", "date");
    EXPECT_STREQ("Tool - 1.2.3.4 - Release label of date", info.getCString());
    const orv::ProductInformation described("Tool", "a tool", 1, 2, 3, 4, "label", "date");
    EXPECT_STREQ("Tool - 1.2.3.4 - Release label of date - a tool", described.getCString());
}

TEST(ProductInformationTest, OverlongNameIsTruncatedTo255Characters)
{
    const std::string name(300, 'n');
    const orv::ProductInformation info(name.c_str(), "", 0, 0, 0, 0, "", "");
    EXPECT_EQ(std::string(255, 'n'), info.getProductName());
}

TEST(ProductInformationTest, DefaultUnknownIsAllUnknown)
{
    const orv::ProductInformation info = orv::ProductInformation::getDefaultUnknown();
    EXPECT_STREQ("Unknown - 0.0.0.0 - Release Unknown of Unknown - Unknown", info.getCString());
}

} // namespace
