// orvCore/system/log/orvAbstractLogOutputter.h
#pragma once

#include "system/containers/orvPODArray.h"
#include "system/log/orvILogEventListener.h"
#include "system/log/orvLogSeverity.h"

namespace orv
{

class Log;

/// A listener that formats events at or below its own severity somewhere. Its output runs on whichever thread
/// logs, one event at a time under the global log mutex. Made, set up and deleted on the host thread while no other
/// thread logs: the list of live outputters and the logs' listener lists are not locked.
class AbstractLogOutputter : public ILogEventListener
{
public:
    /// Listens to the log, if one is given, and enters the outputter in the static list.
    AbstractLogOutputter(LogSeverity::Value severity, Log* log);
    /// Stops listening to every log and leaves the static list.
    ~AbstractLogOutputter() override;

    /// Passes the event to doOutput when its severity is at or below the outputter's. Under the global log mutex.
    void onLogEvent(const LogEvent& event) override;

    /// The most detailed severity that gets through; set it while no thread logs.
    LogSeverity::Value getSeverity() const { return _severity; }
    void setSeverity(LogSeverity::Value severity) { _severity = severity; }

    /// Listens to one more log. Does not take ownership.
    void addLog(Log* log);
    /// Stops listening to a log.
    void removeLog(Log* log);

    /// Builds the list of live outputters. Called by initCore.
    static void allocateStaticLogOutputters();
    /// Deletes that list, not the outputters. Called by finishCore.
    static void deallocateStaticLogOutputters();
    /// Every live outputter, or null outside initCore and finishCore.
    static PODArray<AbstractLogOutputter*>* getStaticLogOutputters() { return _logOutputters; }

protected:
    /// Writes one event that passed the filter. Under the global log mutex: must not log.
    virtual void doOutput(const LogEvent& event) = 0;

private:
    LogSeverity::Value _severity;
    PODArray<Log*> _logs;

    static PODArray<AbstractLogOutputter*>* _logOutputters;
};

} // namespace orv
