#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvRTTIAccessor.h"
#include "system/inspection/orvUuid.h"
#include "system/inspection/orvInspectionTestSupport.h"

namespace
{

using orv::Uuid;

TEST(UuidTest, PrintedTextParsesBackToTheSameIdentifierInEitherCase)
{
    const char* texts[] = {"fac19457-d459-4f19-8218-65943a7de958", "00000000-0000-0000-0000-000000000001",
                           "ffffffff-ffff-ffff-ffff-ffffffffffff", "0a0b0c0d-0e0f-0102-0304-050607080900"};
    for (const char* text : texts)
    {
        const Uuid id(text);
        EXPECT_STREQ(text, id.getString().c_str());
        EXPECT_EQ(id, Uuid(id.getString().c_str()));
    }
    const Uuid upper("FAC19457-D459-4F19-8218-65943A7DE958");
    EXPECT_STREQ("fac19457-d459-4f19-8218-65943a7de958", upper.getString().c_str());
    EXPECT_EQ(0xfac19457u, upper._data0);
    EXPECT_EQ(0x82u, upper._data3[0]);
}

TEST(UuidTest, MalformedTextLeavesZeroesFromWhereItStops)
{
    EXPECT_TRUE(Uuid().isNull());
    EXPECT_TRUE(Uuid(nullptr).isNull());
    EXPECT_TRUE(Uuid("").isNull());
    EXPECT_TRUE(Uuid("not an identifier").isNull());

    const Uuid cut("12345678-9abc-zzzz");
    EXPECT_EQ(0x12345678u, cut._data0);
    EXPECT_EQ(0x9abcu, cut._data1);
    EXPECT_EQ(0u, cut._data2);
    EXPECT_STREQ("12345678-9abc-0000-0000-000000000000", cut.getString().c_str());
    // The same text gives the same value each time.
    EXPECT_EQ(cut, Uuid("12345678-9abc-zzzz"));
}

TEST(UuidTest, OrderIsThatOfTheStoredBytesNotOfTheText)
{
    // _data0 is stored little-endian: 0x100 starts with byte 00, 0x1 with byte 01.
    const Uuid big("00000100-0000-0000-0000-000000000000");
    const Uuid small("00000001-0000-0000-0000-000000000000");
    EXPECT_TRUE(big < small);
    EXPECT_TRUE(small > big);
    EXPECT_FALSE(small < big);
    EXPECT_NE(big, small);

    const Uuid a("00000000-0000-0000-0000-000000000001");
    const Uuid b("00000000-0000-0000-0000-000000000002");
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(a < a);
    EXPECT_FALSE(a > a);
}

TEST(UuidTest, CompositionDoublesTheRightLeadingFieldsAndTheLeftTrailingBytes)
{
    const Uuid a("00000001-0002-0003-0405-060708090a0b");
    const Uuid b("10000000-1000-1000-1010-101010101010");
    EXPECT_STREQ("20000001-2002-2003-181a-1c1e20222426", (a + b).getString().c_str());
    EXPECT_STREQ("10000002-1004-1006-2425-262728292a2b", (b + a).getString().c_str());
    EXPECT_NE(a + b, b + a);

    // Each field wraps at its own width.
    const Uuid high("ffffffff-ffff-ffff-ffff-ffffffffffff");
    EXPECT_STREQ("fffffffd-fffd-fffd-fdfd-fdfdfdfdfdfd", (high + high).getString().c_str());
}

TEST(UuidTest, AddingANumberChangesTheFirstFieldOnly)
{
    const Uuid base("fffffffe-1111-2222-3333-444444444444");
    EXPECT_STREQ("ffffffff-1111-2222-3333-444444444444", (base + 1u).getString().c_str());
    EXPECT_STREQ("00000001-1111-2222-3333-444444444444", (base + 3u).getString().c_str());
}

TEST(UuidTest, CreatedIdentifiersAreFreshAndNotNull)
{
    const Uuid first = Uuid::createUuid();
    const Uuid second = Uuid::createUuid();
    EXPECT_FALSE(first.isNull());
    EXPECT_NE(first, second);
    EXPECT_EQ(first, Uuid(first.getString().c_str()));
}

TEST(UuidTest, CreationWithoutUuidgenGivesTheNullIdentifier)
{
    const char* path = getenv("PATH");
    const std::string saved = path != nullptr ? path : "";
    setenv("PATH", "/nonexistent-directory", 1);
    const Uuid id = Uuid::createUuid();
    setenv("PATH", saved.c_str(), 1);
    EXPECT_TRUE(id.isNull());
}

using BaseTypeIdentifierTest = orvtest::InspectionTest;

TEST_F(BaseTypeIdentifierTest, VectorsDifferByOneAndTwoInTheFirstFieldOnly)
{
    const Uuid v2 = orv::RTTIAccessor<orv::Vector2>::getClassRTTI()->getTypeID();
    const Uuid v3 = orv::RTTIAccessor<orv::Vector3>::getClassRTTI()->getTypeID();
    const Uuid v4 = orv::RTTIAccessor<orv::Vector4>::getClassRTTI()->getTypeID();
    EXPECT_STREQ("bea86cb0-bd86-c807-fbaf-5e838ef2cf80", v2.getString().c_str());
    EXPECT_EQ(v2 + 1u, v3);
    EXPECT_EQ(v2 + 2u, v4);
    EXPECT_STREQ("orv::Vector3", orv::RTTI::getTypeName(v3));
}

TEST_F(BaseTypeIdentifierTest, TemplateIdentifierComposesTheBaseWithTheArgument)
{
    // The identifier of orv::IndexTriplet<int>, which binary files hold.
    const Uuid intTypeID = orv::RTTI::getTypeID("int");
    EXPECT_STREQ("e7aba3a3-34e5-414f-95ad-f1b0a3163240", intTypeID.getString().c_str());
    EXPECT_STREQ("e4682c45-6aac-cb1a-d333-71dcbff4fc3a",
                 (Uuid("1510e4ff-00e2-487c-9fc3-c0160eef657d") + intTypeID).getString().c_str());
}

} // namespace
