#include "ReportCommand.h"

#include "CommandArguments.h"
#include "GameLog.h"
#include "GameScores.h"
#include "ReportDocument.h"
#include "ReportFormats.h"
#include "ReportOutput.h"
#include "Season.h"
#include "Selection.h"
#include "Standings.h"
#include "Statistics.h"
#include "TeamRecord.h"

#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"
#include "storage/Cp1252.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace scorvane {
namespace {

// A refusal of the command: its one line for the error stream and its exit code.
using Failure = CommandFailure;

struct Options {
    std::optional<std::string> configDirectory;
    std::optional<std::string> dataDirectory;
    std::vector<int> teams;
    char category = 0;
    int fromGame = kLowestGame;
    int toGame = kHighestGame;
    std::optional<std::vector<int>> types;
    bool special = false;
    std::optional<std::string> player;
    std::optional<std::string> reportName;
    std::optional<std::vector<int>> columns;
    std::optional<int> sortColumn;
    std::optional<char> direction;
    int top = kAllPlayers;
    int linesPerPage = kDefaultLinesPerPage;
    std::string format = "text";
    std::optional<std::string> output;
    bool append = false;
    bool shortForm = false; // game scores: one summary line per game
    bool byGame = false;    // a player's game log
    bool help = false;
};

const std::set<std::string> kValueOptions = {
    "--config", "--data",    "--team", "--category", "--from",   "--to",     "--types", "--player",
    "--report", "--columns", "--sort", "--top",      "--format", "--output", "--lines"};

std::optional<Failure> parse(const std::vector<std::string>& args, Options& o) {
    CommandArguments parsed;
    if (auto f = splitArguments(
            args, {"--special", "--asc", "--desc", "--append", "--short", "--by-game"},
            kValueOptions, {}, parsed))
        return f;
    o.help = parsed.help;
    o.special = parsed.has("--special");
    o.shortForm = parsed.has("--short");
    o.byGame = parsed.has("--by-game");
    if (auto f = sortDirection(parsed, o.direction))
        return f;
    const std::map<std::string, std::string>& values = parsed.values;
    if (o.help)
        return std::nullopt;

    auto get = [&](const char* name) -> const std::string* {
        const auto it = values.find(name);
        return it == values.end() ? nullptr : &it->second;
    };
    if (const auto* v = get("--config"))
        o.configDirectory = *v;
    if (const auto* v = get("--data"))
        o.dataDirectory = *v;

    const auto* teams = get("--team");
    if (!teams)
        return usageError("--team is required");
    if (auto f = numberList("--team", *teams, 1, kMaxTeams, o.teams, "a team number 1 to 100"))
        return f;

    const auto* category = get("--category");
    if (!category)
        return usageError("--category is required");
    const std::string letter = *category;
    if (letter.size() != 1 ||
        std::string("PCRDKTEGS")
                .find(static_cast<char>(std::toupper(static_cast<unsigned char>(letter[0])))) ==
            std::string::npos)
        return usageError("--category: \"" + letter + "\" is not one of P, C, R, D, K, T, E, G, S");
    o.category = static_cast<char>(std::toupper(static_cast<unsigned char>(letter[0])));

    if (auto f = gameOptions(parsed, o.fromGame, o.toGame, o.types))
        return f;
    if (const auto* v = get("--player")) {
        if (trim(*v).empty())
            return usageError("--player needs a player number or name");
        o.player = *v;
    }
    if (const auto* v = get("--report"))
        o.reportName = *v;

    // The team record, the game scores and the standings are no statistics reports: they have no
    // columns, sort, saved formats or players.
    const bool record = o.category == 'E' || o.category == 'G' || o.category == 'S';
    const std::string recordName = o.category == 'E'   ? "the team record (E)"
                                   : o.category == 'G' ? "the game scores (G)"
                                                       : "the standings (S)";
    const int columnCount = record ? 0 : ColumnTable::columnCount(o.category);
    const std::string codeRange =
        "a column code 1 to " + digits(columnCount) + " of category " + std::string(1, o.category);
    if (const auto* v = get("--columns")) {
        if (record)
            return usageError("--columns does not apply to " + recordName);
        std::vector<int> codes;
        if (auto f = numberList("--columns", *v, 1, columnCount, codes, codeRange))
            return f;
        if (codes.size() > ConfigRecord::ColumnListLength)
            return usageError("--columns: a report has at most 31 columns");
        o.columns = codes;
    }
    if (const auto* v = get("--sort")) {
        if (record)
            return usageError("--sort does not apply to " + recordName);
        int code = 0;
        if (auto f = numberIn("--sort", *v, 1, columnCount, code, codeRange))
            return f;
        o.sortColumn = code;
    }
    if (record && (o.direction || o.reportName || o.player))
        return usageError(std::string(o.direction    ? "--asc/--desc"
                                      : o.reportName ? "--report"
                                                     : "--player") +
                          " does not apply to " + recordName);
    if (const auto* v = get("--top")) {
        if (record)
            return usageError("--top does not apply to " + recordName);
        if (auto f = numberIn("--top", *v, 1, kAllPlayers, o.top,
                              "a number of players 1 to 999 (Top Players Invalid)"))
            return f;
    }
    if (auto f = outputOptions(parsed, o.linesPerPage, o.format, o.output, o.append))
        return f;
    if (o.shortForm && o.category != 'G')
        return usageError("--short applies only to the game scores (G)");
    if (o.byGame && (record || !o.player))
        return usageError(
            "--by-game needs a statistics category (P, C, R, D, K or T) and --player");
    if ((o.category == 'G' || o.byGame) && o.teams.size() > 1)
        return usageError(std::string(o.byGame ? "--by-game" : "the game scores (G)") +
                          " take one team");
    return std::nullopt;
}

// --- configuration and directories ---------------------------------------------------------

std::optional<Failure> readConfiguration(const Options& o, const std::string& programDirectory,
                                         ConfigRecord& config) {
    // Reading a data directory named on the command line needs no configuration: the default
    // names of the game types and user columns serve.
    return readCommandConfiguration(o.configDirectory, programDirectory,
                                    o.dataDirectory && !o.configDirectory, config);
}

DataPaths directories(const Options& o, const ConfigRecord& config,
                      const std::string& programDirectory) {
    DataPaths paths;
    paths.configDirectory = normalizeDirectory(o.configDirectory.value_or(programDirectory));
    if (o.dataDirectory) {
        // A data directory of its own keeps its saved report formats beside its data.
        paths.dataDirectory = normalizeDirectory(*o.dataDirectory);
        paths.reportDirectory = paths.dataDirectory;
        return paths;
    }
    paths.dataDirectory = cp1252ToUtf8(normalizeDirectory(config.dataDirectory));
    paths.reportDirectory = cp1252ToUtf8(normalizeDirectory(config.reportDirectory));
    if (paths.reportDirectory.empty())
        paths.reportDirectory = paths.dataDirectory;
    return paths;
}

std::string describeLine(const OverflowNote& note, char category, const ColumnTable& table,
                         const std::vector<TeamSeason>& teams) {
    std::string who = note.playerNumber == 0 ? "the Totals line"
                                             : "player " + digits(note.playerNumber) + " " +
                                                   cp1252ToUtf8(trimRight(note.playerName));
    if (note.playerNumber != 0 && teams.size() > 1)
        for (const auto& t : teams)
            if (t.number == note.teamNumber)
                who += " (" + cp1252ToUtf8(t.name) + ")";
    return "Overflow: column " + digits(note.column) + " \"" +
           cp1252ToUtf8(trim(columnHeading(category, note.column, table))) + "\" of " + who;
}

std::optional<Failure> run(const Options& o, std::ostream& out, std::ostream& err,
                           const std::string& programDirectory) {
    ConfigRecord config;
    if (auto f = readConfiguration(o, programDirectory, config))
        return f;
    const DataPaths paths = directories(o, config, programDirectory);
    if (paths.dataDirectory.empty())
        return Failure{"The configuration names no data directory; give one with --data"};
    if (!directoryExists(paths.dataDirectory))
        return Failure{"The data directory " + platform::shownPath(paths.dataDirectory) +
                       " does not exist"};
    if (o.output && (insideFolder(*o.output, paths.dataDirectory) ||
                     insideFolder(*o.output, paths.reportDirectory)))
        return usageError("--output: reports are not written into the data or report directory");

    std::vector<TeamSeason> teams;
    for (int number : o.teams) {
        TeamSeason season;
        if (Status s = readTeamSeason(paths, number, season); !s)
            return Failure{s.message(),
                           s.kind() == ErrorKind::RecordRange ? kCommandBadUsage : kCommandFailed};
        teams.push_back(std::move(season));
    }

    Selection selection = commandSelection(o.fromGame, o.toGame, o.types, o.special);
    if (o.player) {
        if (const auto n = wholeNumber(trim(*o.player)))
            selection.playerNumber = static_cast<int>(*n);
        else
            selection.playerName = selectionPlayerName(utf8ToCp1252(*o.player));
    }

    ReportHeading heading;
    heading.team = teamsLine(teams);
    heading.selection = selection.describe(config);
    PrintOptions print;
    print.linesPerPage = o.linesPerPage;
    print.topPlayers = o.top;

    if (o.category == 'G' || o.category == 'S') {
        TableReport table;
        if (o.category == 'G') {
            heading.title = "Game Scores";
            table = gameScoresReport(computeGameScores(teams.front(), selection, config),
                                     !o.shortForm, heading);
        } else {
            heading.title = "Team Standings";
            table = standingsReport(computeStandings(teams, selection), heading);
        }
        if (o.format == "csv")
            return writeReportText(o.output, tableCsv(table), out);
        if (o.format == "html")
            return writeReportText(o.output, tableHtml(table), out);
        return writeReportLines(o.output, o.append, tablePages(table, print), out);
    }

    if (o.category == 'E') {
        const TeamRecordReport record = computeTeamRecord(teams, selection);
        if (!record.overflows.empty()) {
            for (const auto& line : record.overflows)
                err << cp1252ToUtf8(line) << '\n';
            return Failure{"The team record has figures out of range; nothing was written"};
        }
        heading.title = "Team Record";
        if (o.format == "csv")
            return writeReportText(o.output, teamRecordCsv(record, config), out);
        if (o.format == "html")
            return writeReportText(o.output, teamRecordHtml(record, config, heading), out);
        return writeReportLines(o.output, o.append, teamRecordPages(record, config, heading, print),
                                out);
    }

    SavedReports saved;
    if (Status s = saved.readOnly(paths.reportDirectory); !s)
        return Failure{s.message()};
    ReportFormatRecord format = saved.current(o.category, config);
    if (o.reportName) {
        const int n = saved.find(o.category, utf8ToCp1252(*o.reportName));
        if (n == 0)
            return usageError("--report: no saved report \"" + *o.reportName + "\" of category " +
                              std::string(1, o.category));
        format = saved.record(n);
    }
    // The saved report's own title, as the statistics screen shows it.
    heading.title = trim(format.reportName);
    if (heading.title.empty())
        heading.title = std::string(reportTitle(o.category));
    StatisticsDocument document;
    document.columns = o.columns ? *o.columns : formatColumns(format);
    if (document.columns.empty())
        document.columns = formatColumns(defaultFormat(o.category));
    const int sortColumn = o.sortColumn.value_or(format.sortColumn);
    const char direction = o.direction.value_or(format.sortDirection);

    const ColumnTable table(config);
    if (o.byGame) {
        const TeamSeason& team = teams.front();
        int number = selection.playerNumber;
        for (int n = 1; number == 0 && n <= kMaxPlayers; ++n)
            if (selection.countsPlayer(n, team.playerName(n)))
                number = n;
        if (number == 0 || team.players[static_cast<std::size_t>(number)].empty())
            return usageError("--player: no player \"" + *o.player + "\" on the roster");
        const GameLog log = computeGameLog(o.category, team, selection, number);
        if (!log.status)
            return Failure{log.status.message()};
        if (!log.overflows.empty()) {
            for (const auto& note : log.overflows)
                err << describeLine(note, o.category, table, teams) << '\n';
            return Failure{"The game log has figures out of range; nothing was written"};
        }
        heading.title = std::string(reportTitle(o.category)) + " by Game - " + digits(number) +
                        " " + trimRight(log.playerName);
        const TableReport logReport = gameLogReport(log, document.columns, table, heading);
        if (o.format == "csv")
            return writeReportText(o.output, tableCsv(logReport), out);
        if (o.format == "html")
            return writeReportText(o.output, tableHtml(logReport), out);
        return writeReportLines(o.output, o.append, tablePages(logReport, print), out);
    }
    document.report = ComputeStatistics(o.category, teams, selection);
    if (!document.report.status)
        return Failure{document.report.status.message()};
    if (!document.report.overflows.empty()) {
        for (const auto& note : document.report.overflows)
            err << describeLine(note, o.category, table, teams) << '\n';
        return Failure{"The report has figures out of range; nothing was written"};
    }
    sortPlayers(document.report, sortColumn, direction);
    document.heading = heading;
    document.emptyText = selection.emptyReportText();

    if (o.format == "csv")
        return writeReportText(o.output, statisticsCsv(document, table, o.top), out);
    if (o.format == "html")
        return writeReportText(o.output, statisticsHtml(document, table, o.top), out);
    return writeReportLines(o.output, o.append, statisticsPages(document, table, print), out);
}

} // namespace

