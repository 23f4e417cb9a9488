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
        Screens::Instance().Reset();
        for (ScreenId id : {ScreenId::Frm_OpenFile, ScreenId::Frm_Titles, ScreenId::Frm_About}) {
            Screens::Instance().Register(id, [this, id] {
                ++built[static_cast<int>(id)];
                // What a screen's constructor does with its private values.
                auto& values = Screens::Instance().PrivateValues(id);
                values["loads"] = values.value("loads", 0).toInt() + 1;
                return new QWidget();
            });
        }
    }
    void TearDown() override { Screens::Instance().Reset(); }

    static void Settle()
    {
        for (int i = 0; i < 3; ++i) {
            QApplication::processEvents();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    static int Loads(ScreenId id) { return Screens::Instance().PrivateValues(id).value("loads", 0).toInt(); }

    std::array<int, ScreenCount> built{};
    Screens& screens = Screens::Instance();
};

TEST_F(ScreensTest, OneInstanceBuiltOnFirstUseAndNamedAfterItsScreen)
{
    QWidget* first = screens.Get(ScreenId::Frm_OpenFile);
    EXPECT_EQ(screens.Get(ScreenId::Frm_OpenFile), first);
    EXPECT_EQ(built[static_cast<int>(ScreenId::Frm_OpenFile)], 1);
    EXPECT_EQ(first->objectName(), "Frm_OpenFile");
    EXPECT_FALSE(first->isVisible());  // loaded, not shown
    EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_Titles));
}

// Closing by the program empties the reference: private values start over. The close
// box only unloads: they survive into the next load. Hiding changes nothing.
TEST_F(ScreensTest, CloseCloseBoxAndHide)
{
    enum class How { Close, CloseBox, Hide };
    struct Case {
        How how;
        bool loadedAfter;
        int buildsAfterNextUse;
        int loadsSeenByNextBuild;
    } const cases[] = {
        {How::Close, false, 2, 1},
        {How::CloseBox, false, 2, 2},
        {How::Hide, true, 1, 1},
    };
    for (const Case& c : cases) {
        screens.Reset();
        built = {};
        screens.Show(ScreenId::Frm_Titles);
        screens.Show(ScreenId::Frm_OpenFile);
        QPointer<QWidget> widget = screens.Get(ScreenId::Frm_OpenFile);
        switch (c.how) {
        case How::Close: screens.Close(ScreenId::Frm_OpenFile); break;
        case How::CloseBox: widget->close(); break;
        case How::Hide: screens.Hide(ScreenId::Frm_OpenFile); break;
        }
        EXPECT_EQ(screens.IsLoaded(ScreenId::Frm_OpenFile), c.loadedAfter);
        Settle();
        EXPECT_EQ(widget.isNull(), !c.loadedAfter);  // unloading destroys the controls
        screens.Show(ScreenId::Frm_OpenFile);
        EXPECT_EQ(built[static_cast<int>(ScreenId::Frm_OpenFile)], c.buildsAfterNextUse);
        EXPECT_EQ(Loads(ScreenId::Frm_OpenFile), c.loadsSeenByNextBuild);
        EXPECT_FALSE(screens.HasEnded());
    }
}

TEST_F(ScreensTest, ProgramEndsWhenNoScreenIsLoaded)
{
    struct Case {
        bool hideTitles;   // a hidden screen still counts as loaded
        bool endedAfter;
    } const cases[] = {{false, true}, {true, false}};
    for (const Case& c : cases) {
        screens.Reset();
        QSignalSpy ended(&screens, &Screens::ProgramEnded);
        screens.Show(ScreenId::Frm_OpenFile);
        screens.Show(ScreenId::Frm_Titles);
        if (c.hideTitles) {
            screens.Hide(ScreenId::Frm_Titles);
        } else {
            screens.Get(ScreenId::Frm_Titles)->close();
        }
        screens.Get(ScreenId::Frm_OpenFile)->close();
        Settle();
        EXPECT_EQ(screens.HasEnded(), c.endedAfter);
        EXPECT_EQ(ended.count(), c.endedAfter ? 1 : 0);
    }
}

TEST_F(ScreensTest, HandlerMayCloseOneScreenAndShowAnother)
{
    screens.Show(ScreenId::Frm_Titles);
    screens.Close(ScreenId::Frm_Titles);
    screens.Show(ScreenId::Frm_OpenFile);  // within the same handler: the program goes on
    Settle();
    EXPECT_FALSE(screens.HasEnded());
    EXPECT_TRUE(screens.IsLoaded(ScreenId::Frm_OpenFile));
}

TEST_F(ScreensTest, EndProgramUnloadsEverythingAtOnce)
{
    QSignalSpy ended(&screens, &Screens::ProgramEnded);
    screens.Show(ScreenId::Frm_OpenFile);
    screens.Get(ScreenId::Frm_Titles);
    screens.EndProgram();
    EXPECT_TRUE(screens.HasEnded());
    EXPECT_EQ(ended.count(), 1);
    EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_OpenFile));
    EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_Titles));
}

TEST_F(ScreensTest, ShowModalWaitsUntilTheScreenIsGone)
{
    struct Case {
        const char* name;
        std::function<void()> endIt;
    } const cases[] = {
        {"closed by the program", [this] { screens.Close(ScreenId::Frm_About); }},
        {"close box", [this] { screens.Get(ScreenId::Frm_About)->close(); }},
        {"program ended", [this] { screens.EndProgram(); }},
    };
    for (const Case& c : cases) {
        screens.Reset();
        screens.Show(ScreenId::Frm_OpenFile);
        bool shownWhileWaiting = false;
        QTimer::singleShot(20, [&] {
            shownWhileWaiting = screens.IsLoaded(ScreenId::Frm_About) && screens.Get(ScreenId::Frm_About)->isVisible();
            c.endIt();
        });
        screens.ShowModal(ScreenId::Frm_About);
        EXPECT_TRUE(shownWhileWaiting) << c.name;
        EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_About)) << c.name;
    }
}

TEST_F(ScreensTest, FailingLoadStepLeavesNothingLoaded)
{
    screens.Register(ScreenId::Frm_CPTData, []() -> QWidget* { Raise(ErrSubscriptOutOfRange); });
    try {
        screens.Get(ScreenId::Frm_CPTData);
        FAIL() << "the load step's error must reach the caller";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrSubscriptOutOfRange);
    }
    EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_CPTData));
}

}  // namespace
}  // namespace pemlo
