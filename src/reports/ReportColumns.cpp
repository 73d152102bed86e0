#include "ReportColumns.h"

#include <algorithm>
#include <array>
#include <vector>

namespace scorvane {
namespace {

struct FixedColumn {
    const char* heading;
    ColumnKind kind;
};

using K = ColumnKind;

// The fixed columns of each category in column-code order, from code 1. The user-named columns
// follow them.
const std::array<std::vector<FixedColumn>, kCategoryCount> kFixed = {{
    // Passing
    {{"  G", K::Games},
     {" Att", K::Count},
     {"  Cm", K::Count},
     {"  Yds", K::Count},
     {" Int", K::Count},
     {" TD", K::Count},
     {" Sk", K::Count},
     {" Lg", K::Longest},
     {" Big", K::Count},
     {"  F", K::Count},
     {" FL", K::Count},
     {" XPt", K::Count},
     {" Pen", K::Count},
     {"  FD", K::Count},
     {"   Pct", K::Ratio},
     {"  Avg", K::Average},
     {"   Rtg", K::Ratio},
     {" Pts", K::Points}},
    // Receiving
    {{"  G", K::Games},
     {" Rec", K::Count},
     {"  Yds", K::Count},
     {" TD", K::Count},
     {" Lg", K::Longest},
     {" Big", K::Count},
     {" YAC", K::Count},
     {"  FD", K::Count},
     {" Tgt", K::Count},
     {" XPt", K::Count},
     {" Pen", K::Count},
     {"  F", K::Count},
     {" FL", K::Count},
     {" Y@C", K::YardsAtCatch},
     {"  Avg", K::Average},
     {" Pts", K::Points},
     {"   FD%", K::Ratio}},
    // Rushing
    {{"  G", K::Games},
     {" Rsh", K::Count},
     {"  Yds", K::Count},
     {" Lg", K::Longest},
     {" TD", K::Count},
     {"  FD", K::Count},
     {" YdL", K::Count},
     {" XPt", K::Count},
     {"  F", K::Count},
     {" FL", K::Count},
     {" Pen", K::Count},
     {"  Avg", K::Average},
     {" Pts", K::Points}},
    // Defense
    {{"  G", K::Games},
     {" Tkl", K::Count},
     {" Sol", K::Count},
     {" Ast", K::Count},
     {" Int", K::Count},
     {" Blk", K::Count},
     {" Hur", K::Count},
     {"  F", K::Count},
     {" FC", K::Count},
     {"    Sk", K::Sacks},
     {" TD", K::Count},
     {" Pen", K::Count}},
    // Kicking
    {{"  G", K::Games},
     {"   Extra Points", K::MadeAttempted},
     {" XB", K::Count},
     {" Pnt", K::Count},
     {"  PB", K::Count},
     {" P20", K::Count},
     {" PFC", K::Count},
     {" PTB", K::Count},
     {" PLg", K::Longest},
     {"   PAv", K::Ratio},
     {"        FG All", K::MadeAttempted},
     {"    FG 0 to 20", K::MadeAttempted},
     {"   FG 21 to 30", K::MadeAttempted},
     {"   FG 31 to 40", K::MadeAttempted},
     {"        FG 40+", K::MadeAttempted},
     {" FGB", K::Count},
     {" FLg", K::Longest}},
    // Returns
    {{"  G", K::Games},
     {" PRt", K::Count},
     {"   PAv", K::Ratio},
     {" PFC", K::Count},
     {" PF", K::Count},
     {" PTD", K::Count},
     {" PLg", K::Longest},
     {"  PYd", K::Count},
     {" KRt", K::Count},
     {"   KAv", K::Ratio},
     {" KFC", K::Count},
     {" KF", K::Count},
     {" KTD", K::Count},
     {" KLg", K::Longest},
     {"  KYd", K::Count}},
}};

const std::vector<FixedColumn>* fixedColumns(char category) {
    const int k = categoryIndex(category);
    return k < 0 ? nullptr : &kFixed[static_cast<std::size_t>(k)];
}

} // namespace

std::string_view reportTitle(char category) {
    switch (category) {
    case 'P':
        return "Passing Statistics";
    case 'R':
        return "Rushing Statistics";
    case 'C':
        return "Receiving Statistics";
    case 'D':
        return "Defensive Statistics";
    case 'K':
        return "Kicking Statistics";
    case 'T':
        return "Return Statistics";
    default:
        return {};
    }
}

const std::array<ColumnKind, kMaxColumnCode + 1>& columnKinds(char category) {
    // Asked for every figure of every line read: worked out once.
    static const auto kKinds = [] {
        std::array<std::array<ColumnKind, kMaxColumnCode + 1>, kCategoryCount + 1> kinds{};
        for (std::size_t k = 0; k < kCategoryCount; ++k) {
            const char letter = kCategoryLetters[k];
            const auto* fixed = fixedColumns(letter);
            const int count = std::min(ColumnTable::columnCount(letter), kMaxColumnCode);
            for (int code = 1; code <= count; ++code) {
                const auto i = static_cast<std::size_t>(code - 1);
                kinds[k][static_cast<std::size_t>(code)] =
                    i < fixed->size() ? (*fixed)[i].kind : ColumnKind::Count;
            }
        }
        return kinds; // the last row, all None, for a letter that names no category
    }();
    const int k = categoryIndex(category);
    return kKinds[static_cast<std::size_t>(k < 0 ? kCategoryCount : k)];
}

ColumnKind columnKind(char category, int code) {
    if (code < 1 || code > kMaxColumnCode)
        return ColumnKind::None;
    return columnKinds(category)[static_cast<std::size_t>(code)];
}

std::string columnHeading(char category, int code, const ColumnTable& table) {
    const auto* fixed = fixedColumns(category);
    if (!fixed || code < 1 || code > ColumnTable::columnCount(category))
        return {};
    const auto i = static_cast<std::size_t>(code - 1);
    if (i < fixed->size())
        return (*fixed)[i].heading;
    return " " + fit(table.columnName(category, code), 3);
}

} // namespace scorvane
