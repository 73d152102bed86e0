#include "Statistics.h"

#include "storage/StatLayout.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>

namespace scorvane {
namespace {

constexpr long long kInt16Min = std::numeric_limits<std::int16_t>::min();
constexpr long long kInt16Max = std::numeric_limits<std::int16_t>::max();
constexpr long long kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr long long kInt32Max = std::numeric_limits<std::int32_t>::max();

bool fits(long long v, long long low, long long high) {
    return v >= low && v <= high;
}
bool fits32(long long v) {
    return fits(v, kInt32Min, kInt32Max);
}

// Column codes of the columns that the derivation reads or writes.
namespace pass {
constexpr int Att = 2, Cm = 3, Yds = 4, Int = 5, TD = 6, XPt = 12, Pct = 15, Avg = 16, Rtg = 17,
              Pts = 18;
}
namespace catching {
constexpr int Rec = 2, Yds = 3, TD = 4, YAC = 7, FD = 8, XPt = 10, YatC = 14, Avg = 15, Pts = 16,
              FDPct = 17;
}
namespace rush {
constexpr int Rsh = 2, Yds = 3, TD = 5, XPt = 8, Avg = 12, Pts = 13;
}
namespace defense {
constexpr int Tkl = 2, Sol = 3, Ast = 4;
}
namespace kicks {
constexpr int ExtraPoints = 2, XB = 3, Pnt = 4, PB = 5, P20 = 6, PFC = 7, PTB = 8, PLg = 9,
              PAv = 10, FGAll = 11, FG20 = 12, FG30 = 13, FG40 = 14, FGOver40 = 15, FGB = 16,
              FLg = 17;
}
namespace returns {
constexpr int PRt = 2, PAv = 3, PFC = 4, PF = 5, PTD = 6, PLg = 7, PYd = 8, KRt = 9, KAv = 10,
              KFC = 11, KF = 12, KTD = 13, KLg = 14, KYd = 15;
}

// A set of game numbers (0..32767, as stored in 16 bits) kept as a bitmap: a report adds one for
// each of up to a million records.
class GameSet {
public:
    void insert(int game) {
        if (game < 0 || game > kInt16Max)
            return;
        if (bits_.empty())
            bits_.resize(kWords);
        std::uint64_t& word = bits_[static_cast<std::size_t>(game) / 64];
        const std::uint64_t bit = std::uint64_t{1} << (static_cast<unsigned>(game) % 64);
        if ((word & bit) == 0)
            ++count_;
        word |= bit;
    }
    void insert(const GameSet& other) {
        if (other.bits_.empty())
            return;
        if (bits_.empty())
            bits_.resize(kWords);
        count_ = 0;
        for (std::size_t i = 0; i < kWords; ++i) {
            bits_[i] |= other.bits_[i];
            count_ += static_cast<std::size_t>(std::popcount(bits_[i]));
        }
    }
    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }

private:
    static constexpr std::size_t kWords = (kInt16Max + 1) / 64;
    std::vector<std::uint64_t> bits_;
    std::size_t count_ = 0;
};

// One player's running sums while the records are read, and the games they came from.
struct Sums {
    LineSums line;
    GameSet games;
};

bool has(int marks, int bit) {
    return (marks & bit) != 0;
}

void addKicks(const StatListRecord& record, LineSums& sums) {
    using namespace kicks;
    for (const ListEntry& e : record.entries) {
        const bool good = has(e.marks, kickmark::Good);
        const bool blocked = has(e.marks, kickmark::Blocked);
        switch (e.type) {
        case kicktype::ExtraPoint:
            sums.kick(ExtraPoints, good);
            sums.add(XB, blocked ? 1 : 0);
            break;
        case kicktype::Punt:
            sums.add(Pnt, 1);
            sums.puntYards += e.yards;
            sums.add(PB, blocked ? 1 : 0);
            sums.add(P20, has(e.marks, kickmark::Inside20) ? 1 : 0);
            sums.add(PFC, has(e.marks, kickmark::FairCatch) ? 1 : 0);
            sums.add(PTB, has(e.marks, kickmark::Touchback) ? 1 : 0);
            sums.longest(PLg, e.yards);
            break;
        case kicktype::FieldGoal: {
            sums.kick(FGAll, good);
            const int range = e.yards <= 20   ? FG20
                              : e.yards <= 30 ? FG30
                              : e.yards <= 40 ? FG40
                                              : FGOver40;
            sums.kick(range, good);
            sums.add(FGB, blocked ? 1 : 0);
            if (good)
                sums.longest(FLg, e.yards);
            break;
        }
        default:
            break; // an unused entry, or a letter no kick has
        }
    }
}

void addReturns(const StatListRecord& record, LineSums& sums) {
    using namespace returns;
    for (const ListEntry& e : record.entries) {
        const bool punt = e.type == returntype::Punt;
        if (!punt && e.type != returntype::Kick)
            continue;
        sums.add(punt ? PRt : KRt, 1);
        sums.add(punt ? PYd : KYd, e.yards);
        sums.add(punt ? PFC : KFC, has(e.marks, returnmark::FairCatch) ? 1 : 0);
        sums.add(punt ? PF : KF, has(e.marks, returnmark::Fumble) ? 1 : 0);
        sums.add(punt ? PTD : KTD, has(e.marks, returnmark::Touchdown) ? 1 : 0);
        sums.longest(punt ? PLg : KLg, e.yards);
    }
}

void addListRecord(char category, const StatListRecord& record, LineSums& sums) {
    const int firstUser = ColumnTable::firstUserColumn(category);
    for (std::size_t i = 0; i < record.summary.size(); ++i)
        sums.add(firstUser + static_cast<int>(i), record.summary[i]);
    if (category == 'K')
        addKicks(record, sums);
    else
        addReturns(record, sums);
}

// A quotient computed in double precision and kept in single precision; 0 when the denominator
// is not above 0.
float quotient(long long numerator, long long denominator, double scale = 1.0) {
    if (denominator <= 0)
        return 0.0f;
    return static_cast<float>(static_cast<double>(numerator) / static_cast<double>(denominator) *
                              scale);
}

float clampPart(float part) {
    return part < 0.0f ? 0.0f : part > 2.375f ? 2.375f : part;
}

// The passer rating: four parts, each kept in single precision and clamped on its own to
// 0..2.375, then their sum x 100 / 6 in single precision.
float passerRating(long long att, long long cm, long long yds, long long td, long long ints) {
    if (att <= 0)
        return 0.0f;
    const double a = static_cast<double>(att);
    const float pa = clampPart(static_cast<float>((static_cast<double>(cm) / a - 0.3) / 0.2));
    const float pb = clampPart(static_cast<float>((static_cast<double>(yds) / a - 3) / 4));
    const float pc = clampPart(static_cast<float>((static_cast<double>(td) / a) / 0.05));
    const float pd = clampPart(static_cast<float>((0.095 - static_cast<double>(ints) / a) / 0.04));
    const float sum = pa + pb + pc + pd;
    return sum * 100.0f / 6.0f;
}

// A derived figure of a line, from its counts. Players keep Pts and Y@C in 16 bits; the totals
// line in 32. A derived figure built on a count out of the 32-bit range is out of range too.
void deriveFigure(char category, int code, const LineSums& sums, bool totals, Figure& fig) {
    const long long low = totals ? kInt32Min : kInt16Min;
    const long long high = totals ? kInt32Max : kInt16Max;
    auto v = [&](int c) { return sums.value[static_cast<std::size_t>(c)]; };
    auto bad = [&](std::initializer_list<int> codes) {
        for (int c : codes)
            if (!fits32(v(c)))
                return true;
        return false;
    };
    auto ratio = [&](float value, std::initializer_list<int> from) {
        fig.ratio = value;
        fig.overflow = bad(from);
    };
    // TD x 6 + XPt x 2, each product and the sum checked.
    auto points = [&](int td, int xpt) {
        const long long six = v(td) * 6;
        const long long two = v(xpt) * 2;
        const long long sum = six + two;
        fig.value = sum;
        fig.overflow = bad({td, xpt}) || !fits(six, low, high) || !fits(two, low, high) ||
                       !fits(sum, low, high);
    };

    switch (category) {
    case 'P': {
        using namespace pass;
        if (code == Pct)
            ratio(quotient(v(Cm), v(Att), 100.0), {Cm, Att});
        else if (code == Avg)
            ratio(quotient(v(Yds), v(Cm)), {Yds, Cm});
        else if (code == Rtg)
            ratio(passerRating(v(Att), v(Cm), v(Yds), v(TD), v(Int)), {Att, Cm, Yds, TD, Int});
        else if (code == Pts)
            points(TD, XPt);
        break;
    }
    case 'C': {
        using namespace catching;
        if (code == YatC) {
            const long long atCatch = v(Yds) - v(YAC);
            fig.value = atCatch;
            fig.overflow = bad({Yds, YAC}) || !fits(atCatch, low, high);
        } else if (code == Avg) {
            ratio(quotient(v(Yds), v(Rec)), {Yds, Rec});
        } else if (code == FDPct) {
            ratio(quotient(v(FD), v(Rec)), {FD, Rec});
        } else if (code == Pts) {
            points(TD, XPt);
        }
        break;
    }
    case 'R': {
        using namespace rush;
        if (code == Avg)
            ratio(quotient(v(Yds), v(Rsh)), {Yds, Rsh});
        else if (code == Pts)
            points(TD, XPt);
        break;
    }
    case 'D': {
        using namespace defense;
        if (code == Tkl) {
            const long long tackles = v(Sol) + v(Ast);
            fig.value = tackles;
            fig.overflow = bad({Sol, Ast}) || !fits32(tackles);
        }
        break;
    }
    case 'K':
        if (code == kicks::PAv) {
            fig.ratio = quotient(sums.puntYards, v(kicks::Pnt));
            fig.overflow = !fits32(sums.puntYards) || bad({kicks::Pnt});
        }
        break;
    case 'T': {
        using namespace returns;
        if (code == PAv)
            ratio(quotient(v(PYd), v(PRt)), {PYd, PRt});
        else if (code == KAv)
            ratio(quotient(v(KYd), v(KRt)), {KYd, KRt});
        break;
    }
    default:
        break;
    }
}

bool derivedKind(char category, int code, ColumnKind kind) {
    switch (kind) {
    case ColumnKind::Ratio:
    case ColumnKind::Average:
    case ColumnKind::Points:
    case ColumnKind::YardsAtCatch:
        return true;
    default:
        return category == 'D' && code == defense::Tkl;
    }
}

void noteOverflows(char category, const PlayerFigures& f, std::vector<OverflowNote>& notes) {
    const int count = ColumnTable::columnCount(category);
    for (int code = 1; code <= count; ++code)
        if (f[code].overflow)
            notes.push_back({f.teamNumber, f.number, f.name, code});
}

} // namespace

