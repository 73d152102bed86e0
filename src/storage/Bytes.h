#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace scorvane {

// Raw record bytes. Text in records is 8-bit Windows-1252, kept as std::string bytes
// until it reaches the screen.
using Bytes = std::vector<std::uint8_t>;
// Record bytes read where they lie: a record inside a buffer of many, or a whole Bytes.
using ByteView = std::span<const std::uint8_t>;

namespace field {

// Throws std::out_of_range: a field was asked for past the end of its record.
[[noreturn]] void throwPastTheEnd(const char* what);

// Writes text into a fixed-width field: cut to the width, padded on the right with spaces.
void putText(Bytes& rec, std::size_t offset, std::size_t width, std::string_view text);
// The field's bytes exactly as stored (width characters, padding included).
std::string getText(ByteView rec, std::size_t offset, std::size_t width);
void putInt16(Bytes& rec, std::size_t offset, std::int16_t value);
// Inline: records are read by the million.
inline std::int16_t getInt16(ByteView rec, std::size_t offset) {
    if (offset >= rec.size() || rec.size() - offset < 2) [[unlikely]]
        throwPastTheEnd("field::getInt16");
    return static_cast<std::int16_t>(
        static_cast<std::uint16_t>(rec[offset] | (rec[offset + 1] << 8)));
}
// Exactly n bytes: the given ones, zero-filled past their end. Decoders read through this so that
// a short or damaged record can never be read out of bounds.
Bytes sized(ByteView bytes, std::size_t n);

} // namespace field

// Text helpers shared by every layer. Trimming removes spaces only, as the record readers do.
std::string trimRight(std::string_view s);
std::string trimLeft(std::string_view s);
std::string trim(std::string_view s);
// Cut or pad with spaces to exactly width characters.
std::string fit(std::string_view s, std::size_t width);
// The decimal digits of n with no leading space ("7", "-3").
std::string digits(long long n);
// The leading numeric part of a text, as typed into a number box: optional spaces, an optional
// sign, then digits. Empty or non-numeric text gives 0. Values are clamped to the long range.
long long leadingNumber(std::string_view s);

} // namespace scorvane
