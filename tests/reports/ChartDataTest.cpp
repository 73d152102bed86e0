#include "reports/ChartData.h"
#include "reports/SeasonBuilder.h"

#include <gtest/gtest.h>

using namespace scorvane;
using scorvane::testing::SeasonBuilder;

// The points by quarter add up what the games shown scored; a game log column reads as numbers
// in the units a coach expects: sacks in halves, averages as computed, made kicks as a count.
TEST(ChartData, QuarterPointsAndAColumnGameByGame) {
    std::vector<GameScore> games(2);
    games[0].team = {7, 0, 3, 0, 0};
    games[0].opponentPoints = {0, 14, 0, 0, 3};
    games[1].team = {0, 7, 7, 7, 6};
    const QuarterPoints points = quarterPoints(games);
    EXPECT_EQ(points.team, (std::array<long long, 5>{7, 7, 10, 7, 6}));
    EXPECT_EQ(points.opponents, (std::array<long long, 5>{0, 14, 0, 0, 3}));

    const TeamSeason season = SeasonBuilder()
                                  .player(55, "Linebacker")
                                  .game(1)
                                  .game(2)
                                  .game(3)
                                  .stats(1, 55, 'D', {{3, 4}, {10, 25}})
                                  .stats(3, 55, 'D', {{3, 2}, {10, 10}})
                                  .season;
    const GameLog log = computeGameLog('D', season, Selection{}, 55);
    std::vector<std::string> labels;
    EXPECT_EQ(columnByGame(log, 10, labels), (std::vector<double>{2.5, 1.0}));
    EXPECT_EQ(columnByGame(log, 2, labels), (std::vector<double>{4.0, 2.0})); // Tkl = Sol + Ast
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_EQ(labels[1], "Game 3"); // no date stored

    Figure made;
    made.made = 3;
    made.attempted = 4;
    EXPECT_EQ(figureNumber('K', 11, made), 3.0);
    Figure overflow;
    overflow.value = 40000;
    overflow.overflow = true;
    EXPECT_EQ(figureNumber('P', 18, overflow), 0.0);
}
