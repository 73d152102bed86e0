#include "ColumnTable.h"

#include "Records.h"

#include <algorithm>
#include <string_view>

namespace scorvane {
namespace {

// The fixed columns of each category after "G", in column order; an empty name ends a list.
// Constant-initialised, so that a column table built before main can read them.
constexpr std::array<std::array<std::string_view, 17>, kCategoryCount> kFixedColumns = {{
    {"Att", "Cm", "Yds", "Int", "TD", "Sk", "Lg", "Big", "F", "FL", "XPt", "Pen", "FD", "Pct",
     "Avg", "Rtg", "Pts"},
    {"Rec", "Yds", "TD", "Lg", "Big", "YAC", "FD", "Tgt", "XPt", "Pen", "F", "FL", "Y@C", "Avg",
     "Pts", "FD%"},
    {"Rsh", "Yds", "Lg", "TD", "FD", "YdL", "XPt", "F", "FL", "Pen", "Avg", "Pts"},
    {"Tkl", "Sol", "Ast", "Int", "Blk", "Hur", "F", "FC", "Sk", "TD", "Pen"},
    {"XB", "XPt", "Pnt", "PB", "P20", "PFC", "PTB", "PLg", "PAv", "FG", "F20", "F30", "F40", "40+",
     "FGB", "FLg"},
    {"PRt", "PAv", "PFC", "PF", "PTD", "PLg", "PYd", "KRt", "KAv", "KFC", "KF", "KTD", "KLg",
     "KYd"},
}};

} // namespace

ColumnTable::ColumnTable() {
    build(ConfigRecord::defaults());
}

void ColumnTable::build(const ConfigRecord& config) {
    for (int k = 0; k < kCategoryCount; ++k) {
        const auto ks = static_cast<std::size_t>(k);
        auto& slots = names_[ks];
        slots.fill("   ");
        std::size_t i = 1;
        slots[i++] = fit("G", width::columnName);
        for (std::string_view name : kFixedColumns[ks])
            if (!name.empty())
                slots[i++] = fit(name, width::columnName);
        for (std::size_t u = 0; u < 5; ++u)
            slots[i++] = fit(config.userColumns[ks][u], width::columnName);
    }
}

std::string ColumnTable::columnName(char category, int index) const {
    const int k = categoryIndex(category);
    if (k < 0 || index < 1 || index > Slots)
        return "   ";
    return names_[static_cast<std::size_t>(k)][static_cast<std::size_t>(index)];
}

int ColumnTable::columnCount(char category) {
    // Counted once: every figure of every report line asks.
    static const std::array<int, kCategoryCount> kCounts = [] {
        std::array<int, kCategoryCount> counts{};
        for (std::size_t k = 0; k < kCategoryCount; ++k)
            counts[k] = static_cast<int>(
                            std::count_if(kFixedColumns[k].begin(), kFixedColumns[k].end(),
                                          [](std::string_view name) { return !name.empty(); })) +
                        6;
        return counts;
    }();
    const int k = categoryIndex(category);
    return k < 0 ? 0 : kCounts[static_cast<std::size_t>(k)];
}

} // namespace scorvane
