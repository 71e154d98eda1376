// orvCore/system/utils/orvFileName.cpp
#include "system/utils/orvFileName.h"

#include "system/utils/orvStringUtils.h"

namespace orv
{

FileName::FileName(const OrvString& path)
{
    set(path);
}

FileName::~FileName() = default;

void FileName::set(const OrvString& path)
{
    OrvString corrected(path);
    replaceChar(corrected, '\\', '/');

    const size_t slash = corrected.rfind('/');
    if (slash == OrvString::npos || slash < 1)
    {
        // A slash at position 0 does not make a directory: "/file" lies in ".".
        m_filepath = ".";
        setName(slash == OrvString::npos ? corrected : corrected.substr(slash + 1));
    }
    else
    {
        m_filepath = corrected.substr(0, slash);
        setName(corrected.substr(slash + 1));
    }
}

void FileName::clear()
{
    m_filepath.clear();
    m_filename.clear();
    m_extension.clear();
}

OrvString FileName::fullname() const
{
    return fullname(m_extension);
}

OrvString FileName::fullname(const OrvString& newExtension) const
{
    OrvString result = fullnameNoExt();
    if (!newExtension.empty())
    {
        result += '.';
        result += newExtension;
    }
    return result;
}

OrvString FileName::fullnameNoExt() const
{
    if (m_filepath.empty())
    {
        return m_filename;
    }
    return m_filepath + "/" + m_filename;
}

OrvString FileName::filename() const
{
    if (m_extension.empty())
    {
        return m_filename;
    }
    return m_filename + "." + m_extension;
}

OrvString FileName::filenameNoExt() const
{
    return m_filename;
}

void FileName::filename(const OrvString& name)
{
    setName(name);
}

OrvString FileName::pathname(bool withSlash) const
{
    return withSlash ? m_filepath + "/" : m_filepath;
}

OrvString FileName::extension() const
{
    return m_extension;
}

void FileName::extension(const OrvString& newExtension)
{
    if (!newExtension.empty() && newExtension[0] == '.')
    {
        m_extension = newExtension.substr(1);
    }
    else
    {
        m_extension = newExtension;
    }
}

bool FileName::isAbsolute() const
{
    if (m_filepath.empty())
    {
        return false;
    }
    if (m_filepath[0] == '/')
    {
        return true;
    }
    const char drive = m_filepath[0];
    const bool isLetter = (drive >= 'a' && drive <= 'z') || (drive >= 'A' && drive <= 'Z');
    return isLetter && m_filepath.size() >= 2 && m_filepath[1] == ':';
}

void FileName::setName(const OrvString& name)
{
    const size_t dot = name.rfind('.');
    if (dot == OrvString::npos || dot < 1)
    {
        // A leading dot marks a hidden file, not an extension.
        m_filename = name;
        m_extension.clear();
    }
    else
    {
        m_filename = name.substr(0, dot);
        m_extension = name.substr(dot + 1);
    }
}

} // namespace orv
