#pragma once

#include "SeasonsFile.h"

#include "storage/Records.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace scorvane {

// Who is who across seasons.
//
// A player is the same person in two of the chosen seasons when his names there match: trimmed,
// ignoring case and accents (Windows-1252 letters folded to their base letters: "José" is
// "JOSE", "Æ" is "AE", "ß" is "SS"). His number may differ from season to season. Within one
// season each roster number is a person of its own. The user's links join two names of two seasons
// (a misspelling) into one person; an unlink keeps two matching names of two seasons apart (two
// brothers of one name). An empty name is never linked.

// The name as identity compares it: trimmed, accents folded, upper case; empty for a blank name.
// `cp1252` is the stored Windows-1252 name.
std::string identityKey(std::string_view cp1252);
inline bool sameName(std::string_view a, std::string_view b) {
    return identityKey(a) == identityKey(b);
}

// The roster of one chosen season: its label and the stored name of each number (empty: no
// player).
struct SeasonRoster {
    std::string label;
    std::array<std::string, kMaxPlayers + 1> names;
};

// The persons of the chosen seasons: for each season (in the order given) and player number, the
// person's index, 0..count-1.
struct People {
    std::vector<std::array<int, kMaxPlayers + 1>> person;
    int count = 0;

    int of(std::size_t season, int number) const {
        return person.at(season).at(static_cast<std::size_t>(number));
    }
};

People identifyPlayers(const std::vector<SeasonRoster>& seasons,
                       const std::vector<PlayerLink>& links);

} // namespace scorvane
