// The Qt side of the platform layer: message boxes, the run-time error report, the
// global mouse pointer, the file dialog, toolbars, scaled forms and Enter as Tab.
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <new>

#include <gtest/gtest.h>

#include "runtime/FileDialog.h"
#include "runtime/FormScaling.h"
#include "runtime/KeySending.h"
#include "runtime/MessageBox.h"
#include "runtime/MousePointer.h"
#include "runtime/RunTimeErrorReport.h"
#include "runtime/Toolbar.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

using test::ModalWatcher;

TEST(MessageBoxTest, ShowsTextTitleAndIconExactly)
{
    struct Case {
        QString text;
        QMessageBox::Icon icon;
        QString title;
    } const cases[] = {
        {"Could not read data from file", QMessageBox::Critical, "Open File Error"},
        {"line one\r\n line two ", QMessageBox::Information, " Data Import from Text File"},
        {" Missing Data Entry .. Please Enter ", QMessageBox::Critical, AppTitle()},
    };
    for (const Case& c : cases) {
        ModalWatcher watcher;
        ShowMessage(nullptr, c.text, c.icon, c.title);
        ASSERT_EQ(watcher.Messages().size(), 1u) << c.title.toStdString();
        EXPECT_EQ(watcher.Messages()[0].text, c.text);
        EXPECT_EQ(watcher.Messages()[0].title, c.title);
        EXPECT_EQ(watcher.Messages()[0].icon, c.icon);
    }
}

class ErrorReportTest : public ::testing::Test {
protected:
    void SetUp() override { SetProgramEnder([this] { ++ends; }); }
    void TearDown() override { SetProgramEnder({}); }
    int ends = 0;
};

TEST_F(ErrorReportTest, EscapingErrorIsReportedAndEndsTheProgram)
{
    struct Case {
        std::function<void()> handler;
        QString expectedText;  // empty: no report
    } const cases[] = {
        {[] { Raise(ErrSubscriptOutOfRange); }, "Run-time error '9':\n\nSubscript out of range"},
        {[] { Raise(ErrOverflow); }, "Run-time error '6':\n\nOverflow"},
        {[] { throw RunTimeError(11, "Division by zero"); }, "Run-time error '11':\n\nDivision by zero"},
        {[] { throw std::bad_alloc(); }, "Run-time error '7':\n\nOut of memory"},
        {[] {}, ""},
    };
    for (const Case& c : cases) {
        ends = 0;
        ModalWatcher watcher;
        Untrapped(c.handler);
        if (c.expectedText.isEmpty()) {
            EXPECT_TRUE(watcher.Messages().empty());
            EXPECT_EQ(ends, 0);
            continue;
        }
        ASSERT_EQ(watcher.Messages().size(), 1u) << c.expectedText.toStdString();
        EXPECT_EQ(watcher.Messages()[0].text, c.expectedText);
        EXPECT_EQ(watcher.Messages()[0].title, AppTitle());
        EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Critical);
        EXPECT_EQ(ends, 1);
    }
}

