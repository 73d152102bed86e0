#include "games/NameYourOwn.h"
#include "storage/ColumnTable.h"

#include <gtest/gtest.h>

using namespace scorvane;

TEST(NameYourOwn, EmptyBoxesRestoreTheDefaultsAndLongNamesAreCut) {
    ConfigRecord config = ConfigRecord::defaults();
    OwnNames names; // every box empty
    names.gameTypes[1] = "    ";
    applyOwnNames(config, names);
    EXPECT_EQ(config.gameTypeNames[0], "GameType 1");
    EXPECT_EQ(config.gameTypeNames[6], "GameType 7");
    EXPECT_EQ(config.userColumns[0][0], "P1 ");
    EXPECT_EQ(config.userColumns[3][4], "D5 ");
    EXPECT_EQ(config.userColumns[5][2], "T3 ");

    names.gameTypes[2] = "  Conference  ";
    names.gameTypes[3] = "Championship";
    names.columns[7] = "Drops"; // receiving, own column 3
    applyOwnNames(config, names);
    EXPECT_EQ(config.gameTypeNames[2], "Conference");
    EXPECT_EQ(config.gameTypeNames[3], "Championsh");
    EXPECT_EQ(config.userColumns[1][2], "Dro");

    // The column table shows the new names at once.
    ColumnTable columns(config);
    EXPECT_EQ(columns.columnName('C', 20), "Dro");
    EXPECT_EQ(ownNamesOf(config).columns[7], "Dro");
    EXPECT_EQ(ownNamesOf(config).gameTypes[0], "GameType 1");
}
