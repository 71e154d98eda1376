// orvCore/system/log/orvFileLogOutputter.h
#pragma once

#include <fstream>

#include "system/containers/orvString.h"
#include "system/log/orvAbstractLogOutputter.h"

namespace orv
{

/// Writes events to a file as "file(line) : operation\n\tSEVERITY : message". Silent if the file cannot be opened.
class FileLogOutputter : public AbstractLogOutputter
{
public:
    /// Opens the file, truncating it when overwrite is true; flush writes each line through at once.
    FileLogOutputter(const char* path, LogSeverity::Value severity, Log* log, bool overwrite, bool flush);
    ~FileLogOutputter() override;

    const OrvString& getPath() const { return _path; }
    /// Closes the old file and opens this one, truncating it when overwrite is true, appending otherwise.
    void setPath(const char* path, bool overwrite);

protected:
    void doOutput(const LogEvent& event) override;

private:
    std::ofstream _fileStream;
    OrvString _path;
    bool _flush = false;
};

} // namespace orv
