// The whole road a user walks, on the real screens: splash, open file, load, project
// information, (cone factors,) CPT data, the two result views, Back and Exit. Each
// screen is tested on its own elsewhere; these catch the seams between them.
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <cmath>

#include "input/EntryScreensFixture.h"
#include "support/ModalWatcher.h"
#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

using test::ModalWatcher;
using test::WhenShown;

// Ten title lines, then readings every 0.05 down to 6.0 with a sand layer over clay.
std::string Sounding()
{
    std::string text;
    for (int i = 0; i < 10; ++i) text += "title " + std::to_string(i) + "\r\n";
    for (int k = 1; k <= 120; ++k) {
        const double depth = 0.05 * k;
        const double qc = depth < 3.0 ? 12.0 : 0.5;
        const double fs = depth < 3.0 ? 0.05 : 0.03;
        text += std::to_string(depth) + "," + std::to_string(qc) + "," + std::to_string(fs) + "\r\n";
    }
    return text;
}

class ProgramFlow : public test::ScreenFixture {
protected:
    QWidget* Screen(ScreenId id) { return screens().Get(id); }
    bool Visible(ScreenId id) { return screens().IsLoaded(id) && screens().Get(id)->isVisible(); }

    void Press(ScreenId id, const char* key)
    {
        QToolButton* button = Find<QToolButton>(Screen(id), key);
        ASSERT_NE(button, nullptr);
        button->click();
        Settle();
    }

    // Splash, then the open-file screen with the given data units, loaded with a file.
    void StartAndLoad(const char* unitsOption)
    {
        screens().Show(ScreenId::Frm_Splash);
        QTest::mouseClick(Screen(ScreenId::Frm_Splash), Qt::LeftButton, {}, QPoint(2, 2));
        Settle();
        ASSERT_TRUE(Visible(ScreenId::Frm_OpenFile));

        QWidget* open = Screen(ScreenId::Frm_OpenFile);
        Find<QRadioButton>(open, unitsOption)->click();
        ModalWatcher watcher;
        watcher.ChooseFile(WriteFile("s1.txt", Sounding()));
        Find<QPushButton>(open, "CmdOpenFile")->click();
        ASSERT_EQ(watcher.Messages().size(), 1u);
        EXPECT_EQ(watcher.Messages()[0].title, " Data Import from Text File");
        EXPECT_TRUE(watcher.Messages()[0].text.endsWith(" Total Number of Lines = 120"));

        Find<QPushButton>(open, "CmdPlot")->click();
        Settle();
        ASSERT_TRUE(Visible(ScreenId::Frm_Titles));
        Find<QLineEdit>(Screen(ScreenId::Frm_Titles), "TxtInfo_2")->setText("Quay wall");
    }

    void ExpectProbabilitiesSumTo100()
    {
        const Declarations& d = TheRecord();
        ASSERT_GE(d.NumIntervals, 2);
        for (int i = 1; i <= d.NumIntervals; ++i) {
            EXPECT_NEAR(d.IntProb1[i] + d.IntProb2[i] + d.IntProb3[i], 100.0, 1e-4) << "interval " << i;
        }
    }
};

TEST_F(ProgramFlow, SIDataFromTheSplashThroughBothViewsToExit)
{
    ASSERT_NO_FATAL_FAILURE(StartAndLoad("Opt_Units_2"));
    Find<QPushButton>(Screen(ScreenId::Frm_Titles), "CmdOK")->click();
    Settle();

    EXPECT_TRUE(Visible(ScreenId::Frm_CPTData));
    EXPECT_TRUE(Visible(ScreenId::Frm_Titles)) << "stays visible behind the plots";
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_OpenFile));
    EXPECT_EQ(TheRecord().ProjectTitle, "Quay wall");
    EXPECT_EQ(TheRecord().DataUnits, DataSI);
    EXPECT_TRUE(Screen(ScreenId::Frm_CPTData)->windowTitle().startsWith("CPT Data -  File:  "));

    Press(ScreenId::Frm_CPTData, "Next");
    ASSERT_TRUE(Visible(ScreenId::Frm_Pemlo01));
    EXPECT_EQ(TheRecord().NumIntervals, 59);  // 6.0 m / 0.1 m, stored slightly above a tenth
    ExpectProbabilitiesSumTo100();
    EXPECT_GT(TheRecord().IntProb1[20], 50.0f) << "the sand layer reads as sand";
    EXPECT_GT(TheRecord().IntProb3[50], 50.0f) << "the clay layer reads as clay";

    Press(ScreenId::Frm_Pemlo01, "Back");
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_Pemlo01));
    EXPECT_TRUE(Visible(ScreenId::Frm_CPTData));

    Press(ScreenId::Frm_CPTData, "Next2");
    ASSERT_TRUE(Visible(ScreenId::Frm_UandV));
    ExpectProbabilitiesSumTo100();
    Press(ScreenId::Frm_UandV, "Back");
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_UandV));

    Press(ScreenId::Frm_CPTData, "Exit");
    EXPECT_TRUE(screens().HasEnded());
    for (int id = 0; id < ScreenCount; ++id) {
        EXPECT_FALSE(screens().IsLoaded(static_cast<ScreenId>(id))) << ScreenName(static_cast<ScreenId>(id)).toStdString();
    }
}

