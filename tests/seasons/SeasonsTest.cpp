#include "seasons/Career.h"
#include "seasons/RecordBook.h"
#include "seasons/SeasonsFile.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/StatLayout.h"
#include "storage/TeamList.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>

using namespace scorvane;
using scorvane::testing::TempDir;

namespace {

struct Rec {
    int game;
    int player;
    char category;
    std::vector<std::pair<int, int>> values; // by column code
};

struct SeasonData {
    std::string label;
    std::vector<std::pair<int, std::string>> roster; // Windows-1252 names
    std::vector<std::pair<int, int>> scores;         // game by game: us, them
    std::vector<Rec> records;
};

Bytes encode(const Rec& r, int game, int player) {
    StatRecord s;
    s.header = StatHeader{static_cast<std::int16_t>(game), static_cast<std::int16_t>(player),
                          r.category, 'A'};
    for (const auto& [code, value] : r.values)
        s.values.at(static_cast<std::size_t>(statSlot(r.category, code))) =
            static_cast<std::int16_t>(value);
    return s.encode();
}

GameRecord game(int number, int us, int them) {
    GameRecord g;
    g.gameNumber = static_cast<std::int16_t>(number);
    g.gameDate = "09" + std::string(number < 10 ? "0" : "") + std::to_string(number) + "24";
    g.opponent = "Opponent " + std::to_string(number);
    g.teamScore[0] = static_cast<std::int16_t>(us);
    g.opponentScore[0] = static_cast<std::int16_t>(them);
    return g;
}

void writeSeason(const TempDir& dir, const SeasonData& d) {
    scorvane::testing::FakePrompter prompter;
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    ASSERT_TRUE(TeamList::createTeamList(data));
    TeamList names;
    ASSERT_TRUE(names.storeNames(data, 1, "Hawks", "Hawks"));
    TeamFiles files = data.team(1);
    std::vector<RosterRecord> roster;
    for (const auto& [number, name] : d.roster)
        roster.push_back(RosterRecord{static_cast<std::int16_t>(number), name});
    ASSERT_TRUE(files.replaceAllWith(FileKind::Roster, roster));
    std::vector<GameRecord> games;
    for (std::size_t g = 0; g < d.scores.size(); ++g)
        games.push_back(game(static_cast<int>(g) + 1, d.scores[g].first, d.scores[g].second));
    ASSERT_TRUE(files.replaceAllWith(FileKind::Games, games));
    std::vector<Bytes> stats;
    for (const Rec& r : d.records)
        stats.push_back(encode(r, r.game, r.player));
    ASSERT_TRUE(files.replaceAll(FileKind::Stats, stats));
}

// Passing: Att 2, Cm 3, Yds 4, Int 5, TD 6, Lg 8. Rushing: Rsh 2, Yds 3, Lg 4, TD 5.
// Receiving: Rec 2, Yds 3, TD 4, YAC 7, FD 8.
Rec pass(int game, int player, int att, int cm, int yds, int ints, int td, int lg) {
    return {game, player, 'P', {{2, att}, {3, cm}, {4, yds}, {5, ints}, {6, td}, {8, lg}}};
}
Rec rush(int game, int player, int rsh, int yds, int lg, int td = 0) {
    return {game, player, 'R', {{2, rsh}, {3, yds}, {4, lg}, {5, td}}};
}
Rec catches(int game, int player, int rec, int yds, int td, int yac, int fd) {
    return {game, player, 'C', {{2, rec}, {3, yds}, {4, td}, {7, yac}, {8, fd}}};
}

// Three seasons of one team. The passer changes number (7, then 12) and his name is written
// three ways ("Chris Vale", "chris valé  ", "Chris Vale"); the receiver is misspelt in 2023
// ("Jon Smyth") and linked to "John Smith"; the two "Sam Lee" are brothers, told apart; number
// 40 has no name in 2023 and 2024 and is no one's career.
std::vector<SeasonData> threeSeasons() {
    return {
        {"2023",
         {{7, "Chris Vale"}, {22, "Jon Smyth"}, {30, "Dale Ortiz"}},
         {{21, 7}, {14, 10}, {17, 3}},
         {pass(1, 7, 6, 5, 60, 0, 1, 22), pass(2, 7, 4, 4, 50, 1, 0, 31),
          catches(1, 22, 4, 40, 1, 10, 3), catches(3, 22, 2, 30, 0, 5, 2),
          rush(1, 30, 12, 120, 30, 1), rush(2, 30, 1, 50, 50), rush(2, 40, 3, 9, 5),
          rush(3, 30, 10, 60, 15)}},
        {"2024",
         {{12, "chris val\xE9  "}, {22, "John Smith"}, {30, "Dale Ortiz"}, {5, "Sam Lee"}},
         {{28, 0}, {35, 14}, {10, 24}},
         {pass(1, 12, 50, 15, 200, 2, 2, 40), pass(2, 12, 50, 15, 150, 3, 1, 18),
          catches(1, 22, 6, 90, 2, 30, 5), catches(2, 22, 5, 45, 0, 12, 1),
          rush(1, 30, 15, 150, 40, 2), rush(2, 30, 11, 110, 22), rush(3, 30, 20, 90, 12),
          rush(3, 5, 2, 7, 4), rush(1, 40, 4, 12, 6)}},
        {"2025",
         {{12, "Chris Vale"}, {22, "John Smith"}, {30, "Dale Ortiz"}, {5, "Sam Lee"}},
         {{42, 3}, {17, 14}, {0, 21}},
         {pass(1, 12, 20, 12, 180, 0, 3, 45), pass(2, 12, 8, 2, 10, 1, 0, 6),
          catches(1, 22, 7, 120, 1, 40, 6), catches(2, 22, 3, 20, 0, 2, 1),
          rush(1, 30, 12, 100, 25), rush(2, 30, 10, 60, 11), rush(3, 30, 11, 120, 33),
          rush(2, 5, 1, 12, 12)}},
    };
}

// Who is who, as the test data means it: career name -> (season index, number) of each season.
const std::map<std::string, std::vector<std::pair<std::size_t, int>>> kPeople = {
    {"Chris Vale", {{0, 7}, {1, 12}, {2, 12}}},
    {"John Smith", {{0, 22}, {1, 22}, {2, 22}}},
    {"Dale Ortiz", {{0, 30}, {1, 30}, {2, 30}}},
};

struct ThreeSeasons {
    std::vector<std::unique_ptr<TempDir>> dirs;
    std::vector<SeasonData> data = threeSeasons();
    SeasonsList list;

