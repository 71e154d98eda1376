#include <gtest/gtest.h>

#include <vector>

#include "system/containers/orvArray.h"
#include "system/containers/orvPODArray.h"

namespace
{

/// Counts live instances, so construction and destruction can be checked.
struct Counted
{
    static int live;
    int value = 0;
    Counted() { ++live; }
    Counted(int v) : value(v) { ++live; }
    Counted(const Counted& other) : value(other.value) { ++live; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --live; }
    bool operator==(const Counted& other) const { return value == other.value; }
};
int Counted::live = 0;

template <typename A>
class BothArraysTest : public ::testing::Test
{
};
using ArrayTypes = ::testing::Types<orv::Array<int>, orv::PODArray<int>>;
TYPED_TEST_SUITE(BothArraysTest, ArrayTypes);

TYPED_TEST(BothArraysTest, EmptyArrayHasNoBlockAndFirstPushGivesEight)
{
    TypeParam a;
    EXPECT_EQ(nullptr, a._data);
    EXPECT_EQ(0u, a.capacity());
    EXPECT_TRUE(a.empty());
    EXPECT_EQ(a.begin(), a.end());
    a.push_back(1);
    EXPECT_EQ(8u, a.capacity());
    EXPECT_TRUE(a.any());
}

TYPED_TEST(BothArraysTest, PushBackCapacityRunsEightTwentyFourFiftySixOneTwenty)
{
    TypeParam a;
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
    for (int i = 0; i < 120; ++i)
    {
        ASSERT_EQ(i, a[i]);
    }
}

TYPED_TEST(BothArraysTest, GrowAndResizeTakeTheLargerOfNeedAndDoublePlusEight)
{
    TypeParam a;
    a.grow(3);
    EXPECT_EQ(8u, a.capacity());
    a.grow(100);
    EXPECT_EQ(100u, a.capacity());
    a.resize(150);
    EXPECT_EQ(208u, a.capacity());
    a.resize(500);
    EXPECT_EQ(500u, a.capacity());
    a.resize(10);
    EXPECT_EQ(500u, a.capacity());
    EXPECT_EQ(10u, a.size());
    a.reserve(20);
    EXPECT_EQ(500u, a.capacity());
}

TYPED_TEST(BothArraysTest, SetCapacityCutsTheSizeAndZeroFreesTheBlock)
{
    TypeParam a;
    for (int i = 0; i < 10; ++i)
    {
        a.push_back(i);
    }
    a.set_capacity(4);
    EXPECT_EQ(4u, a.size());
    EXPECT_EQ(3, a.back());
    a.trim();
    EXPECT_EQ(4u, a.capacity());
    a.set_capacity(0);
    EXPECT_EQ(nullptr, a._data);
    EXPECT_EQ(0u, a.size());
}

TYPED_TEST(BothArraysTest, EraseMovesTheTailDownAndReturnsTheNextPosition)
{
    TypeParam a;
    for (int i = 0; i < 6; ++i)
    {
        a.push_back(i);
    }
    int* next = a.erase(a.begin() + 1);
    EXPECT_EQ(2, *next);
    next = a.erase(a.begin() + 1, a.begin() + 3);
    EXPECT_EQ(4, *next);
    EXPECT_EQ(a.end(), a.erase(a.end() - 1));
    ASSERT_EQ(2u, a.size());
    EXPECT_EQ(0, a[0]);
    EXPECT_EQ(4, a[1]);
}

TYPED_TEST(BothArraysTest, InsertShiftsTheTailAndSurvivesGrowth)
{
    TypeParam a;
    for (int i = 0; i < 8; ++i)
    {
        a.push_back(i);
    }
    // Full block: the insertion reallocates, and the value comes from the block itself.
    int* at = a.insert(a.begin() + 2, a[7]);
    EXPECT_EQ(a.begin() + 2, at);
    at = a.insert(a.end(), 3, a[0]);
    EXPECT_EQ(a.begin() + 9, at);
    const int expected[] = {0, 1, 7, 2, 3, 4, 5, 6, 7, 0, 0, 0};
    ASSERT_EQ(12u, a.size());
    for (size_t i = 0; i < 12; ++i)
    {
        EXPECT_EQ(expected[i], a[i]) << i;
    }
}

TYPED_TEST(BothArraysTest, PushBackOfOwnElementAtFullCapacityCopiesBeforeGrowing)
{
    TypeParam a;
    for (int i = 0; i < 8; ++i)
    {
        a.push_back(i + 100);
    }
    a.push_back(a[3]);
    EXPECT_EQ(103, a.back());
    a.resize(30, a[0]);
    EXPECT_EQ(100, a.back());
}

TYPED_TEST(BothArraysTest, CopiesAreIndependentAndCompareEqual)
{
    TypeParam a(5, 7);
    TypeParam b(a);
    EXPECT_TRUE(a == b);
    b[2] = 8;
    EXPECT_TRUE(a != b);
    EXPECT_EQ(7, a[2]);
    a = b;
    // Self-assignment must keep the elements.
    TypeParam& alias = a;
    a = alias;
    EXPECT_EQ(8, a[2]);
    b.push_back(1);
    EXPECT_NE(a.size(), b.size());
    TypeParam moved(std::move(b));
    EXPECT_EQ(6u, moved.size());
    EXPECT_EQ(0u, b.size());
}

TEST(PODArrayTest, BuildsFromASourceAndZeroFillsOnResize)
{
    const int source[] = {4, 5, 6};
    orv::PODArray<int> a(3, source);
    EXPECT_EQ(3u, a.capacity());
    EXPECT_EQ(6, a[2]);
    a.resize(6);
    EXPECT_EQ(0, a[5]);
    a.assign(2, source + 1);
    EXPECT_EQ(2u, a.size());
    EXPECT_EQ(5, a[0]);
    orv::PODArray<int*> pointers(4, nullptr);
    EXPECT_EQ(nullptr, pointers[3]);
}

class ArrayLifetimeTest : public ::testing::Test
{
protected:
    void SetUp() override { Counted::live = 0; }
    void TearDown() override { EXPECT_EQ(0, Counted::live); }
};

TEST_F(ArrayLifetimeTest, ClearDestroysEveryElementAndKeepsTheBlock)
{
    orv::Array<Counted> a;
    a.resize(10);
    EXPECT_EQ(10, Counted::live);
    a.clear();
    EXPECT_EQ(0, Counted::live);
    EXPECT_EQ(10u, a.capacity());
}

TEST_F(ArrayLifetimeTest, ShrinkingEraseAndPopDestroyTheSurplus)
{
    orv::Array<Counted> a(12, Counted(3));
    a.resize(9);
    EXPECT_EQ(9, Counted::live);
    a.pop_back();
    a.erase(a.begin(), a.begin() + 2);
    EXPECT_EQ(6, Counted::live);
    a.set_capacity(4);
    EXPECT_EQ(4, Counted::live);
    a.insert(a.begin() + 1, 3, Counted(9));
    EXPECT_EQ(7, Counted::live);
    EXPECT_EQ(9, a[3].value);
    EXPECT_EQ(3, a[4].value);
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
