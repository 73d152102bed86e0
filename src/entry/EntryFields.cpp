#include "EntryFields.h"

#include "storage/Bytes.h"
#include "storage/StatLayout.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <system_error>

namespace scorvane {

namespace {

constexpr int kOwnFieldSlots = 13; // own fields 0..12

// The status line texts of the own fields, in screen order.
using Descriptions = std::array<const char*, kOwnFieldSlots>;
constexpr Descriptions kPassing = {"Attempts ",
                                   "Completions",
                                   "Total Passing Yards",
                                   "Passing Touchdowns",
                                   "Interceptions",
                                   "Longest Pass",
                                   "Big Pass Plays (your decision)",
                                   "Passing First Downs",
                                   "Sacks",
                                   "Fumbles",
                                   "Fumbles Lost",
                                   "Penalties",
                                   "Passing Extra Points"};
constexpr Descriptions kReceiving = {"Receptions",
                                     "Target (number of times thrown to)",
                                     "Total Receiving Yards",
                                     "Yards Gained After Catch",
                                     "Receiving Touchdowns",
                                     "Longest Reception",
                                     "Big Receptions (your decision)",
                                     "Receiving First Downs",
                                     "Fumbles",
                                     "Fumbles Lost",
                                     "Penalties",
                                     "Receiving Extra Points",
                                     ""};
constexpr Descriptions kRushing = {"Rushes",
                                   "Total Rushing Yards",
                                   "Rushing Yards Lost",
                                   "Rushing Touchdowns",
                                   "Longest Run",
                                   "Rushing First Downs",
                                   "Fumbles",
                                   "Fumbles Lost",
                                   "Penalties",
                                   "Rushing Extra Points",
                                   "",
                                   "",
                                   ""};
constexpr Descriptions kDefense = {"Solo Tackles",
                                   "Tackle Assists",
                                   "Interceptions",
                                   "Blocked Passes",
                                   "Hurried Passes",
                                   "Fumbles Recovered",
                                   "Fumbles Caused",
                                   "Sacks",
                                   "Defensive Touchdowns",
                                   "Penalties",
                                   "",
                                   "",
                                   ""};

const Descriptions* descriptionsOf(char category) {
    switch (category) {
    case 'P':
        return &kPassing;
    case 'C':
        return &kReceiving;
    case 'R':
        return &kRushing;
    case 'D':
        return &kDefense;
    default:
        return nullptr;
    }
}

bool isDigit(int key) {
    return key >= '0' && key <= '9';
}

// Yards and longest play may be negative: those are the only fields that take a minus sign.
bool takesMinus(char category, int field) {
    switch (category) {
    case 'P':
    case 'C':
        return field == 2 || field == 5;
    case 'R':
        return field == 1 || field == 4;
    default:
        return false;
    }
}

// Half sacks are typed with a decimal point.
bool takesPoint(char category, int field) {
    return category == 'D' && field == 7;
}

} // namespace

bool acceptsKey(char category, int field, int key) {
    if (isDigit(key) || key == kBackspaceKey || key == kDeleteKey)
        return true;
    if (key == '-')
        return takesMinus(category, field);
    if (key == '.')
        return takesPoint(category, field);
    return false;
}

std::string filterFieldText(char category, int field, std::string_view text) {
    std::string kept;
    for (char c : text) {
        const int key = static_cast<unsigned char>(c);
        if (key != kBackspaceKey && key != kDeleteKey && acceptsKey(category, field, key))
            kept += c;
    }
    return kept;
}

bool acceptsFieldText(char category, int field, std::string_view text) {
    return filterFieldText(category, field, text).size() == text.size();
}

bool acceptsKickYardsKey(int key) {
    return isDigit(key) || key == kBackspaceKey || key == kDeleteKey || key == '-';
}

std::string filterKickYardsText(std::string_view text) {
    std::string kept;
    for (char c : text) {
        const int key = static_cast<unsigned char>(c);
        if (key != kBackspaceKey && key != kDeleteKey && acceptsKickYardsKey(key))
            kept += c;
    }
    return kept;
}

std::string fieldDescription(char category, int field) {
    if (field < 0 || field >= kOwnFieldSlots)
        return "User Defined Field";
    const Descriptions* d = descriptionsOf(category);
    return d ? (*d)[static_cast<std::size_t>(field)] : "";
}

bool fieldShown(char category, int field) {
    const StatLayout* layout = StatLayout::of(category);
    return layout && layout->byScreenField(field) != nullptr;
}

int nextFieldAfterEnter(char category, int field) {
    const StatLayout* layout = StatLayout::of(category);
    const int lastOwn = layout ? layout->lastOwnField() : -1;
    if (field == kLastUserField)
        return lastOwn < 0 ? kFirstUserField : 0;
    if (field == lastOwn)
        return kFirstUserField;
    return field + 1;
}

double fieldNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        negative = text[i++] == '-';
    // The numeric part alone, read independently of the system's locale.
    std::string number;
    bool anyDigit = false;
    for (; i < text.size() && isDigit(text[i]); ++i, anyDigit = true)
        number += text[i];
    if (i < text.size() && text[i] == '.')
        for (number += text[i++]; i < text.size() && isDigit(text[i]); ++i, anyDigit = true)
            number += text[i];
    if (!anyDigit)
        return 0;
    if (number.front() == '.')
        number.insert(number.begin(), '0');
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    (void)end; // the text holds nothing but the number
    // Hundreds of digits go past any double: such a number is too large, or (all its digits
    // after the decimal point) as good as 0.
    if (error == std::errc::result_out_of_range) {
        const bool wholePart = number.find_first_of("123456789") < number.find('.');
        value = wholePart ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return negative ? -value : value;
}

std::string storedValueText(long long stored, int scale) {
    if (scale != 10 || stored % 10 == 0)
        return digits(stored / (scale == 10 ? 10 : 1));
    const long long magnitude = std::llabs(stored);
    return (stored < 0 ? "-" : "") + digits(magnitude / 10) + "." + digits(magnitude % 10);
}

} // namespace scorvane
