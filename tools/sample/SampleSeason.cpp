#include "SampleSeason.h"

#include "storage/StatLayout.h"

#include "shell/Startup.h"
#include "storage/ConfigFile.h"
#include "storage/Cp1252.h"
#include "storage/DiskError.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace scorvane {
namespace {

// ---------------------------------------------------------------------------------------------
// A fixed generator: the sample must come out byte for byte the same on every machine and every
// run, so no library engine or distribution is used, only 32-bit integer arithmetic.

class Dice {
public:
    explicit Dice(std::uint32_t seed) : state_(seed) {}

    // A number in lo..hi, both included.
    int between(int lo, int hi) {
        if (hi <= lo)
            return lo;
        state_ = state_ * 1664525u + 1013904223u;
        return lo + static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(hi - lo + 1));
    }
    bool chance(int percent) { return between(1, 100) <= percent; }
    template <class T> const T& pick(const std::vector<T>& from) {
        return from[static_cast<std::size_t>(between(0, static_cast<int>(from.size()) - 1))];
    }
    template <class T> void shuffle(std::vector<T>& v) {
        for (std::size_t i = v.size(); i > 1; --i)
            std::swap(v[i - 1], v[static_cast<std::size_t>(between(0, static_cast<int>(i) - 1))]);
    }

private:
    std::uint32_t state_;
};

std::uint32_t seedOf(std::string_view a, std::string_view b) {
    std::uint32_t h = 2166136261u;
    for (char c : a)
        h = (h ^ static_cast<std::uint8_t>(c)) * 16777619u;
    h = (h ^ 0x2Fu) * 16777619u;
    for (char c : b)
        h = (h ^ static_cast<std::uint8_t>(c)) * 16777619u;
    return h;
}

// Every text below is written as UTF-8 and stored as Windows-1252.
std::string stored(std::string_view utf8) {
    return utf8ToCp1252(utf8);
}

// ---------------------------------------------------------------------------------------------
// The season as planned: teams, rosters, player details and games.

enum class Role {
    Quarterback,
    Backup,
    Runner,
    Receiver,
    TightEnd,
    Kicker,
    Line,
    Rusher,
    Linebacker,
    Secondary
};

struct Player {
    int number;
    const char* name;
    Role role;
    bool returner = false;
};

struct Details {
    int number;
    const char* phone;
    const char* address1;
    const char* address2;
    const char* city;
    const char* state;
    const char* zip;
    const char* other;
};

using Quarters = std::array<std::int16_t, 5>; // quarters 1-4 and overtime

struct GamePlan {
    const char* date;
    const char* location;
    const char* opponent;
    Quarters us;
    Quarters them;
    char type;
    char home;
    const char* comment;
    int returnTouchdowns = 0;

    bool overtime() const { return us[4] != 0 || them[4] != 0; }
};

struct TeamPlan {
    int number;
    const char* name;
    const char* shortName;
    std::vector<Player> roster;
    std::vector<Details> details;
    std::vector<GamePlan> games;
};

constexpr const char* kHawks = "Riverside Hawks";
constexpr const char* kTigers = "Lakeview Tigers";
constexpr const char* kRams = "Northgate Rams";
constexpr const char* kComets = "Montréal Comets";

// clang-format off
const std::vector<GamePlan>& hawksGames() {
    static const std::vector<GamePlan> games = {
        {"090525", "Riverside Stadium", kTigers, {7, 3, 7, 7, 0}, {0, 10, 0, 7, 0}, '2', '1',
         "Season opener; defense held on the last drive"},
        {"091225", "Northgate Bowl", kRams, {0, 7, 7, 0, 0}, {7, 7, 0, 7, 0}, '1', '2',
         "Offense stalled after halftime"},
        {"091925", "Riverside Stadium", kComets, {14, 7, 7, 7, 0}, {3, 0, 7, 0, 0}, '1', '1',
         "Punt return touchdown opened the scoring", 1},
        {"092625", "Wolves Den", "Cedar Ridge Wolves", {7, 14, 0, 7, 0}, {3, 7, 3, 7, 0}, '2',
         '2', "Rain all night; ground game carried the offense"},
        {"100325", "Riverside Stadium", "Harbor City Mariners", {7, 0, 3, 7, 0}, {0, 10, 7, 0, 0},
         '1', '1', "Both defenses took over after halftime; tie game"},
        {"101025", "Lakeview Field", kTigers, {7, 7, 3, 7, 3}, {7, 3, 7, 7, 0}, '1', '2',
         "Won in overtime on a field goal"},
        {"101725", "Riverside Stadium", "Pine Valley Bears", {0, 3, 0, 7, 0}, {7, 10, 7, 7, 0},
         '1', '1', "Homecoming; starting quarterback rested after halftime"},
        {"102425", "Falcon Field", "Silver Lake Falcons", {7, 0, 7, 7, 0}, {0, 7, 0, 7, 0}, '1',
         '2', "Goal line stand in the fourth quarter"},
        {"103125", "Riverside Stadium", kRams, {10, 7, 7, 7, 0}, {7, 7, 7, 7, 0}, '1', '1',
         "Clinched a playoff spot with a late touchdown"},
        {"110725", "Riverside Stadium", kTigers, {7, 6, 0, 7, 0}, {3, 7, 10, 3, 0}, '3', '1',
         "Playoff round one; season ends on a last-second kick"},
    };
    return games;
}

