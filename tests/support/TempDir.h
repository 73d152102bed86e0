#pragma once

#include "storage/Bytes.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace scorvane::testing {

// A fresh folder under the system's temporary folder, removed again with everything in it.
class TempDir {
public:
    TempDir() {
        std::random_device rd;
        const auto base = std::filesystem::temp_directory_path();
        for (;;) {
            path_ = base / ("scorvane-test-" + std::to_string(rd()));
            if (std::filesystem::create_directory(path_))
                break;
        }
    }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ec);
        std::filesystem::remove_all(path_, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    // The folder as the program keeps directories: with the system's separator at the end.
    std::string dir() const { return (path_ / "").string(); }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

    Bytes read(const std::string& name) const {
        std::ifstream in(file(name), std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    void write(const std::string& name, const Bytes& bytes) const {
        std::ofstream out(file(name), std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }
    bool exists(const std::string& name) const { return std::filesystem::exists(path_ / name); }

private:
    std::filesystem::path path_;
};

} // namespace scorvane::testing
