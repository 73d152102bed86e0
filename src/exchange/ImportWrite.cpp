#include "GameImport.h"

#include "entry/PlayLists.h"
#include "storage/ColumnTable.h"
#include "storage/StatLayout.h"
#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {

namespace {

std::size_t idx(int i) {
    return static_cast<std::size_t>(i);
}

std::string scoreLine(const std::array<std::int16_t, 5>& s) {
    std::string line;
    for (std::size_t i = 0; i < 5; ++i)
        line += (i ? " " : "") + digits(s[i]);
    return line;
}

} // namespace

std::string gameLine(const GameRecord& game) {
    const std::optional<PointSums> points = game.pointSums();
    std::string line =
        ShortDate(game.gameDate) + (game.homeFlag == '1' ? " vs " : " at ") + trim(game.opponent);
    if (points)
        line += ", " + digits(points->team) + "-" + digits(points->opponent);
    line += " (quarters and overtime: " + scoreLine(game.teamScore) + " to " +
            scoreLine(game.opponentScore) + ")";
    return line;
}

std::vector<std::string> categoryLines(const GameImport& import, const ImportedPlayer& player) {
    std::vector<std::string> lines;
    for (int c = 0; c < kCategoryCount; ++c) {
        if (!player.categories[idx(c)])
            continue;
        const CategoryResults& r = import.results.at(player.number, c);
        const char letter = kCategoryLetters[idx(c)];
        std::string line = std::string(kCategoryNames[idx(c)]) + ":";
        if (isListCategory(letter)) {
            const std::vector<std::string> items =
                letter == 'K' ? kickItems(r.plays) : returnItems(r.plays);
            for (const std::string& item : items)
                line += " [" + trimRight(item) + "]";
            if (items.empty())
                line += " (no list)";
        }
        const StatLayout& layout = *StatLayout::of(letter);
        for (const EnteredField& f : layout.fields()) {
            const int v = r.values[idx(f.screenField)];
            if (v == 0)
                continue;
            static const ColumnTable columns;
            const std::string abbr = columns.columnName(letter, f.column);
            line += " " + trim(abbr) + " " +
                    (f.scale == 10 ? digits(v / 10) + (v % 10 ? "." + digits(std::abs(v % 10)) : "")
                                   : digits(v));
        }
        lines.push_back(line);
    }
    return lines;
}

std::string previewText(const GameImport& import) {
    std::string text = "Game: " + gameLine(import.game) + "\n";
    for (const ImportedPlayer& p : import.players) {
        text += "#" + digits(p.number) + " " + trim(p.name);
        if (!p.onRoster)
            text += " (not on the roster)";
        else if (trim(p.rosterName) != trim(p.name))
            text += " (on the roster as " + trim(p.rosterName) + ")";
        text += "\n";
        for (const std::string& line : categoryLines(import, p))
            text += "    " + line + "\n";
    }
    if (!import.byHand.empty()) {
        text += "To enter by hand:\n";
        for (const std::string& line : import.byHand)
            text += "    " + line + "\n";
    }
    if (!import.notImported.empty()) {
        text += "Not imported:\n";
        for (const std::string& line : import.notImported)
            text += "    " + line + "\n";
    }
    return text;
}

Status writeImport(TeamFiles& files, const GameImport& import, const ImportTarget& target,
                   int& written) {
    std::vector<Bytes> games;
    if (Status s = files.readAll(FileKind::Games, games); !s)
        return s;
    int live = 0;
    for (const Bytes& b : games)
        live += GameRecord::decode(b).isLive() ? 1 : 0;

    GameRecord game = import.game;
    bool gamesChanged = false;
    if (target.replaceGame > 0) {
        const auto it = std::find_if(games.begin(), games.end(), [&](const Bytes& b) {
            const GameRecord g = GameRecord::decode(b);
            return g.isLive() && g.gameNumber == target.replaceGame;
        });
        if (it == games.end())
            return Status::error(ErrorKind::RecordRange,
                                 "There is no game " + digits(target.replaceGame) + ".");
        game = GameRecord::decode(*it);
    } else {
        if (live >= kMaxGames)
            return Status::error(ErrorKind::RecordRange,
                                 "The team has " + digits(live) +
                                     " games; a team keeps 999 at most, so the game is not "
                                     "imported.");
        game.gameNumber = static_cast<std::int16_t>(live + 1);
        game.gameStatus = 'A';
        games.push_back(game.encode());
        gamesChanged = true;
    }

    GameStatsIndex index;
    GameStatRecords records;
    if (Status s = files.indexGameStats(game, index, &records); !s)
        return s;
    const GameResults::Change change = import.results.changeFor(records, index, game);

    std::vector<std::pair<FileKind, std::vector<Bytes>>> whole;
    if (gamesChanged)
        whole.emplace_back(FileKind::Games, std::move(games));
    const auto added = [&](const ImportedPlayer& p) {
        return target.addToRoster && p.add && !p.onRoster;
    };
    if (std::any_of(import.players.begin(), import.players.end(), added)) {
        // The roster file is rewritten whole, in number order, with the new numbers in it.
        std::vector<Bytes> roster;
        if (Status s = files.readAll(FileKind::Roster, roster); !s)
            return s;
        for (const ImportedPlayer& p : import.players)
            if (added(p)) {
                RosterRecord r;
                r.playerNumber = static_cast<std::int16_t>(p.number);
                r.playerName = p.name;
                roster.push_back(r.encode());
            }
        std::stable_sort(roster.begin(), roster.end(), [](const Bytes& a, const Bytes& b) {
            return RosterRecord::decode(a).playerNumber < RosterRecord::decode(b).playerNumber;
        });
        whole.emplace_back(FileKind::Roster, std::move(roster));
    }
    written = game.gameNumber;
    if (!change.changed && whole.empty())
        return Status::ok();
    return files.replaceTogether(whole, FileKind::Stats, resultsRewrite(change));
}

} // namespace scorvane