TEST(MousePointerTest, OneSettingNotAStack)
{
    struct Case {
        std::vector<MousePointer> settings;
        bool hourglassAfter;
    } const cases[] = {
        {{MousePointer::Hourglass}, true},
        {{MousePointer::Hourglass, MousePointer::Hourglass, MousePointer::Default}, false},
        {{MousePointer::Default, MousePointer::Default, MousePointer::Hourglass}, true},
        {{MousePointer::Hourglass, MousePointer::Default, MousePointer::Hourglass}, true},
    };
    for (const Case& c : cases) {
        for (MousePointer p : c.settings) {
            SetMousePointer(p);
        }
        EXPECT_EQ(CurrentMousePointer() == MousePointer::Hourglass, c.hourglassAfter);
        const QCursor* shown = QGuiApplication::overrideCursor();
        EXPECT_EQ(shown != nullptr && shown->shape() == Qt::WaitCursor, c.hourglassAfter);
        SetMousePointer(MousePointer::Default);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

const QString ConeFilter = "ASCII Files (*.txt)|*.txt|ASCII Files (*.dat)| *.dat|ASCII Files (*.prn)| *.prn";

TEST(FileDialogTest, FilterPairsBecomeNameFilters)
{
    EXPECT_EQ(NameFiltersOf(ConeFilter),
              QStringList({"ASCII Files (*.txt)", "ASCII Files (*.dat)", "ASCII Files (*.prn)"}));
    EXPECT_EQ(NameFiltersOf("Data|*.csv"), QStringList({"Data (*.csv)"}));
}

TEST(FileDialogTest, ChoiceCancelAndMissingFile)
{
    QTemporaryDir dir;
    const QString existing = dir.filePath("cone.dat");
    QFile file(existing);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();

    struct Case {
        QString answer;  // empty: cancel
        bool chosen;
    } const cases[] = {
        {existing, true},
        {QString(), false},
        {dir.filePath("missing.dat"), false},
    };
    for (const Case& c : cases) {
        ModalWatcher watcher;
        c.answer.isEmpty() ? watcher.CancelFileDialog() : watcher.ChooseFile(c.answer);
        int error = 0;
        QString result;
        try {
            result = ShowOpenFileDialog(nullptr, ConeFilter);
        } catch (const RunTimeError& e) {
            error = e.Number();
        }
        ASSERT_EQ(watcher.FileDialogs().size(), 1u);
        EXPECT_EQ(watcher.FileDialogs()[0].objectName, "ComDialogOpen");
        EXPECT_TRUE(watcher.FileDialogs()[0].fileMustExist);
        EXPECT_EQ(watcher.FileDialogs()[0].nameFilters.size(), 3);
        if (c.chosen) {
            EXPECT_EQ(error, 0);
            EXPECT_EQ(result, QFileInfo(existing).absoluteFilePath());
        } else {
            EXPECT_EQ(error, ErrCancelSelected);
        }
    }
}

TEST(ToolbarTest, ButtonsCarryKeyCaptionTooltipAndMenu)
{
    QWidget parent;
    QStringList clicked;
    QToolBar* bar = BuildToolbar(&parent,
                                 {{"Exit", "Exit", "Exit the Program", {}},
                                  {"Classify Soil   ", "Next", "", {{"First (1999) Method", "Pemlo1"}, {"Other", "Robertson"}}}},
                                 [&](const QString& key) { clicked << key; });
    EXPECT_EQ(bar->objectName(), "Toolbar1");
    auto* exit = bar->findChild<QToolButton*>("Exit");
    auto* next = bar->findChild<QToolButton*>("Next");
    ASSERT_NE(exit, nullptr);
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(exit->text(), "Exit");
    EXPECT_EQ(exit->toolTip(), "Exit the Program");
    EXPECT_EQ(next->text(), "Classify Soil   ");
    EXPECT_TRUE(next->toolTip().isEmpty());
    EXPECT_EQ(exit->menu(), nullptr);
    ASSERT_NE(next->menu(), nullptr);
    EXPECT_EQ(next->popupMode(), QToolButton::MenuButtonPopup);
    ASSERT_EQ(next->menu()->actions().size(), 2);
    EXPECT_EQ(next->menu()->actions()[0]->text(), "First (1999) Method");

    next->menu()->actions()[1]->trigger();  // menu entries raise nothing
    next->click();
    exit->click();
    EXPECT_EQ(clicked, QStringList({"Next", "Exit"}));
}

TEST(ScaledFormTest, ControlsAndFontsFollowTheWindow)
{
    ScaledForm form("Frm_Test", 6000, 3000);  // 400 x 200 pixels at design scale
    form.SetResizeMinimum(3000, 1500);
    auto* button = new QPushButton("OK", &form);
    QFont font = button->font();
    font.setPointSizeF(10.0);
    button->setFont(font);
    form.Place(button, {1500, 750, 3000, 450});
    EXPECT_EQ(form.objectName(), "Frm_Test");
    EXPECT_EQ(form.minimumSize(), QSize(200, 100));

    struct Case {
        QSize window;
        QRect expected;
        double pointSize;
    } const cases[] = {
        {{400, 200}, {100, 50, 200, 30}, 10.0},
        {{800, 400}, {200, 100, 400, 60}, 20.0},
        {{800, 200}, {200, 50, 400, 30}, 10.0},  // fonts follow the smaller scale
        {{100, 50}, {50, 25, 100, 15}, 5.0},     // held at the minimum size
    };
    form.show();
    for (const Case& c : cases) {
        form.resize(c.window);
        EXPECT_EQ(button->geometry(), c.expected) << c.window.width() << "x" << c.window.height();
        EXPECT_DOUBLE_EQ(button->font().pointSizeF(), c.pointSize);
    }
}

TEST(KeySendingTest, EnterMovesTheFocusOnInsteadOfActing)
{
    QWidget form;
    auto* first = new QLineEdit(&form);
    auto* second = new QLineEdit(&form);
    auto* ok = new QPushButton("OK", &form);
    ok->setDefault(true);
    QSignalSpy pressed(ok, &QPushButton::clicked);
    InstallEnterAsTab(first);
    InstallEnterAsTab(second);
    form.show();
    QApplication::setActiveWindow(&form);
    first->setFocus();
    first->setText("12");

    QTest::keyClick(first, Qt::Key_Return);
    EXPECT_TRUE(second->hasFocus());
    EXPECT_EQ(first->text(), "12");
    QTest::keyClick(second, Qt::Key_Enter);
    EXPECT_TRUE(ok->hasFocus());
    EXPECT_EQ(pressed.count(), 0);
}

}  // namespace
}  // namespace pemlo
