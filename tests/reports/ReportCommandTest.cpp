#include "reports/ReportCommand.h"

#include "ReportChecks.h"

#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "storage/DataFiles.h"
#include "storage/Records.h"
#include "storage/StatLayout.h"
#include "storage/TextUtil.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <sstream>

using namespace scorvane;
using scorvane::testing::csvRows, scorvane::testing::snapshot, scorvane::testing::split,
    scorvane::testing::words;

namespace {

using Strings = std::vector<std::string>;

namespace fs = std::filesystem;

// A program folder with the default BXFB.INI and the sample season in "season/".
struct ReportCommandTest : ::testing::Test {
    scorvane::testing::TempDir dir;
    scorvane::testing::FakePrompter prompter;
    std::string program;
    std::string season;
    std::string out;
    std::string err;

    void SetUp() override {
        program = dir.dir() + "program/";
        season = dir.dir() + "season/";
        fs::create_directories(program);
        InstallResult installed;
        ASSERT_TRUE(installDefaults(prompter, program, season, installed));
        ASSERT_TRUE(installed.wroteConfig && installed.wroteSample);
    }

    // A run with the arguments given, or with the words of a line (none of them holding a space).
    int run(const std::string& line) { return runArgs(words(line)); }
    int runArgs(Strings args) {
        std::ostringstream o, e;
        const int code = runReportCommand(args, o, e, program);
        out = o.str();
        err = e.str();
        return code;
    }

    // The CSV rows of a successful run, each split at its commas (no field of the sample season
    // needs quoting).
    std::vector<Strings> csv(const std::string& line) { return csvArgs(words(line)); }
    std::vector<Strings> csvArgs(Strings args) {
        args.insert(args.end(), {"--format", "csv"});
        EXPECT_EQ(runArgs(args), 0) << err;
        EXPECT_EQ(err, "");
        return csvRows(out);
    }

    Bytes seasonFile(const std::string& name) const { return dir.read("season/" + name); }

    // What the statistics file says, worked out apart from the report: per player with a live
    // record of the category, the sum of what `of` takes from each of them.
    std::map<int, long long> perPlayer(char category,
                                       const std::function<long long(const Bytes&)>& of) const {
        std::map<int, long long> sums;
        const Bytes stats = seasonFile("FBPS1.DAT");
        for (auto at = stats.begin(); stats.end() - at >= 110; at += 110) {
            const Bytes rec(at, at + 110);
            const StatHeader h = StatHeader::decode(rec);
            if (h.category == category && h.isLive())
                sums[h.playerNumber] += of(rec);
        }
        return sums;
    }
};

std::size_t column(const Strings& header, const std::string& name) {
    const auto it = std::find(header.begin(), header.end(), name);
    EXPECT_NE(it, header.end()) << name;
    return static_cast<std::size_t>(it - header.begin());
}

// One entered column of a category record; the entries of one type in a kicking or returns list.
std::function<long long(const Bytes&)> entered(char category, int code) {
    return [=](const Bytes& rec) {
        return StatRecord::decode(rec).values[static_cast<std::size_t>(statSlot(category, code))];
    };
}
std::function<long long(const Bytes&)> entries(char type) {
    return [=](const Bytes& rec) {
        const auto& list = StatListRecord::decode(rec).entries;
        return std::count_if(list.begin(), list.end(),
                             [&](const auto& e) { return e.type == type; });
    };
}

} // namespace

