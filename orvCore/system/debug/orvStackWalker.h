// orvCore/system/debug/orvStackWalker.h
#pragma once

namespace orv
{

/// Prints call stacks with the platform's backtrace.
class StackWalker
{
public:
    /// Prints up to 100 frames of the calling thread to the error stream. Any thread.
    static void ShowCallstack();
};

} // namespace orv
