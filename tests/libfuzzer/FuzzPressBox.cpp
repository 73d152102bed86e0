// A press-box game file of any contents: read, mapped onto each side's columns and per-play lists,
// and, where that succeeds, exported again and imported again, which must give the same results.

#include "FuzzInput.h"
#include "exchange/GameExport.h"
#include "exchange/GameImport.h"

#include <algorithm>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

void roundTrip(const GameImport& import) {
    GameSide side;
    side.teamName = "Fuzz Tigers";
    side.game = import.game;
    side.results = import.results;
    for (const ImportedPlayer& p : import.players) {
        side.roster.inUse[static_cast<std::size_t>(p.number)] = true;
        side.roster.names[static_cast<std::size_t>(p.number)] = p.name;
    }
    const PressBoxRead again = readPressBox(pressBoxXml(side, nullptr));
    FUZZ_CHECK(again.game.has_value());
    const std::optional<int> ours = matchSide(*again.game, side.teamName);
    FUZZ_CHECK(ours.has_value());
    const ImportBuild build = buildImport(*again.game, *ours, side.roster);
    FUZZ_CHECK(build.import.has_value());
    for (int n = 1; n <= kMaxPlayers; ++n)
        for (int c = 0; c < kCategoryCount; ++c)
            FUZZ_CHECK(build.import->results.at(n, c) == import.results.at(n, c));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const PressBoxRead read =
        readPressBox(std::string_view(reinterpret_cast<const char*>(data), size));
    FUZZ_CHECK(read.game.has_value() != !read.error.empty());
    if (!read.game)
        return 0;
    for (std::size_t side = 0; side < read.game->teams.size(); ++side) {
        const ImportBuild build = buildImport(*read.game, static_cast<int>(side), Roster{});
        FUZZ_CHECK(build.import.has_value() != !build.error.empty());
        if (!build.import)
            continue;
        for (const ImportedPlayer& p : build.import->players) {
            FUZZ_CHECK(p.number >= 1 && p.number <= kMaxPlayers);
            FUZZ_CHECK(playCount(build.import->results.at(p.number, 4).plays) <= 18);
        }
        (void)previewText(*build.import);
        // A game whose players have no figure of ours exports no player to import again.
        if (std::any_of(build.import->players.begin(), build.import->players.end(),
                        [](const ImportedPlayer& p) {
                            return std::find(p.categories.begin(), p.categories.end(), true) !=
                                   p.categories.end();
                        }))
            roundTrip(*build.import);
    }
    return 0;
}
