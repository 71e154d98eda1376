// orvCore/engine/simulation/orvEntityHandle.h
#pragma once

#include <cstdint>
#include <cstring>

namespace orv
{

/// A checked reference to an entity or a group: one 32-bit word, the same in memory and in files.
/// Bits 0 to 19 index the handle table, bits 20 to 30 hold the entry's generation, bit 31 selects the groups' table.
struct EntityHandle
{
    /// All zero: no entity.
    EntityHandle() : _index(0), _counter(0), _isGroup(0) {}
    /// Each value is masked to its width.
    EntityHandle(uint32_t index, uint32_t counter, uint32_t isGroup)
        : _index(index & 0xFFFFFu), _counter(counter & 0x7FFu), _isGroup(isGroup & 1u)
    {
    }

    /// The whole word.
    uint32_t getUint32() const
    {
        uint32_t word;
        memcpy(&word, this, sizeof(word));
        return word;
    }
    /// Sets the whole word.
    void setUint32(uint32_t word) { memcpy(static_cast<void*>(this), &word, sizeof(word)); }

    /// Compares the whole word: index, counter and group bit.
    bool operator==(const EntityHandle& other) const { return getUint32() == other.getUint32(); }
    bool operator!=(const EntityHandle& other) const { return getUint32() != other.getUint32(); }

    /// Index in the handle table.
    uint32_t _index : 20;
    /// Generation of the table entry when the handle was made; 0 marks the absence of an entity.
    uint32_t _counter : 11;
    /// 1 for a group's handle.
    uint32_t _isGroup : 1;
};

static_assert(sizeof(EntityHandle) == 4, "an entity handle is one 32-bit word");

} // namespace orv
