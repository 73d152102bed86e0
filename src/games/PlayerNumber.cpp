#include "PlayerNumber.h"

#include <algorithm>

namespace scorvane {

namespace {

Message invalid(std::string text) {
    return {std::move(text), "New Player Number Invalid", Buttons::Ok, Icon::Warning, Answer::Ok};
}

std::string vacantName(int number) {
    return fit("Player " + digits(number), width::playerName);
}

int numberOf(const Bytes& rec) {
    return field::getInt16(field::sized(rec, 2), 0);
}

void renumber(Bytes& rec, int number) {
    rec.resize(std::max<std::size_t>(rec.size(), 2), ' ');
    field::putInt16(rec, 0, static_cast<std::int16_t>(number));
}

} // namespace

Status changePlayerNumber(TeamFiles& files, Roster& roster, Prompter& prompter, int oldNumber,
                          const std::string& newNumberText, bool& changed) {
    changed = false;
    const long long typed = leadingNumber(newNumberText);
    if (typed < 1 || typed > kMaxPlayers) {
        prompter.ask(invalid("Must be 1 to 99!"));
        return Status::ok();
    }
    const int newNumber = static_cast<int>(typed);
    if (newNumber == oldNumber) {
        prompter.ask(invalid("Same as old player number!"));
        return Status::ok();
    }

    bool recorded = false;
    if (Status s = files.forEachRecord(FileKind::Stats,
                                       [&](ByteView rec) {
                                           const StatHeader h = StatHeader::decode(rec);
                                           recorded = recorded ||
                                                      (h.isLive() && h.playerNumber == newNumber);
                                       });
        !s)
        return s;
    if (recorded) {
        prompter.ask(invalid("Games already recorded for new number!"));
        return Status::ok();
    }
    std::vector<RosterRecord> rosterFile;
    if (Status s = files.readAllAs(FileKind::Roster, rosterFile); !s)
        return s;
    std::vector<Bytes> info;
    if (Status s = files.readAll(FileKind::PlayerInfo, info); !s)
        return s;

    // Every result of the old number, deleted ones too, goes to the new one.
    const auto moveResults = [oldNumber, newNumber](StatHeader& h) {
        if (h.playerNumber != oldNumber)
            return false;
        h.playerNumber = static_cast<std::int16_t>(newNumber);
        return true;
    };

    // The roster slot follows the player; a vacant old number leaves the new one vacant too.
    Roster moved = roster;
    const auto o = static_cast<std::size_t>(oldNumber);
    const auto n = static_cast<std::size_t>(newNumber);
    if (!isPlayerNumber(oldNumber) || !moved.inUse[o]) {
        moved.inUse[n] = false;
        moved.names[n] = vacantName(newNumber);
    } else {
        moved.inUse[n] = true;
        moved.names[n] = moved.names[o];
        moved.inUse[o] = false;
        moved.names[o] = vacantName(oldNumber);
    }
    // The bytes a roster record carries past the name stay with the player.
    std::array<std::string, kMaxPlayers + 1> extras;
    extras.fill(std::string(width::rosterExtra, ' '));
    for (const auto& r : rosterFile) {
        if (isPlayerNumber(r.playerNumber))
            extras[static_cast<std::size_t>(r.playerNumber)] = r.rosterExtra;
    }
    if (isPlayerNumber(oldNumber) && moved.inUse[n])
        extras[n] = extras[o];
    std::vector<Bytes> rosterRecords;
    for (int p = 1; p <= kMaxPlayers; ++p) {
        const auto i = static_cast<std::size_t>(p);
        if (!moved.inUse[i])
            continue;
        RosterRecord r;
        r.playerNumber = static_cast<std::int16_t>(p);
        r.playerName = moved.names[i];
        r.rosterExtra = extras[i];
        rosterRecords.push_back(r.encode());
    }

    // Contact details move too; the new number's own are dropped only when the old one has some.
    const bool oldHasInfo = std::any_of(info.begin(), info.end(),
                                        [&](const Bytes& r) { return numberOf(r) == oldNumber; });
    if (oldHasInfo) {
        std::erase_if(info, [&](const Bytes& r) { return numberOf(r) == newNumber; });
        for (auto& r : info) {
            if (numberOf(r) == oldNumber)
                renumber(r, newNumber);
        }
        std::stable_sort(info.begin(), info.end(),
                         [](const Bytes& a, const Bytes& b) { return numberOf(a) < numberOf(b); });
    }

    if (Status s =
            files.replaceTogether({{FileKind::Roster, rosterRecords}, {FileKind::PlayerInfo, info}},
                                  FileKind::Stats, statHeaderRewrite(moveResults));
        !s)
        return s;
    roster = moved;
    changed = true;
    return Status::ok();
}

} // namespace scorvane
