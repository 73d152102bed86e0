#include "ReportCommand.h"

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
struct Failure {
    std::string message;
    int code = kCommandFailed;
};

Failure usageError(std::string message) {
    return Failure{std::move(message), kCommandBadUsage};
}

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

// A whole number and nothing else; nothing when the text is anything but digits.
std::optional<long long> wholeNumber(const std::string& text) {
    if (text.empty() || text.size() > 9 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    return std::stoll(text);
}

std::optional<Failure> numberIn(const std::string& option, const std::string& text, long long low,
                                long long high, int& out, const std::string& range) {
    const auto n = wholeNumber(text);
    if (!n || *n < low || *n > high)
        return usageError(option + ": \"" + text + "\" is not " + range);
    out = static_cast<int>(*n);
    return std::nullopt;
}

std::optional<Failure> numberList(const std::string& option, const std::string& text, long long low,
                                  long long high, std::vector<int>& out, const std::string& range) {
    out.clear();
    std::size_t start = 0;
    for (;;) {
        const std::size_t comma = text.find(',', start);
        const std::string item = trim(text.substr(start, comma - start));
        int n = 0;
        if (auto f = numberIn(option, item, low, high, n, range))
            return f;
        if (std::find(out.begin(), out.end(), n) != out.end())
            return usageError(option + ": " + item + " is given twice");
        out.push_back(n);
        if (comma == std::string::npos)
            return std::nullopt;
        start = comma + 1;
    }
}

const std::set<std::string> kValueOptions = {
    "--config", "--data",    "--team", "--category", "--from",   "--to",     "--types", "--player",
    "--report", "--columns", "--sort", "--top",      "--format", "--output", "--lines"};

std::optional<Failure> parse(const std::vector<std::string>& args, Options& o) {
    std::map<std::string, std::string> values;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string arg = args[i];
        std::string value;
        bool hasValue = false;
        if (const auto eq = arg.find('='); arg.rfind("--", 0) == 0 && eq != std::string::npos) {
            value = arg.substr(eq + 1);
            arg = arg.substr(0, eq);
            hasValue = true;
        }
        if (arg == "--help" || arg == "-h") {
            o.help = true;
        } else if (arg == "--special" || arg == "--asc" || arg == "--desc" || arg == "--append" ||
                   arg == "--short" || arg == "--by-game") {
            if (hasValue)
                return usageError(arg + " takes no value");
            if (arg == "--special")
                o.special = true;
            else if (arg == "--short")
                o.shortForm = true;
            else if (arg == "--by-game")
                o.byGame = true;
            else if (arg == "--append")
                o.append = true;
            else if (o.direction && *o.direction != (arg == "--asc" ? 'A' : 'D'))
                return usageError("--asc and --desc cannot both be given");
            else
                o.direction = arg == "--asc" ? 'A' : 'D';
        } else if (kValueOptions.count(arg) != 0) {
            if (!hasValue) {
                if (i + 1 >= args.size())
                    return usageError(arg + " needs a value");
                value = args[++i];
            }
            if (values.count(arg) != 0)
                return usageError(arg + " is given twice");
            values[arg] = value;
        } else {
            return usageError("unknown argument \"" + arg + "\" (see --help)");
        }
    }
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

    if (const auto* v = get("--from"))
        if (auto f = numberIn("--from", *v, kLowestGame, kHighestGame, o.fromGame,
                              "a game number 1 to 999 (From Game Invalid: Must be 1 to 999)"))
            return f;
    if (const auto* v = get("--to"))
        if (auto f = numberIn("--to", *v, kLowestGame, kHighestGame, o.toGame,
                              "a game number 1 to 999 (To Game Invalid: Must be 1 to 999)"))
            return f;
    if (const auto* v = get("--types")) {
        std::vector<int> types;
        if (auto f = numberList("--types", *v, 1, kGameTypeCount, types, "a game type 1 to 7"))
            return f;
        o.types = types;
    }
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
    if (const auto* v = get("--lines"))
        if (auto f = numberIn("--lines", *v, 21, 32767, o.linesPerPage,
                              "a number of lines per page above 20"))
            return f;
    if (const auto* v = get("--format")) {
        if (*v != "text" && *v != "csv" && *v != "html")
            return usageError("--format: \"" + *v + "\" is not text, csv or html");
        o.format = *v;
    }
    if (const auto* v = get("--output")) {
        if (v->empty())
            return usageError("--output needs a file name");
        o.output = *v;
    }
    if (o.shortForm && o.category != 'G')
        return usageError("--short applies only to the game scores (G)");
    if (o.byGame && (record || !o.player))
        return usageError(
            "--by-game needs a statistics category (P, C, R, D, K or T) and --player");
    if ((o.category == 'G' || o.byGame) && o.teams.size() > 1)
        return usageError(std::string(o.byGame ? "--by-game" : "the game scores (G)") +
                          " take one team");
    if (o.append && (!o.output || o.format != "text"))
        return usageError("--append applies only to text written to an --output file");
    return std::nullopt;
}

