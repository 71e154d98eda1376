// tests/system/thread/orvTestSpinWait.h
#pragma once

#include "system/thread/orvThread.h"

namespace orv::test
{

/// Tries before spinUntil gives up: long enough for a loaded machine, short enough to fail rather than hang.
const unsigned long kSpinTriesMax = 50000000ul;

/// Calls the predicate until it holds, yielding between calls. Returns false if it never held.
template <class Predicate>
bool spinUntil(Predicate predicate)
{
    for (unsigned long tries = 0; tries < kSpinTriesMax; ++tries)
    {
        if (predicate())
        {
            return true;
        }
        yieldCurrentThread();
    }
    return predicate();
}

} // namespace orv::test
