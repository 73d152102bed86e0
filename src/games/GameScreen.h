#pragma once

#include "games/GameList.h"
#include "storage/ConfigRecord.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/Records.h"

#include <array>
#include <optional>
#include <string>

namespace scorvane {

// How the game screen is entered: adding a game after the last, inserting one before a game, or
// changing one.
enum class EntryMode { Add, Insert, Change };

// The game screen: entering or changing one game's information.
//
// Modes: Add puts a game after the last, Insert puts one before game `gameNumber`, Change changes
// game `gameNumber`. Texts are kept as typed (Windows-1252); numbers are read from the score boxes
// when the game is saved.
class GameForm {
public:
    // The ten score boxes: opponent quarters 1-4 and overtime, then the team's.
    enum Box { Opp1, Opp2, Opp3, Opp4, OppOT, Team1, Team2, Team3, Team4, TeamOT, BoxCount };
    // Score boxes hold at most three digits, so no sum of a game's points can overflow.
    static constexpr int kScoreDigits = 3;

    struct Fields {
        std::string date;     // the date box, up to 6 characters "MMDDYY"
        std::string location; // 20
        std::string opponent; // as typed; cut to 25 when stored
        int opponentTeam = 0; // place of the opponent in the team list (1..100), 0 when typed
        std::array<std::string, BoxCount> scores;
        std::string comment; // 58
        int gameType = 1;    // 1..7
        bool home = false;
        bool specialSelect = false;
    };

    // Opens the screen. Change loads the game's record from the list; Add and Insert start blank.
    GameForm(EntryMode mode, int gameNumber, const GameList& games);

    EntryMode mode() const { return mode_; }
    int gameNumber() const { return gameNumber_; }
    // "Add Game", "Insert Game" or "Change Game".
    std::string modeCaption() const;
    // Whether the note "Must  click OK (add game) before adding player results" shows and the
    // Players button is disabled (Add and Insert).
    bool mustSaveFirst() const { return mode_ != EntryMode::Change; }

    Fields& fields() { return fields_; }
    const Fields& fields() const { return fields_; }
    // Any edit by the user marks the information changed; the screen's own filling does not.
    void markChanged() { changed_ = true; }
    bool changed() const { return changed_; }

    // Keys a score box accepts: digits, Backspace (8) and Delete (127).
    static bool acceptsScoreKey(int key);
    long long teamTotal() const;
    long long opponentTotal() const;

    // The date check: six spaces become "000000" (no date, empty label text), other spaces become
    // zeros; the label text is the long date. Returns false for an invalid date. `date` is
    // rewritten with the normalised text.
    bool checkDate(std::string& labelText);

    enum class SaveResult { Saved, InvalidDate, Failed };
    // Saves as the mode says (asking about overtime for a tie with both overtime boxes at 0).
    // An invalid date shows "Enter game date (MMDDYY)" titled "Game Date Invalid".
    SaveResult save(TeamFiles& files, GameList& games, Prompter& prompter);
    // A game whose points leave the 16-bit range: shows "Overflow" (titled "Error") and returns
    // true. The stored record is left as it is.
    bool reportOverflow(Prompter& prompter) const;
    // Cancel: true when the screen may close (nothing changed, or the user said Yes).
    bool confirmCancel(Prompter& prompter) const;
    // Players: asks "Save game information?" when something changed and saves on Yes. Returns
    // false when the screen must stay (an invalid date or a failed save).
    bool saveBeforePlayers(TeamFiles& files, GameList& games, Prompter& prompter);

    // Checks before importing from the opponent's games: an opponent chosen from the team list
    // and not the team itself. Shows the message of a refusal; after SameTeam the date box gets
    // the focus.
    enum class ImportCheck { Ok, NoOpponent, SameTeam };
    ImportCheck checkImport(int currentTeam, Prompter& prompter) const;
    // Fills the screen from the opponent's record of the game, seen from this team's side.
    void applyImport(const GameRecord& theirs, bool withComment);
    // Reads the opponent's record at `position` and fills the screen from it. A game whose points
    // leave the 16-bit range is refused with the overflow message; false when nothing was taken.
    bool importFrom(TeamFiles& opponent, int position, bool withComment, Prompter& prompter);

    // The record the screen would store (without its game number and status).
    GameRecord toRecord() const;

    static Message overflowMessage();
    static Message invalidDateMessage();
    static Message overtimeQuestion();
    static Message cancelQuestion();
    static Message saveQuestion();

private:
    EntryMode mode_;
    int gameNumber_;
    Fields fields_;
    std::int16_t scoreToStore(std::size_t box) const;

    std::int16_t overtimeFlag_ = 0;
    // The scores as stored, and their texts as first shown: a box left as shown keeps its value.
    std::array<std::int16_t, BoxCount> stored_{};
    std::optional<std::array<std::string, BoxCount>> storedTexts_;
    bool pointsOverflow_ = false;
    std::string tail_ = std::string(width::gameTail, ' ');
    bool changed_ = false;
};

// The opponent's games for the import dialog, read from the opponent's own game file.
struct ImportChoice {
    int position = 0; // record position in the opponent's game file
    std::string line; // summary line
};
[[nodiscard]] Status listOpponentGames(TeamFiles& opponent, const ConfigRecord& config,
                                       std::vector<ImportChoice>& choices);
[[nodiscard]] Status readOpponentGame(TeamFiles& opponent, int position, GameRecord& game);

} // namespace scorvane
