// The CPT data screen after it loads: cleaned readings, captions, depth axes and
// points on the chart models.
#include <gtest/gtest.h>

#include <optional>

#include "core/Screens.h"
#include "runtime/MousePointer.h"
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
        Screens::Instance().Reset();
        RegisterFrm_CPTData();
    }
    void TearDown() override { Screens::Instance().Reset(); }

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
        EXPECT_EQ(screen->windowTitle(), QStringLiteral("CPT Data -  File:  C:\\data\\s1.txt"));
        EXPECT_EQ(tip.Title(2), c.tip);
        EXPECT_EQ(sleeve.Title(2), c.sleeve);
        EXPECT_EQ(screen->ChartFX3()->Surface().Title(2), QStringLiteral(" Sleeve/Tip Ratio (%) "));
        EXPECT_EQ(tip.AxisOf(ValueAxis).title, c.depth);
        EXPECT_TRUE(sleeve.AxisOf(ValueAxis).title.isEmpty()) << "only the first chart names the depth";
        EXPECT_EQ(tip.TitleColor(2), 0xFF0000);
        EXPECT_EQ(sleeve.TitleColor(2), 0x00FF00);
        EXPECT_EQ(screen->ChartFX3()->Surface().TitleColor(2), 0x0000FF);
    }
}

// The depth axis ends one reading short of the deepest, depth growing downward. With
// one reading its minimum would be read at index 0: each plot ends there, with its
// point and axis max and nothing after, and the next plot still runs.
TEST_F(CPTDataScreen, DepthAxisRunsFromFirstToSecondToLastReading)
{
    struct Case {
        int readings;
        std::optional<double> min;
        int refreshes;
    };
    for (const Case& c : {Case{100, 0.1f * 99, 1}, Case{1, std::nullopt, 0}}) {
        SCOPED_TRACE(c.readings);
        Screens::Instance().Reset();
        Load(Even(c.readings));
        Frm_CPTData* screen = Screen();
        for (ChartView* view : {screen->ChartFX1(), screen->ChartFX2(), screen->ChartFX3()}) {
            const ChartSurface& chart = view->Surface();
            EXPECT_EQ(chart.AxisOf(ValueAxis).max, static_cast<double>(0.1f));
            EXPECT_EQ(chart.AxisOf(ValueAxis).min, c.min);
            EXPECT_EQ(chart.PointCount(), c.readings);
            EXPECT_EQ(chart.SeriesList()[0].values.back(), static_cast<double>(0.1f * c.readings));
            EXPECT_EQ(chart.RefreshCount(), c.refreshes);
            EXPECT_EQ(RangeOf(chart, ValueAxis).reversed, c.min.has_value());
        }
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
    }
}

}  // namespace
}  // namespace pemlo