// A game of the first team as the opponent entered it: same day, place, type and quarters, with
// the two sides swapped.
GamePlan fromOtherSide(const GamePlan& g, const char* comment) {
    GamePlan m = g;
    m.opponent = kHawks;
    std::swap(m.us, m.them);
    m.home = g.home == '1' ? '2' : '1';
    m.comment = comment;
    m.returnTouchdowns = 0;
    return m;
}

std::vector<TeamPlan> samplePlan() {
    const auto& hawks = hawksGames();
    std::vector<TeamPlan> teams;
    teams.push_back(
        {1,
         kHawks,
         "Hawks",
         {{1, "Jamal Whitfield", Role::Receiver},
          {2, "Terrell Woods", Role::Secondary, true},
          {3, "Luis Ortega", Role::Kicker},
          {5, "Kendrick Moss", Role::Secondary, true},
          {7, "Caleb Morrison", Role::Quarterback},
          {11, "Tyler Brooks", Role::Receiver},
          {12, "Drew Kessler", Role::Backup},
          {19, "Andre Sims", Role::Receiver},
          {22, "Marcus Bell", Role::Runner},
          {24, "Isaiah Grant", Role::Secondary},
          {28, "José Alvarado", Role::Runner},
          {31, "Owen Fitzgerald", Role::Secondary},
          {40, "Brady Holloway", Role::Linebacker},
          {44, "Christopher Vandermeer", Role::Linebacker},
          {52, "Trent Albrecht", Role::Linebacker},
          {55, "Sam Okafor", Role::Linebacker},
          {60, "Ethan Pruitt", Role::Line},
          {64, "Grant Lindqvist", Role::Line},
          {66, "Henry Castellano", Role::Line},
          {72, "Paul Nakamura", Role::Line},
          {77, "Ryan O'Connell", Role::Line},
          {81, "Jordan Hayes", Role::Receiver},
          {85, "Nate Carlson", Role::TightEnd},
          {90, "Victor Ramirez", Role::Rusher},
          {94, "Cole Jennings", Role::Rusher},
          {97, "Zach Underwood", Role::Rusher},
          {99, "Malik Thornton", Role::Rusher}},
         {{7, "(555) 214-0371", "1408 Maple Avenue", "", "Riverside", "OH", "45219",
           "Team captain"},
          {22, "(555) 214-8890", "77 Birch Lane", "Apt 3B", "Riverside", "OH", "45220",
           "Parents: Tom and Linda Bell"},
          {28, "(555) 309-1127", "5 Rue Sainte-Cécile", "", "Riverside", "OH", "45219",
           "Transferred from Montréal in August"},
          {85, "(555) 214-5502", "2210 Elm Street", "", "Riverside", "OH", "45221",
           "Also plays on the basketball team"}},
         hawks});
    teams.push_back(
        {2,
         kTigers,
         "Tigers",
         {{1, "DeShawn Carter", Role::Receiver},
          {4, "Mason Fields", Role::Kicker},
          {6, "Liam Brennan", Role::Quarterback},
          {8, "Jalen Roberts", Role::Secondary, true},
          {10, "Chris Delgado", Role::Receiver},
          {14, "Aaron Pike", Role::Backup},
          {15, "Kyle Ostrowski", Role::Receiver},
          {20, "Tre Collins", Role::Runner, true},
          {21, "Noah Whitaker", Role::Secondary},
          {23, "Brandon Eckert", Role::Runner},
          {26, "Jaylen Foster", Role::Secondary},
          {33, "Cody Mercer", Role::Linebacker},
          {35, "Luke Hammond", Role::Linebacker},
          {47, "Xavier Lowe", Role::Linebacker},
          {50, "Isaac Dunbar", Role::Line},
          {58, "Peter Kowalski", Role::Line},
          {63, "Omar Haddad", Role::Line},
          {70, "Dylan Shaw", Role::Line},
          {75, "Garrett Voss", Role::Line},
          {82, "Miles Pennington", Role::Receiver},
          {88, "Riley Sutton", Role::TightEnd},
          {91, "Darius King", Role::Rusher},
          {93, "Shane McAllister", Role::Rusher},
          {96, "Felipe Santos", Role::Rusher},
          {98, "Anthony Russo", Role::Rusher}},
         {{6, "(555) 640-2318", "19 Lakeshore Drive", "", "Lakeview", "OH", "45302",
           "Team captain"},
          {20, "(555) 640-7741", "303 Harbor Road", "Unit 12", "Lakeview", "OH", "45302", ""},
          {98, "(555) 641-0096", "8 Quarry Hill Court", "", "Lakeview", "OH", "45303",
           "Allergic to bee stings; EpiPen in trainer's kit"}},
         {fromOtherSide(hawks[0], "Opener on the road; comeback fell short"),
          {"091225", "Lakeview Field", kComets, {7, 6, 7, 7, 0}, {0, 7, 0, 6, 0}, '1', '1',
           "First home win of the year"},
          {"092625", "Northgate Bowl", kRams, {3, 7, 0, 6, 0}, {7, 0, 7, 6, 0}, '1', '2',
           "Stopped on fourth down at the goal line late"},
          fromOtherSide(hawks[5], "Lost in overtime after tying it late"),
          fromOtherSide(hawks[9], "Playoff upset on a last-second field goal")}});
    teams.push_back({3, kRams, "Rams", {}, {}, {}});
    teams.push_back({4, kComets, "Comets", {}, {}, {}});
    return teams;
}

