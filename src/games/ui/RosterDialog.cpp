#include "RosterDialog.h"

#include "RosterImportDialog.h"
#include "games/RosterImport.h"
#include "storage/DataFiles.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {
namespace {

ContactField contactOf(int box) {
    return static_cast<ContactField>(box - 1);
}

} // namespace

RosterDialog::RosterDialog(TeamFiles files, Roster& roster, Prompter& prompter,
                           const QString& teamName, QWidget* parent)
    : QDialog(parent), files_(std::move(files)), roster_(roster), prompter_(prompter),
      editor_(roster), teamName_(teamName) {
    setObjectName(QStringLiteral("frmRoster"));
    setWindowTitle(QStringLiteral("Roster - ") + teamName);
    setModal(true);

    list_ = rosterLineList(this, "lstPlayerList");

    boxes_[Name] = makeBox("txtPlayerName", width::playerName);
    boxes_[Phone] = makeBox("txtPhone", width::phone);
    boxes_[Address1] = makeBox("txtAddress1", width::address);
    boxes_[Address2] = makeBox("txtAddress2", width::address);
    boxes_[City] = makeBox("txtCity", width::city);
    boxes_[State] = makeBox("txtState", width::state);
    boxes_[Zip] = makeBox("txtZip", width::zip);
    boxes_[Other] = makeBox("txtOther", contactWidth(ContactField::Other));
    const int charWidth = fontMetrics().averageCharWidth();
    boxes_[Name]->setMaximumWidth(charWidth * 24);
    boxes_[Phone]->setMaximumWidth(charWidth * 26);
    boxes_[City]->setMaximumWidth(charWidth * 26);
    boxes_[State]->setMaximumWidth(charWidth * 9);
    boxes_[Zip]->setMaximumWidth(charWidth * 14);

    auto* import = new QPushButton(QStringLiteral("&Import..."), this);
    import->setObjectName(QStringLiteral("cmdImport"));
    connect(import, &QPushButton::clicked, this, &RosterDialog::chooseImportFile);
    auto* remove = new QPushButton(QStringLiteral("Delete"), this);
    remove->setObjectName(QStringLiteral("cmdDelete"));
    auto* print = new QPushButton(QStringLiteral("Print"), this);
    print->setObjectName(QStringLiteral("cmdPrint"));
    // Printing goes through the report output, which the application hands in (setPrint).
    print->setEnabled(false);
    print_ = print;
    connect(print, &QPushButton::clicked, this, &RosterDialog::printRoster);
    gameLog_ = new QPushButton(QStringLiteral("Game &Log..."), this);
    gameLog_->setObjectName(QStringLiteral("cmdGameLog"));
    gameLog_->setEnabled(false);
    connect(gameLog_, &QPushButton::clicked, this, &RosterDialog::showGameLog);
    career_ = new QPushButton(QStringLiteral("Ca&reer..."), this);
    career_->setObjectName(QStringLiteral("cmdCareer"));
    career_->setToolTip(QStringLiteral("The player's career over the seasons you keep"));
    career_->setVisible(false);
    connect(career_, &QPushButton::clicked, this, &RosterDialog::showCareer);
    close_ = new QPushButton(QStringLiteral("Close"), this);
    close_->setObjectName(QStringLiteral("cmdClose"));
    // Enter in a box moves to the next box; on a focused button it presses that button.
    connect(remove, &QPushButton::clicked, this, &RosterDialog::deletePlayer);
    connect(close_, &QPushButton::clicked, this, &RosterDialog::finish);

    auto label = [this](const QString& text, QLineEdit* buddy) {
        auto* l = new QLabel(text, this);
        l->setBuddy(buddy);
        return l;
    };
    auto* form = new QGridLayout;
    form->setHorizontalSpacing(8);
    form->setVerticalSpacing(6);
    form->addWidget(label(QStringLiteral("Player Name:"), boxes_[Name]), 0, 0);
    form->addWidget(boxes_[Name], 0, 1, 1, 3);
    form->addWidget(label(QStringLiteral("Phone:"), boxes_[Phone]), 1, 0);
    form->addWidget(boxes_[Phone], 1, 1, 1, 3);
    form->addWidget(label(QStringLiteral("Address:"), boxes_[Address1]), 2, 0);
    form->addWidget(boxes_[Address1], 2, 1, 1, 3);
    form->addWidget(boxes_[Address2], 3, 1, 1, 3);
    form->addWidget(label(QStringLiteral("City:"), boxes_[City]), 4, 0);
    form->addWidget(boxes_[City], 4, 1, 1, 3);
    form->addWidget(label(QStringLiteral("State:"), boxes_[State]), 5, 0);
    auto* stateZip = new QHBoxLayout;
    stateZip->addWidget(boxes_[State]);
    stateZip->addSpacing(12);
    stateZip->addWidget(label(QStringLiteral("Zip:"), boxes_[Zip]));
    stateZip->addWidget(boxes_[Zip]);
    stateZip->addStretch(1);
    form->addLayout(stateZip, 5, 1, 1, 3);
    form->setColumnStretch(1, 1);

    auto* details = new QVBoxLayout;
    details->addLayout(form);
    details->addSpacing(10);
    details->addWidget(label(QStringLiteral("Other Information (70 characters):"), boxes_[Other]));
    details->addWidget(boxes_[Other]);
    details->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(import);
    buttons->addStretch(1);
    buttons->addWidget(remove);
    buttons->addWidget(gameLog_);
    buttons->addWidget(career_);
    buttons->addWidget(print);
    buttons->addWidget(close_);
    details->addLayout(buttons);

    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(16);
    layout->addWidget(list_);
    layout->addLayout(details, 1);

    setTabOrder(list_, boxes_[Name]);
    for (int b = Name; b < Other; ++b)
        setTabOrder(boxes_[b], boxes_[b + 1]);
    setTabOrder(boxes_[Other], import);
    setTabOrder(import, remove);
    setTabOrder(remove, close_);
    resize(760, 460);

    // A file that cannot be read was reported by the storage layer; its numbers show empty.
    (void)roster_.load(files_);
    (void)editor_.open(files_);
    for (const std::string& line : editor_.listLines())
        list_->addItem(fromFileText(line));
    list_->setCurrentRow(0);
    showSelected();
    connect(list_, &QListWidget::currentRowChanged, this, &RosterDialog::selectRow);
    list_->setFocus();
}

