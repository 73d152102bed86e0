// The report screens over the sample season: the statistics screen and the dialogs it opens
// (selection, report formats, sort, minimum games, single players), printing and exporting, the
// team record, game scores, standings, game logs and charts, the roster's Print and Game Log; and
// the seasons screens over seasons generated into folders of their own.

#include "games/ui/RosterDialog.h"
#include "gui/GuiChecks.h"
#include "reports/GameLog.h"
#include "reports/ReportColumns.h"
#include "reports/ReportDocument.h"
#include "reports/ui/ChartDialog.h"
#include "reports/ui/ComputeDialog.h"
#include "reports/ui/FormatDialogs.h"
#include "reports/ui/PrintDialog.h"
#include "reports/ui/ReportPrinter.h"
#include "reports/ui/ReportScreens.h"
#include "reports/ui/StatsDialog.h"
#include "reports/ui/TableReportDialog.h"
#include "reports/ui/TeamRecordDialog.h"
#include "sample/SampleSeason.h"
#include "seasons/SeasonsFile.h"
#include "seasons/ui/CareerReportDialog.h"
#include "seasons/ui/PlayerCareerDialog.h"
#include "seasons/ui/RecordBookDialog.h"
#include "seasons/ui/SeasonsDialog.h"
#include "shell/FolderSnapshot.h"
#include "storage/Platform.h"
#include "storage/Session.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"
#include "support/SeasonFolders.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontComboBox>
#include <QFontMetricsF>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPdfWriter>
#include <QPrinter>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollBar>

#include <qcustomplot.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

Session sessionOver(const TempDir& dir) {
    Session session;
    session.config = ConfigRecord::defaults();
    session.columns.build(session.config);
    session.paths = DataPaths{dir.dir(), dir.dir(), dir.dir()};
    return session;
}

// The sample season (Hawks are team 1, Tigers team 2) in a fresh data directory.
struct ReportFixture : ScratchData {
    Session session = sessionOver(dir);
    ReportContext context{session, data, prompter};

    explicit ReportFixture(bool sample = true) {
        if (sample && !writeSampleSeason(data))
            qFatal("The sample season could not be written");
        prompter.shown.clear();
    }

    // Every file of the data directory with its contents, to show that nothing changed.
    FolderSnapshot snapshot() const { return testing::snapshot(dir.path()); }
};

QTableWidget* grid(const QWidget* d) {
    return child<QTableWidget>(d, "grdStats");
}
QTableWidget* table(const QWidget* d) {
    return child<QTableWidget>(d, "tblReport");
}
int column(const QTableWidget* t, const QString& heading) {
    return static_cast<int>(headings(t).indexOf(heading));
}
QString text(const QTableWidget* t, int row, const char* heading) {
    return cellText(t, row, column(t, QString::fromLatin1(heading)));
}
QStringList rowTexts(const QTableWidget* t, int row) {
    QStringList out;
    for (int c = 0; c < t->columnCount(); ++c)
        out << cellText(t, row, c);
    return out;
}
// The figures of a column over the player rows (the totals row left out).
QList<double> figures(const QTableWidget* t, const QString& heading) {
    QList<double> out;
    for (int r = 0; r + 1 < t->rowCount(); ++r)
        out << cellText(t, r, column(t, heading)).toDouble();
    return out;
}
bool sorted(const QList<double>& v, Qt::SortOrder order) {
    return order == Qt::AscendingOrder ? std::is_sorted(v.begin(), v.end())
                                       : std::is_sorted(v.rbegin(), v.rend());
}
void clickHeading(QTableWidget* t, const QString& heading) {
    QHeaderView* header = t->horizontalHeader();
    const int section = column(t, heading);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(section) + 4, header->height() / 2));
}
void selectRow(QListWidget* list, const QString& text) {
    const auto found = list->findItems(text, Qt::MatchExactly);
    if (found.isEmpty())
        qFatal("No line %s", qPrintable(text));
    list->setCurrentItem(found.first());
}
void type(const QWidget* parent, const char* name, const QString& text) {
    child<QLineEdit>(parent, name)->setText(text);
}
// Presses the screen's `button` and works the dialog of that name it opens with `fill`, then
// presses the dialog's button `ok`.
void through(QWidget* screen, const char* button, const char* dialog, const char* ok,
             std::function<void(QDialog*)> fill = {}) {
    whenShown(dialog, [ok, fill = std::move(fill)](QDialog* d) {
        if (fill)
            fill(d);
        press(d, ok);
    });
    press(screen, button);
}
// Computes the screen's report again over games `low` to `high`.
void computeGames(QWidget* screen, const char* low, const char* high) {
    through(screen, "cmdCompute", "frmCompute", "cmdCompute", [low, high](QDialog* c) {
        type(c, "txtLowGame", QString::fromLatin1(low));
        type(c, "txtHighGame", QString::fromLatin1(high));
    });
}
// Prints the screen's report through the print dialog with what `fill` types into it.
void printThroughDialog(QWidget* screen, std::function<void(QDialog*)> fill) {
    through(screen, "cmdPrint", "frmPrint", "cmdOK", std::move(fill));
}

