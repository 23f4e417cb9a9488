// The open-file screen as a user drives it: the units logic, the
// title lines, loading through the real file dialog with the messages word for word,
// the load that never ends, About and Help, the close box and Exit.
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include "input/ui/Frm_OpenFile.h"
#include "support/ModalWatcher.h"
#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

using test::ModalWatcher;

std::string ConeFile(int titleLines, int readings)
{
    std::string text;
    for (int i = 0; i < titleLines; ++i) text += "Title line " + std::to_string(i + 1) + "\r\n";
    for (int i = 1; i <= readings; ++i) text += std::to_string(i * 0.1).substr(0, 5) + ",12.3,0.4\r\n";
    return text;
}

class OpenFileTest : public test::ScreenFixture {
protected:
    Frm_OpenFile* Open()
    {
        screens().Show(ScreenId::Frm_OpenFile);
        return screens().GetAs<Frm_OpenFile>(ScreenId::Frm_OpenFile);
    }
    // "Load Data File" with the dialog answered by path (empty: cancelled).
    void Load(Frm_OpenFile* screen, ModalWatcher& watcher, const QString& path)
    {
        path.isEmpty() ? watcher.CancelFileDialog() : watcher.ChooseFile(path);
        Press(screen, "CmdOpenFile");
    }
    Declarations& d = TheRecord();
};

// English and SI data bring the graph units with them; millivolts leave them alone;
// an option already selected changes nothing. (A screen reader's Toggle instead of a
// click: the accessibility walk.)
TEST_F(OpenFileTest, UnitsCarryTheGraphUnitsExceptForMillivolts)
{
    const struct {
        std::vector<const char*> choices;
        Integer dataUnits, graphUnits;
    } cases[] = {
        {{"Opt_Units_2"}, DataSI, GraphSI},
        {{"Opt_Units_2", "Opt_Units_0"}, DataMilliVolts, GraphSI},
        {{"Opt_Units_0"}, DataMilliVolts, GraphEnglish},
        {{"Opt_Units_2", "Opt_Units_1"}, DataEnglish, GraphEnglish},
        {{"Opt_Units_0", "Opt_GraphUnits_1"}, DataMilliVolts, GraphSI},
        {{"Opt_Units_2", "Opt_GraphUnits_0"}, DataSI, GraphEnglish},
        {{"Opt_GraphUnits_1", "Opt_Units_1"}, DataEnglish, GraphSI},  // English was selected already
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.choices.back());
        Fresh();
        Frm_OpenFile* screen = Open();
        for (const char* name : c.choices) Find<QRadioButton>(screen, name)->click();
        EXPECT_EQ(d.DataUnits, c.dataUnits);
        EXPECT_EQ(d.GraphUnits, c.graphUnits);
        const char* shown = c.graphUnits == GraphSI ? "Opt_GraphUnits_1" : "Opt_GraphUnits_0";
        EXPECT_TRUE(Find<QRadioButton>(screen, shown)->isChecked());
    }
}

// The title lines chosen in the list (10 to start with) are the ones the load skips.
TEST_F(OpenFileTest, SuccessfulLoadReportsTheLinesAndEnablesPlotting)
{
    const struct {
        std::vector<Qt::Key> keys;
        int titleLines, readings;
    } cases[] = {{{Qt::Key_Down}, 11, 250}, {{Qt::Key_Home}, 0, 3}, {{Qt::Key_End, Qt::Key_Up}, 14, 1}, {{}, 10, 4000}};
    for (const auto& [keys, titleLines, readings] : cases) {
        Fresh();
        Frm_OpenFile* screen = Open();
        for (Qt::Key key : keys) QTest::keyClick(Find<QComboBox>(screen, "CombTitleLines"), key);
        EXPECT_EQ(d.NumTitleLines, titleLines);
        const QString path = WriteFile("cone.txt", ConeFile(titleLines, readings));
        ModalWatcher watcher;
        Load(screen, watcher, path);

        ExpectOneMessage(watcher, "Cone Data File: " + path + "\r\n was successfully opened. \r\n Total Number of Lines = " +
                                      QString::number(readings), " Data Import from Text File", QMessageBox::Information);
        ASSERT_EQ(watcher.FileDialogs().size(), 1u);  // one that takes existing ASCII files only
        EXPECT_TRUE(watcher.FileDialogs()[0].fileMustExist);
        EXPECT_EQ(watcher.FileDialogs()[0].nameFilters,
                  (QStringList{"ASCII Files (*.txt)", "ASCII Files (*.dat)", "ASCII Files (*.prn)"}));
        EXPECT_EQ(d.NumLines, readings);
        EXPECT_FLOAT_EQ(d.Q_Tip[readings], 12.3f);
        EXPECT_EQ(d.DataFileName, path.toStdString());
        auto* plot = Find<QPushButton>(screen, "CmdPlot");
        EXPECT_TRUE(plot->isEnabled());
        EXPECT_EQ(screen->focusWidget(), plot);
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
    }
}

