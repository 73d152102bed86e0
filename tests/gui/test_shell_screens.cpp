// The main window and the screens of its commands: caption, menu bar, help; the team selection,
// Team Name, Name Your Own and the data directory; Back Up, Restore and Delete Files; and the
// message boxes and About box on their own.

#include "app/Application.h"
#include "gui/GuiChecks.h"
#include "shell/Backup.h"
#include "shell/Help.h"
#include "shell/MenuModel.h"
#include "shell/ui/AboutDialog.h"
#include "shell/ui/BackupDialog.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/MainWindow.h"
#include "shell/ui/TeamSelectPanel.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"
#include "ui/DialogParts.h"
#include "ui/QtPrompter.h"
#include "ui/TextCodec.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScopeGuard>
#include <QScreen>
#include <QTemporaryDir>
#include <QTextBrowser>

#include <filesystem>
#include <memory>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// A main window over a hand-made session whose program folder holds help/topic240.html only.
struct Bare {
    QTemporaryDir install;
    Session session;
    FakePrompter prompter;
    std::unique_ptr<MainWindow> window;

    Bare() {
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

const char* const kKinds[] = {"FBPN", "FBPI", "FBGS", "FBPS"};

// Teams 1 "Bears" and 2 "Lions" in a fresh data directory with the files given, the program over
// them, and a folder for backups. Game type 1 is named "Scrimmage", the first passing user column
// "Xyz".
struct League {
    TempDir dir, backups;
    FakePrompter prompter;
    std::unique_ptr<Application> app;

    explicit League(const std::map<std::string, Bytes>& files = {}) {
        Session session;
        session.configPath = dir.file("BXFB.INI");
        session.config = ConfigRecord::defaults();
        session.config.gameTypeNames[0] = fit("Scrimmage", 10);
        session.config.userColumns[0][0] = "Xyz";
        session.columns.build(session.config);
        session.paths = DataPaths{dir.dir(), dir.dir(), dir.dir()};
        {
            DataFiles data(session.paths, prompter);
            TeamSelection names;
            QVERIFY(TeamSelection::createTeamList(data).isOk());
            QVERIFY(names.storeNames(data, 1, "Bears", "").isOk());
            QVERIFY(names.storeNames(data, 2, "Lions", "").isOk());
        }
        for (const auto& [name, bytes] : files)
            dir.write(name, bytes);
        app = std::make_unique<Application>(session, prompter);
        app->window().show();
        (void)QTest::qWaitForWindowExposed(&app->window());
    }
    // Each team's four files, team 2's twice as long as team 1's.
    static std::map<std::string, Bytes> teamFiles() {
        std::map<std::string, Bytes> files;
        for (int team : {1, 2})
            for (const char* kind : kKinds)
                files[kind + std::to_string(team) + ".DAT"] =
                    Bytes(201 * std::size_t(team + 1), 'x');
        return files;
    }
    int filesOf(int team) const {
        int n = 0;
        for (const char* kind : kKinds)
            n += dir.exists(kind + std::to_string(team) + ".DAT");
        return n;
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

QLineEdit* box(QWidget* d, const char* name) {
    return child<QLineEdit>(d, name);
}

// What a message box looked like when it came up.
struct SeenBox {
    bool seen = false;
    QString text, title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    Qt::TextFormat format = Qt::AutoText;
    QWidget* parent = nullptr;
    int width = 0;
};

// Records the next message box that comes up and closes it with the button `click`, or with
// Escape for NoButton.
void answerNextBox(SeenBox& seen, QMessageBox::StandardButton click) {
    whenShown(nullptr, [&seen, click](QDialog* d) {
        auto* box = qobject_cast<QMessageBox*>(d);
        QVERIFY(box);
        seen = {true,
                box->text(),
                box->windowTitle(),
                box->icon(),
                box->standardButtons(),
                box->standardButton(box->defaultButton()),
                box->textFormat(),
                box->parentWidget(),
                box->width()};
        if (click == QMessageBox::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(click)->click();
    });
}

} // namespace

class TestShellScreens : public QObject {
    Q_OBJECT

private slots:
    // The caption and the start page name the data directory. The menu bar is the menu tree,
    // each command under its own name. Nothing registered, no team
    // marked: only help topics, About and Exit work. A help topic opens its page, or the Help
    // Error when it has none.
    void captionMenuBarCommandsAndHelpFollowTheSession() {
        Bare f;
        auto* label = child<QLabel>(f.window.get(), "lblDataDirectory");
        const QString caption = QStringLiteral("Scorvane for Football v2.1 (Data Directory: %1)");
        // The folder is shown with the system's separators ("\tmp\season\" on Windows).
        const QString season = QDir::toNativeSeparators(QStringLiteral("/tmp/season/"));
        QCOMPARE(f.window->windowTitle(), caption.arg(season));
        QCOMPARE(label->text(), season);
        const QString montreal = QStringLiteral("/home/coach/Montréal 2024/");
        f.window->setDataDirectory(toUtf8(montreal));
        QCOMPARE(f.window->windowTitle(), caption.arg(QDir::toNativeSeparators(montreal)));
        QCOMPARE(label->text(), QDir::toNativeSeparators(montreal));

        QStringList bar, tree;
        for (QAction* m : f.window->menuBar()->actions())
            for (QAction* a : m->menu()->actions())
                bar << m->menu()->title() + " > " + a->text() + " " + a->objectName() +
                           (f.act(toUtf8(a->objectName())) == a ? "" : " (not found)") +
                           (a->isEnabled() ? "" : " (off)");
        for (const Menu& menu : menuTree())
            for (const MenuItem& item : menu.items) {
                const bool on = item.isSeparator() || item.screen == Screen::HelpTopic ||
                                item.screen == Screen::About || item.screen == Screen::Exit;
                tree << fromUtf8(menu.caption) + " > " +
                            (item.isSeparator() ? QString() : fromUtf8(item.caption)) + " " +
                            fromUtf8(item.name) + (on ? "" : " (off)");
            }
        QCOMPARE(bar, tree);

        // A team-dependent command needs its screen and a marked team; disabled, it does nothing.
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

        // No page for kicking: the Help Error only. Passing has its page.
        f.act("mnuKickingStatistics")->trigger();
        QCOMPARE(f.prompter.shown.size(), std::size_t(1));
        QVERIFY(f.prompter.shown[0] == helpErrorMessage());
        QCOMPARE(f.window->helpWindow(), nullptr);
        f.window->show();
        f.act("mnuPassingStatistics")->trigger();
        HelpWindow* help = f.window->helpWindow();
        QVERIFY(help && help->isVisible());
        QVERIFY(help->browser()->source().toLocalFile().endsWith(QStringLiteral("/topic240.html")));
        QVERIFY(
            help->browser()->toPlainText().contains(QStringLiteral("Completions and attempts.")));
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
        QCOMPARE(f.prompter.shown.size(), std::size_t(1));
    }

    void textCodecConvertsFileBytes() {
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

    void promptShowsTheMessageExactly() {
        using B = QMessageBox;
        struct Case {
            const char* name;
            Message message;
            bool withParent;
            B::StandardButton click; // NoButton: Escape
            B::StandardButtons buttons;
            B::Icon icon;
            B::StandardButton defaultButton;
            Answer answer;
        };
        const Case cases[] = {
            // Markup-like text and ampersands appear as typed; the text is UTF-8.
            {"yes-no over a window",
             Message{"Delete <b>all</b> files of Café & Sons?\nThis cannot be undone.",
                     "Delete Files", Buttons::YesNo, Icon::Warning, Answer::No},
             true, B::Yes, B::Yes | B::No, B::Warning, B::No, Answer::Yes},
            // At start-up no window exists yet; the box must come up on its own.
            {"ok without any window",
             Message{"BXFB.INI File Corrupt or Not Found", "Error", Buttons::Ok, Icon::Critical,
                     Answer::Ok},
             false, B::Ok, B::Ok, B::Critical, B::Ok, Answer::Ok},
            // A title far longer than its text is not cut.
            {"long title, short text",
             Message{"Save changes?", "Player Statistics Changed!", Buttons::YesNo, Icon::Question,
                     Answer::No},
             true, B::No, B::Yes | B::No, B::Question, B::No, Answer::No},
            {"ok-cancel, cancel chosen",
             Message{"Text", "Title", Buttons::OkCancel, Icon::Question, Answer::Ok}, false,
             B::Cancel, B::Ok | B::Cancel, B::Question, B::Ok, Answer::Cancel},
            {"ok-cancel, cancel is default",
             Message{"Text", "Title", Buttons::OkCancel, Icon::None, Answer::Cancel}, false, B::Ok,
             B::Ok | B::Cancel, B::NoIcon, B::Cancel, Answer::Ok},
            {"retry-cancel, retry chosen",
             Message{"Text", "Title", Buttons::RetryCancel, Icon::Information, Answer::Retry},
             false, B::Retry, B::Retry | B::Cancel, B::Information, B::Retry, Answer::Retry},
            // Escape gives the cautious answer.
            {"retry-cancel, escape",
             Message{"Try again?", "Disk Error", Buttons::RetryCancel, Icon::Critical,
                     Answer::Retry},
             false, B::NoButton, B::Retry | B::Cancel, B::Critical, B::Retry, Answer::Cancel},
            {"yes-no, escape",
             Message{"Save?", "Save", Buttons::YesNo, Icon::Question, Answer::Yes}, false,
             B::NoButton, B::Yes | B::No, B::Question, B::Yes, Answer::No},
        };
        for (const Case& c : cases) {
            const auto where = qScopeGuard([&] {
                if (QTest::currentTestFailed())
                    qWarning("in the case \"%s\"", c.name);
            });
            QWidget owner;
            QtPrompter prompter(c.withParent ? &owner : nullptr);
            SeenBox seen;
            answerNextBox(seen, c.click);
            const Answer answer = prompter.ask(c.message);
            QVERIFY(seen.seen);
            QCOMPARE(seen.text, QString::fromStdString(c.message.text));
            QCOMPARE(seen.format, Qt::PlainText);
            QCOMPARE(seen.title, QString::fromStdString(c.message.title));
            QCOMPARE(seen.buttons, c.buttons);
            QCOMPARE(seen.icon, c.icon);
            QCOMPARE(seen.defaultButton, c.defaultButton);
            QCOMPARE(answer, c.answer);
            QCOMPARE(seen.parent, c.withParent ? &owner : nullptr);
            // Wide enough for the title in the title bar's bold font with the window's buttons.
            QFont titleFont = QApplication::font("QMdiSubWindowTitleBar");
            titleFont.setBold(true);
            const int titleText = QFontMetrics(titleFont).horizontalAdvance(seen.title);
            QVERIFY(titleBarWidth(seen.title) >= titleText + 100);
            QVERIFY2(seen.width >= titleBarWidth(seen.title),
                     qPrintable(QString::number(seen.width)));
        }
    }

    void aboutBoxShowsNameAndVersion() {
        AboutDialog about;
        QVERIFY(about.isModal());
        QCOMPARE(about.windowTitle(), QStringLiteral("About"));
        QStringList texts;
        for (QLabel* l : about.findChildren<QLabel*>())
            texts << l->text();
        QVERIFY(texts.contains(QStringLiteral("Scorvane for Football")));
        QVERIFY(texts.contains(QStringLiteral("Version 2.1")));
        auto* ok = child<QPushButton>(&about, "cmdOK");
        QVERIFY(ok->isDefault());
        about.show();
        ok->click();
        QVERIFY(!about.isVisible());
        QCOMPARE(about.result(), int(QDialog::Accepted));
    }

    // Marked teams drive the team commands; then the team names, the column names and the data
    // directory are stored.
    void markedTeamsTeamNamesColumnNamesAndTheDataDirectory() {
        League s;
        QStringList labels;
        for (QLabel* l : child(&s.app->window(), "frmSelectTeam")->findChildren<QLabel*>())
            labels << l->text();
        QCOMPARE(labels.mid(0, 2),
                 QStringList({"Select Team(s)          Choose Menu Option", "Teams Selected:"}));
        QCOMPARE(lines(s.list()), QStringList({"Bears", "Lions"}) + QStringList(98, QString()));
        QCOMPARE(s.count(), QStringLiteral("0"));
        QVERIFY(!s.command("mnuRoster")->isEnabled() && !s.command("mnuDeleteFiles")->isEnabled());
        QVERIFY(s.command("mnuNameYourOwn")->isEnabled());

        s.click(1);
        QCOMPARE(s.count(), QStringLiteral("1"));
        QVERIFY(s.command("mnuRoster")->isEnabled() && s.command("mnuDeleteFiles")->isEnabled());
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

        // Team Name of the one team marked.
        s.click(0);
        const QString montreal = QString::fromUtf8("Montr\u00e9al");
        QStringList shown;
        whenShown(nullptr, [&](QWidget* d) {
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
        whenShown(nullptr, [&](QWidget* d) {
            box(d, "txtTeamName")->setText(QStringLiteral("Typed"));
            press(d, "cmdDefault");
        });
        s.click(2, true);
        QCOMPARE(s.team(3), fit("Team 3", 25) + fit("Team 3", 10));
        QCOMPARE(s.list()->item(2)->text(), QStringLiteral("Team 3"));
        QCOMPARE(s.count(), QStringLiteral("2"));
        QVERIFY(!s.dir.exists("FBSITE3.TXT")); // no ID typed: nothing written

        // A new data directory starts a new season.
        s.list()->item(1)->setSelected(true);
        const std::string fresh = s.dir.dir() + "Montr\u00e9al 2025";
        QString folder;
        whenShown(nullptr, [&](QWidget* d) {
            folder = box(d, "txtDataDirectory")->text();
            // Refused: the message was shown and the dialog stays for another choice.
            box(d, "txtDataDirectory")->setText(QString(200, QLatin1Char('x')));
            press(d, "cmdOK");
            QVERIFY(d->isVisible());
            box(d, "txtDataDirectory")->setText(fromUtf8(fresh));
            press(d, "cmdOK");
        });
        s.command("mnuDataPath")->trigger();
        QCOMPARE(folder, fromUtf8(s.dir.dir()));
        QCOMPARE(s.prompter.shown.size(), std::size_t(2));
        QCOMPARE(std::filesystem::file_size(std::filesystem::u8path(fresh + "/FBTEAMS.DAT")),
                 std::uintmax_t(4000));
        QVERIFY(s.app->window().windowTitle().endsWith(
            QDir::toNativeSeparators(fromUtf8(fresh + "/")) + QLatin1Char(')')));
        QCOMPARE(s.list()->item(1)->text(), QString());
        QCOMPARE(s.count(), QStringLiteral("0"));

        // Name Your Own fills the boxes left empty with the defaults.
        QCOMPARE(s.app->session().columns.columnName('P', 19), std::string("Xyz"));
        QStringList boxes;
        whenShown(nullptr, [&](QWidget* d) {
            for (QLineEdit* b : d->findChildren<QLineEdit*>()) {
                boxes << b->objectName() + '=' + b->text();
                b->clear();
            }
            press(d, "cmdOK");
        });
        s.command("mnuNameYourOwn")->trigger();
        QCOMPARE(boxes.size(), 37);
        QVERIFY(boxes.contains("txtGameType1=Scrimmage") && boxes.contains("txtCat1=Xyz"));
        QVERIFY(boxes.contains("txtGameType7=GameType 7") && boxes.contains("txtCat30=T5"));
        const Bytes ini = s.dir.read("BXFB.INI");
        QCOMPARE(ini.size(), ConfigRecord::Length);
        QCOMPARE(std::string(ini.begin() + 2, ini.begin() + 12), std::string("GameType 1"));
        QCOMPARE(s.app->session().columns.columnName('P', 19), std::string("P1 "));
    }

    void backUpThenRestoreBringsTheSeasonBack() {
        League l({{"FBPN1.DAT", Bytes(402, 'b')}, {"FBPN2.DAT", Bytes(201, 'l')}});
        whenShown(nullptr, [&](QWidget* d) {
            QCOMPARE(d->windowTitle(), QStringLiteral("Back Up Files"));
            QVERIFY(sharedAccessKeys(d).isEmpty());
            QCOMPARE(child<QLabel>(d, "lblContents")->text(),
                     QStringLiteral("2 teams, 3 files, 5 KB"));
            QCOMPARE(child<QListWidget>(d, "lstTeams")->count(), 2);
            QVERIFY(box(d, "txtFileName")->text().startsWith(QStringLiteral("Bears Backup ")));
            QVERIFY(box(d, "txtFileName")->text().endsWith(QStringLiteral(".sfb")));
            box(d, "txtFolder")->setText(fromUtf8(l.backups.dir()));
            box(d, "txtFileName")->setText(QStringLiteral("season.sfb"));
            press(d, "cmdBackUp");
            QVERIFY(!d->isVisible());
        });
        l.command("mnuBackUp")->trigger();
        QCOMPARE(l.prompter.shown.size(), std::size_t(1));
        QCOMPARE(l.prompter.shown[0].text,
                 "The backup was written to " + l.backups.file("season.sfb") + ".");
        BackupArchive archive;
        QVERIFY(readBackupFile(l.prompter, l.backups.file("season.sfb"), archive));

        // Later a roster is changed and another is gone; the restore brings both back.
        l.dir.write("FBPN1.DAT", Bytes(201, 'z'));
        std::filesystem::remove(l.dir.path() / "FBPN2.DAT");
        l.list()->item(0)->setSelected(true);
        l.prompter = {};
        l.prompter.answers = {Answer::Yes};
        whenShown(nullptr, [&](QWidget* d) {
            QCOMPARE(d->windowTitle(), QStringLiteral("Restore Files"));
            QVERIFY(sharedAccessKeys(d).isEmpty());
            // The newest backup of the folder used last is offered, and what it holds is shown
            // before anything is replaced.
            QCOMPARE(box(d, "txtBackupFile")->text(), fromUtf8(l.backups.file("season.sfb")));
            QCOMPARE(child<QLabel>(d, "lblMadeOn")->text(), fromUtf8(archive.madeOn));
            QCOMPARE(child<QListWidget>(d, "lstTeams")->item(1)->text(), QStringLiteral("Lions"));
            QVERIFY(l.dir.exists("FBPN1.DAT") && !l.dir.exists("FBPN2.DAT"));
            press(d, "cmdRestore");
            QVERIFY(!d->isVisible());
        });
        l.command("mnuRestore")->trigger();
        QCOMPARE(l.prompter.shown.size(), std::size_t(2));
        QCOMPARE(l.prompter.shown[0].defaultAnswer, Answer::No);
        QVERIFY(l.prompter.shown[1].text.starts_with("The backup was restored.  The files it "
                                                     "replaced are saved in " +
                                                     l.dir.dir() + "Before restore "));
        QCOMPARE(l.dir.read("FBPN1.DAT"), Bytes(402, 'b'));
        QCOMPARE(l.dir.read("FBPN2.DAT"), Bytes(201, 'l'));
        QCOMPARE(l.list()->item(1)->text(), QStringLiteral("Lions"));
        QCOMPARE(l.list()->selectedItems().size(), 0);
    }

    void aDamagedBackupIsShownAsSuchAndRefused() {
        League l;
        l.backups.write("bad.sfb", Bytes{'S', 'C', 'V', 'B', 'A', 'C', 'K', 'U', 'P', 0x1A, 1});
        const Bytes teams = l.dir.read("FBTEAMS.DAT");
        whenShown(nullptr, [&](QWidget* d) {
            box(d, "txtBackupFile")->setText(fromUtf8(l.backups.file("bad.sfb")));
            static_cast<BackupDialog*>(d)->inspect();
            QCOMPARE(child<QLabel>(d, "lblContents")->text(),
                     QStringLiteral("This backup is damaged and cannot be restored.  Nothing was "
                                    "restored."));
            QCOMPARE(child<QListWidget>(d, "lstTeams")->count(), 0);
            // Enter on the focused Restore button presses it: the refusal comes up.
            child<QPushButton>(d, "cmdRestore")->setFocus();
            QTest::keyClick(child<QPushButton>(d, "cmdRestore"), Qt::Key_Return);
            QCOMPARE(l.prompter.shown.size(), std::size_t(1));
            QCOMPARE(l.prompter.shown[0].title, std::string("Restore Files"));
            QVERIFY(d->isVisible());
        });
        l.command("mnuRestore")->trigger();
        QCOMPARE(l.dir.read("FBTEAMS.DAT"), teams);
    }

    // Delete Files offers the marked teams, the current one first; Enter on Delete asks, No (the
    // default) keeps everything, Yes deletes the team's four files and empties its line.
    void deleteFilesAsksAndEmptiesTheTeamsLineOnly() {
        League l(League::teamFiles());
        l.click(0);
        l.click(1);
        l.prompter.answers = {Answer::No, Answer::Yes};
        bool shown = false;
        whenShown(nullptr, [&](QWidget* d) {
            shown = true;
            QCOMPARE(d->windowTitle(), QStringLiteral("Delete Files"));
            QVERIFY(sharedAccessKeys(d).isEmpty());
            auto* list = child<QListWidget>(d, "lstTeams");
            QCOMPARE(list->count(), 2);
            QCOMPARE(list->item(0)->text(), QStringLiteral("  1  Bears"));
            QCOMPARE(list->currentRow(), 1); // the one clicked last
            QCOMPARE(child<QLabel>(d, "lblTeamFiles")->text(),
                     QStringLiteral("3 players, 3 games, 5 statistics records"));
            auto* remove = child<QPushButton>(d, "cmdDelete");
            remove->setFocus();
            QTest::keyClick(remove, Qt::Key_Return);
            QCOMPARE(l.prompter.shown.size(), std::size_t(1));
            QVERIFY(d->isVisible());
            QCOMPARE(l.filesOf(2), 4);
            remove->click();
            QVERIFY(!d->isVisible());
        });
        l.command("mnuDeleteFiles")->trigger();
        QVERIFY(shown);
        QCOMPARE(l.prompter.shown.size(), std::size_t(2));
        QCOMPARE(l.prompter.shown[1].defaultAnswer, Answer::No);
        QCOMPARE(std::pair(l.filesOf(1), l.filesOf(2)), std::pair(4, 0));
        // The team list shows the empty line and no team stays marked.
        QCOMPARE(lines(l.list()).mid(0, 2), QStringList({"Bears", ""}));
        QCOMPARE(l.list()->selectedItems().size(), 0);
        QVERIFY(!l.command("mnuDeleteFiles")->isEnabled());

        // Enter on the focused Close button closes without asking.
        l.click(0);
        whenShown(nullptr, [&](QWidget* d) {
            child<QPushButton>(d, "cmdClose")->setFocus();
            QTest::keyClick(child<QPushButton>(d, "cmdClose"), Qt::Key_Return);
            QVERIFY(!d->isVisible());
        });
        l.command("mnuDeleteFiles")->trigger();
        QCOMPARE(l.prompter.shown.size(), std::size_t(2));
        QCOMPARE(l.filesOf(1), 4);
    }
};

QTEST_MAIN(TestShellScreens)
#include "test_shell_screens.moc"
