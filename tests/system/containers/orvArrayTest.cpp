#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "system/containers/orvArray.h"
#include "system/containers/orvCounted.h"
#include "system/containers/orvPODArray.h"

namespace
{

using orvtest::Counted;

template <typename A>
class BothArraysTest : public ::testing::Test
{
};
using ArrayTypes = ::testing::Types<orv::Array<int>, orv::PODArray<int>>;
TYPED_TEST_SUITE(BothArraysTest, ArrayTypes);

TYPED_TEST(BothArraysTest, PushBackCapacityRunsEightTwentyFourFiftySixOneTwentyFromNoBlock)
{
    TypeParam a;
    EXPECT_EQ(nullptr, a._data);
    std::vector<size_t> capacities;
    for (int i = 0; i < 120; ++i)
    {
        a.push_back(i);
        if (capacities.empty() || capacities.back() != a.capacity())
        {
            capacities.push_back(a.capacity());
        }
    }
    EXPECT_EQ((std::vector<size_t>{8, 24, 56, 120}), capacities);
    std::vector<int> expected(120);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(expected, std::vector<int>(a.begin(), a.end()));
}

TYPED_TEST(BothArraysTest, GrowAndResizeTakeTheLargerOfNeedAndDoublePlusEightAndResizeZeroFills)
{
    TypeParam a;
    a.grow(3);
    EXPECT_EQ(8u, a.capacity());
    a.grow(100);
    EXPECT_EQ(100u, a.capacity());
    a.resize(150, 7);
    EXPECT_EQ(208u, a.capacity());
    a.resize(500);
    EXPECT_EQ(500u, a.capacity());
    // Shrinking keeps the block; growing back inside it fills with zeros, not with the old values.
    a.resize(10);
    a.reserve(20);
    EXPECT_EQ(500u, a.capacity());
    a.resize(12);
    EXPECT_EQ(7, a[9]);
    EXPECT_EQ(0, a[11]);
}

TYPED_TEST(BothArraysTest, EraseMovesTheTailDownAndSetCapacityCutsTheSize)
{
    TypeParam a(10, 0);
    std::iota(a.begin(), a.end(), 0);
    EXPECT_EQ(2, *a.erase(a.begin() + 1));
    EXPECT_EQ(5, *a.erase(a.begin() + 1, a.begin() + 4));
    // Erasing the last element shrinks the array: read its end only once erase has returned.
    const auto afterLast = a.erase(a.end() - 1);
    EXPECT_EQ(a.end(), afterLast);
    EXPECT_EQ((std::vector<int>{0, 5, 6, 7, 8}), std::vector<int>(a.begin(), a.end()));
    a.set_capacity(3);
    EXPECT_EQ((std::vector<int>{0, 5, 6}), std::vector<int>(a.begin(), a.end()));
    a.set_capacity(0);
    EXPECT_EQ(nullptr, a._data);
    EXPECT_EQ(0u, a.size());
}

TYPED_TEST(BothArraysTest, ElementsOfTheBlockItselfSurviveTheGrowthTheyCause)
{
    // Full block: each call reallocates, and the value comes from the block being released.
    TypeParam a(8, 0);
    std::iota(a.begin(), a.end(), 0);
    // Each insert moves the block: read its begin only once insert has returned.
    const auto inserted = a.insert(a.begin() + 2, a[7]);
    EXPECT_EQ(a.begin() + 2, inserted);
    const auto filled = a.insert(a.end(), 3, a[0]);
    EXPECT_EQ(a.begin() + 9, filled);
    EXPECT_EQ((std::vector<int>{0, 1, 7, 2, 3, 4, 5, 6, 7, 0, 0, 0}), std::vector<int>(a.begin(), a.end()));
    TypeParam b(8, 0);
    std::iota(b.begin(), b.end(), 100);
    b.push_back(b[3]);
    EXPECT_EQ(103, b.back());
    b.resize(30, b[0]);
    EXPECT_EQ(100, b.back());
}

TYPED_TEST(BothArraysTest, CopiesAreIndependentAndSelfAssignmentKeepsTheElements)
{
    TypeParam a(5, 7);
    TypeParam b(a);
    b[2] = 8;
    EXPECT_TRUE(a != b);
    EXPECT_EQ(7, a[2]);
    a = b;
    TypeParam& alias = a;
    a = alias;
    EXPECT_TRUE(a == b);
    TypeParam moved(std::move(b));
    EXPECT_EQ(5u, moved.size());
    EXPECT_EQ(0u, b.size());
}

TEST(ArrayLifetimeTest, EveryElementIsDestroyedOnceWhenTheArrayShrinksOrClears)
{
    Counted::live = 0;
    {
        orv::Array<Counted> a(12, Counted(3));
        EXPECT_EQ(12, Counted::live);
        a.resize(9);
        a.pop_back();
        a.erase(a.begin(), a.begin() + 2);
        EXPECT_EQ(6, Counted::live);
        a.set_capacity(4);
        EXPECT_EQ(4, Counted::live);
        a.insert(a.begin() + 1, 3, Counted(9));
        EXPECT_EQ(7, Counted::live);
        EXPECT_EQ(9, a[3].value);
        EXPECT_EQ(3, a[4].value);
        const size_t capacity = a.capacity();
        a.clear();
        EXPECT_EQ(0, Counted::live);
        EXPECT_EQ(capacity, a.capacity());
        a.resize(10);
        EXPECT_EQ(10, Counted::live);
    }
    EXPECT_EQ(0, Counted::live);
}

using ArrayDeathTest = ::testing::Test;

TEST_F(ArrayDeathTest, AtPastTheEndIsFatal)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    orv::Array<int> a(3, 0);
    EXPECT_DEATH(a.at(3), "index < _size");
    orv::PODArray<int> p(3, 0);
    EXPECT_DEATH(p.at(3), "index < _size");
}

} // namespace
