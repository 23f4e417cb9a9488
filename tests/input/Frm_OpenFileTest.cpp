// The open-file screen as a user drives it: its design defaults, the units logic,
// the title lines, loading through the real file dialog with the messages word for
// word, the load that never ends, the close box and Exit.
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "input/Frm_OpenFile.h"
#include "input/Frm_ViewFile.h"
#include "support/ModalWatcher.h"
#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

using test::ModalWatcher;

std::string ConeFile(int titleLines, int readings, const std::string& separator = ",")
{
    std::string text;
    for (int i = 0; i < titleLines; ++i) {
        text += "Title line " + std::to_string(i + 1) + "\r\n";
    }
    for (int i = 1; i <= readings; ++i) {
        text += std::to_string(i * 0.1).substr(0, 5) + separator + "12.3" + separator + "0.4\r\n";
    }
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
        Find<QPushButton>(screen, "CmdOpenFile")->click();
    }
    Declarations& d = TheRecord();
};

TEST_F(OpenFileTest, LoadStepSetsTheDesignDefaults)
{
    d.GraphUnits = GraphSI;  // not the screen's to reset
    Frm_OpenFile* screen = Open();
    EXPECT_EQ(screen->objectName(), "Frm_OpenFile");
    EXPECT_EQ(screen->windowTitle(), "Open Cone Data File");
    EXPECT_EQ(d.NumTitleLines, 10);
    EXPECT_EQ(d.DataUnits, DataEnglish);
    EXPECT_EQ(d.GraphUnits, GraphSI);
    EXPECT_EQ(screen->minimumSize().width(), 507);  // 7600 twips

    auto* titles = Find<QComboBox>(screen, "CombTitleLines");
    ASSERT_EQ(titles->count(), 16);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(titles->itemText(i), QString::number(i));
    }
    EXPECT_EQ(titles->currentText(), "10");
    EXPECT_FALSE(Find<QPushButton>(screen, "CmdPlot")->isEnabled());

    struct Caption {
        const char* name;
        QString text;
        bool checked;
    } const captions[] = {
        {"Opt_Units_0", "m-MilliVolts", false},     {"Opt_Units_1", "English Units ", true},
        {"Opt_Units_2", "SI Units ", false},        {"Opt_GraphUnits_0", "English Units", true},
        {"Opt_GraphUnits_1", "SI Units", false},
    };
    for (const Caption& c : captions) {
        auto* option = Find<QRadioButton>(screen, c.name);
        EXPECT_EQ(option->text(), c.text) << c.name;
        EXPECT_EQ(option->isChecked(), c.checked) << c.name;
    }
    for (auto [name, text] : {std::pair{"CmdViewFile", "View Data File"}, {"CmdOpenFile", "Load Data File"},
                              {"CmdPlot", "Plot Cone Data"}}) {
        EXPECT_EQ(Find<QPushButton>(screen, name)->text(), text);
    }
    EXPECT_EQ(Find<QLabel>(screen, "lblVersion")->text(), "Version 3.0");

    struct Tool {
        const char* key;
        QString caption;
        QString tooltip;
    } const tools[] = {{"Exit", "Exit", "Exit the Program"}, {"About", "  About", "About the Program"}, {"Help", "Help", ""}};
    for (const Tool& t : tools) {
        auto* button = Find<QToolButton>(screen, t.key);
        EXPECT_EQ(button->text(), t.caption);
        EXPECT_EQ(button->toolTip(), t.tooltip);
    }
}

// English and SI data bring the graph units with them; millivolts leave them alone.
TEST_F(OpenFileTest, UnitsCarryTheGraphUnitsExceptForMillivolts)
{
    struct Case {
        std::vector<const char*> clicks;
        Integer dataUnits;
        Integer graphUnits;
    } const cases[] = {
        {{"Opt_Units_2"}, DataSI, GraphSI},
        {{"Opt_Units_2", "Opt_Units_0"}, DataMilliVolts, GraphSI},
        {{"Opt_Units_0"}, DataMilliVolts, GraphEnglish},
        {{"Opt_Units_2", "Opt_Units_1"}, DataEnglish, GraphEnglish},
        {{"Opt_Units_0", "Opt_GraphUnits_1"}, DataMilliVolts, GraphSI},
        {{"Opt_Units_2", "Opt_GraphUnits_0"}, DataSI, GraphEnglish},
    };
    for (const Case& c : cases) {
        Fresh();
        Frm_OpenFile* screen = Open();
        for (const char* name : c.clicks) {
            Find<QRadioButton>(screen, name)->click();
        }
        EXPECT_EQ(d.DataUnits, c.dataUnits) << c.clicks.back();
        EXPECT_EQ(d.GraphUnits, c.graphUnits) << c.clicks.back();
        const char* shown = c.graphUnits == GraphSI ? "Opt_GraphUnits_1" : "Opt_GraphUnits_0";
        EXPECT_TRUE(Find<QRadioButton>(screen, shown)->isChecked()) << c.clicks.back();
    }
}