    ThreeSeasons() {
        for (const SeasonData& d : data) {
            dirs.push_back(std::make_unique<TempDir>());
            writeSeason(*dirs.back(), d);
            EXPECT_EQ(addSeason(list, {d.label, dirs.back()->dir(), 1}), std::nullopt);
        }
        EXPECT_EQ(addLink(list, {{"2023", "Jon Smyth"}, {"2024", "John Smith"}, false}),
                  std::nullopt);
        EXPECT_EQ(addLink(list, {{"2024", "Sam Lee"}, {"2025", "sam lee"}, true}), std::nullopt);
    }
    SeasonSet open() const { return openSeasons(list.seasons, list.links); }

    // Every file of every season's folder, by path.
    std::map<std::string, Bytes> snapshot() const {
        std::map<std::string, Bytes> all;
        for (const auto& d : dirs)
            for (const auto& e : std::filesystem::directory_iterator(d->path()))
                all[e.path().string()] = d->read(e.path().filename().string());
        return all;
    }

    // One person's records of a category as a single season held in memory, his games numbered
    // apart season by season: the season report of it is what his career must show.
    TeamSeason asOneSeason(const std::string& person, char category) const {
        TeamSeason one;
        one.number = 1;
        one.players[1] = fit(person, 17);
        for (const auto& [season, number] : kPeople.at(person))
            for (const Rec& r : data[season].records) {
                if (r.player != number || r.category != category)
                    continue;
                const int g = static_cast<int>(season) * 100 + r.game;
                one.games.push_back(game(g, 0, 0));
                one.stats.push_back(encode(r, g, 1));
            }
        return one;
    }
};

const CareerLine* lineOf(const CareerReport& report, const std::string& name) {
    for (const CareerLine& l : report.players)
        if (trimRight(l.name) == name)
            return &l;
    return nullptr;
}

} // namespace

