// The seasons screens over seasons generated into folders of their own: the list of seasons and
// who is who, the career reports and the record book.

#include "games/ui/RosterDialog.h"
#include "gui/GuiChecks.h"
#include "gui/test_report_fixture.h"
#include "seasons/SeasonsFile.h"
#include "seasons/ui/CareerReportDialog.h"
#include "seasons/ui/PlayerCareerDialog.h"
#include "seasons/ui/RecordBookDialog.h"
#include "seasons/ui/SeasonsDialog.h"
#include "support/SeasonFolders.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include <filesystem>
#include <memory>

using namespace scorvane;
using scorvane::testing::child;
using scorvane::testing::press;
using scorvane::testing::TempDir;
using scorvane::testing::whenShown;

namespace {

QString text(const QTableWidget* t, int row, int col) {
    const QTableWidgetItem* item = t->item(row, col);
    return item ? item->text() : QString();
}

// Two seasons of the Hawks, each in its own folder: the runner keeps his number, the passer
// changes his (7, then 12).
struct TwoSeasons {
    std::vector<std::unique_ptr<TempDir>> dirs;
    SeasonsList list;

    TwoSeasons() {
        using namespace scorvane::testing;
        const std::vector<SeasonData> data = {
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
        for (const SeasonData& d : data) {
            dirs.push_back(std::make_unique<TempDir>());
            if (!writeSeason(dirs.back()->dir(), d) ||
                addSeason(list, {d.label, dirs.back()->dir(), 1}))
                qFatal("The season %s could not be made", d.label.c_str());
        }
    }

    // Every file of every season's folder, by path.
    std::map<std::string, Bytes> snapshot() const {
        std::map<std::string, Bytes> all;
        for (const auto& d : dirs)
            for (const auto& e : std::filesystem::directory_iterator(d->path()))
                all[e.path().string()] = d->read(e.path().filename().string());
        return all;
    }
};

} // namespace

class TestSeasonsScreens : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    // The seasons file is written when OK closes the dialog after a change, and only then: OK with
    // nothing changed and Cancel after a change (once the user agrees to forget it) leave no file.
    void seasonsDialogWritesTheFileOnlyOnOkAfterAChange() {
        TwoSeasons seasons;
        TempDir config;
        const std::string path = seasonsFilePath(config.dir());
        testing::FakePrompter prompter;
        {
            SeasonsDialog dialog(path, prompter);
            press(&dialog, "cmdOK");
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
        }
        QVERIFY(!config.exists(kSeasonsFileName));
        {
            SeasonsDialog dialog(path, prompter);
            QVERIFY(dialog.addEntry(seasons.list.seasons[0]));
            prompter.answers = {Answer::Yes};
            press(&dialog, "cmdCancel");
            QCOMPARE(prompter.shown.size(), std::size_t(1));
            QCOMPARE(prompter.shown[0].text, std::string("Forget the changes to the seasons?"));
        }
        QVERIFY(!config.exists(kSeasonsFileName));

        // Added through the Add dialog: the team box lists the folder's team list.
        SeasonsDialog dialog(path, prompter);
        QString teams;
        whenShown("frmAddSeason", [&](QDialog* add) {
            child<QLineEdit>(add, "txtLabel")->setText(QStringLiteral("2023"));
            child<QLineEdit>(add, "txtFolder")
                ->setText(QString::fromStdString(seasons.dirs[0]->dir()));
            teams = child<QComboBox>(add, "cboTeam")->itemText(0);
            press(add, "cmdOK");
        });
        press(&dialog, "cmdAdd");
        QCOMPARE(teams, QStringLiteral("1 Hawks"));
        QVERIFY(dialog.addPlayerLink({{"2023", "Chris Vale"}, {"2023", "Dale Ortiz"}, true}));
        press(&dialog, "cmdOK");
        SeasonsList expected;
        expected.seasons = {seasons.list.seasons[0]};
        expected.links = {{{"2023", "Chris Vale"}, {"2023", "Dale Ortiz"}, true}};
        const std::string bytes = seasonsText(expected);
        QCOMPARE(config.read(kSeasonsFileName), Bytes(bytes.begin(), bytes.end()));
    }

