// The statistics screen and the dialogs it opens (selection, report formats, sort, minimum games,
// single players), the team record and the roster's Print, over the sample season.

#include "games/ui/RosterDialog.h"
#include "gui/GuiChecks.h"
#include "gui/test_report_fixture.h"
#include "reports/GameLog.h"
#include "reports/ReportColumns.h"
#include "reports/ReportDocument.h"
#include "reports/ui/ComputeDialog.h"
#include "reports/ui/FormatDialogs.h"
#include "reports/ui/ReportScreens.h"
#include "reports/ui/StatsDialog.h"
#include "reports/ui/TeamRecordDialog.h"
#include "storage/TeamList.h"
#include "support/RecordBytes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTableWidget>
#include <QtTest>

#include <fstream>

using namespace scorvane;
using scorvane::testing::child;
using scorvane::testing::press;
using scorvane::testing::ReportFixture;
using scorvane::testing::whenShown;

namespace {

void showActive(QWidget* w) {
    w->show();
    (void)QTest::qWaitForWindowActive(w);
}

QTableWidget* grid(const QWidget* d) {
    return child<QTableWidget>(d, "grdStats");
}
QStringList headings(const QTableWidget* t) {
    QStringList out;
    for (int c = 0; c < t->columnCount(); ++c)
        out << t->horizontalHeaderItem(c)->text();
    return out;
}
int column(const QTableWidget* t, const QString& heading) {
    return static_cast<int>(headings(t).indexOf(heading));
}
QString text(const QTableWidget* t, int row, int col) {
    const QTableWidgetItem* item = t->item(row, col);
    return item ? item->text() : QString();
}
// The figures of a column over the player rows (the totals row left out).
QList<double> figures(const QTableWidget* t, const QString& heading) {
    QList<double> out;
    const int c = column(t, heading);
    for (int r = 0; r + 1 < t->rowCount(); ++r)
        out << text(t, r, c).toDouble();
    return out;
}
bool descending(const QList<double>& v) {
    return std::is_sorted(v.rbegin(), v.rend());
}
bool ascending(const QList<double>& v) {
    return std::is_sorted(v.begin(), v.end());
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
QStringList lines(const QListWidget* list) {
    QStringList out;
    for (int r = 0; r < list->count(); ++r)
        out << list->item(r)->text();
    return out;
}
QStringList readLines(const std::string& path) {
    std::ifstream in(path);
    QStringList out;
    for (std::string line; std::getline(in, line);)
        out << QString::fromStdString(line);
    return out;
}

// Team 1 "Bears" with four games: two wins and a tie of type 1, a loss of type 2.
void writeBearsGames(ReportFixture& f) {
    QVERIFY(TeamList::createTeamList(f.data));
    TeamList names;
    QVERIFY(names.storeNames(f.data, 1, "Bears", "Bears"));
    f.session.config.gameTypeNames[0] = fit("League", 10);
    f.session.config.gameTypeNames[1] = fit("Playoff", 10);
    struct Plan {
        char type;
        int us, them;
    };
    const Plan plans[] = {{'1', 14, 7}, {'1', 7, 7}, {'2', 3, 10}, {'1', 21, 0}};
    int n = 0;
    for (const Plan& p : plans) {
        GameRecord g;
        g.gameNumber = static_cast<std::int16_t>(++n);
        g.gameType = p.type;
        g.teamScore[0] = static_cast<std::int16_t>(p.us);
        g.opponentScore[0] = static_cast<std::int16_t>(p.them);
        QVERIFY(f.files.gameRecord(Access::Write, n, g));
    }
}

QStringList recordRow(const QTableWidget* t, int row) {
    QStringList out;
    for (int c = 0; c < t->columnCount(); ++c)
        out << text(t, row, c);
    return out;
}

} // namespace

class TestReportScreens : public QObject {
    Q_OBJECT

private slots:
    // Qt's own file dialog, also on Windows, where the system's dialog changes a file's ending
    // with the chosen type by itself.
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void gridShowsTheReportWithItsTotals() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1}, 1);
        showActive(&d);
        QCOMPARE(d.objectName(), QStringLiteral("frmStats"));
        QCOMPARE(d.windowTitle(), QStringLiteral("Passing Statistics - Riverside Hawks"));
        QCOMPARE(child<QLabel>(&d, "lblTitle")->text(), QStringLiteral("Passing Statistics"));
        QCOMPARE(child<QLabel>(&d, "lblSelection")->text(),
                 QStringLiteral("Games 1 to 999, all game types"));
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        for (const char* name : {"cboTeams", "cmdCompute", "cmdFormat", "cmdSort", "cmdMin",
                                 "cmdPlayer", "cmdTeam", "cmdPrint", "cmdExit"})
            QVERIFY2(d.findChild<QWidget*>(QString::fromLatin1(name)), name);

        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t),
                 QStringList({"No", "Name", "G",  "Att", "Cm", "Pct", "Yds", "Avg", "Lg",  "Big",
                              "FD", "Int",  "Sk", "F",   "FL", "Pen", "Rtg", "TD",  "XPt", "Pts"}));
        QVERIFY(QFontInfo(t->font()).fixedPitch());
        // The sample's two passers and the totals line, biggest yardage first.
        QCOMPARE(t->rowCount(), 3);
        QCOMPARE(text(t, 2, 1), QStringLiteral("Totals"));
        QVERIFY(t->item(2, 1)->font().bold());
        QVERIFY(descending(figures(t, "Yds")));
        QCOMPARE(text(t, 0, 1), QStringLiteral("Caleb Morrison"));
        QCOMPARE(text(t, 0, 0), QStringLiteral("7"));
        QVERIFY(t->item(0, column(t, "Yds"))->textAlignment() & Qt::AlignRight);
        QVERIFY(t->item(0, 1)->textAlignment() & Qt::AlignLeft);

        // Each row's figures agree with each other: Pct is Cm of Att, the totals the sums.
        double yards = 0;
        for (int r = 0; r < 2; ++r) {
            const double att = text(t, r, column(t, "Att")).toDouble();
            const double cm = text(t, r, column(t, "Cm")).toDouble();
            QCOMPARE(text(t, r, column(t, "Pct")), QString::number(cm / att * 100, 'f', 1));
            yards += text(t, r, column(t, "Yds")).toDouble();
        }
        QCOMPARE(text(t, 2, column(t, "Yds")).toDouble(), yards);
        QVERIFY(child<QPushButton>(&d, "cmdPrint")->isEnabled());
        QVERIFY(f.prompter.shown.empty());
    }

    void headingClickSortsAsTheSortDialogDoes() {
        ReportFixture f;
        StatsDialog d(f.context, 'D', {1}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        QVERIFY(t->rowCount() > 5);
        clickHeading(t, "Ast");
        QVERIFY(descending(figures(t, "Ast")));
        QVERIFY(!ascending(figures(t, "Ast")));
        QVERIFY(f.context.sort[3] == (SortSetting{4, 'D'}));
        // The heading's arrow is given the order itself; the style draws it its own way.
        QHeaderView* header = t->horizontalHeader();
        QCOMPARE(header->sortIndicatorSection(), column(t, "Ast"));
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
        clickHeading(t, "Ast"); // the same column again: the other way round
        QVERIFY(ascending(figures(t, "Ast")));
        QCOMPARE(header->sortIndicatorSection(), column(t, "Ast"));
        QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
        QCOMPARE(text(t, t->rowCount() - 1, 1), QStringLiteral("Totals"));

        // The sort dialog starts from the heading's choice and sorts the same way.
        whenShown("frmSort", [](QDialog* s) {
            QCOMPARE(child<QListWidget>(s, "lstCat")->currentItem()->text(), QStringLiteral("Ast"));
            QVERIFY(child<QRadioButton>(s, "optAsc")->isChecked());
            selectRow(child<QListWidget>(s, "lstCat"), QStringLiteral("Sol"));
            child<QRadioButton>(s, "optDesc")->setChecked(true);
            press(s, "cmdOK");
        });
        press(&d, "cmdSort");
        QVERIFY(descending(figures(t, "Sol")));
        QVERIFY(f.context.sort[3] == (SortSetting{3, 'D'}));
        // Nothing was computed again: the same players.
        QCOMPARE(d.report().players.size(), std::size_t(t->rowCount() - 1));

        // The report confirmed as it was keeps that sort; once its column leaves the report,
        // the report's own sort (tackles, greatest first) takes over.
        whenShown("frmRptSelect", [](QDialog* r) { press(r, "cmdOK"); });
        press(&d, "cmdFormat");
        QVERIFY(f.context.sort[3] == (SortSetting{3, 'D'}));
        QVERIFY(descending(figures(t, "Sol")));
        QCOMPARE(header->sortIndicatorSection(), column(t, "Sol"));
        whenShown("frmRptSelect", [](QDialog* r) {
            whenShown("frmFormat", [](QDialog* fmt) {
                selectRow(child<QListWidget>(fmt, "lstSelCat"), QStringLiteral("Sol"));
                press(fmt, "cmdDelete");
                press(fmt, "cmdOK");
            });
            press(r, "cmdChange");
            press(r, "cmdOK");
        });
        press(&d, "cmdFormat");
        QVERIFY(!f.context.sort[3]);
        QCOMPARE(column(t, "Sol"), -1);
        QVERIFY(descending(figures(t, "Tkl")));
        QCOMPARE(header->sortIndicatorSection(), column(t, "Tkl"));
    }

    void categoryChangeShowsKickingWithItsMadeAttemptedColumns() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1}, 1);
        showActive(&d);
        child<QComboBox>(&d, "cboCategory")->setCurrentIndex(4);
        QCOMPARE(d.category(), 'K');
        QCOMPARE(d.windowTitle(), QStringLiteral("Kicking Statistics - Riverside Hawks"));
        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t), QStringList({"No", "Name", "G", "Extra Points", "Pnt", "PLg", "PAv",
                                           "FG All", "FLg"}));
        const QRegularExpression madeOf(QStringLiteral("^\\d+/\\d+ +\\d+\\.\\d%$"));
        for (int r = 0; r < t->rowCount(); ++r) {
            QVERIFY2(madeOf.match(text(t, r, column(t, "Extra Points"))).hasMatch(),
                     qPrintable(text(t, r, column(t, "Extra Points"))));
            QVERIFY(madeOf.match(text(t, r, column(t, "FG All"))).hasMatch());
        }
        // What is printed now is the kicking report.
        const StatisticsDocument doc = d.document();
        QCOMPARE(doc.report.category, 'K');
        const auto pages = statisticsPages(doc, f.session.columns, PrintOptions{});
        QVERIFY(pages[0].rfind("Kicking Statistics", 0) == 0);
    }

    void gridFitsItsColumnsAndKeepsNumberAndNameInView() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1, 2}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        QHeaderView* header = t->horizontalHeader();
        // Every column as wide as its heading or widest figure and a small margin (the sorted
        // column also its arrow), the same after Compute; the report fits: no sideways scrolling.
        auto widths = [t] {
            QList<int> w;
            for (int c = 0; c < t->columnCount(); ++c)
                w << t->columnWidth(c);
            return w;
        };
        auto checkFit = [&] {
            for (int c = 0; c < t->columnCount(); ++c) {
                int widest = QFontMetrics(header->font()).horizontalAdvance(headings(t)[c]);
                for (int r = 0; r < t->rowCount(); ++r)
                    widest = std::max(widest, QFontMetrics(t->item(r, c)->font().resolve(t->font()))
                                                  .horizontalAdvance(text(t, r, c)));
                const int margin = c == header->sortIndicatorSection() ? 40 : 16;
                QVERIFY2(t->columnWidth(c) >= widest && t->columnWidth(c) <= widest + margin,
                         qPrintable(headings(t)[c] +
                                    QString(" %1 %2").arg(t->columnWidth(c)).arg(widest)));
            }
            QVERIFY(!t->horizontalScrollBar()->isVisible());
        };
        checkFit();
        const QList<int> before = widths();
        whenShown("frmCompute", [](QDialog* c) { press(c, "cmdCompute"); });
        press(&d, "cmdCompute");
        checkFit();
        QCOMPARE(widths(), before);

        // On a window too narrow for the report, a new report starts at its left edge.
        d.layout()->setSizeConstraint(QLayout::SetNoConstraint);
        d.setMinimumSize(0, 0);
        d.resize(420, 400);
        QTRY_VERIFY(t->horizontalScrollBar()->isVisible());
        QScrollBar* sideways = t->horizontalScrollBar();
        for (auto [button, dialog, ok] : {std::tuple("cmdCompute", "frmCompute", "cmdCompute"),
                                          std::tuple("cmdFormat", "frmRptSelect", "cmdOK")}) {
            sideways->setValue(sideways->maximum());
            whenShown(dialog, [ok = ok](QDialog* w) { press(w, ok); });
            press(&d, button);
            QVERIFY2(sideways->maximum() > 0 && sideways->value() == 0, button);
        }

        // Scrolled fully right, the number, name and team stay at the left edge over the figures.
        sideways->setValue(sideways->maximum());
        auto* frozen = child<QTableView>(&d, "grdStatsFrozen");
        QVERIFY(frozen->isVisible());
        QCOMPARE(frozen->model(), t->model());
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

    void severalTeamsAreNamedOnEveryLineAndAddUp() {
        ReportFixture f;
        StatsDialog d(f.context, 'R', {1, 2}, 1);
        showActive(&d);
        auto* teams = child<QComboBox>(&d, "cboTeams");
        QCOMPARE(teams->count(), 3);
        QCOMPARE(teams->itemText(0), QStringLiteral("Multiple Teams: Hawks, Tigers"));
        QCOMPARE(teams->itemText(2), QStringLiteral("Lakeview Tigers"));
        QCOMPARE(d.windowTitle(),
                 QStringLiteral("Rushing Statistics - Multiple Teams: Hawks, Tigers"));
        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t).mid(0, 4), QStringList({"No", "Name", "Team", "G"}));
        QSet<QString> named;
        for (int r = 0; r + 1 < t->rowCount(); ++r)
            named << text(t, r, 2);
        QCOMPARE(named, QSet<QString>({"Hawks", "Tigers"}));
        const double both = text(t, t->rowCount() - 1, column(t, "Yds")).toDouble();

        teams->setCurrentIndex(1);
        QCOMPARE(headings(t).mid(0, 3), QStringList({"No", "Name", "G"}));
        const double hawks = text(t, t->rowCount() - 1, column(t, "Yds")).toDouble();
        teams->setCurrentIndex(2);
        const double tigers = text(t, t->rowCount() - 1, column(t, "Yds")).toDouble();
        QVERIFY(hawks > 0 && tigers > 0);
        QCOMPARE(hawks + tigers, both);
        QCOMPARE(d.document().heading.team, std::string("Lakeview Tigers"));
    }

    void emptyReportsSayNoPlayersOrNoGames() {
        ReportFixture f;
        f.context.selection.fromGame = 500;
        StatsDialog d(f.context, 'P', {1}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        QCOMPARE(t->rowCount(), 1);
        QCOMPARE(text(t, 0, 1), QStringLiteral("No Players"));
        QCOMPARE(t->columnSpan(0, 1), t->columnCount() - 1);

        // Special Select with every mark cleared: no game counts.
        whenShown("frmCompute", [](QDialog* c) {
            child<QLineEdit>(c, "txtLowGame")->setText(QStringLiteral("1"));
            child<QCheckBox>(c, "chkSpecialSelect")->setChecked(true);
            press(c, "cmdClearGameList");
            press(c, "cmdCompute");
        });
        press(&d, "cmdCompute");
        QCOMPARE(text(t, 0, 1), QStringLiteral("No Games"));
        QVERIFY(f.context.selection.specialSelect);
    }

    void computeDialogChecksTheRangeAndStoresTheChoice() {
        ReportFixture f;
        f.session.config.gameTypeNames[0] = fit("League", 10);
        f.session.config.gameTypeNames[1] = fit("Non & Co", 10);
        TeamSeason hawks;
        QVERIFY(viewTeamSeason(f.data, 1, hawks));
        ComputeDialog d(Selection{}, f.session.config, hawks.games, f.prompter);
        showActive(&d);
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        QCOMPARE(child<QCheckBox>(&d, "chkGameType1")->text(), QStringLiteral("League"));
        QCOMPARE(child<QCheckBox>(&d, "chkGameType2")->text(), QStringLiteral("Non && Co"));
        QCOMPARE(d.findChildren<QCheckBox*>(QRegularExpression("^chkGameType\\d$")).size(), 7);
        auto* games = child<QListWidget>(&d, "lstSpecialSelect");
        QCOMPARE(games->count(), 10);
        QCOMPARE(games->item(0)->text(),
                 QStringLiteral("09/05/25   24 -  17  Lakeview Tigers          "));
        int marked = 0;
        for (const GameRecord& g : hawks.games)
            marked += g.specialSelect == '2';
        QCOMPARE(child<QLabel>(&d, "lblGamesSelected")->text(), QString::number(marked));

        auto* low = child<QLineEdit>(&d, "txtLowGame");
        auto* high = child<QLineEdit>(&d, "txtHighGame");
        const Message fromInvalid{"Must be 1 to 999", "From Game Invalid"};
        for (const char* bad : {"0", "1000", ""}) {
            low->setText(QString::fromLatin1(bad));
            press(&d, "cmdCompute");
            QVERIFY(f.prompter.shown.back() == fromInvalid);
            QCOMPARE(d.focusWidget(), low);
            QVERIFY(d.isVisible());
        }
        low->setText(QStringLiteral("5"));
        high->setText(QStringLiteral("1000"));
        press(&d, "cmdCompute");
        QVERIFY(f.prompter.shown.back() == (Message{"Must be 1 to 999", "To Game Invalid"}));
        QCOMPARE(d.focusWidget(), high);
        QCOMPARE(f.prompter.shown.size(), std::size_t(4));

        // A reversed range is swapped; one game type left out; the player name as kept.
        low->setText(QStringLiteral("50"));
        high->setText(QStringLiteral("10"));
        child<QCheckBox>(&d, "chkGameType3")->setChecked(false);
        child<QLineEdit>(&d, "txtPlayerName")->setText(QStringLiteral("  Caleb MORRISON"));
        press(&d, "cmdCompute");
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(d.selection().fromGame, 10);
        QCOMPARE(d.selection().toGame, 50);
        QCOMPARE(low->text(), QStringLiteral("10"));
        QVERIFY(!d.selection().allGameTypes());
        QVERIFY(!d.selection().gameTypes[2] && d.selection().gameTypes[3]);
        QCOMPARE(d.selection().playerName, fit("caleb morrison", 17));
        QCOMPARE(f.prompter.shown.size(), std::size_t(4));
    }

    void computeDialogButtonsResetAndClear() {
        ReportFixture f;
        TeamSeason hawks;
        QVERIFY(viewTeamSeason(f.data, 1, hawks));
        applyMarks(hawks.games, {2, 5});
        Selection chosen;
        chosen.fromGame = 3;
        chosen.toGame = 4;
        chosen.specialSelect = true;
        chosen.gameTypes[1] = false;
        chosen.playerNumber = 7;
        ComputeDialog d(chosen, f.session.config, hawks.games, f.prompter);
        showActive(&d);
        QCOMPARE(child<QLineEdit>(&d, "txtLowGame")->text(), QStringLiteral("3"));
        QVERIFY(!child<QCheckBox>(&d, "chkGameType2")->isChecked());
        QCOMPARE(child<QLabel>(&d, "lblGamesSelected")->text(), QStringLiteral("2"));
        QCOMPARE(d.markedGames(), (std::set<int>{2, 5}));

        press(&d, "cmdClearGT");
        for (int t = 1; t <= 7; ++t)
            QVERIFY(!child<QCheckBox>(&d, qPrintable(QStringLiteral("chkGameType%1").arg(t)))
                         ->isChecked());
        press(&d, "cmdClearGameList");
        QCOMPARE(child<QLabel>(&d, "lblGamesSelected")->text(), QStringLiteral("0"));
        child<QListWidget>(&d, "lstSpecialSelect")->item(9)->setCheckState(Qt::Checked);
        QCOMPARE(child<QLabel>(&d, "lblGamesSelected")->text(), QStringLiteral("1"));

        press(&d, "cmdAll");
        QCOMPARE(child<QLineEdit>(&d, "txtLowGame")->text(), QStringLiteral("1"));
        QCOMPARE(child<QLineEdit>(&d, "txtHighGame")->text(), QStringLiteral("999"));
        QCOMPARE(child<QLineEdit>(&d, "txtPlayerNumber")->text(), QStringLiteral("0"));
        QVERIFY(child<QLineEdit>(&d, "txtPlayerName")->text().isEmpty());
        QVERIFY(!child<QCheckBox>(&d, "chkSpecialSelect")->isChecked());
        QVERIFY(child<QCheckBox>(&d, "chkGameType2")->isChecked());
        press(&d, "cmdCompute");
        QVERIFY(d.selection().allGameTypes());
        QCOMPARE(d.markedGames(), std::set<int>{10});

        // Cancel keeps the report's selection as it was.
        ComputeDialog again(chosen, f.session.config, hawks.games, f.prompter);
        child<QLineEdit>(&again, "txtLowGame")->setText(QStringLiteral("0"));
        press(&again, "cmdCancel");
        QCOMPARE(again.result(), int(QDialog::Rejected));
        QVERIFY(f.prompter.shown.empty());
    }

    void computingFromTheScreenCountsOnlyTheChosenGames() {
        ReportFixture f;
        const auto before = f.snapshot();
        StatsDialog d(f.context, 'T', {1}, 1);
        showActive(&d);
        whenShown("frmCompute", [](QDialog* c) {
            child<QLineEdit>(c, "txtLowGame")->setText(QStringLiteral("1"));
            child<QLineEdit>(c, "txtHighGame")->setText(QStringLiteral("3"));
            press(c, "cmdCompute");
        });
        press(&d, "cmdCompute");
        QTableWidget* t = grid(&d);
        QVERIFY(t->rowCount() > 1);
        for (double g : figures(t, "G"))
            QVERIFY(g >= 1 && g <= 3);
        QCOMPARE(text(t, t->rowCount() - 1, column(t, "G")), QStringLiteral("3"));
        QCOMPARE(child<QLabel>(&d, "lblSelection")->text(),
                 QStringLiteral("Games 1 to 3, all game types"));

        // Special Select over one game marked in the list (and only in memory).
        whenShown("frmCompute", [](QDialog* c) {
            child<QLineEdit>(c, "txtHighGame")->setText(QStringLiteral("999"));
            child<QCheckBox>(c, "chkSpecialSelect")->setChecked(true);
            press(c, "cmdClearGameList");
            child<QListWidget>(c, "lstSpecialSelect")->item(4)->setCheckState(Qt::Checked);
            press(c, "cmdCompute");
        });
        press(&d, "cmdCompute");
        QCOMPARE(text(t, t->rowCount() - 1, column(t, "G")), QStringLiteral("1"));
        QCOMPARE(f.snapshot(), before);
    }

    void minimumGamesAndSinglePlayersNarrowTheReport() {
        ReportFixture f;
        StatsDialog d(f.context, 'C', {1}, 1);
        showActive(&d);
        QTableWidget* t = grid(&d);
        const int everyone = t->rowCount() - 1;
        const double allYards = text(t, everyone, column(t, "Yds")).toDouble();

        whenShown("frmMinimum", [](QDialog* m) {
            QVERIFY(m->findChild<QLabel*>("lblLessThan")->text() == QStringLiteral("Less than"));
            QVERIFY(m->findChild<QLabel*>("lblGames")->text() == QStringLiteral(" Games"));
            child<QLineEdit>(m, "txtMin")->setText(QStringLiteral("10"));
            press(m, "cmdOK");
        });
        press(&d, "cmdMin");
        const int regulars = t->rowCount() - 1;
        QVERIFY(regulars > 0 && regulars < everyone);
        for (double g : figures(t, "G"))
            QCOMPARE(g, 10.0);
        QVERIFY(text(t, regulars, column(t, "Yds")).toDouble() < allYards);

        // The single players on offer are those the minimum leaves; two are chosen.
        QStringList chosen;
        whenShown("frmIndividual", [&](QDialog* p) {
            auto* list = child<QListWidget>(p, "lstPlayers");
            QCOMPARE(list->count(), regulars);
            list->item(0)->setSelected(true);
            list->item(regulars - 1)->setSelected(true);
            chosen << list->item(0)->text() << list->item(regulars - 1)->text();
            press(p, "cmdOK");
        });
        press(&d, "cmdPlayer");
        QCOMPARE(t->rowCount(), 3);
        QSet<QString> shown = {text(t, 0, 0) + " " + text(t, 0, 1),
                               text(t, 1, 0) + " " + text(t, 1, 1)};
        QCOMPARE(shown, QSet<QString>({chosen[0].trimmed(), chosen[1].trimmed()}));
        QVERIFY(child<QLabel>(&d, "lblSelection")->text().contains(QStringLiteral("2 chosen")));

        // Team: every player again.
        press(&d, "cmdTeam");
        QCOMPARE(t->rowCount() - 1, everyone);
        QCOMPARE(text(t, everyone, column(t, "Yds")).toDouble(), allYards);
    }

    void formatDialogsMoveColumnsAndWriteTheReportFile() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1}, 1);
        showActive(&d);
        const std::size_t players = d.report().players.size();

        whenShown("frmRptSelect", [&f](QDialog* r) {
            auto* list = child<QListWidget>(r, "lstReports");
            QCOMPARE(lines(list), QStringList({"Passing Statistics"}));
            QVERIFY(scorvane::testing::sharedAccessKeys(r).isEmpty());
            // Looking at the list writes nothing; the only report cannot go.
            QVERIFY(!f.dir.exists("FBRPTFMT.DAT"));
            press(r, "cmdDelete");
            QVERIFY(f.prompter.shown.back() == SavedReports::onlyReportMessage());
            QVERIFY(!f.dir.exists("FBRPTFMT.DAT"));

            press(r, "cmdAdd");
            QCOMPARE(lines(list), QStringList({"Passing Statistics", "Report 2"}));
            QCOMPARE(f.dir.read("FBRPTFMT.DAT").size(), std::size_t(2 * 167));
            QCOMPARE(list->currentRow(), 1);

            whenShown("frmFormat", [](QDialog* fmt) {
                QVERIFY(scorvane::testing::sharedAccessKeys(fmt).isEmpty());
                auto* all = child<QListWidget>(fmt, "lstAll");
                auto* chosen = child<QListWidget>(fmt, "lstSelCat");
                QCOMPARE(chosen->count(), 0); // a new report has no columns yet
                QCOMPARE(all->count(), 23);
                for (const char* c : {"Yds", "Att", "TD"}) {
                    selectRow(all, QString::fromLatin1(c));
                    press(fmt, "cmdAdd");
                }
                QCOMPARE(lines(chosen), QStringList({"Yds", "Att", "TD"}));
                QCOMPARE(all->count(), 20);
                selectRow(chosen, QStringLiteral("Att"));
                press(fmt, "cmdDelete");
                QCOMPARE(lines(chosen), QStringList({"Yds", "TD"}));
                QCOMPARE(lines(all).mid(0, 3), QStringList({"G", "Att", "Cm"})); // in code order
                child<QLineEdit>(fmt, "txtTitle")->setText(QStringLiteral("  Short Passing  "));
                auto* sort = child<QComboBox>(fmt, "cmbCats");
                sort->setCurrentIndex(sort->findText(QStringLiteral("Yds")));
                child<QRadioButton>(fmt, "optAsc")->setChecked(true);
                press(fmt, "cmdOK");
            });
            press(r, "cmdChange");
            QCOMPARE(lines(list), QStringList({"Passing Statistics", "Short Passing"}));
            press(r, "cmdOK");
        });
        press(&d, "cmdFormat");

        // The file: the starting format as record 1, the edited report as record 2.
        const Bytes file = f.dir.read("FBRPTFMT.DAT");
        QCOMPARE(file.size(), std::size_t(334));
        using scorvane::testing::intAt;
        using scorvane::testing::textAt;
        QCOMPARE(textAt(file, 0, 22), std::string("P ") + fit("Passing Statistics", 20));
        QCOMPARE(intAt(file, 22), 4);
        QCOMPARE(intAt(file, 27), 1); // G first
        QCOMPARE(textAt(file, 167, 22), std::string("P ") + fit("Short Passing", 20));
        QCOMPARE(intAt(file, 167 + 22), 4);
        QCOMPARE(char(file[167 + 24]), 'A');
        QCOMPARE(intAt(file, 167 + 25), 0);
        QCOMPARE(intAt(file, 167 + 27), 4); // Yds
        QCOMPARE(intAt(file, 167 + 29), 6); // TD
        QCOMPARE(intAt(file, 167 + 31), 0);

        // The screen shows the chosen report without computing again.
        QTableWidget* t = grid(&d);
        QCOMPARE(headings(t), QStringList({"No", "Name", "Yds", "TD"}));
        QCOMPARE(child<QLabel>(&d, "lblTitle")->text(), QStringLiteral("Short Passing"));
        QVERIFY(ascending(figures(t, "Yds")));
        QCOMPARE(d.report().players.size(), players);
        QCOMPARE(f.context.chosenReport[0], 2);

        // Deleting it leaves its record, marked.
        f.prompter.answers = {Answer::Yes};
        whenShown("frmRptSelect", [](QDialog* r) {
            selectRow(child<QListWidget>(r, "lstReports"), QStringLiteral("Short Passing"));
            press(r, "cmdDelete");
            QCOMPARE(lines(child<QListWidget>(r, "lstReports")),
                     QStringList({"Passing Statistics"}));
            press(r, "cmdCancel");
        });
        press(&d, "cmdFormat");
        QVERIFY(f.prompter.shown.back() == SavedReports::deleteQuestion());
        QCOMPARE(f.dir.read("FBRPTFMT.DAT").size(), std::size_t(334));
        QCOMPARE(char(f.dir.read("FBRPTFMT.DAT")[168]), '*');
        QCOMPARE(headings(t).size(), 20); // back on the first report
    }

    void formatDialogDefaultAndTitle() {
        ReportFixture f(false);
        ReportFormatRecord receiving = defaultFormat('C');
        receiving.sortColumn = 9;
        FormatDialog d(receiving, f.session.columns);
        showActive(&d);
        auto* chosen = child<QListWidget>(&d, "lstSelCat");
        QCOMPARE(chosen->count(), 17);
        QCOMPARE(child<QComboBox>(&d, "cmbCats")->currentText(), QStringLiteral("Tgt"));
        QVERIFY(child<QRadioButton>(&d, "optDesc")->isChecked());
        for (int i = 0; i < 5; ++i) {
            chosen->setCurrentRow(0);
            press(&d, "cmdDelete");
        }
        QCOMPARE(chosen->count(), 12);
        QCOMPARE(child<QListWidget>(&d, "lstAll")->count(), 10); // 5 user columns and the 5
        child<QLineEdit>(&d, "txtTitle")->setText(QStringLiteral("   "));
        child<QRadioButton>(&d, "optAsc")->setChecked(true);
        press(&d, "cmdDefault");
        QCOMPARE(chosen->count(), 17);
        QCOMPARE(lines(chosen).mid(0, 3), QStringList({"G", "Tgt", "Rec"}));
        QVERIFY(child<QRadioButton>(&d, "optDesc")->isChecked());
        QCOMPARE(child<QComboBox>(&d, "cmbCats")->currentText(), QStringLiteral("Tgt"));
        QVERIFY(child<QLineEdit>(&d, "txtTitle")->text() == QStringLiteral("   "));
        press(&d, "cmdOK");
        QCOMPARE(d.format().reportName, fit("Unnamed Report", 20));
        QCOMPARE(shownColumns(d.format()), formatColumns(defaultFormat('C')));
        QCOMPARE(d.format().sortColumn, std::int16_t(9));
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
        ReportFormatRecord alien = odd;
        alien.category = 'Q';
        alien.reportName = fit("Alien", 20);
        Bytes file = alien.encode();
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
        QVERIFY(ascending(figures(t, "No"))); // a sort column it lacks: roster order
        d.setCategory('K');
        QCOMPARE(headings(t).size(), 9); // kicking has no report: its default columns
        d.setCategory('P');
        whenShown("frmRptSelect", [](QDialog* r) {
            QCOMPARE(lines(child<QListWidget>(r, "lstReports")), QStringList({"Odd"}));
            press(r, "cmdCancel");
        });
        press(&d, "cmdFormat");
        QCOMPARE(f.snapshot(), before);
        QVERIFY(f.prompter.shown.empty());
    }

    void teamRecordByGameTypeWithAndWithoutTies() {
        ReportFixture f(false);
        writeBearsGames(f);
        TeamRecordDialog d(f.context, 1);
        showActive(&d);
        QCOMPARE(d.objectName(), QStringLiteral("frmRecord"));
        QCOMPARE(d.windowTitle(), QStringLiteral("Record - Bears"));
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        auto* t = child<QTableWidget>(&d, "tblRecord");
        QCOMPARE(headings(t), QStringList({"Game Type", "Won", "Lost", "Tie", "Pct", "PF", "PA"}));
        QCOMPARE(t->rowCount(), 3);
        QCOMPARE(recordRow(t, 0), QStringList({"League", "2", "0", "1", ".833", "42", "14"}));
        QCOMPARE(recordRow(t, 1), QStringList({"Playoff", "0", "1", "0", ".000", "3", "10"}));
        QCOMPARE(recordRow(t, 2), QStringList({"Totals", "2", "1", "1", ".625", "45", "24"}));
        QVERIFY(child<QPushButton>(&d, "cmdPrint")->isEnabled());

        // Games 3 and 4: no tie, no Tie column.
        whenShown("frmCompute", [](QDialog* c) {
            child<QLineEdit>(c, "txtLowGame")->setText(QStringLiteral("3"));
            child<QLineEdit>(c, "txtHighGame")->setText(QStringLiteral("4"));
            press(c, "cmdCompute");
        });
        press(&d, "cmdCompute");
        QCOMPARE(headings(t), QStringList({"Game Type", "Won", "Lost", "Pct", "PF", "PA"}));
        QCOMPARE(recordRow(t, 0), QStringList({"League", "1", "0", "1.000", "21", "0"}));
        QCOMPARE(recordRow(t, 2), QStringList({"Totals", "1", "1", ".500", "24", "10"}));

        // Nothing counted: the header alone, and nothing to print.
        whenShown("frmCompute", [](QDialog* c) {
            child<QLineEdit>(c, "txtLowGame")->setText(QStringLiteral("900"));
            child<QLineEdit>(c, "txtHighGame")->setText(QStringLiteral("999"));
            press(c, "cmdCompute");
        });
        press(&d, "cmdCompute");
        QCOMPARE(t->rowCount(), 0);
        QCOMPARE(headings(t).size(), 6);
        QVERIFY(!child<QPushButton>(&d, "cmdPrint")->isEnabled());
    }

    void teamRecordPrintsToATextFile() {
        ReportFixture f(false);
        writeBearsGames(f);
        const std::string path = f.dir.file("record.txt");
        TeamRecordDialog d(f.context, 1);
        showActive(&d);
        whenShown("frmPrint", [&path](QDialog* p) {
            QCOMPARE(child<QLabel>(p, "lblReportTitle")->text(), QStringLiteral("Team Record"));
            child<QLineEdit>(p, "txtFileName")->setText(QString::fromStdString(path));
            press(p, "cmdOK");
        });
        press(&d, "cmdPrint");
        const QStringList printed = readLines(path);
        QVERIFY(printed.size() >= 9);
        QVERIFY(printed[0].startsWith(QStringLiteral("Team Record")));
        QCOMPARE(printed[1], QStringLiteral("Bears"));
        QCOMPARE(printed[4],
                 QStringLiteral("Game Type    Won    Lost    Ties     Pct      PF      PA"));
        QVERIFY(printed.last().startsWith(QStringLiteral("Totals")));
        QVERIFY(printed.last().endsWith(QStringLiteral(".625      45      24")));
    }

    // From the roster: the selected player's log, in the category chosen when he has results in
    // several, and a message for a number with none.
    void theRosterOpensTheSelectedPlayersGameLog() {
        ReportFixture f;
        std::vector<char> categories;
        TeamSeason hawks;
        QVERIFY(readTeamSeason(f.data.paths(), 1, hawks).isOk());
        QVERIFY(categoriesRecorded(hawks, 7, categories).isOk());
        QVERIFY(categories.size() > 1);
        QCOMPARE(categories.front(), 'P');

        Roster roster;
        RosterDialog d(f.data.team(1), roster, f.prompter, QStringLiteral("Riverside Hawks"));
        QVERIFY(!child<QPushButton>(&d, "cmdGameLog")->isEnabled());
        d.setGameLog(
            [&](int player, QWidget* parent) { openPlayerGameLog(f.context, 1, player, parent); });
        showActive(&d);
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        child<QListWidget>(&d, "lstPlayerList")->setCurrentRow(6); // number 7
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

        // A number nobody has results under.
        child<QListWidget>(&d, "lstPlayerList")->setCurrentRow(49); // number 50, not on the roster
        press(&d, "cmdGameLog");
        QCOMPARE(f.prompter.shown.size(), std::size_t{1});
        QCOMPARE(f.prompter.shown[0].text, std::string("No results are recorded for this player."));
        QCOMPARE(f.prompter.shown[0].title, std::string("Game Log"));
    }

    void rosterPrintsEveryNumberInUseWithItsDetails() {
        ReportFixture f;
        const auto before = f.snapshot();
        const std::string path = f.dir.file("roster.txt");
        Roster roster;
        RosterDialog d(f.data.team(1), roster, f.prompter, QStringLiteral("Riverside Hawks"));
        showActive(&d);
        QVERIFY(!child<QPushButton>(&d, "cmdPrint")->isEnabled());
        d.setPrint([&](const RosterEditor& editor, QWidget* parent) {
            printRoster(
                f.context, "Riverside Hawks", roster,
                [&editor](int n, ContactField field) { return editor.contact(n, field); }, parent);
        });
        QVERIFY(child<QPushButton>(&d, "cmdPrint")->isEnabled());

        // A phone typed for number 1 and not yet taken over is printed too.
        child<QLineEdit>(&d, "txtPhone")->setFocus();
        child<QLineEdit>(&d, "txtPhone")->setText(QStringLiteral("555-0111"));
        whenShown("frmPrint", [&path](QDialog* p) {
            QCOMPARE(child<QLabel>(p, "lblReportTitle")->text(), QStringLiteral("Roster"));
            QCOMPARE(child<QLineEdit>(p, "txtTitle")->text(), QStringLiteral("Roster"));
            child<QLineEdit>(p, "txtFileName")->setText(QString::fromStdString(path));
            child<QRadioButton>(p, "optReplace")->setChecked(true);
            press(p, "cmdOK");
        });
        press(&d, "cmdPrint");
        const QStringList printed = readLines(path);
        QVERIFY(printed[0].startsWith(QStringLiteral("Roster")));
        QVERIFY(printed[0].endsWith(QStringLiteral("Page 1")));
        QCOMPARE(printed[1], QStringLiteral("Riverside Hawks"));
        QCOMPARE(printed.mid(4, 3), QStringList({" 1 - Jamal Whitfield", "     555-0111", ""}));
        const int seven = static_cast<int>(printed.indexOf(QStringLiteral(" 7 - Caleb Morrison")));
        QVERIFY(seven > 0);
        QCOMPARE(printed.mid(seven + 1, 4),
                 QStringList({"     (555) 214-0371", "     1408 Maple Avenue",
                              "     Riverside, OH  45219", "     Team captain"}));
        QVERIFY(printed.contains(QStringLiteral("28 - José Alvarado")));
        // 27 players in number order.
        QStringList numbers;
        for (const QString& l : printed)
            if (l.size() > 5 && l.mid(2, 3) == QStringLiteral(" - "))
                numbers << l.left(2);
        QCOMPARE(numbers.size(), 27);
        QCOMPARE(numbers.first(), QStringLiteral(" 1"));
        QCOMPARE(numbers.last(), QStringLiteral("99"));
        // The data files are untouched until the roster is closed.
        auto after = f.snapshot();
        after.erase("roster.txt");
        QCOMPARE(after, before);
    }

    void lookingAtReportsWritesNothing() {
        ReportFixture f;
        const auto before = f.snapshot();
        {
            StatsDialog d(f.context, 'C', {1, 2, 3}, 1);
            showActive(&d);
            for (int k = 0; k < 6; ++k)
                child<QComboBox>(&d, "cboCategory")->setCurrentIndex(k);
            clickHeading(grid(&d), QStringLiteral("G"));
            whenShown("frmRptSelect", [](QDialog* r) { press(r, "cmdOK"); });
            press(&d, "cmdFormat");
            whenShown("frmSort", [](QDialog* s) { press(s, "cmdOK"); });
            press(&d, "cmdSort");
        }
        TeamRecordDialog record(f.context, 3); // the Rams have no files at all
        showActive(&record);
        QCOMPARE(child<QTableWidget>(&record, "tblRecord")->rowCount(), 0);
        QCOMPARE(f.snapshot(), before);
        QVERIFY(f.prompter.shown.empty());
    }

    void exportsWriteCsvAndHtml() {
        ReportFixture f;
        StatsDialog d(f.context, 'P', {1}, 1);
        const std::string csv = f.dir.file("passing.csv");
        QVERIFY(d.exportTo(QString::fromStdString(csv), false));
        const QStringList rows = readLines(csv);
        QCOMPARE(rows.size(), 4);
        QVERIFY(rows[0].startsWith(QStringLiteral("No,Name,G,Att,Cm,Pct,Yds")));
        QVERIFY(rows[1].startsWith(QStringLiteral("7,Caleb Morrison,")));
        QVERIFY(rows[3].startsWith(QStringLiteral(",Totals,")));
        const std::string html = f.dir.file("passing.html");
        QVERIFY(d.exportTo(QString::fromStdString(html), true));
        const QString page = readLines(html).join(QLatin1Char('\n'));
        QVERIFY(page.contains(QStringLiteral("<h1>Passing Statistics</h1>")));
        QVERIFY(page.contains(QStringLiteral("Caleb Morrison")));

        // A folder that is not there: Printer/File Error, Cancel gives up.
        const auto before = f.snapshot();
        f.prompter.answers = {Answer::Cancel};
        QVERIFY(!d.exportTo(QString::fromStdString(f.dir.file("gone/passing.csv")), false));
        QCOMPARE(f.prompter.shown.size(), std::size_t(1));
        QCOMPARE(f.prompter.shown[0].title, std::string("Printer/File Error"));
        QCOMPARE(f.snapshot(), before);

        // Export suggests the team, the report and the day; choosing HTML changes the ending.
        QString suggested, asHtml;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            suggested = QFileInfo(dialog->selectedFiles().value(0)).fileName();
            emit dialog->filterSelected(QStringLiteral("HTML (*.html *.htm)"));
            asHtml = QFileInfo(dialog->selectedFiles().value(0)).fileName();
            dialog->reject();
        });
        press(&d, "cmdExport");
        const QString day = QDate::currentDate().toString(Qt::ISODate);
        QCOMPARE(suggested, QStringLiteral("Riverside Hawks Passing Statistics %1.csv").arg(day));
        QCOMPARE(asHtml, QStringLiteral("Riverside Hawks Passing Statistics %1.html").arg(day));
        QCOMPARE(f.snapshot(), before);
    }
};

QTEST_MAIN(TestReportScreens)
#include "test_report_screens.moc"
