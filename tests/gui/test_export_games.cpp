// The game list's Export: the ticked games, each to its own file in a folder outside the data
// directory, as the high-school site's text or as press-box XML.

#include "exchange/GameExport.h"
#include "exchange/SiteText.h"
#include "exchange/ui/ExportGamesDialog.h"
#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "storage/SiteId.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
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

struct Sample {
    TempDir dir, out;
    FakePrompter prompter;
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    TeamList teams;
    ConfigRecord config = ConfigRecord::defaults();
    Snapshot before;
    Sample() {
        if (!writeSampleSeason(data) || !teams.load(data))
            qFatal("no sample season");
        before = snapshot(dir);
    }
    std::unique_ptr<ExportGamesDialog> dialog(int selectedGame, const std::string& folder) {
        auto d =
            std::make_unique<ExportGamesDialog>(data, prompter, teams, kTeam, config, selectedGame);
        child<QLineEdit>(d.get(), "txtFolder")->setText(QString::fromStdString(folder));
        d->show();
        return d;
    }
    GameSide side(int game) {
        GameSide g;
        if (!readGameSide(data, teams, kTeam, game, g))
            qFatal("no game %d", game);
        return g;
    }
    Bytes exported(const std::string& name) const { return out.read(name); }
};

Bytes bytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

} // namespace

class TestExportGames : public QObject {
    Q_OBJECT

private slots:
    void siteTextOfEachTickedGameGoesToItsOwnFileAndAReplaceNeedsAYes() {
        Sample s;
        auto dialog = s.dialog(1, s.out.dir());
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
        QCOMPARE(snapshot(s.out).size(), std::size_t{2});
        for (int game : {1, 2}) {
            const GameSide side = s.side(game);
            QCOMPARE(s.exported(siteFileName(side)), bytesOf(siteText(side, "")));
        }
        QCOMPARE(s.prompter.shown.back().text,
                 "Exported 2 games to " + s.out.path().string() +
                     ". The team has no high-school site ID, so the files have no ID line: set "
                     "it in the Team Name screen.");
        QVERIFY(!dialog->isVisible());
        QCOMPARE(snapshot(s.dir), s.before);

        // Both files are there now: No to the question leaves them as they are.
        const std::string name = siteFileName(s.side(1));
        s.out.write(name, bytesOf("kept"));
        const Snapshot outBefore = snapshot(s.out);
        dialog = s.dialog(2, s.out.dir());
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
        QCOMPARE(snapshot(s.out), outBefore);
    }

    void pressBoxXmlCarriesTheOpponentsSideAndNeverGoesIntoTheDataDirectory() {
        Sample s;
        int game = 1;
        std::optional<GameSide> theirs;
        for (; game <= 10 && !theirs; ++game)
            theirs = findOpponentSide(s.data, s.teams, s.side(game));
        QVERIFY(theirs);
        const GameSide ours = s.side(--game);

        auto dialog = s.dialog(game, s.dir.dir());
        press(dialog.get(), "cmdOK");
        QCOMPARE(s.prompter.shown.back().text,
                 std::string("Games are not exported into the data directory, where they would "
                             "be taken for the data files' own. Choose another folder."));
        QVERIFY(dialog->isVisible());
        QCOMPARE(snapshot(s.dir), s.before);

        child<QLineEdit>(dialog.get(), "txtFolder")->setText(QString::fromStdString(s.out.dir()));
        press(dialog.get(), "cmdOK");
        std::string name = siteFileName(ours);
        name.replace(name.size() - 4, 4, ".xml");
        QCOMPARE(s.exported(name), bytesOf(pressBoxXml(ours, &*theirs)));
        QCOMPARE(snapshot(s.out).size(), std::size_t{1});
        QCOMPARE(snapshot(s.dir), s.before);
    }
};

QTEST_MAIN(TestExportGames)
#include "test_export_games.moc"
