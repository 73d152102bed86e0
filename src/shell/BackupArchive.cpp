#include "BackupArchive.h"

#include "storage/FileNames.h"
#include "storage/Records.h"
#include "storage/SiteId.h"

#include <array>
#include <set>

namespace scorvane {

namespace {

constexpr std::array<std::uint8_t, 10> kMagic = {'S', 'C', 'V', 'B', 'A', 'C', 'K', 'U', 'P', 0x1A};
constexpr std::uint16_t kVersion = 1;
constexpr std::size_t kMadeOnWidth = 19;
constexpr std::size_t kHeaderSize = kMagic.size() + 2 + kMadeOnWidth + 2;

const std::array<std::uint32_t, 256>& crcTable() {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            std::uint32_t c = n;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    return table;
}

void put16(Bytes& out, std::uint16_t v) {
    out.push_back(static_cast<std::uint8_t>(v & 0xFF));
    out.push_back(static_cast<std::uint8_t>(v >> 8));
}

void put32(Bytes& out, std::uint32_t v) {
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<std::uint8_t>((v >> shift) & 0xFF));
}

// Reads forward through a buffer; any read past its end marks the reader as failed.
class Reader {
public:
    explicit Reader(const Bytes& bytes, std::size_t end) : bytes_(bytes), end_(end) {}
    bool ok() const { return ok_; }
    std::size_t position() const { return pos_; }
    bool has(std::size_t n) {
        if (!ok_ || end_ - pos_ < n)
            ok_ = false;
        return ok_;
    }
    std::uint8_t u8() { return has(1) ? bytes_[pos_++] : 0; }
    std::uint16_t u16() {
        if (!has(2))
            return 0;
        const auto v = static_cast<std::uint16_t>(bytes_[pos_] | (bytes_[pos_ + 1] << 8));
        pos_ += 2;
        return v;
    }
    std::uint32_t u32() {
        if (!has(4))
            return 0;
        std::uint32_t v = 0;
        for (int i = 3; i >= 0; --i)
            v = (v << 8) | bytes_[pos_ + static_cast<std::size_t>(i)];
        pos_ += 4;
        return v;
    }
    std::string text(std::size_t n) {
        if (!has(n))
            return {};
        std::string s(bytes_.begin() + static_cast<std::ptrdiff_t>(pos_),
                      bytes_.begin() + static_cast<std::ptrdiff_t>(pos_ + n));
        pos_ += n;
        return s;
    }
    Bytes block(std::size_t n) {
        if (!has(n))
            return {};
        Bytes b(bytes_.begin() + static_cast<std::ptrdiff_t>(pos_),
                bytes_.begin() + static_cast<std::ptrdiff_t>(pos_ + n));
        pos_ += n;
        return b;
    }

private:
    const Bytes& bytes_;
    std::size_t end_;
    std::size_t pos_ = 0;
    bool ok_ = true;
};

// A name read from a file, fit to be shown in a message.
std::string shownName(const std::string& name) {
    std::string out;
    for (char c : name)
        out += (c >= ' ' && c <= '~') ? c : '?';
    return out;
}

struct Header {
    Folder folder;
    std::string name;
    std::uint32_t size;
    std::uint32_t crc;
};

} // namespace

std::uint32_t crc32(const std::uint8_t* data, std::size_t size) {
    const auto& table = crcTable();
    std::uint32_t c = 0xFFFFFFFFu;
    for (std::size_t i = 0; i < size; ++i)
        c = table[(c ^ data[i]) & 0xFF] ^ (c >> 8);
    return c ^ 0xFFFFFFFFu;
}

bool isDataFileName(Folder folder, std::string_view name) {
    static const std::set<std::string, std::less<>> dataNames = [] {
        std::set<std::string, std::less<>> names;
        const DataPaths bare;
        names.insert(fileName(FileKind::TeamList, bare, 0));
        for (int team = 1; team <= kMaxTeams; ++team) {
            for (FileKind kind :
                 {FileKind::Roster, FileKind::PlayerInfo, FileKind::Games, FileKind::Stats})
                names.insert(fileName(kind, bare, team));
            names.insert(siteIdFileName(bare, team));
        }
        return names;
    }();
    if (folder == Folder::Report)
        return name == fileName(FileKind::ReportFormats, DataPaths{}, 0);
    return dataNames.contains(name);
}

const ArchivedFile* BackupArchive::find(Folder folder, std::string_view name) const {
    for (const ArchivedFile& f : files)
        if (f.folder == folder && f.name == name)
            return &f;
    return nullptr;
}

