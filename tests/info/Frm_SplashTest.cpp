// The start of a run: the splash loads the open-file screen behind it, and a key, a
// click on its background or its timer, whichever comes first, leads on to it.
#include <QLabel>
#include <QTest>
#include <QTimer>

#include "info/Frm_Splash.h"
#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

class SplashTest : public test::ScreenFixture {
protected:
    QWidget* Start()
    {
        screens().Show(ScreenId::Frm_Splash);
        return screens().Get(ScreenId::Frm_Splash);
    }
};

TEST_F(SplashTest, LoadStepLoadsTheOpenFileScreenHiddenUnderTheHourglass)
{
    EXPECT_EQ(TheRecord().DataUnits, DataMilliVolts);  // nothing loaded yet
    QWidget* splash = Start();
    EXPECT_EQ(CurrentMousePointer(), MousePointer::Hourglass);
    ASSERT_TRUE(screens().IsLoaded(ScreenId::Frm_OpenFile));
    EXPECT_FALSE(screens().Get(ScreenId::Frm_OpenFile)->isVisible());
    EXPECT_EQ(TheRecord().DataUnits, DataEnglish);
    auto* timer = splash->findChild<QTimer*>("Timer1");
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->interval(), 4800);
    EXPECT_TRUE(timer->isActive());
    // The splash has no close box: a close request of the window system is refused.
    EXPECT_FALSE(splash->close());
    Settle();
    EXPECT_TRUE(splash->isVisible());
    EXPECT_FALSE(screens().HasEnded());
}

TEST_F(SplashTest, FirstTriggerShowsTheOpenFileScreen)
{
    enum class Trigger { Key, BackgroundClick, LabelClick, Timer };
    const struct {
        const char* what;
        Trigger trigger;
        bool dismissed;
    } cases[] = {
        {"key", Trigger::Key, true},
        {"click on the background", Trigger::BackgroundClick, true},
        {"click on a label", Trigger::LabelClick, false},
        {"timer", Trigger::Timer, true},
    };
    for (const auto& c : cases) {
        Fresh();
        QWidget* splash = Start();
        QPointer<QTimer> timer = splash->findChild<QTimer*>("Timer1");
        switch (c.trigger) {
        case Trigger::Key: QTest::keyClick(splash, Qt::Key_Space); break;
        case Trigger::BackgroundClick: QTest::mouseClick(splash, Qt::LeftButton, {}, QPoint(2, 2)); break;
        case Trigger::LabelClick: QTest::mouseClick(Find<QLabel>(splash, "LblTitle"), Qt::LeftButton); break;
        case Trigger::Timer:
            timer->setInterval(1);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !screens().IsLoaded(ScreenId::Frm_Splash); }, 2000));
            break;
        }
        EXPECT_EQ(!screens().IsLoaded(ScreenId::Frm_Splash), c.dismissed) << c.what;
        EXPECT_EQ(screens().Get(ScreenId::Frm_OpenFile)->isVisible(), c.dismissed) << c.what;
        EXPECT_EQ(CurrentMousePointer(), c.dismissed ? MousePointer::Default : MousePointer::Hourglass) << c.what;
        if (c.dismissed) {
            // The other triggers never act again: the timer went with the splash.
            Settle();
            EXPECT_TRUE(timer.isNull()) << c.what;
            EXPECT_FALSE(screens().HasEnded()) << c.what;
        }
    }
}

}  // namespace
}  // namespace pemlo
