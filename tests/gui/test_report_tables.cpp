#include "gui/GuiChecks.h"
#include "gui/test_report_fixture.h"
#include "reports/ui/ChartDialog.h"
#include "reports/ui/TableReportDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QtTest>

#include <qcustomplot.h>

using namespace scorvane;
using scorvane::testing::ReportFixture;

namespace {

QTableWidget* table(QWidget* d) {
    return d->findChild<QTableWidget*>("tblReport");
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

    // The chart of points by quarter sums the games shown, draws both teams'
    // bars under the quarters' names, and saves as a PNG picture or a PDF page;
    // a file that cannot be written is refused.
    void theQuarterChartDrawsAndSaves() {
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
        const DrawnChart c = drawn(&chart);
        QCOMPARE(c.title, QStringLiteral("Points by Quarter"));
        QCOMPARE(c.categories, QStringList({"1st", "2nd", "3rd", "4th", "OT"}));
        QCOMPARE(c.series, QStringList({"Hawks", "Opponents"}));
        QList<double> team, opponents;
        QStringList labels;
        for (std::size_t q = 0; q < 5; ++q) {
            team << static_cast<double>(points.team[q]);
            opponents << static_cast<double>(points.opponents[q]);
        }
        for (double v : team + opponents)
            labels << QString::number(v);
        QCOMPARE(c.values, QList<QList<double>>({team, opponents}));
        QCOMPARE(c.labels, labels);
        QVERIFY(c.legend);
        QVERIFY(scorvane::testing::sharedAccessKeys(&chart).isEmpty());

        chart.show();
        QVERIFY(QTest::qWaitForWindowExposed(&chart));
        const QString dir = QString::fromStdString(f.dir.dir() + "../");
        QVERIFY(chart.saveTo(dir + "quarters-chart.png"));
        QImage image(dir + "quarters-chart.png");
        QVERIFY(!image.isNull() && image.width() > 300);
        QVERIFY(chart.saveTo(dir + "quarters-chart.pdf"));
        QFile pdf(dir + "quarters-chart.pdf");
        QVERIFY(pdf.open(QIODevice::ReadOnly) && pdf.read(5) == "%PDF-");
        QFile::remove(dir + "quarters-chart.png");
        QFile::remove(dir + "quarters-chart.pdf");
        for (const char* name : {"no-such-folder/chart.png", "no-such-folder/chart.pdf"})
            QVERIFY2(!chart.saveTo(dir + name), name);
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

        // Its chart draws the chosen column game by game under the games' dates,
        // without a legend; Enter closes it with the focused Close button.
        DrawnChart c;
        bool closed = false;
        scorvane::testing::whenShown("frmChart", [&](QDialog* chart) {
            c = drawn(chart);
            QTest::keyClick(chart, Qt::Key_Return);
            closed = chart->result() == QDialog::Accepted;
        });
        d.findChild<QPushButton*>("cmdChart")->click();
        QVERIFY(closed);
        const QString column = d.findChild<QComboBox*>("cboChartColumn")->currentText();
        QCOMPARE(c.title, column + QStringLiteral(" by Game"));
        QCOMPARE(c.series, QStringList(column));
        QCOMPARE(c.values, QList<QList<double>>({QList<double>(yards.begin(), yards.end())}));
        QStringList dates, numbers;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            dates << QString::fromStdString(labels[i]);
            numbers << QString::number(yards[i]);
        }
        QCOMPARE(c.categories, dates);
        QCOMPARE(c.labels, numbers);
        QVERIFY(!c.legend);
    }
};

QTEST_MAIN(TestReportTables)
#include "test_report_tables.moc"
