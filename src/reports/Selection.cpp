#include "Selection.h"

#include "storage/Bytes.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <utility>

namespace scorvane {
namespace {

// Lower case for Windows-1252 text: ASCII letters and the accented capitals 0xC0..0xDE (but the
// multiplication sign 0xD7), and the three capitals that sit in 0x8A, 0x8C and 0x8E.
char lowerCp1252(char c) {
    const auto u = static_cast<unsigned char>(c);
    if (u >= 'A' && u <= 'Z')
        return static_cast<char>(u + 32);
    if (u >= 0xC0 && u <= 0xDE && u != 0xD7)
        return static_cast<char>(u + 32);
    if (u == 0x8A || u == 0x8C || u == 0x8E)
        return static_cast<char>(u + 16);
    return c;
}

std::string lower(std::string_view s) {
    std::string out(s);
    for (auto& c : out)
        c = lowerCp1252(c);
    return out;
}

bool inGameRange(long long n) {
    return n >= kLowestGame && n <= kHighestGame;
}

Message rangeMessage(const char* title) {
    return Message{"Must be 1 to 999", title};
}

} // namespace

bool Selection::allGameTypes() const {
    for (bool t : gameTypes)
        if (!t)
            return false;
    return true;
}

bool Selection::countsGame(const GameRecord& game) const {
    if (!game.isLive())
        return false;
    const int low = std::min(fromGame, toGame);
    const int high = std::max(fromGame, toGame);
    if (game.gameNumber < low || game.gameNumber > high)
        return false;
    const int type = game.gameTypeNumber();
    if (type < 1 || type > kGameTypeCount || !gameTypes[static_cast<std::size_t>(type - 1)])
        return false;
    return !specialSelect || game.specialSelect == '2';
}

bool Selection::countsPlayer(int number, const std::string& rosterName) const {
    if (playerNumber != 0 && number != playerNumber)
        return false;
    const std::string wanted = trim(playerName);
    return wanted.empty() || lower(trim(rosterName)) == wanted;
}

std::string Selection::emptyReportText() const {
    return specialSelect ? "No Games" : "No Players";
}

std::string Selection::describe(const ConfigRecord& config) const {
    std::string text =
        "Games " + digits(std::min(fromGame, toGame)) + " to " + digits(std::max(fromGame, toGame));
    if (allGameTypes()) {
        text += ", all game types";
    } else {
        std::string names;
        for (std::size_t t = 0; t < gameTypes.size(); ++t)
            if (gameTypes[t])
                names += (names.empty() ? "" : ", ") + trim(config.gameTypeNames[t]);
        text += names.empty() ? ", no game type" : ", " + names;
    }
    if (specialSelect)
        text += ", Special Select games only";
    if (playerNumber != 0)
        text += ", player " + digits(playerNumber);
    if (!trim(playerName).empty())
        text += ", player " + trim(playerName);
    return text;
}

std::string selectionPlayerName(const std::string& typed) {
    return fit(lower(trimLeft(typed)), 17);
}

std::string specialSelectLine(const GameRecord& game) {
    const std::optional<PointSums> points = game.pointSums();
    const std::string us = points ? digits(points->team) : "";
    const std::string them = points ? digits(points->opponent) : "";
    return ShortDate(game.gameDate) + "  " + AlignText(us, 3, 'L') + " - " +
           AlignText(them, 3, 'L') + "  " + fit(game.opponent, width::opponent);
}

std::optional<SelectionError> storeSelection(const SelectionEntry& entry, Selection& selection) {
    const long long from = leadingNumber(entry.fromGame);
    if (!inGameRange(from))
        return SelectionError{rangeMessage("From Game Invalid"), SelectionField::FromGame};
    const long long to = leadingNumber(entry.toGame);
    if (!inGameRange(to))
        return SelectionError{rangeMessage("To Game Invalid"), SelectionField::ToGame};
    Selection s;
    s.fromGame = static_cast<int>(std::min(from, to));
    s.toGame = static_cast<int>(std::max(from, to));
    s.gameTypes = entry.gameTypes;
    s.specialSelect = entry.specialSelect;
    // The number box takes up to three digits; anything beyond 16 bits could never name a player.
    const long long number = leadingNumber(entry.playerNumber);
    s.playerNumber = number < -32768 || number > 32767 ? -1 : static_cast<int>(number);
    s.playerName = selectionPlayerName(entry.playerName);
    selection = std::move(s);
    return std::nullopt;
}

} // namespace scorvane
