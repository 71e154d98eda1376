// orvCore/system/debug/orvAssert.cpp
#include "system/debug/orvAssert.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "system/debug/orvStackWalker.h"
#include "system/log/orvCoreLog.h"
#include "system/log/orvLog.h"

namespace orv
{

namespace
{

const size_t kMessageBufferSize = 2048;

void appendMessage(char* buffer, const char* format, va_list args)
{
    const size_t length = strlen(buffer);
    if (format != nullptr && length >= 1 && length <= kMessageBufferSize - 2)
    {
        vsnprintf(buffer + length, kMessageBufferSize - length, format, args);
        buffer[kMessageBufferSize - 1] = '\0';
    }
}

void report(const char* buffer)
{
    printErrorMessage(buffer);
    if (isCoreLogValid() && getCoreLog().getSeverityFilter() >= LogSeverity::LOG_CRITICAL)
    {
        getCoreLog().trace(LogSeverity::LOG_CRITICAL, __FILE__, __LINE__, __FUNCTION__, buffer);
    }
}

} // namespace

void assertFailedOutput(const char* condition, const char* file, const char* function, unsigned int line,
                        const char* format, ...)
{
    char buffer[kMessageBufferSize];
    memset(buffer, 0, sizeof(buffer));
    snprintf(buffer, sizeof(buffer), "%s(%d) : %s\n\nOrvane assert failed: %s\n", file, static_cast<int>(line),
             function, condition);
    va_list args;
    va_start(args, format);
    appendMessage(buffer, format, args);
    va_end(args);
    report(buffer);
}

void exitOutput(const char* file, const char* function, unsigned int line, const char* format, ...)
{
    char buffer[kMessageBufferSize];
    memset(buffer, 0, sizeof(buffer));
    snprintf(buffer, sizeof(buffer), "%s(%d) : %s\n\nOrvane exit:\n", file, static_cast<int>(line), function);
    va_list args;
    va_start(args, format);
    appendMessage(buffer, format, args);
    va_end(args);
    report(buffer);
}

void showCallStack()
{
    StackWalker::ShowCallstack();
}

void printErrorMessage(const char* message)
{
    fprintf(stderr, "%s\n", message);
}

void printDebugMessage(const char* message)
{
    fprintf(stderr, "%s\n", message);
    fflush(stderr);
}

} // namespace orv