bool isDerived(char category, int code) {
    return derivedKind(category, code, columnKind(category, code));
}

void LineSums::longest(int code, long long v) {
    const auto c = static_cast<std::size_t>(code);
    if (!longestSeen[c] || v > value[c])
        value[c] = v;
    longestSeen[c] = true;
}

void LineSums::kick(int code, bool good) {
    ++attempted[static_cast<std::size_t>(code)];
    if (good)
        ++made[static_cast<std::size_t>(code)];
}

void LineSums::addLine(char category, const LineSums& other) {
    const auto& kinds = columnKinds(category);
    const int count = ColumnTable::columnCount(category);
    for (int code = 2; code <= count; ++code) {
        const auto c = static_cast<std::size_t>(code);
        switch (kinds[c]) {
        case ColumnKind::Longest:
            if (other.longestSeen[c])
                longest(code, other.value[c]);
            break;
        case ColumnKind::MadeAttempted:
            made[c] += other.made[c];
            attempted[c] += other.attempted[c];
            break;
        default:
            value[c] += other.value[c];
        }
    }
    puntYards += other.puntYards;
}

CategoryRecords::CategoryRecords(char category) : category_(category) {
    if (categoryIndex(category) < 0 || isListCategory(category))
        return;
    const int count = ColumnTable::columnCount(category);
    for (int code = 2; code <= count; ++code) {
        const int slot = statSlot(category, code);
        if (slot < 0 || slot >= static_cast<int>(StatRecord::ValueCount))
            continue;
        entered_.push_back({code, static_cast<std::size_t>(slot),
                            columnKind(category, code) == ColumnKind::Longest});
    }
}

