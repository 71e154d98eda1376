// orvCore/system/debug/orvAssert.h
#pragma once

#include <csignal>
#include <cstdlib>

namespace orv
{

/// Prints "<file>(<line>) : <function>\n\nOrvane assert failed: <condition>\n" and the formatted message, if any,
/// to the error stream, and to the core log at LOG_CRITICAL when it is there. Any thread.
void assertFailedOutput(const char* condition, const char* file, const char* function, unsigned int line,
                        const char* format, ...);

/// Prints "<file>(<line>) : <function>\n\nOrvane exit:\n" and the formatted message, as assertFailedOutput does.
void exitOutput(const char* file, const char* function, unsigned int line, const char* format, ...);

/// Prints the calling thread's stack to the error stream.
void showCallStack();

/// Writes the text and a line end to the error stream.
void printErrorMessage(const char* message);

/// Writes the text and a line end to the error stream, then flushes it.
void printDebugMessage(const char* message);

/// A debugger hook; does nothing in this configuration.
inline void debugBreakIf(bool)
{
}

} // namespace orv

/// Ends the process when the condition is false: the report, the call stack, SIGTRAP, then exit(-1).
#define orvAssert(condition)                                                                                           \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
        {                                                                                                              \
            ::orv::assertFailedOutput(#condition, __FILE__, __FUNCTION__, __LINE__, nullptr);                          \
            ::orv::showCallStack();                                                                                    \
            ::std::raise(SIGTRAP);                                                                                     \
            ::std::exit(-1);                                                                                           \
        }                                                                                                              \
    } while (false)

/// orvAssert with a printf-style message behind the condition.
#define orvAssertMsg(condition, ...)                                                                                   \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
        {                                                                                                              \
            ::orv::assertFailedOutput(#condition, __FILE__, __FUNCTION__, __LINE__, __VA_ARGS__);                      \
            ::orv::showCallStack();                                                                                    \
            ::std::raise(SIGTRAP);                                                                                     \
            ::std::exit(-1);                                                                                           \
        }                                                                                                              \
    } while (false)

/// Ends the process with a printf-style message and no condition.
#define orvExit(...)                                                                                                   \
    do                                                                                                                 \
    {                                                                                                                  \
        ::orv::exitOutput(__FILE__, __FUNCTION__, __LINE__, __VA_ARGS__);                                              \
        ::orv::showCallStack();                                                                                        \
        ::std::raise(SIGTRAP);                                                                                         \
        ::std::exit(-1);                                                                                               \
    } while (false)
