// Update > Delete Files: choosing a marked team and deleting its four files.

#include "app/Application.h"
#include "shell/ui/MainWindow.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "gui/GuiChecks.h"

#include <functional>

using namespace scorvane;

namespace {

const char* const kKinds[] = {"FBPN", "FBPI", "FBGS", "FBPS"};

// Teams 1 "Bears" and 2 "Lions", each with its four files, and the program over them.
struct League {
    scorvane::testing::TempDir dir;
    scorvane::testing::FakePrompter prompter;
    std::unique_ptr<Application> app;

    League() {
        Session session;
        session.configPath = dir.file("BXFB.INI");
        session.config = ConfigRecord::defaults();
        session.columns.build(session.config);
        session.paths = DataPaths{dir.dir(), dir.dir(), dir.dir()};
        {
            DataFiles files(session.paths, prompter);
            TeamSelection names;
            QVERIFY(TeamSelection::createTeamList(files).isOk());
            QVERIFY(names.storeNames(files, 1, "Bears", "").isOk());
            QVERIFY(names.storeNames(files, 2, "Lions", "").isOk());
        }
        for (int team : {1, 2})
            for (const char* kind : kKinds)
                dir.write(file(kind, team), Bytes(201 * static_cast<std::size_t>(team + 1), 'x'));
        app = std::make_unique<Application>(session, prompter);
        app->window().show();
        (void)QTest::qWaitForWindowExposed(&app->window());
    }
    static std::string file(const char* kind, int team) {
        return kind + std::to_string(team) + ".DAT";
    }
    QListWidget* teams() const { return app->window().findChild<QListWidget*>("lstSelectTeam"); }
    void mark(int team) const {
        const QPoint at = teams()->visualItemRect(teams()->item(team - 1)).center();
        QTest::mouseClick(teams()->viewport(), Qt::LeftButton, {}, at);
    }
    bool hasFiles(int team) const {
        for (const char* kind : kKinds)
            if (!dir.exists(file(kind, team)))
                return false;
        return true;
    }
    bool hasNoFiles(int team) const {
        for (const char* kind : kKinds)
            if (dir.exists(file(kind, team)))
                return false;
        return true;
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

QPushButton* button(QWidget* d, const char* name) {
    return d->findChild<QPushButton*>(name);
}

} // namespace

class TestDeleteFiles : public QObject {
    Q_OBJECT

private slots:
    void deletingEmptiesTheTeamsLineAndLeavesTheOthers() {
        League l;
        QVERIFY(!l.app->window().action("mnuDeleteFiles")->isEnabled());
        l.mark(1);
        l.mark(2);
        QVERIFY(l.app->window().action("mnuDeleteFiles")->isEnabled());
        const Bytes bears = l.dir.read("FBPN1.DAT");
        l.prompter.answers = {Answer::Yes};
        bool shown = false;
        whenModalShows([&](QWidget* d) {
            shown = true;
            QCOMPARE(d->objectName(), QStringLiteral("frmDeleteFiles"));
            QCOMPARE(d->windowTitle(), QStringLiteral("Delete Files"));
            QVERIFY(scorvane::testing::sharedAccessKeys(d).isEmpty());
            auto* list = d->findChild<QListWidget*>("lstTeams");
            QCOMPARE(list->count(), 2);
            QCOMPARE(list->item(0)->text(), QStringLiteral("  1  Bears"));
            // The current team (the one clicked last) is chosen to begin with.
            QCOMPARE(list->currentRow(), 1);
            QCOMPARE(d->findChild<QLabel*>("lblTeamFiles")->text(),
                     QStringLiteral("3 players, 3 games, 5 statistics records"));
            button(d, "cmdDelete")->click();
            QVERIFY(!d->isVisible());
        });
        l.app->window().action("mnuDeleteFiles")->trigger();
        QVERIFY(shown);
        QCOMPARE(l.prompter.shown.size(), std::size_t(1));
        QCOMPARE(l.prompter.shown[0].defaultAnswer, Answer::No);
        QVERIFY(l.hasNoFiles(2));
        QVERIFY(l.hasFiles(1));
        QCOMPARE(l.dir.read("FBPN1.DAT"), bears);
        const Bytes list = l.dir.read("FBTEAMS.DAT");
        QCOMPARE(std::string(list.begin() + 40, list.begin() + 80), std::string(40, ' '));
        // The team list shows the empty line and no team stays marked.
        QCOMPARE(l.teams()->item(1)->text(), QString());
        QCOMPARE(l.teams()->item(0)->text(), QStringLiteral("Bears"));
        QCOMPARE(l.teams()->selectedItems().size(), 0);
        QVERIFY(!l.app->window().action("mnuDeleteFiles")->isEnabled());
    }

    void noKeepsTheFilesAndEnterOnAButtonPressesIt() {
        League l;
        l.mark(2);
        whenModalShows([&](QWidget* d) {
            // Enter on the focused Delete button asks; No (the default) keeps everything.
            button(d, "cmdDelete")->setFocus();
            QTest::keyClick(button(d, "cmdDelete"), Qt::Key_Return);
            QCOMPARE(l.prompter.shown.size(), std::size_t(1));
            QVERIFY(d->isVisible());
            QVERIFY(l.hasFiles(2));
            button(d, "cmdClose")->setFocus();
            QTest::keyClick(button(d, "cmdClose"), Qt::Key_Return);
            QVERIFY(!d->isVisible());
        });
        l.app->window().action("mnuDeleteFiles")->trigger();
        QVERIFY(l.hasFiles(2));
        QCOMPARE(l.teams()->item(1)->text(), QStringLiteral("Lions"));
    }
};

QTEST_MAIN(TestDeleteFiles)
#include "test_delete_files.moc"
