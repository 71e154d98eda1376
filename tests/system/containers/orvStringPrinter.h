// tests/system/containers/orvStringPrinter.h
#pragma once

#include <ostream>

#include "system/containers/orvString.h"

namespace orv
{

/// Shows an OrvString as quoted text in test failures instead of a list of bytes.
inline void PrintTo(const OrvString& text, std::ostream* out)
{
    *out << '"' << text << '"';
}

} // namespace orv
