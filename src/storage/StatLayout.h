#pragma once

#include "Category.h"

#include <array>
#include <span>

namespace scorvane {

// Where each entered value of a category sits in a player statistics record, and which column of
// the column table it is. Passing, receiving, rushing and defense keep their entered columns in
// the record's 30 values, in column-table order with the five user columns last; kicking and
// returns keep their five user columns in the list record's summary values and everything else in
// the per-play entries.
//
// The entry panel numbers its fields 0..12 in its own order (which differs from the record's) and
// 22..26 for the five user columns.
struct EnteredField {
    int screenField; // 0..12, or 22..26 for the user columns
    int slot;        // index into StatRecord::values, or StatListRecord::summary for K and T
    int column;      // column code (index in the column table, from 1)
    int scale;       // stored value = entered value x scale (10 for defense sacks in tenths)
};

class StatLayout {
public:
    // The layout of a category letter ("P", "C", "R", "D", "K", "T"); nullptr for any other.
    static constexpr const StatLayout* of(char category);

    constexpr char category() const { return category_; }
    // The entered fields in screen order: the category's own fields, then the five user fields.
    constexpr std::span<const EnteredField> fields() const { return fields_; }
    // The field shown as screen field `screenField`, or nullptr when the panel does not show it.
    constexpr const EnteredField* byScreenField(int screenField) const {
        for (const auto& f : fields_)
            if (f.screenField == screenField)
                return &f;
        return nullptr;
    }
    // The field stored for column code `column`, or nullptr for a computed or unknown column.
    constexpr const EnteredField* byColumn(int column) const {
        for (const auto& f : fields_)
            if (f.column == column)
                return &f;
        return nullptr;
    }
    // The highest screen field of the category's own fields (12 passing, 11 receiving, 9 rushing
    // and defense, -1 for kicking and returns, which have only the user fields).
    constexpr int lastOwnField() const { return lastOwnField_; }

