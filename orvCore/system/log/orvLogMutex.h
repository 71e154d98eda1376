// orvCore/system/log/orvLogMutex.h
#pragma once

#include "system/thread/orvMutex.h"

namespace orv
{

/// The one mutex around every Log::trace, so that listeners hear one event at a time.
Mutex& getLogMutex();

} // namespace orv
