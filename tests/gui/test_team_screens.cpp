// The team selection, the team name dialog, Name Your Own and the data directory.

#include "app/Application.h"
#include "shell/ui/MainWindow.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"
#include "ui/TextCodec.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include <filesystem>
#include <functional>

using namespace scorvane;

namespace {

// Teams 1 "Bears" and 2 "Lions" in a fresh data directory, and the program over it.
struct Season {
    scorvane::testing::TempDir dir;
    scorvane::testing::FakePrompter prompter;
    std::unique_ptr<Application> app;

    Season() {
        Session session;
        session.configPath = dir.file("BXFB.INI");
        session.config = ConfigRecord::defaults();
        session.config.gameTypeNames[0] = fit("Scrimmage", 10);
        session.config.userColumns[0][0] = "Xyz";
        session.columns.build(session.config);
        session.paths = DataPaths{dir.dir(), dir.dir(), dir.dir()};
        DataFiles files(session.paths, prompter);
        TeamSelection names;
        QVERIFY(TeamSelection::createTeamList(files).isOk());
        QVERIFY(names.storeNames(files, 1, "Bears", "").isOk());
        QVERIFY(names.storeNames(files, 2, "Lions", "").isOk());
        files.closeAll();
        app = std::make_unique<Application>(session, prompter);
        app->window().show();
        (void)QTest::qWaitForWindowExposed(&app->window());
    }
    QListWidget* list() const { return app->window().findChild<QListWidget*>("lstSelectTeam"); }
    QString count() const { return app->window().findChild<QLabel*>("lblNumberOfTeams")->text(); }
    QString current() const { return app->window().findChild<QLabel*>("lblCurrentTeam")->text(); }
    QAction* command(const char* name) const { return app->window().action(name); }
    void click(int row, bool twice = false) const {
        const QPoint at = list()->visualItemRect(list()->item(row)).center();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, at);
        if (twice)
            QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, at);
    }
    std::string team(int number) const {
        const Bytes b = dir.read("FBTEAMS.DAT");
        return std::string(b.begin() + (number - 1) * 40, b.begin() + (number - 1) * 40 + 35);
    }
};

// Runs `handle` on the modal dialog that comes up next; closes it if `handle` did not.
void whenModalShows(std::function<void(QWidget*)> handle) {
    QTimer::singleShot(0, [handle] {
        QWidget* modal = QApplication::activeModalWidget();
        QVERIFY(modal);
        handle(modal);
        if (modal->isVisible())
            modal->close();
    });
}
const auto box = [](QWidget* d, const char* name) { return d->findChild<QLineEdit*>(name); };
const auto press = [](QWidget* d, const char* name) { d->findChild<QPushButton*>(name)->click(); };

} // namespace

