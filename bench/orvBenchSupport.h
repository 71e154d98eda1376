// bench/orvBenchSupport.h
#pragma once

#include "orvCore.h"

namespace orvbench
{

/// Keeps the library started for the lifetime of a benchmark.
class CoreScope
{
public:
    CoreScope()
    {
        orv::useCoreDefaultAllocator();
        orv::initCore();
    }
    ~CoreScope() { orv::finishCore(); }
    CoreScope(const CoreScope&) = delete;
    CoreScope& operator=(const CoreScope&) = delete;
};

} // namespace orvbench
