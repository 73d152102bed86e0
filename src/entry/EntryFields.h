#pragma once

#include <string>
#include <string_view>

namespace scorvane {

// The 27 category fields of the player screen, one by one: which keys they take, what the status
// line says about them, how their texts read as numbers and where Enter moves the cursor.
//
// Fields are numbered 0..26 as on the screen; a category's own fields start at 0 and the five user
// columns are 22..26 (see StatLayout.h). Categories are given by their letters.

inline constexpr int kBackspaceKey = 8;
inline constexpr int kDeleteKey = 127;

// Whether a category field takes a key: digits, Backspace and Delete always; "-" only in the
// yards and longest-play fields of passing, receiving and rushing; "." only in the defense sacks.
bool acceptsKey(char category, int field, int key);
// Pasted text with every character the field would refuse as a key taken out.
std::string filterFieldText(char category, int field, std::string_view text);
bool acceptsFieldText(char category, int field, std::string_view text);

// The kick and return yards boxes: digits, Backspace, Delete and "-".
bool acceptsKickYardsKey(int key);
std::string filterKickYardsText(std::string_view text);

// The status line text of a field while it has the focus: the field's description, "User Defined
// Field" for any field outside 0..12.
std::string fieldDescription(char category, int field);
// Whether the category's panel shows the field: its own fields and the five user fields.
bool fieldShown(char category, int field);
// The field Enter moves to: the next one, from the last own field to the first user field, and
// from the last user field back to field 0 (to field 22 in kicking and returns, which have no
// own fields).
int nextFieldAfterEnter(char category, int field);

// A typed number: the leading numeric part of the text (spaces, a sign, digits, a decimal point
// and digits). Empty text, a lone "-" or "." and any other text give 0.
double fieldNumber(std::string_view text);
// A stored value as the field shows it: whole numbers plainly; a value kept in tenths (scale 10)
// with one decimal when it has one ("2.5", "-0.5", "3").
std::string storedValueText(long long stored, int scale);

} // namespace scorvane
