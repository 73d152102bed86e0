#include "SiteText.h"

#include "entry/PlayLists.h"
#include "storage/Cp1252.h"
#include "storage/FileNames.h"
#include "storage/StatLayout.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <array>
#include <optional>

namespace scorvane {

namespace {

using Value = std::optional<long long>;

constexpr int kPassing = 0, kReceiving = 1, kRushing = 2, kDefense = 3, kKicking = 4, kReturns = 5;

// Punt or kick returns of one player: the fair catches apart, since the site counts them in a
// field of their own and a fair catch is no return.
struct ReturnFigures {
    bool any = false; // any return of the kind listed, fair catches included
    long long number = 0, yards = 0, touchdowns = 0, fairCatches = 0;
    Value longest;
};

// What one player's line is made from: his categories (nullptr where he is not recorded) and the
// sums of his kicks and returns.
struct Figures {
    std::array<const CategoryResults*, kCategoryCount> category{};
    bool anyFieldGoal = false, anyExtraPoint = false, anyPunt = false;
    long long fgMade = 0, fgAttempted = 0, xpMade = 0, xpAttempted = 0;
    long long punts = 0, puntYards = 0, puntInside20 = 0;
    Value fgLong, puntLong;
    ReturnFigures puntReturns, kickReturns;

    Value value(int c, int screenField) const {
        const CategoryResults* r = category[static_cast<std::size_t>(c)];
        if (!r)
            return std::nullopt;
        return r->values[static_cast<std::size_t>(screenField)];
    }
    bool recorded(int c) const { return category[static_cast<std::size_t>(c)] != nullptr; }
};

Value longer(Value longest, long long yards) {
    return longest ? std::max(*longest, yards) : yards;
}

Figures figuresOf(const GameResults& results, int player) {
    Figures f;
    for (int c = 0; c < kCategoryCount; ++c) {
        const CategoryResults& r = results.at(player, c);
        f.category[static_cast<std::size_t>(c)] = r.played ? &r : nullptr;
    }
    if (const CategoryResults* k = f.category[kKicking])
        for (const ListEntry& e : k->plays) {
            const KickOutcome outcome = decodeKickMarks(e.marks);
            if (e.type == kicktype::FieldGoal) {
                f.anyFieldGoal = true;
                ++f.fgAttempted;
                if (outcome.good) {
                    ++f.fgMade;
                    f.fgLong = longer(f.fgLong, e.yards);
                }
            } else if (e.type == kicktype::ExtraPoint) {
                f.anyExtraPoint = true;
                ++f.xpAttempted;
                f.xpMade += outcome.good ? 1 : 0;
            } else if (e.type == kicktype::Punt) {
                f.anyPunt = true;
                ++f.punts;
                f.puntYards += e.yards;
                f.puntLong = longer(f.puntLong, e.yards);
                f.puntInside20 += outcome.inside20 ? 1 : 0;
            }
        }
    if (const CategoryResults* t = f.category[kReturns])
        for (const ListEntry& e : t->plays) {
            ReturnFigures* kind = e.type == returntype::Punt   ? &f.puntReturns
                                  : e.type == returntype::Kick ? &f.kickReturns
                                                               : nullptr;
            if (!kind)
                continue;
            const ReturnOutcome outcome = decodeReturnMarks(e.marks);
            kind->any = true;
            kind->touchdowns += outcome.touchdown ? 1 : 0;
            if (outcome.fairCatch) {
                ++kind->fairCatches;
                continue;
            }
            ++kind->number;
            kind->yards += e.yards;
            kind->longest = longer(kind->longest, e.yards);
        }
    return f;
}

Value when(bool recorded, long long value) {
    return recorded ? Value(value) : std::nullopt;
}

// Sums of a column over the categories that have it, of those the player is recorded in.
Value sumOf(const Figures& f, std::initializer_list<std::pair<int, int>> fields) {
    Value sum;
    for (const auto& [c, field] : fields)
        if (const Value v = f.value(c, field))
            sum = sum.value_or(0) + *v;
    return sum;
}

// Tenths of a sack as the site reads a number: "2", "0.5", "-1.5".
std::string sacksText(long long tenths) {
    const long long whole = tenths / 10;
    const long long rest = tenths % 10 < 0 ? -(tenths % 10) : tenths % 10;
    const std::string sign = tenths < 0 && whole == 0 ? "-" : "";
    return rest == 0 ? digits(whole) : sign + digits(whole) + "." + digits(rest);
}

// Screen fields of our categories (see StatLayout.h).
namespace pass {
constexpr int Att = 0, Cm = 1, Yds = 2, TD = 3, Int = 4, Lg = 5, F = 9, FL = 10;
}
namespace rcv {
constexpr int Rec = 0, Yds = 2, TD = 4, Lg = 5, F = 8, FL = 9, XPt = 11;
}
namespace rush {
constexpr int Rsh = 0, Yds = 1, TD = 3, Lg = 4, F = 6, FL = 7, XPt = 9;
}
namespace def {
constexpr int Sol = 0, Ast = 1, Int = 2, Blk = 3, Hur = 4, F = 5, FC = 6, Sk = 7, TD = 8;
}

struct SiteField {
    std::string_view name;
    std::string (*cell)(const Figures&);
};

std::string text(Value v) {
    return v ? digits(*v) : std::string();
}

// The fields in the order of the site's own list. docs/exchange.md gives each one's source.
// clang-format off
constexpr std::array<SiteField, 47> kFields = {{
    {"RushingNum", [](const Figures& f) { return text(f.value(kRushing, rush::Rsh)); }},
    {"RushingYards", [](const Figures& f) { return text(f.value(kRushing, rush::Yds)); }},
    {"RushingLong", [](const Figures& f) { return text(f.value(kRushing, rush::Lg)); }},
    {"ReceivingNum", [](const Figures& f) { return text(f.value(kReceiving, rcv::Rec)); }},
    {"ReceivingYards", [](const Figures& f) { return text(f.value(kReceiving, rcv::Yds)); }},
    {"ReceivingLong", [](const Figures& f) { return text(f.value(kReceiving, rcv::Lg)); }},
    {"PassingComp", [](const Figures& f) { return text(f.value(kPassing, pass::Cm)); }},
    {"PassingAtt", [](const Figures& f) { return text(f.value(kPassing, pass::Att)); }},
    {"PassingYards", [](const Figures& f) { return text(f.value(kPassing, pass::Yds)); }},
    {"PassingTD", [](const Figures& f) { return text(f.value(kPassing, pass::TD)); }},
    {"PassingLong", [](const Figures& f) { return text(f.value(kPassing, pass::Lg)); }},
    {"PassingInt", [](const Figures& f) { return text(f.value(kPassing, pass::Int)); }},
    {"OffensiveFumbles", [](const Figures& f) {
        return text(sumOf(f, {{kPassing, pass::F}, {kReceiving, rcv::F}, {kRushing, rush::F}}));
    }},
    {"OffensiveFumblesLost", [](const Figures& f) {
        return text(sumOf(f, {{kPassing, pass::FL}, {kReceiving, rcv::FL}, {kRushing, rush::FL}}));
    }},
    {"Tackles", [](const Figures& f) { return text(f.value(kDefense, def::Sol)); }},
    {"Assists", [](const Figures& f) { return text(f.value(kDefense, def::Ast)); }},
    {"TotalTackles", [](const Figures& f) {
        return text(sumOf(f, {{kDefense, def::Sol}, {kDefense, def::Ast}}));
    }},
    {"Sacks", [](const Figures& f) {
        const Value tenths = f.value(kDefense, def::Sk);
        return tenths ? sacksText(*tenths) : std::string();
    }},
    {"QBHurries", [](const Figures& f) { return text(f.value(kDefense, def::Hur)); }},
    {"INTs", [](const Figures& f) { return text(f.value(kDefense, def::Int)); }},
    {"PassesDefensed", [](const Figures& f) { return text(f.value(kDefense, def::Blk)); }},
    {"FumbleRecoveries", [](const Figures& f) { return text(f.value(kDefense, def::F)); }},
    {"CausedFumbles", [](const Figures& f) { return text(f.value(kDefense, def::FC)); }},
    {"PuntReturnNum", [](const Figures& f) {
        return text(when(f.puntReturns.any, f.puntReturns.number));
    }},
    {"PuntReturnYards", [](const Figures& f) {
        return text(when(f.puntReturns.any, f.puntReturns.yards));
    }},
    {"PuntReturnLong", [](const Figures& f) { return text(f.puntReturns.longest); }},
    {"PuntReturnFairCatches", [](const Figures& f) {
        return text(when(f.puntReturns.any, f.puntReturns.fairCatches));
    }},
    {"KickoffReturnNum", [](const Figures& f) {
        return text(when(f.kickReturns.any, f.kickReturns.number));
    }},
    {"KickoffReturnYards", [](const Figures& f) {
        return text(when(f.kickReturns.any, f.kickReturns.yards));
    }},
    {"KickoffReturnLong", [](const Figures& f) { return text(f.kickReturns.longest); }},
    {"TotalReturnYards", [](const Figures& f) {
        return text(when(f.puntReturns.any || f.kickReturns.any,
                         f.puntReturns.yards + f.kickReturns.yards));
    }},
    {"PuntNum", [](const Figures& f) { return text(when(f.anyPunt, f.punts)); }},
    {"PuntYards", [](const Figures& f) { return text(when(f.anyPunt, f.puntYards)); }},
    {"PuntLong", [](const Figures& f) { return text(f.puntLong); }},
    {"PuntInside20", [](const Figures& f) { return text(when(f.anyPunt, f.puntInside20)); }},
    {"RushingTDNum", [](const Figures& f) { return text(f.value(kRushing, rush::TD)); }},
    {"ReceivingTDNum", [](const Figures& f) { return text(f.value(kReceiving, rcv::TD)); }},
    {"PuntReturnedTDNum", [](const Figures& f) {
        return text(when(f.puntReturns.any, f.puntReturns.touchdowns));
    }},
    {"KickoffReturnedTDNum", [](const Figures& f) {
        return text(when(f.kickReturns.any, f.kickReturns.touchdowns));
    }},
    // Every touchdown the player scored: the defensive ones too, whose kind (interception,
    // fumble or blocked kick return) our figures do not tell.
    {"TotalTDNum", [](const Figures& f) {
        Value sum = sumOf(f, {{kRushing, rush::TD}, {kReceiving, rcv::TD}, {kDefense, def::TD}});
        if (f.puntReturns.any || f.kickReturns.any)
            sum = sum.value_or(0) + f.puntReturns.touchdowns + f.kickReturns.touchdowns;
        return text(sum);
    }},
    {"PATKickingMade", [](const Figures& f) { return text(when(f.anyExtraPoint, f.xpMade)); }},
    {"PATKickingAtt", [](const Figures& f) {
        return text(when(f.anyExtraPoint, f.xpAttempted));
    }},
    {"PATRushingNum", [](const Figures& f) { return text(f.value(kRushing, rush::XPt)); }},
    {"PATReceivingNum", [](const Figures& f) { return text(f.value(kReceiving, rcv::XPt)); }},
    {"FGMade", [](const Figures& f) { return text(when(f.anyFieldGoal, f.fgMade)); }},
    {"FGAttempted", [](const Figures& f) { return text(when(f.anyFieldGoal, f.fgAttempted)); }},
    {"FGLong", [](const Figures& f) { return text(f.fgLong); }},
}};
// clang-format on

bool hasResults(const GameResults& results, int player) {
    for (int c = 0; c < kCategoryCount; ++c)
        if (results.at(player, c).played)
            return true;
    return false;
}

// "MMDDYY" as "2019-09-21" (years 00-49 in the 2000s, as the press-box export reads them);
// empty for no date or one that is not six digits.
std::string fileDate(const std::string& date) {
    if (date.size() != 6 || date == "000000" ||
        !std::all_of(date.begin(), date.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return "";
    const int year = (date[4] - '0') * 10 + (date[5] - '0');
    return digits(year < 50 ? 2000 + year : 1900 + year) + "-" + date.substr(0, 2) + "-" +
           date.substr(2, 2);
}

std::string withoutQuotes(const std::string& text) {
    std::string kept;
    for (const char c : text)
        if (c != '\'' && c != '"' && c != '(' && c != ')')
            kept += c;
    return kept;
}

} // namespace

std::string siteText(const GameSide& side, const std::string& siteId) {
    std::string out;
    if (!siteId.empty())
        out += siteId + "\r\n";
    out += "Jersey";
    for (const SiteField& f : kFields)
        out += "|" + std::string(f.name);
    out += "\r\n";
    for (int n = 1; n <= kMaxPlayers; ++n) {
        if (!hasResults(side.results, n))
            continue;
        const Figures figures = figuresOf(side.results, n);
        out += digits(n);
        for (const SiteField& f : kFields)
            out += "|" + f.cell(figures);
        out += "\r\n";
    }
    return out;
}

std::string siteFileName(const GameSide& side) {
    const std::string team = withoutQuotes(cp1252ToUtf8(trim(side.teamName)));
    const std::string opponent = withoutQuotes(cp1252ToUtf8(trim(side.game.opponent)));
    std::vector<std::string> words = {team, fileDate(side.game.gameDate)};
    if (opponent.empty())
        words.push_back("Game " + digits(side.game.gameNumber));
    else
        words.insert(words.end(), {"vs", opponent});
    std::string name = trimRight(suggestedFileName(words, "", ""));
    if (name.empty())
        name = "Game " + digits(side.game.gameNumber);
    return name + ".txt";
}

} // namespace scorvane
