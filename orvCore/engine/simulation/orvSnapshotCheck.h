// orvCore/engine/simulation/orvSnapshotCheck.h
#pragma once

#include <cstddef>
#include <cstdint>

#include "system/containers/orvString.h"

namespace orv
{

/// What a check of a snapshot found: whether it can be loaded, and if not, the byte offset where the check stopped
/// and why.
struct SnapshotCheckReport
{
    /// True when the snapshot can be loaded.
    bool _valid = false;
    /// Offset in the data of the first byte found wrong; 0 for a valid snapshot.
    uint64_t _offset = 0;
    /// Why the snapshot is refused, in one line; empty for a valid one.
    OrvString _reason;
};

/// Checks the bytes of a binary world snapshot (the process-wide generator, then a Simulation) without building
/// anything: first their form, as the binary stream would read them, then what they say of the world (handle
/// table, dense entity array, entity types and their slots, contexts), so that a snapshot it accepts loads and then
/// runs, takes new entities and is deleted without a fault. Every file the library writes passes. Needs the
/// library started, and the classes of the host's contexts registered. Any thread, while no class is registered.
class SnapshotCheck
{
public:
    /// True when size bytes at data hold a snapshot that can be loaded; report, if given, says where and why not.
    static bool check(const uint8_t* data, size_t size, SnapshotCheckReport* report);
};

} // namespace orv
