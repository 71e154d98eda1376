// orvCore/system/log/orvLogMutex.cpp
#include "system/log/orvLogMutex.h"

namespace orv
{

namespace
{

Mutex gLogMutex;

} // namespace

Mutex& getLogMutex()
{
    return gLogMutex;
}

} // namespace orv
