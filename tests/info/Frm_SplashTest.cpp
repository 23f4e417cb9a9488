// The start of a run: the splash loads the open-file screen hidden behind it, and a
// key, a click on its background or its timer, whichever comes first, leads on to it.
#include <QLabel>
#include <QTest>
#include <QTimer>

#include "info/Frm_Splash.h"
#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

using SplashTest = test::ScreenFixture;

TEST_F(SplashTest, FirstTriggerShowsTheOpenFileScreen)
{
    // (The timer's own end: the accessibility walk, whose program leaves its splash by it.)
    enum class Trigger { Key, BackgroundClick, LabelClick };
    const struct {
        Trigger trigger;
        bool dismissed;
    } cases[] = {{Trigger::Key, true}, {Trigger::BackgroundClick, true}, {Trigger::LabelClick, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.trigger));
        Fresh();
        screens().Show(ScreenId::Frm_Splash);
        QWidget* splash = screens().Get(ScreenId::Frm_Splash);
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Hourglass);
        ASSERT_TRUE(screens().IsLoaded(ScreenId::Frm_OpenFile));
        EXPECT_FALSE(screens().Get(ScreenId::Frm_OpenFile)->isVisible());
        QPointer<QTimer> timer = splash->findChild<QTimer*>("Timer1");
        ASSERT_FALSE(timer.isNull());
        EXPECT_TRUE(timer->isActive() && timer->interval() == 4800);
        // The splash has no close box: a close request of the window system is refused.
        EXPECT_FALSE(splash->close());

        switch (c.trigger) {
        case Trigger::Key: QTest::keyClick(splash, Qt::Key_Space); break;
        case Trigger::BackgroundClick: QTest::mouseClick(splash, Qt::LeftButton, {}, QPoint(2, 2)); break;
        case Trigger::LabelClick: QTest::mouseClick(Find<QLabel>(splash, "LblTitle"), Qt::LeftButton); break;
        }
        Settle();
        EXPECT_EQ(!screens().IsLoaded(ScreenId::Frm_Splash), c.dismissed);
        EXPECT_EQ(screens().Get(ScreenId::Frm_OpenFile)->isVisible(), c.dismissed);
        EXPECT_EQ(CurrentMousePointer(), c.dismissed ? MousePointer::Default : MousePointer::Hourglass);
        EXPECT_EQ(timer.isNull(), c.dismissed);  // the other triggers never act again
        EXPECT_FALSE(screens().HasEnded());
        if (!c.dismissed) continue;
        // The keyboard starts at the units of the file: a second key after the splash
        // must not reach the toolbar's Exit.
        QWidget* open = screens().Get(ScreenId::Frm_OpenFile);
        EXPECT_EQ(open->focusWidget(), open->findChild<QWidget*>("Opt_Units_1"));
        QTest::keyClick(open->focusWidget(), Qt::Key_Space);
        Settle();
        EXPECT_FALSE(screens().HasEnded());
    }
}

}  // namespace
}  // namespace pemlo
