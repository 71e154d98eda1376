// orvCore/system/thread/orvTaskBase.h
#pragma once

#include <cstddef>

namespace orv
{

/// An object that is the body of a thread, started by startTask and ended by stopTask.
class TaskBase
{
public:
    /// Tasks are deleted through this interface by their owner.
    virtual ~TaskBase() = default;

    /// The body: runs on the task's thread until a stop is requested.
    virtual void runTask() = 0;
    /// Asks runTask to return soon. From another thread; does not wait.
    virtual void requestStopTask() = 0;
    /// True while runTask is in its loop. Any thread.
    virtual bool isRunningTask() const = 0;
    /// Stack size that the task asks for its thread, in bytes.
    virtual size_t getRequiredStackSize() const { return s_defaultStackSizeInBytes; }

    /// Stack size of a task that asks for nothing special, in bytes: 1 MiB.
    static constexpr size_t s_defaultStackSizeInBytes = 1048576;
};

} // namespace orv
