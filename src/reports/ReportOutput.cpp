#include "ReportOutput.h"

#include "storage/Bytes.h"
#include "storage/Cp1252.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace scorvane {
namespace {

std::string systemText() {
    return std::error_code(errno, std::generic_category()).message();
}

Status fileError(const std::string& what) {
    return Status::error(ErrorKind::Disk, what + ": " + systemText(), diskerr::Other);
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
    file_.clear();
    errno = 0;
    // Binary: the same bytes on every system (no line feed turned into CR LF on Windows).
    file_.open(path_,
               std::ios::out | std::ios::binary | (append_ ? std::ios::app : std::ios::trunc));
    if (!file_.is_open())
        return fileError("Cannot open " + path_);
    return Status::ok();
}

Status TextFileOutput::print(std::string_view line) {
    if (!file_.is_open())
        return Status::error(ErrorKind::Disk, path_ + " is not open", diskerr::Other);
    errno = 0;
    file_ << textFileLine(line) << '\n';
    if (!file_)
        return fileError("Cannot write " + path_);
    return Status::ok();
}

Status TextFileOutput::close() {
    if (!file_.is_open())
        return Status::ok();
    errno = 0;
    file_.close();
    if (file_.fail())
        return fileError("Cannot write " + path_);
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
        errno = 0;
        std::ofstream file(path, std::ios::out | std::ios::binary | std::ios::trunc);
        Status s = Status::ok();
        if (!file.is_open()) {
            s = fileError("Cannot open " + path);
        } else {
            file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
            file.close();
            if (file.fail())
                s = fileError("Cannot write " + path);
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
