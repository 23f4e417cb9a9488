// The CPT data screen after it loads: cleaned readings, captions, depth axes and
// points on the chart models, the charts as drawn, and the toolbar's commands.
#include <QLineEdit>
#include <QMenu>
#include <QPrinter>
#include <QToolBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QFileInfo>
#include <gtest/gtest.h>

#include "ChartImage.h"
#include "core/Screens.h"
#include "runtime/MousePointer.h"
#include "runtime/Printer.h"
#include "runtime/RunTimeError.h"
#include "views/ChartRender.h"
#include "views/Frm_CPTData.h"

namespace pemlo {
namespace {

struct Reading {
    float depth, qc, fs;
};

class CPTDataScreen : public ::testing::Test {
protected:
    void SetUp() override
    {
        ResetRecord();
        Screens& screens = Screens::Instance();
        screens.Reset();
        RegisterFrm_CPTData();
        // The neighbours are plain windows here: only the transitions are watched.
        for (ScreenId id : {ScreenId::Frm_Titles, ScreenId::Frm_Pemlo01, ScreenId::Frm_UandV})
            screens.Register(id, [id] {
                auto* w = new QWidget;
                w->setObjectName(ScreenName(id));
                return w;
            });
    }
    void TearDown() override
    {
        SetPrinterFactory({});
        Screens::Instance().Reset();
    }

