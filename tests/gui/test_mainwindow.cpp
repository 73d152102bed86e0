// The main window: caption, menu bar, start page and what the menu commands do.

#include "shell/Help.h"
#include "shell/MenuModel.h"
#include "shell/Startup.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/MainWindow.h"
#include "shell/ui/TextCodec.h"
#include "support/FakePrompter.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTimer>
#include <QtTest>

#include <memory>

using namespace scorvane;

namespace {

void writeFile(const QString& path, const QByteArray& content) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(content);
}

// A main window over a hand-made session whose program folder holds help/topic240.html only.
struct Fixture {
    QTemporaryDir install;
    Session session;
    scorvane::testing::FakePrompter prompter;
    std::unique_ptr<MainWindow> window;

    Fixture() {
        QDir(install.path()).mkpath(QStringLiteral("help"));
        writeFile(install.filePath(QStringLiteral("help/topic240.html")),
                  "<html><body><h1>Passing Statistics</h1>"
                  "<p>Completions and attempts.</p></body></html>");
        session.config = ConfigRecord::defaults();
        session.columns.build(session.config);
        session.installDirectory = toUtf8(install.path()) + "/";
        session.paths.dataDirectory = "/tmp/season/";
        session.paths.reportDirectory = "/tmp/season/";
        window = std::make_unique<MainWindow>(session, prompter);
    }

    QAction* act(const char* name) const { return window->action(QString::fromLatin1(name)); }
};

// Runs `handle` on the first modal window that comes up; gives up after five seconds, closing
// whatever is modal so the test fails instead of hanging.
void whenModalShows(std::function<void(QWidget*)> handle, bool* handled) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [=] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal) {
            timer->stop();
            timer->deleteLater();
            *handled = true;
            handle(modal);
            if (modal->isVisible())
                modal->close();
        } else if (++*tries > 500) {
            timer->stop();
            timer->deleteLater();
        }
    });
    timer->start(10);
}

} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

private slots:
    void captionNamesTheDataDirectory();
    void startPageSaysWhatToDoNext();
    void menuBarFollowsTheMenuTree();
    void menuCaptionsAreTheProgramsOwn();
    void exitButtonAndExitCommandCloseTheWindow();
    void commandsNeedAScreenAndMarkedTeams();
    void reportCommandSetsItsLetterBeforeOpening();
    void otherCommandsSetTheirModes();
    void helpTopicOpensThePageInOneHelpWindow();
    void missingHelpPageShowsTheHelpErrorOnly();
    void aboutCommandShowsTheModalAboutBox();
    void textCodecConvertsFileBytes();
};

void TestMainWindow::captionNamesTheDataDirectory() {
    Fixture f;
    QCOMPARE(f.window->windowTitle(),
             QStringLiteral("Scorvane for Football v2.1 (Data Directory: /tmp/season/)"));
    auto* label = f.window->findChild<QLabel*>(QStringLiteral("lblDataDirectory"));
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("/tmp/season/"));

    f.window->setDataDirectory("/home/coach/Montr\xC3\xA9"
                               "al 2024/");
    QCOMPARE(f.window->windowTitle(),
             QString::fromUtf8("Scorvane for Football v2.1 (Data Directory: "
                               "/home/coach/Montr\xC3\xA9"
                               "al 2024/)"));
    QCOMPARE(label->text(), QString::fromUtf8("/home/coach/Montr\xC3\xA9"
                                              "al 2024/"));
}

