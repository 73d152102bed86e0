#pragma once

// Structured pieces read out of a fuzzer's input, front to back. An input that runs out reads as
// zeros and empty pieces, so every input means something.

#include "storage/Bytes.h"
#include "support/TempDir.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

// What must hold for every input; a breach stops the run like a crash does, naming the check.
#define FUZZ_CHECK(condition)                                                                      \
    ((condition) ? (void)0 : ::scorvane::testing::fuzzCheckFailed(#condition, __FILE__, __LINE__))

namespace scorvane::testing {

[[noreturn]] inline void fuzzCheckFailed(const char* check, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, check);
    std::abort();
}

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool empty() const { return at_ >= size_; }
    std::uint8_t byte() { return empty() ? 0 : data_[at_++]; }
    // A number lo..hi from two bytes.
    int number(int lo, int hi) {
        const int raw = byte() | (byte() << 8);
        return lo + raw % (hi - lo + 1);
    }
    // A piece whose length (two bytes, at most `most`) comes first.
    Bytes piece(std::size_t most) {
        const std::size_t wanted = std::min<std::size_t>(byte() | (byte() << 8), most);
        return take(wanted);
    }
    std::string text(std::size_t most) {
        const Bytes b = piece(most);
        return std::string(b.begin(), b.end());
    }
    Bytes rest() { return take(size_ - std::min(at_, size_)); }

private:
    Bytes take(std::size_t n) {
        n = std::min(n, size_ - std::min(at_, size_));
        Bytes out(data_ + at_, data_ + at_ + n);
        at_ += n;
        return out;
    }

    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// The files a data directory may hold, for inputs that make one.
inline const std::vector<std::string>& dataFileNames() {
    static const std::vector<std::string> names = {
        "FBTEAMS.DAT",   "FBPN1.DAT",    "FBGS1.DAT",    "FBPS1.DAT", "FBPI1.DAT",
        "FBPN2.DAT",     "FBGS2.DAT",    "FBPS2.DAT",    "FBPI2.DAT", "FBRPTFMT.DAT",
        "FBGS1.DAT.tmp", "FBJOURNL.TMP", "FBPS1.DAT.tmp"};
    return names;
}

// Empties the folder and writes files into it as the input says: a count, then for each file a
// byte choosing its name and its contents as a piece. Whatever follows is left for the caller.
inline void writeDataDirectory(FuzzInput& in, const TempDir& dir) {
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path(), ec))
        std::filesystem::remove_all(entry.path(), ec);
    const int count = in.byte() % 12;
    for (int i = 0; i < count; ++i) {
        const std::string& name = dataFileNames()[in.byte() % dataFileNames().size()];
        const Bytes contents = in.piece(64 * 1024);
        if (name == "FBJOURNL.TMP") {
            // A journal names files by their full paths: "@" stands for the folder, so that
            // inputs can name files of the directory as well as anything else.
            std::string text;
            for (std::uint8_t c : contents)
                text += c == '@' ? dir.dir() : std::string(1, static_cast<char>(c));
            dir.write(name, Bytes(text.begin(), text.end()));
        } else {
            dir.write(name, contents);
        }
    }
}

} // namespace scorvane::testing