    static void Load(const std::vector<Reading>& readings, Integer graphUnits = GraphSI)
    {
        Declarations& d = TheRecord();
        d.GraphUnits = graphUnits;
        d.NumLines = static_cast<Integer>(readings.size());
        for (size_t i = 0; i < readings.size(); ++i) {
            d.Depth[static_cast<int>(i) + 1] = readings[i].depth;
            d.Q_Tip[static_cast<int>(i) + 1] = readings[i].qc;
            d.Q_Sleeve[static_cast<int>(i) + 1] = readings[i].fs;
        }
    }
    static std::vector<Reading> Even(int n)
    {
        std::vector<Reading> r;
        for (int i = 1; i <= n; ++i) r.push_back({0.1f * static_cast<float>(i), 2.0f + 0.01f * i, 0.05f});
        return r;
    }
    static Frm_CPTData* Screen() { return Screens::Instance().GetAs<Frm_CPTData>(ScreenId::Frm_CPTData); }
};

// Each row: a reading as read, and as every chart then shows it.
TEST_F(CPTDataScreen, CleansReadingsAndCapsTheRatio)
{
    struct Case {
        const char* why;
        float qc, fs;
        double qcShown, fsShown, ratio;
    };
    const Case cases[] = {
        {"qc of 0 becomes 1.0, ratio fs x 100", 0.0f, 0.125f, 1.0, 0.125, 12.5},
        {"negative qc and fs", -2.0f, -0.5f, 1.0, 0.0, 0.0},
        {"a ratio of exactly 20 is kept", 5.0f, 1.0f, 5.0, 1.0, 20.0},
        {"20.0001 is held at 20", 1.0f, 0.200001f, 1.0, 0.200001f, 20.0},
        {"ordinary reading", 4.0f, 0.1f, 4.0, 0.1f, static_cast<float>(0.1f * 100.0 / 4.0)},
    };
    std::vector<Reading> readings;
    for (size_t i = 0; i < std::size(cases); ++i)
        readings.push_back({0.5f * static_cast<float>(i + 1), cases[i].qc, cases[i].fs});
    Load(readings);
    Frm_CPTData* screen = Screen();
    const auto& tip = screen->ChartFX1()->Surface().SeriesList()[0];
    const auto& sleeve = screen->ChartFX2()->Surface().SeriesList()[0];
    const auto& ratio = screen->ChartFX3()->Surface().SeriesList()[0];
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(cases[i].why);
        EXPECT_EQ(tip.xs[i], cases[i].qcShown);
        EXPECT_EQ(sleeve.xs[i], cases[i].fsShown);
        EXPECT_FLOAT_EQ(static_cast<float>(ratio.xs[i]), static_cast<float>(cases[i].ratio));
        EXPECT_EQ(TheRecord().Q_Tip[static_cast<int>(i) + 1], static_cast<float>(cases[i].qcShown)) << "cleaned in place";
        for (const auto* s : {&tip, &sleeve, &ratio}) EXPECT_EQ(s->values[i], readings[i].depth) << "depth is the value";
    }
    EXPECT_EQ(screen->ReadingIndex(), static_cast<Integer>(std::size(cases) + 1));
}

TEST_F(CPTDataScreen, CaptionsTitlesAndColoursInBothUnits)
{
    const QString two(QChar(0x00B2));
    struct Case {
        Integer units;
        QString tip, sleeve, depth;
    };
    const Case cases[] = {
        {GraphEnglish, " Tip Resistance (ton/ft" + two + ") ", " Sleeve Resistance (ton/ft" + two + ") ", "Depth (ft)"},
        {GraphSI, " Tip Resistance (MPa)", " Sleeve Resistance (MPa)", "Depth (m)"},
    };
    for (const Case& c : cases) {
        Screens::Instance().Reset();
        TheRecord().DataFileName = "C:\\data\\s1.txt";
        Load(Even(10), c.units);
        Frm_CPTData* screen = Screen();
        const ChartSurface& tip = screen->ChartFX1()->Surface();
        const ChartSurface& sleeve = screen->ChartFX2()->Surface();
        const ChartSurface& ratio = screen->ChartFX3()->Surface();
        EXPECT_EQ(screen->windowTitle(), QStringLiteral("CPT Data -  File:  C:\\data\\s1.txt"));
        EXPECT_EQ(tip.Title(2), c.tip);
        EXPECT_EQ(sleeve.Title(2), c.sleeve);
        EXPECT_EQ(ratio.Title(2), QStringLiteral(" Sleeve/Tip Ratio (%) "));
        EXPECT_EQ(tip.AxisOf(ValueAxis).title, c.depth);
        EXPECT_TRUE(sleeve.AxisOf(ValueAxis).title.isEmpty());
        EXPECT_TRUE(ratio.AxisOf(ValueAxis).title.isEmpty());
        EXPECT_EQ(tip.TitleColor(2), 0xFF0000);
        EXPECT_EQ(sleeve.TitleColor(2), 0x00FF00);
        EXPECT_EQ(ratio.TitleColor(2), 0x0000FF);
        EXPECT_EQ(tip.AxisOf(ValueAxis).fontSize, 10);
        const char expectB[] = {0, 10, 10};
        int k = 0;
        for (const ChartSurface* chart : {&tip, &sleeve, &ratio}) {
            EXPECT_EQ(chart->PlotSetting('A'), 50);
            EXPECT_EQ(chart->PlotSetting('B'), expectB[k++]);
            EXPECT_EQ(chart->PlotSetting('D'), 2);
            EXPECT_EQ(chart->RefreshCount(), 1);
            EXPECT_FALSE(chart->IsOpen(Values));
            EXPECT_FALSE(chart->IsOpen(XValues));
        }
    }
}

// The axis ends one reading short of the deepest, depth growing downward.
TEST_F(CPTDataScreen, DepthAxisRunsFromFirstToSecondToLastReading)
{
    Load(Even(100));
    Frm_CPTData* screen = Screen();
    for (ChartView* view : {screen->ChartFX1(), screen->ChartFX2(), screen->ChartFX3()}) {
        const ChartSurface& chart = view->Surface();
        EXPECT_EQ(chart.AxisOf(ValueAxis).max, static_cast<double>(0.1f));
        EXPECT_EQ(chart.AxisOf(ValueAxis).min, static_cast<double>(0.1f * 99));
        EXPECT_FALSE(chart.AxisOf(XAxis).min || chart.AxisOf(XAxis).max) << "the quantity's axis stays automatic";
        EXPECT_EQ(chart.PointCount(), 100);
        EXPECT_TRUE(RangeOf(chart, ValueAxis).reversed);
    }
    EXPECT_EQ(screen->PointIndex(), 100);
    EXPECT_EQ(TheRecord().NumPoints, 100);
    EXPECT_EQ(TheRecord().NumSeries, 1);
}

// With one reading the minimum would be read at index 0: each plot ends there, with
// its point and axis max, and nothing after; the next plot still runs.
TEST_F(CPTDataScreen, OneReadingLeavesAxisMaxWithoutMinOrRefresh)
{
    Load({{1.5f, 3.0f, 0.03f}});
    Frm_CPTData* screen = Screen();
    for (ChartView* view : {screen->ChartFX1(), screen->ChartFX2(), screen->ChartFX3()}) {
        const ChartSurface& chart = view->Surface();
        EXPECT_EQ(chart.AxisOf(ValueAxis).max, 1.5);
        EXPECT_FALSE(chart.AxisOf(ValueAxis).min);
        EXPECT_EQ(chart.RefreshCount(), 0);
        EXPECT_TRUE(chart.IsOpen(Values));
        ASSERT_EQ(chart.PointCount(), 1);
        EXPECT_EQ(chart.SeriesList()[0].values[0], 1.5);
    }
    EXPECT_EQ(screen->ChartFX3()->Surface().Title(2), QStringLiteral(" Sleeve/Tip Ratio (%) "));
    EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
}

TEST_F(CPTDataScreen, LoadErrorLeavesTheConstructor)
{
    TheRecord().NumLines = 4001;   // the cleaning reaches reading 4001
    try {
        Screen();
        FAIL() << "the load should fail";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrSubscriptOutOfRange);
    }
    EXPECT_FALSE(Screens::Instance().IsLoaded(ScreenId::Frm_CPTData));
}