    constexpr StatLayout(char category, std::span<const EnteredField> fields, int lastOwnField)
        : category_(category), fields_(fields), lastOwnField_(lastOwnField) {}

private:
    char category_;
    std::span<const EnteredField> fields_;
    int lastOwnField_;
};

namespace statlayout {
// Column codes are those of the column table; slots follow column-table order with the computed
// columns (G, Tkl, Pct, Avg, Rtg, Pts, Y@C, FD%) left out and the user columns last.
inline constexpr std::array<EnteredField, 18> kPassing = {{
    {0, 0, 2, 1},    // Att
    {1, 1, 3, 1},    // Cm
    {2, 2, 4, 1},    // Yds
    {3, 4, 6, 1},    // TD
    {4, 3, 5, 1},    // Int
    {5, 6, 8, 1},    // Lg
    {6, 7, 9, 1},    // Big
    {7, 12, 14, 1},  // FD
    {8, 5, 7, 1},    // Sk
    {9, 8, 10, 1},   // F
    {10, 9, 11, 1},  // FL
    {11, 11, 13, 1}, // Pen
    {12, 10, 12, 1}, // XPt
    {22, 13, 19, 1},
    {23, 14, 20, 1},
    {24, 15, 21, 1},
    {25, 16, 22, 1},
    {26, 17, 23, 1},
}};

inline constexpr std::array<EnteredField, 17> kReceiving = {{
    {0, 0, 2, 1},   // Rec
    {1, 7, 9, 1},   // Tgt
    {2, 1, 3, 1},   // Yds
    {3, 5, 7, 1},   // YAC
    {4, 2, 4, 1},   // TD
    {5, 3, 5, 1},   // Lg
    {6, 4, 6, 1},   // Big
    {7, 6, 8, 1},   // FD
    {8, 10, 12, 1}, // F
    {9, 11, 13, 1}, // FL
    {10, 9, 11, 1}, // Pen
    {11, 8, 10, 1}, // XPt
    {22, 12, 18, 1},
    {23, 13, 19, 1},
    {24, 14, 20, 1},
    {25, 15, 21, 1},
    {26, 16, 22, 1},
}};

inline constexpr std::array<EnteredField, 15> kRushing = {{
    {0, 0, 2, 1},  // Rsh
    {1, 1, 3, 1},  // Yds
    {2, 5, 7, 1},  // YdL
    {3, 3, 5, 1},  // TD
    {4, 2, 4, 1},  // Lg
    {5, 4, 6, 1},  // FD
    {6, 7, 9, 1},  // F
    {7, 8, 10, 1}, // FL
    {8, 9, 11, 1}, // Pen
    {9, 6, 8, 1},  // XPt
    {22, 10, 14, 1},
    {23, 11, 15, 1},
    {24, 12, 16, 1},
    {25, 13, 17, 1},
    {26, 14, 18, 1},
}};

inline constexpr std::array<EnteredField, 15> kDefense = {{
    {0, 0, 3, 1},   // Sol
    {1, 1, 4, 1},   // Ast
    {2, 2, 5, 1},   // Int
    {3, 3, 6, 1},   // Blk
    {4, 4, 7, 1},   // Hur
    {5, 5, 8, 1},   // F (fumbles recovered)
    {6, 6, 9, 1},   // FC
    {7, 7, 10, 10}, // Sk, in tenths of a sack
    {8, 8, 11, 1},  // TD
    {9, 9, 12, 1},  // Pen
    {22, 10, 13, 1},
    {23, 11, 14, 1},
    {24, 12, 15, 1},
    {25, 13, 16, 1},
    {26, 14, 17, 1},
}};

// Kicking and returns: the user columns in the summary values.
inline constexpr std::array<EnteredField, 5> kKicking = {{
    {22, 0, 18, 1},
    {23, 1, 19, 1},
    {24, 2, 20, 1},
    {25, 3, 21, 1},
    {26, 4, 22, 1},
}};
inline constexpr std::array<EnteredField, 5> kReturns = {{
    {22, 0, 16, 1},
    {23, 1, 17, 1},
    {24, 2, 18, 1},
    {25, 3, 19, 1},
    {26, 4, 20, 1},
}};

inline constexpr StatLayout kLayouts[kCategoryCount] = {
    StatLayout('P', kPassing, 12), StatLayout('C', kReceiving, 11), StatLayout('R', kRushing, 9),
    StatLayout('D', kDefense, 9),  StatLayout('K', kKicking, -1),   StatLayout('T', kReturns, -1),
};
} // namespace statlayout

constexpr const StatLayout* StatLayout::of(char category) {
    for (const auto& layout : statlayout::kLayouts)
        if (layout.category() == category)
            return &layout;
    return nullptr;
}

// The record slot of column code `column` of a category, -1 when the column is not stored.
constexpr int statSlot(char category, int column) {
    const StatLayout* layout = StatLayout::of(category);
    const EnteredField* f = layout ? layout->byColumn(column) : nullptr;
    return f ? f->slot : -1;
}

// The screen fields of the user columns.
inline constexpr int kFirstUserField = 22;
inline constexpr int kLastUserField = 26;
inline constexpr int kEntryFieldCount = 27;

// The marks of a list entry: sums of these bits.
namespace kickmark {
inline constexpr int Good = 2;
inline constexpr int Blocked = 4;
inline constexpr int FairCatch = 8;
inline constexpr int Inside20 = 16;
inline constexpr int Touchback = 32;
} // namespace kickmark
namespace returnmark {
inline constexpr int FairCatch = 2;
inline constexpr int Fumble = 4;
inline constexpr int Touchdown = 8;
} // namespace returnmark

// Type letters of list entries.
namespace kicktype {
inline constexpr char FieldGoal = 'F';
inline constexpr char ExtraPoint = 'X';
inline constexpr char Punt = 'P';
} // namespace kicktype
namespace returntype {
inline constexpr char Punt = 'P';
inline constexpr char Kick = 'K';
} // namespace returntype

} // namespace scorvane
