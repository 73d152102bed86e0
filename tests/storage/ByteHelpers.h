#pragma once

#include "storage/Bytes.h"

#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

namespace scorvane::testing {

// Expected record images are built by hand: a blank record, then the characters or the
// little-endian bytes of each field placed at its offset.
struct Field {
    std::size_t offset;
    Bytes bytes;
    Field(std::size_t at, std::string_view text) : offset(at), bytes(text.begin(), text.end()) {}
    Field(std::size_t at, std::initializer_list<int> b) : offset(at), bytes(b.begin(), b.end()) {}
    Field(std::size_t at, Bytes b) : offset(at), bytes(std::move(b)) {}
};

inline Bytes blank(std::size_t n) {
    return Bytes(n, ' ');
}

inline Bytes image(Bytes base, std::initializer_list<Field> fields) {
    for (const Field& f : fields)
        for (std::size_t i = 0; i < f.bytes.size(); ++i)
            base.at(f.offset + i) = f.bytes[i];
    return base;
}

// A recognisable byte at every position, so that a field read from or written to the wrong
// offset shows up.
inline Bytes pattern(std::size_t n) {
    Bytes b(n);
    for (std::size_t i = 0; i < n; ++i)
        b[i] = static_cast<std::uint8_t>((i * 31 + 7) & 0xFF);
    return b;
}

inline Bytes join(const std::vector<Bytes>& records) {
    Bytes all;
    for (const auto& r : records)
        all.insert(all.end(), r.begin(), r.end());
    return all;
}

} // namespace scorvane::testing
