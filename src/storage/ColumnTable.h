#pragma once

#include "Category.h"
#include "ConfigRecord.h"

#include <array>
#include <string>

namespace scorvane {

// The column abbreviations of the six categories: 31 slots of three characters per category,
// column 1 "G" (games), then the fixed columns, then the five user-named columns.
class ColumnTable {
public:
    static constexpr int Slots = 31;

    ColumnTable(); // built with the default user-named columns (P1..P5 and so on)
    explicit ColumnTable(const ConfigRecord& config) { build(config); }

    // Fills all six tables; the user-named columns come from the configuration.
    void build(const ConfigRecord& config);
    // Three characters, space padded; all spaces past the category's last column or for a letter
    // that names no category.
    std::string columnName(char category, int index) const;
    // Number of columns of a category (23 passing ... 17 defense), 0 for an unknown letter.
    static int columnCount(char category);
    // The user-named columns of a category start at this index.
    static int firstUserColumn(char category) { return columnCount(category) - 4; }

private:
    std::array<std::array<std::string, Slots + 1>, kCategoryCount> names_;
};

} // namespace scorvane
