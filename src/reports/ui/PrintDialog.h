#pragma once

#include <QDialog>

class QCheckBox;
class QFontComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace scorvane {

class ReportPrinter;

// The print dialog: the title, copies, lines per page, top players, the text file to print to
// (appended or replaced; empty for the printer) and the fonts. OK checks the numbers in order and
// stores everything in the printer's kept options; a refused number is named in a message box and
// its box takes the focus. Cancel stores nothing.
class PrintDialog : public QDialog {
    Q_OBJECT

public:
    // `reportName` names the report (lblReportTitle); `title` starts in the title box.
    PrintDialog(ReportPrinter& printer, const QString& reportName, const QString& title,
                QWidget* parent = nullptr);

    void accept() override;

private:
    void findFile();
    void setUpPrinter();

    ReportPrinter& printer_;
    QLineEdit* title_ = nullptr;
    QLineEdit* copies_ = nullptr;
    QLineEdit* lines_ = nullptr;
    QLineEdit* top_ = nullptr;
    QLineEdit* fileName_ = nullptr;
    QRadioButton* append_ = nullptr;
    QRadioButton* replace_ = nullptr;
    QFontComboBox* titleFont_ = nullptr;
    QCheckBox* titleBold_ = nullptr;
    QFontComboBox* reportFont_ = nullptr;
    QCheckBox* reportBold_ = nullptr;
};

} // namespace scorvane
