#pragma once

#include "storage/Prompter.h"
#include "storage/Status.h"

#include <functional>
#include <optional>
#include <string>

namespace scorvane {

// Where an installed program keeps its files (docs/install.md).
//
// The program's own folder holds BXFB.INI when it was built or copied there (a portable copy);
// then that file is used, as always. An installed program's folder (<prefix>/bin) is not the
// user's to write: there the configuration lives in the user's own configuration folder and is
// made, on the first start, from the default that the installation brings in
// <prefix>/share/scorvane. The data directory is never inside the installation: on the first start
// the user is offered a copy of the sample season or a new, empty data directory in the user's own
// data folder.

// The environment variables the locations are worked out from; the real environment in the
// program, a table in the tests.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;
Environment systemEnvironment();

// The user's folders for the program, ending in "/" (empty when the environment names no home):
// configuration $XDG_CONFIG_HOME/scorvane/ or ~/.config/scorvane/ (Windows: %APPDATA%\Scorvane\);
// data $XDG_DATA_HOME/scorvane/ or ~/.local/share/scorvane/ (Windows: %LOCALAPPDATA%\Scorvane\).
std::string userConfigDirectory(const Environment& env);
std::string userDataDirectory(const Environment& env);

// <prefix>/share/scorvane/ for a program in <prefix>/bin/, whether or not it exists.
std::string sharedDirectory(const std::string& installDirectory);

struct ConfigLocation {
    std::string directory; // the folder of BXFB.INI, ending in "/"
    // The installed default to make BXFB.INI from when it does not exist yet; empty otherwise.
    std::string seedFrom;
};
// The program's folder when it holds BXFB.INI or is no installation (then a missing file is
// reported as ever); otherwise the user's configuration folder.
ConfigLocation locateConfiguration(const std::string& installDirectory, const Environment& env);

// Makes the user's BXFB.INI from the installed default: every setting is copied, the data and
// report directories are left empty, so the first start asks where the teams are to live.
// Disk errors go to the disk error handler; a default that cannot be read leaves nothing written
// and gives a BadLength status (start-up then says the configuration is missing).
Status seedConfiguration(Prompter& prompter, const ConfigLocation& location);

// The help pages: help/ beside the program, else <prefix>/share/scorvane/help/.
std::string findHelpDirectory(const std::string& installDirectory);

// The sample season that comes with the program: <prefix>/share/scorvane/sample-season/, or
// sample-season/ beside the program in the build folder. Empty when neither holds a team list.
std::string sampleSeasonDirectory(const std::string& installDirectory);
// The folders the first start offers, inside the user's data folder.
std::string sampleCopyDirectory(const Environment& env);
std::string newDataDirectory(const Environment& env);

// Copies the sample season's data files into `to` (created when missing). A folder that already
// holds a team list is left as it is: the user's own changes to an earlier copy are kept.
Status copySampleSeason(Prompter& prompter, const std::string& from, const std::string& to);

} // namespace scorvane
