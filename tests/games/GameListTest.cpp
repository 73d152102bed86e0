#include "games/GameList.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// Team 1 with `count` live games (opponent "Opp<n>", won n-0) and two statistics records per game.
struct Season : ::testing::Test, ScratchData {
    ConfigRecord config = ConfigRecord::defaults();
    GameList games;

    void build(int count) {
        std::vector<GameRecord> records;
        std::vector<StatRecord> stats;
        for (int n = 1; n <= count; ++n) {
            GameRecord g;
            g.gameNumber = static_cast<std::int16_t>(n);
            g.opponent = "Opp" + digits(n);
            g.teamScore[0] = static_cast<std::int16_t>(n);
            records.push_back(g);
            for (int player : {10, 20})
                stats.push_back(StatRecord{StatHeader{static_cast<std::int16_t>(n),
                                                      static_cast<std::int16_t>(player), 'P'}});
        }
        ASSERT_TRUE(files.replaceAllWith(FileKind::Games, records));
        ASSERT_TRUE(files.replaceAllWith(FileKind::Stats, stats));
        ASSERT_TRUE(games.load(files));
    }
    // Every byte of a file equals what it was, the game number and status of each record aside
    // (those are checked with state()).
    void expectOnlyNumbersAndStatusChanged(const Bytes& before, const char* file,
                                           std::size_t length) const {
        const Bytes after = dir.read(file);
        ASSERT_EQ(after.size(), before.size());
        const std::size_t status = length == 200 ? 2 : 5;
        for (std::size_t i = 0; i < after.size(); ++i) {
            const std::size_t at = i % length;
            if (at != 0 && at != 1 && at != status) {
                ASSERT_EQ(after[i], before[i]) << file << " byte " << i;
            }
        }
    }
    // (game number, status) of every game record, then of every statistics record.
    std::string state(const char* file, std::size_t length) const {
        const Bytes b = dir.read(file);
        std::string out;
        for (std::size_t at = 0; at < b.size(); at += length)
            out += digits(intAt(b, at)) + static_cast<char>(b[at + (length == 200 ? 2 : 5)]) + " ";
        return out;
    }
};

} // namespace

TEST_F(Season, DeletingGameThreeOfFiveRenumbersBothFiles) {
    build(5);
    const Bytes gamesBefore = dir.read("FBGS1.DAT"), statsBefore = dir.read("FBPS1.DAT");
    bool deleted = true;
    prompter.answers = {Answer::Cancel, Answer::Ok, Answer::Ok};
    ASSERT_TRUE(games.remove(files, prompter, 2, deleted));
    EXPECT_FALSE(deleted);
    EXPECT_EQ(state("FBGS1.DAT", 200), "1A 2A 3A 4A 5A ");
    ASSERT_TRUE(games.remove(files, prompter, 2, deleted));
    EXPECT_TRUE(deleted);
    EXPECT_EQ(prompter.shown[0].text + "|" + prompter.shown[0].title,
              "Are you sure?  Player results will also be deleted!|Delete Game?");
    // The tombstone takes the number before it; later games and their results move down.
    EXPECT_EQ(state("FBGS1.DAT", 200), "1A 2A 2D 3A 4A ");
    EXPECT_EQ(state("FBPS1.DAT", 110), "1A 1A 2A 2A 3D 3D 3A 3A 4A 4A ");
    expectOnlyNumbersAndStatusChanged(gamesBefore, "FBGS1.DAT", 200);
    expectOnlyNumbersAndStatusChanged(statsBefore, "FBPS1.DAT", 110);
    // The list shows games 1..4; the former game 4 is now game 3.
    const auto lines = games.openingLines(config);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[2].substr(0, 4), "3   ");
    EXPECT_NE(lines[2].find("Opp4"), std::string::npos);

    // Deleting game 1 keeps its own number in the tombstone; the list still counts from 1.
    ASSERT_TRUE(games.remove(files, prompter, 0, deleted));
    EXPECT_EQ(state("FBGS1.DAT", 200), "1D 1A 1D 2A 3A ");
    ASSERT_TRUE(games.load(files));
    EXPECT_EQ(
        std::tuple(games.positionOf(1), games.positionOf(3), games.openingLines(config).size()),
        std::tuple(2, 5, 3u));
    // Read alone, behind the tombstones, each game is the one the list finds.
    for (int n = 0; n <= 4; ++n) {
        GameRecord alone;
        bool found = false;
        ASSERT_TRUE(GameList::readGame(files, n, alone, found));
        ASSERT_EQ(found, games.game(n) != nullptr) << n;
        if (found) {
            EXPECT_EQ(alone.opponent, games.game(n)->opponent) << n;
        }
    }
}

