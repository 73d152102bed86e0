#pragma once

#include <string>
#include <string_view>

namespace scorvane {

// Conversion between the Windows-1252 bytes kept in the files and UTF-8 used on screen.
// The five byte values that Windows-1252 leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to
// the control characters of the same number so that every byte survives a round trip.
std::string cp1252ToUtf8(std::string_view bytes);
// Characters that Windows-1252 cannot hold become '?'. Malformed UTF-8 bytes become '?' too.
std::string utf8ToCp1252(std::string_view utf8);

} // namespace scorvane
