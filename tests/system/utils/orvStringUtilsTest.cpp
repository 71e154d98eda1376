#include <gtest/gtest.h>

#include <cstring>

#include "system/containers/orvArray.h"
#include "system/utils/orvStringUtils.h"

namespace
{

using orv::OrvString;

TEST(StringUtilsTest, SplitAppendsEveryPieceIncludingEmptyOnes)
{
    orv::Array<OrvString> parts;
    orv::split("a,b,,c,", ",", parts);
    ASSERT_EQ(5u, parts.size());
    EXPECT_STREQ("", parts[2].c_str());
    EXPECT_STREQ("", parts[4].c_str());
    // An empty text or separator adds nothing.
    orv::split("one::two", "::", parts);
    orv::split("", ",", parts);
    orv::split("x,y", "", parts);
    ASSERT_EQ(7u, parts.size());
    EXPECT_STREQ("two", parts[6].c_str());
}

TEST(StringUtilsTest, LongestCommonSubstringPrefersTheFirstInTheLeftText)
{
    EXPECT_STREQ("Spine", orv::longuestCommonSubstring("LeftSpine1", "Spine_2").c_str());
    EXPECT_STREQ("ab", orv::longuestCommonSubstring("abxcd", "cdab").c_str());
    EXPECT_STREQ("", orv::longuestCommonSubstring("abc", "xyz").c_str());
}

TEST(StringUtilsTest, NumbersAppendInDecimal)
{
    EXPECT_STREQ("n4294967295", (OrvString("n") + 4294967295u).c_str());
    EXPECT_STREQ("n1.5", (OrvString("n") + 1.5f).c_str());
}

TEST(AlphaNumerizeTest, BlanksRaiseTheNextLetterAndAccentsFold)
{
    char copy[64];
    EXPECT_TRUE(orv::alphaNumerizeNameWithCopy("owner name", copy));
    EXPECT_STREQ("ownerName", copy);
    // Latin-1: e-acute, e-grave, a-grave, u-circumflex, i-diaeresis, o-diaeresis.
    EXPECT_TRUE(orv::alphaNumerizeNameWithCopy("\xE9t\xE8 \xE0 \xFB\xEF\xF6", copy));
    EXPECT_STREQ("eteAUio", copy);
    EXPECT_TRUE(orv::alphaNumerizeNameWithCopy("left-hand.x ", copy));
    EXPECT_STREQ("left_hand_x", copy);
    // Other bytes above 127, such as UTF-8 lead bytes, become '_'.
    EXPECT_TRUE(orv::alphaNumerizeNameWithCopy("\xC3\xA9", copy));
    EXPECT_STREQ("__", copy);
    EXPECT_FALSE(orv::alphaNumerizeNameWithCopy("_speed2", copy));
    EXPECT_STREQ("_speed2", copy);

    OrvString name("max speed");
    EXPECT_TRUE(orv::alphaNumerizeName(name));
    EXPECT_STREQ("maxSpeed", name.c_str());
}

TEST(AlphaNumerizeTest, OnlyChangedNamesTakeRoomInTheBuffer)
{
    const char* unchanged = "walkSpeed";
    const int32_t before = orv::getAlphaNumericCopiesBufferIndex();
    EXPECT_EQ(unchanged, orv::alphaNumerizeNameStr(unchanged));
    EXPECT_EQ(before, orv::getAlphaNumericCopiesBufferIndex());
    const char* first = orv::alphaNumerizeNameStr("walk speed");
    EXPECT_EQ(before + 10, orv::getAlphaNumericCopiesBufferIndex());
    EXPECT_STREQ("walkSpeed", first);
    EXPECT_NE(first, orv::alphaNumerizeNameStr("walk speed"));
}

TEST(AlphaNumerizeDeathTest, AFullBufferIsFatal)
{
    char name[1024];
    memset(name, ' ', sizeof(name) - 1);
    name[sizeof(name) - 1] = '\0';
    name[0] = 'a';
    EXPECT_DEATH(
        {
            for (int i = 0; i < 70000; ++i)
            {
                orv::alphaNumerizeNameStr(name);
            }
        },
        "alphaNumericCopiesBufferIndex <= ALPHANUM_BUFFER_SIZE");
}

} // namespace