TEST_F(OpenFileTest, ChosenTitleLinesAreStored)
{
    Frm_OpenFile* screen = Open();
    auto* titles = Find<QComboBox>(screen, "CombTitleLines");
    struct Case {
        Qt::Key key;
        Integer expected;
    } const cases[] = {{Qt::Key_Down, 11}, {Qt::Key_Home, 0}, {Qt::Key_End, 15}, {Qt::Key_Up, 14}};
    for (const Case& c : cases) {
        QTest::keyClick(titles, c.key);
        EXPECT_EQ(d.NumTitleLines, c.expected);
    }
}

TEST_F(OpenFileTest, SuccessfulLoadReportsTheLinesAndEnablesPlotting)
{
    struct Case {
        int titleLines;
        int readings;
    } const cases[] = {{10, 250}, {0, 3}, {15, 4000}};
    for (const Case& c : cases) {
        Fresh();
        Frm_OpenFile* screen = Open();
        Find<QComboBox>(screen, "CombTitleLines")->setCurrentIndex(c.titleLines);
        d.NumTitleLines = static_cast<Integer>(c.titleLines);
        const QString path = WriteFile("cone.txt", ConeFile(c.titleLines, c.readings));
        ModalWatcher watcher;
        Load(screen, watcher, path);

        ASSERT_EQ(watcher.Messages().size(), 1u);
        EXPECT_EQ(watcher.Messages()[0].title, " Data Import from Text File");
        EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Information);
        EXPECT_EQ(watcher.Messages()[0].text, "Cone Data File: " + path + "\r\n" + " was successfully opened. " +
                                                  "\r\n" + " Total Number of Lines = " + QString::number(c.readings));
        EXPECT_EQ(d.NumLines, c.readings);
        EXPECT_FLOAT_EQ(d.Q_Tip[c.readings], 12.3f);
        EXPECT_EQ(d.FileReadError, VbFalse);
        EXPECT_EQ(d.DataFileName, path.toStdString());
        auto* plot = Find<QPushButton>(screen, "CmdPlot");
        EXPECT_TRUE(plot->isEnabled());
        EXPECT_EQ(screen->focusWidget(), plot);
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
    }
}

// Whatever goes wrong, "Plot Cone Data" keeps the state it had.
TEST_F(OpenFileTest, FailedOrAbandonedLoadsLeavePlottingAsItWas)
{
    struct Case {
        const char* what;
        std::string file;  // empty: the dialog is cancelled
        bool message;      // "Could not read data from file"
    } const cases[] = {
        {"seven columns", "t\r\n1.0   2.0   3.0\r\n", true},
        {"4001 readings", ConeFile(1, 4001), true},
        {"not a number", "t\r\n1.0,abc,3.0\r\n", true},
        {"only title lines", "t\r\n", false},
        {"cancelled", "", false},
    };
    for (bool loadedBefore : {false, true}) {
        for (const Case& c : cases) {
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
                ASSERT_EQ(watcher.Messages().size(), 1u) << c.what;
                EXPECT_EQ(watcher.Messages()[0].text, "Could not read data from file");
                EXPECT_EQ(watcher.Messages()[0].title, "Open File Error");
                EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Critical);
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
// the load never completes, yet the handler returned and Exit still ends the program.
TEST_F(OpenFileTest, LoadThatNeverEndsKeepsTheHourglassButExitStillWorks)
{
    enum class End { Exit, CloseBox };
    for (End end : {End::Exit, End::CloseBox}) {
        Fresh();
        Frm_OpenFile* screen = Open();
        d.NumTitleLines = 1;
        ModalWatcher watcher;
        Load(screen, watcher, WriteFile("single.txt", "title\r\n1.5\r\n2.5\r\n"));
        EXPECT_TRUE(watcher.Messages().empty());
        EXPECT_TRUE(screen->IsWaitingForever());
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Hourglass);
        EXPECT_FALSE(Find<QPushButton>(screen, "CmdPlot")->isEnabled());
        EXPECT_EQ(d.NumLines, 0);

        if (end == End::Exit) {
            Find<QToolButton>(screen, "Exit")->click();
        } else {
            screen->close();
        }
        Settle();
        EXPECT_TRUE(screens().HasEnded());
        EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_OpenFile));
    }
}

