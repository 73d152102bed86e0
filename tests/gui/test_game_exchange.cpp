// The game list's Export and Import from File over the sample season: the ticked games, each to
// its own file in a folder outside the data directory, as the high-school site's text or as
// press-box XML; the preview of a press-box game and what OK writes.

#include "exchange/GameExport.h"
#include "exchange/SiteText.h"
#include "exchange/ui/ExportGamesDialog.h"
#include "exchange/ui/ImportFileDialog.h"
#include "gui/GuiChecks.h"
#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "storage/SiteId.h"
#include "support/FakePrompter.h"
#include "support/PressBoxFiles.h"
#include "support/TempDir.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTreeWidget>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// The team the sample season's games are kept for: "Riverside Hawks". The press-box file's
// "Riverside" is not matched by name, so the coach chooses the side (the preview's second).
constexpr int kTeam = 1;

struct Sample {
    TempDir dir, out;
    FakePrompter prompter;
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    TeamList teams;
    ConfigRecord config = ConfigRecord::defaults();
    FolderSnapshot before;
    // The press-box file's visitors get two newcomers, the two highest numbers the roster lacks.
    std::array<int, 2> newcomers{};

    Sample() {
        if (!writeSampleSeason(data) || !teams.load(data))
            qFatal("no sample season");
        before = snapshot(dir.path());
    }
    std::unique_ptr<ExportGamesDialog> exporter(int selectedGame, const std::string& folder) {
        auto d =
            std::make_unique<ExportGamesDialog>(data, prompter, teams, kTeam, config, selectedGame);
        child<QLineEdit>(d.get(), "txtFolder")->setText(QString::fromStdString(folder));
        d->show();
        return d;
    }
    std::unique_ptr<ImportFileDialog> preview(int selectedGame, bool chooseSide = true) {
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
        if (chooseSide)
            child<QComboBox>(dialog.get(), "cboSide")->setCurrentIndex(1);
        return dialog;
    }
    GameSide side(int game) {
        GameSide g;
        if (!readGameSide(data, teams, kTeam, game, g))
            qFatal("no game %d", game);
        return g;
    }
    bool dataUnchanged() const { return snapshot(dir.path()) == before; }
};

Bytes bytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

} // namespace

class TestGameExchange : public QObject {
    Q_OBJECT

private slots:
    void siteTextOfEachTickedGameGoesToItsOwnFileAndAReplaceNeedsAYes() {
        Sample s;
        auto dialog = s.exporter(1, s.out.dir());
        QVERIFY(sharedAccessKeys(dialog.get()).isEmpty());
        auto* games = child<QListWidget>(dialog.get(), "lstGames");
        auto* ok = child<QPushButton>(dialog.get(), "cmdOK");
        QCOMPARE(games->count(), 10);
        QCOMPARE(games->item(0)->checkState(), Qt::Checked);
        games->item(0)->setCheckState(Qt::Unchecked);
        QVERIFY(!ok->isEnabled());
        games->item(0)->setCheckState(Qt::Checked);
        games->item(1)->setCheckState(Qt::Checked);
        child<QRadioButton>(dialog.get(), "optSiteText")->setChecked(true);
        if (qEnvironmentVariableIsSet("SCORVANE_SHOTS"))
            dialog->grab().save(qEnvironmentVariable("SCORVANE_SHOTS") + "/export_games.png");
        press(dialog.get(), "cmdOK");

        // The sample's team has no site ID: its files begin with the header.
        QCOMPARE(snapshot(s.out.path()).size(), std::size_t{2});
        for (int game : {1, 2}) {
            const GameSide side = s.side(game);
            QCOMPARE(s.out.read(siteFileName(side)), bytesOf(siteText(side, "")));
        }
        QCOMPARE(s.prompter.shown.back().text,
                 "Exported 2 games to " + s.out.path().string() +
                     ". The team has no high-school site ID, so the files have no ID line: set "
                     "it in the Team Name screen.");
        QVERIFY(!dialog->isVisible());
        QVERIFY(s.dataUnchanged());

        // Both files are there now: No to the question leaves them as they are.
        s.out.write(siteFileName(s.side(1)), bytesOf("kept"));
        const FolderSnapshot outBefore = snapshot(s.out.path());
        dialog = s.exporter(2, s.out.dir());
        games = child<QListWidget>(dialog.get(), "lstGames");
        games->item(0)->setCheckState(Qt::Checked);
        child<QRadioButton>(dialog.get(), "optSiteText")->setChecked(true);
        s.prompter.shown.clear();
        QTest::keyClick(games, Qt::Key_Return); // Enter exports
        QCOMPARE(s.prompter.shown.size(), std::size_t{1});
        QCOMPARE(s.prompter.shown[0],
                 (Message{"2 files already exist in the folder. Replace them?", "Export Games",
                          Buttons::YesNo, Icon::Question, Answer::No}));
        QVERIFY(dialog->isVisible());
        QCOMPARE(snapshot(s.out.path()), outBefore);
    }

