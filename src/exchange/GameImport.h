#pragma once

#include "PressBox.h"

#include "entry/GameResults.h"
#include "games/Roster.h"
#include "storage/DataFiles.h"
#include "storage/Records.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace scorvane {

// A press-box game turned into one of our games: its game record and every player's results of
// one side, with what could not be taken over. Nothing is written until writeImport.

// The most games a team keeps: an import that would make the 1000th is refused.
inline constexpr int kMaxGames = 999;

struct ImportedPlayer {
    int number = 0;
    std::string name;       // Windows-1252, as the file spells it (cut to the roster's 17)
    std::string rosterName; // the roster's name of the number, empty when the number is free
    bool onRoster = false;
    bool add = true;                  // a number not on the roster is added with the file's name
    int line = 0;                     // of the player's element in the file
    std::array<bool, 6> categories{}; // recorded in passing, receiving ... returns
    // The file has his kicking (or returns) totals but no play by play for them: his per-play
    // list stays empty and is entered by hand.
    bool kicksByHand = false;
    bool returnsByHand = false;
};

struct GameImport {
    int side = 0;    // our team's place in PressBoxGame::teams
    GameRecord game; // as a new game is written (its number is set when written)
    GameResults results;
    std::vector<ImportedPlayer> players; // in number order
    // Figures of the file that have no column of ours, one line each ("#4 Plaster,Josh:
    // kickoffs no 1, yds 65"), and what must be entered by hand.
    std::vector<std::string> notImported;
    std::vector<std::string> byHand;
};

// Which of the file's teams is ours, by the team's name or id (trimmed, case and accents
// ignored): its place in `game.teams`, or nothing when neither or both match.
std::optional<int> matchSide(const PressBoxGame& game, const std::string& teamName);

// Maps one side of the file onto our columns and per-play lists. Refused, with a message naming
// the player or line, for a player without a jersey, a jersey outside 1-99 or worn twice, a
// number that does not fit 16 bits, a sum that would overflow, or more than 18 kicks or returns
// for one player.
struct ImportBuild {
    std::optional<GameImport> import;
    std::string error;
};
ImportBuild buildImport(const PressBoxGame& game, int side, const Roster& roster);

// The preview as text: the game (date, opponent, home or away, scores by quarter), then player by
// player what goes into each category, then what is not imported and what is left to enter by
// hand. The command line prints it; the screen shows the same parts.
std::string gameLine(const GameRecord& game);
std::vector<std::string> categoryLines(const GameImport& import, const ImportedPlayer& player);
std::string previewText(const GameImport& import);

// Where the import goes: a new game after the last one, or the results of an existing game
// replaced (its game record is kept as it is).
struct ImportTarget {
    int replaceGame = 0; // 0: a new game
    // Numbers not on the roster are added with the file's name (those whose `add` is set);
    // otherwise their results are still written under the number, as the player screen keeps
    // results of a number that left the roster.
    bool addToRoster = true;
};

// Writes the game, its player results and the roster additions together: the files are replaced
// as one change, so a crash leaves all of them as before or all of them as after. `written` gets
// the game's number. A new game past the 999th is refused and nothing is written.
[[nodiscard]] Status writeImport(TeamFiles& files, const GameImport& import,
                                 const ImportTarget& target, int& written);

} // namespace scorvane
