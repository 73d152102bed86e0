#pragma once

#include "DataFiles.h"
#include "Records.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// The 100 team slots of a data directory, as the team list file holds them.
class TeamList {
public:
    TeamList();

    // Reads the team list. A missing or short file reads as unnamed teams.
    [[nodiscard]] Status load(DataFiles& files);
    // Names as stored (Windows-1252), right-trimmed: the list's 100 lines.
    std::vector<std::string> lines() const;
    const TeamRecord& team(int teamNumber) const;
    // Long name right-trimmed, for titles ("Roster - <name>").
    std::string teamName(int teamNumber) const;

    // Stores a team's names as the team name dialog does and writes its team list record.
    // An empty long name becomes "Team <n>"; an empty short name takes the long name, cut to 10.
    [[nodiscard]] Status storeNames(DataFiles& files, int teamNumber, const std::string& longName,
                                    const std::string& shortName);

    // A new data directory: a team list of 100 unnamed slots, written when the folder has none
    // (an existing list, however short, is left as it is).
    [[nodiscard]] static Status createTeamList(DataFiles& files);

private:
    std::array<TeamRecord, kMaxTeams + 1> teams_;
};

// The names a team is given when the team name dialog is confirmed.
struct TeamNames {
    std::string longName;  // 25
    std::string shortName; // 10
};
TeamNames teamNamesFor(int teamNumber, const std::string& longText, const std::string& shortText);

} // namespace scorvane
