#include "ReportOutput.h"

#include "storage/Bytes.h"
#include "storage/Cp1252.h"

#include <algorithm>
#include <cstdint>

namespace scorvane {
namespace {

// A failure of the system, with what was being done and the file's name before the system's text.
Status fileError(const std::string& what, const std::string& path, const Status& system) {
    return Status::error(ErrorKind::Disk,
                         what + " " + platform::shownPath(path) + ": " + system.message(),
                         system.code());
}

} // namespace

std::optional<PrintError> storePrintOptions(const PrintEntry& entry, PrintOptions& options) {
    const long long copies = leadingNumber(entry.copies);
    if (copies < 1)
        return PrintError{Message{"Must be greater than 1", "Copies Invalid"}, PrintField::Copies};
    if (copies > 50)
        return PrintError{Message{"50 copies maximum", "Copies Invalid"}, PrintField::Copies};
    const long long lines = leadingNumber(entry.linesPerPage);
    if (lines < 21)
        return PrintError{Message{"Must be greater than 20", "Lines per Page Invalid"},
                          PrintField::LinesPerPage};
    // The box takes three digits, so only 0 (or nothing) can be typed outside 1..999; a pasted
    // number outside that range is refused with the same message.
    const long long top = leadingNumber(entry.topPlayers);
    if (top < 1 || top > kAllPlayers)
        return PrintError{Message{"Must be 1 to 999", "Top Players Invalid"},
                          PrintField::TopPlayers};
    options.title = entry.title;
    options.fileName = trim(entry.fileName);
    options.linesPerPage = static_cast<int>(std::min<long long>(lines, 32767));
    options.topPlayers = static_cast<int>(top);
    options.copies = static_cast<int>(copies);
    options.fileMode = entry.append ? 'A' : 'R';
    return std::nullopt;
}

Message printErrorMessage(bool toPrinter, const std::string& description) {
    return Message{toPrinter ? "Printer not ready" : description, "Printer/File Error",
                   Buttons::RetryCancel, Icon::None, Answer::Retry};
}

std::string textFileLine(std::string_view line) {
    if (line == kNewPageLine)
        return kNewPageLine;
    return cp1252ToUtf8(trimRight(line));
}

Status TextFileOutput::open() {
    file_.close();
    buffer_.clear();
    end_ = 0;
    // Bytes as they are: no line feed turned into CR LF on Windows.
    const auto mode = append_ ? platform::OpenMode::ReadWrite : platform::OpenMode::Replace;
    if (Status s = platform::openFile(path_, mode, file_); !s)
        return fileError("Cannot open", path_, s);
    if (append_) {
        if (Status s = platform::fileSize(file_, end_); !s) {
            file_.close();
            return fileError("Cannot open", path_, s);
        }
    }
    return Status::ok();
}

// Written at a known place, so a retry after a failure writes the same bytes to the same place.
Status TextFileOutput::writeBuffered() {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(buffer_.data());
    if (Status s = platform::writeAt(file_, end_, bytes, buffer_.size()); !s)
        return fileError("Cannot write", path_, s);
    end_ += static_cast<long long>(buffer_.size());
    buffer_.clear();
    return Status::ok();
}

Status TextFileOutput::print(std::string_view line) {
    if (!file_.isOpen())
        return Status::error(ErrorKind::Disk, platform::shownPath(path_) + " is not open",
                             diskerr::Other);
    // The lines gathered so far go first, so a line is never taken twice when the user retries.
    constexpr std::size_t kPiece = 64 * 1024;
    if (buffer_.size() >= kPiece) {
        if (Status s = writeBuffered(); !s)
            return s;
    }
    buffer_ += textFileLine(line);
    buffer_ += '\n';
    return Status::ok();
}

Status TextFileOutput::close() {
    if (!file_.isOpen())
        return Status::ok();
    if (!buffer_.empty()) {
        if (Status s = writeBuffered(); !s)
            return s;
    }
    file_.close();
    return Status::ok();
}

Status StreamOutput::print(std::string_view line) {
    out_ << textFileLine(line) << '\n';
    return out_ ? Status::ok()
                : Status::error(ErrorKind::Disk, "Cannot write the report", diskerr::Other);
}

Status StreamOutput::close() {
    out_.flush();
    return out_ ? Status::ok()
                : Status::error(ErrorKind::Disk, "Cannot write the report", diskerr::Other);
}

Status PrintReportLine(LineOutput& output, char mode, std::string_view line) {
    switch (mode) {
    case 'O':
        return output.open();
    case 'P':
        return output.print(line);
    case 'C':
        return output.close();
    default:
        return Status::error(ErrorKind::RecordRange, std::string("No such output mode: ") + mode);
    }
}

Status printLines(LineOutput& output, const std::vector<std::string>& lines, Prompter* prompter) {
    // One step, repeated while the user answers Retry.
    auto step = [&](char mode, std::string_view line) -> Status {
        for (;;) {
            Status s = PrintReportLine(output, mode, line);
            if (s || !prompter)
                return s;
            if (prompter->ask(printErrorMessage(output.toPrinter(), s.message())) != Answer::Retry)
                return s;
        }
    };
    if (Status s = step('O', {}); !s)
        return s;
    for (const auto& line : lines) {
        if (Status s = step('P', line); !s) {
            (void)output.close();
            return s;
        }
    }
    return step('C', {});
}

std::vector<std::string> repeatCopies(const std::vector<std::string>& lines, int copies) {
    std::vector<std::string> out;
    for (int copy = 0; copy < copies; ++copy) {
        if (copy > 0 && !lines.empty())
            out.push_back(kNewPageLine);
        out.insert(out.end(), lines.begin(), lines.end());
    }
    return out;
}

Status saveReportFile(const std::string& path, std::string_view contents, Prompter* prompter) {
    for (;;) {
        platform::File file;
        Status s = platform::openFile(path, platform::OpenMode::Replace, file);
        if (!s) {
            s = fileError("Cannot open", path, s);
        } else {
            const auto* bytes = reinterpret_cast<const std::uint8_t*>(contents.data());
            if (Status w = platform::writeAt(file, 0, bytes, contents.size()); !w)
                s = fileError("Cannot write", path, w);
        }
        if (s || !prompter)
            return s;
        if (prompter->ask(printErrorMessage(false, s.message())) != Answer::Retry)
            return s;
    }
}

std::string underline(std::string_view heading) {
    return std::string(trimRight(heading).size(), '-');
}

std::vector<std::string> layOutPages(const PageParts& parts, int linesPerPage) {
    std::size_t width = 0;
    for (const auto& h : parts.headings)
        width = std::max(width, h.size());

    int page = 0;
    std::vector<std::string> out;
    int used = 0;
    auto startPage = [&] {
        ++page;
        if (page > 1)
            out.push_back(kNewPageLine);
        const std::string label = "Page " + digits(page);
        const std::size_t lineWidth = std::max(width, parts.title.size() + 2 + label.size());
        out.push_back(parts.title +
                      std::string(lineWidth - parts.title.size() - label.size(), ' ') + label);
        for (const auto& s : parts.subtitles)
            out.push_back(s);
        out.emplace_back();
        for (const auto& h : parts.headings)
            out.push_back(h);
        used = 2 + static_cast<int>(parts.subtitles.size() + parts.headings.size());
    };

    startPage();
    const int header = used;
    // A page holds at least one body line, however short the pages are.
    const int limit = std::max(linesPerPage, header + 1);
    std::size_t next = 0;
    for (std::size_t group : parts.groups) {
        group = std::min(group, parts.body.size() - next);
        const int size = static_cast<int>(group);
        // A run that fits on a fresh page does not start at the foot of this one.
        if (used > header && used + size > limit && header + size <= limit)
            startPage();
        for (std::size_t i = 0; i < group; ++i, ++next) {
            if (used + 1 > limit)
                startPage();
            out.push_back(parts.body[next]);
            ++used;
        }
    }
    for (; next < parts.body.size(); ++next) {
        if (used + 1 > limit)
            startPage();
        out.push_back(parts.body[next]);
        ++used;
    }
    const int closing = static_cast<int>(parts.closing.size());
    if (closing > 0 && used + closing > limit && used > header)
        startPage();
    for (const auto& line : parts.closing)
        out.push_back(line);
    return out;
}

} // namespace scorvane