// clang-format on

// ---------------------------------------------------------------------------------------------
// Statistics. The value positions of the category records.

namespace pass {
constexpr std::size_t Att = statSlot('P', 2), Cm = statSlot('P', 3), Yds = statSlot('P', 4),
                      Int = statSlot('P', 5), TD = statSlot('P', 6), Sk = statSlot('P', 7),
                      Lg = statSlot('P', 8), Big = statSlot('P', 9), F = statSlot('P', 10),
                      FL = statSlot('P', 11), XPt = statSlot('P', 12), Pen = statSlot('P', 13),
                      FD = statSlot('P', 14);
}
namespace catching {
constexpr std::size_t Rec = statSlot('C', 2), Yds = statSlot('C', 3), TD = statSlot('C', 4),
                      Lg = statSlot('C', 5), Big = statSlot('C', 6), YAC = statSlot('C', 7),
                      FD = statSlot('C', 8), Tgt = statSlot('C', 9), XPt = statSlot('C', 10),
                      Pen = statSlot('C', 11), F = statSlot('C', 12), FL = statSlot('C', 13);
}
namespace rush {
constexpr std::size_t Rsh = statSlot('R', 2), Yds = statSlot('R', 3), Lg = statSlot('R', 4),
                      TD = statSlot('R', 5), FD = statSlot('R', 6), YdL = statSlot('R', 7),
                      XPt = statSlot('R', 8), F = statSlot('R', 9), FL = statSlot('R', 10),
                      Pen = statSlot('R', 11);
}
namespace defense {
// Sk is kept in tenths of a sack.
constexpr std::size_t Sol = statSlot('D', 3), Ast = statSlot('D', 4), Int = statSlot('D', 5),
                      Blk = statSlot('D', 6), Hur = statSlot('D', 7), F = statSlot('D', 8),
                      FC = statSlot('D', 9), Sk = statSlot('D', 10), TD = statSlot('D', 11),
                      Pen = statSlot('D', 12);
} // namespace defense

// Kick and return marks.
constexpr std::int16_t kGood = kickmark::Good, kBlocked = kickmark::Blocked,
                       kFairCatch = kickmark::FairCatch, kInside20 = kickmark::Inside20,
                       kTouchback = kickmark::Touchback;
constexpr std::int16_t kReturnFairCatch = returnmark::FairCatch, kReturnFumble = returnmark::Fumble,
                       kReturnTouchdown = returnmark::Touchdown;

struct Scoring {
    int touchdowns = 0;
    int extraPoints = 0; // made; the rest of the tries missed
    int fieldGoals = 0;
};

