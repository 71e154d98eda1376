// orvCore/system/log/orvFileLogOutputter.h
#pragma once

#include <fstream>

#include "system/containers/orvString.h"
#include "system/log/orvAbstractLogOutputter.h"

namespace orv
{

/// Writes events to a file as "file(line) : operation\n\tSEVERITY : message". Silent if the file cannot be opened.
/// Threads as AbstractLogOutputter: writes under the global log mutex; change its path while no thread logs.
class FileLogOutputter : public AbstractLogOutputter
{
public:
    /// Opens the file, truncating it when overwrite is true; flush writes each line through at once.
    FileLogOutputter(const char* path, LogSeverity::Value severity, Log* log, bool overwrite, bool flush);
    /// Closes the file.
    ~FileLogOutputter() override;

    /// The file last asked for, opened or not.
    const OrvString& getPath() const { return _path; }
    /// Closes the old file and opens this one, truncating it when overwrite is true, appending otherwise.
    void setPath(const char* path, bool overwrite);

protected:
    /// Appends the event's line, flushing it when asked at construction; nothing when the file is not open.
    void doOutput(const LogEvent& event) override;

private:
    std::ofstream _fileStream;
    OrvString _path;
    bool _flush = false;
};

} // namespace orv
