#pragma once

#include "storage/Prompter.h"

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

namespace scorvane {

// The logic's questions as real message boxes.
//
// Each Message becomes one application-modal QMessageBox with exactly the message's text (shown
// as plain text, never interpreted as markup), title, buttons, icon and default button, and is
// wide enough to show the whole title. A box can be shown before any window exists: with no
// parent widget it stands on its own.
class QtPrompter : public Prompter {
public:
    explicit QtPrompter(QWidget* parent = nullptr) : parent_(parent) {}

    // The window the boxes are centred over; may be null, and is forgotten when it is deleted.
    void setParentWidget(QWidget* parent) { parent_ = parent; }
    QWidget* parentWidget() const { return parent_; }

    Answer ask(const Message& message) override;

    // Ends the process at once with std::exit, without returning to the event loop. That is
    // safe because every write that spans several records goes through a temporary file that
    // replaces the original in one step, so nothing on disk is left half written; the open
    // windows are simply abandoned.
    [[noreturn]] void endProgram(int exitCode) override;

    // How the message's choices map onto the box; public so the mapping can be checked.
    static QMessageBox::StandardButtons standardButtons(Buttons buttons);
    static QMessageBox::StandardButton standardButton(Answer answer);
    static QMessageBox::Icon messageIcon(Icon icon);
    // The answer for the button that closed the box. A box closed without a button of its own
    // (Escape or the title bar on a box with no Cancel/No) counts as its most cautious choice.
    static Answer answerFor(QMessageBox::StandardButton clicked, Buttons buttons);

private:
    QPointer<QWidget> parent_;
};

} // namespace scorvane
