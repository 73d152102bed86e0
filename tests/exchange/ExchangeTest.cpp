// Games in and out: press-box files written here from the format's public descriptions, the round
// trip of every sample game, refused files that write nothing, the high-school stats site's text
// of a sample game checked field by field against the statistics records, the team's site id file,
// and the export and import commands.
#include "exchange/ExchangeCommand.h"
#include "exchange/GameExport.h"
#include "exchange/GameImport.h"
#include "exchange/SiteText.h"
#include "faults/Operations.h"
#include "reports/ReportChecks.h"
#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "storage/SiteId.h"
#include "storage/StatLayout.h"
#include "support/PressBoxFiles.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace scorvane::testing {
namespace {

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
    GameSide side(int game) {
        GameSide s;
        EXPECT_TRUE(readGameSide(data, teams, kTeam, game, s));
        return s;
    }
};

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
    EXPECT_EQ(im.byHand, (Strings{"#22 Ortiz, Ben: 2 kick returns (the file has totals only)",
                                  "#3 Pratt, Di: 3 field goal tries, 2 extra-point kicks, 5 punts "
                                  "(the file has totals only)"}));
    EXPECT_EQ(
        im.notImported,
        (Strings{"#12 Kell, Ada: pass sackyds 19",
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

TEST(PressBoxRoundTrip, EverySampleGameExportedAndImportedAgainLeavesTheFilesAsTheyWere) {
    Sample s;
    const FolderSnapshot before = snapshot(s.dir.path());
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
        EXPECT_EQ(snapshot(s.dir.path()), before) << "game " << gameNumber;
    }
    EXPECT_GT(bothSides, 0);
}

// A new game goes after the last with its results and new players; the thousandth is refused.
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

    // The thousandth game is refused, and nothing is written.
    std::vector<GameRecord> games;
    ASSERT_TRUE(files.readAllAs(FileKind::Games, games));
    while (games.size() < kMaxGames) {
        games.push_back(games.back());
        games.back().gameNumber = static_cast<std::int16_t>(games.size());
    }
    ASSERT_TRUE(files.replaceAllWith(FileKind::Games, games));
    const FolderSnapshot before = snapshot(s.dir.path());
    const Status status = writeImport(files, *build.import, {}, written);
    EXPECT_FALSE(status);
    EXPECT_NE(status.message().find("999 at most"), std::string::npos) << status.message();
    EXPECT_EQ(snapshot(s.dir.path()), before);
}

TEST(PressBoxImport, BadFilesAreRefusedWithTheirReason) {
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
}

// The text's rows by jersey, each a map from header field to cell.
using Rows = std::map<std::string, std::map<std::string, std::string>>;

Rows rowsOf(const std::string& text, std::size_t headerLine) {
    Strings lines = split(text, "\r\n");
    EXPECT_EQ(lines.back(), ""); // every line ends in CR LF
    lines.pop_back();
    const Strings header = split(lines.at(headerLine), "|");
    EXPECT_EQ(header.front(), "Jersey");
    Rows rows;
    for (std::size_t i = headerLine + 1; i < lines.size(); ++i) {
        const Strings cells = split(lines[i], "|");
        EXPECT_EQ(cells.size(), header.size()) << lines[i];
        for (std::size_t c = 0; c < cells.size() && c < header.size(); ++c)
            rows[cells.front()][header[c]] = cells[c];
    }
    return rows;
}

TEST(SiteText, TheSampleSeasonsFirstGameMatchesItsRecordsFieldByField) {
    Sample sample;
    GameSide side = sample.side(1);
    // Half sacks, which the sample has none of, on the first defender recorded.
    int defender = 0;
    for (int n = kMaxPlayers; n >= 1; --n)
        if (side.results.at(n, 3).played)
            defender = n;
    ASSERT_NE(defender, 0);
    side.results.at(defender, 3).values[7] = 15;

    const std::string text = siteText(side, "");
    const Rows rows = rowsOf(text, 0);
    // Fields that are one entered value, by category and screen field (StatLayout.h).
    const std::vector<Strings> direct = {
        {"PassingAtt", "PassingComp", "PassingYards", "PassingTD", "PassingInt", "PassingLong"},
        {"ReceivingNum", "", "ReceivingYards", "", "ReceivingTDNum", "ReceivingLong", "", "", "",
         "", "", "PATReceivingNum"},
        {"RushingNum", "RushingYards", "", "RushingTDNum", "RushingLong", "", "", "", "",
         "PATRushingNum"},
        {"Tackles", "Assists", "INTs", "PassesDefensed", "QBHurries", "FumbleRecoveries",
         "CausedFumbles"}};
    std::size_t players = 0;
    bool kicker = false, returner = false;
    for (int n = 1; n <= kMaxPlayers; ++n) {
        auto r = [&](int c) -> const CategoryResults& { return side.results.at(n, c); };
        if (!(r(0).played || r(1).played || r(2).played || r(3).played || r(4).played ||
              r(5).played)) {
            EXPECT_EQ(rows.count(std::to_string(n)), 0u) << n;
            continue;
        }
        ++players;
        const auto& row = rows.at(std::to_string(n));
        for (std::size_t c = 0; c < direct.size(); ++c)
            for (std::size_t f = 0; f < direct[c].size(); ++f)
                if (!direct[c][f].empty()) {
                    const int i = static_cast<int>(c);
                    EXPECT_EQ(row.at(direct[c][f]),
                              r(i).played ? std::to_string(r(i).values[f]) : "")
                        << "#" << n << " " << direct[c][f];
                }
        if (r(3).played) {
            EXPECT_EQ(row.at("TotalTackles"), std::to_string(r(3).values[0] + r(3).values[1]));
        }
        const int fumbles = (r(0).played ? r(0).values[9] : 0) +
                            (r(1).played ? r(1).values[8] : 0) + (r(2).played ? r(2).values[6] : 0);
        EXPECT_EQ(row.at("OffensiveFumbles"),
                  r(0).played || r(1).played || r(2).played ? std::to_string(fumbles) : "");
        // Kicks and returns from the per-play lists, by their mark bits.
        std::map<char, std::vector<const ListEntry*>> kicks, returns;
        for (const ListEntry& e : r(4).plays)
            if (r(4).played && e.type != ' ')
                kicks[e.type].push_back(&e);
        for (const ListEntry& e : r(5).plays)
            if (r(5).played && e.type != ' ')
                returns[e.type].push_back(&e);
        if (!kicks['F'].empty()) {
            kicker = true;
            int made = 0, longest = 0;
            for (const ListEntry* e : kicks['F'])
                if (e->marks == kickmark::Good) {
                    ++made;
                    longest = std::max<int>(longest, e->yards);
                }
            EXPECT_EQ(row.at("FGMade"), std::to_string(made));
            EXPECT_EQ(row.at("FGAttempted"), std::to_string(kicks['F'].size()));
            EXPECT_EQ(row.at("FGLong"), made ? std::to_string(longest) : "");
        }
        if (!kicks['P'].empty()) {
            int yards = 0, in20 = 0;
            for (const ListEntry* e : kicks['P']) {
                yards += e->yards;
                in20 += (e->marks & kickmark::Inside20) ? 1 : 0;
            }
            EXPECT_EQ(row.at("PuntNum"), std::to_string(kicks['P'].size()));
            EXPECT_EQ(row.at("PuntYards"), std::to_string(yards));
            EXPECT_EQ(row.at("PuntInside20"), std::to_string(in20));
        }
        EXPECT_EQ(row.at("PATKickingAtt"),
                  kicks['X'].empty() ? "" : std::to_string(kicks['X'].size()));
        for (const auto& [type, prefix] : {std::pair{'K', "Kickoff"}, std::pair{'P', "Punt"}}) {
            int number = 0, yards = 0, tds = 0;
            for (const ListEntry* e : returns[type]) {
                const bool fairCatch = (e->marks & returnmark::FairCatch) != 0;
                number += fairCatch ? 0 : 1;
                yards += fairCatch ? 0 : e->yards;
                tds += (e->marks & returnmark::Touchdown) ? 1 : 0;
            }
            const bool any = !returns[type].empty();
            returner = returner || any;
            EXPECT_EQ(row.at(std::string(prefix) + "ReturnNum"), any ? std::to_string(number) : "");
            EXPECT_EQ(row.at(std::string(prefix) + "ReturnYards"),
                      any ? std::to_string(yards) : "");
            EXPECT_EQ(row.at(std::string(prefix) + "ReturnedTDNum"),
                      any ? std::to_string(tds) : "");
        }
    }
    EXPECT_EQ(rows.size(), players);
    EXPECT_TRUE(kicker && returner); // the sample game has both, so they were checked
    EXPECT_EQ(rows.at(std::to_string(defender)).at("Sacks"), "1.5");
    side.results.at(defender, 3).values[7] = 5;
    EXPECT_EQ(rowsOf(siteText(side, "ID"), 1).at(std::to_string(defender)).at("Sacks"), "0.5");
    EXPECT_EQ(siteFileName(side).substr(siteFileName(side).size() - 4), ".txt");
}

TEST(SiteId, IsKeptInItsFileAsTypedTrimmedAndRefusedWhenMalformed) {
    TempDir dir;
    const DataPaths paths{dir.dir(), dir.dir(), dir.dir()};
    const std::string good = "12345678-1234-1234-1234-56789012";
    struct Case {
        std::string typed;
        bool refused;
        std::string file; // the file's bytes after writing; empty: no file
    };
    const std::vector<Case> cases = {
        {"  " + good + "\t", false, good + "\r\n"},
        {"abcdefABCDEF0123456789-----xyzXY", false, "abcdefABCDEF0123456789-----xyzXY\r\n"},
        {"12345678-1234-1234-123456789012", true, ""}, // 31 characters
        {"12345678 1234-1234-1234-56789012", true, ""},
        {"12345678_1234-1234-1234-56789012", true, ""},
        {"", false, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed);
        ASSERT_TRUE(writeSiteId(paths, 1, good));
        const std::string id = trimmedSiteId(c.typed);
        EXPECT_EQ(siteIdProblem(id).has_value(), c.refused);
        if (c.refused)
            continue;
        ASSERT_TRUE(writeSiteId(paths, 1, id));
        EXPECT_EQ(dir.exists("FBSITE1.TXT"), !c.file.empty());
        if (!c.file.empty()) {
            EXPECT_EQ(dir.read("FBSITE1.TXT"), Bytes(c.file.begin(), c.file.end()));
        }
        std::string back = "x";
        ASSERT_TRUE(readSiteId(paths, 1, back));
        EXPECT_EQ(back, id);
    }
    EXPECT_FALSE(dir.exists("FBSITE2.TXT"));
}

struct Outcome {
    int code;
    std::string out, err;
};
Outcome run(bool import, Strings args, const TempDir& dir) {
    std::ostringstream out, err;
    args.insert(args.begin(), {"--data", dir.dir()});
    const int code = import ? runImportCommand(args, out, err, dir.dir())
                            : runExportCommand(args, out, err, dir.dir());
    return {code, out.str(), err.str()};
}

// Exports print; bad arguments are refused in one line and write nothing; an import writes only
// when it is not a dry run.
TEST(ExchangeCommand, ExportsPrintAndImportsWriteOnlyWhenAsked) {
    Sample sample;
    ASSERT_TRUE(writeSiteId(sample.data.paths(), 1, "12345678-1234-1234-1234-56789012"));
    const Outcome xml = run(false, {"--export-game", "1", "--format", "fbxml"}, sample.dir);
    EXPECT_EQ(xml.code, 0) << xml.err;
    EXPECT_NE(xml.out.find("?>\n<fbgame"), std::string::npos);
    const Outcome text =
        run(false, {"--export-game=1", "--format=hstext", "--team", "1"}, sample.dir);
    EXPECT_EQ(text.code, 0) << text.err;
    EXPECT_EQ(text.out, siteText(sample.side(1), "12345678-1234-1234-1234-56789012"));

    TempDir elsewhere;
    elsewhere.write("game.xml", Bytes(xml.out.begin(), xml.out.end()));
    sample.dir.write("bad.xml", Bytes{'<', 'x'});
    const std::string file = elsewhere.file("game.xml");
    const struct {
        bool import;
        Strings args;
        std::string says;
    } cases[] = {
        {false, {"--export-game", "1"}, "--format is required"},
        {false, {"--export-game", "1", "--format", "csv"}, "\"csv\" is not fbxml or hstext"},
        {false, {"--export-game", "0", "--format", "fbxml"}, "game number from 1 to 999"},
        {false, {"--export-game", "77", "--format", "fbxml"}, "has no game 77"},
        {false, {"--export-game", "1", "--format", "hstext", "--team", "101"}, "--team"},
        {false,
         {"--export-game", "1", "--format", "hstext", "--output", sample.dir.file("x.txt")},
         "not written into the data"},
        {true, {"--xml", file}, "--team is required"},
        {true, {"--team", "1"}, "--xml is required"},
        {true, {"--team", "1", "--xml", file, "--side", "X"}, "is not V (visitors) or H"},
        {true, {"--team", "1", "--xml", file, "--replace", "77"}, "has no game 77"},
        {true, {"--team", "1", "--xml", elsewhere.file("none.xml")}, "There is no file"},
        {true, {"--team", "1", "--xml", sample.dir.file("bad.xml")}, "bad.xml: "},
        {true, {"--team", "5", "--xml", file}, "give --side V or --side H"},
        {true, {"--team", "1", "--xml", file, "--dry"}, "unknown argument \"--dry\""},
    };
    const FolderSnapshot before = snapshot(sample.dir.path());
    for (const auto& c : cases) {
        const Outcome r = run(c.import, c.args, sample.dir);
        SCOPED_TRACE(r.err);
        EXPECT_EQ(r.code, 1);
        EXPECT_NE(r.err.find(c.says), std::string::npos);
        EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1);
        EXPECT_EQ(r.out, "");
    }
    const Outcome dry = run(true, {"--team", "1", "--xml", file, "--dry-run"}, sample.dir);
    EXPECT_EQ(dry.code, 0) << dry.err;
    EXPECT_NE(dry.out.find("Dry run: nothing was written."), std::string::npos);
    EXPECT_EQ(snapshot(sample.dir.path()), before);
    const Outcome real = run(true, {"--team", "1", "--xml", file}, sample.dir);
    EXPECT_EQ(real.code, 0) << real.err;
    EXPECT_NE(real.out.find("Imported as game 11.\n"), std::string::npos) << real.out;
    const GameSide first = sample.side(1), imported = sample.side(11);
    for (int n = 1; n <= kMaxPlayers; ++n)
        for (int c = 0; c < kCategoryCount; ++c)
            EXPECT_EQ(imported.results.at(n, c), first.results.at(n, c)) << n << " " << c;
}

} // namespace
} // namespace scorvane::testing
