#pragma once

#include <QDialog>
#include <QString>

#include <set>
#include <utility>
#include <vector>

class QLineEdit;
class QListWidget;

namespace scorvane {

// The fewest games a listed player must have: "Less than" N " Games" leaves out the players with
// fewer selected games. 0 or 1 leaves nobody out.
class MinimumDialog : public QDialog {
    Q_OBJECT

public:
    explicit MinimumDialog(int minimum, QWidget* parent = nullptr);

    int minimum() const { return minimum_; }

private:
    void confirm();

    QLineEdit* box_ = nullptr;
    int minimum_;
};

// A player the individual choice offers: his team, number and the line shown for him.
struct PlayerChoice {
    int team = 0;
    int number = 0;
    QString line;
};

// Single players to report on, chosen in lstPlayers. Choosing none (or every one) reports on the
// whole team again.
class IndividualDialog : public QDialog {
    Q_OBJECT

public:
    IndividualDialog(const std::vector<PlayerChoice>& players,
                     const std::set<std::pair<int, int>>& chosen, QWidget* parent = nullptr);

    // The (team, player number) pairs chosen; empty for every player.
    const std::set<std::pair<int, int>>& chosen() const { return chosen_; }

private:
    void confirm();

    std::vector<PlayerChoice> players_;
    QListWidget* list_ = nullptr;
    std::set<std::pair<int, int>> chosen_;
};

} // namespace scorvane
