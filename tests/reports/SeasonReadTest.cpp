#include "reports/GameLog.h"
#include "reports/Season.h"
#include "reports/Statistics.h"

#include "ReportChecks.h"
#include "shell/FolderSnapshot.h"
#include "storage/Platform.h"
#include "storage/TeamList.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scorvane;
using scorvane::testing::figureKey, scorvane::testing::snapshot;

// Looking at a team's report or screen reads its files and writes nothing: a team with no roster,
// games or statistics yet reads as empty, and no file appears for it. A roster of an older layout
// cannot be read as it is; for a screen the program's files convert it.
TEST(SeasonRead, ATeamWithoutFilesReadsEmptyAndNothingIsCreated) {
    scorvane::testing::ScratchData s;
    ASSERT_TRUE(TeamList::createTeamList(s.data));
    TeamList names;
    ASSERT_TRUE(names.storeNames(s.data, 3, "Lakeview Tigers", "Tigers"));
    const auto before = snapshot(s.dir.path());
    for (bool screen : {false, true}) {
        TeamSeason season;
        ASSERT_TRUE(screen ? viewTeamSeason(s.data, 3, season) : loadTeamSeason(s.data, 3, season));
        EXPECT_EQ(season.name, "Lakeview Tigers");
        EXPECT_EQ(season.shortName, "Tigers");
        EXPECT_TRUE(season.games.empty());
        int records = 0;
        ASSERT_TRUE(season.stats.forEach([&](ByteView) { ++records; }));
        EXPECT_EQ(records, 0);
        EXPECT_EQ(season.playerName(5), std::string(17, ' '));
        EXPECT_EQ(snapshot(s.dir.path()), before);
    }

    Bytes old(50, ' '); // one record of 50 bytes
    old[0] = 9;
    old[1] = 0;
    const std::string name = "Old Timer";
    std::copy(name.begin(), name.end(), old.begin() + 2);
    s.dir.write("FBPN3.DAT", old);
    TeamSeason season;
    ASSERT_FALSE(readTeamSeason(s.data.paths(), 3, season));
    ASSERT_TRUE(viewTeamSeason(s.data, 3, season));
    EXPECT_EQ(season.name, "Lakeview Tigers");
    EXPECT_EQ(season.playerName(9), fit("Old Timer", 17));
    EXPECT_EQ(s.dir.read("FBPN3.DAT").size(), 201u);
}

namespace {

// A team in a data directory whose statistics file spans several of the pieces a pass reads, and
// ends in part of a record.
struct LargeTeam {
    scorvane::testing::ScratchData s;
    TeamSeason inMemory; // the same records, held in memory

    LargeTeam() {
        EXPECT_TRUE(TeamList::createTeamList(s.data));
        TeamList names;
        EXPECT_TRUE(names.storeNames(s.data, 1, "Hawks", "Hawks"));
        std::vector<Bytes> games;
        for (int g = 1; g <= 250; ++g) {
            GameRecord game;
            game.gameNumber = static_cast<std::int16_t>(g);
            game.gameType = g % 2 == 0 ? '1' : '2';
            games.push_back(game.encode());
            inMemory.games.push_back(game);
        }
        EXPECT_TRUE(s.files.replaceAll(FileKind::Games, games));
        Bytes file;
        for (int g = 1; g <= 250; ++g)
            for (int p = 1; p <= 99; ++p) {
                StatRecord r;
                r.header = StatHeader{static_cast<std::int16_t>(g), static_cast<std::int16_t>(p),
                                      p % 2 == 0 ? 'P' : 'R', p % 7 == 0 ? 'D' : 'A'};
                r.values.fill(static_cast<std::int16_t>((g * 31 + p) % 50 - 5));
                const Bytes rec = r.encode();
                file.insert(file.end(), rec.begin(), rec.end());
                inMemory.stats.push_back(rec);
            }
        file.insert(file.end(), 40, 'x'); // part of a record, as a cut-short copy leaves
        s.dir.write("FBPS1.DAT", file);
    }
};

} // namespace

// A season read from its files gives the same report as the same records in memory, whichever
// pieces the records fall in, and a trailing part of a record is no record. A statistics file that
// cannot be read when the report is worked out fails the report: no figures short of some records
// are taken for the season's.
TEST(SeasonRead, StatisticsReadPieceByPieceCountAsTheSameRecordsInMemory) {
    LargeTeam t;
    TeamSeason fromFile;
    ASSERT_TRUE(readTeamSeason(t.s.data.paths(), 1, fromFile));
    long long records = 0;
    ASSERT_TRUE(fromFile.stats.forEach([&](ByteView rec) {
        EXPECT_EQ(rec.size(), StatRecord::Length);
        ++records;
    }));
    EXPECT_EQ(records, 250 * 99);

    Selection evenGames;
    evenGames.gameTypes = {true, false, false, false, false, false, false};
    for (const Selection& selection : {Selection{}, evenGames})
        for (char category : {'P', 'R'}) {
            const StatReport a = ComputeStatistics(category, {fromFile}, selection);
            const StatReport b = ComputeStatistics(category, {t.inMemory}, selection);
            ASSERT_TRUE(a.status);
            ASSERT_EQ(a.players.size(), b.players.size());
            ASSERT_FALSE(a.players.empty());
            for (std::size_t i = 0; i < a.players.size(); ++i)
                for (int code = 1; code <= kMaxColumnCode; ++code)
                    EXPECT_EQ(figureKey(a.players[i][code]), figureKey(b.players[i][code]));
            EXPECT_EQ(a.totals[3].value, b.totals[3].value);
        }

    struct Refuse {
        static platform::Injection before(void*, const platform::CallInfo& call) {
            if (call.call == platform::Call::Open && call.path.ends_with("FBPS1.DAT"))
                return {platform::Fault::NotReady};
            return {};
        }
    };
    const platform::Hooks hooks{nullptr, &Refuse::before};
    platform::setHooks(&hooks);
    const StatReport report = ComputeStatistics('P', {fromFile}, Selection{});
    const GameLog log = computeGameLog('P', fromFile, Selection{}, 2);
    platform::setHooks(nullptr);
    EXPECT_EQ(report.status.kind(), ErrorKind::Disk);
    EXPECT_EQ(report.status.code(), diskerr::DiskNotReady);
    EXPECT_EQ(log.status.kind(), ErrorKind::Disk);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(ComputeStatistics('P', {fromFile}, Selection{}).status);

    // Each pass reads the file as it is then.
    t.s.dir.write("FBPS1.DAT", Bytes{});
    EXPECT_TRUE(ComputeStatistics('P', {fromFile}, Selection{}).empty());
}
