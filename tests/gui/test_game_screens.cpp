// The game list, the game screen and the change-player-number dialog.

#include "games/Roster.h"
#include "games/ui/GameMenuDialog.h"
#include "games/ui/GameScreenDialog.h"
#include "games/ui/PlayerNumberDialog.h"
#include "gui/GuiChecks.h"
#include "shell/TeamSelection.h"
#include "support/ScratchData.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace scorvane;

namespace {

// Team 1 "Bears" in a fresh data directory; the files are on its games.
struct Season : scorvane::testing::ScratchData {
    ConfigRecord config = ConfigRecord::defaults();
    TeamSelection teams;
    GameList games;

    Season() {
        QVERIFY(TeamSelection::createTeamList(data).isOk());
        QVERIFY(teams.storeNames(data, 1, "Bears", "").isOk());
    }
    void addGame(const char* opponent) {
        GameRecord g;
        g.opponent = fit(opponent, 25);
        QVERIFY(games.append(files, g).isOk());
    }
    char gameByte(int record, std::size_t offset) const {
        return char(dir.read("FBGS1.DAT").at(std::size_t(record - 1) * 200 + offset));
    }
};

const auto box = [](QWidget* d, const char* name) { return d->findChild<QLineEdit*>(name); };
const auto text = [](QWidget* d, const char* name) { return d->findChild<QLabel*>(name)->text(); };
const auto press = [](QWidget* d, const char* name) { d->findChild<QPushButton*>(name)->click(); };
const auto showActive = [](QWidget* w) { w->show(), (void)QTest::qWaitForWindowActive(w); };

} // namespace