// The pages of a PDF file, counted by their page objects.
int pdfPages(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string pdf((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    static const QRegularExpression page(QStringLiteral("/Type\\s*/Page(?![s\\w])"));
    return static_cast<int>(QString::fromLatin1(pdf).count(page));
}

// What a chart window draws: its title, the names under its category ticks, the values of each
// series and the numbers written on its bars or points.
struct DrawnChart {
    QString title;
    QStringList categories;
    QStringList series;
    QList<QList<double>> values;
    QStringList labels;
    bool legend = false;
};

DrawnChart drawn(QWidget* chart) {
    auto* plot = chart->findChild<QCustomPlot*>("chvChart");
    DrawnChart d;
    if (const auto* title = qobject_cast<QCPTextElement*>(plot->plotLayout()->element(0, 0)))
        d.title = title->text();
    if (const auto ticker = plot->xAxis->ticker().dynamicCast<QCPAxisTickerText>())
        d.categories = ticker->ticks().values();
    for (int i = 0; i < plot->plottableCount(); ++i) {
        QCPAbstractPlottable* p = plot->plottable(i);
        d.series << p->name();
        QList<double> values;
        for (int k = 0; k < p->interface1D()->dataCount(); ++k)
            values << p->interface1D()->dataMainValue(k);
        d.values << values;
    }
    for (int i = 0; i < plot->itemCount(); ++i)
        if (const auto* text = qobject_cast<QCPItemText*>(plot->item(i)))
            d.labels << text->text();
    d.legend = plot->legend->visible();
    return d;
}

// Two seasons of the Hawks, each in its own folder (the runner keeps his number, the passer
// changes his: 7, then 12), a configuration folder for the seasons file, and the report context
// over an empty data directory.
struct TwoSeasons : ReportFixture {
    std::vector<std::unique_ptr<TempDir>> dirs;
    SeasonsList list;
    TempDir config;
    const std::string file = seasonsFilePath(config.dir());

    TwoSeasons() : ReportFixture(false) {
        const std::vector<SeasonData> seasons = {
            {"2023",
             {{7, "Chris Vale"}, {30, "Dale Ortiz"}},
             {{21, 7}, {14, 10}, {17, 3}},
             {pass(1, 7, 6, 5, 60, 0, 1, 22), rush(1, 30, 12, 120, 30, 1), rush(2, 30, 1, 50, 50),
              rush(3, 30, 10, 60, 15)}},
            {"2024",
             {{12, "Chris Vale"}, {30, "Dale Ortiz"}},
             {{28, 0}, {35, 14}, {10, 24}},
             {pass(1, 12, 50, 15, 200, 2, 2, 40), rush(1, 30, 15, 150, 40, 2),
              rush(2, 30, 11, 110, 22), rush(3, 30, 20, 90, 12)}},
        };
        for (const SeasonData& d : seasons) {
            dirs.push_back(std::make_unique<TempDir>());
            if (!writeSeason(dirs.back()->dir(), d) ||
                addSeason(list, {d.label, dirs.back()->dir(), 1}))
                qFatal("The season %s could not be made", d.label.c_str());
        }
    }

    // Every file of every season's folder, folder by folder.
    std::vector<FolderSnapshot> folders() const {
        std::vector<FolderSnapshot> all;
        for (const auto& d : dirs)
            all.push_back(testing::snapshot(d->path()));
        return all;
    }
};

} // namespace

class TestReportScreens : public QObject {
    Q_OBJECT

private slots:
    // Qt's own file dialog, also on Windows, where the system's dialog changes a file's ending
    // with the chosen type by itself.
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void headingClickSortsAsTheSortDialogDoes() {
        ReportFixture f;
        StatsDialog d(f.context, 'D', {1}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        QVERIFY(t->rowCount() > 5);
        clickHeading(t, "Ast");
        QVERIFY(sorted(figures(t, "Ast"), Qt::DescendingOrder));
        QVERIFY(!sorted(figures(t, "Ast"), Qt::AscendingOrder));
        // The heading's arrow is given the order itself; the style draws it its own way.
        QHeaderView* header = t->horizontalHeader();
        QCOMPARE(header->sortIndicatorSection(), column(t, "Ast"));
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
        clickHeading(t, "Ast"); // the same column again: the other way round
        QVERIFY(sorted(figures(t, "Ast"), Qt::AscendingOrder));
        QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
        QCOMPARE(cellText(t, t->rowCount() - 1, 1), QStringLiteral("Totals"));

        // The sort dialog starts from the heading's choice and sorts the same way.
        through(&d, "cmdSort", "frmSort", "cmdOK", [](QDialog* s) {
            QCOMPARE(child<QListWidget>(s, "lstCat")->currentItem()->text(), QStringLiteral("Ast"));
            QVERIFY(child<QRadioButton>(s, "optAsc")->isChecked());
            selectRow(child<QListWidget>(s, "lstCat"), QStringLiteral("Sol"));
            child<QRadioButton>(s, "optDesc")->setChecked(true);
        });
        QVERIFY(sorted(figures(t, "Sol"), Qt::DescendingOrder));
        QVERIFY(f.context.sort[3] == (SortSetting{3, 'D'}));
        // Nothing was computed again: the same players.
        QCOMPARE(d.report().players.size(), std::size_t(t->rowCount() - 1));

        // The report confirmed as it was keeps that sort; once its column leaves the report,
        // the report's own sort (tackles, greatest first) takes over.
        through(&d, "cmdFormat", "frmRptSelect", "cmdOK");
        QVERIFY(f.context.sort[3] == (SortSetting{3, 'D'}));
        QVERIFY(sorted(figures(t, "Sol"), Qt::DescendingOrder));
        QCOMPARE(header->sortIndicatorSection(), column(t, "Sol"));
        through(&d, "cmdFormat", "frmRptSelect", "cmdOK", [](QDialog* r) {
            through(r, "cmdChange", "frmFormat", "cmdOK", [](QDialog* fmt) {
                selectRow(child<QListWidget>(fmt, "lstSelCat"), QStringLiteral("Sol"));
                press(fmt, "cmdDelete");
            });
        });
        QVERIFY(!f.context.sort[3]);
        QCOMPARE(column(t, "Sol"), -1);
        QVERIFY(sorted(figures(t, "Tkl"), Qt::DescendingOrder));
        QCOMPARE(header->sortIndicatorSection(), column(t, "Tkl"));
    }

    void gridFitsItsColumnsAndKeepsNumberAndNameInView() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1, 2}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        QHeaderView* header = t->horizontalHeader();
        // Every column as wide as its heading or widest figure and a small margin (the sorted
        // column also its arrow), the same after Compute; the report fits: no sideways scrolling.
        auto checkFit = [&] {
            for (int c = 0; c < t->columnCount(); ++c) {
                int widest = QFontMetrics(header->font()).horizontalAdvance(headings(t)[c]);
                for (int r = 0; r < t->rowCount(); ++r)
                    widest = std::max(widest, QFontMetrics(t->item(r, c)->font().resolve(t->font()))
                                                  .horizontalAdvance(cellText(t, r, c)));
                const int margin = c == header->sortIndicatorSection() ? 40 : 16;
                QVERIFY2(t->columnWidth(c) >= widest && t->columnWidth(c) <= widest + margin,
                         qPrintable(headings(t)[c] +
                                    QString(" %1 %2").arg(t->columnWidth(c)).arg(widest)));
            }
            QVERIFY(!t->horizontalScrollBar()->isVisible());
        };
        checkFit();
        const int before = header->length();
        through(&d, "cmdCompute", "frmCompute", "cmdCompute");
        checkFit();
        QCOMPARE(header->length(), before);

        // On a window too narrow for the report, a new report starts at its left edge.
        d.layout()->setSizeConstraint(QLayout::SetNoConstraint);
        d.setMinimumSize(0, 0);
        d.resize(420, 400);
        QTRY_VERIFY(t->horizontalScrollBar()->isVisible());
        QScrollBar* sideways = t->horizontalScrollBar();
        for (auto [button, dialog, ok] : {std::tuple("cmdCompute", "frmCompute", "cmdCompute"),
                                          std::tuple("cmdFormat", "frmRptSelect", "cmdOK")}) {
            sideways->setValue(sideways->maximum());
            through(&d, button, dialog, ok);
            QVERIFY2(sideways->maximum() > 0 && sideways->value() == 0, button);
        }

        // Scrolled fully right, the number, name and team stay at the left edge over the figures.
        sideways->setValue(sideways->maximum());
        auto* frozen = child<QTableView>(&d, "grdStatsFrozen");
        QVERIFY(frozen->isVisible());
        for (int c = 0; c < t->columnCount(); ++c)
            QCOMPARE(frozen->isColumnHidden(c), c >= 3);
        const int lead = t->columnWidth(0) + t->columnWidth(1) + t->columnWidth(2);
        QCOMPARE(frozen->geometry(), QRect(t->viewport()->x(), header->y(), lead,
                                           header->height() + t->viewport()->height()));
        QVERIFY(t->columnViewportPosition(1) < 0); // the grid's own name column is scrolled away
        QCOMPARE(frozen->indexAt(QPoint(2, 2)), t->model()->index(0, 0));
        QVERIFY(t->indexAt(QPoint(lead + 2, 2)).column() > 3);

        // The keyboard moves the selection in both; a cell moved to is not left under the frozen
        // columns.
        t->setFocus();
        t->setCurrentCell(0, t->columnCount() - 1);
        QTest::keyClick(t, Qt::Key_Down);
        QCOMPARE(t->currentRow(), 1);
        QVERIFY(frozen->selectionModel()->isRowSelected(1, {}));
        while (t->currentColumn() > 3)
            QTest::keyClick(t, Qt::Key_Left);
        QCOMPARE(t->columnViewportPosition(3), lead);
        QTest::keyClick(t, Qt::Key_Left);
        QCOMPARE(t->currentColumn(), 2);
        QCOMPARE(t->columnViewportPosition(3), lead); // the frozen team column: nothing scrolls
        QTest::keyClick(t, Qt::Key_Down);
        QCOMPARE(t->currentRow(), 2);
    }

    // Over several teams every line names its team (the Rams, who have no files at all, have no
    // line); one team chosen in the box has its own report. Looking at every category, sorting by
    // a heading and confirming the report and sort dialogs as they are write nothing.
    void severalTeamsAreNamedOnEveryLineAndAddUp() {
        ReportFixture f;
        const auto before = f.snapshot();
        StatsDialog d(f.context, 'R', {1, 2, 3}, 1);
        showActive(&d);
        auto* teams = child<QComboBox>(&d, "cboTeams");
        QCOMPARE(teams->count(), 4);
        QCOMPARE(teams->itemText(0), QStringLiteral("Multiple Teams: Hawks, Tigers, Rams"));
        QCOMPARE(d.windowTitle(),
                 QStringLiteral("Rushing Statistics - Multiple Teams: Hawks, Tigers, Rams"));
        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t).mid(0, 4), QStringList({"No", "Name", "Team", "G"}));
        QSet<QString> named;
        for (int r = 0; r + 1 < t->rowCount(); ++r)
            named << cellText(t, r, 2);
        QCOMPARE(named, QSet<QString>({"Hawks", "Tigers"}));
        teams->setCurrentIndex(3);
        QCOMPARE(cellText(t, 0, 1), QStringLiteral("No Players"));
        teams->setCurrentIndex(2);
        QCOMPARE(headings(t).mid(0, 3), QStringList({"No", "Name", "G"}));
        QCOMPARE(d.document().heading.team, std::string("Lakeview Tigers"));

        teams->setCurrentIndex(0);
        for (int k = 0; k < 6; ++k)
            child<QComboBox>(&d, "cboCategory")->setCurrentIndex(k);
        clickHeading(grid(&d), QStringLiteral("G"));
        through(&d, "cmdFormat", "frmRptSelect", "cmdOK");
        through(&d, "cmdSort", "frmSort", "cmdOK");
        QCOMPARE(f.snapshot(), before);
        QVERIFY(f.prompter.shown.empty());
    }

    // The selection dialog refuses a game number out of 1 to 999 with the cursor back in its box,
    // swaps a reversed range, and its buttons clear the game types, the marks and everything.
    void computeDialogChecksTheRangeAndStoresTheChoice() {
        ReportFixture f;
        f.session.config.gameTypeNames[0] = fit("League", 10);
        f.session.config.gameTypeNames[1] = fit("Non & Co", 10);
        TeamSeason hawks;
        QVERIFY(viewTeamSeason(f.data, 1, hawks));
        ComputeDialog d(Selection{}, f.session.config, hawks.games, f.prompter);
        showActive(&d);
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        QCOMPARE(child<QCheckBox>(&d, "chkGameType1")->text(), QStringLiteral("League"));
        QCOMPARE(child<QCheckBox>(&d, "chkGameType2")->text(), QStringLiteral("Non && Co"));
        QCOMPARE(d.findChildren<QCheckBox*>(QRegularExpression("^chkGameType\\d$")).size(), 7);
        auto* games = child<QListWidget>(&d, "lstSpecialSelect");
        QCOMPARE(games->count(), 10);
        int marked = 0;
        for (const GameRecord& g : hawks.games)
            marked += g.specialSelect == '2';
        QCOMPARE(child<QLabel>(&d, "lblGamesSelected")->text(), QString::number(marked));

        auto* low = child<QLineEdit>(&d, "txtLowGame");
        auto* high = child<QLineEdit>(&d, "txtHighGame");
        for (auto [from, to, title, focus] : {std::tuple("0", "999", "From Game Invalid", low),
                                              std::tuple("5", "1000", "To Game Invalid", high)}) {
            low->setText(QString::fromLatin1(from));
            high->setText(QString::fromLatin1(to));
            press(&d, "cmdCompute");
            QVERIFY2(f.prompter.shown.back() == (Message{"Must be 1 to 999", title}), from);
            QCOMPARE(d.focusWidget(), focus);
            QVERIFY(d.isVisible());
        }

        // A reversed range is swapped, on the screen too; one game type left out.
        low->setText(QStringLiteral("50"));
        high->setText(QStringLiteral("10"));
        child<QCheckBox>(&d, "chkGameType3")->setChecked(false);
        press(&d, "cmdCompute");
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(low->text(), QStringLiteral("10"));
        QVERIFY(!d.selection().gameTypes[2] && d.selection().gameTypes[3]);
        QCOMPARE(f.prompter.shown.size(), std::size_t(2));

        // Opened on a choice with marked games: Clear, Clear Game List and All.
        applyMarks(hawks.games, {2, 5});
        Selection chosen;
        chosen.fromGame = 3;
        chosen.toGame = 4;
        chosen.specialSelect = true;
        chosen.gameTypes[1] = false;
        chosen.playerNumber = 7;
        ComputeDialog again(chosen, f.session.config, hawks.games, f.prompter);
        showActive(&again);
        QCOMPARE(child<QLineEdit>(&again, "txtLowGame")->text(), QStringLiteral("3"));
        QVERIFY(!child<QCheckBox>(&again, "chkGameType2")->isChecked());
        QCOMPARE(child<QLabel>(&again, "lblGamesSelected")->text(), QStringLiteral("2"));
        press(&again, "cmdClearGT");
        QVERIFY(!child<QCheckBox>(&again, "chkGameType1")->isChecked());
        press(&again, "cmdClearGameList");
        QCOMPARE(child<QLabel>(&again, "lblGamesSelected")->text(), QStringLiteral("0"));
        child<QListWidget>(&again, "lstSpecialSelect")->item(9)->setCheckState(Qt::Checked);
        QCOMPARE(child<QLabel>(&again, "lblGamesSelected")->text(), QStringLiteral("1"));
        press(&again, "cmdAll");
        QCOMPARE(child<QLineEdit>(&again, "txtLowGame")->text(), QStringLiteral("1"));
        QCOMPARE(child<QLineEdit>(&again, "txtPlayerNumber")->text(), QStringLiteral("0"));
        QVERIFY(!child<QCheckBox>(&again, "chkSpecialSelect")->isChecked());
        press(&again, "cmdCompute");
        QVERIFY(again.selection().allGameTypes());
        QCOMPARE(again.markedGames(), std::set<int>{10});
    }

    // Compute over games 1 to 3 counts only those, and a range without games has "No Players".
    // Special Select over one game marked in the list (and only in memory) counts that one, and
    // with every mark cleared no game: "No Games". Cancel in the selection dialog keeps the
    // report's selection and checks nothing. Nothing is written.
    void computingFromTheScreenCountsOnlyTheChosenGames() {
        ReportFixture f;
        const auto before = f.snapshot();
        StatsDialog d(f.context, 'T', {1}, 1);
        showActive(&d);
        computeGames(&d, "1", "3");
        QTableWidget* t = grid(&d);
        QCOMPARE(text(t, t->rowCount() - 1, "G"), QStringLiteral("3"));
        QCOMPARE(child<QLabel>(&d, "lblSelection")->text(),
                 QStringLiteral("Games 1 to 3, all game types"));
        computeGames(&d, "500", "999");
        QCOMPARE(std::tuple(t->rowCount(), cellText(t, 0, 1), t->columnSpan(0, 1)),
                 std::tuple(1, QStringLiteral("No Players"), t->columnCount() - 1));

        through(&d, "cmdCompute", "frmCompute", "cmdCompute", [](QDialog* c) {
            type(c, "txtLowGame", QStringLiteral("1"));
            child<QCheckBox>(c, "chkSpecialSelect")->setChecked(true);
            press(c, "cmdClearGameList");
            child<QListWidget>(c, "lstSpecialSelect")->item(4)->setCheckState(Qt::Checked);
        });
        QCOMPARE(text(t, t->rowCount() - 1, "G"), QStringLiteral("1"));
        through(&d, "cmdCompute", "frmCompute", "cmdCompute",
                [](QDialog* c) { press(c, "cmdClearGameList"); });
        QCOMPARE(cellText(t, 0, 1), QStringLiteral("No Games"));
        through(&d, "cmdCompute", "frmCompute", "cmdCancel",
                [](QDialog* c) { type(c, "txtLowGame", "0"); });
        QVERIFY(f.context.selection.specialSelect && f.context.selection.fromGame == 1);
        QVERIFY(f.prompter.shown.empty());
        QCOMPARE(f.snapshot(), before);
    }

    void minimumGamesAndSinglePlayersNarrowTheReport() {
        ReportFixture f;
        StatsDialog d(f.context, 'C', {1}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        const int everyone = t->rowCount() - 1;

        through(&d, "cmdMin", "frmMinimum", "cmdOK", [](QDialog* m) {
            QCOMPARE(child<QLabel>(m, "lblLessThan")->text(), QStringLiteral("Less than"));
            QCOMPARE(child<QLabel>(m, "lblGames")->text(), QStringLiteral(" Games"));
            type(m, "txtMin", QStringLiteral("10"));
        });
        const int regulars = t->rowCount() - 1;
        QVERIFY(regulars > 0 && regulars < everyone);
        QCOMPARE(figures(t, "G"), QList<double>(regulars, 10.0));

        // The single players on offer are those the minimum leaves; two are chosen.
        QStringList chosen;
        through(&d, "cmdPlayer", "frmIndividual", "cmdOK", [&](QDialog* p) {
            auto* list = child<QListWidget>(p, "lstPlayers");
            QCOMPARE(list->count(), regulars);
            list->item(0)->setSelected(true);
            list->item(regulars - 1)->setSelected(true);
            chosen << list->item(0)->text().trimmed() << list->item(regulars - 1)->text().trimmed();
        });
        QCOMPARE(t->rowCount(), 3);
        QCOMPARE(QSet<QString>({cellText(t, 0, 0) + " " + cellText(t, 0, 1),
                                cellText(t, 1, 0) + " " + cellText(t, 1, 1)}),
                 QSet<QString>(chosen.begin(), chosen.end()));
        QVERIFY(child<QLabel>(&d, "lblSelection")->text().contains(QStringLiteral("2 chosen")));

        // Team: every player again.
        press(&d, "cmdTeam");
        QCOMPARE(t->rowCount() - 1, everyone);
    }

    void formatDialogsWriteTheReportFileThenItIsShownPrintedAndExported() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1}, 1);
        showActive(&d);
        const std::size_t players = d.report().players.size();

        through(&d, "cmdFormat", "frmRptSelect", "cmdOK", [&f](QDialog* r) {
            auto* list = child<QListWidget>(r, "lstReports");
            QCOMPARE(lines(list), QStringList({"Passing Statistics"}));
            QVERIFY(sharedAccessKeys(r).isEmpty());
            // Looking at the list writes nothing; the only report cannot go.
            QVERIFY(!f.dir.exists("FBRPTFMT.DAT"));
            press(r, "cmdDelete");
            QVERIFY(f.prompter.shown.back() == SavedReports::onlyReportMessage());
            QVERIFY(!f.dir.exists("FBRPTFMT.DAT"));

            press(r, "cmdAdd");
            QCOMPARE(lines(list), QStringList({"Passing Statistics", "Report 2"}));
            QCOMPARE(f.dir.read("FBRPTFMT.DAT").size(), std::size_t(2 * 167));
            QCOMPARE(list->currentRow(), 1);

            through(r, "cmdChange", "frmFormat", "cmdOK", [](QDialog* fmt) {
                QVERIFY(sharedAccessKeys(fmt).isEmpty());
                auto* all = child<QListWidget>(fmt, "lstAll");
                auto* chosen = child<QListWidget>(fmt, "lstSelCat");
                QCOMPARE(chosen->count(), 0); // a new report has no columns yet
                QCOMPARE(all->count(), 23);
                for (const char* c : {"Yds", "Att", "TD"}) {
                    selectRow(all, QString::fromLatin1(c));
                    press(fmt, "cmdAdd");
                }
                QCOMPARE(lines(chosen), QStringList({"Yds", "Att", "TD"}));
                selectRow(chosen, QStringLiteral("Att"));
                press(fmt, "cmdDelete");
                QCOMPARE(lines(chosen), QStringList({"Yds", "TD"}));
                QCOMPARE(lines(all).mid(0, 3), QStringList({"G", "Att", "Cm"})); // in code order
                child<QLineEdit>(fmt, "txtTitle")->setText(QStringLiteral("  Short Passing  "));
                auto* sort = child<QComboBox>(fmt, "cmbCats");
                sort->setCurrentIndex(sort->findText(QStringLiteral("Yds")));
                child<QRadioButton>(fmt, "optAsc")->setChecked(true);
            });
            QCOMPARE(lines(list), QStringList({"Passing Statistics", "Short Passing"}));
        });

        // The file: the starting format as record 1, the edited report as record 2.
        const Bytes file = f.dir.read("FBRPTFMT.DAT");
        QCOMPARE(file.size(), std::size_t(334));
        QCOMPARE(Bytes(file.begin(), file.begin() + 167),
                 startingFormat('P', f.session.config).encode());
        ReportFormatRecord edited;
        edited.reportName = fit("Short Passing", 20);
        edited.sortColumn = 4; // Yds, rising
        edited.sortDirection = 'A';
        edited.columns[1] = 4; // Yds
        edited.columns[2] = 6; // TD
        QCOMPARE(Bytes(file.begin() + 167, file.end()), edited.encode());

        // The screen shows the chosen report without computing again.
        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t), QStringList({"No", "Name", "Yds", "TD"}));
        QCOMPARE(child<QLabel>(&d, "lblTitle")->text(), QStringLiteral("Short Passing"));
        QVERIFY(sorted(figures(t, "Yds"), Qt::AscendingOrder));
        QCOMPARE(d.report().players.size(), players);

        // Deleting it asks, and the screen goes back to the first report.
        f.prompter.answers = {Answer::Yes};
        through(&d, "cmdFormat", "frmRptSelect", "cmdCancel", [](QDialog* r) {
            selectRow(child<QListWidget>(r, "lstReports"), QStringLiteral("Short Passing"));
            press(r, "cmdDelete");
            QCOMPARE(lines(child<QListWidget>(r, "lstReports")),
                     QStringList({"Passing Statistics"}));
        });
        QVERIFY(f.prompter.shown.back() == SavedReports::deleteQuestion());
        QCOMPARE(headings(t).size(), 20); // back on the first report

        // Back on it, the passing report with its totals, printed to a text file and exported.
        // Export suggests the team, the report and the day, and choosing HTML changes the ending. A
        // file that cannot be opened gives Printer/File Error naming it, Retry and Cancel, for an
        // export as for a print, and nothing is written. A text file is appended to or replaced;
        // Cancel in the print dialog prints nothing. The category box then shows kicking with its
        // made/attempted columns, and what is printed follows.
        const auto before = f.snapshot();
        f.prompter.shown.clear();
        QCOMPARE(d.windowTitle(), QStringLiteral("Passing Statistics - Riverside Hawks"));
        QCOMPARE(child<QLabel>(&d, "lblTitle")->text(), QStringLiteral("Passing Statistics"));
        QCOMPARE(child<QLabel>(&d, "lblSelection")->text(),
                 QStringLiteral("Games 1 to 999, all game types"));
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        QCOMPARE(headings(t).mid(0, 5), QStringList({"No", "Name", "G", "Att", "Cm"}));
        QVERIFY(QFontInfo(t->font()).fixedPitch());
        // The sample's two passers and the totals line, biggest yardage first.
        QCOMPARE(t->rowCount(), 3);
        QCOMPARE(rowTexts(t, 0).mid(0, 2), QStringList({"7", "Caleb Morrison"}));
        QVERIFY(sorted(figures(t, "Yds"), Qt::DescendingOrder));
        QCOMPARE(cellText(t, 2, 1), QStringLiteral("Totals"));
        QVERIFY(t->item(2, 1)->font().bold());
        QVERIFY(t->item(0, column(t, "Yds"))->textAlignment() & Qt::AlignRight);
        QVERIFY(t->item(0, 1)->textAlignment() & Qt::AlignLeft);

        QString suggested, asHtml;
        whenShown(nullptr, [&](QWidget* shown) {
            auto* dialog = qobject_cast<QFileDialog*>(shown);
            QVERIFY(dialog);
            suggested = QFileInfo(dialog->selectedFiles().value(0)).fileName();
            emit dialog->filterSelected(QStringLiteral("HTML (*.html *.htm)"));
            asHtml = QFileInfo(dialog->selectedFiles().value(0)).fileName();
        });
        press(&d, "cmdExport");
        const QString day = QDate::currentDate().toString(Qt::ISODate);
        QCOMPARE(suggested, QStringLiteral("Riverside Hawks Passing Statistics %1.csv").arg(day));
        QCOMPARE(asHtml, QStringLiteral("Riverside Hawks Passing Statistics %1.html").arg(day));

        const std::string csvNowhere = f.dir.file("missing/passing.csv");
        const std::string nowhere = f.dir.file("missing/passing.txt");
        f.prompter.answers = {Answer::Cancel, Answer::Retry, Answer::Cancel};
        QVERIFY(!d.exportTo(QString::fromStdString(csvNowhere), false));
        printThroughDialog(&d, [&nowhere](QDialog* p) {
            type(p, "txtFileName", QString::fromStdString(nowhere));
        });
        QCOMPARE(f.prompter.shown.size(), std::size_t(3));
        for (std::size_t i = 0; i < f.prompter.shown.size(); ++i) {
            const Message& m = f.prompter.shown[i];
            QCOMPARE(m.title, std::string("Printer/File Error"));
            QCOMPARE(m.buttons, Buttons::RetryCancel);
            QVERIFY(m.text.find(platform::shownPath(i ? nowhere : csvNowhere)) !=
                    std::string::npos);
        }
        QCOMPARE(f.snapshot(), before);
        f.prompter.shown.clear();

        const std::string path = f.dir.file("passing.txt");
        printThroughDialog(&d, [&path](QDialog* p) {
            type(p, "txtFileName", QString::fromStdString(path));
            type(p, "txtTopX", QStringLiteral("1"));
        });
        const QStringList once = readLines(path);
        // Title, team, selection, blank, headings, dashes, the top player (of two), blank, totals.
        QCOMPARE(once.size(), 9);
        QVERIFY(once[0].startsWith(QStringLiteral("Passing Statistics")));
        QCOMPARE(once[1], QStringLiteral("Riverside Hawks"));
        QVERIFY(once[6].startsWith(QStringLiteral("  7 Caleb Morrison")));
        QVERIFY(once[8].startsWith(QStringLiteral("    Totals            10 254 149")));
        printThroughDialog(&d, [](QDialog*) {});
        QCOMPARE(readLines(path), once + once);
        printThroughDialog(
            &d, [](QDialog* p) { child<QRadioButton>(p, "optReplace")->setChecked(true); });
        QCOMPARE(readLines(path), once);
        through(&d, "cmdPrint", "frmPrint", "cmdCancel");
        QCOMPARE(readLines(path), once);

        const std::string csv = f.dir.file("passing.csv");
        QVERIFY(d.exportTo(QString::fromStdString(csv), false));
        const QStringList rows = readLines(csv);
        QCOMPARE(rows.size(), 3); // the headings, the one top player kept for printing, the totals
        QVERIFY(rows[1].startsWith(QStringLiteral("7,Caleb Morrison,")));
        const std::string html = f.dir.file("passing.html");
        QVERIFY(d.exportTo(QString::fromStdString(html), true));
        QVERIFY(readLines(html).join('\n').contains(QStringLiteral("<h1>Passing Statistics</h1>")));

        child<QComboBox>(&d, "cboCategory")->setCurrentIndex(4);
        QCOMPARE(d.category(), 'K');
        QCOMPARE(d.windowTitle(), QStringLiteral("Kicking Statistics - Riverside Hawks"));
        QCOMPARE(headings(t), QStringList({"No", "Name", "G", "Extra Points", "Pnt", "PLg", "PAv",
                                           "FG All", "FLg"}));
        QCOMPARE(d.document().report.category, 'K');
        QVERIFY(f.prompter.shown.empty());
    }

    void damagedReportFileOpensWithUsableReportsOnly() {
        ReportFixture f;
        ReportFormatRecord odd = defaultFormat('P');
        odd.reportName = fit("Odd", 20);
        odd.columns.fill(0);
        odd.columns[1] = 99; // past the last passing column
        odd.columns[2] = 4;
        odd.columns[3] = 31;
        odd.sortColumn = 500;
        odd.category = 'Q'; // first as a category there is none of
        Bytes file = odd.encode();
        odd.category = 'P';
        const Bytes second = odd.encode();
        file.insert(file.end(), second.begin(), second.end());
        file.resize(file.size() + 70, '#'); // a piece of a record
        f.dir.write("FBRPTFMT.DAT", file);
        const auto before = f.snapshot();

        StatsDialog d(f.context, 'P', {1}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t), QStringList({"No", "Name", "Yds"}));
        QCOMPARE(child<QLabel>(&d, "lblTitle")->text(), QStringLiteral("Odd"));
        QVERIFY(
            sorted(figures(t, "No"), Qt::AscendingOrder)); // a sort column it lacks: roster order
        through(&d, "cmdFormat", "frmRptSelect", "cmdCancel", [](QDialog* r) {
            QCOMPARE(lines(child<QListWidget>(r, "lstReports")), QStringList({"Odd"}));
        });
        QCOMPARE(f.snapshot(), before);

        // Changed there: Default puts back passing's columns and sort but not the title typed,
        // and a blank title is saved as Unnamed Report.
        through(&d, "cmdFormat", "frmRptSelect", "cmdOK", [](QDialog* r) {
            through(r, "cmdChange", "frmFormat", "cmdOK", [](QDialog* fmt) {
                type(fmt, "txtTitle", QStringLiteral("   "));
                press(fmt, "cmdDefault");
                QCOMPARE(child<QLineEdit>(fmt, "txtTitle")->text(), QStringLiteral("   "));
            });
        });
        QCOMPARE(headings(t).size(), 20);
        QVERIFY(sorted(figures(t, "Yds"), Qt::DescendingOrder));
        QCOMPARE(child<QLabel>(&d, "lblTitle")->text(), QStringLiteral("Unnamed Report"));
        QCOMPARE(textAt(f.dir.read("FBRPTFMT.DAT"), 167, 22), "P " + fit("Unnamed Report", 20));
        QVERIFY(f.prompter.shown.empty());
    }

    // The team record by game type, with a Tie column only when a game was tied (the sample's
    // fifth); nothing counted leaves nothing to print; Print writes the record to a text file.
    // The Rams, who have no files at all, have an empty record, and nothing is written for them.
    void teamRecordByGameTypeAndItsPrint() {
        ReportFixture f;
        const auto before = f.snapshot();
        TeamRecordDialog rams(f.context, 3);
        showActive(&rams);
        QCOMPARE(child<QTableWidget>(&rams, "tblRecord")->rowCount(), 0);
        QCOMPARE(f.snapshot(), before);
        f.session.config.gameTypeNames[0] = fit("League", 10);
        TeamRecordDialog d(f.context, 1);
        showActive(&d);
        QCOMPARE(d.windowTitle(), QStringLiteral("Record - Riverside Hawks"));
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        auto* t = child<QTableWidget>(&d, "tblRecord");
        QCOMPARE(headings(t), QStringList({"Game Type", "Won", "Lost", "Tie", "Pct", "PF", "PA"}));
        QCOMPARE(rowTexts(t, 0)[0] + "|" + rowTexts(t, t->rowCount() - 1).join(' '),
                 QStringLiteral("League|Totals 6 3 1 .650 227 205"));
        QCOMPARE(t->rowCount(), 4);

        const std::string path = f.dir.file("record.txt");
        printThroughDialog(&d, [&path](QDialog* p) {
            QCOMPARE(child<QLabel>(p, "lblReportTitle")->text(), QStringLiteral("Team Record"));
            type(p, "txtFileName", QString::fromStdString(path));
        });
        const QStringList printed = readLines(path);
        QVERIFY(printed.value(0).startsWith(QStringLiteral("Team Record")));
        QCOMPARE(printed[1], QStringLiteral("Riverside Hawks"));
        QCOMPARE(printed.last().simplified(), QStringLiteral("Totals 6 3 1 .650 227 205"));

        // Nothing counted: the header alone without the Tie column, and nothing to print.
        computeGames(&d, "900", "999");
        QCOMPARE(t->rowCount(), 0);
        QCOMPARE(headings(t), QStringList({"Game Type", "Won", "Lost", "Pct", "PF", "PA"}));
        QVERIFY(!child<QPushButton>(&d, "cmdPrint")->isEnabled());
    }

    // From the roster: Game Log opens the selected player's log, in the category chosen when he
    // has results in several, and a number with none has a message. Print lists every number in
    // use with its details, a phone typed and not yet taken over included. The data files are
    // untouched until the roster is closed.
    void theRosterOpensGameLogsAndPrints() {
        ReportFixture f;
        const auto before = f.snapshot();
        std::vector<char> categories;
        TeamSeason hawks;
        QVERIFY(readTeamSeason(f.data.paths(), 1, hawks).isOk());
        QVERIFY(categoriesRecorded(hawks, 7, categories).isOk());
        QVERIFY(categories.size() > 1);
        Roster roster;
        RosterDialog d(f.data.team(1), roster, f.prompter, QStringLiteral("Riverside Hawks"));
        for (const char* button : {"cmdGameLog", "cmdPrint"})
            QVERIFY2(!child<QPushButton>(&d, button)->isEnabled(), button);
        d.setGameLog(
            [&](int player, QWidget* parent) { openPlayerGameLog(f.context, 1, player, parent); });
        d.setPrint([&](const RosterEditor& editor, QWidget* parent) {
            printRoster(
                f.context, "Riverside Hawks", roster,
                [&editor](int n, ContactField field) { return editor.contact(n, field); }, parent);
        });
        QVERIFY(child<QPushButton>(&d, "cmdPrint")->isEnabled());
        showActive(&d);
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        auto* players = child<QListWidget>(&d, "lstPlayerList");
        players->setCurrentRow(6); // number 7
        QString title;
        int gameLines = 0;
        whenShown("dlgGameLogCategory", [&](QDialog* c) {
            auto* choose = qobject_cast<QInputDialog*>(c);
            QCOMPARE(choose->comboBoxItems().size(), static_cast<int>(categories.size()));
            choose->setTextValue(QString::fromUtf8(std::string(reportTitle(categories.back()))));
            whenShown("frmGameLog", [&](QDialog* log) {
                title = log->windowTitle();
                gameLines = child<QTableWidget>(log, "tblReport")->rowCount() - 1;
                log->reject();
            });
            choose->accept();
        });
        press(&d, "cmdGameLog");
        const std::string expected = std::string(reportTitle(categories.back())) + " by Game - 7";
        QVERIFY2(title.startsWith(QString::fromStdString(expected)), qPrintable(title));
        QVERIFY(gameLines > 0);
        QVERIFY(f.prompter.shown.empty());
        players->setCurrentRow(49); // number 50, not on the roster
        press(&d, "cmdGameLog");
        QCOMPARE(std::to_string(f.prompter.shown.size()) + f.prompter.shown[0].text + "|" +
                     f.prompter.shown[0].title,
                 std::string("1No results are recorded for this player.|Game Log"));

        players->setCurrentRow(0);
        child<QLineEdit>(&d, "txtPhone")->setFocus();
        child<QLineEdit>(&d, "txtPhone")->setText(QStringLiteral("555-0111"));
        const std::string path = f.dir.file("roster.txt");
        printThroughDialog(&d, [&path](QDialog* p) {
            QCOMPARE(child<QLabel>(p, "lblReportTitle")->text(), QStringLiteral("Roster"));
            QCOMPARE(child<QLineEdit>(p, "txtTitle")->text(), QStringLiteral("Roster"));
            type(p, "txtFileName", QString::fromStdString(path));
        });
        const QStringList printed = readLines(path);
        QCOMPARE(printed.value(1), QStringLiteral("Riverside Hawks"));
        QCOMPARE(printed.mid(4, 3), QStringList({" 1 - Jamal Whitfield", "     555-0111", ""}));
        auto after = f.snapshot();
        after.erase("roster.txt");
        QCOMPARE(after, before);
        QCOMPARE(f.prompter.shown.size(), std::size_t{1});
    }

    // The print dialog refuses bad copies, lines and top players with the box's message and the
    // cursor back in that box, storing nothing; what it accepts is kept and shown when it opens
    // again, where Cancel stores nothing.
    void printDialogChecksCopiesLinesAndTopPlayers() {
        ReportFixture f(false);
        ReportPrinter& printer = f.context.printer;
        PrintDialog d(printer, QStringLiteral("Passing Statistics"), QStringLiteral("Passing"));
        showActive(&d);
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        const auto boxes = [](const QDialog* p) {
            QStringList out;
            for (const char* box : {"txtTitle", "txtCopies", "txtLines", "txtTopX", "txtFileName"})
                out << child<QLineEdit>(p, box)->text();
            return out;
        };
        QCOMPARE(child<QLabel>(&d, "lblReportTitle")->text(), QStringLiteral("Passing Statistics"));
        QCOMPARE(boxes(&d), QStringList({"Passing", "1", "60", "999", ""}));
        QVERIFY(child<QRadioButton>(&d, "optAppend")->isChecked());
        QCOMPARE(child<QFontComboBox>(&d, "cmbReportFont")->currentFont().family(),
                 reportFontFamily());
        QVERIFY(QStringList({"Courier New", "Liberation Mono"}).contains(reportFontFamily()));

        // Letters are refused in the number boxes.
        child<QLineEdit>(&d, "txtCopies")->clear();
        QTest::keyClicks(child<QLineEdit>(&d, "txtCopies"), QStringLiteral("a2b"));
        QCOMPARE(child<QLineEdit>(&d, "txtCopies")->text(), QStringLiteral("2"));

        // Copies, lines per page and top players typed ("0 60 999").
        const auto enter = [](const QDialog* p, const char* numbers) {
            const QStringList typed = QString::fromLatin1(numbers).split(QLatin1Char(' '));
            for (int i = 0; i < 3; ++i)
                type(p, std::array{"txtCopies", "txtLines", "txtTopX"}[i], typed.value(i));
        };
        const std::tuple<const char*, Message, const char*> refused[] = {
            {"0 60 999", {"Must be greater than 1", "Copies Invalid"}, "txtCopies"},
            {"51 60 999", {"50 copies maximum", "Copies Invalid"}, "txtCopies"},
            {"50 20 999", {"Must be greater than 20", "Lines per Page Invalid"}, "txtLines"},
            {"1 21 0", {"Must be 1 to 999", "Top Players Invalid"}, "txtTopX"},
        };
        for (const auto& [numbers, message, focus] : refused) {
            enter(&d, numbers);
            press(&d, "cmdOK");
            QVERIFY2(f.prompter.shown.back() == message, numbers);
            QCOMPARE(d.focusWidget(), child<QWidget>(&d, focus));
            QVERIFY(d.isVisible());
        }
        QCOMPARE(printer.settings().options.linesPerPage, 60); // nothing stored by the refusals

        enter(&d, "50 21 5");
        type(&d, "txtFileName", QStringLiteral(" out.txt "));
        child<QRadioButton>(&d, "optReplace")->setChecked(true);
        child<QCheckBox>(&d, "chkTitleBold")->setChecked(false);
        child<QCheckBox>(&d, "chkReportBold")->setChecked(true);
        press(&d, "cmdOK");
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(f.prompter.shown.size(), std::size_t(4));

        PrintDialog again(printer, QStringLiteral("Roster"), QStringLiteral("Roster"));
        QCOMPARE(boxes(&again), QStringList({"Roster", "50", "21", "5", "out.txt"}));
        QVERIFY(child<QRadioButton>(&again, "optReplace")->isChecked());
        QVERIFY(!child<QCheckBox>(&again, "chkTitleBold")->isChecked());
        QVERIFY(child<QCheckBox>(&again, "chkReportBold")->isChecked());
        type(&again, "txtCopies", QStringLiteral("1"));
        press(&again, "cmdCancel");
        QCOMPARE(printer.settings().options.copies, 50);
    }

    // On a printer (here one that writes a PDF file) that cannot start: "Printer not ready", and
    // Cancel ends the report with nothing written. Once it can: as many pages as the laid-out
    // report has, more than one at 21 lines a page; two copies, twice the pages. The lines are
    // painted at the largest size that fits a page, both ways.
    void statisticsScreenPrintsAPdfWithPageBreaks() {
        ReportFixture f;
        const auto before = f.snapshot();
        const std::string pdf = f.dir.file("missing/defense.pdf");
        QPrinter& printer = f.context.printer.printer();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(pdf));
        StatsDialog d(f.context, 'D', {1, 2}, 1);
        d.show();
        f.prompter.answers = {Answer::Cancel};
        printThroughDialog(&d, [](QDialog* p) { type(p, "txtLines", QStringLiteral("21")); });
        QCOMPARE(f.prompter.shown.size(), std::size_t(1));
        QCOMPARE(f.prompter.shown[0].text, std::string("Printer not ready"));
        QCOMPARE(f.snapshot(), before);

        std::filesystem::create_directory(f.dir.path() / "missing");
        printThroughDialog(&d, [](QDialog*) {});
        QCOMPARE(f.prompter.shown.size(), std::size_t(1));
        const auto lines =
            statisticsPages(d.document(), f.session.columns, f.context.printer.settings().options);
        const int pages =
            1 + static_cast<int>(std::count(lines.begin(), lines.end(), kNewPageLine));
        QVERIFY(pages > 1);
        QCOMPARE(pdfPages(pdf), pages);
        printThroughDialog(&d, [](QDialog* p) { type(p, "txtCopies", QStringLiteral("2")); });
        QCOMPARE(pdfPages(pdf), 2 * pages);

        // Pages of 80 lines of 130 characters take the size at which both fit.
        TempDir out;
        QPdfWriter writer(QString::fromStdString(out.file("lines.pdf")));
        PrintFonts fonts;
        std::vector<std::string> full;
        for (int page = 0; page < 3; ++page) {
            if (page > 0)
                full.push_back(kNewPageLine);
            full.push_back("Passing Statistics" + std::string(100, ' ') + "Page " +
                           digits(page + 1));
            for (int i = 0; i < 79; ++i)
                full.push_back(std::string(130, 'x'));
        }
        PagedOutput output(writer, fonts, 80, widestLine(full));
        QVERIFY(printLines(output, full, &f.prompter));
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

    // The game scores list the team's games and close with the record; the short form shows the
    // score and result after the opponent, and so does its CSV, a row a game. Chart draws the
    // points by quarter of the games shown, both teams' bars under the quarters' names, and saves
    // as a PNG picture or a PDF page; a file that cannot be written is refused. Nothing in the
    // data directory changes. The standings of the marked teams list them best first and print
    // under their own title.
    void gameScoresInBothFormsAndTheirChartTheStandingsAndAGameLog() {
        ReportFixture f;
        const auto before = f.snapshot();
        GameScoresDialog d(f.context, 1);
        QCOMPARE(d.windowTitle(), QStringLiteral("Game Scores - Riverside Hawks"));
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        QTableWidget* t = table(&d);
        const int games = static_cast<int>(d.games().size());
        QCOMPARE(games, 10);
        QCOMPARE(t->rowCount(), games + 1); // and the totals row
        QCOMPARE(QStringList({cellText(t, 0, 3), cellText(t, games, 1), headings(t)[4]}),
                 QStringList({"Lakeview Tigers", "Totals", "H/A"}));
        child<QRadioButton>(&d, "optShortForm")->click();
        const GameScore& first = d.games()[0];
        QCOMPARE(headings(t).mid(4), QStringList({"Score", "Result"}));
        QCOMPARE(rowTexts(t, 0).mid(4),
                 QStringList({QStringLiteral("%1-%2").arg(first.teamTotal).arg(first.opponentTotal),
                              QString::fromStdString(first.resultWord)}));
        TempDir out;
        QVERIFY(d.exportTo(QString::fromStdString(out.file("scores.csv")), false));
        const QStringList exported = readLines(out.file("scores.csv"));
        QCOMPARE(exported.value(0), QStringLiteral("No,Date,Type,Opponent,Score,Result\r"));
        QCOMPARE(exported.size(), games + 2);

        const QuarterPoints points = quarterPoints(d.games());
        const QList<double> team(points.team.begin(), points.team.end());
        const QList<double> opponents(points.opponents.begin(), points.opponents.end());
        QStringList labels;
        for (double v : team + opponents)
            labels << QString::number(v);
        DrawnChart c;
        whenShown("frmChart", [&](QDialog* shown) {
            c = drawn(shown);
            QVERIFY(sharedAccessKeys(shown).isEmpty());
            auto* chart = qobject_cast<ChartDialog*>(shown);
            const QString dir = QString::fromStdString(out.dir());
            QVERIFY(chart->saveTo(dir + "quarters-chart.png"));
            const QImage image(dir + "quarters-chart.png");
            QVERIFY(!image.isNull() && image.width() > 300);
            QVERIFY(chart->saveTo(dir + "quarters-chart.pdf"));
            QCOMPARE(textAt(out.read("quarters-chart.pdf"), 0, 5), std::string("%PDF-"));
            for (const char* name : {"no-such-folder/chart.png", "no-such-folder/chart.pdf"})
                QVERIFY2(!chart->saveTo(dir + name), name);
            shown->reject();
        });
        press(&d, "cmdChart");
        QCOMPARE(c.title, QStringLiteral("Points by Quarter"));
        QCOMPARE(c.categories, QStringList({"1st", "2nd", "3rd", "4th", "OT"}));
        QCOMPARE(c.series, QStringList({"Riverside Hawks", "Opponents"}));
        QCOMPARE(c.values, QList<QList<double>>({team, opponents}));
        QCOMPARE(c.labels, labels);
        QVERIFY(c.legend);

        StandingsDialog standings(f.context, {2, 1});
        QVERIFY(standings.windowTitle().startsWith(QStringLiteral("Team Standings - ")));
        through(&standings, "cmdPrint", "frmPrint", "cmdCancel", [](QDialog* p) {
            QCOMPARE(child<QLabel>(p, "lblReportTitle")->text(), QStringLiteral("Team Standings"));
        });
        QCOMPARE(table(&standings)->rowCount(), 2);
        QCOMPARE(rowTexts(table(&standings), 0).mid(0, 5),
                 QStringList({"Riverside Hawks", "6", "3", "1", ".650"}));

        // A player's game log: a line a game, the season line last, and a chart of one column.
        GameLogDialog log(f.context, 1, 'R', 22, {1, 2, 3, 4, 12}, 3);
        QCOMPARE(table(&log)->rowCount(), static_cast<int>(log.log().games.size()) + 1);
        QCOMPARE(table(&log)->item(table(&log)->rowCount() - 1, 0)->text(),
                 QStringLiteral("Season"));
        std::vector<std::string> dates;
        const std::vector<double> yards = columnByGame(log.log(), 3, dates);
        // Its chart draws the chosen column game by game under the games' dates,
        // without a legend; Enter closes it with the focused Close button.
        bool closed = false;
        whenShown("frmChart", [&](QDialog* chart) {
            c = drawn(chart);
            QTest::keyClick(chart, Qt::Key_Return);
            closed = chart->result() == QDialog::Accepted;
        });
        press(&log, "cmdChart");
        QVERIFY(closed);
        const QString column = log.findChild<QComboBox*>("cboChartColumn")->currentText();
        QCOMPARE(c.title, column + QStringLiteral(" by Game"));
        QCOMPARE(c.series, QStringList(column));
        QCOMPARE(c.values, QList<QList<double>>({QList<double>(yards.begin(), yards.end())}));
        QStringList shownDates, numbers;
        for (std::size_t i = 0; i < dates.size(); ++i) {
            shownDates << QString::fromStdString(dates[i]);
            numbers << QString::number(yards[i]);
        }
        QCOMPARE(c.categories, shownDates);
        QCOMPARE(c.labels, numbers);
        QVERIFY(!c.legend);
        QCOMPARE(f.snapshot(), before);
    }

    // The seasons file is written when OK closes the dialog after a change, and only then: OK with
    // nothing changed and Cancel after a change (once the user agrees to forget it) leave no file.
    // A season added through the Add dialog (whose team box lists the folder's team list) and a
    // link are written; the same folder and team again is refused with addSeason's message. Opened
    // on a file with a season whose folder is gone, it shows that one as missing, and Chris Vale
    // (7, then 12) and Dale Ortiz as one person each over both seasons.
    void seasonsDialogWritesTheFileOnlyOnOkAfterAChangeAndTheCareersFollow() {
        TwoSeasons s;
        {
            SeasonsDialog dialog(s.file, s.prompter);
            press(&dialog, "cmdOK");
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
        }
        QVERIFY(!s.config.exists(kSeasonsFileName));
        {
            SeasonsDialog dialog(s.file, s.prompter);
            QVERIFY(dialog.addEntry(s.list.seasons[0]));
            s.prompter.answers = {Answer::Yes};
            press(&dialog, "cmdCancel");
            QCOMPARE(s.prompter.shown.size(), std::size_t(1));
            QCOMPARE(s.prompter.shown[0].text, std::string("Forget the changes to the seasons?"));
        }
        QVERIFY(!s.config.exists(kSeasonsFileName));

        SeasonsDialog dialog(s.file, s.prompter);
        QString teams;
        through(&dialog, "cmdAdd", "frmAddSeason", "cmdOK", [&](QDialog* add) {
            type(add, "txtLabel", QStringLiteral("2023"));
            type(add, "txtFolder", QString::fromStdString(s.dirs[0]->dir()));
            teams = child<QComboBox>(add, "cboTeam")->itemText(0);
        });
        QCOMPARE(teams, QStringLiteral("1 Hawks"));
        SeasonsList copy = dialog.list();
        const SeasonEntry again{"Again", s.dirs[0]->dir(), 1};
        const std::optional<std::string> refusal = addSeason(copy, again);
        QVERIFY(refusal);
        QVERIFY(!dialog.addEntry(again));
        QCOMPARE(s.prompter.shown.back().text, *refusal);
        QVERIFY(dialog.addPlayerLink({{"2023", "Chris Vale"}, {"2023", "Dale Ortiz"}, true}));
        press(&dialog, "cmdOK");
        SeasonsList expected;
        expected.seasons = {s.list.seasons[0]};
        expected.links = {{{"2023", "Chris Vale"}, {"2023", "Dale Ortiz"}, true}};
        const std::string bytes = seasonsText(expected);
        QCOMPARE(s.config.read(kSeasonsFileName), Bytes(bytes.begin(), bytes.end()));

        SeasonsList list = s.list;
        list.seasons.push_back({"2019", s.config.dir() + "gone/", 1});
        QVERIFY(writeSeasonsFile(s.file, list));
        SeasonsDialog both(s.file, s.prompter);
        QCOMPARE(sharedAccessKeys(&both), QStringList());
        const auto* seasons = child<QTableWidget>(&both, "tblSeasons");
        QCOMPARE(QStringList({QString::number(seasons->rowCount()), cellText(seasons, 0, 3),
                              cellText(seasons, 2, 3)}),
                 QStringList({"3", "OK", "missing"}));
        const auto* players = child<QTableWidget>(&both, "tblPlayers");
        QCOMPARE(players->rowCount(), 2);
        QCOMPARE(rowTexts(players, 0).mid(1, 2), QStringList({"7 Chris Vale", "12 Chris Vale"}));

        // The career report over both seasons: the passer who changed his number is one line, with
        // Sns 2, his yards summed (60 + 200) and his Pct worked out from the summed Cm and Att (20
        // of 56: 35.7; the average of his seasons' 83.3 and 30.0 would be 56.7). Enter on his line
        // opens his career: a line per season, each under that season's number, and the career
        // line. The roster's Career shows only when the application hands in a way to a career; it
        // opens the career of the name typed in the box (case aside) over the seasons of the
        // seasons file, in the first category in which he has results. The record book shows the
        // top single game of the rushing book. Neither season's folder is touched.
        s.prompter.shown.clear();
        QVERIFY(writeSeasonsFile(s.file, s.list));
        const auto before = s.folders();
        QString category;
        QStringList rows;
        // The next career window's category and lines (season, number, name); it is then closed.
        const auto readCareer = [&] {
            rows.clear();
            whenShown("frmPlayerCareer", [&](QDialog* career) {
                category = child<QComboBox>(career, "cboCategory")->currentText();
                const auto* table = child<QTableWidget>(career, "tblCareer");
                for (int r = 0; r < table->rowCount(); ++r)
                    rows << rowTexts(table, r).mid(0, 3).join(QLatin1Char(' '));
                career->reject();
            });
        };
        CareerReportDialog careers(s.context, s.list, 'P');
        QVERIFY(sharedAccessKeys(&careers).isEmpty());
        auto* grid = child<QTableWidget>(&careers, "grdCareers");
        QCOMPARE(grid->rowCount(), 2); // Chris Vale and the totals
        QCOMPARE(QStringList({text(grid, 0, "Name"), text(grid, 0, "Sns"), text(grid, 0, "Yds"),
                              text(grid, 0, "Pct"), text(grid, 1, "Name")}),
                 QStringList({"Chris Vale", "2", "260", "35.7", "Totals"}));
        readCareer();
        grid->setCurrentCell(0, column(grid, QStringLiteral("Yds")));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(rows,
                 QStringList({"2023 7 Chris Vale", "2024 12 Chris Vale", "Career 12 Chris Vale"}));
        // Rushing over 2024 alone: the runner's one season.
        child<QListWidget>(&careers, "lstSeasons")->item(0)->setCheckState(Qt::Unchecked);
        careers.setCategory('R');
        QCOMPARE(text(grid, 0, "Name"), QStringLiteral("Dale Ortiz"));
        QCOMPARE(text(grid, 0, "Sns"), QStringLiteral("1"));

        Roster names;
        RosterDialog roster(s.data.team(1), names, s.prompter, QStringLiteral("Hawks"));
        auto* career = child<QPushButton>(&roster, "cmdCareer");
        QVERIFY(!career->isVisibleTo(&roster));
        roster.setCareer([&s](int, const std::string& name, QWidget* parent) {
            openPlayerCareer(s.context, s.file, name, parent);
        });
        QVERIFY(career->isVisibleTo(&roster));
        showActive(&roster);
        QVERIFY(sharedAccessKeys(&roster).isEmpty());
        child<QListWidget>(&roster, "lstPlayerList")->setCurrentRow(29);
        auto* name = child<QLineEdit>(&roster, "txtPlayerName");
        name->setFocus();
        name->insert(QStringLiteral("dale ortiz"));
        readCareer();
        career->click();
        QCOMPARE(category, QStringLiteral("Rushing Statistics"));
        QCOMPARE(rows,
                 QStringList({"2023 30 Dale Ortiz", "2024 30 Dale Ortiz", "Career 30 Dale Ortiz"}));

        RecordBookDialog book(s.list, s.context);
        QCOMPARE(sharedAccessKeys(&book), QStringList());
        auto* books = child<QComboBox>(&book, "cboCategory");
        books->setCurrentIndex(books->findText(QStringLiteral("Rushing")));
        book.compute();
        const auto* records = child<QTableWidget>(&book, "tblRecords");
        int row = 0; // the list's title, its first entry under it
        while (row + 1 < records->rowCount() && cellText(records, row, 0) != "Yds - Single Game")
            ++row;
        QCOMPARE(rowTexts(records, row + 1).join(QLatin1Char('|')),
                 QStringLiteral("1|Dale Ortiz|150|2024|1|09/01/24|Opponent 1"));
        QVERIFY(s.prompter.shown.empty());
        QCOMPARE(s.folders(), before);
    }
};

QTEST_MAIN(TestReportScreens)
#include "test_report_screens.moc"
