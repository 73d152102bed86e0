#pragma once

#include "storage/DataFiles.h"

#include <QDialog>

#include <vector>

class QCheckBox;
class QListWidget;

namespace scorvane {

class TeamFiles;
struct ConfigRecord;
struct ImportChoice;

// The opponent's games, for taking one over into the game screen seen from this team's side.
// OK with a game selected picks it; OK with none selected, Cancel and the close box pick nothing.
class ImportGameDialog : public QDialog {
    Q_OBJECT

public:
    ImportGameDialog(TeamFiles opponent, const ConfigRecord& config, const QString& opponentName,
                     QWidget* parent = nullptr);
    ~ImportGameDialog() override;

    bool picked() const { return picked_; }
    // The picked game's record position in the opponent's game file.
    int position() const { return position_; }
    bool importComment() const { return importComment_; }

private:
    void pick();

    std::vector<int> positions_;
    QListWidget* list_ = nullptr;
    QCheckBox* comment_ = nullptr;
    bool picked_ = false;
    int position_ = 0;
    bool importComment_ = false;
};

} // namespace scorvane