TEST_F(ReportCommandTest, CsvOfEveryCategoryAgreesWithTheStatisticsFile) {
    struct Case {
        char category;
        std::string header;
        std::string checked; // a column summed independently below
        std::map<int, long long> expected;
    };
    const std::vector<Case> cases = {
        {'P', "No,Name,G,Att,Cm,Pct,Yds,Avg,Lg,Big,FD,Int,Sk,F,FL,Pen,Rtg,TD,XPt,Pts", "Yds",
         perPlayer('P', entered('P', 4))},
        {'C', "No,Name,G,Tgt,Rec,Yds,Avg,Lg,Big,Y@C,YAC,FD,FD%,F,FL,Pen,TD,XPt,Pts", "YAC",
         perPlayer('C', entered('C', 7))},
        {'R', "No,Name,G,Rsh,Yds,YdL,Lg,Avg,FD,F,FL,Pen,TD,XPt,Pts", "Rsh",
         perPlayer('R', entered('R', 2))},
        {'D', "No,Name,G,Tkl,Sol,Ast,Int,Blk,Hur,F,FC,Sk,TD,Pen", "Sol",
         perPlayer('D', entered('D', 3))},
        {'K', "No,Name,G,Extra Points,Pnt,PLg,PAv,FG All,FLg", "Pnt", perPlayer('K', entries('P'))},
        {'T', "No,Name,G,PRt,PAv,PFC,PF,PTD,PLg,PYd,KRt,KAv,KFC,KF,KTD,KLg,KYd", "KRt",
         perPlayer('T', entries('K'))},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.category);
        const auto rows = csvArgs({"--team", "1", "--category", std::string(1, c.category)});
        ASSERT_GE(rows.size(), 3u);
        std::string header;
        for (const auto& h : rows.front())
            header += (header.empty() ? "" : ",") + h;
        EXPECT_EQ(header, c.header);

        // One row per player with a live record, each with the column's independent sum; the
        // totals row sums them.
        const std::size_t at = column(rows.front(), c.checked);
        std::map<int, long long> found;
        long long sum = 0;
        for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
            found[std::stoi(rows[i][0])] = std::stoll(rows[i][at]);
            sum += std::stoll(rows[i][at]);
        }
        EXPECT_EQ(found, c.expected);
        EXPECT_EQ(rows.back()[0], "");
        EXPECT_EQ(rows.back()[1], "Totals");
        EXPECT_EQ(std::stoll(rows.back()[at]), sum);
    }

    // The kicker's extra points as made/attempted with the percentage, untrimmed inside.
    const auto kicking = csv("--team 1 --category K");
    EXPECT_EQ(kicking[1][column(kicking[0], "Extra Points")], "29/29 100.0%");
    EXPECT_EQ(kicking[1][1], "Luis Ortega");
}

// Game ranges, game types, Special Select, one player and several teams narrow what is reported.
TEST_F(ReportCommandTest, SelectionsNarrowTheReport) {
    const std::string header = "Game Type,Won,Lost,Tie,Pct,PF,PA\r\n";
    // Team records worked out by hand from the sample's quarter scores; a reversed range is the
    // same range.
    const std::pair<Strings, std::string> records[] = {
        {{},
         "League,4,2,1,.643,155,145\r\nNon-League,2,0,0,1.000,52,37\r\n"
         "Playoff,0,1,0,.000,20,23\r\nTotals,6,3,1,.650,227,205\r\n"},
        {{"--from", "5", "--to", "3"},
         "League,1,0,1,.750,52,27\r\nNon-League,1,0,0,1.000,28,20\r\nTotals,2,0,1,.833,80,47\r\n"},
        {{"--types", "2,3"},
         "Non-League,2,0,0,1.000,52,37\r\nPlayoff,0,1,0,.000,20,23\r\n"
         "Totals,2,1,0,.667,72,60\r\n"}};
    for (auto [args, rows] : records) {
        args.insert(args.begin(), {"--team", "1", "--category", "E", "--format", "csv"});
        ASSERT_EQ(runArgs(args), 0) << err;
        EXPECT_EQ(out, header + rows);
    }
    const auto reversed = csv("--team 1 --category P --from 5 --to 3");
    EXPECT_EQ(reversed, csv("--team 1 --category P --from 3 --to 5"));
    EXPECT_EQ(reversed[1][2], "3");
    ASSERT_EQ(run("--team 1 --category P --from 5 --to 3"), 0);
    EXPECT_NE(out.find("\nGames 3 to 5, all game types\n"), std::string::npos);

    // Special Select: nothing is marked in the sample, so nothing counts.
    ASSERT_EQ(run("--team 1 --category R --special"), 0);
    EXPECT_NE(out.find("\nNo Games\n"), std::string::npos);
    Bytes games = seasonFile("FBGS1.DAT");
    games.at(2 * 200 + 134) = games.at(4 * 200 + 134) = '2'; // games 3 and 5
    dir.write("season/FBGS1.DAT", games);
    ASSERT_EQ(run("--team 1 --category E --format csv --special"), 0);
    EXPECT_EQ(out, header + "League,1,0,1,.750,52,27\r\nTotals,1,0,1,.750,52,27\r\n");
    const auto marked = csv("--team 1 --category P --special");
    EXPECT_EQ(marked[1][1], "Caleb Morrison");
    EXPECT_EQ(marked[1][2], "2");
    EXPECT_EQ(marked.back()[2], "2");

    // One player by number or by name.
    const auto hawks = csv("--team 1 --category R");
    const auto seven = csv("--team 1 --category R --player 7");
    ASSERT_EQ(seven.size(), 3u);
    const auto his =
        std::find_if(hawks.begin(), hawks.end(), [](const auto& r) { return r[0] == "7"; });
    ASSERT_NE(his, hawks.end());
    EXPECT_EQ(seven[1], *his);
    // The totals are his alone.
    EXPECT_EQ(Strings(seven[2].begin() + 2, seven[2].end()),
              Strings(seven[1].begin() + 2, seven[1].end()));
    EXPECT_EQ(csvArgs({"--team", "1", "--category", "R", "--player", "  CALEB Morrison"}), seven);
    // A player without rushes: no line, totals of nothing.
    const auto nobody = csv("--team 1 --category R --player 99");
    ASSERT_EQ(nobody.size(), 2u);
    EXPECT_EQ(nobody[1][2], "0");

    // Several teams in one report.
    const auto tigers = csv("--team 2 --category R");
    const auto both = csv("--team 1,2 --category R");
    EXPECT_EQ(both[0][2], "Team");
    EXPECT_EQ(both.size(), hawks.size() + tigers.size() - 2);
    std::set<std::string> teams;
    for (std::size_t i = 1; i + 1 < both.size(); ++i)
        teams.insert(both[i][2]);
    EXPECT_EQ(teams, (std::set<std::string>{"Hawks", "Tigers"}));
    const std::size_t yds = column(hawks[0], "Yds");
    EXPECT_EQ(std::stoll(both.back()[yds + 1]),
              std::stoll(hawks.back()[yds]) + std::stoll(tigers.back()[yds]));
    ASSERT_EQ(run("--team 1,2 --category R"), 0);
    EXPECT_NE(out.find("\nMultiple Teams: Hawks, Tigers\n"), std::string::npos);
}

