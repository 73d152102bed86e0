#include "Career.h"

#include "SeasonsCsv.h"

#include "reports/ReportColumns.h"
#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"

#include <algorithm>
#include <set>

namespace scorvane {
namespace {

// A file whose length is no whole number of records has been cut or written over.
std::optional<std::string> damagedFile(const std::string& path, std::size_t recordLength,
                                       const char* what) {
    long long bytes = 0;
    if (!platform::sizeOfFile(path, bytes) || bytes % static_cast<long long>(recordLength) == 0)
        return std::nullopt;
    return std::string("the ") + what + " file " + platform::shownPath(path) +
           " is damaged: its length is no whole number of records.";
}

DataPaths pathsOf(const std::string& directory) {
    return DataPaths{directory, directory, directory};
}

double sortKey(char category, int code, const Figure& f) {
    switch (columnKind(category, code)) {
    case ColumnKind::Ratio:
    case ColumnKind::Average:
        return f.ratio;
    case ColumnKind::MadeAttempted:
        return static_cast<double>(f.made);
    default:
        return static_cast<double>(f.value);
    }
}

void noteOverflows(char category, const PlayerFigures& f, std::vector<OverflowNote>& notes) {
    const int count = ColumnTable::columnCount(category);
    for (int code = 1; code <= count; ++code)
        if (f[code].overflow)
            notes.push_back({0, f.number, f.name, code});
}

} // namespace

SeasonSet openSeasons(const std::vector<SeasonEntry>& chosen,
                      const std::vector<PlayerLink>& links) {
    SeasonSet set;
    for (const SeasonEntry& entry : chosen) {
        const std::string prefix = "Season " + entry.label + ": ";
        const std::string directory = normalizeDirectory(entry.dataDirectory);
        if (!platform::isFolder(directory)) {
            set.messages.push_back(prefix + "the folder " + platform::shownPath(directory) +
                                   " is missing or cannot be read.");
            continue;
        }
        const DataPaths paths = pathsOf(directory);
        std::optional<std::string> damaged =
            damagedFile(fileName(FileKind::Games, paths, entry.team), GameRecord::Length, "game");
        if (!damaged)
            damaged = damagedFile(fileName(FileKind::Stats, paths, entry.team), StatRecord::Length,
                                  "statistics");
        if (damaged) {
            set.messages.push_back(prefix + *damaged);
            continue;
        }
        OpenSeason season{entry.label, directory, {}};
        if (Status s = readTeamSeason(paths, entry.team, season.team); !s) {
            set.messages.push_back(prefix + s.message());
            continue;
        }
        set.seasons.push_back(std::move(season));
    }
    std::vector<SeasonRoster> rosters;
    for (const OpenSeason& s : set.seasons)
        rosters.push_back({s.label, s.team.players});
    set.people = identifyPlayers(rosters, links);
    return set;
}

std::vector<SeasonSums> sumSeasons(SeasonSet& set, char category, const Selection& selection,
                                   const GameVisitor& onGame) {
    CategoryGameVisitor visitor;
    if (onGame)
        visitor = [&](std::size_t, std::size_t season, int number, int game, const LineSums& sums) {
            onGame(season, number, game, sums);
        };
    return sumCategories(set, std::string(1, category), selection, visitor).front();
}

std::vector<std::vector<SeasonSums>> sumCategories(SeasonSet& set, const std::string& categories,
                                                   const Selection& selection,
                                                   const CategoryGameVisitor& onGame) {
    std::vector<std::vector<SeasonSums>> all(categories.size(),
                                             std::vector<SeasonSums>(set.seasons.size()));
    // Each record's category to its place in `categories`, -1 for one not asked for.
    std::array<int, 256> slotOf{};
    slotOf.fill(-1);
    std::vector<CategoryRecords> readers;
    for (std::size_t k = 0; k < categories.size(); ++k) {
        readers.emplace_back(categories[k]);
        if (categoryIndex(categories[k]) >= 0)
            slotOf[static_cast<unsigned char>(categories[k])] = static_cast<int>(k);
    }
    if (std::all_of(slotOf.begin(), slotOf.end(), [](int k) { return k < 0; }))
        return all;

    // The game being read in each category: its players' sums, handed on when the next game
    // starts (the statistics file is kept in game order).
    struct Current {
        int game = -1;
        std::array<LineSums, kMaxPlayers + 1> players{};
        std::array<bool, kMaxPlayers + 1> seen{};
        std::vector<int> touched;
    };
    std::vector<Current> current(onGame ? categories.size() : 0);

    for (std::size_t s = 0; s < set.seasons.size(); ++s) {
        const OpenSeason& season = set.seasons[s];
        const TeamSeason& team = season.team;
        const std::vector<bool> selected = selectedGames(team, selection);
        std::array<bool, kMaxPlayers + 1> counted{};
        for (int n = 1; n <= kMaxPlayers; ++n)
            counted[static_cast<std::size_t>(n)] = selection.countsPlayer(n, team.playerName(n));
        const auto handOn = [&](std::size_t k) {
            Current& c = current[k];
            for (int p : c.touched) {
                const auto at = static_cast<std::size_t>(p);
                all[k][s].players[at].addLine(categories[k], c.players[at]);
                onGame(k, s, p, c.game, c.players[at]);
                c.players[at] = LineSums{};
                c.seen[at] = false;
            }
            c.touched.clear();
        };

        const Status read = team.stats.forEach([&](ByteView raw) {
            const int slot = slotOf[static_cast<unsigned char>(StatHeader::categoryOf(raw))];
            if (slot < 0)
                return;
            const StatHeader h = StatHeader::decode(raw);
            if (!h.isLive() || !isPlayerNumber(h.playerNumber) || h.gameNumber < 0 ||
                !selected[static_cast<std::size_t>(h.gameNumber)] ||
                !counted[static_cast<std::size_t>(h.playerNumber)])
                return;
            const auto k = static_cast<std::size_t>(slot);
            SeasonSums& out = all[k][s];
            const auto p = static_cast<std::size_t>(h.playerNumber);
            // The games counted are kept in order; the file is kept in game order, so a game is
            // nearly always the last one counted or a new one after it.
            std::vector<std::int16_t>& games = out.games[p];
            if (games.empty() || h.gameNumber > games.back()) {
                games.push_back(h.gameNumber);
            } else if (h.gameNumber < games.back()) {
                const auto at = std::lower_bound(games.begin(), games.end(), h.gameNumber);
                if (*at != h.gameNumber)
                    games.insert(at, h.gameNumber);
            }
            if (!onGame) {
                readers[k].add(raw, out.players[p]);
                return;
            }
            // A game's sums go into the season's when they are handed on.
            Current& c = current[k];
            if (h.gameNumber != c.game)
                handOn(k);
            c.game = h.gameNumber;
            if (!c.seen[p]) {
                c.seen[p] = true;
                c.touched.push_back(h.playerNumber);
            }
            readers[k].add(raw, c.players[p]);
        });
        for (std::size_t k = 0; k < current.size(); ++k) {
            handOn(k);
            current[k].game = -1;
        }
        for (std::size_t k = 0; k < categories.size(); ++k)
            all[k][s].read = static_cast<bool>(read) && categoryIndex(categories[k]) >= 0;
        if (!read)
            set.messages.push_back(
                "Season " + season.label + ": the statistics file " +
                platform::shownPath(
                    fileName(FileKind::Stats, pathsOf(season.dataDirectory), team.number)) +
                " could not be read to its end (" + read.message() + ").");
    }
    return all;
}

CareerReport computeCareers(SeasonSet& set, char category, const Selection& selection,
                            int minimumGames) {
    const std::size_t before = set.messages.size();
    const std::vector<SeasonSums> sums = sumSeasons(set, category, selection);
    CareerReport report = careersFromSums(set, category, sums, minimumGames);
    report.messages.assign(set.messages.begin() + static_cast<std::ptrdiff_t>(before),
                           set.messages.end());
    return report;
}

CareerReport careersFromSums(const SeasonSet& set, char category,
                             const std::vector<SeasonSums>& sums, int minimumGames) {
    CareerReport report;
    report.category = category;
    report.totals.name = fit("Totals", width::playerName);

    std::vector<int> lineOf(static_cast<std::size_t>(set.people.count), -1);
    std::vector<long long> games;
    for (std::size_t s = 0; s < sums.size(); ++s) {
        if (!sums[s].read)
            continue;
        const OpenSeason& season = set.seasons[s];
        std::vector<bool> seen(static_cast<std::size_t>(set.people.count), false);
        for (int n = 1; n <= kMaxPlayers; ++n) {
            const auto slot = static_cast<std::size_t>(n);
            if (sums[s].games[slot].empty())
                continue;
            const auto person = static_cast<std::size_t>(set.people.of(s, n));
            if (lineOf[person] < 0) {
                lineOf[person] = static_cast<int>(report.players.size());
                CareerLine line;
                line.person = static_cast<int>(person);
                line.firstSeason = season.label;
                report.players.push_back(std::move(line));
                games.push_back(0);
            }
            const auto at = static_cast<std::size_t>(lineOf[person]);
            CareerLine& line = report.players[at];
            line.sums.addLine(category, sums[s].players[slot]);
            games[at] += static_cast<long long>(sums[s].games[slot].size());
            if (!seen[person])
                ++line.seasons;
            seen[person] = true;
            line.name = season.team.playerName(n);
            line.number = n;
            line.lastSeason = season.label;
        }
    }

    // The lines listed, and the totals over them.
    std::vector<CareerLine> listed;
    std::vector<bool> listedPerson(static_cast<std::size_t>(set.people.count), false);
    LineSums total;
    for (std::size_t i = 0; i < report.players.size(); ++i) {
        CareerLine& line = report.players[i];
        if (games[i] < minimumGames)
            continue;
        line.figures.number = line.number;
        line.figures.name = line.name;
        lineFigures(category, line.sums, games[i], false, line.figures);
        noteOverflows(category, line.figures, report.overflows);
        total.addLine(category, line.sums);
        listedPerson[static_cast<std::size_t>(line.person)] = true;
        listed.push_back(std::move(line));
    }
    report.players = std::move(listed);
    long long totalGames = 0;
    for (std::size_t s = 0; s < sums.size(); ++s) {
        if (!sums[s].read)
            continue;
        std::vector<bool> played(std::size_t{1} << 15);
        for (int n = 1; n <= kMaxPlayers; ++n)
            if (listedPerson[static_cast<std::size_t>(set.people.of(s, n))])
                for (std::int16_t game : sums[s].games[static_cast<std::size_t>(n)])
                    if (!played[static_cast<std::size_t>(game)]) {
                        played[static_cast<std::size_t>(game)] = true;
                        ++totalGames;
                    }
    }
    lineFigures(category, total, totalGames, true, report.totals);
    noteOverflows(category, report.totals, report.overflows);
    return report;
}

void sortCareers(CareerReport& report, int sortColumn, char direction) {
    const char category = report.category;
    const bool known = isReportColumn(category, sortColumn);
    const bool descending = direction == 'D';
    std::stable_sort(report.players.begin(), report.players.end(),
                     [&](const CareerLine& a, const CareerLine& b) {
                         if (known) {
                             const double ka = sortKey(category, sortColumn, a.figures[sortColumn]);
                             const double kb = sortKey(category, sortColumn, b.figures[sortColumn]);
                             if (ka != kb)
                                 return descending ? ka > kb : ka < kb;
                         }
                         return identityKey(a.name) < identityKey(b.name);
                     });
}

std::vector<PlayerCareer> playerCareers(SeasonSet& set, char category, const Selection& selection,
                                        const std::string& name,
                                        std::vector<std::string>* messages) {
    const std::size_t before = set.messages.size();
    const std::vector<SeasonSums> sums = sumSeasons(set, category, selection);
    if (messages)
        messages->assign(set.messages.begin() + static_cast<std::ptrdiff_t>(before),
                         set.messages.end());
    const std::string key = identityKey(name);
    std::vector<int> persons; // in order of first appearance
    for (std::size_t s = 0; s < set.seasons.size(); ++s)
        for (int n = 1; n <= kMaxPlayers; ++n)
            if (!key.empty() && identityKey(set.seasons[s].team.playerName(n)) == key) {
                const int p = set.people.of(s, n);
                if (std::find(persons.begin(), persons.end(), p) == persons.end())
                    persons.push_back(p);
            }

    std::vector<PlayerCareer> careers;
    for (int person : persons) {
        PlayerCareer career;
        long long careerGames = 0;
        for (std::size_t s = 0; s < sums.size(); ++s) {
            if (!sums[s].read)
                continue;
            LineSums seasonSums;
            std::set<int> games;
            int number = 0;
            for (int n = 1; n <= kMaxPlayers; ++n) {
                const auto slot = static_cast<std::size_t>(n);
                if (set.people.of(s, n) != person || sums[s].games[slot].empty())
                    continue;
                seasonSums.addLine(category, sums[s].players[slot]);
                games.insert(sums[s].games[slot].begin(), sums[s].games[slot].end());
                number = n;
            }
            if (games.empty())
                continue;
            PlayerCareer::SeasonLine line{set.seasons[s].label, {}};
            line.figures.number = number;
            line.figures.name = set.seasons[s].team.playerName(number);
            lineFigures(category, seasonSums, static_cast<long long>(games.size()), false,
                        line.figures);
            career.seasons.push_back(std::move(line));

            CareerLine& c = career.career;
            if (c.seasons == 0)
                c.firstSeason = set.seasons[s].label;
            ++c.seasons;
            c.lastSeason = set.seasons[s].label;
            c.person = person;
            c.name = set.seasons[s].team.playerName(number);
            c.number = number;
            c.sums.addLine(category, seasonSums);
            careerGames += static_cast<long long>(games.size());
        }
        if (career.seasons.empty())
            continue;
        career.career.figures.number = career.career.number;
        career.career.figures.name = career.career.name;
        lineFigures(category, career.career.sums, careerGames, false, career.career.figures);
        careers.push_back(std::move(career));
    }
    return careers;
}

std::string careerCsv(const CareerReport& report, const std::vector<int>& columns,
                      const ColumnTable& table) {
    const char category = report.category;
    std::vector<int> shown;
    for (int code : columns)
        if (code != 1 && isReportColumn(category, code))
            shown.push_back(code);
    std::vector<std::string> heading = {"Name", "Seasons", "G"};
    for (int code : shown)
        heading.push_back(trim(columnHeading(category, code, table)));
    std::string csv = csvLine(heading);
    const auto row = [&](const std::string& name, const std::string& seasons,
                         const PlayerFigures& f) {
        std::vector<std::string> cells = {name, seasons, trim(figureText(category, 1, f[1]))};
        for (int code : shown)
            cells.push_back(trim(figureText(category, code, f[code])));
        return csvLine(cells);
    };
    for (const CareerLine& line : report.players)
        csv += row(cp1252ToUtf8(trimRight(line.name)), digits(line.seasons), line.figures);
    return csv + row("Totals", "", report.totals);
}

} // namespace scorvane
