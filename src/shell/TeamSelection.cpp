#include "TeamSelection.h"

namespace scorvane {

namespace {
TeamRecord blankTeam() { return {std::string(25, ' '), std::string(10, ' '), std::string(5, ' ')}; }

// Completes the team list to its 100 slots with unnamed teams.
Status padTeamList(DataFiles& files) {
    std::vector<Bytes> records;
    if (Status s = files.readAll(FileKind::TeamList, records); !s)
        return s;
    if (records.size() >= kMaxTeams)
        return Status::ok();
    while (records.size() < kMaxTeams)
        records.push_back(blankTeam().encode());
    return files.replaceAll(FileKind::TeamList, records);
}
} // namespace

TeamSelection::TeamSelection() { teams_.fill(blankTeam()); }

Status TeamSelection::load(DataFiles& files) {
    teams_.fill(blankTeam());
    std::vector<TeamRecord> records;
    Status s = files.readAllAs(FileKind::TeamList, records);
    for (std::size_t i = 0; i < records.size() && i < kMaxTeams; ++i)
        teams_[i + 1] = records[i];
    return s;
}

std::vector<std::string> TeamSelection::lines() const {
    std::vector<std::string> out;
    out.reserve(kMaxTeams);
    for (int t = 1; t <= kMaxTeams; ++t)
        out.push_back(trimRight(teams_[static_cast<std::size_t>(t)].teamName));
    return out;
}

const TeamRecord& TeamSelection::team(int teamNumber) const {
    return teams_.at(static_cast<std::size_t>(teamNumber));
}

std::string TeamSelection::teamName(int teamNumber) const {
    if (teamNumber < 1 || teamNumber > kMaxTeams)
        return {};
    return trimRight(team(teamNumber).teamName);
}

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

TeamNames teamNamesFor(int teamNumber, const std::string& longText, const std::string& shortText) {
    const std::string fallback = "Team " + digits(teamNumber);
    std::string longName = trim(longText);
    std::string shortName = trim(shortText);
    if (longName.empty()) {
        longName = fallback;
    } else if (shortName.empty()) {
        shortName = longName;
    }
    if (shortName.empty())
        shortName = fallback;
    return {fit(longName, 25), fit(shortName, 10)};
}

Status TeamSelection::storeNames(DataFiles& files, int teamNumber, const std::string& longName,
                                 const std::string& shortName) {
    if (teamNumber < 1 || teamNumber > kMaxTeams)
        return Status::error(ErrorKind::RecordRange, "No team " + digits(teamNumber));
    // A team list shorter than the team's number (a damaged or older file) is first completed
    // with unnamed slots, in one crash-safe rewrite.
    if (files.recordCount(FileKind::TeamList) < teamNumber) {
        if (Status s = padTeamList(files); !s)
            return s;
    }
    const TeamNames names = teamNamesFor(teamNumber, longName, shortName);
    TeamRecord record{names.longName, names.shortName, std::string(5, ' ')};
    if (Status s = files.teamRecord('P', teamNumber, record); !s)
        return s;
    teams_[static_cast<std::size_t>(teamNumber)] = record;
    return Status::ok();
}

Status TeamSelection::createTeamList(DataFiles& files) {
    if (files.recordCount(FileKind::TeamList) > 0)
        return Status::ok();
    return padTeamList(files);
}

} // namespace scorvane
