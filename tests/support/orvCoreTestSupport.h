// tests/support/orvCoreTestSupport.h
#pragma once

#include <gtest/gtest.h>

#include <string>

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

/// A file path in the test temporary directory, stem followed by the running test's name: tests that ctest runs
/// side by side never share a file.
inline std::string tempFilePath(const char* stem)
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    return ::testing::TempDir() + stem + "-" + (test != nullptr ? test->name() : "none") + ".bin";
}

/// Death tests fork a process that holds worker threads: use the style that re-runs the test in the child.
inline void useThreadsafeDeathTests()
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
}

} // namespace orvtest
