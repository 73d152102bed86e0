#include "CommandArguments.h"

#include "ReportOutput.h"

#include "storage/Bytes.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <memory>

namespace scorvane {

std::optional<long long> wholeNumber(const std::string& text) {
    if (text.empty() || text.size() > 9 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    return std::stoll(text);
}

std::optional<CommandFailure> numberIn(const std::string& option, const std::string& text,
                                       long long low, long long high, int& out,
                                       const std::string& range) {
    const auto n = wholeNumber(text);
    if (!n || *n < low || *n > high)
        return usageError(option + ": \"" + text + "\" is not " + range);
    out = static_cast<int>(*n);
    return std::nullopt;
}

std::optional<CommandFailure> numberList(const std::string& option, const std::string& text,
                                         long long low, long long high, std::vector<int>& out,
                                         const std::string& range) {
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

bool CommandArguments::has(const std::string& flag) const {
    return std::find(flags.begin(), flags.end(), flag) != flags.end();
}

const std::string* CommandArguments::value(const std::string& option) const {
    const auto it = values.find(option);
    return it == values.end() ? nullptr : &it->second;
}

std::optional<CommandFailure> splitArguments(const std::vector<std::string>& args,
                                             const std::set<std::string>& flags,
                                             const std::set<std::string>& valueOptions,
                                             const std::set<std::string>& repeatable,
                                             CommandArguments& out) {
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
            out.help = true;
        } else if (flags.count(arg) != 0) {
            if (hasValue)
                return usageError(arg + " takes no value");
            out.flags.push_back(arg);
        } else if (valueOptions.count(arg) != 0 || repeatable.count(arg) != 0) {
            if (!hasValue) {
                if (i + 1 >= args.size())
                    return usageError(arg + " needs a value");
                value = args[++i];
            }
            if (repeatable.count(arg) != 0) {
                out.repeated[arg].push_back(value);
                continue;
            }
            if (out.values.count(arg) != 0)
                return usageError(arg + " is given twice");
            out.values[arg] = value;
        } else {
            return usageError("unknown argument \"" + arg + "\" (see --help)");
        }
    }
    return std::nullopt;
}

std::optional<CommandFailure> sortDirection(const CommandArguments& args,
                                            std::optional<char>& direction) {
    const bool asc = args.has("--asc");
    const bool desc = args.has("--desc");
    if (asc && desc)
        return usageError("--asc and --desc cannot both be given");
    if (asc || desc)
        direction = asc ? 'A' : 'D';
    return std::nullopt;
}

std::optional<CommandFailure> gameOptions(const CommandArguments& args, int& fromGame, int& toGame,
                                          std::optional<std::vector<int>>& types) {
    if (const auto* v = args.value("--from"))
        if (auto f = numberIn("--from", *v, kLowestGame, kHighestGame, fromGame,
                              "a game number 1 to 999 (From Game Invalid: Must be 1 to 999)"))
            return f;
    if (const auto* v = args.value("--to"))
        if (auto f = numberIn("--to", *v, kLowestGame, kHighestGame, toGame,
                              "a game number 1 to 999 (To Game Invalid: Must be 1 to 999)"))
            return f;
    if (const auto* v = args.value("--types")) {
        std::vector<int> list;
        if (auto f = numberList("--types", *v, 1, kGameTypeCount, list, "a game type 1 to 7"))
            return f;
        types = list;
    }
    return std::nullopt;
}

Selection commandSelection(int fromGame, int toGame, const std::optional<std::vector<int>>& types,
                           bool special) {
    Selection selection;
    selection.fromGame = std::min(fromGame, toGame);
    selection.toGame = std::max(fromGame, toGame);
    if (types) {
        selection.gameTypes.fill(false);
        for (int t : *types)
            selection.gameTypes[static_cast<std::size_t>(t - 1)] = true;
    }
    selection.specialSelect = special;
    return selection;
}

std::optional<CommandFailure> outputOptions(const CommandArguments& args, int& linesPerPage,
                                            std::string& format, std::optional<std::string>& output,
                                            bool& append) {
    if (const auto* v = args.value("--lines"))
        if (auto f = numberIn("--lines", *v, 21, 32767, linesPerPage,
                              "a number of lines per page above 20"))
            return f;
    if (const auto* v = args.value("--format")) {
        if (*v != "text" && *v != "csv" && *v != "html")
            return usageError("--format: \"" + *v + "\" is not text, csv or html");
        format = *v;
    }
    if (const auto* v = args.value("--output")) {
        if (v->empty())
            return usageError("--output needs a file name");
        output = *v;
    }
    append = args.has("--append");
    if (append && (!output || format != "text"))
        return usageError("--append applies only to text written to an --output file");
    return std::nullopt;
}

std::optional<CommandFailure>
readCommandConfiguration(const std::optional<std::string>& configDirectory,
                         const std::string& programDirectory, bool missingGivesDefaults,
                         ConfigRecord& config) {
    const std::string folder = normalizeDirectory(configDirectory.value_or(programDirectory));
    const std::string path = folder + kConfigFileName;
    Bytes bytes;
    bool exists = false;
    if (Status s = readWholeFile(path, bytes, exists); !s)
        return CommandFailure{"Cannot read " + platform::shownPath(path) + ": " + s.message()};
    if (!exists && missingGivesDefaults)
        config = ConfigRecord::defaults();
    else if (bytes.size() == ConfigRecord::Length)
        config = ConfigRecord::decode(bytes);
    else if (bytes.size() == ConfigRecord::LegacyLength)
        config = ConfigRecord::upgradeLegacy(bytes); // in memory only; the file stays as it is
    else
        return CommandFailure{"BXFB.INI File Corrupt or Not Found: " + platform::shownPath(path)};
    return std::nullopt;
}

bool insideFolder(const std::string& file, const std::string& folder) {
    return platform::samePlace(platform::folderOf(platform::absolutePath(file)), folder);
}

std::optional<CommandFailure> writeReportText(const std::optional<std::string>& output,
                                              const std::string& text, std::ostream& out) {
    if (!output) {
        out << text;
        out.flush();
        return out ? std::nullopt
                   : std::optional<CommandFailure>(CommandFailure{"Cannot write the report"});
    }
    if (Status s = saveReportFile(*output, text, nullptr); !s)
        return CommandFailure{s.message()};
    return std::nullopt;
}

std::optional<CommandFailure> writeReportLines(const std::optional<std::string>& output,
                                               bool append, const std::vector<std::string>& lines,
                                               std::ostream& out) {
    std::unique_ptr<LineOutput> sink;
    if (output)
        sink = std::make_unique<TextFileOutput>(*output, append);
    else
        sink = std::make_unique<StreamOutput>(out);
    if (Status s = printLines(*sink, lines, nullptr); !s)
        return CommandFailure{s.message()};
    return std::nullopt;
}

} // namespace scorvane
