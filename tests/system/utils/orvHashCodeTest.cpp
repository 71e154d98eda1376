#include <gtest/gtest.h>

#include "system/utils/orvHashCode.h"

namespace
{

TEST(HashCodeTest, KeepsItsPublishedValuesWithBytesAbove127CountingAsNegative)
{
    // (31 * 'a' XOR 1) + (31 * 'b' XOR 0).
    EXPECT_EQ(6044, orv::getHashCode("ab"));
    EXPECT_EQ(0, orv::getHashCode(""));
    EXPECT_EQ(0, orv::getHashCode(nullptr));
    // (-31 XOR 1) + (-31 XOR 0) = -32 - 31.
    EXPECT_EQ(-63, orv::getHashCode("\xFF\xFF"));
    EXPECT_EQ(-128 * 31, orv::getHashCode("\x80"));
}

} // namespace
