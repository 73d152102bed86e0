#pragma once

#include "storage/Prompter.h"
#include "storage/Records.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace scorvane {

// A player's kicks or returns of one game: 18 slots as the list record keeps them, the used ones
// with a type letter. Slots are read and written back as they are; adding or deleting a play first
// moves the used slots together at the front, in their order.
using PlayList = std::array<ListEntry, StatListRecord::EntryCount>;

int playCount(const PlayList& plays);
// The used slots in order (what the list box shows, one item each).
std::vector<ListEntry> usedPlays(const PlayList& plays);
// Appends after the used slots; false when all 18 are used.
bool appendPlay(PlayList& plays, const ListEntry& entry);
// Removes the item-th used slot (from 0); false when there is none.
bool removePlay(PlayList& plays, int item);

// The entry controls of the kicks panel.
enum class KickType { None, FieldGoal, ExtraPoint, Punt };
enum class KickMark { Good, Blocked, FairCatch, Inside20, Touchback };
inline constexpr int kKickMarkCount = 5;

struct KickEntry {
    KickType type = KickType::None;
    std::string yards = "0";
    std::array<bool, kKickMarkCount> marks{};

    bool mark(KickMark m) const { return marks[static_cast<std::size_t>(m)]; }
    // Whether a check box can be ticked with the selected type (all can before a type is chosen).
    bool markAvailable(KickMark m) const;
    bool yardsAvailable() const { return type != KickType::ExtraPoint; }
    // Choosing a type: the check boxes it cannot have are cleared; an extra point has no yards
    // and its yards text becomes "0".
    void select(KickType t);
    // Ticks or clears a check box; a tick on an unavailable one is refused.
    void setMark(KickMark m, bool on);
    // After a kick was added: yards "0" and every check box cleared; the type stays.
    void reset();
    // A type chosen and yards or a check box entered since the last reset: a kick the user set up
    // that is not on the list yet.
    bool setUp() const;
};

enum class ReturnType { None, Punt, Kick };
enum class ReturnMark { FairCatch, Fumble, Touchdown };
inline constexpr int kReturnMarkCount = 3;

struct ReturnEntry {
    ReturnType type = ReturnType::None;
    std::string yards = "0";
    std::array<bool, kReturnMarkCount> marks{};

    bool mark(ReturnMark m) const { return marks[static_cast<std::size_t>(m)]; }
    void setMark(ReturnMark m, bool on) { marks[static_cast<std::size_t>(m)] = on; }
    void reset();
    bool setUp() const; // as for a kick
};

// Why a kick or return cannot be added, or a delete cannot be done: the message box and whether
// the cursor goes into the yards box.
struct PlayProblem {
    std::string text;
    std::string title;
    bool focusYards = false;

    bool operator==(const PlayProblem&) const = default;
};
Message playProblemMessage(const PlayProblem& problem);

// The checks before a kick or return is added, in their order; `listed` is the number of items in
// the list. Empty when the play may be added.
std::optional<PlayProblem> checkKick(int listed, const KickEntry& entry);
std::optional<PlayProblem> checkReturn(int listed, const ReturnEntry& entry);
// The checks before deleting item `selected` (-1 for none) of a list of `listed` items.
std::optional<PlayProblem> checkKickDelete(int listed, int selected);
std::optional<PlayProblem> checkReturnDelete(int listed, int selected);

// The stored entry of a play that passed its checks.
ListEntry kickPlay(const KickEntry& entry);
ListEntry returnPlay(const ReturnEntry& entry);

// What a kick's marks say, decoded from the largest bit down (32 touchback, 16 inside 20, 8 fair
// catch, 4 blocked; a remainder of 2 is good).
struct KickOutcome {
    bool good = false, blocked = false, fairCatch = false, inside20 = false, touchback = false;
};
KickOutcome decodeKickMarks(int marks);
struct ReturnOutcome {
    bool fairCatch = false, fumble = false, touchdown = false;
};
ReturnOutcome decodeReturnMarks(int marks);

// The list box item of a kick. An extra point reads "Xpt " when it has just been added and "XPt "
// when the list is built again from the stored entries.
std::string kickItemText(const ListEntry& kick, bool justAdded);
std::string returnItemText(const ListEntry& ret);
// The items of a list built from the stored entries.
std::vector<std::string> kickItems(const PlayList& plays);
std::vector<std::string> returnItems(const PlayList& plays);

} // namespace scorvane
