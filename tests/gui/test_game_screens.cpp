// The game list, the game screen, the player screen, the change-player-number dialog and the
// roster screen with its Import.

#include "entry/ui/PlayerScreenDialog.h"
#include "games/GameList.h"
#include "games/Roster.h"
#include "games/ui/GameMenuDialog.h"
#include "games/ui/GameScreenDialog.h"
#include "games/ui/PlayerNumberDialog.h"
#include "games/ui/RosterDialog.h"
#include "gui/GuiChecks.h"
#include "shell/TeamSelection.h"
#include "support/ScratchData.h"
#include "ui/TextCodec.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// Team 1 "Bears" in a fresh data directory; the files are on its games and roster.
struct Season : ScratchData {
    ConfigRecord config = ConfigRecord::defaults();
    ColumnTable columns{config};
    TeamSelection teams;
    GameList games;

    Season() {
        QVERIFY(TeamSelection::createTeamList(data).isOk());
        QVERIFY(teams.storeNames(data, 1, "Bears", "").isOk());
    }
    void addGame(const char* opponent, std::array<std::int16_t, 5> score = {}) {
        GameRecord g;
        g.opponent = fit(opponent, 25);
        g.teamScore = score;
        QVERIFY(games.append(files, g).isOk());
    }
    void saveRoster(std::initializer_list<std::pair<int, const char*>> players) {
        Roster roster;
        for (auto [number, name] : players) {
            roster.inUse[static_cast<std::size_t>(number)] = true;
            roster.names[static_cast<std::size_t>(number)] = fit(name, 17);
        }
        QVERIFY(roster.saveNames(files).isOk());
    }
    char gameByte(int record, std::size_t offset) const {
        return char(dir.read("FBGS1.DAT").at(std::size_t(record - 1) * 200 + offset));
    }
    std::string bytes(const char* file, std::size_t offset, std::size_t width) const {
        const Bytes b = dir.read(file);
        return std::string(b.begin() + long(offset), b.begin() + long(offset + width));
    }
};

// The player screen over players 4 "Adams" and 12 "Baker" and one game against the Lions.
struct Entry : Season {
    Entry() {
        saveRoster({{4, "Adams"}, {12, "Baker"}});
        addGame("Lions", {7, 0, 3, 0, 0});
    }
};

// The roster screen of team 1.
struct RosterScreen {
    Roster roster;
    RosterDialog dialog;

    explicit RosterScreen(Season& s)
        : dialog(s.data.team(1), roster, s.prompter, QStringLiteral("Bears")) {
        showActive(&dialog);
    }
    template <class W = QLineEdit> W* get(const char* name) { return child<W>(&dialog, name); }
    QString line(int number) { return get<QListWidget>("lstPlayerList")->item(number - 1)->text(); }
    // Selects a number, then types into the name box without leaving it.
    void name(int number, const QString& text) {
        get<QListWidget>("lstPlayerList")->setCurrentRow(number - 1);
        get("txtPlayerName")->setFocus();
        get("txtPlayerName")->insert(text);
    }
};

// A roster record's number and name as stored.
std::string player(int number, const std::string& name) {
    return std::string{char(number), '\0'} + fit(name, 17);
}

