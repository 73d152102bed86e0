#include "RecordBook.h"

#include "SeasonsCsv.h"

#include "reports/ReportColumns.h"
#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace scorvane {
namespace {

constexpr std::array<RecordScope, 3> kScopes = {RecordScope::Game, RecordScope::Season,
                                                RecordScope::Career};

// A performance that may make a list: its figure, the key it is ranked by, and whose it is.
struct Candidate {
    double key = 0;
    Figure figure;
    std::size_t season = 0; // game and season scopes
    int number = 0;         // the player's number in that season
    int person = 0;
    int game = 0; // game scope
};

// Keeps the candidates whose rank is within the top N, dropping the rest now and then, so that a
// million single games never stand in memory at once. Once N are held, a candidate below the N-th
// is turned away at once; the list is pruned when it has doubled since the last pruning, so that a
// long tie at the last place (kept whole) does not have it sorted again at every few additions.
class TopList {
public:
    explicit TopList(int top) : top_(static_cast<std::size_t>(std::max(top, 0))) {}
    // Whether a figure this low is turned away.
    bool below(double key) const { return full_ && key < last_; }
    void add(const Candidate& c) {
        if (top_ == 0 || (full_ && c.key < last_))
            return;
        items_.push_back(c);
        if (items_.size() >= 2 * std::max(top_, kept_) + 64)
            prune();
    }
    // The entries within the top N, best first; equal keys in no particular order.
    std::vector<Candidate> take() {
        prune();
        return std::move(items_);
    }

private:
    void prune() {
        std::stable_sort(items_.begin(), items_.end(),
                         [](const Candidate& a, const Candidate& b) { return a.key > b.key; });
        kept_ = items_.size();
        if (items_.size() < top_)
            return;
        // Everything as good as the N-th entry has a rank within N.
        full_ = true;
        last_ = items_[top_ - 1].key;
        std::size_t keep = top_;
        while (keep < items_.size() && items_[keep].key >= last_)
            ++keep;
        items_.resize(keep);
        kept_ = keep;
    }
    std::size_t top_;
    std::vector<Candidate> items_;
    std::size_t kept_ = 0; // entries held after the last pruning
    bool full_ = false;    // N entries were held: nothing below last_ can rank within N
    double last_ = 0;
};

// A ranked column as every performance is offered to it: worked out once, not at each of a
// million single games.
struct RankedColumn {
    int code = 0;
    ColumnKind kind = ColumnKind::None;
    int attempts = 0; // attemptsColumn
    RecordMinimum minimum;
    // The column's figure is its sum as it is (a count, a longest gain, sacks): a single game whose
    // sum is 0 or less, or below the list's last place, is turned away before any figure is made.
    bool summed = false;
};

// What a list ranks a figure by; nothing when the figure is no record: out of range, 0 or less, or
// a ratio on fewer attempts than the minimum. `tries` is the figure of the column's attempts column
// (read only for a ratio or average column that has one).
std::optional<double> recordKey(const RankedColumn& column, const Figure& figure,
                                const Figure& tries, int minimum) {
    if (figure.overflow)
        return std::nullopt;
    switch (column.kind) {
    case ColumnKind::Ratio:
    case ColumnKind::Average:
        if (column.attempts > 0 && (tries.overflow || tries.value < std::max(minimum, 1)))
            return std::nullopt;
        return static_cast<double>(figure.ratio);
    case ColumnKind::MadeAttempted:
        return figure.made > 0 ? std::optional<double>(static_cast<double>(figure.made))
                               : std::nullopt;
    case ColumnKind::None:
        return std::nullopt;
    default:
        return figure.value > 0 ? std::optional<double>(static_cast<double>(figure.value))
                                : std::nullopt;
    }
}

std::string seasonsText(const std::string& first, const std::string& last) {
    return first == last ? first : first + "-" + last;
}

// Ranks are shared by equal keys: 1 + the number of entries ranked strictly better.
template <class T, class Key>
void assignRanks(std::vector<T>& entries, std::vector<int>& ranks, const Key& key) {
    ranks.assign(entries.size(), 0);
    for (std::size_t i = 0; i < entries.size(); ++i)
        ranks[i] = i > 0 && key(entries[i]) == key(entries[i - 1]) ? ranks[i - 1]
                                                                   : static_cast<int>(i) + 1;
}

} // namespace

