// orvCore/system/log/orvLog.h
#pragma once

#include "system/containers/orvArray.h"
#include "system/events/orvEventSource.h"
#include "system/log/orvILogEventListener.h"
#include "system/log/orvLogEvent.h"
#include "system/log/orvLogSeverity.h"

namespace orv
{

/// A named channel of messages: a severity filter and the listeners that hear what passes it.
/// trace may be called from any thread; listeners are called one at a time under one global mutex.
class Log
{
public:
    /// An empty log with filter LOG_INFO, entered in the registry of live logs when it exists.
    Log();
    /// Leaves the registry; the listeners are not told.
    virtual ~Log();

    /// Passes one event to every listener, in list order. Does not filter: the call sites do.
    void trace(LogSeverity::Value severity, const char* fileName, int line, const char* operationName,
               const char* message);

    /// The listener list, not locked: change it while no thread logs to this log. Does not take ownership.
    void addLogEventListener(ILogEventListener* listener);
    void removeLogEventListener(ILogEventListener* listener);
    bool hasLogEventListener(ILogEventListener* listener) const;

    /// Events at or below this severity are built by the call sites. LOG_INFO on construction.
    LogSeverity::Value getSeverityFilter() const { return _severity; }
    void setSeverityFilter(LogSeverity::Value severity) { _severity = severity; }

    /// Builds the registry of live logs. Called by initCore.
    static void allocateStaticLogs();
    /// Destroys the registry of live logs. Called by finishCore.
    static void deallocateStaticLogs();
    /// Every live log, or null outside initCore and finishCore.
    static Array<Log*>* getStaticLogs() { return _logs; }

private:
    EventSource<ILogEventListener, LogEvent> _messagesSource;
    LogSeverity::Value _severity = LogSeverity::LOG_INFO;

    static Array<Log*>* _logs;
};

} // namespace orv
