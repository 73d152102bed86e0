// File > Back Up Files and File > Restore Files.

#include "app/Application.h"
#include "shell/Backup.h"
#include "shell/ui/BackupDialog.h"
#include "shell/ui/MainWindow.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"
#include "ui/TextCodec.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "gui/GuiChecks.h"

#include <functional>

using namespace scorvane;

namespace {

// Teams 1 "Bears" and 2 "Lions" with rosters, the program over them, and a folder for backups.
struct League {
    scorvane::testing::TempDir dir, backups;
    scorvane::testing::FakePrompter prompter;
    std::unique_ptr<Application> app;

    League() {
        Session session;
        session.configPath = dir.file("BXFB.INI");
        session.config = ConfigRecord::defaults();
        session.columns.build(session.config);
        session.paths = DataPaths{dir.dir(), dir.dir(), dir.dir()};
        rename(session.paths, 1, "Bears");
        rename(session.paths, 2, "Lions");
        dir.write("FBPN1.DAT", Bytes(402, 'b'));
        dir.write("FBPN2.DAT", Bytes(201, 'l'));
        app = std::make_unique<Application>(session, prompter);
        app->window().show();
        (void)QTest::qWaitForWindowExposed(&app->window());
    }
    void rename(const DataPaths& paths, int team, const char* name) {
        DataFiles files(paths, prompter);
        TeamSelection names;
        QVERIFY(TeamSelection::createTeamList(files).isOk());
        QVERIFY(names.load(files).isOk());
        QVERIFY(names.storeNames(files, team, name, "").isOk());
    }
    QListWidget* teams() const { return app->window().findChild<QListWidget*>("lstSelectTeam"); }
};

void whenModalShows(std::function<void(QWidget*)> handle) {
    QTimer::singleShot(0, [handle] {
        QWidget* modal = QApplication::activeModalWidget();
        QVERIFY(modal);
        handle(modal);
        if (modal->isVisible())
            modal->close();
    });
}

template <class W = QLineEdit> W* get(QWidget* d, const char* name) {
    return d->findChild<W*>(name);
}

} // namespace

class TestBackupRestore : public QObject {
    Q_OBJECT

private slots:
    void backUpThenRestoreBringsTheSeasonBack() {
        League l;
        const Bytes teams = l.dir.read("FBTEAMS.DAT");
        const Bytes bears = l.dir.read("FBPN1.DAT");
        whenModalShows([&](QWidget* d) {
            QCOMPARE(d->objectName(), QStringLiteral("frmBackUp"));
            QCOMPARE(d->windowTitle(), QStringLiteral("Back Up Files"));
            QVERIFY(scorvane::testing::sharedAccessKeys(d).isEmpty());
            QCOMPARE(get<QLabel>(d, "lblContents")->text(),
                     QStringLiteral("2 teams, 3 files, 5 KB"));
            QCOMPARE(get<QListWidget>(d, "lstTeams")->count(), 2);
            QVERIFY(get(d, "txtFileName")->text().startsWith(QStringLiteral("Bears Backup ")));
            QVERIFY(get(d, "txtFileName")->text().endsWith(QStringLiteral(".sfb")));
            get(d, "txtFolder")->setText(fromUtf8(l.backups.dir()));
            get(d, "txtFileName")->setText(QStringLiteral("season.sfb"));
            get<QPushButton>(d, "cmdBackUp")->click();
            QVERIFY(!d->isVisible());
        });
        l.app->window().action("mnuBackUp")->trigger();
        QCOMPARE(l.prompter.shown.size(), std::size_t(1));
        QCOMPARE(l.prompter.shown[0].text,
                 "The backup was written to " + l.backups.file("season.sfb") + ".");
        BackupArchive archive;
        QVERIFY(readBackupFile(l.prompter, l.backups.file("season.sfb"), archive));

        // Later the Lions are renamed and their roster is gone; the restore brings both back.
        l.dir.write("FBPN1.DAT", Bytes(201, 'z'));
        std::filesystem::remove(l.dir.path() / "FBPN2.DAT");
        l.teams()->item(0)->setSelected(true);
        l.prompter = {};
        l.prompter.answers = {Answer::Yes};
        whenModalShows([&](QWidget* d) {
            QCOMPARE(d->objectName(), QStringLiteral("frmRestore"));
            QCOMPARE(d->windowTitle(), QStringLiteral("Restore Files"));
            QVERIFY(scorvane::testing::sharedAccessKeys(d).isEmpty());
            // The newest backup of the folder used last is offered, and what it holds shown.
            QCOMPARE(get(d, "txtBackupFile")->text(), fromUtf8(l.backups.file("season.sfb")));
            // What the backup holds is shown before anything is replaced.
            QCOMPARE(get<QLabel>(d, "lblMadeOn")->text(), fromUtf8(archive.madeOn));
            QCOMPARE(get<QListWidget>(d, "lstTeams")->item(1)->text(), QStringLiteral("Lions"));
            QVERIFY(l.dir.exists("FBPN1.DAT") && !l.dir.exists("FBPN2.DAT"));
            get<QPushButton>(d, "cmdRestore")->click();
            QVERIFY(!d->isVisible());
        });
        l.app->window().action("mnuRestore")->trigger();
        QCOMPARE(l.prompter.shown.size(), std::size_t(2));
        QCOMPARE(l.prompter.shown[0].defaultAnswer, Answer::No);
        QVERIFY(l.prompter.shown[1].text.starts_with("The backup was restored.  The files it "
                                                     "replaced are saved in " +
                                                     l.dir.dir() + "Before restore "));
        QCOMPARE(l.dir.read("FBTEAMS.DAT"), teams);
        QCOMPARE(l.dir.read("FBPN1.DAT"), bears);
        QCOMPARE(l.dir.read("FBPN2.DAT"), Bytes(201, 'l'));
        QCOMPARE(l.teams()->item(1)->text(), QStringLiteral("Lions"));
        QCOMPARE(l.teams()->selectedItems().size(), 0);
    }

    void aDamagedBackupIsShownAsSuchAndRefused() {
        League l;
        l.backups.write("bad.sfb", Bytes{'S', 'C', 'V', 'B', 'A', 'C', 'K', 'U', 'P', 0x1A, 1});
        const Bytes teams = l.dir.read("FBTEAMS.DAT");
        whenModalShows([&](QWidget* d) {
            get(d, "txtBackupFile")->setText(fromUtf8(l.backups.file("bad.sfb")));
            static_cast<BackupDialog*>(d)->inspect();
            QCOMPARE(get<QLabel>(d, "lblContents")->text(),
                     QStringLiteral("This backup is damaged and cannot be restored.  Nothing was "
                                    "restored."));
            QCOMPARE(get<QListWidget>(d, "lstTeams")->count(), 0);
            // Enter on the focused Restore button presses it: the refusal comes up.
            get<QPushButton>(d, "cmdRestore")->setFocus();
            QTest::keyClick(get<QPushButton>(d, "cmdRestore"), Qt::Key_Return);
            QCOMPARE(l.prompter.shown.size(), std::size_t(1));
            QCOMPARE(l.prompter.shown[0].title, std::string("Restore Files"));
            QVERIFY(d->isVisible());
        });
        l.app->window().action("mnuRestore")->trigger();
        QCOMPARE(l.dir.read("FBTEAMS.DAT"), teams);
    }
};

QTEST_MAIN(TestBackupRestore)
#include "test_backup_restore.moc"
