#include "GameImport.h"

#include "ExchangeFields.h"

#include "storage/Cp1252.h"
#include "storage/StatLayout.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <set>
#include <span>

namespace scorvane {

using namespace exchange;

namespace {

std::size_t idx(int i) {
    return static_cast<std::size_t>(i);
}

std::string upperTrimmed(std::string_view text) {
    std::string u = trim(text);
    for (char& c : u)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return u;
}

std::string playerTitle(const PressBoxPlayer& p) {
    return "#" + trim(p.uni) + " " + trim(p.name);
}

// A number of the file: a whole number, or for sacks one with a decimal; empty text is 0.
std::optional<double> numberOf(std::string_view text) {
    const std::string t = trim(text);
    if (t.empty())
        return 0.0;
    double value = 0;
    const auto [end, ec] = std::from_chars(t.data(), t.data() + t.size(), value);
    if (ec != std::errc() || end != t.data() + t.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::span<const FieldSource> fieldsOf(int category) {
    switch (category) {
    case 0:
        return kPassingFields;
    case 1:
        return kReceivingFields;
    case 2:
        return kRushingFields;
    case 3:
        return kDefenseFields;
    default:
        return {};
    }
}

// Figures that come into our columns another way, or are worked out from ours: never listed as
// not imported.
bool implied(std::string_view element, std::string_view attribute) {
    static const std::set<std::pair<std::string_view, std::string_view>> pairs = {
        {"rush", "gain"},      {"defense", "tot_tack"},
        {"defense", "sackua"}, {"defense", "sacka"},
        {"fg", "made"},        {"fg", "att"},
        {"fg", "long"},        {"fg", "blkd"},
        {"pat", "kickatt"},    {"pat", "kickmade"},
        {"punt", "no"},        {"punt", "yds"},
        {"punt", "long"},      {"punt", "blkd"},
        {"punt", "tb"},        {"punt", "fc"},
        {"punt", "inside20"},  {"punt", "plus50"},
        {"punt", "avg"},       {"kr", "no"},
        {"kr", "yds"},         {"kr", "td"},
        {"kr", "long"},        {"pr", "no"},
        {"pr", "yds"},         {"pr", "td"},
        {"pr", "long"},        {"ir", "td"},
        {"fr", "td"},          {"pat", "passatt"},
        {"pat", "rushatt"},
    };
    return element == "scoring" || element.starts_with("sv:") || attribute == "avg" ||
           pairs.count({element, attribute}) > 0;
}

class PlayerMapper {
public:
    PlayerMapper(const PressBoxPlayer& p, int number) : p_(p), number_(number) {}

    // The player's results of every category; false with `error` set when a figure is refused.
    bool map(GameResults& results, ImportedPlayer& out, std::vector<std::string>& notImported,
             std::vector<std::string>& byHand, std::string& error) {
        // The one category his fumbles go to when the file gives them only as his total.
        bool ownFumbles = false;
        for (int c = 0; c < 3; ++c)
            ownFumbles = ownFumbles || own(kCategoryElement[idx(c)], "sv:f");
        fumbleCategory_ = ownFumbles       ? -1
                          : p_.has("rush") ? 2
                          : p_.has("rcv")  ? 1
                          : p_.has("pass") ? 0
                                           : -1;
        if (fumbleCategory_ >= 0)
            used_.insert({"fumbles", "no"}), used_.insert({"fumbles", "lost"});

        for (int c = 0; c < kCategoryCount; ++c) {
            CategoryResults& r = results.at(number_, c);
            r.played = recorded(c);
            out.categories[idx(c)] = r.played;
            if (!r.played)
                continue;
            const StatLayout& layout = *StatLayout::of(kCategoryLetters[idx(c)]);
            for (const FieldSource& f : fieldsOf(c)) {
                const EnteredField* field = layout.byScreenField(f.screenField);
                long long v = 0;
                if (!value(c, f, field->scale, v, error) ||
                    !store(r.values[idx(field->screenField)], v, f.own, error))
                    return false;
            }
            for (std::size_t u = 0; u < kUserAttributes.size(); ++u) {
                long long v = 0;
                if (!whole(kCategoryElement[idx(c)], kUserAttributes[u], v, error) ||
                    !store(r.values[22 + u], v, kUserAttributes[u], error))
                    return false;
            }
        }
        if (!plays(results, out, byHand, error))
            return false;
        listNotImported(notImported);
        return true;
    }

private:
    bool own(std::string_view element, std::string_view attribute) const {
        return p_.stat(element, attribute) != nullptr;
    }

    bool recorded(int category) const {
        switch (category) {
        case 3:
            return p_.has("defense") || p_.has("ir") || p_.has("fr");
        case 4:
            return p_.has("sv:kicking") || p_.has("fg") || p_.has("punt") || !p_.kicks.empty() ||
                   (p_.has("pat") && (nonZero("pat", "kickatt") || nonZero("pat", "kickmade")));
        case 5:
            return p_.has("sv:returns") || p_.has("kr") || p_.has("pr") || !p_.returns.empty();
        default:
            return p_.has(kCategoryElement[idx(category)]);
        }
    }

    bool nonZero(std::string_view element, std::string_view attribute) const {
        const std::string* s = p_.stat(element, attribute);
        const auto v = s ? numberOf(*s) : std::nullopt;
        return v && *v != 0;
    }

    // A whole number of the file; absent is 0.
    bool whole(std::string_view element, std::string_view attribute, long long& v,
               std::string& error) {
        used_.insert({std::string(element), std::string(attribute)});
        const std::string* s = p_.stat(element, attribute);
        if (!s)
            return true;
        const auto n = numberOf(*s);
        if (!n || *n != std::floor(*n) || std::fabs(*n) > 1e9) {
            error = "Line " + digits(p_.line) + ": " + playerTitle(p_) + ": " +
                    std::string(element) + " " + std::string(attribute) + " \"" + *s +
                    "\" is not a whole number.";
            return false;
        }
        v = static_cast<long long>(*n);
        return true;
    }

    // The stored value of a field: our own attribute holds it as stored; a standard one holds
    // the figure, which the field's scale turns into the stored value.
    bool value(int category, const FieldSource& f, int scale, long long& v, std::string& error) {
        const std::string_view element = kCategoryElement[idx(category)];
        if (own(element, f.own))
            return whole(element, f.own, v, error);
        if (f.element.empty())
            return true;
        if (f.element == "fumbles" && category != fumbleCategory_)
            return true;
        if (category == 3 && f.attribute == "sacks")
            return sacksInTenths(v, error);
        if (category == 3 && f.attribute == "td") {
            long long ir = 0, fr = 0;
            if (!whole("ir", "td", ir, error) || !whole("fr", "td", fr, error))
                return false;
            v = ir + fr;
            return true;
        }
        if (!whole(f.element, f.attribute, v, error))
            return false;
        v *= scale;
        return true;
    }

    // Sacks as the file writes them ("1.5"), or from its solo and assisted sacks, in the tenths
    // our records keep.
    bool sacksInTenths(long long& v, std::string& error) {
        used_.insert({"defense", "sacks"});
        double sacks = 0;
        if (const std::string* s = p_.stat("defense", "sacks")) {
            const auto n = numberOf(*s);
            if (!n || std::fabs(*n) > 1e6) {
                error = "Line " + digits(p_.line) + ": " + playerTitle(p_) + ": defense sacks \"" +
                        *s + "\" is not a number.";
                return false;
            }
            sacks = *n;
        } else {
            long long solo = 0, assisted = 0;
            if (!whole("defense", "sackua", solo, error) ||
                !whole("defense", "sacka", assisted, error))
                return false;
            sacks = static_cast<double>(solo) + static_cast<double>(assisted) / 2.0;
        }
        v = std::llround(sacks * 10);
        return true;
    }

    bool store(std::int16_t& into, long long v, std::string_view what, std::string& error) {
        if (v < std::numeric_limits<std::int16_t>::min() ||
            v > std::numeric_limits<std::int16_t>::max()) {
            error = "Line " + digits(p_.line) + ": " + playerTitle(p_) + ": the figure " +
                    digits(v) + " (" + std::string(what.substr(3)) +
                    ") does not fit; figures run from -32768 to 32767.";
            return false;
        }
        into = static_cast<std::int16_t>(v);
        return true;
    }

    int countOf(const std::vector<ListEntry>& list, char type) const {
        return static_cast<int>(std::count_if(list.begin(), list.end(),
                                              [&](const ListEntry& e) { return e.type == type; }));
    }

    long long total(std::string_view element, std::string_view attribute) const {
        const std::string* s = p_.stat(element, attribute);
        const auto v = s ? numberOf(*s) : std::nullopt;
        return v ? static_cast<long long>(std::clamp(*v, -1e9, 1e9)) : 0;
    }

    bool plays(GameResults& results, ImportedPlayer& out, std::vector<std::string>& byHand,
               std::string& error) {
        constexpr int most = static_cast<int>(StatListRecord::EntryCount);
        const auto tooMany = [&](std::size_t n, const char* what) {
            error = playerTitle(p_) + " has " + digits(static_cast<long long>(n)) + " " + what +
                    " in the file; a player's list holds " + digits(most) + " at most.";
        };
        if (p_.kicks.size() > StatListRecord::EntryCount) {
            tooMany(p_.kicks.size(), "kicks");
            return false;
        }
        if (p_.returns.size() > StatListRecord::EntryCount) {
            tooMany(p_.returns.size(), "returns");
            return false;
        }
        std::copy(p_.kicks.begin(), p_.kicks.end(), results.at(number_, 4).plays.begin());
        std::copy(p_.returns.begin(), p_.returns.end(), results.at(number_, 5).plays.begin());

        std::vector<std::string> missing;
        const auto check = [&](long long inFile, int listed, const std::string& what) {
            if (inFile > listed)
                missing.push_back(digits(inFile - listed) + " " + what);
        };
        check(total("fg", "att"), countOf(p_.kicks, kicktype::FieldGoal), "field goal tries");
        check(total("pat", "kickatt"), countOf(p_.kicks, kicktype::ExtraPoint),
              "extra-point kicks");
        check(total("punt", "no"), countOf(p_.kicks, kicktype::Punt), "punts");
        out.kicksByHand = !missing.empty();
        const std::size_t kicks = missing.size();
        check(total("pr", "no"), countOf(p_.returns, returntype::Punt), "punt returns");
        check(total("kr", "no"), countOf(p_.returns, returntype::Kick), "kick returns");
        out.returnsByHand = missing.size() > kicks;
        if (!missing.empty()) {
            std::string line = playerTitle(p_) + ": ";
            for (std::size_t i = 0; i < missing.size(); ++i)
                line += (i ? ", " : "") + missing[i];
            byHand.push_back(line + " (the file has totals only)");
        }
        return true;
    }

    void listNotImported(std::vector<std::string>& notImported) const {
        std::string line;
        for (const auto& [element, attributes] : p_.stats) {
            std::string figures;
            for (const auto& [attribute, text] : attributes) {
                const auto v = numberOf(text);
                if (!v || *v == 0 || implied(element, attribute) ||
                    used_.count({element, attribute}) > 0)
                    continue;
                figures += (figures.empty() ? "" : ", ") + attribute + " " + trim(text);
            }
            if (!figures.empty())
                line += (line.empty() ? "" : "; ") + element + " " + figures;
        }
        if (!line.empty())
            notImported.push_back(playerTitle(p_) + ": " + line);
    }

    const PressBoxPlayer& p_;
    int number_;
    int fumbleCategory_ = -1;
    std::set<std::pair<std::string, std::string>> used_;
};

std::string dateOf(std::string_view text) {
    // "9/21/2019" or "09/21/19": month, day, year.
    int parts[3] = {0, 0, 0};
    int n = 0;
    std::string_view rest = text;
    while (n < 3) {
        const auto slash = rest.find('/');
        const std::string piece = trim(rest.substr(0, slash));
        const auto [end, ec] = std::from_chars(piece.data(), piece.data() + piece.size(), parts[n]);
        if (piece.empty() || ec != std::errc() || end != piece.data() + piece.size())
            return "000000";
        ++n;
        if (slash == std::string_view::npos)
            break;
        rest = rest.substr(slash + 1);
    }
    if (n != 3 || parts[0] < 1 || parts[0] > 12 || parts[1] < 1 || parts[1] > 31 || parts[2] < 0)
        return "000000";
    const auto two = [](int v) {
        v %= 100;
        return std::string(1, static_cast<char>('0' + v / 10)) + static_cast<char>('0' + v % 10);
    };
    return two(parts[0]) + two(parts[1]) + two(parts[2]);
}

// Quarters 1-4 and overtime (every later period) of one side; false when a sum leaves 16 bits.
bool scoresOf(const PressBoxTeam& team, std::array<std::int16_t, 5>& scores, std::string& error) {
    std::array<long long, 5> sums{};
    for (std::size_t p = 0; p < team.periods.size(); ++p)
        sums[std::min<std::size_t>(p, 4)] += team.periods[p];
    long long all = 0;
    for (std::size_t i = 0; i < 5; ++i) {
        all += sums[i];
        if (sums[i] < 0 || sums[i] > std::numeric_limits<std::int16_t>::max() ||
            all > std::numeric_limits<std::int16_t>::max()) {
            error = "Line " + digits(team.line) + ": the scores of " + trim(team.name) +
                    " do not fit: a team's points run to 32767.";
            return false;
        }
        scores[i] = static_cast<std::int16_t>(sums[i]);
    }
    return true;
}

} // namespace

std::optional<int> matchSide(const PressBoxGame& game, const std::string& teamName) {
    const std::string ours = upperTrimmed(cp1252ToUtf8(teamName));
    std::optional<int> found;
    for (std::size_t i = 0; i < game.teams.size(); ++i) {
        const PressBoxTeam& t = game.teams[i];
        if (!ours.empty() && (upperTrimmed(t.name) == ours || upperTrimmed(t.id) == ours)) {
            if (found)
                return std::nullopt;
            found = static_cast<int>(i);
        }
    }
    return found;
}

ImportBuild buildImport(const PressBoxGame& game, int side, const Roster& roster) {
    ImportBuild build;
    if (side < 0 || static_cast<std::size_t>(side) >= game.teams.size()) {
        build.error = "The file has no such side.";
        return build;
    }
    const PressBoxTeam& ours = game.teams[idx(side)];
    const PressBoxTeam* theirs = nullptr;
    for (const PressBoxTeam& t : game.teams)
        if (&t != &ours)
            theirs = &t;

    GameImport import;
    import.side = side;
    GameRecord& g = import.game;
    g.gameDate = dateOf(game.date);
    g.gameLocation = fit(trim(utf8ToCp1252(game.location)), width::gameLocation);
    g.opponent = fit(theirs ? trim(utf8ToCp1252(theirs->name)) : "", width::opponent);
    g.homeFlag = ours.vh == 'H' ? '1' : '2';
    g.gameComment = std::string(width::gameComment, ' ');
    if (!scoresOf(ours, g.teamScore, build.error) ||
        (theirs && !scoresOf(*theirs, g.opponentScore, build.error)))
        return build;
    g.overtimeFlag = ours.periods.size() > 4 || (theirs && theirs->periods.size() > 4) ? -1 : 0;

    std::array<const PressBoxPlayer*, kMaxPlayers + 1> wearer{};
    for (const PressBoxPlayer& p : ours.players) {
        const std::string uni = trim(p.uni);
        std::size_t digitsEnd = 0;
        while (digitsEnd < uni.size() && uni[digitsEnd] >= '0' && uni[digitsEnd] <= '9')
            ++digitsEnd;
        if (digitsEnd == 0) {
            // The team's own line ("TEAM", no jersey) holds figures no player of ours has.
            if (upperTrimmed(p.name) == "TEAM" || upperTrimmed(p.name) == "TM") {
                import.notImported.push_back("Team figures (" + trim(p.name) + ")");
                continue;
            }
            build.error = "Line " + digits(p.line) + ": the player " + trim(p.name) +
                          " has no jersey number.";
            return build;
        }
        const std::string number = uni.substr(0, digitsEnd);
        const int n = number.size() > 3 ? 1000 : std::stoi(number);
        if (n < 1 || n > kMaxPlayers) {
            build.error = "Line " + digits(p.line) + ": " + playerTitle(p) +
                          " wears a number outside 1-99; our players are numbered 1 to 99.";
            return build;
        }
        if (wearer[idx(n)]) {
            build.error = "Line " + digits(p.line) + ": " + playerTitle(p) + " and " +
                          playerTitle(*wearer[idx(n)]) + " both wear number " + digits(n) +
                          "; a number holds one player.";
            return build;
        }
        wearer[idx(n)] = &p;

        ImportedPlayer player;
        player.number = n;
        player.name = fit(trim(utf8ToCp1252(p.name)), width::playerName);
        player.onRoster = roster.inUse[idx(n)];
        player.rosterName = player.onRoster ? roster.names[idx(n)] : "";
        player.line = p.line;
        PlayerMapper mapper(p, n);
        if (!mapper.map(import.results, player, import.notImported, import.byHand, build.error))
            return build;
        import.players.push_back(std::move(player));
    }
    if (import.players.empty()) {
        build.error = "The file lists no player of " + trim(ours.name) + " with a jersey number.";
        return build;
    }
    std::sort(import.players.begin(), import.players.end(),
              [](const ImportedPlayer& a, const ImportedPlayer& b) { return a.number < b.number; });
    build.import = std::move(import);
    return build;
}

} // namespace scorvane
