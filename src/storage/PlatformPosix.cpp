// Files on POSIX systems: descriptors, pread/pwrite, fdatasync, rename and a folder fsync.

#include "Platform.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace scorvane::platform {

Status errorFromErrno(int number) {
    int code = diskerr::Other;
    switch (number) {
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
    return Status::error(ErrorKind::Disk, std::strerror(number), code);
}

namespace {

int fd(const File& file) {
    return static_cast<int>(file.handle());
}

bool isMissing(int number) {
    return number == ENOENT || number == ENOTDIR;
}

// The failure of the last call, noting whether it was a missing file.
Status lastError(bool* missing) {
    const int number = errno;
    if (missing != nullptr)
        *missing = isMissing(number);
    return errorFromErrno(number);
}

int errnoOf(Fault fault) {
    switch (fault) {
    case Fault::NoSpace:
        return ENOSPC;
    case Fault::ReadOnly:
        return EROFS;
    case Fault::NotFound:
        return ENOENT;
    case Fault::NotReady:
        return ENXIO;
    default:
        return EIO;
    }
}

// The hooks' say on a call: true when the call goes ahead.
bool allowed(const CallInfo& call, Status& failure, bool* missing = nullptr) {
    const Injection injection = detail::ask(call);
    if (injection.fault == Fault::None)
        return true;
    if (injection.fault == Fault::Crash)
        detail::crash();
    errno = errnoOf(injection.fault);
    failure = lastError(missing);
    return false;
}

} // namespace

void File::close() {
    if (handle_ != kNone)
        ::close(static_cast<int>(handle_));
    handle_ = kNone;
}

Status openFile(const std::string& path, OpenMode mode, File& file, bool* missing) {
    file.close();
    if (missing != nullptr)
        *missing = false;
    Status failure;
    if (!allowed({.call = Call::Open, .path = path}, failure, missing))
        return failure;
    int flags = O_CLOEXEC;
    switch (mode) {
    case OpenMode::ReadWrite:
        flags |= O_RDWR | O_CREAT;
        break;
    case OpenMode::ReadOnly:
        flags |= O_RDONLY;
        break;
    case OpenMode::Replace:
        flags |= O_WRONLY | O_CREAT | O_TRUNC;
        break;
    }
    const int opened = ::open(path.c_str(), flags, 0666);
    if (opened < 0)
        return lastError(missing);
    file.adopt(opened, path);
    return Status::ok();
}

Status fileSize(const File& file, long long& bytes) {
    bytes = 0;
    struct stat st {};
    if (::fstat(fd(file), &st) != 0)
        return lastError(nullptr);
    bytes = static_cast<long long>(st.st_size);
    return Status::ok();
}

Status readAt(const File& file, long long offset, std::uint8_t* data, std::size_t size,
              std::size_t& got) {
    got = 0;
    while (got < size) {
        const ssize_t n = ::pread(fd(file), data + got, size - got,
                                  static_cast<off_t>(offset) + static_cast<off_t>(got));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return lastError(nullptr);
        }
        if (n == 0)
            break;
        got += static_cast<std::size_t>(n);
    }
    return Status::ok();
}

Status writeAt(File& file, long long offset, const std::uint8_t* data, std::size_t size) {
    const Injection injection =
        detail::ask({.call = Call::Write, .path = file.path(), .offset = offset, .size = size});
    std::size_t limit = size;
    if (injection.fault != Fault::None)
        limit = std::min(size, injection.bytesFirst);
    std::size_t done = 0;
    while (done < limit) {
        const ssize_t n = ::pwrite(fd(file), data + done, limit - done,
                                   static_cast<off_t>(offset) + static_cast<off_t>(done));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return lastError(nullptr);
        }
        done += static_cast<std::size_t>(n);
    }
    if (injection.fault == Fault::Crash)
        detail::crash();
    if (injection.fault != Fault::None)
        return errorFromErrno(errnoOf(injection.fault));
    return Status::ok();
}

Status flush(File& file) {
    Status failure;
    if (!allowed({.call = Call::Flush, .path = file.path()}, failure))
        return failure;
#if defined(__linux__)
    const int result = ::fdatasync(fd(file));
#else
    const int result = ::fsync(fd(file));
#endif
    return result == 0 ? Status::ok() : lastError(nullptr);
}

Status setFileLength(File& file, long long bytes) {
    Status failure;
    if (!allowed({.call = Call::SetLength, .path = file.path(), .offset = bytes}, failure))
        return failure;
    return ::ftruncate(fd(file), static_cast<off_t>(bytes)) == 0 ? Status::ok()
                                                                 : lastError(nullptr);
}

bool stillNamed(const File& file) {
    struct stat st {};
    return ::fstat(fd(file), &st) != 0 || st.st_nlink > 0;
}

Status replaceFile(const std::string& from, const std::string& to, bool* missing) {
    if (missing != nullptr)
        *missing = false;
    Status failure;
    if (!allowed({.call = Call::Rename, .path = from, .to = &to}, failure, missing))
        return failure;
    if (::rename(from.c_str(), to.c_str()) != 0)
        return lastError(missing);
    return Status::ok();
}

