// How fast the program's heavy operations are on a large data directory, each measured next to a
// plain reference doing the least the operation must do, in the same run on the same files:
//
//   scorvane-bench [FOLDER]
//
// FOLDER (default: bench-data beside this program) gets the large data directory on the first run
// and keeps it for later runs. The start-up measurement needs a display (run under xvfb-run) and
// xdotool; the program and scorvane-report are taken from beside this program.

#include "LargeSeason.h"

#include "entry/PlayerScreen.h"
#include "games/GameList.h"
#include "reports/ReportFormats.h"
#include "reports/Season.h"
#include "reports/Statistics.h"
#include "sample/SampleSeason.h"
#include "seasons/Career.h"
#include "seasons/RecordBook.h"
#include "seasons/SeasonsDocument.h"
#include "storage/Platform.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

using namespace scorvane;
using namespace scorvane::bench;
namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsOf(const std::function<void()>& run) {
    const auto start = Clock::now();
    run();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// The median of several runs: the operation and its reference alternate, so that both see the
// same state of the machine's caches.
std::pair<double, double> measure(int runs, const std::function<void()>& operation,
                                  const std::function<void()>& reference) {
    std::vector<double> op, ref;
    for (int i = 0; i < runs; ++i) {
        ref.push_back(millisecondsOf(reference));
        op.push_back(millisecondsOf(operation));
    }
    std::sort(op.begin(), op.end());
    std::sort(ref.begin(), ref.end());
    return {op[op.size() / 2], ref[ref.size() / 2]};
}

void fail(const std::string& what) {
    std::cerr << "scorvane-bench: " << what << '\n';
    std::exit(1);
}

void check(const Status& s, const std::string& what) {
    if (!s)
        fail(what + ": " + s.message());
}

struct Stop : Prompter {
    Answer ask(const Message& m) override {
        fail("the program asked \"" + m.text + "\"");
        return m.defaultAnswer;
    }
    void endProgram(int) override { fail("the program ended"); }
};

// --- the references ---------------------------------------------------------------------------

// Reads a file once from front to back in 1 MiB pieces, looking at every byte.
std::uint64_t plainRead(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> buffer(1 << 20);
    std::uint64_t sum = 0;
    while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || in.gcount() > 0)
        for (std::streamsize i = 0; i < in.gcount(); ++i)
            sum += static_cast<unsigned char>(buffer[static_cast<std::size_t>(i)]);
    return sum;
}

// Copies a file once, as safely as the program replaces one: read in 1 MiB pieces, written to a
// new file, flushed to the disk.
void plainCopy(const std::string& from, const std::string& to) {
    std::ifstream in(from, std::ios::binary);
    platform::File out;
    check(platform::openFile(to, platform::OpenMode::Replace, out), "copy");
    std::vector<char> buffer(1 << 20);
    long long at = 0;
    while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || in.gcount() > 0) {
        check(platform::writeAt(out, at, reinterpret_cast<const std::uint8_t*>(buffer.data()),
                                static_cast<std::size_t>(in.gcount())),
              "copy");
        at += in.gcount();
    }
    check(platform::flush(out), "copy");
}

// --- processes ----------------------------------------------------------------------------------

// Runs a shell command and returns what it printed.
std::string shell(const std::string& command) {
    std::string output;
    if (FILE* pipe = ::popen(command.c_str(), "r")) {
        char buffer[256];
        while (std::fgets(buffer, sizeof buffer, pipe))
            output += buffer;
        ::pclose(pipe);
    }
    return output;
}

