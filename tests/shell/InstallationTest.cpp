#include "shell/Installation.h"
#include "shell/Backup.h"
#include "shell/FolderSnapshot.h"
#include "shell/Help.h"
#include "shell/Startup.h"
#include "storage/ConfigRecord.h"
#include "storage/Platform.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

namespace scorvane {
namespace {

using testing::filler;
using testing::snapshot;

Environment environment(std::map<std::string, std::string> vars) {
    return [vars](const std::string& name) -> std::optional<std::string> {
        const auto it = vars.find(name);
        if (it == vars.end())
            return std::nullopt;
        return it->second;
    };
}

// The program's paths are UTF-8; std::filesystem takes them as such only as char8_t text (on
// Windows a plain string is read in the ANSI code page).
std::filesystem::path u8path(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}
std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}
Bytes readFile(const std::string& path) {
    std::ifstream in(u8path(path), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}
void writeFile(const std::string& path, const Bytes& bytes) {
    std::ofstream out(u8path(path), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

// Two spellings of one folder or file: Windows takes either separator.
::testing::AssertionResult samePlace(const std::string& a, const std::string& b) {
    if (u8path(a).lexically_normal() == u8path(b).lexically_normal())
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << '"' << a << "\" is not \"" << b << '"';
}

// An installation as `cmake --install` lays it out: the program in bin/, the default
// configuration, the help pages and the sample season in share/scorvane/; and a home folder
// whose name is not plain ASCII, made by the program as it writes into it.
struct Installation : ::testing::Test {
    testing::TempDir prefix, home;
    testing::FakePrompter prompter;
    const std::string user = utf8(home.path() / u8"Jos\u00e9 \u00dcn\u00efc\u00f6d\u00e9");
    // The home folder's variables on both kinds of system.
    Environment env = environment(
        {{"HOME", user}, {"APPDATA", user + "/.config"}, {"LOCALAPPDATA", user + "/.local/share"}});
    ConfigRecord defaults = ConfigRecord::defaults();

    Installation() {
        std::filesystem::create_directories(prefix.path() / "bin");
        std::filesystem::create_directories(prefix.path() / "share/scorvane/help");
        std::filesystem::create_directories(prefix.path() / "share/scorvane/sample-season");
        defaults.gameTypeNames[0] = fit("League", 10);
        defaults.dataDirectory = fit("/where/it/was/built/sample-season/", 145);
        prefix.write("share/scorvane/BXFB.INI", defaults.encode());
        prefix.write("share/scorvane/help/topic10.html", Bytes{'<', 'p', '>'});
        for (const char* name : {"FBTEAMS.DAT", "FBPN1.DAT", "FBGS1.DAT", "FBRPTFMT.DAT"})
            prefix.write(std::string("share/scorvane/sample-season/") + name, filler(120, name[3]));
    }
    std::string program() const { return prefix.dir() + "bin/"; }
    std::string userConfig() const { return userConfigDirectory(env) + "BXFB.INI"; }
};

TEST_F(Installation, UserFoldersFollowTheEnvironment) {
    EXPECT_EQ(sharedDirectory("/opt/scorvane/bin/"), "/opt/scorvane/share/scorvane/");
    if (platform::isWindows()) {
        const auto win = environment({{"APPDATA", "C:/Users/coach/AppData/Roaming"},
                                      {"LOCALAPPDATA", "C:/Users/coach/AppData/Local"}});
        EXPECT_EQ(userConfigDirectory(win), "C:/Users/coach/AppData/Roaming/Scorvane/");
        EXPECT_EQ(userDataDirectory(win), "C:/Users/coach/AppData/Local/Scorvane/");
        EXPECT_EQ(newDataDirectory(win), "C:/Users/coach/AppData/Local/Scorvane/My Teams/");
        // Without a local folder the roaming one holds the data too; without either, nothing.
        EXPECT_EQ(userDataDirectory(environment({{"APPDATA", "C:/R"}})), "C:/R/Scorvane/");
        EXPECT_EQ(userConfigDirectory(environment({{"HOME", "C:/h"}})), "");
        return;
    }
    const auto home = environment({{"HOME", "/home/coach"}});
    EXPECT_EQ(userConfigDirectory(home), "/home/coach/.config/scorvane/");
    EXPECT_EQ(userDataDirectory(home), "/home/coach/.local/share/scorvane/");
    EXPECT_EQ(sampleCopyDirectory(home), "/home/coach/.local/share/scorvane/Sample Season/");
    EXPECT_EQ(newDataDirectory(home), "/home/coach/.local/share/scorvane/My Teams/");
    const auto xdg = environment(
        {{"HOME", "/home/coach"}, {"XDG_CONFIG_HOME", "/cfg"}, {"XDG_DATA_HOME", "/data/"}});
    EXPECT_EQ(userConfigDirectory(xdg), "/cfg/scorvane/");
    EXPECT_EQ(userDataDirectory(xdg), "/data/scorvane/");
    // A relative folder in the variable is ignored, as the rules for these variables say.
    EXPECT_EQ(userConfigDirectory(environment({{"HOME", "/h"}, {"XDG_CONFIG_HOME", "rel"}})),
              "/h/.config/scorvane/");
    EXPECT_EQ(userConfigDirectory(environment({})), "");
}

TEST_F(Installation, TheProgramsOwnConfigurationWinsAndAMissingOneIsReportedAsEver) {
    // A build folder or a portable copy: BXFB.INI beside the program.
    prefix.write("bin/BXFB.INI", defaults.encode());
    EXPECT_EQ(locateConfiguration(program(), env).directory, program());
    EXPECT_EQ(locateConfiguration(program(), env).seedFrom, "");
    // No installation around the program: the user's folder is not looked at.
    testing::TempDir loose;
    EXPECT_EQ(locateConfiguration(loose.dir(), env).directory, loose.dir());
    Session session;
    EXPECT_EQ(runStartup(prompter, loose.dir(), env, session), StartupOutcome::Ended);
    EXPECT_EQ(prompter.shown.at(0).text, "BXFB.INI File Corrupt or Not Found");
    EXPECT_FALSE(std::filesystem::exists(u8path(userConfig())));
}

TEST_F(Installation, TheFirstStartMakesTheUsersConfigurationFromTheDefault) {
    const auto installedBefore = snapshot(prefix.path() / "share/scorvane");
    Session session;
    EXPECT_EQ(runStartup(prompter, program(), env, session), StartupOutcome::NeedDataDirectory);
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_TRUE(samePlace(session.configPath, userConfig()));
    const Bytes made = readFile(userConfig());
    ASSERT_EQ(made.size(), ConfigRecord::Length);
    ConfigRecord expected = defaults;
    expected.dataDirectory = std::string(145, ' ');
    expected.reportDirectory = std::string(145, ' ');
    EXPECT_EQ(made, expected.encode());
    EXPECT_EQ(session.paths.dataDirectory, "");
    // Nothing in the installation is written.
    EXPECT_EQ(snapshot(prefix.path() / "share/scorvane"), installedBefore);
    EXPECT_TRUE(snapshot(prefix.path() / "bin").empty());

    // The next start reads the user's file as it is now, and does not make it again.
    testing::TempDir data;
    data.write("FBTEAMS.DAT", Bytes(40, ' '));
    ConfigRecord chosen = expected;
    chosen.dataDirectory = fit(data.dir(), 145);
    writeFile(userConfig(), chosen.encode());
    session = {};
    EXPECT_EQ(runStartup(prompter, program(), env, session), StartupOutcome::Ready);
    EXPECT_EQ(session.paths.dataDirectory, data.dir());
    EXPECT_EQ(readFile(userConfig()), chosen.encode());
}

TEST_F(Installation, HelpAndSampleSeasonAreFoundInTheSharedFolder) {
    EXPECT_TRUE(samePlace(findHelpDirectory(program()), prefix.dir() + "share/scorvane/help/"));
    EXPECT_TRUE(samePlace(findHelpPage(prompter, program(), 10),
                          prefix.dir() + "share/scorvane/help/topic10.html"));
    EXPECT_TRUE(prompter.shown.empty());
    std::filesystem::create_directories(prefix.path() / "bin/help");
    EXPECT_TRUE(samePlace(findHelpDirectory(program()), program() + "help/"));

    const std::string sample = sampleSeasonDirectory(program());
    EXPECT_TRUE(samePlace(sample, prefix.dir() + "share/scorvane/sample-season/"));
    const std::string copy = sampleCopyDirectory(env);
    ASSERT_TRUE(copySampleSeason(prompter, sample, copy).isOk());
    EXPECT_EQ(snapshot(u8path(copy)), snapshot(sample));

    // A copy made before is the user's now: it is kept as it is.
    writeFile(copy + "FBTEAMS.DAT", Bytes{'m', 'i', 'n', 'e'});
    std::filesystem::remove(u8path(copy) / "FBGS1.DAT");
    ASSERT_TRUE(copySampleSeason(prompter, sample, copy).isOk());
    EXPECT_EQ(readFile(copy + "FBTEAMS.DAT"), (Bytes{'m', 'i', 'n', 'e'}));
    EXPECT_FALSE(std::filesystem::exists(u8path(copy) / "FBGS1.DAT"));
}

TEST_F(Installation, StartUpFinishesARestoreACrashInterrupted) {
    testing::TempDir program, data;
    ConfigRecord c = ConfigRecord::defaults();
    c.dataDirectory = fit(data.dir(), 145);
    program.write("BXFB.INI", c.encode());
    data.write("FBTEAMS.DAT", Bytes(40, 'o'));
    data.write("FBPN1.DAT", Bytes(201, 'o'));
    data.write("FBTEAMS.DAT.new", Bytes(80, 'n'));
    const std::string journal = "SCORVANE CHANGE 1\nW " + data.file("FBTEAMS.DAT") + "\nD " +
                                data.file("FBPN1.DAT") + "\nEND\n";
    data.write("FBCHANGE.TMP", Bytes(journal.begin(), journal.end()));
    Session session;
    EXPECT_EQ(runStartup(prompter, program.dir(), environment({}), session), StartupOutcome::Ready);
    EXPECT_EQ(snapshot(data.path()), (testing::FolderSnapshot{{"FBTEAMS.DAT", Bytes(80, 'n')}}));
}

} // namespace
} // namespace scorvane
