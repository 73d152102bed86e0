#include "shell/DeleteFiles.h"
#include "shell/Backup.h"
#include "shell/FolderSnapshot.h"
#include "storage/FolderCopy.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace scorvane {
namespace {

using testing::filler;
using testing::FolderSnapshot;
using testing::snapshot;

const char* const kTeamFiles[] = {"FBPN", "FBPI", "FBGS", "FBPS"};

std::string teamFile(const char* prefix, int team) {
    return prefix + std::to_string(team) + ".DAT";
}

// Teams 1 "Bears", 2 "Lions" and 3 "Hawks", each with all four files, and the report formats,
// all in one folder; team 2 is marked.
struct League {
    testing::TempDir dir;
    testing::FakePrompter prompter;
    DataFiles files{DataPaths{"", dir.dir(), dir.dir()}, prompter};
    TeamSelection teams;

    League() {
        EXPECT_TRUE(TeamSelection::createTeamList(files).isOk());
        for (auto [team, name] : {std::pair{1, "Bears"}, {2, "Lions"}, {3, "Hawks"}}) {
            EXPECT_TRUE(teams.storeNames(files, team, name, "").isOk());
            int seed = team * 10;
            for (const char* prefix : kTeamFiles)
                dir.write(teamFile(prefix, team), filler(300, ++seed));
        }
        dir.write("FBRPTFMT.DAT", filler(167, 1));
        dir.write("FBSITE2.TXT", Bytes(34, '7'));
        files.closeAll();
        teams.click(std::vector<bool>{false, true}, 1);
    }
};

TEST(DeleteFiles, NoLeavesEverythingYesTakesTheTeamsFourFilesAndEmptiesItsLine) {
    League l;
    FolderSnapshot before = snapshot(l.dir.path());
    // The team's files are open, as a screen would have them.
    TeamFiles lions = l.files.team(2);
    ASSERT_GT(lions.recordCount(FileKind::Games), 0);
    // No, the default answer.
    EXPECT_EQ(deleteTeamFiles(l.files, l.teams, l.prompter, 2), DeleteResult::Declined);
    EXPECT_EQ(snapshot(l.dir.path()), before);
    EXPECT_FALSE(l.teams.resetMark());
    EXPECT_EQ(l.teams.count(), 1);

    l.prompter.answers = {Answer::Yes};
    ASSERT_EQ(deleteTeamFiles(l.files, l.teams, l.prompter, 2), DeleteResult::Deleted);
    ASSERT_EQ(l.prompter.shown.size(), 2u);
    EXPECT_EQ(l.prompter.shown[0], l.prompter.shown[1]);
    EXPECT_EQ(l.prompter.shown[1],
              (Message{"Delete the roster, player information, games and statistics of Lions "
                       "(team 2)?  Its line in the team list becomes empty.  This cannot be "
                       "undone.",
                       "Delete Files", Buttons::YesNo, Icon::Question, Answer::No}));

    FolderSnapshot after = snapshot(l.dir.path());
    for (const char* prefix : kTeamFiles) {
        EXPECT_FALSE(after.contains(teamFile(prefix, 2))) << prefix;
        before.erase(teamFile(prefix, 2));
    }
    EXPECT_FALSE(after.contains("FBSITE2.TXT"));
    before.erase("FBSITE2.TXT");
    // Record 2 of the team list is spaces now; everything else is as it was, byte for byte.
    Bytes list = before.at("FBTEAMS.DAT");
    std::fill(list.begin() + 40, list.begin() + 80, ' ');
    before["FBTEAMS.DAT"] = list;
    EXPECT_EQ(after, before);

    // No team stays marked, and the list shows the empty line.
    EXPECT_TRUE(l.teams.resetMark());
    EXPECT_EQ(l.teams.teamName(2), "");
    EXPECT_EQ(l.teams.teamName(3), "Hawks");
    EXPECT_EQ(l.teams.open(), std::vector<bool>(kMaxTeams, false));
}

TEST(DeleteFiles, ATeamWithoutFilesOrBeyondTheListIsFine) {
    League l;
    Bytes shortList = l.dir.read("FBTEAMS.DAT");
    shortList.resize(3 * 40);
    l.dir.write("FBTEAMS.DAT", shortList);
    const FolderSnapshot before = snapshot(l.dir.path());
    l.prompter.answers = {Answer::Yes};
    EXPECT_EQ(deleteTeamFiles(l.files, l.teams, l.prompter, 50), DeleteResult::Deleted);
    EXPECT_TRUE(l.prompter.shown[0].text.starts_with(
        "Delete the roster, player information, games and statistics of team 50?  "));
    EXPECT_EQ(snapshot(l.dir.path()), before);
}

TEST(DeleteFiles, CountsComeFromTheFileLengths) {
    League l;
    l.dir.write("FBPN1.DAT", Bytes(3 * 201, ' '));
    l.dir.write("FBGS1.DAT", Bytes(200, ' '));
    l.dir.write("FBPS1.DAT", Bytes(5 * 110, ' '));
    const TeamFileCounts c = countTeamFiles(l.files.paths(), 1);
    EXPECT_EQ(describeTeamFiles(c), "3 players, 1 game, 5 statistics records");
    EXPECT_EQ(describeTeamFiles(countTeamFiles(l.files.paths(), 9)), "No files");
}

// What a crash leaves between the steps of a change that deletes and replaces files together.
TEST(ChangesTogether, ACrashBeforeTheJournalIsForgottenOneAfterItIsFinished) {
    League l;
    const DataPaths paths = l.files.paths();
    const FolderSnapshot before = snapshot(l.dir.path());

    // Stopped while the new files were written: only half-written new files are there.
    l.dir.write("FBTEAMS.DAT.new", filler(40, 3));
    l.dir.write("FBPN1.DAT.new.tmp", filler(20, 3));
    ASSERT_TRUE(finishInterruptedChanges(paths).isOk());
    EXPECT_EQ(snapshot(l.dir.path()), before);

    // Stopped after the journal was written and one rename done: the rest is finished.
    l.dir.write("FBTEAMS.DAT", filler(40, 4));
    const std::string journal = "SCORVANE CHANGE 1\nW " + l.dir.file("FBTEAMS.DAT") + "\nD " +
                                l.dir.file("FBPN1.DAT") + "\nW " + l.dir.file("FBPI1.DAT") +
                                "\nEND\n";
    l.dir.write("FBPI1.DAT.new", filler(500, 4));
    l.dir.write(kChangeJournalFileName, Bytes(journal.begin(), journal.end()));
    ASSERT_TRUE(finishInterruptedChanges(paths).isOk());
    FolderSnapshot expected = before;
    expected["FBTEAMS.DAT"] = filler(40, 4);
    expected.erase("FBPN1.DAT");
    expected["FBPI1.DAT"] = filler(500, 4);
    EXPECT_EQ(snapshot(l.dir.path()), expected);

    // A journal cut short was never finished being written: it is reported, nothing is touched.
    const std::string cut = "SCORVANE CHANGE 1\nD " + l.dir.file("FBPN3.DAT") + "\n";
    l.dir.write(kChangeJournalFileName, Bytes(cut.begin(), cut.end()));
    EXPECT_EQ(finishInterruptedChanges(paths).kind(), ErrorKind::Unreadable);
    EXPECT_TRUE(l.dir.exists("FBPN3.DAT"));
}

} // namespace
} // namespace scorvane
