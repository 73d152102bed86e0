#pragma once

#include "reports/ReportOutput.h"
#include "storage/Prompter.h"

#include <QFont>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QPagedPaintDevice;
class QPainter;
class QPrinter;
class QWidget;

namespace scorvane {

// The fixed-pitch family reports are printed and shown in: "Courier New", or the metric-compatible
// "Liberation Mono" where it is missing, or else the system's fixed-pitch font.
QString reportFontFamily();
// A proportional family for printed titles: "Arial", or "Liberation Sans", or the system's font.
QString titleFontFamily();
// The fixed-pitch font of the screens' report grids.
QFont reportScreenFont();

// The fonts of a printed report: the title line in one, everything else in the other.
struct PrintFonts {
    QString titleFamily = titleFontFamily();
    bool titleBold = true;
    QString reportFamily = reportFontFamily();
    bool reportBold = false;
};

// What the print dialog keeps while the program runs.
struct PrintSettings {
    PrintOptions options;
    PrintFonts fonts;
};

// Report lines painted on the pages of a printer or a PDF writer, through the line-output routine.
// The lines come laid out (layOutPages): a form-feed line starts a new page, and the line after it
// (and the first of all) is a page's title line, whose title is painted in the title font and whose
// page number stays in the report's fixed-pitch columns. Every other line is painted in the report
// font. The font size is chosen so that `linesPerPage` lines fit the page's height and
// `widestLine` characters its width, at 10 points at the most.
class PagedOutput : public LineOutput {
public:
    PagedOutput(QPagedPaintDevice& device, const PrintFonts& fonts, int linesPerPage,
                int widestLine);
    ~PagedOutput() override;

    bool toPrinter() const override { return true; }
    Status open() override;
    Status print(std::string_view line) override;
    Status close() override;

    // Pages begun so far.
    int pages() const { return pages_; }
    // The point size the report is painted in (known once opened).
    qreal pointSize() const { return pointSize_; }

private:
    QPagedPaintDevice& device_;
    PrintFonts fonts_;
    int linesPerPage_;
    int widestLine_;
    std::unique_ptr<QPainter> painter_;
    QFont reportFont_;
    QFont titleFont_;
    qreal lineHeight_ = 0;
    qreal charWidth_ = 0;
    qreal ascent_ = 0;
    qreal pointSize_ = 0;
    int pages_ = 0;
    int lineOnPage_ = 0;
};

// The widest line of a laid-out report, in characters.
int widestLine(const std::vector<std::string>& lines);

// Paints laid-out report lines on a paged device (a printer, a PDF writer): `copies` copies, each
// starting on a new page. A failure is offered Retry or Cancel ("Printer not ready") through the
// prompter, when there is one.
[[nodiscard]] Status printPages(QPagedPaintDevice& device, const std::vector<std::string>& lines,
                                const PrintSettings& settings, Prompter* prompter);

// Printing as the report screens do it: the print dialog, then the lines to the text file it
// names (appended or replacing it) or to the printer. Keeps the dialog's options and the printer
// chosen while the program runs.
class ReportPrinter {
public:
    // Lays a report out for the options the dialog stored.
    using Pages = std::function<std::vector<std::string>(const PrintOptions&)>;

    explicit ReportPrinter(Prompter& prompter);
    ~ReportPrinter();
    ReportPrinter(const ReportPrinter&) = delete;
    ReportPrinter& operator=(const ReportPrinter&) = delete;

    PrintSettings& settings() { return settings_; }
    QPrinter& printer();
    Prompter& prompter() { return prompter_; }

    // Opens the print dialog for the report named `reportName` ("Passing Statistics", "Roster")
    // with `title` in its title box; on OK prints the report's pages. False when the dialog or the
    // printer's own dialog was cancelled or the output failed and the user gave up.
    bool print(QWidget* parent, const QString& reportName, const QString& title,
               const Pages& pages);
    // The output with the options as they are: the text file when a file name is set, else the
    // printer (which must be ready: see printerReady).
    [[nodiscard]] Status output(const std::vector<std::string>& lines);

    // Whether the printer can print without asking: a named printer, or PDF with a file name.
    bool printerReady();
    // The platform's printer dialog over the kept printer; true when the user confirmed it.
    bool setUpPrinter(QWidget* parent);

private:
    Prompter& prompter_;
    PrintSettings settings_;
    std::unique_ptr<QPrinter> printer_;
};

} // namespace scorvane
