#include "reports/ReportCommand.h"

#include "sample/SampleSeason.h"
#include "storage/DataFiles.h"
#include "storage/Records.h"
#include "storage/StatLayout.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

using namespace scorvane;

namespace {

namespace fs = std::filesystem;

std::vector<std::string> split(const std::string& text, const std::string& separator) {
    std::vector<std::string> out;
    std::size_t start = 0;
    for (;;) {
        const std::size_t at = text.find(separator, start);
        out.push_back(text.substr(start, at - start));
        if (at == std::string::npos)
            return out;
        start = at + separator.size();
    }
}

// Every file under a folder with its bytes.
std::map<std::string, Bytes> snapshot(const fs::path& folder) {
    std::map<std::string, Bytes> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        files[entry.path().string()] =
            Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return files;
}

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

    int run(std::vector<std::string> args) {
        std::ostringstream o, e;
        const int code = runReportCommand(args, o, e, program);
        out = o.str();
        err = e.str();
        return code;
    }

    // The CSV rows of a successful run, each split at its commas (no field of the sample season
    // needs quoting).
    std::vector<std::vector<std::string>> csv(std::vector<std::string> args) {
        args.insert(args.end(), {"--format", "csv"});
        EXPECT_EQ(run(args), 0) << err;
        EXPECT_EQ(err, "");
        std::vector<std::vector<std::string>> rows;
        for (const auto& line : split(out, "\r\n"))
            if (!line.empty())
                rows.push_back(split(line, ","));
        return rows;
    }

    Bytes seasonFile(const std::string& name) const {
        std::ifstream in(season + name, std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    void writeSeasonFile(const std::string& name, const Bytes& bytes) const {
        std::ofstream o(season + name, std::ios::binary | std::ios::trunc);
        o.write(reinterpret_cast<const char*>(bytes.data()),
                static_cast<std::streamsize>(bytes.size()));
    }
    // Marks games for Special Select in team 1's game file.
    void markGames(std::initializer_list<int> positions) const {
        Bytes games = seasonFile("FBGS1.DAT");
        for (int p : positions)
            games.at(static_cast<std::size_t>(p - 1) * 200 + 134) = '2';
        writeSeasonFile("FBGS1.DAT", games);
    }

    // What the statistics file says, summed independently of the report: per player, the sum of
    // one entered column over his live records of a category.
    std::map<int, long long> columnSums(char category, int code) const {
        std::map<int, long long> sums;
        const Bytes stats = seasonFile("FBPS1.DAT");
        for (std::size_t at = 0; at + 110 <= stats.size(); at += 110) {
            const Bytes rec(stats.begin() + static_cast<std::ptrdiff_t>(at),
                            stats.begin() + static_cast<std::ptrdiff_t>(at + 110));
            const StatRecord r = StatRecord::decode(rec);
            if (r.header.category == category && r.header.isLive())
                sums[r.header.playerNumber] +=
                    r.values[static_cast<std::size_t>(statSlot(category, code))];
        }
        return sums;
    }
    // Per player, the entries of one type in his kicking or returns lists.
    std::map<int, long long> entryCounts(char category, char type) const {
        std::map<int, long long> counts;
        const Bytes stats = seasonFile("FBPS1.DAT");
        for (std::size_t at = 0; at + 110 <= stats.size(); at += 110) {
            const StatListRecord r = StatListRecord::decode(
                Bytes(stats.begin() + static_cast<std::ptrdiff_t>(at),
                      stats.begin() + static_cast<std::ptrdiff_t>(at + 110)));
            if (r.header.category != category || !r.header.isLive())
                continue;
            counts[r.header.playerNumber] += 0;
            for (const auto& e : r.entries)
                counts[r.header.playerNumber] += e.type == type ? 1 : 0;
        }
        return counts;
    }
};

std::size_t column(const std::vector<std::string>& header, const std::string& name) {
    const auto it = std::find(header.begin(), header.end(), name);
    EXPECT_NE(it, header.end()) << name;
    return static_cast<std::size_t>(it - header.begin());
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
         columnSums('P', 4)},
        {'C', "No,Name,G,Tgt,Rec,Yds,Avg,Lg,Big,Y@C,YAC,FD,FD%,F,FL,Pen,TD,XPt,Pts", "YAC",
         columnSums('C', 7)},
        {'R', "No,Name,G,Rsh,Yds,YdL,Lg,Avg,FD,F,FL,Pen,TD,XPt,Pts", "Rsh", columnSums('R', 2)},
        {'D', "No,Name,G,Tkl,Sol,Ast,Int,Blk,Hur,F,FC,Sk,TD,Pen", "Sol", columnSums('D', 3)},
        {'K', "No,Name,G,Extra Points,Pnt,PLg,PAv,FG All,FLg", "Pnt", entryCounts('K', 'P')},
        {'T', "No,Name,G,PRt,PAv,PFC,PF,PTD,PLg,PYd,KRt,KAv,KFC,KF,KTD,KLg,KYd", "KRt",
         entryCounts('T', 'K')},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.category);
        const auto rows = csv({"--team", "1", "--category", std::string(1, c.category)});
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
    const auto kicking = csv({"--team", "1", "--category", "K"});
    EXPECT_EQ(kicking[1][column(kicking[0], "Extra Points")], "29/29 100.0%");
    EXPECT_EQ(kicking[1][1], "Luis Ortega");
}