    // A second season in the same folder for the same team is refused with addSeason's message,
    // and a season whose folder is gone shows as missing.
    void seasonsDialogRefusesADuplicateAndShowsAMissingFolder() {
        TwoSeasons seasons;
        TempDir config;
        SeasonsList list = seasons.list;
        list.seasons.push_back({"2019", config.dir() + "gone/", 1});
        QVERIFY(writeSeasonsFile(seasonsFilePath(config.dir()), list));
        testing::FakePrompter prompter;
        SeasonsDialog dialog(seasonsFilePath(config.dir()), prompter);
        QCOMPARE(testing::sharedAccessKeys(&dialog), QStringList());
        const auto* table = child<QTableWidget>(&dialog, "tblSeasons");
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(text(table, 0, 3), QStringLiteral("OK"));
        QCOMPARE(text(table, 2, 3), QStringLiteral("missing"));
        // Chris Vale (7, then 12) and Dale Ortiz are one person each over both seasons.
        const auto* players = child<QTableWidget>(&dialog, "tblPlayers");
        QCOMPARE(players->rowCount(), 2);
        QCOMPARE(text(players, 0, 1), QStringLiteral("7 Chris Vale"));
        QCOMPARE(text(players, 0, 2), QStringLiteral("12 Chris Vale"));

        SeasonsList copy = list;
        const SeasonEntry again{"Again", seasons.dirs[1]->dir(), 1};
        const std::optional<std::string> refusal = addSeason(copy, again);
        QVERIFY(refusal);
        QVERIFY(!dialog.addEntry(again));
        QCOMPARE(prompter.shown.back().text, *refusal);
        QCOMPARE(dialog.list(), list);
    }

    // The record book over two seasons: the top single game, season and career of rushing yards,
    // and neither season's folder touched.
    void recordBookShowsTheTopEntriesAndWritesNothing() {
        TwoSeasons seasons;
        const auto before = seasons.snapshot();
        testing::ReportFixture fixture(false);
        RecordBookDialog dialog(seasons.list, fixture.context);
        QCOMPARE(testing::sharedAccessKeys(&dialog), QStringList());
        auto* category = child<QComboBox>(&dialog, "cboCategory");
        category->setCurrentIndex(category->findText(QStringLiteral("Rushing")));
        dialog.compute();
        QVERIFY(fixture.prompter.shown.empty());

        const auto* records = child<QTableWidget>(&dialog, "tblRecords");
        const auto firstUnder = [&](const QString& title) {
            for (int r = 0; r + 1 < records->rowCount(); ++r)
                if (text(records, r, 0) == title) {
                    QStringList row;
                    for (int c = 0; c < records->columnCount(); ++c)
                        row << text(records, r + 1, c);
                    return row.join(QLatin1Char('|'));
                }
            return QString();
        };
        QCOMPARE(firstUnder(QStringLiteral("Yds - Single Game")),
                 QStringLiteral("1|Dale Ortiz|150|2024|1|09/01/24|Opponent 1"));
        QCOMPARE(firstUnder(QStringLiteral("Yds - Season")),
                 QStringLiteral("1|Dale Ortiz|350|2024|||"));
        QCOMPARE(firstUnder(QStringLiteral("Yds - Career")),
                 QStringLiteral("1|Dale Ortiz|580|2023-2024|||"));
        QCOMPARE(firstUnder(QStringLiteral("Team - Most Points Scored in a Game")),
                 QStringLiteral("1|35-14|35|2024|2|09/02/24|Opponent 2"));
        QCOMPARE(seasons.snapshot(), before);
    }

