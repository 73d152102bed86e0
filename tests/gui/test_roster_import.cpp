// The roster screen's Import: the preview of a CSV file and the merge into the roster.

#include "games/ui/RosterDialog.h"
#include "support/ScratchData.h"
#include "ui/TextCodec.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include "gui/GuiChecks.h"

#include <functional>

using namespace scorvane;

namespace {

// Team 1's roster (7 "Jones") in its screen.
struct Team : scorvane::testing::ScratchData {
    Roster roster;
    std::unique_ptr<RosterDialog> dialog;

    Team() {
        RosterEditor editor(roster);
        editor.select(7);
        editor.nameEntered("Jones");
        QVERIFY(editor.save(files).isOk());
        dialog =
            std::make_unique<RosterDialog>(data.team(1), roster, prompter, QStringLiteral("Bears"));
        dialog->show();
        (void)QTest::qWaitForWindowActive(dialog.get());
    }
    QString line(int number) const {
        return dialog->findChild<QListWidget*>("lstPlayerList")->item(number - 1)->text();
    }
    QString csv(const char* name, const std::string& text) const {
        dir.write(name, Bytes(text.begin(), text.end()));
        return fromUtf8(dir.file(name));
    }
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

} // namespace

class TestRosterImport : public QObject {
    Q_OBJECT

private slots:
    void thePreviewShowsEachPlayerAndImportMergesThem() {
        Team t;
        QVERIFY(scorvane::testing::sharedAccessKeys(t.dialog.get()).isEmpty());
        QCOMPARE(t.dialog->findChild<QPushButton*>("cmdImport")->text(),
                 QStringLiteral("&Import..."));
        const QString file = t.csv("team.csv", "No.,Name,Phone,Position\r\n"
                                               "3,\"Brown, Jr.\",555-0003,QB\r\n"
                                               "7,Jones,,WR\r\n"
                                               "12,Smith,,TE\r\n");
        bool shown = false;
        whenModalShows([&](QWidget* d) {
            shown = true;
            QCOMPARE(d->objectName(), QStringLiteral("frmRosterImport"));
            QCOMPARE(d->windowTitle(), QStringLiteral("Import Roster - Bears"));
            QVERIFY(scorvane::testing::sharedAccessKeys(d).isEmpty());
            QCOMPARE(d->findChild<QLabel*>("lblSummary")->text(),
                     QStringLiteral("The import adds 2 players and leaves 1 player unchanged. "
                                    "Columns left out: Position. The roster is saved when its "
                                    "screen is closed."));
            auto* rows = d->findChild<QTreeWidget*>("lstImport");
            QCOMPARE(rows->topLevelItemCount(), 3);
            QCOMPARE(rows->topLevelItem(0)->text(1), QStringLiteral("Brown, Jr."));
            QCOMPARE(rows->topLevelItem(0)->text(2), QStringLiteral("Added"));
            QCOMPARE(rows->topLevelItem(1)->text(2), QStringLiteral("No change"));
            // Enter presses Import, the default button.
            QTest::keyClick(rows, Qt::Key_Return);
            QVERIFY(!d->isVisible());
        });
        t.dialog->importFrom(file);
        QVERIFY(shown);
        QCOMPARE(t.line(3), QStringLiteral("  3 Brown, Jr.       "));
        QCOMPARE(t.line(12), QStringLiteral("12 Smith            "));

        // Saved as the roster screen saves: when it closes.
        QVERIFY(!t.dir.read("FBPN1.DAT").empty());
        QCOMPARE(t.dir.read("FBPN1.DAT").size(), std::size_t(201));
        t.dialog->findChild<QPushButton*>("cmdClose")->click();
        const Bytes roster = t.dir.read("FBPN1.DAT");
        QCOMPARE(roster.size(), std::size_t(3 * 201));
        QCOMPARE(std::string(roster.begin() + 2, roster.begin() + 19), fit("Brown, Jr.", 17));
        const Bytes info = t.dir.read("FBPI1.DAT");
        QCOMPARE(info.size(), std::size_t(500));
        QCOMPARE(std::string(info.begin() + 2, info.begin() + 22), fit("555-0003", 20));
    }

    void problemsAreListedLineByLineAndNothingIsTaken() {
        Team t;
        const QString file = t.csv("bad.csv", "3,Brown\n104,Far Too Far\n3,Again\n");
        whenModalShows([&](QWidget* d) {
            auto* problems = d->findChild<QListWidget*>("lstProblems");
            QVERIFY(problems);
            QCOMPARE(problems->count(), 2);
            QCOMPARE(problems->item(0)->text(),
                     QStringLiteral("Line 2: the number 104 is not between 1 and 99."));
            QCOMPARE(problems->item(1)->text(),
                     QStringLiteral("Line 3: number 3 is already on line 1."));
            QVERIFY(!d->findChild<QPushButton*>("cmdImport")->isEnabled());
            d->findChild<QPushButton*>("cmdClose")->click();
        });
        t.dialog->importFrom(file);
        QCOMPARE(t.line(3), QStringLiteral("  3 ____________________"));
        t.dialog->findChild<QPushButton*>("cmdClose")->click();
        QCOMPARE(t.dir.read("FBPN1.DAT").size(), std::size_t(201));
        QVERIFY(t.prompter.shown.empty());
    }

    void aFileThatCannotBeReadIsReported() {
        Team t;
        t.dialog->importFrom(fromUtf8(t.dir.file("none.csv")));
        QCOMPARE(t.prompter.shown.size(), std::size_t(1));
        QCOMPARE(t.prompter.shown[0].title, std::string("Import Roster"));
        QCOMPARE(t.prompter.shown[0].text,
                 "The file could not be read: " + t.dir.file("none.csv") + " was not found.");
    }
};

QTEST_MAIN(TestRosterImport)
#include "test_roster_import.moc"
