#include "SeasonsFile.h"

#include "Identity.h"

#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"
#include "storage/Records.h"

namespace scorvane {
namespace {

constexpr const char* kVersionLine = "Scorvane seasons\t1";

std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> fields(1);
    for (char c : line) {
        if (c == '\t')
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

bool holdsLineBreakOrTab(const std::string& text) {
    return text.find_first_of("\t\r\n") != std::string::npos;
}

// Whether two directories are one folder: the same place on disk when both exist, the same
// written path otherwise.
bool sameFolder(const std::string& a, const std::string& b) {
    if (platform::isFolder(a) && platform::isFolder(b))
        return platform::samePlace(a, b);
    return platform::normalPath(platform::absolutePath(normalizeDirectory(a))) ==
           platform::normalPath(platform::absolutePath(normalizeDirectory(b)));
}

bool samePlayer(const SeasonPlayer& a, const SeasonPlayer& b) {
    return a.season == b.season && sameName(a.name, b.name);
}

std::optional<std::string> checkPlayer(const SeasonsList& list, const SeasonPlayer& player) {
    if (!list.find(player.season))
        return "There is no season \"" + player.season + "\" in the list.";
    if (identityKey(player.name).empty())
        return std::string("An empty name cannot be linked.");
    if (holdsLineBreakOrTab(player.name))
        return std::string("A name may not hold a tab or a line break.");
    return std::nullopt;
}

} // namespace

const SeasonEntry* SeasonsList::find(const std::string& label) const {
    for (const SeasonEntry& s : seasons)
        if (s.label == label)
            return &s;
    return nullptr;
}

std::string seasonsFilePath(const std::string& configDirectory) {
    return configDirectory + kSeasonsFileName;
}

std::string seasonsText(const SeasonsList& list) {
    std::string text = std::string(kVersionLine) + "\n";
    for (const SeasonEntry& s : list.seasons)
        text += "season\t" + s.label + "\t" + digits(s.team) + "\t" + s.dataDirectory + "\n";
    for (const PlayerLink& l : list.links)
        text += std::string(l.unlink ? "unlink" : "link") + "\t" + l.first.season + "\t" +
                cp1252ToUtf8(trim(l.first.name)) + "\t" + l.second.season + "\t" +
                cp1252ToUtf8(trim(l.second.name)) + "\n";
    return text;
}

SeasonsList parseSeasons(const std::string& text, std::vector<std::string>& problems) {
    SeasonsList list;
    std::size_t at = 0;
    int number = 0;
    bool versionSeen = false;
    while (at < text.size()) {
        std::size_t end = text.find('\n', at);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(at, end - at);
        at = end + 1;
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::string where = "Line " + digits(number) + ": ";
        if (number == 1 && line.rfind("\xEF\xBB\xBF", 0) == 0)
            line.erase(0, 3);
        if (number == 1) {
            versionSeen = line == kVersionLine;
            if (!versionSeen) {
                problems.push_back(where +
                                   "not a seasons file of this version; nothing in it was read.");
                return {};
            }
            continue;
        }
        if (trim(line).empty() || line.front() == '#')
            continue;
        const std::vector<std::string> f = splitTabs(line);
        if (f[0] == "season") {
            if (f.size() != 4) {
                problems.push_back(where + "a season needs a label, a team and a folder.");
                continue;
            }
            const std::string& teamText = f[2];
            const bool digitsOnly = !teamText.empty() && teamText.size() <= 3 &&
                                    teamText.find_first_not_of("0123456789") == std::string::npos;
            const long long team = digitsOnly ? leadingNumber(teamText) : 0;
            SeasonEntry entry{f[1], f[3], static_cast<int>(team)};
            if (team < 1 || team > kMaxTeams) {
                problems.push_back(where + "the team \"" + teamText + "\" is not 1 to 100.");
                continue;
            }
            if (f[1].empty() || f[3].empty()) {
                problems.push_back(where + "a season needs a label and a folder.");
                continue;
            }
            if (list.find(entry.label)) {
                problems.push_back(where + "the label \"" + entry.label + "\" is used twice.");
                continue;
            }
            list.seasons.push_back(std::move(entry));
        } else if (f[0] == "link" || f[0] == "unlink") {
            if (f.size() != 5) {
                problems.push_back(where + "a " + f[0] + " needs two seasons and two names.");
                continue;
            }
            PlayerLink link{
                {f[1], utf8ToCp1252(f[2])}, {f[3], utf8ToCp1252(f[4])}, f[0] == "unlink"};
            if (auto refused = addLink(list, link))
                problems.push_back(where + *refused);
        } else {
            problems.push_back(where + "\"" + f[0] + "\" is no kind of line this file holds.");
        }
    }
    if (!versionSeen)
        problems.push_back("Line 1: the file is empty; nothing was read.");
    return list;
}

Status readSeasonsFile(const std::string& path, SeasonsList& list,
                       std::vector<std::string>& problems) {
    list = {};
    Bytes contents;
    bool exists = false;
    if (Status s = readWholeFile(path, contents, exists); !s)
        return Status::error(
            s.kind(), "Cannot read " + platform::shownPath(path) + ": " + s.message(), s.code());
    if (!exists)
        return Status::ok();
    list = parseSeasons(std::string(contents.begin(), contents.end()), problems);
    for (std::string& p : problems)
        p = platform::shownPath(path) + ", " + p;
    return Status::ok();
}

Status writeSeasonsFile(const std::string& path, const SeasonsList& list) {
    const std::string text = seasonsText(list);
    const Bytes bytes(text.begin(), text.end());
    return writeFileAtomically(path, FileContents(bytes));
}

std::optional<std::string> addSeason(SeasonsList& list, SeasonEntry entry) {
    entry.label = trim(entry.label);
    if (entry.label.empty())
        return std::string("A season needs a label.");
    if (holdsLineBreakOrTab(entry.label) || holdsLineBreakOrTab(entry.dataDirectory))
        return std::string("A label or a folder may not hold a tab or a line break.");
    if (entry.team < 1 || entry.team > kMaxTeams)
        return std::string("Teams are 1 to 100.");
    if (trim(entry.dataDirectory).empty())
        return std::string("A season needs a data directory.");
    entry.dataDirectory = normalizeDirectory(entry.dataDirectory);
    for (const SeasonEntry& s : list.seasons) {
        if (s.label == entry.label)
            return "There is already a season \"" + entry.label + "\".";
        if (s.team == entry.team && sameFolder(s.dataDirectory, entry.dataDirectory))
            return "Season \"" + s.label + "\" is already team " + digits(entry.team) + " of " +
                   platform::shownPath(s.dataDirectory) + ".";
    }
    list.seasons.push_back(std::move(entry));
    return std::nullopt;
}

std::optional<std::string> addLink(SeasonsList& list, PlayerLink link) {
    link.first.name = trim(link.first.name);
    link.second.name = trim(link.second.name);
    if (auto bad = checkPlayer(list, link.first))
        return bad;
    if (auto bad = checkPlayer(list, link.second))
        return bad;
    if (samePlayer(link.first, link.second))
        return std::string("A player cannot be linked to himself.");
    for (const PlayerLink& l : list.links) {
        const bool samePair =
            (samePlayer(l.first, link.first) && samePlayer(l.second, link.second)) ||
            (samePlayer(l.first, link.second) && samePlayer(l.second, link.first));
        if (samePair)
            return std::string(l.unlink ? "These two players are already told apart."
                                        : "These two players are already linked.");
    }
    list.links.push_back(std::move(link));
    return std::nullopt;
}

} // namespace scorvane
