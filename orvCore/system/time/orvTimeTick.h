// orvCore/system/time/orvTimeTick.h
#pragma once

#include <cstdint>

namespace orv
{

/// A reading of the monotonic clock, in nanoseconds from an unspecified origin.
typedef uint64_t timetick_t;

/// Reads the monotonic clock, in nanoseconds. Never goes back; unaffected by changes of the wall clock. Any thread.
timetick_t getTimeTick();

} // namespace orv
