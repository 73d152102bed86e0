#include "storage/ByteHelpers.h"
#include "storage/Cp1252.h"
#include "storage/Records.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

TEST(TeamRecordLayout, NamesSitAtTheirOffsetsCutToWidth) {
    TeamRecord t{"Riverside Ravens Football Club", "Ravens", "AB"};
    Bytes expected = blank(40);
    setText(expected, 0, "Riverside Ravens Football");  // 25 characters, " Club" dropped
    setText(expected, 25, "Ravens");
    setText(expected, 35, "AB");
    EXPECT_EQ(t.encode(), expected);

    const TeamRecord back = TeamRecord::decode(expected);
    EXPECT_EQ(back.teamName, "Riverside Ravens Football");
    EXPECT_EQ(back.shortName, "Ravens    ");
    EXPECT_EQ(back.teamTag, "AB   ");
}

TEST(TeamRecordLayout, AccentedNameSurvivesAsWindows1252) {
    TeamRecord t{utf8ToCp1252("Rémy Élan"), "", ""};
    const Bytes rec = t.encode();
    EXPECT_EQ(rec[1], 0xE9);
    EXPECT_EQ(rec[5], 0xC9);
    EXPECT_EQ(rec[9], ' ');
    EXPECT_EQ(cp1252ToUtf8(trimRight(TeamRecord::decode(rec).teamName)), "Rémy Élan");
}

TEST(RosterRecordLayout, NumberNameAndCarriedExtra) {
    RosterRecord r;
    r.playerNumber = 258;
    r.playerName = "\xC9mile Dubois-Laurentin";
    Bytes expected = blank(201);
    setBytes(expected, 0, {0x02, 0x01});
    setText(expected, 2, "\xC9mile Dubois-Laur");
    EXPECT_EQ(r.encode(), expected);

    // Whatever an older program left in the extra area is written back unchanged.
    setText(expected, 19, "X");
    setText(expected, 200, "Y");
    const RosterRecord back = RosterRecord::decode(expected);
    EXPECT_EQ(back.playerNumber, 258);
    EXPECT_EQ(back.encode(), expected);
}

TEST(PlayerInfoRecordLayout, FieldsAtOffsetsAndReservedAreasWrittenBlank) {
    Bytes expected = blank(500);
    setBytes(expected, 0, {12, 0});
    setText(expected, 2, "555-0100");
    setText(expected, 22, "12 Elm Street");
    setText(expected, 62, "Apt 4");
    setText(expected, 102, "Springfield");
    setText(expected, 142, "IL");
    setText(expected, 167, "62704-1234");
    setText(expected, 197, "Left-footed kicker");

    Bytes stored = expected;
    for (std::size_t off : {122, 141, 147, 166, 177, 196, 267, 499})
        stored[off] = 'Z';
    const PlayerInfoRecord p = PlayerInfoRecord::decode(stored);
    EXPECT_EQ(p.city, "Springfield         ");
    EXPECT_EQ(p.state, "IL   ");
    EXPECT_EQ(p.zip, "62704-1234");
    EXPECT_EQ(p.encode(), expected);
}

