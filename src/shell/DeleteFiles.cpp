#include "DeleteFiles.h"

#include "shell/Backup.h"
#include "storage/Cp1252.h"
#include "storage/DiskError.h"
#include "storage/FolderCopy.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"
#include "storage/SiteId.h"

namespace scorvane {

namespace {

constexpr const char* kTitle = "Delete Files";
constexpr FileKind kTeamKinds[] = {FileKind::Roster, FileKind::PlayerInfo, FileKind::Games,
                                   FileKind::Stats};

int recordsIn(const std::string& path, FileKind kind, bool& exists) {
    long long size = 0;
    if (!platform::sizeOfFile(path, size))
        return 0;
    exists = true;
    return static_cast<int>(size / recordLength(kind));
}

std::string counted(int n, const char* one, const char* many) {
    return digits(n) + " " + (n == 1 ? one : many);
}

} // namespace

TeamFileCounts countTeamFiles(const DataPaths& paths, int team) {
    TeamFileCounts c;
    c.players = recordsIn(fileName(FileKind::Roster, paths, team), FileKind::Roster, c.anyFile);
    c.playerInfo =
        recordsIn(fileName(FileKind::PlayerInfo, paths, team), FileKind::PlayerInfo, c.anyFile);
    c.games = recordsIn(fileName(FileKind::Games, paths, team), FileKind::Games, c.anyFile);
    c.statistics = recordsIn(fileName(FileKind::Stats, paths, team), FileKind::Stats, c.anyFile);
    return c;
}

std::string describeTeamFiles(const TeamFileCounts& counts) {
    if (!counts.anyFile)
        return "No files";
    return counted(counts.players, "player", "players") + ", " +
           counted(counts.games, "game", "games") + ", " +
           counted(counts.statistics, "statistics record", "statistics records");
}

Message deleteFilesQuestion(int team, const std::string& teamNameUtf8) {
    const std::string who = teamNameUtf8.empty() ? "team " + digits(team)
                                                 : teamNameUtf8 + " (team " + digits(team) + ")";
    return {"Delete the roster, player information, games and statistics of " + who +
                "?  Its line in the team list becomes empty.  This cannot be undone.",
            kTitle, Buttons::YesNo, Icon::Question, Answer::No};
}

DeleteResult deleteTeamFiles(DataFiles& files, TeamSelection& teams, Prompter& prompter, int team) {
    if (team < 1 || team > kMaxTeams)
        return DeleteResult::Failed;
    if (prompter.ask(deleteFilesQuestion(team, cp1252ToUtf8(teams.teamName(team)))) != Answer::Yes)
        return DeleteResult::Declined;

    const DataPaths paths = files.paths();
    if (!files.finishInterruptedReplacement())
        return DeleteResult::Failed;
    files.closeAll();
    const std::string listPath = fileName(FileKind::TeamList, paths, 0);
    Bytes list;
    bool listExists = false;
    Status s = withDiskErrors(prompter, [&] {
        if (Status done = finishInterruptedChanges(paths); !done)
            return done;
        return readWholeFile(listPath, list, listExists);
    });
    std::vector<FileChange> changes;
    const std::size_t offset = static_cast<std::size_t>(team - 1) * TeamRecord::Length;
    if (s && offset + TeamRecord::Length <= list.size()) {
        std::fill(list.begin() + static_cast<std::ptrdiff_t>(offset),
                  list.begin() + static_cast<std::ptrdiff_t>(offset + TeamRecord::Length), ' ');
        changes.push_back({listPath, list});
    }
    for (FileKind kind : kTeamKinds)
        changes.push_back({fileName(kind, paths, team), std::nullopt});
    // The team's site id goes with it: a new team in the slot must not upload under it.
    changes.push_back({siteIdFileName(paths, team), std::nullopt});
    bool committed = false;
    if (s)
        s = applyChangesTogether(changes, changeJournalPath(paths), committed);
    files.closeAll();
    if (!s) {
        if (s.kind() != ErrorKind::ProgramEnded)
            prompter.ask({(committed ? "The files could not all be deleted: " + s.message() +
                                           ".  This is finished the next time the program starts."
                                     : "The files could not be deleted: " + s.message() +
                                           ".  Nothing was changed."),
                          kTitle, Buttons::Ok, Icon::Warning, Answer::Ok});
        return DeleteResult::Failed;
    }
    teams.setResetMark();
    (void)teams.load(files); // a disk error was shown; a short list reads as unnamed teams
    return DeleteResult::Deleted;
}

} // namespace scorvane