TEST_F(Season, InsertingBeforeGameTwoMovesLaterGamesAndResultsUp) {
    build(3);
    Bytes gamesExpected = dir.read("FBGS1.DAT");
    const Bytes statsBefore = dir.read("FBPS1.DAT");
    GameRecord fresh;
    fresh.opponent = "Newcomers";
    const Bytes freshBytes = fresh.encode();
    gamesExpected.insert(gamesExpected.begin() + 200, freshBytes.begin(), freshBytes.end());
    ASSERT_TRUE(games.insert(files, 2, fresh));
    EXPECT_EQ(state("FBGS1.DAT", 200), "1A 2A 3A 4A ");
    EXPECT_EQ(state("FBPS1.DAT", 110), "1A 1A 3A 3A 4A 4A ");
    expectOnlyNumbersAndStatusChanged(gamesExpected, "FBGS1.DAT", 200);
    expectOnlyNumbersAndStatusChanged(statsBefore, "FBPS1.DAT", 110);
    EXPECT_NE(games.openingLines(config)[1].find("Newcomers"), std::string::npos);
    EXPECT_NE(games.openingLines(config)[2].find("Opp2"), std::string::npos);
    EXPECT_FALSE(dir.exists("FBJOURNL.TMP"));

    // Inserted after the last game, a game is added at the end; a changed game is listed as
    // written.
    fresh.opponent = "Latecomers";
    ASSERT_TRUE(games.insert(files, 5, fresh));
    EXPECT_EQ(state("FBGS1.DAT", 200), "1A 2A 3A 4A 5A ");
    fresh.opponent = "Renamed";
    ASSERT_TRUE(games.change(files, 1, fresh));
    EXPECT_EQ(textAt(dir.read("FBGS1.DAT"), 29, 7), "Renamed");
    const auto lines = games.openingLines(config);
    EXPECT_NE(lines[0].find("Renamed"), std::string::npos);
    EXPECT_NE(lines[4].find("Latecomers"), std::string::npos);
}

TEST_F(Season, MarksAreToggledInBothFilesAndClearedByTheRebuild) {
    build(3);
    std::string line;
    ASSERT_TRUE(games.toggleMark(files, 1, config, line));
    EXPECT_EQ(line.substr(line.size() - 2), std::string(" \x10"));
    // Toggled twice, a mark is gone again: the list keeps what it wrote.
    ASSERT_TRUE(games.toggleMark(files, 0, config, line));
    ASSERT_TRUE(games.toggleMark(files, 0, config, line));
    EXPECT_EQ(line.substr(line.size() - 2), "  ");
    Bytes g = dir.read("FBGS1.DAT"), s = dir.read("FBPS1.DAT");
    EXPECT_EQ(std::string() + char(g[134]) + char(g[334]), "12");
    EXPECT_EQ(std::string() + char(s[7]) + char(s[117]) + char(s[227]) + char(s[337]), "1122");

    // A deleted game's record keeps the mark it had; only live games' marks are cleared.
    ASSERT_TRUE(games.toggleMark(files, 2, config, line));
    bool deleted = false;
    prompter.answers = {Answer::Ok, Answer::Ok};
    ASSERT_TRUE(games.remove(files, prompter, 2, deleted));
    ASSERT_TRUE(deleted);
    std::vector<std::string> lines;
    ASSERT_TRUE(games.refresh(files, config, lines));
    g = dir.read("FBGS1.DAT");
    s = dir.read("FBPS1.DAT");
    EXPECT_EQ(std::string() + char(g[134]) + char(g[334]) + char(g[534]), "112");
    EXPECT_EQ(std::string() + char(s[227]) + char(s[337]), "11");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].substr(lines[1].size() - 5), "Won  ");
    EXPECT_EQ(lines[2], "      ******* New Game *******");
}

// A game beyond the few records read one by one is found by the read of the whole file.
TEST_F(Season, AGameBehindManyDeletedRecordsIsReadAlone) {
    GameRecord deleted;
    deleted.gameNumber = 1;
    deleted.gameStatus = 'D';
    std::vector<GameRecord> records(70, deleted);
    records.push_back(deleted);
    records.back().gameStatus = 'A';
    records.back().opponent = "Far";
    ASSERT_TRUE(files.replaceAllWith(FileKind::Games, records));
    GameRecord alone;
    bool found = false;
    ASSERT_TRUE(GameList::readGame(files, 1, alone, found));
    EXPECT_TRUE(found);
    EXPECT_EQ(trimRight(alone.opponent), "Far");
}

TEST_F(Season, AnOverflowingScoreIsShownAsSuchNotWrappedAround) {
    build(1);
    GameRecord g = *games.game(1);
    g.teamScore = {30000, 3000, 0, 0, 0};
    EXPECT_EQ(GameList::line(g, config).substr(51), "Overflow");
    EXPECT_EQ(GameList::line(*games.game(1), config).substr(51), "   1-0   Won");
}
