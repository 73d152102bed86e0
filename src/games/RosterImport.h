#pragma once

#include "games/Roster.h"
#include "storage/Bytes.h"
#include "storage/Status.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace scorvane {

// Importing players into a roster from a CSV file, as a spreadsheet writes it.
//
// A line holds a player's number and name, optionally followed by phone, address line 1, address
// line 2, city, state, zip and other information, in that order. A first line naming the columns
// ("Number,Name,Phone,...") is recognised as a header; the columns may then come in any order, and
// columns the roster has no field for are left out. Fields follow RFC 4180: commas between them,
// double quotes around a field that holds commas, quotes or line breaks, a quote inside written
// twice. The file may be UTF-8 (with or without a byte order mark) or Windows-1252.
//
// Every line is checked before anything is taken over: a number that is not 1 to 99, a number
// given twice, a missing name, a field longer than the roster keeps and a character the roster
// files cannot hold are each reported with the line they are on. Only a file without problems can
// be merged. Merging names the players of the file and sets the fields the file has; players the
// file does not name are left as they are, and so is a field the file does not have.

struct ImportedPlayer {
    int line = 0; // the file's line the player's record starts on
    int number = 0;
    std::string name; // Windows-1252, trimmed
    // The contact fields the file has for the player (Windows-1252, trimmed), by ContactField.
    std::array<std::optional<std::string>, kContactFieldCount> contacts;
};

struct ImportProblem {
    int line = 0;
    std::string text; // "Line 4: the number 104 is not between 1 and 99." (UTF-8)
};

struct RosterImportFile {
    std::vector<ImportedPlayer> players; // in file order
    std::vector<ImportProblem> problems; // in line order
    bool header = false;
    bool utf8 = false;                       // read as UTF-8, else as Windows-1252
    std::vector<std::string> ignoredColumns; // header names the roster has no field for (UTF-8)

    bool ok() const { return problems.empty(); }
};

RosterImportFile parseRosterCsv(const Bytes& bytes);
// Reads a file and parses it; a file that cannot be read gives its status and an empty result.
Status readRosterCsv(const std::string& path, RosterImportFile& file);

// The name of a contact field as the messages and the preview write it ("phone", "zip code").
std::string contactFieldLabel(ContactField field);

// What merging a file does to each of its players.
enum class ImportAction { Add, Change, Same };
struct ImportRow {
    int number = 0;
    ImportAction action = ImportAction::Same;
    std::string name;                // the imported name (Windows-1252)
    std::string oldName;             // the name on the roster before, when the number is in use
    std::vector<std::string> fields; // what changes: "name", then contact field labels
};
struct ImportPlan {
    std::vector<ImportRow> rows; // by player number
    int added = 0;
    int changed = 0;
    int unchanged = 0;
};
// Compares the file's players with the roster and the contact details the screen holds.
ImportPlan planRosterImport(const RosterImportFile& file, const Roster& roster,
                            const RosterEditor& editor);
// "The import adds 3 players, changes 1 player and leaves 2 players unchanged."
std::string describePlan(const ImportPlan& plan);

// Takes the file's players over into the screen's roster and contact details (a file with
// problems changes nothing). The selected number stays selected. The screen saves them as ever,
// when it closes.
void applyRosterImport(const RosterImportFile& file, RosterEditor& editor);

} // namespace scorvane
