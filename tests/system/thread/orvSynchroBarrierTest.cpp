#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <thread>

#include "orvTestSpinWait.h"
#include "system/thread/orvAtomic.h"
#include "system/thread/orvSynchroBarrier.h"
#include "system/time/orvTimeTick.h"

namespace
{

using orv::test::spinUntil;

class SynchroBarrierTest : public ::testing::Test
{
protected:
    /// Waits until the count of waiting threads is exactly the given one.
    bool sleepersReach(unsigned int count)
    {
        return spinUntil([&]() { return _barrier.getCurrentThreadsWaiting() == count; });
    }

    orv::SynchroBarrier _barrier;
};

TEST_F(SynchroBarrierTest, LaunchWithNoSleeperOnlyFlipsTheConditionIndex)
{
    EXPECT_TRUE(_barrier.launch());
    EXPECT_EQ(1u, _barrier.getConditionIndex());
    EXPECT_TRUE(_barrier.launch());
    EXPECT_EQ(0u, _barrier.getConditionIndex());
}

/// Runs worker threads that wait on the barrier and count their rounds, for the spin time of the parameter:
/// 0 sleeps at once, a short one lets a launch find the waiters spinning or asleep, the default finds them spinning.
class SynchroBarrierRoundsTest : public SynchroBarrierTest, public ::testing::WithParamInterface<uint64_t>
{
protected:
    static const unsigned int kWorkers = 3;

    void SetUp() override
    {
        _barrier.setSpinNanoseconds(GetParam());
        for (unsigned int w = 0; w < kWorkers; ++w)
        {
            _workers[w] = std::thread(
                [this, w]()
                {
                    // A failed wait ends the worker, and its rounds fall short.
                    while (_barrier.wait() && !orv::atomicLoadAcquireBool(_stop))
                    {
                        _roundsRun[w].fetchAndIncrement();
                        _doneCount.fetchAndIncrement();
                    }
                    _finishedCount.fetchAndIncrement();
                });
        }
    }
    void TearDown() override
    {
        orv::atomicStoreReleaseBool(_stop, true);
        // A failed round may leave a worker outside the barrier: launch until every one has seen the stop.
        while (_finishedCount.load() < kWorkers)
        {
            _barrier.launch();
            orv::yieldCurrentThread();
        }
        for (std::thread& worker : _workers)
        {
            worker.join();
        }
    }

    /// Launches once every worker waits, then checks that each ran exactly one more round.
    void runRound(unsigned int round)
    {
        // Launching before every worker waits would lose a wake-up, as the processor's own loop knows.
        ASSERT_TRUE(sleepersReach(kWorkers)) << "round " << round;
        ASSERT_TRUE(_barrier.launch());
        ASSERT_TRUE(spinUntil([&]() { return _doneCount.load() >= kWorkers * round; })) << "round " << round;
        for (unsigned int w = 0; w < kWorkers; ++w)
        {
            ASSERT_EQ(round, _roundsRun[w].load()) << "worker " << w << ", round " << round;
        }
    }

    std::thread _workers[kWorkers];
    orv::atomic32_t _roundsRun[kWorkers];
    orv::atomic32_t _doneCount;
    orv::atomic32_t _finishedCount;
    orv::atomic32_t _stop;
};

TEST_P(SynchroBarrierRoundsTest, EachLaunchRunsEveryWorkerExactlyOnceOverManyRounds)
{
    for (unsigned int round = 1; round <= 300; ++round)
    {
        ASSERT_NO_FATAL_FAILURE(runRound(round));
    }
    EXPECT_EQ(kWorkers * 300, _doneCount.load());
}

TEST_P(SynchroBarrierRoundsTest, LaunchesAsTheSpinEndsLoseNoWakeUp)
{
    // The launch comes within a few microseconds of the end of the waiters' spin, where a waiter that has stopped
    // spinning but does not sleep yet must still see it.
    for (unsigned int round = 1; round <= 1000; ++round)
    {
        ASSERT_TRUE(sleepersReach(kWorkers)) << "round " << round;
        // From 3 µs before the end of the spin to 3 µs after it; at once with no spin.
        const int64_t delayNanoseconds = static_cast<int64_t>(GetParam() + (round * 7919u) % 6000u) - 3000;
        const orv::timetick_t launchAt =
            orv::getTimeTick() + static_cast<uint64_t>(std::max<int64_t>(0, delayNanoseconds));
        while (orv::getTimeTick() < launchAt)
        {
        }
        ASSERT_NO_FATAL_FAILURE(runRound(round));
    }
}

INSTANTIATE_TEST_SUITE_P(SpinTimes, SynchroBarrierRoundsTest,
                         ::testing::Values(uint64_t(0), uint64_t(20000), orv::SynchroBarrier::kSpinNanoseconds),
                         [](const ::testing::TestParamInfo<uint64_t>& info)
                         { return "spin" + std::to_string(info.param) + "ns"; });

TEST_F(SynchroBarrierTest, TheThreadThatCompletesTheCountReleasesTheOthers)
{
    _barrier.setThreadCount(3);
    orv::atomic32_t released;
    auto waitThenCount = [&]()
    {
        if (_barrier.wait())
        {
            released.fetchAndIncrement();
        }
    };
    std::thread first(waitThenCount);
    std::thread second(waitThenCount);
    ASSERT_TRUE(sleepersReach(2));
    EXPECT_EQ(0u, released.load());
    EXPECT_TRUE(_barrier.wait());
    first.join();
    second.join();
    EXPECT_EQ(2u, released.load());
    EXPECT_EQ(0u, _barrier.getCurrentThreadsWaiting());
}

class SynchroBarrierDeathTest : public SynchroBarrierTest
{
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(SynchroBarrierDeathTest, ChangingTheThreadCountUnderASleeperIsFatal)
{
    EXPECT_DEATH(
        {
            std::thread sleeper([&]() { _barrier.wait(); });
            sleepersReach(1);
            _barrier.setThreadCount(2);
        },
        "_currentThreadsWaiting == 0");
}

} // namespace