TEST_F(ReportCommandTest, TeamRecordSelectionsAndTheirRanges) {
    const std::string header = "Game Type,Won,Lost,Tie,Pct,PF,PA\r\n";
    // Worked out by hand from the sample's quarter scores.
    ASSERT_EQ(run({"--team", "1", "--category", "E", "--format", "csv"}), 0) << err;
    EXPECT_EQ(out, header + "League,4,2,1,.643,155,145\r\nNon-League,2,0,0,1.000,52,37\r\n"
                            "Playoff,0,1,0,.000,20,23\r\nTotals,6,3,1,.650,227,205\r\n");

    // A reversed range is the same range.
    ASSERT_EQ(
        run({"--team", "1", "--category", "E", "--format", "csv", "--from", "5", "--to", "3"}), 0);
    EXPECT_EQ(out, header + "League,1,0,1,.750,52,27\r\nNon-League,1,0,0,1.000,28,20\r\n"
                            "Totals,2,0,1,.833,80,47\r\n");
    const auto reversed = csv({"--team", "1", "--category", "P", "--from", "5", "--to", "3"});
    EXPECT_EQ(reversed, csv({"--team", "1", "--category", "P", "--from", "3", "--to", "5"}));
    EXPECT_EQ(reversed[1][2], "3");
    ASSERT_EQ(run({"--team", "1", "--category", "P", "--from", "5", "--to", "3"}), 0);
    EXPECT_NE(out.find("\nGames 3 to 5, all game types\n"), std::string::npos);

    // Game types.
    ASSERT_EQ(run({"--team", "1", "--category", "E", "--format", "csv", "--types", "2,3"}), 0);
    EXPECT_EQ(out, header + "Non-League,2,0,0,1.000,52,37\r\nPlayoff,0,1,0,.000,20,23\r\n"
                            "Totals,2,1,0,.667,72,60\r\n");

    // Special Select: nothing is marked in the sample, so nothing counts.
    ASSERT_EQ(run({"--team", "1", "--category", "R", "--special"}), 0);
    EXPECT_NE(out.find("\nNo Games\n"), std::string::npos);
    markGames({3, 5});
    ASSERT_EQ(run({"--team", "1", "--category", "E", "--format", "csv", "--special"}), 0);
    EXPECT_EQ(out, header + "League,1,0,1,.750,52,27\r\nTotals,1,0,1,.750,52,27\r\n");
    const auto marked = csv({"--team", "1", "--category", "P", "--special"});
    EXPECT_EQ(marked[1][1], "Caleb Morrison");
    EXPECT_EQ(marked[1][2], "2");
    EXPECT_EQ(marked.back()[2], "2");
}

