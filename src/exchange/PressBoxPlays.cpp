#include "PressBoxPlays.h"

#include "storage/StatLayout.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

namespace scorvane {

namespace {

bool has(std::string_view text, char c) {
    return text.find(c) != std::string_view::npos;
}

std::string upper(std::string_view text) {
    std::string u(text);
    for (char& c : u)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return u;
}

// A whole number of 16 bits, or nothing.
std::optional<std::int16_t> int16Of(std::string_view text) {
    const std::string t = trim(text);
    int value = 0;
    const char* first = t.data();
    if (!t.empty() && t.front() == '+')
        ++first;
    const auto [end, ec] = std::from_chars(first, t.data() + t.size(), value);
    if (t.empty() || ec != std::errc() || end != t.data() + t.size() ||
        value < std::numeric_limits<std::int16_t>::min() ||
        value > std::numeric_limits<std::int16_t>::max())
        return std::nullopt;
    return static_cast<std::int16_t>(value);
}

// A name as the press box compares it: letters and digits only, upper case ("Robertson,M." and
// "ROBERTSON,M" are one).
std::string checkName(std::string_view name) {
    std::string key;
    for (char c : upper(name))
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
            static_cast<unsigned char>(c) >= 0x80)
            key += c;
    return key;
}

// One kick or return as it was read, before it is handed to its player.
struct Play {
    char team = 'V';
    std::string uni; // empty when the file names the player only
    std::string name;
    bool kick = true;
    ListEntry entry;
    int quarter = 0;
    int clock = 0; // seconds left in the quarter
};

int clockSeconds(std::string_view clock) {
    const auto colon = clock.find(':');
    if (colon == std::string_view::npos)
        return 0;
    const auto minutes = int16Of(clock.substr(0, colon));
    const auto seconds = int16Of(clock.substr(colon + 1));
    return minutes && seconds ? *minutes * 60 + *seconds : 0;
}

PressBoxPlayer* playerOf(PressBoxGame& game, const Play& play) {
    for (PressBoxTeam& team : game.teams) {
        if (team.vh != play.team)
            continue;
        if (!play.uni.empty())
            for (PressBoxPlayer& p : team.players)
                if (trim(p.uni) == trim(play.uni))
                    return &p;
        const std::string key = checkName(play.name);
        if (!key.empty())
            for (PressBoxPlayer& p : team.players)
                if (checkName(p.name) == key)
                    return &p;
    }
    return nullptr;
}

char sideOf(const pugi::xml_node& node, const PressBoxGame& game) {
    const std::string vh = upper(node.attribute("vh").as_string());
    if (vh == "H" || vh == "V")
        return vh[0];
    // Some lists name the team by its id instead.
    const std::string team = node.attribute("team").as_string();
    for (const PressBoxTeam& t : game.teams)
        if (!team.empty() && t.id == team)
            return t.vh;
    return 'V';
}

} // namespace

std::int16_t kickMarks(char type, std::string_view result) {
    const std::string r = upper(result);
    int marks = 0;
    if (r == "GOOD" || (r.size() <= 5 && has(r, 'G')))
        marks += kickmark::Good;
    if (r == "BLOCKED" || r == "BLKD" || (r.size() <= 5 && has(r, 'B')))
        marks += kickmark::Blocked;
    if (type == kicktype::Punt) {
        marks &= ~kickmark::Good;
        if (r.size() <= 5) {
            marks += has(r, 'F') ? kickmark::FairCatch : 0;
            marks += has(r, 'I') ? kickmark::Inside20 : 0;
            marks += has(r, 'T') ? kickmark::Touchback : 0;
        }
    }
    return static_cast<std::int16_t>(marks);
}

std::int16_t returnMarks(std::string_view result) {
    const std::string r = upper(result);
    if (r.size() > 5)
        return 0;
    return static_cast<std::int16_t>((has(r, 'C') ? returnmark::FairCatch : 0) +
                                     (has(r, 'F') ? returnmark::Fumble : 0) +
                                     (has(r, 'D') ? returnmark::Touchdown : 0));
}

std::string kickResult(const ListEntry& kick) {
    std::string r;
    const auto on = [&](int bit) { return (kick.marks & bit) != 0; };
    if (kick.type != kicktype::Punt && (kick.marks & ~kickmark::Blocked) == kickmark::Good)
        r += 'G';
    if (on(kickmark::Blocked))
        r += 'B';
    if (kick.type == kicktype::Punt) {
        r += on(kickmark::FairCatch) ? "F" : "";
        r += on(kickmark::Inside20) ? "I" : "";
        r += on(kickmark::Touchback) ? "T" : "";
    }
    return r.empty() ? "M" : r;
}

