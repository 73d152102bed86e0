#include "TeamList.h"

#include "TextUtil.h"

namespace scorvane {

namespace {
TeamRecord blankTeam() {
    return {std::string(width::teamName, ' '), std::string(width::shortName, ' '),
            std::string(width::teamTag, ' ')};
}

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

TeamList::TeamList() {
    teams_.fill(blankTeam());
}

Status TeamList::load(DataFiles& files) {
    teams_.fill(blankTeam());
    std::vector<TeamRecord> records;
    Status s = files.readAllAs(FileKind::TeamList, records);
    for (std::size_t i = 0; i < records.size() && i < kMaxTeams; ++i)
        teams_[i + 1] = records[i];
    return s;
}

std::vector<std::string> TeamList::lines() const {
    std::vector<std::string> out;
    out.reserve(kMaxTeams);
    for (int t = 1; t <= kMaxTeams; ++t)
        out.push_back(trimRight(teams_[static_cast<std::size_t>(t)].teamName));
    return out;
}

const TeamRecord& TeamList::team(int teamNumber) const {
    return teams_.at(static_cast<std::size_t>(teamNumber));
}

std::string TeamList::teamName(int teamNumber) const {
    if (teamNumber < 1 || teamNumber > kMaxTeams)
        return {};
    return trimRight(team(teamNumber).teamName);
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
    return {fit(longName, width::teamName), fit(shortName, width::shortName)};
}

Status TeamList::storeNames(DataFiles& files, int teamNumber, const std::string& longName,
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
    TeamRecord record{names.longName, names.shortName, std::string(width::teamTag, ' ')};
    if (Status s = files.teamRecord(Access::Write, teamNumber, record); !s)
        return s;
    teams_[static_cast<std::size_t>(teamNumber)] = record;
    return Status::ok();
}

Status TeamList::createTeamList(DataFiles& files) {
    if (files.recordCount(FileKind::TeamList) > 0)
        return Status::ok();
    return padTeamList(files);
}

} // namespace scorvane
