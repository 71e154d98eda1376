// orvCore/system/inspection/orvUuid.h
#pragma once

#include <cstdint>

#include "system/containers/orvString.h"

namespace orv
{

/// A 128-bit class or object identifier. Its 16 bytes are written raw into binary streams, so the layout is fixed.
/// A value type; any thread.
class Uuid
{
public:
    /// The null identifier: all zero.
    Uuid() = default;
    /// Parses "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx", either case. Fields the text does not give stay zero.
    explicit Uuid(const char* text);
    /// A copy.
    Uuid(const Uuid& other) = default;
    /// Copies the 16 bytes.
    Uuid& operator=(const Uuid& other) = default;

    /// Same 16 bytes.
    bool operator==(const Uuid& other) const;
    /// Different bytes.
    bool operator!=(const Uuid& other) const { return !(*this == other); }
    /// Storage order, byte by byte as unsigned; not the order of the printed text.
    bool operator<(const Uuid& other) const;
    /// Storage order, byte by byte as unsigned.
    bool operator>(const Uuid& other) const;

    /// The identifier of a template instance: the leading fields add twice the right operand, the eight trailing
    /// bytes twice the left one. Not commutative, and it names classes in files: keep it as it is.
    Uuid operator+(const Uuid& other) const;
    /// A copy with n added to _data0 only, wrapping at 32 bits.
    Uuid operator+(unsigned int n) const;

    /// A fresh identifier from the system's uuidgen command; the null identifier, logged, when that fails.
    static Uuid createUuid();

    /// True for the all-zero identifier.
    bool isNull() const;
    /// The lower-case text form, 36 characters.
    OrvString getString() const;

    // Public on purpose: names and order are the fixed layout of the 16 bytes that binary streams write.
    /// First group, native byte order.
    uint32_t _data0 = 0;
    /// Second group, native byte order.
    uint16_t _data1 = 0;
    /// Third group, native byte order.
    uint16_t _data2 = 0;
    /// Fourth and fifth groups, in printed order.
    uint8_t _data3[8] = {0, 0, 0, 0, 0, 0, 0, 0};
};

static_assert(sizeof(Uuid) == 16, "a Uuid is 16 bytes without padding");

} // namespace orv
