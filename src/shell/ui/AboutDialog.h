#pragma once

#include <QDialog>

namespace scorvane {

// Help > About: the program's name, version and purpose, closed with OK.
class AboutDialog : public QDialog {
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent = nullptr);
};

} // namespace scorvane
