#include "RecordBook.h"

#include "SeasonsCsv.h"

#include "reports/ReportColumns.h"
#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <functional>

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
// million single games never stand in memory at once.
class TopList {
public:
    explicit TopList(int top) : top_(static_cast<std::size_t>(std::max(top, 0))) {}
    void add(const Candidate& c) {
        if (top_ == 0)
            return;
        items_.push_back(c);
        if (items_.size() >= 2 * top_ + 64)
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
        if (items_.size() <= top_)
            return;
        // Everything as good as the N-th entry has a rank within N.
        const double last = items_[top_ - 1].key;
        std::size_t keep = top_;
        while (keep < items_.size() && items_[keep].key >= last)
            ++keep;
        items_.resize(keep);
    }
    std::size_t top_;
    std::vector<Candidate> items_;
};

// What a list ranks a figure by; nothing when the figure is no record: out of range, 0 or less, or
// a ratio on fewer attempts than the minimum.
std::optional<double> recordKey(char category, int code, const PlayerFigures& f, int minimum) {
    const Figure& figure = f[code];
    if (figure.overflow)
        return std::nullopt;
    switch (columnKind(category, code)) {
    case ColumnKind::Ratio:
    case ColumnKind::Average: {
        const int attempts = attemptsColumn(category, code);
        if (attempts > 0) {
            const long long tries = f[attempts].value;
            if (f[attempts].overflow || tries < std::max(minimum, 1))
                return std::nullopt;
        }
        return static_cast<double>(figure.ratio);
    }
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

const GameRecord* findGame(const TeamSeason& team, int number) {
    for (const GameRecord& g : team.games)
        if (g.isLive() && g.gameNumber == number)
            return &g;
    return nullptr;
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

RecordBook computeRecordBook(SeasonSet& set, const RecordBookOptions& options) {
    const char category = options.category;
    RecordBook book;
    book.category = category;
    std::vector<int> columns;
    for (int code : options.columns.empty() ? defaultRecordColumns(category) : options.columns)
        if (code > 1 && isReportColumn(category, code) &&
            std::find(columns.begin(), columns.end(), code) == columns.end())
            columns.push_back(code);
    const auto minimumOf = [&](int code) {
        const auto it = options.minimums.find(code);
        return it != options.minimums.end() ? it->second : defaultMinimum(category, code);
    };

    // lists[column][scope]
    std::vector<std::array<TopList, 3>> lists;
    for (std::size_t i = 0; i < columns.size(); ++i)
        lists.push_back({TopList(options.top), TopList(options.top), TopList(options.top)});
    const auto offer = [&](RecordScope scope, const PlayerFigures& f, Candidate c) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const int code = columns[i];
            if (auto key = recordKey(category, code, f, minimumOf(code).in(scope))) {
                c.key = *key;
                c.figure = f[code];
                lists[i][static_cast<std::size_t>(scope)].add(c);
            }
        }
    };

    const std::size_t before = set.messages.size();
    const std::vector<SeasonSums> sums =
        sumSeasons(set, category, options.selection,
                   [&](std::size_t season, int number, int game, const LineSums& performance) {
                       PlayerFigures f;
                       lineFigures(category, performance, 1, false, f);
                       offer(RecordScope::Game, f,
                             {0, {}, season, number, set.people.of(season, number), game});
                   });
    book.messages.assign(set.messages.begin() + static_cast<std::ptrdiff_t>(before),
                         set.messages.end());

    for (std::size_t s = 0; s < sums.size(); ++s) {
        if (!sums[s].read)
            continue;
        for (int n = 1; n <= kMaxPlayers; ++n) {
            const auto slot = static_cast<std::size_t>(n);
            if (sums[s].games[slot].empty())
                continue;
            PlayerFigures f;
            lineFigures(category, sums[s].players[slot],
                        static_cast<long long>(sums[s].games[slot].size()), false, f);
            offer(RecordScope::Season, f, {0, {}, s, n, set.people.of(s, n), 0});
        }
    }
    const CareerReport careers = careersFromSums(set, category, sums);
    std::vector<const CareerLine*> careerOf(static_cast<std::size_t>(set.people.count), nullptr);
    for (const CareerLine& line : careers.players) {
        careerOf[static_cast<std::size_t>(line.person)] = &line;
        offer(RecordScope::Career, line.figures, {0, {}, 0, line.number, line.person, 0});
    }

    // The name of a person: as spelt in the latest season he played; the roster's name for a
    // performance of a season whose sums were not used.
    const auto nameOf = [&](const Candidate& c) {
        const CareerLine* line = careerOf[static_cast<std::size_t>(c.person)];
        return trimRight(line ? line->name : set.seasons[c.season].team.playerName(c.number));
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        for (RecordScope scope : kScopes) {
            RecordList list;
            list.column = columns[i];
            list.scope = scope;
            list.minimum = attemptsColumn(category, columns[i]) > 0
                               ? std::max(minimumOf(columns[i]).in(scope), 1)
                               : 0;
            std::vector<Candidate> best = lists[i][static_cast<std::size_t>(scope)].take();
            std::vector<std::pair<Candidate, std::string>> named;
            for (const Candidate& c : best)
                named.emplace_back(c, nameOf(c));
            std::stable_sort(named.begin(), named.end(), [](const auto& a, const auto& b) {
                if (a.first.key != b.first.key)
                    return a.first.key > b.first.key;
                if (a.second != b.second)
                    return a.second < b.second;
                return a.first.season != b.first.season ? a.first.season < b.first.season
                                                        : a.first.game < b.first.game;
            });
            std::vector<int> ranks;
            assignRanks(named, ranks, [](const auto& e) { return e.first.key; });
            for (std::size_t k = 0; k < named.size(); ++k) {
                const Candidate& c = named[k].first;
                RecordEntry e;
                e.rank = ranks[k];
                e.name = named[k].second;
                e.figure = c.figure;
                if (scope == RecordScope::Career) {
                    const CareerLine* line = careerOf[static_cast<std::size_t>(c.person)];
                    e.season = line ? seasonsText(line->firstSeason, line->lastSeason) : "";
                } else {
                    e.season = set.seasons[c.season].label;
                }
                if (scope == RecordScope::Game) {
                    e.game = c.game;
                    if (const GameRecord* g = findGame(set.seasons[c.season].team, c.game)) {
                        e.date = ShortDate(g->gameDate);
                        e.opponent = trim(g->opponent);
                    }
                }
                list.entries.push_back(std::move(e));
            }
            book.lists.push_back(std::move(list));
        }
    }
    return book;
}

TeamRecords computeTeamRecords(const SeasonSet& set, const Selection& selection, int top) {
    TeamRecords records;
    std::vector<TeamGameEntry> games;
    std::vector<StreakEntry> streaks;
    StreakEntry running;
    const auto endStreak = [&] {
        if (running.wins > 0)
            streaks.push_back(running);
        running = {};
    };
    for (const OpenSeason& season : set.seasons) {
        std::vector<GameRecord> played;
        for (const GameRecord& g : season.team.games)
            if (selection.countsGame(g))
                played.push_back(g);
        std::stable_sort(
            played.begin(), played.end(),
            [](const GameRecord& a, const GameRecord& b) { return a.gameNumber < b.gameNumber; });
        for (const GameRecord& g : played) {
            const std::optional<PointSums> points = g.pointSums();
            if (!points)
                continue;
            games.push_back({0, season.label, g.gameNumber, ShortDate(g.gameDate), trim(g.opponent),
                             points->team, points->opponent});
            if (points->team > points->opponent) {
                if (running.wins == 0) {
                    running.fromSeason = season.label;
                    running.fromGame = g.gameNumber;
                }
                ++running.wins;
                running.toSeason = season.label;
                running.toGame = g.gameNumber;
            } else {
                endStreak();
            }
        }
    }
    endStreak();

    const auto limit = [&](auto& entries, const std::vector<int>& ranks) {
        std::size_t keep = 0;
        while (keep < entries.size() && ranks[keep] <= top)
            ++keep;
        entries.resize(keep);
        for (std::size_t i = 0; i < entries.size(); ++i)
            entries[i].rank = ranks[i];
    };
    std::vector<int> ranks;
    records.mostScored = games;
    std::stable_sort(
        records.mostScored.begin(), records.mostScored.end(),
        [](const TeamGameEntry& a, const TeamGameEntry& b) { return a.scored > b.scored; });
    assignRanks(records.mostScored, ranks, [](const TeamGameEntry& e) { return e.scored; });
    limit(records.mostScored, ranks);
    records.fewestAllowed = games;
    std::stable_sort(
        records.fewestAllowed.begin(), records.fewestAllowed.end(),
        [](const TeamGameEntry& a, const TeamGameEntry& b) { return a.allowed < b.allowed; });
    assignRanks(records.fewestAllowed, ranks, [](const TeamGameEntry& e) { return e.allowed; });
    limit(records.fewestAllowed, ranks);
    records.streaks = streaks;
    std::stable_sort(records.streaks.begin(), records.streaks.end(),
                     [](const StreakEntry& a, const StreakEntry& b) { return a.wins > b.wins; });
    assignRanks(records.streaks, ranks, [](const StreakEntry& e) { return e.wins; });
    limit(records.streaks, ranks);
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
