// orvCore/system/time/orvTimeTick.cpp
#include "system/time/orvTimeTick.h"

#include <ctime>

namespace orv
{

timetick_t getTimeTick()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<timetick_t>(now.tv_sec) * 1000000000u + static_cast<timetick_t>(now.tv_nsec);
}

} // namespace orv
