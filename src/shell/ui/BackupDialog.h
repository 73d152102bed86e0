#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace scorvane {

class DataFiles;
class Prompter;
class TeamSelection;

// File > Back Up Files and File > Restore Files: one screen in two modes, chosen by the backup
// mode of the menu command ('Y' back up, 'N' restore).
//
// Backing up shows what the data directory holds and writes it into one file in the folder the
// user chooses, named "Scorvane Backup <date>.sfb" unless the user names it otherwise. Restoring
// shows what the chosen backup holds (when it was made, its teams) before anything is replaced;
// the restore itself asks once more, keeps the replaced files in a backup of their own, and
// brings the team list up to date with no team marked.
class BackupDialog : public QDialog {
    Q_OBJECT

public:
    BackupDialog(char backupMode, DataFiles& files, Prompter& prompter, TeamSelection& teams,
                 QWidget* parent = nullptr);

    bool restoring() const { return restoring_; }
    // Back up: the folder and the file name. Restore: the backup file.
    QLineEdit* folderBox() const { return folder_; }
    QLineEdit* fileNameBox() const { return fileName_; }
    QLineEdit* backupFileBox() const { return backupFile_; }

    // Restore: shows what the backup in the box holds, or why it cannot be restored.
    void inspect();

private:
    void buildBackUp(QWidget* body);
    void buildRestore(QWidget* body);
    void browse();
    void backUp();
    void restore();

    bool restoring_;
    DataFiles& files_;
    Prompter& prompter_;
    TeamSelection& teams_;
    QLineEdit* folder_ = nullptr;
    QLineEdit* fileName_ = nullptr;
    QLineEdit* backupFile_ = nullptr;
    QLabel* madeOn_ = nullptr;
    QLabel* contents_ = nullptr;
    QListWidget* teamNames_ = nullptr;
    QPushButton* run_ = nullptr;
};

} // namespace scorvane
