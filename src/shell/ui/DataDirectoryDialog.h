#pragma once

#include "shell/Installation.h"

#include <QDialog>

class QLineEdit;

namespace scorvane {

class DataFiles;
class MainWindow;
class Prompter;
class TeamSelection;
struct Session;

// Choosing the folder that holds the teams. A folder without teams becomes a new, empty data
// directory. OK switches the whole program over to the folder: the configuration, the data files,
// the main window's caption and the team list (with no team marked). When the folder cannot be
// used the message has been shown and the dialog stays open for another choice.
//
// While no data directory has been chosen yet (the first start of an installed program) the
// dialog also offers a copy of the sample season or a new, empty data directory, both in the
// user's own data folder.
class DataDirectoryDialog : public QDialog {
    Q_OBJECT

public:
    DataDirectoryDialog(Session& session, DataFiles& files, Prompter& prompter,
                        TeamSelection& teams, MainWindow& window,
                        Environment env = systemEnvironment());

    QLineEdit* directoryBox() const { return directory_; }

private:
    void browse();
    void use();
    bool useFolder(const std::string& directory);
    void useSampleCopy();

    Session& session_;
    DataFiles& files_;
    Prompter& prompter_;
    TeamSelection& teams_;
    MainWindow& window_;
    Environment env_;
    QLineEdit* directory_ = nullptr;
};

} // namespace scorvane