    // The career report over both seasons: the passer who changed his number is one line, with
    // Sns 2, his yards summed (60 + 200) and his Pct worked out from the summed Cm and Att (20 of
    // 56: 35.7; the average of his seasons' 83.3 and 30.0 would be 56.7). Enter on his line opens
    // his career: a line per season, each under that season's number, and the career line.
    // Neither season's folder is touched.
    void careerReportSumsAPlayerOverHisNumbersAndOpensHisCareer() {
        TwoSeasons seasons;
        const auto before = seasons.snapshot();
        testing::ReportFixture fixture(false);
        CareerReportDialog dialog(fixture.context, seasons.list, 'P');
        QVERIFY(fixture.prompter.shown.empty());
        QVERIFY(testing::sharedAccessKeys(&dialog).isEmpty());
        auto* grid = child<QTableWidget>(&dialog, "grdCareers");
        QStringList headings;
        for (int c = 0; c < grid->columnCount(); ++c)
            headings << grid->horizontalHeaderItem(c)->text();
        const auto at = [&](const char* heading) {
            return static_cast<int>(headings.indexOf(QString::fromLatin1(heading)));
        };
        QCOMPARE(grid->rowCount(), 2); // Chris Vale and the totals
        QCOMPARE(text(grid, 0, at("Name")), QStringLiteral("Chris Vale"));
        QCOMPARE(text(grid, 0, at("Sns")), QStringLiteral("2"));
        QCOMPARE(text(grid, 0, at("Yds")), QStringLiteral("260"));
        QCOMPARE(text(grid, 0, at("Pct")), QStringLiteral("35.7"));
        QCOMPARE(text(grid, 1, at("Name")), QStringLiteral("Totals"));

        QStringList rows;
        whenShown("frmPlayerCareer", [&](QDialog* career) {
            const auto* table = child<QTableWidget>(career, "tblCareer");
            for (int r = 0; r < table->rowCount(); ++r)
                rows << text(table, r, 0) + QLatin1Char(' ') + text(table, r, 1) +
                            QLatin1Char(' ') + text(table, r, 2);
            career->reject();
        });
        grid->setCurrentCell(0, at("Yds"));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(rows, QStringList({QStringLiteral("2023 7 Chris Vale"),
                                    QStringLiteral("2024 12 Chris Vale"),
                                    QStringLiteral("Career 12 Chris Vale")}));

        // Exported as CSV and as the printed text, outside the seasons' folders.
        TempDir out;
        QVERIFY(dialog.exportTo(QString::fromStdString(out.file("c.csv")), ExportKind::Csv));
        QVERIFY(dialog.exportTo(QString::fromStdString(out.file("c.txt")), ExportKind::Text));
        const Bytes csv = out.read("c.csv");
        const Bytes printed = out.read("c.txt");
        QVERIFY(std::string(csv.begin(), csv.end()).find("\r\nChris Vale,2,2,") !=
                std::string::npos);
        QVERIFY(std::string(printed.begin(), printed.end()).rfind("Career Passing", 0) == 0);

        // Rushing over 2024 alone: the runner's one season.
        child<QListWidget>(&dialog, "lstSeasons")->item(0)->setCheckState(Qt::Unchecked);
        dialog.setCategory('R');
        QCOMPARE(text(grid, 0, at("Name")), QStringLiteral("Dale Ortiz"));
        QCOMPARE(text(grid, 0, at("Sns")), QStringLiteral("1"));
        QCOMPARE(seasons.snapshot(), before);
    }

    // The roster's Career shows only when the application hands in a way to a career; it opens
    // the career of the name typed in the box (case aside) over the seasons of the seasons file,
    // in the first category in which he has results.
    void theRosterOpensTheTypedPlayersCareer() {
        TwoSeasons seasons;
        TempDir config;
        const std::string file = seasonsFilePath(config.dir());
        QVERIFY(writeSeasonsFile(file, seasons.list));
        testing::ReportFixture fixture(false);
        Roster names;
        RosterDialog roster(fixture.data.team(1), names, fixture.prompter, QStringLiteral("Hawks"));
        auto* career = child<QPushButton>(&roster, "cmdCareer");
        QVERIFY(!career->isVisibleTo(&roster));
        roster.setCareer([&](int, const std::string& name, QWidget* parent) {
            openPlayerCareer(fixture.context, file, name, parent);
        });
        QVERIFY(career->isVisibleTo(&roster));
        roster.show();
        (void)QTest::qWaitForWindowActive(&roster);
        QVERIFY(testing::sharedAccessKeys(&roster).isEmpty());
        child<QListWidget>(&roster, "lstPlayerList")->setCurrentRow(29);
        auto* name = child<QLineEdit>(&roster, "txtPlayerName");
        name->setFocus();
        name->insert(QStringLiteral("dale ortiz"));

        QString category;
        QStringList rows;
        whenShown("frmPlayerCareer", [&](QDialog* shown) {
            category = child<QComboBox>(shown, "cboCategory")->currentText();
            const auto* table = child<QTableWidget>(shown, "tblCareer");
            for (int r = 0; r < table->rowCount(); ++r)
                rows << text(table, r, 0);
            shown->reject();
        });
        career->click();
        QCOMPARE(category, QStringLiteral("Rushing Statistics"));
        QCOMPARE(rows, QStringList({QStringLiteral("2023"), QStringLiteral("2024"),
                                    QStringLiteral("Career")}));
        QVERIFY(fixture.prompter.shown.empty());
    }
};

QTEST_MAIN(TestSeasonsScreens)
#include "test_seasons_screens.moc"
