// Press-box games in and out: every figure of files written here from the format's public
// descriptions, the round trip of every sample game, and refused files that write nothing.
#include "exchange/GameExport.h"
#include "exchange/GameImport.h"
#include "faults/Operations.h"
#include "sample/SampleSeason.h"
#include "storage/StatLayout.h"
#include "support/PressBoxFiles.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace scorvane::testing {
namespace {

PressBoxGame read(std::string_view xml) {
    PressBoxRead r = readPressBox(xml);
    EXPECT_TRUE(r.game.has_value()) << r.error;
    return r.game.value_or(PressBoxGame{});
}

std::int16_t field(const GameImport& import, int player, char category, int column) {
    const CategoryResults& r = import.results.at(player, categoryIndex(category));
    return r
        .values[static_cast<std::size_t>(StatLayout::of(category)->byColumn(column)->screenField)];
}

TEST(PressBoxImport, EveryFigureOfATotalsOnlyGameLandsInItsColumn) {
    const PressBoxGame game = read(kTotalsOnly);
    ASSERT_EQ(matchSide(game, "riverside "), 0);
    EXPECT_EQ(matchSide(game, "CEN"), 1);
    EXPECT_EQ(matchSide(game, "Eastside"), std::nullopt);
    ImportBuild build = buildImport(game, 0, Roster{});
    ASSERT_TRUE(build.import) << build.error;
    const GameImport& im = *build.import;

    const GameRecord& g = im.game;
    EXPECT_EQ(g.gameDate, "092119");
    EXPECT_EQ(g.gameLocation, "Central Field       ");
    EXPECT_EQ(trim(g.opponent), "Central");
    EXPECT_EQ(g.homeFlag, '2');
    EXPECT_EQ(g.teamScore, (std::array<std::int16_t, 5>{7, 0, 3, 7, 3}));
    EXPECT_EQ(g.opponentScore, (std::array<std::int16_t, 5>{0, 10, 7, 0, 0}));
    EXPECT_EQ(g.overtimeFlag, -1);

    // Column codes of the column table, with the file's figure for each.
    struct Case {
        int player;
        char category;
        int column;
        int value;
    };
    const Case cases[] = {
        {12, 'P', 2, 22}, {12, 'P', 3, 14}, {12, 'P', 4, 187}, {12, 'P', 5, 1},  {12, 'P', 6, 2},
        {12, 'P', 8, 45}, {12, 'P', 7, 3},  {12, 'P', 12, 1},  {12, 'P', 10, 0}, {12, 'R', 2, 4},
        {12, 'R', 3, -6}, {12, 'R', 7, 11}, {12, 'R', 9, 2},   {12, 'R', 10, 1}, {22, 'R', 2, 18},
        {22, 'R', 3, 96}, {22, 'R', 4, 31}, {22, 'R', 5, 1},   {22, 'R', 7, 5},  {22, 'R', 8, 1},
        {22, 'C', 2, 3},  {22, 'C', 3, 27}, {22, 'C', 4, 1},   {22, 'C', 5, 15}, {22, 'C', 10, 1},
        {44, 'D', 3, 6},  {44, 'D', 4, 3},  {44, 'D', 5, 1},   {44, 'D', 6, 2},  {44, 'D', 7, 1},
        {44, 'D', 8, 1},  {44, 'D', 9, 1},  {44, 'D', 10, 15}, {44, 'D', 11, 1},
    };
    for (const Case& c : cases)
        EXPECT_EQ(field(im, c.player, c.category, c.column), c.value)
            << "#" << c.player << " " << c.category << " column " << c.column;

    const auto recorded = [&](int player) {
        std::string letters;
        for (int c = 0; c < kCategoryCount; ++c)
            if (im.results.at(player, c).played)
                letters += kCategoryLetters[static_cast<std::size_t>(c)];
        return letters;
    };
    EXPECT_EQ(recorded(12), "PR");
    EXPECT_EQ(recorded(22), "CRT");
    EXPECT_EQ(recorded(44), "D");
    EXPECT_EQ(recorded(3), "K");
    ASSERT_EQ(im.players.size(), 4u);
    EXPECT_FALSE(im.players[0].onRoster);
    EXPECT_EQ(trim(im.players[3].name), "Lund, Cy");

    // Totals only: the kicker's and the returner's lists are left to the coach.
    EXPECT_EQ(playCount(im.results.at(3, 4).plays), 0);
    EXPECT_EQ(im.byHand, (std::vector<std::string>{
                             "#22 Ortiz, Ben: 2 kick returns (the file has totals only)",
                             "#3 Pratt, Di: 3 field goal tries, 2 extra-point kicks, 5 punts "
                             "(the file has totals only)"}));
    EXPECT_EQ(im.notImported,
              (std::vector<std::string>{
                  "#12 Kell, Ada: pass sackyds 19",
                  "#44M Lund, Cy: defense sackyds 12; ir long 14, yds 14; ko no 4, tb 2, yds 240",
                  "Team figures (TEAM)"}));
}

TEST(PressBoxImport, KicksAndReturnsComeFromThePlayByPlayInTheirOrder) {
    ImportBuild build = buildImport(read(kPlayByPlay), 0, Roster{});
    ASSERT_TRUE(build.import) << build.error;
    const GameImport& im = *build.import;
    EXPECT_EQ(im.game.homeFlag, '1');
    EXPECT_TRUE(im.byHand.empty());
    const std::vector<ListEntry> kicks = usedPlays(im.results.at(3, 4).plays);
    EXPECT_EQ(kicks, (std::vector<ListEntry>{
                         {'F', 38, 2}, {'P', 44, 24}, {'F', 51, 4}, {'X', 0, 0}, {'P', 37, 32}}));
    const std::vector<ListEntry> returns = usedPlays(im.results.at(22, 5).plays);
    EXPECT_EQ(returns, (std::vector<ListEntry>{{'P', 15, 4}, {'K', 98, 8}, {'P', 0, 2}}));
}

// The names of the files that differ between two snapshots, or are in one only.
std::vector<std::string> changed(const Snapshot& before, const Snapshot& after) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : after)
        if (!before.count(name) || before.at(name) != bytes)
            names.push_back(name);
    for (const auto& [name, bytes] : before)
        if (!after.count(name))
            names.push_back(name);
    return names;
}