void CategoryRecords::add(ByteView record, LineSums& sums) const {
    if (categoryIndex(category_) < 0)
        return;
    if (isListCategory(category_)) {
        addListRecord(category_, StatListRecord::decode(record), sums);
        return;
    }
    const std::array<std::int16_t, StatRecord::ValueCount> values =
        StatRecord::decodeValues(record);
    for (const Entered& c : entered_) {
        const long long v = values[c.slot];
        if (c.longest)
            sums.longest(c.code, v);
        else
            sums.add(c.code, v);
    }
}

namespace {

// A figure of a line other than its games: a count, a made/attempted pair or a derived figure.
void countedFigure(char category, int code, ColumnKind kind, const LineSums& sums, bool totals,
                   Figure& fig) {
    const auto c = static_cast<std::size_t>(code);
    if (derivedKind(category, code, kind)) {
        deriveFigure(category, code, sums, totals, fig);
    } else if (kind == ColumnKind::MadeAttempted) {
        fig.made = sums.made[c];
        fig.attempted = sums.attempted[c];
        fig.overflow = !fits32(fig.made) || !fits32(fig.attempted) || !fits32(fig.made * 100);
    } else {
        fig.value = sums.value[c];
        fig.overflow = !fits32(fig.value);
    }
}

} // namespace

