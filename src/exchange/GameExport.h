#pragma once

#include "entry/GameResults.h"
#include "games/Roster.h"
#include "storage/DataFiles.h"
#include "storage/Records.h"
#include "storage/TeamList.h"

#include <optional>
#include <string>

namespace scorvane {

// One team's side of a game as our files hold it: the game record, the roster and every player's
// results of the game. Reading it writes nothing.
struct GameSide {
    int team = 0;
    std::string teamName; // Windows-1252, right-trimmed
    GameRecord game;
    Roster roster;
    GameResults results;
};

// Reads game `gameNumber` of a team. Fails with a message when there is no such live game or a
// file cannot be read.
[[nodiscard]] Status readGameSide(DataFiles& data, const TeamList& teams, int team, int gameNumber,
                                  GameSide& side);

// The opponent's side of the same game, when the opponent is a team of the data directory that has
// this game too: the team whose long or short name is the game's opponent (trimmed, case ignored),
// and its live game of the same date whose opponent is our team and whose scores are ours
// mirrored. Nothing when there is none.
std::optional<GameSide> findOpponentSide(DataFiles& data, const TeamList& teams,
                                         const GameSide& ours);

// The game as a press-box XML file (UTF-8): the venue, our team and, when given, the opponent's
// with its players, and a play by play holding every kick and return of the per-play lists.
// Figures the press-box elements have no attribute for (big plays, first downs, penalties, the
// user columns...) go into attributes of our own, prefixed "sv:", which our import reads back, so
// that every figure survives the round trip. docs/exchange.md lists them.
std::string pressBoxXml(const GameSide& ours, const GameSide* opponent);

} // namespace scorvane
