#pragma once

#include "storage/Records.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scorvane {

// A game as the press box's stat crew program writes it: an XML file whose root element is
// `fbgame`, with a `venue` (date, both teams' ids and names), one `team` element per side (its
// `linescore` by period and one `player` element per player with his statistics as child
// elements: `pass`, `rush`, `rcv`, `defense`, `punt`, `fg`, `pat`, `kr`, `pr` and others), and a
// `plays` section with the game play by play. docs/exchange.md lists the elements and attributes
// and what becomes of each.
//
// Texts are held as the file has them (UTF-8); numbers are read when the figures are mapped, so
// that a bad one can be named with its player and line.

// One player's element: the attributes of each of his statistic elements, by element name.
struct PressBoxPlayer {
    std::string name; // "Miller, Chris"
    std::string uni;  // the jersey as written: "12", "1M"
    int line = 0;     // line of the `player` element in the file
    std::map<std::string, std::map<std::string, std::string>> stats;
    // Kicks ("F" field goal, "X" extra point, "P" punt) and returns ("P" punt return, "K" kick
    // return) taken from the play by play, in the order they happened, as the per-play lists
    // keep them (yards and marks).
    std::vector<ListEntry> kicks;
    std::vector<ListEntry> returns;

    // The attribute of a statistic element, or nullptr when the file has none.
    const std::string* stat(std::string_view element, std::string_view attribute) const;
    bool has(std::string_view element) const {
        return stats.find(std::string(element)) != stats.end();
    }
};

struct PressBoxTeam {
    char vh = 'V'; // "V" visitor, "H" home
    std::string id;
    std::string name;
    std::vector<int> periods; // points by period: 1-4 the quarters, 5 on overtime
    int score = 0;
    int line = 0; // line of the `team` element
    std::vector<PressBoxPlayer> players;
};

struct PressBoxGame {
    std::string date;                // as written: "9/21/2019"
    std::string location;            // the venue's location, else its stadium
    std::vector<PressBoxTeam> teams; // as the file lists them: two for a whole game
    // Whether the file has a play by play with kicks and returns in it; without one the per-play
    // lists stay empty and kicks and returns are entered by hand.
    bool hasPlays = false;
};

// Reads a press-box XML file. A file that is not XML, is cut short, is no football game or has
// no team gives nothing and a message that names the line where it can.
struct PressBoxRead {
    std::optional<PressBoxGame> game;
    std::string error;
};
PressBoxRead readPressBox(std::string_view xml);

} // namespace scorvane