void lineFigures(char category, const LineSums& sums, long long games, bool totals,
                 PlayerFigures& f) {
    const int count = ColumnTable::columnCount(category);
    f[1].value = games;
    f[1].overflow = totals ? !fits32(games) : games > kInt16Max;
    const auto& kinds = columnKinds(category);
    for (int code = 2; code <= count; ++code)
        countedFigure(category, code, kinds[static_cast<std::size_t>(code)], sums, totals, f[code]);
}

Figure lineFigure(char category, const LineSums& sums, int code, bool totals) {
    Figure fig;
    const ColumnKind kind = columnKind(category, code); // None past the category's columns
    if (code > 1 && kind != ColumnKind::None)
        countedFigure(category, code, kind, sums, totals, fig);
    return fig;
}

bool PlayerFilter::lists(int teamNumber, int playerNumber, long long games) const {
    if (games < minimumGames)
        return false;
    return players.empty() || players.count({teamNumber, playerNumber}) != 0;
}

std::vector<bool> selectedGames(const TeamSeason& team, const Selection& selection) {
    // Game numbers are 16-bit.
    std::vector<bool> selected(std::numeric_limits<std::int16_t>::max() + 1, false);
    for (const GameRecord& g : team.games)
        if (g.gameNumber >= 0 && selection.countsGame(g))
            selected[static_cast<std::size_t>(g.gameNumber)] = true;
    return selected;
}

