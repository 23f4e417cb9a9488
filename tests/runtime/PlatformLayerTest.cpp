// The Qt side of the platform layer: message boxes, the run-time error report, the
// global mouse pointer and the file dialog.
#include <QGuiApplication>
#include <QResizeEvent>
#include <QTemporaryDir>
#include <new>

#include <gtest/gtest.h>

#include "runtime/FileDialog.h"
#include "runtime/FormScaling.h"
#include "runtime/MessageBox.h"
#include "runtime/MousePointer.h"
#include "runtime/RunTimeErrorReport.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

// A control sits at its design rectangle (15 twips to the pixel) and keeps its place,
// size and type size in proportion as the window grows; the form cannot be made
// smaller than its resizing settings.
TEST(FormScalingTest, ControlsScaleWithTheWindowFromTheirTwipsRectangles)
{
    ScaledForm form("Frm_Test", 6000, 3000);
    auto* box = new QWidget(&form);
    QFont font = box->font();
    font.setPointSizeF(9.0);
    box->setFont(font);
    form.Place(box, {1500, 750, 3000, 300});
    form.SetResizeMinimum(4800, 2400);
    EXPECT_EQ(form.minimumSize(), QSize(320, 160));

    struct Case { QSize window; QRect expected; double points; } const cases[] = {
        {{400, 200}, {100, 50, 200, 20}, 9.0},
        {{800, 400}, {200, 100, 400, 40}, 18.0},
        {{800, 200}, {200, 50, 400, 20}, 9.0},  // type follows the smaller scale
    };
    for (const Case& c : cases) {
        form.resize(c.window);
        QResizeEvent resize(c.window, form.size());
        QCoreApplication::sendEvent(&form, &resize);
        EXPECT_EQ(box->geometry(), c.expected) << c.window.width() << "x" << c.window.height();
        EXPECT_DOUBLE_EQ(box->font().pointSizeF(), c.points);
    }
}

// Messages keep their blanks and line ends; an error no handler traps is reported in
// the platform's words and ends the program; a handler that succeeds shows nothing.
TEST(MessageBoxTest, ShowsTextTitleAndIconExactly)
{
    int ends = 0;
    SetProgramEnder([&ends] { ++ends; });
    struct Case {
        std::function<void()> action;
        QString text, title;  // text empty: no message box
        QMessageBox::Icon icon;
        int ends;
    } const cases[] = {
        {[] { ShowMessage(nullptr, "line one\r\n line two ", QMessageBox::Information, " Data Import"); },
         "line one\r\n line two ", " Data Import", QMessageBox::Information, 0},
        {[] { Untrapped([] { Raise(ErrSubscriptOutOfRange); }); }, "Run-time error '9':\n\nSubscript out of range",
         AppTitle(), QMessageBox::Critical, 1},
        {[] { Untrapped([] { throw RunTimeError(11, "Division by zero"); }); }, "Run-time error '11':\n\nDivision by zero",
         AppTitle(), QMessageBox::Critical, 1},
        {[] { Untrapped([] { throw std::bad_alloc(); }); }, "Run-time error '7':\n\nOut of memory", AppTitle(),
         QMessageBox::Critical, 1},
        {[] { Untrapped([] {}); }, "", "", QMessageBox::NoIcon, 0},
    };
    for (const Case& c : cases) {
        ends = 0;
        test::ModalWatcher watcher;
        c.action();
        EXPECT_EQ(ends, c.ends) << c.text.toStdString();
        ASSERT_EQ(watcher.Messages().size(), c.text.isEmpty() ? 0u : 1u) << c.text.toStdString();
        if (c.text.isEmpty()) continue;
        EXPECT_EQ(watcher.Messages()[0].text, c.text);
        EXPECT_EQ(watcher.Messages()[0].title, c.title);
        EXPECT_EQ(watcher.Messages()[0].icon, c.icon);
    }
    SetProgramEnder({});
}

TEST(MousePointerTest, OneSettingNotAStack)
{
    using P = MousePointer;
    const std::pair<std::vector<P>, bool> cases[] = {  // settings in turn, hourglass after them
        {{P::Hourglass}, true},
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

// Cancel and a file that is not there both end in error 32755, as the open-file screen expects.
TEST(FileDialogTest, ChoiceCancelAndMissingFile)
{
    QTemporaryDir dir;
    const QString existing = dir.filePath("cone.dat");
    ASSERT_TRUE(QFile(existing).open(QIODevice::WriteOnly));
    const std::pair<QString, bool> cases[] = {{existing, true}, {QString(), false}, {dir.filePath("missing.dat"), false}};
    for (const auto& [answer, chosen] : cases) {  // answer empty: cancel
        test::ModalWatcher watcher;
        answer.isEmpty() ? watcher.CancelFileDialog() : watcher.ChooseFile(answer);
        int error = 0;
        QString result;
        try {
            result = ShowOpenFileDialog(nullptr, "ASCII Files (*.txt)|*.txt|ASCII Files (*.dat)| *.dat|ASCII Files (*.prn)| *.prn");
        } catch (const RunTimeError& e) {
            error = e.Number();
        }
        ASSERT_EQ(watcher.FileDialogs().size(), 1u);
        EXPECT_EQ(watcher.FileDialogs()[0].objectName, "ComDialogOpen");
        EXPECT_TRUE(watcher.FileDialogs()[0].fileMustExist);
        EXPECT_EQ(watcher.FileDialogs()[0].nameFilters,
                  QStringList({"ASCII Files (*.txt)", "ASCII Files (*.dat)", "ASCII Files (*.prn)"}));
        EXPECT_EQ(error, chosen ? 0 : ErrCancelSelected);
        EXPECT_EQ(result, chosen ? QFileInfo(existing).absoluteFilePath() : QString());
    }
}

}  // namespace
}  // namespace pemlo
