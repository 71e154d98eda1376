// orvCore/system/thread/orvJobQueue.cpp
#include "system/thread/orvJobQueue.h"

#include <cstdlib>

#include "system/containers/orvSPSC_RingBuffer.h"
#include "system/debug/orvAssert.h"

namespace orv
{

JobQueue::~JobQueue()
{
    uninitialize();
}

bool JobQueue::initialize(size_t elementCountMax)
{
    orvAssert(elementCountMax >= 2);
    // Same admissible counts as the library's rings: a power of two that 32-bit indices can address.
    const size_t bufferSize = SPSC_RingBuffer<jobdef_t*>::getBufferSizeToAllocate(elementCountMax);
    if (bufferSize == 0)
    {
        return false;
    }
    uninitialize();
    _jobBuffer = static_cast<jobdef_t**>(malloc(bufferSize));
    if (_jobBuffer == nullptr)
    {
        return false;
    }
    _bufferMask = static_cast<uint32_t>(elementCountMax - 1);
    atomicStoreRelease(_enqueueHead, 0u);
    atomicStoreRelease(_dequeueTail, 0u);
    return true;
}

void JobQueue::uninitialize()
{
    free(_jobBuffer);
    _jobBuffer = nullptr;
    _bufferMask = 0;
    atomicStoreRelease(_enqueueHead, 0u);
    atomicStoreRelease(_dequeueTail, 0u);
}

bool JobQueue::tryPushJob(jobdef_t* job)
{
    const uint32_t head = atomicLoadAcquire(_enqueueHead);
    // Acquire: the consumer has read the slot before it moved the tail past it.
    const uint32_t tail = atomicLoadAcquire(_dequeueTail);
    const uint32_t next = (head + 1) & _bufferMask;
    // Head meeting tail means empty, so the slot before the tail is never filled.
    if (next == tail)
    {
        return false;
    }
    _jobBuffer[head] = job;
    // Release: the pointer, and the job it points to, are written before the consumer sees the slot.
    atomicStoreRelease(_enqueueHead, next);
    return true;
}

bool JobQueue::tryPopJob(jobdef_t*& job)
{
    const uint32_t tail = atomicLoadAcquire(_dequeueTail);
    // Acquire: the slot and the job behind it are visible once the head has moved past it.
    const uint32_t head = atomicLoadAcquire(_enqueueHead);
    if (tail == head)
    {
        return false;
    }
    job = _jobBuffer[tail];
    // Release: the slot is read before the producer may write it again.
    atomicStoreRelease(_dequeueTail, (tail + 1) & _bufferMask);
    return true;
}

} // namespace orv
