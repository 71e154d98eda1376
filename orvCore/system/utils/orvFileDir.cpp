// orvCore/system/utils/orvFileDir.cpp
#include "system/utils/orvFileDir.h"

#include <dirent.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "system/utils/orvStringUtils.h"

namespace orv
{

namespace
{

// Closes a file on every way out.
class ScopedFile
{
public:
    ScopedFile(const char* path, const char* mode) : _file(path != nullptr ? fopen(path, mode) : nullptr) {}
    ~ScopedFile()
    {
        if (_file != nullptr)
        {
            fclose(_file);
        }
    }
    ScopedFile(const ScopedFile&) = delete;
    ScopedFile& operator=(const ScopedFile&) = delete;
    FILE* get() const { return _file; }

private:
    FILE* _file;
};

bool isDirectory(const char* path)
{
    DIR* directory = opendir(path);
    if (directory == nullptr)
    {
        return false;
    }
    closedir(directory);
    return true;
}

} // namespace

bool FileDir::exist(const char* path)
{
    return path != nullptr && access(path, F_OK) == 0;
}

int64_t FileDir::size(const char* path)
{
    struct stat status;
    if (path == nullptr || stat(path, &status) != 0)
    {
        return -1;
    }
    return static_cast<int64_t>(status.st_size);
}

bool FileDir::remove(const char* path)
{
    return path != nullptr && ::remove(path) == 0;
}

bool FileDir::createDir(const char* path)
{
    if (path == nullptr)
    {
        return false;
    }
    return mkdir(path, 0755) == 0 || isDirectory(path);
}

bool FileDir::copy(const char* source, const char* destination)
{
    ScopedFile input(source, "rb");
    if (input.get() == nullptr)
    {
        return false;
    }
    ScopedFile output(destination, "wb");
    if (output.get() == nullptr)
    {
        return false;
    }
    char block[65536];
    size_t count = 0;
    while ((count = fread(block, 1, sizeof(block), input.get())) != 0)
    {
        if (fwrite(block, 1, count, output.get()) != count)
        {
            return false;
        }
    }
    return ferror(input.get()) == 0;
}

bool FileDir::sameContent(const char* first, const char* second)
{
    ScopedFile a(first, "rb");
    ScopedFile b(second, "rb");
    if (a.get() == nullptr || b.get() == nullptr)
    {
        return false;
    }
    char blockA[4096];
    char blockB[4096];
    for (;;)
    {
        const size_t countA = fread(blockA, 1, sizeof(blockA), a.get());
        const size_t countB = fread(blockB, 1, sizeof(blockB), b.get());
        if (countA != countB || memcmp(blockA, blockB, countA) != 0)
        {
            return false;
        }
        if (countA < sizeof(blockA))
        {
            return ferror(a.get()) == 0 && ferror(b.get()) == 0;
        }
    }
}

void FileDir::correctPath(OrvString& path)
{
    replaceChar(path, '\\', '/');
}

OrvString FileDir::getExecutableDirectory()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path) - 1);
    if (length <= 0)
    {
        return OrvString();
    }
    path[length] = '\0';
    char* slash = strrchr(path, '/');
    if (slash == nullptr)
    {
        return OrvString();
    }
    // The root keeps its slash.
    return OrvString(path, slash == path ? 1 : static_cast<size_t>(slash - path));
}

OrvString FileDir::getWorkingDirectory()
{
    char path[PATH_MAX];
    if (getcwd(path, sizeof(path)) == nullptr)
    {
        return OrvString();
    }
    return OrvString(path);
}

bool FileDir::setWorkingDirectory(const char* path)
{
    return path != nullptr && chdir(path) == 0;
}

bool FileDir::findInSystemPath(const char* name, OrvString& fullPath)
{
    const char* systemPath = getenv("PATH");
    if (name == nullptr || *name == '\0' || systemPath == nullptr)
    {
        return false;
    }
    Array<OrvString> directories;
    split(OrvString(systemPath), OrvString(":"), directories);
    for (size_t i = 0; i < directories.size(); ++i)
    {
        // An empty entry of PATH is the working directory.
        const OrvString directory = directories[i].empty() ? OrvString(".") : directories[i];
        const OrvString candidate = directory + "/" + name;
        if (exist(candidate.c_str()))
        {
            fullPath = candidate;
            return true;
        }
    }
    return false;
}

bool FileDir::getLastModificationTime(const char* path, uint64_t& time)
{
    struct stat status;
    if (path == nullptr || stat(path, &status) != 0)
    {
        return false;
    }
    time = static_cast<uint64_t>(status.st_mtime);
    return true;
}

} // namespace orv
