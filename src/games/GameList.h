#pragma once

#include "storage/ConfigRecord.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/Records.h"

#include <functional>
#include <string>
#include <vector>

namespace scorvane {

// A team's games and the renumbering that keeps game numbers consecutive.
//
// Record positions and game numbers differ: deleted games stay in the file as tombstones, so the
// record of game k lies at position k or later. Inserting or deleting a game renumbers the games
// after it and the game numbers inside the statistics records; both files are replaced together
// (see DataFiles::replaceTogether), so a crash leaves both as before or both as after.
class GameList {
public:
    static constexpr const char* kNewGameLine = "      ******* New Game *******";

    // Reads the team's game file in one pass.
    Status load(TeamFiles& files);

    const std::vector<GameRecord>& records() const { return records_; }
    int activeCount() const;
    // Position (from 1) of the live record of a game: the search starts at the position equal to
    // the number and walks forward. 0 when there is none.
    int positionOf(int gameNumber) const;
    // The live record of a game, or nullptr.
    // Reads game `gameNumber` alone, as game() finds it after load(): its record is looked for
    // from its number's position on, and the file is read whole only when it is not among the
    // next few. `found` is false when there is no such game.
    static Status readGame(TeamFiles& files, int gameNumber, GameRecord& game, bool& found);
    const GameRecord* game(int gameNumber) const;

    // The summary line of a game (number, date, type, opponent, score, result word). A game whose
    // points leave the 16-bit range shows "Overflow" in place of its score.
    static std::string line(const GameRecord& game, const ConfigRecord& config);
    // The list as first shown: one summary line per live game in position order, nothing more.
    std::vector<std::string> openingLines(const ConfigRecord& config) const;
    // Rebuilding the list: clears every Special Select mark in both files (writing what changed),
    // then returns each live game's line followed by two spaces, and the "New Game" line last.
    // An empty game file leaves the lines empty and writes nothing.
    Status refresh(TeamFiles& files, const ConfigRecord& config, std::vector<std::string>& lines);
    // Flips the Special Select mark of the game on list line `line` (game line + 1) in its record
    // and in its statistics records; `newLine` gets the game's line ending in " " + char(16) when
    // marked, two spaces when not. Nothing happens for a line that holds no game.
    Status toggleMark(TeamFiles& files, int line, const ConfigRecord& config, std::string& newLine);

    // Adds a game after the last one: its number is the number of live games plus one.
    Status append(TeamFiles& files, GameRecord game);
    // Rewrites a live game in place.
    Status change(TeamFiles& files, int gameNumber, GameRecord game);
    // Inserts a game before game `gameNumber`, which it becomes; later games and their statistics
    // move up by one.
    Status insert(TeamFiles& files, int gameNumber, GameRecord game);
    // Asks "Are you sure?  Player results will also be deleted!" and deletes the game of list line
    // `line`: its record becomes a tombstone, later games and statistics move down by one, and its
    // statistics records are marked deleted. `deleted` tells whether it happened.
    Status remove(TeamFiles& files, Prompter& prompter, int line, bool& deleted);

    static Message deleteQuestion();

private:
    std::vector<GameRecord> records_;
};

// The renumbering itself: the games file's records are changed in memory, and the change each
// statistics record's header undergoes comes back, to be made in one pass over the file (it
// returns whether it changed the header; every other byte of a record is kept).
using StatHeaderChange = std::function<bool(StatHeader&)>;
StatHeaderChange insertGame(std::vector<GameRecord>& games, int gameNumber, GameRecord game);
StatHeaderChange deleteGame(std::vector<GameRecord>& games, int gameNumber);

} // namespace scorvane
