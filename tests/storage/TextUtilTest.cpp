#include "storage/TextUtil.h"
#include "storage/ColumnTable.h"
#include "storage/Cp1252.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"

#include <gtest/gtest.h>

// Designated initializers name only the fields a test cares about.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

using namespace scorvane;

TEST(TextUtil, DatesAndAlignment) {
    EXPECT_EQ(ShortDate("101202"), "10/12/02");
    // Two spaces stand before the day and before the century; February 29 passes in any year.
    for (auto [date, text] : {std::pair{"030503", "Mar  5,  2003"},
                              {"122599", "Dec  25,  1999"},
                              {"022999", "Feb  29,  1999"},
                              {"010129", "Jan  1,  2029"},
                              {"010130", "Jan  1,  1930"}})
        EXPECT_EQ(LongDate(date), text);
    for (const char* bad : {"023001", "043101", "063101", "093101", "113101", "000101", "130101",
                            "010001", "013201", ""})
        EXPECT_EQ(LongDate(bad), "ERROR") << bad;

    for (auto [text, width, side, aligned] : {std::tuple{"Yds", 5, 'L', "  Yds"},
                                              {"Yds", 5, 'R', "Yds  "},
                                              {"5", 4, 'M', " 5  "},
                                              {"  TD ", 4, 'M', " TD "},
                                              {"1234", 4, 'L', "1234"},
                                              {"12345", 4, 'L', ""},
                                              {"5", 4, 'X', ""}})
        EXPECT_EQ(AlignText(text, width, side), aligned) << text << side;
}

TEST(TextUtil, GameLineShowsNumberDateTypeOpponentScoreAndResult) {
    ConfigRecord config = ConfigRecord::defaults();
    config.gameTypeNames[1] = "League    ";
    GameRecord g{.gameNumber = 7, .gameDate = "101202", .opponent = "Tigers", .gameType = '2'};
    const std::string head = "7   10/12/02  League      Tigers" + std::string(19, ' ');
    EXPECT_EQ(GameLine(g, {21, 14}, config), head + "  21-14  Won");
    EXPECT_EQ(GameLine(g, {3, 10}, config), head + "   3-10  lost");
    EXPECT_EQ(GameLine(g, {14, 14}, config), head + "  14-14  tie ");

    g.gameNumber = 112;
    g.gameType = 'x'; // no game type: the name column stays blank
    EXPECT_EQ(GameLine(g, {0, 0}, config), "112 10/12/02" + std::string(14, ' ') + "Tigers" +
                                               std::string(19, ' ') + "   0-0   tie ");
}

TEST(Cp1252, ConvertsBothWaysAndKeepsEveryByte) {
    EXPECT_EQ(cp1252ToUtf8("\x80\xE9\x93Hi\x94"), "€é“Hi”");
    // A character Windows-1252 lacks, a stray byte, or a character cut short becomes "?".
    EXPECT_EQ(utf8ToCp1252("€é a中b😀 \x80x\xC3"), "\x80\xE9 a?b? ?x?");
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    EXPECT_EQ(utf8ToCp1252(cp1252ToUtf8(all)), all);
}

TEST(FileNames, DirectoryPrefixTeamAndExtension) {
    const DataPaths paths{"/etc/scorvane/", normalizeDirectory("C:\\DATA" + std::string(138, ' ')),
                          normalizeDirectory("  D:\\REPORTS ")};
    EXPECT_EQ(fileName(FileKind::TeamList, paths, 1), "C:\\DATA\\FBTEAMS.DAT");
    EXPECT_EQ(fileName(FileKind::Games, paths, 1), "C:\\DATA\\FBGS1.DAT");
    EXPECT_EQ(fileName(FileKind::Roster, paths, 100), "C:\\DATA\\FBPN100.DAT");
    EXPECT_EQ(fileName(FileKind::PlayerInfo, paths, 3), "C:\\DATA\\FBPI3.DAT");
    EXPECT_EQ(fileName(FileKind::ReportFormats, paths, 3), "D:\\REPORTS\\FBRPTFMT.DAT");
    EXPECT_EQ(fileName(FileKind::Config, paths, 3), "/etc/scorvane/BXFB.INI");
    EXPECT_EQ(normalizeDirectory("/home/coach") + normalizeDirectory("/tmp/") +
                  normalizeDirectory("C:\\x/y") + normalizeDirectory("   "),
              "/home/coach//tmp/C:\\x/y/");
}

TEST(FileNames, ShownPathsUseTheSystemsSeparatorOnly) {
    // What Windows shows for each path; everywhere else the path is shown as it is.
    const std::pair<std::string, std::string> cases[] = {
        {"C:/Program Files/Scorvane/bin/sample-season/",
         "C:\\Program Files\\Scorvane\\bin\\sample-season\\"},
        {"C:\\x\\bin\\/sample-season/FBTEAMS.DAT", "C:\\x\\bin\\sample-season\\FBTEAMS.DAT"},
        {"//server/share//FB/", "\\\\server\\share\\FB\\"},
        {"C:\\FB\\", "C:\\FB\\"},
        {"Saison \u00c9lan/FBPN1.DAT", "Saison \u00c9lan\\FBPN1.DAT"},
        {"", ""},
    };
    for (const auto& [path, windows] : cases)
        EXPECT_EQ(platform::shownPath(path), platform::isWindows() ? windows : path) << path;
}

TEST(ColumnTable, FixedColumnsThenTheUserNamedOnes) {
    ConfigRecord config = ConfigRecord::defaults();
    config.userColumns[3][0] = "Sck";
    const ColumnTable table(config);
    EXPECT_EQ(ColumnTable::columnCount('P'), 23);
    EXPECT_EQ(ColumnTable::columnCount('Z'), 0);
    EXPECT_EQ(table.columnName('P', 1) + table.columnName('P', 2) + table.columnName('P', 19) +
                  table.columnName('P', 23) + table.columnName('P', 24),
              "G  AttP1 P5    ");
    EXPECT_EQ(table.columnName('D', 12) + table.columnName('D', 13) + table.columnName('D', 18),
              "PenSck   ");
    EXPECT_EQ(table.columnName('T', 20) + table.columnName('Q', 1), "T5    ");
}
