#pragma once

#include "entry/PlayerScreen.h"

#include <QDialog>

#include <array>
#include <functional>

class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPoint;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace scorvane {

// The player statistics screen of one game: the roster in a table with a ball mark per category,
// one category panel at a time for the selected player, the kick and return lists, and the team
// totals view.
//
// A thin view over PlayerScreen: every user action goes to the model, and the whole screen is
// shown again from the model's state afterwards. Nothing here decides what is stored.
class PlayerScreenDialog : public QDialog {
    Q_OBJECT

public:
    // `openRoster` shows the roster screen modally; the table is filled again when it returns.
    PlayerScreenDialog(TeamFiles files, int gameNumber, const ColumnTable& columns,
                       Prompter& prompter, const QString& teamName,
                       std::function<void()> openRoster, QWidget* parent = nullptr);

    // How the user left the screen: to the game list or to the game screen of the same game.
    PlayerScreen::Leave leftTo() const { return leftTo_; }
    const PlayerScreen& model() const { return model_; }

    // Cancel, Escape and the window's close box all end here.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildHeading(QWidget* parent, QGridLayout* grid);
    QWidget* buildFields();
    QGroupBox* buildKicks();
    QGroupBox* buildReturns();
    void showAll();
    void showTable();
    void selectModelCell();
    void showPanel();
    void showLists();
    void applyFocus();
    void setTabOrderByReading();
    void cellClicked(int row, int column);
    bool tablePressed(const QPoint& position);
    void fieldEdited(int field, const QString& text);
    void leave(PlayerScreen::Leave to);
    void openRoster();

    TeamFiles files_;
    Prompter& prompter_;
    std::function<void()> openRoster_;
    PlayerScreen model_;
    PlayerScreen::Leave leftTo_ = PlayerScreen::Leave::GameList;
    bool showing_ = false;

    QLabel* gameNumber_ = nullptr;
    QLabel* gameDate_ = nullptr;
    QLabel* gameLocation_ = nullptr;
    QLabel* homeName_ = nullptr;
    QLabel* homeScore_ = nullptr;
    QLabel* visitorName_ = nullptr;
    QLabel* visitorScore_ = nullptr;
    QTableWidget* table_ = nullptr;
    std::array<QLabel*, kCategoryCount> counters_{};
    QLabel* playerName_ = nullptr;
    QLabel* statType_ = nullptr;
    QCheckBox* played_ = nullptr;
    std::array<QLineEdit*, kEntryFieldCount> fields_{};
    std::array<QLabel*, kEntryFieldCount> captions_{};
    QLabel* sack_ = nullptr;
    QLabel* message_ = nullptr;

    QGroupBox* kicking_ = nullptr;
    std::array<QRadioButton*, 3> kickTypes_{};
    QLineEdit* kickYards_ = nullptr;
    QLabel* kickYardsLabel_ = nullptr;
    std::array<QCheckBox*, kKickMarkCount> kickMarks_{};
    QPushButton* addKick_ = nullptr;
    QPushButton* deleteKick_ = nullptr;
    QListWidget* kicks_ = nullptr;
    QLabel* fieldGoalCount_ = nullptr;
    QLabel* extraPointCount_ = nullptr;
    QLabel* puntCount_ = nullptr;

    QGroupBox* returns_ = nullptr;
    std::array<QRadioButton*, 2> returnTypes_{};
    QLineEdit* returnYards_ = nullptr;
    QLabel* returnYardsLabel_ = nullptr;
    std::array<QCheckBox*, kReturnMarkCount> returnMarks_{};
    QPushButton* addReturn_ = nullptr;
    QPushButton* deleteReturn_ = nullptr;
    QListWidget* returnList_ = nullptr;
    QLabel* kickReturnCount_ = nullptr;
    QLabel* puntReturnCount_ = nullptr;

    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* team_ = nullptr;
    QPushButton* gameScreen_ = nullptr;
    QPushButton* roster_ = nullptr;
};

} // namespace scorvane
