// Qt never leaves a window title empty on X11: it puts the application's name in an
// empty title's place. The window's own title properties are emptied again each time
// the window system gets a new window for the screen.
#include "runtime/ui/WindowTitle.h"

#include <QEvent>
#include <QGuiApplication>
#include <QObject>
#include <QWidget>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#if __has_include(<xcb/xcb.h>)
#include <xcb/xcb.h>
#define PEMLO_HAS_XCB 1
#endif

namespace pemlo {

namespace {

#ifdef PEMLO_HAS_XCB
xcb_atom_t Atom(xcb_connection_t* connection, const char* name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    if (reply == nullptr) return XCB_ATOM_NONE;
    const xcb_atom_t atom = reply->atom;
    std::free(reply);
    return atom;
}

void EmptyNativeTitle(QWidget* window)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb") || !window->testAttribute(Qt::WA_WState_Created))
        return;
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    if (connection == nullptr) return;
    const auto id = static_cast<xcb_window_t>(window->winId());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, Atom(connection, "_NET_WM_NAME"),
                        Atom(connection, "UTF8_STRING"), 8, 0, nullptr);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(connection);
}
#else
void EmptyNativeTitle(QWidget*) {}
#endif

class NoTitleKeeper : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::WinIdChange || event->type() == QEvent::Show)
            EmptyNativeTitle(static_cast<QWidget*>(watched));
        return false;
    }
};

}  // namespace

void ShowNoTitle(QWidget* window)
{
    window->setWindowTitle(QString());
    window->installEventFilter(new NoTitleKeeper(window));
    EmptyNativeTitle(window);
}

}  // namespace pemlo
