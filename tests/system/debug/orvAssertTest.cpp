#include <gtest/gtest.h>

#include <string>

#include "support/orvCoreTestSupport.h"
#include "system/debug/orvAssert.h"

namespace
{

TEST(AssertDeathTest, FailedAssertionReportsSiteConditionAndMessageThenDies)
{
    const int count = 3;
    EXPECT_DEATH(orvAssertMsg(count < 2, "count is %d", count),
                 "orvAssertTest.cpp\\([0-9]+\\) : .*\n\nOrvane assert failed: count < 2\ncount is 3");
}

TEST(AssertDeathTest, AssertionBeforeTheLibraryStartsStillPrints)
{
    EXPECT_DEATH(orvAssert(1 + 1 == 3), "Orvane assert failed: 1 \\+ 1 == 3");
}

TEST(AssertDeathTest, ExitPrintsTheSiteAndTheMessage)
{
    EXPECT_DEATH(orvExit("giving up after %d tries", 4), "Orvane exit:\ngiving up after 4 tries");
}

TEST(AssertOutputTest, OverlongMessageIsCutAtTheBufferEnd)
{
    const std::string longText(5000, 'x');
    ::testing::internal::CaptureStderr();
    orv::assertFailedOutput("false", "f.cpp", "fn", 1, "%s", longText.c_str());
    const std::string output = ::testing::internal::GetCapturedStderr();
    // 2,047 characters of report and the terminator, then the line end that printing adds.
    EXPECT_EQ(2047u + 1u, output.size());
    EXPECT_EQ(0u, output.find("f.cpp(1) : fn\n\nOrvane assert failed: false\nxxx"));
}

class AssertWithCoreLogTest : public orvtest::CoreTest
{
};

TEST_F(AssertWithCoreLogTest, AssertionAlsoReachesTheCoreLog)
{
    EXPECT_DEATH(orvAssert(false), "\\[CRITICAL\\] - .*Orvane assert failed: false");
}

} // namespace