RosterDialog::~RosterDialog() {
    // The boxes and the list may still report while the dialog is taken apart.
    for (QLineEdit* box : boxes_)
        box->removeEventFilter(this);
    list_->disconnect(this);
}

QLineEdit* RosterDialog::makeBox(const char* name, int maxLength) {
    auto* box = new QLineEdit(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setMaxLength(maxLength);
    box->installEventFilter(this);
    selectAllOnFocus(box);
    return box;
}

int RosterDialog::boxIndex(QObject* object) const {
    for (int b = 0; b < BoxCount; ++b)
        if (boxes_[static_cast<std::size_t>(b)] == object)
            return b;
    return -1;
}

bool RosterDialog::eventFilter(QObject* watched, QEvent* event) {
    const int box = boxIndex(watched);
    if (box >= 0 && !finished_) {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                moveFocusFrom(box);
                return true;
            }
        } else if (event->type() == QEvent::FocusOut) {
            commit(box);
        }
    }
    return QDialog::eventFilter(watched, event);
}

void RosterDialog::commit(int box) {
    const QString text = boxes_[static_cast<std::size_t>(box)]->text();
    if (box != Name) {
        editor_.contactEntered(contactOf(box), toFileText(text));
        return;
    }
    if (editor_.nameEntered(toFileText(text))) {
        rewriteLine(editor_.selected());
        // A cleared name clears the number's details too.
        showSelected();
    }
}

