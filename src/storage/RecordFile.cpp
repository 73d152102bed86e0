#include "RecordFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace scorvane {

Status diskErrorFromErrno(int err) {
    int code = diskerr::Other;
    switch (err) {
    case EACCES:
    case EPERM:
    case EROFS:
        code = diskerr::PermissionDenied;
        break;
    case ETIMEDOUT:
        code = diskerr::DeviceTimeout;
        break;
    case ENOMEDIUM:
    case ENXIO:
    case ENODEV:
    case EHOSTDOWN:
    case ESTALE:
        code = diskerr::DiskNotReady;
        break;
    default:
        break;
    }
    return Status::error(ErrorKind::Disk, std::strerror(err), code);
}

namespace {

Status fromErrno() {
    return diskErrorFromErrno(errno);
}

Status writeAll(int fd, const std::uint8_t* data, std::size_t size, off_t offset) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = ::pwrite(fd, data + done, size - done, offset + static_cast<off_t>(done));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return fromErrno();
        }
        done += static_cast<std::size_t>(n);
    }
    return Status::ok();
}

Status readAt(int fd, std::uint8_t* data, std::size_t size, off_t offset, std::size_t& got) {
    got = 0;
    while (got < size) {
        const ssize_t n = ::pread(fd, data + got, size - got, offset + static_cast<off_t>(got));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return fromErrno();
        }
        if (n == 0)
            break;
        got += static_cast<std::size_t>(n);
    }
    return Status::ok();
}

std::string folderOf(const std::string& path) {
    const auto slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

Status writeAndFlush(const std::string& path, const Bytes& contents) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0)
        return fromErrno();
    Status s = writeAll(fd, contents.data(), contents.size(), 0);
    if (s && ::fsync(fd) != 0)
        s = fromErrno();
    if (::close(fd) != 0 && s)
        s = fromErrno();
    return s;
}

void syncFolder(const std::string& path) {
    const int dir = ::open(folderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

} // namespace

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
        fd_ = other.fd_;
        open_ = other.open_;
        readOnly_ = other.readOnly_;
        other.fd_ = -1;
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
    int fd = -1;
    if (::faccessat(AT_FDCWD, folderOf(path).c_str(), W_OK, AT_EACCESS) != 0 &&
        (errno == EACCES || errno == EROFS || errno == EPERM))
        errno = EACCES;
    else
        fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0 && (errno == EACCES || errno == EROFS || errno == EPERM)) {
        // A folder we may not write: read what is there, and report the refusal on writing.
        fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        readOnly_ = true;
        if (fd < 0 && errno == ENOENT) {
            open_ = true; // a missing file in a read-only folder reads as empty
            return Status::ok();
        }
    }
    if (fd < 0)
        return fromErrno();
    fd_ = fd;
    open_ = true;
    return Status::ok();
}

void RecordFile::close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    open_ = false;
}

Status RecordFile::length(long long& bytes) const {
    bytes = 0;
    if (fd_ < 0)
        return Status::ok();
    struct stat st {};
    if (::fstat(fd_, &st) != 0)
        return fromErrno();
    bytes = static_cast<long long>(st.st_size);
    return Status::ok();
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
        return Status::error(ErrorKind::RecordRange,
                             "Record " + digits(recordNumber) + " is not in " + path_);
    out.assign(recordLength_, 0);
    std::size_t got = 0;
    const auto offset = static_cast<off_t>(recordNumber - 1) * static_cast<off_t>(recordLength_);
    return readAt(fd_, out.data(), recordLength_, offset, got);
}

Status RecordFile::write(int recordNumber, const Bytes& record) {
    if (recordNumber < 1 || recordNumber > count() + 1)
        return Status::error(ErrorKind::RecordRange,
                             "Record " + digits(recordNumber) + " is not in " + path_);
    if (fd_ < 0 || readOnly_)
        return diskErrorFromErrno(EACCES);
    Bytes rec = record;
    rec.resize(recordLength_, ' ');
    const auto offset = static_cast<off_t>(recordNumber - 1) * static_cast<off_t>(recordLength_);
    if (Status s = writeAll(fd_, rec.data(), rec.size(), offset); !s)
        return s;
    if (::fdatasync(fd_) != 0)
        return fromErrno();
    return Status::ok();
}

