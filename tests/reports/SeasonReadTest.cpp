#include "reports/Season.h"
#include "storage/TeamList.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scorvane;

// Looking at a team's report reads its files and writes nothing: a team with no roster, games or
// statistics yet reads as empty, and no file appears for it.
TEST(SeasonRead, ATeamWithoutFilesReadsEmptyAndNothingIsCreated) {
    scorvane::testing::ScratchData s;
    ASSERT_TRUE(TeamList::createTeamList(s.data));
    TeamList names;
    ASSERT_TRUE(names.storeNames(s.data, 3, "Lakeview Tigers", "Tigers"));
    const auto before = std::distance(std::filesystem::directory_iterator(s.dir.path()),
                                      std::filesystem::directory_iterator());
    TeamSeason season;
    ASSERT_TRUE(loadTeamSeason(s.data, 3, season));
    EXPECT_EQ(season.name, "Lakeview Tigers");
    EXPECT_EQ(season.shortName, "Tigers");
    EXPECT_TRUE(season.games.empty() && season.stats.empty());
    EXPECT_EQ(season.playerName(5), std::string(17, ' '));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(s.dir.path()),
                            std::filesystem::directory_iterator()),
              before);
    EXPECT_FALSE(s.dir.exists("FBPS3.DAT"));
}
