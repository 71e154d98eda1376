#include <gtest/gtest.h>

#include <thread>

#include "orvTestSpinWait.h"
#include "system/thread/orvAtomic.h"
#include "system/thread/orvSynchroBarrier.h"

namespace
{

using orv::test::spinUntil;

class SynchroBarrierTest : public ::testing::Test
{
protected:
    /// Waits until the count of sleepers is exactly the given one.
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

TEST_F(SynchroBarrierTest, EachLaunchRunsEveryWorkerExactlyOnceOverManyRounds)
{
    const unsigned int kWorkers = 3;
    const unsigned int kRounds = 300;
    orv::atomic32_t stop;
    orv::atomic32_t doneCount;
    orv::atomic32_t roundsRun[kWorkers];
    std::thread workers[kWorkers];
    for (unsigned int w = 0; w < kWorkers; ++w)
    {
        workers[w] = std::thread(
            [&, w]()
            {
                // A failed wait ends the worker, and its rounds fall short.
                while (_barrier.wait() && !orv::atomicLoadAcquireBool(stop))
                {
                    roundsRun[w].fetchAndIncrement();
                    doneCount.fetchAndIncrement();
                }
            });
    }
    for (unsigned int round = 1; round <= kRounds; ++round)
    {
        // Launching before every worker sleeps would lose a wake-up, as the processor's own loop knows.
        ASSERT_TRUE(sleepersReach(kWorkers)) << "round " << round;
        ASSERT_TRUE(_barrier.launch());
        ASSERT_TRUE(spinUntil([&]() { return doneCount.load() >= kWorkers * round; })) << "round " << round;
        for (unsigned int w = 0; w < kWorkers; ++w)
        {
            ASSERT_EQ(round, roundsRun[w].load()) << "worker " << w << ", round " << round;
        }
    }
    ASSERT_TRUE(sleepersReach(kWorkers));
    orv::atomicStoreReleaseBool(stop, true);
    EXPECT_TRUE(_barrier.launch());
    for (std::thread& worker : workers)
    {
        worker.join();
    }
    EXPECT_EQ(kWorkers * kRounds, doneCount.load());
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