int attemptsColumn(char category, int code) {
    switch (category) {
    case 'P':
        return code == 15 || code == 17 ? 2 : code == 16 ? 3 : 0;
    case 'C':
        return code == 15 || code == 17 ? 2 : 0;
    case 'R':
        return code == 12 ? 2 : 0;
    case 'K':
        return code == 10 ? 4 : 0;
    case 'T':
        return code == 3 ? 2 : code == 10 ? 9 : 0;
    default:
        return 0;
    }
}

RecordMinimum defaultMinimum(char category, int code) {
    if (attemptsColumn(category, code) == 0)
        return {};
    switch (category) {
    case 'P':
    case 'R':
        return {10, 50, 100};
    case 'C':
        return {5, 25, 50};
    default:
        return {3, 15, 30};
    }
}

std::vector<int> defaultRecordColumns(char category) {
    switch (category) {
    case 'P':
        return {4, 6, 3, 15};
    case 'R':
        return {3, 5, 2, 12, 4};
    case 'C':
        return {2, 3, 4};
    case 'D':
        return {2, 5, 10};
    case 'K':
        return {11, 17, 10};
    case 'T':
        return {8, 6, 15, 13};
    default:
        return {};
    }
}

const RecordList* RecordBook::find(int column, RecordScope scope) const {
    for (const RecordList& l : lists)
        if (l.column == column && l.scope == scope)
            return &l;
    return nullptr;
}

namespace {

// One category's record book as it is made: the candidates of each list, offered as the
// statistics are read (single games) and from the sums after (seasons, careers).
class BookBuilder {
public:
    explicit BookBuilder(const RecordBookOptions& options) : category_(options.category) {
        for (int code : options.columns.empty() ? defaultRecordColumns(category_) : options.columns)
            if (code > 1 && isReportColumn(category_, code) &&
                std::none_of(columns_.begin(), columns_.end(),
                             [&](const RankedColumn& c) { return c.code == code; })) {
                const auto it = options.minimums.find(code);
                const ColumnKind kind = columnKind(category_, code);
                columns_.push_back(
                    {code, kind, attemptsColumn(category_, code),
                     it != options.minimums.end() ? it->second : defaultMinimum(category_, code),
                     kind != ColumnKind::MadeAttempted && !isDerived(category_, code)});
                lists_.push_back(
                    {TopList(options.top), TopList(options.top), TopList(options.top)});
            }
    }

    void offerGame(const SeasonSet& set, std::size_t season, int number, int game,
                   const LineSums& performance) {
        // Only the ranked columns' figures of a single game are worked out, each as its line
        // would have it; a ratio column's only when the game has its minimum of attempts.
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const RankedColumn& column = columns_[i];
            TopList& list = lists_[i][0];
            const auto code = static_cast<std::size_t>(column.code);
            if (column.summed && (performance.value[code] <= 0 ||
                                  list.below(static_cast<double>(performance.value[code]))))
                continue;
            if (column.kind == ColumnKind::MadeAttempted &&
                (performance.made[code] <= 0 ||
                 list.below(static_cast<double>(performance.made[code]))))
                continue;
            const int minimum = column.minimum.game;
            Figure tries;
            if ((column.kind == ColumnKind::Ratio || column.kind == ColumnKind::Average) &&
                column.attempts > 0) {
                tries = lineFigure(category_, performance, column.attempts, false);
                if (tries.overflow || tries.value < std::max(minimum, 1))
                    continue;
            }
            const Figure figure = lineFigure(category_, performance, column.code, false);
            const std::optional<double> key = recordKey(column, figure, tries, minimum);
            if (!key || list.below(*key))
                continue;
            list.add({*key, figure, season, number, set.people.of(season, number), game});
        }
    }