// A career is the season computation over every season's records: counts summed, longest gains
// the greatest, games summed, and every derived column (Pct, Avg, Rtg, Pts, Y@C, FD%) worked out
// from the career sums, whatever number or spelling the player had. A linked misspelling joins
// the career; brothers told apart and players without a name stay apart.
TEST(Career, EachPersonsLineIsTheSeasonComputationOverAllHisRecords) {
    ThreeSeasons t;
    for (char category : {'P', 'C', 'R'}) {
        SeasonSet set = t.open();
        const CareerReport report = computeCareers(set, category, Selection{});
        EXPECT_TRUE(report.messages.empty());
        const int count = ColumnTable::columnCount(category);
        for (const auto& [person, seasons] : kPeople) {
            const CareerLine* line = lineOf(report, person);
            const StatReport one =
                ComputeStatistics(category, {t.asOneSeason(person, category)}, Selection{});
            if (one.players.empty()) {
                EXPECT_EQ(line, nullptr) << category << person;
                continue;
            }
            ASSERT_NE(line, nullptr) << category << " " << person;
            EXPECT_EQ(line->seasons, 3) << person;
            for (int code = 1; code <= count; ++code) {
                const Figure& want = one.players[0][code];
                const Figure& got = line->figures[code];
                EXPECT_EQ(got.value, want.value) << category << " " << person << " " << code;
                EXPECT_EQ(got.ratio, want.ratio) << category << " " << person << " " << code;
                EXPECT_EQ(got.made, want.made) << category << " " << person << " " << code;
                EXPECT_EQ(got.overflow, want.overflow) << category << " " << person << " " << code;
            }
        }
    }

    SeasonSet set = t.open();
    const CareerReport passing = computeCareers(set, 'P', Selection{});
    const CareerLine* chris = lineOf(passing, "Chris Vale");
    ASSERT_NE(chris, nullptr);
    EXPECT_EQ(chris->number, 12);
    EXPECT_EQ(chris->figures[1].value, 6);   // games
    EXPECT_EQ(chris->figures[2].value, 138); // Att
    EXPECT_EQ(chris->figures[3].value, 53);  // Cm
    EXPECT_EQ(chris->figures[8].value, 45);  // Lg: the greatest
    // 53 of 138 is 38.4%; the mean of the seasons' 90%, 30% and 50% would be 56.7%.
    EXPECT_EQ(chris->figures[15].ratio, static_cast<float>(53.0 / 138.0 * 100.0));

    SeasonSet rushSet = t.open();
    const CareerReport rushing = computeCareers(rushSet, 'R', Selection{});
    int sams = 0;
    int blanks = 0;
    for (const CareerLine& l : rushing.players) {
        sams += trimRight(l.name) == "Sam Lee" ? 1 : 0;
        blanks += trim(l.name).empty() ? 1 : 0;
    }
    EXPECT_EQ(sams, 2);
    EXPECT_EQ(blanks, 2);
    // Totals: the listed players' sums, the average again from them.
    EXPECT_EQ(rushing.totals[3].value,
              120 + 50 + 9 + 60 + 150 + 110 + 90 + 7 + 12 + 100 + 60 + 120 + 12);
    EXPECT_EQ(rushing.totals[1].value, 9); // every game of the three seasons had a carry
}

// A season that cannot be read is named with its folder and left out; the others are reported.
// No report writes a byte to any season's folder.
TEST(Career, AMissingSeasonIsReportedAndNoDataDirectoryChanges) {
    ThreeSeasons t;
    const std::map<std::string, Bytes> before = t.snapshot();
    TempDir gone;
    const std::string missing = gone.dir() + "2022/";
    std::vector<SeasonEntry> chosen = t.list.seasons;
    chosen.insert(chosen.begin(), SeasonEntry{"2022", missing, 1});
    SeasonSet set = openSeasons(chosen, t.list.links);
    ASSERT_EQ(set.messages.size(), 1u);
    EXPECT_NE(set.messages[0].find("Season 2022"), std::string::npos);
    EXPECT_NE(set.messages[0].find(platform::shownPath(missing)), std::string::npos);

    const CareerReport passing = computeCareers(set, 'P', Selection{});
    ASSERT_NE(lineOf(passing, "Chris Vale"), nullptr);
    EXPECT_EQ(lineOf(passing, "Chris Vale")->figures[2].value, 138);
    for (char category : {'C', 'R', 'D', 'K', 'T'}) {
        (void)computeCareers(set, category, Selection{});
        RecordBookOptions options;
        options.category = category;
        (void)computeRecordBook(set, options);
    }
    EXPECT_EQ(playerCareers(set, 'R', Selection{}, "dale ortiz").size(), 1u);
    (void)computeTeamRecords(set, Selection{});
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(t.snapshot(), before);
}

