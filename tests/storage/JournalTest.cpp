// The journal of files replaced together, as the next opening of the data directory finds it.

#include "faults/FaultInjector.h"
#include "storage/ByteHelpers.h"
#include "storage/DataFiles.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

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

// --- the rollback journal of changes made in place ---------------------------------------------

namespace {

// Two files of a data directory, and the journal of a change of both that a full disk stopped at
// its first write into them: the journal is whole, the statistics file half written.
struct PendingChange {
    TempDir dir;
    Bytes stats = pattern(4000), games = Bytes(1000, 'g');
    Bytes journal;
    std::vector<InPlaceChange> change{
        {dir.file("FBPS1.DAT"), {{1000, Bytes(200, 0xEE)}, {3900, Bytes(300, 0xAA)}}},
        {dir.file("FBGS1.DAT"), {{0, Bytes(50, 'G')}}}};

    PendingChange() {
        dir.write("FBPS1.DAT", stats);
        dir.write("FBGS1.DAT", games);
        {
            FaultInjector full(
                faultOn(platform::Call::Write, "FBPS1.DAT", platform::Fault::NoSpace));
            EXPECT_FALSE(changeInPlace(change, dir.file(kRollbackJournalFileName)));
        }
        journal = dir.read(kRollbackJournalFileName);
    }
    // Opens the data directory as the program does: what it shows, if anything.
    std::vector<Message> open() const {
        FakePrompter prompter;
        DataFiles data(DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter);
        EXPECT_TRUE(data.team(1).openFile(FileKind::Stats));
        return prompter.shown;
    }
};

Bytes first(const Bytes& bytes, std::size_t n) {
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(n));
}

// The journal with its ending made again over a changed body: its length and hash.
Bytes resealed(Bytes journal) {
    journal.resize(journal.size() - 24);
    std::uint64_t hash = 0xcbf29ce484222325ULL; // FNV-1a over little-endian words, zero-padded
    for (std::size_t at = 0; at < journal.size(); at += 8) {
        std::uint64_t word = 0;
        for (std::size_t i = std::min<std::size_t>(8, journal.size() - at); i-- > 0;)
            word = (word << 8) | journal[at + i];
        hash = (hash ^ word) * 0x100000001b3ULL;
    }
    const std::uint64_t length = journal.size();
    for (char c : std::string("SVUNDEND"))
        journal.push_back(static_cast<std::uint8_t>(c));
    for (std::uint64_t v : {length, hash})
        for (int i = 0; i < 8; ++i)
            journal.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
    return journal;
}

} // namespace

TEST(RollbackJournal, AnInterruptedChangeIsRolledBackAndAFinishedOneStays) {
    PendingChange p;
    ASSERT_NE(p.dir.read("FBPS1.DAT"), p.stats); // half written
    const std::vector<Message> told = p.open();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].title, "Unfinished Change");
    EXPECT_EQ(told[0].text, "The last change to the files in " + platform::shownPath(p.dir.dir()) +
                                " was not finished when the program stopped, and has been undone: "
                                "the files are as they were before it. Please make that change "
                                "again.");
    EXPECT_EQ(p.dir.read("FBPS1.DAT"), p.stats);
    EXPECT_EQ(p.dir.read("FBGS1.DAT"), p.games);
    EXPECT_FALSE(p.dir.exists(kRollbackJournalFileName));

    ASSERT_TRUE(changeInPlace(p.change, p.dir.file(kRollbackJournalFileName)));
    Bytes after = p.stats;
    std::fill(after.begin() + 1000, after.begin() + 1200, 0xEE);
    after.resize(3900);
    after.resize(4200, 0xAA);
    EXPECT_EQ(p.dir.read("FBPS1.DAT"), after);
    Bytes games = p.games;
    std::fill(games.begin(), games.begin() + 50, 'G');
    EXPECT_EQ(p.dir.read("FBGS1.DAT"), games);
    EXPECT_FALSE(p.dir.exists(kRollbackJournalFileName));
    EXPECT_TRUE(p.open().empty());
    EXPECT_EQ(p.dir.read("FBPS1.DAT"), after);
}

TEST(RollbackJournal, AJournalThatDoesNotFitIsNeverApplied) {
    struct Case {
        std::string name;
        std::function<void(PendingChange&)> damage;
        std::string said; // the refusal's words; empty: cut short, so never begun and dropped
    };
    const auto journalOf = [](std::function<Bytes(const Bytes&)> made) {
        return [made](PendingChange& p) { p.dir.write(kRollbackJournalFileName, made(p.journal)); };
    };
    const std::vector<Case> cases{
        {"foreign", journalOf([](const Bytes&) { return pattern(300); }),
         "is not a journal of this program."},
        {"cut short in its ending",
         journalOf([](const Bytes& j) { return first(j, j.size() - 1); }), ""},
        {"cut short in its places",
         journalOf([](const Bytes& j) { return first(j, j.size() / 2); }), ""},
        {"cut short in its name", journalOf([](const Bytes& j) { return first(j, 5); }), ""},
        {"another file's", [](PendingChange& p) { p.dir.write("FBPS1.DAT", Bytes(4000, 'z')); },
         "it was written for another file than FBPS1.DAT."},
        {"a file gone", [](PendingChange& p) { std::filesystem::remove(p.dir.file("FBGS1.DAT")); },
         "the file FBGS1.DAT it names is not there."},
        // The statistics file's original length, 8 bytes after its name, made 100.
        {"a length that does not fit", journalOf([](Bytes j) {
             j[8 + 4 + 2 + 9] = 100;
             j[8 + 4 + 2 + 9 + 1] = 0;
             return resealed(j);
         }),
         "its places do not fit the length of FBPS1.DAT."},
    };
    for (const Case& c : cases) {
        PendingChange p;
        c.damage(p);
        const Bytes journal = p.dir.read(kRollbackJournalFileName);
        const Bytes stats = p.dir.read("FBPS1.DAT"), games = p.dir.read("FBGS1.DAT");
        const std::vector<Message> shown = p.open();
        EXPECT_EQ(p.dir.read("FBPS1.DAT"), stats) << c.name;
        EXPECT_EQ(p.dir.read("FBGS1.DAT"), games) << c.name;
        EXPECT_FALSE(p.dir.exists(kRollbackJournalFileName)) << c.name;
        if (c.said.empty()) {
            EXPECT_EQ(shown, std::vector{unfinishedChangeMessage(p.dir.dir())}) << c.name;
            EXPECT_FALSE(p.dir.exists(kRefusedJournalFileName)) << c.name;
            continue;
        }
        ASSERT_EQ(shown.size(), 1u) << c.name;
        EXPECT_EQ(shown[0].title, "Unfinished Change");
        EXPECT_NE(shown[0].text.find(c.said), std::string::npos) << c.name << ": " << shown[0].text;
        EXPECT_TRUE(
            shown[0].text.ends_with("It was not applied, and has been set aside as " +
                                    platform::shownPath(p.dir.file(kRefusedJournalFileName)) + "."))
            << shown[0].text;
        EXPECT_EQ(p.dir.read(kRefusedJournalFileName), journal) << c.name;
    }
}
