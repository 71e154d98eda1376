#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "system/containers/orvArray.h"
#include "system/containers/orvQuickSort.h"
#include "system/containers/orvString.h"

namespace
{

std::vector<int> sortedCopy(std::vector<int> values)
{
    std::vector<int> expected = values;
    std::sort(expected.begin(), expected.end());
    orv::orvQuickSort(values.begin(), values.end());
    EXPECT_EQ(expected, values);
    return values;
}

TEST(OrvQuickSortTest, SortsEveryShapeOfInput)
{
    std::mt19937 random(3);
    for (size_t length : {0u, 1u, 2u, 3u, 16u, 17u, 18u, 100u, 5000u})
    {
        std::vector<int> values(length);
        for (int& value : values)
        {
            value = static_cast<int>(random() % 1000);
        }
        sortedCopy(values);
        std::vector<int> fewKeys(length);
        for (int& value : fewKeys)
        {
            value = static_cast<int>(random() % 3);
        }
        sortedCopy(fewKeys);
        std::vector<int> ascending(length);
        for (size_t i = 0; i < length; ++i)
        {
            ascending[i] = static_cast<int>(i);
        }
        sortedCopy(ascending);
        std::reverse(ascending.begin(), ascending.end());
        sortedCopy(ascending);
    }
}

TEST(OrvQuickSortTest, SortsArraysOfStringsThroughRawPointers)
{
    orv::Array<orv::OrvString> names;
    for (int i = 0; i < 40; ++i)
    {
        names.push_back(orv::OrvString(1 + i % 3, static_cast<char>('z' - i % 17)));
    }
    orv::orvQuickSort(names.begin(), names.end());
    for (size_t i = 1; i < names.size(); ++i)
    {
        EXPECT_FALSE(names[i] < names[i - 1]) << i;
    }
}

} // namespace
