#pragma once

#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/Records.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// A team's 99 player slots: whether each number is in use and its 17-character name.
// Loaded from the roster file; the other screens read players from here.
struct Roster {
    std::array<bool, kMaxPlayers + 1> inUse{};
    std::array<std::string, kMaxPlayers + 1> names; // 17 characters, Windows-1252

    Roster();
    // Reads every roster record into the slot of its player number. Records with a number
    // outside 1..99 are skipped.
    Status load(TeamFiles& files);
    // The player's list line: the number right-justified (one extra space below 10) and the
    // name, or " ____________________" for a number not in use.
    std::string listLine(int playerNumber) const;
    std::vector<std::string> listLines() const;
    // Rewrites the roster file whole from empty: one record per number in use, in number order.
    Status saveNames(TeamFiles& files) const;
};

// The contact fields of the roster screen, in the order Enter moves through them.
enum class ContactField { Phone, Address1, Address2, City, State, Zip, Other };
inline constexpr int kContactFieldCount = 7;
// Width held on screen (Other holds 200 characters although only 70 are kept in the file).
std::size_t contactWidth(ContactField field);

// The roster screen: the list of 99 numbers, the selected number's name and contact details,
// naming, blanking and deleting numbers, and saving both files when the screen closes.
class RosterEditor {
public:
    // Where Enter moves the focus: the name, then the seven contact fields, then Close.
    enum class Focus { Name, Phone, Address1, Address2, City, State, Zip, Other, Close };
    static Focus nextFocus(Focus focus);

    RosterEditor(Roster& roster);
    // Loads the player information records into the contact fields and selects number 1.
    Status open(TeamFiles& files);

    std::vector<std::string> listLines() const { return roster_.listLines(); }
    int selected() const { return selected_; }
    void select(int playerNumber);
    // The selected number's name as shown in the name box (empty for a number not in use).
    std::string nameText() const;
    std::string contact(int playerNumber, ContactField field) const;

    // The name box lost the focus. Returns true when the list line of the number changed.
    bool nameEntered(const std::string& text);
    // Asks before clearing the selected number; true when it was cleared.
    bool deletePlayer(Prompter& prompter);
    // A contact box lost the focus: its text is held at the field's width.
    void contactEntered(ContactField field, const std::string& text);

    // Rewrites the roster and the player information files whole, in number order.
    Status save(TeamFiles& files);

    static Message deleteQuestion();

private:
    void clear(int playerNumber);

    Roster& roster_;
    std::array<std::array<std::string, kContactFieldCount>, kMaxPlayers + 1> contacts_;
    int selected_ = 1;
};

} // namespace scorvane
