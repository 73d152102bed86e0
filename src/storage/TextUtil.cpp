#include "TextUtil.h"

#include <array>

namespace scorvane {
namespace {

std::string part(std::string_view s, std::size_t from, std::size_t n) {
    return from < s.size() ? std::string(s.substr(from, n)) : std::string();
}

// A number as text with the blank a non-negative number keeps in its sign position.
std::string signed_(long long n) {
    return n < 0 ? digits(n) : " " + digits(n);
}

} // namespace

std::string ShortDate(std::string_view date) {
    return part(date, 0, 2) + "/" + part(date, 2, 2) + "/" + part(date, 4, 2);
}

std::string LongDate(std::string_view date) {
    static constexpr std::array<const char*, 12> kMonths = {
        "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const long long month = leadingNumber(part(date, 0, 2));
    const long long day = leadingNumber(part(date, 2, 2));
    const long long year = leadingNumber(part(date, 4, 2));
    if (month < 1 || month > 12 || day < 1 || day > 31)
        return "ERROR";
    if (month == 2 && day > 29)
        return "ERROR";
    if (day == 31 && (month == 4 || month == 6 || month == 9 || month == 11))
        return "ERROR";
    const int century = year < 30 ? 20 : 19;
    return std::string(kMonths[static_cast<std::size_t>(month - 1)]) + " " + signed_(day) + ", " +
           signed_(century) + part(date, 4, 2);
}

std::string AlignText(std::string_view text, int width, char side) {
    const std::string t = trim(text);
    const int length = static_cast<int>(t.size());
    if (length > width || width < 0)
        return {};
    const auto d = static_cast<std::size_t>(width - length);
    switch (side) {
    case 'L':
        return std::string(d, ' ') + t;
    case 'R':
        return t + std::string(d, ' ');
    case 'M':
        return std::string(d / 2, ' ') + t + std::string(d - d / 2, ' ');
    default:
        return {};
    }
}

std::string GameLine(const GameRecord& game, const PointSums& points, const ConfigRecord& config) {
    const int type = game.gameTypeNumber();
    const std::string typeName =
        type > 0 ? fit(config.gameTypeNames[static_cast<std::size_t>(type - 1)], 10)
                 : std::string(width::gameTypeName, ' ');
    std::string line = AlignText(digits(game.gameNumber), 3, 'R') + " ";
    line += ShortDate(game.gameDate) + "  ";
    line += typeName + "  ";
    line += fit(game.opponent, width::opponent);
    line +=
        AlignText(digits(points.team), 4, 'L') + "-" + AlignText(digits(points.opponent), 4, 'R');
    if (points.team > points.opponent)
        line += "Won";
    else if (points.team < points.opponent)
        line += "lost";
    else
        line += "tie ";
    return line;
}

} // namespace scorvane