Status removeFile(const std::string& path, bool* missing) {
    if (missing != nullptr)
        *missing = false;
    Status failure;
    if (!allowed({.call = Call::Remove, .path = path}, failure, missing))
        return failure;
    if (::unlink(path.c_str()) != 0)
        return lastError(missing);
    return Status::ok();
}

void syncFolder(const std::string& folder) {
    const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        (void)::fsync(dir);
        ::close(dir);
    }
}

bool isSeparator(char c) {
    return c == '/';
}

std::string folderOf(const std::string& path) {
    std::size_t slash = path.size();
    while (slash > 0 && !isSeparator(path[slash - 1]))
        --slash;
    if (slash == 0)
        return ".";
    return slash == 1 ? path.substr(0, 1) : path.substr(0, slash - 1);
}

bool isFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool isFolder(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

Status makeFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST)
        return lastError(nullptr);
    return Status::ok();
}

bool folderMayBeWritten(const std::string& folder) {
    if (::faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) == 0)
        return true;
    return errno != EACCES && errno != EROFS && errno != EPERM;
}

Status listFolder(const std::string& folder, std::vector<FolderEntry>& entries) {
    entries.clear();
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr)
        return lastError(nullptr);
    const int dirFd = ::dirfd(dir);
    errno = 0;
    while (const dirent* e = ::readdir(dir)) {
        const std::string name = e->d_name;
        if (name == "." || name == "..")
            continue;
        FolderEntry entry;
        entry.name = name;
        struct stat st {};
        if (::fstatat(dirFd, e->d_name, &st, 0) == 0) {
            entry.isFolder = S_ISDIR(st.st_mode);
            entry.size = entry.isFolder ? 0 : static_cast<long long>(st.st_size);
            entry.modified = st.st_mtime;
        }
        entries.push_back(std::move(entry));
        errno = 0;
    }
    const int number = errno;
    ::closedir(dir);
    return number == 0 ? Status::ok() : errorFromErrno(number);
}

bool sizeOfFile(const std::string& path, long long& bytes) {
    bytes = 0;
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    bytes = static_cast<long long>(st.st_size);
    return true;
}

bool isAbsolute(const std::string& path) {
    return !path.empty() && path[0] == '/';
}

std::string absolutePath(const std::string& path) {
    if (isAbsolute(path))
        return normalPath(path);
    std::string current(PATH_MAX, '\0');
    if (::getcwd(current.data(), current.size()) == nullptr)
        return normalPath(path);
    current.resize(std::strlen(current.c_str()));
    return normalPath(path.empty() ? current : current + "/" + path);
}

bool samePlace(const std::string& a, const std::string& b) {
    struct stat sa {
    }, sb{};
    return ::stat(a.c_str(), &sa) == 0 && ::stat(b.c_str(), &sb) == 0 && sa.st_dev == sb.st_dev &&
           sa.st_ino == sb.st_ino;
}

std::string programFile() {
#if defined(__linux__)
    std::string name(PATH_MAX, '\0');
    const ssize_t n = ::readlink("/proc/self/exe", name.data(), name.size());
    if (n > 0 && static_cast<std::size_t>(n) < name.size()) {
        name.resize(static_cast<std::size_t>(n));
        return name;
    }
#endif
    return {};
}

void useBinaryStandardOutput() {}

std::vector<std::string> commandLineArguments(int argc, char** argv) {
    // The arguments come as the user typed them, UTF-8 under any UTF-8 locale.
    std::vector<std::string> out;
    for (int i = 1; i < argc; ++i)
        out.emplace_back(argv[i]);
    return out;
}

std::optional<std::string> environmentVariable(const std::string& name) {
    if (const char* value = std::getenv(name.c_str()))
        return std::string(value);
    return std::nullopt;
}

namespace {

std::string homeFolder() {
    if (const std::optional<std::string> home = environmentVariable("HOME"); home && !home->empty())
        return *home;
    if (const passwd* user = ::getpwuid(::getuid()); user != nullptr && user->pw_dir != nullptr)
        return user->pw_dir;
    return {};
}

// The documents folder the desktop names in user-dirs.dirs (XDG_DOCUMENTS_DIR="$HOME/Papers").
std::string desktopDocumentsFolder(const std::string& home) {
    std::string config = environmentVariable("XDG_CONFIG_HOME").value_or("");
    if (!isAbsolute(config))
        config = home + "/.config";
    std::ifstream in(config + "/user-dirs.dirs");
    const std::string key = "XDG_DOCUMENTS_DIR=\"";
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with(key) || line.size() < key.size() + 1 || line.back() != '"')
            continue;
        std::string folder = line.substr(key.size(), line.size() - key.size() - 1);
        if (folder.starts_with("$HOME"))
            folder = home + folder.substr(5);
        return isAbsolute(folder) ? folder : std::string();
    }
    return {};
}

} // namespace

std::string documentsFolder() {
    const std::string home = homeFolder();
    if (home.empty())
        return {};
    for (const std::string& candidate : {desktopDocumentsFolder(home), home + "/Documents"})
        if (!candidate.empty() && isFolder(candidate))
            return candidate;
    return home;
}

std::tm localTime(std::time_t moment) {
    std::tm local{};
    ::localtime_r(&moment, &local);
    return local;
}

bool isWindows() {
    return false;
}

} // namespace scorvane::platform
