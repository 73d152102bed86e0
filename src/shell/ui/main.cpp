// Scorvane for Football: reads the configuration beside the program, then opens the main window.

#include "MainWindow.h"
#include "QtPrompter.h"
#include "TextCodec.h"
#include "shell/Startup.h"

#include <QApplication>

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

    scorvane::MainWindow window(session, prompter);
    prompter.setParentWidget(&window);
    window.show();

    if (outcome == scorvane::StartupOutcome::NeedDataDirectory) {
        // Hook for the data directory screen: once it exists, open it here (modal, over the main
        // window) so the user picks a folder holding a team list before doing anything else.
        // Until then the main window comes up with the directory it has, and File > Data
        // Directory stays disabled because no screen is registered for it.
    }

    return app.exec();
}
