#include <gtest/gtest.h>

#include "system/utils/orvHashCode.h"

namespace
{

TEST(HashCodeTest, KeepsItsPublishedValues)
{
    // (31 * 'a' XOR 1) + (31 * 'b' XOR 0).
    EXPECT_EQ(6044, orv::getHashCode("ab"));
    EXPECT_EQ(6046, orv::getHashCode("ba"));
    EXPECT_EQ(31 * 'x', orv::getHashCode("x"));
}

TEST(HashCodeTest, EmptyAndNullTextsHashToZero)
{
    EXPECT_EQ(0, orv::getHashCode(""));
    EXPECT_EQ(0, orv::getHashCode(nullptr));
}

TEST(HashCodeTest, BytesAbove127CountAsNegative)
{
    EXPECT_EQ(-31, orv::getHashCode("\xFF"));
    // (-31 XOR 1) + (-31 XOR 0) = -32 - 31.
    EXPECT_EQ(-63, orv::getHashCode("\xFF\xFF"));
    EXPECT_EQ(-128 * 31, orv::getHashCode("\x80"));
}

} // namespace
