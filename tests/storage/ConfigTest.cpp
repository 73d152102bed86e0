#include "storage/ByteHelpers.h"
#include "storage/ConfigFile.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// A recognisable byte at every position, so that a field read from or written to the wrong
// offset shows up.
Bytes pattern(std::size_t n) {
    Bytes b(n);
    for (std::size_t i = 0; i < n; ++i)
        b[i] = static_cast<std::uint8_t>((i * 31 + 7) & 0xFF);
    return b;
}

Bytes asBytes(std::string_view s) { return Bytes(s.begin(), s.end()); }

} // namespace

TEST(ConfigRecordLayout, FieldsOfBothPartsAtTheirOffsets) {
    ConfigRecord c;
    c.firstWord = 0x0102;
    c.gameTypeNames[6] = "Playoff";
    c.userColumns[0][0] = "Yds";
    c.userColumns[3][0] = "Sck";
    c.userColumns[5][5] = "Zz";
    c.columnLists[0][0] = 1;
    c.columnLists[2][30] = 300;
    c.columnLists[3][0] = 2;
    c.columnLists[5][30] = -1;
    c.sort = {SortSetting{4, 'D'}, SortSetting{2, 'A'}, SortSetting{3, 'D'},
              SortSetting{5, 'A'}, SortSetting{6, 'D'}, SortSetting{7, 'A'}};
    c.text8 = "EIGHT";
    c.dataDirectory = "C:\\DATA";
    c.reportDirectory = "C:\\RPT";
    c.optionWords = {1, 0, 0, 0, -2};
    c.text7 = "SEVEN";
    c.optionWord636 = 9;
    c.text31 = "THIRTY-ONE";
    c.text100 = "HUNDRED";

    const Bytes rec = c.encode();
    ASSERT_EQ(rec.size(), 1018u);
    auto at = [&](std::size_t off, std::size_t n) { return Bytes(rec.begin() + off, rec.begin() + off + n); };
    EXPECT_EQ(at(0, 2), (Bytes{2, 1}));
    EXPECT_EQ(at(62, 10), asBytes("Playoff   "));
    EXPECT_EQ(at(72, 3), asBytes("Yds"));
    EXPECT_EQ(at(669, 3), asBytes("Sck"));
    EXPECT_EQ(at(720, 3), asBytes("Zz "));
    EXPECT_EQ(at(126, 4), (Bytes{1, 0, 0, 0}));
    EXPECT_EQ(at(310, 2), (Bytes{0x2C, 0x01}));
    EXPECT_EQ(at(723, 2), (Bytes{2, 0}));
    EXPECT_EQ(at(907, 2), (Bytes{0xFF, 0xFF}));
    EXPECT_EQ(at(312, 9), (Bytes{4, 0, 'D', 2, 0, 'A', 3, 0, 'D'}));
    EXPECT_EQ(at(909, 9), (Bytes{5, 0, 'A', 6, 0, 'D', 7, 0, 'A'}));
    EXPECT_EQ(at(321, 16), asBytes("EIGHT   C:\\DATA "));
    EXPECT_EQ(at(473, 8), asBytes(" C:\\RPT "));
    EXPECT_EQ(at(619, 10), (Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0xFE, 0xFF}));
    EXPECT_EQ(at(629, 7), asBytes("SEVEN  "));
    EXPECT_EQ(at(636, 2), (Bytes{9, 0}));
    EXPECT_EQ(at(638, 11), asBytes("THIRTY-ONE "));
    EXPECT_EQ(at(918, 100), asBytes(fit("HUNDRED", 100)));
}

TEST(ConfigRecordLayout, EveryByteBelongsToAField) {
    const Bytes raw = pattern(1018);
    const ConfigRecord c = ConfigRecord::decode(raw);
    EXPECT_EQ(c.firstWord, static_cast<std::int16_t>(7 | (38 << 8)));
    EXPECT_EQ(c.encode(), raw);
}

TEST(ConfigFile, OlderLayoutIsUpgradedOnDisk) {
    TempDir dir;
    const Bytes legacy = pattern(669);
    dir.write("BXFB.INI", legacy);
    FakePrompter prompter;
    ConfigRecord c;
    bool upgraded = false;
    ASSERT_TRUE(loadConfiguration(prompter, dir.file("BXFB.INI"), c, upgraded));
    EXPECT_TRUE(upgraded);

    const Bytes now = dir.read("BXFB.INI");
    ASSERT_EQ(now.size(), 1018u);
    Bytes expectedHead = legacy;
    setText(expectedHead, 321, std::string(8, ' '));
    setText(expectedHead, 638, std::string(31, ' '));
    EXPECT_EQ(Bytes(now.begin(), now.begin() + 669), expectedHead);
    EXPECT_EQ(Bytes(now.begin() + 909, now.begin() + 918),
              (Bytes{2, 0, 'D', 1, 0, 'D', 1, 0, 'D'}));
    Bytes kickingList(62, 0);
    setBytes(kickingList, 0, {1, 0, 2, 0, 4, 0, 9, 0, 10, 0, 11, 0, 17, 0});
    EXPECT_EQ(Bytes(now.begin() + 785, now.begin() + 847), kickingList);
    EXPECT_EQ(Bytes(now.begin() + 918, now.end()), blank(100));
    EXPECT_FALSE(dir.exists("BXFB.INI.tmp"));
    EXPECT_TRUE(prompter.shown.empty());

    // The upgraded file is now current: read as it is, the same record.
    ConfigRecord again;
    ASSERT_TRUE(loadConfiguration(prompter, dir.file("BXFB.INI"), again, upgraded));
    EXPECT_FALSE(upgraded);
    EXPECT_EQ(again.encode(), now);
    EXPECT_EQ(c.sort[3], (SortSetting{2, 'D'}));
    EXPECT_EQ(c.dataDirectory, field::getText(legacy, 329, 145));
}

TEST(ConfigFile, WrongLengthIsRefusedAndLeftAlone) {
    for (std::size_t n : {1u, 668u, 670u, 1017u, 1019u, 2036u}) {
        TempDir dir;
        const Bytes contents = pattern(n);
        dir.write("BXFB.INI", contents);
        FakePrompter prompter;
        ConfigRecord c;
        bool upgraded = true;
        const Status s = loadConfiguration(prompter, dir.file("BXFB.INI"), c, upgraded);
        EXPECT_EQ(s.kind(), ErrorKind::BadLength) << n;
        EXPECT_EQ(s.message(), "BXFB.INI File Corrupt or Not Found");
        EXPECT_FALSE(upgraded);
        EXPECT_EQ(dir.read("BXFB.INI"), contents) << n;
        EXPECT_FALSE(dir.exists("BXFB.INI.tmp"));
    }
}

TEST(ConfigFile, MissingFileIsRefusedAndNotCreated) {
    TempDir dir;
    FakePrompter prompter;
    ConfigRecord c;
    bool upgraded = false;
    EXPECT_EQ(loadConfiguration(prompter, dir.file("BXFB.INI"), c, upgraded).kind(),
              ErrorKind::BadLength);
    EXPECT_FALSE(dir.exists("BXFB.INI"));
    EXPECT_TRUE(prompter.shown.empty());
}
