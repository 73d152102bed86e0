#pragma once

#include "GameLog.h"
#include "GameScores.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// The points both teams scored in each quarter (and overtime) over these games.
struct QuarterPoints {
    std::array<long long, 5> team{};
    std::array<long long, 5> opponents{};
};
QuarterPoints quarterPoints(const std::vector<GameScore>& games);

// One column of a player's game log as numbers, game by game: counts and yards as they are,
// sacks in whole sacks (2.5), ratios and averages as computed, made/attempted columns as the
// number made. Figures that overflowed read as 0. `labels` gets each game's date, or "Game n" for a
// game without one.
std::vector<double> columnByGame(const GameLog& log, int code, std::vector<std::string>& labels);
double figureNumber(char category, int code, const Figure& figure);

} // namespace scorvane
