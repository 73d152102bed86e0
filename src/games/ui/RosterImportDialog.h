#pragma once

#include "games/RosterImport.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;
class QTreeWidget;

namespace scorvane {

// The preview of a roster import: each player of the file with what the import does to him
// (added, changed and how, or unchanged), or, when the file has problems, each problem with its
// line. Import takes the players over; a file with problems cannot be imported.
class RosterImportDialog : public QDialog {
    Q_OBJECT

public:
    RosterImportDialog(const QString& fileName, const RosterImportFile& file,
                       const ImportPlan& plan, const QString& teamName, QWidget* parent = nullptr);

    QTreeWidget* players() const { return players_; }
    QListWidget* problems() const { return problems_; }

private:
    QTreeWidget* players_ = nullptr;
    QListWidget* problems_ = nullptr;
};

} // namespace scorvane