// The close box unloads the screen but keeps its chosen action; closing it from the
// program forgets it. The "File" key then previews or loads accordingly.
TEST_F(OpenFileTest, CloseBoxKeepsTheChosenAction)
{
    struct Case {
        bool closeBox;
        int actionAfter;
        bool previewAfterFileKey;
    } const cases[] = {{true, 1, true}, {false, 0, false}};
    for (const Case& c : cases) {
        Fresh();
        screens().Get(ScreenId::Frm_Titles);  // keeps the program alive meanwhile
        Frm_OpenFile* screen = Open();
        {
            ModalWatcher watcher;
            watcher.CancelFileDialog();
            Find<QPushButton>(screen, "CmdViewFile")->click();
        }
        EXPECT_EQ(screen->ChosenAction(), 1);
        c.closeBox ? static_cast<void>(screen->close()) : screens().Close(ScreenId::Frm_OpenFile);
        Settle();
        EXPECT_FALSE(screens().HasEnded());

        Frm_OpenFile* again = Open();
        EXPECT_NE(Find<QComboBox>(again, "CombTitleLines"), nullptr);
        EXPECT_EQ(again->ChosenAction(), c.actionAfter);
        d.NumTitleLines = 0;
        const QString path = WriteFile("cone.dat", ConeFile(0, 4));
        ModalWatcher watcher;
        watcher.ChooseFile(path);
        again->Toolbar1_ButtonClick("File");
        EXPECT_EQ(screens().IsLoaded(ScreenId::Frm_ViewFile), c.previewAfterFileKey);
        EXPECT_EQ(d.NumLines, c.previewAfterFileKey ? 0 : 4);
        EXPECT_EQ(watcher.Messages().size(), c.previewAfterFileKey ? 0u : 1u);
    }
}

TEST_F(OpenFileTest, ExitEndsTheProgramEvenWithAPreviewOpen)
{
    Frm_OpenFile* screen = Open();
    ModalWatcher watcher;
    watcher.ChooseFile(WriteFile("cone.txt", ConeFile(10, 3)));
    Find<QPushButton>(screen, "CmdViewFile")->click();
    ASSERT_TRUE(screens().IsLoaded(ScreenId::Frm_ViewFile));
    Find<QToolButton>(screen, "Exit")->click();
    EXPECT_TRUE(screens().HasEnded());
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_ViewFile));
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_OpenFile));
    EXPECT_TRUE(watcher.Messages().empty());
}

TEST_F(OpenFileTest, PlotShowsTheProjectScreenAndKeepsThisOneLoaded)
{
    Frm_OpenFile* screen = Open();
    d.NumTitleLines = 0;
    ModalWatcher watcher;
    Load(screen, watcher, WriteFile("cone.txt", ConeFile(0, 5)));
    Find<QPushButton>(screen, "CmdPlot")->click();
    EXPECT_TRUE(screens().IsLoaded(ScreenId::Frm_Titles));
    EXPECT_TRUE(screens().Get(ScreenId::Frm_Titles)->isVisible());
    EXPECT_TRUE(screens().IsLoaded(ScreenId::Frm_OpenFile));
}

// About and Help block the screen until their OK; each opening is a fresh window.
TEST_F(OpenFileTest, AboutAndHelpAreModalUntilTheirOk)
{
    Frm_OpenFile* screen = Open();
    for (auto [key, id] : {std::pair{"About", ScreenId::Frm_About}, {"Help", ScreenId::Frm_HelpInfo},
                           {"About", ScreenId::Frm_About}}) {
        bool modalWhileOpen = false;
        QTimer::singleShot(0, [&, id = id] {
            QWidget* window = screens().Get(id);
            modalWhileOpen = window->isVisible() && QApplication::activeModalWidget() == window;
            Find<QPushButton>(window, "CmdOK")->click();
        });
        Find<QToolButton>(screen, key)->click();
        EXPECT_TRUE(modalWhileOpen) << key;
        EXPECT_FALSE(screens().IsLoaded(id)) << key;
        EXPECT_TRUE(screens().IsLoaded(ScreenId::Frm_OpenFile));
    }
}

TEST_F(OpenFileTest, UnknownToolbarKeysDoNothing)
{
    Frm_OpenFile* screen = Open();
    for (const char* key : {"exit", "Exit ", "Back", "", "file"}) {
        ModalWatcher watcher;
        screen->Toolbar1_ButtonClick(key);
        EXPECT_FALSE(screens().HasEnded()) << key;
        EXPECT_TRUE(watcher.FileDialogs().empty()) << key;
    }
}

}  // namespace
}  // namespace pemlo
