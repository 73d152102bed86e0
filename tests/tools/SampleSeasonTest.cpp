#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "storage/ConfigFile.h"
#include "storage/TextUtil.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace scorvane {
namespace {

class SampleSeasonTest : public ::testing::Test {
protected:
    testing::TempDir dir;
    testing::FakePrompter prompter;
    DataFiles files{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};

    void SetUp() override { ASSERT_TRUE(writeSampleSeason(files)); }

    template <class R> std::vector<R> all(FileKind kind, int team) {
        std::vector<R> out;
        if (kind == FileKind::TeamList)
            EXPECT_TRUE(files.readAllAs(kind, out));
        else
            EXPECT_TRUE(files.team(team).readAllAs(kind, out));
        return out;
    }
};

// A team list of four named teams; for both of the first two, an ascending roster, live games
// numbered in order, and statistics in game order with every category in every game. Written
// again, the same bytes.
TEST_F(SampleSeasonTest, TeamsRostersGamesAndStatistics) {
    const auto teams = all<TeamRecord>(FileKind::TeamList, 1);
    ASSERT_EQ(teams.size(), 100u);
    // The accented name is stored as one Windows-1252 byte (octal 351), not as UTF-8.
    const char* names[] = {"Riverside Hawks", "Lakeview Tigers", "Northgate Rams",
                           "Montr\351al Comets"};
    for (std::size_t i = 0; i < teams.size(); ++i)
        EXPECT_EQ(trim(teams[i].teamName), i < 4 ? names[i] : "") << "team " << i + 1;
    for (int team : {1, 2}) {
        SCOPED_TRACE("team " + digits(team));
        const auto roster = all<RosterRecord>(FileKind::Roster, team);
        EXPECT_GE(roster.size(), 20u);
        for (std::size_t i = 1; i < roster.size(); ++i)
            EXPECT_LT(roster[i - 1].playerNumber, roster[i].playerNumber);

        TeamFiles teamFiles = files.team(team);
        std::vector<Bytes> raw, after;
        ASSERT_TRUE(teamFiles.readAll(FileKind::Stats, raw));
        int previousGame = 0;
        for (const auto& b : raw) {
            const StatHeader h = StatHeader::decode(b);
            EXPECT_GE(h.gameNumber, previousGame);
            EXPECT_TRUE(h.isLive());
            previousGame = h.gameNumber;
            const auto v = StatRecord::decode(b).values; // passing: completions, attempts
            EXPECT_TRUE(h.category != 'P' || v[1] <= v[0]) << h.playerNumber;
        }
        const auto games = all<GameRecord>(FileKind::Games, team);
        for (const GameRecord& g : games) {
            EXPECT_EQ(g.gameNumber, &g - games.data() + 1);
            EXPECT_TRUE(g.isLive());
            EXPECT_EQ(g.overtimeFlag, g.teamScore[4] || g.opponentScore[4] ? -1 : 0);
            GameStatsIndex index;
            ASSERT_TRUE(teamFiles.indexGameStats(g, index));
            for (std::size_t k = 0; k < kCategoryLetters.size(); ++k)
                EXPECT_GT(index.counters[k], 0) << g.gameNumber << kCategoryLetters[k];
        }
        ASSERT_TRUE(teamFiles.readAll(FileKind::Stats, after));
        EXPECT_EQ(after, raw);
    }
    const auto hawks = all<GameRecord>(FileKind::Games, 1);
    ASSERT_EQ(hawks.size(), 10u);

    // Each game the second team entered against the first is the same game from the other side.
    int against = 0, mirrored = 0;
    for (const auto& t : all<GameRecord>(FileKind::Games, 2)) {
        against += trim(t.opponent) == names[0];
        for (const auto& h : hawks)
            if (trim(t.opponent) == names[0] && t.gameDate == h.gameDate) {
                ++mirrored;
                EXPECT_EQ(t.teamScore, h.opponentScore);
                EXPECT_EQ(t.opponentScore, h.teamScore);
            }
    }
    EXPECT_GE(mirrored, 2);
    EXPECT_EQ(mirrored, against);

    // A rerun gives the same bytes, replacing a damaged roster.
    const auto first = testing::snapshot(dir.path());
    files.closeAll();
    dir.write("FBPN1.DAT", Bytes(7, 'x'));
    ASSERT_TRUE(writeSampleSeason(files));
    EXPECT_EQ(testing::snapshot(dir.path()), first);
}

TEST(InstallDefaults, WritesConfigurationAndSampleButNeverOverwrites) {
    testing::TempDir dir;
    testing::FakePrompter prompter;
    InstallResult result;
    const std::string sample = dir.dir() + "season";
    auto install = [&](bool config, bool season) {
        ASSERT_TRUE(installDefaults(prompter, dir.dir(), sample, result));
        EXPECT_EQ(result.wroteConfig, config);
        EXPECT_EQ(result.wroteSample, season);
    };
    install(true, true);
    const Bytes ini = dir.read("BXFB.INI");
    ASSERT_EQ(ini.size(), 1018u);
    // Kept with the system's separator at its end.
    EXPECT_EQ(field::getText(ini, 329, 145),
              fit((std::filesystem::path(sample) / "").string(), 145));
    // Either usable length of BXFB.INI stays as it is, any other is replaced; the team list stays.
    dir.write("season/FBTEAMS.DAT", Bytes(40, 'T'));
    for (std::size_t length : {1018u, 669u, 1000u}) {
        dir.write("BXFB.INI", Bytes(length, 'c'));
        install(length == 1000, false);
        EXPECT_EQ(dir.read("BXFB.INI"), length == 1000 ? ini : Bytes(length, 'c')) << length;
    }
    EXPECT_EQ(dir.read("season/FBTEAMS.DAT"), Bytes(40, 'T'));
    EXPECT_TRUE(prompter.shown.empty());
}

} // namespace
} // namespace scorvane
