// orvCore/version/orvProductInformation.cpp
#include "version/orvProductInformation.h"

#include <cstdio>
#include <cstring>

namespace orv
{

namespace
{

// strcpySafe's rule, kept local so that this record stays usable before anything else of the library.
void boundedCopy(char* destination, size_t size, const char* source)
{
    const char* text = source != nullptr ? source : "";
    const size_t length = strnlen(text, size - 1);
    memcpy(destination, text, length);
    memset(destination + length, 0, size - length);
}

} // namespace

ProductInformation::ProductInformation(const char* productName, const char* description, unsigned int majorVersion,
                                       unsigned int minorVersion, unsigned int patchVersion, unsigned int branchVersion,
                                       const char* versionLabel, const char* releaseDate)
    : _majorVersion(majorVersion), _minorVersion(minorVersion), _patchVersion(patchVersion),
      _branchVersion(branchVersion)
{
    boundedCopy(_productName, sizeof(_productName), productName);
    boundedCopy(_description, sizeof(_description), description);
    boundedCopy(_versionLabel, sizeof(_versionLabel), versionLabel);
    boundedCopy(_releaseDate, sizeof(_releaseDate), releaseDate);

    char full[_fullInfoLengthMax * 2];
    int length = snprintf(full, sizeof(full), "%s - %u.%u.%u.%u - Release %s of %s", _productName, _majorVersion,
                          _minorVersion, _patchVersion, _branchVersion, _versionLabel, _releaseDate);
    if (_description[0] != '\0' && length >= 0 && static_cast<size_t>(length) < sizeof(full))
    {
        snprintf(full + length, sizeof(full) - length, " - %s", _description);
    }
    boundedCopy(_fullInfo, sizeof(_fullInfo), full);
}

ProductInformation::~ProductInformation() = default;

ProductInformation ProductInformation::getDefaultUnknown()
{
    return ProductInformation("Unknown", "Unknown", 0, 0, 0, 0, "Unknown", "Unknown");
}

} // namespace orv
