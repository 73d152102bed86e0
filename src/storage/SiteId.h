#pragma once

#include "FileNames.h"
#include "Status.h"

#include <optional>
#include <string>
#include <string_view>

namespace scorvane {

// The team's id at the high-school stats site, which the site's import file names on its first
// line. It is kept in a small text file of ours beside the team's files, "FBSITE<team>.TXT", the
// id on one line in ASCII. A team without an id has no such file.

// The length of an id the site gives out.
inline constexpr std::size_t kSiteIdLength = 32;

std::string siteIdFileName(const DataPaths& paths, int team);

// The id as the user typed it, with blanks (spaces, tabs, line ends) taken off both ends.
std::string trimmedSiteId(std::string_view typed);

// Why a trimmed id cannot be kept, as the message the user sees; nothing when it can (an empty
// id, or 32 letters, digits and '-').
std::optional<std::string> siteIdProblem(std::string_view id);

// The id the file holds: its first line, trimmed. A missing file is an empty id. Reading writes
// nothing.
[[nodiscard]] Status readSiteId(const DataPaths& paths, int team, std::string& id);

// Keeps an id that passed siteIdProblem: the file is replaced whole through a temporary file and
// a rename, so a crash leaves the old id or the new one; an empty id removes the file.
[[nodiscard]] Status writeSiteId(const DataPaths& paths, int team, const std::string& id);

} // namespace scorvane
