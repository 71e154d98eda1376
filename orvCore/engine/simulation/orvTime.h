// orvCore/engine/simulation/orvTime.h
#pragma once

namespace orv
{

/// Simulated time in seconds. The library only sums the steps the host passes; there is no fixed rate.
typedef double Time;

} // namespace orv