TEST(GameRecordLayout, EveryFieldAtItsOffset) {
    GameRecord g;
    g.gameNumber = 7;
    g.gameStatus = 'A';
    g.gameDate = "101202";
    g.gameLocation = "Memorial Field";
    g.opponent = "Tigers";
    g.opponentScore = {0, 7, 0, 7, 0};
    g.teamScore = {300, 0, 14, -2, 3};
    g.gameComment = "Rain all night";
    g.gameType = '3';
    g.homeFlag = '1';
    g.specialSelect = '2';
    g.overtimeFlag = -1;

    Bytes expected = blank(200);
    setBytes(expected, 0, {7, 0});
    setText(expected, 2, "A101202Memorial Field");
    setText(expected, 29, "Tigers");
    setBytes(expected, 54, {0, 0, 7, 0, 0, 0, 7, 0, 0, 0});
    setBytes(expected, 64, {0x2C, 0x01, 0, 0, 14, 0, 0xFE, 0xFF, 3, 0});
    setText(expected, 74, "Rain all night");
    setText(expected, 132, "312");
    setBytes(expected, 135, {0xFF, 0xFF});
    EXPECT_EQ(g.encode(), expected);

    const GameRecord back = GameRecord::decode(expected);
    EXPECT_EQ(back.opponentScore, g.opponentScore);
    EXPECT_EQ(back.teamScore, g.teamScore);
    EXPECT_EQ(back.overtimeFlag, -1);
    EXPECT_EQ(back.gameTypeNumber(), 3);
    ASSERT_TRUE(back.pointSums());
    EXPECT_EQ(back.pointSums()->team, 315);
    EXPECT_EQ(back.pointSums()->opponent, 14);
}

TEST(StatRecordLayout, CategoryValuesAfterTheHeader) {
    StatRecord r;
    r.header = {7, 12, 'P', 'A', '3', '2'};
    r.values[0] = 10;
    r.values[1] = 1000;
    r.values[29] = -1;
    Bytes expected = blank(110);
    setBytes(expected, 0, {7, 0, 12, 0, 'P', 'A', '3', '2'});
    for (std::size_t off = 8; off < 68; ++off)
        expected[off] = 0;
    setBytes(expected, 8, {10, 0, 0xE8, 0x03});
    setBytes(expected, 66, {0xFF, 0xFF});
    EXPECT_EQ(r.encode(), expected);

    const StatRecord back = StatRecord::decode(expected);
    EXPECT_EQ(back.header.playerNumber, 12);
    EXPECT_EQ(back.header.statSpecialSelect, '2');
    EXPECT_EQ(back.values, r.values);
}

TEST(StatRecordLayout, ListEntriesInterleaveTypeLettersAndWords) {
    StatListRecord r;
    r.header = {3, 45, 'K', 'A', '1', '1'};
    r.summary = {5, 0, 0, 0, 513};
    r.entries[0] = {'F', 42, 1};
    r.entries[1] = {'X', 0, 2};
    r.entries[17] = {'P', -5, 256};
    Bytes expected = blank(110);
    setBytes(expected, 0, {3, 0, 45, 0, 'K', 'A', '1', '1'});
    setBytes(expected, 8, {5, 0, 0, 0, 0, 0, 0, 0, 1, 2});
    setText(expected, 18, "FX");
    setText(expected, 35, "P");
    for (std::size_t off = 36; off < 108; ++off)
        expected[off] = 0;
    setBytes(expected, 36, {42, 0, 1, 0, 0, 0, 2, 0});
    setBytes(expected, 104, {0xFB, 0xFF, 0, 1});
    EXPECT_EQ(r.encode(), expected);

    const StatListRecord back = StatListRecord::decode(expected);
    EXPECT_EQ(back.entries, r.entries);
    EXPECT_EQ(back.summary, r.summary);
}

TEST(ReportFormatLayout, HeaderAndSeventyOneColumnCodes) {
    ReportFormatRecord f;
    f.category = 'R';
    f.deletionMark = '*';
    f.reportName = "Rushing leaders";
    f.sortColumn = 3;
    f.sortDirection = 'A';
    f.columns[1] = 1;
    f.columns[2] = 300;
    f.columns[70] = 31;
    Bytes expected(167, 0);
    setText(expected, 0, "R*Rushing leaders     ");
    setBytes(expected, 22, {3, 0, 'A'});
    setBytes(expected, 27, {1, 0, 0x2C, 0x01});
    setBytes(expected, 165, {31, 0});
    EXPECT_EQ(f.encode(), expected);

    const ReportFormatRecord back = ReportFormatRecord::decode(expected);
    EXPECT_EQ(back.deletionMark, '*');
    EXPECT_EQ(back.sortColumn, 3);
    EXPECT_EQ(back.columns, f.columns);
}
