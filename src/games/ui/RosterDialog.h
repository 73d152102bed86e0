#pragma once

#include "games/Roster.h"

#include "storage/DataFiles.h"

#include <QDialog>

#include <array>
#include <functional>
#include <string>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace scorvane {

class Prompter;

// A team's roster: the 99 numbers on the left, the selected number's name and contact details on
// the right.
//
// A box's text is taken over when the box loses the focus, and also before another number is
// selected, before Delete and before the screen closes, so nothing typed is lost. Enter in a box
// moves on to the next one instead of closing the screen. Close and the window's close box both
// save the roster and the player information.
class RosterDialog : public QDialog {
    Q_OBJECT

public:
    // Loads the team's roster into `roster` (shared with the other screens) and selects number 1.
    RosterDialog(TeamFiles files, Roster& roster, Prompter& prompter, const QString& teamName,
                 QWidget* parent = nullptr);
    ~RosterDialog() override;

    // Every way of leaving the screen (Close, the close box, Escape) ends here and saves.
    void reject() override;

    // Import: reads a CSV file of players, shows the preview and, on Import, takes the players
    // over into the list and the boxes (saved with everything else when the screen closes).
    void importFrom(const QString& path);

    // Prints the roster as the screen holds it (names and contact details typed so far). Print
    // stays disabled until one is given.
    using PrintRoster = std::function<void(const RosterEditor& editor, QWidget* parent)>;
    void setPrint(PrintRoster print);

    // Shows the selected player's game log (a report, which the application hands in). Game Log
    // stays disabled until one is given.
    using OpenGameLog = std::function<void(int playerNumber, QWidget* parent)>;
    void setGameLog(OpenGameLog open);

    // Shows the selected player's career over the seasons the user keeps (a report over seasons,
    // which the application hands in): his number and stored name. Career stays hidden until one
    // is given.
    using OpenCareer =
        std::function<void(int playerNumber, const std::string& name, QWidget* parent)>;
    void setCareer(OpenCareer open);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum Box { Name, Phone, Address1, Address2, City, State, Zip, Other, BoxCount };

    QLineEdit* makeBox(const char* name, int maxLength);
    int boxIndex(QObject* object) const;
    void commit(int box);
    void commitFocused();
    void showSelected();
    void rewriteLine(int playerNumber);
    void selectRow(int row);
    void moveFocusFrom(int box);
    void deletePlayer();
    void printRoster();
    void showGameLog();
    void showCareer();
    void chooseImportFile();
    void finish();

    TeamFiles files_;
    Roster& roster_;
    Prompter& prompter_;
    RosterEditor editor_;
    QListWidget* list_ = nullptr;
    std::array<QLineEdit*, BoxCount> boxes_{};
    QPushButton* close_ = nullptr;
    QPushButton* print_ = nullptr;
    PrintRoster printRoster_;
    QPushButton* gameLog_ = nullptr;
    OpenGameLog openGameLog_;
    QPushButton* career_ = nullptr;
    OpenCareer openCareer_;
    bool finished_ = false;
    QString teamName_;
};

} // namespace scorvane
