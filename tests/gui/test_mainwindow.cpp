// The main window: caption, menu bar and what the menu commands do.

#include "shell/Help.h"
#include "shell/MenuModel.h"
#include "shell/Startup.h"
#include "shell/TeamSelection.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/MainWindow.h"
#include "shell/ui/TeamSelectPanel.h"
#include "support/FakePrompter.h"
#include "ui/TextCodec.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QtTest>

#include <memory>

using namespace scorvane;

namespace {

// A main window over a hand-made session whose program folder holds help/topic240.html only.
struct Fixture {
    QTemporaryDir install;
    Session session;
    scorvane::testing::FakePrompter prompter;
    std::unique_ptr<MainWindow> window;

    Fixture() {
        QDir(install.path()).mkpath(QStringLiteral("help"));
        QFile page(install.filePath(QStringLiteral("help/topic240.html")));
        if (page.open(QIODevice::WriteOnly))
            page.write("<html><body><p>Completions and attempts.</p></body></html>");
        page.close();
        session.config = ConfigRecord::defaults();
        session.columns.build(session.config);
        session.installDirectory = toUtf8(install.path()) + "/";
        session.paths.dataDirectory = session.paths.reportDirectory = "/tmp/season/";
        window = std::make_unique<MainWindow>(session, prompter);
    }

    QAction* act(const std::string& name) const { return window->action(fromUtf8(name)); }
};

} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

private slots:
    void captionAndStartPageNameTheDataDirectory();
    void menuBarFollowsTheMenuTree();
    void exitButtonAndExitCommandCloseTheWindow();
    void aStrayKeyAfterStartUpLeavesTheWindowOpen();
    void commandsNeedTheirScreenAndMarkedTeams();
    void helpTopicOpensItsPageOrTheHelpError();
    void textCodecConvertsFileBytes();
};

void TestMainWindow::captionAndStartPageNameTheDataDirectory() {
    Fixture f;
    auto* label = f.window->findChild<QLabel*>(QStringLiteral("lblDataDirectory"));
    QVERIFY(label);
    const QString caption = QStringLiteral("Scorvane for Football v2.1 (Data Directory: %1)");
    // The folder is shown with the system's separators ("\tmp\season\" on Windows).
    const QString season = QDir::toNativeSeparators(QStringLiteral("/tmp/season/"));
    QCOMPARE(f.window->windowTitle(), caption.arg(season));
    QCOMPARE(label->text(), season);

    const QString montreal = QStringLiteral("/home/coach/Montréal 2024/");
    f.window->setDataDirectory(toUtf8(montreal));
    QCOMPARE(f.window->windowTitle(), caption.arg(QDir::toNativeSeparators(montreal)));
    QCOMPARE(label->text(), QDir::toNativeSeparators(montreal));
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
            QCOMPARE(f.act(expected.name), a);
        }
    }
}

void TestMainWindow::exitButtonAndExitCommandCloseTheWindow() {
    for (bool button : {true, false}) {
        Fixture f;
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        auto* exit = f.window->findChild<QPushButton*>(QStringLiteral("cmdExit"));
        QVERIFY(exit);
        QCOMPARE(exit->text(), QStringLiteral("Exit Scorvane"));
        if (button)
            QTest::mouseClick(exit, Qt::LeftButton);
        else
            f.act("mnuExitProgram")->trigger();
        QVERIFY(!f.window->isVisible());
    }
}

void TestMainWindow::aStrayKeyAfterStartUpLeavesTheWindowOpen() {
    Fixture f;
    TeamSelection teams;
    auto* panel = new TeamSelectPanel(teams);
    f.window->setTeamPanel(panel);
    panel->refresh();
    f.window->show();
    QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
    QCOMPARE(QApplication::focusWidget(), panel->list());
    auto* exit = f.window->findChild<QPushButton*>(QStringLiteral("cmdExit"));
    QVERIFY(!exit->isDefault() && !exit->autoDefault());
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QVERIFY2(f.window->isVisible(), qPrintable(QKeySequence(key).toString()));
    }
    // Tab walks the window without ever stopping on the exit button.
    for (int i = 0; i < 10; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget() != exit);
    }
}

