#include "storage/ByteHelpers.h"
#include "storage/ConfigRecord.h"
#include "storage/Records.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// The record encodes to the hand-built image, and the image reads back as a record that writes
// the same image again.
template <class R> void expectImage(const R& record, const Bytes& image) {
    EXPECT_EQ(record.encode(), image);
    EXPECT_EQ(R::decode(image).encode(), image);
}

} // namespace

TEST(RecordLayout, TeamRosterAndPlayerInfo) {
    const Bytes team = // " Club" is cut off at 25 characters
        image(blank(40), {{0, "Riverside Ravens Football"}, {25, "Ravens"}, {35, "AB"}});
    expectImage(TeamRecord{"Riverside Ravens Football Club", "Ravens", "AB"}, team);
    EXPECT_EQ(TeamRecord::decode(team).shortName, "Ravens    "); // read back at full width

    expectImage(RosterRecord{258, "\xC9mile Dubois-Laurentin"},
                image(blank(201), {{0, {0x02, 0x01}}, {2, "\xC9mile Dubois-Laur"}}));

    expectImage(PlayerInfoRecord{12, "555-0100", "12 Elm St", "Apt 4", "Springfield", "IL",
                                 "62704-1234", "Left-footed kicker"},
                image(blank(500), {{0, {12, 0}},
                                   {2, "555-0100"},
                                   {22, "12 Elm St"},
                                   {62, "Apt 4"},
                                   {102, "Springfield"},
                                   {142, "IL"},
                                   {167, "62704-1234"},
                                   {197, "Left-footed kicker"}}));
}

TEST(RecordLayout, GameWithScoresAndPointSums) {
    const GameRecord g{.gameNumber = 7,
                       .gameDate = "101202",
                       .gameLocation = "Memorial Field",
                       .opponent = "Tigers",
                       .opponentScore = {0, 7, 0, 7, 0},
                       .teamScore = {300, 0, 14, -2, 3},
                       .gameComment = "Rain all night",
                       .gameType = '3',
                       .homeFlag = '1',
                       .specialSelect = '2',
                       .overtimeFlag = -1,
                       .tail = "Scout notes" + std::string(52, ' ')};
    expectImage(g, image(blank(200), {{0, {7, 0}},
                                      {2, "A101202Memorial Field"},
                                      {29, "Tigers"},
                                      {54, {0, 0, 7, 0, 0, 0, 7, 0, 0, 0}},
                                      {64, {0x2C, 0x01, 0, 0, 14, 0, 0xFE, 0xFF, 3, 0}},
                                      {74, "Rain all night"},
                                      {132, {'3', '1', '2', 0xFF, 0xFF}},
                                      {137, "Scout notes"}}));
    const PointSums sums = g.pointSums().value_or(PointSums{});
    EXPECT_EQ(sums.team, 315);
    EXPECT_EQ(sums.opponent, 14);
    // A record cut short (the end of a damaged file) reads as if zero-filled to its length.
    EXPECT_EQ(GameRecord::decode(Bytes{7, 0, 'A'}).encode(),
              image(Bytes(200, 0), {{0, {7, 0, 'A'}}}));
}

TEST(RecordLayout, StatisticsInBothLayoutsAfterTheHeader) {
    StatRecord values{.header = {7, 12, 'P', 'A', '3', '2'}, .values = {10, 1000}};
    values.values[29] = -1;
    // The thirty values are numbers, the tail after them text.
    expectImage(values, image(blank(110), {{0, {7, 0, 12, 0, 'P', 'A', '3', '2'}},
                                           {8, Bytes(60, 0)},
                                           {8, {10, 0, 0xE8, 0x03}},
                                           {66, {0xFF, 0xFF}}}));

    StatListRecord list{.header = {3, 45, 'K', 'A', '1', '1'}, .summary = {5, 0, 0, 0, 513}};
    list.entries[0] = {'F', 42, 1};
    list.entries[1] = {'X', 0, 2};
    list.entries[17] = {'P', -5, 256};
    // The eighteen type letters come first, then the yards and marks of each entry.
    expectImage(list, image(blank(110), {{36, Bytes(72, 0)},
                                         {0, {3, 0, 45, 0, 'K', 'A', '1', '1', 5, 0, 0, 0, 0, 0}},
                                         {14, {0, 0, 1, 2, 'F', 'X'}},
                                         {35, {'P', 42, 0, 1, 0, 0, 0, 2, 0}},
                                         {104, {0xFB, 0xFF, 0, 1}}}));
}

TEST(RecordLayout, ReportFormatWithSeventyOneColumnCodes) {
    ReportFormatRecord f{.category = 'R',
                         .deletionMark = '*',
                         .reportName = "Rushing leaders",
                         .sortColumn = 3,
                         .sortDirection = 'A',
                         .columns = {0, 1, 300}};
    f.columns[70] = 31;
    expectImage(f, image(Bytes(167, 0), {{0, "R*Rushing leaders     "},
                                         {22, {3, 0, 'A', 0, 0, 1, 0, 0x2C, 0x01}},
                                         {165, {31, 0}}}));
}

TEST(RecordLayout, ConfigFieldsOfBothParts) {
    // Each field read from a patterned image holds the bytes at its offset, and the record
    // writes the whole image back: every byte belongs to exactly one field, so no field overlaps
    // another or leaves a gap.
    const Bytes raw = pattern(1018);
    const ConfigRecord c = ConfigRecord::decode(raw);
    auto text = [&](std::size_t off, std::size_t n) {
        return std::string(raw.begin() + off, raw.begin() + off + n);
    };
    auto word = [&](std::size_t off) { return std::int16_t(raw[off] | raw[off + 1] << 8); };
    auto sort = [&](std::size_t off) { return SortSetting{word(off), char(raw[off + 2])}; };
    EXPECT_EQ((std::vector{c.firstWord, c.columnLists[2][30], c.optionWords[4], c.optionWord636,
                           c.columnLists[3][0], c.columnLists[5][30]}),
              (std::vector{word(0), word(310), word(627), word(636), word(723), word(907)}));
    EXPECT_EQ((std::vector{c.gameTypeNames[6], c.userColumns[0][0], c.text8, c.dataDirectory,
                           c.reportDirectory, c.text7, c.text31, c.userColumns[3][0], c.text100}),
              (std::vector{text(62, 10), text(72, 3), text(321, 8), text(329, 145), text(474, 145),
                           text(629, 7), text(638, 31), text(669, 3), text(918, 100)}));
    EXPECT_EQ(c.sort[0], sort(312));
    EXPECT_EQ(c.encode(), raw);
}
