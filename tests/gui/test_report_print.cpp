// The print dialog's checks, and reports printed to a PDF, to a text file, and to outputs that
// fail.

#include "gui/GuiChecks.h"
#include "gui/test_report_fixture.h"
#include "reports/ReportDocument.h"
#include "reports/ui/PrintDialog.h"
#include "reports/ui/ReportPrinter.h"
#include "reports/ui/StatsDialog.h"
#include "storage/Platform.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QLineEdit>
#include <QPdfWriter>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>

#include <QtTest>

#include <fstream>

using namespace scorvane;
using scorvane::testing::child;
using scorvane::testing::press;
using scorvane::testing::ReportFixture;
using scorvane::testing::whenShown;

namespace {

void type(const QWidget* parent, const char* name, const QString& text) {
    child<QLineEdit>(parent, name)->setText(text);
}

// The pages of a PDF file, counted by their page objects.
int pdfPages(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string pdf((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    static const QRegularExpression page(QStringLiteral("/Type\\s*/Page(?![s\\w])"));
    int pages = 0;
    for (auto it = page.globalMatch(QString::fromLatin1(pdf)); it.hasNext(); it.next())
        ++pages;
    return pages;
}

int formFeeds(const std::vector<std::string>& lines) {
    return static_cast<int>(std::count(lines.begin(), lines.end(), kNewPageLine));
}

QStringList readLines(const std::string& path) {
    std::ifstream in(path);
    QStringList out;
    for (std::string line; std::getline(in, line);)
        out << QString::fromStdString(line);
    return out;
}

// Prints the screen's report through the print dialog with what `fill` types into it.
void printThroughDialog(StatsDialog& d, std::function<void(QDialog*)> fill) {
    whenShown("frmPrint", [fill = std::move(fill)](QDialog* p) {
        fill(p);
        press(p, "cmdOK");
    });
    press(&d, "cmdPrint");
}

} // namespace

class TestReportPrint : public QObject {
    Q_OBJECT

private slots:
    void printDialogChecksCopiesLinesAndTopPlayers() {
        ReportFixture f(false);
        ReportPrinter& printer = f.context.printer;
        PrintDialog d(printer, QStringLiteral("Passing Statistics"), QStringLiteral("Passing"));
        d.show();
        (void)QTest::qWaitForWindowActive(&d);
        QCOMPARE(d.objectName(), QStringLiteral("frmPrint"));
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        QCOMPARE(child<QLabel>(&d, "lblReportTitle")->text(), QStringLiteral("Passing Statistics"));
        QCOMPARE(child<QLineEdit>(&d, "txtTitle")->text(), QStringLiteral("Passing"));
        QCOMPARE(child<QLineEdit>(&d, "txtCopies")->text(), QStringLiteral("1"));
        QCOMPARE(child<QLineEdit>(&d, "txtLines")->text(), QStringLiteral("60"));
        QCOMPARE(child<QLineEdit>(&d, "txtTopX")->text(), QStringLiteral("999"));
        QVERIFY(child<QRadioButton>(&d, "optAppend")->isChecked());
        QCOMPARE(child<QFontComboBox>(&d, "cmbReportFont")->currentFont().family(),
                 reportFontFamily());
        QVERIFY(QStringList({"Courier New", "Liberation Mono"}).contains(reportFontFamily()));

        // Letters are refused in the number boxes.
        child<QLineEdit>(&d, "txtCopies")->clear();
        QTest::keyClicks(child<QLineEdit>(&d, "txtCopies"), QStringLiteral("a2b"));
        QCOMPARE(child<QLineEdit>(&d, "txtCopies")->text(), QStringLiteral("2"));

        struct Case {
            const char* copies;
            const char* lines;
            const char* top;
            Message message;
            const char* focus;
        };
        const Case refused[] = {
            {"0", "60", "999", {"Must be greater than 1", "Copies Invalid"}, "txtCopies"},
            {"51", "60", "999", {"50 copies maximum", "Copies Invalid"}, "txtCopies"},
            {"50", "20", "999", {"Must be greater than 20", "Lines per Page Invalid"}, "txtLines"},
            {"1", "21", "0", {"Must be 1 to 999", "Top Players Invalid"}, "txtTopX"},
            {"0", "20", "0", {"Must be greater than 1", "Copies Invalid"}, "txtCopies"},
        };
        for (const Case& c : refused) {
            type(&d, "txtCopies", QString::fromLatin1(c.copies));
            type(&d, "txtLines", QString::fromLatin1(c.lines));
            type(&d, "txtTopX", QString::fromLatin1(c.top));
            press(&d, "cmdOK");
            QVERIFY2(f.prompter.shown.back() == c.message, c.message.text.c_str());
            QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(c.focus));
            QVERIFY(d.isVisible());
        }
        QCOMPARE(f.prompter.shown.size(), std::size_t(5));
        // Nothing was stored by the refusals.
        QCOMPARE(printer.settings().options.copies, 1);
        QCOMPARE(printer.settings().options.linesPerPage, 60);

        // 50 copies, 21 lines and 5 top players are all accepted, and stored with the rest.
        type(&d, "txtCopies", QStringLiteral("50"));
        type(&d, "txtLines", QStringLiteral("21"));
        type(&d, "txtTopX", QStringLiteral("5"));
        type(&d, "txtTitle", QStringLiteral("Season Passing"));
        type(&d, "txtFileName", QStringLiteral(" out.txt "));
        child<QRadioButton>(&d, "optReplace")->setChecked(true);
        child<QCheckBox>(&d, "chkTitleBold")->setChecked(false);
        child<QCheckBox>(&d, "chkReportBold")->setChecked(true);
        press(&d, "cmdOK");
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(f.prompter.shown.size(), std::size_t(5));
        const PrintSettings& s = printer.settings();
        QCOMPARE(s.options.copies, 50);
        QCOMPARE(s.options.linesPerPage, 21);
        QCOMPARE(s.options.topPlayers, 5);
        QCOMPARE(s.options.title, std::string("Season Passing"));
        QCOMPARE(s.options.fileName, std::string("out.txt"));
        QCOMPARE(s.options.fileMode, 'R');
        QVERIFY(!s.fonts.titleBold && s.fonts.reportBold);

        // One copy is accepted; the dialog opens again on what was kept; Cancel stores nothing.
        PrintDialog again(printer, QStringLiteral("Roster"), QStringLiteral("Roster"));
        QCOMPARE(child<QLineEdit>(&again, "txtLines")->text(), QStringLiteral("21"));
        QVERIFY(child<QRadioButton>(&again, "optReplace")->isChecked());
        type(&again, "txtCopies", QStringLiteral("1"));
        press(&again, "cmdCancel");
        QCOMPARE(printer.settings().options.copies, 50);
        PrintDialog once(printer, QStringLiteral("Roster"), QStringLiteral("Roster"));
        type(&once, "txtCopies", QStringLiteral("1"));
        press(&once, "cmdOK");
        QCOMPARE(once.result(), int(QDialog::Accepted));
        QCOMPARE(printer.settings().options.copies, 1);
    }

    void statisticsScreenPrintsAPdfWithPageBreaks() {
        ReportFixture f;
        const std::string pdf = f.dir.file("defense.pdf");
        QPrinter& printer = f.context.printer.printer();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(pdf));
        StatsDialog d(f.context, 'D', {1, 2}, 1);
        d.show();
        printThroughDialog(d, [](QDialog* p) { type(p, "txtLines", QStringLiteral("21")); });
        QVERIFY(f.prompter.shown.empty());

        std::ifstream in(pdf, std::ios::binary | std::ios::ate);
        QVERIFY(in.is_open());
        QVERIFY(in.tellg() > 0);
        // As many pages as the laid-out report has, more than one at 21 lines a page.
        const auto lines =
            statisticsPages(d.document(), f.session.columns, f.context.printer.settings().options);
        QVERIFY(formFeeds(lines) >= 1);
        QCOMPARE(pdfPages(pdf), formFeeds(lines) + 1);

        // Two copies: twice the pages.
        printThroughDialog(d, [](QDialog* p) { type(p, "txtCopies", QStringLiteral("2")); });
        QCOMPARE(pdfPages(pdf), 2 * (formFeeds(lines) + 1));
    }

