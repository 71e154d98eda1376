// orvCore/system/log/orvAbstractLogOutputter.h
#pragma once

#include "system/containers/orvPODArray.h"
#include "system/log/orvILogEventListener.h"
#include "system/log/orvLogSeverity.h"

namespace orv
{

class Log;

/// A listener that formats events at or below its own severity somewhere.
class AbstractLogOutputter : public ILogEventListener
{
public:
    /// Listens to the log, if one is given, and enters the outputter in the static list.
    AbstractLogOutputter(LogSeverity::Value severity, Log* log);
    /// Stops listening to every log and leaves the static list.
    ~AbstractLogOutputter() override;

    void onLogEvent(const LogEvent& event) override;

    LogSeverity::Value getSeverity() const { return _severity; }
    void setSeverity(LogSeverity::Value severity) { _severity = severity; }

    /// Listens to one more log. Does not take ownership.
    void addLog(Log* log);
    /// Stops listening to a log.
    void removeLog(Log* log);

    static void allocateStaticLogOutputters();
    static void deallocateStaticLogOutputters();
    /// Every live outputter, or null outside initCore and finishCore.
    static PODArray<AbstractLogOutputter*>* getStaticLogOutputters() { return _logOutputters; }

protected:
    /// Writes one event that passed the filter.
    virtual void doOutput(const LogEvent& event) = 0;

private:
    LogSeverity::Value _severity;
    PODArray<Log*> _logs;

    static PODArray<AbstractLogOutputter*>* _logOutputters;
};

} // namespace orv