TEST_F(ReportCommandTest, OnePlayerByNumberOrByName) {
    const auto all = csv({"--team", "1", "--category", "R"});
    const auto seven = csv({"--team", "1", "--category", "R", "--player", "7"});
    ASSERT_EQ(seven.size(), 3u);
    EXPECT_EQ(seven[1][0], "7");
    EXPECT_EQ(seven[1][1], "Caleb Morrison");
    const auto his =
        std::find_if(all.begin(), all.end(), [](const auto& r) { return r[0] == "7"; });
    ASSERT_NE(his, all.end());
    EXPECT_EQ(seven[1], *his);
    // The totals are his alone.
    EXPECT_EQ(std::vector<std::string>(seven[2].begin() + 2, seven[2].end()),
              std::vector<std::string>(seven[1].begin() + 2, seven[1].end()));
    EXPECT_EQ(csv({"--team", "1", "--category", "R", "--player", "  CALEB Morrison"}), seven);
    // A player without rushes: no line, totals of nothing.
    const auto nobody = csv({"--team", "1", "--category", "R", "--player", "99"});
    ASSERT_EQ(nobody.size(), 2u);
    EXPECT_EQ(nobody[1][2], "0");
}

TEST_F(ReportCommandTest, SeveralTeamsInOneReport) {
    const auto hawks = csv({"--team", "1", "--category", "R"});
    const auto tigers = csv({"--team", "2", "--category", "R"});
    const auto both = csv({"--team", "1,2", "--category", "R"});
    EXPECT_EQ(both[0][2], "Team");
    EXPECT_EQ(both.size(), hawks.size() + tigers.size() - 2);
    std::set<std::string> teams;
    for (std::size_t i = 1; i + 1 < both.size(); ++i)
        teams.insert(both[i][2]);
    EXPECT_EQ(teams, (std::set<std::string>{"Hawks", "Tigers"}));
    const std::size_t yds = column(hawks[0], "Yds");
    EXPECT_EQ(std::stoll(both.back()[yds + 1]),
              std::stoll(hawks.back()[yds]) + std::stoll(tigers.back()[yds]));
    ASSERT_EQ(run({"--team", "1,2", "--category", "R"}), 0);
    EXPECT_NE(out.find("\nMultiple Teams: Hawks, Tigers\n"), std::string::npos);
}

