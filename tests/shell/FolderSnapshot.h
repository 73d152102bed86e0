#pragma once

#include "storage/Bytes.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace scorvane::testing {

// Every regular file of a folder with its bytes, by file name.
using FolderSnapshot = std::map<std::string, Bytes>;

inline FolderSnapshot snapshot(const std::filesystem::path& folder) {
    FolderSnapshot files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        files[entry.path().filename().string()] =
            Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return files;
}

// Makes a folder hold exactly these files.
inline void restoreSnapshot(const std::filesystem::path& folder, const FolderSnapshot& files) {
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        std::filesystem::remove_all(entry.path());
    for (const auto& [name, bytes] : files) {
        std::ofstream out(folder / name, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }
}

// Bytes that differ from file to file and from call to call of the same seed.
inline Bytes filler(std::size_t size, int seed) {
    Bytes b(size);
    for (std::size_t i = 0; i < size; ++i)
        b[i] = static_cast<std::uint8_t>((i * 31 + static_cast<std::size_t>(seed) * 17) % 251);
    return b;
}

} // namespace scorvane::testing