// Whatever goes wrong, "Plot Cone Data" keeps the state it had. (Which files fail is
// the reader's table.)
TEST_F(OpenFileTest, FailedOrAbandonedLoadsLeavePlottingAsItWas)
{
    const struct {
        const char* what;
        std::string file;  // empty: the dialog is cancelled
        bool message;      // "Could not read data from file"
    } cases[] = {
        {"not a number", "t\r\n1.0,abc,3.0\r\n", true},
        {"only title lines", "t\r\n", false},
        {"cancelled", "", false},
    };
    for (bool loadedBefore : {false, true}) {
        for (const auto& c : cases) {
            Fresh();
            Frm_OpenFile* screen = Open();
            d.NumTitleLines = 1;
            if (loadedBefore) {
                ModalWatcher first;
                Load(screen, first, WriteFile("good.txt", ConeFile(1, 5)));
            }
            const std::string nameBefore = d.DataFileName;
            const Integer linesBefore = d.NumLines;
            ModalWatcher watcher;
            Load(screen, watcher, c.file.empty() ? QString() : WriteFile("bad.txt", c.file));

            if (c.message) {
                ExpectOneMessage(watcher, "Could not read data from file", "Open File Error", QMessageBox::Critical);
                EXPECT_EQ(d.FileReadError, VbTrue) << c.what;
            } else {
                EXPECT_TRUE(watcher.Messages().empty()) << c.what;
            }
            if (c.file.empty()) {
                EXPECT_EQ(d.DataFileName, nameBefore);
            }
            EXPECT_EQ(d.NumLines, linesBefore) << c.what;
            EXPECT_EQ(Find<QPushButton>(screen, "CmdPlot")->isEnabled(), loadedBefore) << c.what;
            EXPECT_EQ(CurrentMousePointer(), MousePointer::Default) << c.what;
        }
    }
}

// A first data line with fewer than three values: no message, the hourglass stays,
// the load never completes, yet the handler returned and Exit (taking an open
// preview with it) or the close box still ends the program. Meanwhile nothing else
// starts work on the readings: an open project information screen's OK would plot
// the previous file under the new file's name.
TEST_F(OpenFileTest, LoadThatNeverEndsKeepsTheHourglassButExitStillWorks)
{
    for (bool closeBox : {false, true}) {
        Fresh();
        Frm_OpenFile* screen = Open();
        screens().Show(ScreenId::Frm_Titles);
        QWidget* titles = screens().Get(ScreenId::Frm_Titles);
        d.NumTitleLines = 1;
        const QString path = WriteFile("single.txt", "title\r\n1.5\r\n2.5\r\n");
        ModalWatcher watcher;
        if (!closeBox) {
            watcher.ChooseFile(path);
            Press(screen, "CmdViewFile");
            ASSERT_TRUE(screens().IsLoaded(ScreenId::Frm_ViewFile));
        }
        Load(screen, watcher, path);
        EXPECT_TRUE(watcher.Messages().empty());
        EXPECT_TRUE(screen->IsWaitingForever());
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Hourglass);
        EXPECT_FALSE(Find<QPushButton>(screen, "CmdPlot")->isEnabled());
        EXPECT_EQ(d.NumLines, 0);
        Press(titles, "CmdOK");
        Press(titles, "CmdCancel");
        EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_CPTData));
        EXPECT_TRUE(screens().IsLoaded(ScreenId::Frm_Titles));
        EXPECT_TRUE(watcher.Messages().empty());

        closeBox ? static_cast<void>(screen->close()) : Find<QToolButton>(screen, "Exit")->click();
        if (closeBox) screens().Close(ScreenId::Frm_Titles);
        Settle();
        EXPECT_TRUE(screens().HasEnded());
        EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_OpenFile));
        EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_ViewFile));
    }
}

// A press that opens a modal window is answered before the window opens: a screen
// reader waits for that answer. The window opens at the next turn of the event loop.
TEST_F(OpenFileTest, AboutAndHelpOpenOnceThePressIsAnswered)
{
    for (auto [button, id] : {std::pair{"About", ScreenId::Frm_About}, {"Help", ScreenId::Frm_HelpInfo}}) {
        test::WhenShown answer(id, [](QWidget* window) { Press(window, "CmdOK"); });
        Find<QToolButton>(Open(), button)->click();
        EXPECT_FALSE(answer.Done()) << button << ": the press waited for its window";
        QCoreApplication::sendPostedEvents();
        EXPECT_TRUE(answer.Done()) << button;
    }
}

// The close box unloads the screen but keeps its chosen action; closing it from the
// program forgets it. The "File" key then previews or loads accordingly.
TEST_F(OpenFileTest, CloseBoxKeepsTheChosenAction)
{
    for (bool closeBox : {true, false}) {
        Fresh();
        screens().Get(ScreenId::Frm_Titles);  // keeps the program alive meanwhile
        Frm_OpenFile* screen = Open();
        {
            ModalWatcher watcher;
            watcher.CancelFileDialog();
            Press(screen, "CmdViewFile");
        }
        closeBox ? static_cast<void>(screen->close()) : screens().Close(ScreenId::Frm_OpenFile);
        Settle();
        EXPECT_FALSE(screens().HasEnded());

        Frm_OpenFile* again = Open();
        d.NumTitleLines = 0;
        ModalWatcher watcher;
        watcher.ChooseFile(WriteFile("cone.dat", ConeFile(0, 4)));
        again->Toolbar1_ButtonClick("File");
        EXPECT_EQ(screens().IsLoaded(ScreenId::Frm_ViewFile), closeBox);
        EXPECT_EQ(d.NumLines, closeBox ? 0 : 4);
        EXPECT_EQ(watcher.Messages().size(), closeBox ? 0u : 1u);
    }
}

}  // namespace
}  // namespace pemlo
