#include <gtest/gtest.h>

#include "system/thread/orvJobQueue.h"

namespace
{

class JobQueueTest : public ::testing::Test
{
protected:
    orv::JobQueue _queue;
    orv::jobdef_t _jobs[4];
};

TEST_F(JobQueueTest, CapacityFourHoldsThreeJobsInOrderRoundAfterRound)
{
    EXPECT_FALSE(_queue.initialize(3));
    ASSERT_TRUE(_queue.initialize(4));
    orv::jobdef_t* job = nullptr;
    // Three pushes and three pops per round: head and tail pass the end of the ring.
    for (int round = 0; round < 5; ++round)
    {
        for (int i = 0; i < 3; ++i)
        {
            EXPECT_TRUE(_queue.tryPushJob(&_jobs[i]));
        }
        EXPECT_FALSE(_queue.tryPushJob(&_jobs[3]));
        for (int i = 0; i < 3; ++i)
        {
            ASSERT_TRUE(_queue.tryPopJob(job));
            EXPECT_EQ(&_jobs[i], job);
        }
        EXPECT_FALSE(_queue.tryPopJob(job));
    }
}

class JobQueueDeathTest : public JobQueueTest
{
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(JobQueueDeathTest, CountBelowTwoIsFatal)
{
    EXPECT_DEATH(_queue.initialize(1), "elementCountMax >= 2");
}

} // namespace
