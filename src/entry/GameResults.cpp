#include "GameResults.h"

namespace scorvane {

namespace {

std::size_t idx(int i) {
    return static_cast<std::size_t>(i);
}

char letterOf(int category) {
    return kCategoryLetters[idx(category)];
}

// Reads a player's results out of his record of a category.
CategoryResults readResults(const Bytes& bytes, int category) {
    const char letter = letterOf(category);
    const StatLayout& layout = *StatLayout::of(letter);
    CategoryResults r;
    r.played = true;
    if (isListCategory(letter)) {
        const StatListRecord rec = StatListRecord::decode(bytes);
        for (const auto& f : layout.fields())
            r.values[idx(f.screenField)] = rec.summary[idx(f.slot)];
        std::copy(rec.entries.begin(), rec.entries.end(), r.plays.begin());
    } else {
        const StatRecord rec = StatRecord::decode(bytes);
        for (const auto& f : layout.fields())
            r.values[idx(f.screenField)] = rec.values[idx(f.slot)];
    }
    return r;
}

// A record holding a player's results, over `base` (his existing record, or a fresh one carrying
// only its header): the entered values and plays replace what `base` holds in their places, the
// status follows the played mark.
Bytes writeResults(const Bytes& base, int category, const CategoryResults& r) {
    const char letter = letterOf(category);
    const StatLayout& layout = *StatLayout::of(letter);
    const char status = r.played ? 'A' : 'D';
    if (isListCategory(letter)) {
        StatListRecord rec = StatListRecord::decode(base);
        rec.header.statStatus = status;
        for (const auto& f : layout.fields())
            rec.summary[idx(f.slot)] = r.values[idx(f.screenField)];
        std::copy(r.plays.begin(), r.plays.end(), rec.entries.begin());
        return rec.encode();
    }
    StatRecord rec = StatRecord::decode(base);
    rec.header.statStatus = status;
    for (const auto& f : layout.fields())
        rec.values[idx(f.slot)] = r.values[idx(f.screenField)];
    return rec.encode();
}

// A new record of the game for a player and category: blank values, spaces in its free bytes.
Bytes freshRecord(const GameRecord& game, int player, int category) {
    StatRecord rec; // both layouts start with the same header and end in spaces
    rec.header = StatHeader{game.gameNumber,    static_cast<std::int16_t>(player),
                            letterOf(category), 'A',
                            game.gameType,      game.specialSelect};
    Bytes bytes = rec.encode();
    if (isListCategory(letterOf(category))) {
        StatListRecord list;
        list.header = rec.header;
        bytes = list.encode();
    }
    return bytes;
}

} // namespace

void GameResults::load(const GameStatRecords& records, const GameStatsIndex& index) {
    for (auto& player : players_)
        player.fill(CategoryResults{});
    for (int c = 0; c < kCategoryCount; ++c)
        for (int p = 1; p <= kMaxPlayers; ++p)
            if (const auto it = records.find(index.recordOf[idx(c)][idx(p)]); it != records.end())
                players_[idx(p)][idx(c)] = readResults(it->second, c);
}

CategoryResults& GameResults::at(int player, int category) {
    return players_.at(idx(player)).at(idx(category));
}

const CategoryResults& GameResults::at(int player, int category) const {
    return players_.at(idx(player)).at(idx(category));
}

std::vector<Bytes> GameResults::applyTo(std::vector<Bytes> records, const GameRecord& game) const {
    bool changed = false;
    return applyTo(std::move(records), game, changed);
}

std::vector<Bytes> GameResults::applyTo(std::vector<Bytes> records, const GameRecord& game,
                                        bool& changed) const {
    std::vector<StatHeader> headers;
    headers.reserve(records.size());
    for (const auto& b : records)
        headers.push_back(StatHeader::decode(b));
    std::vector<int> corrected;
    const GameStatsIndex index = indexGameStats(headers, game, corrected);
    // Copies of the game's type and mark that went stale are brought up to date on the way.
    for (int n : corrected)
        headers[idx(n - 1)].encodeInto(records[idx(n - 1)]);
    changed = !corrected.empty();

    GameStatRecords gameRecords;
    for (const auto& category : index.recordOf)
        for (int n : category)
            if (n >= 1 && n <= static_cast<int>(records.size()))
                gameRecords.emplace(n, records[idx(n - 1)]);
    Change change = changeFor(gameRecords, index, game);
    changed = changed || change.changed;
    for (auto& [n, rec] : change.rewritten)
        records[idx(n - 1)] = std::move(rec);
    records.insert(records.begin() + (change.insertionPoint - 1), change.inserted.begin(),
                   change.inserted.end());
    return records;
}

GameResults::Change GameResults::changeFor(const GameStatRecords& records,
                                           const GameStatsIndex& index,
                                           const GameRecord& game) const {
    Change change;
    change.insertionPoint = index.insertionPoint;
    for (int p = 1; p <= kMaxPlayers; ++p)
        for (int c = 0; c < kCategoryCount; ++c) {
            const CategoryResults& r = players_[idx(p)][idx(c)];
            const auto it = records.find(index.recordOf[idx(c)][idx(p)]);
            if (it != records.end()) {
                Bytes rewritten = writeResults(it->second, c, r);
                change.changed = change.changed || rewritten != it->second;
                change.rewritten.emplace(it->first, std::move(rewritten));
            } else if (r.played) {
                change.inserted.push_back(writeResults(freshRecord(game, p, c), c, r));
            }
        }
    change.changed = change.changed || !change.inserted.empty();
    return change;
}

Status saveGameResults(TeamFiles& files, const GameRecord& game, const GameResults& results) {
    GameStatsIndex index;
    GameStatRecords records;
    if (Status s = files.indexGameStats(game, index, &records); !s)
        return s;
    const GameResults::Change change = results.changeFor(records, index, game);
    if (!change.changed)
        return Status::ok();
    // Only what changes is written, in place: the game's changed records and, when the game is the
    // last, its new records after them. New records of an earlier game go between its records and
    // the next game's, so the file is rewritten from the game's first changed record on.
    TeamFiles::RecordChanges stats;
    const bool atTheEnd = change.inserted.empty() || change.insertionPoint > index.recordCount;
    int from = change.insertionPoint;
    for (const auto& [n, rec] : change.rewritten)
        if (rec != records.at(n)) {
            stats.records.emplace(n, rec);
            from = std::min(from, n);
        }
    if (atTheEnd) {
        int n = index.recordCount;
        for (const Bytes& rec : change.inserted)
            stats.records.emplace(++n, rec);
        return files.changeInPlace({stats});
    }
    const RecordRewrite rewrite = resultsRewrite(change);
    // From early in the file, writing it anew once costs less than keeping the part that moves
    // in the journal and writing it again in place.
    if (2 * (index.recordCount - from + 1) > index.recordCount)
        return files.rewriteAll(FileKind::Stats, rewrite);
    stats.records.clear();
    stats.rewriteFrom = from;
    stats.rewrite = &rewrite;
    return files.changeInPlace({stats});
}

RecordRewrite resultsRewrite(const GameResults::Change& change) {
    const auto insert = [&change](Bytes& out) {
        for (const Bytes& rec : change.inserted)
            out.insert(out.end(), rec.begin(), rec.end());
    };
    return [&change, insert](ByteView piece, std::size_t first, Bytes& out) {
        if (piece.empty() && static_cast<std::size_t>(change.insertionPoint) > first)
            insert(out); // `first` is the number of records in the file
        for (std::size_t at = 0; at + StatRecord::Length <= piece.size();
             at += StatRecord::Length) {
            const int n = static_cast<int>(first + at / StatRecord::Length) + 1;
            if (n == change.insertionPoint)
                insert(out);
            const auto it = change.rewritten.find(n);
            const ByteView rec = it != change.rewritten.end()
                                     ? ByteView(it->second)
                                     : piece.subspan(at, StatRecord::Length);
            out.insert(out.end(), rec.begin(), rec.end());
        }
    };
}

} // namespace scorvane
