// orvCore/system/log/orvConsoleLogOutputter.cpp
#include "system/log/orvConsoleLogOutputter.h"

#include "system/debug/orvAssert.h"
#include "system/log/orvLogEvent.h"

namespace orv
{

namespace
{

const char* consoleMark(LogSeverity::Value severity)
{
    switch (severity)
    {
    case LogSeverity::LOG_CRITICAL:
        return "[CRITICAL] - ";
    case LogSeverity::LOG_ERROR:
        return "[ERROR] - ";
    case LogSeverity::LOG_WARNING:
        return "[WARNING] - ";
    case LogSeverity::LOG_INFO:
        return "[INFO] - ";
    default:
        return "[DEBUG] - ";
    }
}

} // namespace

ConsoleLogOutputter::ConsoleLogOutputter(LogSeverity::Value severity, Log* log) : AbstractLogOutputter(severity, log)
{
}

void ConsoleLogOutputter::doOutput(const LogEvent& event)
{
    _stream.str(std::string());
    _stream.clear();
    _stream << event.getFileName() << "(" << event.getLineID() << ") : " << event.getOperationName() << "\n\t"
            << consoleMark(event.getSeverity()) << event.getMessage() << "\n";
    printDebugMessage(_stream.str().c_str());
}

} // namespace orv
