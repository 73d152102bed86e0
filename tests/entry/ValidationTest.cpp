#include "entry/Validation.h"
#include "entry/EntryFields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>

using namespace scorvane;

namespace {

// The first failure of a panel holding these texts (other fields empty), as "message@focus", or
// "OK".
std::string check(char category, const std::map<int, std::string>& typed) {
    FieldTexts texts;
    for (const auto& [field, text] : typed)
        texts[static_cast<std::size_t>(field)] = text;
    const auto problem = checkPanel(category, texts);
    return problem ? problem->message + "@" + std::to_string(problem->focusField) : "OK";
}

} // namespace

TEST(Validation, PassingRulesInOrder) {
    // Att 0, Cm 1, Yds 2, TD 3, Int 4, Lg 5, Big 6, FD 7, F 9, FL 10
    EXPECT_EQ(check('P', {{0, "10"}, {1, "6"}, {4, "5"}}), "Cm + Int > Att@0");
    EXPECT_EQ(check('P', {{0, "11"}, {1, "6"}, {4, "5"}}), "OK");
    EXPECT_EQ(check('P', {{0, "5"}, {1, "1"}, {5, "101"}}), "Lg > 100 Yds@6"); // cursor in Big
    EXPECT_EQ(check('P', {{0, "5"}, {1, "1"}, {5, "100"}}), "OK");
    EXPECT_EQ(check('P', {{5, "-2"}}), "Lg not = 0 and Cm = 0@5");
    EXPECT_EQ(check('P', {{1, "0"}, {5, "0"}, {2, "-3"}}), "Yds not = 0 and Cm = 0@2");
    EXPECT_EQ(check('P', {{0, "2"}, {1, "1"}, {6, "2"}}), "Big > Cm@6");
    EXPECT_EQ(check('P', {{0, "2"}, {1, "1"}, {7, "2"}}), "FD > Cm@7");
    EXPECT_EQ(check('P', {{0, "2"}, {1, "1"}, {3, "2"}}), "TD > Cm@3");
    EXPECT_EQ(check('P', {{9, "1"}, {10, "2"}}), "FL > F@10");
    // Sacks, penalties, extra points and the user columns take part in no rule.
    EXPECT_EQ(check('P', {{8, "9"}, {11, "9"}, {12, "9"}, {22, "9"}}), "OK");
}

TEST(Validation, RushingAndReceivingRules) {
    // Rsh 0, Yds 1, YdL 2, TD 3, Lg 4, FD 5, F 6, FL 7
    EXPECT_EQ(check('R', {{1, "4"}}), "Yds not = 0 and Rsh = 0@1");
    EXPECT_EQ(check('R', {{2, "1"}}), "YdL > 0 and Rsh = 0@2");
    EXPECT_EQ(check('R', {{0, "1"}, {3, "2"}}), "TD > Rsh@3");
    EXPECT_EQ(check('R', {{0, "1"}, {1, "101"}, {4, "101"}}), "Lg > 100 Yds@4");
    EXPECT_EQ(check('R', {{4, "3"}}), "Lg > Rsh@4");
    EXPECT_EQ(check('R', {{0, "1"}, {1, "5"}, {2, "2"}, {4, "8"}}), "OK"); // yards lost entered
    EXPECT_EQ(check('R', {{0, "1"}, {1, "5"}, {4, "8"}}), "Lg > Yds@4");
    EXPECT_EQ(check('R', {{0, "1"}, {1, "5"}, {4, "5"}, {5, "2"}}), "FD > Rsh@5");
    EXPECT_EQ(check('R', {{0, "1"}, {6, "1"}, {7, "2"}}), "FL > F@7");
    EXPECT_EQ(check('R', {{0, "1"}, {6, "2"}}), "F > Rsh@6");

    // Rec 0, Tgt 1, Yds 2, YAC 3, TD 4, Lg 5, Big 6, FD 7, F 8, FL 9
    EXPECT_EQ(check('C', {{0, "1"}}), "Rec > Tgt@1");
    EXPECT_EQ(check('C', {{0, "1"}, {1, "1"}, {4, "2"}}), "TD > Rec@4");
    EXPECT_EQ(check('C', {{0, "1"}, {1, "1"}, {5, "101"}}), "Lg > 100 Yds@5");
    EXPECT_EQ(check('C', {{5, "-1"}}), "Lg not = 0 and Cm = 0@5");
    EXPECT_EQ(check('C', {{0, "1"}, {1, "1"}, {6, "2"}}), "Big > Rec@6");
    EXPECT_EQ(check('C', {{8, "1"}, {9, "2"}}), "FL > F@9");
    EXPECT_EQ(check('C', {{0, "1"}, {1, "1"}, {8, "2"}}), "F > Rec@8");
    EXPECT_EQ(check('C', {{2, "7"}}), "Yds not = 0 and Rec = 0@2");
    EXPECT_EQ(check('C', {{3, "7"}}), "YAC > 0 and Rec = 0@3");
    EXPECT_EQ(check('C', {{0, "1"}, {1, "1"}, {7, "2"}}), "FD > Rec@7");
    EXPECT_EQ(check('C', {{0, "2"}, {1, "3"}, {2, "40"}, {5, "30"}, {7, "2"}}), "OK");
}

