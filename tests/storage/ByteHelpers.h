#pragma once

#include "storage/Bytes.h"

#include <initializer_list>
#include <string_view>

namespace scorvane::testing {

// Expected record images are built by hand: a blank record, then the characters and the
// little-endian bytes of each field placed at its offset.
inline Bytes blank(std::size_t n) { return Bytes(n, ' '); }

inline void setText(Bytes& b, std::size_t offset, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        b.at(offset + i) = static_cast<std::uint8_t>(text[i]);
}

inline void setBytes(Bytes& b, std::size_t offset, std::initializer_list<int> bytes) {
    for (int v : bytes)
        b.at(offset++) = static_cast<std::uint8_t>(v);
}

} // namespace scorvane::testing
