// Files on Windows: UTF-8 names turned into wide ones, HANDLEs read and written at an offset,
// FlushFileBuffers, and MoveFileExW for a rename that replaces the file it lands on.

#include "Platform.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include <knownfolders.h>
#include <shellapi.h>
#include <shlobj.h>

namespace scorvane::platform {

namespace {

std::wstring wide(const std::string& utf8) {
    if (utf8.empty())
        return {};
    const int n =
        ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring out(static_cast<std::size_t>(n), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), out.data(), n);
    return out;
}

std::string narrow(const wchar_t* text, int length) {
    const int n = ::WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(n), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, length, out.data(), n, nullptr, nullptr);
    return out;
}

// The system's own text for an error, on one line and without its closing full stop.
std::string systemText(DWORD number) {
    wchar_t* buffer = nullptr;
    const DWORD n = ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, number, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::string text = n > 0 ? narrow(buffer, static_cast<int>(n)) : std::string();
    if (buffer != nullptr)
        ::LocalFree(buffer);
    while (!text.empty() &&
           (text.back() == '\n' || text.back() == '\r' || text.back() == ' ' || text.back() == '.'))
        text.pop_back();
    if (text.empty())
        text = "Error " + std::to_string(number);
    return text;
}

Status errorFromSystem(DWORD number) {
    int code = diskerr::Other;
    switch (number) {
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        code = diskerr::PermissionDenied;
        break;
    case ERROR_SEM_TIMEOUT:
        code = diskerr::DeviceTimeout;
        break;
    case ERROR_NOT_READY:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_BAD_NETPATH:
    case ERROR_NETNAME_DELETED:
    case ERROR_UNEXP_NET_ERR:
        code = diskerr::DiskNotReady;
        break;
    default:
        break;
    }
    return Status::error(ErrorKind::Disk, systemText(number), code);
}

bool isMissing(DWORD number) {
    return number == ERROR_FILE_NOT_FOUND || number == ERROR_PATH_NOT_FOUND;
}

Status lastError(bool* missing) {
    const DWORD number = ::GetLastError();
    if (missing != nullptr)
        *missing = isMissing(number);
    return errorFromSystem(number);
}

DWORD errorOf(Fault fault) {
    switch (fault) {
    case Fault::NoSpace:
        return ERROR_DISK_FULL;
    case Fault::ReadOnly:
        return ERROR_WRITE_PROTECT;
    case Fault::NotFound:
        return ERROR_FILE_NOT_FOUND;
    case Fault::NotReady:
        return ERROR_NOT_READY;
    default:
        return ERROR_GEN_FAILURE;
    }
}

bool allowed(const CallInfo& call, Status& failure, bool* missing = nullptr) {
    const Injection injection = detail::ask(call);
    if (injection.fault == Fault::None)
        return true;
    if (injection.fault == Fault::Crash)
        detail::crash();
    ::SetLastError(errorOf(injection.fault));
    failure = lastError(missing);
    return false;
}

HANDLE handleOf(const File& file) {
    return reinterpret_cast<HANDLE>(file.handle());
}

OVERLAPPED at(long long offset) {
    OVERLAPPED o{};
    o.Offset = static_cast<DWORD>(static_cast<unsigned long long>(offset) & 0xFFFFFFFFu);
    o.OffsetHigh = static_cast<DWORD>(static_cast<unsigned long long>(offset) >> 32);
    return o;
}

constexpr std::size_t kLargestCall = 1u << 30;

} // namespace

Status errorFromErrno(int number) {
    int code = diskerr::Other;
    if (number == EACCES || number == EPERM || number == EROFS)
        code = diskerr::PermissionDenied;
    else if (number == ETIMEDOUT)
        code = diskerr::DeviceTimeout;
    else if (number == ENXIO || number == ENODEV)
        code = diskerr::DiskNotReady;
    return Status::error(ErrorKind::Disk, std::generic_category().message(number), code);
}

void File::close() {
    if (handle_ != kNone)
        ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
    handle_ = kNone;
}

Status openFile(const std::string& path, OpenMode mode, File& file, bool* missing) {
    file.close();
    if (missing != nullptr)
        *missing = false;
    Status failure;
    if (!allowed({.call = Call::Open, .path = path}, failure, missing))
        return failure;
    DWORD access = GENERIC_READ | GENERIC_WRITE;
    DWORD disposition = OPEN_ALWAYS;
    if (mode == OpenMode::ReadOnly) {
        access = GENERIC_READ;
        disposition = OPEN_EXISTING;
    } else if (mode == OpenMode::Replace) {
        access = GENERIC_WRITE;
        disposition = CREATE_ALWAYS;
    }
    // Others may read, write, rename and remove the file while it is open, as on POSIX: the
    // rename that replaces a file must not be refused because the old one is still open.
    const HANDLE h = ::CreateFileW(wide(path).c_str(), access,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return lastError(missing);
    file.adopt(reinterpret_cast<std::intptr_t>(h), path);
    return Status::ok();
}

Status fileSize(const File& file, long long& bytes) {
    bytes = 0;
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(handleOf(file), &size))
        return lastError(nullptr);
    bytes = static_cast<long long>(size.QuadPart);
    return Status::ok();
}

