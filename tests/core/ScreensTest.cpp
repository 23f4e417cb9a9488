// The screen registry: one instance per screen, closing versus the close box, hide
// and reveal, modal screens, and the end of the program.
#include <QApplication>
#include <QSignalSpy>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include "core/Screens.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

class ScreensTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        screens.Reset();
        for (ScreenId id : {ScreenId::Frm_OpenFile, ScreenId::Frm_Titles, ScreenId::Frm_About}) {
            screens.Register(id, [this, id] {
                ++built[static_cast<int>(id)];
                // What a screen's constructor does with its private values.
                auto& values = screens.PrivateValues(id);
                values["loads"] = values.value("loads", 0).toInt() + 1;
                return new QWidget();
            });
        }
    }
    void TearDown() override { screens.Reset(); }

    static void Settle()
    {
        for (int i = 0; i < 3; ++i)
            QApplication::processEvents(), QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::array<int, ScreenCount> built{};
    Screens& screens = Screens::Instance();
};

// Closing by the program empties the reference: private values start over. The close
// box only unloads: they survive into the next load. Hiding changes nothing.
TEST_F(ScreensTest, OneInstanceAndWhatCloseCloseBoxAndHideLeave)
{
    enum class How { Close, CloseBox, Hide };
    struct Case { How how; bool loadedAfter; int buildsAfterNextUse, loadsSeenByNextBuild; } const cases[] = {
        {How::Close, false, 2, 1}, {How::CloseBox, false, 2, 2}, {How::Hide, true, 1, 1}};
    for (const Case& c : cases) {
        screens.Reset();
        built = {};
        screens.Show(ScreenId::Frm_Titles);
        QPointer<QWidget> widget = screens.Get(ScreenId::Frm_OpenFile);
        EXPECT_EQ(widget->objectName(), "Frm_OpenFile");
        EXPECT_FALSE(widget->isVisible());  // loaded, not shown
        screens.Show(ScreenId::Frm_OpenFile);
        EXPECT_EQ(screens.Get(ScreenId::Frm_OpenFile), widget.data());
        if (c.how == How::Close) screens.Close(ScreenId::Frm_OpenFile);
        if (c.how == How::CloseBox) widget->close();
        if (c.how == How::Hide) screens.Hide(ScreenId::Frm_OpenFile);
        EXPECT_EQ(screens.IsLoaded(ScreenId::Frm_OpenFile), c.loadedAfter);
        Settle();
        EXPECT_EQ(widget.isNull(), !c.loadedAfter);  // unloading destroys the controls
        screens.Show(ScreenId::Frm_OpenFile);
        EXPECT_EQ(built[static_cast<int>(ScreenId::Frm_OpenFile)], c.buildsAfterNextUse);
        EXPECT_EQ(screens.PrivateValues(ScreenId::Frm_OpenFile).value("loads").toInt(), c.loadsSeenByNextBuild);
    }
}

// A hidden screen still counts as loaded; a handler may close one screen and show
// another; EndProgram unloads everything at once.
TEST_F(ScreensTest, ProgramEndsWhenNoScreenIsLoaded)
{
    struct Case { const char* name; std::function<void()> act; bool ended; } const cases[] = {
        {"both closed by the close box", [this] { screens.Get(ScreenId::Frm_Titles)->close(); }, true},
        {"Titles hidden", [this] { screens.Hide(ScreenId::Frm_Titles); }, false},
        {"close one, show another", [this] { screens.Close(ScreenId::Frm_Titles); screens.Show(ScreenId::Frm_About); },
         false},
        {"EndProgram", [this] { screens.Show(ScreenId::Frm_About); screens.EndProgram(); }, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        screens.Reset();
        QSignalSpy ended(&screens, &Screens::ProgramEnded);
        screens.Show(ScreenId::Frm_OpenFile);
        screens.Show(ScreenId::Frm_Titles);
        c.act();
        if (screens.IsLoaded(ScreenId::Frm_OpenFile)) screens.Get(ScreenId::Frm_OpenFile)->close();
        Settle();
        EXPECT_EQ(screens.HasEnded(), c.ended);
        EXPECT_EQ(ended.count(), c.ended ? 1 : 0);
        EXPECT_EQ(screens.IsLoaded(ScreenId::Frm_Titles) || screens.IsLoaded(ScreenId::Frm_About), !c.ended);
    }
}

TEST_F(ScreensTest, ShowModalWaitsUntilTheScreenIsGone)
{
    const std::function<void()> endings[] = {
        [this] { screens.Close(ScreenId::Frm_About); },
        [this] { screens.Get(ScreenId::Frm_About)->close(); },
        [this] { screens.EndProgram(); },
    };
    for (const auto& endIt : endings) {
        screens.Reset();
        screens.Show(ScreenId::Frm_OpenFile);
        bool shownWhileWaiting = false;
        QTimer::singleShot(20, [&] {
            shownWhileWaiting = screens.IsLoaded(ScreenId::Frm_About) && screens.Get(ScreenId::Frm_About)->isVisible();
            endIt();
        });
        screens.ShowModal(ScreenId::Frm_About);
        EXPECT_TRUE(shownWhileWaiting);
        EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_About));
    }
}

TEST_F(ScreensTest, FailingLoadStepLeavesNothingLoaded)
{
    screens.Register(ScreenId::Frm_CPTData, []() -> QWidget* { Raise(ErrSubscriptOutOfRange); });
    EXPECT_THROW(screens.Get(ScreenId::Frm_CPTData), RunTimeError);  // the load step's error reaches the caller
    EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_CPTData));
}

}  // namespace
}  // namespace pemlo
