#include "Validation.h"

#include "EntryFields.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <vector>

namespace scorvane {

namespace {

// The panel's numbers in single precision, as the rules compare them, by screen field.
using Values = std::array<float, kEntryFieldCount>;

struct Rule {
    std::function<bool(const Values&)> fails;
    const char* message;
    int focus;
};

// Screen fields of the own fields, per category.
namespace passing {
enum { Att, Cm, Yds, TD, Int, Lg, Big, FD, Sk, F, FL, Pen, XPt };
}
namespace receiving {
enum { Rec, Tgt, Yds, YAC, TD, Lg, Big, FD, F, FL, Pen, XPt };
}
namespace rushing {
enum { Rsh, Yds, YdL, TD, Lg, FD, F, FL, Pen, XPt };
}
namespace defense {
enum { Sol, Ast, Int, Blk, Hur, F, FC, Sk, TD, Pen };
}

const std::vector<Rule>& passingRules() {
    using namespace passing;
    static const std::vector<Rule> rules = {
        {[](const Values& v) { return v[Cm] + v[Int] > v[Att]; }, "Cm + Int > Att", Att},
        // The cursor goes into Big, not Lg.
        {[](const Values& v) { return v[Lg] > 100; }, "Lg > 100 Yds", Big},
        {[](const Values& v) { return v[Cm] == 0 && v[Lg] != 0; }, "Lg not = 0 and Cm = 0", Lg},
        {[](const Values& v) { return v[Cm] == 0 && v[Yds] != 0; }, "Yds not = 0 and Cm = 0", Yds},
        {[](const Values& v) { return v[Big] > v[Cm]; }, "Big > Cm", Big},
        {[](const Values& v) { return v[FD] > v[Cm]; }, "FD > Cm", FD},
        {[](const Values& v) { return v[TD] > v[Cm]; }, "TD > Cm", TD},
        {[](const Values& v) { return v[FL] > v[F]; }, "FL > F", FL},
    };
    return rules;
}

const std::vector<Rule>& rushingRules() {
    using namespace rushing;
    static const std::vector<Rule> rules = {
        {[](const Values& v) { return v[Rsh] == 0 && v[Yds] != 0; }, "Yds not = 0 and Rsh = 0",
         Yds},
        {[](const Values& v) { return v[Rsh] == 0 && v[YdL] > 0; }, "YdL > 0 and Rsh = 0", YdL},
        {[](const Values& v) { return v[TD] > v[Rsh]; }, "TD > Rsh", TD},
        {[](const Values& v) { return v[Lg] > 100; }, "Lg > 100 Yds", Lg},
        // A positive longest run without rushes is reported as "Lg > Rsh".
        {[](const Values& v) { return v[Rsh] == 0 && v[Lg] > 0; }, "Lg > Rsh", Lg},
        // Only while no yards lost are entered: with losses the gain can exceed the net yards.
        {[](const Values& v) { return v[Lg] > v[Yds] && v[YdL] == 0; }, "Lg > Yds", Lg},
        {[](const Values& v) { return v[FD] > v[Rsh]; }, "FD > Rsh", FD},
        {[](const Values& v) { return v[FL] > v[F]; }, "FL > F", FL},
        {[](const Values& v) { return v[F] > v[Rsh]; }, "F > Rsh", F},
    };
    return rules;
}

const std::vector<Rule>& receivingRules() {
    using namespace receiving;
    static const std::vector<Rule> rules = {
        // Also without targets entered: any reception then fails.
        {[](const Values& v) { return v[Rec] > v[Tgt]; }, "Rec > Tgt", Tgt},
        {[](const Values& v) { return v[TD] > v[Rec]; }, "TD > Rec", TD},
        {[](const Values& v) { return v[Lg] > 100; }, "Lg > 100 Yds", Lg},
        // The passing wording ("Cm") is the message of this rule too.
        {[](const Values& v) { return v[Rec] == 0 && v[Lg] != 0; }, "Lg not = 0 and Cm = 0", Lg},
        {[](const Values& v) { return v[Big] > v[Rec]; }, "Big > Rec", Big},
        {[](const Values& v) { return v[FL] > v[F]; }, "FL > F", FL},
        {[](const Values& v) { return v[F] > v[Rec]; }, "F > Rec", F},
        {[](const Values& v) { return v[Rec] == 0 && v[Yds] != 0; }, "Yds not = 0 and Rec = 0",
         Yds},
        {[](const Values& v) { return v[Rec] == 0 && v[YAC] > 0; }, "YAC > 0 and Rec = 0", YAC},
        {[](const Values& v) { return v[FD] > v[Rec]; }, "FD > Rec", FD},
    };
    return rules;
}

const std::vector<Rule>* rulesOf(char category) {
    switch (category) {
    case 'P':
        return &passingRules();
    case 'C':
        return &receivingRules();
    case 'R':
        return &rushingRules();
    default:
        return nullptr;
    }
}

// Sacks are whole or half: the number, written back as text the way a single-precision value is
// shown, may have nothing after its decimal point but "5" ("2.0" reads as 2 and passes). A
// number so small that it is written with an exponent and no point is no half either.
bool sacksAreWholeOrHalf(float sacks) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, sacks);
    if (error != std::errc())
        return false;
    const std::string text(buffer, end);
    const auto point = text.find('.');
    if (point != std::string::npos && text.substr(point + 1) != "5")
        return false;
    return std::floor(sacks * 2.0f) == sacks * 2.0f;
}

} // namespace

std::optional<std::int16_t> storedValue(std::string_view text, int scale) {
    const double stored = std::round(fieldNumber(text) * scale);
    if (!(stored >= -32768.0 && stored <= 32767.0))
        return std::nullopt;
    return static_cast<std::int16_t>(stored);
}

std::optional<FieldProblem> checkPanel(char category, const FieldTexts& texts) {
    const StatLayout* layout = StatLayout::of(category);
    if (!layout)
        return std::nullopt;

    // A number the file cannot hold is refused before any rule looks at it.
    for (const EnteredField& f : layout->fields()) {
        const auto& text = texts[static_cast<std::size_t>(f.screenField)];
        if (!storedValue(text, f.scale))
            return FieldProblem{f.scale == 1 ? kNumberRangeMessage : kSackRangeMessage,
                                f.screenField};
    }

    Values v{};
    for (int n = 0; n < kEntryFieldCount; ++n)
        v[static_cast<std::size_t>(n)] =
            static_cast<float>(fieldNumber(texts[static_cast<std::size_t>(n)]));

    if (category == 'D') {
        if (!sacksAreWholeOrHalf(v[defense::Sk]))
            return FieldProblem{"Sk must be integer or end with .0 or .5", defense::Sk};
        return std::nullopt;
    }
    if (const auto* rules = rulesOf(category))
        for (const Rule& rule : *rules)
            if (rule.fails(v))
                return FieldProblem{rule.message, rule.focus};
    return std::nullopt;
}

Message problemMessage(const FieldProblem& problem) {
    return Message{problem.message, "Error", Buttons::Ok, Icon::Warning, Answer::Ok};
}

} // namespace scorvane
