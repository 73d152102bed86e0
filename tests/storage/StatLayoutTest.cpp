#include "storage/StatLayout.h"
#include "storage/ColumnTable.h"
#include "storage/TextUtil.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

using namespace scorvane;

namespace {

// The abbreviations of a category's stored values in record order, or of its panel's fields in
// screen order, read through the column table (user columns named U1..U5 here).
std::vector<std::string> names(char category, bool recordOrder) {
    ConfigRecord config = ConfigRecord::defaults();
    const int row = categoryIndex(category);
    for (int u = 0; u < 5; ++u)
        config.userColumns[static_cast<std::size_t>(row)][static_cast<std::size_t>(u)] =
            "U" + std::to_string(u + 1);
    const ColumnTable columns(config);
    std::map<int, std::string> ordered;
    for (const EnteredField& f : StatLayout::of(category)->fields())
        ordered[recordOrder ? f.slot : f.screenField] =
            trim(columns.columnName(category, f.column));
    std::vector<std::string> out;
    for (const auto& [key, name] : ordered)
        out.push_back(name);
    return out;
}

} // namespace

// The record order is the file format: the stored values of every season written so far sit in
// these slots. The screen order is the order the panels take the values in.
TEST(StatLayout, RecordAndScreenOrderOfEveryCategory) {
    using V = std::vector<std::string>;
    const V user = {"U1", "U2", "U3", "U4", "U5"};
    auto with = [&](V v) {
        v.insert(v.end(), user.begin(), user.end());
        return v;
    };
    EXPECT_EQ(names('P', true), with({"Att", "Cm", "Yds", "Int", "TD", "Sk", "Lg", "Big", "F", "FL",
                                      "XPt", "Pen", "FD"}));
    EXPECT_EQ(names('C', true),
              with({"Rec", "Yds", "TD", "Lg", "Big", "YAC", "FD", "Tgt", "XPt", "Pen", "F", "FL"}));
    EXPECT_EQ(names('R', true),
              with({"Rsh", "Yds", "Lg", "TD", "FD", "YdL", "XPt", "F", "FL", "Pen"}));
    EXPECT_EQ(names('D', true),
              with({"Sol", "Ast", "Int", "Blk", "Hur", "F", "FC", "Sk", "TD", "Pen"}));
    EXPECT_EQ(names('K', true), user);
    EXPECT_EQ(names('T', true), user);

    EXPECT_EQ(names('P', false), with({"Att", "Cm", "Yds", "TD", "Int", "Lg", "Big", "FD", "Sk",
                                       "F", "FL", "Pen", "XPt"}));
    EXPECT_EQ(names('C', false),
              with({"Rec", "Tgt", "Yds", "YAC", "TD", "Lg", "Big", "FD", "F", "FL", "Pen", "XPt"}));
    EXPECT_EQ(names('R', false),
              with({"Rsh", "Yds", "YdL", "TD", "Lg", "FD", "F", "FL", "Pen", "XPt"}));
    EXPECT_EQ(names('D', false),
              with({"Sol", "Ast", "Int", "Blk", "Hur", "F", "FC", "Sk", "TD", "Pen"}));
}

// Slots are dense from 0 and fit the record; screen fields are 0..last own field and 22..26;
// only defense sacks are scaled (tenths); computed columns have no slot.
TEST(StatLayout, SlotsFieldsAndComputedColumns) {
    for (char c : kCategoryLetters) {
        SCOPED_TRACE(std::string(1, c));
        const StatLayout& layout = *StatLayout::of(c);
        std::set<int> slots, screen;
        for (const EnteredField& f : layout.fields()) {
            slots.insert(f.slot);
            screen.insert(f.screenField);
            EXPECT_EQ(layout.byColumn(f.column), &f);
            EXPECT_EQ(layout.byScreenField(f.screenField), &f);
            EXPECT_EQ(f.scale, c == 'D' && f.column == 10 ? 10 : 1);
        }
        EXPECT_EQ(slots.size(), layout.fields().size());
        EXPECT_EQ(*slots.begin(), 0);
        EXPECT_EQ(*slots.rbegin(), static_cast<int>(slots.size()) - 1);
        EXPECT_LT(*slots.rbegin(), isListCategory(c) ? 5 : 30);
        std::set<int> expected = {22, 23, 24, 25, 26};
        for (int n = 0; n <= layout.lastOwnField(); ++n)
            expected.insert(n);
        EXPECT_EQ(screen, expected);
        EXPECT_EQ(layout.byScreenField(13), nullptr);
        EXPECT_EQ(layout.byColumn(1), nullptr); // G, the games count, is computed
    }
    for (auto [category, column] : {std::pair{'P', 15},
                                    {'P', 17},
                                    {'C', 14},
                                    {'C', 17},
                                    {'R', 12},
                                    {'D', 2},
                                    {'K', 10},
                                    {'T', 3}})
        EXPECT_EQ(statSlot(category, column), -1) << category << column;
    EXPECT_EQ(StatLayout::of('G'), nullptr);
    EXPECT_EQ(statSlot('X', 2), -1);
}
