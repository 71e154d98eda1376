// orvCore/system/serialization/orvIdTable.h
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "system/debug/orvAssert.h"

namespace orv
{

/// The binary stream's tables of ids and addresses: a hash table with open addressing from a pointer or an
/// unsigned key to a plain value, which only grows and is emptied whole. Lookups and insertions cost a hash and a
/// few probes, which is what a stream of many small objects needs. One thread at a time.
template <typename Key, typename Value>
class IdTable
{
    static_assert(std::is_trivially_copyable<Key>::value && std::is_trivially_copyable<Value>::value,
                  "keys and values are plain words");

public:
    /// An empty table; its slots come with the first key. Not copyable.
    IdTable() = default;
    ~IdTable() { free(_slots); }
    IdTable(const IdTable&) = delete;
    IdTable& operator=(const IdTable&) = delete;

    /// Number of keys.
    size_t size() const { return _size; }
    /// The value of key, or null when the key is absent.
    Value* find(Key key)
    {
        if (_size == 0)
        {
            return nullptr;
        }
        for (size_t index = hash(key) & _mask;; index = (index + 1) & _mask)
        {
            Slot& slot = _slots[index];
            if (!slot._used)
            {
                return nullptr;
            }
            if (slot._key == key)
            {
                return &slot._value;
            }
        }
    }
    /// The value of key, entered with value first when absent.
    Value& findOrInsert(Key key, Value value)
    {
        if ((_size + 1) * 2 > _capacity)
        {
            grow();
        }
        size_t index = hash(key) & _mask;
        for (; _slots[index]._used; index = (index + 1) & _mask)
        {
            if (_slots[index]._key == key)
            {
                return _slots[index]._value;
            }
        }
        _slots[index]._used = true;
        _slots[index]._key = key;
        _slots[index]._value = value;
        ++_size;
        return _slots[index]._value;
    }
    /// Removes every key; the room stays.
    void clear()
    {
        if (_slots != nullptr)
        {
            memset(static_cast<void*>(_slots), 0, _capacity * sizeof(Slot));
        }
        _size = 0;
    }

private:
    /// One key and its value; unused slots are all zero.
    struct Slot
    {
        Key _key;
        Value _value;
        bool _used;
    };

    static size_t hash(Key key)
    {
        uint64_t word = 0;
        memcpy(&word, &key, sizeof(key) < sizeof(word) ? sizeof(key) : sizeof(word));
        // Objects met one after the other mostly lie one after the other: neighbouring addresses land in
        // neighbouring slots, so a walk over an array touches the table in order instead of at random. The high
        // bits folded in keep distant blocks apart.
        return static_cast<size_t>((word >> 3) ^ ((word >> 23) * 0x9E3779B1u));
    }

    void grow()
    {
        const size_t capacity = _capacity == 0 ? 64 : _capacity * 2;
        Slot* slots = static_cast<Slot*>(calloc(capacity, sizeof(Slot)));
        orvAssert(slots != NULL);
        Slot* old = _slots;
        const size_t oldCapacity = _capacity;
        _slots = slots;
        _capacity = capacity;
        _mask = capacity - 1;
        _size = 0;
        for (size_t i = 0; i < oldCapacity; ++i)
        {
            if (old[i]._used)
            {
                findOrInsert(old[i]._key, old[i]._value);
            }
        }
        free(old);
    }

    Slot* _slots = nullptr;
    size_t _capacity = 0;
    size_t _mask = 0;
    size_t _size = 0;
};

} // namespace orv