TEST_F(ReportCommandTest, TextIsWhatThePrintRoutineWritesToAFile) {
    ASSERT_EQ(run("--team 1,2 --category D --lines 21"), 0);
    const std::string printed = out;
    EXPECT_EQ(printed.rfind("Defensive Statistics", 0), 0u);
    EXPECT_NE(printed.find("\n\f\nDefensive Statistics"), std::string::npos); // a second page
    EXPECT_NE(printed.find("Page 2"), std::string::npos);
    EXPECT_NE(printed.find("    Totals"), std::string::npos);
    EXPECT_EQ(printed.find(" \n"), std::string::npos); // trailing spaces removed

    const std::string file = dir.dir() + "report.txt";
    ASSERT_EQ(runArgs({"--team", "1,2", "--category", "D", "--lines", "21", "--output", file}), 0);
    EXPECT_EQ(out, "");
    const Bytes written = dir.read("report.txt");
    EXPECT_EQ(std::string(written.begin(), written.end()), printed);
    ASSERT_EQ(runArgs({"--team", "1,2", "--category", "D", "--lines", "21", "--output", file,
                       "--append"}),
              0);
    const Bytes twice = dir.read("report.txt");
    EXPECT_EQ(std::string(twice.begin(), twice.end()), printed + printed);

    // Game scores, standings and a game log.
    ASSERT_EQ(run("--team 1 --category G --short"), kCommandOk);
    const Bytes games = seasonFile("FBGS1.DAT");
    const GameRecord first = GameRecord::decode(Bytes(games.begin(), games.begin() + 200));
    const ConfigRecord config = ConfigRecord::decode(dir.read("program/BXFB.INI"));
    EXPECT_NE(out.find(trimRight(GameLine(first, *first.pointSums(), config))), std::string::npos);
    ASSERT_EQ(run("--team 1,2 --category S --format csv"), kCommandOk);
    EXPECT_EQ(out.substr(0, out.find("\r\n")), "Team,W,L,T,Pct,PF,PA,Diff");
    ASSERT_EQ(run("--team 1,2 --category S"), kCommandOk);
    EXPECT_EQ(out.rfind("Team Standings ", 0), 0u);
    ASSERT_EQ(run("--team 1 --category R --player 22 --by-game"), kCommandOk);
    EXPECT_NE(out.find("Season"), std::string::npos);
}

