#pragma once

#include "storage/TeamList.h"

#include <array>
#include <vector>

namespace scorvane {

// The team list and which of its teams the user has marked.
//
// The marks live in memory for the whole run. The list's selection is taken over as the marks on
// every click, so the reports always see what the user sees. The current team (whose files the
// per-team screens open) is the line the user last clicked when it is marked, otherwise the first
// marked team.
class TeamSelection : public TeamList {
public:
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

private:
    std::array<bool, kMaxTeams + 1> marked_{};
    int current_ = 1;
    bool resetMark_ = false;
};

} // namespace scorvane
