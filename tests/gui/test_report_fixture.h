#pragma once

// What the report screens' tests share: a data directory with the sample season, the session and
// report context over it, and a way to work a modal dialog from inside its exec().

#include "reports/ui/ReportScreens.h"
#include "sample/SampleSeason.h"
#include "storage/Session.h"
#include "support/ScratchData.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>

namespace scorvane::testing {

inline Session sessionOver(const TempDir& dir) {
    Session session;
    session.config = ConfigRecord::defaults();
    session.columns.build(session.config);
    session.paths = DataPaths{dir.dir(), dir.dir(), dir.dir()};
    return session;
}

// The sample season (Hawks are team 1, Tigers team 2) in a fresh data directory.
struct ReportFixture : ScratchData {
    Session session = sessionOver(dir);
    ReportContext context{session, data, prompter};

    explicit ReportFixture(bool sample = true) {
        if (sample && !writeSampleSeason(data))
            qFatal("The sample season could not be written");
        prompter.shown.clear();
    }

    // Every file of the data directory with its contents, to show that nothing changed.
    std::map<std::string, Bytes> snapshot() const {
        std::map<std::string, Bytes> all;
        for (const auto& e : std::filesystem::directory_iterator(dir.path()))
            all[e.path().filename().string()] = dir.read(e.path().filename().string());
        return all;
    }
};

// Runs `act` on the modal dialog of that object name as soon as it is up, from inside its exec().
// Gives up after five seconds when no such dialog comes.
inline void whenShown(const char* name, std::function<void(QDialog*)> act) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout,
                     [timer, tries, name = QString::fromLatin1(name), act = std::move(act)] {
                         auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                         const bool found =
                             dialog && dialog->objectName() == name && dialog->isVisible();
                         if (found || ++*tries > 500) {
                             timer->stop();
                             timer->deleteLater();
                         }
                         if (found)
                             act(dialog);
                     });
    timer->start();
}

} // namespace scorvane::testing
