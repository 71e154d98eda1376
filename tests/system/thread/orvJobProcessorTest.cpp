#include <gtest/gtest.h>

#include "orvTestSpinWait.h"
#include "system/thread/orvJobProcessor.h"
#include "system/thread/orvThread.h"

namespace
{

class JobProcessorDeathTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        ASSERT_TRUE(_worker.initialize(4));
    }

    orv::JobProcessor _worker;
    orv::threaddef_t _thread;
};

TEST_F(JobProcessorDeathTest, EnqueueOnAWorkerWhoseLoopIsNotRunningIsFatal)
{
    orv::jobdef_t job;
    EXPECT_DEATH(_worker.enqueueJob(&job), "atomicLoadAcquireBool\\(_isRunning\\) == true");
    _worker.uninitialize();
}

TEST_F(JobProcessorDeathTest, UninitializingOrStoppingTwiceARunningWorkerIsFatal)
{
    ASSERT_TRUE(orv::startTask(_thread, &_worker));
    ASSERT_TRUE(orv::test::spinUntil([&]() { return _worker.isRunningTask(); }));
    EXPECT_DEATH(_worker.uninitialize(), "atomicLoadAcquireBool\\(_isRunning\\) == false");
    EXPECT_DEATH(_worker.requestStopTask();
                 _worker.requestStopTask(), "atomicLoadAcquireBool\\(_stopProcessing\\) == false");
    ASSERT_TRUE(orv::stopTask(_thread, &_worker));
    _worker.uninitialize();
}

} // namespace