TEST_F(ReportCommandTest, BadArgumentsAreRefusedWithOneLine) {
    std::vector<Strings> bad = {
        {"--team", "1", "--category", "P", "--output", season + "report.txt"}};
    for (const std::string option :
         {"--from 0", "--to 1000", "--from 12x", "--types 8", "--columns 2,24", "--asc --desc",
          "--top 0", "--format pdf", "--report NoSuchReport", "--lines 20", "--bogus", "--output",
          "--short"}) // --short is for game scores only
        bad.push_back(words("--team 1 --category P " + option));
    // Team 50 is a slot nobody named; game scores are of one team, --by-game of one player who
    // has records, standings of every player.
    for (const char* line :
         {"", "--team 1", "--category P", "--team 1 --category X", "--team 0 --category P",
          "--team 1,1 --category P", "--team 50 --category P", "--team 1 --category D --sort 18",
          "--team 1 --category E --columns 2", "--team 1,2 --category G",
          "--team 1 --category R --by-game", "--team 1 --category S --player 7",
          "--team 1 --category R --player 98 --by-game"})
        bad.push_back(words(line));
    for (const auto& args : bad) {
        std::string shown;
        for (const auto& a : args)
            shown += a + " ";
        SCOPED_TRACE(shown);
        EXPECT_EQ(runArgs(args), kCommandBadUsage);
        EXPECT_EQ(out, "");
        ASSERT_FALSE(err.empty());
        EXPECT_EQ(err.rfind("scorvane-report: ", 0), 0u);
        EXPECT_EQ(err.find('\n'), err.size() - 1); // one line
    }
    EXPECT_FALSE(fs::exists(season + "report.txt"));

    // Files that cannot be used: a failure, not a usage error.
    EXPECT_EQ(runArgs({"--config", dir.dir(), "--team", "1", "--category", "P"}), kCommandFailed);
    EXPECT_NE(err.find("BXFB.INI File Corrupt or Not Found"), std::string::npos);
    EXPECT_EQ(runArgs({"--data", dir.dir() + "nowhere", "--team", "1", "--category", "P"}),
              kCommandFailed);
    Bytes roster = seasonFile("FBPN1.DAT");
    roster.pop_back();
    dir.write("season/FBPN1.DAT", roster);
    EXPECT_EQ(run("--team 1 --category P"), kCommandFailed);
    EXPECT_NE(err.find("FBPN1.DAT"), std::string::npos);
    EXPECT_EQ(out, "");

    EXPECT_EQ(run("--help"), kCommandOk);
    EXPECT_EQ(out, reportCommandUsage());
}

TEST_F(ReportCommandTest, TheDataDirectoryIsNeverWritten) {
    fs::remove(season + "FBRPTFMT.DAT");
    const auto files = [&] {
        return std::vector{snapshot(dir.path()), snapshot(program), snapshot(season)};
    };
    const auto before = files();
    const std::vector<Strings> runs = {
        {"--team", "1", "--category", "P"},
        {"--team", "3", "--category", "C", "--format", "csv"}, // a team without files
        {"--team", "1,2,4", "--category", "T", "--format", "html"},
        {"--team", "4", "--category", "E"},
        {"--team", "2", "--category", "K", "--report", "Kicking Statistics"},
        {"--data", season, "--team", "1", "--category", "D", "--sort", "10", "--asc"},
        {"--data", season.substr(0, season.size() - 1), "--team", "2", "--category", "R"},
        {"--team", "1", "--category", "X"},
    };
    for (const auto& args : runs)
        runArgs(args);
    EXPECT_EQ(files(), before);
    EXPECT_FALSE(fs::exists(season + "FBPN3.DAT"));
    EXPECT_FALSE(fs::exists(season + "FBRPTFMT.DAT"));
}

