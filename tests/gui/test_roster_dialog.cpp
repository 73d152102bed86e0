// The roster screen: naming numbers, Enter moving through the boxes, deleting and saving.

#include "games/ui/RosterDialog.h"
#include "support/ScratchData.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "gui/GuiChecks.h"

using namespace scorvane;

namespace {

// Team 2's roster screen over an empty data directory.
struct Team : scorvane::testing::ScratchData {
    Roster roster;
    RosterDialog dialog{data.team(2), roster, prompter, QStringLiteral("Lions")};

    Team() {
        dialog.show();
        (void)QTest::qWaitForWindowActive(&dialog);
    }
    template <class W = QLineEdit> W* get(const char* name) { return dialog.findChild<W*>(name); }
    QString line(int number) { return get<QListWidget>("lstPlayerList")->item(number - 1)->text(); }
    // Selects a number, then types into the name box without leaving it.
    void name(int number, const QString& text) {
        get<QListWidget>("lstPlayerList")->setCurrentRow(number - 1);
        get("txtPlayerName")->setFocus();
        get("txtPlayerName")->insert(text);
    }
    std::string bytes(const char* file, std::size_t offset, std::size_t width) const {
        const Bytes b = dir.read(file);
        return std::string(b.begin() + long(offset), b.begin() + long(offset + width));
    }
};

// A roster record's number and name as stored.
std::string player(int number, const std::string& name) {
    return std::string{char(number), '\0'} + fit(name, 17);
}

} // namespace

class TestRosterDialog : public QObject {
    Q_OBJECT

private slots:
    void namesAreSavedInNumberOrder() {
        Team t;
        QCOMPARE(t.dialog.windowTitle(), QStringLiteral("Roster - Lions"));
        QCOMPARE(t.get<QListWidget>("lstPlayerList")->count(), 99);
        QCOMPARE(t.line(7), QStringLiteral("  7 ____________________"));
        QVERIFY(!t.get<QPushButton>("cmdPrint")->isEnabled());

        // Each name is taken over when the next number is selected, the last one on Close.
        t.name(7, QStringLiteral("Seven"));
        t.name(3, QStringLiteral("Three"));
        QCOMPARE(t.line(7), QStringLiteral("  7 Seven            "));
        t.name(99, QString::fromUtf8("No\xC3\xABl Ninety"));
        t.get<QPushButton>("cmdClose")->click();
        QCOMPARE(t.dir.read("FBPN2.DAT").size(), std::size_t(603));
        QCOMPARE(t.bytes("FBPN2.DAT", 0, 19), player(3, "Three"));
        QCOMPARE(t.bytes("FBPN2.DAT", 201, 19), player(7, "Seven"));
        QCOMPARE(t.bytes("FBPN2.DAT", 402, 19), player(99, "No\xEBl Ninety"));
    }
    void enterMovesThroughTheBoxes() {
        Team t;
        const char* order[] = {"txtPlayerName", "txtPhone", "txtAddress1", "txtAddress2", "txtCity",
                               "txtState",      "txtZip",   "txtOther",    "cmdClose"};
        const char* typed[] = {"Quinn",       "555-0101", "12 Main St", "Apt 4",
                               "Springfield", "IL",       "62701",      "Loves the option"};
        t.get("txtPlayerName")->setFocus();
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(order[i]));
            QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(typed[i]));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("cmdClose"));
        QVERIFY(t.dialog.isVisible());
        QCOMPARE(t.line(1), QStringLiteral("  1 Quinn            "));

        // Coming back into a box selects all of it.
        t.get("txtCity")->setFocus(Qt::MouseFocusReason);
        QTest::qWait(1);
        QCOMPARE(t.get("txtCity")->selectedText(), QStringLiteral("Springfield"));

        // Enter on the focused Close button presses it: the screen saves and closes.
        t.get<QPushButton>("cmdClose")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!t.dialog.isVisible());
        QVERIFY(scorvane::testing::sharedAccessKeys(&t.dialog).isEmpty());
        QCOMPARE(t.dir.read("FBPI2.DAT").size(), std::size_t(500));
        QCOMPARE(t.bytes("FBPI2.DAT", 0, 22), std::string("\x01\x00", 2) + fit("555-0101", 20));
        QCOMPARE(t.bytes("FBPI2.DAT", 102, 20), fit("Springfield", 20));
    }
    void deleteAsksAndTheCloseBoxSaves() {
        Team t;
        t.name(5, QStringLiteral("Five"));
        t.get("txtPhone")->setFocus();
        t.get("txtPhone")->insert(QStringLiteral("555"));
        t.prompter.answers = {Answer::No, Answer::Yes};
        t.get<QPushButton>("cmdDelete")->click();
        QCOMPARE(t.get("txtPlayerName")->text(), QStringLiteral("Five"));
        QCOMPARE(t.get("txtPhone")->text(), QStringLiteral("555"));
        t.get<QPushButton>("cmdDelete")->click();
        for (QLineEdit* b : t.dialog.findChildren<QLineEdit*>())
            QVERIFY2(b->text().isEmpty(), qPrintable(b->objectName()));
        QCOMPARE(t.line(5), QStringLiteral("  5 ____________________"));
        QCOMPARE(t.prompter.shown.size(), std::size_t(2));
        QCOMPARE(t.prompter.shown[1].text,
                 std::string("Are you sure you want to delete the player name and information?"));
        QCOMPARE(t.prompter.shown[1].title, std::string("Delete Player From Roster"));

        // The window's close box saves too, with the name still being typed.
        t.name(8, QStringLiteral("Eight"));
        t.dialog.close();
        QVERIFY(!t.dialog.isVisible());
        QCOMPARE(t.dir.read("FBPN2.DAT").size(), std::size_t(201));
        QCOMPARE(t.bytes("FBPN2.DAT", 0, 19), player(8, "Eight"));
        QVERIFY(t.dir.read("FBPI2.DAT").empty());
    }
};

QTEST_MAIN(TestRosterDialog)
#include "test_roster_dialog.moc"
