#pragma once

#include <string>
#include <utility>

namespace scorvane {

// What went wrong with a storage operation. Disk errors carry the error number that the
// disk error handler works with; the others are faults of the data itself.
enum class ErrorKind {
    None,
    Disk,         // the operating system refused a read or a write
    ProgramEnded, // the disk error handler ended the program
    RecordRange,  // a record number outside 1..count (+1 for a write)
    BadLength,    // a file whose length does not fit its record length
    Overflow,     // a 16-bit sum went past -32768..32767
    Unreadable,   // a file that cannot be read in any layout we know
};

// Error numbers handed to the disk error handler. They keep the numbering the handler's
// messages are written for: 70 permission denied, 71 disk not ready, 25 device timeout.
namespace diskerr {
inline constexpr int PermissionDenied = 70;
inline constexpr int DiskNotReady = 71;
inline constexpr int DeviceTimeout = 25;
inline constexpr int Other = 57; // any other device input/output failure
} // namespace diskerr

class [[nodiscard]] Status {
public:
    Status() = default;
    static Status ok() { return {}; }
    static Status error(ErrorKind kind, std::string message, int code = 0) {
        Status s;
        s.kind_ = kind;
        s.message_ = std::move(message);
        s.code_ = code;
        return s;
    }

    bool isOk() const { return kind_ == ErrorKind::None; }
    explicit operator bool() const { return isOk(); }
    ErrorKind kind() const { return kind_; }
    const std::string& message() const { return message_; }
    int code() const { return code_; }

private:
    ErrorKind kind_ = ErrorKind::None;
    std::string message_;
    int code_ = 0;
};

} // namespace scorvane
