#include "ConfigRecord.h"

namespace scorvane {

using field::getInt16;
using field::getText;
using field::putInt16;
using field::putText;
using field::sized;

namespace {

// Offsets of the per-category blocks. Categories 1-3 sit in the part of the record that the
// older layout already had, 4-6 after it.
constexpr std::array<std::size_t, kCategoryCount> kUserColumnOffset = {72, 90, 108, 669, 687, 705};
constexpr std::array<std::size_t, kCategoryCount> kColumnListOffset = {126, 188, 250,
                                                                       723, 785, 847};
constexpr std::array<std::size_t, kCategoryCount> kSortOffset = {312, 315, 318, 909, 912, 915};

using ColumnList = std::array<std::int16_t, ConfigRecord::ColumnListLength>;

constexpr ColumnList makeList(std::initializer_list<std::int16_t> codes) {
    ColumnList list{};
    std::size_t i = 0;
    for (auto c : codes)
        list[i++] = c;
    return list;
}

// The report formats every category starts with: the columns in print order. Constant-initialised,
// so that objects built before main (a column table, a default configuration) can read them.
constexpr std::array<ColumnList, kCategoryCount> kDefaultLists = {
    makeList({1, 2, 3, 15, 4, 16, 8, 9, 14, 5, 7, 10, 11, 13, 17, 6, 12, 18}),
    makeList({1, 9, 2, 3, 15, 5, 6, 14, 7, 8, 17, 12, 13, 11, 4, 10, 16}),
    makeList({1, 2, 3, 7, 4, 12, 6, 9, 10, 11, 5, 8, 13}),
    makeList({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
    makeList({1, 2, 4, 9, 10, 11, 17}),
    makeList({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}),
};

// Passing by yards, receiving by receptions, rushing by yards, defense by tackles; kicking and
// returns by games played.
constexpr std::array<SortSetting, kCategoryCount> kDefaultSorts = {
    SortSetting{4, 'D'}, SortSetting{2, 'D'}, SortSetting{3, 'D'},
    SortSetting{2, 'D'}, SortSetting{1, 'D'}, SortSetting{1, 'D'}};

} // namespace

const ColumnList& defaultColumnList(int categoryIndex) {
    return kDefaultLists.at(static_cast<std::size_t>(categoryIndex));
}

SortSetting defaultSort(int categoryIndex) {
    return kDefaultSorts.at(static_cast<std::size_t>(categoryIndex));
}

ConfigRecord::ConfigRecord() {
    for (auto& name : gameTypeNames)
        name = std::string(10, ' ');
    for (auto& cat : userColumns)
        for (auto& col : cat)
            col = "   ";
    dataDirectory = std::string(DirectoryWidth, ' ');
    reportDirectory = std::string(DirectoryWidth, ' ');
}

std::string ConfigRecord::defaultGameTypeName(int type) {
    return "GameType " + digits(type);
}

std::string ConfigRecord::defaultUserColumn(int categoryIndex, int place) {
    return std::string(1, kCategoryLetters.at(static_cast<std::size_t>(categoryIndex))) +
           digits(place);
}

ConfigRecord ConfigRecord::defaults() {
    ConfigRecord c;
    for (int t = 1; t <= 7; ++t)
        c.gameTypeNames[static_cast<std::size_t>(t - 1)] = fit(defaultGameTypeName(t), 10);
    for (int k = 0; k < kCategoryCount; ++k) {
        const auto ks = static_cast<std::size_t>(k);
        for (int p = 1; p <= 5; ++p)
            c.userColumns[ks][static_cast<std::size_t>(p - 1)] = fit(defaultUserColumn(k, p), 3);
        c.columnLists[ks] = defaultColumnList(k);
        c.sort[ks] = defaultSort(k);
    }
    return c;
}

Bytes ConfigRecord::encode() const {
    Bytes rec(Length, ' ');
    putInt16(rec, 0, firstWord);
    for (std::size_t i = 0; i < 7; ++i)
        putText(rec, 2 + 10 * i, 10, gameTypeNames[i]);
    for (std::size_t k = 0; k < kCategoryCount; ++k) {
        for (std::size_t j = 0; j < 6; ++j)
            putText(rec, kUserColumnOffset[k] + 3 * j, 3, userColumns[k][j]);
        for (std::size_t j = 0; j < ColumnListLength; ++j)
            putInt16(rec, kColumnListOffset[k] + 2 * j, columnLists[k][j]);
        putInt16(rec, kSortOffset[k], sort[k].column);
        rec.at(kSortOffset[k] + 2) = static_cast<std::uint8_t>(sort[k].direction);
    }
    putText(rec, 321, 8, text8);
    putText(rec, 329, DirectoryWidth, dataDirectory);
    putText(rec, 474, DirectoryWidth, reportDirectory);
    for (std::size_t i = 0; i < 5; ++i)
        putInt16(rec, 619 + 2 * i, optionWords[i]);
    putText(rec, 629, 7, text7);
    putInt16(rec, 636, optionWord636);
    putText(rec, 638, 31, text31);
    putText(rec, 918, 100, text100);
    return rec;
}

ConfigRecord ConfigRecord::decode(ByteView bytes) {
    const Bytes rec = sized(bytes, Length);
    ConfigRecord c;
    c.firstWord = getInt16(rec, 0);
    for (std::size_t i = 0; i < 7; ++i)
        c.gameTypeNames[i] = getText(rec, 2 + 10 * i, 10);
    for (std::size_t k = 0; k < kCategoryCount; ++k) {
        for (std::size_t j = 0; j < 6; ++j)
            c.userColumns[k][j] = getText(rec, kUserColumnOffset[k] + 3 * j, 3);
        for (std::size_t j = 0; j < ColumnListLength; ++j)
            c.columnLists[k][j] = getInt16(rec, kColumnListOffset[k] + 2 * j);
        c.sort[k].column = getInt16(rec, kSortOffset[k]);
        c.sort[k].direction = static_cast<char>(rec.at(kSortOffset[k] + 2));
    }
    c.text8 = getText(rec, 321, 8);
    c.dataDirectory = getText(rec, 329, DirectoryWidth);
    c.reportDirectory = getText(rec, 474, DirectoryWidth);
    for (std::size_t i = 0; i < 5; ++i)
        c.optionWords[i] = getInt16(rec, 619 + 2 * i);
    c.text7 = getText(rec, 629, 7);
    c.optionWord636 = getInt16(rec, 636);
    c.text31 = getText(rec, 638, 31);
    c.text100 = getText(rec, 918, 100);
    return c;
}

ConfigRecord ConfigRecord::upgradeLegacy(const Bytes& legacy) {
    // Bytes 0-668 of the current layout are the older layout, so decoding the older record as
    // the first part of a new one copies every field it has.
    ConfigRecord c = decode(sized(legacy, LegacyLength));
    // The parts the older layout did not have.
    c.sort[3] = {2, 'D'};
    c.sort[4] = {1, 'D'};
    c.sort[5] = {1, 'D'};
    for (std::size_t k = 3; k < kCategoryCount; ++k) {
        for (std::size_t j = 0; j < 6; ++j)
            c.userColumns[k][j] =
                j < 5 ? fit(defaultUserColumn(static_cast<int>(k), static_cast<int>(j + 1)), 3)
                      : "   ";
    }
    c.columnLists[3] = defaultColumnList(3);
    c.columnLists[4] = makeList({1, 2, 4, 9, 10, 11, 17});
    c.columnLists[5] = defaultColumnList(5);
    c.text8 = std::string(8, ' ');
    c.text31 = std::string(31, ' ');
    c.text100 = std::string(100, ' ');
    return c;
}

} // namespace scorvane