void TestMainWindow::commandsNeedTheirScreenAndMarkedTeams() {
    Fixture f;
    // Nothing registered, no team marked: only help topics, About and Exit work.
    for (const Menu& menu : menuTree())
        for (const MenuItem& item : menu.items)
            if (!item.isSeparator())
                QVERIFY2(f.act(item.name)->isEnabled() ==
                             (item.screen == Screen::HelpTopic || item.screen == Screen::About ||
                              item.screen == Screen::Exit),
                         item.name.c_str());

    // A team-dependent command needs both its screen and a marked team; disabled, it does nothing.
    std::vector<char> opened;
    f.window->registerScreen(Screen::StatisticsReport,
                             [&] { opened.push_back(f.window->shellState().reportLetter); });
    QVERIFY(!f.act("mnuKicking")->isEnabled());
    f.window->runCommand(*findMenuItem("mnuKicking")); // as the start page would run it
    f.window->setSelectedTeamCount(1);
    QVERIFY(!f.act("mnuGames")->isEnabled());
    QVERIFY(f.act("mnuKicking")->isEnabled());
    f.act("mnuKicking")->trigger();
    QCOMPARE(opened, std::vector<char>{'K'}); // the letter is set before the screen opens
    f.window->setSelectedTeamCount(0);
    QVERIFY(!f.act("mnuKicking")->isEnabled());

    // Other commands need only their screen, and set their mode before opening it.
    int backups = 0;
    f.window->registerScreen(Screen::BackUpRestore,
                             [&] { backups += f.window->shellState().backupMode == 'N'; });
    f.act("mnuRestore")->trigger();
    QCOMPARE(backups, 1);
    f.window->registerScreen(Screen::BackUpRestore, nullptr);
    QVERIFY(!f.act("mnuRestore")->isEnabled());
    QVERIFY(f.prompter.shown.empty());
}

void TestMainWindow::helpTopicOpensItsPageOrTheHelpError() {
    Fixture f;
    f.window->show();
    f.act("mnuPassingStatistics")->trigger();
    HelpWindow* help = f.window->helpWindow();
    QVERIFY(help && help->isVisible());
    QVERIFY(help->browser()->source().toLocalFile().endsWith(QStringLiteral("/topic240.html")));
    QVERIFY(help->browser()->toPlainText().contains(QStringLiteral("Completions and attempts.")));
    // Escape closes it. Opened again, it stands whole on the main window's screen, however
    // large it was left and wherever the main window stands.
    QTest::keyClick(help->browser(), Qt::Key_Escape);
    QVERIFY(!help->isVisible());
    const QRect screen = f.window->screen()->availableGeometry();
    help->resize(screen.size() + QSize(100, 100));
    f.window->move(screen.right() - 200, screen.bottom() - 150);
    f.act("mnuPassingStatistics")->trigger();
    QCOMPARE(f.window->helpWindow(), help); // the same window comes back
    QVERIFY(help->isVisible());
    QVERIFY(screen.contains(help->frameGeometry()));
    QVERIFY(f.prompter.shown.empty());

    // No page for kicking: the Help Error only.
    Fixture g;
    g.act("mnuKickingStatistics")->trigger();
    QCOMPARE(g.prompter.shown.size(), std::size_t(1));
    QVERIFY(g.prompter.shown[0] == helpErrorMessage());
    QCOMPARE(g.window->helpWindow(), nullptr);
}

void TestMainWindow::textCodecConvertsFileBytes() {
    // File text is Windows-1252: 0xE9 (octal 351) is "é", 0x80 is "€".
    QCOMPARE(fromFileText("Montr\351al"), QStringLiteral("Montréal"));
    QCOMPARE(toFileText(QStringLiteral("Montréal")), std::string("Montr\351al"));
    QCOMPARE(fromFileText("\x80"), QStringLiteral("€"));
    QCOMPARE(toFileText(QStringLiteral("€")), std::string("\x80"));

    // Every byte survives the trip to the screen and back; what a file cannot hold becomes '?'.
    std::string all;
    for (int b = 1; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    QCOMPARE(toFileText(fromFileText(all)), all);
    QCOMPARE(toFileText(QStringLiteral("Ω Team")), std::string("? Team"));
}

QTEST_MAIN(TestMainWindow)
#include "test_mainwindow.moc"
