// The screen registry: one instance of each screen at a time, created on first use
// (which runs its load step), closed by unloading it and emptying its reference,
// hidden and revealed without losing its values. The program ends when no screen is
// loaded any more, or at once on Exit.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <QWidget>
#include <array>
#include <functional>

namespace pemlo {

enum class ScreenId {
    Frm_Splash,
    Frm_OpenFile,
    Frm_ViewFile,
    Frm_Titles,
    Frm_ConeFactors,
    Frm_CPTData,
    Frm_Pemlo01,
    Frm_UandV,
    Frm_About,
    Frm_HelpInfo,
};
constexpr int ScreenCount = 10;

QString ScreenName(ScreenId id);  // "Frm_OpenFile"

class Screens : public QObject {
    Q_OBJECT
public:
    static Screens& Instance();

    // How each screen is built; its constructor is its load step. Registered once at start.
    using Factory = std::function<QWidget*()>;
    void Register(ScreenId id, Factory factory);

    // The screen, built (and loaded) if its reference is empty. A run-time error of
    // the load step propagates to the caller after the half-built screen is removed.
    QWidget* Get(ScreenId id);
    template <class T> T* GetAs(ScreenId id) { return static_cast<T*>(Get(id)); }

    bool IsLoaded(ScreenId id) const;
    void Show(ScreenId id);        // not modal; brings it to the front
    void ShowModal(ScreenId id);   // waits until the screen is gone
    void Hide(ScreenId id);
    void Reveal(ScreenId id);
    void Close(ScreenId id);       // unload and empty the reference (nothing if not loaded)

    // Ends the program at once: every screen disappears without its own closing steps.
    void EndProgram();
    bool HasEnded() const;

    // Back to program start (tests): every screen unloaded, nothing ended.
    void Reset();

    // A screen whose "ignoresCloseBox" property is true stays when the window system
    // asks it to close (the splash: it goes on its own, and must not leave the
    // program running without a window).

    // A screen's private values: they outlive its controls when the user closes it
    // with the frame's close box, and are dropped when the program closes it (which
    // empties its reference). Screens read them in their constructors.
    QVariantMap& PrivateValues(ScreenId id);

    // A load that never ends (a first data line of fewer than three values) keeps
    // the program busy: commands that would work on the readings wait behind it, as
    // they would behind any long work; Exit, the close boxes, About and Help still
    // answer. The open-file screen that runs the load sets it and clears it when it goes.
    void SetWaitingForLoad(bool waiting) { waitingForLoad_ = waiting; }
    bool IsWaitingForLoad() const { return waitingForLoad_; }

    // Whether ending the program also leaves the application's event loop. The
    // desktop program turns this on; tests leave it off and read HasEnded().
    void SetEndsApplication(bool ends);

signals:
    void ProgramEnded();
    // The screen was unloaded (by the program, by its close box or by the end).
    void ScreenUnloaded(pemlo::ScreenId id);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Screens();
    static int Index(ScreenId id) { return static_cast<int>(id); }
    // Unloads the screen now; its widget goes at the next turn of the event loop, so
    // a screen may close itself from one of its own handlers.
    void Unload(ScreenId id);
    // The program ends when no screen is loaded once the running handler is done:
    // a handler may close one screen and then show another.
    void ScheduleEndCheck();
    void EndIfNoneLoaded();

    std::array<Factory, ScreenCount> factories_{};
    std::array<QPointer<QWidget>, ScreenCount> loaded_{};
    std::array<QVariantMap, ScreenCount> privates_{};
    bool ended_ = false;
    bool endsApplication_ = false;
    bool endCheckPending_ = false;
    bool waitingForLoad_ = false;
};

}  // namespace pemlo