// Single games ranked with shared ranks, a tie at the last place listing everyone tied; a ratio
// counts only from its minimum of attempts.
TEST(RecordBook, RanksTiesAndMinimums) {
    ThreeSeasons t;
    SeasonSet set = t.open();
    RecordBookOptions options;
    options.category = 'R';
    options.columns = {3, 12};
    const RecordBook book = computeRecordBook(set, options);
    const RecordList* yards = book.find(3, RecordScope::Game);
    ASSERT_NE(yards, nullptr);
    // Rushing yards in a game: 150 120 120 110 100 90 60 60 50 12 12 | 9 7.
    std::vector<std::pair<int, long long>> ranks;
    for (const RecordEntry& e : yards->entries)
        ranks.emplace_back(e.rank, e.figure.value);
    const std::vector<std::pair<int, long long>> expected = {{1, 150}, {2, 120}, {2, 120}, {4, 110},
                                                             {5, 100}, {6, 90},  {7, 60},  {7, 60},
                                                             {9, 50},  {10, 12}, {10, 12}};
    EXPECT_EQ(ranks, expected);
    EXPECT_EQ(yards->entries[0].season, "2024");
    EXPECT_EQ(yards->entries[0].date, "09/01/24");
    EXPECT_EQ(yards->entries[0].opponent, "Opponent 1");

    options.top = 7; // a tie at the 7th place lists both
    const RecordBook seven = computeRecordBook(set, options);
    EXPECT_EQ(seven.find(3, RecordScope::Game)->entries.size(), 8u);

    // Avg in a game needs 10 carries: the 50-yard single carry is no record.
    const RecordList* avg = book.find(12, RecordScope::Game);
    ASSERT_NE(avg, nullptr);
    ASSERT_FALSE(avg->entries.empty());
    EXPECT_EQ(avg->entries[0].figure.ratio, static_cast<float>(120.0 / 11.0)); // 11 carries
    options.top = 10;
    options.minimums[12] = {1, 1, 1};
    const RecordBook anyCarry = computeRecordBook(set, options);
    EXPECT_EQ(anyCarry.find(12, RecordScope::Game)->entries[0].figure.ratio, 50.0f);
    // A career needs 100 carries: only Dale has them, over 3 seasons.
    const RecordList* career = book.find(12, RecordScope::Career);
    ASSERT_EQ(career->entries.size(), 1u);
    EXPECT_EQ(career->entries[0].name, "Dale Ortiz");
    EXPECT_EQ(career->entries[0].season, "2023-2025");

    const std::string csv = recordListCsv(book, *career);
    EXPECT_EQ(csv, "Rank,Name,Value,Season,Game,Date,Opponent\r\n"
                   "1,Dale Ortiz,8.4,2023-2025,,,\r\n");
}

// The team's records from the game files: a winning streak runs on from one season into the next.
TEST(RecordBook, TeamRecordsFromTheGames) {
    ThreeSeasons t;
    SeasonSet set = t.open();
    const TeamRecords r = computeTeamRecords(set, Selection{}, 3);
    ASSERT_EQ(r.mostScored.size(), 3u);
    EXPECT_EQ(r.mostScored[0].scored, 42);
    EXPECT_EQ(r.mostScored[0].season, "2025");
    ASSERT_EQ(r.fewestAllowed.size(), 3u);
    EXPECT_EQ(r.fewestAllowed[0].allowed, 0);
    // 2023 all three and 2024 games 1 and 2, then 2025 games 1 and 2.
    ASSERT_EQ(r.streaks.size(), 2u);
    EXPECT_EQ(r.streaks[0].wins, 5);
    EXPECT_EQ(r.streaks[0].fromSeason, "2023");
    EXPECT_EQ(r.streaks[0].toSeason, "2024");
    EXPECT_EQ(r.streaks[0].toGame, 2);
    EXPECT_EQ(r.streaks[1].wins, 2);
}

// The career CSV: Name, Seasons, G and the chosen columns, rows in the report's order, then the
// totals with the ratio worked out from the summed counts.
TEST(Career, CsvRowsAndTotals) {
    ThreeSeasons t;
    SeasonSet set = t.open();
    CareerReport report = computeCareers(set, 'P', Selection{});
    sortCareers(report, 4, 'D');
    ColumnTable table;
    EXPECT_EQ(careerCsv(report, {1, 2, 3, 15}, table), "Name,Seasons,G,Att,Cm,Pct\r\n"
                                                       "Chris Vale,3,6,138,53,38.4\r\n"
                                                       "Totals,,6,138,53,38.4\r\n");
}

