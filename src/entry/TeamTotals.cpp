#include "TeamTotals.h"

#include "EntryFields.h"

#include "storage/Bytes.h"

namespace scorvane {

namespace {

std::string counted(long long n, const std::string& one, const std::string& many) {
    return n == 1 ? "1 " + one : digits(n) + " " + many;
}

std::string madeOf(long long made, long long tried, const std::string& what) {
    return digits(made) + " for" + " " + digits(tried) + " " + what;
}

} // namespace

TeamTotals teamTotals(char category, const GameResults& results) {
    TeamTotals t;
    const int c = categoryIndex(category);
    const StatLayout* layout = StatLayout::of(category);
    if (c < 0 || !layout)
        return t;

    std::array<long long, kEntryFieldCount> sums{};
    long long fgMade = 0, fgTried = 0, xpMade = 0, xpTried = 0, punts = 0;
    long long kickReturns = 0, puntReturns = 0;
    for (int p = 1; p <= kMaxPlayers; ++p) {
        const CategoryResults& r = results.at(p, c);
        if (!r.played)
            continue;
        for (const auto& f : layout->fields())
            sums[static_cast<std::size_t>(f.screenField)] +=
                r.values[static_cast<std::size_t>(f.screenField)];
        if (category == 'K') {
            for (const auto& kick : usedPlays(r.plays)) {
                t.items.push_back(kickItemText(kick, false));
                const bool good = decodeKickMarks(kick.marks).good;
                if (kick.type == kicktype::Punt)
                    ++punts;
                else if (kick.type == kicktype::FieldGoal)
                    ++fgTried, fgMade += good ? 1 : 0;
                else if (kick.type == kicktype::ExtraPoint)
                    ++xpTried, xpMade += good ? 1 : 0;
            }
        } else if (category == 'T') {
            for (const auto& ret : usedPlays(r.plays)) {
                t.items.push_back(returnItemText(ret));
                puntReturns += ret.type == returntype::Punt ? 1 : 0;
                kickReturns += ret.type == returntype::Kick ? 1 : 0;
            }
        }
    }
    for (const auto& f : layout->fields())
        t.fields[static_cast<std::size_t>(f.screenField)] =
            storedValueText(sums[static_cast<std::size_t>(f.screenField)], f.scale);
    t.fieldGoals = madeOf(fgMade, fgTried, "Field Goals");
    t.extraPoints = madeOf(xpMade, xpTried, "Extra Points");
    t.punts = counted(punts, "Punt", "Punts");
    t.kickReturns = counted(kickReturns, "Kick Return", "Kick Returns");
    t.puntReturns = counted(puntReturns, "Punt Return", "Punt Returns");
    return t;
}

std::string playersRecordedText(int count) {
    // The number keeps the blank of its sign position, as a negative one would show its "-".
    return "Players Recorded -" + ((count < 0 ? "" : " ") + digits(count));
}

} // namespace scorvane
