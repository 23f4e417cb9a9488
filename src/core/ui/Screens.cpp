#include "core/ui/Screens.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <stdexcept>

#include "runtime/ui/RunTimeErrorReport.h"

namespace pemlo {

QString ScreenName(ScreenId id)
{
    static const std::array<const char*, ScreenCount> names = {
        "Frm_Splash",  "Frm_OpenFile", "Frm_ViewFile", "Frm_Titles", "Frm_ConeFactors",
        "Frm_CPTData", "Frm_Pemlo01",  "Frm_UandV",    "Frm_About",  "Frm_HelpInfo",
    };
    return QString::fromLatin1(names.at(static_cast<std::size_t>(id)));
}

Screens& Screens::Instance()
{
    static Screens* registry = new Screens();  // lives as long as the program
    return *registry;
}

Screens::Screens()
{
    SetProgramEnder([this] { EndProgram(); });
}

void Screens::Register(ScreenId id, Factory factory) { factories_.at(Index(id)) = std::move(factory); }

QWidget* Screens::Get(ScreenId id)
{
    QPointer<QWidget>& slot = loaded_.at(Index(id));
    if (slot) {
        return slot;
    }
    const Factory& factory = factories_.at(Index(id));
    if (!factory) {
        throw std::logic_error("no factory registered for " + ScreenName(id).toStdString());
    }
    // The constructor is the load step; if it raises, the screen never existed.
    QWidget* screen = factory();
    if (screen->objectName().isEmpty()) {
        screen->setObjectName(ScreenName(id));
    }
    screen->setProperty("pemloScreen", Index(id));
    screen->installEventFilter(this);
    slot = screen;
    return screen;
}

bool Screens::IsLoaded(ScreenId id) const { return !loaded_.at(Index(id)).isNull(); }

namespace {

void BringToFront(QWidget* screen)
{
    screen->show();
    // The offscreen platform of the tests has no stacking order to change.
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        screen->raise();
    }
    screen->activateWindow();
}

}  // namespace

void Screens::Show(ScreenId id) { BringToFront(Get(id)); }

void Screens::ShowModal(ScreenId id)
{
    QWidget* screen = Get(id);
    screen->setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    const auto unloaded = connect(this, &Screens::ScreenUnloaded, &loop, [&loop, id](ScreenId gone) {
        if (gone == id) {
            loop.quit();
        }
    });
    const auto ended = connect(this, &Screens::ProgramEnded, &loop, &QEventLoop::quit);
    BringToFront(screen);
    if (IsLoaded(id) && !ended_) {
        loop.exec(QEventLoop::DialogExec);
    }
    disconnect(unloaded);
    disconnect(ended);
}

void Screens::Hide(ScreenId id)
{
    if (QWidget* screen = loaded_.at(Index(id))) {
        screen->hide();
    }
}

void Screens::Reveal(ScreenId id) { Show(id); }

void Screens::Close(ScreenId id)
{
    if (!IsLoaded(id)) {
        return;
    }
    privates_.at(Index(id)).clear();
    Unload(id);
}

QVariantMap& Screens::PrivateValues(ScreenId id) { return privates_.at(Index(id)); }

void Screens::Unload(ScreenId id)
{
    QPointer<QWidget>& slot = loaded_.at(Index(id));
    QWidget* screen = slot;
    slot = nullptr;
    if (screen != nullptr) {
        screen->removeEventFilter(this);
        screen->hide();
        screen->deleteLater();
    }
    emit ScreenUnloaded(id);
    ScheduleEndCheck();
}

bool Screens::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close) {
        const QVariant index = watched->property("pemloScreen");
        if (index.isValid() && watched->property("ignoresCloseBox").toBool()) {
            event->ignore();
            return true;
        }
        if (index.isValid()) {
            // The frame's close box: this screen alone is unloaded, its private values stay.
            const auto id = static_cast<ScreenId>(index.toInt());
            if (loaded_.at(Index(id)) == watched) {
                event->accept();
                Unload(id);
                return true;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

void Screens::ScheduleEndCheck()
{
    if (endCheckPending_ || ended_) {
        return;
    }
    endCheckPending_ = true;
    QTimer::singleShot(0, this, [this] {
        endCheckPending_ = false;
        EndIfNoneLoaded();
    });
}

void Screens::EndIfNoneLoaded()
{
    for (int i = 0; i < ScreenCount; ++i) {
        if (!loaded_.at(i).isNull()) {
            return;
        }
    }
    EndProgram();
}

void Screens::EndProgram()
{
    if (ended_) {
        return;
    }
    ended_ = true;
    for (int i = 0; i < ScreenCount; ++i) {
        if (QWidget* screen = loaded_.at(i)) {
            loaded_.at(i) = nullptr;
            screen->removeEventFilter(this);
            screen->hide();
            screen->deleteLater();
            emit ScreenUnloaded(static_cast<ScreenId>(i));
        }
        privates_.at(i).clear();
    }
    emit ProgramEnded();
    if (endsApplication_ && QCoreApplication::instance() != nullptr) {
        QCoreApplication::exit(0);
    }
}

bool Screens::HasEnded() const { return ended_; }

void Screens::SetEndsApplication(bool ends) { endsApplication_ = ends; }

void Screens::Reset()
{
    for (int i = 0; i < ScreenCount; ++i) {
        if (QWidget* screen = loaded_.at(i)) {
            loaded_.at(i) = nullptr;
            screen->removeEventFilter(this);
            delete screen;
        }
        privates_.at(i).clear();
    }
    ended_ = false;
    endCheckPending_ = false;
    waitingForLoad_ = false;
    // Widgets already unloaded go now, so no test sees another test's screens.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace pemlo