std::string quoted(const std::string& text) {
    std::string out = "'";
    for (char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

// Milliseconds from starting a program until a window of it is shown, measured by the shell
// around it: the program is started in the background, its windows are looked for every 5 ms,
// and it is ended once one is there. -1 when it ended before showing one.
double untilWindowShown(const std::string& program) {
    const std::string script =
        "start=$(date +%s%N); " + quoted(program) + " >/dev/null 2>>" +
        quoted(program + ".bench-log") +
        " & pid=$!; "
        "until xdotool search --onlyvisible --pid $pid >/dev/null 2>&1; do "
        "kill -0 $pid 2>/dev/null || { echo gone; exit; }; sleep 0.005; done; "
        "end=$(date +%s%N); kill $pid; wait $pid 2>/dev/null; echo $(( (end - start) / 1000 ))";
    const std::string out = shell("sh -c " + quoted(script));
    if (out.rfind("gone", 0) == 0 || out.empty())
        return -1;
    return std::stod(out) / 1000.0;
}

// Milliseconds a command takes from start to end, measured the same way.
double commandTime(const std::string& command) {
    const std::string script = "start=$(date +%s%N); " + command +
                               " >/dev/null 2>&1; end=$(date +%s%N); "
                               "echo $(( (end - start) / 1000 ))";
    return std::stod(shell("sh -c " + quoted(script))) / 1000.0;
}

// --- the report ---------------------------------------------------------------------------------

struct Row {
    std::string operation, reference;
    double ms, referenceMs;
    double target;       // the largest ratio allowed; 0: none
    double withinMs = 0; // or: at most this many milliseconds more than the reference (or than
                         // nothing, without one); 0: none
};

void print(const Row& r) {
    const double ratio = r.referenceMs > 0 ? r.ms / r.referenceMs : 0;
    char line[300];
    if (r.reference.empty())
        std::snprintf(line, sizeof line, "%-44s %9.2f ms   %-30s", r.operation.c_str(), r.ms, "-");
    else
        std::snprintf(line, sizeof line, "%-44s %9.1f ms   %-30s %9.1f ms  %6.2fx",
                      r.operation.c_str(), r.ms, r.reference.c_str(), r.referenceMs, ratio);
    std::cout << line;
    if (r.target > 0)
        std::cout << "   target <= " << r.target << "x " << (ratio <= r.target ? "met" : "MISSED");
    if (r.withinMs > 0) {
        const bool met = r.ms <= r.referenceMs + r.withinMs;
        std::cout << "   target " << (r.reference.empty() ? "<= " : "<= reference + ") << r.withinMs
                  << " ms " << (met ? "met" : "MISSED");
    }
    std::cout << std::endl;
}

std::string machine() {
    std::ifstream cpu("/proc/cpuinfo");
    std::string line, model = "unknown processor";
    while (std::getline(cpu, line))
        if (line.rfind("model name", 0) == 0) {
            model = line.substr(line.find(':') + 2);
            break;
        }
    return model + ", " + std::to_string(std::thread::hardware_concurrency()) + " cores";
}

std::string today() {
    const std::tm t = platform::localTime(std::time(nullptr));
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &t);
    return text;
}

} // namespace

