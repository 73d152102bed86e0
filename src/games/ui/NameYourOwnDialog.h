#pragma once

#include <QDialog>

#include <array>

class QLineEdit;

namespace scorvane {

class Prompter;
struct Session;

// The names of the seven game types and of the five own columns of each category. OK saves them
// into the configuration file and the column table takes them over at once; Cancel keeps
// everything as it was.
class NameYourOwnDialog : public QDialog {
    Q_OBJECT

public:
    NameYourOwnDialog(Session& session, Prompter& prompter, QWidget* parent = nullptr);

private:
    void store();

    Session& session_;
    Prompter& prompter_;
    std::array<QLineEdit*, 7> gameTypes_{};
    std::array<QLineEdit*, 30> columns_{};
};

} // namespace scorvane
