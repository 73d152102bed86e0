#include "games/RosterImport.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

namespace scorvane {
namespace {

using testing::textAt;

Bytes bytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

// What a file is read as: "header", the columns ignored and "1252" (not UTF-8) where they apply,
// then each player as "line: number name" with the contact fields the file gives, then each
// problem.
std::string readAs(const std::string& csv) {
    const RosterImportFile f = parseRosterCsv(bytesOf(csv));
    std::string out = f.header ? "header" : "";
    for (const auto& column : f.ignoredColumns)
        out += " ignoring " + column;
    out += f.utf8 ? "" : " 1252";
    const char* const fields[] = {"phone", "address1", "address2", "city", "state", "zip", "other"};
    for (const auto& p : f.players) {
        out += "\n" + std::to_string(p.line) + ": " + std::to_string(p.number) + " " + p.name;
        for (std::size_t c = 0; c < p.contacts.size(); ++c)
            if (p.contacts[c])
                out += std::string(" ") + fields[c] + "=" + *p.contacts[c];
    }
    for (const auto& problem : f.problems)
        out += "\n" + problem.text;
    EXPECT_EQ(f.ok(), f.problems.empty());
    return out;
}

TEST(RosterImportParse, EveryLayoutAndEveryBadLine) {
    const std::string other(71, 'o'),
        allEmpty = " phone= address1= address2= city= state= zip= other=";
    const std::pair<std::string, std::string> cases[] = {
        // Without a header: number, name and the contacts in order; a contact not in the line is
        // kept, and a blank line is skipped but counted.
        {"12,Smith\r\n7, Jones ,555-0101,12 Main St,Apt 4,Springfield,IL,62701,Loves the option\r\n"
         "\r\n3,Brown,,,,,,,\n",
         "\n1: 12 Smith\n2: 7 Jones phone=555-0101 address1=12 Main St address2=Apt 4 "
         "city=Springfield state=IL zip=62701 other=Loves the option\n4: 3 Brown" +
             allEmpty},
        // A header names the columns in any order; a column it names counts as empty where a line
        // ends early.
        {"Player Name,Jersey #,Position,Zip Code,Notes\nSmith,12,QB,62701,\nJones,7,WR\n",
         "header ignoring Position\n2: 12 Smith zip=62701 other=\n3: 7 Jones zip= other="},
        {"Name,Phone\nSmith,1\n", "header\nLine 1: the header names no number column."},
        // Quoted fields as RFC 4180 has them; a line break inside quotes counts as a line.
        {"number,name,other\r\n22,\"O\"\"Brien, Pat\",\"two\r\nlines\"\r\n23,\"Lee\",\"\"\r\n",
         "header\n2: 22 O\"Brien, Pat other=two\nlines\n4: 23 Lee other="},
        {"5,\"Open\n6,Next\n", "\nLine 1: a quoted field is not closed."},
        // UTF-8 with and without a byte order mark, and Windows-1252, all kept as the files keep
        // text; a letter Windows-1252 cannot hold is refused, not turned into "?".
        {"\xEF\xBB\xBF"
         "9,Jos\303\251 N\303\272\303\261ez\n",
         "\n1: 9 Jos\351 N\372\361ez"},
        {"9,Jos\303\251 N\303\272\303\261ez\n", "\n1: 9 Jos\351 N\372\361ez"},
        {"9,Jos\351 N\372\361ez\n", " 1252\n1: 9 Jos\351 N\372\361ez"},
        {"4,\xC5\x81ukasz\n",
         "\nLine 1: the name \"\xC5\x81ukasz\" has characters the roster cannot keep."},
        // Every bad line is reported with its line; only the good lines become players, but a file
        // with problems cannot be merged at all.
        {"Number,Name,Phone,Other\n0,Zero\n100,Hundred\nabc,Letters\n12,Smith\n12,Smith Again\n"
         "14,\n15,Eighteen Letters!!\n16,Ok,123456789012345678901\n,No Number\n17,Ok,,x,surplus\n",
         "header\n5: 12 Smith phone= other=\n"
         "Line 2: the number 0 is not between 1 and 99.\n"
         "Line 3: the number 100 is not between 1 and 99.\n"
         "Line 4: \"abc\" is not a player number.\n"
         "Line 6: number 12 is already on line 5.\n"
         "Line 7: player 14 has no name.\n"
         "Line 8: the name \"Eighteen Letters!!\" is longer than 17 characters.\n"
         "Line 9: the phone \"123456789012345678901\" is longer than 20 characters.\n"
         "Line 10: the player number is missing.\n"
         "Line 11: there are more fields than the header names."},
        {"1,A,,,,,,,,\n2,B,,,,,,,," + other + "\n3,C,,,,,,," + other + "\n",
         "\n1: 1 A" + allEmpty +
             "\nLine 2: 10 fields; a line holds at most 9: number, name, phone, address line 1, "
             "address line 2, city, state, zip code and other information.\nLine 3: the other "
             "information \"" +
             other + "\" is longer than 70 characters."},
        {"\n\n", "\nThe file holds no players."},
    };
    for (const auto& [csv, read] : cases)
        EXPECT_EQ(readAs(csv), read) << csv;
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

TEST(RosterImportMerge, MergedPlayersAreSavedAsTheRosterScreenSavesAFileWithProblemsNever) {
    RosterScreen s;
    const Bytes rosterBefore = s.dir.read("FBPN1.DAT"), infoBefore = s.dir.read("FBPI1.DAT");
    const auto bad = parseRosterCsv(bytesOf("3,Brown\n7,\n"));
    ASSERT_FALSE(bad.ok());
    applyRosterImport(bad, s.editor);
    EXPECT_EQ(s.roster.listLine(3), "  3 ____________________");
    ASSERT_TRUE(s.editor.save(s.files).isOk());
    EXPECT_EQ(s.dir.read("FBPN1.DAT"), rosterBefore);
    EXPECT_EQ(s.dir.read("FBPI1.DAT"), infoBefore);

    s.editor.select(50);
    applyRosterImport(parseRosterCsv(bytesOf("3,Brown,555-0003\n12,Smyth\n")), s.editor);
    EXPECT_EQ(s.editor.selected(), 50);
    EXPECT_EQ(s.roster.listLine(3), "  3 Brown            ");
    ASSERT_TRUE(s.editor.save(s.files).isOk());
    const Bytes roster = s.dir.read("FBPN1.DAT");
    ASSERT_EQ(roster.size(), 3u * 201);
    EXPECT_EQ(textAt(roster, 0, 19), std::string("\x03\0Brown", 7) + std::string(12, ' '));
    EXPECT_EQ(textAt(roster, 203, 17) + textAt(roster, 404, 17),
              fit("Jones", 17) + fit("Smyth", 17));
    // Player 12 keeps the phone the file did not give; player 3 gets his.
    const Bytes info = s.dir.read("FBPI1.DAT");
    ASSERT_EQ(info.size(), 2u * 500);
    EXPECT_EQ(textAt(info, 2, 20) + textAt(info, 502, 20),
              fit("555-0003", 20) + fit("555-1212", 20));
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
