// The game list's Import from File: the preview of a press-box game and what OK writes.

#include "exchange/GameExport.h"
#include "exchange/ui/ImportFileDialog.h"
#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "support/FakePrompter.h"
#include "support/PressBoxFiles.h"
#include "support/TempDir.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include "gui/GuiChecks.h"

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// The team the sample season's games are kept for.
constexpr int kTeam = 1;

using Snapshot = FolderSnapshot;
Snapshot snapshot(const TempDir& dir) {
    return scorvane::testing::snapshot(dir.path());
}

// The sample season, whose first team is "Riverside Hawks": the file's "Riverside" is not matched
// by name, so the coach chooses the side.
struct Sample {
    TempDir dir;
    FakePrompter prompter;
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    TeamList teams;
    Snapshot before;
    Sample() {
        if (!writeSampleSeason(data) || !teams.load(data))
            qFatal("no sample season");
        before = snapshot(dir);
    }
    // The file's visitors with two newcomers, the two highest numbers the roster does not have.
    std::array<int, 2> newcomers{};
    std::unique_ptr<ImportFileDialog> preview(int selectedGame) {
        Roster roster;
        TeamFiles files = data.team(kTeam);
        (void)roster.load(files);
        for (int n = kMaxPlayers, k = 0; k < 2; --n)
            if (!roster.inUse[static_cast<std::size_t>(n)])
                newcomers[static_cast<std::size_t>(k++)] = n;
        PressBoxGame game = *readPressBox(kTotalsOnly).game;
        for (int n : newcomers) {
            PressBoxPlayer p;
            p.name = "New, No. " + digits(n);
            p.uni = digits(n);
            p.stats["rush"] = {{"att", "1"}, {"yds", "4"}};
            game.teams[0].players.push_back(p);
        }
        auto dialog = std::make_unique<ImportFileDialog>(
            data, prompter, teams, kTeam, game, QStringLiteral("/press/riverside-central.xml"),
            selectedGame);
        dialog->show();
        return dialog;
    }
};

QStringList items(const QListWidget* list) {
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
}

} // namespace

class TestImportFile : public QObject {
    Q_OBJECT

private slots:
    void theCoachChoosesTheSideAndSeesEveryPlayerBeforeAnythingIsWritten() {
        Sample s;
        auto dialog = s.preview(0);
        auto* ok = child<QPushButton>(dialog.get(), "cmdOK");
        QVERIFY(!ok->isEnabled());
        QCOMPARE(child<QLabel>(dialog.get(), "lblProblem")->text(),
                 QStringLiteral("Choose which side of the file is Riverside Hawks."));

        child<QComboBox>(dialog.get(), "cboSide")->setCurrentIndex(1);
        QVERIFY(ok->isEnabled());
        QCOMPARE(child<QLabel>(dialog.get(), "lblGame")->text(),
                 QStringLiteral("Game: 09/21/19 at Central, 20-17 (quarters and overtime: 7 0 3 7 "
                                "3 to 0 10 7 0 0)"));
        const auto* players = child<QTreeWidget>(dialog.get(), "tvwPlayers");
        QCOMPARE(players->topLevelItemCount(), 6);
        QCOMPARE(players->topLevelItem(5)->text(1), QStringLiteral("Add to the roster"));
        QCOMPARE(players->topLevelItem(5)->checkState(1), Qt::Checked);
        QTreeWidgetItem* kicker = players->topLevelItem(0);
        QCOMPARE(kicker->text(0), QStringLiteral("#3 Pratt, Di"));
        QCOMPARE(kicker->child(0)->text(0), QStringLiteral("KICKING: (no list)"));
        QTreeWidgetItem* passer = players->topLevelItem(1);
        QCOMPARE(passer->child(0)->text(0),
                 QStringLiteral("PASSING: Att 22 Cm 14 Yds 187 TD 2 Int 1 Lg 45 Sk 3 XPt 1"));
        QCOMPARE(items(child<QListWidget>(dialog.get(), "lstByHand")).size(), 2);
        QCOMPARE(items(child<QListWidget>(dialog.get(), "lstNotImported")).last(),
                 QStringLiteral("Team figures (TEAM)"));
        if (qEnvironmentVariableIsSet("SCORVANE_SHOTS"))
            dialog->grab().save(qEnvironmentVariable("SCORVANE_SHOTS") + "/import_preview.png");

        // Nothing is written by looking, nor by Cancel.
        press(dialog.get(), "cmdCancel");
        QCOMPARE(snapshot(s.dir), s.before);
    }

    void okWritesTheGameWithTheNumbersTheCoachAddsToTheRoster() {
        Sample s;
        auto dialog = s.preview(0);
        child<QComboBox>(dialog.get(), "cboSide")->setCurrentIndex(1);
        auto* players = child<QTreeWidget>(dialog.get(), "tvwPlayers");
        // Of the numbers the roster does not have, the coach leaves one out.
        // The lower newcomer, listed before the other.
        players->topLevelItem(4)->setCheckState(1, Qt::Unchecked);
        press(dialog.get(), "cmdOK");
        QCOMPARE(dialog->importedGame(), 11);

        GameSide side;
        QVERIFY(readGameSide(s.data, s.teams, kTeam, 11, side));
        QCOMPARE(side.results.at(22, categoryIndex('R')).values[0], std::int16_t{18});
        const auto [higher, lower] = s.newcomers;
        QVERIFY(!side.roster.inUse[static_cast<std::size_t>(lower)]);
        QVERIFY(side.roster.inUse[static_cast<std::size_t>(higher)]);
        QCOMPARE(trim(side.roster.names[static_cast<std::size_t>(higher)]),
                 "New, No. " + digits(higher));
        QCOMPARE(side.results.at(lower, categoryIndex('R')).values[0], std::int16_t{1});
    }

    void replacingAGamesResultsAsksFirstAndNoWritesNothing() {
        Sample s;
        auto dialog = s.preview(3);
        child<QComboBox>(dialog.get(), "cboSide")->setCurrentIndex(1);
        // A new game unless the coach chooses the game selected in the list, offered first.
        auto* target = child<QComboBox>(dialog.get(), "cboTarget");
        QCOMPARE(target->currentData().toInt(), 0);
        target->setCurrentIndex(1);
        QCOMPARE(target->currentData().toInt(), 3);
        s.prompter.answers = {Answer::No};
        press(dialog.get(), "cmdOK");
        QCOMPARE(s.prompter.shown.size(), std::size_t{1});
        QCOMPARE(s.prompter.shown[0].defaultAnswer, Answer::No);
        QCOMPARE(s.prompter.shown[0].text,
                 std::string("The player results of game 3 will be replaced by the file's. Do you "
                             "want to go on?"));
        QVERIFY(dialog->isVisible());
        QCOMPARE(snapshot(s.dir), s.before);

        s.prompter.answers = {Answer::Yes};
        press(dialog.get(), "cmdOK");
        QCOMPARE(dialog->importedGame(), 3);
        GameSide side;
        QVERIFY(readGameSide(s.data, s.teams, kTeam, 3, side));
        QCOMPARE(side.results.at(12, categoryIndex('P')).values[0], std::int16_t{22});
    }
};

QTEST_MAIN(TestImportFile)
#include "test_import_file.moc"
