#include "GameExport.h"

#include "ExchangeFields.h"
#include "PressBoxPlays.h"

#include "storage/Cp1252.h"
#include "storage/StatLayout.h"
#include "storage/TextUtil.h"

#include <pugixml.hpp>

#include <algorithm>
#include <sstream>

namespace scorvane {

using namespace exchange;

namespace {

std::size_t idx(int i) {
    return static_cast<std::size_t>(i);
}

// "MMDDYY" as the press box writes a date ("9/21/2019"); years 00-49 are 2000s. A date that is
// not six digits is left out.
std::string pressBoxDate(const std::string& date) {
    if (date.size() != 6 || date == "000000" ||
        !std::all_of(date.begin(), date.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return "";
    const auto two = [&](std::size_t at) { return (date[at] - '0') * 10 + (date[at + 1] - '0'); };
    const int year = two(4);
    return digits(two(0)) + "/" + digits(two(2)) + "/" +
           digits(year < 50 ? 2000 + year : 1900 + year);
}

// A side's team id: the letters and digits of its name, upper case ("RIVERSIDEHAWKS").
std::string teamId(const std::string& name) {
    std::string id;
    for (char c : name) {
        if (c >= 'a' && c <= 'z')
            id += static_cast<char>(c - 'a' + 'A');
        else if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
            id += c;
    }
    return id;
}

void set(pugi::xml_node node, std::string_view name, long long value) {
    node.append_attribute(std::string(name).c_str()).set_value(digits(value).c_str());
}

std::string sacksText(int tenths) {
    const int whole = tenths / 10;
    const int rest = std::abs(tenths % 10);
    return (tenths < 0 && whole == 0 ? "-" : "") + digits(whole) + "." + digits(rest);
}

std::span<const FieldSource> fieldsOf(int category) {
    switch (category) {
    case 0:
        return kPassingFields;
    case 1:
        return kReceivingFields;
    case 2:
        return kRushingFields;
    default:
        return kDefenseFields;
    }
}

class SideWriter {
public:
    SideWriter(pugi::xml_node fbgame, pugi::xml_node plays, const GameSide& side, char vh)
        : fbgame_(fbgame), plays_(plays), side_(side), vh_(vh) {}

    // `mirrored`: the side is the opponent as our own game has it, its points the game's opponent
    // scores.
    void write(bool mirrored) {
        pugi::xml_node team = fbgame_.append_child("team");
        team.append_attribute("vh").set_value(std::string(1, vh_).c_str());
        team.append_attribute("id").set_value(teamId(side_.teamName).c_str());
        team.append_attribute("name").set_value(cp1252ToUtf8(trim(side_.teamName)).c_str());
        const auto& scores = mirrored ? side_.game.opponentScore : side_.game.teamScore;
        pugi::xml_node linescore = team.append_child("linescore");
        const int periods = side_.game.overtimeFlag != 0 || scores[4] != 0 ? 5 : 4;
        std::string line;
        long long total = 0;
        for (int p = 0; p < periods; ++p) {
            line += (p ? "," : "") + digits(scores[idx(p)]);
            total += scores[idx(p)];
        }
        set(linescore, "prds", periods);
        linescore.append_attribute("line").set_value(line.c_str());
        set(linescore, "score", total);
        for (int p = 0; p < periods; ++p) {
            pugi::xml_node prd = linescore.append_child("lineprd");
            set(prd, "prd", p + 1);
            set(prd, "score", scores[idx(p)]);
        }
        for (int n = 1; n <= kMaxPlayers; ++n)
            player(team, n);
    }

private:
    void player(pugi::xml_node team, int n) {
        number_ = n;
        bool any = false;
        for (int c = 0; c < kCategoryCount; ++c)
            any = any || side_.results.at(n, c).played;
        if (!any)
            return;
        pugi::xml_node p = team.append_child("player");
        const std::string name = cp1252ToUtf8(trim(side_.roster.names[idx(n)]));
        p.append_attribute("name").set_value(name.c_str());
        p.append_attribute("uni").set_value(digits(n).c_str());
        p.append_attribute("code").set_value(digits(n).c_str());
        set(p, "gp", 1);

        const auto value = [&](int c, int field) {
            return static_cast<long long>(side_.results.at(n, c).values[idx(field)]);
        };
        long long fumbles = 0, lost = 0;
        for (int c = 0; c < 4; ++c) {
            const CategoryResults& r = side_.results.at(n, c);
            if (!r.played)
                continue;
            pugi::xml_node e = p.append_child(std::string(kCategoryElement[idx(c)]).c_str());
            for (const FieldSource& f : fieldsOf(c)) {
                const long long v = value(c, f.screenField);
                if (f.element == kCategoryElement[idx(c)])
                    e.append_attribute(std::string(f.attribute).c_str())
                        .set_value(f.attribute == "sacks" ? sacksText(static_cast<int>(v)).c_str()
                                                          : digits(v).c_str());
                set(e, f.own, v);
                if (f.element == "fumbles")
                    (f.attribute == "no" ? fumbles : lost) += v;
            }
            userColumns(e, c);
            if (c == 2) // rushing: the gain before losses
                set(e, "gain", value(2, 1) + value(2, 2));
            if (c == 3) {
                set(e, "tot_tack", value(3, 0) + value(3, 1));
                if (value(3, 2) != 0)
                    set(p.append_child("ir"), "no", value(3, 2));
            }
        }
        if (fumbles != 0 || lost != 0) {
            pugi::xml_node f = p.append_child("fumbles");
            set(f, "no", fumbles);
            set(f, "lost", lost);
        }
        const long long passXp = side_.results.at(n, 0).played ? value(0, 12) : 0;
        const long long rcvXp = side_.results.at(n, 1).played ? value(1, 11) : 0;
        const long long rushXp = side_.results.at(n, 2).played ? value(2, 9) : 0;
        kicks(p, n, passXp, rcvXp, rushXp);
        returns(p, n);
    }

    void userColumns(pugi::xml_node e, int category) {
        for (std::size_t u = 0; u < kUserAttributes.size(); ++u)
            set(e, kUserAttributes[u], side_.results.at(number_, category).values[22 + u]);
    }

    void kicks(pugi::xml_node p, int n, long long passXp, long long rcvXp, long long rushXp) {
        const CategoryResults& k = side_.results.at(n, 4);
        int fgMade = 0, fgAtt = 0, fgLong = 0, fgBlocked = 0, xpMade = 0, xpAtt = 0;
        int punts = 0, puntYards = 0, puntLong = 0, puntBlocked = 0, tb = 0, fc = 0, in20 = 0;
        for (const ListEntry& e : k.plays) {
            if (e.type == ' ')
                continue;
            const bool good = (e.marks & ~kickmark::Blocked) == kickmark::Good;
            const bool blocked = (e.marks & kickmark::Blocked) != 0;
            if (e.type == kicktype::FieldGoal) {
                ++fgAtt;
                fgMade += good ? 1 : 0;
                fgLong = good ? std::max(fgLong, static_cast<int>(e.yards)) : fgLong;
                fgBlocked += blocked ? 1 : 0;
            } else if (e.type == kicktype::ExtraPoint) {
                ++xpAtt;
                xpMade += good ? 1 : 0;
            } else if (e.type == kicktype::Punt) {
                ++punts;
                puntYards += e.yards;
                puntLong = std::max(puntLong, static_cast<int>(e.yards));
                puntBlocked += blocked ? 1 : 0;
                tb += (e.marks & kickmark::Touchback) != 0 ? 1 : 0;
                fc += (e.marks & kickmark::FairCatch) != 0 ? 1 : 0;
                in20 += (e.marks & kickmark::Inside20) != 0 ? 1 : 0;
            }
            play(e, true);
        }
        if (fgAtt > 0) {
            pugi::xml_node fg = p.append_child("fg");
            set(fg, "made", fgMade);
            set(fg, "att", fgAtt);
            set(fg, "long", fgLong);
            set(fg, "blkd", fgBlocked);
        }
        if (xpAtt > 0 || passXp != 0 || rcvXp != 0 || rushXp != 0) {
            pugi::xml_node pat = p.append_child("pat");
            set(pat, "kickatt", xpAtt);
            set(pat, "kickmade", xpMade);
            set(pat, "passmade", passXp);
            set(pat, "rcvmade", rcvXp);
            set(pat, "rushmade", rushXp);
        }
        if (punts > 0) {
            pugi::xml_node punt = p.append_child("punt");
            set(punt, "no", punts);
            set(punt, "yds", puntYards);
            set(punt, "long", puntLong);
            set(punt, "blkd", puntBlocked);
            set(punt, "tb", tb);
            set(punt, "fc", fc);
            set(punt, "inside20", in20);
        }
        if (k.played)
            userColumns(p.append_child(std::string(kCategoryElement[4]).c_str()), 4);
    }

    void returns(pugi::xml_node p, int n) {
        const CategoryResults& t = side_.results.at(n, 5);
        std::array<int, 4> kr{}, pr{}; // no, yds, td, long
        for (const ListEntry& e : t.plays) {
            if (e.type == ' ')
                continue;
            auto& totals = e.type == returntype::Punt ? pr : kr;
            totals[0] += 1;
            totals[1] += e.yards;
            totals[2] += (e.marks & returnmark::Touchdown) != 0 ? 1 : 0;
            totals[3] = std::max(totals[3], static_cast<int>(e.yards));
            play(e, false);
        }
        for (const auto& [name, totals] : {std::pair{"kr", kr}, std::pair{"pr", pr}}) {
            if (totals[0] == 0)
                continue;
            pugi::xml_node e = p.append_child(name);
            set(e, "no", totals[0]);
            set(e, "yds", totals[1]);
            set(e, "td", totals[2]);
            set(e, "long", totals[3]);
        }
        if (t.played)
            userColumns(p.append_child(std::string(kCategoryElement[5]).c_str()), 5);
    }

    // One kick or return of the per-play lists as a play of its own.
    void play(const ListEntry& e, bool kick) {
        pugi::xml_node play = plays_.append_child("play");
        play.append_attribute("type").set_value("K");
        const char* element = kick ? (e.type == kicktype::FieldGoal    ? "p_fg"
                                      : e.type == kicktype::ExtraPoint ? "p_pat"
                                                                       : "p_pu")
                                   : (e.type == returntype::Punt ? "p_pr" : "p_kr");
        pugi::xml_node p = play.append_child(element);
        p.append_attribute("vh").set_value(std::string(1, vh_).c_str());
        p.append_attribute("uni").set_value(digits(number_).c_str());
        p.append_attribute("name").set_value(
            cp1252ToUtf8(trim(side_.roster.names[idx(number_)])).c_str());
        if (!kick || e.type != kicktype::ExtraPoint)
            set(p, kick && e.type == kicktype::FieldGoal ? "dist" : "gain", e.yards);
        p.append_attribute("result").set_value((kick ? kickResult(e) : returnResult(e)).c_str());
        set(p, "sv:marks", e.marks);
    }

    pugi::xml_node fbgame_;
    pugi::xml_node plays_;
    const GameSide& side_;
    char vh_;
    int number_ = 0;
};

} // namespace

std::string pressBoxXml(const GameSide& ours, const GameSide* opponent) {
    pugi::xml_document doc;
    pugi::xml_node decl = doc.append_child(pugi::node_declaration);
    decl.append_attribute("version").set_value("1.0");
    decl.append_attribute("encoding").set_value("UTF-8");
    pugi::xml_node fbgame = doc.append_child("fbgame");
    fbgame.append_attribute("source").set_value("Scorvane for Football");
    fbgame.append_attribute("version").set_value("2.1");
    fbgame.append_attribute("xmlns:sv").set_value("urn:scorvane:football");

    const bool home = ours.game.homeFlag == '1';
    const std::string ourName = cp1252ToUtf8(trim(ours.teamName));
    const std::string theirName =
        cp1252ToUtf8(trim(opponent ? opponent->teamName : ours.game.opponent));
    const std::string ourId = teamId(ours.teamName);
    const std::string theirId = teamId(opponent ? opponent->teamName : ours.game.opponent);
    pugi::xml_node venue = fbgame.append_child("venue");
    venue.append_attribute("visid").set_value((home ? theirId : ourId).c_str());
    venue.append_attribute("homeid").set_value((home ? ourId : theirId).c_str());
    venue.append_attribute("visname").set_value((home ? theirName : ourName).c_str());
    venue.append_attribute("homename").set_value((home ? ourName : theirName).c_str());
    venue.append_attribute("date").set_value(pressBoxDate(ours.game.gameDate).c_str());
    venue.append_attribute("location")
        .set_value(cp1252ToUtf8(trim(ours.game.gameLocation)).c_str());

    // The visitors first, as the press box lists them.
    pugi::xml_document playsDoc;
    pugi::xml_node plays = playsDoc.append_child("plays");
    plays.append_attribute("format").set_value("summary");
    pugi::xml_node qtr = plays.append_child("qtr");
    qtr.append_attribute("number").set_value("1");
    qtr.append_attribute("text").set_value("Kicks and returns");

    GameSide theirs;
    if (!opponent) {
        // The opponent without players: its name and its scores as our game has them.
        theirs.teamName = ours.game.opponent;
        theirs.game = ours.game;
    }
    const GameSide& other = opponent ? *opponent : theirs;
    SideWriter ourWriter(fbgame, qtr, ours, home ? 'H' : 'V');
    SideWriter theirWriter(fbgame, qtr, other, home ? 'V' : 'H');
    if (home) {
        theirWriter.write(!opponent);
        ourWriter.write(false);
    } else {
        ourWriter.write(false);
        theirWriter.write(!opponent);
    }
    if (qtr.first_child())
        fbgame.append_copy(plays);

    std::ostringstream out;
    doc.save(out, "  ", pugi::format_default, pugi::encoding_utf8);
    return out.str();
}

} // namespace scorvane
