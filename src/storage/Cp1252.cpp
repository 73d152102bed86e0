#include "Cp1252.h"

#include <array>
#include <cstdint>

namespace scorvane {
namespace {

// Code points of bytes 0x80..0x9F; the rest of the range equals Latin-1.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

char toByte(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF))
        return static_cast<char>(cp);
    for (std::size_t i = 0; i < kHigh.size(); ++i)
        if (kHigh[i] == cp)
            return static_cast<char>(0x80 + i);
    return '?';
}

} // namespace

std::string cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (char c : bytes) {
        const auto b = static_cast<std::uint8_t>(c);
        appendUtf8(out, b >= 0x80 && b < 0xA0 ? kHigh[b - 0x80] : char32_t(b));
    }
    return out;
}

std::string utf8ToCp1252(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    std::size_t i = 0;
    while (i < utf8.size()) {
        const auto b = static_cast<std::uint8_t>(utf8[i]);
        int extra = 0;
        char32_t cp = 0;
        if (b < 0x80) {
            cp = b;
        } else if ((b & 0xE0) == 0xC0) {
            extra = 1;
            cp = b & 0x1F;
        } else if ((b & 0xF0) == 0xE0) {
            extra = 2;
            cp = b & 0x0F;
        } else if ((b & 0xF8) == 0xF0) {
            extra = 3;
            cp = b & 0x07;
        } else {
            out += '?';
            ++i;
            continue;
        }
        bool good = i + static_cast<std::size_t>(extra) < utf8.size();
        for (int k = 1; good && k <= extra; ++k) {
            const auto c = static_cast<std::uint8_t>(utf8[i + k]);
            if ((c & 0xC0) != 0x80)
                good = false;
            else
                cp = (cp << 6) | (c & 0x3F);
        }
        if (!good) {
            out += '?';
            ++i;
            continue;
        }
        out += toByte(cp);
        i += static_cast<std::size_t>(extra) + 1;
    }
    return out;
}

} // namespace scorvane
