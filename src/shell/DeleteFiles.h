#pragma once

#include "shell/TeamSelection.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"

#include <string>

namespace scorvane {

// Deleting a team's data files: its roster, player information, games and statistics. The team's
// line of the team list becomes unnamed (spaces), and no team stays marked afterwards (the reset
// mark is set). Everything goes together: a crash or a full disk leaves all of it as before or
// all of it done (see FolderCopy.h). The other teams' files are not touched.

// What a team's files hold, counted from their lengths.
struct TeamFileCounts {
    int players = 0;      // roster records
    int playerInfo = 0;   // player information records
    int games = 0;        // game records, deleted ones included
    int statistics = 0;   // statistics records
    bool anyFile = false; // at least one of the four files exists
};
TeamFileCounts countTeamFiles(const DataPaths& paths, int team);
// "12 players, 10 games, 240 statistics records"
std::string describeTeamFiles(const TeamFileCounts& counts);

// The question asked before deleting; No is the default.
Message deleteFilesQuestion(int team, const std::string& teamNameUtf8);

enum class DeleteResult { Deleted, Declined, Failed };
// Asks, then deletes. `teams` is loaded again from the new team list and its reset mark set.
DeleteResult deleteTeamFiles(DataFiles& files, TeamSelection& teams, Prompter& prompter, int team);

} // namespace scorvane
