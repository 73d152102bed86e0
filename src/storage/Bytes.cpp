#include "Bytes.h"

#include <limits>
#include <stdexcept>

namespace scorvane {
namespace field {

void throwPastTheEnd(const char* what) {
    throw std::out_of_range(std::string(what) + ": the field lies past the end of the record");
}

void putText(Bytes& rec, std::size_t offset, std::size_t width, std::string_view text) {
    for (std::size_t i = 0; i < width; ++i)
        rec.at(offset + i) = i < text.size() ? static_cast<std::uint8_t>(text[i]) : ' ';
}

std::string getText(ByteView rec, std::size_t offset, std::size_t width) {
    if (offset > rec.size() || width > rec.size() - offset)
        throwPastTheEnd("field::getText");
    return std::string(rec.begin() + static_cast<std::ptrdiff_t>(offset),
                       rec.begin() + static_cast<std::ptrdiff_t>(offset + width));
}

void putInt16(Bytes& rec, std::size_t offset, std::int16_t value) {
    const auto u = static_cast<std::uint16_t>(value);
    rec.at(offset) = static_cast<std::uint8_t>(u & 0xFF);
    rec.at(offset + 1) = static_cast<std::uint8_t>(u >> 8);
}

Bytes sized(ByteView bytes, std::size_t n) {
    Bytes out(n, 0);
    for (std::size_t i = 0; i < n && i < bytes.size(); ++i)
        out[i] = bytes[i];
    return out;
}

} // namespace field

std::string trimRight(std::string_view s) {
    auto end = s.find_last_not_of(' ');
    return end == std::string_view::npos ? std::string() : std::string(s.substr(0, end + 1));
}

std::string trimLeft(std::string_view s) {
    auto start = s.find_first_not_of(' ');
    return start == std::string_view::npos ? std::string() : std::string(s.substr(start));
}

std::string trim(std::string_view s) {
    return trimLeft(trimRight(s));
}

std::string fit(std::string_view s, std::size_t width) {
    std::string out(s.substr(0, width));
    out.resize(width, ' ');
    return out;
}

std::string digits(long long n) {
    return std::to_string(n);
}

long long leadingNumber(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size() && s[i] == ' ')
        ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) {
        negative = s[i] == '-';
        ++i;
    }
    long long value = 0;
    constexpr long long limit = std::numeric_limits<long long>::max() / 10 - 10;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
        if (value < limit)
            value = value * 10 + (s[i] - '0');
    }
    return negative ? -value : value;
}

} // namespace scorvane
