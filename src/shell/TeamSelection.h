#pragma once

#include "storage/DataFiles.h"
#include "storage/Records.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// The 100 team slots of a data directory and which of them the user has marked.
//
// The marks live in memory for the whole run. The list's selection is taken over as the marks on
// every click, so the reports always see what the user sees. The current team (whose files the
// per-team screens open) is the line the user last clicked when it is marked, otherwise the first
// marked team.
class TeamSelection {
public:
    TeamSelection();

    // Reads the team list. A missing or short file reads as unnamed teams.
    Status load(DataFiles& files);
    // Names as stored (Windows-1252), right-trimmed: the list's 100 lines.
    std::vector<std::string> lines() const;
    const TeamRecord& team(int teamNumber) const;
    // Long name right-trimmed, for titles ("Roster - <name>").
    std::string teamName(int teamNumber) const;

    // Opening the selection list: returns the lines to select. When the reset mark is set it is
    // cleared and every mark dropped.
    std::vector<bool> open();
    // A click: the list's selected lines (index = team - 1) and the line clicked (-1 for none).
    void click(const std::vector<bool>& selectedLines, int clickedLine);
    int count() const;
    bool isMarked(int teamNumber) const;
    std::vector<int> markedTeams() const;

    int currentTeam() const { return current_; }
    void setCurrentTeam(int teamNumber);
    // Set when the data directory changes: the next opening shows nothing selected.
    void setResetMark() { resetMark_ = true; }
    bool resetMark() const { return resetMark_; }

    // Stores a team's names as the team name dialog does and writes its team list record.
    // An empty long name becomes "Team <n>"; an empty short name takes the long name, cut to 10.
    Status storeNames(DataFiles& files, int teamNumber, const std::string& longName,
                      const std::string& shortName);

    // A new data directory: a team list of 100 unnamed slots, written when the folder has none
    // (an existing list, however short, is left as it is).
    static Status createTeamList(DataFiles& files);

private:
    std::array<TeamRecord, kMaxTeams + 1> teams_;
    std::array<bool, kMaxTeams + 1> marked_{};
    int current_ = 1;
    bool resetMark_ = false;
};

// The names a team is given when the team name dialog is confirmed.
struct TeamNames {
    std::string longName;   // 25
    std::string shortName;  // 10
};
TeamNames teamNamesFor(int teamNumber, const std::string& longText, const std::string& shortText);

} // namespace scorvane