// A data directory with the sample season, and what its files hold.
struct Sample {
    TempDir dir;
    FakePrompter prompter;
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    TeamList teams;
    Sample() {
        EXPECT_TRUE(writeSampleSeason(data));
        EXPECT_TRUE(teams.load(data));
    }
};

TEST(PressBoxRoundTrip, EverySampleGameExportedAndImportedAgainLeavesTheFilesAsTheyWere) {
    Sample s;
    const Snapshot before = snapshot(s.dir);
    int bothSides = 0;
    for (int gameNumber = 1; gameNumber <= 10; ++gameNumber) {
        GameSide ours;
        ASSERT_TRUE(readGameSide(s.data, s.teams, kTeam, gameNumber, ours));
        const std::optional<GameSide> theirs = findOpponentSide(s.data, s.teams, ours);
        const PressBoxGame game = read(pressBoxXml(ours, theirs ? &*theirs : nullptr));
        std::vector<std::pair<const GameSide*, std::optional<int>>> sides = {
            {&ours, matchSide(game, ours.teamName)}};
        if (theirs) {
            ++bothSides;
            sides.emplace_back(&*theirs, matchSide(game, theirs->teamName));
        }
        for (const auto& [side, index] : sides) {
            ASSERT_TRUE(index) << "game " << gameNumber;
            ImportBuild build = buildImport(game, *index, side->roster);
            ASSERT_TRUE(build.import) << build.error;
            EXPECT_TRUE(build.import->byHand.empty()) << build.import->byHand.front();
            for (int n = 1; n <= kMaxPlayers; ++n)
                for (int c = 0; c < kCategoryCount; ++c)
                    ASSERT_EQ(build.import->results.at(n, c), side->results.at(n, c))
                        << "game " << gameNumber << " #" << n << " category " << c;
            TeamFiles files = s.data.team(side->team);
            int written = 0;
            const Status status =
                writeImport(files, *build.import, {side->game.gameNumber}, written);
            ASSERT_TRUE(status) << status.message();
            EXPECT_EQ(written, side->game.gameNumber);
        }
        EXPECT_EQ(changed(before, snapshot(s.dir)), std::vector<std::string>{})
            << "game " << gameNumber;
    }
    EXPECT_GT(bothSides, 0);
}