    RecordBook finish(const SeasonSet& set, const std::vector<SeasonSums>& sums) {
        RecordBook book;
        book.category = category_;
        for (std::size_t s = 0; s < sums.size(); ++s) {
            if (!sums[s].read)
                continue;
            for (int n = 1; n <= kMaxPlayers; ++n) {
                const auto slot = static_cast<std::size_t>(n);
                if (sums[s].games[slot].empty())
                    continue;
                PlayerFigures f;
                lineFigures(category_, sums[s].players[slot],
                            static_cast<long long>(sums[s].games[slot].size()), false, f);
                offer(RecordScope::Season, f, {0, {}, s, n, set.people.of(s, n), 0});
            }
        }
        const CareerReport careers = careersFromSums(set, category_, sums);
        std::vector<const CareerLine*> careerOf(static_cast<std::size_t>(set.people.count),
                                                nullptr);
        std::vector<std::string> careerName(static_cast<std::size_t>(set.people.count));
        for (const CareerLine& line : careers.players) {
            careerOf[static_cast<std::size_t>(line.person)] = &line;
            careerName[static_cast<std::size_t>(line.person)] = trimRight(line.name);
            offer(RecordScope::Career, line.figures, {0, {}, 0, line.number, line.person, 0});
        }

        // The name of a person: as spelt in the latest season he played; the roster's name for a
        // performance of a season whose sums were not used. Each name is worked out once and given
        // its place in name order, so that thousands of games tied at the last place are sorted by
        // a number rather than by comparing names.
        std::vector<std::string> names;
        std::vector<int> personName(static_cast<std::size_t>(set.people.count), -1);
        std::vector<std::vector<int>> rosterName(set.seasons.size());
        const auto nameOf = [&](const Candidate& c) {
            const auto person = static_cast<std::size_t>(c.person);
            int* id = &personName[person];
            if (!careerOf[person]) {
                std::vector<int>& roster = rosterName[c.season];
                if (roster.empty())
                    roster.assign(static_cast<std::size_t>(kMaxPlayers) + 1, -1);
                id = &roster[static_cast<std::size_t>(c.number)];
            }
            if (*id < 0) {
                *id = static_cast<int>(names.size());
                names.push_back(careerOf[person]
                                    ? careerName[person]
                                    : trimRight(set.seasons[c.season].team.playerName(c.number)));
            }
            return *id;
        };
        std::vector<std::vector<Candidate>> best;
        std::vector<std::vector<int>> nameIds;
        for (std::size_t i = 0; i < columns_.size(); ++i)
            for (RecordScope scope : kScopes) {
                best.push_back(lists_[i][static_cast<std::size_t>(scope)].take());
                nameIds.emplace_back();
                for (const Candidate& c : best.back())
                    nameIds.back().push_back(nameOf(c));
            }
        std::vector<int> byName(names.size());
        for (std::size_t k = 0; k < byName.size(); ++k)
            byName[k] = static_cast<int>(k);
        std::sort(byName.begin(), byName.end(), [&](int a, int b) {
            return names[static_cast<std::size_t>(a)] < names[static_cast<std::size_t>(b)];
        });
        std::vector<int> namePlace(names.size()); // equal names share a place
        for (std::size_t k = 0; k < byName.size(); ++k)
            namePlace[static_cast<std::size_t>(byName[k])] =
                k > 0 && names[static_cast<std::size_t>(byName[k])] ==
                             names[static_cast<std::size_t>(byName[k - 1])]
                    ? namePlace[static_cast<std::size_t>(byName[k - 1])]
                    : static_cast<int>(k);

        // A candidate as it is ordered: figure, name, season, game.
        struct Placed {
            double key;
            int name;
            std::size_t season;
            int game;
            std::size_t at; // in the list's candidates
        };
        std::size_t l = 0;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            for (RecordScope scope : kScopes) {
                RecordList list;
                list.column = columns_[i].code;
                list.scope = scope;
                list.minimum =
                    columns_[i].attempts > 0 ? std::max(columns_[i].minimum.in(scope), 1) : 0;
                const std::vector<Candidate>& candidates = best[l];
                const std::vector<int>& ids = nameIds[l];
                ++l;
                std::vector<Placed> placed;
                placed.reserve(candidates.size());
                for (std::size_t k = 0; k < candidates.size(); ++k) {
                    const Candidate& c = candidates[k];
                    placed.push_back(
                        {c.key, namePlace[static_cast<std::size_t>(ids[k])], c.season, c.game, k});
                }
                // Entries equal in all four keep the order they were found in.
                std::sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
                    if (a.key != b.key)
                        return a.key > b.key;
                    if (a.name != b.name)
                        return a.name < b.name;
                    if (a.season != b.season)
                        return a.season < b.season;
                    return a.game != b.game ? a.game < b.game : a.at < b.at;
                });
                std::vector<int> ranks;
                assignRanks(placed, ranks, [](const Placed& e) { return e.key; });
                list.entries.reserve(placed.size());
                for (std::size_t k = 0; k < placed.size(); ++k) {
                    const Candidate& c = candidates[placed[k].at];
                    RecordEntry& e = list.entries.emplace_back();
                    e.rank = ranks[k];
                    e.name = names[static_cast<std::size_t>(ids[placed[k].at])];
                    e.figure = c.figure;
                    if (scope == RecordScope::Career) {
                        const CareerLine* line = careerOf[static_cast<std::size_t>(c.person)];
                        e.season = line ? seasonsText(line->firstSeason, line->lastSeason) : "";
                    } else {
                        e.season = set.seasons[c.season].label;
                    }
                    if (scope == RecordScope::Game) {
                        e.game = c.game;
                        if (const GameText* g = gameOf(set, c.season, c.game)) {
                            e.date = g->date;
                            e.opponent = g->opponent;
                        }
                    }
                }
                book.lists.push_back(std::move(list));
            }
        }
        return book;
    }

