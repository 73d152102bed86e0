#include "GameExport.h"

#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {

namespace {

std::string folded(std::string_view text) {
    std::string u = trim(text);
    for (char& c : u)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return u;
}

} // namespace

Status readGameSide(DataFiles& data, const TeamList& teams, int team, int gameNumber,
                    GameSide& side) {
    // Read without creating or changing any file: looking at a game writes nothing.
    TeamFiles files = data.team(team);
    std::vector<Bytes> raw;
    bool exists = false;
    // Every read runs under the disk error handler, as the files' own reads do.
    const auto read = [&](FileKind kind, std::size_t length) {
        return data.guarded([&] { return readRecords(files.fileName(kind), length, raw, exists); });
    };
    if (Status s = read(FileKind::Games, GameRecord::Length); !s)
        return s;
    std::vector<GameRecord> games;
    for (const Bytes& b : raw)
        games.push_back(GameRecord::decode(b));
    const auto it = std::find_if(games.begin(), games.end(), [&](const GameRecord& g) {
        return g.isLive() && g.gameNumber == gameNumber;
    });
    if (it == games.end())
        return Status::error(ErrorKind::RecordRange, "The team " + teams.teamName(team) +
                                                         " has no game " + digits(gameNumber) +
                                                         ".");
    side.team = team;
    side.teamName = teams.teamName(team);
    side.game = *it;
    if (Status s = read(FileKind::Roster, RosterRecord::Length); !s)
        return s;
    side.roster = Roster{};
    for (const Bytes& b : raw) {
        const RosterRecord r = RosterRecord::decode(b);
        if (r.playerNumber >= 1 && r.playerNumber <= kMaxPlayers) {
            side.roster.inUse[static_cast<std::size_t>(r.playerNumber)] = true;
            side.roster.names[static_cast<std::size_t>(r.playerNumber)] =
                fit(r.playerName, width::playerName);
        }
    }
    if (Status s =
            data.guarded([&] { return openForReading(files.fileName(FileKind::Stats), exists); });
        !s || !exists)
        return s;

    // The game's records as the indexing pass finds them, read without writing anything back: a
    // stale copy of the game's type or mark is of no matter to an export.
    GameStatsIndex index;
    GameStatRecords records;
    int number = 0;
    bool past = false;
    Status s = files.forEachRecord(FileKind::Stats, [&](ByteView bytes) {
        ++number;
        if (past)
            return;
        const StatHeader h = StatHeader::decode(bytes);
        if (h.statStatus == 'A' && h.gameNumber == gameNumber) {
            const int c = categoryIndex(h.category);
            if (c >= 0 && h.playerNumber >= 1 && h.playerNumber <= kMaxPlayers) {
                index.recordOf[static_cast<std::size_t>(c)]
                              [static_cast<std::size_t>(h.playerNumber)] = number;
                records[number] = Bytes(bytes.begin(), bytes.end());
            }
        } else if (h.gameNumber > gameNumber) {
            past = true;
        }
    });
    if (!s)
        return s;
    side.results.load(records, index);
    return Status::ok();
}

std::optional<GameSide> findOpponentSide(DataFiles& data, const TeamList& teams,
                                         const GameSide& ours) {
    const std::string opponent = folded(ours.game.opponent);
    if (opponent.empty())
        return std::nullopt;
    for (int t = 1; t <= kMaxTeams; ++t) {
        if (t == ours.team)
            continue;
        const TeamRecord& r = teams.team(t);
        if (folded(r.teamName) != opponent && folded(r.shortName) != opponent)
            continue;
        std::vector<Bytes> games;
        bool exists = false;
        const std::string name = data.team(t).fileName(FileKind::Games);
        if (Status s =
                data.guarded([&] { return readRecords(name, GameRecord::Length, games, exists); });
            !s) {
            if (s.kind() == ErrorKind::ProgramEnded)
                return std::nullopt;
            continue;
        }
        for (const Bytes& b : games) {
            const GameRecord g = GameRecord::decode(b);
            if (!g.isLive() || g.gameDate != ours.game.gameDate ||
                (folded(g.opponent) != folded(ours.teamName) &&
                 folded(g.opponent) != folded(teams.team(ours.team).shortName)) ||
                g.teamScore != ours.game.opponentScore || g.opponentScore != ours.game.teamScore)
                continue;
            GameSide side;
            if (readGameSide(data, teams, t, g.gameNumber, side))
                return side;
        }
    }
    return std::nullopt;
}

} // namespace scorvane
