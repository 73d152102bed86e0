#include "RecordFile.h"

#include <algorithm>
#include <cerrno>

namespace scorvane {

Status diskErrorFromErrno(int err) {
    return platform::errorFromErrno(err);
}

namespace {

// Opens a file for reading; a missing file is no error, it leaves `exists` false and `file` closed.
Status openExisting(const std::string& path, platform::File& file, bool& exists) {
    exists = false;
    bool missing = false;
    if (Status s = platform::openFile(path, platform::OpenMode::ReadOnly, file, &missing); !s)
        return missing ? Status::ok() : s;
    exists = true;
    return Status::ok();
}

Status writeAndFlush(const std::string& path, const FileContents& contents) {
    platform::File file;
    if (Status s = platform::openFile(path, platform::OpenMode::Replace, file); !s)
        return s;
    if (Status s = contents.writeTo(file); !s)
        return s;
    return platform::flush(file);
}

long long offsetOf(int recordNumber, std::size_t recordLength) {
    return static_cast<long long>(recordNumber - 1) * static_cast<long long>(recordLength);
}

// Every whole record of an open file, handed to `use` about 1 MiB of records at a time, so that a
// large file is never held whole; a trailing piece of a record is left out.
Status forEachPieceOf(const platform::File& file, std::size_t recordLength,
                      const std::function<void(ByteView records)>& use) {
    long long bytes = 0;
    if (Status s = platform::fileSize(file, bytes); !s)
        return s;
    const auto n = static_cast<std::size_t>(bytes / static_cast<long long>(recordLength));
    const std::size_t perPiece = std::max<std::size_t>(1, (1u << 20) / recordLength);
    Bytes piece(std::min(perPiece, n) * recordLength);
    long long offset = 0;
    for (std::size_t done = 0; done < n;) {
        const std::size_t wanted = std::min(perPiece, n - done) * recordLength;
        std::size_t got = 0;
        if (Status s = platform::readAt(file, offset, piece.data(), wanted, got); !s)
            return s;
        const std::size_t whole = got / recordLength;
        use(ByteView(piece.data(), whole * recordLength));
        if (got < wanted)
            break; // the file was cut short meanwhile
        done += whole;
        offset += static_cast<long long>(got);
    }
    return Status::ok();
}

Status readRecordsFrom(const platform::File& file, std::size_t recordLength,
                       std::vector<Bytes>& records) {
    long long bytes = 0;
    if (Status s = platform::fileSize(file, bytes); !s)
        return s;
    records.reserve(records.size() +
                    static_cast<std::size_t>(bytes / static_cast<long long>(recordLength)));
    return forEachPieceOf(file, recordLength, [&](ByteView piece) {
        for (std::size_t at = 0; at < piece.size(); at += recordLength)
            records.emplace_back(piece.begin() + static_cast<std::ptrdiff_t>(at),
                                 piece.begin() + static_cast<std::ptrdiff_t>(at + recordLength));
    });
}

} // namespace

Status FileContents::writeTo(platform::File& file) const {
    if (bytes_)
        return platform::writeAt(file, 0, bytes_->data(), bytes_->size());
    if (rewrite_) {
        // Each piece read is rewritten and written out before the next is read.
        platform::File source;
        bool exists = false;
        if (Status s = openExisting(source_, source, exists); !s)
            return s;
        Bytes out;
        long long offset = 0;
        Status written;
        const auto writeOut = [&] {
            if (written && !out.empty())
                written = platform::writeAt(file, offset, out.data(), out.size());
            offset += static_cast<long long>(out.size());
            out.clear();
        };
        std::size_t next = 0;
        if (exists) {
            Status read = forEachPieceOf(source, recordLength_, [&](ByteView piece) {
                if (!written)
                    return;
                (*rewrite_)(piece, next, out);
                next += piece.size() / recordLength_;
                writeOut();
            });
            if (!read)
                return read;
        }
        (*rewrite_)(ByteView(), next, out);
        writeOut();
        return written;
    }
    // Records are gathered into pieces of about 4 MiB, each written with one call.
    const std::size_t perPiece = std::max<std::size_t>(1, (4u << 20) / recordLength_);
    Bytes piece;
    piece.reserve(std::min(perPiece, records_->size()) * recordLength_);
    long long offset = 0;
    for (std::size_t first = 0; first < records_->size(); first += perPiece) {
        piece.clear();
        const std::size_t last = std::min(records_->size(), first + perPiece);
        for (std::size_t i = first; i < last; ++i) {
            const Bytes& r = (*records_)[i];
            const std::size_t n = std::min(r.size(), recordLength_);
            piece.insert(piece.end(), r.begin(), r.begin() + static_cast<std::ptrdiff_t>(n));
            piece.insert(piece.end(), recordLength_ - n, ' ');
        }
        if (Status s = platform::writeAt(file, offset, piece.data(), piece.size()); !s)
            return s;
        offset += static_cast<long long>(piece.size());
    }
    return Status::ok();
}

RecordFile::~RecordFile() {
    close();
}

RecordFile::RecordFile(RecordFile&& other) noexcept {
    *this = std::move(other);
}

RecordFile& RecordFile::operator=(RecordFile&& other) noexcept {
    if (this != &other) {
        close();
        path_ = std::move(other.path_);
        recordLength_ = other.recordLength_;
        file_ = std::move(other.file_);
        open_ = other.open_;
        readOnly_ = other.readOnly_;
        other.open_ = false;
    }
    return *this;
}

Status RecordFile::open(const std::string& path, std::size_t recordLength) {
    close();
    readOnly_ = false;
    path_ = path;
    recordLength_ = recordLength == 0 ? 1 : recordLength;
    // In a folder we may not write, a file whose own permissions allow writing is still only
    // read: the folder decides, as a write-protected disk would.
    Status s = platform::folderMayBeWritten(platform::folderOf(path))
                   ? platform::openFile(path, platform::OpenMode::ReadWrite, file_)
                   : diskErrorFromErrno(EACCES);
    if (!s && s.code() == diskerr::PermissionDenied) {
        // Read what is there, and report the refusal on writing.
        bool missing = false;
        s = platform::openFile(path, platform::OpenMode::ReadOnly, file_, &missing);
        readOnly_ = true;
        if (!s && missing) {
            open_ = true; // a missing file in a read-only folder reads as empty
            return Status::ok();
        }
    }
    if (!s)
        return s;
    open_ = true;
    return Status::ok();
}

void RecordFile::close() {
    file_.close();
    open_ = false;
}

Status RecordFile::length(long long& bytes) const {
    bytes = 0;
    if (!file_.isOpen())
        return Status::ok();
    return platform::fileSize(file_, bytes);
}

int RecordFile::count() const {
    long long bytes = 0;
    if (!length(bytes))
        return 0;
    const long long n = bytes / static_cast<long long>(recordLength_);
    return n > 0x7FFFFFFF ? 0x7FFFFFFF : static_cast<int>(n);
}

Status RecordFile::read(int recordNumber, Bytes& out) const {
    if (recordNumber < 1 || recordNumber > count())
        return Status::error(ErrorKind::RecordRange, "Record " + digits(recordNumber) +
                                                         " is not in " +
                                                         platform::shownPath(path_));
    out.assign(recordLength_, 0);
    std::size_t got = 0;
    return platform::readAt(file_, offsetOf(recordNumber, recordLength_), out.data(), recordLength_,
                            got);
}

Status RecordFile::write(int recordNumber, const Bytes& record) {
    if (recordNumber < 1 || recordNumber > count() + 1)
        return Status::error(ErrorKind::RecordRange, "Record " + digits(recordNumber) +
                                                         " is not in " +
                                                         platform::shownPath(path_));
    if (!file_.isOpen() || readOnly_)
        return diskErrorFromErrno(EACCES);
    Bytes rec = record;
    rec.resize(recordLength_, ' ');
    if (Status s =
            platform::writeAt(file_, offsetOf(recordNumber, recordLength_), rec.data(), rec.size());
        !s)
        return s;
    if (Status s = platform::flush(file_); !s)
        return s;
    // A file removed while it was open takes the record with it: say so rather than lose it.
    if (!platform::stillNamed(file_))
        return diskErrorFromErrno(ENOENT);
    return Status::ok();
}

Status RecordFile::readAll(std::vector<Bytes>& records) const {
    records.clear();
    if (!file_.isOpen())
        return Status::ok();
    return readRecordsFrom(file_, recordLength_, records);
}

Status RecordFile::readRun(int first, int count, Bytes& out) const {
    if (!file_.isOpen() || first < 1 || count < 1) {
        out.clear();
        return Status::ok();
    }
    // A buffer reused from run to run is not cleared first: its bytes are read over.
    out.resize(static_cast<std::size_t>(count) * recordLength_);
    std::size_t got = 0;
    Status s = platform::readAt(file_, offsetOf(first, recordLength_), out.data(), out.size(), got);
    out.resize(got / recordLength_ * recordLength_);
    return s;
}

Bytes RecordFile::joinRecords(const std::vector<Bytes>& records, std::size_t recordLength) {
    Bytes all;
    all.reserve(records.size() * recordLength);
    for (const auto& r : records) {
        const std::size_t n = std::min(r.size(), recordLength);
        all.insert(all.end(), r.begin(), r.begin() + static_cast<std::ptrdiff_t>(n));
        all.insert(all.end(), recordLength - n, ' ');
    }
    return all;
}

Status RecordFile::replaceAll(const std::vector<Bytes>& records) {
    // The old file is closed before the new one is renamed over it (Windows refuses to replace a
    // file that is open) and opened again afterwards, on whichever of the two is there.
    close();
    Status s = writeFileAtomically(path_, FileContents(records, recordLength_));
    Status reopened = open(path_, recordLength_);
    return s ? reopened : s;
}

Status readWholeFile(const std::string& path, Bytes& contents, bool& exists) {
    contents.clear();
    platform::File file;
    if (Status s = openExisting(path, file, exists); !s || !exists)
        return s;
    long long size = 0;
    if (Status s = platform::fileSize(file, size); !s)
        return s;
    contents.resize(static_cast<std::size_t>(size));
    std::size_t got = 0;
    Status s = platform::readAt(file, 0, contents.data(), contents.size(), got);
    contents.resize(got);
    return s;
}

Status readRecords(const std::string& path, std::size_t recordLength, std::vector<Bytes>& records,
                   bool& exists) {
    records.clear();
    platform::File file;
    if (Status s = openExisting(path, file, exists); !s || !exists)
        return s;
    return readRecordsFrom(file, recordLength == 0 ? 1 : recordLength, records);
}

Status openForReading(const std::string& path, bool& exists) {
    platform::File file;
    return openExisting(path, file, exists);
}

Status readRecordPieces(const std::string& path, std::size_t recordLength,
                        const std::function<void(ByteView records)>& use, bool& exists) {
    platform::File file;
    if (Status s = openExisting(path, file, exists); !s || !exists)
        return s;
    return forEachPieceOf(file, recordLength == 0 ? 1 : recordLength, use);
}

Status writeFileAtomically(const std::string& path, const FileContents& contents) {
    const std::string temp = path + ".tmp";
    Status s = writeAndFlush(temp, contents);
    if (s)
        s = platform::replaceFile(temp, path);
    if (!s) {
        (void)platform::removeFile(temp);
        return s;
    }
    platform::syncFolder(platform::folderOf(path)); // makes the rename itself durable
    return Status::ok();
}

Status replaceFilesTogether(const std::vector<std::pair<std::string, FileContents>>& files,
                            const std::string& journalPath, bool* decided) {
    std::string journal;
    for (const auto& [path, contents] : files) {
        if (Status s = writeAndFlush(path + ".tmp", contents); !s) {
            for (const auto& written : files)
                (void)platform::removeFile(written.first + ".tmp");
            return s;
        }
        journal += path + "\n";
    }
    const Bytes journalBytes(journal.begin(), journal.end());
    if (Status s = writeFileAtomically(journalPath, journalBytes); !s) {
        for (const auto& written : files)
            (void)platform::removeFile(written.first + ".tmp");
        return s;
    }
    if (decided)
        *decided = true;
    return completePendingReplacement(journalPath);
}

Status replaceFilesTogether(const std::vector<std::pair<std::string, Bytes>>& files,
                            const std::string& journalPath) {
    std::vector<std::pair<std::string, FileContents>> contents;
    for (const auto& [path, bytes] : files)
        contents.emplace_back(path, bytes);
    return replaceFilesTogether(contents, journalPath);
}

Status completePendingReplacement(const std::string& journalPath) {
    Bytes journal;
    bool exists = false;
    if (Status s = readWholeFile(journalPath, journal, exists); !s || !exists)
        return s;
    // The journal names files of its own folder only; any other line is no part of a change this
    // program made (a damaged journal) and is left alone.
    const std::string folder = platform::folderOf(journalPath);
    std::string path;
    for (std::uint8_t c : journal) {
        if (c != '\n') {
            path += static_cast<char>(c);
            continue;
        }
        bool missing = false; // renamed already, before a crash
        const std::string name = path.substr(std::min(path.size(), folder.size() + 1));
        if (platform::folderOf(path) == folder && !name.empty() && name != "." && name != ".." &&
            path.find('\0') == std::string::npos)
            if (Status s = platform::replaceFile(path + ".tmp", path, &missing); !s && !missing)
                return s;
        path.clear();
    }
    platform::syncFolder(folder);
    bool missing = false;
    if (Status s = platform::removeFile(journalPath, &missing); !s && !missing)
        return s;
    platform::syncFolder(folder);
    return Status::ok();
}

Status removeFile(const std::string& path) {
    bool missing = false;
    if (Status s = platform::removeFile(path, &missing); !s && !missing)
        return s;
    return Status::ok();
}

bool fileExists(const std::string& path) {
    return platform::isFile(path);
}

bool directoryExists(const std::string& path) {
    return platform::isFolder(path);
}

Status createDirectories(const std::string& path) {
    for (std::size_t end = 1; end <= path.size(); ++end) {
        if (end < path.size() && !platform::isSeparator(path[end]))
            continue;
        const std::string partial = path.substr(0, end);
        if (platform::isSeparator(partial.back()) || directoryExists(partial))
            continue;
        if (Status s = platform::makeFolder(partial); !s)
            return s;
    }
    return Status::ok();
}

} // namespace scorvane
