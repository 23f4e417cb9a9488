// The CPT data screen after it loads: cleaned readings, depth axes and points on the
// chart models.
#include <gtest/gtest.h>

#include <QToolBar>
#include <optional>

#include "support/ScreenFixture.h"
#include "runtime/ui/MousePointer.h"
#include "views/chart/ChartRender.h"
#include "views/Frm_CPTData.h"

namespace pemlo {
namespace {

class CPTDataScreen : public test::ScreenFixture {
protected:
    static void Load(const std::vector<std::array<float, 3>>& readings) { Readings(readings, DataSI, GraphSI); }
    static std::vector<std::array<float, 3>> Even(int n)
    {
        std::vector<std::array<float, 3>> r;
        for (int i = 1; i <= n; ++i) r.push_back({0.1f * static_cast<float>(i), 2.0f + 0.01f * i, 0.05f});
        return r;
    }
    static Frm_CPTData* Screen() { return Screens::Instance().GetAs<Frm_CPTData>(ScreenId::Frm_CPTData); }
};

// The screen plots the readings as the cleaning leaves them (the cleaning's own rules:
// OracleComparison): a qc of 0 shows as 1.0, the ratio as fs x 100 over it.
TEST_F(CPTDataScreen, PlotsTheCleanedReadingsAgainstDepth)
{
    Load({{0.5f, 0.0f, 0.125f}, {1.0f, 4.0f, 0.1f}});
    Frm_CPTData* screen = Screen();
    const auto& tip = screen->ChartFX1()->Surface().SeriesList()[0];
    const auto& ratio = screen->ChartFX3()->Surface().SeriesList()[0];
    EXPECT_EQ(tip.xs[0], 1.0);
    EXPECT_EQ(ratio.xs[0], 12.5);
    EXPECT_EQ(screen->ChartFX2()->Surface().SeriesList()[0].xs[1], static_cast<double>(0.1f));
    EXPECT_EQ(ratio.values[1], 1.0) << "depth is the value";
}

// The depth axis ends one reading short of the deepest, depth growing downward. With
// one reading its minimum would be read at index 0: each plot ends there, with its
// point and axis max and nothing after, and the next plot still runs. The charts'
// toolbars are their design and show either way.
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
            screen->show();
            EXPECT_TRUE(view->Tools()->isVisible());
        }
        EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
    }
}

}  // namespace
}  // namespace pemlo
