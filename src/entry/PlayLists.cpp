#include "PlayLists.h"

#include "storage/Bytes.h"
#include "storage/StatLayout.h"

#include <algorithm>

namespace scorvane {

namespace {

// A blank type letter marks an unused slot; so does a control character (a zeroed slot).
bool used(const ListEntry& e) {
    return static_cast<unsigned char>(e.type) > ' ';
}

// The used slots at the front, in their order, blank slots after them.
void compact(PlayList& plays) {
    PlayList packed{};
    std::size_t next = 0;
    for (const auto& e : plays)
        if (used(e))
            packed[next++] = e;
    plays = packed;
}

std::size_t at(KickMark m) {
    return static_cast<std::size_t>(m);
}

// Yards are kept in 16 bits: a number beyond that is refused like any other bad distance.
constexpr long long kLeastYards = -32768;

} // namespace

int playCount(const PlayList& plays) {
    int n = 0;
    for (const auto& e : plays)
        n += used(e) ? 1 : 0;
    return n;
}

std::vector<ListEntry> usedPlays(const PlayList& plays) {
    std::vector<ListEntry> out;
    for (const auto& e : plays)
        if (used(e))
            out.push_back(e);
    return out;
}

bool appendPlay(PlayList& plays, const ListEntry& entry) {
    const int n = playCount(plays);
    if (n >= static_cast<int>(plays.size()))
        return false;
    compact(plays);
    plays[static_cast<std::size_t>(n)] = entry;
    return true;
}

bool removePlay(PlayList& plays, int item) {
    if (item < 0 || item >= playCount(plays))
        return false;
    compact(plays);
    for (std::size_t i = static_cast<std::size_t>(item); i + 1 < plays.size(); ++i)
        plays[i] = plays[i + 1];
    plays.back() = ListEntry{};
    return true;
}

// --- kick entry ---------------------------------------------------------------------------------

bool KickEntry::markAvailable(KickMark m) const {
    switch (type) {
    case KickType::FieldGoal:
    case KickType::ExtraPoint:
        return m == KickMark::Good || m == KickMark::Blocked;
    case KickType::Punt:
        return m != KickMark::Good;
    case KickType::None:
        return true;
    }
    return true;
}

void KickEntry::select(KickType t) {
    type = t;
    for (int m = 0; m < kKickMarkCount; ++m)
        if (!markAvailable(static_cast<KickMark>(m)))
            marks[static_cast<std::size_t>(m)] = false;
    if (t == KickType::ExtraPoint)
        yards = "0";
}

void KickEntry::setMark(KickMark m, bool on) {
    marks[at(m)] = on && markAvailable(m);
}

void KickEntry::reset() {
    yards = "0";
    marks.fill(false);
}

void ReturnEntry::reset() {
    yards = "0";
    marks.fill(false);
}

// An extra point has no yards: only a tick sets one up (a missed one reads as the reset state).
bool KickEntry::setUp() const {
    const bool ticked = std::find(marks.begin(), marks.end(), true) != marks.end();
    return type != KickType::None && (ticked || leadingNumber(yards) != 0);
}

bool ReturnEntry::setUp() const {
    const bool ticked = std::find(marks.begin(), marks.end(), true) != marks.end();
    return type != ReturnType::None && (ticked || leadingNumber(yards) != 0);
}

// --- checks -------------------------------------------------------------------------------------

Message playProblemMessage(const PlayProblem& problem) {
    return Message{problem.text, problem.title, Buttons::Ok, Icon::Warning, Answer::Ok};
}

std::optional<PlayProblem> checkKick(int listed, const KickEntry& entry) {
    if (listed >= static_cast<int>(StatListRecord::EntryCount))
        return PlayProblem{"Can not add more than 18 kicks!", "18 Kicks Max"};
    if (entry.type == KickType::None)
        return PlayProblem{"Must select FG, Xpt or Punt!", "Invalid Kick Type"};
    const long long yards = leadingNumber(entry.yards);
    if (entry.type == KickType::FieldGoal) {
        if (yards < 1)
            return PlayProblem{"FG yards must be > 0.", "Invalid FG Yards"};
        if (yards > 100)
            return PlayProblem{"FG yards can not be > 100.", "Invalid FG Yards"};
    }
    if (entry.type == KickType::Punt) {
        if (yards > 100)
            return PlayProblem{"Punt yards can not be > 100.", "Invalid Punt Yards", true};
        if (yards < kLeastYards)
            return PlayProblem{"Punt yards can not be < -32768.", "Invalid Punt Yards", true};
        if (entry.mark(KickMark::Touchback) && entry.mark(KickMark::FairCatch))
            return PlayProblem{"Can not have Fair Catch with Touchback.", "Punt Conflicts"};
        if (entry.mark(KickMark::Touchback) && entry.mark(KickMark::Inside20))
            return PlayProblem{"Can not have Inside 20 with Touchback.", "Punt Conflicts", true};
    }
    return std::nullopt;
}

std::optional<PlayProblem> checkReturn(int listed, const ReturnEntry& entry) {
    if (listed >= static_cast<int>(StatListRecord::EntryCount))
        return PlayProblem{"Can not add more than 18 returns!", "18 Returns Max"};
    if (entry.type == ReturnType::None)
        return PlayProblem{"Must select Punt or Kick Return!", "Invalid Return Type"};
    const long long yards = leadingNumber(entry.yards);
    if (yards > 120)
        return PlayProblem{"Return yards can not be > 120.", "Invalid Return Yards", true};
    if (yards < kLeastYards)
        return PlayProblem{"Return yards can not be < -32768.", "Invalid Return Yards", true};
    return std::nullopt;
}

std::optional<PlayProblem> checkKickDelete(int listed, int selected) {
    if (listed == 0)
        return PlayProblem{"No kick to delete!", "Invalid Delete"};
    if (selected < 0 || selected >= listed)
        return PlayProblem{"Must select kick to delete!", "Invalid Delete"};
    return std::nullopt;
}

std::optional<PlayProblem> checkReturnDelete(int listed, int selected) {
    if (listed == 0)
        return PlayProblem{"No return to delete!", "Invalid Delete"};
    if (selected < 0 || selected >= listed)
        return PlayProblem{"Must select return to delete!", "Invalid Delete"};
    return std::nullopt;
}

// --- entries and item texts ---------------------------------------------------------------------

ListEntry kickPlay(const KickEntry& entry) {
    ListEntry e;
    int marks = 0;
    marks += entry.mark(KickMark::Good) ? kickmark::Good : 0;
    marks += entry.mark(KickMark::Blocked) ? kickmark::Blocked : 0;
    switch (entry.type) {
    case KickType::FieldGoal:
        e.type = kicktype::FieldGoal;
        e.yards = static_cast<std::int16_t>(leadingNumber(entry.yards));
        break;
    case KickType::ExtraPoint:
        e.type = kicktype::ExtraPoint; // an extra point has no distance
        break;
    case KickType::Punt:
        e.type = kicktype::Punt;
        e.yards = static_cast<std::int16_t>(leadingNumber(entry.yards));
        marks += entry.mark(KickMark::FairCatch) ? kickmark::FairCatch : 0;
        marks += entry.mark(KickMark::Inside20) ? kickmark::Inside20 : 0;
        marks += entry.mark(KickMark::Touchback) ? kickmark::Touchback : 0;
        break;
    case KickType::None:
        break;
    }
    e.marks = static_cast<std::int16_t>(marks);
    return e;
}

ListEntry returnPlay(const ReturnEntry& entry) {
    ListEntry e;
    e.type = entry.type == ReturnType::Punt ? returntype::Punt : returntype::Kick;
    e.yards = static_cast<std::int16_t>(leadingNumber(entry.yards));
    int marks = 0;
    marks += entry.mark(ReturnMark::FairCatch) ? returnmark::FairCatch : 0;
    marks += entry.mark(ReturnMark::Fumble) ? returnmark::Fumble : 0;
    marks += entry.mark(ReturnMark::Touchdown) ? returnmark::Touchdown : 0;
    e.marks = static_cast<std::int16_t>(marks);
    return e;
}

KickOutcome decodeKickMarks(int marks) {
    KickOutcome k;
    auto take = [&marks](int bit) {
        if (marks < bit)
            return false;
        marks -= bit;
        return true;
    };
    k.touchback = take(kickmark::Touchback);
    k.inside20 = take(kickmark::Inside20);
    k.fairCatch = take(kickmark::FairCatch);
    k.blocked = take(kickmark::Blocked);
    k.good = marks == kickmark::Good;
    return k;
}

ReturnOutcome decodeReturnMarks(int marks) {
    ReturnOutcome r;
    auto take = [&marks](int bit) {
        if (marks < bit)
            return false;
        marks -= bit;
        return true;
    };
    r.touchdown = take(returnmark::Touchdown);
    r.fumble = take(returnmark::Fumble);
    r.fairCatch = marks == returnmark::FairCatch;
    return r;
}

std::string kickItemText(const ListEntry& kick, bool justAdded) {
    const KickOutcome k = decodeKickMarks(kick.marks);
    std::string text;
    switch (kick.type) {
    case kicktype::FieldGoal:
        text = "FG ";
        break;
    case kicktype::ExtraPoint:
        text = justAdded ? "Xpt " : "XPt ";
        break;
    case kicktype::Punt:
        text = "Punt ";
        break;
    default: // a letter no kick has: shown as it is stored
        text = std::string(1, kick.type) + " ";
        break;
    }
    if (kick.type != kicktype::ExtraPoint)
        text += digits(kick.yards) + " ";
    if (kick.type != kicktype::Punt) {
        if (k.good)
            text += "Good ";
        else if (!k.blocked)
            text += "Missed ";
    }
    if (k.blocked)
        text += "Blk ";
    if (k.fairCatch)
        text += "FC ";
    if (k.inside20)
        text += "In20 ";
    if (k.touchback)
        text += "TB ";
    return text;
}

std::string returnItemText(const ListEntry& ret) {
    const ReturnOutcome r = decodeReturnMarks(ret.marks);
    std::string text;
    if (ret.type == returntype::Punt)
        text = "PR ";
    else if (ret.type == returntype::Kick)
        text = "KR ";
    else // a letter no return has: shown as it is stored
        text = std::string(1, ret.type) + " ";
    text += digits(ret.yards) + " ";
    if (r.fairCatch)
        text += "FC ";
    if (r.fumble)
        text += "F ";
    if (r.touchdown)
        text += "TD ";
    return text;
}

std::vector<std::string> kickItems(const PlayList& plays) {
    std::vector<std::string> items;
    for (const auto& e : usedPlays(plays))
        items.push_back(kickItemText(e, false));
    return items;
}

std::vector<std::string> returnItems(const PlayList& plays) {
    std::vector<std::string> items;
    for (const auto& e : usedPlays(plays))
        items.push_back(returnItemText(e));
    return items;
}

} // namespace scorvane
