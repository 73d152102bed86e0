#include "entry/ui/PlayerScreenDialog.h"
#include "games/GameList.h"
#include "games/Roster.h"
#include "games/ui/GameMenuDialog.h"
#include "gui/GuiChecks.h"
#include "shell/TeamSelection.h"
#include "support/ScratchData.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

using namespace scorvane;

namespace {

// Team 1 "Bears" with players 4 "Adams" and 12 "Baker" and one game against the Lions.
struct Season : scorvane::testing::ScratchData {
    ConfigRecord config = ConfigRecord::defaults();
    ColumnTable columns{config};
    TeamSelection teams;
    GameList games;

    Season() {
        QVERIFY(TeamSelection::createTeamList(data).isOk());
        QVERIFY(teams.storeNames(data, 1, "Bears", "").isOk());
        Roster roster;
        for (auto [number, name] : {std::pair{4, "Adams"}, {12, "Baker"}}) {
            roster.inUse[static_cast<std::size_t>(number)] = true;
            roster.names[static_cast<std::size_t>(number)] = fit(name, 17);
        }
        QVERIFY(roster.saveNames(files).isOk());
        GameRecord g;
        g.opponent = fit("Lions", 25);
        g.teamScore = {7, 0, 3, 0, 0};
        QVERIFY(games.append(files, g).isOk());
    }
};

QLineEdit* catField(QWidget* d, int n) {
    return d->findChild<QLineEdit*>(QStringLiteral("txtCat%1").arg(n));
}
// Types into a box as the user does: the box takes the focus (and selects what it holds) first.
void type(QLineEdit* box, const QString& text) {
    box->setFocus(Qt::TabFocusReason);
    QTest::qWait(1);
    QTest::keyClicks(box, text);
}
QString label(QWidget* d, const char* name) {
    return d->findChild<QLabel*>(name)->text();
}
QTableWidget* table(QWidget* d) {
    return d->findChild<QTableWidget*>("tblPlayerList");
}
void press(QWidget* d, const char* name) {
    d->findChild<QPushButton*>(name)->click();
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
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names << QApplication::focusWidget()->objectName();
    }
    return names;
}

} // namespace

