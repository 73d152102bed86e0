#include "Roster.h"

namespace scorvane {

namespace {

// Other takes 200 characters on screen although the file keeps 70 of them.
constexpr std::size_t kOtherOnScreen = 200;
constexpr std::array<std::size_t, kContactFieldCount> kWidths = {
    width::phone, width::address, width::address, width::city,
    width::state, width::zip,     kOtherOnScreen};

std::size_t index(ContactField f) {
    return static_cast<std::size_t>(f);
}

} // namespace

std::size_t contactWidth(ContactField field) {
    return kWidths[index(field)];
}

Roster::Roster() {
    names.fill(std::string(width::playerName, ' '));
}

Status Roster::load(TeamFiles& files) {
    inUse.fill(false);
    names.fill(std::string(width::playerName, ' '));
    std::vector<RosterRecord> records;
    Status s = files.readAllAs(FileKind::Roster, records);
    for (const auto& r : records) {
        if (!isPlayerNumber(r.playerNumber))
            continue;
        inUse[static_cast<std::size_t>(r.playerNumber)] = true;
        names[static_cast<std::size_t>(r.playerNumber)] = fit(r.playerName, width::playerName);
    }
    return s;
}

std::string Roster::listLine(int playerNumber) const {
    // One extra space below 10 lines the digits up in a proportional font.
    std::string line = (playerNumber < 10 ? "  " : "") + digits(playerNumber);
    if (inUse[static_cast<std::size_t>(playerNumber)])
        return line + " " + names[static_cast<std::size_t>(playerNumber)];
    return line + " " + std::string(20, '_');
}

std::vector<std::string> Roster::listLines() const {
    std::vector<std::string> out;
    out.reserve(kMaxPlayers);
    for (int n = 1; n <= kMaxPlayers; ++n)
        out.push_back(listLine(n));
    return out;
}

Status Roster::saveNames(TeamFiles& files) const {
    std::vector<RosterRecord> records;
    for (int n = 1; n <= kMaxPlayers; ++n) {
        if (!inUse[static_cast<std::size_t>(n)])
            continue;
        RosterRecord r;
        r.playerNumber = static_cast<std::int16_t>(n);
        r.playerName = names[static_cast<std::size_t>(n)];
        records.push_back(r);
    }
    return files.replaceAllWith(FileKind::Roster, records);
}

RosterEditor::Focus RosterEditor::nextFocus(Focus focus) {
    return focus == Focus::Close ? Focus::Close : static_cast<Focus>(static_cast<int>(focus) + 1);
}

RosterEditor::RosterEditor(Roster& roster) : roster_(roster) {
    for (auto& player : contacts_)
        for (std::size_t f = 0; f < kContactFieldCount; ++f)
            player[f] = std::string(kWidths[f], ' ');
}

Status RosterEditor::open(TeamFiles& files) {
    std::vector<PlayerInfoRecord> records;
    Status s = files.readAllAs(FileKind::PlayerInfo, records);
    for (const auto& r : records) {
        if (!isPlayerNumber(r.playerNumber))
            continue;
        auto& c = contacts_[static_cast<std::size_t>(r.playerNumber)];
        const std::array<const std::string*, kContactFieldCount> from = {
            &r.phone, &r.address1, &r.address2, &r.city, &r.state, &r.zip, &r.other};
        for (std::size_t f = 0; f < kContactFieldCount; ++f)
            c[f] = fit(*from[f], kWidths[f]);
    }
    selected_ = 1;
    return s;
}

void RosterEditor::select(int playerNumber) {
    if (isPlayerNumber(playerNumber))
        selected_ = playerNumber;
}

std::string RosterEditor::nameText() const {
    const auto n = static_cast<std::size_t>(selected_);
    return roster_.inUse[n] ? trimRight(roster_.names[n]) : std::string();
}

std::string RosterEditor::contact(int playerNumber, ContactField field) const {
    if (!isPlayerNumber(playerNumber))
        return {};
    return contacts_[static_cast<std::size_t>(playerNumber)][index(field)];
}

void RosterEditor::clear(int playerNumber) {
    const auto n = static_cast<std::size_t>(playerNumber);
    roster_.inUse[n] = false;
    // The stored name of a vacant number is never shown or saved.
    roster_.names[n] = fit("player " + digits(playerNumber), width::playerName);
    for (std::size_t f = 0; f < kContactFieldCount; ++f)
        contacts_[n][f] = std::string(kWidths[f], ' ');
}

bool RosterEditor::nameEntered(const std::string& text) {
    const auto n = static_cast<std::size_t>(selected_);
    const std::string typed = trim(text);
    const std::string old = trimRight(roster_.names[n]);
    if (!typed.empty() && roster_.inUse[n] &&
        fit(typed, width::playerName) == fit(old, width::playerName))
        return false;
    if (typed.empty()) {
        if (!roster_.inUse[n])
            return false;
        clear(selected_);
        return true;
    }
    roster_.inUse[n] = true;
    roster_.names[n] = fit(typed, width::playerName);
    return true;
}

Message RosterEditor::deleteQuestion() {
    return {"Are you sure you want to delete the player name and information?",
            "Delete Player From Roster", Buttons::YesNo, Icon::Question, Answer::No};
}

bool RosterEditor::deletePlayer(Prompter& prompter) {
    if (prompter.ask(deleteQuestion()) != Answer::Yes)
        return false;
    clear(selected_);
    return true;
}

void RosterEditor::contactEntered(ContactField field, const std::string& text) {
    contacts_[static_cast<std::size_t>(selected_)][index(field)] = fit(text, kWidths[index(field)]);
}

Status RosterEditor::save(TeamFiles& files) {
    // The roster first, then the player information: each file is replaced whole and atomically,
    // and information records are found by player number, so a stop between the two never mixes
    // up players.
    if (Status s = roster_.saveNames(files); !s)
        return s;
    std::vector<PlayerInfoRecord> records;
    for (int n = 1; n <= kMaxPlayers; ++n) {
        auto& c = contacts_[static_cast<std::size_t>(n)];
        std::string joined;
        for (std::size_t f = 0; f < kContactFieldCount; ++f) {
            c[f] = fit(trimLeft(c[f]), kWidths[f]);
            joined += trim(c[f]);
        }
        if (joined.empty())
            continue;
        PlayerInfoRecord r;
        r.playerNumber = static_cast<std::int16_t>(n);
        r.phone = c[0];
        r.address1 = c[1];
        r.address2 = c[2];
        r.city = c[3];
        r.state = c[4];
        r.zip = c[5];
        r.other = c[6].substr(0, 70);
        records.push_back(r);
    }
    return files.replaceAllWith(FileKind::PlayerInfo, records);
}

} // namespace scorvane