    void pressBoxXmlCarriesTheOpponentsSideAndNeverGoesIntoTheDataDirectory() {
        Sample s;
        int game = 1;
        std::optional<GameSide> theirs;
        for (; game <= 10 && !theirs; ++game)
            theirs = findOpponentSide(s.data, s.teams, s.side(game));
        QVERIFY(theirs);
        const GameSide ours = s.side(--game);

        auto dialog = s.exporter(game, s.dir.dir());
        press(dialog.get(), "cmdOK");
        QCOMPARE(s.prompter.shown.back().text,
                 std::string("Games are not exported into the data directory, where they would "
                             "be taken for the data files' own. Choose another folder."));
        QVERIFY(dialog->isVisible());
        QVERIFY(s.dataUnchanged());

        child<QLineEdit>(dialog.get(), "txtFolder")->setText(QString::fromStdString(s.out.dir()));
        press(dialog.get(), "cmdOK");
        std::string name = siteFileName(ours);
        name.replace(name.size() - 4, 4, ".xml");
        QCOMPARE(s.out.read(name), bytesOf(pressBoxXml(ours, &*theirs)));
        QCOMPARE(snapshot(s.out.path()).size(), std::size_t{1});
        QVERIFY(s.dataUnchanged());
    }

    // The coach chooses the side and sees every player before anything is written; replacing a
    // game's results asks first, and No writes nothing; OK writes a new game with the numbers the
    // coach adds to the roster.
    void theCoachChoosesTheSideSeesEveryPlayerAndOkWritesTheGame() {
        Sample s;
        auto dialog = s.preview(0, false);
        auto* side = child<QComboBox>(dialog.get(), "cboSide");
        auto* ok = child<QPushButton>(dialog.get(), "cmdOK");
        QVERIFY(!ok->isEnabled());
        QCOMPARE(child<QLabel>(dialog.get(), "lblProblem")->text(),
                 QStringLiteral("Choose which side of the file is Riverside Hawks."));

        side->setCurrentIndex(1);
        QVERIFY(ok->isEnabled());
        QCOMPARE(child<QLabel>(dialog.get(), "lblGame")->text(),
                 QStringLiteral("Game: 09/21/19 at Central, 20-17 (quarters and overtime: 7 0 3 7 "
                                "3 to 0 10 7 0 0)"));
        const auto* players = child<QTreeWidget>(dialog.get(), "tvwPlayers");
        QCOMPARE(players->topLevelItemCount(), 6);
        QCOMPARE(players->topLevelItem(5)->text(1), QStringLiteral("Add to the roster"));
        QCOMPARE(players->topLevelItem(5)->checkState(1), Qt::Checked);
        QTreeWidgetItem* kicker = players->topLevelItem(0);
        QCOMPARE(QStringList({kicker->text(0), kicker->child(0)->text(0)}),
                 QStringList({"#3 Pratt, Di", "KICKING: (no list)"}));
        QCOMPARE(players->topLevelItem(1)->child(0)->text(0),
                 QStringLiteral("PASSING: Att 22 Cm 14 Yds 187 TD 2 Int 1 Lg 45 Sk 3 XPt 1"));
        QCOMPARE(child<QListWidget>(dialog.get(), "lstByHand")->count(), 2);
        QCOMPARE(lines(child<QListWidget>(dialog.get(), "lstNotImported")).last(),
                 QStringLiteral("Team figures (TEAM)"));
        if (qEnvironmentVariableIsSet("SCORVANE_SHOTS"))
            dialog->grab().save(qEnvironmentVariable("SCORVANE_SHOTS") + "/import_preview.png");

        // Nothing is written by looking, nor by Cancel.
        press(dialog.get(), "cmdCancel");
        QVERIFY(s.dataUnchanged());

        dialog = s.preview(3);
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
        QVERIFY(s.dataUnchanged());

        s.prompter.answers = {Answer::Yes};
        press(dialog.get(), "cmdOK");
        QCOMPARE(dialog->importedGame(), 3);
        QCOMPARE(s.side(3).results.at(12, categoryIndex('P')).values[0], std::int16_t{22});

        // A new game: of the numbers the roster does not have, the coach leaves one out, the lower
        // newcomer, listed before the other.
        dialog = s.preview(0);
        child<QTreeWidget>(dialog.get(), "tvwPlayers")
            ->topLevelItem(4)
            ->setCheckState(1, Qt::Unchecked);
        press(dialog.get(), "cmdOK");
        QCOMPARE(dialog->importedGame(), 11);

        const GameSide game = s.side(11);
        QCOMPARE(game.results.at(22, categoryIndex('R')).values[0], std::int16_t{18});
        const auto [higher, lower] = s.newcomers;
        QVERIFY(!game.roster.inUse[static_cast<std::size_t>(lower)]);
        QVERIFY(game.roster.inUse[static_cast<std::size_t>(higher)]);
        QCOMPARE(trim(game.roster.names[static_cast<std::size_t>(higher)]),
                 "New, No. " + digits(higher));
        QCOMPARE(game.results.at(lower, categoryIndex('R')).values[0], std::int16_t{1});
    }
};

QTEST_MAIN(TestGameExchange)
#include "test_game_exchange.moc"
