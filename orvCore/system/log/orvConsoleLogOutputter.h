// orvCore/system/log/orvConsoleLogOutputter.h
#pragma once

#include <sstream>

#include "system/log/orvAbstractLogOutputter.h"

namespace orv
{

/// Writes events to the error stream as "file(line) : operation\n\t[SEVERITY] - message". The core log has one.
/// Threads as AbstractLogOutputter: writes under the global log mutex, which also guards its reused text buffer.
class ConsoleLogOutputter : public AbstractLogOutputter
{
public:
    /// Listens to log, if given, and passes events at or below severity.
    ConsoleLogOutputter(LogSeverity::Value severity, Log* log);

protected:
    /// Formats the event into the reused buffer and prints it.
    void doOutput(const LogEvent& event) override;

private:
    std::ostringstream _stream; // reused for each message
};

} // namespace orv