Status RecordFile::readAll(std::vector<Bytes>& records) const {
    records.clear();
    if (fd_ < 0)
        return Status::ok();
    const int n = count();
    Bytes all(static_cast<std::size_t>(n) * recordLength_);
    std::size_t got = 0;
    if (Status s = readAt(fd_, all.data(), all.size(), 0, got); !s)
        return s;
    const std::size_t whole = got / recordLength_;
    records.reserve(whole);
    for (std::size_t i = 0; i < whole; ++i)
        records.emplace_back(all.begin() + static_cast<std::ptrdiff_t>(i * recordLength_),
                             all.begin() + static_cast<std::ptrdiff_t>((i + 1) * recordLength_));
    return Status::ok();
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
    if (Status s = writeFileAtomically(path_, joinRecords(records, recordLength_)); !s)
        return s;
    // The old handle still points at the replaced file; open the new one.
    return open(path_, recordLength_);
}

Status readWholeFile(const std::string& path, Bytes& contents, bool& exists) {
    contents.clear();
    exists = false;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return Status::ok();
        return fromErrno();
    }
    exists = true;
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        Status s = fromErrno();
        ::close(fd);
        return s;
    }
    contents.resize(static_cast<std::size_t>(st.st_size));
    std::size_t got = 0;
    Status s = readAt(fd, contents.data(), contents.size(), 0, got);
    contents.resize(got);
    ::close(fd);
    return s;
}

Status writeFileAtomically(const std::string& path, const Bytes& contents) {
    const std::string temp = path + ".tmp";
    Status s = writeAndFlush(temp, contents);
    if (s && ::rename(temp.c_str(), path.c_str()) != 0)
        s = fromErrno();
    if (!s) {
        ::unlink(temp.c_str());
        return s;
    }
    syncFolder(path); // makes the rename itself durable
    return Status::ok();
}

Status replaceFilesTogether(const std::vector<std::pair<std::string, Bytes>>& files,
                            const std::string& journalPath) {
    std::string journal;
    for (const auto& [path, contents] : files) {
        if (Status s = writeAndFlush(path + ".tmp", contents); !s) {
            for (const auto& written : files)
                ::unlink((written.first + ".tmp").c_str());
            return s;
        }
        journal += path + "\n";
    }
    if (Status s = writeFileAtomically(journalPath, Bytes(journal.begin(), journal.end())); !s)
        return s;
    return completePendingReplacement(journalPath);
}

Status completePendingReplacement(const std::string& journalPath) {
    Bytes journal;
    bool exists = false;
    if (Status s = readWholeFile(journalPath, journal, exists); !s || !exists)
        return s;
    std::string path;
    for (std::uint8_t c : journal) {
        if (c != '\n') {
            path += static_cast<char>(c);
            continue;
        }
        const std::string temp = path + ".tmp";
        if (::rename(temp.c_str(), path.c_str()) != 0 && errno != ENOENT)
            return fromErrno();
        path.clear();
    }
    syncFolder(journalPath);
    if (::unlink(journalPath.c_str()) != 0 && errno != ENOENT)
        return fromErrno();
    syncFolder(journalPath);
    return Status::ok();
}

Status removeFile(const std::string& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        return fromErrno();
    return Status::ok();
}

bool fileExists(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

Status createDirectories(const std::string& path) {
    std::string partial;
    std::size_t pos = 0;
    while (pos != std::string::npos) {
        pos = path.find('/', pos + 1);
        partial = path.substr(0, pos);
        if (partial.empty() || directoryExists(partial))
            continue;
        if (::mkdir(partial.c_str(), 0777) != 0 && errno != EEXIST)
            return fromErrno();
    }
    return Status::ok();
}

bool directoryExists(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

} // namespace scorvane
