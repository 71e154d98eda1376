// tests/support/orvLogCapture.h
#pragma once

#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "system/log/orvAbstractLogOutputter.h"
#include "system/log/orvCoreLog.h"
#include "system/log/orvLogEvent.h"

namespace orvtest
{

/// Records every message of the core log, at every severity, while it lives. Make it after initCore and let it go
/// before finishCore, on the test's thread; messages logged by workers are recorded under the log mutex.
class LogCapture : public orv::AbstractLogOutputter
{
public:
    /// One recorded message and its severity.
    struct Line
    {
        orv::LogSeverity::Value _severity;
        std::string _message;
    };

    LogCapture() : orv::AbstractLogOutputter(orv::LogSeverity::LOG_DEBUG, &orv::getCoreLog()) {}

    /// Every message so far, in the order logged.
    const std::vector<Line>& getLines() const { return _lines; }
    /// Forgets the messages so far.
    void clear() { _lines.clear(); }

    /// True when one message of that severity holds every one of the parts.
    bool hasLine(orv::LogSeverity::Value severity, std::initializer_list<const char*> parts) const
    {
        return countLines(severity, parts) > 0;
    }

    /// How many messages of that severity hold every one of the parts.
    int countLines(orv::LogSeverity::Value severity, std::initializer_list<const char*> parts) const
    {
        int count = 0;
        for (const Line& line : _lines)
        {
            bool all = line._severity == severity;
            for (const char* part : parts)
            {
                all = all && line._message.find(part) != std::string::npos;
            }
            count += all ? 1 : 0;
        }
        return count;
    }

    /// The messages, one a line, for a failure's explanation.
    std::string describe() const
    {
        std::string text;
        for (const Line& line : _lines)
        {
            text += "[" + std::to_string(static_cast<int>(line._severity)) + "] " + line._message + "\n";
        }
        return text;
    }

protected:
    void doOutput(const orv::LogEvent& event) override
    {
        _lines.push_back(Line{event.getSeverity(), event.getMessage() != nullptr ? event.getMessage() : ""});
    }

private:
    std::vector<Line> _lines;
};

} // namespace orvtest
