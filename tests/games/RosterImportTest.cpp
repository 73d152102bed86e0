#include "games/RosterImport.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

namespace scorvane {
namespace {

Bytes bytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

std::vector<std::string> problemTexts(const RosterImportFile& f) {
    std::vector<std::string> out;
    for (const auto& p : f.problems)
        out.push_back(p.text);
    return out;
}

std::string contact(const ImportedPlayer& p, ContactField f) {
    const auto& v = p.contacts[static_cast<std::size_t>(f)];
    return v ? *v : "<none>";
}

TEST(RosterImportParse, LinesWithoutAHeaderAreNumberNameAndContactsInOrder) {
    const auto f = parseRosterCsv(bytesOf("12,Smith\r\n"
                                          "7, Jones ,555-0101,12 Main St,Apt 4,Springfield,IL,"
                                          "62701,Loves the option\r\n"
                                          "\r\n"
                                          "3,Brown,,,,,,,\n"));
    ASSERT_TRUE(f.ok()) << problemTexts(f).front();
    EXPECT_FALSE(f.header);
    ASSERT_EQ(f.players.size(), 3u);
    EXPECT_EQ(f.players[0].number, 12);
    EXPECT_EQ(f.players[0].name, "Smith");
    EXPECT_EQ(contact(f.players[0], ContactField::Phone), "<none>"); // not in the line: kept
    EXPECT_EQ(f.players[1].name, "Jones");
    EXPECT_EQ(contact(f.players[1], ContactField::Phone), "555-0101");
    EXPECT_EQ(contact(f.players[1], ContactField::Address2), "Apt 4");
    EXPECT_EQ(contact(f.players[1], ContactField::State), "IL");
    EXPECT_EQ(contact(f.players[1], ContactField::Other), "Loves the option");
    EXPECT_EQ(f.players[2].line, 4); // the blank line 3 is skipped but counted
    EXPECT_EQ(contact(f.players[2], ContactField::Zip), "");
}

TEST(RosterImportParse, HeaderNamesTheColumnsInAnyOrder) {
    const auto f = parseRosterCsv(bytesOf("Player Name,Jersey #,Position,Zip Code,Notes\n"
                                          "Smith,12,QB,62701,\n"
                                          "Jones,7,WR\n"));
    ASSERT_TRUE(f.ok()) << problemTexts(f).front();
    EXPECT_TRUE(f.header);
    EXPECT_EQ(f.ignoredColumns, std::vector<std::string>{"Position"});
    ASSERT_EQ(f.players.size(), 2u);
    EXPECT_EQ(f.players[0].number, 12);
    EXPECT_EQ(f.players[0].name, "Smith");
    EXPECT_EQ(contact(f.players[0], ContactField::Zip), "62701");
    EXPECT_EQ(contact(f.players[0], ContactField::Other), "");
    // A column the header names counts as empty where a line ends early; others stay untouched.
    EXPECT_EQ(contact(f.players[1], ContactField::Zip), "");
    EXPECT_EQ(contact(f.players[1], ContactField::Phone), "<none>");
    EXPECT_EQ(f.players[1].line, 3);

    EXPECT_EQ(problemTexts(parseRosterCsv(bytesOf("Name,Phone\nSmith,1\n"))),
              std::vector<std::string>{"Line 1: the header names no number column."});
}

TEST(RosterImportParse, QuotedFieldsFollowRfc4180) {
    const auto f = parseRosterCsv(bytesOf("number,name,other\r\n"
                                          "22,\"O\"\"Brien, Pat\",\"two\r\nlines\"\r\n"
                                          "23,\"Lee\",\"\"\r\n"));
    ASSERT_TRUE(f.ok()) << problemTexts(f).front();
    ASSERT_EQ(f.players.size(), 2u);
    EXPECT_EQ(f.players[0].name, "O\"Brien, Pat");
    EXPECT_EQ(contact(f.players[0], ContactField::Other), "two\nlines");
    EXPECT_EQ(f.players[1].line, 4); // the line break inside quotes counts as a line of the file
    EXPECT_EQ(f.players[1].name, "Lee");

    EXPECT_EQ(problemTexts(parseRosterCsv(bytesOf("5,\"Open\n6,Next\n"))),
              std::vector<std::string>{"Line 1: a quoted field is not closed."});
}

TEST(RosterImportParse, Utf8AndWindows1252AreBothStoredAsTheFilesKeepText) {
    // UTF-8 with and without a byte order mark, then the same name in Windows-1252.
    for (const std::string& text : {std::string("\xEF\xBB\xBF"
                                                "9,Jos\xC3\xA9 N\xC3\xBA\xC3\xB1"
                                                "ez\n"),
                                    std::string("9,Jos\xC3\xA9 N\xC3\xBA\xC3\xB1"
                                                "ez\n"),
                                    std::string("9,Jos\xE9 N\xFA\xF1"
                                                "ez\n")}) {
        const auto f = parseRosterCsv(bytesOf(text));
        ASSERT_TRUE(f.ok());
        ASSERT_EQ(f.players.size(), 1u);
        EXPECT_EQ(f.players[0].name, "Jos\xE9 N\xFA\xF1"
                                     "ez");
    }
    EXPECT_TRUE(parseRosterCsv(bytesOf("9,Jos\xC3\xA9\n")).utf8);
    EXPECT_FALSE(parseRosterCsv(bytesOf("9,Jos\xE9\n")).utf8);
    // A letter the Windows-1252 files cannot hold is refused, not turned into "?".
    EXPECT_EQ(problemTexts(parseRosterCsv(bytesOf("4,\xC5\x81ukasz\n"))),
              std::vector<std::string>{
                  "Line 1: the name \"\xC5\x81ukasz\" has characters the roster cannot keep."});
}

TEST(RosterImportParse, EveryBadLineIsReportedWithItsLine) {
    const auto f = parseRosterCsv(bytesOf("Number,Name,Phone,Other\n"     // 1
                                          "0,Zero\n"                      // 2
                                          "100,Hundred\n"                 // 3
                                          "abc,Letters\n"                 // 4
                                          "12,Smith\n"                    // 5
                                          "12,Smith Again\n"              // 6
                                          "14,\n"                         // 7
                                          "15,Eighteen Letters!!\n"       // 8
                                          "16,Ok,123456789012345678901\n" // 9
                                          ",No Number\n"                  // 10
                                          "17,Ok,,x,surplus\n"));         // 11
    EXPECT_EQ(problemTexts(f),
              (std::vector<std::string>{
                  "Line 2: the number 0 is not between 1 and 99.",
                  "Line 3: the number 100 is not between 1 and 99.",
                  "Line 4: \"abc\" is not a player number.",
                  "Line 6: number 12 is already on line 5.",
                  "Line 7: player 14 has no name.",
                  "Line 8: the name \"Eighteen Letters!!\" is longer than 17 characters.",
                  "Line 9: the phone \"123456789012345678901\" is longer than 20 characters.",
                  "Line 10: the player number is missing.",
                  "Line 11: there are more fields than the header names.",
              }));
    // Only the good lines become players, but a file with problems cannot be merged at all.
    ASSERT_EQ(f.players.size(), 1u);
    EXPECT_EQ(f.players[0].number, 12);

    const std::string other(71, 'o');
    EXPECT_EQ(
        problemTexts(parseRosterCsv(
            bytesOf("1,A,,,,,,,,\n2,B,,,,,,,," + other + "\n3,C,,,,,,," + other + "\n"))),
        (std::vector<std::string>{"Line 2: 10 fields; a line holds at most 9: number, name, "
                                  "phone, address line 1, address line 2, city, state, zip code "
                                  "and other information.",
                                  "Line 3: the other information \"" + other +
                                      "\" is longer than 70 characters."}));
    EXPECT_EQ(problemTexts(parseRosterCsv(bytesOf("\n\n"))),
              std::vector<std::string>{"The file holds no players."});
}

// The team's roster (players 7 "Jones" and 12 "Smith", 12 with a phone) in the roster screen.
struct RosterScreen : testing::ScratchData {
    Roster roster;
    RosterEditor editor{roster};