QLineEdit* box(QWidget* d, const char* name) {
    return child<QLineEdit>(d, name);
}
QString label(QWidget* d, const char* name) {
    return child<QLabel>(d, name)->text();
}
QLineEdit* catField(QWidget* d, int n) {
    return box(d, qPrintable(QStringLiteral("txtCat%1").arg(n)));
}
QTableWidget* table(QWidget* d) {
    return child<QTableWidget>(d, "tblPlayerList");
}
// Types into a box as the user does: the box takes the focus (and selects what it holds) first.
void type(QLineEdit* box, const QString& text) {
    box->setFocus(Qt::TabFocusReason);
    QTest::qWait(1);
    QTest::keyClicks(box, text);
}
void clickCell(QTableWidget* t, int row, int column) {
    const QRect cell = t->visualItemRect(t->item(row, column));
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, cell.center());
}
// Where the table's highlight is: the current cell and every selected cell, as "row,column".
QStringList highlight(QTableWidget* t) {
    QStringList cells{QStringLiteral("%1,%2").arg(t->currentRow()).arg(t->currentColumn())};
    for (const QModelIndex& i : t->selectionModel()->selectedIndexes())
        if (i.column() < kCategoryCount)
            cells << QStringLiteral("%1,%2").arg(i.row()).arg(i.column());
    return cells;
}
// The object names of the controls Tab visits from `from` on, `count` of them.
QStringList tabChain(QWidget* from, int count) {
    from->setFocus(Qt::TabFocusReason);
    QStringList names;
    for (int i = 0; i < count; ++i) {
        QTest::keyClick(from->window()->focusWidget(), Qt::Key_Tab);
        names << from->window()->focusWidget()->objectName();
    }
    return names;
}
std::string shown(const Message& m) {
    return m.text + "|" + m.title;
}

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
        QVERIFY(sharedAccessKeys(&d).isEmpty());
        QCOMPARE(label(&d, "lblAddGame"),
                 QStringLiteral("Must  click OK (add game) before adding player results"));
        box(&d, "txtScore1")->setFocus();
        QTest::keyClicks(box(&d, "txtScore1"), QStringLiteral("1a2"));
        QCOMPARE(box(&d, "txtScore1")->text(), QStringLiteral("12"));
        QTest::keyClick(box(&d, "txtScore1"), Qt::Key_Tab);
        QCOMPARE(d.focusWidget(), box(&d, "txtScore2"));
        QTest::keyClicks(box(&d, "txtScore2"), QStringLiteral("7 "));
        QTest::keyClicks(box(&d, "txtOpp4"), QStringLiteral("x3"));
        QCOMPARE(label(&d, "lblTeamTot") + '-' + label(&d, "lblOppTot"), QStringLiteral("19-3"));
        QVERIFY(d.form().changed());

        // Import with the team itself as the opponent is refused; the cursor goes to the date.
        auto* opponents = child<QComboBox>(&d, "cmbOpponents");
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
            QVERIFY(d.isVisible() && d.focusWidget() == box(&d, "txtGameDate"));

            box(&d, "txtGameDate")->selectAll();
            QTest::keyClicks(box(&d, "txtGameDate"), QStringLiteral("090625"));
            box(&d, "txtScore1")->setFocus(); // the date is checked on leaving its box
            QCOMPARE(label(&d, "lblDisplayDate"), QStringLiteral("Sep  6,  2025"));
            s.prompter.answers = {Answer::Yes};
            press(&d, "cmdOK");
            QCOMPARE(d.result(), int(QDialog::Accepted));
        }
        QCOMPARE(s.prompter.shown.size(), std::size_t(3)); // the 17-14 game asks nothing
        QCOMPARE(shown(s.prompter.shown[1]),
                 std::string("Was this an overtime game?|Overtime Game?"));
        QCOMPARE(s.dir.read("FBGS1.DAT").size(), std::size_t(400));
        // The overtime mark, on game 1 only.
        QCOMPARE(std::pair(s.gameByte(1, 135), s.gameByte(2, 135)), std::pair('\xFF', '\0'));
    }

    void theGameMenuMarksDeletesAndLeadsToThePlayerScreen() {
        Season s;
        s.addGame("Lions");
        s.addGame("Rams");
        GameMenuDialog d(s.data, s.prompter, s.config, s.teams, 1);
        QList<int> opened;
        d.setPlayerScreen([&](int game) {
            opened << game;
            return false;
        });
        showActive(&d);
        auto* list = child<QListWidget>(&d, "lstGameMenu");
        QCOMPARE(d.windowTitle(), QStringLiteral("Game Menu - Bears"));
        QCOMPARE(list->count(), 2); // no "New Game" line on opening; the last game selected
        QVERIFY(list->item(0)->text().contains("Lions") && list->item(1)->text().contains("Rams"));
        QCOMPARE(list->currentRow(), 1);
        QVERIFY2(sharedAccessKeys(&d).isEmpty(), qPrintable(sharedAccessKeys(&d).join(';')));

        // The space bar marks the selected game, on the list and on disk.
        QTest::keyClick(list, Qt::Key_Space);
        QVERIFY(list->item(1)->text().endsWith(QStringLiteral(" ") + QChar(16)));
        QCOMPARE(s.gameByte(2, 134), '2');

        // Change opens the game; back on the list the marks are gone and "New Game" is last.
        QString opponent;
        whenShown(nullptr, [&](QWidget* game) {
            opponent = child<QComboBox>(game, "cmbOpponents")->currentText();
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
        QCOMPARE(shown(s.prompter.shown.back()),
                 std::string("Are you sure?  Player results will also be deleted!|Delete Game?"));
        press(&d, "cmdDelete");
        QCOMPARE(list->count(), 1);
        QVERIFY(list->item(0)->text().contains("Rams"));
        QCOMPARE(s.gameByte(1, 2), 'D');
        QCOMPARE(s.gameByte(2, 0), char(1)); // Rams is game 1 now

        // A game added at the end leads straight to its player screen, and is the selected line
        // when the list comes back; Players opens the player screen of the selected game.
        whenShown(nullptr, [&](QWidget* game) {
            QTest::keyClicks(box(game, "txtGameDate"), QStringLiteral("091325"));
            QTest::keyClicks(box(game, "txtScore1"), QStringLiteral("21"));
            press(game, "cmdOK");
        });
        press(&d, "cmdAddGame");
        QCOMPARE(opened, QList<int>({2}));
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->currentRow(), 1);
        QCOMPARE(list->selectedItems().value(0), list->item(1));
        QVERIFY(list->item(1)->text().startsWith(QStringLiteral("2   09/13/25")));
        list->setCurrentRow(0);
        press(&d, "cmdPlayers");
        QCOMPARE(opened, QList<int>({2, 1}));

        // Alt+L is Close's own key.
        d.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QTest::keyClick(list, Qt::Key_L, Qt::AltModifier);
        QTRY_VERIFY(!d.isVisible()); // an access key presses its button after a short flash
    }

    void playerNumbersMustBe1To99() {
        Season s;
        s.saveRoster({{5, "Five"}});
        Roster roster;
        QVERIFY(roster.load(s.files).isOk());
        PlayerNumberDialog d(s.files, roster, s.prompter, QStringLiteral("Bears"));
        showActive(&d);
        QCOMPARE(d.windowTitle(), QStringLiteral("Change Player Number - Bears"));
        auto* list = child<QListWidget>(&d, "lstPlayer");
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

    // The player screen opens on the first player in passing; keys a field refuses never reach
    // it, "-" only where yards can be negative. Opened again: a click on another player, an arrow
    // key in the table or Team Totals while the entries break a rule keeps the table on the current
    // player and category, shows the rule and puts the cursor in its field. Cancel asks, and Yes
    // leaves without writing anything; OK writes the results, and the team totals view sums them.
    void playerScreenTakesTheFieldsKeysKeepsThePlayerOnAFailedCheckAndSavesOnOk() {
        Entry s;
        const Bytes before = s.dir.read("FBPS1.DAT");
        const auto open = [&s] {
            auto d = std::make_unique<PlayerScreenDialog>(s.files, 1, s.columns, s.prompter,
                                                          QStringLiteral("Bears"), nullptr);
            showActive(d.get());
            return d;
        };
        auto screen = open();
        PlayerScreenDialog& first = *screen;
        QCOMPARE(table(&first)->rowCount(), 2);
        QCOMPARE(QStringList({first.windowTitle(), label(&first, "lblGameNumber"),
                              table(&first)->item(1, 7)->text(), highlight(table(&first)).first(),
                              label(&first, "lblStatType"), label(&first, "lblCat0")}),
                 QStringList({"Player Statistics", "Game 1", "Baker", "0,0", "PASSING", "Att"}));
        QVERIFY(catField(&first, 12)->isVisible() && !catField(&first, 13)->isVisible());
        QVERIFY(catField(&first, 22)->isVisible());
        QVERIFY(sharedAccessKeys(&first).isEmpty());

        type(catField(&first, 0), QStringLiteral("1a-2."));
        QCOMPARE(catField(&first, 0)->text(), QStringLiteral("12"));
        QCOMPARE(label(&first, "lblMsg"), QStringLiteral("Attempts "));
        type(catField(&first, 2), QStringLiteral("-7x"));
        QCOMPARE(catField(&first, 2)->text(), QStringLiteral("-7"));
        // Enter in the last passing field goes on to the first user field.
        catField(&first, 12)->setFocus();
        QTest::keyClick(catField(&first, 12), Qt::Key_Return);
        QCOMPARE(first.focusWidget(), catField(&first, 22));
        auto* played = child<QCheckBox>(&first, "chkPlayed");
        QVERIFY(played->isChecked());
        // Unticking Played clears the panel and puts the cursor in its first field.
        QTest::mouseClick(played, Qt::LeftButton, {}, QPoint(8, played->height() / 2));
        QVERIFY(!played->isChecked());
        QCOMPARE(catField(&first, 2)->text(), QStringLiteral("0"));
        QCOMPARE(first.focusWidget(), catField(&first, 0));

        // Tab leaves the table at once and goes through the panels in reading order, the kick and
        // return controls included.
        clickCell(table(&first), 1, 4);
        QCOMPARE(tabChain(table(&first), 2), QStringList({"chkPlayed", "txtCat22"}));
        QCOMPARE(table(&first)->currentRow() * 10 + table(&first)->currentColumn(), 14);
        QCOMPARE(tabChain(catField(&first, 26), 13),
                 QStringList({"optFG", "optXpt", "optPunt", "txtKYards", "chkKGood", "chkKBlocked",
                              "chkKFairCatch", "chkKInside20", "chkKTouchback", "cmdAddKick",
                              "lstKicks", "cmdDeleteKick", "cmdTeam"}));
        clickCell(table(&first), 1, 5);
        QCOMPARE(
            tabChain(catField(&first, 26), 10),
            QStringList({"optPuntReturn", "optKickReturn", "txtYards", "chkFairCatch", "chkFumble",
                         "chkTD", "cmdAddReturn", "lstReturns", "cmdDeleteReturn", "cmdTeam"}));

        PlayerScreenDialog& d = *(screen = open());
        type(catField(&d, 0), QStringLiteral("10"));
        type(catField(&d, 1), QStringLiteral("6"));
        type(catField(&d, 4), QStringLiteral("5"));
        const std::function<void()> ways[] = {
            [&] { clickCell(table(&d), 1, 3); },
            [&] { table(&d)->setFocus(), QTest::keyClick(table(&d), Qt::Key_Down); },
            [&] { type(catField(&d, 4), QStringLiteral("5")), press(&d, "cmdTeam"); }};
        for (std::size_t way = 0; way < 3; ++way) {
            ways[way]();
            QCOMPARE(s.prompter.shown.size(), way + 1);
            QCOMPARE(shown(s.prompter.shown.back()), std::string("Cm + Int > Att|Error"));
            QCOMPARE(highlight(table(&d)),
                     QStringList({"0,0", "0,0", "0,1", "0,2", "0,3", "0,4", "0,5"}));
            QCOMPARE(label(&d, "lblStatType"), QStringLiteral("PASSING"));
            QCOMPARE(d.focusWidget(), catField(&d, 0));
        }

        // Corrected, the click goes through: Baker's defense panel.
        type(catField(&d, 0), QStringLiteral("11"));
        clickCell(table(&d), 1, 3);
        QCOMPARE(table(&d)->currentRow(), 1);
        QCOMPARE(label(&d, "lblStatType"), QStringLiteral("DEFENSE"));
        QVERIFY(child<QLabel>(&d, "lblSack")->isVisible());
        QCOMPARE(label(&d, "lblPasserCount"), QStringLiteral("1"));
        type(catField(&d, 0), QStringLiteral("9"));
        s.prompter.answers = {Answer::No, Answer::Yes};
        press(&d, "cmdCancel");
        QVERIFY(d.isVisible());
        QCOMPARE(d.focusWidget(), catField(&d, 0));
        press(&d, "cmdCancel");
        QVERIFY(!d.isVisible());
        QCOMPARE(shown(s.prompter.shown.back()),
                 std::string("Do you really want to cancel?|Player Statistics Changed!"));
        QCOMPARE(s.dir.read("FBPS1.DAT"), before);

        PlayerScreenDialog& ok = *(screen = open());
        for (auto [field, text] : {std::pair{0, "4"}, {1, "2"}, {5, "40"}})
            type(catField(&ok, field), QString::fromLatin1(text));
        clickCell(table(&ok), 1, 0);
        for (auto [field, text] : {std::pair{0, "3"}, {1, "1"}, {5, "25"}})
            type(catField(&ok, field), QString::fromLatin1(text));
        press(&ok, "cmdTeam");
        QCOMPARE(QStringList({label(&ok, "lblPlayerName"), catField(&ok, 5)->text(),
                              label(&ok, "lblMsg"), child<QPushButton>(&ok, "cmdTeam")->text()}),
                 QStringList({"Team Totals", "65", "Players Recorded - 2", "&Players"}));
        press(&ok, "cmdTeam");
        QCOMPARE(catField(&ok, 5)->text(), QStringLiteral("25"));
        press(&ok, "cmdOK");
        QVERIFY(!ok.isVisible());
        QCOMPARE(ok.leftTo(), PlayerScreen::Leave::GameList);
        QCOMPARE(s.dir.read("FBPS1.DAT").size(), std::size_t(2 * 110));
        screen = open();
        QCOMPARE(catField(screen.get(), 5)->text(), QStringLiteral("40"));
        QCOMPARE(label(screen.get(), "lblPasserCount"), QStringLiteral("2"));
    }

    void rosterNamesDeleteAndTheCloseBoxSaveInNumberOrder() {
        Season s;
        RosterScreen t(s);
        QCOMPARE(t.dialog.windowTitle(), QStringLiteral("Roster - Bears"));
        QCOMPARE(t.get<QListWidget>("lstPlayerList")->count(), 99);
        QCOMPARE(t.line(7), QStringLiteral("  7 ____________________"));
        QVERIFY(!t.get<QPushButton>("cmdPrint")->isEnabled());

        // Each name is taken over when the next number is selected, the last one on closing.
        t.name(7, QStringLiteral("Seven"));
        t.name(3, QStringLiteral("Three"));
        QCOMPARE(t.line(7), QStringLiteral("  7 Seven            "));

        // Delete asks; No keeps the player, Yes empties every box.
        t.name(5, QStringLiteral("Five"));
        t.get("txtPhone")->setFocus();
        t.get("txtPhone")->insert(QStringLiteral("555"));
        s.prompter.answers = {Answer::No, Answer::Yes};
        press(&t.dialog, "cmdDelete");
        QCOMPARE(t.get("txtPlayerName")->text(), QStringLiteral("Five"));
        QCOMPARE(t.get("txtPhone")->text(), QStringLiteral("555"));
        press(&t.dialog, "cmdDelete");
        for (QLineEdit* b : t.dialog.findChildren<QLineEdit*>())
            QVERIFY2(b->text().isEmpty(), qPrintable(b->objectName()));
        QCOMPARE(t.line(5), QStringLiteral("  5 ____________________"));
        QCOMPARE(s.prompter.shown.size(), std::size_t(2));
        QCOMPARE(shown(s.prompter.shown[1]),
                 std::string("Are you sure you want to delete the player name and "
                             "information?|Delete Player From Roster"));

        // The window's close box saves, with the last name still being typed.
        t.name(99, QString::fromUtf8("No\xC3\xABl Ninety"));
        t.dialog.close();
        QVERIFY(!t.dialog.isVisible());
        QVERIFY(s.dir.read("FBPI1.DAT").empty());
        QCOMPARE(s.dir.read("FBPN1.DAT").size(), std::size_t(603));
        QCOMPARE(s.bytes("FBPN1.DAT", 0, 19), player(3, "Three"));
        QCOMPARE(s.bytes("FBPN1.DAT", 201, 19), player(7, "Seven"));
        QCOMPARE(s.bytes("FBPN1.DAT", 402, 19), player(99, "No\xEBl Ninety"));
    }

    void rosterEnterMovesThroughTheBoxes() {
        Season s;
        RosterScreen t(s);
        const char* order[] = {"txtPlayerName", "txtPhone", "txtAddress1", "txtAddress2", "txtCity",
                               "txtState",      "txtZip",   "txtOther",    "cmdClose"};
        const char* typed[] = {"Quinn",       "555-0101", "12 Main St", "Apt 4",
                               "Springfield", "IL",       "62701",      "Loves the option"};
        t.get("txtPlayerName")->setFocus();
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(t.dialog.focusWidget()->objectName(), QString::fromLatin1(order[i]));
            QTest::keyClicks(t.dialog.focusWidget(), QString::fromLatin1(typed[i]));
            QTest::keyClick(t.dialog.focusWidget(), Qt::Key_Return);
        }
        QCOMPARE(t.dialog.focusWidget()->objectName(), QStringLiteral("cmdClose"));
        QVERIFY(t.dialog.isVisible());
        QCOMPARE(t.line(1), QStringLiteral("  1 Quinn            "));

        // Coming back into a box selects all of it.
        t.get("txtCity")->setFocus(Qt::MouseFocusReason);
        QTest::qWait(1);
        QCOMPARE(t.get("txtCity")->selectedText(), QStringLiteral("Springfield"));

        // Enter on the focused Close button presses it: the screen saves and closes.
        t.get<QPushButton>("cmdClose")->setFocus();
        QTest::keyClick(t.dialog.focusWidget(), Qt::Key_Return);
        QVERIFY(!t.dialog.isVisible());
        QVERIFY(sharedAccessKeys(&t.dialog).isEmpty());
        QCOMPARE(s.dir.read("FBPI1.DAT").size(), std::size_t(500));
        QCOMPARE(s.bytes("FBPI1.DAT", 0, 22), std::string("\x01\x00", 2) + fit("555-0101", 20));
        QCOMPARE(s.bytes("FBPI1.DAT", 102, 20), fit("Springfield", 20));
    }

    // The Import's preview shows each player of the CSV file; Import merges them into the roster,
    // saved when the roster screen closes. A file with problems lists them line by line and takes
    // nothing; a file that cannot be read is reported.
    void rosterImportPreviewsThenMerges() {
        Season s;
        s.saveRoster({{7, "Jones"}});
        RosterScreen t(s);
        QCOMPARE(t.get<QPushButton>("cmdImport")->text(), QStringLiteral("&Import..."));
        const auto csv = [&s](const char* name, const std::string& text) {
            s.dir.write(name, Bytes(text.begin(), text.end()));
            return fromUtf8(s.dir.file(name));
        };
        whenShown(nullptr, [&](QWidget* d) {
            auto* problems = child<QListWidget>(d, "lstProblems");
            QCOMPARE(lines(problems),
                     QStringList({"Line 2: the number 104 is not between 1 and 99.",
                                  "Line 3: number 3 is already on line 1."}));
            QVERIFY(!child<QPushButton>(d, "cmdImport")->isEnabled());
            press(d, "cmdClose");
        });
        t.dialog.importFrom(csv("bad.csv", "3,Brown\n104,Far Too Far\n3,Again\n"));
        QCOMPARE(t.line(3), QStringLiteral("  3 ____________________"));
        t.dialog.importFrom(fromUtf8(s.dir.file("none.csv")));
        QCOMPARE(s.prompter.shown.size(), std::size_t(1));
        QCOMPARE(shown(s.prompter.shown[0]),
                 "The file could not be read: " + s.dir.file("none.csv") +
                     " was not found.|Import Roster");

        bool seen = false;
        whenShown(nullptr, [&](QWidget* d) {
            seen = true;
            QCOMPARE(d->windowTitle(), QStringLiteral("Import Roster - Bears"));
            QVERIFY(sharedAccessKeys(d).isEmpty());
            QCOMPARE(child<QLabel>(d, "lblSummary")->text(),
                     QStringLiteral("The import adds 2 players and leaves 1 player unchanged. "
                                    "Columns left out: Position. The roster is saved when its "
                                    "screen is closed."));
            auto* rows = child<QTreeWidget>(d, "lstImport");
            QCOMPARE(rows->topLevelItemCount(), 3);
            QCOMPARE(rows->topLevelItem(0)->text(1), QStringLiteral("Brown, Jr."));
            QCOMPARE(rows->topLevelItem(0)->text(2), QStringLiteral("Added"));
            QCOMPARE(rows->topLevelItem(1)->text(2), QStringLiteral("No change"));
            // Enter presses Import, the default button.
            QTest::keyClick(rows, Qt::Key_Return);
            QVERIFY(!d->isVisible());
        });
        t.dialog.importFrom(csv("team.csv", "No.,Name,Phone,Position\r\n"
                                            "3,\"Brown, Jr.\",555-0003,QB\r\n"
                                            "7,Jones,,WR\r\n"
                                            "12,Smith,,TE\r\n"));
        QVERIFY(seen);
        QCOMPARE(t.line(3), QStringLiteral("  3 Brown, Jr.       "));
        QCOMPARE(t.line(12), QStringLiteral("12 Smith            "));
        QCOMPARE(s.dir.read("FBPN1.DAT").size(), std::size_t(201)); // nothing saved yet
        press(&t.dialog, "cmdClose");
        QCOMPARE(s.dir.read("FBPN1.DAT").size(), std::size_t(3 * 201));
        QCOMPARE(s.bytes("FBPN1.DAT", 2, 17), fit("Brown, Jr.", 17));
        QCOMPARE(s.dir.read("FBPI1.DAT").size(), std::size_t(500));
        QCOMPARE(s.bytes("FBPI1.DAT", 2, 20), fit("555-0003", 20));
    }
};

QTEST_MAIN(TestGameScreens)
#include "test_game_screens.moc"
