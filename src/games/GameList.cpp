#include "GameList.h"

#include "storage/TextUtil.h"

namespace scorvane {

namespace {

// The position (from 1) of the live record of a game, searching from the position equal to its
// number onward; 0 when there is none.
int findGame(const std::vector<GameRecord>& games, int gameNumber, int from) {
    for (int p = std::max(from, 1); p <= static_cast<int>(games.size()); ++p) {
        const GameRecord& g = games[static_cast<std::size_t>(p - 1)];
        if (g.isLive() && g.gameNumber == gameNumber)
            return p;
    }
    return 0;
}

std::vector<Bytes> encodeAll(const std::vector<GameRecord>& games) {
    std::vector<Bytes> out;
    out.reserve(games.size());
    for (const auto& g : games)
        out.push_back(g.encode());
    return out;
}

std::string markedEnding(char mark) {
    return mark == '2' ? std::string(" \x10") : "  ";
}

} // namespace

StatHeaderChange insertGame(std::vector<GameRecord>& games, int gameNumber, GameRecord game) {
    int p = findGame(games, gameNumber, gameNumber);
    if (p == 0)
        p = static_cast<int>(games.size()) + 1;
    for (auto it = games.begin() + (p - 1); it != games.end(); ++it)
        ++it->gameNumber;
    game.gameNumber = static_cast<std::int16_t>(gameNumber);
    game.gameStatus = 'A';
    games.insert(games.begin() + (p - 1), game);
    return [gameNumber](StatHeader& h) {
        if (h.gameNumber < gameNumber)
            return false;
        ++h.gameNumber;
        return true;
    };
}

StatHeaderChange deleteGame(std::vector<GameRecord>& games, int gameNumber) {
    const int p = findGame(games, gameNumber, gameNumber);
    if (p == 0)
        return [](StatHeader&) { return false; };
    GameRecord& gone = games[static_cast<std::size_t>(p - 1)];
    // The tombstone takes the number of the record before it; game 1's keeps its own.
    if (gameNumber != 1 && p > 1)
        gone.gameNumber = games[static_cast<std::size_t>(p - 2)].gameNumber;
    gone.gameStatus = 'D';
    for (auto it = games.begin() + p; it != games.end(); ++it)
        --it->gameNumber;
    return [gameNumber](StatHeader& h) {
        if (h.gameNumber == gameNumber) {
            h.statStatus = 'D';
            return true;
        }
        if (h.gameNumber > gameNumber) {
            --h.gameNumber;
            return true;
        }
        return false;
    };
}

Status GameList::load(TeamFiles& files) {
    return files.readAllAs(FileKind::Games, records_);
}

int GameList::activeCount() const {
    int n = 0;
    for (const auto& g : records_)
        n += g.isLive() ? 1 : 0;
    return n;
}

int GameList::positionOf(int gameNumber) const {
    return findGame(records_, gameNumber, gameNumber);
}

Status GameList::readGame(TeamFiles& files, int gameNumber, GameRecord& game, bool& found) {
    found = false;
    // The game lies at its number's position or after it, behind the records of deleted games
    // (which keep their places): the first live record of that number from there on is the one
    // game() finds. A few records are looked at one by one; the file is read whole after that.
    constexpr int kLookedAt = 64;
    for (int p = gameNumber; p >= 1 && p < gameNumber + kLookedAt; ++p) {
        // A point sum out of range still gives the record, as a whole-file read does.
        const Status s = files.gameRecord(Access::Read, p, game);
        if (s.kind() == ErrorKind::RecordRange)
            break;
        if (!s && s.kind() != ErrorKind::Overflow)
            return s;
        found = game.isLive() && game.gameNumber == gameNumber;
        if (found)
            return Status::ok();
    }
    GameList all;
    if (Status s = all.load(files); !s)
        return s;
    if (const GameRecord* g = all.game(gameNumber)) {
        game = *g;
        found = true;
    }
    return Status::ok();
}

const GameRecord* GameList::game(int gameNumber) const {
    const int p = positionOf(gameNumber);
    return p == 0 ? nullptr : &records_[static_cast<std::size_t>(p - 1)];
}

std::string GameList::line(const GameRecord& game, const ConfigRecord& config) {
    if (const auto points = game.pointSums())
        return GameLine(game, *points, config);
    // Number, date, type and opponent as usual; the score would not fit in 16 bits.
    constexpr std::size_t kBeforeScore = 51;
    return GameLine(game, PointSums{}, config).substr(0, kBeforeScore) + "Overflow";
}

std::vector<std::string> GameList::openingLines(const ConfigRecord& config) const {
    std::vector<std::string> lines;
    for (const auto& g : records_)
        if (g.isLive())
            lines.push_back(line(g, config));
    return lines;
}

Status GameList::refresh(TeamFiles& files, const ConfigRecord& config,
                         std::vector<std::string>& lines) {
    if (Status s = load(files); !s || records_.empty())
        return s;
    // A Special Select mark lives only until the list is rebuilt: clear it in both files.
    bool gamesChanged = false;
    for (auto& g : records_) {
        if (g.isLive() && g.specialSelect == '2') {
            g.specialSelect = '1';
            gamesChanged = true;
        }
    }
    if (gamesChanged) {
        if (Status s = files.replaceAll(FileKind::Games, encodeAll(records_)); !s)
            return s;
    }
    if (Status s = files.changeStatHeaders([](StatHeader& h) {
            if (!h.isLive() || h.statSpecialSelect != '2')
                return false;
            h.statSpecialSelect = '1';
            return true;
        });
        !s)
        return s;
    lines.clear();
    for (const auto& g : records_)
        if (g.isLive())
            lines.push_back(line(g, config) + "  ");
    lines.push_back(kNewGameLine);
    return Status::ok();
}

namespace {

// Writes a game's record at `position` and, together with it, the copies of its type and Special
// Select mark that its statistics records carry: only these records, in place.
Status writeGameAndCopies(TeamFiles& files, int position, const GameRecord& game) {
    int first = 1, last = 0;
    GameStatRecords records;
    if (Status s = files.findGameStats(game.gameNumber, first, last); !s)
        return s;
    if (Status s = files.statRecords(first, last, records); !s)
        return s;
    TeamFiles::RecordChanges stats;
    for (auto& [n, rec] : records) {
        StatHeader h = StatHeader::decode(rec);
        if (h.gameNumber != game.gameNumber ||
            (h.statSpecialSelect == game.specialSelect && h.statGameType == game.gameType))
            continue;
        h.statSpecialSelect = game.specialSelect;
        h.statGameType = game.gameType;
        h.encodeInto(rec);
        stats.records.emplace(n, std::move(rec));
    }
    if (stats.records.empty()) {
        GameRecord written = game;
        return files.gameRecord(Access::Write, position, written);
    }
    TeamFiles::RecordChanges games{FileKind::Games, {{position, game.encode()}}};
    return files.changeInPlace({games, stats});
}

} // namespace

Status GameList::toggleMark(TeamFiles& files, int line, const ConfigRecord& config,
                            std::string& newLine) {
    const int gameNumber = line + 1;
    const int p = findGame(records_, gameNumber, 1);
    if (p == 0)
        return Status::ok();
    GameRecord game = records_[static_cast<std::size_t>(p - 1)];
    game.specialSelect = game.specialSelect == '1' ? '2' : '1';
    if (Status s = writeGameAndCopies(files, p, game); !s)
        return s;
    records_[static_cast<std::size_t>(p - 1)] = game;
    newLine = GameList::line(game, config) + markedEnding(game.specialSelect);
    return Status::ok();
}

Status GameList::append(TeamFiles& files, GameRecord game) {
    game.gameNumber = static_cast<std::int16_t>(activeCount() + 1);
    game.gameStatus = 'A';
    const int position = static_cast<int>(records_.size()) + 1;
    if (Status s = files.gameRecord(Access::Write, position, game); !s)
        return s;
    records_.push_back(game);
    return Status::ok();
}

Status GameList::change(TeamFiles& files, int gameNumber, GameRecord game) {
    const int p = positionOf(gameNumber);
    if (p == 0)
        return Status::error(ErrorKind::RecordRange, "There is no game " + digits(gameNumber));
    game.gameNumber = static_cast<std::int16_t>(gameNumber);
    game.gameStatus = 'A';
    // The game's statistics records carry copies of its type and mark.
    if (Status s = writeGameAndCopies(files, p, game); !s)
        return s;
    records_[static_cast<std::size_t>(p - 1)] = game;
    return Status::ok();
}

namespace {

// Renumbers the games in memory and the statistics on their way to the new file, and replaces
// both files together.
template <class Renumber>
Status renumberBoth(TeamFiles& files, std::vector<GameRecord>& records, Renumber renumber) {
    std::vector<GameRecord> games;
    if (Status s = files.readAllAs(FileKind::Games, games); !s)
        return s;
    const StatHeaderChange change = renumber(games);
    if (Status s = files.replaceTogether({{FileKind::Games, encodeAll(games)}}, FileKind::Stats,
                                         statHeaderRewrite(change));
        !s)
        return s;
    records = std::move(games);
    return Status::ok();
}

} // namespace

Status GameList::insert(TeamFiles& files, int gameNumber, GameRecord game) {
    return renumberBoth(files, records_,
                        [&](auto& games) { return insertGame(games, gameNumber, game); });
}

Message GameList::deleteQuestion() {
    return {"Are you sure?  Player results will also be deleted!", "Delete Game?",
            Buttons::OkCancel, Icon::Question, Answer::Cancel};
}

Status GameList::remove(TeamFiles& files, Prompter& prompter, int line, bool& deleted) {
    deleted = false;
    const int gameNumber = line + 1;
    if (positionOf(gameNumber) == 0)
        return Status::ok();
    if (prompter.ask(deleteQuestion()) != Answer::Ok)
        return Status::ok();
    Status s =
        renumberBoth(files, records_, [&](auto& games) { return deleteGame(games, gameNumber); });
    deleted = s.isOk();
    return s;
}

} // namespace scorvane
