#include "LargeSeason.h"

#include "storage/DataFiles.h"
#include "storage/Records.h"
#include "storage/StatLayout.h"

#include <cstdint>
#include <vector>

namespace scorvane::bench {
namespace {

class Dice {
public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}
    int below(int n) {
        state_ = state_ * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(n));
    }

private:
    std::uint64_t state_;
};

// A prompter for a program that asks nothing: the benchmark stops at the first disk error.
struct Silent : Prompter {
    Answer ask(const Message& m) override { return m.defaultAnswer; }
    void endProgram(int) override {}
};

} // namespace

Status writeLargeSeason(const std::string& folder) {
    return writeSeason(folder, kGames, 20240611);
}

Status writeSeason(const std::string& folder, int gameCount, std::uint64_t seed) {
    Silent prompter;
    DataFiles data(DataPaths{folder, folder, folder}, prompter);
    Dice dice(seed);

    std::vector<TeamRecord> teams;
    for (int t = 1; t <= kTeams; ++t)
        teams.push_back({"Team " + digits(t), "T" + digits(t), ""});
    if (Status s = data.replaceAllWith(FileKind::TeamList, teams); !s)
        return s;

    TeamFiles team = data.team(kLargeTeam);
    std::vector<RosterRecord> roster;
    for (int p = 1; p <= kMaxPlayers; ++p)
        roster.push_back({static_cast<std::int16_t>(p), "Player " + digits(p)});
    if (Status s = team.replaceAllWith(FileKind::Roster, roster); !s)
        return s;

    std::vector<GameRecord> games;
    for (int g = 1; g <= gameCount; ++g) {
        GameRecord game;
        game.gameNumber = static_cast<std::int16_t>(g);
        game.opponent = "Team " + digits(2 + g % (kTeams - 1));
        game.gameType = static_cast<char>('1' + dice.below(7));
        for (auto& q : game.teamScore)
            q = static_cast<std::int16_t>(dice.below(15));
        for (auto& q : game.opponentScore)
            q = static_cast<std::int16_t>(dice.below(15));
        games.push_back(game);
    }
    if (Status s = team.replaceAllWith(FileKind::Games, games); !s)
        return s;

    constexpr char kCategories[] = {'P', 'C', 'R', 'D', 'K'};
    // The column codes of TD and XPt in passing, receiving and rushing (none in defense).
    constexpr int kTouchdown[] = {6, 4, 5, 0, 0};
    constexpr int kExtraPoint[] = {12, 10, 8, 0, 0};
    std::vector<Bytes> stats;
    stats.reserve(static_cast<std::size_t>(gameCount) * kRecordsPerGame);
    for (int g = 1; g <= gameCount; ++g)
        for (int i = 0; i < kRecordsPerGame; ++i) {
            // 40 players a game, each in five categories.
            const StatHeader header{static_cast<std::int16_t>(g),
                                    static_cast<std::int16_t>(1 + (g + i / 5) % 40 * 2),
                                    kCategories[i % 5],
                                    'A',
                                    games[static_cast<std::size_t>(g - 1)].gameType,
                                    '1'};
            if (header.category == 'K') {
                StatListRecord r;
                r.header = header;
                r.entries[0] = {'F', static_cast<std::int16_t>(20 + dice.below(35)), 2};
                r.entries[1] = {'X', 0, 2};
                r.entries[2] = {'P', static_cast<std::int16_t>(30 + dice.below(25)), 0};
                stats.push_back(r.encode());
                continue;
            }
            StatRecord r;
            r.header = header;
            for (int v = 0; v < 12; ++v)
                r.values[static_cast<std::size_t>(v)] = static_cast<std::int16_t>(dice.below(20));
            // Touchdowns and extra points are rare, as in a real season: a player's points over
            // 5,000 games stay within what a report line holds, so the report command writes its
            // report instead of stopping at an overflow.
            const auto rare = [&](int code) {
                if (const int slot = statSlot(header.category, code); slot >= 0)
                    r.values[static_cast<std::size_t>(slot)] =
                        static_cast<std::int16_t>(dice.below(10) == 0 ? 1 : 0);
            };
            for (int code : {kTouchdown[i % 5], kExtraPoint[i % 5]})
                rare(code);
            stats.push_back(r.encode());
        }
    return team.replaceAll(FileKind::Stats, stats);
}

} // namespace scorvane::bench