StatReport ComputeStatistics(char category, const std::vector<TeamSeason>& teams,
                             const Selection& selection, const PlayerFilter& filter) {
    StatReport report;
    report.category = category;
    report.multipleTeams = teams.size() > 1;
    report.totals.name = fit("Totals", width::playerName);
    if (categoryIndex(category) < 0)
        return report;

    const CategoryRecords reader(category);
    LineSums total;
    long long totalGames = 0;
    for (const TeamSeason& team : teams) {
        const std::vector<bool> selected = selectedGames(team, selection);
        std::array<Sums, kMaxPlayers + 1> sums{};
        const Status read = team.stats.forEach([&](ByteView raw) {
            const StatHeader h = StatHeader::decode(raw);
            if (!h.isLive() || h.category != category || !isPlayerNumber(h.playerNumber) ||
                h.gameNumber < 0 || !selected[static_cast<std::size_t>(h.gameNumber)])
                return;
            Sums& s = sums[static_cast<std::size_t>(h.playerNumber)];
            s.games.insert(h.gameNumber);
            reader.add(raw, s.line);
        });
        if (!read && report.status)
            report.status = read;

        // Listing in roster order; the totals gather what the listed players did.
        GameSet teamGames;
        for (int number = 1; number <= kMaxPlayers; ++number) {
            const Sums& s = sums[static_cast<std::size_t>(number)];
            const std::string name = team.playerName(number);
            if (s.games.empty() || !selection.countsPlayer(number, name) ||
                !filter.lists(team.number, number, static_cast<long long>(s.games.size())))
                continue;
            PlayerFigures f;
            f.teamNumber = team.number;
            f.teamShortName = team.shortName;
            f.number = number;
            f.name = name;
            lineFigures(category, s.line, static_cast<long long>(s.games.size()), false, f);
            noteOverflows(category, f, report.overflows);
            report.players.push_back(std::move(f));

            teamGames.insert(s.games);
            total.addLine(category, s.line);
        }
        totalGames += static_cast<long long>(teamGames.size());
    }

    lineFigures(category, total, totalGames, true, report.totals);
    noteOverflows(category, report.totals, report.overflows);
    return report;
}

void sortPlayers(StatReport& report, int sortColumn, char direction) {
    const ColumnKind kind = columnKind(report.category, sortColumn);
    if (kind == ColumnKind::None)
        return;
    auto key = [&](const PlayerFigures& p) -> double {
        const Figure& f = p[sortColumn];
        switch (kind) {
        case ColumnKind::Ratio:
        case ColumnKind::Average:
            return f.ratio;
        case ColumnKind::MadeAttempted:
            return static_cast<double>(f.made);
        default:
            return static_cast<double>(f.value);
        }
    };
    const bool descending = direction == 'D';
    std::stable_sort(report.players.begin(), report.players.end(),
                     [&](const PlayerFigures& a, const PlayerFigures& b) {
                         return descending ? key(a) > key(b) : key(a) < key(b);
                     });
}

std::string formatNumber(double value, std::string_view mask) {
    // The mask: literal characters before the first placeholder, the whole-number placeholders
    // ("#" optional, "0" always written) and the decimals after the point.
    std::size_t i = 0;
    std::string prefix;
    while (i < mask.size() && mask[i] != '#' && mask[i] != '0' && mask[i] != '.')
        prefix += mask[i++];
    int wholeZeros = 0;
    for (; i < mask.size() && mask[i] != '.'; ++i)
        wholeZeros += mask[i] == '0' ? 1 : 0;
    int decimals = 0;
    if (i < mask.size() && mask[i] == '.')
        for (++i; i < mask.size() && mask[i] == '0'; ++i)
            ++decimals;

    long long scale = 1;
    for (int d = 0; d < decimals; ++d)
        scale *= 10;
    if (!std::isfinite(value) || std::fabs(value) * static_cast<double>(scale) > 9.0e17)
        return "Overflow";
    const long long scaled = std::llround(std::fabs(value) * static_cast<double>(scale));
    const long long whole = scaled / scale;
    std::string text = prefix;
    if (value < 0 && scaled != 0)
        text += "-";
    std::string wholeText = whole == 0 && wholeZeros == 0 ? "" : digits(whole);
    if (static_cast<int>(wholeText.size()) < wholeZeros)
        wholeText.insert(0, static_cast<std::size_t>(wholeZeros) - wholeText.size(), '0');
    text += wholeText;
    if (decimals > 0) {
        std::string fraction = digits(scaled % scale);
        fraction.insert(0, static_cast<std::size_t>(decimals) - fraction.size(), '0');
        text += "." + fraction;
    }
    return text;
}

std::string FormatMadeAttempted(std::int32_t made, std::int32_t attempted) {
    float percent = 0.0f;
    if (attempted >= 1) {
        const long long hundredfold = static_cast<long long>(made) * 100;
        if (!fits32(hundredfold))
            return "Overflow";
        percent = static_cast<float>(static_cast<double>(hundredfold) / attempted);
    }
    return digits(made) + "/" + digits(attempted) +
           AlignText(formatNumber(percent, " ##0.0") + "%", 7, 'L');
}

