#include "shell/SampleSeason.h"
#include "storage/ConfigFile.h"
#include "storage/Cp1252.h"
#include "storage/TextUtil.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

namespace scorvane {
namespace {

class SampleSeasonTest : public ::testing::Test {
protected:
    testing::TempDir dir;
    testing::FakePrompter prompter;
    DataFiles files{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};

    void SetUp() override { ASSERT_TRUE(writeSampleSeason(files)); }

    template <class R> std::vector<R> all(FileKind kind, int team) {
        files.setTeam(team);
        std::vector<R> out;
        EXPECT_TRUE(files.readAllAs(kind, out));
        return out;
    }
};

TEST_F(SampleSeasonTest, TeamListRostersAndPlayerDetails) {
    const auto teams = all<TeamRecord>(FileKind::TeamList, 1);
    ASSERT_EQ(teams.size(), 100u);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NE(trim(teams[i].teamName), "") << "team " << i + 1;
    for (std::size_t i = 4; i < teams.size(); ++i)
        EXPECT_EQ(teams[i].encode(), Bytes(TeamRecord::Length, ' ')) << "team " << i + 1;
    // The accented name is stored as one Windows-1252 byte, not as UTF-8.
    EXPECT_EQ(cp1252ToUtf8(trim(teams[3].teamName)), "Montréal Comets");

    for (int team : {1, 2}) {
        const auto roster = all<RosterRecord>(FileKind::Roster, team);
        EXPECT_GE(roster.size(), 20u);
        int previous = 0;
        std::set<int> numbers;
        for (const auto& p : roster) {
            EXPECT_GT(p.playerNumber, previous);
            EXPECT_TRUE(isPlayerNumber(p.playerNumber));
            EXPECT_NE(trim(p.playerName), "");
            previous = p.playerNumber;
            numbers.insert(p.playerNumber);
        }
        const auto details = all<PlayerInfoRecord>(FileKind::PlayerInfo, team);
        EXPECT_GE(details.size(), 2u);
        for (const auto& d : details) {
            EXPECT_TRUE(numbers.count(d.playerNumber)) << d.playerNumber;
            EXPECT_NE(trim(d.phone), "");
        }
    }
}

TEST_F(SampleSeasonTest, GamesOfBothTeamsAgree) {
    const auto hawks = all<GameRecord>(FileKind::Games, 1);
    ASSERT_EQ(hawks.size(), 10u);
    int wins = 0, losses = 0, ties = 0, overtime = 0;
    for (std::size_t i = 0; i < hawks.size(); ++i) {
        const GameRecord& g = hawks[i];
        EXPECT_EQ(g.gameNumber, static_cast<int>(i + 1));
        EXPECT_TRUE(g.isLive());
        EXPECT_NE(LongDate(g.gameDate), "ERROR") << g.gameDate;
        EXPECT_GE(g.gameTypeNumber(), 1);
        EXPECT_TRUE(g.homeFlag == '1' || g.homeFlag == '2');
        const auto sums = g.pointSums();
        ASSERT_TRUE(sums);
        EXPECT_LT(sums->team + sums->opponent, 100);
        wins += sums->team > sums->opponent;
        losses += sums->team < sums->opponent;
        ties += sums->team == sums->opponent;
        const bool extra = g.teamScore[4] != 0 || g.opponentScore[4] != 0;
        EXPECT_EQ(g.overtimeFlag, extra ? -1 : 0);
        overtime += extra;
    }
    EXPECT_GT(wins, 0);
    EXPECT_GT(losses, 0);
    EXPECT_EQ(ties, 1);
    EXPECT_EQ(overtime, 1);

    // Every game of the second team against the first is the same game seen from the other side.
    const std::string hawksName = all<TeamRecord>(FileKind::TeamList, 1)[0].teamName;
    const auto tigers = all<GameRecord>(FileKind::Games, 2);
    int mirrored = 0;
    for (const auto& t : tigers) {
        if (trim(t.opponent) != trim(hawksName))
            continue;
        ++mirrored;
        const auto h = std::find_if(hawks.begin(), hawks.end(),
                                    [&](const GameRecord& g) { return g.gameDate == t.gameDate; });
        ASSERT_NE(h, hawks.end()) << t.gameDate;
        EXPECT_EQ(t.teamScore, h->opponentScore);
        EXPECT_EQ(t.opponentScore, h->teamScore);
        EXPECT_NE(t.homeFlag, h->homeFlag);
        EXPECT_EQ(t.gameType, h->gameType);
        EXPECT_EQ(t.overtimeFlag, h->overtimeFlag);
    }
    EXPECT_GE(mirrored, 2);
    EXPECT_GT(tigers.size(), static_cast<std::size_t>(mirrored));
}

// The statistics must read like a real season: in game order, every category in every game,
// passers and receivers adding up, and the touchdowns and kicks making the final score.
TEST_F(SampleSeasonTest, StatisticsAreInGameOrderAndAddUpToTheScore) {
    for (int team : {1, 2}) {
        SCOPED_TRACE("team " + digits(team));
        std::set<int> roster;
        for (const auto& p : all<RosterRecord>(FileKind::Roster, team))
            roster.insert(p.playerNumber);
        const auto games = all<GameRecord>(FileKind::Games, team);
        std::vector<Bytes> raw;
        ASSERT_TRUE(files.readAll(FileKind::Stats, raw));
        const std::vector<Bytes> before = raw;

        int previousGame = 0;
        std::map<int, std::map<std::string, int>> sum; // per game
        for (const auto& b : raw) {
            const StatHeader h = StatHeader::decode(b);
            EXPECT_GE(h.gameNumber, previousGame);
            previousGame = h.gameNumber;
            EXPECT_TRUE(roster.count(h.playerNumber)) << h.playerNumber;
            EXPECT_TRUE(h.isLive());
            auto& s = sum[h.gameNumber];
            if (isListCategory(h.category)) {
                const auto r = StatListRecord::decode(b);
                bool unused = false;
                for (const auto& e : r.entries) {
                    const std::string types = h.category == 'K' ? "FXP" : "PK";
                    if (e.type == ' ') {
                        unused = true;
                        EXPECT_EQ(e, ListEntry{});
                        continue;
                    }
                    EXPECT_FALSE(unused) << "entry after an unused one";
                    EXPECT_NE(types.find(e.type), std::string::npos) << e.type;
                    if (h.category == 'K' && e.type == 'X') {
                        EXPECT_EQ(e.yards, 0);
                    }
                    if (h.category == 'K' && e.type != 'P' && (e.marks & 2))
                        s[std::string(1, e.type)] += 1;
                    if (h.category == 'T' && (e.marks & 8))
                        s["TD"] += 1;
                }
                continue;
            }
            const auto v = StatRecord::decode(b).values;
            switch (h.category) {
            case 'P':
                EXPECT_LE(v[1], v[0]); // completions, attempts
                EXPECT_LE(v[6], v[2]); // long, yards
                s["Cm"] += v[1], s["PYds"] += v[2], s["PTD"] += v[4], s["TD"] += v[4];
                break;
            case 'C':
                EXPECT_LE(v[0], v[7]); // receptions, targets
                EXPECT_LE(v[3], v[1]);
                s["Rec"] += v[0], s["CYds"] += v[1], s["CTD"] += v[2];
                break;
            case 'R':
                EXPECT_LE(v[2], v[1] + v[5]); // long, yards plus yards lost
                s["TD"] += v[3];
                break;
            case 'D':
                EXPECT_EQ(v[7] % 5, 0);
                break; // sacks in tenths, whole or half
            default:
                ADD_FAILURE() << "category " << h.category;
            }
        }

        for (const auto& g : games) {
            SCOPED_TRACE("game " + digits(g.gameNumber));
            GameStatsIndex index;
            ASSERT_TRUE(files.indexGameStats(g, index));
            for (int k = 0; k < kCategoryCount; ++k)
                EXPECT_GT(index.counters[static_cast<std::size_t>(k)], 0) << kCategoryLetters[k];
            auto& s = sum[g.gameNumber];
            EXPECT_EQ(s["Cm"], s["Rec"]);
            EXPECT_EQ(s["PYds"], s["CYds"]);
            EXPECT_EQ(s["PTD"], s["CTD"]);
            EXPECT_EQ(6 * s["TD"] + s["X"] + 3 * s["F"], g.pointSums()->team);
        }
        // The copied game type and Special Select marks were right: indexing changed nothing.
        std::vector<Bytes> after;
        ASSERT_TRUE(files.readAll(FileKind::Stats, after));
        EXPECT_EQ(after, before);
    }
}

std::map<std::string, Bytes> folderContents(const testing::TempDir& dir) {
    std::map<std::string, Bytes> out;
    for (const auto& e : std::filesystem::directory_iterator(dir.path()))
        out[e.path().filename().string()] = dir.read(e.path().filename().string());
    return out;
}

TEST_F(SampleSeasonTest, WritingAgainGivesTheSameBytes) {
    const auto first = folderContents(dir);
    EXPECT_EQ(first.size(), 9u);
    // A roster of no known layout and a stray file of a sample team are replaced too.
    files.closeAll();
    dir.write("FBPN1.DAT", Bytes(7, 'x'));
    dir.write("FBGS3.DAT", Bytes(200, ' '));
    ASSERT_TRUE(writeSampleSeason(files));
    EXPECT_EQ(folderContents(dir), first);

    testing::TempDir other;
    DataFiles otherFiles(DataPaths{other.dir(), other.dir(), other.dir()}, prompter);
    ASSERT_TRUE(writeSampleSeason(otherFiles));
    EXPECT_EQ(folderContents(other), first);
    EXPECT_TRUE(prompter.shown.empty());
}

class InstallDefaultsTest : public ::testing::Test {
protected:
    testing::TempDir dir;
    testing::FakePrompter prompter;
    InstallResult result;
    std::string sample() const { return dir.dir() + "season"; }
    Status install() { return installDefaults(prompter, dir.dir(), sample(), result); }
};

TEST_F(InstallDefaultsTest, FreshFolderGetsConfigurationAndSample) {
    ASSERT_TRUE(install());
    EXPECT_TRUE(result.wroteConfig);
    EXPECT_TRUE(result.wroteSample);
    const Bytes ini = dir.read("BXFB.INI");
    ASSERT_EQ(ini.size(), 1018u);
    EXPECT_EQ(field::getText(ini, 329, 145), fit(sample() + "/", 145));
    EXPECT_EQ(field::getText(ini, 474, 145), fit(sample() + "/", 145));
    EXPECT_EQ(field::getText(ini, 2, 20), "League    Non-League");
    // Everything else is the fresh installation's default.
    ConfigRecord expected = ConfigRecord::decode(ini);
    expected.gameTypeNames = ConfigRecord::defaults().gameTypeNames;
    expected.dataDirectory = expected.reportDirectory = std::string(145, ' ');
    EXPECT_EQ(expected.encode(), ConfigRecord::defaults().encode());
    EXPECT_EQ(dir.read("season/FBTEAMS.DAT").size(), 4000u);
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(InstallDefaultsTest, ExistingFilesAreKept) {
    ASSERT_TRUE(install());
    Bytes ini = dir.read("BXFB.INI");
    field::putText(ini, 2, 10, "Varsity");
    dir.write("BXFB.INI", ini);
    dir.write("season/FBTEAMS.DAT", Bytes(40, 'T'));
    ASSERT_TRUE(install());
    EXPECT_FALSE(result.wroteConfig);
    EXPECT_FALSE(result.wroteSample);
    EXPECT_EQ(dir.read("BXFB.INI"), ini);
    EXPECT_EQ(dir.read("season/FBTEAMS.DAT"), Bytes(40, 'T'));

    // The older 669-byte layout is usable and stays; any other length is replaced.
    dir.write("BXFB.INI", Bytes(669, ' '));
    ASSERT_TRUE(install());
    EXPECT_FALSE(result.wroteConfig);
    EXPECT_EQ(dir.read("BXFB.INI"), Bytes(669, ' '));
    dir.write("BXFB.INI", Bytes(1000, ' '));
    ASSERT_TRUE(install());
    EXPECT_TRUE(result.wroteConfig);
    EXPECT_EQ(dir.read("BXFB.INI").size(), 1018u);
}

TEST_F(InstallDefaultsTest, ExistingTeamListKeepsTheSampleFolderAsItIs) {
    std::filesystem::create_directory(dir.path() / "season");
    dir.write("season/FBTEAMS.DAT", Bytes(80, ' '));
    ASSERT_TRUE(install());
    EXPECT_TRUE(result.wroteConfig);
    EXPECT_FALSE(result.wroteSample);
    EXPECT_EQ(dir.read("season/FBTEAMS.DAT"), Bytes(80, ' '));
    EXPECT_FALSE(dir.exists("season/FBPN1.DAT"));
}

TEST_F(InstallDefaultsTest, FolderTooLongForTheConfigurationWritesNothing) {
    const std::string longFolder = dir.dir() + std::string(150, 'x');
    EXPECT_FALSE(installDefaults(prompter, dir.dir(), longFolder, result));
    EXPECT_FALSE(dir.exists("BXFB.INI"));
    EXPECT_FALSE(std::filesystem::exists(longFolder));
}

} // namespace
} // namespace scorvane
