#include "games/Roster.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

struct RosterFixture : ::testing::Test, ScratchData {
    Roster roster;
    RosterEditor editor{roster};

    RosterFixture() { files = data.team(4); }
    void SetUp() override { ASSERT_TRUE(editor.open(files)); }

    void name(int number, const std::string& text) {
        editor.select(number);
        editor.nameEntered(text);
    }
};

} // namespace

TEST_F(RosterFixture, PlayersAreWrittenInNumberOrderAndDeletingOneDropsItsRecord) {
    name(99, "Zed Last");
    name(3, "A Verylongplayername Here");
    name(7, "Seven");
    ASSERT_TRUE(editor.save(files));

    Bytes bytes = dir.read("FBPN4.DAT");
    ASSERT_EQ(bytes.size(), 3u * 201u);
    EXPECT_EQ(intAt(bytes, 0), 3);
    EXPECT_EQ(textAt(bytes, 2, 17), "A Verylongplayern");
    EXPECT_EQ(textAt(bytes, 19, 182), std::string(182, ' '));
    EXPECT_EQ(intAt(bytes, 201), 7);
    EXPECT_EQ(textAt(bytes, 203, 17), fit("Seven", 17));
    EXPECT_EQ(intAt(bytes, 402), 99);
    EXPECT_FALSE(dir.exists("FBPI4.DAT") && !dir.read("FBPI4.DAT").empty());

    // Deleting asks first (the exact question is checked with the roster screen).
    editor.select(7);
    prompter.answers = {Answer::Yes};
    EXPECT_TRUE(editor.deletePlayer(prompter));
    EXPECT_EQ(roster.listLine(7), "  7 ____________________");
    ASSERT_TRUE(editor.save(files));
    bytes = dir.read("FBPN4.DAT");
    ASSERT_EQ(bytes.size(), 2u * 201u);
    EXPECT_EQ(intAt(bytes, 201), 99);
}

TEST_F(RosterFixture, ListLinesLineUpNumbersShowVacantSlotsAndBlankNames) {
    name(5, "  Five  ");
    name(42, "Forty Two");
    const auto lines = roster.listLines();
    ASSERT_EQ(lines.size(), 99u);
    EXPECT_EQ(lines[0], "  1 ____________________");
    EXPECT_EQ(lines[4], "  5 " + fit("Five", 17));
    EXPECT_EQ(lines[41], "42 " + fit("Forty Two", 17));
    EXPECT_EQ(lines[98], "99 ____________________");

    // Blanking a name clears the number and its contact details.
    name(12, "Twelve");
    editor.contactEntered(ContactField::Phone, "555-0100");
    // Re-typing the same name with spaces around it changes nothing.
    EXPECT_FALSE(editor.nameEntered("  Twelve   "));
    EXPECT_TRUE(editor.nameEntered("   "));
    EXPECT_FALSE(roster.inUse[12]);
    EXPECT_EQ(trimRight(editor.contact(12, ContactField::Phone)), "");
    EXPECT_TRUE(prompter.shown.empty());
    // Blanking a vacant number does nothing.
    EXPECT_FALSE(editor.nameEntered(""));
}

TEST_F(RosterFixture, ContactDetailsKeepTheirWidthsAndOtherKeepsSeventyOnDisk) {
    name(8, "Eight");
    std::string other;
    for (int i = 0; i < 150; ++i)
        other += static_cast<char>('a' + i % 26);
    editor.contactEntered(ContactField::Other, other);
    editor.contactEntered(ContactField::City, "   Springfield");
    editor.contactEntered(ContactField::State, "Oregon");
    EXPECT_EQ(trimRight(editor.contact(8, ContactField::Other)), other);
    // A vacant number with details gets an information record but no roster record.
    editor.select(20);
    editor.contactEntered(ContactField::Zip, "97477");
    ASSERT_TRUE(editor.save(files));

    EXPECT_EQ(dir.read("FBPN4.DAT").size(), 201u);
    const Bytes info = dir.read("FBPI4.DAT");
    ASSERT_EQ(info.size(), 1000u);
    EXPECT_EQ(intAt(info, 0), 8);
    EXPECT_EQ(textAt(info, 102, 20), fit("Springfield", 20));
    EXPECT_EQ(textAt(info, 142, 5), "Orego");
    EXPECT_EQ(textAt(info, 197, 70), other.substr(0, 70));
    EXPECT_EQ(textAt(info, 122, 20) + textAt(info, 147, 20) + textAt(info, 177, 20) +
                  textAt(info, 267, 233),
              std::string(293, ' '));
    EXPECT_EQ(intAt(info, 500), 20);
    EXPECT_EQ(textAt(info, 667, 10), fit("97477", 10));

    Roster reread;
    ASSERT_TRUE(reread.load(files));
    RosterEditor again(reread);
    ASSERT_TRUE(again.open(files));
    EXPECT_EQ(trimRight(again.contact(8, ContactField::Other)), other.substr(0, 70));
    EXPECT_FALSE(reread.inUse[20]);
    EXPECT_TRUE(reread.inUse[8]);
}

TEST_F(RosterFixture, DamagedRosterRecordsAreSkippedNotCrashedOn) {
    Bytes contents = RosterRecord{140, "Nobody"}.encode();
    const Bytes good = RosterRecord{9, "Nine"}.encode();
    contents.insert(contents.end(), good.begin(), good.end());
    dir.write("FBPN4.DAT", contents);
    ASSERT_TRUE(roster.load(files));
    EXPECT_TRUE(roster.inUse[9]);
    EXPECT_EQ(std::count(roster.inUse.begin(), roster.inUse.end(), true), 1);
    // Nothing was written back while reading.
    EXPECT_EQ(dir.read("FBPN4.DAT"), contents);
}
