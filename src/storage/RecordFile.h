#pragma once

#include "Bytes.h"
#include "Platform.h"
#include "Status.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace scorvane {

// How a file of records is rewritten in one pass. It is called with each piece of the old file's
// records as they are read (about 1 MiB of whole records; `first` is the 0-based number of the
// piece's first record), then once more with an empty piece at the end, and appends to `out` what
// the new file holds in their place: the records as they are, changed, or with others between.
// A disk error may have the pass made again from the start: a rewrite keeps no state of its own
// from one call to the next.
using RecordRewrite = std::function<void(ByteView piece, std::size_t first, Bytes& out)>;

// A file of fixed-length records numbered from 1. Single records are read and written in place;
// a change to many records is made with replaceAll, which writes the whole new contents to a
// temporary file in the same folder, flushes it to disk and renames it over the old file, so that
// a crash at any moment leaves either the old file or the new one.
//
// Failures come back as Status values of kind Disk, carrying the error number the disk error
// handler knows (70 permission, 71/25 not ready, 57 anything else) and the system's text. The
// calls to the system go through Platform.h.
class RecordFile {
public:
    RecordFile() = default;
    ~RecordFile();
    RecordFile(const RecordFile&) = delete;
    RecordFile& operator=(const RecordFile&) = delete;
    RecordFile(RecordFile&& other) noexcept;
    RecordFile& operator=(RecordFile&& other) noexcept;

    // Opens for reading and writing, creating an empty file when none exists. In a folder that
    // cannot be written, an existing file is opened for reading only and a missing one counts as
    // empty; writing then fails with the permission error.
    Status open(const std::string& path, std::size_t recordLength);
    void close();
    bool isOpen() const { return open_; }
    bool isReadOnly() const { return readOnly_; }
    const std::string& path() const { return path_; }
    std::size_t recordLength() const { return recordLength_; }

    Status length(long long& bytes) const;
    // Whole records in the file: its length divided by the record length. A trailing piece of a
    // record is not counted.
    int count() const;
    Status read(int recordNumber, Bytes& out) const;
    // Writes one record in place; recordNumber may be count() + 1 to append.
    Status write(int recordNumber, const Bytes& record);
    Status readAll(std::vector<Bytes>& records) const;
    // Reads `count` records from `first` on into one buffer, record after record (fewer when the
    // file ends sooner).
    Status readRun(int first, int count, Bytes& out) const;
    Status replaceAll(const std::vector<Bytes>& records);
    // The contents of a file holding these records, each cut or space-padded to the length.
    static Bytes joinRecords(const std::vector<Bytes>& records, std::size_t recordLength);

private:
    std::string path_;
    std::size_t recordLength_ = 1;
    platform::File file_;
    bool open_ = false;
    bool readOnly_ = false; // opened for reading only: the folder may not be written
};

// What a file replaced whole is to hold: bytes; records each cut or space-padded to a record
// length; or the records of a file rewritten on the way (RecordRewrite), which is read a piece at
// a time and never held whole. Records are written a piece at a time, never joined in memory
// first. It refers to the caller's data, which must outlive it.
class FileContents {
public:
    FileContents(const Bytes& bytes) : bytes_(&bytes) {} // NOLINT: bytes convert implicitly
    FileContents(const std::vector<Bytes>& records, std::size_t recordLength)
        : records_(&records), recordLength_(recordLength == 0 ? 1 : recordLength) {}
    FileContents(std::string source, std::size_t recordLength, const RecordRewrite& rewrite)
        : source_(std::move(source)), rewrite_(&rewrite),
          recordLength_(recordLength == 0 ? 1 : recordLength) {}

    // Writes everything from the start of the file.
    Status writeTo(platform::File& file) const;

private:
    const Bytes* bytes_ = nullptr;
    const std::vector<Bytes>* records_ = nullptr;
    std::string source_;
    const RecordRewrite* rewrite_ = nullptr;
    std::size_t recordLength_ = 1;
};

// Whole-file operations used where a file is read or written in one pass.
// readWholeFile reports a missing file through `exists` and an empty buffer, not as an error.
Status readWholeFile(const std::string& path, Bytes& contents, bool& exists);
// Every whole record of a file, read without creating or changing it; a missing file gives no
// records and `exists` false. A trailing piece of a record is left out.
Status readRecords(const std::string& path, std::size_t recordLength, std::vector<Bytes>& records,
                   bool& exists);
// Opens the file for reading and closes it again: whether it can be read. A missing file is no
// error (`exists` false).
Status openForReading(const std::string& path, bool& exists);
// The same records handed to `use` a piece of many at a time (about 1 MiB, whole records only), for
// passes over a file too large to hold: only one piece is in memory at once.
Status readRecordPieces(const std::string& path, std::size_t recordLength,
                        const std::function<void(ByteView records)>& use, bool& exists);
// Replaces the file through a temporary file in the same folder and a rename.
Status writeFileAtomically(const std::string& path, const FileContents& contents);
Status removeFile(const std::string& path);

// Replaces several files so that a crash at any moment leaves all of them as before or all as
// after. Every new file is first written in full beside its old one ("<name>.tmp"); then the
// journal, naming the files, is written atomically; then the new files are renamed over the old
// ones and the journal is removed. Once the journal exists the change is decided:
// completePendingReplacement finishes whatever renames a crash interrupted.
// `decided`, when given, is set once the journal is written: from then on the change is to be
// finished (completePendingReplacement), never made again, since new contents made from the old
// files (RecordRewrite) could not be made again once some of them are replaced.
Status replaceFilesTogether(const std::vector<std::pair<std::string, FileContents>>& files,
                            const std::string& journalPath, bool* decided = nullptr);
Status replaceFilesTogether(const std::vector<std::pair<std::string, Bytes>>& files,
                            const std::string& journalPath);
// Finishes a replacement a crash interrupted, if the journal says there is one.
Status completePendingReplacement(const std::string& journalPath);
bool fileExists(const std::string& path);
bool directoryExists(const std::string& path);
// Creates a folder and any missing folders above it; an existing folder is fine.
Status createDirectories(const std::string& path);

// A Disk status for an error number of the C library (errno).
Status diskErrorFromErrno(int err);

} // namespace scorvane
