#include "PrintDialog.h"

#include "ReportPrinter.h"
#include "storage/Platform.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFontComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace scorvane {
namespace {

QLineEdit* numberBox(QWidget* parent, const char* name, int digits, int value) {
    auto* box = new QLineEdit(QString::number(value), parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setMaxLength(digits);
    box->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9]{0,%1}").arg(digits)), box));
    box->setMaximumWidth(
        box->fontMetrics().horizontalAdvance(QString(digits + 3, QLatin1Char('0'))));
    selectAllOnFocus(box);
    return box;
}

QFontComboBox* fontBox(QWidget* parent, const char* name, const QString& family,
                       QFontComboBox::FontFilters filters) {
    auto* box = new QFontComboBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setFontFilters(filters);
    box->setCurrentFont(QFont(family));
    return box;
}

} // namespace

PrintDialog::PrintDialog(ReportPrinter& printer, const QString& reportName, const QString& title,
                         QWidget* parent)
    : QDialog(parent), printer_(printer) {
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(QStringLiteral("Print"));
    setModal(true);
    const PrintSettings& kept = printer_.settings();

    auto* reportTitle = new QLabel(reportName, this);
    reportTitle->setObjectName(QStringLiteral("lblReportTitle"));
    QFont bold = reportTitle->font();
    bold.setBold(true);
    reportTitle->setFont(bold);

    title_ = new QLineEdit(title, this);
    title_->setObjectName(QStringLiteral("txtTitle"));
    selectAllOnFocus(title_);
    copies_ = numberBox(this, "txtCopies", 3, kept.options.copies);
    lines_ = numberBox(this, "txtLines", 5, kept.options.linesPerPage);
    top_ = numberBox(this, "txtTopX", 3, kept.options.topPlayers);

    fileName_ = new QLineEdit(fromUtf8(platform::shownPath(kept.options.fileName)), this);
    fileName_->setObjectName(QStringLiteral("txtFileName"));
    fileName_->setPlaceholderText(QStringLiteral("(the printer)"));
    auto* find = new QPushButton(QStringLiteral("B&rowse..."), this);
    find->setObjectName(QStringLiteral("cmdFind"));
    append_ = new QRadioButton(QStringLiteral("&Append"), this);
    append_->setObjectName(QStringLiteral("optAppend"));
    replace_ = new QRadioButton(QStringLiteral("Re&place"), this);
    replace_->setObjectName(QStringLiteral("optReplace"));
    (kept.options.fileMode == 'A' ? append_ : replace_)->setChecked(true);

    titleFont_ = fontBox(this, "cmbTitleFont", kept.fonts.titleFamily, QFontComboBox::AllFonts);
    titleBold_ = new QCheckBox(QStringLiteral("&Bold"), this);
    titleBold_->setObjectName(QStringLiteral("chkTitleBold"));
    titleBold_->setChecked(kept.fonts.titleBold);
    reportFont_ =
        fontBox(this, "cmbReportFont", kept.fonts.reportFamily, QFontComboBox::MonospacedFonts);
    reportBold_ = new QCheckBox(QStringLiteral("Bol&d"), this);
    reportBold_->setObjectName(QStringLiteral("chkReportBold"));
    reportBold_->setChecked(kept.fonts.reportBold);

    auto* setup = new QPushButton(QStringLiteral("Printer &Setup..."), this);
    setup->setObjectName(QStringLiteral("cmdSetup"));
    auto [ok, cancel] = okCancelButtons(this);
    connect(find, &QPushButton::clicked, this, &PrintDialog::findFile);
    connect(setup, &QPushButton::clicked, this, &PrintDialog::setUpPrinter);
    connect(ok, &QPushButton::clicked, this, &PrintDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &PrintDialog::reject);

    auto label = [this](const QString& text, QWidget* buddy) {
        auto* l = new QLabel(text, this);
        l->setBuddy(buddy);
        return l;
    };
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->addWidget(new QLabel(QStringLiteral("Report:"), this), 0, 0);
    grid->addWidget(reportTitle, 0, 1, 1, 4);
    grid->addWidget(label(QStringLiteral("&Title:"), title_), 1, 0);
    grid->addWidget(title_, 1, 1, 1, 4);
    auto* numbers = new QHBoxLayout;
    numbers->addWidget(copies_);
    numbers->addSpacing(16);
    numbers->addWidget(label(QStringLiteral("&Lines per Page:"), lines_));
    numbers->addWidget(lines_);
    numbers->addSpacing(16);
    numbers->addWidget(label(QStringLiteral("T&op Players:"), top_));
    numbers->addWidget(top_);
    numbers->addStretch(1);
    grid->addWidget(label(QStringLiteral("&Copies:"), copies_), 2, 0);
    grid->addLayout(numbers, 2, 1, 1, 4);
    grid->addWidget(label(QStringLiteral("&File Name:"), fileName_), 3, 0);
    grid->addWidget(fileName_, 3, 1, 1, 3);
    grid->addWidget(find, 3, 4);
    auto* mode = new QHBoxLayout;
    mode->addWidget(append_);
    mode->addWidget(replace_);
    mode->addStretch(1);
    grid->addLayout(mode, 4, 1, 1, 4);
    grid->addWidget(label(QStringLiteral("T&itle Font:"), titleFont_), 5, 0);
    grid->addWidget(titleFont_, 5, 1, 1, 3);
    grid->addWidget(titleBold_, 5, 4);
    grid->addWidget(label(QStringLiteral("Report Fo&nt:"), reportFont_), 6, 0);
    grid->addWidget(reportFont_, 6, 1, 1, 3);
    grid->addWidget(reportBold_, 6, 4);
    grid->setColumnStretch(1, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(setup);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addLayout(buttons);

    setTabOrder(title_, copies_);
    setTabOrder(copies_, lines_);
    setTabOrder(lines_, top_);
    setTabOrder(top_, fileName_);
    setTabOrder(fileName_, find);
    setTabOrder(find, append_);
    setTabOrder(append_, replace_);
    setTabOrder(replace_, titleFont_);
    setTabOrder(titleFont_, titleBold_);
    setTabOrder(titleBold_, reportFont_);
    setTabOrder(reportFont_, reportBold_);
    setTabOrder(reportBold_, setup);
    setTabOrder(setup, ok);
    setTabOrder(ok, cancel);
    title_->setFocus();
}

void PrintDialog::findFile() {
    QFileDialog dialog(this, QStringLiteral("Set Filename to Print To:"), fileName_->text(),
                       QStringLiteral("Text (*.TXT)"));
    dialog.setObjectName(QStringLiteral("dlgFindFile"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("TXT"));
    // Appending to a file is as ordinary as replacing it: no overwrite question.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        fileName_->setText(QDir::toNativeSeparators(dialog.selectedFiles().first()));
    fileName_->setFocus();
}

void PrintDialog::setUpPrinter() {
    printer_.setUpPrinter(this);
}

void PrintDialog::accept() {
    PrintEntry entry;
    entry.title = toFileText(title_->text());
    entry.copies = toUtf8(copies_->text());
    entry.linesPerPage = toUtf8(lines_->text());
    entry.topPlayers = toUtf8(top_->text());
    entry.fileName = toUtf8(fileName_->text());
    entry.append = append_->isChecked();
    PrintSettings& kept = printer_.settings();
    if (const auto error = storePrintOptions(entry, kept.options)) {
        printer_.prompter().ask(error->message);
        QLineEdit* box = error->focus == PrintField::Copies         ? copies_
                         : error->focus == PrintField::LinesPerPage ? lines_
                                                                    : top_;
        box->setFocus();
        box->selectAll();
        return;
    }
    kept.fonts.titleFamily = titleFont_->currentFont().family();
    kept.fonts.titleBold = titleBold_->isChecked();
    kept.fonts.reportFamily = reportFont_->currentFont().family();
    kept.fonts.reportBold = reportBold_->isChecked();
    QDialog::accept();
}

} // namespace scorvane
