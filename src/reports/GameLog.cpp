#include "GameLog.h"

#include "storage/Bytes.h"
#include "storage/TextUtil.h"

#include <map>

namespace scorvane {
namespace {

// The player's line of a computed report, if he is listed.
const PlayerFigures* lineOf(const StatReport& report, int playerNumber) {
    for (const auto& p : report.players)
        if (p.number == playerNumber)
            return &p;
    return nullptr;
}

} // namespace

GameLog computeGameLog(char category, const TeamSeason& team, const Selection& selection,
                       int playerNumber) {
    GameLog log;
    log.category = category;
    log.playerNumber = playerNumber;
    log.playerName = team.playerName(playerNumber);

    Selection player = selection;
    player.playerNumber = playerNumber;
    player.playerName.clear();

    // The player's records of the category, by game, in one pass over the statistics; the rest of
    // the work is done on these alone.
    std::map<int, StatRecords> byGame;
    TeamSeason one;
    one.number = team.number;
    one.name = team.name;
    one.shortName = team.shortName;
    one.players = team.players;
    log.status = team.stats.forEach([&](ByteView rec) {
        const StatHeader h = StatHeader::decode(rec);
        if (h.isLive() && h.category == category && h.playerNumber == playerNumber) {
            byGame[h.gameNumber].push_back(rec);
            one.stats.push_back(rec);
        }
    });
    if (!log.status)
        return log;

    // The season line first, from every record of the player.
    one.games = team.games;
    const StatReport season = ComputeStatistics(category, {one}, player);
    if (const PlayerFigures* line = lineOf(season, playerNumber))
        log.season = *line;

    for (const GameRecord& g : team.games) {
        const auto it = byGame.find(g.gameNumber);
        if (it == byGame.end() || !selection.countsGame(g))
            continue;
        one.games = {g};
        one.stats = it->second;
        Selection game = player;
        game.fromGame = game.toGame = g.gameNumber;
        const StatReport report = ComputeStatistics(category, {one}, game);
        log.overflows.insert(log.overflows.end(), report.overflows.begin(), report.overflows.end());
        if (const PlayerFigures* line = lineOf(report, playerNumber))
            log.games.push_back({g, *line});
    }
    log.overflows.insert(log.overflows.end(), season.overflows.begin(), season.overflows.end());
    return log;
}

Status categoriesRecorded(const TeamSeason& team, int playerNumber, std::vector<char>& categories) {
    categories.clear();
    std::array<bool, kCategoryCount> found{};
    if (Status s = team.stats.forEach([&](ByteView rec) {
            const StatHeader h = StatHeader::decode(rec);
            if (const int k = categoryIndex(h.category);
                k >= 0 && h.isLive() && h.playerNumber == playerNumber)
                found[static_cast<std::size_t>(k)] = true;
        });
        !s)
        return s;
    for (int k = 0; k < kCategoryCount; ++k)
        if (found[static_cast<std::size_t>(k)])
            categories.push_back(kCategoryLetters[static_cast<std::size_t>(k)]);
    return Status::ok();
}

TableReport gameLogReport(const GameLog& log, const std::vector<int>& columns,
                          const ColumnTable& table, const ReportHeading& heading) {
    TableReport report;
    report.heading = heading;
    report.columns = {{"Date", 8, true}, {"Opponent", 25, true}};
    std::vector<int> shown;
    for (int code : columns) {
        if (!isReportColumn(log.category, code))
            continue;
        const std::string head = columnHeading(log.category, code, table);
        report.columns.push_back({trim(head), static_cast<int>(head.size())});
        shown.push_back(code);
    }
    auto cells = [&](const PlayerFigures& f) {
        std::vector<std::string> out;
        for (int code : shown)
            out.push_back(trim(figureText(log.category, code, f[code])));
        return out;
    };
    for (const GameLogEntry& e : log.games) {
        std::vector<std::string> row = {e.game.gameDate == "000000" ? std::string()
                                                                    : ShortDate(e.game.gameDate),
                                        trimRight(e.game.opponent)};
        const std::vector<std::string> figures = cells(e.figures);
        row.insert(row.end(), figures.begin(), figures.end());
        report.rows.push_back(row);
    }
    if (!log.games.empty()) {
        std::vector<std::string> season = {"Season", ""};
        const std::vector<std::string> figures = cells(log.season);
        season.insert(season.end(), figures.begin(), figures.end());
        report.closing.push_back(season);
    }
    return report;
}

} // namespace scorvane
