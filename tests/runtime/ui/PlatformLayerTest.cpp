// The Qt side of the platform layer: message boxes, the run-time error report, the
// global mouse pointer and the file dialog.
#include <QGuiApplication>
#include <new>

#include <gtest/gtest.h>

#include "runtime/ui/MessageBox.h"
#include "runtime/ui/MousePointer.h"
#include "runtime/ui/RunTimeErrorReport.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

// A failed allocation no handler traps is reported as the platform's error 7 and ends
// the program. (The report of a run-time error in its words: the cone factors' overflow.)
TEST(RunTimeErrorReport, OutOfMemoryIsError7)
{
    int ends = 0;
    SetProgramEnder([&ends] { ++ends; });
    test::ModalWatcher watcher;
    Untrapped([] { throw std::bad_alloc(); });
    test::ExpectOneMessage(watcher, "Run-time error '7':\n\nOut of memory", AppTitle(), QMessageBox::Critical);
    EXPECT_EQ(ends, 1);
    SetProgramEnder({});
}

TEST(MousePointerTest, OneSettingNotAStack)
{
    using P = MousePointer;
    const std::pair<std::vector<P>, bool> cases[] = {  // settings in turn, hourglass after them
        {{P::Hourglass, P::Hourglass, P::Default}, false},
        {{P::Default, P::Default, P::Hourglass}, true},
    };
    for (const auto& [settings, hourglass] : cases) {
        for (P p : settings) SetMousePointer(p);
        EXPECT_EQ(CurrentMousePointer() == P::Hourglass, hourglass);
        const QCursor* shown = QGuiApplication::overrideCursor();  // what the user sees
        EXPECT_EQ(shown != nullptr && shown->shape() == Qt::WaitCursor, hourglass);
        SetMousePointer(P::Default);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

}  // namespace
}  // namespace pemlo
