// orvCore/orvCore.h
#pragma once

#include "system/memory/orvMemoryAllocator.h"
#include "version/orvProductInformation.h"

namespace orv
{

/// Starts the library; counted, so each call needs its finishCore. Call from one thread, after an allocator is chosen.
void initCore();

/// Stops the library when the count of initCore calls falls back to 0. Every Simulation must be gone by then.
void finishCore();

/// How many initCore calls are not yet matched by finishCore.
unsigned int getCoreInitCount();

/// The library's own product information. Usable before initCore.
const ProductInformation& getCoreProductInformation();

} // namespace orv

extern "C"
{
    /// C entry for orv::initCore.
    void orvInitCore();
    /// C entry for orv::finishCore.
    void orvFinishCore();
    /// C entry for orv::useCoreDefaultAllocator.
    void orvUseCoreDefaultAllocator();
}
