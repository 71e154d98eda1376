// orvCore/system/utils/orvSystemInfo.h
#pragma once

namespace orv
{

/// The number of processors online.
unsigned int getNumCores();

} // namespace orv
