#pragma once

#include "Bytes.h"
#include "Category.h"

#include <array>
#include <cstdint>
#include <string>

namespace scorvane {

struct SortSetting {
    std::int16_t column = 1;
    char direction = 'D'; // "D" descending, anything else ascending

    bool operator==(const SortSetting&) const = default;
};

// The one record of "BXFB.INI". The six category slots serve passing, receiving, rushing,
// defense, kicking and returns in that order (see Category.h); slots 1-3 are the ones the older
// 669-byte layout already had.
struct ConfigRecord {
    static constexpr std::size_t Length = 1018;
    static constexpr std::size_t LegacyLength = 669;
    static constexpr std::size_t ColumnListLength = 31;
    static constexpr std::size_t DirectoryWidth = 145;

    std::int16_t firstWord = 0;
    std::array<std::string, 7> gameTypeNames; // 10 each
    // Six 3-character abbreviations per category; the first five are the user-named columns.
    std::array<std::array<std::string, 6>, kCategoryCount> userColumns;
    std::array<std::array<std::int16_t, ColumnListLength>, kCategoryCount> columnLists{};
    std::array<SortSetting, kCategoryCount> sort;
    std::string text8 = std::string(8, ' ');
    std::string dataDirectory;   // 145
    std::string reportDirectory; // 145
    std::array<std::int16_t, 5> optionWords{};
    std::string text7 = std::string(7, ' ');
    std::int16_t optionWord636 = 0;
    std::string text31 = std::string(31, ' ');
    std::string text100 = std::string(100, ' ');

    ConfigRecord();

    Bytes encode() const;
    static ConfigRecord decode(ByteView bytes);
    // Builds the current layout from a record of the older 669-byte layout: everything the older
    // record holds is copied, the three newer categories get their default sorts and column lists.
    static ConfigRecord upgradeLegacy(const Bytes& legacy);

    // The defaults used when a name is left empty: "GameType n", and letter + place ("P1").
    static std::string defaultGameTypeName(int type);
    static std::string defaultUserColumn(int categoryIndex, int place);
    // A record filled with every default: names, column lists and sorts of a fresh installation.
    static ConfigRecord defaults();
};

// The report column lists and sort columns a category starts with.
const std::array<std::int16_t, ConfigRecord::ColumnListLength>&
defaultColumnList(int categoryIndex);
SortSetting defaultSort(int categoryIndex);

} // namespace scorvane