class TestGameScreens : public QObject {
    Q_OBJECT

private slots:
    void scoreBoxesTakeDigitsOnly() {
        Season s;
        GameScreenDialog d(s.data, s.files, s.games, s.prompter, s.config, s.teams, 1,
                           EntryMode::Add, 1);
        showActive(&d);
        QCOMPARE(d.windowTitle(), QStringLiteral("Game Screen - Bears"));
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
        QCOMPARE(text(&d, "lblAddGame"),
                 QStringLiteral("Must  click OK (add game) before adding player results"));
        box(&d, "txtScore1")->setFocus();
        QTest::keyClicks(box(&d, "txtScore1"), QStringLiteral("1a2"));
        QCOMPARE(box(&d, "txtScore1")->text(), QStringLiteral("12"));
        QTest::keyClick(box(&d, "txtScore1"), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), box(&d, "txtScore2"));
        QTest::keyClicks(box(&d, "txtScore2"), QStringLiteral("7 "));
        QTest::keyClicks(box(&d, "txtOpp4"), QStringLiteral("x3"));
        QCOMPARE(text(&d, "lblTeamTot"), QStringLiteral("19"));
        QCOMPARE(text(&d, "lblOppTot"), QStringLiteral("3"));
        QVERIFY(d.form().changed());
    }
    void importFromTheTeamItselfPutsTheCursorInTheDate() {
        Season s;
        GameScreenDialog d(s.data, s.files, s.games, s.prompter, s.config, s.teams, 1,
                           EntryMode::Add, 1);
        showActive(&d);
        auto* opponents = d.findChild<QComboBox*>("cmbOpponents");
        const int bears = opponents->findText(QStringLiteral("Bears"));
        QVERIFY(bears >= 0);
        opponents->setCurrentIndex(bears);
        emit opponents->activated(bears);
        box(&d, "txtScore1")->setFocus();
        press(&d, "cmdImport");
        QCOMPARE(s.prompter.shown.back().text, std::string("Opponent can not be update team"));
        QCOMPARE(d.focusWidget(), box(&d, "txtGameDate"));
    }
    void aTieAsksAboutOvertimeAndABadDateIsRefused() {
        Season s;
        for (const char* them : {"14", "17"}) {
            GameScreenDialog d(s.data, s.files, s.games, s.prompter, s.config, s.teams, 1,
                               EntryMode::Add, 1);
            showActive(&d);
            QTest::keyClicks(box(&d, "txtGameDate"), QStringLiteral("1332x9"));
            QTest::keyClicks(box(&d, "txtScore1"), QStringLiteral("14"));
            QTest::keyClicks(box(&d, "txtOpp1"), QString::fromLatin1(them));
            press(&d, "cmdOK");
            QCOMPARE(s.prompter.shown.back().text, std::string("Enter game date (MMDDYY)"));
            QVERIFY(d.isVisible() && QApplication::focusWidget() == box(&d, "txtGameDate"));

            box(&d, "txtGameDate")->selectAll();
            QTest::keyClicks(box(&d, "txtGameDate"), QStringLiteral("090625"));
            box(&d, "txtScore1")->setFocus(); // the date is checked on leaving its box
            QCOMPARE(text(&d, "lblDisplayDate"), QStringLiteral("Sep  6,  2025"));
            s.prompter.answers = {Answer::Yes};
            press(&d, "cmdOK");
            QCOMPARE(d.result(), int(QDialog::Accepted));
        }
        QCOMPARE(s.prompter.shown.size(), std::size_t(3)); // the 17-14 game asks nothing
        QCOMPARE(s.prompter.shown[1].text + s.prompter.shown[1].title,
                 std::string("Was this an overtime game?Overtime Game?"));
        QCOMPARE(s.dir.read("FBGS1.DAT").size(), std::size_t(400));
        QCOMPARE(s.gameByte(1, 135), '\xFF'); // the overtime mark
        QCOMPARE(s.gameByte(2, 135), '\0');
    }
    void theGameMenuMarksAndDeletes() {
        Season s;
        s.addGame("Lions");
        s.addGame("Rams");
        GameMenuDialog d(s.data, s.prompter, s.config, s.teams, 1);
        showActive(&d);
        auto* list = d.findChild<QListWidget*>("lstGameMenu");
        QCOMPARE(d.windowTitle(), QStringLiteral("Game Menu - Bears"));
        QCOMPARE(list->count(), 2); // no "New Game" line on opening; the last game selected
        QVERIFY(list->item(0)->text().contains("Lions") && list->item(1)->text().contains("Rams"));
        QCOMPARE(list->currentRow(), 1);
        QVERIFY2(scorvane::testing::sharedAccessKeys(&d).isEmpty(),
                 qPrintable(scorvane::testing::sharedAccessKeys(&d).join(';')));

        // The space bar marks the selected game, on the list and on disk.
        QTest::keyClick(list, Qt::Key_Space);
        QVERIFY(list->item(1)->text().endsWith(QStringLiteral(" ") + QChar(16)));
        QCOMPARE(s.gameByte(2, 134), '2');

        // Change opens the game; back on the list the marks are gone and "New Game" is last.
        QString opponent;
        QTimer::singleShot(0, [&] {
            QWidget* game = QApplication::activeModalWidget();
            opponent = game->findChild<QComboBox*>("cmbOpponents")->currentText();
            press(game, "cmdCancel");
        });
        press(&d, "cmdModify");
        QCOMPARE(opponent, QStringLiteral("Rams"));
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->item(2)->text(), QStringLiteral("      ******* New Game *******"));
        QVERIFY(list->item(1)->text().endsWith(QStringLiteral("  ")));
        QCOMPARE(s.gameByte(2, 134), '1');

        s.prompter.answers = {Answer::Cancel, Answer::Ok};
        list->setCurrentRow(0);
        press(&d, "cmdDelete");
        QCOMPARE(list->count(), 3);
        QCOMPARE(s.prompter.shown.back().text + s.prompter.shown.back().title,
                 std::string("Are you sure?  Player results will also be deleted!Delete Game?"));
        press(&d, "cmdDelete");
        QCOMPARE(list->count(), 1);
        QVERIFY(list->item(0)->text().contains("Rams"));
        QCOMPARE(s.gameByte(1, 2), 'D');
        QCOMPARE(s.gameByte(2, 0), char(1)); // Rams is game 1 now

        // A game added at the end is the selected line when the list comes back.
        QTimer::singleShot(0, [&] {
            QWidget* game = QApplication::activeModalWidget();
            QTest::keyClicks(box(game, "txtGameDate"), QStringLiteral("091325"));
            QTest::keyClicks(box(game, "txtScore1"), QStringLiteral("21"));
            press(game, "cmdOK");
        });
        press(&d, "cmdAddGame");
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->currentRow(), 1);
        QCOMPARE(list->selectedItems().value(0), list->item(1));
        QVERIFY(list->item(1)->text().startsWith(QStringLiteral("2   09/13/25")));

        // Alt+L is Close's own key.
        d.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QTest::keyClick(list, Qt::Key_L, Qt::AltModifier);
        QTRY_VERIFY(!d.isVisible()); // an access key presses its button after a short flash
    }
    void playerNumbersMustBe1To99() {
        Season s;
        Roster roster;
        roster.inUse[5] = true;
        roster.names[5] = fit("Five", 17);
        QVERIFY(roster.saveNames(s.files).isOk());
        PlayerNumberDialog d(s.files, roster, s.prompter, QStringLiteral("Bears"));
        showActive(&d);
        QCOMPARE(d.windowTitle(), QStringLiteral("Change Player Number - Bears"));
        auto* list = d.findChild<QListWidget*>("lstPlayer");
        list->setCurrentRow(4);
        for (const char* typed : {"0", "100"}) {
            QTest::keyClicks(box(&d, "txtNewNumber"), QString::fromLatin1(typed));
            press(&d, "cmdOK");
            QCOMPARE(s.prompter.shown.back().text, std::string("Must be 1 to 99!"));
            QCOMPARE(d.focusWidget(), box(&d, "txtNewNumber"));
        }
        QCOMPARE(s.prompter.shown.size(), std::size_t(2));

        // Typing replaces the refused number; letters are not taken.
        QTest::keyClicks(box(&d, "txtNewNumber"), QStringLiteral("1x2"));
        press(&d, "cmdOK");
        QVERIFY(d.isVisible());
        QCOMPARE(list->item(11)->text(), QStringLiteral("12 Five             "));
        const Bytes names = s.dir.read("FBPN1.DAT");
        QCOMPARE(std::string(names.begin(), names.end()),
                 std::string("\x0c\0", 2) + fit("Five", 17) + std::string(182, ' '));
    }
};

QTEST_MAIN(TestGameScreens)
#include "test_game_screens.moc"
