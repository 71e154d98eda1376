// orvCore/system/log/orvConsoleLogOutputter.h
#pragma once

#include <sstream>

#include "system/log/orvAbstractLogOutputter.h"

namespace orv
{

/// Writes events to the error stream as "file(line) : operation\n\t[SEVERITY] - message".
class ConsoleLogOutputter : public AbstractLogOutputter
{
public:
    ConsoleLogOutputter(LogSeverity::Value severity, Log* log);

protected:
    void doOutput(const LogEvent& event) override;

private:
    std::ostringstream _stream; // reused for each message
};

} // namespace orv
