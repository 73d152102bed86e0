#include "TeamSelection.h"

namespace scorvane {

std::vector<bool> TeamSelection::open() {
    if (resetMark_) {
        resetMark_ = false;
        marked_.fill(false);
    }
    std::vector<bool> selected(kMaxTeams);
    for (int t = 1; t <= kMaxTeams; ++t)
        selected[static_cast<std::size_t>(t - 1)] = marked_[static_cast<std::size_t>(t)];
    return selected;
}

void TeamSelection::click(const std::vector<bool>& selectedLines, int clickedLine) {
    for (int t = 1; t <= kMaxTeams; ++t) {
        const auto i = static_cast<std::size_t>(t - 1);
        marked_[static_cast<std::size_t>(t)] = i < selectedLines.size() && selectedLines[i];
    }
    const int clicked = clickedLine + 1;
    if (clicked >= 1 && clicked <= kMaxTeams && isMarked(clicked)) {
        current_ = clicked;
    } else if (!isMarked(current_)) {
        const auto marked = markedTeams();
        if (!marked.empty())
            current_ = marked.front();
    }
}

int TeamSelection::count() const {
    int n = 0;
    for (int t = 1; t <= kMaxTeams; ++t)
        n += marked_[static_cast<std::size_t>(t)] ? 1 : 0;
    return n;
}

bool TeamSelection::isMarked(int teamNumber) const {
    return teamNumber >= 1 && teamNumber <= kMaxTeams &&
           marked_[static_cast<std::size_t>(teamNumber)];
}

std::vector<int> TeamSelection::markedTeams() const {
    std::vector<int> out;
    for (int t = 1; t <= kMaxTeams; ++t)
        if (isMarked(t))
            out.push_back(t);
    return out;
}

void TeamSelection::setCurrentTeam(int teamNumber) {
    if (teamNumber >= 1 && teamNumber <= kMaxTeams)
        current_ = teamNumber;
}

} // namespace scorvane
