#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "system/containers/orvArray.h"
#include "system/containers/orvQuickSort.h"

namespace
{

TEST(OrvQuickSortTest, SortsEveryShapeOfInput)
{
    std::mt19937 random(3);
    for (size_t length : {0u, 1u, 2u, 3u, 16u, 17u, 18u, 100u, 5000u})
    {
        // Many keys, three keys, ascending and descending.
        for (int shape = 0; shape < 4; ++shape)
        {
            orv::Array<int> values;
            for (size_t i = 0; i < length; ++i)
            {
                const size_t shaped[] = {random() % 1000, random() % 3, i, length - i};
                values.push_back(static_cast<int>(shaped[shape]));
            }
            std::vector<int> expected(values.begin(), values.end());
            std::sort(expected.begin(), expected.end());
            orv::orvQuickSort(values.begin(), values.end());
            EXPECT_EQ(expected, std::vector<int>(values.begin(), values.end())) << length << " shape " << shape;
        }
    }
}

} // namespace
