#pragma once

#include "Identity.h"
#include "SeasonsFile.h"

#include "reports/Season.h"
#include "reports/Selection.h"
#include "reports/Statistics.h"

#include <functional>
#include <string>
#include <vector>

namespace scorvane {

// One chosen season, read without writing anything (readTeamSeason).
struct OpenSeason {
    std::string label;
    std::string dataDirectory;
    TeamSeason team;
};

// The chosen seasons that could be read, in the order given, with who is who across them, and a
// message for every season left out ("Season 2024: There is no team list ...").
struct SeasonSet {
    std::vector<OpenSeason> seasons;
    People people;
    std::vector<std::string> messages;
};

// Reads the chosen seasons. A season whose folder is missing, whose files cannot be read or
// whose games or statistics file is damaged (not whole records) is left out with a message naming
// the season and the file; the others are read. Nothing is written to any folder.
SeasonSet openSeasons(const std::vector<SeasonEntry>& chosen, const std::vector<PlayerLink>& links);

// What one season's pass over its statistics gives: each player number's sums over the selected
// games, and the selected games he played (in game order).
struct SeasonSums {
    std::array<LineSums, kMaxPlayers + 1> players{};
    std::array<std::vector<std::int16_t>, kMaxPlayers + 1> games{};
    bool read = false; // false: the file could not be read to its end, the sums are not used
};

// Calls onGame(season, player number, game number, sums) for each player's game of the category
// as it is read: one game's performance.
using GameVisitor = std::function<void(std::size_t, int, int, const LineSums&)>;

// One pass over each season's statistics file, a piece at a time. A file that cannot be read to
// its end gives a message naming the season and the file, and that season's sums are not used
// (its games already handed to onGame stand).
std::vector<SeasonSums> sumSeasons(SeasonSet& set, char category, const Selection& selection,
                                   const GameVisitor& onGame = {});

// The same for several categories in one pass over each file: the sums by category (in the order
// of `categories`, which are distinct) and season; onGame(category's index, season, player number,
// game number, sums).
using CategoryGameVisitor =
    std::function<void(std::size_t, std::size_t, int, int, const LineSums&)>;
std::vector<std::vector<SeasonSums>> sumCategories(SeasonSet& set, const std::string& categories,
                                                   const Selection& selection,
                                                   const CategoryGameVisitor& onGame = {});

// One line of the career report: a person over the chosen seasons.
struct CareerLine {
    int person = 0;
    // The name as spelt in the latest season he played (17 characters, Windows-1252), and his
    // number there.
    std::string name;
    int number = 0;
    int seasons = 0; // seasons with a selected game
    std::string firstSeason;
    std::string lastSeason;
    LineSums sums;
    PlayerFigures figures; // games summed over the seasons; every derived column from the sums
};

struct CareerReport {
    char category = 'P';
    std::vector<CareerLine> players;
    // The listed players' sums, games as the selected games in which any of them took part, season
    // by season, and the derived columns from the sums.
    PlayerFigures totals;
    std::vector<OverflowNote> overflows; // playerName: the career's name
    std::vector<std::string> messages;   // the seasons left out
};

// The career lines of a category over the seasons and the selection (game types, Special
// Select, game range): players with at least `minimumGames` games over all seasons, in order of
// their first appearance. Counting columns are summed, longest gains the greatest, games summed
// over the seasons, and every derived column worked out from the career sums exactly as a season's
// is from the season's sums. A sum out of the 32-bit range is an overflow, as in a season.
CareerReport computeCareers(SeasonSet& set, char category, const Selection& selection,
                            int minimumGames = 0);

// The same from sums already made (sumSeasons): the record book reads each file once for both.
CareerReport careersFromSums(const SeasonSet& set, char category,
                             const std::vector<SeasonSums>& sums, int minimumGames = 0);

// Orders the lines by a column, "D" descending and anything else ascending; equal figures by name.
void sortCareers(CareerReport& report, int sortColumn, char direction);

// One player's career: a line per season he played, then the career line.
struct PlayerCareer {
    struct SeasonLine {
        std::string season;
        PlayerFigures figures;
    };
    std::vector<SeasonLine> seasons;
    CareerLine career;
};

// The careers of every person who went by `name` (compared as identity does) in any chosen
// season: usually one.
std::vector<PlayerCareer> playerCareers(SeasonSet& set, char category, const Selection& selection,
                                        const std::string& name,
                                        std::vector<std::string>* messages = nullptr);

// The career report as CSV (UTF-8, CRLF): "Name,Seasons,G," and each chosen column's heading
// trimmed (G itself is not repeated); one row per line in the report's order; the last row
// "Totals" with an empty Seasons.
std::string careerCsv(const CareerReport& report, const std::vector<int>& columns,
                      const ColumnTable& table);

} // namespace scorvane
