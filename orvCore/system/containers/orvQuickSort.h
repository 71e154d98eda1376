// orvCore/system/containers/orvQuickSort.h
#pragma once

#include <cstddef>
#include <iterator>
#include <utility>

namespace orv
{

/// Sorts [first, last) of a random-access range in place by less; not stable. The recursion goes into the
/// smaller side only, so the stack depth stays logarithmic.
template <typename Iterator, typename Less>
void orvQuickSort(Iterator first, Iterator last, Less less)
{
    typedef typename std::iterator_traits<Iterator>::value_type Value;
    using std::swap;

    // Below this length insertion sort does less work than partitioning.
    const ptrdiff_t kInsertionSortLength = 16;
    ptrdiff_t count = last - first;
    while (count > kInsertionSortLength)
    {
        // Median of three: a pivot value that is in the range keeps both scans inside it.
        ptrdiff_t low = 0;
        ptrdiff_t middle = count / 2;
        ptrdiff_t high = count - 1;
        if (less(first[middle], first[low]))
        {
            swap(first[middle], first[low]);
        }
        if (less(first[high], first[middle]))
        {
            swap(first[high], first[middle]);
            if (less(first[middle], first[low]))
            {
                swap(first[middle], first[low]);
            }
        }
        const Value pivot = first[middle];

        ptrdiff_t i = 0;
        ptrdiff_t j = count - 1;
        while (i <= j)
        {
            while (less(first[i], pivot))
            {
                ++i;
            }
            while (less(pivot, first[j]))
            {
                --j;
            }
            if (i <= j)
            {
                swap(first[i], first[j]);
                ++i;
                --j;
            }
        }
        // Now [0, j] holds no element above the pivot and [i, count) none below it.
        if (j + 1 < count - i)
        {
            orvQuickSort(first, first + (j + 1), less);
            first += i;
            count -= i;
        }
        else
        {
            orvQuickSort(first + i, first + count, less);
            count = j + 1;
        }
    }

    for (ptrdiff_t k = 1; k < count; ++k)
    {
        Value value = std::move(first[k]);
        ptrdiff_t m = k;
        while (m > 0 && less(value, first[m - 1]))
        {
            first[m] = std::move(first[m - 1]);
            --m;
        }
        first[m] = std::move(value);
    }
}

/// Sorts [first, last) of a random-access range in place by operator<; not stable.
template <typename Iterator>
void orvQuickSort(Iterator first, Iterator last)
{
    typedef typename std::iterator_traits<Iterator>::value_type Value;
    orvQuickSort(first, last, [](const Value& a, const Value& b) { return a < b; });
}

} // namespace orv
