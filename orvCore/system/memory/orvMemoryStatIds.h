// orvCore/system/memory/orvMemoryStatIds.h
#pragma once

namespace orv
{

/// A memory-statistics category: a slot of MemoryStats.
typedef unsigned int MemAllocStatId;

/// The categories of the library's allocations. Ranges leave room for new categories in each subsystem.
struct MemoryStatIds
{
    enum Value
    {
        OrvaneSDK = 0,
        CoreLib = 1,
        CoreSimulation = 2,
        CoreKnowledgeBase = 4,
        CoreSystem = 11,
        CoreSystemInspection = 12,
        CoreSystemSerialize = 13,
        CoreSystemUtils = 14,
        CoreSystemString = 15,
        CoreSystemLog = 20,
        CoreSystemEnd = 20,
        CoreMath = 21,
        CoreMathTypes = 22,
        CoreMathDelaunay = 23,
        CoreMathVolume = 24,
        CoreMathRandom = 25,
        CoreMathEnd = 30,
        CoreAnimation = 31,
        CoreBehavior = 36,
        CoreBehaviorCallbacks = 37,
        CoreBehaviorUtils = 38,
        CoreBehaviorEnd = 40,
        CoreGround = 41,
        CoreAssetMgt = 42,
        CoreReplay = 43,
        CoreEditor = 46,
        CoreUnitTest = 47,
        CoreDebug = 48,
        CoreDeprecated = 49,
        CoreEnd = 50,
        Last = 881,
        END = 882
    };
};

} // namespace orv