std::string returnResult(const ListEntry& ret) {
    std::string r;
    r += (ret.marks & returnmark::FairCatch) != 0 ? "C" : "";
    r += (ret.marks & returnmark::Fumble) != 0 ? "F" : "";
    r += (ret.marks & returnmark::Touchdown) != 0 ? "D" : "";
    return r;
}

bool readPlays(std::string_view xml, const pugi::xml_node& root, PressBoxGame& game,
               std::string& error) {
    std::vector<Play> plays;
    const auto fail = [&](const pugi::xml_node& node, const char* what) {
        error = "Line " + digits(lineAt(xml, node.offset_debug())) + ": the " + what +
                " is not a whole number from -32768 to 32767.";
    };
    const auto yardsOf = [&](const pugi::xml_node& node, const char* attribute,
                             const char* what) -> std::optional<std::int16_t> {
        const pugi::xml_attribute a = node.attribute(attribute);
        if (!a)
            return std::int16_t{0};
        const auto v = int16Of(a.value());
        if (!v)
            fail(node, what);
        return v;
    };
    const auto exactMarks = [](const pugi::xml_node& node) -> std::optional<std::int16_t> {
        const pugi::xml_attribute a = node.attribute("sv:marks");
        return a ? int16Of(a.value()) : std::nullopt;
    };

    // The play by play, where it holds kicks and returns one element each.
    bool perPlay = false;
    for (const pugi::xml_node& qtr : root.child("plays").children("qtr"))
        for (const pugi::xml_node& play : qtr.children("play"))
            for (const pugi::xml_node& p : play.children()) {
                const std::string_view name = p.name();
                Play k;
                k.team = sideOf(p, game);
                k.uni = p.attribute("uni").as_string();
                k.name = p.attribute("name").as_string();
                if (name == "p_fg" || name == "p_pat" || name == "p_pu") {
                    k.entry.type = name == "p_fg"    ? kicktype::FieldGoal
                                   : name == "p_pat" ? kicktype::ExtraPoint
                                                     : kicktype::Punt;
                    const auto yards = yardsOf(p, name == "p_fg" ? "dist" : "gain", "kick's yards");
                    if (!yards)
                        return false;
                    k.entry.yards = k.entry.type == kicktype::ExtraPoint ? std::int16_t{0} : *yards;
                    k.entry.marks = exactMarks(p).value_or(
                        kickMarks(k.entry.type, p.attribute("result").as_string()));
                } else if (name == "p_pr" || name == "p_kr") {
                    k.kick = false;
                    k.entry.type = name == "p_pr" ? returntype::Punt : returntype::Kick;
                    const auto yards = yardsOf(p, "gain", "return's yards");
                    if (!yards)
                        return false;
                    k.entry.yards = *yards;
                    k.entry.marks =
                        exactMarks(p).value_or(returnMarks(p.attribute("result").as_string()));
                } else {
                    continue;
                }
                perPlay = true;
                plays.push_back(std::move(k));
            }

    // Without them: the field goal list and the extra-point kicks of the scoring summary, put in
    // the order of the game.
    if (!perPlay) {
        for (const pugi::xml_node& fga : root.child("fgas").children("fga")) {
            Play k;
            k.team = sideOf(fga, game);
            k.name = fga.attribute("kicker").as_string();
            k.entry.type = kicktype::FieldGoal;
            const auto yards = yardsOf(fga, "distance", "field goal's distance");
            if (!yards)
                return false;
            k.entry.yards = *yards;
            k.entry.marks = kickMarks(kicktype::FieldGoal, fga.attribute("result").as_string());
            k.quarter = fga.attribute("qtr").as_int(0);
            k.clock = clockSeconds(fga.attribute("clock").as_string());
            plays.push_back(std::move(k));
        }
        for (const pugi::xml_node& score : root.child("scores").children("score")) {
            if (upper(score.attribute("pattype").as_string()) != "KICK")
                continue;
            Play k;
            k.team = sideOf(score, game);
            k.name = score.attribute("patby").as_string();
            k.entry.type = kicktype::ExtraPoint;
            k.entry.marks = kickMarks(kicktype::ExtraPoint, score.attribute("patres").as_string());
            k.quarter = score.attribute("qtr").as_int(0);
            k.clock = clockSeconds(score.attribute("clock").as_string());
            plays.push_back(std::move(k));
        }
        std::stable_sort(plays.begin(), plays.end(), [](const Play& a, const Play& b) {
            return a.quarter != b.quarter ? a.quarter < b.quarter : a.clock > b.clock;
        });
    }
    for (const Play& play : plays)
        if (PressBoxPlayer* p = playerOf(game, play))
            (play.kick ? p->kicks : p->returns).push_back(play.entry);
    return !plays.empty();
}

} // namespace scorvane
