#pragma once

// The changes a coach makes that rewrite files, run on the sample season's first team, and what
// must hold of the data directory after any of them was stopped halfway: by a disk error or by
// the process being killed.

#include "entry/PlayerScreen.h"
#include "exchange/GameExport.h"
#include "exchange/GameImport.h"
#include "faults/FaultInjector.h"
#include "games/GameList.h"
#include "games/PlayerNumber.h"
#include "games/Roster.h"
#include "sample/SampleSeason.h"
#include "shell/FolderSnapshot.h"
#include "storage/DataFiles.h"
#include "storage/Records.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace scorvane::testing {

// The team the changes are made on.
inline constexpr int kTeam = 1;

struct Operation {
    std::string name;
    // The files the change rewrites; each is left as before or as after.
    std::vector<std::string> rewrites;
    // Whether those files change together: all as before or all as after. Otherwise they are
    // written one after the other, in the order given.
    bool together = true;
    std::function<Status(DataFiles&, Prompter&)> run;
    // Made in place through the rollback journal: a stop before the journal is gone leaves every
    // file as before, once opened again.
    bool inPlace = false;
};

// The player screen's save: in game `game`, the second player's passing changed and a kicking
// result added for him.
inline Status savePlayerResults(DataFiles& data, Prompter& prompter, int game) {
    TeamFiles files = data.team(kTeam);
    const ColumnTable columns;
    PlayerScreen screen;
    if (Status s = screen.open(files, game, columns, prompter); !s)
        return s;
    (void)screen.clickCell(1, 4);
    screen.editField(22, "5");
    (void)screen.clickCell(1, 0);
    screen.editField(0, "12");
    if (screen.ok() != PlayerScreen::Leave::GameList)
        return screen.saveStatus().isOk()
                   ? Status::error(ErrorKind::Unreadable, "the screen did not save")
                   : screen.saveStatus();
    return Status::ok();
}

// The game list loaded, then changed by `change`.
template <class Change> Status withGames(DataFiles& data, Change change) {
    TeamFiles files = data.team(kTeam);
    GameList games;
    if (Status s = games.load(files); !s)
        return s;
    return change(files, games);
}

// The Special Select mark of game 3 set, in the game and in its statistics.
inline Status markThirdGame(DataFiles& data, Prompter&) {
    return withGames(data, [](TeamFiles& files, GameList& games) {
        std::string line;
        return games.toggleMark(files, 2, ConfigRecord{}, line);
    });
}
inline Status insertFirstGame(DataFiles& data, Prompter&) {
    return withGames(data, [](TeamFiles& files, GameList& games) {
        GameRecord game;
        game.opponent = "Inserted";
        game.teamScore = {7, 0, 3, 0, 0};
        return games.insert(files, 1, game);
    });
}
inline Status deleteFirstGame(DataFiles& data, Prompter& prompter) {
    return withGames(data, [&](TeamFiles& files, GameList& games) {
        if (auto* fake = dynamic_cast<FakePrompter*>(&prompter))
            fake->answers.push_front(Answer::Ok); // the question before deleting
        bool deleted = false;
        return games.remove(files, prompter, 0, deleted);
    });
}

// The first player with contact details moves, with them, to the first free number.
inline Status changeFirstPlayerNumber(DataFiles& data, Prompter& prompter) {
    TeamFiles files = data.team(kTeam);
    Roster roster;
    if (Status s = roster.load(files); !s)
        return s;
    std::vector<PlayerInfoRecord> info;
    if (Status s = files.readAllAs(FileKind::PlayerInfo, info); !s)
        return s;
    int used = 0, free = 0;
    for (int n = kMaxPlayers; n >= 1; --n)
        if (!roster.inUse[static_cast<std::size_t>(n)])
            free = n;
    for (auto it = info.rbegin(); it != info.rend(); ++it)
        if (isPlayerNumber(it->playerNumber) &&
            roster.inUse[static_cast<std::size_t>(it->playerNumber)])
            used = it->playerNumber;
    bool changed = false;
    return changePlayerNumber(files, roster, prompter, used, digits(free), changed);
}

// The roster screen: the first player renamed, the second deleted, a phone number typed for the
// third, and the screen closed.
inline Status saveRoster(DataFiles& data, Prompter&) {
    TeamFiles files = data.team(kTeam);
    Roster roster;
    if (Status s = roster.load(files); !s)
        return s;
    RosterEditor editor(roster);
    if (Status s = editor.open(files); !s)
        return s;
    std::vector<int> used;
    for (int n = 1; n <= kMaxPlayers; ++n)
        if (roster.inUse[static_cast<std::size_t>(n)])
            used.push_back(n);
    editor.select(used.at(0));
    (void)editor.nameEntered("Renamed Player");
    editor.select(used.at(1));
    FakePrompter yes;
    yes.answers = {Answer::Yes};
    (void)editor.deletePlayer(yes);
    editor.select(used.at(2));
    editor.contactEntered(ContactField::Phone, "555-0199");
    return editor.save(files);
}

