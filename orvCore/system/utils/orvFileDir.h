// orvCore/system/utils/orvFileDir.h
#pragma once

#include <cstdint>

#include "system/containers/orvString.h"

namespace orv
{

/// The file system calls of the library. Reports by return values; never logs. Any thread, but the working
/// directory is the process's.
class FileDir
{
public:
    FileDir() = delete;

    /// True when something exists at path.
    static bool exist(const char* path);
    /// The size in bytes of the file at path, or -1 when it cannot be read.
    static int64_t size(const char* path);
    /// Removes a file or an empty directory. True on success.
    static bool remove(const char* path);
    /// Makes a directory, its parent must exist. True when it was made or is already a directory.
    static bool createDir(const char* path);
    /// Copies a file byte for byte, replacing destination. True on success.
    static bool copy(const char* source, const char* destination);
    /// True when both files can be read and hold the same bytes.
    static bool sameContent(const char* first, const char* second);
    /// The separator of directories: '/'.
    static char slashChr() { return '/'; }
    /// The separator of directories as a text: "/".
    static const char* slashStr() { return "/"; }
    /// Turns every backslash of path into a slash, in place.
    static void correctPath(OrvString& path);
    /// The directory of the running executable, without its last slash; empty when unknown.
    static OrvString getExecutableDirectory();
    /// The process's working directory; empty when unknown.
    static OrvString getWorkingDirectory();
    /// Changes the process's working directory. True on success.
    static bool setWorkingDirectory(const char* path);
    /// The full path of name in the first directory of PATH that holds it. False, fullPath untouched, if none.
    static bool findInSystemPath(const char* name, OrvString& fullPath);
    /// The last modification of path, in seconds since 1970-01-01 UTC. False, time untouched, when unknown.
    static bool getLastModificationTime(const char* path, uint64_t& time);
};

} // namespace orv