void TestMainWindow::startPageSaysWhatToDoNext() {
    Fixture f;
    auto* directory = f.window->findChild<QLabel*>(QStringLiteral("lblDataDirectory"));
    auto* hint = f.window->findChild<QLabel*>(QStringLiteral("lblHint"));
    QVERIFY(directory && hint);
    QVERIFY2(hint->text().contains(QStringLiteral("Reports menu")), qPrintable(hint->text()));

    f.window->setDataDirectory("");
    QCOMPARE(f.window->windowTitle(),
             QStringLiteral("Scorvane for Football v2.1 (Data Directory: )"));
    QCOMPARE(directory->text(), QStringLiteral("(none chosen yet)"));
    QVERIFY2(hint->text().startsWith(QStringLiteral("Choose the folder")),
             qPrintable(hint->text()));

    // A directory without a team list, as start-up marks it.
    f.session.startupMark = 'E';
    f.window->setDataDirectory("/tmp/empty/");
    QCOMPARE(directory->text(), QStringLiteral("/tmp/empty/"));
    QVERIFY2(hint->text().startsWith(QStringLiteral("No team list was found there.")),
             qPrintable(hint->text()));

    auto* exit = f.window->findChild<QPushButton*>(QStringLiteral("cmdExit"));
    QVERIFY(exit && exit->isEnabled());
}

void TestMainWindow::menuBarFollowsTheMenuTree() {
    Fixture f;
    const QList<QAction*> bar = f.window->menuBar()->actions();
    const auto& tree = menuTree();
    QCOMPARE(bar.size(), qsizetype(tree.size()));
    for (std::size_t m = 0; m < tree.size(); ++m) {
        QMenu* menu = bar[qsizetype(m)]->menu();
        QVERIFY(menu);
        QCOMPARE(menu->objectName(), fromUtf8(tree[m].name));
        QCOMPARE(menu->title(), fromUtf8(tree[m].caption));

        const QList<QAction*> items = menu->actions();
        QCOMPARE(items.size(), qsizetype(tree[m].items.size()));
        for (std::size_t i = 0; i < tree[m].items.size(); ++i) {
            const MenuItem& expected = tree[m].items[i];
            QAction* a = items[qsizetype(i)];
            QCOMPARE(a->objectName(), fromUtf8(expected.name));
            QCOMPARE(a->isSeparator(), expected.isSeparator());
            if (!expected.isSeparator())
                QCOMPARE(a->text(), fromUtf8(expected.caption));
            QCOMPARE(f.window->action(a->objectName()), a);
        }
    }
    QCOMPARE(f.window->action(QStringLiteral("mnuNoSuchThing")), nullptr);
}

void TestMainWindow::menuCaptionsAreTheProgramsOwn() {
    Fixture f;
    auto menu = [&](const char* name) {
        return f.window->findChild<QMenu*>(QString::fromLatin1(name));
    };
    QVERIFY(menu("mnuFile") && menu("mnuReport") && menu("mnuUpdate") && menu("mnuOptions") &&
            menu("mnuHelp"));
    QCOMPARE(menu("mnuReport")->title(), QStringLiteral("&Reports"));

    QCOMPARE(f.act("mnuRushing")->text(), QStringLiteral("Ru&shing"));
    QCOMPARE(f.act("mnuRecord")->text(), QStringLiteral("R&ecord"));
    QCOMPARE(f.act("mnuExitProgram")->text(), QStringLiteral("E&xit Program"));
    QVERIFY(menu("mnuReport")->actions().contains(f.act("mnuRushing")));
    QVERIFY(menu("mnuFile")->actions().contains(f.act("mnuExitProgram")));

    // The Help menu explains passing, receiving, defense, kicking and returns, but not rushing.
    for (QAction* a : menu("mnuHelp")->actions()) {
        QVERIFY2(!a->objectName().contains(QStringLiteral("Rushing")), qPrintable(a->objectName()));
        QVERIFY2(!a->text().contains(QStringLiteral("Ru&sh")), qPrintable(a->text()));
    }

    // Separators can be found by name like the commands.
    QVERIFY(f.act("mnuDash1") && f.act("mnuDash1")->isSeparator());
    QVERIFY(f.act("mnudash5") && f.act("mnudash5")->isSeparator());
}

void TestMainWindow::exitButtonAndExitCommandCloseTheWindow() {
    {
        Fixture f;
        auto* exit = f.window->findChild<QPushButton*>(QStringLiteral("cmdExit"));
        QVERIFY(exit);
        QCOMPARE(exit->text(), QStringLiteral("Exit Scorvane"));
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        QTest::mouseClick(exit, Qt::LeftButton);
        QVERIFY(!f.window->isVisible());
        QVERIFY(f.prompter.shown.empty());
    }
    {
        Fixture f;
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        QVERIFY(f.act("mnuExitProgram")->isEnabled());
        f.act("mnuExitProgram")->trigger();
        QVERIFY(!f.window->isVisible());
    }
}

