#pragma once

#include "Status.h"

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

// The one place that talks to the operating system about files. Everything above it works with
// UTF-8 path names and Status values; PlatformPosix.cpp and PlatformWindows.cpp say how each
// system does it (descriptors and pread/pwrite there, wide-character names and HANDLEs here).
//
// Failures come back as Disk statuses carrying the disk error handler's number (70 permission,
// 71/25 not ready, 57 anything else) and the system's own text.
namespace scorvane::platform {

enum class OpenMode {
    ReadWrite, // reading and writing; an absent file is created empty
    ReadOnly,  // reading only; the file must exist
    Replace,   // writing only; the file is created or cut to nothing
};

// An open file of the system. Closed when it goes.
class File {
public:
    File() = default;
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    File(File&& other) noexcept { *this = static_cast<File&&>(other); }
    File& operator=(File&& other) noexcept;

    bool isOpen() const { return handle_ != kNone; }
    const std::string& path() const { return path_; }
    void close();

    // Only the platform's own files read these.
    std::intptr_t handle() const { return handle_; }
    void adopt(std::intptr_t handle, std::string path);

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t handle_ = kNone;
    std::string path_;
};

// `missing`, when given, tells whether a failure was that the file (or a folder on its way) does
// not exist; the status is an error all the same, for the caller to decide.
[[nodiscard]] Status openFile(const std::string& path, OpenMode mode, File& file,
                              bool* missing = nullptr);
[[nodiscard]] Status fileSize(const File& file, long long& bytes);
// Reads up to `size` bytes at `offset`; `got` is less than `size` only at the end of the file.
[[nodiscard]] Status readAt(const File& file, long long offset, std::uint8_t* data,
                            std::size_t size, std::size_t& got);
// Writes all `size` bytes at `offset`, or fails.
[[nodiscard]] Status writeAt(File& file, long long offset, const std::uint8_t* data,
                             std::size_t size);
// Makes what was written durable: fdatasync, FlushFileBuffers.
[[nodiscard]] Status flush(File& file);
// Cuts the file to `bytes`, or lengthens it with zero bytes.
[[nodiscard]] Status setFileLength(File& file, long long bytes);
// Whether the file still has a name: a file removed while it is open takes every later write
// with it.
bool stillNamed(const File& file);

// Renames `from` to `to`, replacing a file there in one step (rename, MoveFileExW).
[[nodiscard]] Status replaceFile(const std::string& from, const std::string& to,
                                 bool* missing = nullptr);
[[nodiscard]] Status removeFile(const std::string& path, bool* missing = nullptr);
// Makes the renames and removals in a folder durable (a no-op where the system has no such call).
void syncFolder(const std::string& folder);
bool isFile(const std::string& path);
bool isFolder(const std::string& path);
// Whether a character separates folders in a path ('/', and a backslash too on Windows).
bool isSeparator(char c);
// The folder a file lies in ("." for a bare name).
std::string folderOf(const std::string& path);
// Creates one folder; an existing one is fine.
[[nodiscard]] Status makeFolder(const std::string& path);
// Whether files may be created and written in the folder: a folder on a write-protected disk, or
// one this user may not change, is read from but never written.
bool folderMayBeWritten(const std::string& folder);

// One entry of a folder.
struct FolderEntry {
    std::string name; // the name alone
    bool isFolder = false;
    long long size = 0; // bytes; 0 for a folder
    std::time_t modified = 0;
};
// The entries of a folder, "." and ".." left out, in no particular order.
[[nodiscard]] Status listFolder(const std::string& folder, std::vector<FolderEntry>& entries);
// The size of a file by its name; false when there is no such file.
bool sizeOfFile(const std::string& path, long long& bytes);
// Whether a path is absolute: "/..." here, "C:\..." or "\\server\..." on Windows.
bool isAbsolute(const std::string& path);
// The path with "." and "folder/.." taken out, runs of separators made one and every separator
// written '/' (both systems take it); a trailing separator is kept. Only the text is looked at.
std::string normalPath(const std::string& path);
// A path as the user is shown it, in captions, messages and text fields: on Windows, where the
// program's own paths use '/' too (see normalPath) but the user expects "C:\Users\...", every
// separator written '\\' and a run of them made one (a network path keeps its leading two);
// unchanged elsewhere. Only for the path itself, never for a whole message (dates have '/' too).
std::string shownPath(const std::string& path);
// The path made absolute against the current folder, then normalPath.
std::string absolutePath(const std::string& path);
// Whether two paths name the same file or folder (both must exist).
bool samePlace(const std::string& a, const std::string& b);
// The full name of the program file that is running; empty when the system does not tell.
std::string programFile();
// The program's command-line arguments in UTF-8, the program's name left out (argv[1] onwards).
// Elsewhere argv is taken as it is; Windows hands main() its arguments in the ANSI code page,
// which loses every character outside it, so there they are read anew from the wide command line.
std::vector<std::string> commandLineArguments(int argc, char** argv);
// Standard output takes bytes as they are written: on Windows it otherwise turns every "\n" into
// "\r\n", so that text whose lines already end in "\r\n" (CSV, the site's text) would end them in
// "\r\r\n". Nothing elsewhere.
void useBinaryStandardOutput();
// An environment variable; nothing when it is not set.
std::optional<std::string> environmentVariable(const std::string& name);
// The folder the user keeps documents in (the desktop's Documents folder; Windows' Documents
// known folder), else the home folder, else empty. Ends in no separator.
std::string documentsFolder();

// The local time of a moment (localtime_r; localtime_s on Windows).
std::tm localTime(std::time_t moment);
// Whether the program runs on Windows, for the few choices that follow the system's customs
// (where a user's settings are kept).
bool isWindows();

// A Disk status for an error number of the C library (errno).
Status errorFromErrno(int number);

// --- fault injection ----------------------------------------------------------------------------
// Tests make the calls above fail (or the process stop) at chosen moments. Nothing but the tests
// sets the hooks; without them every call goes straight to the system.

enum class Call { Open, Write, Flush, Rename, Remove, SetLength };

enum class Fault {
    None,
    NoSpace,  // the disk is full
    ReadOnly, // the file or the disk may not be written
    NotFound, // the file or its folder is gone
    NotReady, // the device does not answer
    Crash,    // the process ends at once, as if killed, leaving the disk as it is
};

struct CallInfo {
    Call call = Call::Open;
    const std::string& path; // the file; for Rename the file renamed
    const std::string* to = nullptr;
    long long offset = 0; // Write: where, and how many bytes
    std::size_t size = 0;
};

struct Injection {
    Fault fault = Fault::None;
    // Write: how many of the bytes reach the file before the fault strikes.
    std::size_t bytesFirst = 0;
};

struct Hooks {
    void* context = nullptr;
    // Asked before every call; Fault::None lets the call go ahead.
    Injection (*before)(void* context, const CallInfo& call) = nullptr;
};

// Sets the hooks (nullptr: none). The hooks must outlive their use.
void setHooks(const Hooks* hooks);

// The exit code of a process ended by Fault::Crash.
inline constexpr int kCrashExitCode = 86;

namespace detail {
// What the hooks say about a call, and ending the process for Fault::Crash.
Injection ask(const CallInfo& call);
[[noreturn]] void crash();
} // namespace detail

} // namespace scorvane::platform
