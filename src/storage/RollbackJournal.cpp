#include "RollbackJournal.h"

#include "Platform.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace scorvane {

// The journal, all numbers little-endian:
//   "SVUNDO01", u32 number of files, then per file:
//     u16 name length, the name (no folder), u64 original length,
//     u64 anchor offset, u16 anchor length, the anchor (bytes the change leaves alone, just before
//       its first place, by which the file is known again),
//     u32 number of places, then per place: u64 offset, u64 length, the original bytes;
//   then "SVUNDEND", u64 length of all before it, u64 FNV-1a hash of all before it.
// A journal without its whole ending was cut short while it was written.

namespace {

constexpr std::array<char, 8> kMagic{'S', 'V', 'U', 'N', 'D', 'O', '0', '1'};
constexpr std::array<char, 8> kEndMagic{'S', 'V', 'U', 'N', 'D', 'E', 'N', 'D'};
constexpr std::size_t kEndLength = 24;
constexpr std::size_t kAnchorLength = 64;
constexpr std::size_t kPiece = 1u << 20;

// The journal's hash: FNV-1a over its bytes taken eight at a time (little-endian words, the last
// one zero-padded), which tells a journal cut short or damaged from a whole one at a fraction of
// the cost of a hash taken byte by byte. Bytes may be handed in in pieces of any length.
class JournalHash {
public:
    void add(const std::uint8_t* data, std::size_t size) {
        while (size > 0 && held_ > 0) { // complete a word begun by the last piece
            word_[held_++] = *data++;
            --size;
            if (held_ == 8)
                mix();
        }
        if (size == 0)
            return;
        for (; size >= 8; data += 8, size -= 8) {
            std::memcpy(word_.data(), data, 8);
            held_ = 8;
            mix();
        }
        std::memcpy(word_.data(), data, size);
        held_ = size;
    }
    std::uint64_t value() const {
        JournalHash last = *this;
        if (last.held_ > 0) {
            std::fill(last.word_.begin() + static_cast<std::ptrdiff_t>(last.held_),
                      last.word_.end(), 0);
            last.mix();
        }
        return last.hash_;
    }

private:
    void mix() {
        std::uint64_t w = 0;
        for (int i = 7; i >= 0; --i)
            w = (w << 8) | word_[static_cast<std::size_t>(i)];
        hash_ = (hash_ ^ w) * 0x100000001b3ULL;
        held_ = 0;
    }

