#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "support/orvAllocationCounter.h"

namespace
{

// The counter is the judge of the no-allocation tests: it must see allocations, whoever makes them.
TEST(AllocationCounterTest, CountsMallocAndNewOnEveryThreadOnlyWhileStarted)
{
    orvtest::ScopedAllocationCount count;
    // Volatile, so that no optimiser drops an allocation whose block is never read.
    void* volatile block = std::malloc(16);
    int* volatile value = new int(3);
    std::thread(
        []()
        {
            int* volatile other = new int(4);
            delete other;
        })
        .join();
    const int counted = count.stop();
    std::free(block);
    delete value;
    // The thread's own start-up may allocate too.
    EXPECT_GE(counted, 3);

    void* volatile after = std::malloc(16);
    std::free(after);
    EXPECT_EQ(counted, orvtest::AllocationCounter::getCount());
}

} // namespace