std::string reportCommandUsage() {
    return "usage: scorvane-report [--config DIR] [--data DIR] --team N[,N...]\n"
           "                       --category P|C|R|D|K|T|E [--from N] [--to N]\n"
           "                       [--types 1,2,5] [--special] [--player N|NAME]\n"
           "                       [--report NAME] [--columns 2,3,15] [--sort CODE]\n"
           "                       [--asc|--desc] [--top N] [--lines N]\n"
           "                       [--format text|csv|html] [--output FILE [--append]]\n"
           "                       [--short] [--by-game]\n"
           "       scorvane-report (--season DIR[:TEAM] ... | --seasons FILE)\n"
           "                       --career --category P|C|R|D|K|T [--from N] [--to N]\n"
           "                       [--types 1,2,5] [--special] [--columns 2,3,15]\n"
           "                       [--sort CODE] [--asc|--desc] [--min-games N] [--top N]\n"
           "                       [--lines N] [--format text|csv|html] [--output FILE]\n"
           "       scorvane-report (--season DIR[:TEAM] ... | --seasons FILE)\n"
           "                       --career --category L --player NAME [--columns ...]\n"
           "       scorvane-report (--season DIR[:TEAM] ... | --seasons FILE) --record-book\n"
           "                       [--category L [--column CODE]] [--scope game|season|career]\n"
           "                       [--top N] [--format text|csv|html] [--output FILE]\n"
           "       scorvane-report [--config DIR] [--data DIR] [--team N] --export-game N\n"
           "                       --format fbxml|hstext [--output FILE]\n"
           "\n"
           "Categories: P passing, C receiving, R rushing, D defense, K kicking, T returns,\n"
           "E the team record, G the game scores (--short: one line a game), S the standings\n"
           "of the teams given. --by-game with --player: that player's line game by game.\n"
           "--config names the folder of BXFB.INI (default: the folder of\n"
           "this program); --data reads another data directory. Games 1 to 999 and all seven\n"
           "game types count unless --from, --to, --types or --special say otherwise.\n"
           "Seasons: --season (repeatable, oldest first; TEAM default 1, labelled by the\n"
           "folder's name) or --seasons, the seasons file the program keeps (with its links\n"
           "of players). --career: one line per player over the seasons, or with --player\n"
           "one player's seasons and his career line. --record-book: the best games, seasons\n"
           "and careers (top 10) of every category, or of --category, and the team's records.\n"
           "A season that cannot be read is named on standard error and left out (status 1).\n"
           "--export-game: game N of the team (default 1) as a press-box XML file (fbxml,\n"
           "with the opponent's side when the data directory has its game too) or as the\n"
           "high-school stats site's import text (hstext, with the team's site ID); exit\n"
           "status 0 done, 1 refused.\n"
           "Exit status: 0 done, 1 unreadable data or figures out of range, 2 bad arguments.\n";
}

int runReportCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                     const std::string& programDirectory) {
    Options options;
    std::optional<Failure> failure = parse(args, options);
    if (!failure && options.help) {
        out << reportCommandUsage();
        return kCommandOk;
    }
    if (!failure)
        failure = run(options, out, err, programDirectory);
    if (!failure)
        return kCommandOk;
    err << "scorvane-report: " << failure->message << '\n';
    return failure->code;
}

} // namespace scorvane
