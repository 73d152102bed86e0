#pragma once

#include "storage/Status.h"

#include <cstdint>
#include <string>

namespace scorvane::bench {

inline constexpr int kTeams = 100;
inline constexpr int kLargeTeam = 1;
inline constexpr int kGames = 5000;
inline constexpr int kRecordsPerGame = 200;
inline constexpr int kStatRecords = kGames * kRecordsPerGame;

// Writes a data directory for the benchmark into `folder` (which must exist): 100 named teams,
// the first with a roster of 99 players, 5,000 games and 1,000,000 statistics records in game
// order (40 players a game in five categories), written through the storage layer. The numbers
// come from a fixed generator, so every run measures the same data.
Status writeLargeSeason(const std::string& folder);
// The same data directory with `games` games (200 statistics records each) and another seed: one
// season of a program that keeps many (10 games give 2,000 statistics records).
Status writeSeason(const std::string& folder, int games, std::uint64_t seed);

} // namespace scorvane::bench
