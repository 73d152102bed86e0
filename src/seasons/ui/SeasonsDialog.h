#pragma once

#include "seasons/Career.h"
#include "seasons/SeasonsFile.h"
#include "storage/Prompter.h"

#include <QDialog>

#include <string>
#include <utility>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace scorvane {

// The seasons the user keeps (frmSeasons): each season's label, team and data directory, in the
// user's order, and whether its folder can be read ("missing", "cannot be read", "damaged"). Add,
// Rename, Move Up, Move Down and Remove change the list; below it, the players who are one person
// in two or more seasons, as every report over the seasons counts them, and the links and unlinks
// the user made to join a misspelt name or keep two players of one name apart.
//
// Every change stays in the dialog until OK writes the seasons file; nothing is written when
// nothing changed. Cancel or Escape forgets the changes, after asking when there are any. Nothing
// is ever written to a season's data directory.
class SeasonsDialog : public QDialog {
    Q_OBJECT

public:
    // `path` is the seasons file (seasonsFilePath of the configuration folder).
    SeasonsDialog(std::string path, Prompter& prompter, QWidget* parent = nullptr);

    const SeasonsList& list() const { return list_; }
    bool changed() const { return list_ != saved_; }

    // Adds a season at the end of the list; a refusal is shown and false returned.
    bool addEntry(const SeasonEntry& entry);
    // Adds a link (or an unlink) of two players; a refusal is shown and false returned.
    bool addPlayerLink(const PlayerLink& link);

    void accept() override;
    void reject() override;

private:
    int currentSeason() const;
    void showSeasons(int select);
    void showPlayers();
    void showLinks();
    void updateButtons();
    void openAdd();
    void rename();
    void move(int by);
    void remove();
    void openLink(bool unlink);
    void removeLink();
    void tell(const std::string& text);

    std::string path_;
    Prompter& prompter_;
    SeasonsList saved_;
    SeasonsList list_;
    SeasonSet set_; // the readable seasons, with who is who across them

    QTableWidget* seasons_ = nullptr;
    QTableWidget* players_ = nullptr;
    QListWidget* links_ = nullptr;
    QPushButton* rename_ = nullptr;
    QPushButton* up_ = nullptr;
    QPushButton* down_ = nullptr;
    QPushButton* remove_ = nullptr;
    QPushButton* link_ = nullptr;
    QPushButton* unlink_ = nullptr;
    QPushButton* removeLink_ = nullptr;
};

// Adding a season (frmAddSeason): its label, its data directory (typed or chosen with the folder
// dialog) and the team, chosen from that folder's team list, which is read without writing.
class AddSeasonDialog : public QDialog {
    Q_OBJECT

public:
    explicit AddSeasonDialog(QWidget* parent = nullptr);
    SeasonEntry entry() const;

private:
    void browse();
    void readTeams();

    QLineEdit* label_ = nullptr;
    QLineEdit* folder_ = nullptr;
    QComboBox* team_ = nullptr;
    QLabel* teamNote_ = nullptr;
    QPushButton* ok_ = nullptr;
};

// Linking or unlinking two players (frmLinkPlayers): a season and a player of it, twice. The
// players are the readable seasons' rosters.
class LinkPlayersDialog : public QDialog {
    Q_OBJECT

public:
    LinkPlayersDialog(const SeasonSet& set, bool unlink, QWidget* parent = nullptr);
    // Starts on these two players (season index, number), when they are there.
    void choose(std::pair<std::size_t, int> first, std::pair<std::size_t, int> second);
    PlayerLink link() const;

private:
    void fillPlayers(int which);

    const SeasonSet& set_;
    bool unlink_;
    QComboBox* season_[2] = {};
    QComboBox* player_[2] = {};
};

// The Seasons dialog over the configuration folder's seasons file.
void openSeasonsList(const std::string& configDirectory, Prompter& prompter, QWidget* parent);

// A season's state as the seasons screens show it: empty when it can be read, else "missing",
// "cannot be read" or "damaged", with the message naming the season and the file.
std::pair<std::string, std::string> seasonState(const SeasonEntry& season);

} // namespace scorvane