// How a score was made: as many touchdowns with a good extra point as fit, then field goals;
// a score that cannot be made that way gets missed extra points.
Scoring splitPoints(int points) {
    for (int td = points / 7; td >= 0; --td)
        if ((points - 7 * td) % 3 == 0)
            return {td, td, (points - 7 * td) / 3};
    for (int td = points / 6; td >= 0; --td)
        for (int xp = td; xp >= 0; --xp) {
            const int rest = points - 6 * td - xp;
            if (rest >= 0 && rest % 3 == 0)
                return {td, xp, rest / 3};
        }
    return {0, 0, points / 3};
}

// What one side's offense did in a game. It depends only on the day, the side's name and its
// points, so both teams of a game between two sample teams see the same numbers: one team's
// interceptions thrown are the other's interceptions made, its punts the other's punt returns.
struct Offense {
    Scoring scoring;
    int attempts = 0;
    int completions = 0;
    int interceptions = 0;
    int sacks = 0;
    int punts = 0;
    int fumbles = 0;
    int fumblesLost = 0;
    int passTouchdowns = 0;
    int rushTouchdowns = 0;
};

Offense offenseOf(std::string_view date, std::string_view side, int points, int returnTouchdowns) {
    Dice d(seedOf(date, side));
    Offense o;
    o.scoring = splitPoints(points);
    o.attempts = d.between(20, 34);
    o.completions = o.attempts * d.between(50, 68) / 100;
    o.interceptions = d.chance(45) ? d.between(1, 2) : 0;
    o.sacks = d.between(0, 3);
    o.punts = std::clamp(6 - points / 7 + d.between(-1, 1), 1, 7);
    o.fumbles = d.between(0, 2);
    o.fumblesLost = d.between(0, o.fumbles);
    const int fromScrimmage = std::max(0, o.scoring.touchdowns - returnTouchdowns);
    o.passTouchdowns = fromScrimmage == 0 ? 0 : d.between((fromScrimmage + 1) / 2, fromScrimmage);
    o.rushTouchdowns = fromScrimmage - o.passTouchdowns;
    o.completions = std::max(o.completions, o.passTouchdowns);
    return o;
}

int points(const Quarters& q) {
    int total = 0;
    for (auto x : q)
        total += x;
    return total;
}

std::vector<int> playersWith(const TeamPlan& team, std::initializer_list<Role> roles) {
    std::vector<int> out;
    for (const auto& p : team.roster)
        if (std::find(roles.begin(), roles.end(), p.role) != roles.end())
            out.push_back(p.number);
    return out;
}

// Collects one game's records, one per player and category, and lays them out in category order
// and player order within each category.
class GameSheet {
public:
    explicit GameSheet(const GameRecord& game) : game_(game) {}

    StatRecord& values(char category, int player) {
        auto& byPlayer = values_[static_cast<std::size_t>(categoryIndex(category))];
        auto it = byPlayer.find(player);
        if (it == byPlayer.end()) {
            StatRecord r;
            r.header = header(category, player);
            it = byPlayer.emplace(player, r).first;
        }
        return it->second;
    }
    std::vector<ListEntry>& list(char category, int player) {
        return lists_[static_cast<std::size_t>(categoryIndex(category))][player];
    }

    void appendTo(std::vector<Bytes>& out) const {
        for (int k = 0; k < kCategoryCount; ++k) {
            const auto ks = static_cast<std::size_t>(k);
            for (const auto& [player, record] : values_[ks])
                out.push_back(record.encode());
            for (const auto& [player, entries] : lists_[ks]) {
                StatListRecord r;
                r.header = header(kCategoryLetters[ks], player);
                for (std::size_t i = 0; i < entries.size() && i < StatListRecord::EntryCount; ++i)
                    r.entries[i] = entries[i];
                out.push_back(r.encode());
            }
        }
    }

private:
    StatHeader header(char category, int player) const {
        StatHeader h;
        h.gameNumber = game_.gameNumber;
        h.playerNumber = static_cast<std::int16_t>(player);
        h.category = category;
        h.statStatus = 'A';
        h.statGameType = game_.gameType;
        h.statSpecialSelect = game_.specialSelect;
        return h;
    }

    const GameRecord& game_;
    std::array<std::map<int, StatRecord>, kCategoryCount> values_;
    std::array<std::map<int, std::vector<ListEntry>>, kCategoryCount> lists_;
};

void add(StatRecord& r, std::size_t column, int amount) {
    r.values[column] = static_cast<std::int16_t>(r.values[column] + amount);
}
void atLeast(StatRecord& r, std::size_t column, int value) {
    r.values[column] = std::max(r.values[column], static_cast<std::int16_t>(value));
}