// The seasons file: what is written reads back the same; lines it cannot use are reported and
// left out, and reading never rewrites the file; a second season of the same folder and team is
// refused.
TEST(SeasonsFile, RoundTripBadLinesAndDuplicates) {
    TempDir config;
    TempDir season;
    SeasonsList list;
    ASSERT_EQ(addSeason(list, {"2024", season.dir(), 1}), std::nullopt);
    ASSERT_EQ(addSeason(list, {"2025", season.dir(), 2}), std::nullopt);
    ASSERT_EQ(addLink(list, {{"2024", "Jos\xE9 Cruz"}, {"2025", "Jose Cruz Jr"}, false}),
              std::nullopt);
    ASSERT_EQ(addLink(list, {{"2024", "Sam Lee"}, {"2025", "Sam Lee"}, true}), std::nullopt);
    const std::string path = seasonsFilePath(config.dir());
    ASSERT_TRUE(writeSeasonsFile(path, list));
    const Bytes written = config.read("seasons.txt");
    EXPECT_NE(std::string(written.begin(), written.end()).find("link\t2024\tJos\xC3\xA9 Cruz"),
              std::string::npos); // UTF-8 in the file
    SeasonsList back;
    std::vector<std::string> problems;
    ASSERT_TRUE(readSeasonsFile(path, back, problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(back, list);

    struct BadLine {
        std::string line;
        std::string problem;
    };
    const std::vector<BadLine> bad = {
        {"season\t2026\tx\t/tmp/a/", "Line 3: the team \"x\" is not 1 to 100."},
        {"season\t2026\t101\t/tmp/a/", "Line 3: the team \"101\" is not 1 to 100."},
        {"season\t2026\t1", "Line 3: a season needs a label, a team and a folder."},
        {"season\t2024\t1\t/tmp/b/", "Line 3: the label \"2024\" is used twice."},
        {"link\t2024\tA\t2099\tB", "Line 3: There is no season \"2099\" in the list."},
        {"link\t2024\t \t2024\tB", "Line 3: An empty name cannot be linked."},
        {"team\t2024", "Line 3: \"team\" is no kind of line this file holds."},
    };
    for (const BadLine& b : bad) {
        const std::string text = "Scorvane seasons\t1\nseason\t2024\t1\t/tmp/x/\r\n" + b.line +
                                 "\n# a remark\n\nseason\t2027\t3\t/tmp/y/\n";
        config.write("seasons.txt", Bytes(text.begin(), text.end()));
        SeasonsList read;
        problems.clear();
        ASSERT_TRUE(readSeasonsFile(path, read, problems));
        ASSERT_EQ(problems.size(), 1u) << b.line;
        EXPECT_EQ(problems[0], platform::shownPath(path) + ", " + b.problem);
        ASSERT_EQ(read.seasons.size(), 2u) << b.line; // the good lines around it are kept
        EXPECT_EQ(read.seasons[1], (SeasonEntry{"2027", "/tmp/y/", 3}));
        EXPECT_EQ(config.read("seasons.txt"), Bytes(text.begin(), text.end()));
    }
    const std::string foreign = "teams\n2024\n";
    config.write("seasons.txt", Bytes(foreign.begin(), foreign.end()));
    SeasonsList none;
    problems.clear();
    ASSERT_TRUE(readSeasonsFile(path, none, problems));
    EXPECT_TRUE(none.seasons.empty());
    EXPECT_EQ(problems.size(), 1u);

    // The same folder written another way, and the same team: refused; another team: fine.
    std::filesystem::create_directory(season.path() / "sub");
    const std::string sameFolder = season.dir() + "sub/../";
    SeasonsList copy = list;
    const auto refused = addSeason(copy, {"2026", sameFolder, 2});
    ASSERT_TRUE(refused.has_value());
    EXPECT_EQ(*refused, "Season \"2025\" is already team 2 of " +
                            platform::shownPath(normalizeDirectory(season.dir())) + ".");
    EXPECT_EQ(copy, list);
    EXPECT_EQ(addSeason(copy, {"2026", sameFolder, 3}), std::nullopt);
    EXPECT_TRUE(addSeason(copy, {"2024", "/elsewhere/", 1}).has_value()); // a label used
}
