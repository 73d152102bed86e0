#pragma once

#include "storage/ColumnTable.h"
#include "storage/DataFiles.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace scorvane::testing {

// Statistics records written byte by byte from the file layout, independently of the program's
// own encoders: the 8-byte header, then the values (category layout: 30 values in record order,
// then 42 spaces; list layout: 5 summary values, 18 type letters, 18 yards/marks pairs, 2 spaces).
struct Play {
    char type;
    int yards;
    int marks;
};

inline void putInt(Bytes& b, std::size_t offset, int value) {
    b[offset] = static_cast<std::uint8_t>(value & 0xFF);
    b[offset + 1] = static_cast<std::uint8_t>((value >> 8) & 0xFF);
}

inline Bytes statHeader(int game, int player, char category, char status = 'A', char type = '1',
                        char special = '1') {
    Bytes b(110, ' ');
    putInt(b, 0, game);
    putInt(b, 2, player);
    b[4] = static_cast<std::uint8_t>(category);
    b[5] = static_cast<std::uint8_t>(status);
    b[6] = static_cast<std::uint8_t>(type);
    b[7] = static_cast<std::uint8_t>(special);
    return b;
}

// `values` in record order (the category's entered columns in column-table order, user columns
// last); the rest of the 30 values are 0.
inline Bytes categoryRecord(int game, int player, char category, std::vector<int> values,
                            char status = 'A', char type = '1', char special = '1') {
    Bytes b = statHeader(game, player, category, status, type, special);
    values.resize(30, 0);
    for (std::size_t i = 0; i < 30; ++i)
        putInt(b, 8 + 2 * i, values[i]);
    return b;
}

inline Bytes listRecord(int game, int player, char category, std::vector<int> summary,
                        const std::vector<Play>& plays, char status = 'A', char type = '1',
                        char special = '1') {
    Bytes b = statHeader(game, player, category, status, type, special);
    summary.resize(5, 0);
    for (std::size_t i = 0; i < 5; ++i)
        putInt(b, 8 + 2 * i, summary[i]);
    for (std::size_t i = 0; i < 18; ++i) {
        const Play p = i < plays.size() ? plays[i] : Play{' ', 0, 0};
        b[18 + i] = static_cast<std::uint8_t>(p.type);
        putInt(b, 36 + 4 * i, p.yards);
        putInt(b, 38 + 4 * i, p.marks);
    }
    return b;
}

inline Bytes joined(const std::vector<Bytes>& records) {
    Bytes all;
    for (const auto& r : records)
        all.insert(all.end(), r.begin(), r.end());
    return all;
}

// One team's data directory with a roster, games and statistics, for the player screen.
struct TeamData : ScratchData {
    ColumnTable columns;

    void roster(const std::vector<std::pair<int, std::string>>& players) {
        std::vector<RosterRecord> records;
        for (const auto& [number, name] : players)
            records.push_back(RosterRecord{static_cast<std::int16_t>(number), name});
        ASSERT_TRUE(files.replaceAllWith(FileKind::Roster, records));
    }
    // Games 1..count, live, of game type `type` with Special Select `special`.
    void games(int count, char type = '1', char special = '1') {
        std::vector<GameRecord> records;
        for (int n = 1; n <= count; ++n) {
            GameRecord g;
            g.gameNumber = static_cast<std::int16_t>(n);
            g.gameType = type;
            g.specialSelect = special;
            records.push_back(g);
        }
        ASSERT_TRUE(files.replaceAllWith(FileKind::Games, records));
    }
    void stats(const std::vector<Bytes>& records) {
        ASSERT_TRUE(files.replaceAll(FileKind::Stats, records));
    }
    Bytes statsFile() const { return dir.read("FBPS1.DAT"); }
};

} // namespace scorvane::testing