Status readAt(const File& file, long long offset, std::uint8_t* data, std::size_t size,
              std::size_t& got) {
    got = 0;
    while (got < size) {
        OVERLAPPED o = at(offset + static_cast<long long>(got));
        DWORD n = 0;
        const auto chunk = static_cast<DWORD>(std::min(size - got, kLargestCall));
        if (!::ReadFile(handleOf(file), data + got, chunk, &n, &o)) {
            if (::GetLastError() == ERROR_HANDLE_EOF)
                break;
            return lastError(nullptr);
        }
        if (n == 0)
            break;
        got += n;
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
        OVERLAPPED o = at(offset + static_cast<long long>(done));
        DWORD n = 0;
        const auto chunk = static_cast<DWORD>(std::min(limit - done, kLargestCall));
        if (!::WriteFile(handleOf(file), data + done, chunk, &n, &o))
            return lastError(nullptr);
        done += n;
    }
    if (injection.fault == Fault::Crash)
        detail::crash();
    if (injection.fault != Fault::None)
        return errorFromSystem(errorOf(injection.fault));
    return Status::ok();
}

Status flush(File& file) {
    Status failure;
    if (!allowed({.call = Call::Flush, .path = file.path()}, failure))
        return failure;
    return ::FlushFileBuffers(handleOf(file)) ? Status::ok() : lastError(nullptr);
}

Status setFileLength(File& file, long long bytes) {
    Status failure;
    if (!allowed({.call = Call::SetLength, .path = file.path(), .offset = bytes}, failure))
        return failure;
    FILE_END_OF_FILE_INFO info{};
    info.EndOfFile.QuadPart = bytes;
    return ::SetFileInformationByHandle(handleOf(file), FileEndOfFileInfo, &info, sizeof info)
               ? Status::ok()
               : lastError(nullptr);
}

bool stillNamed(const File& file) {
    FILE_STANDARD_INFO info{};
    if (!::GetFileInformationByHandleEx(handleOf(file), FileStandardInfo, &info, sizeof info))
        return true;
    return !info.DeletePending && info.NumberOfLinks > 0;
}

