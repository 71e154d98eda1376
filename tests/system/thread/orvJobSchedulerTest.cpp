#include <gtest/gtest.h>

#include <vector>

#include "orvTestSpinWait.h"
#include "system/thread/orvAtomic.h"
#include "system/thread/orvJobScheduler.h"

namespace
{

void incrementJob(void* counter)
{
    static_cast<orv::atomic32_t*>(counter)->fetchAndIncrement();
}

/// Runs until the test opens the gate.
void gateJob(void* gate)
{
    while (!orv::atomicLoadAcquireBool(*static_cast<orv::atomic32_t*>(gate)))
    {
        orv::yieldCurrentThread();
    }
}

class JobSchedulerTest : public ::testing::Test
{
protected:
    void TearDown() override { _scheduler.uninitialize(); }

    bool finishes(orv::jobid_t id)
    {
        return orv::test::spinUntil([&]() { return _scheduler.isJobDone(id); });
    }
    /// Requests count jobs into ids, stopping at the first refusal.
    void request(orv::jobprocess_t process, void* data, orv::jobid_t* ids, unsigned int count)
    {
        for (unsigned int i = 0; i < count; ++i)
        {
            ASSERT_TRUE(_scheduler.requestJobProcessing(process, data, ids[i])) << "job " << i;
        }
    }

    orv::JobScheduler _scheduler;
    orv::atomic32_t _counter;
    orv::atomic32_t _gate;
};

TEST_F(JobSchedulerTest, WithEverySlotHeldARequestIsRefusedAndChangesNothing)
{
    // One worker gets all four jobs, one more than its queue holds: the last request waits for the first pop.
    ASSERT_TRUE(_scheduler.initialize(1, 4));
    orv::jobid_t ids[4];
    request(gateJob, &_gate, ids, 4);
    orv::jobid_t refused;
    refused._id = 77;
    EXPECT_FALSE(_scheduler.requestJobProcessing(incrementJob, &_counter, refused));
    EXPECT_EQ(77u, refused._id);
    // Neither a running job nor a queued one can be released.
    ASSERT_TRUE(orv::test::spinUntil([&]() { return _scheduler.isJobRunning(ids[0]); }));
    EXPECT_FALSE(_scheduler.releaseJobRequest(ids[0]));
    EXPECT_FALSE(_scheduler.releaseJobRequest(ids[1]));

    orv::atomicStoreReleaseBool(_gate, true);
    for (const orv::jobid_t& id : ids)
    {
        ASSERT_TRUE(finishes(id));
    }
    EXPECT_EQ(0u, _counter.load());
}

TEST_F(JobSchedulerTest, JobsGoToWorkersInRotationAndReleasedIdsComeBackLastFreedFirst)
{
    ASSERT_TRUE(_scheduler.initialize(3, 4));
    orv::jobid_t ids[4];
    request(incrementJob, &_counter, ids, 4);
    for (unsigned int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(i, ids[i]._id);
        EXPECT_EQ(i % 3, _scheduler.getJobWorkerIndex(ids[i]));
        ASSERT_TRUE(finishes(ids[i]));
    }
    EXPECT_FALSE(_scheduler.requestJobProcessing(incrementJob, &_counter, ids[0]));
    ASSERT_TRUE(_scheduler.releaseJobRequest(ids[2]));
    ASSERT_TRUE(_scheduler.releaseJobRequest(ids[0]));
    EXPECT_EQ(orv::JobScheduler::kNoWorker, _scheduler.getJobWorkerIndex(ids[0]));

    orv::jobid_t again[2];
    request(incrementJob, &_counter, again, 2);
    EXPECT_EQ(0u, again[0]._id);
    EXPECT_EQ(2u, again[1]._id);
    // The refusal did not move the cursor: requests five and six go to workers 1 and 2.
    EXPECT_EQ(1u, _scheduler.getJobWorkerIndex(again[0]));
    EXPECT_EQ(2u, _scheduler.getJobWorkerIndex(again[1]));
}

TEST_F(JobSchedulerTest, EveryJobOfALongStreamRunsExactlyOnce)
{
    const unsigned int kJobs = 2000;
    ASSERT_TRUE(_scheduler.initialize(2, 8));
    std::vector<orv::atomic32_t> runs(kJobs);
    std::vector<orv::jobid_t> held;
    for (unsigned int job = 0; job < kJobs; ++job)
    {
        orv::jobid_t id;
        while (!_scheduler.requestJobProcessing(incrementJob, &runs[job], id))
        {
            for (size_t i = 0; i < held.size(); ++i)
            {
                if (_scheduler.releaseJobRequest(held[i]))
                {
                    held[i--] = held.back();
                    held.pop_back();
                }
            }
            orv::yieldCurrentThread();
        }
        held.push_back(id);
    }
    for (const orv::jobid_t& id : held)
    {
        ASSERT_TRUE(finishes(id));
    }
    for (unsigned int job = 0; job < kJobs; ++job)
    {
        ASSERT_EQ(1u, runs[job].load()) << "job " << job;
    }
}

class JobSchedulerDeathTest : public JobSchedulerTest
{
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(JobSchedulerDeathTest, BadWorkerOrJobCountIsFatal)
{
    EXPECT_DEATH(_scheduler.initialize(1, 6), "workerIsSetup");
    EXPECT_DEATH(_scheduler.initialize(0, 4), "workerCount > 0");
}

TEST_F(JobSchedulerDeathTest, MisuseOfAnIdIsFatal)
{
    ASSERT_TRUE(_scheduler.initialize(1, 2));
    orv::jobid_t ids[2];
    request(incrementJob, &_counter, ids, 1);
    ASSERT_TRUE(finishes(ids[0]));
    ASSERT_TRUE(_scheduler.releaseJobRequest(ids[0]));
    EXPECT_DEATH(_scheduler.releaseJobRequest(ids[0]), "request._workerIndex < _workerCount");
    EXPECT_DEATH(_scheduler.isJobDone(orv::jobid_t()), "id._id < _jobBufferCount");

    request(gateJob, &_gate, ids + 1, 1);
    EXPECT_DEATH(_scheduler.getJobEndTime(ids[1]), "atomicLoadAcquireBool\\(job._isDone\\) == true");
    orv::atomicStoreReleaseBool(_gate, true);
}

TEST_F(JobSchedulerDeathTest, UseBeforeInitializeOrASecondInitializeIsFatal)
{
    orv::jobid_t id;
    EXPECT_DEATH(_scheduler.requestJobProcessing(incrementJob, &_counter, id), "_workers != NULL");
    id._id = 0;
    EXPECT_DEATH(_scheduler.isJobDone(id), "id._id < _jobBufferCount");
    ASSERT_TRUE(_scheduler.initialize(1, 2));
    EXPECT_DEATH(_scheduler.initialize(1, 2), "_workers == NULL");
    _scheduler.uninitialize();
    EXPECT_DEATH(_scheduler.requestJobProcessing(incrementJob, &_counter, id), "_workers != NULL");
}

TEST_F(JobSchedulerDeathTest, DestroyingAnInitializedSchedulerIsFatal)
{
    EXPECT_DEATH(orv::JobScheduler().initialize(1, 2), "_workers == NULL");
}

} // namespace
