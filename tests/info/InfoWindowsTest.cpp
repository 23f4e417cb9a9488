// The About and Help windows: their size on the screen, and OK.
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextBrowser>

#include "info/Frm_About.h"
#include "info/Frm_HelpInfo.h"
#include "support/ScreenFixture.h"

namespace pemlo::test {
namespace {

using InfoWindows = ScreenFixture;

TEST_F(InfoWindows, ModalSizedFromTheScreenAndClosedByOk)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    for (ScreenId id : {ScreenId::Frm_About, ScreenId::Frm_HelpInfo}) {
        QWidget* window = screens().Get(id);
        EXPECT_EQ(window->windowModality(), Qt::ApplicationModal) << ScreenName(id).toStdString();
        EXPECT_TRUE(Find<QTextBrowser>(window, "RichTextBox1")->isReadOnly());
        screens().Show(id);
        // Shown, not only built: the contents must not force a larger window.
        EXPECT_EQ(window->size(), QSize(static_cast<int>(0.72 * screen.width()), static_cast<int>(0.6 * screen.height())));
        QTest::mouseClick(Find<QPushButton>(window, "CmdOK"), Qt::LeftButton);
        EXPECT_FALSE(screens().IsLoaded(id));
    }
}

}  // namespace
}  // namespace pemlo::test
