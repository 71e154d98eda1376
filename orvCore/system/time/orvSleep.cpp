// orvCore/system/time/orvSleep.cpp
#include "system/time/orvSleep.h"

#include <ctime>

namespace orv
{

void sleep(unsigned int milliseconds)
{
    timespec duration;
    duration.tv_sec = static_cast<time_t>(milliseconds / 1000u);
    duration.tv_nsec = static_cast<long>(milliseconds % 1000u) * 1000000L;
    // An interrupted sleep is not resumed: callers that need the full delay loop on their own clock.
    nanosleep(&duration, nullptr);
}

} // namespace orv
