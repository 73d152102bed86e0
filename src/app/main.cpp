// Scorvane for Football: reads the configuration beside the program, then opens the main window.

#include "Application.h"
#include "shell/Startup.h"
#include "shell/ui/MainWindow.h"
#include "ui/QtPrompter.h"
#include "ui/TextCodec.h"

#include <QApplication>
#include <QTimer>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Scorvane for Football"));
    QApplication::setApplicationVersion(QStringLiteral("2.1"));
    QApplication::setOrganizationName(QStringLiteral("Scorvane"));
    QApplication::setWindowIcon(scorvane::MainWindow::programIcon());

    // The configuration, the help pages and the sample season all live in the program's folder.
    const std::string installDirectory =
        scorvane::toUtf8(QCoreApplication::applicationDirPath() + QLatin1Char('/'));

    // No window exists yet, so start-up messages come up as boxes of their own.
    scorvane::QtPrompter prompter;
    scorvane::Session session;
    const scorvane::StartupOutcome outcome =
        scorvane::runStartup(prompter, installDirectory, session);
    if (outcome == scorvane::StartupOutcome::Ended)
        return 1; // the message was shown; the prompter normally ends the program itself

    scorvane::Application program(std::move(session), prompter);
    prompter.setParentWidget(&program.window());
    program.window().show();

    // Without a usable data directory the user chooses one before anything else, over the window.
    if (outcome == scorvane::StartupOutcome::NeedDataDirectory)
        QTimer::singleShot(0, &program.window(), [&program] { program.openDataDirectory(); });

    return app.exec();
}
