#pragma once

#include "storage/ColumnTable.h"

#include <array>
#include <string>
#include <string_view>

namespace scorvane {

// What a report column holds, which decides how it is summed, derived and written.
enum class ColumnKind {
    None,          // no such column in the category
    Games,         // "G": selected games with a record of the category (16-bit)
    Count,         // a 32-bit sum of the games' values (user columns too)
    Longest,       // the largest single value (Lg, PLg, FLg, KLg)
    Sacks,         // defensive sacks, summed in tenths and written with one decimal ("2.5")
    Ratio,         // a single-precision quotient written with "###0.0" (Pct, Rtg, FD%, PAv, KAv)
    Average,       // a single-precision quotient written with "##0.0" (the Avg columns)
    Points,        // Pts: TD x 6 + XPt x 2, a 16-bit figure
    YardsAtCatch,  // Y@C: Yds - YAC, a 16-bit figure
    MadeAttempted, // extra points and field goals: "made/attempted" and the percentage
};

// Column codes run from 1 ("G") to the category's column count; 31 at most.
inline constexpr int kMaxColumnCode = 31;

// "Passing Statistics" ... "Return Statistics"; empty for a letter that names no category.
std::string_view reportTitle(char category);

ColumnKind columnKind(char category, int code);
// Every code's kind in the category, by code (0 and the codes it lacks: None); all None for a
// letter that names no category.
const std::array<ColumnKind, kMaxColumnCode + 1>& columnKinds(char category);
inline bool isReportColumn(char category, int code) {
    return columnKind(category, code) != ColumnKind::None;
}

// The column's heading as the report prints it, its spaces included: the heading's length is the
// column's width. The user-named columns print their three-character name after one space.
// Empty for a code the category does not have.
std::string columnHeading(char category, int code, const ColumnTable& table);

} // namespace scorvane
