// tests/support/orvDeathTestLeakCheck.cpp
#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

// A fast-style death test forks its child, which then has another pid than the test process.
const pid_t g_testProcess = getpid();

} // namespace

/// Asked by LeakSanitizer before its check at exit. A death-test child ends on the library's fatal path on purpose,
/// with whatever it built still allocated: only the test process itself, which outlives its children, is checked.
extern "C" int __lsan_is_turned_off()
{
    // A threadsafe-style child is a new run of this binary, told which test to run by a flag.
    const bool deathTestChild = getpid() != g_testProcess || !GTEST_FLAG_GET(internal_run_death_test).empty();
    return deathTestChild ? 1 : 0;
}