TEST(Validation, SacksAreWholeOrHalfAndNumbersMustFitTheFile) {
    for (const char* ok : {"1.5", "3", "2.0", "2.50", "", ".", "0.5"})
        EXPECT_EQ(check('D', {{7, ok}}), "OK") << ok;
    for (const char* bad : {"1.25", "2.6", "0.0000001"})
        EXPECT_EQ(check('D', {{7, bad}}), "Sk must be integer or end with .0 or .5@7") << bad;
    EXPECT_EQ(check('K', {{22, "9"}}), "OK");

    // 16 bits: whole numbers to 32767, sacks (kept in tenths) to 3276.7; never wrapped.
    EXPECT_EQ(check('R', {{0, "32767"}, {1, "32767"}}), "OK");
    EXPECT_EQ(check('R', {{0, "40"}, {1, "99999"}}), "Number must be between -32768 and 32767@1");
    EXPECT_EQ(check('P', {{0, "32768"}}), "Number must be between -32768 and 32767@0");
    EXPECT_EQ(check('C', {{2, "-32769"}}), "Number must be between -32768 and 32767@2");
    EXPECT_EQ(check('K', {{26, std::string(400, '9')}}),
              "Number must be between -32768 and 32767@26");
    EXPECT_EQ(check('D', {{7, "3276.5"}}), "OK");
    EXPECT_EQ(check('D', {{7, "3277"}}), "Sacks must be between -3276.8 and 3276.7@7");
    EXPECT_EQ(storedValue("2.5", 10), std::optional<std::int16_t>(25));
    EXPECT_EQ(storedValue("-32768", 1), std::optional<std::int16_t>(-32768));
    EXPECT_EQ(problemMessage({"FL > F", 10}),
              (Message{"FL > F", "Error", Buttons::Ok, Icon::Warning, Answer::Ok}));
}

TEST(EntryFields, KeyFiltersAndPastedText) {
    const std::string minusFields = "P2 P5 C2 C5 R1 R4";
    for (char category : std::string("PCRDKT"))
        for (int field = 0; field < 27; ++field) {
            const std::string name = category + std::to_string(field);
            const bool minus =
                minusFields.find(name + " ") != std::string::npos || minusFields.ends_with(name);
            EXPECT_EQ(acceptsKey(category, field, '-'), minus) << name;
            EXPECT_EQ(acceptsKey(category, field, '.'), name == "D7") << name;
            EXPECT_TRUE(acceptsKey(category, field, '7') && acceptsKey(category, field, 8) &&
                        acceptsKey(category, field, 127));
            EXPECT_FALSE(acceptsKey(category, field, 'a') || acceptsKey(category, field, ' ') ||
                         acceptsKey(category, field, '+'));
        }
    EXPECT_EQ(filterFieldText('P', 2, "-1a2.3 "), "-123");
    EXPECT_EQ(filterFieldText('D', 7, "-2.5x"), "2.5");
    EXPECT_FALSE(acceptsFieldText('P', 22, "-5"));
    EXPECT_TRUE(acceptsFieldText('R', 4, "-5"));
    EXPECT_EQ(filterKickYardsText("-4x5.\b"), "-45");
    EXPECT_TRUE(acceptsKickYardsKey('-') && acceptsKickYardsKey(8) && !acceptsKickYardsKey('.'));
}

TEST(EntryFields, NumbersTextsDescriptionsAndEnterOrder) {
    std::vector<double> numbers;
    for (const char* text : {"", "-", ".", " -12x3", "2.5", "1e5"})
        numbers.push_back(fieldNumber(text));
    EXPECT_EQ(numbers, (std::vector<double>{0, 0, 0, -12, 2.5, 1}));
    EXPECT_TRUE(std::isinf(fieldNumber(std::string(400, '9'))));
    EXPECT_EQ(storedValueText(25, 10) + "|" + storedValueText(-5, 10) + "|" +
                  storedValueText(30, 10) + "|" + storedValueText(-7, 1),
              "2.5|-0.5|3|-7");

    EXPECT_EQ(fieldDescription('P', 0) + "|" + fieldDescription('R', 13),
              "Attempts |User Defined Field");

    // The field Enter goes to from each of these.
    const std::string categories = "PPCRDPDKT";
    const int from[] = {11, 12, 11, 9, 9, 26, 26, 26, 23};
    std::vector<int> next;
    for (std::size_t i = 0; i < categories.size(); ++i)
        next.push_back(nextFieldAfterEnter(categories[i], from[i]));
    EXPECT_EQ(next, (std::vector<int>{12, 22, 22, 22, 22, 0, 0, 22, 24}));
}