    void pagesTakeTheirLinesAtAFittingSize() {
        ReportFixture f(false);
        scorvane::testing::TempDir out;
        QPdfWriter writer(QString::fromStdString(out.file("lines.pdf")));
        PrintFonts fonts;
        std::vector<std::string> lines;
        for (int page = 0; page < 3; ++page) {
            if (page > 0)
                lines.push_back(kNewPageLine);
            lines.push_back("Passing Statistics" + std::string(100, ' ') + "Page " +
                            digits(page + 1));
            for (int i = 0; i < 79; ++i)
                lines.push_back(std::string(130, 'x'));
        }
        PagedOutput output(writer, fonts, 80, widestLine(lines));
        QVERIFY(printLines(output, lines, &f.prompter));
        QCOMPARE(output.pages(), 3);
        QVERIFY(output.pointSize() > 3 && output.pointSize() < 10);
        QFont font(fonts.reportFamily);
        font.setPointSizeF(output.pointSize());
        const QFontMetricsF metrics(font, &writer);
        QVERIFY(80 * metrics.lineSpacing() <= writer.height());
        QVERIFY(130 * metrics.horizontalAdvance(QLatin1Char('x')) <= writer.width());
        QCOMPARE(pdfPages(out.file("lines.pdf")), 3);

        // Short reports keep the largest size.
        QPdfWriter small(QString::fromStdString(out.file("small.pdf")));
        PagedOutput few(small, fonts, 21, 40);
        QVERIFY(printLines(few, {"a", "b"}, &f.prompter));
        QCOMPARE(few.pointSize(), 9.8);
    }

