#pragma once

#include "storage/Platform.h"
#include "storage/Prompter.h"
#include "storage/Status.h"

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scorvane {

// --- output options ------------------------------------------------------------------------------

inline constexpr int kDefaultLinesPerPage = 60;
inline constexpr int kAllPlayers = 999;

// How a report is printed. Texts are Windows-1252.
struct PrintOptions {
    std::string title;
    int copies = 1;
    int linesPerPage = kDefaultLinesPerPage;
    int topPlayers = kAllPlayers; // how many player lines are printed
    std::string fileName;         // empty: the printer
    char fileMode = 'A';          // "A" append to the file, "R" replace it
};

// What the print dialog holds when OK is pressed: the texts as typed.
struct PrintEntry {
    std::string title;
    std::string copies = "1";
    std::string linesPerPage = "60";
    std::string topPlayers = "999";
    std::string fileName;
    bool append = true;
};

enum class PrintField { Copies, LinesPerPage, TopPlayers };

struct PrintError {
    Message message;
    PrintField focus;
};

// Checks the entry in the dialog's order (copies 1..50, lines per page above 20, top players
// 1..999) and stores it when it is valid; the first failure comes back with its message.
std::optional<PrintError> storePrintOptions(const PrintEntry& entry, PrintOptions& options);

// The message of a failed output: "Printer not ready" for the printer, else the error's text,
// with Retry and Cancel under the title "Printer/File Error".
Message printErrorMessage(bool toPrinter, const std::string& description);

// --- the line output
// ------------------------------------------------------------------------------

inline constexpr char kFormFeed = '\f';
// The line that starts a new page.
inline const std::string kNewPageLine(1, kFormFeed);

// Where report lines go: a text file, a stream, or (in the screens) the printer. Lines are
// Windows-1252 text.
class LineOutput {
public:
    virtual ~LineOutput() = default;
    virtual bool toPrinter() const { return false; }
    [[nodiscard]] virtual Status open() = 0;
    [[nodiscard]] virtual Status print(std::string_view line) = 0;
    [[nodiscard]] virtual Status close() = 0;
};

// A line as a text file holds it, without its line end: trailing spaces removed and the text in
// UTF-8. The form-feed line stays a single form feed, on a line of its own.
std::string textFileLine(std::string_view line);

// A text file: opened for appending or replacing; each line written as textFileLine followed by
// a line end.
class TextFileOutput : public LineOutput {
public:
    TextFileOutput(std::string path, bool append) : path_(std::move(path)), append_(append) {}
    Status open() override;
    Status print(std::string_view line) override;
    Status close() override;

private:
    [[nodiscard]] Status writeBuffered();

    std::string path_;
    bool append_;
    platform::File file_;
    long long end_ = 0;  // where the next bytes go
    std::string buffer_; // lines not yet written, up to about 64 KiB
};

// An open stream (standard output) written as a text file would be.
class StreamOutput : public LineOutput {
public:
    explicit StreamOutput(std::ostream& out) : out_(out) {}
    Status open() override { return Status::ok(); }
    Status print(std::string_view line) override;
    Status close() override;

private:
    std::ostream& out_;
};

// The line-output routine: "O" opens the output, "P" prints one line, "C" closes it. Any other
// mode letter is refused.
[[nodiscard]] Status PrintReportLine(LineOutput& output, char mode, std::string_view line = {});

// Opens the output, prints every line and closes it. A failure is shown with printErrorMessage:
// Retry repeats the failed step, Cancel ends the report (its status is returned). Without a
// prompter the first failure ends the report.
[[nodiscard]] Status printLines(LineOutput& output, const std::vector<std::string>& lines,
                                Prompter* prompter);

// Writes a whole report file (CSV, HTML) at once, replacing any file of that name. A failure is
// shown as printErrorMessage for a file: Retry tries again, Cancel gives up (its status is
// returned). Without a prompter the first failure ends it.
[[nodiscard]] Status saveReportFile(const std::string& path, std::string_view contents,
                                    Prompter* prompter);

// --- the printed page
// -------------------------------------------------------------------------------

// The parts of a printed report. Every page starts with the title line (the title on the left,
// "Page n" on the right), the subtitle lines, a blank line and the column headings; the body lines
// follow; the closing lines come after the last body line, kept together on one page. A page
// holds at most `linesPerPage` lines; each page after the first starts with the form-feed line.
//
// `groups`, when given, cuts the body into runs of lines (their sizes, in order) that are kept on
// one page: a run that does not fit on the rest of a page starts the next one, unless it is longer
// than a whole page. Lines past the given runs stand alone.
struct PageParts {
    std::string title;
    std::vector<std::string> subtitles;
    std::vector<std::string> headings;
    std::vector<std::string> body;
    std::vector<std::string> closing;
    std::vector<std::size_t> groups;
};

std::vector<std::string> layOutPages(const PageParts& parts, int linesPerPage);

// The lines of `copies` copies of a laid-out report, each copy starting on a new page.
std::vector<std::string> repeatCopies(const std::vector<std::string>& lines, int copies);

// A line of dashes as long as a heading line, to underline it.
std::string underline(std::string_view heading);

} // namespace scorvane
