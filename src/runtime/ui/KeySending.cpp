#include "runtime/ui/KeySending.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace pemlo {

namespace {

class EnterAsTab : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                SendTab();
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void SendTab()
{
    QWidget* focused = QApplication::focusWidget();
    if (focused == nullptr) {
        return;
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(focused, &press);
}

void InstallEnterAsTab(QWidget* control)
{
    control->installEventFilter(new EnterAsTab(control));
}

}  // namespace pemlo