    void textFilesAreAppendedOrReplaced() {
        ReportFixture f;
        const std::string path = f.dir.file("passing.txt");
        StatsDialog d(f.context, 'P', {1}, 1);
        d.show();
        printThroughDialog(d, [&path](QDialog* p) {
            type(p, "txtFileName", QString::fromStdString(path));
            type(p, "txtTopX", QStringLiteral("1"));
        });
        const QStringList once = readLines(path);
        // Title with the page number, team, selection, blank, headings, dashes, the top player
        // (of two), blank, totals of both.
        QCOMPARE(once.size(), 9);
        QVERIFY(once[0].startsWith(QStringLiteral("Passing Statistics")));
        QVERIFY(once[0].endsWith(QStringLiteral("Page 1")));
        QCOMPARE(once[0].size(), once[4].size()); // the page number ends where the headings do
        QCOMPARE(once[1], QStringLiteral("Riverside Hawks"));
        QVERIFY(once[4].startsWith(QStringLiteral(" No Name") + QString(13, ' ') + "  G Att"));
        QVERIFY(once[6].startsWith(QStringLiteral("  7 Caleb Morrison")));
        QCOMPARE(once[7], QString());
        QVERIFY(once[8].startsWith(QStringLiteral("    Totals            10 254 149")));

        printThroughDialog(d, [](QDialog*) {});
        QCOMPARE(readLines(path), once + once);
        printThroughDialog(
            d, [](QDialog* p) { child<QRadioButton>(p, "optReplace")->setChecked(true); });
        QCOMPARE(readLines(path), once);
        QVERIFY(f.prompter.shown.empty());
    }

    void failingOutputOffersRetryAndCancelAndChangesNothing() {
        ReportFixture f;
        const auto before = f.snapshot();
        StatsDialog d(f.context, 'R', {1}, 1);
        d.show();
        const std::string nowhere = f.dir.file("missing/rushing.txt");
        f.prompter.answers = {Answer::Retry, Answer::Cancel};
        printThroughDialog(
            d, [&nowhere](QDialog* p) { type(p, "txtFileName", QString::fromStdString(nowhere)); });
        QCOMPARE(f.prompter.shown.size(), std::size_t(2));
        for (const Message& m : f.prompter.shown) {
            QCOMPARE(m.title, std::string("Printer/File Error"));
            QCOMPARE(m.buttons, Buttons::RetryCancel);
            QVERIFY(m.text.find(scorvane::platform::shownPath(nowhere)) != std::string::npos);
        }
        QCOMPARE(f.snapshot(), before);

        // A printer that cannot start: "Printer not ready"; Cancel ends the report.
        f.prompter.shown.clear();
        QPrinter& printer = f.context.printer.printer();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(f.dir.file("missing/rushing.pdf")));
        f.prompter.answers = {Answer::Cancel};
        printThroughDialog(d, [](QDialog* p) { type(p, "txtFileName", QString()); });
        QCOMPARE(f.prompter.shown.size(), std::size_t(1));
        QVERIFY(f.prompter.shown[0] == printErrorMessage(true, ""));
        QCOMPARE(f.prompter.shown[0].text, std::string("Printer not ready"));
        QCOMPARE(f.snapshot(), before);

        // Retry after the folder has come: the report is printed.
        std::filesystem::create_directory(f.dir.path() / "missing");
        f.prompter.shown.clear();
        PagedOutput output(printer, f.context.printer.settings().fonts, 60, 80);
        QVERIFY(printLines(output, {"Rushing Statistics"}, &f.prompter));
        QVERIFY(f.dir.exists("missing/rushing.pdf"));
        QVERIFY(f.prompter.shown.empty());
    }

    void cancellingThePrintDialogPrintsNothing() {
        ReportFixture f;
        const std::string path = f.dir.file("cancelled.txt");
        f.context.printer.settings().options.fileName = path;
        StatsDialog d(f.context, 'K', {1}, 1);
        d.show();
        whenShown("frmPrint", [](QDialog* p) { press(p, "cmdCancel"); });
        press(&d, "cmdPrint");
        QVERIFY(!f.dir.exists("cancelled.txt"));
    }
};

QTEST_MAIN(TestReportPrint)
#include "test_report_print.moc"
