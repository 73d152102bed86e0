#pragma once

#include "storage/ConfigRecord.h"
#include "storage/Prompter.h"
#include "storage/Records.h"

#include <array>
#include <optional>
#include <string>

namespace scorvane {

inline constexpr int kGameTypeCount = 7;
inline constexpr int kLowestGame = 1;
inline constexpr int kHighestGame = 999;

// Which games and which player a report counts. The defaults count everything.
struct Selection {
    int fromGame = kLowestGame;
    int toGame = kHighestGame;
    std::array<bool, kGameTypeCount> gameTypes{true, true, true, true, true, true, true};
    bool specialSelect = false; // only the games whose Special Select mark is "2"
    int playerNumber = 0;       // 0: every player
    std::string playerName;     // 17 characters, lower case, no leading spaces; blank: every player

    // True only when all seven game types count.
    bool allGameTypes() const;
    // Whether a game record counts: a live game within the range, of a chosen game type, and marked
    // when Special Select is on. A game whose type letter is no digit 1..7 never counts.
    bool countsGame(const GameRecord& game) const;
    // Whether a player counts: an exact match on the number and on the name, where they are set.
    // `rosterName` is the stored 17-character name (Windows-1252).
    bool countsPlayer(int number, const std::string& rosterName) const;
    bool choosesPlayer() const { return playerNumber != 0 || !trim(playerName).empty(); }

    // The text that stands in for the lines of an empty report: "No Games" when games were picked
    // one by one (Special Select), "No Players" otherwise.
    std::string emptyReportText() const;
    // One line describing the selection for a printed page ("Games 1 to 999, all game types"),
    // in the stored text's encoding (Windows-1252).
    std::string describe(const ConfigRecord& config) const;
};

// The player name as the selection keeps it: leading spaces removed, letters in lower case
// (Windows-1252 letters too), cut or padded to 17 characters.
std::string selectionPlayerName(const std::string& typed);

// A line of the Special Select list: the date as MM/DD/YY, the team's and the opponent's points
// right-justified in 3 and joined by " - ", and the opponent's name in 25 characters. Points whose
// sum leaves the 16-bit range show as blanks. Windows-1252, like the stored name.
std::string specialSelectLine(const GameRecord& game);

// What the selection dialog holds when Compute is pressed: the texts as typed and the boxes.
struct SelectionEntry {
    std::string fromGame = "1";
    std::string toGame = "999";
    std::array<bool, kGameTypeCount> gameTypes{true, true, true, true, true, true, true};
    bool specialSelect = false;
    std::string playerNumber = "0";
    std::string playerName;
};

enum class SelectionField { FromGame, ToGame };

struct SelectionError {
    Message message;
    SelectionField focus;
};

// Checks the entry and, when it is valid, stores it in `selection` (a reversed range swapped).
// A from or to game outside 1..999 is refused with "Must be 1 to 999" and nothing is stored.
std::optional<SelectionError> storeSelection(const SelectionEntry& entry, Selection& selection);

} // namespace scorvane
