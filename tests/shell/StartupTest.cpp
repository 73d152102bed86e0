#include "shell/Startup.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace scorvane {
namespace {

class StartupTest : public ::testing::Test {
protected:
    testing::TempDir program;
    testing::TempDir data;
    testing::FakePrompter prompter;
    Session session;

    // A configuration naming `data` as its data directory, stored the way it is typed: without a
    // trailing separator.
    ConfigRecord config() const {
        ConfigRecord c = ConfigRecord::defaults();
        c.dataDirectory = data.path().string();
        return c;
    }
    StartupOutcome start() { return runStartup(prompter, program.dir(), session); }
};

TEST_F(StartupTest, UnusableConfigurationEndsTheProgramWithoutWriting) {
    for (bool missing : {true, false}) {
        SCOPED_TRACE(missing ? "missing" : "1000 bytes");
        if (!missing)
            program.write("BXFB.INI", Bytes(1000, 'z'));
        prompter = {};
        EXPECT_EQ(start(), StartupOutcome::Ended);
        ASSERT_EQ(prompter.shown.size(), 1u);
        EXPECT_EQ(prompter.shown[0].text, "BXFB.INI File Corrupt or Not Found");
        EXPECT_EQ(prompter.shown[0].title, "Reinstall Scorvane for Football");
        EXPECT_EQ(prompter.endCalls, 1);
        if (missing)
            EXPECT_FALSE(program.exists("BXFB.INI"));
        else
            EXPECT_EQ(program.read("BXFB.INI"), Bytes(1000, 'z'));
    }
}

TEST_F(StartupTest, OlderConfigurationIsUpgradedAndStartupGoesOn) {
    Bytes legacy = config().encode();
    legacy.resize(ConfigRecord::LegacyLength);
    program.write("BXFB.INI", legacy);
    data.write("FBTEAMS.DAT", Bytes(40, ' '));
    EXPECT_EQ(start(), StartupOutcome::Ready);
    EXPECT_TRUE(session.configUpgraded);
    EXPECT_EQ(program.read("BXFB.INI").size(), 1018u);
    EXPECT_EQ(session.paths.dataDirectory, data.dir());
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(StartupTest, DataDirectoryNeedsATeamList) {
    ConfigRecord c = config();
    c.userColumns[0][0] = "QBR";
    c.userColumns[5][4] = "RTD";
    program.write("BXFB.INI", c.encode());
    EXPECT_EQ(start(), StartupOutcome::NeedDataDirectory);
    EXPECT_EQ(session.startupMark, 'E');

    data.write("FBTEAMS.DAT", Bytes(40, ' '));
    session = {};
    EXPECT_EQ(start(), StartupOutcome::Ready);
    EXPECT_EQ(session.startupMark, ' ');
    EXPECT_FALSE(session.configUpgraded);
    EXPECT_EQ(session.paths.dataDirectory, data.dir());
    EXPECT_EQ(session.paths.reportDirectory, data.dir()); // empty report directory
    EXPECT_EQ(session.configPath, program.dir() + "BXFB.INI");
    EXPECT_EQ(session.columns.columnName('P', 19), "QBR");
    EXPECT_EQ(session.columns.columnName('T', ColumnTable::firstUserColumn('T') + 4), "RTD");
    EXPECT_EQ(session.options.sort, c.sort);
}

TEST(MainCaption, NamesTheDataDirectory) {
    EXPECT_EQ(mainCaption("C:\\FB\\"), "Scorvane for Football v2.1 (Data Directory: C:\\FB\\)");
}

} // namespace
} // namespace scorvane