std::vector<std::string> BackupArchive::teamNames() const {
    std::vector<std::string> names;
    const ArchivedFile* list = find(Folder::Data, fileName(FileKind::TeamList, DataPaths{}, 0));
    if (!list)
        return names;
    for (std::size_t off = 0; off + TeamRecord::Length <= list->contents.size();
         off += TeamRecord::Length) {
        const Bytes record(list->contents.begin() + static_cast<std::ptrdiff_t>(off),
                           list->contents.begin() +
                               static_cast<std::ptrdiff_t>(off + TeamRecord::Length));
        const std::string name = trim(TeamRecord::decode(record).teamName);
        if (!name.empty())
            names.push_back(name);
    }
    return names;
}

std::uint64_t BackupArchive::totalBytes() const {
    std::uint64_t total = 0;
    for (const ArchivedFile& f : files)
        total += f.contents.size();
    return total;
}

Bytes encodeBackup(const BackupArchive& archive) {
    Bytes out(kMagic.begin(), kMagic.end());
    put16(out, kVersion);
    const std::string madeOn = fit(archive.madeOn, kMadeOnWidth);
    out.insert(out.end(), madeOn.begin(), madeOn.end());
    put16(out, static_cast<std::uint16_t>(archive.files.size()));
    for (const ArchivedFile& f : archive.files) {
        out.push_back(static_cast<std::uint8_t>(f.folder));
        out.push_back(static_cast<std::uint8_t>(f.name.size()));
        out.insert(out.end(), f.name.begin(), f.name.end());
        put32(out, static_cast<std::uint32_t>(f.contents.size()));
        put32(out, crc32(f.contents.data(), f.contents.size()));
    }
    for (const ArchivedFile& f : archive.files)
        out.insert(out.end(), f.contents.begin(), f.contents.end());
    put32(out, crc32(out.data(), out.size()));
    return out;
}

ArchiveCheck decodeBackup(const Bytes& bytes, BackupArchive& archive) {
    archive = {};
    if (bytes.size() < kMagic.size() || !std::equal(kMagic.begin(), kMagic.end(), bytes.begin()))
        return {ArchiveProblem::Foreign, {}};
    if (bytes.size() < kHeaderSize + 4)
        return {ArchiveProblem::Damaged, {}};
    Reader header(bytes, bytes.size());
    header.block(kMagic.size());
    if (header.u16() != kVersion)
        return {ArchiveProblem::NewerVersion, {}};
    // The whole file first: a cut or changed byte anywhere is found before anything is read.
    const std::size_t body = bytes.size() - 4;
    Reader trailer(bytes, bytes.size());
    trailer.block(body);
    if (trailer.u32() != crc32(bytes.data(), body))
        return {ArchiveProblem::Damaged, {}};

    Reader in(bytes, body);
    in.block(kMagic.size() + 2);
    BackupArchive read;
    read.madeOn = trimRight(in.text(kMadeOnWidth));
    const std::uint16_t count = in.u16();
    std::vector<Header> headers;
    std::set<std::pair<char, std::string>> seen;
    for (std::uint16_t i = 0; i < count && in.ok(); ++i) {
        Header h;
        h.folder = static_cast<Folder>(in.u8());
        h.name = in.text(in.u8());
        h.size = in.u32();
        h.crc = in.u32();
        if (!in.ok())
            break;
        if ((h.folder != Folder::Data && h.folder != Folder::Report) ||
            !isDataFileName(h.folder, h.name) ||
            !seen.insert({static_cast<char>(h.folder), h.name}).second)
            return {ArchiveProblem::StrangeFile, shownName(h.name)};
        headers.push_back(h);
    }
    for (const Header& h : headers) {
        Bytes contents = in.block(h.size);
        if (!in.ok())
            break;
        if (crc32(contents.data(), contents.size()) != h.crc)
            return {ArchiveProblem::Damaged, h.name};
        read.files.push_back({h.folder, h.name, std::move(contents)});
    }
    if (!in.ok() || in.position() != body)
        return {ArchiveProblem::Damaged, {}};
    if (!read.find(Folder::Data, fileName(FileKind::TeamList, DataPaths{}, 0)))
        return {ArchiveProblem::NoTeamList, {}};
    archive = std::move(read);
    return {};
}

std::string archiveRefusal(const ArchiveCheck& check) {
    switch (check.problem) {
    case ArchiveProblem::Good:
        return {};
    case ArchiveProblem::Foreign:
        return "This file is not a backup made by Scorvane for Football.  Nothing was restored.";
    case ArchiveProblem::NewerVersion:
        return "This backup was made by a newer version of Scorvane for Football and cannot be "
               "restored here.  Nothing was restored.";
    case ArchiveProblem::Damaged:
        return "This backup is damaged" +
               (check.detail.empty() ? std::string() : " (" + check.detail + " is not as it was)") +
               " and cannot be restored.  Nothing was restored.";
    case ArchiveProblem::StrangeFile:
        return "This backup holds a file that does not belong in a data directory (" +
               check.detail + ") and cannot be restored.  Nothing was restored.";
    case ArchiveProblem::NoTeamList:
        return "This backup holds no team list and cannot be restored.  Nothing was restored.";
    }
    return {};
}

} // namespace scorvane
