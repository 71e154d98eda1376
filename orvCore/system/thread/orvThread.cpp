// orvCore/system/thread/orvThread.cpp
#include "system/thread/orvThread.h"

#include <atomic>
#include <cstring>
#include <exception>
#include <system_error>
#include <unistd.h>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

#include "system/debug/orvAssert.h"
#include "system/thread/orvTaskBase.h"
#include "system/time/orvSleep.h"

namespace orv
{

namespace
{

void* runTaskRoutine(void* task)
{
    static_cast<TaskBase*>(task)->runTask();
    return nullptr;
}

} // namespace

bool createThread(threaddef_t& threadDef, threadroutine_t startRoutine, void* arg, size_t stackSize)
{
    orvAssert(threadDef._arg == NULL);
    // Replacing a thread that was never joined would end the process without a word.
    orvAssert(threadDef._threadTBB.joinable() == false);

    threadDef._start_routine = startRoutine;
    threadDef._arg = arg;
    threadDef._stackSize = stackSize;
    try
    {
        threadDef._threadTBB = std::thread(startRoutine, arg);
    }
    catch (const std::exception&)
    {
        // Out of threads or memory: the caller decides, and the record stays free for another try.
        threadDef._start_routine = nullptr;
        threadDef._arg = nullptr;
        resetThreadId(threadDef);
        return false;
    }
    threadDef._threadId = threadDef._threadTBB.get_id();
    return true;
}

bool joinThread(threaddef_t& threadDef)
{
    if (!threadDef._threadTBB.joinable())
    {
        return false;
    }
    try
    {
        threadDef._threadTBB.join();
    }
    catch (const std::system_error&)
    {
        // A thread cannot join itself; the record stays as it was.
        return false;
    }
    resetThreadId(threadDef);
    threadDef._arg = nullptr;
    return true;
}

bool startTask(threaddef_t& threadDef, TaskBase* task)
{
    orvAssert(task != NULL);
    return createThread(threadDef, runTaskRoutine, task, task->getRequiredStackSize());
}

bool stopTask(threaddef_t& threadDef, TaskBase* task)
{
    orvAssert(task != NULL);
    task->requestStopTask();
    return joinThread(threadDef);
}

void resetThreadId(threaddef_t& threadDef)
{
    threadDef._threadId = threadid_t();
}

uint64_t convertThreadId(const threadid_t& threadId)
{
    if (threadId == threadid_t())
    {
        return 0u;
    }
    // The id is the system's thread handle, a word: its bits are the number the system shows for the thread.
    static_assert(sizeof(threadid_t) <= sizeof(uint64_t), "a thread id fits in 64 bits");
    uint64_t number = 0u;
    memcpy(&number, &threadId, sizeof(threadId));
    return number;
}

unsigned int getSupportedConcurrentThreadCount()
{
    const long availableCpuCount = sysconf(_SC_NPROCESSORS_ONLN);
    orvAssert(availableCpuCount >= 0);
    return static_cast<unsigned int>(availableCpuCount);
}

void sleepCurrentThread(unsigned int milliseconds)
{
    orv::sleep(milliseconds);
}

void yieldCurrentThread()
{
    std::this_thread::yield();
}

void pauseCurrentThread()
{
#if defined(__x86_64__) || defined(__i386__)
    _mm_pause();
#else
    std::atomic_signal_fence(std::memory_order_seq_cst);
#endif
}

void spinBackOff(unsigned int& round)
{
    if (round < kSpinPauseRounds)
    {
        ++round;
        pauseCurrentThread();
    }
    else
    {
        yieldCurrentThread();
    }
}

} // namespace orv
