#include "runtime/ui/MousePointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace pemlo {

namespace {
MousePointer current = MousePointer::Default;
}

// One setting, never a stack: however often the hourglass is asked for, a single
// request for the default pointer brings the arrow back.
void SetMousePointer(MousePointer pointer)
{
    current = pointer;
    if (qGuiApp == nullptr) {
        return;
    }
    while (QGuiApplication::overrideCursor() != nullptr) {
        QGuiApplication::restoreOverrideCursor();
    }
    if (pointer == MousePointer::Hourglass) {
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
}

MousePointer CurrentMousePointer() { return current; }

}  // namespace pemlo
