// orvCore/system/inspection/orvRTTIAllocator.h
#pragma once

#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// Binds the allocator of class descriptors to a target, under the CoreSystemInspection category. Called by initCore.
void initializeRTTIAllocator(MemoryAllocator* target);
/// The allocator of class descriptors, or null outside initCore and finishCore.
MemoryAllocator* getRTTIAllocator();
/// Unbinds it. Called by finishCore.
void uninitializeRTTIAllocator();

} // namespace orv