    std::uint64_t hash_ = 0xcbf29ce484222325ULL;
    std::array<std::uint8_t, 8> word_{};
    std::size_t held_ = 0;
};

std::string nameOf(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The path's folder as the start of a path: up to and with its last separator.
std::string prefixOf(const std::string& path) {
    return path.substr(0, path.size() - nameOf(path).size());
}

// Writes the journal front to back in pieces, keeping its hash.
class JournalWriter {
public:
    explicit JournalWriter(platform::File& file) : file_(file) {}

    Status bytes(const std::uint8_t* data, std::size_t size) {
        hash_.add(data, size);
        buffer_.insert(buffer_.end(), data, data + size);
        return buffer_.size() >= kPiece ? drain() : Status::ok();
    }
    // A long run of bytes, written as it is rather than gathered first.
    Status run(const std::uint8_t* data, std::size_t size) {
        hash_.add(data, size);
        if (Status s = drain(); !s)
            return s;
        if (Status s = platform::writeAt(file_, static_cast<long long>(written_), data, size); !s)
            return s;
        written_ += size;
        return Status::ok();
    }
    Status number(std::uint64_t value, int width) {
        std::array<std::uint8_t, 8> b{};
        for (int i = 0; i < width; ++i)
            b[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
        return bytes(b.data(), static_cast<std::size_t>(width));
    }
    // The ending, then everything still held.
    Status finish() {
        const std::uint64_t length = written_ + buffer_.size();
        const std::uint64_t hash = hash_.value();
        buffer_.insert(buffer_.end(), kEndMagic.begin(), kEndMagic.end());
        for (std::uint64_t v : {length, hash})
            for (int i = 0; i < 8; ++i)
                buffer_.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
        return drain();
    }
    std::uint64_t offset() const { return written_ + buffer_.size(); }

private:
    Status drain() {
        if (buffer_.empty())
            return Status::ok();
        if (Status s = platform::writeAt(file_, static_cast<long long>(written_), buffer_.data(),
                                         buffer_.size());
            !s)
            return s;
        written_ += buffer_.size();
        buffer_.clear();
        return Status::ok();
    }

    platform::File& file_;
    Bytes buffer_;
    std::uint64_t written_ = 0;
    JournalHash hash_;
};

// Copies `length` bytes at `offset` of `from` to `write`, a piece at a time.
template <class Write>
Status copyRange(const platform::File& from, long long offset, long long length, Write write) {
    Bytes piece(static_cast<std::size_t>(std::min<long long>(length, kPiece)));
    for (long long done = 0; done < length;) {
        const auto wanted = static_cast<std::size_t>(std::min<long long>(length - done, kPiece));
        std::size_t got = 0;
        if (Status s = platform::readAt(from, offset + done, piece.data(), wanted, got); !s)
            return s;
        if (got < wanted)
            return platform::errorFromErrno(EIO); // the file was cut short meanwhile
        if (Status s = write(offset + done, piece.data(), got); !s)
            return s;
        done += static_cast<long long>(got);
    }
    return Status::ok();
}

struct Place {
    long long offset = 0;
    long long length = 0;
    long long journalOffset = 0; // where its original bytes lie in the journal
};

struct FileEntry {
    std::string name;
    long long originalLength = 0;
    long long anchorOffset = 0;
    Bytes anchor;
    std::vector<Place> places;
};

// The places of one change whose original bytes the journal keeps: what the writes and the
// rewrite overwrite of the file as it is.
std::vector<Place> placesOf(const InPlaceChange& change, long long length) {
    std::vector<Place> places;
    if (change.rewrite != nullptr) {
        const long long from = change.rewriteFrom * static_cast<long long>(change.recordLength);
        if (from < length)
            places.push_back({from, length - from, 0});
        return places;
    }
    for (const auto& [offset, bytes] : change.writes) {
        const long long end = std::min(length, offset + static_cast<long long>(bytes.size()));
        if (offset >= end)
            continue;
        if (!places.empty() && places.back().offset + places.back().length == offset)
            places.back().length += end - offset; // runs that meet are kept as one
        else
            places.push_back({offset, end - offset, 0});
    }
    return places;
}

Status badChange(const std::string& what) {
    return Status::error(ErrorKind::Unreadable, what);
}

// Makes the change of one file once its journal is safe: the writes put in place, or the records
// rewritten from the original ones, which are read back from the journal.
Status applyChange(const InPlaceChange& change, platform::File& file, const platform::File& journal,
                   const FileEntry& entry) {
    if (change.rewrite == nullptr) {
        // Runs that meet are written with one call.
        for (auto it = change.writes.begin(); it != change.writes.end();) {
            const long long start = it->first;
            Bytes run = it->second;
            for (++it; it != change.writes.end() &&
                       it->first == start + static_cast<long long>(run.size());
                 ++it)
                run.insert(run.end(), it->second.begin(), it->second.end());
            if (Status s = platform::writeAt(file, start, run.data(), run.size()); !s)
                return s;
        }
        return Status::ok();
    }
    const long long length = static_cast<long long>(change.recordLength);
    const long long from = change.rewriteFrom * length;
    const long long original = entry.places.empty() ? 0 : entry.places.front().length;
    const long long wholeRecords = original / length;
    const long long journalAt = entry.places.empty() ? 0 : entry.places.front().journalOffset;
    const long long perPiece = std::max<long long>(1, static_cast<long long>(kPiece) / length);
    Bytes piece, out;
    long long at = from;
    auto write = [&]() -> Status {
        if (Status s = platform::writeAt(file, at, out.data(), out.size()); !s)
            return s;
        at += static_cast<long long>(out.size());
        out.clear();
        return Status::ok();
    };
    for (long long done = 0; done < wholeRecords;) {
        const long long n = std::min(perPiece, wholeRecords - done);
        piece.resize(static_cast<std::size_t>(n * length));
        std::size_t got = 0;
        if (Status s = platform::readAt(journal, journalAt + done * length, piece.data(),
                                        piece.size(), got);
            !s)
            return s;
        if (got < piece.size())
            return platform::errorFromErrno(EIO);
        (*change.rewrite)(piece, static_cast<std::size_t>(change.rewriteFrom + done), out);
        if (Status s = write(); !s)
            return s;
        done += n;
    }
    (*change.rewrite)(ByteView{}, static_cast<std::size_t>(change.rewriteFrom + wholeRecords), out);
    if (Status s = write(); !s)
        return s;
    return at < entry.originalLength ? platform::setFileLength(file, at) : Status::ok();
}

// Reads the journal's numbers and bytes front to back, within its body.
class JournalReader {
public:
    JournalReader(const platform::File& file, long long bodyLength)
        : file_(file), end_(bodyLength) {}

    bool bytes(std::uint8_t* data, std::size_t size) {
        if (at_ + static_cast<long long>(size) > end_)
            return false;
        std::size_t got = 0;
        if (!platform::readAt(file_, at_, data, size, got) || got < size)
            return false;
        at_ += static_cast<long long>(size);
        return true;
    }
    bool number(std::uint64_t& value, int width) {
        std::array<std::uint8_t, 8> b{};
        if (!bytes(b.data(), static_cast<std::size_t>(width)))
            return false;
        value = 0;
        for (int i = width - 1; i >= 0; --i)
            value = (value << 8) | b[static_cast<std::size_t>(i)];
        return true;
    }
    bool skip(long long n) {
        if (n < 0 || at_ + n > end_)
            return false;
        at_ += n;
        return true;
    }
    long long at() const { return at_; }
    bool atEnd() const { return at_ == end_; }

private:
    const platform::File& file_;
    long long at_ = 0;
    long long end_;
};

// The journal's files and places, read and checked against itself; false when it holds what no
// journal of ours can hold.
bool parseJournal(JournalReader& in, std::vector<FileEntry>& files) {
    in.skip(static_cast<long long>(kMagic.size()));
    std::uint64_t count = 0;
    if (!in.number(count, 4) || count > 64)
        return false;
    for (std::uint64_t f = 0; f < count; ++f) {
        FileEntry e;
        std::uint64_t nameLength = 0, length = 0, anchorOffset = 0, anchorLength = 0, places = 0;
        if (!in.number(nameLength, 2) || nameLength == 0 || nameLength > 255)
            return false;
        e.name.resize(static_cast<std::size_t>(nameLength));
        if (!in.bytes(reinterpret_cast<std::uint8_t*>(e.name.data()), e.name.size()) ||
            !in.number(length, 8) || !in.number(anchorOffset, 8) || !in.number(anchorLength, 2) ||
            anchorLength > kAnchorLength || length > (1ULL << 62))
            return false;
        e.originalLength = static_cast<long long>(length);
        e.anchorOffset = static_cast<long long>(anchorOffset);
        e.anchor.resize(static_cast<std::size_t>(anchorLength));
        if (!in.bytes(e.anchor.data(), e.anchor.size()) || !in.number(places, 4))
            return false;
        for (std::uint64_t p = 0; p < places; ++p) {
            std::uint64_t offset = 0, size = 0;
            if (!in.number(offset, 8) || !in.number(size, 8) || size > (1ULL << 62) ||
                offset > (1ULL << 62))
                return false;
            Place place{static_cast<long long>(offset), static_cast<long long>(size), in.at()};
            if (!in.skip(place.length))
                return false;
            e.places.push_back(place);
        }
        files.push_back(std::move(e));
    }
    return in.atEnd();
}

// Why a journal's entry does not fit the file it names (`why`, empty when it fits). A disk error
// while finding out is no answer: it comes back as the status.
Status misfit(const FileEntry& e, const std::string& folder, std::string& why) {
    why.clear();
    if (e.name.find_first_of("/\\:") != std::string::npos || e.name == "." || e.name == "..") {
        why = "it names a file outside its folder";
        return Status::ok();
    }
    const std::string path = folder + e.name;
    if (!platform::isFile(path)) {
        why = "the file " + e.name + " it names is not there";
        return Status::ok();
    }
    long long previousEnd = 0;
    for (const Place& p : e.places) {
        if (p.offset < previousEnd || p.offset + p.length > e.originalLength) {
            why = "its places do not fit the length of " + e.name;
            return Status::ok();
        }
        previousEnd = p.offset + p.length;
    }
    if (e.anchorOffset + static_cast<long long>(e.anchor.size()) > e.originalLength ||
        (!e.places.empty() &&
         e.anchorOffset + static_cast<long long>(e.anchor.size()) > e.places.front().offset)) {
        why = "its lengths do not fit " + e.name;
        return Status::ok();
    }
    platform::File file;
    if (Status s = platform::openFile(path, platform::OpenMode::ReadOnly, file); !s)
        return s;
    Bytes now(e.anchor.size());
    std::size_t got = 0;
    if (Status s = platform::readAt(file, e.anchorOffset, now.data(), now.size(), got); !s)
        return s;
    if (got != now.size() || now != e.anchor)
        why = "it was written for another file than " + e.name;
    return Status::ok();
}

} // namespace

Status changeInPlace(const std::vector<InPlaceChange>& changes, const std::string& journalPath) {
    const std::string folder = prefixOf(journalPath);
    std::vector<platform::File> files(changes.size());
    std::vector<FileEntry> entries(changes.size());
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const InPlaceChange& c = changes[i];
        if (prefixOf(c.path) != folder || nameOf(c.path).empty())
            return badChange("A file changed in place must lie beside its journal.");
        long long previousEnd = 0;
        for (const auto& [offset, bytes] : c.writes) {
            if (offset < previousEnd)
                return badChange("The places changed in " + nameOf(c.path) + " overlap.");
            previousEnd = offset + static_cast<long long>(bytes.size());
        }
        if (c.rewrite != nullptr && (!c.writes.empty() || c.recordLength == 0 || c.rewriteFrom < 0))
            return badChange("A file is either written over or rewritten, not both.");
        if (Status s = platform::openFile(c.path, platform::OpenMode::ReadWrite, files[i]); !s)
            return s;
        FileEntry& e = entries[i];
        e.name = nameOf(c.path);
        if (Status s = platform::fileSize(files[i], e.originalLength); !s)
            return s;
        e.places = placesOf(c, e.originalLength);
        const long long firstPlace = e.places.empty() ? e.originalLength : e.places.front().offset;
        const long long anchor = std::min<long long>(kAnchorLength, firstPlace);
        e.anchorOffset = firstPlace - anchor;
        e.anchor.resize(static_cast<std::size_t>(anchor));
        std::size_t got = 0;
        if (Status s =
                platform::readAt(files[i], e.anchorOffset, e.anchor.data(), e.anchor.size(), got);
            !s)
            return s;
        if (got < e.anchor.size())
            return platform::errorFromErrno(EIO);
    }

    // The journal first, whole and flushed: until it is, no file is touched.
    {
        platform::File journal;
        if (Status s = platform::openFile(journalPath, platform::OpenMode::Replace, journal); !s)
            return s;
        JournalWriter out(journal);
        Status s = out.bytes(reinterpret_cast<const std::uint8_t*>(kMagic.data()), kMagic.size());
        s = s ? out.number(entries.size(), 4) : s;
        for (std::size_t i = 0; s && i < entries.size(); ++i) {
            FileEntry& e = entries[i];
            s = out.number(e.name.size(), 2);
            s = s ? out.bytes(reinterpret_cast<const std::uint8_t*>(e.name.data()), e.name.size())
                  : s;
            s = s ? out.number(static_cast<std::uint64_t>(e.originalLength), 8) : s;
            s = s ? out.number(static_cast<std::uint64_t>(e.anchorOffset), 8) : s;
            s = s ? out.number(e.anchor.size(), 2) : s;
            s = s ? out.bytes(e.anchor.data(), e.anchor.size()) : s;
            s = s ? out.number(e.places.size(), 4) : s;
            for (Place& p : e.places) {
                s = s ? out.number(static_cast<std::uint64_t>(p.offset), 8) : s;
                s = s ? out.number(static_cast<std::uint64_t>(p.length), 8) : s;
                p.journalOffset = static_cast<long long>(out.offset());
                if (s)
                    s = copyRange(files[i], p.offset, p.length,
                                  [&](long long, const std::uint8_t* data, std::size_t size) {
                                      return out.run(data, size);
                                  });
            }
        }
        s = s ? out.finish() : s;
        s = s ? platform::flush(journal) : s;
        if (!s)
            return s;
        platform::syncFolder(platform::folderOf(journalPath));

        // Then the files, each flushed; the original records a rewrite starts from are read back
        // from the journal, since the file's own are overwritten on the way.
        journal.close();
        if (Status r = platform::openFile(journalPath, platform::OpenMode::ReadOnly, journal); !r)
            return r;
        for (std::size_t i = 0; i < changes.size(); ++i) {
            if (Status a = applyChange(changes[i], files[i], journal, entries[i]); !a)
                return a;
            if (Status f = platform::flush(files[i]); !f)
                return f;
        }
    }
    if (Status s = platform::removeFile(journalPath); !s)
        return s;
    platform::syncFolder(platform::folderOf(journalPath));
    return Status::ok();
}

Status rollBackInterruptedChange(const std::string& journalPath, JournalFinding& finding) {
    finding = {};
    platform::File journal;
    bool missing = false;
    if (Status s = platform::openFile(journalPath, platform::OpenMode::ReadOnly, journal, &missing);
        !s)
        return missing ? Status::ok() : s;
    const std::string folder = prefixOf(journalPath);
    const std::string shown = platform::shownPath(journalPath);
    long long size = 0;
    if (Status s = platform::fileSize(journal, size); !s)
        return s;

    // Not ours, or cut short while it was written (no file was touched then: it goes).
    std::array<std::uint8_t, 8> magic{};
    std::size_t got = 0;
    if (Status s = platform::readAt(journal, 0, magic.data(), magic.size(), got); !s)
        return s;
    if (!std::equal(magic.begin(), magic.begin() + static_cast<std::ptrdiff_t>(got),
                    reinterpret_cast<const std::uint8_t*>(kMagic.data()))) {
        finding = {JournalFinding::Kind::Refused,
                   "The file " + shown + " is not a journal of this program."};
        return Status::ok();
    }
    bool whole = size >= static_cast<long long>(kMagic.size() + kEndLength);
    long long bodyLength = size - static_cast<long long>(kEndLength);
    if (whole) {
        std::array<std::uint8_t, kEndLength> end{};
        if (Status s = platform::readAt(journal, bodyLength, end.data(), end.size(), got); !s)
            return s;
        std::uint64_t length = 0, hash = 0;
        for (int i = 7; i >= 0; --i) {
            length = (length << 8) | end[8 + static_cast<std::size_t>(i)];
            hash = (hash << 8) | end[16 + static_cast<std::size_t>(i)];
        }
        whole = got == end.size() &&
                std::equal(kEndMagic.begin(), kEndMagic.end(),
                           reinterpret_cast<const char*>(end.data())) &&
                length == static_cast<std::uint64_t>(bodyLength);
        JournalHash actual;
        if (whole)
            if (Status s = copyRange(journal, 0, bodyLength,
                                     [&](long long, const std::uint8_t* data, std::size_t n) {
                                         actual.add(data, n);
                                         return Status::ok();
                                     });
                !s)
                return s;
        whole = whole && actual.value() == hash;
    }
    if (!whole) {
        journal.close();
        finding.kind = JournalFinding::Kind::Incomplete;
        if (Status s = platform::removeFile(journalPath); !s)
            return s;
        platform::syncFolder(platform::folderOf(journalPath));
        return Status::ok();
    }

    std::vector<FileEntry> entries;
    JournalReader in(journal, bodyLength);
    if (!parseJournal(in, entries)) {
        finding = {JournalFinding::Kind::Refused,
                   "The journal " + shown + " holds what no journal of this program holds."};
        return Status::ok();
    }
    for (const FileEntry& e : entries) {
        std::string why;
        if (Status s = misfit(e, folder, why); !s)
            return s;
        if (!why.empty()) {
            finding = {JournalFinding::Kind::Refused,
                       "The journal " + shown + " does not fit the files: " + why + "."};
            return Status::ok();
        }
    }

    // Every place gets its original bytes back and every file its original length.
    for (const FileEntry& e : entries) {
        platform::File file;
        if (Status s = platform::openFile(folder + e.name, platform::OpenMode::ReadWrite, file); !s)
            return s;
        for (const Place& p : e.places)
            if (Status s = copyRange(journal, p.journalOffset, p.length,
                                     [&](long long at, const std::uint8_t* data, std::size_t n) {
                                         return platform::writeAt(
                                             file, p.offset + (at - p.journalOffset), data, n);
                                     });
                !s)
                return s;
        if (Status s = platform::setFileLength(file, e.originalLength); !s)
            return s;
        if (Status s = platform::flush(file); !s)
            return s;
    }
    journal.close();
    if (Status s = platform::removeFile(journalPath); !s)
        return s;
    platform::syncFolder(platform::folderOf(journalPath));
    finding.kind = JournalFinding::Kind::RolledBack;
    return Status::ok();
}

} // namespace scorvane