// Passing and receiving, throw by throw, so that the passers' and the receivers' totals agree.
void writePassing(GameSheet& sheet, const TeamPlan& team, const Offense& us, int margin, Dice& d) {
    const int starter = playersWith(team, {Role::Quarterback}).front();
    const std::vector<int> backups = playersWith(team, {Role::Backup});
    // Targets: wide receivers three shares, tight ends two, backs one.
    std::vector<int> targets;
    for (const auto& p : team.roster) {
        const int shares = p.role == Role::Receiver   ? 3
                           : p.role == Role::TightEnd ? 2
                           : p.role == Role::Runner   ? 1
                                                      : 0;
        targets.insert(targets.end(), static_cast<std::size_t>(shares), p.number);
    }

    // 'C' completion, 'T' touchdown completion, 'I' interception, 'N' incomplete.
    std::vector<char> throws;
    throws.insert(throws.end(), static_cast<std::size_t>(us.passTouchdowns), 'T');
    throws.insert(throws.end(), static_cast<std::size_t>(us.completions - us.passTouchdowns), 'C');
    throws.insert(throws.end(), static_cast<std::size_t>(us.interceptions), 'I');
    throws.resize(static_cast<std::size_t>(us.attempts), 'N');
    d.shuffle(throws);
    // In a game decided early the backup throws the last few passes.
    const int backupThrows = std::abs(margin) >= 21 && !backups.empty() ? d.between(4, 8) : 0;

    for (std::size_t i = 0; i < throws.size(); ++i) {
        const bool late = static_cast<int>(throws.size() - i) <= backupThrows;
        StatRecord& passer = sheet.values('P', late ? backups.front() : starter);
        StatRecord& receiver = sheet.values('C', d.pick(targets));
        add(passer, pass::Att, 1);
        add(receiver, catching::Tgt, 1);
        if (throws[i] == 'I')
            add(passer, pass::Int, 1);
        if (throws[i] != 'C' && throws[i] != 'T')
            continue;
        const bool touchdown = throws[i] == 'T';
        const int yards = d.chance(16) ? d.between(20, 60) : d.between(2, 17);
        const int afterCatch = yards * d.between(25, 60) / 100;
        const bool firstDown = touchdown || yards >= 10 || (yards >= 5 && d.chance(35));
        // The same columns of both records: count, yards, long, big plays, touchdowns, first downs.
        using Columns = std::array<std::size_t, 6>;
        for (const auto& [r, c] :
             {std::pair<StatRecord*, Columns>{
                  &passer, {pass::Cm, pass::Yds, pass::Lg, pass::Big, pass::TD, pass::FD}},
              std::pair<StatRecord*, Columns>{&receiver,
                                              {catching::Rec, catching::Yds, catching::Lg,
                                               catching::Big, catching::TD, catching::FD}}}) {
            add(*r, c[0], 1);
            add(*r, c[1], yards);
            atLeast(*r, c[2], yards);
            add(*r, c[3], yards >= 20 ? 1 : 0);
            add(*r, c[4], touchdown ? 1 : 0);
            add(*r, c[5], firstDown ? 1 : 0);
        }
        add(receiver, catching::YAC, afterCatch);
    }
    add(sheet.values('P', starter), pass::Sk, us.sacks);
    if (d.chance(20))
        add(sheet.values('C', d.pick(targets)), catching::Pen, 1);
}

