// tests/support/orvAllocationCounter.h
#pragma once

namespace orvtest
{

/// Counts the heap allocations of the whole process (malloc, calloc, realloc, and so new), on every thread,
/// between start() and stop(). Under AddressSanitizer it counts through the sanitizer's malloc hook, elsewhere by
/// standing in for the C library's malloc. Start and stop it on the test's thread.
class AllocationCounter
{
public:
    /// Sets the count to 0 and starts counting.
    static void start();
    /// Stops counting; the count stays readable.
    static void stop();
    /// Allocations counted between the last start() and stop().
    static int getCount();
};

/// Counts the allocations of one scope: from its construction to stop() or its end.
class ScopedAllocationCount
{
public:
    /// Starts the count at 0; the end of the scope stops it. Not copied: one counter serves the process.
    ScopedAllocationCount() { AllocationCounter::start(); }
    ~ScopedAllocationCount() { AllocationCounter::stop(); }
    ScopedAllocationCount(const ScopedAllocationCount&) = delete;
    ScopedAllocationCount& operator=(const ScopedAllocationCount&) = delete;

    /// Stops counting and gives the count.
    int stop()
    {
        AllocationCounter::stop();
        return AllocationCounter::getCount();
    }
};

} // namespace orvtest