// A press-box file imported as a new game: the sample's game 2 exported, with a player of a number
// the roster does not have, so that the games, the statistics and the roster change together.
inline Status importPressBoxGame(DataFiles& data, Prompter&) {
    TeamList teams;
    if (Status s = teams.load(data); !s)
        return s;
    GameSide side;
    if (Status s = readGameSide(data, teams, kTeam, 2, side); !s)
        return s;
    PressBoxRead read = readPressBox(pressBoxXml(side, nullptr));
    if (!read.game)
        return Status::error(ErrorKind::Unreadable, read.error);
    const int ours = matchSide(*read.game, side.teamName).value_or(0);
    int free = kMaxPlayers;
    while (side.roster.inUse[static_cast<std::size_t>(free)])
        --free;
    PressBoxPlayer newcomer;
    newcomer.name = "New, Kid";
    newcomer.uni = digits(free);
    newcomer.stats["rush"] = {{"att", "3"}, {"yds", "12"}};
    read.game->teams[static_cast<std::size_t>(ours)].players.push_back(newcomer);
    ImportBuild build = buildImport(*read.game, ours, side.roster);
    if (!build.import)
        return Status::error(ErrorKind::Unreadable, build.error);
    TeamFiles files = data.team(kTeam);
    int written = 0;
    return writeImport(files, *build.import, {}, written);
}

inline void PrintTo(const Operation& op, std::ostream* out) {
    *out << op.name;
}
inline std::string nameOf(const ::testing::TestParamInfo<Operation>& info) {
    return info.param.name;
}
class OperationTest : public ::testing::TestWithParam<Operation> {};

// The disk error handler's messages among those shown (the delete question is none of them).
inline std::vector<Message> diskMessages(const FakePrompter& prompter) {
    std::vector<Message> out;
    for (const Message& m : prompter.shown)
        if (m.title == "Error" || m.title == "Disk Error")
            out.push_back(m);
    return out;
}

// Each game gets a new record: game 3's is early, so the file is replaced whole; from game 8 on
// the file is rewritten in place; game 10 is the last.
inline Operation playerScreenSave(std::string name, int game) {
    return {std::move(name),
            {"FBPS1.DAT"},
            true,
            [game](DataFiles& d, Prompter& p) { return savePlayerResults(d, p, game); },
            game > 3};
}

inline std::vector<Operation> operations() {
    return {
        playerScreenSave("PlayerScreenSave", 3),
        playerScreenSave("PlayerScreenSaveLaterGame", 8),
        playerScreenSave("PlayerScreenSaveLastGame", 10),
        {"SpecialSelectMark", {"FBGS1.DAT", "FBPS1.DAT"}, true, markThirdGame, true},
        {"GameInsert", {"FBGS1.DAT", "FBPS1.DAT"}, true, insertFirstGame},
        {"GameDelete", {"FBGS1.DAT", "FBPS1.DAT"}, true, deleteFirstGame},
        {"PlayerNumberChange",
         {"FBPS1.DAT", "FBPN1.DAT", "FBPI1.DAT"},
         true,
         changeFirstPlayerNumber},
        // The roster first, then the player information (see RosterEditor::save).
        {"RosterSave", {"FBPN1.DAT", "FBPI1.DAT"}, false, saveRoster},
        {"PressBoxImport", {"FBGS1.DAT", "FBPS1.DAT", "FBPN1.DAT"}, true, importPressBoxGame},
    };
}

// The changes made in place through the rollback journal.
inline std::vector<Operation> inPlaceOperations() {
    std::vector<Operation> ops = operations();
    std::erase_if(ops, [](const Operation& op) { return !op.inPlace; });
    return ops;
}

// A fault on every write into a data file (not its journal, not a temporary file): a change made
// in place stops once its journal is made, a write having gone halfway.
inline FaultInjector::Decide faultOnWritesIntoData(platform::Fault fault) {
    return [fault](const platform::CallInfo& call, int) {
        const std::string name = FaultInjector::nameOf(call.path);
        const bool intoData = call.call == platform::Call::Write &&
                              name != kRollbackJournalFileName && !name.ends_with(".tmp");
        return platform::Injection{intoData ? fault : platform::Fault::None, call.size / 2};
    };
}

// A data directory holding the sample season, and the team's files before and after a change.
struct Outcomes {
    TempDir dir;
    FolderSnapshot before, after;

