#include "Season.h"

#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"

#include <algorithm>

namespace scorvane {
namespace {

void fillRoster(TeamSeason& season, const std::vector<RosterRecord>& roster) {
    season.players.fill({});
    for (const auto& r : roster)
        if (isPlayerNumber(r.playerNumber))
            season.players[static_cast<std::size_t>(r.playerNumber)] =
                fit(r.playerName, width::playerName);
}

template <class R> std::vector<R> decodeRecords(const std::vector<Bytes>& raw) {
    std::vector<R> out;
    out.reserve(raw.size());
    for (const auto& b : raw)
        out.push_back(R::decode(b));
    return out;
}

} // namespace

void StatRecords::push_back(ByteView record) {
    const std::size_t n = std::min(record.size(), Length);
    memory_.insert(memory_.end(), record.begin(), record.begin() + static_cast<std::ptrdiff_t>(n));
    memory_.insert(memory_.end(), Length - n, 0);
}

std::string TeamSeason::playerName(int number) const {
    if (!isPlayerNumber(number) || players[static_cast<std::size_t>(number)].empty())
        return std::string(width::playerName, ' ');
    return players[static_cast<std::size_t>(number)];
}

Status loadTeamSeason(DataFiles& data, int team, TeamSeason& season) {
    season = TeamSeason{};
    season.number = team;
    TeamRecord names;
    if (Status s = data.teamRecord(Access::Read, team, names); !s)
        return s;
    season.name = trimRight(names.teamName);
    season.shortName = trimRight(names.shortName);
    // A file the team does not have yet reads as empty and is not created: looking at a report
    // writes nothing.
    TeamFiles files = data.team(team);
    const auto there = [&](FileKind kind) { return fileExists(files.fileName(kind)); };
    std::vector<RosterRecord> roster;
    if (there(FileKind::Roster))
        if (Status s = files.readAllAs(FileKind::Roster, roster); !s)
            return s;
    fillRoster(season, roster);
    if (there(FileKind::Games))
        if (Status s = files.readAllAs(FileKind::Games, season.games); !s)
            return s;
    if (!there(FileKind::Stats))
        return Status::ok();
    // Opened here so that a file that cannot be read meets the disk error handler now; the
    // records themselves are read by each pass over them.
    if (Status s = files.openFile(FileKind::Stats); !s)
        return s;
    season.stats.readFrom(files.fileName(FileKind::Stats));
    return Status::ok();
}

Status readRecordsReadOnly(const std::string& path, std::size_t recordLength,
                           std::vector<Bytes>& records, bool& exists) {
    if (Status s = readRecords(path, recordLength, records, exists); !s)
        return Status::error(
            s.kind(), "Cannot read " + platform::shownPath(path) + ": " + s.message(), s.code());
    return Status::ok();
}

Status readTeamSeason(const DataPaths& paths, int team, TeamSeason& season) {
    season = TeamSeason{};
    season.number = team;
    if (team < 1 || team > kMaxTeams)
        return Status::error(ErrorKind::RecordRange,
                             "There is no team " + digits(team) + "; teams are 1 to 100.");

    // A change the program was making when it stopped is finished the next time the program opens
    // the directory; until then the files may disagree with each other.
    if (fileExists(paths.dataDirectory + kJournalFileName) ||
        fileExists(paths.dataDirectory + kRollbackJournalFileName))
        return Status::error(ErrorKind::Unreadable,
                             "An interrupted change is waiting in " +
                                 platform::shownPath(paths.dataDirectory) +
                                 "; open the data directory in Scorvane first.");

    std::vector<Bytes> raw;
    bool exists = false;
    const std::string teamList = fileName(FileKind::TeamList, paths, team);
    if (Status s = readRecordsReadOnly(teamList, TeamRecord::Length, raw, exists); !s)
        return s;
    if (!exists)
        return Status::error(ErrorKind::Unreadable,
                             "There is no team list " + platform::shownPath(teamList) + ".");
    const auto slot = static_cast<std::size_t>(team - 1);
    if (slot >= raw.size() || trim(TeamRecord::decode(raw[slot]).teamName).empty())
        return Status::error(ErrorKind::RecordRange, "Team " + digits(team) +
                                                         " is not in the team list " +
                                                         platform::shownPath(teamList) + ".");
    const TeamRecord names = TeamRecord::decode(raw[slot]);
    season.name = trimRight(names.teamName);
    season.shortName = trimRight(names.shortName);

    // The roster: a file in an older record layout is converted by the program when it opens the
    // team; here it can only be refused.
    const std::string rosterPath = fileName(FileKind::Roster, paths, team);
    Bytes contents;
    if (Status s = readWholeFile(rosterPath, contents, exists); !s)
        return Status::error(s.kind(),
                             "Cannot read " + platform::shownPath(rosterPath) + ": " + s.message(),
                             s.code());
    if (contents.size() % RosterRecord::Length != 0)
        return Status::error(ErrorKind::Unreadable,
                             "The roster file " + platform::shownPath(rosterPath) +
                                 " is in an older layout; open the team in Scorvane once to "
                                 "convert it.");
    if (Status s = readRecordsReadOnly(rosterPath, RosterRecord::Length, raw, exists); !s)
        return s;
    fillRoster(season, decodeRecords<RosterRecord>(raw));

    if (Status s = readRecordsReadOnly(fileName(FileKind::Games, paths, team), GameRecord::Length,
                                       raw, exists);
        !s)
        return s;
    season.games = decodeRecords<GameRecord>(raw);
    // The statistics are read by each pass over them; here only whether the file can be read.
    const std::string statsPath = fileName(FileKind::Stats, paths, team);
    if (Status s = openForReading(statsPath, exists); !s)
        return Status::error(s.kind(),
                             "Cannot read " + platform::shownPath(statsPath) + ": " + s.message(),
                             s.code());
    season.stats.readFrom(statsPath);
    return Status::ok();
}

Status viewTeamSeason(DataFiles& data, int team, TeamSeason& season) {
    if (readTeamSeason(data.paths(), team, season))
        return Status::ok();
    return loadTeamSeason(data, team, season);
}

} // namespace scorvane
