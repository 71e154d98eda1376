// orvCore/system/thread/orvJobProcessor.cpp
#include "system/thread/orvJobProcessor.h"

#include "system/debug/orvAssert.h"
#include "system/time/orvSleep.h"
#include "system/time/orvTimeTick.h"

namespace orv
{

bool JobProcessor::initialize(uint32_t jobCountMax)
{
    return _jobsToProcess.initialize(jobCountMax);
}

void JobProcessor::uninitialize()
{
    orvAssert(atomicLoadAcquireBool(_isRunning) == false);
    atomicStoreReleaseBool(_stopProcessing, false);
    _jobsToProcess.uninitialize();
}

bool JobProcessor::enqueueJob(jobdef_t* job)
{
    orvAssert(atomicLoadAcquireBool(_isRunning) == true);
    orvAssert(atomicLoadAcquireBool(_stopProcessing) == false);
    return _jobsToProcess.tryPushJob(job);
}

void JobProcessor::runTask()
{
    orvAssert(atomicLoadAcquireBool(_isRunning) == false);
    orvAssert(atomicLoadAcquireBool(_isWaiting) == false);
    orvAssert(atomicLoadAcquireBool(_stopProcessing) == false);

    atomicStoreReleaseBool(_isRunning, true);
    while (!atomicLoadAcquireBool(_stopProcessing))
    {
        jobdef_t* job = nullptr;
        if (_jobsToProcess.tryPopJob(job))
        {
            atomicStoreReleaseBool(job->_isRunning, true);
            job->_startTime = getTimeTick();
            job->_process(job->_data);
            job->_endTime = getTimeTick();
            atomicStoreReleaseBool(job->_isRunning, false);
            // Last write to the slot: once done is seen, the times are visible and the slot may be reused.
            atomicStoreReleaseBool(job->_isDone, true);
        }
        else
        {
            atomicStoreReleaseBool(_isWaiting, true);
            orv::sleep(1);
            atomicStoreReleaseBool(_isWaiting, false);
        }
    }
    atomicStoreReleaseBool(_isRunning, false);
}

void JobProcessor::requestStopTask()
{
    orvAssert(atomicLoadAcquireBool(_isRunning) == true);
    orvAssert(atomicLoadAcquireBool(_stopProcessing) == false);
    atomicStoreReleaseBool(_stopProcessing, true);
}

bool JobProcessor::isRunningTask() const
{
    return atomicLoadAcquireBool(_isRunning);
}

size_t JobProcessor::getRequiredStackSize() const
{
    return 1048576;
}

bool JobProcessor::isWaiting() const
{
    return atomicLoadAcquireBool(_isWaiting);
}

} // namespace orv
