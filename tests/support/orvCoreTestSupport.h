// tests/support/orvCoreTestSupport.h
#pragma once

#include <gtest/gtest.h>

#include "orvCore.h"

namespace orvtest
{

/// Brackets every test between the start and the finish of the library.
class CoreTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        orv::useCoreDefaultAllocator();
        orv::initCore();
    }
    void TearDown() override { orv::finishCore(); }
};

/// Death tests fork a process that holds worker threads: use the style that re-runs the test in the child.
inline void useThreadsafeDeathTests()
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
}

} // namespace orvtest