std::string figureText(char category, int code, const Figure& figure) {
    if (figure.overflow)
        return "Overflow";
    switch (columnKind(category, code)) {
    case ColumnKind::None:
        return {};
    case ColumnKind::Ratio:
        return formatNumber(figure.ratio, "###0.0");
    case ColumnKind::Average:
        return formatNumber(figure.ratio, "##0.0");
    case ColumnKind::MadeAttempted:
        return FormatMadeAttempted(static_cast<std::int32_t>(figure.made),
                                   static_cast<std::int32_t>(figure.attempted));
    case ColumnKind::Sacks: {
        const long long tenths = figure.value < 0 ? -figure.value : figure.value;
        return (figure.value < 0 ? "-" : "") + digits(tenths / 10) + "." + digits(tenths % 10);
    }
    default:
        return digits(figure.value);
    }
}

namespace {

std::string leadingPart(const StatReport& report, const std::string& number,
                        const std::string& name, const std::string& team) {
    std::string line = AlignText(number, 3, 'L');
    line += " " + fit(name, width::playerName);
    if (report.multipleTeams)
        line += " " + fit(team, width::shortName);
    return line;
}

std::string figureColumns(const StatReport& report, const PlayerFigures& f,
                          const std::vector<int>& columns, const std::vector<int>& widths) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!isReportColumn(report.category, columns[i]))
            continue;
        line +=
            AlignText(figureText(report.category, columns[i], f[columns[i]]), widths.at(i), 'L');
    }
    return line;
}

// The width a figure needs to keep one space before it.
int neededWidth(const StatReport& report, int code, const PlayerFigures& f) {
    return static_cast<int>(trim(figureText(report.category, code, f[code])).size()) + 1;
}

} // namespace

std::vector<int> printedWidths(const StatReport& report, const std::vector<int>& columns,
                               const ColumnTable& table) {
    std::vector<int> widths;
    widths.reserve(columns.size());
    for (int code : columns) {
        int width = static_cast<int>(columnHeading(report.category, code, table).size());
        if (width > 0) {
            width = std::max(width, neededWidth(report, code, report.totals));
            for (const PlayerFigures& p : report.players)
                width = std::max(width, neededWidth(report, code, p));
        }
        widths.push_back(width);
    }
    return widths;
}

std::string FormatHeadingLine(const StatReport& report, const std::vector<int>& columns,
                              const ColumnTable& table, const std::vector<int>& widths) {
    std::string line = leadingPart(report, "No", "Name", "Team");
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string heading = columnHeading(report.category, columns[i], table);
        if (heading.empty())
            continue;
        // A widened column's heading keeps its own spacing and is moved right to the column's end.
        const auto width = static_cast<std::size_t>(widths.at(i));
        line += std::string(width > heading.size() ? width - heading.size() : 0, ' ') + heading;
    }
    return line;
}

std::string FormatPlayerLine(const StatReport& report, const PlayerFigures& player,
                             const std::vector<int>& columns, const std::vector<int>& widths) {
    return leadingPart(report, digits(player.number), player.name, player.teamShortName) +
           figureColumns(report, player, columns, widths);
}

std::string FormatTotalsLine(const StatReport& report, const std::vector<int>& columns,
                             const std::vector<int>& widths) {
    return leadingPart(report, "", "Totals", "") +
           figureColumns(report, report.totals, columns, widths);
}

std::string FormatHeadingLine(const StatReport& report, const std::vector<int>& columns,
                              const ColumnTable& table) {
    return FormatHeadingLine(report, columns, table, printedWidths(report, columns, table));
}

std::string FormatPlayerLine(const StatReport& report, const PlayerFigures& player,
                             const std::vector<int>& columns, const ColumnTable& table) {
    return FormatPlayerLine(report, player, columns, printedWidths(report, columns, table));
}

std::string FormatTotalsLine(const StatReport& report, const std::vector<int>& columns,
                             const ColumnTable& table) {
    return FormatTotalsLine(report, columns, printedWidths(report, columns, table));
}

} // namespace scorvane