// Rushing carry by carry; the fumbles of the game go to the ball carriers.
void writeRushing(GameSheet& sheet, const TeamPlan& team, const Offense& us, Dice& d) {
    const int starter = playersWith(team, {Role::Quarterback}).front();
    const std::vector<int> runners = playersWith(team, {Role::Runner});
    struct Carry {
        int player;
        int yards;
        bool touchdown = false;
    };
    std::vector<Carry> carries;
    auto carry = [&](int player, int count) {
        for (int i = 0; i < count; ++i) {
            const int roll = d.between(1, 100);
            const int yards = roll <= 12   ? d.between(-4, -1)
                              : roll <= 20 ? 0
                              : roll <= 88 ? d.between(1, 9)
                                           : d.between(10, 45);
            carries.push_back({player, yards});
        }
    };
    carry(runners.front(), d.between(12, 22));
    if (runners.size() > 1)
        carry(runners[1], d.between(4, 10));
    carry(starter, d.between(2, 6));

    // The lead back scores the first rushing touchdown; any carry may score the others.
    for (int t = 0; t < us.rushTouchdowns; ++t) {
        std::size_t i = 0;
        do {
            i = t == 0
                    ? static_cast<std::size_t>(d.between(0, 11))
                    : static_cast<std::size_t>(d.between(0, static_cast<int>(carries.size()) - 1));
        } while (carries[i].touchdown);
        carries[i].touchdown = true;
        carries[i].yards = std::max(carries[i].yards, d.between(1, 12));
    }

    for (const Carry& c : carries) {
        StatRecord& r = sheet.values('R', c.player);
        add(r, rush::Rsh, 1);
        add(r, rush::Yds, c.yards);
        atLeast(r, rush::Lg, c.yards);
        add(r, rush::TD, c.touchdown ? 1 : 0);
        add(r, rush::FD, c.touchdown || c.yards >= 10 || (c.yards >= 4 && d.chance(30)) ? 1 : 0);
        add(r, rush::YdL, c.yards < 0 ? -c.yards : 0);
    }
    for (int f = 0; f < us.fumbles; ++f) {
        const bool lost = f < us.fumblesLost;
        if (d.chance(25)) {
            StatRecord& r = sheet.values('P', starter);
            add(r, pass::F, 1);
            add(r, pass::FL, lost ? 1 : 0);
        } else {
            StatRecord& r = sheet.values('R', runners.front());
            add(r, rush::F, 1);
            add(r, rush::FL, lost ? 1 : 0);
        }
    }
}

// Tackles by position; interceptions, sacks, forced fumbles and recoveries add up to what the
// other side's offense gave away.
void writeDefense(GameSheet& sheet, const TeamPlan& team, const Offense& them, Dice& d) {
    const std::vector<int> front = playersWith(team, {Role::Rusher});
    const std::vector<int> backers = playersWith(team, {Role::Linebacker});
    const std::vector<int> secondary = playersWith(team, {Role::Secondary});
    const std::vector<int> all =
        playersWith(team, {Role::Rusher, Role::Linebacker, Role::Secondary});
    std::vector<int> coverage = backers;
    coverage.insert(coverage.end(), secondary.begin(), secondary.end());
    std::vector<int> rushers = front;
    rushers.insert(rushers.end(), backers.begin(), backers.end());

    for (const auto& p : team.roster) {
        int solo = 0, assisted = 0, hurries = 0;
        if (p.role == Role::Linebacker) {
            solo = d.between(3, 10);
            assisted = d.between(1, 5);
            hurries = d.chance(30) ? 1 : 0;
        } else if (p.role == Role::Secondary) {
            solo = d.between(1, 7);
            assisted = d.between(0, 3);
        } else if (p.role == Role::Rusher) {
            solo = d.between(0, 5);
            assisted = d.between(0, 4);
            hurries = d.chance(40) ? d.between(1, 2) : 0;
        } else {
            continue;
        }
        if (solo + assisted + hurries == 0)
            continue;
        StatRecord& r = sheet.values('D', p.number);
        add(r, defense::Sol, solo);
        add(r, defense::Ast, assisted);
        add(r, defense::Hur, hurries);
        if (d.chance(8))
            add(r, defense::Pen, 1);
    }
    for (int i = 0; i < them.interceptions; ++i)
        add(sheet.values('D', d.pick(coverage)), defense::Int, 1);
    for (int i = 0; i < them.fumbles; ++i)
        add(sheet.values('D', d.pick(all)), defense::F, 1);
    for (int i = 0; i < them.fumblesLost; ++i)
        add(sheet.values('D', d.pick(all)), defense::FC, 1);
    // Sacks in tenths: most by one player, some shared half and half.
    for (int i = 0; i < them.sacks; ++i) {
        const int first = d.pick(rushers);
        int second = d.pick(rushers);
        if (second == first || d.chance(75)) {
            add(sheet.values('D', first), defense::Sk, 10);
        } else {
            add(sheet.values('D', first), defense::Sk, 5);
            add(sheet.values('D', second), defense::Sk, 5);
        }
    }
}

