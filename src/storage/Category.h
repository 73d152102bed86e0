#pragma once

#include <array>
#include <string_view>

namespace scorvane {

// The six statistic categories, in the order used everywhere: entry panels, index tables,
// configuration slots 1..6 and the rows of the user-named columns.
inline constexpr int kCategoryCount = 6;
inline constexpr std::array<char, kCategoryCount> kCategoryLetters = {'P', 'C', 'R', 'D', 'K', 'T'};
inline constexpr std::array<std::string_view, kCategoryCount> kCategoryNames = {
    "PASSING", "RECEIVING", "RUSHING", "DEFENSE", "KICKING", "RETURNS"};

// 0..5 for a category letter, -1 for any other character.
inline int categoryIndex(char letter) {
    for (int i = 0; i < kCategoryCount; ++i)
        if (kCategoryLetters[static_cast<std::size_t>(i)] == letter)
            return i;
    return -1;
}

// Kicking and returns keep per-play lists instead of column values.
inline bool isListCategory(char letter) {
    return letter == 'K' || letter == 'T';
}

} // namespace scorvane