private:
    // A game as a list shows it.
    struct GameText {
        const GameRecord* game = nullptr;
        std::string date;     // "MM/DD/YY"
        std::string opponent; // trimmed
        bool made = false;    // date and opponent worked out
    };

    // A season's live game of that number, its games indexed at the first look and each one's
    // texts worked out at its first: a long tie at the last place can list thousands of games,
    // and the same game often stands in several lists.
    const GameText* gameOf(const SeasonSet& set, std::size_t season, int number) {
        if (games_.size() < set.seasons.size()) {
            games_.resize(set.seasons.size());
            gameTexts_.resize(set.seasons.size());
        }
        std::vector<int>& index = games_[season];
        std::vector<GameText>& texts = gameTexts_[season];
        if (index.empty()) {
            index.assign(static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()) + 1,
                         -1);
            for (const GameRecord& g : set.seasons[season].team.games)
                if (g.isLive() && g.gameNumber >= 0 &&
                    index[static_cast<std::size_t>(g.gameNumber)] < 0) {
                    index[static_cast<std::size_t>(g.gameNumber)] = static_cast<int>(texts.size());
                    texts.push_back({&g, {}, {}, false});
                }
        }
        if (number < 0 || static_cast<std::size_t>(number) >= index.size() ||
            index[static_cast<std::size_t>(number)] < 0)
            return nullptr;
        GameText& text = texts[static_cast<std::size_t>(index[static_cast<std::size_t>(number)])];
        if (!text.made) {
            text.made = true;
            text.date = ShortDate(text.game->gameDate);
            text.opponent = trim(text.game->opponent);
        }
        return &text;
    }

    void offer(RecordScope scope, const PlayerFigures& f, Candidate c) {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const RankedColumn& column = columns_[i];
            if (auto key = recordKey(column, f[column.code], f[column.attempts],
                                     column.minimum.in(scope))) {
                c.key = *key;
                c.figure = f[column.code];
                lists_[i][static_cast<std::size_t>(scope)].add(c);
            }
        }
    }

    char category_;
    std::vector<RankedColumn> columns_;
    std::vector<std::array<TopList, 3>> lists_;    // [column][scope]
    std::vector<std::vector<int>> games_;          // by season and game number: in gameTexts_
    std::vector<std::vector<GameText>> gameTexts_; // by season
};

} // namespace

RecordBook computeRecordBook(SeasonSet& set, const RecordBookOptions& options) {
    return computeRecordBooks(set, {options}).front();
}

std::vector<RecordBook> computeRecordBooks(SeasonSet& set,
                                           const std::vector<RecordBookOptions>& options) {
    std::string categories;
    std::vector<std::vector<std::size_t>> booksOf; // by category: the books of that category
    std::vector<BookBuilder> builders;
    for (std::size_t b = 0; b < options.size(); ++b) {
        std::size_t k = categories.find(options[b].category);
        if (k == std::string::npos) {
            k = categories.size();
            categories += options[b].category;
            booksOf.emplace_back();
        }
        booksOf[k].push_back(b);
        builders.emplace_back(options[b]);
    }
    const std::size_t before = set.messages.size();
    const std::vector<std::vector<SeasonSums>> sums = sumCategories(
        set, categories, options.empty() ? Selection{} : options.front().selection,
        [&](std::size_t k, std::size_t season, int number, int game, const LineSums& performance) {
            for (std::size_t b : booksOf[k])
                builders[b].offerGame(set, season, number, game, performance);
        });
    const std::vector<std::string> messages(
        set.messages.begin() + static_cast<std::ptrdiff_t>(before), set.messages.end());
    std::vector<RecordBook> books;
    for (std::size_t k = 0; k < booksOf.size(); ++k)
        for (std::size_t b : booksOf[k]) {
            if (books.size() <= b)
                books.resize(b + 1);
            books[b] = builders[b].finish(set, sums[k]);
            books[b].messages = messages;
        }
    return books;
}