void RosterDialog::commitFocused() {
    const int box = boxIndex(focusWidget());
    if (box >= 0)
        commit(box);
}

void RosterDialog::showSelected() {
    const int player = editor_.selected();
    boxes_[Name]->setText(fromFileText(editor_.nameText()));
    for (int b = Phone; b < BoxCount; ++b)
        boxes_[static_cast<std::size_t>(b)]->setText(
            fromFileText(trimRight(editor_.contact(player, contactOf(b)))));
}

void RosterDialog::rewriteLine(int playerNumber) {
    if (QListWidgetItem* item = list_->item(playerNumber - 1))
        item->setText(fromFileText(roster_.listLine(playerNumber)));
}

void RosterDialog::selectRow(int row) {
    if (row < 0)
        return;
    // What is typed in the focused box belongs to the number that was selected until now.
    commitFocused();
    editor_.select(row + 1);
    showSelected();
}

void RosterDialog::moveFocusFrom(int box) {
    const auto next = RosterEditor::nextFocus(static_cast<RosterEditor::Focus>(box));
    if (next == RosterEditor::Focus::Close)
        close_->setFocus(Qt::TabFocusReason);
    else
        boxes_[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
}

void RosterDialog::deletePlayer() {
    commitFocused();
    if (!editor_.deletePlayer(prompter_))
        return;
    for (QLineEdit* box : boxes_)
        box->clear();
    rewriteLine(editor_.selected());
}

void RosterDialog::setPrint(PrintRoster print) {
    printRoster_ = std::move(print);
    print_->setEnabled(static_cast<bool>(printRoster_));
}

void RosterDialog::setGameLog(OpenGameLog open) {
    openGameLog_ = std::move(open);
    gameLog_->setEnabled(static_cast<bool>(openGameLog_));
}

void RosterDialog::setCareer(OpenCareer open) {
    openCareer_ = std::move(open);
    career_->setVisible(static_cast<bool>(openCareer_));
}

void RosterDialog::printRoster() {
    // What is typed in the focused box is printed too.
    commitFocused();
    if (printRoster_)
        printRoster_(editor_, this);
}

void RosterDialog::showGameLog() {
    commitFocused();
    if (openGameLog_)
        openGameLog_(editor_.selected(), this);
}

void RosterDialog::showCareer() {
    // The name as typed so far is the one looked for.
    commitFocused();
    if (openCareer_)
        openCareer_(editor_.selected(), editor_.nameText(), this);
}

void RosterDialog::chooseImportFile() {
    commitFocused();
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Import Roster"), QDir::homePath(),
                                     QStringLiteral("CSV files (*.csv *.txt);;All files (*)"));
    if (!path.isEmpty())
        importFrom(path);
}

void RosterDialog::importFrom(const QString& path) {
    commitFocused();
    RosterImportFile file;
    if (Status s = readRosterCsv(toUtf8(path), file); !s) {
        prompter_.ask({"The file could not be read: " + s.message(), "Import Roster", Buttons::Ok,
                       Icon::Warning, Answer::Ok});
        return;
    }
    const ImportPlan plan = planRosterImport(file, roster_, editor_);
    RosterImportDialog preview(QDir::toNativeSeparators(path), file, plan, teamName_, this);
    if (preview.exec() != QDialog::Accepted || !file.ok())
        return;
    applyRosterImport(file, editor_);
    for (int n = 1; n <= kMaxPlayers; ++n)
        rewriteLine(n);
    showSelected();
}

void RosterDialog::finish() {
    if (finished_)
        return;
    commitFocused();
    finished_ = true;
    // A disk error is shown by the storage layer; the screen closes all the same, for there is
    // nothing more it could do about it.
    (void)editor_.save(files_);
    QDialog::accept();
}

void RosterDialog::reject() {
    finish();
}

} // namespace scorvane