TEST_F(ReportCommandTest, TextIsWhatThePrintRoutineWritesToAFile) {
    ASSERT_EQ(run({"--team", "1,2", "--category", "D", "--lines", "21"}), 0);
    const std::string printed = out;
    EXPECT_EQ(printed.rfind("Defensive Statistics", 0), 0u);
    EXPECT_NE(printed.find("\n\f\nDefensive Statistics"), std::string::npos); // a second page
    EXPECT_NE(printed.find("Page 2"), std::string::npos);
    EXPECT_NE(printed.find("    Totals"), std::string::npos);
    EXPECT_EQ(printed.find(" \n"), std::string::npos); // trailing spaces removed

    const std::string file = dir.dir() + "report.txt";
    ASSERT_EQ(run({"--team", "1,2", "--category", "D", "--lines", "21", "--output", file}), 0);
    EXPECT_EQ(out, "");
    std::ifstream in(file, std::ios::binary);
    const std::string written((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(written, printed);
    ASSERT_EQ(
        run({"--team", "1,2", "--category", "D", "--lines", "21", "--output", file, "--append"}),
        0);
    std::ifstream again(file, std::ios::binary);
    EXPECT_EQ(std::string((std::istreambuf_iterator<char>(again)), {}), printed + printed);
}

TEST_F(ReportCommandTest, BadArgumentsAreRefusedWithOneLine) {
    const std::vector<std::vector<std::string>> bad = {
        {},
        {"--team", "1"},
        {"--category", "P"},
        {"--team", "1", "--category", "X"},
        {"--team", "0", "--category", "P"},
        {"--team", "1,1", "--category", "P"},
        {"--team", "50", "--category", "P"}, // a team slot nobody named
        {"--team", "1", "--category", "P", "--from", "0"},
        {"--team", "1", "--category", "P", "--to", "1000"},
        {"--team", "1", "--category", "P", "--from", "12x"},
        {"--team", "1", "--category", "P", "--types", "8"},
        {"--team", "1", "--category", "P", "--columns", "2,24"},
        {"--team", "1", "--category", "D", "--sort", "18"},
        {"--team", "1", "--category", "P", "--asc", "--desc"},
        {"--team", "1", "--category", "P", "--top", "0"},
        {"--team", "1", "--category", "P", "--format", "pdf"},
        {"--team", "1", "--category", "P", "--report", "No Such Report"},
        {"--team", "1", "--category", "E", "--columns", "2"},
        {"--team", "1", "--category", "P", "--lines", "20"},
        {"--team", "1", "--category", "P", "--bogus"},
        {"--team", "1", "--category", "P", "--output"},
        {"--team", "1", "--category", "P", "--output", season + "report.txt"},
    };
    for (const auto& args : bad) {
        std::string shown;
        for (const auto& a : args)
            shown += a + " ";
        SCOPED_TRACE(shown);
        EXPECT_EQ(run(args), kCommandBadUsage);
        EXPECT_EQ(out, "");
        ASSERT_FALSE(err.empty());
        EXPECT_EQ(err.rfind("scorvane-report: ", 0), 0u);
        EXPECT_EQ(err.find('\n'), err.size() - 1); // one line
    }
    EXPECT_FALSE(fs::exists(season + "report.txt"));

    // Files that cannot be used: a failure, not a usage error.
    EXPECT_EQ(run({"--config", dir.dir(), "--team", "1", "--category", "P"}), kCommandFailed);
    EXPECT_NE(err.find("BXFB.INI File Corrupt or Not Found"), std::string::npos);
    EXPECT_EQ(run({"--data", dir.dir() + "nowhere", "--team", "1", "--category", "P"}),
              kCommandFailed);
    Bytes roster = seasonFile("FBPN1.DAT");
    roster.pop_back();
    writeSeasonFile("FBPN1.DAT", roster);
    EXPECT_EQ(run({"--team", "1", "--category", "P"}), kCommandFailed);
    EXPECT_NE(err.find("FBPN1.DAT"), std::string::npos);
    EXPECT_EQ(out, "");

    EXPECT_EQ(run({"--help"}), kCommandOk);
    EXPECT_EQ(out, reportCommandUsage());
}

TEST_F(ReportCommandTest, TheDataDirectoryIsNeverWritten) {
    fs::remove(season + "FBRPTFMT.DAT");
    const auto before = snapshot(dir.path());
    const std::vector<std::vector<std::string>> runs = {
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
        run(args);
    EXPECT_EQ(snapshot(dir.path()), before);
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
    writeSeasonFile("FBRPTFMT.DAT", file);

    const auto rows = csv({"--team", "1", "--category", "R"});
    EXPECT_EQ(rows[0], (std::vector<std::string>{"No", "Name", "Rsh", "Yds"}));
    for (std::size_t i = 2; i + 1 < rows.size(); ++i)
        EXPECT_LE(std::stoi(rows[i - 1][2]), std::stoi(rows[i][2]));
    EXPECT_EQ(csv({"--team", "1", "--category", "R", "--report", "carries"}), rows);
    EXPECT_EQ(run({"--team", "1", "--category", "R", "--report", "Gone"}), kCommandBadUsage);
    // Chosen by default or by name, the saved report prints under its own title.
    for (std::vector<std::string> args :
         {std::vector<std::string>{"--team", "1", "--category", "R"},
          {"--team", "1", "--category", "R", "--report", "Carries"}}) {
        ASSERT_EQ(run(args), 0);
        EXPECT_EQ(out.rfind("Carries ", 0), 0u) << args.size();
    }

    const auto overridden =
        csv({"--team", "1", "--category", "R", "--columns", "3,12", "--sort", "3", "--desc"});
    EXPECT_EQ(overridden[0], (std::vector<std::string>{"No", "Name", "Yds", "Avg"}));
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
    EXPECT_EQ(run({"--data", data.dir(), "--team", "1", "--category", "R", "--format", "csv"}),
              kCommandFailed);
    EXPECT_EQ(out, "");
    EXPECT_EQ(split(err, "\n").front(), "Overflow: column 13 \"Pts\" of player 9 Big Scorer");
    // 6000 touchdowns are 36000 points on the totals line too, but there 32 bits hold them.
    EXPECT_EQ(err.find("Totals"), std::string::npos);
    ASSERT_EQ(run({"--data", data.dir(), "--team", "1", "--category", "R", "--format", "csv",
                   "--columns", "5"}),
              kCommandFailed);
    ASSERT_EQ(run({"--data", data.dir(), "--team", "1", "--category", "P"}), kCommandOk);
    EXPECT_NE(out.find("\nNo Players\n"), std::string::npos);
}
