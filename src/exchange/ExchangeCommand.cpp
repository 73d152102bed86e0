#include "ExchangeCommand.h"

#include "GameExport.h"
#include "GameImport.h"
#include "PressBox.h"
#include "SiteText.h"

#include "reports/CommandArguments.h"
#include "reports/ReportCommand.h"
#include "storage/ConfigRecord.h"
#include "storage/Cp1252.h"
#include "storage/DataFiles.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"
#include "storage/SiteId.h"
#include "storage/TeamList.h"

#include <optional>
#include <set>

namespace scorvane {

namespace {

// Both commands stop with exit status 1 on any problem, a bad argument included.
struct Failure {
    std::string message;
};

std::optional<Failure> failed(const std::optional<CommandFailure>& f) {
    if (!f)
        return std::nullopt;
    return Failure{f->message};
}

// The disk error handler's messages are kept, not shown: the command names the failure in its
// own one line. Nothing is retried and no question is answered yes.
class CommandPrompter : public Prompter {
public:
    Answer ask(const Message& message) override {
        switch (message.buttons) {
        case Buttons::Ok:
            return Answer::Ok;
        case Buttons::OkCancel:
        case Buttons::RetryCancel:
            return Answer::Cancel;
        case Buttons::YesNo:
            return Answer::No;
        }
        return Answer::Cancel;
    }
    void endProgram(int) override {}
};

// The options both commands share.
struct Common {
    std::optional<std::string> configDirectory;
    std::optional<std::string> dataDirectory;
    int team = 1;
};

const std::set<std::string> kCommonOptions = {"--config", "--data", "--team"};

std::optional<Failure> commonOptions(const CommandArguments& args, Common& o) {
    if (const auto* v = args.value("--config"))
        o.configDirectory = *v;
    if (const auto* v = args.value("--data"))
        o.dataDirectory = *v;
    if (const auto* v = args.value("--team"))
        return failed(numberIn("--team", *v, 1, kMaxTeams, o.team, "a team number 1 to 100"));
    return std::nullopt;
}

// The data and report directories, as the report command finds them.
std::optional<Failure> directories(const Common& o, const std::string& programDirectory,
                                   DataPaths& paths) {
    ConfigRecord config;
    if (auto f = readCommandConfiguration(o.configDirectory, programDirectory,
                                          o.dataDirectory && !o.configDirectory, config))
        return failed(f);
    paths.configDirectory = normalizeDirectory(o.configDirectory.value_or(programDirectory));
    if (o.dataDirectory) {
        paths.dataDirectory = normalizeDirectory(*o.dataDirectory);
        paths.reportDirectory = paths.dataDirectory;
    } else {
        paths.dataDirectory = cp1252ToUtf8(normalizeDirectory(config.dataDirectory));
        paths.reportDirectory = cp1252ToUtf8(normalizeDirectory(config.reportDirectory));
        if (paths.reportDirectory.empty())
            paths.reportDirectory = paths.dataDirectory;
    }
    if (paths.dataDirectory.empty())
        return Failure{"The configuration names no data directory; give one with --data"};
    if (!directoryExists(paths.dataDirectory))
        return Failure{"The data directory " + platform::shownPath(paths.dataDirectory) +
                       " does not exist"};
    if (!fileExists(fileName(FileKind::TeamList, paths, 0)))
        return Failure{"The folder " + platform::shownPath(paths.dataDirectory) +
                       " holds no team list: it is no data directory"};
    return std::nullopt;
}

// Reading must not write: a change a crash interrupted would be finished by the first file
// opened, so a command that only reads leaves such a directory to the program.
std::optional<Failure> noPendingChange(const DataPaths& paths) {
    if (fileExists(paths.dataDirectory + kJournalFileName) ||
        fileExists(paths.dataDirectory + kRollbackJournalFileName))
        return Failure{"A change of the data directory was interrupted; start Scorvane once to "
                       "finish it"};
    return std::nullopt;
}

std::optional<Failure> statusFailure(const Status& s) {
    if (s)
        return std::nullopt;
    return Failure{s.message().empty() ? std::string("The files could not be read") : s.message()};
}

// --- export ------------------------------------------------------------------------------------

std::optional<Failure> exportGame(const std::vector<std::string>& args, std::ostream& out,
                                  const std::string& programDirectory) {
    CommandArguments parsed;
    std::set<std::string> options = kCommonOptions;
    options.insert({"--export-game", "--format", "--output"});
    if (auto f = splitArguments(args, {}, options, {}, parsed))
        return failed(f);
    if (parsed.help) {
        out << reportCommandUsage();
        return std::nullopt;
    }
    Common common;
    if (auto f = commonOptions(parsed, common))
        return f;
    int game = 0;
    const auto* gameText = parsed.value("--export-game");
    if (auto f = failed(numberIn("--export-game", gameText ? *gameText : "", 1, kMaxGames, game,
                                 "a game number from 1 to 999")))
        return f;
    const auto* format = parsed.value("--format");
    if (!format)
        return Failure{"--format is required: fbxml or hstext"};
    if (*format != "fbxml" && *format != "hstext")
        return Failure{"--format: \"" + *format + "\" is not fbxml or hstext"};
    std::optional<std::string> output;
    if (const auto* v = parsed.value("--output"))
        output = *v;

    DataPaths paths;
    if (auto f = directories(common, programDirectory, paths))
        return f;
    if (output && (insideFolder(*output, paths.dataDirectory) ||
                   insideFolder(*output, paths.reportDirectory)))
        return Failure{"--output: exports are not written into the data or report directory"};
    if (auto f = noPendingChange(paths))
        return f;

    CommandPrompter prompter;
    DataFiles data(paths, prompter);
    TeamList teams;
    if (auto f = statusFailure(teams.load(data)))
        return f;
    GameSide side;
    if (auto f = statusFailure(readGameSide(data, teams, common.team, game, side)))
        return f;
    std::string text;
    if (*format == "fbxml") {
        const std::optional<GameSide> opponent = findOpponentSide(data, teams, side);
        text = pressBoxXml(side, opponent ? &*opponent : nullptr);
    } else {
        std::string id;
        if (Status s = readSiteId(paths, common.team, id); !s)
            return Failure{"Cannot read " +
                           platform::shownPath(siteIdFileName(paths, common.team)) + ": " +
                           s.message()};
        if (const auto problem = siteIdProblem(id))
            return Failure{platform::shownPath(siteIdFileName(paths, common.team)) + ": " +
                           *problem + " Correct it in the team's name screen."};
        text = siteText(side, id);
    }
    return failed(writeReportText(output, text, out));
}

// --- import ------------------------------------------------------------------------------------

// The team's roster as the file holds it, read without creating or changing it.
Status readRoster(const DataPaths& paths, int team, Roster& roster) {
    std::vector<Bytes> records;
    bool exists = false;
    if (Status s = readRecords(fileName(FileKind::Roster, paths, team), RosterRecord::Length,
                               records, exists);
        !s)
        return s;
    roster = Roster{};
    for (const Bytes& b : records) {
        const RosterRecord r = RosterRecord::decode(b);
        if (r.playerNumber >= 1 && r.playerNumber <= kMaxPlayers) {
            roster.inUse[static_cast<std::size_t>(r.playerNumber)] = true;
            roster.names[static_cast<std::size_t>(r.playerNumber)] =
                fit(r.playerName, width::playerName);
        }
    }
    return Status::ok();
}

// Whether the team can take the game: the game to replace is live, or a new game is within 999.
std::optional<Failure> checkTarget(const DataPaths& paths, int team, int replaceGame) {
    std::vector<Bytes> records;
    bool exists = false;
    if (auto f = statusFailure(readRecords(fileName(FileKind::Games, paths, team),
                                           GameRecord::Length, records, exists)))
        return f;
    int live = 0;
    bool found = false;
    for (const Bytes& b : records) {
        const GameRecord g = GameRecord::decode(b);
        live += g.isLive() ? 1 : 0;
        found = found || (g.isLive() && g.gameNumber == replaceGame);
    }
    if (replaceGame > 0 && !found)
        return Failure{"--replace: the team has no game " + digits(replaceGame)};
    if (replaceGame == 0 && live >= kMaxGames)
        return Failure{"The team has " + digits(live) + " games; a team keeps 999 at most"};
    return std::nullopt;
}

// Our side of the file: the one --side names, else the one whose name or id is the team's.
std::optional<Failure> ourSide(const PressBoxGame& game, const CommandArguments& parsed,
                               const TeamRecord& team, int& side) {
    if (const auto* v = parsed.value("--side")) {
        if (*v != "V" && *v != "H" && *v != "v" && *v != "h")
            return Failure{"--side: \"" + *v + "\" is not V (visitors) or H (home)"};
        const char vh = (*v == "V" || *v == "v") ? 'V' : 'H';
        for (std::size_t i = 0; i < game.teams.size(); ++i)
            if (game.teams[i].vh == vh) {
                side = static_cast<int>(i);
                return std::nullopt;
            }
        return Failure{std::string("--side: the file has no ") + (vh == 'V' ? "visiting" : "home") +
                       " team"};
    }
    std::optional<int> found = matchSide(game, trimRight(team.teamName));
    if (!found)
        found = matchSide(game, trimRight(team.shortName));
    if (!found)
        return Failure{"Which team of the file is " + cp1252ToUtf8(trimRight(team.teamName)) +
                       " cannot be told from the names; give --side V or --side H"};
    side = *found;
    return std::nullopt;
}

std::optional<Failure> importGame(const std::vector<std::string>& args, std::ostream& out,
                                  const std::string& programDirectory) {
    CommandArguments parsed;
    std::set<std::string> options = kCommonOptions;
    options.insert({"--xml", "--side", "--replace"});
    if (auto f = splitArguments(args, {"--dry-run", "--no-roster"}, options, {}, parsed))
        return failed(f);
    if (parsed.help) {
        out << importCommandUsage();
        return std::nullopt;
    }
    if (!parsed.value("--team"))
        return Failure{"--team is required"};
    Common common;
    if (auto f = commonOptions(parsed, common))
        return f;
    const auto* xmlPath = parsed.value("--xml");
    if (!xmlPath)
        return Failure{"--xml is required: the press-box file to import"};
    ImportTarget target;
    target.addToRoster = !parsed.has("--no-roster");
    if (const auto* v = parsed.value("--replace"))
        if (auto f = failed(numberIn("--replace", *v, 1, kMaxGames, target.replaceGame,
                                     "a game number from 1 to 999")))
            return f;
    const bool dryRun = parsed.has("--dry-run");

    DataPaths paths;
    if (auto f = directories(common, programDirectory, paths))
        return f;
    if (dryRun)
        if (auto f = noPendingChange(paths))
            return f;

    Bytes bytes;
    bool exists = false;
    if (Status s = readWholeFile(*xmlPath, bytes, exists); !s)
        return Failure{"Cannot read " + platform::shownPath(*xmlPath) + ": " + s.message()};
    if (!exists)
        return Failure{"There is no file " + platform::shownPath(*xmlPath)};
    const PressBoxRead read = readPressBox(std::string(bytes.begin(), bytes.end()));
    if (!read.game)
        return Failure{platform::shownPath(*xmlPath) + ": " + read.error};

    CommandPrompter prompter;
    DataFiles data(paths, prompter);
    TeamList teams;
    if (auto f = statusFailure(teams.load(data)))
        return f;
    int side = 0;
    if (auto f = ourSide(*read.game, parsed, teams.team(common.team), side))
        return f;
    Roster roster;
    if (auto f = statusFailure(readRoster(paths, common.team, roster)))
        return f;
    if (auto f = checkTarget(paths, common.team, target.replaceGame))
        return f;
    const ImportBuild build = buildImport(*read.game, side, roster);
    if (!build.import)
        return Failure{build.error};

    out << previewText(*build.import);
    if (dryRun) {
        out << "Dry run: nothing was written.\n";
        return std::nullopt;
    }
    TeamFiles files = data.team(common.team);
    int written = 0;
    if (auto f = statusFailure(writeImport(files, *build.import, target, written)))
        return f;
    out << "Imported as game " << written << ".\n";
    return std::nullopt;
}

int finish(const std::optional<Failure>& failure, const char* program, std::ostream& err) {
    if (!failure)
        return kCommandOk;
    err << program << ": " << failure->message << '\n';
    return kCommandFailed;
}

} // namespace

bool isExportCommand(const std::vector<std::string>& args) {
    for (const std::string& a : args)
        if (a == "--export-game" || a.rfind("--export-game=", 0) == 0)
            return true;
    return false;
}

int runExportCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                     const std::string& programDirectory) {
    return finish(exportGame(args, out, programDirectory), "scorvane-report", err);
}

int runImportCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                     const std::string& programDirectory) {
    return finish(importGame(args, out, programDirectory), "scorvane-import", err);
}

std::string importCommandUsage() {
    return "usage: scorvane-import [--config DIR] [--data DIR] --team N --xml FILE\n"
           "                       [--side V|H] [--replace GAME] [--dry-run] [--no-roster]\n"
           "\n"
           "Takes a press-box XML game file over as a game of team N: a new game after the\n"
           "last one, or with --replace the results of game GAME (its game record is kept).\n"
           "Our side of the file is the team whose name or id is the team's long or short\n"
           "name, or the visitors (V) or home team (H) that --side names. The preview (the\n"
           "game, each player's figures, what is not imported, what is left to enter by hand)\n"
           "is printed first; --dry-run prints it and writes nothing. Players whose numbers\n"
           "the roster does not have are added to it with the file's names, unless\n"
           "--no-roster. --config names the folder of BXFB.INI (default: the folder of this\n"
           "program); --data names another data directory.\n"
           "Exit status: 0 done, 1 refused (nothing was written).\n";
}

} // namespace scorvane
