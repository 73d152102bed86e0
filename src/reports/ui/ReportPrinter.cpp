#include "ReportPrinter.h"

#include "PrintDialog.h"
#include "storage/Bytes.h"
#include "storage/Status.h"
#include "ui/TextCodec.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace scorvane {
namespace {

constexpr qreal kLargestPointSize = 10.0;

QString firstFamily(std::initializer_list<const char*> families,
                    QFontDatabase::SystemFont fallback) {
    for (const char* family : families)
        if (QFontDatabase::hasFamily(QString::fromLatin1(family)))
            return QString::fromLatin1(family);
    return QFontDatabase::systemFont(fallback).family();
}

Status notReady() {
    return Status::error(ErrorKind::Disk, "Printer not ready", diskerr::Other);
}

// A page's title line as layOutPages writes it: the title, spaces, and "Page n" at the right.
// Where the page number starts, or npos for any other line.
std::size_t pageNumberAt(std::string_view line) {
    const std::size_t at = line.rfind("Page ");
    if (at == std::string_view::npos || at == 0 || line[at - 1] != ' ' || at + 5 >= line.size())
        return std::string_view::npos;
    for (std::size_t i = at + 5; i < line.size(); ++i)
        if (line[i] < '0' || line[i] > '9')
            return std::string_view::npos;
    return at;
}

} // namespace

QString reportFontFamily() {
    return firstFamily({"Courier New", "Liberation Mono"}, QFontDatabase::FixedFont);
}

QString titleFontFamily() {
    return firstFamily({"Arial", "Liberation Sans"}, QFontDatabase::GeneralFont);
}

QFont reportScreenFont() {
    QFont font(reportFontFamily());
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    return font;
}

int widestLine(const std::vector<std::string>& lines) {
    std::size_t widest = 1;
    for (const auto& line : lines)
        if (line != kNewPageLine)
            widest = std::max(widest, line.size());
    return static_cast<int>(widest);
}

// --- painting the pages --------------------------------------------------------------------------

PagedOutput::PagedOutput(QPagedPaintDevice& device, const PrintFonts& fonts, int linesPerPage,
                         int widestLine)
    : device_(device), fonts_(fonts), linesPerPage_(std::max(linesPerPage, 1)),
      widestLine_(std::max(widestLine, 1)) {}

PagedOutput::~PagedOutput() {
    if (painter_ && painter_->isActive())
        painter_->end();
}

Status PagedOutput::open() {
    if (painter_ && painter_->isActive())
        painter_->end();
    painter_ = std::make_unique<QPainter>();
    if (!painter_->begin(&device_))
        return notReady();

    reportFont_ = QFont(fonts_.reportFamily);
    reportFont_.setStyleHint(QFont::TypeWriter);
    reportFont_.setFixedPitch(true);
    reportFont_.setBold(fonts_.reportBold);
    reportFont_.setPointSizeF(kLargestPointSize);
    // The largest size at which the page takes its lines down and the widest line across.
    QFontMetricsF metrics(reportFont_, &device_);
    const qreal across =
        device_.width() / (widestLine_ * metrics.horizontalAdvance(QLatin1Char('0')));
    const qreal down = device_.height() / (linesPerPage_ * metrics.lineSpacing());
    pointSize_ = kLargestPointSize * std::min<qreal>(1.0, std::min(across, down)) * 0.98;
    reportFont_.setPointSizeF(pointSize_);
    metrics = QFontMetricsF(reportFont_, &device_);
    lineHeight_ = metrics.lineSpacing();
    charWidth_ = metrics.horizontalAdvance(QLatin1Char('0'));
    ascent_ = metrics.ascent();

    titleFont_ = QFont(fonts_.titleFamily);
    titleFont_.setBold(fonts_.titleBold);
    titleFont_.setPointSizeF(pointSize_);

    pages_ = 1;
    lineOnPage_ = 0;
    return Status::ok();
}

Status PagedOutput::print(std::string_view line) {
    if (!painter_ || !painter_->isActive())
        return notReady();
    const bool newPage = line == kNewPageLine;
    if (newPage || lineOnPage_ >= linesPerPage_) {
        if (!device_.newPage())
            return notReady();
        ++pages_;
        lineOnPage_ = 0;
        if (newPage)
            return Status::ok();
    }
    const qreal y = lineOnPage_ * lineHeight_ + ascent_;
    const std::string text(line);
    const std::size_t pageNumber = lineOnPage_ == 0 ? pageNumberAt(text) : std::string::npos;
    if (pageNumber != std::string::npos) {
        painter_->setFont(titleFont_);
        painter_->drawText(QPointF(0, y), fromFileText(trimRight(text.substr(0, pageNumber))));
        painter_->setFont(reportFont_);
        painter_->drawText(QPointF(pageNumber * charWidth_, y),
                           fromFileText(text.substr(pageNumber)));
    } else {
        painter_->setFont(reportFont_);
        painter_->drawText(QPointF(0, y), fromFileText(text));
    }
    ++lineOnPage_;
    return Status::ok();
}

Status PagedOutput::close() {
    if (!painter_ || !painter_->isActive())
        return Status::ok();
    const bool ended = painter_->end();
    painter_.reset();
    return ended ? Status::ok() : notReady();
}

Status printPages(QPagedPaintDevice& device, const std::vector<std::string>& lines,
                  const PrintSettings& settings, Prompter* prompter) {
    PagedOutput output(device, settings.fonts, settings.options.linesPerPage, widestLine(lines));
    return printLines(output, repeatCopies(lines, settings.options.copies), prompter);
}

// --- the screens' printing -----------------------------------------------------------------------

ReportPrinter::ReportPrinter(Prompter& prompter) : prompter_(prompter) {}

ReportPrinter::~ReportPrinter() = default;

QPrinter& ReportPrinter::printer() {
    if (!printer_)
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *printer_;
}

bool ReportPrinter::printerReady() {
    QPrinter& p = printer();
    if (p.outputFormat() == QPrinter::PdfFormat)
        return !p.outputFileName().isEmpty();
    return p.isValid() && !p.printerName().isEmpty();
}

bool ReportPrinter::setUpPrinter(QWidget* parent) {
    QPrintDialog dialog(&printer(), parent);
    dialog.setObjectName(QStringLiteral("dlgPrinter"));
    return dialog.exec() == QDialog::Accepted;
}

Status ReportPrinter::output(const std::vector<std::string>& lines) {
    const PrintOptions& options = settings_.options;
    if (!options.fileName.empty()) {
        TextFileOutput file(options.fileName, options.fileMode == 'A');
        return printLines(file, lines, &prompter_);
    }
    return printPages(printer(), lines, settings_, &prompter_);
}

bool ReportPrinter::print(QWidget* parent, const QString& reportName, const QString& title,
                          const Pages& pages) {
    PrintDialog dialog(*this, reportName, title, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (settings_.options.fileName.empty() && !printerReady() && !setUpPrinter(parent))
        return false;
    return output(pages(settings_.options)).isOk();
}

} // namespace scorvane
