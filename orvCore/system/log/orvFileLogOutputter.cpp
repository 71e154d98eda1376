// orvCore/system/log/orvFileLogOutputter.cpp
#include "system/log/orvFileLogOutputter.h"

#include "system/log/orvLogEvent.h"

namespace orv
{

namespace
{

const char* fileMark(LogSeverity::Value severity)
{
    switch (severity)
    {
    case LogSeverity::LOG_CRITICAL:
        return "CRITICAL : ";
    case LogSeverity::LOG_ERROR:
        return "ERROR : ";
    case LogSeverity::LOG_WARNING:
        return "WARNING : ";
    case LogSeverity::LOG_INFO:
        return "INFO : ";
    default:
        return "DEBUG : ";
    }
}

} // namespace

FileLogOutputter::FileLogOutputter(const char* path, LogSeverity::Value severity, Log* log, bool overwrite, bool flush)
    : AbstractLogOutputter(severity, log), _flush(flush)
{
    setPath(path, overwrite);
}

FileLogOutputter::~FileLogOutputter()
{
    if (_fileStream.is_open())
    {
        _fileStream.close();
    }
}

void FileLogOutputter::setPath(const char* path, bool overwrite)
{
    if (_fileStream.is_open())
    {
        _fileStream.close();
    }
    _fileStream.clear();
    _path = path;
    _fileStream.open(path, overwrite ? (std::ios::out | std::ios::trunc) : (std::ios::out | std::ios::app));
}

void FileLogOutputter::doOutput(const LogEvent& event)
{
    if (!_fileStream.is_open() || !_fileStream.good())
    {
        return;
    }
    _fileStream << event.getFileName() << "(" << event.getLineID() << ") : " << event.getOperationName() << "\n\t"
                << fileMark(event.getSeverity()) << event.getMessage() << "\n";
    if (_flush)
    {
        _fileStream.flush();
    }
}

} // namespace orv