void TestMainWindow::commandsNeedAScreenAndMarkedTeams() {
    Fixture f;
    QCOMPARE(f.window->selectedTeamCount(), 0);

    // Nothing registered, no team marked: only the built-in commands work.
    for (const Menu& menu : menuTree())
        for (const MenuItem& item : menu.items) {
            if (item.isSeparator())
                continue;
            const bool builtIn = item.screen == Screen::HelpTopic || item.screen == Screen::About ||
                                 item.screen == Screen::Exit;
            QVERIFY2(f.window->action(fromUtf8(item.name))->isEnabled() == builtIn,
                     item.name.c_str());
        }

    // A registered screen alone is not enough for a team-dependent command...
    int opened = 0;
    f.window->registerScreen(Screen::StatisticsReport, [&] { ++opened; });
    QVERIFY(!f.act("mnuKicking")->isEnabled());
    // ...and a marked team alone is not enough either.
    f.window->setSelectedTeamCount(1);
    QVERIFY(f.act("mnuKicking")->isEnabled());
    QVERIFY(f.act("mnuPassing")->isEnabled());
    QVERIFY(!f.act("mnuGames")->isEnabled()); // game scores: no screen yet
    QVERIFY(!f.act("mnuRoster")->isEnabled());

    f.window->setSelectedTeamCount(0);
    QVERIFY(!f.act("mnuKicking")->isEnabled());
    // A disabled command does nothing even when triggered.
    f.act("mnuKicking")->trigger();
    QCOMPARE(opened, 0);
    QCOMPARE(f.window->shellState().reportLetter, ' ');

    // Commands that do not depend on teams need only their screen.
    QVERIFY(!f.act("mnuDataPath")->isEnabled());
    f.window->registerScreen(Screen::DataDirectory, [] {});
    QVERIFY(f.act("mnuDataPath")->isEnabled());
    f.window->registerScreen(Screen::DataDirectory, nullptr);
    QVERIFY(!f.act("mnuDataPath")->isEnabled());
    QVERIFY(f.act("mnuAbout")->isEnabled());
    QVERIFY(f.act("mnuGettingStarted")->isEnabled());
}

void TestMainWindow::reportCommandSetsItsLetterBeforeOpening() {
    Fixture f;
    std::vector<char> seen;
    f.window->registerScreen(Screen::StatisticsReport,
                             [&] { seen.push_back(f.window->shellState().reportLetter); });
    f.window->setSelectedTeamCount(1);

    f.act("mnuKicking")->trigger();
    QCOMPARE(f.window->shellState().reportLetter, 'K');
    QCOMPARE(seen, std::vector<char>{'K'});

    f.act("mnuRushing")->trigger();
    QCOMPARE(seen, (std::vector<char>{'K', 'R'}));
    QVERIFY(f.prompter.shown.empty());
}

void TestMainWindow::otherCommandsSetTheirModes() {
    Fixture f;
    int rosters = 0, backups = 0;
    f.window->registerScreen(Screen::Roster, [&] { ++rosters; });
    f.window->registerScreen(Screen::BackUpRestore, [&] { ++backups; });

    // Restore works with no team marked; the roster needs one.
    f.act("mnuRestore")->trigger();
    QCOMPARE(f.window->shellState().backupMode, 'N');
    QCOMPARE(backups, 1);
    f.act("mnuBackUp")->trigger();
    QCOMPARE(f.window->shellState().backupMode, 'Y');
    QCOMPARE(backups, 2);

    f.act("mnuRoster")->trigger();
    QCOMPARE(rosters, 0);
    f.window->setSelectedTeamCount(3);
    f.act("mnuRoster")->trigger();
    QCOMPARE(rosters, 1);
    QCOMPARE(f.window->shellState().rosterMode, 'N');
}

