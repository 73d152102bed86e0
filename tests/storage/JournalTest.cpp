// The journal of files replaced together, as the next opening of the data directory finds it.

#include "storage/ByteHelpers.h"
#include "storage/DataFiles.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

TEST(Journal, ADamagedJournalNeverRenamesFilesOutsideTheDataDirectory) {
    TempDir outside, dataDir;
    outside.write("VICTIM.DAT", pattern(30));
    outside.write("VICTIM.DAT.tmp", Bytes(30, 'x'));
    dataDir.write("FBPS1.DAT", Bytes(110, 1));
    dataDir.write("FBPS1.DAT.tmp", Bytes(110, 2));
    dataDir.write("sub.tmp", Bytes(3, 'y'));
    const std::string journal = outside.file("VICTIM.DAT") + "\n" + dataDir.dir() + "../" +
                                outside.path().filename().string() + "/VICTIM.DAT\n" +
                                dataDir.dir() + "..\n" + dataDir.dir() + "\n" +
                                dataDir.file("FBPS1.DAT") + "\n" + "sub\n";
    dataDir.write(kJournalFileName, Bytes(journal.begin(), journal.end()));

    FakePrompter prompter;
    DataFiles data(DataPaths{dataDir.dir(), dataDir.dir(), dataDir.dir()}, prompter);
    ASSERT_TRUE(data.team(1).openFile(FileKind::Stats));
    EXPECT_TRUE(prompter.shown.empty());
    // The file of the data directory is finished; nothing else is touched.
    EXPECT_EQ(dataDir.read("FBPS1.DAT"), Bytes(110, 2));
    EXPECT_EQ(outside.read("VICTIM.DAT"), pattern(30));
    EXPECT_EQ(outside.read("VICTIM.DAT.tmp"), Bytes(30, 'x'));
    EXPECT_EQ(dataDir.read("sub.tmp"), Bytes(3, 'y'));
    EXPECT_FALSE(dataDir.exists(kJournalFileName));
}
