// orvCore/system/inspection/orvRTTIAllocator.cpp
#include "system/inspection/orvRTTIAllocator.h"

#include "system/memory/orvProxyAllocator.h"

namespace orv
{

namespace
{

ProxyAllocator s_rttiAllocator;
bool s_rttiAllocatorBound = false;

} // namespace

void initializeRTTIAllocator(MemoryAllocator* target)
{
    s_rttiAllocatorBound = s_rttiAllocator.initialize(target, MemoryStatIds::CoreSystemInspection);
}

MemoryAllocator* getRTTIAllocator()
{
    return s_rttiAllocatorBound ? &s_rttiAllocator : nullptr;
}

void uninitializeRTTIAllocator()
{
    s_rttiAllocator.uninitialize();
    s_rttiAllocatorBound = false;
}

} // namespace orv
