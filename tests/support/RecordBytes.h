#pragma once

#include "storage/Bytes.h"

#include <cstdint>
#include <string>

namespace scorvane::testing {

// A field of a file image as text, and a little-endian 16-bit number of it.
inline std::string textAt(const Bytes& b, std::size_t offset, std::size_t width) {
    return std::string(b.begin() + static_cast<std::ptrdiff_t>(offset),
                       b.begin() + static_cast<std::ptrdiff_t>(offset + width));
}
inline int intAt(const Bytes& b, std::size_t offset) {
    return static_cast<std::int16_t>(b.at(offset) | (b.at(offset + 1) << 8));
}

} // namespace scorvane::testing