TeamRecords computeTeamRecords(const SeasonSet& set, const Selection& selection, int top) {
    // Each game's points are ranked first; dates and opponents are written out only for the games
    // that make a list.
    struct Played {
        std::size_t season;
        const GameRecord* game;
        int scored;
        int allowed;
    };
    TeamRecords records;
    std::vector<Played> games;
    std::vector<StreakEntry> streaks;
    StreakEntry running;
    const auto endStreak = [&] {
        if (running.wins > 0)
            streaks.push_back(running);
        running = {};
    };
    std::vector<const GameRecord*> played;
    for (std::size_t s = 0; s < set.seasons.size(); ++s) {
        const OpenSeason& season = set.seasons[s];
        played.clear();
        for (const GameRecord& g : season.team.games)
            if (selection.countsGame(g))
                played.push_back(&g);
        std::stable_sort(
            played.begin(), played.end(),
            [](const GameRecord* a, const GameRecord* b) { return a->gameNumber < b->gameNumber; });
        for (const GameRecord* g : played) {
            const std::optional<PointSums> points = g->pointSums();
            if (!points)
                continue;
            games.push_back({s, g, points->team, points->opponent});
            if (points->team > points->opponent) {
                if (running.wins == 0) {
                    running.fromSeason = season.label;
                    running.fromGame = g->gameNumber;
                }
                ++running.wins;
                running.toSeason = season.label;
                running.toGame = g->gameNumber;
            } else {
                endStreak();
            }
        }
    }
    endStreak();

    std::vector<int> ranks;
    const auto limit = [&](auto& entries) {
        std::size_t keep = 0;
        while (keep < entries.size() && ranks[keep] <= top)
            ++keep;
        entries.resize(keep);
    };
    const auto listed = [&](const std::vector<Played>& ranked) {
        std::vector<TeamGameEntry> entries;
        entries.reserve(ranked.size());
        for (std::size_t i = 0; i < ranked.size(); ++i) {
            const Played& p = ranked[i];
            entries.push_back({ranks[i], set.seasons[p.season].label, p.game->gameNumber,
                               ShortDate(p.game->gameDate), trim(p.game->opponent), p.scored,
                               p.allowed});
        }
        return entries;
    };
    std::vector<Played> most = games;
    std::stable_sort(most.begin(), most.end(),
                     [](const Played& a, const Played& b) { return a.scored > b.scored; });
    assignRanks(most, ranks, [](const Played& e) { return e.scored; });
    limit(most);
    records.mostScored = listed(most);
    std::vector<Played> fewest = std::move(games);
    std::stable_sort(fewest.begin(), fewest.end(),
                     [](const Played& a, const Played& b) { return a.allowed < b.allowed; });
    assignRanks(fewest, ranks, [](const Played& e) { return e.allowed; });
    limit(fewest);
    records.fewestAllowed = listed(fewest);
    records.streaks = streaks;
    std::stable_sort(records.streaks.begin(), records.streaks.end(),
                     [](const StreakEntry& a, const StreakEntry& b) { return a.wins > b.wins; });
    assignRanks(records.streaks, ranks, [](const StreakEntry& e) { return e.wins; });
    limit(records.streaks);
    for (std::size_t i = 0; i < records.streaks.size(); ++i)
        records.streaks[i].rank = ranks[i];
    return records;
}

std::string recordListCsv(const RecordBook& book, const RecordList& list) {
    std::string csv = csvLine({"Rank", "Name", "Value", "Season", "Game", "Date", "Opponent"});
    for (const RecordEntry& e : list.entries) {
        const bool game = list.scope == RecordScope::Game;
        csv += csvLine({digits(e.rank), cp1252ToUtf8(e.name),
                        trim(figureText(book.category, list.column, e.figure)), e.season,
                        game ? digits(e.game) : "", game ? e.date : "",
                        game ? cp1252ToUtf8(e.opponent) : ""});
    }
    return csv;
}

} // namespace scorvane
