#pragma once

#include "storage/ConfigRecord.h"

#include <array>
#include <string>

namespace scorvane {

// The names the user gives the seven game types and the five own columns of each category.
struct OwnNames {
    std::array<std::string, 7> gameTypes; // right-trimmed, as shown in the boxes
    std::array<std::string, 30> columns;  // six rows of five: P, C, R, D, K, T
};

// The boxes' contents when the dialog opens.
OwnNames ownNamesOf(const ConfigRecord& config);
// Takes the boxes over into the configuration: each text trimmed, an empty one replaced by its
// default ("GameType 3", "R2"), cut or padded to 10 (game types) or 3 (columns) characters.
void applyOwnNames(ConfigRecord& config, const OwnNames& names);

} // namespace scorvane
