// orvCore/system/thread/orvThread.h
#pragma once

#include <cstddef>
#include <cstdint>
#include <thread>

namespace orv
{

class TaskBase;

/// Identity of a running thread; the default value stands for no thread.
typedef std::thread::id threadid_t;

/// Entry point of a thread: receives the argument given to createThread; its result is dropped.
typedef void* (*threadroutine_t)(void*);

/// One thread: what it runs and its identity. Free when _arg is null and no thread is attached.
/// Belongs to the thread that creates and joins it.
struct threaddef_t
{
    /// The running thread, joinable from createThread to joinThread.
    std::thread _threadTBB;
    /// Entry point.
    threadroutine_t _start_routine = nullptr;
    /// Argument of the entry point; null while the record is free.
    void* _arg = nullptr;
    /// Requested stack size in bytes. Kept for the record: the thread runs on the system's default stack.
    size_t _stackSize = 0;
    /// Identity of the thread, set by createThread and reset by joinThread.
    threadid_t _threadId;
};

/// Starts a thread that runs startRoutine(arg). The record must be free: assertion. Returns false, leaving the
/// record free, when the system cannot start a thread.
bool createThread(threaddef_t& threadDef, threadroutine_t startRoutine, void* arg, size_t stackSize);
/// Waits for the thread's end, then frees the record. False when no thread is attached or it is the caller's own.
bool joinThread(threaddef_t& threadDef);
/// Starts a thread that runs task->runTask(), with the task's stack size. The task must outlive the thread.
bool startTask(threaddef_t& threadDef, TaskBase* task);
/// Asks the task to stop, then joins its thread. Returns the result of the join.
bool stopTask(threaddef_t& threadDef, TaskBase* task);
/// Sets the record's id to no thread.
void resetThreadId(threaddef_t& threadDef);
/// A number for logs: equal ids give equal numbers, and the number of no thread is 0.
uint64_t convertThreadId(const threadid_t& threadId);
/// Logical processors online, as the system counts them.
unsigned int getSupportedConcurrentThreadCount();
/// Suspends the calling thread for about the milliseconds.
void sleepCurrentThread(unsigned int milliseconds);
/// Lets the system run another thread before this one goes on.
void yieldCurrentThread();

/// Rounds of a spin loop that only pause the processor before spinBackOff starts to yield it: about 10 µs of pauses,
/// a few times the cost of one yield, so that a short wait stays on the core and a long one lets others run.
const unsigned int kSpinPauseRounds = 512;

/// Tells the processor that the calling thread spins (the x86 pause instruction, tens of nanoseconds; a compiler
/// barrier elsewhere). Any thread.
void pauseCurrentThread();
/// One round of a spin loop: pauses the processor for the first kSpinPauseRounds rounds, then yields it at each
/// round, so that a thread waited for that shares the core gets to run. round counts the loop's rounds from 0 and is
/// advanced here. Any thread.
void spinBackOff(unsigned int& round);

} // namespace orv
