#include "SeasonsCommand.h"

#include "Career.h"
#include "RecordBook.h"
#include "SeasonsDocument.h"
#include "SeasonsFile.h"

#include "reports/CommandArguments.h"
#include "reports/ReportColumns.h"
#include "reports/ReportCommand.h"
#include "reports/ReportFormats.h"
#include "reports/ReportOutput.h"
#include "reports/TableReport.h"
#include "storage/Bytes.h"
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

using Failure = CommandFailure;

struct Options {
    std::optional<std::string> configDirectory;
    std::vector<std::string> seasonArgs; // --season, in the order given
    std::optional<std::string> seasonsFile;
    bool career = false;
    bool recordBook = false;
    char category = 0;
    std::optional<std::string> player;
    int fromGame = kLowestGame;
    int toGame = kHighestGame;
    std::optional<std::vector<int>> types;
    bool special = false;
    std::optional<std::vector<int>> columns; // --columns (career) or --column (record book)
    std::optional<int> sortColumn;
    std::optional<char> direction;
    int minimumGames = 0;
    std::optional<int> top;
    std::optional<RecordScope> scope;
    int linesPerPage = kDefaultLinesPerPage;
    std::string format = "text";
    std::optional<std::string> output;
    bool append = false;
    bool help = false;
};

const std::set<std::string> kValueOptions = {"--config", "--seasons", "--category",  "--player",
                                             "--from",   "--to",      "--types",     "--columns",
                                             "--column", "--sort",    "--min-games", "--top",
                                             "--scope",  "--lines",   "--format",    "--output"};
const std::set<std::string> kFlags = {"--career", "--record-book", "--special",
                                      "--asc",    "--desc",        "--append"};

std::optional<Failure> parse(const std::vector<std::string>& args, Options& o) {
    CommandArguments parsed;
    if (auto f = splitArguments(args, kFlags, kValueOptions, {"--season"}, parsed))
        return f;
    o.help = parsed.help;
    o.career = parsed.has("--career");
    o.recordBook = parsed.has("--record-book");
    o.special = parsed.has("--special");
    if (auto f = sortDirection(parsed, o.direction))
        return f;
    if (const auto it = parsed.repeated.find("--season"); it != parsed.repeated.end())
        o.seasonArgs = it->second;
    const std::map<std::string, std::string>& values = parsed.values;
    if (o.help)
        return std::nullopt;

    auto get = [&](const char* name) -> const std::string* {
        const auto it = values.find(name);
        return it == values.end() ? nullptr : &it->second;
    };
    if (o.career == o.recordBook)
        return usageError(o.career ? "--career and --record-book cannot both be given"
                                   : "seasons need --career or --record-book");
    if (const auto* v = get("--config"))
        o.configDirectory = *v;
    if (const auto* v = get("--seasons")) {
        if (v->empty())
            return usageError("--seasons needs a file name");
        o.seasonsFile = *v;
    }
    if (o.seasonsFile && !o.seasonArgs.empty())
        return usageError("--season and --seasons cannot both be given");
    if (!o.seasonsFile && o.seasonArgs.empty())
        return usageError("no seasons: give --season DIR[:TEAM] or --seasons FILE");

    if (const auto* category = get("--category")) {
        const std::string letter = *category;
        const char c = letter.size() == 1
                           ? static_cast<char>(std::toupper(static_cast<unsigned char>(letter[0])))
                           : '?';
        if (std::string("PCRDKT").find(c) == std::string::npos)
            return usageError("--category: \"" + letter + "\" is not one of P, C, R, D, K, T");
        o.category = c;
    } else if (o.career) {
        return usageError("--category is required");
    }

    if (auto f = gameOptions(parsed, o.fromGame, o.toGame, o.types))
        return f;
    if (const auto* v = get("--player")) {
        if (!o.career)
            return usageError("--player applies only to --career");
        if (trim(*v).empty())
            return usageError("--player needs a player's name");
        o.player = *v;
    }

    // The options of one report only.
    const auto refuse = [&](const char* option, bool given,
                            const std::string& what) -> std::optional<Failure> {
        if (given)
            return usageError(std::string(option) + " does not apply to " + what);
        return std::nullopt;
    };
    const std::string reportName = o.recordBook ? "--record-book"
                                   : o.player   ? "--career --player"
                                                : "--career";
    if (auto f = refuse("--column", get("--column") && !o.recordBook, reportName))
        return f;
    if (auto f = refuse("--scope", get("--scope") && !o.recordBook, reportName))
        return f;
    if (auto f = refuse("--columns", get("--columns") && o.recordBook, reportName))
        return f;
    for (const char* option : {"--sort", "--min-games"})
        if (auto f = refuse(option, get(option) && (o.recordBook || o.player), reportName))
            return f;
    if (auto f = refuse("--asc/--desc", o.direction && (o.recordBook || o.player), reportName))
        return f;
    if (auto f = refuse("--top", get("--top") && o.player, reportName))
        return f;

    const int columnCount = o.category ? ColumnTable::columnCount(o.category) : 0;
    const std::string codeRange =
        "a column code 1 to " + digits(columnCount) + " of category " + std::string(1, o.category);
    if (const auto* v = get("--columns")) {
        std::vector<int> codes;
        if (auto f = numberList("--columns", *v, 1, columnCount, codes, codeRange))
            return f;
        if (codes.size() > ConfigRecord::ColumnListLength)
            return usageError("--columns: a report has at most 31 columns");
        o.columns = codes;
    }
    if (const auto* v = get("--column")) {
        if (!o.category)
            return usageError("--column needs --category");
        std::vector<int> codes;
        if (auto f = numberList("--column", *v, 2, columnCount, codes,
                                "a column code 2 to " + digits(columnCount) + " of category " +
                                    std::string(1, o.category)))
            return f;
        for (int code : codes)
            if (!isReportColumn(o.category, code))
                return usageError("--column: " + digits(code) + " is no column of category " +
                                  std::string(1, o.category));
        o.columns = codes;
    }
    if (const auto* v = get("--sort")) {
        int code = 0;
        if (auto f = numberIn("--sort", *v, 1, columnCount, code, codeRange))
            return f;
        o.sortColumn = code;
    }
    if (const auto* v = get("--min-games"))
        if (auto f = numberIn("--min-games", *v, 0, 32767, o.minimumGames,
                              "a number of games 0 to 32767"))
            return f;
    if (const auto* v = get("--top")) {
        int top = 0;
        if (auto f = numberIn("--top", *v, 1, kAllPlayers, top,
                              o.recordBook ? "a number of places 1 to 999"
                                           : "a number of players 1 to 999 (Top Players Invalid)"))
            return f;
        o.top = top;
    }
    if (const auto* v = get("--scope")) {
        if (*v == "game")
            o.scope = RecordScope::Game;
        else if (*v == "season")
            o.scope = RecordScope::Season;
        else if (*v == "career")
            o.scope = RecordScope::Career;
        else
            return usageError("--scope: \"" + *v + "\" is not game, season or career");
    }
    if (auto f = outputOptions(parsed, o.linesPerPage, o.format, o.output, o.append))
        return f;
    return std::nullopt;
}