// --- configuration and directories ---------------------------------------------------------

std::optional<Failure> readConfiguration(const Options& o, const std::string& programDirectory,
                                         ConfigRecord& config) {
    const std::string folder = normalizeDirectory(o.configDirectory.value_or(programDirectory));
    const std::string path = folder + kConfigFileName;
    Bytes bytes;
    bool exists = false;
    if (Status s = readWholeFile(path, bytes, exists); !s)
        return Failure{"Cannot read " + platform::shownPath(path) + ": " + s.message()};
    if (!exists && o.dataDirectory && !o.configDirectory) {
        // Reading a data directory named on the command line needs no configuration: the default
        // names of the game types and user columns serve.
        config = ConfigRecord::defaults();
        return std::nullopt;
    }
    if (bytes.size() == ConfigRecord::Length)
        config = ConfigRecord::decode(bytes);
    else if (bytes.size() == ConfigRecord::LegacyLength)
        config = ConfigRecord::upgradeLegacy(bytes); // in memory only; the file stays as it is
    else
        return Failure{"BXFB.INI File Corrupt or Not Found: " + platform::shownPath(path)};
    return std::nullopt;
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

// Whether a file would land in one of these folders.
bool insideFolder(const std::string& file, const std::string& folder) {
    return platform::samePlace(platform::folderOf(platform::absolutePath(file)), folder);
}

std::optional<Failure> writeOutput(const Options& o, const std::string& text, std::ostream& out) {
    if (!o.output) {
        out << text;
        out.flush();
        return out ? std::nullopt : std::optional<Failure>(Failure{"Cannot write the report"});
    }
    if (Status s = saveReportFile(*o.output, text, nullptr); !s)
        return Failure{s.message()};
    return std::nullopt;
}

std::optional<Failure> writeLines(const Options& o, const std::vector<std::string>& lines,
                                  std::ostream& out) {
    std::unique_ptr<LineOutput> output;
    if (o.output)
        output = std::make_unique<TextFileOutput>(*o.output, o.append);
    else
        output = std::make_unique<StreamOutput>(out);
    if (Status s = printLines(*output, lines, nullptr); !s)
        return Failure{s.message()};
    return std::nullopt;
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

    Selection selection;
    selection.fromGame = std::min(o.fromGame, o.toGame);
    selection.toGame = std::max(o.fromGame, o.toGame);
    if (o.types) {
        selection.gameTypes.fill(false);
        for (int t : *o.types)
            selection.gameTypes[static_cast<std::size_t>(t - 1)] = true;
    }
    selection.specialSelect = o.special;
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
            return writeOutput(o, tableCsv(table), out);
        if (o.format == "html")
            return writeOutput(o, tableHtml(table), out);
        return writeLines(o, tablePages(table, print), out);
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
            return writeOutput(o, teamRecordCsv(record, config), out);
        if (o.format == "html")
            return writeOutput(o, teamRecordHtml(record, config, heading), out);
        return writeLines(o, teamRecordPages(record, config, heading, print), out);
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
            return writeOutput(o, tableCsv(logReport), out);
        if (o.format == "html")
            return writeOutput(o, tableHtml(logReport), out);
        return writeLines(o, tablePages(logReport, print), out);
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
        return writeOutput(o, statisticsCsv(document, table, o.top), out);
    if (o.format == "html")
        return writeOutput(o, statisticsHtml(document, table, o.top), out);
    return writeLines(o, statisticsPages(document, table, print), out);
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
           "\n"
           "Categories: P passing, C receiving, R rushing, D defense, K kicking, T returns,\n"
           "E the team record, G the game scores (--short: one line a game), S the standings\n"
           "of the teams given. --by-game with --player: that player's line game by game.\n"
           "--config names the folder of BXFB.INI (default: the folder of\n"
           "this program); --data reads another data directory. Games 1 to 999 and all seven\n"
           "game types count unless --from, --to, --types or --special say otherwise.\n"
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