// Kicking: a try after every touchdown, the field goals of the score plus now and then a miss,
// and the punts.
void writeKicking(GameSheet& sheet, const TeamPlan& team, const Offense& us, Dice& d) {
    std::vector<ListEntry> kicks;
    for (int i = 0; i < us.scoring.touchdowns; ++i)
        kicks.push_back({'X', 0, i < us.scoring.extraPoints ? kGood : std::int16_t{0}});
    for (int i = 0; i < us.scoring.fieldGoals; ++i)
        kicks.push_back({'F', static_cast<std::int16_t>(d.between(20, 47)), kGood});
    if (d.chance(30))
        kicks.push_back({'F', static_cast<std::int16_t>(d.between(36, 52)),
                         d.chance(25) ? kBlocked : std::int16_t{0}});
    for (int i = 0; i < us.punts; ++i) {
        const int yards = d.between(31, 52);
        const int roll = d.between(1, 100);
        std::int16_t marks = 0;
        if (roll <= 20)
            marks = kInside20;
        else if (roll <= 28 && yards >= 40)
            marks = kTouchback;
        else if (roll <= 45)
            marks = kFairCatch;
        else if (roll <= 55)
            marks = kFairCatch + kInside20;
        kicks.push_back({'P', static_cast<std::int16_t>(yards), marks});
    }
    d.shuffle(kicks);
    sheet.list('K', playersWith(team, {Role::Kicker}).front()) = kicks;
}

// Returns: the kickoffs after the other side's scores and to open a half, and its punts.
void writeReturns(GameSheet& sheet, const TeamPlan& team, const Offense& them, int touchdowns,
                  Dice& d) {
    std::vector<int> returners;
    for (const auto& p : team.roster)
        if (p.returner)
            returners.push_back(p.number);
    const int kickoffs = them.scoring.touchdowns + them.scoring.fieldGoals + 1;
    for (int i = 0; i < kickoffs; ++i) {
        if (i > 0 && d.chance(30))
            continue; // touchback
        const int yards = d.chance(6) ? d.between(40, 75) : d.between(14, 32);
        sheet.list('T', d.pick(returners))
            .push_back({'K', static_cast<std::int16_t>(yards),
                        d.chance(4) ? kReturnFumble : std::int16_t{0}});
    }
    for (int i = 0; i < them.punts; ++i) {
        const int roll = d.between(1, 100);
        if (roll <= 25)
            continue; // downed or out of bounds
        auto& entries = sheet.list('T', returners.front());
        if (roll <= 60)
            entries.push_back({'P', 0, kReturnFairCatch});
        else
            entries.push_back(
                {'P', static_cast<std::int16_t>(d.chance(8) ? d.between(25, 45) : d.between(0, 18)),
                 0});
    }
    for (int i = 0; i < touchdowns; ++i)
        sheet.list('T', returners.front())
            .push_back({'P', static_cast<std::int16_t>(d.between(45, 80)), kReturnTouchdown});
}

std::vector<Bytes> gameStatistics(const TeamPlan& team, const GamePlan& plan,
                                  const GameRecord& game) {
    const int ours = points(plan.us);
    const int theirs = points(plan.them);
    const Offense us = offenseOf(plan.date, team.name, ours, plan.returnTouchdowns);
    const Offense them = offenseOf(plan.date, plan.opponent, theirs, 0);
    Dice d(seedOf(plan.date, team.name) ^ 0x9E3779B9u);
    GameSheet sheet(game);
    writePassing(sheet, team, us, ours - theirs, d);
    writeRushing(sheet, team, us, d);
    writeDefense(sheet, team, them, d);
    writeKicking(sheet, team, us, d);
    writeReturns(sheet, team, them, plan.returnTouchdowns, d);
    std::vector<Bytes> out;
    sheet.appendTo(out);
    return out;
}

// ---------------------------------------------------------------------------------------------

