// orvCore/version/orvProductInformation.h
#pragma once

namespace orv
{

/// Identification of a product: name, version and release, in fixed-size texts so that it needs no allocator.
class ProductInformation
{
public:
    /// Copies each text, truncating it silently to its field, and composes the full one-line text.
    ProductInformation(const char* productName, const char* description, unsigned int majorVersion,
                       unsigned int minorVersion, unsigned int patchVersion, unsigned int branchVersion,
                       const char* versionLabel, const char* releaseDate);
    virtual ~ProductInformation();

    /// "Unknown" texts and version 0.0.0.0.
    static ProductInformation getDefaultUnknown();

    /// The fields as given to the constructor, truncated to their fields.
    const char* getProductName() const { return _productName; }
    const char* getDescription() const { return _description; }
    unsigned int getMajorVersion() const { return _majorVersion; }
    unsigned int getMinorVersion() const { return _minorVersion; }
    unsigned int getPatchVersion() const { return _patchVersion; }
    unsigned int getBranchVersion() const { return _branchVersion; }
    const char* getVersionLabel() const { return _versionLabel; }
    const char* getReleaseDate() const { return _releaseDate; }
    /// "<name> - <major>.<minor>.<patch>.<branch> - Release <label> of <date>[ - <description>]".
    const char* getCString() const { return _fullInfo; }

    /// Size of each short text field, terminator included.
    static constexpr unsigned int _partialInfoLengthMax = 256;
    /// Size of the full text, terminator included.
    static constexpr unsigned int _fullInfoLengthMax = 1024;

private:
    char _productName[_partialInfoLengthMax];
    char _description[_partialInfoLengthMax];
    unsigned int _majorVersion = 0;
    unsigned int _minorVersion = 0;
    unsigned int _patchVersion = 0;
    unsigned int _branchVersion = 0;
    char _versionLabel[_partialInfoLengthMax];
    char _releaseDate[_partialInfoLengthMax];
    char _fullInfo[_fullInfoLengthMax];
};

} // namespace orv
