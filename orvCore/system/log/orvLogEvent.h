// orvCore/system/log/orvLogEvent.h
#pragma once

#include "system/log/orvLogSeverity.h"

namespace orv
{

class Log;

/// A transient view of one message; the texts belong to the caller of Log::trace.
class LogEvent
{
public:
    LogEvent(Log* log, LogSeverity::Value severity, const char* fileName, int lineID, const char* operationName,
             const char* message)
        : _log(log), _severity(severity), _fileName(fileName), _lineID(lineID), _operationName(operationName),
          _message(message)
    {
    }
    /// Events may be extended by a derived class.
    virtual ~LogEvent() = default;

    /// The fields as given to Log::trace: the log, severity, source file, line, operation and message.
    Log* getLog() const { return _log; }
    LogSeverity::Value getSeverity() const { return _severity; }
    const char* getFileName() const { return _fileName; }
    int getLineID() const { return _lineID; }
    const char* getOperationName() const { return _operationName; }
    const char* getMessage() const { return _message; }

private:
    Log* _log = nullptr;
    LogSeverity::Value _severity = LogSeverity::LOG_INFO;
    const char* _fileName = nullptr;
    int _lineID = 0;
    const char* _operationName = nullptr;
    const char* _message = nullptr;
};

} // namespace orv
