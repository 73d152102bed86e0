#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace scorvane {

// The exchange commands. Both find the data directory as the report command does (BXFB.INI in
// the folder --config names, else in `programDirectory`; or --data), take the team with --team
// (default 1) and stop on the first problem with one line on `err` and exit status 1; 0 when done.

// Whether the report command's arguments ask for a game's export (--export-game).
bool isExportCommand(const std::vector<std::string>& args);

// scorvane-report --export-game N --format fbxml|hstext [--team T] [--output FILE]: one game of
// the team as a press-box XML file (with the opponent's side when the data directory has its
// game too) or as the high-school stats site's text (with the team's site id), to `out` or saved
// as the file --output names, which may not lie in the data or report directory. Nothing is
// written into the data directory.
int runExportCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                     const std::string& programDirectory);

// scorvane-import --team N --xml FILE [--side V|H] [--replace GAME] [--dry-run] [--no-roster]:
// a press-box XML file taken over as a game of the team. The preview is printed first; then,
// unless --dry-run, the game is written (a new game after the last, or the results of game
// GAME replaced) and "Imported as game N." printed. Any refusal writes nothing; a dry run
// never writes.
int runImportCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                     const std::string& programDirectory);

std::string importCommandUsage();

} // namespace scorvane
