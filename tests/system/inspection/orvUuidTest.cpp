#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "system/inspection/orvInspectionTestSupport.h"
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvRTTIAccessor.h"
#include "system/inspection/orvUuid.h"

namespace
{

using orv::Uuid;

TEST(UuidTest, PrintedTextParsesBackToTheSameIdentifierInEitherCase)
{
    for (const char* text : {"fac19457-d459-4f19-8218-65943a7de958", "0a0b0c0d-0e0f-0102-0304-050607080900"})
    {
        EXPECT_STREQ(text, Uuid(text).getString().c_str());
        EXPECT_EQ(Uuid(text), Uuid(Uuid(text).getString().c_str()));
    }
    const Uuid upper("FAC19457-D459-4F19-8218-65943A7DE958");
    EXPECT_STREQ("fac19457-d459-4f19-8218-65943a7de958", upper.getString().c_str());
}

TEST(UuidTest, MalformedTextLeavesZeroesFromWhereItStops)
{
    EXPECT_TRUE(Uuid(nullptr).isNull());
    EXPECT_TRUE(Uuid("not an identifier").isNull());
    const Uuid cut("12345678-9abc-zzzz");
    EXPECT_STREQ("12345678-9abc-0000-0000-000000000000", cut.getString().c_str());
    EXPECT_EQ(cut, Uuid("12345678-9abc-zzzz"));
}

TEST(UuidTest, OrderIsThatOfTheStoredBytesNotOfTheText)
{
    // _data0 is stored little-endian: 0x100 starts with byte 00, 0x1 with byte 01.
    const Uuid big("00000100-0000-0000-0000-000000000000");
    const Uuid small("00000001-0000-0000-0000-000000000000");
    EXPECT_TRUE(big < small);
    EXPECT_FALSE(small < small);
    EXPECT_TRUE(Uuid("00000000-0000-0000-0000-000000000001") < Uuid("00000000-0000-0000-0000-000000000002"));
}

TEST(UuidTest, CompositionDoublesTheRightLeadingFieldsAndTheLeftTrailingBytes)
{
    const Uuid a("00000001-0002-0003-0405-060708090a0b");
    const Uuid b("10000000-1000-1000-1010-101010101010");
    EXPECT_STREQ("20000001-2002-2003-181a-1c1e20222426", (a + b).getString().c_str());
    EXPECT_STREQ("10000002-1004-1006-2425-262728292a2b", (b + a).getString().c_str());
    // Each field wraps at its own width; a number changes the first field only.
    const Uuid high("ffffffff-ffff-ffff-ffff-ffffffffffff");
    EXPECT_STREQ("fffffffd-fffd-fffd-fdfd-fdfdfdfdfdfd", (high + high).getString().c_str());
    EXPECT_STREQ("00000001-ffff-ffff-ffff-ffffffffffff", (high + 2u).getString().c_str());
}

TEST(UuidTest, CreatedIdentifiersAreFreshAndNullWithoutUuidgen)
{
    const Uuid first = Uuid::createUuid();
    EXPECT_FALSE(first.isNull());
    EXPECT_NE(first, Uuid::createUuid());

    const char* path = getenv("PATH");
    const std::string saved = path != nullptr ? path : "";
    setenv("PATH", "/nonexistent-directory", 1);
    const Uuid none = Uuid::createUuid();
    setenv("PATH", saved.c_str(), 1);
    EXPECT_TRUE(none.isNull());
}

using BaseTypeIdentifierTest = orvtest::InspectionTest;

TEST_F(BaseTypeIdentifierTest, VectorsDifferByOneAndTwoInTheFirstFieldOnly)
{
    const Uuid v2 = orv::RTTIAccessor<orv::Vector2>::getClassRTTI()->getTypeID();
    EXPECT_STREQ("bea86cb0-bd86-c807-fbaf-5e838ef2cf80", v2.getString().c_str());
    EXPECT_EQ(v2 + 1u, orv::RTTIAccessor<orv::Vector3>::getClassRTTI()->getTypeID());
    EXPECT_EQ(v2 + 2u, orv::RTTIAccessor<orv::Vector4>::getClassRTTI()->getTypeID());
}

} // namespace