Status writeTeam(DataFiles& data, const TeamPlan& team) {
    TeamFiles files = data.team(team.number);
    // Whatever the sample team had before goes first, so that an unreadable old file cannot stop
    // the new one from being written.
    for (FileKind kind : {FileKind::Roster, FileKind::PlayerInfo, FileKind::Games, FileKind::Stats})
        if (Status s = files.killFile(kind); !s)
            return s;
    if (team.roster.empty())
        return Status::ok();

    std::vector<RosterRecord> roster;
    for (const auto& p : team.roster) {
        RosterRecord r;
        r.playerNumber = static_cast<std::int16_t>(p.number);
        r.playerName = fit(stored(p.name), width::playerName);
        roster.push_back(r);
    }
    std::sort(roster.begin(), roster.end(), [](const RosterRecord& a, const RosterRecord& b) {
        return a.playerNumber < b.playerNumber;
    });
    if (Status s = files.replaceAllWith(FileKind::Roster, roster); !s)
        return s;

    std::vector<PlayerInfoRecord> details;
    for (const auto& p : team.details) {
        PlayerInfoRecord r;
        r.playerNumber = static_cast<std::int16_t>(p.number);
        r.phone = stored(p.phone);
        r.address1 = stored(p.address1);
        r.address2 = stored(p.address2);
        r.city = stored(p.city);
        r.state = stored(p.state);
        r.zip = stored(p.zip);
        r.other = stored(p.other);
        details.push_back(r);
    }
    if (Status s = files.replaceAllWith(FileKind::PlayerInfo, details); !s)
        return s;

    std::vector<GameRecord> games;
    std::vector<Bytes> statistics;
    for (std::size_t i = 0; i < team.games.size(); ++i) {
        const GamePlan& plan = team.games[i];
        GameRecord g;
        g.gameNumber = static_cast<std::int16_t>(i + 1);
        g.gameStatus = 'A';
        g.gameDate = plan.date;
        g.gameLocation = stored(plan.location);
        g.opponent = stored(plan.opponent);
        g.teamScore = plan.us;
        g.opponentScore = plan.them;
        g.gameComment = stored(plan.comment);
        g.gameType = plan.type;
        g.homeFlag = plan.home;
        g.specialSelect = '1';
        g.overtimeFlag = plan.overtime() ? -1 : 0;
        games.push_back(g);
        const std::vector<Bytes> records = gameStatistics(team, plan, g);
        statistics.insert(statistics.end(), records.begin(), records.end());
    }
    if (Status s = files.replaceAllWith(FileKind::Games, games); !s)
        return s;
    return files.replaceAll(FileKind::Stats, statistics);
}

} // namespace

Status writeSampleSeason(DataFiles& files) {
    const std::vector<TeamPlan> plan = samplePlan();
    std::vector<TeamRecord> teamList(kMaxTeams);
    for (const auto& t : plan)
        teamList[static_cast<std::size_t>(t.number - 1)] = {stored(t.name), stored(t.shortName),
                                                            ""};
    if (Status s = files.replaceAllWith(FileKind::TeamList, teamList); !s)
        return s;

    for (const auto& t : plan)
        if (Status s = writeTeam(files, t); !s)
            return s;
    return Status::ok();
}

Status installDefaults(Prompter& prompter, const std::string& installDirectory,
                       const std::string& sampleDirectory, InstallResult& result) {
    result = {};
    const std::string programDir = normalizeDirectory(installDirectory);
    const std::string sampleDir = normalizeDirectory(sampleDirectory);
    const DataPaths paths{programDir, sampleDir, sampleDir};

    const std::string configPath = fileName(FileKind::Config, paths, 0);
    Bytes config;
    bool exists = false;
    if (Status s =
            withDiskErrors(prompter, [&] { return readWholeFile(configPath, config, exists); });
        !s)
        return s;
    const bool usable = exists && (config.size() == ConfigRecord::Length ||
                                   config.size() == ConfigRecord::LegacyLength);
    if (!usable) {
        std::string storedDir;
        const DirectoryFit fits = directoryForConfig(sampleDir, storedDir);
        if (fits == DirectoryFit::TooLong)
            return Status::error(ErrorKind::BadLength,
                                 "The sample folder " + platform::shownPath(sampleDir) +
                                     " is longer than the " + digits(ConfigRecord::DirectoryWidth) +
                                     " characters BXFB.INI can hold.");
        if (fits != DirectoryFit::Fits)
            return Status::error(ErrorKind::BadLength, "The sample folder " +
                                                           platform::shownPath(sampleDir) +
                                                           " has characters BXFB.INI cannot hold.");
        ConfigRecord c = ConfigRecord::defaults();
        const std::array<const char*, 5> names = {"League", "Non-League", "Playoff", "Scrimmage",
                                                  "Bowl"};
        for (std::size_t i = 0; i < names.size(); ++i)
            c.gameTypeNames[i] = fit(names[i], width::gameTypeName);
        c.dataDirectory = storedDir;
        c.reportDirectory = storedDir;
        if (Status s = saveConfiguration(prompter, configPath, c); !s)
            return s;
        result.wroteConfig = true;
    }

    if (fileExists(fileName(FileKind::TeamList, paths, 0)))
        return Status::ok();
    if (Status s = withDiskErrors(prompter, [&] { return createDirectories(sampleDir); }); !s)
        return s;
    DataFiles files(paths, prompter);
    if (Status s = writeSampleSeason(files); !s)
        return s;
    result.wroteSample = true;
    return Status::ok();
}

} // namespace scorvane