    RosterScreen() {
        editor.select(7);
        editor.nameEntered("Jones");
        editor.select(12);
        editor.nameEntered("Smith");
        editor.contactEntered(ContactField::Phone, "555-1212");
        EXPECT_TRUE(editor.save(files).isOk());
        EXPECT_TRUE(roster.load(files).isOk());
        EXPECT_TRUE(editor.open(files).isOk());
    }
};

TEST(RosterImportMerge, PreviewSaysWhatEachPlayerGets) {
    RosterScreen s;
    const auto f = parseRosterCsv(bytesOf("3,Brown\n"
                                          "7,Jones\n"
                                          "12,Smyth,555-1212,1 Elm St\n"));
    const ImportPlan plan = planRosterImport(f, s.roster, s.editor);
    ASSERT_EQ(plan.rows.size(), 3u);
    EXPECT_EQ(plan.rows[0].number, 3);
    EXPECT_EQ(plan.rows[0].action, ImportAction::Add);
    EXPECT_EQ(plan.rows[1].action, ImportAction::Same);
    EXPECT_EQ(plan.rows[2].action, ImportAction::Change);
    EXPECT_EQ(plan.rows[2].oldName, "Smith");
    EXPECT_EQ(plan.rows[2].fields, (std::vector<std::string>{"name", "address line 1"}));
    EXPECT_EQ(describePlan(plan),
              "The import adds 1 player, changes 1 player and leaves 1 player unchanged.");
}

TEST(RosterImportMerge, MergedPlayersAreSavedAsTheRosterScreenSaves) {
    RosterScreen s;
    s.editor.select(50);
    const auto f = parseRosterCsv(bytesOf("3,Brown,555-0003\n12,Smyth\n"));
    applyRosterImport(f, s.editor);
    EXPECT_EQ(s.editor.selected(), 50);
    EXPECT_EQ(s.roster.listLine(3), "  3 Brown            ");
    ASSERT_TRUE(s.editor.save(s.files).isOk());

    const Bytes roster = s.dir.read("FBPN1.DAT");
    ASSERT_EQ(roster.size(), 3u * 201);
    EXPECT_EQ(std::string(roster.begin(), roster.begin() + 19),
              std::string("\x03\0Brown", 7) + std::string(12, ' '));
    EXPECT_EQ(std::string(roster.begin() + 201 + 2, roster.begin() + 201 + 19), fit("Jones", 17));
    EXPECT_EQ(std::string(roster.begin() + 402 + 2, roster.begin() + 402 + 19), fit("Smyth", 17));
    // Player 12 keeps the phone the file did not give; player 3 gets his.
    const Bytes info = s.dir.read("FBPI1.DAT");
    ASSERT_EQ(info.size(), 2u * 500);
    EXPECT_EQ(std::string(info.begin() + 2, info.begin() + 22), fit("555-0003", 20));
    EXPECT_EQ(std::string(info.begin() + 502, info.begin() + 522), fit("555-1212", 20));
}

TEST(RosterImportMerge, AFileWithProblemsChangesNothing) {
    RosterScreen s;
    const Bytes rosterBefore = s.dir.read("FBPN1.DAT");
    const Bytes infoBefore = s.dir.read("FBPI1.DAT");
    const auto f = parseRosterCsv(bytesOf("3,Brown\n7,\n"));
    ASSERT_FALSE(f.ok());
    applyRosterImport(f, s.editor);
    EXPECT_EQ(s.roster.listLine(3), "  3 ____________________");
    ASSERT_TRUE(s.editor.save(s.files).isOk());
    EXPECT_EQ(s.dir.read("FBPN1.DAT"), rosterBefore);
    EXPECT_EQ(s.dir.read("FBPI1.DAT"), infoBefore);
}

TEST(RosterImportFileRead, AMissingFileIsAnError) {
    testing::TempDir dir;
    RosterImportFile f;
    EXPECT_FALSE(readRosterCsv(dir.file("nothing.csv"), f).isOk());
    dir.write("team.csv", bytesOf("5,Five\n"));
    ASSERT_TRUE(readRosterCsv(dir.file("team.csv"), f).isOk());
    ASSERT_EQ(f.players.size(), 1u);
    EXPECT_EQ(f.players[0].name, "Five");
}

} // namespace
} // namespace scorvane
