#include "gui/GuiChecks.h"
#include "gui/test_report_fixture.h"
#include "reports/ui/ChartDialog.h"
#include "reports/ui/TableReportDialog.h"

#include <QChart>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QtTest>

using namespace scorvane;
using scorvane::testing::ReportFixture;

namespace {

QTableWidget* table(QWidget* d) {
    return d->findChild<QTableWidget*>("tblReport");
}

} // namespace

class TestReportTables : public QObject {
    Q_OBJECT

private slots:
    // The game scores list the team's games; the short form shows the game list's
    // lines; both close with the record, and nothing in the data directory
    // changes.
    void gameScoresInBothForms() {
        ReportFixture f;
        const auto before = f.snapshot();
        GameScoresDialog d(f.context, 1);
        QCOMPARE(d.objectName(), QStringLiteral("frmScores"));
        QCOMPARE(d.windowTitle(), QStringLiteral("Game Scores - Riverside Hawks"));
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        const int games = static_cast<int>(d.games().size());
        QCOMPARE(games, 10);
        QCOMPARE(table(&d)->rowCount(), games + 1); // and the totals row
        QCOMPARE(table(&d)->item(0, 3)->text(), QStringLiteral("Lakeview Tigers"));
        QCOMPARE(table(&d)->item(games, 1)->text(), QStringLiteral("Totals"));
        QCOMPARE(d.report().printedBody.size() >= static_cast<std::size_t>(2 * games), true);
        QCOMPARE(table(&d)->horizontalHeaderItem(4)->text(), QStringLiteral("H/A"));
        d.findChild<QRadioButton*>("optShortForm")->click();
        QCOMPARE(d.report().printedBody.size(), static_cast<std::size_t>(games));
        QVERIFY(d.report().printedBody[0].find("Lakeview Tigers") != std::string::npos);
        // The grid follows the short form: the score and the result after the opponent.
        const GameScore& first = d.games()[0];
        QCOMPARE(table(&d)->columnCount(), 6);
        QCOMPARE(table(&d)->horizontalHeaderItem(4)->text(), QStringLiteral("Score"));
        QCOMPARE(table(&d)->item(0, 4)->text(),
                 QStringLiteral("%1-%2").arg(first.teamTotal).arg(first.opponentTotal));
        QCOMPARE(table(&d)->item(0, 5)->text(), QString::fromStdString(first.resultWord));

        // Exported, the CSV has the short form's columns and a row a game.
        const QString csv = QString::fromStdString(f.dir.dir() + "../scores-export.csv");
        QVERIFY(d.exportTo(csv, false));
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray exported = file.readAll();
        QVERIFY(exported.startsWith("No,Date,Type,Opponent,Score,Result\r\n"));
        QCOMPARE(exported.count('\n'), games + 2);
        file.remove();
        QCOMPARE(f.snapshot(), before);
    }

    // The chart of points by quarter sums the games shown, and saves as a PNG
    // picture.
    void theQuarterChartSavesAsPng() {
        ReportFixture f;
        GameScoresDialog d(f.context, 1);
        const QuarterPoints points = quarterPoints(d.games());
        long long total = 0;
        for (const GameScore& g : d.games())
            total += g.teamTotal;
        long long byQuarter = 0;
        for (long long p : points.team)
            byQuarter += p;
        QCOMPARE(byQuarter, total);
        ChartDialog chart(quarterPointsChart(points, QStringLiteral("Hawks")),
                          QStringLiteral("Points"));
        chart.show();
        QVERIFY(QTest::qWaitForWindowExposed(&chart));
        const QString png = QString::fromStdString(f.dir.dir() + "../quarters-chart.png");
        QVERIFY(chart.saveTo(png));
        QImage image(png);
        QVERIFY(!image.isNull() && image.width() > 300);
        QFile::remove(png);
    }

    void standingsOfTheMarkedTeams() {
        ReportFixture f;
        StandingsDialog d(f.context, {2, 1});
        QCOMPARE(d.objectName(), QStringLiteral("frmStandings"));
        QVERIFY(d.windowTitle().startsWith(QStringLiteral("Team Standings - ")));
        QString printing;
        scorvane::testing::whenShown("frmPrint", [&printing](QDialog* p) {
            printing = p->findChild<QLabel*>("lblReportTitle")->text();
            p->findChild<QPushButton*>("cmdCancel")->click();
        });
        d.findChild<QPushButton*>("cmdPrint")->click();
        QCOMPARE(printing, QStringLiteral("Team Standings"));
        QCOMPARE(table(&d)->rowCount(), 2);
        QCOMPARE(table(&d)->item(0, 0)->text(), QStringLiteral("Riverside Hawks"));
        QCOMPARE(table(&d)->item(0, 4)->text(), QStringLiteral(".650"));
    }

    // A player's game log: a line a game, the season line last, and a chart of
    // one column.
    void aGameLogChartsTheChosenColumn() {
        ReportFixture f;
        GameLogDialog d(f.context, 1, 'R', 22, {1, 2, 3, 4, 12}, 3);
        QCOMPARE(table(&d)->rowCount(), static_cast<int>(d.log().games.size()) + 1);
        QCOMPARE(table(&d)->item(table(&d)->rowCount() - 1, 0)->text(), QStringLiteral("Season"));
        std::vector<std::string> labels;
        const std::vector<double> yards = columnByGame(d.log(), 3, labels);
        double sum = 0;
        for (double y : yards)
            sum += y;
        QCOMPARE(sum, static_cast<double>(d.log().season[3].value));
        QCOMPARE(labels.size(), yards.size());
        QVERIFY(QString::fromStdString(labels[0]).startsWith(QStringLiteral("09/05/25")));
    }
};

QTEST_MAIN(TestReportTables)
#include "test_report_tables.moc"
