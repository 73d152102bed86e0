#include "SelectOnFocus.h"

#include <QEvent>
#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QTimer>

namespace scorvane {
namespace {

class SelectAllFilter : public QObject {
public:
    explicit SelectAllFilter(QLineEdit* edit) : QObject(edit) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) {
            // Later, not now: a mouse press that brought the focus would place the cursor and
            // drop the selection right after this event.
            QPointer<QLineEdit> edit = qobject_cast<QLineEdit*>(watched);
            QTimer::singleShot(0, this, [edit] {
                if (edit && edit->hasFocus())
                    edit->selectAll();
            });
        }
        return false;
    }
};

} // namespace

void selectAllOnFocus(QLineEdit* edit) {
    edit->installEventFilter(new SelectAllFilter(edit));
}

} // namespace scorvane
