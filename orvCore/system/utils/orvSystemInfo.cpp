// orvCore/system/utils/orvSystemInfo.cpp
#include "system/utils/orvSystemInfo.h"

#include <unistd.h>

namespace orv
{

unsigned int getNumCores()
{
    const long count = sysconf(_SC_NPROCESSORS_ONLN);
    return count > 0 ? static_cast<unsigned int>(count) : 1u;
}

} // namespace orv
