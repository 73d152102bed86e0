// The season computation over a data directory of any contents: the team list, two teams'
// rosters, games and statistics, a report-format file, half-written files and a journal. Every
// report category and the team record are computed and formatted for a selection the input
// chooses; then the directory is opened as the program opens it.

#include "FuzzInput.h"
#include "reports/ReportFormats.h"
#include "reports/Season.h"
#include "reports/Statistics.h"
#include "reports/TeamRecord.h"
#include "support/FakePrompter.h"

using namespace scorvane;
using namespace scorvane::testing;

namespace {

Selection selectionFrom(FuzzInput& in) {
    Selection s;
    s.fromGame = in.number(kLowestGame, kHighestGame);
    s.toGame = in.number(s.fromGame, kHighestGame);
    const std::uint8_t types = in.byte();
    for (int t = 0; t < kGameTypeCount; ++t)
        s.gameTypes[static_cast<std::size_t>(t)] = (types & (1 << t)) == 0;
    s.specialSelect = (types & 0x80) != 0;
    if (in.byte() % 4 == 0)
        s.playerNumber = in.number(0, kMaxPlayers);
    if (in.byte() % 4 == 0)
        s.playerName = selectionPlayerName(in.text(17));
    return s;
}

void report(const std::vector<TeamSeason>& teams, const Selection& selection, FuzzInput& in) {
    const ColumnTable table;
    const ConfigRecord config;
    for (char category : kCategoryLetters) {
        StatReport r = ComputeStatistics(category, teams, selection);
        FUZZ_CHECK(r.category == category);
        sortPlayers(r, in.number(0, 40), in.byte() % 2 ? 'D' : 'A');
        const std::vector<int> columns = formatColumns(defaultFormat(category));
        const std::vector<int> widths = printedWidths(r, columns, table);
        const std::string heading = FormatHeadingLine(r, columns, table, widths);
        for (const PlayerFigures& p : r.players) {
            FUZZ_CHECK(isPlayerNumber(p.number));
            // Every line of a report is as long as its heading: no figure is cut or left out.
            FUZZ_CHECK(FormatPlayerLine(r, p, columns, widths).size() == heading.size());
        }
        FUZZ_CHECK(FormatTotalsLine(r, columns, widths).size() == heading.size());
    }
    const TeamRecordReport record = computeTeamRecord(teams, selection);
    for (int row : record.shownRows()) {
        FUZZ_CHECK(row >= 1 && row <= kTotalsRow);
        (void)teamRecordLine(record, row, config, record.anyTies());
        (void)teamRecordCells(record, row, config, record.anyTies());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TempDir folder;
    FuzzInput in(data, size);
    writeDataDirectory(in, folder);
    const Selection selection = selectionFrom(in);
    const DataPaths paths{folder.dir(), folder.dir(), folder.dir()};

    // Read without changing anything, as the report command does.
    std::vector<TeamSeason> teams;
    for (int team : {1, 2}) {
        TeamSeason season;
        if (readTeamSeason(paths, team, season))
            teams.push_back(std::move(season));
    }
    report(teams, selection, in);

    // Through the program's files, which finish an interrupted change and convert older rosters.
    FakePrompter prompter;
    DataFiles files(paths, prompter);
    teams.clear();
    for (int team : {1, 2}) {
        TeamSeason season;
        const Status s = loadTeamSeason(files, team, season);
        FUZZ_CHECK(s.kind() != ErrorKind::ProgramEnded && s.kind() != ErrorKind::Disk);
        if (s)
            teams.push_back(std::move(season));
    }
    report(teams, selection, in);
    FUZZ_CHECK(prompter.shown.empty());
    return 0;
}
