// The screen registry: a modal screen's wait ends with the program. (One instance
// per screen, Close against the close box, Hide, a failing load step and the end of
// the program when no screen is left are driven through the real screens in their
// own tests and in the accessibility walk.)
#include <QTimer>

#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

using ScreensTest = test::ScreenFixture;

// A modal screen's wait ends with the program too, not only with the screen.
TEST_F(ScreensTest, ShowModalReturnsWhenTheProgramEnds)
{
    screens().Show(ScreenId::Frm_OpenFile);
    QTimer::singleShot(20, [] { screens().EndProgram(); });
    screens().ShowModal(ScreenId::Frm_About);
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_About));
    EXPECT_TRUE(screens().HasEnded());
}

}  // namespace
}  // namespace pemlo