// --- the seasons -----------------------------------------------------------------------------

// "DIR[:TEAM]": only a last ":" followed by digits and nothing else is a team, so that a Windows
// folder ("C:\Football\2025") keeps its drive.
std::optional<Failure> seasonOf(const std::string& arg, SeasonEntry& entry) {
    std::string folder = arg;
    entry.team = 1;
    if (const auto colon = arg.rfind(':'); colon != std::string::npos) {
        const std::string team = arg.substr(colon + 1);
        if (!team.empty() &&
            std::all_of(team.begin(), team.end(), [](char c) { return c >= '0' && c <= '9'; })) {
            if (auto f =
                    numberIn("--season", team, 1, kMaxTeams, entry.team, "a team number 1 to 100"))
                return f;
            folder = arg.substr(0, colon);
        }
    }
    if (trim(folder).empty())
        return usageError("--season needs a folder");
    entry.dataDirectory = normalizeDirectory(folder);
    return std::nullopt;
}

// The folder's own name: "2025" for "/home/coach/football/2025/".
std::string folderName(const std::string& directory) {
    std::string path = directory;
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\'))
        path.pop_back();
    const auto slash = path.find_last_of("/\\");
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    return name.empty() ? path : name;
}

std::optional<Failure> chooseSeasons(const Options& o, SeasonsList& list,
                                     std::vector<std::string>& problems) {
    if (o.seasonsFile) {
        if (Status s = readSeasonsFile(*o.seasonsFile, list, problems); !s)
            return Failure{"Cannot read " + platform::shownPath(*o.seasonsFile) + ": " +
                           s.message()};
        if (list.seasons.empty())
            return usageError("no seasons: " + platform::shownPath(*o.seasonsFile) + " lists none");
        return std::nullopt;
    }
    for (const std::string& arg : o.seasonArgs) {
        SeasonEntry entry;
        if (auto f = seasonOf(arg, entry))
            return f;
        const std::string name = folderName(entry.dataDirectory);
        entry.label = name;
        for (int n = 2; list.find(entry.label); ++n)
            entry.label = name + " (" + digits(n) + ")";
        if (auto refused = addSeason(list, entry))
            return usageError("--season " + arg + ": " + *refused);
    }
    return std::nullopt;
}