TEST_F(CPTDataScreen, ProjectBandShowsTheRecord)
{
    Declarations& d = TheRecord();
    d.ProjectNumber = "P-17";
    d.ProjectTitle = "Harbour quay";
    d.ProjectLocation = "Pier 4";
    d.GWT = "1.2 m";
    d.ConeNo = "C-9";
    d.ProjectDate = "2024-05-02 10:00";
    Load(Even(5));
    Frm_CPTData* screen = Screen();
    const std::pair<const char*, std::string> boxes[] = {
        {"TxtProjNum", d.ProjectNumber}, {"TxtTitle", d.ProjectTitle}, {"TxtLocationNo", d.ProjectLocation},
        {"TxtGWT", d.GWT},               {"TxtConeNo", d.ConeNo},      {"TxtDate", d.ProjectDate},
    };
    for (const auto& [name, text] : boxes) {
        auto* box = screen->findChild<QLineEdit*>(QString::fromLatin1(name));
        ASSERT_NE(box, nullptr) << name;
        EXPECT_EQ(box->text().toStdString(), text) << name;
        EXPECT_TRUE(box->font().bold()) << name;
    }
}

// Painted as a user sees it: each chart shows its line in its caption's colour.
TEST_F(CPTDataScreen, ChartsAreDrawnOnScreen)
{
    Load(Even(200));
    Frm_CPTData* screen = Screen();
    screen->show();
    const QColor colours[] = {QColor(0, 0, 255), QColor(0, 255, 0), QColor(255, 0, 0)};
    ChartView* views[] = {screen->ChartFX1(), screen->ChartFX2(), screen->ChartFX3()};
    for (int k = 0; k < 3; ++k) {
        const QImage image = views[k]->ChartImage();
        const auto line = test::ExtentOf(image, colours[k]);
        ASSERT_TRUE(line) << "chart " << k + 1;
        EXPECT_GT(line->bottom - line->top, image.height() / 2) << "chart " << k + 1 << ": the readings span the depth";
        EXPECT_TRUE(views[k]->Tools()->isVisible()) << "the chart's own toolbar shows";
    }
}

TEST_F(CPTDataScreen, ToolbarButtonsAndMenu)
{
    Load(Even(5));
    Frm_CPTData* screen = Screen();
    const std::pair<const char*, const char*> buttons[] = {
        {"Back", "Back      "}, {"Next", "Classify Soil   "}, {"Next2", "Plot U && V"},
        {"Print", "Print All     "}, {"Exit", "Exit           "},
    };
    for (const auto& [key, caption] : buttons) {
        auto* b = screen->findChild<QToolButton*>(QString::fromLatin1(key));
        ASSERT_NE(b, nullptr) << key;
        EXPECT_EQ(b->text(), QString::fromLatin1(caption));
    }
    QMenu* menu = screen->findChild<QToolButton*>(QStringLiteral("Next"))->menu();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions()[1]->text(), QStringLiteral("Robertson & Campanella (19**)"));
    menu->actions()[1]->trigger();
    EXPECT_FALSE(Screens::Instance().IsLoaded(ScreenId::Frm_Pemlo01)) << "menu entries do nothing";
}

TEST_F(CPTDataScreen, CommandsOpenTheViewsAndGoBack)
{
    Load(Even(5));
    Screens& screens = Screens::Instance();
    screens.Get(ScreenId::Frm_Titles)->hide();   // hidden by the cone factors screen
    Frm_CPTData* screen = Screen();
    auto click = [&](const char* key) { screen->findChild<QToolButton*>(QString::fromLatin1(key))->click(); };
    click("Next");
    click("Next2");
    EXPECT_TRUE(screens.IsLoaded(ScreenId::Frm_Pemlo01));
    EXPECT_TRUE(screens.IsLoaded(ScreenId::Frm_UandV));
    QWidget* results = screens.Get(ScreenId::Frm_Pemlo01);
    click("Next");
    EXPECT_EQ(screens.Get(ScreenId::Frm_Pemlo01), results) << "an open view is only brought to the front";
    click("Back");
    EXPECT_FALSE(screens.IsLoaded(ScreenId::Frm_CPTData));
    EXPECT_TRUE(screens.Get(ScreenId::Frm_Titles)->isVisible());
    EXPECT_FALSE(screens.HasEnded());
}

TEST_F(CPTDataScreen, PrintPutsTheThreeChartsOnAPage)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cpt.pdf"));
    SetPrinterFactory([path] { return MakeQtPrinter(MakePdfQPrinter(path, 300, QStringLiteral("Letter"))); });
    Load(Even(50));
    Screen()->findChild<QToolButton*>(QStringLiteral("Print"))->click();
    EXPECT_GT(QFileInfo(path).size(), 5000);
}

}  // namespace
}  // namespace pemlo
