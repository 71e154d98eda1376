// orvCore/system/utils/orvHashCode.h
#pragma once

namespace orv
{

/// The hash of a name that knowledge base keys rest on: the sum of (31 * byte, as signed) XOR (distance to the
/// last byte), low 32 bits. 0 for an empty or null text. Collides readily; never change it, stored keys depend on it.
int getHashCode(const char* text);

} // namespace orv