class TestPlayerScreen : public QObject {
    Q_OBJECT

private slots:
    void opensOnTheFirstPlayerInPassing() {
        Season s;
        PlayerScreenDialog d(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
        d.show();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QCOMPARE(d.windowTitle(), QStringLiteral("Player Statistics"));
        QCOMPARE(label(&d, "lblGameNumber"), QStringLiteral("Game 1"));
        QCOMPARE(table(&d)->rowCount(), 2);
        QCOMPARE(table(&d)->item(1, 7)->text(), QStringLiteral("Baker"));
        QCOMPARE(table(&d)->currentRow(), 0);
        QCOMPARE(table(&d)->currentColumn(), 0);
        QCOMPARE(label(&d, "lblStatType"), QStringLiteral("PASSING"));
        QCOMPARE(label(&d, "lblCat0"), QStringLiteral("Att"));
        QVERIFY(catField(&d, 12)->isVisible() && !catField(&d, 13)->isVisible());
        QVERIFY(catField(&d, 22)->isVisible());
        QVERIFY(scorvane::testing::sharedAccessKeys(&d).isEmpty());
    }

    // Keys a field refuses never reach it; "-" only where yards can be negative.
    void theFieldsTakeOnlyTheirKeys() {
        Season s;
        PlayerScreenDialog d(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
        d.show();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        type(catField(&d, 0), QStringLiteral("1a-2."));
        QCOMPARE(catField(&d, 0)->text(), QStringLiteral("12"));
        QCOMPARE(label(&d, "lblMsg"), QStringLiteral("Attempts "));
        type(catField(&d, 2), QStringLiteral("-7x"));
        QCOMPARE(catField(&d, 2)->text(), QStringLiteral("-7"));
        // Enter in the last passing field goes on to the first user field.
        catField(&d, 12)->setFocus();
        QTest::keyClick(catField(&d, 12), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), catField(&d, 22));
        QVERIFY(d.findChild<QCheckBox*>("chkPlayed")->isChecked());
        // Unticking Played clears the panel and puts the cursor in its first field.
        auto* played = d.findChild<QCheckBox*>("chkPlayed");
        QTest::mouseClick(played, Qt::LeftButton, {}, QPoint(8, played->height() / 2));
        QVERIFY(!played->isChecked());
        QCOMPARE(catField(&d, 2)->text(), QStringLiteral("0"));
        QCOMPARE(QApplication::focusWidget(), catField(&d, 0));
    }

    // Tab leaves the table at once and goes through the panels in reading order, the kick and
    // return controls included.
    void tabGoesThroughTheScreenInReadingOrder() {
        Season s;
        PlayerScreenDialog d(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
        d.show();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        clickCell(table(&d), 1, 4);
        QCOMPARE(tabChain(table(&d), 2), QStringList({"chkPlayed", "txtCat22"}));
        QCOMPARE(table(&d)->currentRow() * 10 + table(&d)->currentColumn(), 14);
        QCOMPARE(tabChain(catField(&d, 26), 13),
                 QStringList({"optFG", "optXpt", "optPunt", "txtKYards", "chkKGood", "chkKBlocked",
                              "chkKFairCatch", "chkKInside20", "chkKTouchback", "cmdAddKick",
                              "lstKicks", "cmdDeleteKick", "cmdTeam"}));
        clickCell(table(&d), 1, 5);
        QCOMPARE(
            tabChain(catField(&d, 26), 10),
            QStringList({"optPuntReturn", "optKickReturn", "txtYards", "chkFairCatch", "chkFumble",
                         "chkTD", "cmdAddReturn", "lstReturns", "cmdDeleteReturn", "cmdTeam"}));
    }

    // A click on another player while the entries break a rule keeps the table on the current
    // player and category, shows the rule and puts the cursor in its field.
    void aFailedCheckKeepsThePlayerAndCategory() {
        Season s;
        PlayerScreenDialog d(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
        d.show();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        type(catField(&d, 0), QStringLiteral("10"));
        type(catField(&d, 1), QStringLiteral("6"));
        type(catField(&d, 4), QStringLiteral("5"));
        clickCell(table(&d), 1, 3);
        QCOMPARE(s.prompter.shown.size(), std::size_t(1));
        QCOMPARE(s.prompter.shown[0].text + "|" + s.prompter.shown[0].title,
                 std::string("Cm + Int > Att|Error"));
        QCOMPARE(table(&d)->currentRow(), 0);
        QCOMPARE(table(&d)->currentColumn(), 0);
        QCOMPARE(label(&d, "lblStatType"), QStringLiteral("PASSING"));
        QCOMPARE(d.focusWidget(), catField(&d, 0));
        const QStringList onAdams = {"0,0", "0,0", "0,1", "0,2", "0,3", "0,4", "0,5"};
        QCOMPARE(highlight(table(&d)), onAdams);
        // An arrow key in the table is refused the same way.
        table(&d)->setFocus();
        QTest::keyClick(table(&d), Qt::Key_Down);
        QCOMPARE(s.prompter.shown.size(), std::size_t(2));
        QCOMPARE(highlight(table(&d)), onAdams);
        QCOMPARE(d.focusWidget(), catField(&d, 0));
        // So is Team Totals, and the cursor goes to the field to correct.
        type(catField(&d, 4), QStringLiteral("5"));
        press(&d, "cmdTeam");
        QCOMPARE(s.prompter.shown.size(), std::size_t(3));
        QCOMPARE(d.focusWidget(), catField(&d, 0));

        // Corrected, the click goes through: Baker's defense panel.
        type(catField(&d, 0), QStringLiteral("11"));
        clickCell(table(&d), 1, 3);
        QCOMPARE(table(&d)->currentRow(), 1);
        QCOMPARE(label(&d, "lblStatType"), QStringLiteral("DEFENSE"));
        QVERIFY(d.findChild<QLabel*>("lblSack")->isVisible());
        QCOMPARE(label(&d, "lblPasserCount"), QStringLiteral("1"));
    }

    // Cancel asks, and Yes leaves without writing anything.
    void cancelWritesNothing() {
        Season s;
        const Bytes before = s.dir.read("FBPS1.DAT");
        PlayerScreenDialog d(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
        d.show();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        type(catField(&d, 0), QStringLiteral("3"));
        clickCell(table(&d), 1, 2);
        type(catField(&d, 0), QStringLiteral("9"));
        s.prompter.answers = {Answer::No, Answer::Yes};
        press(&d, "cmdCancel");
        QVERIFY(d.isVisible());
        QCOMPARE(d.focusWidget(), catField(&d, 0));
        press(&d, "cmdCancel");
        QVERIFY(!d.isVisible());
        QCOMPARE(s.prompter.shown.back().text + "|" + s.prompter.shown.back().title,
                 std::string("Do you really want to cancel?|Player Statistics Changed!"));
        QCOMPARE(s.dir.read("FBPS1.DAT"), before);
    }

    // OK writes the results; the team totals view sums them.
    void okSavesAndTeamTotalsSum() {
        Season s;
        {
            PlayerScreenDialog d(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
            d.show();
            QVERIFY(QTest::qWaitForWindowActive(&d));
            type(catField(&d, 0), QStringLiteral("4"));
            type(catField(&d, 1), QStringLiteral("2"));
            type(catField(&d, 5), QStringLiteral("40"));
            clickCell(table(&d), 1, 0);
            type(catField(&d, 0), QStringLiteral("3"));
            type(catField(&d, 1), QStringLiteral("1"));
            type(catField(&d, 5), QStringLiteral("25"));
            press(&d, "cmdTeam");
            QCOMPARE(label(&d, "lblPlayerName"), QStringLiteral("Team Totals"));
            QCOMPARE(catField(&d, 5)->text(), QStringLiteral("65"));
            QCOMPARE(label(&d, "lblMsg"), QStringLiteral("Players Recorded - 2"));
            QCOMPARE(d.findChild<QPushButton*>("cmdTeam")->text(), QStringLiteral("&Players"));
            press(&d, "cmdTeam");
            QCOMPARE(catField(&d, 5)->text(), QStringLiteral("25"));
            press(&d, "cmdOK");
            QVERIFY(!d.isVisible());
            QCOMPARE(d.leftTo(), PlayerScreen::Leave::GameList);
        }
        QCOMPARE(s.dir.read("FBPS1.DAT").size(), std::size_t(2 * 110));
        PlayerScreenDialog again(s.files, 1, s.columns, s.prompter, QStringLiteral("Bears"), {});
        QCOMPARE(catField(&again, 5)->text(), QStringLiteral("40"));
        QCOMPARE(label(&again, "lblPasserCount"), QStringLiteral("2"));
    }

    // Adding a game leads straight to its player screen; Players opens it for the selected game.
    void addingAGameLeadsToThePlayerScreen() {
        Season s;
        GameMenuDialog menu(s.data, s.prompter, s.config, s.teams, 1);
        QList<int> opened;
        menu.setPlayerScreen([&](int game) {
            opened << game;
            return false;
        });
        menu.show();
        QVERIFY(QTest::qWaitForWindowActive(&menu));
        QTimer::singleShot(0, [] {
            QWidget* game = QApplication::activeModalWidget();
            QTest::keyClicks(game->findChild<QLineEdit*>("txtGameDate"), QStringLiteral("091225"));
            QTest::keyClicks(game->findChild<QLineEdit*>("txtScore1"), QStringLiteral("7"));
            game->findChild<QPushButton*>("cmdOK")->click();
        });
        press(&menu, "cmdAddGame");
        QCOMPARE(opened, QList<int>({2}));
        QCOMPARE(s.dir.read("FBGS1.DAT").size(), std::size_t(400));

        auto* list = menu.findChild<QListWidget*>("lstGameMenu");
        list->setCurrentRow(0);
        press(&menu, "cmdPlayers");
        QCOMPARE(opened, QList<int>({2, 1}));
    }
};

QTEST_MAIN(TestPlayerScreen)
#include "test_player_screen.moc"