TEST_F(ProgramFlow, MilliVoltDataGoThroughTheConeFactorsAndBackRevealsTheTitles)
{
    ASSERT_NO_FATAL_FAILURE(StartAndLoad("Opt_Units_0"));
    EXPECT_EQ(TheRecord().GraphUnits, GraphEnglish) << "millivolts leave the graph units alone";

    WhenShown continueOnFactors(ScreenId::Frm_ConeFactors, [](QWidget* factors) {
        factors->findChild<QPushButton*>(QStringLiteral("CmdNext"))->click();
    });
    Find<QPushButton>(Screen(ScreenId::Frm_Titles), "CmdOK")->click();
    Settle();

    ASSERT_TRUE(continueOnFactors.Done());
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_ConeFactors));
    EXPECT_TRUE(Visible(ScreenId::Frm_CPTData));
    EXPECT_TRUE(screens().IsLoaded(ScreenId::Frm_Titles));
    EXPECT_FALSE(Visible(ScreenId::Frm_Titles)) << "hidden by Continue";
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_OpenFile));
    // 0.05 m at 50 MPa/mV for 12 mV of tip: feet and tons per square foot.
    EXPECT_EQ(TheRecord().DataUnits, DataEnglish);
    EXPECT_NEAR(TheRecord().Depth[1], 0.05 * 3.28084, 1e-6);
    EXPECT_NEAR(TheRecord().Q_Tip[1], 12.0 * 50 / 0.09576, 1e-2);

    Press(ScreenId::Frm_CPTData, "Back");
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_CPTData));
    EXPECT_TRUE(Visible(ScreenId::Frm_Titles));

    // A second OK converts nothing: the readings already are in the graph units.
    const float depthBefore = TheRecord().Depth[1];
    Find<QPushButton>(Screen(ScreenId::Frm_Titles), "CmdOK")->click();
    Settle();
    EXPECT_TRUE(Visible(ScreenId::Frm_CPTData));
    EXPECT_EQ(TheRecord().Depth[1], depthBefore);
}

TEST_F(ProgramFlow, CancelAfterOkBuildsAFreshOpenFileScreenAndKeepsTheGraphUnits)
{
    ASSERT_NO_FATAL_FAILURE(StartAndLoad("Opt_Units_2"));
    Find<QPushButton>(Screen(ScreenId::Frm_Titles), "CmdOK")->click();
    Settle();
    Press(ScreenId::Frm_CPTData, "Back");

    TheRecord().NumTitleLines = 3;
    Find<QPushButton>(Screen(ScreenId::Frm_Titles), "CmdCancel")->click();
    Settle();

    ASSERT_TRUE(Visible(ScreenId::Frm_OpenFile));
    EXPECT_FALSE(screens().IsLoaded(ScreenId::Frm_Titles));
    EXPECT_EQ(TheRecord().NumTitleLines, 10);
    EXPECT_EQ(TheRecord().DataUnits, DataEnglish);
    EXPECT_EQ(TheRecord().GraphUnits, GraphSI);
    EXPECT_TRUE(Find<QRadioButton>(Screen(ScreenId::Frm_OpenFile), "Opt_Units_1")->isChecked());
    EXPECT_EQ(TheRecord().NumLines, 120) << "the readings stay loaded";
}

}  // namespace
}  // namespace pemlo