void TestMainWindow::helpTopicOpensThePageInOneHelpWindow() {
    Fixture f;
    f.window->show();
    QCOMPARE(f.window->helpWindow(), nullptr);

    f.act("mnuPassingStatistics")->trigger();
    HelpWindow* help = f.window->helpWindow();
    QVERIFY(help);
    QVERIFY(help->isVisible());
    QVERIFY(help->isWindow());
    QVERIFY(!help->isModal());
    QCOMPARE(help->windowTitle(), QStringLiteral("Scorvane for Football Help"));
    QVERIFY2(help->browser()->source().toLocalFile().endsWith(QStringLiteral("/topic240.html")),
             qPrintable(help->browser()->source().toString()));
    QVERIFY(help->browser()->toPlainText().contains(QStringLiteral("Completions and attempts.")));
    QVERIFY(f.prompter.shown.empty());

    // Closed and chosen again: the same window comes back.
    help->close();
    QVERIFY(!help->isVisible());
    f.act("mnuPassingStatistics")->trigger();
    QCOMPARE(f.window->helpWindow(), help);
    QVERIFY(help->isVisible());

    // Closing the main window takes the help window with it.
    f.window->close();
    QVERIFY(!help->isVisible());
}

void TestMainWindow::missingHelpPageShowsTheHelpErrorOnly() {
    Fixture f;
    f.act("mnuKickingStatistics")->trigger();
    QCOMPARE(f.prompter.shown.size(), std::size_t(1));
    QCOMPARE(f.prompter.shown[0].title, std::string("Help Error"));
    QVERIFY(f.prompter.shown[0] == helpErrorMessage());
    QCOMPARE(f.window->helpWindow(), nullptr);
    for (QWidget* w : QApplication::topLevelWidgets())
        QVERIFY2(!w->isVisible(), qPrintable(w->objectName()));
}

void TestMainWindow::aboutCommandShowsTheModalAboutBox() {
    Fixture f;
    f.window->show();
    bool handled = false;
    QStringList texts;
    QString title;
    bool okFound = false;
    whenModalShows(
        [&](QWidget* modal) {
            title = modal->windowTitle();
            for (QLabel* l : modal->findChildren<QLabel*>())
                texts << l->text();
            QCOMPARE(modal->parentWidget(), f.window.get());
            if (auto* ok = modal->findChild<QPushButton*>(QStringLiteral("cmdOK"))) {
                okFound = true;
                ok->click();
            }
        },
        &handled);
    f.act("mnuAbout")->trigger();

    QVERIFY(handled);
    QVERIFY(okFound);
    QCOMPARE(title, QStringLiteral("About"));
    QVERIFY(texts.contains(QStringLiteral("Scorvane for Football")));
    QVERIFY(texts.contains(QStringLiteral("Version 2.1")));
    QVERIFY(f.prompter.shown.empty());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

void TestMainWindow::textCodecConvertsFileBytes() {
    const QString montreal = QString::fromUtf8("Montr\xC3\xA9"
                                               "al");
    QCOMPARE(fromFileText("Montr\xE9"
                          "al"),
             montreal);
    QCOMPARE(toFileText(montreal), std::string("Montr\xE9"
                                               "al"));

    const QString euro = QString::fromUtf8("\xE2\x82\xAC");
    QCOMPARE(fromFileText("\x80"), euro);
    QCOMPARE(toFileText(euro), std::string("\x80"));

    // Every byte survives the trip to the screen and back.
    std::string all;
    for (int b = 1; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    QCOMPARE(toFileText(fromFileText(all)), all);

    // What a file cannot hold is stored as '?'; logic messages are UTF-8, not file text.
    QCOMPARE(toFileText(QString::fromUtf8("\xCE\xA9 Team")), std::string("? Team"));
    QCOMPARE(fromUtf8("Montr\xC3\xA9"
                      "al"),
             montreal);
    QCOMPARE(toUtf8(montreal), std::string("Montr\xC3\xA9"
                                           "al"));
}

QTEST_MAIN(TestMainWindow)
#include "test_mainwindow.moc"