class TestTeamScreens : public QObject {
    Q_OBJECT

private slots:
    void markedTeamsDriveTheTeamCommands() {
        Season s;
        QStringList labels;
        for (QLabel* l :
             s.app->window().findChild<QWidget*>("frmSelectTeam")->findChildren<QLabel*>())
            labels << l->text();
        QCOMPARE(labels.mid(0, 2),
                 QStringList({"Select Team(s)          Choose Menu Option", "Teams Selected:"}));
        QCOMPARE(s.list()->count(), 100);
        QCOMPARE(s.list()->item(1)->text(), QStringLiteral("Lions"));
        QCOMPARE(s.list()->item(99)->text(), QString());
        QCOMPARE(s.count(), QStringLiteral("0"));
        QVERIFY(!s.command("mnuRoster")->isEnabled());
        QVERIFY(s.command("mnuNameYourOwn")->isEnabled());

        s.click(1);
        QCOMPARE(s.count(), QStringLiteral("1"));
        QVERIFY(s.command("mnuRoster")->isEnabled() && s.command("mnuNameYourOwn")->isEnabled());
        s.click(0);
        QCOMPARE(s.count(), QStringLiteral("2"));
        QCOMPARE(s.app->teams().currentTeam(), 1);
        QCOMPARE(s.current(), QStringLiteral("Current Team: Bears"));
        // A click on the other marked line makes it current and keeps both marked.
        s.click(1);
        QCOMPARE(s.count(), QStringLiteral("2"));
        QCOMPARE(s.app->teams().currentTeam(), 2);
        QCOMPARE(s.current(), QStringLiteral("Current Team: Lions"));
        s.click(0);
        QCOMPARE(s.app->teams().currentTeam(), 1);
        s.click(0);
        QCOMPARE(s.current(), QString());
        s.click(1);
        QCOMPARE(s.count(), QStringLiteral("0"));
        QVERIFY(!s.command("mnuRoster")->isEnabled() && !s.command("mnuTeamName")->isEnabled());
    }
    void teamNamesAreStoredAsFileText() {
        Season s;
        s.click(0);
        const QString montreal = QString::fromUtf8("Montr\u00e9al");
        QStringList shown;
        whenModalShows([&](QWidget* d) {
            shown << d->windowTitle() << box(d, "txtTeamName")->text()
                  << box(d, "TxtShortTeamName")->text();
            box(d, "txtTeamName")->setText(montreal);
            box(d, "TxtShortTeamName")->clear();
            // A site ID of the wrong length is refused and the dialog stays.
            box(d, "txtSiteId")->setText(QStringLiteral("12345678-1234-1234-123456789012"));
            press(d, "cmdOK");
            QVERIFY(d->isVisible());
            box(d, "txtSiteId")->setText(QStringLiteral(" 12345678-1234-1234-1234-56789012 "));
            press(d, "cmdOK");
        });
        s.command("mnuTeamName")->trigger();
        QCOMPARE(shown, QStringList({"Team Name", "Bears", "Bears"}));
        QCOMPARE(s.prompter.shown.size(), std::size_t(1));
        QVERIFY(s.prompter.shown[0].text.find("32 characters") != std::string::npos);
        const std::string kept = "12345678-1234-1234-1234-56789012\r\n";
        QCOMPARE(s.dir.read("FBSITE1.TXT"), Bytes(kept.begin(), kept.end()));
        QCOMPARE(s.team(1), fit("Montr\351al", 25) + fit("Montr\351al", 10)); // Windows-1252
        QCOMPARE(s.list()->item(0)->text(), montreal);

        // A double-click on an unnamed slot marks it and opens its names; Default names it.
        whenModalShows([&](QWidget* d) {
            box(d, "txtTeamName")->setText(QStringLiteral("Typed"));
            press(d, "cmdDefault");
        });
        s.click(2, true);
        QCOMPARE(s.team(3), fit("Team 3", 25) + fit("Team 3", 10));
        QCOMPARE(s.list()->item(2)->text(), QStringLiteral("Team 3"));
        QCOMPARE(s.count(), QStringLiteral("2"));
        QVERIFY(!s.dir.exists("FBSITE3.TXT")); // no ID typed: nothing written
    }
    void nameYourOwnFillsEmptyBoxesWithDefaults() {
        Season s;
        s.list()->item(0)->setSelected(true);
        QCOMPARE(s.app->session().columns.columnName('P', 19), std::string("Xyz"));
        QStringList shown;
        whenModalShows([&](QWidget* d) {
            for (QLineEdit* b : d->findChildren<QLineEdit*>()) {
                shown << b->objectName() + '=' + b->text();
                b->clear();
            }
            press(d, "cmdOK");
        });
        s.command("mnuNameYourOwn")->trigger();
        QCOMPARE(shown.size(), 37);
        QVERIFY(shown.contains("txtGameType1=Scrimmage") && shown.contains("txtCat1=Xyz"));
        QVERIFY(shown.contains("txtGameType7=GameType 7") && shown.contains("txtCat30=T5"));
        const Bytes ini = s.dir.read("BXFB.INI");
        QCOMPARE(ini.size(), ConfigRecord::Length);
        QCOMPARE(std::string(ini.begin() + 2, ini.begin() + 12), std::string("GameType 1"));
        QCOMPARE(s.app->session().columns.columnName('P', 19), std::string("P1 "));
    }
    void dataDirectoryStartsANewSeason() {
        Season s;
        s.list()->item(1)->setSelected(true);
        const std::string fresh = s.dir.dir() + "Montr\u00e9al 2025";
        QString shown;
        whenModalShows([&](QWidget* d) {
            shown = box(d, "txtDataDirectory")->text();
            // Refused: the message was shown and the dialog stays for another choice.
            box(d, "txtDataDirectory")->setText(QString(200, QLatin1Char('x')));
            press(d, "cmdOK");
            QVERIFY(d->isVisible());
            box(d, "txtDataDirectory")->setText(fromUtf8(fresh));
            press(d, "cmdOK");
        });
        s.command("mnuDataPath")->trigger();
        QCOMPARE(shown, fromUtf8(s.dir.dir()));
        QCOMPARE(s.prompter.shown.size(), std::size_t(1));
        QCOMPARE(std::filesystem::file_size(std::filesystem::u8path(fresh + "/FBTEAMS.DAT")),
                 std::uintmax_t(4000));
        QVERIFY(s.app->window().windowTitle().endsWith(
            QDir::toNativeSeparators(fromUtf8(fresh + "/")) + QLatin1Char(')')));
        QCOMPARE(s.list()->item(1)->text(), QString());
        QCOMPARE(s.count(), QStringLiteral("0"));
    }
};

QTEST_MAIN(TestTeamScreens)
#include "test_team_screens.moc"
