// orvCore/system/time/orvSleep.h
#pragma once

namespace orv
{

/// Suspends the calling thread for about the milliseconds, in one system sleep.
/// A signal may end it early, and the rest is not slept. Any thread.
void sleep(unsigned int milliseconds);

} // namespace orv