// --- configuration and output --------------------------------------------------------------

// The configuration names the game types and the user's columns. Without --config a missing
// BXFB.INI is no error: the default names serve.
std::optional<Failure> readConfiguration(const Options& o, const std::string& programDirectory,
                                         ConfigRecord& config) {
    return readCommandConfiguration(o.configDirectory, programDirectory, !o.configDirectory,
                                    config);
}

std::string overflowLine(const OverflowNote& note, char category, const ColumnTable& table) {
    const std::string who = note.playerNumber == 0
                                ? "the Totals line"
                                : "player " + cp1252ToUtf8(trimRight(note.playerName));
    return "Overflow: column " + digits(note.column) + " \"" +
           cp1252ToUtf8(trim(columnHeading(category, note.column, table))) + "\" of " + who;
}

// --- the reports ---------------------------------------------------------------------------------

std::optional<Failure> careerReport(const Options& o, SeasonSet& set, const Selection& selection,
                                    ReportHeading heading, const ColumnTable& table,
                                    std::ostream& out, std::ostream& err) {
    const ReportFormatRecord format = defaultFormat(o.category);
    CareerDocument document;
    document.columns = o.columns ? *o.columns : formatColumns(format);
    document.report = computeCareers(set, o.category, selection, o.minimumGames);
    if (!document.report.overflows.empty()) {
        for (const auto& note : document.report.overflows)
            err << overflowLine(note, o.category, table) << '\n';
        return Failure{"The report has figures out of range; nothing was written"};
    }
    sortCareers(document.report, o.sortColumn.value_or(format.sortColumn),
                o.direction.value_or(format.sortDirection));
    heading.title = careerTitle(o.category);
    document.heading = heading;
    document.emptyText = selection.emptyReportText();
    const int top = o.top.value_or(kAllPlayers);
    if (o.format == "csv") {
        CareerReport shown = document.report;
        shown.players.resize(std::min(shown.players.size(), static_cast<std::size_t>(top)));
        return writeReportText(o.output, careerCsv(shown, document.columns, table), out);
    }
    if (o.format == "html")
        return writeReportText(o.output, careerHtml(document, table, top), out);
    PrintOptions print;
    print.linesPerPage = o.linesPerPage;
    print.topPlayers = top;
    return writeReportLines(o.output, o.append, careerPages(document, table, print), out);
}

std::optional<Failure> playerCareerReport(const Options& o, SeasonSet& set,
                                          const Selection& selection, const ReportHeading& heading,
                                          const ColumnTable& table, std::ostream& out) {
    const std::vector<PlayerCareer> careers =
        playerCareers(set, o.category, selection, utf8ToCp1252(*o.player));
    if (careers.empty())
        return usageError("--player: no player \"" + *o.player + "\" with " +
                          std::string(reportTitle(o.category)) + " in the chosen seasons");
    // Usually one person; two of one name (told apart) are written one after the other.
    std::string text;
    std::vector<std::string> lines;
    for (const PlayerCareer& career : careers) {
        PlayerCareerDocument document;
        document.category = o.category;
        document.career = career;
        document.columns = o.columns ? *o.columns : formatColumns(defaultFormat(o.category));
        document.heading = heading;
        document.heading.title = "Career: " + trimRight(career.career.name);
        if (careers.size() > 1)
            document.heading.title += " (" + utf8ToCp1252(career.career.firstSeason) +
                                      (career.career.firstSeason == career.career.lastSeason
                                           ? ""
                                           : "-" + utf8ToCp1252(career.career.lastSeason)) +
                                      ")";
        if (o.format == "csv") {
            text += (text.empty() ? "" : "\r\n") + playerCareerCsv(document, table);
        } else if (o.format == "html") {
            const std::string page = playerCareerHtml(document, table);
            if (text.empty()) {
                text = page.substr(0, page.size() - std::string(kHtmlPageEnd).size());
            } else {
                text += "<h1>" + htmlEscape(document.heading.title) + "</h1>\n" +
                        page.substr(page.find("<table>"),
                                    page.rfind("</table>\n") + 9 - page.find("<table>"));
            }
        } else {
            PrintOptions print;
            print.linesPerPage = o.linesPerPage;
            if (!lines.empty())
                lines.push_back(kNewPageLine);
            const std::vector<std::string> pages = playerCareerPages(document, table, print);
            lines.insert(lines.end(), pages.begin(), pages.end());
        }
    }
    if (o.format == "html")
        text += kHtmlPageEnd;
    if (o.format == "text")
        return writeReportLines(o.output, o.append, lines, out);
    return writeReportText(o.output, text, out);
}