int main(int argc, char** argv) {
    const fs::path self = fs::absolute(fs::path(argv[0])).parent_path();
    const fs::path folder = argc > 1 ? fs::absolute(argv[1]) : self / "bench-data";
    const std::string dir = (folder / "data" / "").string();
    const std::string stats = dir + "FBPS1.DAT";
    fs::create_directories(dir);

    std::cout << "Scorvane benchmark, " << today() << ", " << machine() << '\n';
    if (!fs::exists(stats) ||
        fs::file_size(stats) != static_cast<std::uintmax_t>(kStatRecords) * StatRecord::Length) {
        std::cout << "Writing the large data directory into " << dir << " ..." << std::flush;
        const double ms = millisecondsOf([&] { check(writeLargeSeason(dir), "writing"); });
        std::cout << " " << static_cast<int>(ms) << " ms\n";
    }
    std::cout << "Data: " << kTeams << " teams; team " << kLargeTeam << ": " << kGames << " games, "
              << kStatRecords << " statistics records (" << fs::file_size(stats) / 1000000.0
              << " MB)\n\n";

    Stop prompter;
    const DataPaths paths{dir, dir, dir};
    const std::string copy = (folder / "copy.tmp").string();
    const auto read = [&] { (void)plainRead(stats); };
    const auto copyOnce = [&] { plainCopy(stats, copy); };

    // A season report: every record read, the passing figures computed and every line written.
    auto [reportMs, readMs] = measure(
        3,
        [&] {
            std::vector<TeamSeason> teams(1);
            check(readTeamSeason(paths, kLargeTeam, teams[0]), "reading the season");
            StatReport r = ComputeStatistics('P', teams, Selection{});
            check(r.status, "reading the statistics");
            sortPlayers(r, 4, 'D');
            const ColumnTable table;
            const std::vector<int> columns = formatColumns(defaultFormat('P'));
            const std::vector<int> widths = printedWidths(r, columns, table);
            std::size_t length = FormatHeadingLine(r, columns, table, widths).size();
            for (const auto& p : r.players)
                length += FormatPlayerLine(r, p, columns, widths).size();
            if (length == 0)
                fail("an empty report");
        },
        read);
    print({"season report over all records (passing)", "plain buffered read", reportMs, readMs, 3});

    // Careers and the record book over 20 seasons of 2,000 statistics records each (one folder a
    // season, the same 99 names in each, so that every career runs over all 20), and over the large
    // team as one season. The reference reads every season's statistics file once.
    std::vector<SeasonEntry> twenty;
    std::vector<std::string> twentyStats;
    for (int s = 1; s <= 20; ++s) {
        const std::string label = digits(2000 + s);
        const std::string season = (folder / "seasons" / label / "").string();
        const std::string file = season + "FBPS1.DAT";
        if (!fs::exists(file) || fs::file_size(file) != 2000u * StatRecord::Length) {
            fs::create_directories(season);
            check(writeSeason(season, 10, 1000 + static_cast<std::uint64_t>(s)),
                  "writing season " + label);
        }
        twenty.push_back({label, season, 1});
        twentyStats.push_back(file);
    }
    const std::vector<SeasonEntry> large = {{"large", dir, kLargeTeam}};
    const auto readTwenty = [&] {
        for (const std::string& file : twentyStats)
            (void)plainRead(file);
    };
    const ColumnTable seasonColumns;
    const auto openAll = [&](const std::vector<SeasonEntry>& seasons) {
        SeasonSet set = openSeasons(seasons, {});
        if (set.seasons.size() != seasons.size())
            fail("opening the seasons: " + set.messages.front());
        return set;
    };
    // The career report as printed: read, computed, sorted, every line laid out.
    const auto careers = [&](const std::vector<SeasonEntry>& seasons) {
        SeasonSet set = openAll(seasons);
        CareerDocument d;
        d.report = computeCareers(set, 'P', Selection{});
        if (!d.report.messages.empty() || d.report.players.empty())
            fail("the career report");
        sortCareers(d.report, 4, 'D');
        d.columns = formatColumns(defaultFormat('P'));
        if (careerPages(d, seasonColumns, PrintOptions{}).empty())
            fail("an empty career report");
    };
    // The record book of the given categories (default columns, top 10) and the team's records,
    // printed unless only its computing is timed.
    const auto recordBook = [&](const std::vector<SeasonEntry>& seasons,
                                const std::string& categories, bool printed = true) {
        SeasonSet set = openAll(seasons);
        RecordBookDocument d;
        std::vector<RecordBookOptions> books;
        for (char c : categories) {
            books.emplace_back();
            books.back().category = c;
        }
        d.categories = computeRecordBooks(set, books);
        if (!d.categories.front().messages.empty())
            fail("the record book");
        d.team = computeTeamRecords(set, Selection{});
        if (printed && recordBookPages(d, seasonColumns, PrintOptions{}).empty())
            fail("an empty record book");
    };
    auto [career20Ms, read20Ms] = measure(
        3, [&] { careers(twenty); }, readTwenty);
    print({"career report, 20 seasons x 2,000 (passing)", "plain read of the 20 files", career20Ms,
           read20Ms, 0});
    auto [book20Ms, read20bMs] = measure(
        3, [&] { recordBook(twenty, "P"); }, readTwenty);
    print({"record book, 20 seasons x 2,000 (passing)", "plain read of the 20 files", book20Ms,
           read20bMs, 0});
    auto [bookAll20Ms, read20cMs] = measure(
        3, [&] { recordBook(twenty, "PCRDKT"); }, readTwenty);
    print({"record book, 20 seasons x 2,000 (all six)", "plain read of the 20 files", bookAll20Ms,
           read20cMs, 0});
    auto [careerLargeMs, read3Ms] = measure(
        3, [&] { careers(large); }, read);
    print({"career report, large team as one season", "plain buffered read", careerLargeMs, read3Ms,
           3});
    auto [bookLargeMs, read4Ms] = measure(
        3, [&] { recordBook(large, "P", false); }, read);
    print({"record book, large team as one season (P)", "plain buffered read", bookLargeMs, read4Ms,
           3});
    auto [bookPrintedMs, read6Ms] = measure(
        3, [&] { recordBook(large, "P"); }, read);
    print({"  the same, every list printed", "plain buffered read", bookPrintedMs, read6Ms, 0});
    auto [bookAllLargeMs, read5Ms] = measure(
        3, [&] { recordBook(large, "PCRDKT"); }, read);
    print({"record book, large team (all six)", "plain buffered read", bookAllLargeMs, read5Ms, 0});

    // The player screen opened on the first, a middle and the last game: a binary search finds
    // the game's records. The slowest of the three counts.
    const ColumnTable columns;
    double openMs = 0;
    for (int game : {1, kGames / 2, kGames}) {
        auto [ms, unused] = measure(
            5,
            [&] {
                DataFiles data(paths, prompter);
                TeamFiles files = data.team(kLargeTeam);
                PlayerScreen screen;
                check(screen.open(files, game, columns, prompter), "opening a game");
            },
            [] {});
        openMs = std::max(openMs, ms);
    }
    print({"player screen opened, any game (slowest)", "", openMs, 0, 0, 1.0});

    // Saving one game's results from the player screen (opened beforehand): a value changed, or a
    // player's first result of the game added. Adding grows the file, so each such save starts
    // from the same file again, copied back and flushed outside the measurement.
    const std::string pristine = (folder / "pristine.tmp").string();
    plainCopy(stats, pristine);
    const auto putBack = [&] {
        plainCopy(pristine, stats + ".put");
        fs::rename(stats + ".put", stats);
    };
    int value = 7000;
    const auto save = [&](int game) {
        DataFiles data(paths, prompter);
        TeamFiles files = data.team(kLargeTeam);
        PlayerScreen screen;
        check(screen.open(files, game, columns, prompter), "opening a game");
        // Row 1 is player 2, who has no results in any game of the file as written: his passing
        // attempts are added, or changed once he has them.
        (void)screen.clickCell(1, 0);
        screen.editField(0, digits(++value));
        return millisecondsOf([&] {
            if (screen.ok() != PlayerScreen::Leave::GameList)
                fail("the save: " + screen.saveStatus().message());
        });
    };
    // The least a crash-safe save of a few records can do: a small journal written and flushed,
    // then one record written into the file and flushed.
    const auto twoFlushes = [&] {
        platform::File journal, file;
        const Bytes small(4096, 1), record(StatRecord::Length, 2);
        check(platform::openFile(copy, platform::OpenMode::Replace, journal), "journal");
        check(platform::writeAt(journal, 0, small.data(), small.size()), "journal");
        check(platform::flush(journal), "journal");
        check(platform::openFile(pristine, platform::OpenMode::ReadWrite, file), "record");
        Bytes same(StatRecord::Length);
        std::size_t got = 0;
        check(platform::readAt(file, 0, same.data(), same.size(), got), "record");
        check(platform::writeAt(file, 0, same.data(), same.size()), "record");
        check(platform::flush(file), "record");
    };
    // Writing the file from a game's first record on once: read, written to a new file, flushed.
    const auto tailOnce = [&](int game) {
        std::ifstream in(stats, std::ios::binary);
        in.seekg(static_cast<std::streamoff>(game - 1) * kRecordsPerGame * StatRecord::Length);
        platform::File out;
        check(platform::openFile(copy, platform::OpenMode::Replace, out), "tail");
        std::vector<char> buffer(1 << 20);
        long long at = 0;
        while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) ||
               in.gcount() > 0) {
            check(platform::writeAt(out, at, reinterpret_cast<const std::uint8_t*>(buffer.data()),
                                    static_cast<std::size_t>(in.gcount())),
                  "tail");
            at += in.gcount();
        }
        check(platform::flush(out), "tail");
    };
    const auto runs = [&](int game, bool add, const std::function<void()>& reference) {
        std::vector<double> op, ref;
        if (!add)
            (void)save(game); // player 2's results added first
        for (int i = 0; i < 3; ++i) {
            ref.push_back(millisecondsOf(reference));
            op.push_back(save(game));
            if (add)
                putBack();
        }
        if (!add)
            putBack();
        std::sort(op.begin(), op.end());
        std::sort(ref.begin(), ref.end());
        return std::pair{op[1], ref[1]};
    };
    auto [lastAddMs, lastRefMs] = runs(kGames, true, twoFlushes);
    print({"results saved, last game, a player added", "a journal and a record flushed", lastAddMs,
           lastRefMs, 0, 10.0});
    auto [lastValueMs, lastRef2Ms] = runs(kGames, false, twoFlushes);
    print({"results saved, last game, a value changed", "a journal and a record flushed",
           lastValueMs, lastRef2Ms, 0, 10.0});
    auto [middleAddMs, tailMs] = runs(kGames / 2, true, [&] { tailOnce(kGames / 2); });
    print({"results saved, middle game, a player added", "writing the tail once", middleAddMs,
           tailMs, 1.5});
    auto [middleValueMs, middleRefMs] = runs(kGames / 2, false, twoFlushes);
    print({"results saved, middle game, a value changed", "a journal and a record flushed",
           middleValueMs, middleRefMs, 0, 10.0});
    fs::remove(pristine);

    // Inserting game 1 and deleting it again: both rewrite the game and statistics files.
    std::vector<double> insertRuns, deleteRuns, copyRuns;
    for (int i = 0; i < 3; ++i) {
        copyRuns.push_back(millisecondsOf(copyOnce));
        DataFiles data(paths, prompter);
        TeamFiles files = data.team(kLargeTeam);
        GameList games;
        check(games.load(files), "loading the games");
        GameRecord game;
        game.opponent = "Inserted";
        insertRuns.push_back(
            millisecondsOf([&] { check(games.insert(files, 1, game), "insert"); }));
        struct Yes : Prompter {
            Answer ask(const Message&) override { return Answer::Ok; }
            void endProgram(int) override {}
        } yes;
        bool deleted = false;
        deleteRuns.push_back(
            millisecondsOf([&] { check(games.remove(files, yes, 0, deleted), "delete"); }));
        if (!deleted)
            fail("game 1 was not deleted");
    }
    for (auto* v : {&insertRuns, &deleteRuns, &copyRuns})
        std::sort(v->begin(), v->end());
    print({"game 1 inserted", "copying the file once", insertRuns[1], copyRuns[1], 3});
    print({"game 1 deleted", "copying the file once", deleteRuns[1], copyRuns[1], 3});
    fs::remove(copy);

    // The report command's whole run on the large team, as a process.
    const fs::path command = self / "scorvane-report";
    if (fs::exists(command)) {
        const fs::path program = folder / "program";
        fs::create_directories(program);
        InstallResult installed;
        check(installDefaults(prompter, (program / "").string(), dir, installed), "BXFB.INI");
        std::vector<double> run, cat;
        for (int i = 0; i < 3; ++i) {
            cat.push_back(commandTime("cat " + quoted(stats)));
            run.push_back(commandTime(quoted(command.string()) + " --config " +
                                      quoted((program / "").string()) + " --team 1 --category P"));
        }
        std::sort(run.begin(), run.end());
        std::sort(cat.begin(), cat.end());
        print({"scorvane-report --team 1 --category P", "cat of the statistics file", run[1],
               cat[1], 3});
    } else {
        std::cout << "(no scorvane-report beside this program: the command is not measured)\n";
    }

    // Start-up to the first window shown, on the sample season beside the program.
    const fs::path gui = self / "scorvane";
    if (!fs::exists(gui)) {
        std::cout << "(no scorvane beside this program: start-up is not measured)\n";
    } else if (std::getenv("DISPLAY") == nullptr || shell("command -v xdotool").empty()) {
        std::cout << "(start-up needs a display and xdotool: run under xvfb-run)\n";
    } else {
        std::vector<double> shown, plain;
        for (int i = 0; i < 5; ++i) {
            plain.push_back(commandTime(quoted(command.string()) + " --help"));
            // A display that is still starting or busy elsewhere can refuse a connection: a run
            // that could not open its window is tried again.
            double ms = -1;
            for (int attempt = 0; attempt < 3 && ms < 0; ++attempt)
                ms = untilWindowShown(gui.string());
            if (ms < 0)
                fail(gui.string() + " ended three times before it showed a window (see " +
                     gui.string() + ".bench-log)");
            shown.push_back(ms);
        }
        std::sort(shown.begin(), shown.end());
        std::sort(plain.begin(), plain.end());
        print({"start-up until the first window is shown", "scorvane-report --help", shown[2],
               plain[2], 0});
        std::cout << "   start-up target: under 300 ms, " << (shown[2] < 300 ? "met" : "MISSED")
                  << '\n';
    }
    return 0;
}
