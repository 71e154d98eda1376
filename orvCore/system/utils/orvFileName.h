// orvCore/system/utils/orvFileName.h
#pragma once

#include "system/containers/orvString.h"

namespace orv
{

/// A path split into directory, base name and extension, with slashes as separators. A value; one thread per
/// instance.
class FileName
{
public:
    /// Everything empty.
    FileName() = default;
    /// Splits path, as set().
    FileName(const OrvString& path);
    /// A copy.
    FileName(const FileName& other) = default;
    virtual ~FileName();

    /// Copies the three parts.
    FileName& operator=(const FileName& other) = default;

    /// Splits path: backslashes become slashes; the directory is "." when the last slash is missing or first;
    /// a dot that is missing or first gives no extension.
    void set(const OrvString& path);
    /// Empties the three parts.
    void clear();

    /// Directory, "/", base name, and "." with the extension when there is one.
    OrvString fullname() const;
    /// The full name with newExtension in place of the extension; no dot when it is empty.
    OrvString fullname(const OrvString& newExtension) const;
    /// Directory, "/" and base name.
    OrvString fullnameNoExt() const;
    /// Base name, and "." with the extension when there is one.
    OrvString filename() const;
    /// Base name alone.
    OrvString filenameNoExt() const;
    /// Replaces base name and extension by those of name; the directory stays.
    void filename(const OrvString& name);
    /// The directory, with a trailing "/" when withSlash is true.
    OrvString pathname(bool withSlash) const;
    /// The extension, without its dot.
    OrvString extension() const;
    /// Replaces the extension; a leading dot is dropped.
    void extension(const OrvString& newExtension);
    /// True when the directory starts at the root or at a drive letter.
    bool isAbsolute() const;

private:
    // Splits a name without directory into base name and extension.
    void setName(const OrvString& name);

    /// The directory, without its last slash.
    OrvString m_filepath;
    /// The base name, without directory or extension.
    OrvString m_filename;
    /// The extension, without its dot.
    OrvString m_extension;
};

} // namespace orv