TEST(PressBoxImport, ANewGameGoesAfterTheLastWithItsResultsAndNewPlayers) {
    Sample s;
    TeamFiles files = s.data.team(kTeam);
    Roster roster;
    ASSERT_TRUE(roster.load(files));
    ImportBuild build = buildImport(read(kTotalsOnly), 0, roster);
    ASSERT_TRUE(build.import) << build.error;
    int written = 0;
    ASSERT_TRUE(writeImport(files, *build.import, {}, written));
    EXPECT_EQ(written, 11);

    GameSide side;
    ASSERT_TRUE(readGameSide(s.data, s.teams, kTeam, 11, side));
    EXPECT_EQ(trim(side.game.opponent), "Central");
    for (const ImportedPlayer& p : build.import->players) {
        EXPECT_TRUE(side.roster.inUse[static_cast<std::size_t>(p.number)]) << p.number;
        for (int c = 0; c < kCategoryCount; ++c) {
            EXPECT_EQ(side.results.at(p.number, c), build.import->results.at(p.number, c))
                << "#" << p.number << " category " << c;
        }
        if (!p.onRoster) {
            EXPECT_EQ(trim(side.roster.names[static_cast<std::size_t>(p.number)]), trim(p.name));
        }
    }
}

TEST(PressBoxImport, BadFilesAreRefusedWithTheirReasonAndNothingIsWritten) {
    const std::string good = kTotalsOnly;
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string xml = good;
        xml.replace(xml.find(from), from.size(), to);
        return xml;
    };
    struct Case {
        std::string name;
        std::string xml;
        std::string message; // a part of the message
    };
    std::string kicks19 = "<plays><qtr>";
    for (int i = 0; i < 19; ++i)
        kicks19 += "<play><p_pu vh=\"V\" uni=\"3\" gain=\"40\"/></play>";
    kicks19 += "</qtr></plays></fbgame>";
    const Case cases[] = {
        {"not XML", "Team,Score\nRiverside,20\n", "not readable XML (line 3"},
        {"cut short", good.substr(0, good.find("<player name=\"Ortiz")), "not readable XML (line"},
        {"another sport", "<bsgame><venue/></bsgame>", "first element is <bsgame>"},
        {"no team", "<fbgame><venue/></fbgame>", "no team"},
        {"no jersey", with("uni=\"22\" code=\"22\"", "uni=\"\" code=\"\""),
         "Line 16: the player Ortiz, Ben has no jersey number."},
        {"jersey 0", with("uni=\"22\"", "uni=\"0\""), "#0 Ortiz, Ben wears a number outside 1-99"},
        {"jersey 100", with("uni=\"22\"", "uni=\"100\""), "outside 1-99"},
        {"one number twice", with("uni=\"44M\"", "uni=\"12X\""), "both wear number 12"},
        {"past 16 bits", with("yds=\"187\"", "yds=\"40000\""),
         "the figure 40000 (yds) does not fit"},
        {"no number", with("yds=\"187\"", "yds=\"lots\""),
         "pass yds \"lots\" is not a whole number"},
        {"points overflow",
         with("score=\"7\"/><lineprd prd=\"2\" score=\"0\"",
              "score=\"30000\"/><lineprd prd=\"2\" score=\"5000\""),
         "the scores of Riverside do not fit"},
        {"19 kicks", with("</fbgame>", kicks19), "#3 Pratt, Di has 19 kicks in the file"},
        {"play yards",
         with("</fbgame>", "<plays><qtr><play><p_pu vh=\"V\" uni=\"3\" gain=\"x\"/>"
                           "</play></qtr></plays></fbgame>"),
         "the kick's yards is not a whole number"},
    };
    Sample s;
    const Snapshot before = snapshot(s.dir);
    for (const Case& c : cases) {
        const PressBoxRead r = readPressBox(c.xml);
        std::string error = r.error;
        if (r.game) {
            const ImportBuild build = buildImport(*r.game, 0, Roster{});
            EXPECT_FALSE(build.import) << c.name;
            error = build.error;
        }
        EXPECT_NE(error.find(c.message), std::string::npos) << c.name << ": " << error;
    }
    EXPECT_EQ(changed(before, snapshot(s.dir)), std::vector<std::string>{});
}

TEST(PressBoxImport, TheThousandthGameIsRefused) {
    Sample s;
    TeamFiles files = s.data.team(kTeam);
    std::vector<GameRecord> games;
    ASSERT_TRUE(files.readAllAs(FileKind::Games, games));
    while (games.size() < kMaxGames) {
        games.push_back(games.back());
        games.back().gameNumber = static_cast<std::int16_t>(games.size());
    }
    ASSERT_TRUE(files.replaceAllWith(FileKind::Games, games));
    const Snapshot before = snapshot(s.dir);
    ImportBuild build = buildImport(read(kTotalsOnly), 0, Roster{});
    int written = 0;
    const Status status = writeImport(files, *build.import, {}, written);
    EXPECT_FALSE(status);
    EXPECT_NE(status.message().find("999 at most"), std::string::npos) << status.message();
    EXPECT_EQ(changed(before, snapshot(s.dir)), std::vector<std::string>{});
}

} // namespace
} // namespace scorvane::testing
