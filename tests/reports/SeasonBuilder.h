#pragma once

#include "reports/Season.h"

#include "storage/StatLayout.h"

#include <initializer_list>
#include <map>
#include <utility>
#include <vector>

namespace scorvane::testing {

// A team's season built in memory, record by record, as the files would hold it.
struct SeasonBuilder {
    TeamSeason season;

    explicit SeasonBuilder(int number = 1, std::string name = "Hawks Long Name",
                           std::string shortName = "Hawks") {
        season.number = number;
        season.name = std::move(name);
        season.shortName = std::move(shortName);
    }

    SeasonBuilder& player(int number, const std::string& name) {
        season.players[static_cast<std::size_t>(number)] = fit(name, 17);
        return *this;
    }

    // A live game; `us` and `them` go into the first quarter.
    SeasonBuilder& game(int number, char type = '1', int us = 0, int them = 0, char special = '1') {
        GameRecord g;
        g.gameNumber = static_cast<std::int16_t>(number);
        g.gameType = type;
        g.teamScore[0] = static_cast<std::int16_t>(us);
        g.opponentScore[0] = static_cast<std::int16_t>(them);
        g.specialSelect = special;
        season.games.push_back(g);
        return *this;
    }

    // A category record with values given by column code.
    SeasonBuilder& stats(int game, int player, char category,
                         std::initializer_list<std::pair<int, int>> byColumn, char status = 'A') {
        StatRecord r;
        r.header = StatHeader{static_cast<std::int16_t>(game), static_cast<std::int16_t>(player),
                              category, status};
        for (const auto& [code, value] : byColumn)
            r.values.at(static_cast<std::size_t>(statSlot(category, code))) =
                static_cast<std::int16_t>(value);
        season.stats.push_back(r.encode());
        return *this;
    }

    // A kicking or returns list record.
    SeasonBuilder& list(int game, int player, char category, std::vector<ListEntry> entries,
                        std::array<std::int16_t, 5> summary = {}) {
        StatListRecord r;
        r.header = StatHeader{static_cast<std::int16_t>(game), static_cast<std::int16_t>(player),
                              category, 'A'};
        r.summary = summary;
        for (std::size_t i = 0; i < entries.size(); ++i)
            r.entries.at(i) = entries[i];
        season.stats.push_back(r.encode());
        return *this;
    }
};

} // namespace scorvane::testing
