// The high-school stats site's text of a sample game checked field by field against the
// statistics records, the team's site id file, and the export and import commands.
#include "exchange/SiteText.h"
#include "exchange/ExchangeCommand.h"
#include "exchange/GameExport.h"
#include "faults/Operations.h"
#include "sample/SampleSeason.h"
#include "storage/SiteId.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace scorvane::testing {
namespace {

struct SampleDir {
    TempDir dir;
    FakePrompter prompter;
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    TeamList teams;
    SampleDir() {
        EXPECT_TRUE(writeSampleSeason(data));
        EXPECT_TRUE(teams.load(data));
    }
    GameSide side(int game) {
        GameSide s;
        EXPECT_TRUE(readGameSide(data, teams, 1, game, s));
        return s;
    }
};

// The text's rows by jersey, each a map from header field to cell.
using Rows = std::map<std::string, std::map<std::string, std::string>>;

std::vector<std::string> split(const std::string& text, const std::string& sep) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t at; (at = text.find(sep, start)) != std::string::npos; start = at + sep.size())
        parts.push_back(text.substr(start, at - start));
    parts.push_back(text.substr(start));
    return parts;
}

Rows rowsOf(const std::string& text, std::size_t headerLine) {
    std::vector<std::string> lines = split(text, "\r\n");
    EXPECT_EQ(lines.back(), ""); // every line ends in CR LF
    lines.pop_back();
    const std::vector<std::string> header = split(lines.at(headerLine), "|");
    EXPECT_EQ(header.front(), "Jersey");
    Rows rows;
    for (std::size_t i = headerLine + 1; i < lines.size(); ++i) {
        const std::vector<std::string> cells = split(lines[i], "|");
        EXPECT_EQ(cells.size(), header.size()) << lines[i];
        for (std::size_t c = 0; c < cells.size() && c < header.size(); ++c)
            rows[cells.front()][header[c]] = cells[c];
    }
    return rows;
}

TEST(SiteText, TheSampleSeasonsFirstGameMatchesItsRecordsFieldByField) {
    SampleDir sample;
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
    // Fields that are one entered value: category and screen field (StatLayout.h).
    const std::vector<std::tuple<std::string, int, int>> direct = {{"PassingAtt", 0, 0},
                                                                   {"PassingComp", 0, 1},
                                                                   {"PassingYards", 0, 2},
                                                                   {"PassingTD", 0, 3},
                                                                   {"PassingInt", 0, 4},
                                                                   {"PassingLong", 0, 5},
                                                                   {"ReceivingNum", 1, 0},
                                                                   {"ReceivingYards", 1, 2},
                                                                   {"ReceivingTDNum", 1, 4},
                                                                   {"ReceivingLong", 1, 5},
                                                                   {"PATReceivingNum", 1, 11},
                                                                   {"RushingNum", 2, 0},
                                                                   {"RushingYards", 2, 1},
                                                                   {"RushingTDNum", 2, 3},
                                                                   {"RushingLong", 2, 4},
                                                                   {"PATRushingNum", 2, 9},
                                                                   {"Tackles", 3, 0},
                                                                   {"Assists", 3, 1},
                                                                   {"INTs", 3, 2},
                                                                   {"PassesDefensed", 3, 3},
                                                                   {"QBHurries", 3, 4},
                                                                   {"FumbleRecoveries", 3, 5},
                                                                   {"CausedFumbles", 3, 6}};
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
        for (const auto& [field, c, f] : direct)
            EXPECT_EQ(row.at(field), r(c).played ? std::to_string(r(c).values[f]) : "")
                << "#" << n << " " << field;
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
Outcome run(bool import, std::vector<std::string> args, const TempDir& dir) {
    std::ostringstream out, err;
    args.insert(args.begin(), {"--data", dir.dir()});
    const int code = import ? runImportCommand(args, out, err, dir.dir())
                            : runExportCommand(args, out, err, dir.dir());
    return {code, out.str(), err.str()};
}

TEST(ExchangeCommand, ExportsPrintAndImportsWriteOnlyWhenAsked) {
    SampleDir sample;
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
    const Snapshot before = snapshot(sample.dir);
    const Outcome dry =
        run(true, {"--team", "1", "--xml", elsewhere.file("game.xml"), "--dry-run"}, sample.dir);
    EXPECT_EQ(dry.code, 0) << dry.err;
    EXPECT_NE(dry.out.find("Dry run: nothing was written."), std::string::npos);
    EXPECT_EQ(snapshot(sample.dir), before);
    const Outcome real =
        run(true, {"--team", "1", "--xml", elsewhere.file("game.xml")}, sample.dir);
    EXPECT_EQ(real.code, 0) << real.err;
    EXPECT_NE(real.out.find("Imported as game 11.\n"), std::string::npos) << real.out;
    const GameSide first = sample.side(1), imported = sample.side(11);
    for (int n = 1; n <= kMaxPlayers; ++n)
        for (int c = 0; c < kCategoryCount; ++c)
            EXPECT_EQ(imported.results.at(n, c), first.results.at(n, c)) << n << " " << c;
}

TEST(ExchangeCommand, BadArgumentsAreRefusedInOneLineAndWriteNothing) {
    SampleDir sample;
    sample.dir.write("bad.xml", Bytes{'<', 'x'});
    const std::string exported =
        run(false, {"--export-game", "1", "--format", "fbxml"}, sample.dir).out;
    TempDir elsewhere;
    elsewhere.write("game.xml", Bytes(exported.begin(), exported.end()));
    const std::string file = elsewhere.file("game.xml");
    const struct {
        bool import;
        std::vector<std::string> args;
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
    const Snapshot before = snapshot(sample.dir);
    for (const auto& c : cases) {
        const Outcome r = run(c.import, c.args, sample.dir);
        SCOPED_TRACE(r.err);
        EXPECT_EQ(r.code, 1);
        EXPECT_NE(r.err.find(c.says), std::string::npos);
        EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1);
        EXPECT_EQ(r.out, "");
    }
    EXPECT_EQ(snapshot(sample.dir), before);
}

} // namespace
} // namespace scorvane::testing