TEST_F(ReportCommandTest, SavedReportsAndOverridesChooseColumnsAndSort) {
    // A saved report of the category: its columns and sort are used, by default or by name.
    ReportFormatRecord mine;
    mine.category = 'R';
    mine.reportName = fit("Carries", 20);
    mine.sortColumn = 2;
    mine.sortDirection = 'A';
    mine.columns[1] = 2;
    mine.columns[2] = 3;
    ReportFormatRecord gone = mine;
    gone.deletionMark = '*';
    gone.reportName = fit("Gone", 20);
    Bytes file = gone.encode();
    const Bytes second = mine.encode();
    file.insert(file.end(), second.begin(), second.end());
    dir.write("season/FBRPTFMT.DAT", file);

    const auto rows = csv("--team 1 --category R");
    EXPECT_EQ(rows[0], (Strings{"No", "Name", "Rsh", "Yds"}));
    for (std::size_t i = 2; i + 1 < rows.size(); ++i)
        EXPECT_LE(std::stoi(rows[i - 1][2]), std::stoi(rows[i][2]));
    EXPECT_EQ(csv("--team 1 --category R --report carries"), rows);
    EXPECT_EQ(run("--team 1 --category R --report Gone"), kCommandBadUsage);
    // Chosen by default or by name, the saved report prints under its own title.
    for (const char* line : {"--team 1 --category R", "--team 1 --category R --report Carries"}) {
        ASSERT_EQ(run(line), 0);
        EXPECT_EQ(out.rfind("Carries ", 0), 0u) << line;
    }

    const auto overridden = csv("--team 1 --category R --columns 3,12 --sort 3 --desc");
    EXPECT_EQ(overridden[0], (Strings{"No", "Name", "Yds", "Avg"}));
    for (std::size_t i = 2; i + 1 < overridden.size(); ++i)
        EXPECT_GE(std::stoi(overridden[i - 1][2]), std::stoi(overridden[i][2]));
}

TEST_F(ReportCommandTest, OverflowNamesPlayerAndColumnAndWritesNothing) {
    scorvane::testing::TempDir data;
    {
        DataFiles files(DataPaths{"", data.dir(), data.dir()}, prompter);
        std::vector<TeamRecord> teams(1);
        teams[0].teamName = "Overflow Town";
        teams[0].shortName = "Town";
        ASSERT_TRUE(files.replaceAllWith(FileKind::TeamList, teams));
        TeamFiles team = files.team(1);
        RosterRecord player;
        player.playerNumber = 9;
        player.playerName = "Big Scorer";
        ASSERT_TRUE(team.replaceAllWith(FileKind::Roster, std::vector<RosterRecord>{player}));
        std::vector<GameRecord> games(2);
        std::vector<StatRecord> stats(2);
        for (std::int16_t g = 1; g <= 2; ++g) {
            games[static_cast<std::size_t>(g - 1)].gameNumber = g;
            StatRecord& r = stats[static_cast<std::size_t>(g - 1)];
            r.header = StatHeader{g, 9, 'R'};
            r.values[static_cast<std::size_t>(statSlot('R', 5))] = 3000; // touchdowns
        }
        ASSERT_TRUE(team.replaceAllWith(FileKind::Games, games));
        ASSERT_TRUE(team.replaceAllWith(FileKind::Stats, stats));
    }
    // No BXFB.INI beside the program: a data directory given on the command line still reads.
    program = dir.dir() + "empty/";
    fs::create_directories(program);
    EXPECT_EQ(runArgs({"--data", data.dir(), "--team", "1", "--category", "R", "--format", "csv"}),
              kCommandFailed);
    EXPECT_EQ(out, "");
    EXPECT_EQ(split(err, "\n").front(), "Overflow: column 13 \"Pts\" of player 9 Big Scorer");
    // 6000 touchdowns are 36000 points on the totals line too, but there 32 bits hold them.
    EXPECT_EQ(err.find("Totals"), std::string::npos);
    ASSERT_EQ(runArgs({"--data", data.dir(), "--team", "1", "--category", "R", "--format", "csv",
                       "--columns", "5"}),
              kCommandFailed);
    ASSERT_EQ(runArgs({"--data", data.dir(), "--team", "1", "--category", "P"}), kCommandOk);
    EXPECT_NE(out.find("\nNo Players\n"), std::string::npos);
}
