#include "QtPrompter.h"

#include "DialogParts.h"
#include "TextCodec.h"

#include <cstdio>
#include <cstdlib>

namespace scorvane {

QMessageBox::StandardButtons QtPrompter::standardButtons(Buttons buttons) {
    switch (buttons) {
    case Buttons::Ok:
        return QMessageBox::Ok;
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::RetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton QtPrompter::standardButton(Answer answer) {
    switch (answer) {
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    case Answer::Retry:
        return QMessageBox::Retry;
    }
    return QMessageBox::NoButton;
}

QMessageBox::Icon QtPrompter::messageIcon(Icon icon) {
    switch (icon) {
    case Icon::None:
        return QMessageBox::NoIcon;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

Answer QtPrompter::answerFor(QMessageBox::StandardButton clicked, Buttons buttons) {
    switch (clicked) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Retry:
        return Answer::Retry;
    default:
        break;
    }
    switch (buttons) {
    case Buttons::Ok:
        return Answer::Ok;
    case Buttons::YesNo:
        return Answer::No;
    case Buttons::OkCancel:
    case Buttons::RetryCancel:
        return Answer::Cancel;
    }
    return Answer::Cancel;
}

Answer QtPrompter::ask(const Message& message) {
    QMessageBox box(messageIcon(message.icon), fromUtf8(message.title), fromUtf8(message.text),
                    standardButtons(message.buttons), parent_.data());
    box.setObjectName(QStringLiteral("messageBox"));
    box.setTextFormat(Qt::PlainText);
    box.setWindowModality(Qt::ApplicationModal);
    // A default answer that is not among the box's buttons leaves the box's own default.
    box.setDefaultButton(standardButton(message.defaultAnswer));
    fitTitle(box);
    const auto clicked = static_cast<QMessageBox::StandardButton>(box.exec());
    return answerFor(clicked, message.buttons);
}

void QtPrompter::endProgram(int exitCode) {
    std::fflush(nullptr);
    std::exit(exitCode);
}

} // namespace scorvane
