#pragma once

#include "storage/Prompter.h"
#include "storage/StatLayout.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace scorvane {

using FieldTexts = std::array<std::string, kEntryFieldCount>;

// The first check a category panel fails: the message shown (titled "Error") and the field that
// gets the cursor.
struct FieldProblem {
    std::string message;
    int focusField = 0;

    bool operator==(const FieldProblem&) const = default;
};

// The checks a panel's texts pass before they are taken over into a player's results. First every
// shown field must hold a number the statistics file can keep (16 bits; defense sacks in tenths),
// then the category's consistency rules apply in their fixed order. Kicking and returns have no
// rules of their own. Empty when everything passes.
std::optional<FieldProblem> checkPanel(char category, const FieldTexts& texts);

// The message box of a failed check.
Message problemMessage(const FieldProblem& problem);

// The refusals of numbers too large for the file.
inline constexpr const char* kNumberRangeMessage = "Number must be between -32768 and 32767";
inline constexpr const char* kSackRangeMessage = "Sacks must be between -3276.8 and 3276.7";

// The value a field's text is stored as (the number times the field's scale, rounded), or empty
// when it does not fit in 16 bits.
std::optional<std::int16_t> storedValue(std::string_view text, int scale);

} // namespace scorvane
