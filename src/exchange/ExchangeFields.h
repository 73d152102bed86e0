#pragma once

#include <array>
#include <string_view>

namespace scorvane::exchange {

// How each entered field of ours stands in a press-box file: the player's statistic element of
// its category, the standard attribute that holds it (where the press box has one, possibly on
// another element), and our own attribute, written beside the standard ones so that every figure
// comes back exactly.
struct FieldSource {
    int screenField;
    std::string_view element;   // standard element, empty when none
    std::string_view attribute; // standard attribute, empty when none
    std::string_view own;       // "sv:..." on the category's element
};

// The category's element, by category index (passing, receiving, rushing, defense, kicking,
// returns). Kicking and returns keep their user columns on an element of our own.
inline constexpr std::array<std::string_view, 6> kCategoryElement = {
    "pass", "rcv", "rush", "defense", "sv:kicking", "sv:returns"};

inline constexpr std::array<FieldSource, 13> kPassingFields = {{
    {0, "pass", "att", "sv:att"},
    {1, "pass", "comp", "sv:cm"},
    {2, "pass", "yds", "sv:yds"},
    {3, "pass", "td", "sv:td"},
    {4, "pass", "int", "sv:int"},
    {5, "pass", "long", "sv:lg"},
    {6, "", "", "sv:big"},
    {7, "", "", "sv:fd"},
    {8, "pass", "sacks", "sv:sk"},
    {9, "fumbles", "no", "sv:f"},
    {10, "fumbles", "lost", "sv:fl"},
    {11, "", "", "sv:pen"},
    {12, "pat", "passmade", "sv:xpt"},
}};
inline constexpr std::array<FieldSource, 12> kReceivingFields = {{
    {0, "rcv", "no", "sv:rec"},
    {1, "", "", "sv:tgt"},
    {2, "rcv", "yds", "sv:yds"},
    {3, "", "", "sv:yac"},
    {4, "rcv", "td", "sv:td"},
    {5, "rcv", "long", "sv:lg"},
    {6, "", "", "sv:big"},
    {7, "", "", "sv:fd"},
    {8, "fumbles", "no", "sv:f"},
    {9, "fumbles", "lost", "sv:fl"},
    {10, "", "", "sv:pen"},
    {11, "pat", "rcvmade", "sv:xpt"},
}};
inline constexpr std::array<FieldSource, 10> kRushingFields = {{
    {0, "rush", "att", "sv:rsh"},
    {1, "rush", "yds", "sv:yds"},
    {2, "rush", "loss", "sv:ydl"},
    {3, "rush", "td", "sv:td"},
    {4, "rush", "long", "sv:lg"},
    {5, "", "", "sv:fd"},
    {6, "fumbles", "no", "sv:f"},
    {7, "fumbles", "lost", "sv:fl"},
    {8, "", "", "sv:pen"},
    {9, "pat", "rushmade", "sv:xpt"},
}};
// Defense sacks are written as the press box writes them, with one decimal ("1.5"); the
// touchdowns are those of interception and fumble returns.
inline constexpr std::array<FieldSource, 10> kDefenseFields = {{
    {0, "defense", "tackua", "sv:sol"},
    {1, "defense", "tacka", "sv:ast"},
    {2, "ir", "no", "sv:int"},
    {3, "defense", "brup", "sv:blk"},
    {4, "defense", "qbh", "sv:hur"},
    {5, "defense", "fr", "sv:f"},
    {6, "defense", "ff", "sv:fc"},
    {7, "defense", "sacks", "sv:sk"},
    {8, "ir", "td", "sv:td"},
    {9, "", "", "sv:pen"},
}};
// The five user columns of every category, on the category's element.
inline constexpr std::array<std::string_view, 5> kUserAttributes = {"sv:u1", "sv:u2", "sv:u3",
                                                                    "sv:u4", "sv:u5"};

} // namespace scorvane::exchange