std::optional<Failure> recordBookReport(const Options& o, SeasonSet& set,
                                        const Selection& selection, ReportHeading heading,
                                        const ColumnTable& table, std::ostream& out) {
    RecordBookDocument document;
    heading.title = "Record Book";
    document.heading = heading;
    // Every category from the same one pass over each statistics file.
    std::vector<RecordBookOptions> books;
    for (char category : o.category ? std::string(1, o.category) : std::string("PCRDKT")) {
        RecordBookOptions options;
        options.category = category;
        options.selection = selection;
        if (o.columns)
            options.columns = *o.columns;
        options.top = o.top.value_or(10);
        books.push_back(std::move(options));
    }
    for (RecordBook& book : computeRecordBooks(set, books)) {
        if (o.scope)
            book.lists.erase(
                std::remove_if(book.lists.begin(), book.lists.end(),
                               [&](const RecordList& l) { return l.scope != *o.scope; }),
                book.lists.end());
        document.categories.push_back(std::move(book));
    }
    // The team's records belong to the whole book, not to a chosen column or scope.
    if (!o.columns && !o.scope)
        document.team = computeTeamRecords(set, selection, o.top.value_or(10));
    if (o.format == "csv") {
        const RecordBook& only = document.categories.front();
        if (o.columns && o.columns->size() == 1 && o.scope && only.lists.size() == 1)
            return writeReportText(o.output, recordListCsv(only, only.lists.front()), out);
        return writeReportText(o.output, recordBookCsv(document, table), out);
    }
    if (o.format == "html")
        return writeReportText(o.output, recordBookHtml(document, table), out);
    PrintOptions print;
    print.linesPerPage = o.linesPerPage;
    return writeReportLines(o.output, o.append, recordBookPages(document, table, print), out);
}

std::optional<Failure> run(const Options& o, std::ostream& out, std::ostream& err,
                           const std::string& programDirectory, bool& leftOut) {
    ConfigRecord config;
    if (auto f = readConfiguration(o, programDirectory, config))
        return f;
    SeasonsList list;
    std::vector<std::string> problems;
    if (auto f = chooseSeasons(o, list, problems))
        return f;
    for (const SeasonEntry& s : list.seasons)
        if (o.output && insideFolder(*o.output, normalizeDirectory(s.dataDirectory)))
            return usageError("--output: reports are not written into a season's data directory");

    SeasonSet set = openSeasons(list.seasons, list.links);
    // Every season left out is named, whatever the report makes of the others.
    const auto tell = [&] {
        for (const std::string& m : problems)
            err << m << '\n';
        for (const std::string& m : set.messages)
            err << m << '\n';
        leftOut = leftOut || !problems.empty() || !set.messages.empty();
        problems.clear();
        set.messages.clear();
    };
    tell();
    if (set.seasons.empty())
        return Failure{"no season could be read"};

    Selection selection = commandSelection(o.fromGame, o.toGame, o.types, o.special);

    ReportHeading heading;
    heading.team = seasonsTeamLine(set);
    heading.selection = selection.describe(config);
    const ColumnTable table(config);
    std::optional<Failure> failure;
    if (o.recordBook)
        failure = recordBookReport(o, set, selection, heading, table, out);
    else if (o.player)
        failure = playerCareerReport(o, set, selection, heading, table, out);
    else
        failure = careerReport(o, set, selection, heading, table, out, err);
    tell();
    return failure;
}

} // namespace

bool isSeasonsCommand(const std::vector<std::string>& args) {
    for (const std::string& arg : args) {
        const std::string name = arg.substr(0, arg.find('='));
        if (name == "--season" || name == "--seasons" || name == "--career" ||
            name == "--record-book")
            return true;
    }
    return false;
}

int runSeasonsCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                      const std::string& programDirectory) {
    Options options;
    std::optional<Failure> failure = parse(args, options);
    if (!failure && options.help) {
        out << reportCommandUsage();
        return kCommandOk;
    }
    bool leftOut = false;
    if (!failure)
        failure = run(options, out, err, programDirectory, leftOut);
    if (failure) {
        err << "scorvane-report: " << failure->message << '\n';
        return failure->code;
    }
    if (leftOut) {
        err << "scorvane-report: not every season could be read; the report leaves those out\n";
        return kCommandFailed;
    }
    return kCommandOk;
}

} // namespace scorvane