    explicit Outcomes(const Operation& op) {
        FakePrompter prompter;
        {
            DataFiles data(paths(), prompter);
            EXPECT_TRUE(writeSampleSeason(data));
        }
        before = snapshot(dir.path());
        EXPECT_TRUE(run(op, prompter)) << op.name;
        after = snapshot(dir.path());
        EXPECT_TRUE(diskMessages(prompter).empty()) << op.name;
        for (const auto& name : op.rewrites)
            EXPECT_NE(before[name], after[name]) << op.name << " leaves " << name << " unchanged";
        reset(before);
    }
    DataPaths paths() const { return {dir.dir(), dir.dir(), dir.dir()}; }
    Status run(const Operation& op, Prompter& prompter) const {
        DataFiles data(paths(), prompter);
        return op.run(data, prompter);
    }
    bool isNew() const { return snapshot(dir.path()) == after; }
    void reset(const FolderSnapshot& files) const { restoreSnapshot(dir.path(), files); }
    // The file-system calls the change makes when nothing goes wrong, the folder set back after.
    std::vector<FaultInjector::Seen> callsOf(const Operation& op) const {
        FakePrompter prompter;
        FaultInjector counting;
        EXPECT_TRUE(run(op, prompter)) << op.name;
        reset(before);
        return counting.calls();
    }
    // The change stopped by a full disk at its first write into a data file, its rollback journal
    // made: what the folder holds then.
    FolderSnapshot stoppedWithJournal(const Operation& op) const {
        FakePrompter prompter;
        FaultInjector faults(faultOnWritesIntoData(platform::Fault::NoSpace));
        EXPECT_EQ(run(op, prompter).kind(), ErrorKind::ProgramEnded) << op.name;
        FolderSnapshot pending = snapshot(dir.path());
        EXPECT_TRUE(pending.count(kRollbackJournalFileName)) << op.name;
        return pending;
    }
};

// The opening of the data directory, which rolls back a change left with its journal.
inline const Operation kReopen{"reopen", {}, true, [](DataFiles& data, Prompter&) {
                                   return data.team(kTeam).openFile(FileKind::Stats);
                               }};

// What must hold once the data directory has been opened again after a stopped change: every
// file the change rewrites as before or as after and every other file as before, files changed
// together all on the same side (of files written one after the other, never a later one new
// and an earlier one old), the statistics in game order and naming only games the game file
// holds, and no journal left. A change stopped by an error leaves no temporary file either; one
// stopped by the end of the process may leave the temporary file it was writing, which the next
// replacement of that file overwrites.
enum class Stopped { ByError, ByEnd };
inline ::testing::AssertionResult holdsOldOrNew(const Operation& op, const Outcomes& o,
                                                Stopped stopped = Stopped::ByError) {
    {
        FakePrompter prompter;
        DataFiles reopened(o.paths(), prompter);
        TeamFiles files = reopened.team(kTeam);
        if (!files.openFile(FileKind::Stats))
            return ::testing::AssertionFailure() << "the files cannot be opened again";
        // Only a change rolled back is told of.
        for (const Message& m : prompter.shown)
            if (m != unfinishedChangeMessage(o.paths().dataDirectory))
                return ::testing::AssertionFailure() << "opening shows " << m.text;
    }
    const FolderSnapshot now = snapshot(o.dir.path());
    const auto of = [](const FolderSnapshot& s, const std::string& name) {
        return s.count(name) ? s.at(name) : Bytes{};
    };
    for (const auto& [name, bytes] : now)
        if ((name.ends_with(".tmp") && stopped == Stopped::ByError) || name == kJournalFileName ||
            name == kRollbackJournalFileName || name == kRefusedJournalFileName)
            return ::testing::AssertionFailure() << name << " was left behind";
    for (const auto& [name, bytes] : o.before)
        if (std::count(op.rewrites.begin(), op.rewrites.end(), name) == 0 && of(now, name) != bytes)
            return ::testing::AssertionFailure() << name << " changed";
    std::vector<bool> isNew;
    for (const auto& name : op.rewrites) {
        const Bytes file = of(now, name);
        if (file != of(o.before, name) && file != of(o.after, name))
            return ::testing::AssertionFailure()
                   << name << " is neither as before nor as after (" << file.size() << " bytes)";
        isNew.push_back(file == of(o.after, name));
    }
    for (std::size_t i = 1; i < isNew.size(); ++i) {
        if (op.together && isNew[i] != isNew[0])
            return ::testing::AssertionFailure() << "the files changed together disagree";
        if (!op.together && isNew[i] && !isNew[i - 1])
            return ::testing::AssertionFailure() << "a later file changed before an earlier one";
    }

    const ByteView stats = now.at("FBPS1.DAT"), games = now.at("FBGS1.DAT");
    std::vector<int> numbers; // the statistics' game numbers in file order
    for (std::size_t at = 0; at + StatRecord::Length <= stats.size(); at += StatRecord::Length)
        numbers.push_back(StatHeader::decode(stats.subspan(at, 8)).gameNumber);
    if (!std::is_sorted(numbers.begin(), numbers.end()))
        return ::testing::AssertionFailure() << "the statistics are out of game order";
    int liveGames = 0;
    for (std::size_t at = 0; at + GameRecord::Length <= games.size(); at += GameRecord::Length)
        liveGames += GameRecord::decode(games.subspan(at, GameRecord::Length)).isLive();
    if (!numbers.empty() && (numbers.front() < 1 || numbers.back() > liveGames))
        return ::testing::AssertionFailure()
               << "statistics of game " << numbers.back() << " but " << liveGames << " games";
    return ::testing::AssertionSuccess();
}

} // namespace scorvane::testing
