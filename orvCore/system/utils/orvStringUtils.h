// orvCore/system/utils/orvStringUtils.h
#pragma once

#include <cstdint>

#include "system/containers/orvArray.h"
#include "system/containers/orvString.h"

namespace orv
{

/// Size in bytes of the buffer that holds normalised attribute names until the next initCore.
constexpr int32_t ALPHANUM_BUFFER_SIZE = 65536;

/// A copy with the ASCII letters lowered.
OrvString toLower(const OrvString& text);
/// A copy with the ASCII letters raised.
OrvString toUpper(const OrvString& text);
/// Replaces every from by to, in place.
void replaceChar(OrvString& text, char from, char to);
/// Appends to parts the pieces of text between occurrences of separator, then the rest. Does nothing when text
/// or separator is empty.
void split(const OrvString& text, const OrvString& separator, Array<OrvString>& parts);
/// The longest text found in both a and b, the first in a on a tie; empty when they share no character.
OrvString longuestCommonSubstring(const OrvString& a, const OrvString& b);

/// Copies a name as an identifier: letters and digits stay, a blank is dropped and raises the next character,
/// Latin-1 accented vowels lose their accent, anything else becomes '_'. destination holds strlen(source) + 1
/// bytes. Returns true when the copy differs from the source.
bool alphaNumerizeNameWithCopy(const char* source, char* destination);
/// Normalises a name in place, as alphaNumerizeNameWithCopy. Returns true when it changed.
bool alphaNumerizeName(OrvString& name);
/// name itself when it is already normalised, else its normalised copy in a buffer that lives until the next
/// initCore. No allocation; registration thread only. Fatal when the buffer is full.
const char* alphaNumerizeNameStr(const char* name);
/// Rewinds the buffer of normalised names; every copy in it becomes invalid. Called by initCore.
void resetAlphaNumericCopiesBuffer();
/// Bytes of the buffer of normalised names in use since the last reset.
int32_t getAlphaNumericCopiesBufferIndex();

/// text followed by the decimal form of value.
OrvString operator+(const OrvString& text, int value);
/// text followed by the decimal form of value.
OrvString operator+(const OrvString& text, unsigned int value);
/// text followed by value in the shortest of fixed and exponent form, 6 significant digits.
OrvString operator+(const OrvString& text, float value);
/// text followed by value in the shortest of fixed and exponent form, 6 significant digits.
OrvString operator+(const OrvString& text, double value);
/// text followed by the decimal form of value, reusing text's block.
OrvString operator+(OrvString&& text, int value);
/// text followed by the decimal form of value, reusing text's block.
OrvString operator+(OrvString&& text, unsigned int value);
/// text followed by value as with the float form above, reusing text's block.
OrvString operator+(OrvString&& text, float value);
/// text followed by value as with the double form above, reusing text's block.
OrvString operator+(OrvString&& text, double value);

} // namespace orv