Status replaceFile(const std::string& from, const std::string& to, bool* missing) {
    if (missing != nullptr)
        *missing = false;
    Status failure;
    if (!allowed({.call = Call::Rename, .path = from, .to = &to}, failure, missing))
        return failure;
    if (!::MoveFileExW(wide(from).c_str(), wide(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return lastError(missing);
    return Status::ok();
}

Status removeFile(const std::string& path, bool* missing) {
    if (missing != nullptr)
        *missing = false;
    Status failure;
    if (!allowed({.call = Call::Remove, .path = path}, failure, missing))
        return failure;
    if (!::DeleteFileW(wide(path).c_str()))
        return lastError(missing);
    return Status::ok();
}

void syncFolder(const std::string&) {
    // MOVEFILE_WRITE_THROUGH has already made the rename durable.
}

bool isSeparator(char c) {
    return c == '/' || c == '\\';
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
    const DWORD a = ::GetFileAttributesW(wide(path).c_str());
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool isFolder(const std::string& path) {
    const DWORD a = ::GetFileAttributesW(wide(path).c_str());
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Status makeFolder(const std::string& path) {
    if (!::CreateDirectoryW(wide(path).c_str(), nullptr) &&
        ::GetLastError() != ERROR_ALREADY_EXISTS)
        return lastError(nullptr);
    return Status::ok();
}

bool folderMayBeWritten(const std::string&) {
    // A folder's read-only mark does not stop writing on Windows; a write-protected disk refuses
    // the opening for writing, and the file is then opened for reading.
    return true;
}

namespace {

std::time_t unixTime(const FILETIME& time) {
    // 100-nanosecond steps since 1601-01-01; the Unix epoch is 11644473600 seconds later.
    const unsigned long long ticks =
        (static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return static_cast<std::time_t>(ticks / 10000000ULL) - static_cast<std::time_t>(11644473600LL);
}

long long sizeOf(DWORD high, DWORD low) {
    return static_cast<long long>((static_cast<unsigned long long>(high) << 32) | low);
}

std::string knownFolder(REFKNOWNFOLDERID id) {
    wchar_t* path = nullptr;
    std::string out;
    if (SUCCEEDED(::SHGetKnownFolderPath(id, 0, nullptr, &path)) && path != nullptr)
        out = narrow(path, static_cast<int>(::wcslen(path)));
    ::CoTaskMemFree(path);
    return out;
}

} // namespace

Status listFolder(const std::string& folder, std::vector<FolderEntry>& entries) {
    entries.clear();
    std::string pattern = folder;
    if (pattern.empty() || !isSeparator(pattern.back()))
        pattern += '\\';
    pattern += '*';
    WIN32_FIND_DATAW found{};
    const HANDLE h = ::FindFirstFileW(wide(pattern).c_str(), &found);
    if (h == INVALID_HANDLE_VALUE)
        return ::GetLastError() == ERROR_FILE_NOT_FOUND ? Status::ok() : lastError(nullptr);
    do {
        const std::string name =
            narrow(found.cFileName, static_cast<int>(::wcslen(found.cFileName)));
        if (name == "." || name == "..")
            continue;
        FolderEntry entry;
        entry.name = name;
        entry.isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        entry.size = entry.isFolder ? 0 : sizeOf(found.nFileSizeHigh, found.nFileSizeLow);
        entry.modified = unixTime(found.ftLastWriteTime);
        entries.push_back(std::move(entry));
    } while (::FindNextFileW(h, &found));
    const DWORD number = ::GetLastError();
    ::FindClose(h);
    return number == ERROR_NO_MORE_FILES ? Status::ok() : errorFromSystem(number);
}

bool sizeOfFile(const std::string& path, long long& bytes) {
    bytes = 0;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(wide(path).c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return false;
    bytes = sizeOf(data.nFileSizeHigh, data.nFileSizeLow);
    return true;
}

bool isAbsolute(const std::string& path) {
    if (path.size() >= 3 && path[1] == ':' && isSeparator(path[2]))
        return true;
    return path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]);
}

std::string absolutePath(const std::string& path) {
    const std::wstring name = wide(path.empty() ? std::string(".") : path);
    const DWORD n = ::GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
    if (n == 0)
        return normalPath(path);
    std::wstring full(n, L'\0');
    const DWORD got = ::GetFullPathNameW(name.c_str(), n, full.data(), nullptr);
    if (got == 0 || got >= n)
        return normalPath(path);
    return normalPath(narrow(full.data(), static_cast<int>(got)));
}

bool samePlace(const std::string& a, const std::string& b) {
    // FILE_FLAG_BACKUP_SEMANTICS lets a folder be opened too; no access is asked for.
    const auto identify = [](const std::string& path, BY_HANDLE_FILE_INFORMATION& info) {
        const HANDLE h = ::CreateFileW(wide(path).c_str(), 0,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (h == INVALID_HANDLE_VALUE)
            return false;
        const bool ok = ::GetFileInformationByHandle(h, &info) != 0;
        ::CloseHandle(h);
        return ok;
    };
    BY_HANDLE_FILE_INFORMATION ia{}, ib{};
    return identify(a, ia) && identify(b, ib) &&
           ia.dwVolumeSerialNumber == ib.dwVolumeSerialNumber &&
           ia.nFileIndexHigh == ib.nFileIndexHigh && ia.nFileIndexLow == ib.nFileIndexLow;
}

std::string programFile() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (n == 0)
            return {};
        if (n < name.size())
            return narrow(name.data(), static_cast<int>(n));
        name.resize(name.size() * 2);
    }
}

void useBinaryStandardOutput() {
    std::fflush(stdout);
    (void)_setmode(_fileno(stdout), _O_BINARY);
}

std::vector<std::string> commandLineArguments(int argc, char** argv) {
    std::vector<std::string> out;
    int count = 0;
    wchar_t** wideArgs = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    // The wide command line is split as the C library split argv; should the two ever disagree
    // on the number of arguments, argv is taken as it is rather than a different list.
    if (wideArgs != nullptr && count == argc) {
        for (int i = 1; i < count; ++i)
            out.push_back(narrow(wideArgs[i], static_cast<int>(::wcslen(wideArgs[i]))));
    } else {
        for (int i = 1; i < argc; ++i)
            out.emplace_back(argv[i]);
    }
    ::LocalFree(wideArgs);
    return out;
}

std::optional<std::string> environmentVariable(const std::string& name) {
    const std::wstring key = wide(name);
    const DWORD n = ::GetEnvironmentVariableW(key.c_str(), nullptr, 0);
    if (n == 0)
        return std::nullopt; // not set (an empty variable is reported as 1 with its nul)
    std::wstring value(n, L'\0');
    const DWORD got = ::GetEnvironmentVariableW(key.c_str(), value.data(), n);
    if (got >= n)
        return std::nullopt;
    return narrow(value.data(), static_cast<int>(got));
}

std::string documentsFolder() {
    for (const std::string& candidate :
         {knownFolder(FOLDERID_Documents), knownFolder(FOLDERID_Profile)})
        if (!candidate.empty() && isFolder(candidate))
            return candidate;
    return environmentVariable("USERPROFILE").value_or("");
}

std::tm localTime(std::time_t moment) {
    std::tm local{};
    ::localtime_s(&local, &moment);
    return local;
}

bool isWindows() {
    return true;
}

} // namespace scorvane::platform
