// The chart model's calling-order rules, which the plotting screens rely on.
#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "views/chart/ChartSurface.h"

namespace pemlo {
namespace {

using test::ErrorOf;

TEST(ChartSurface, BeginDataDiscardsPointsButKeepsSettings)
{
    ChartSurface chart;
    chart.SetSeriesStyle(2, 1);   // styled before any block is open, as the soil chart does
    chart.SetTitle(2, QStringLiteral(" Probability of Soil Types"));
    chart.SetPlotSettingB(20);
    chart.SetAxisMax(ValueAxis, 100);
    chart.BeginData(Values, 3, 4);
    chart.BeginData(XValues, 3, 4);
    chart.SetValue(1, 3, 42.0);
    chart.SetXValue(1, 3, 7.5);

    chart.BeginData(Values, 3, 2);
    ASSERT_EQ(chart.PointCount(), 2);
    EXPECT_EQ(chart.SeriesList()[1].values, std::vector<double>(2, 0.0));
    EXPECT_EQ(chart.SeriesList()[1].xs, std::vector<double>(2, 0.0));
    EXPECT_FALSE(chart.HasXValues());
    EXPECT_EQ(chart.SeriesList()[2].style, 1);
    EXPECT_EQ(chart.Title(2), QStringLiteral(" Probability of Soil Types"));
    EXPECT_EQ(chart.PlotSetting('B'), 20);
    EXPECT_EQ(chart.AxisOf(ValueAxis).max, 100.0);
}

// The drawing reads each setting by name: a name reading the wrong code would draw
// markers as wide as lines, a plot shifted, or the printed legend on the wrong side.
TEST(ChartSurface, NamedSettingsReadTheCodesTheScreensSet)
{
    ChartSurface chart;
    chart.SetPlotSettingA(50);
    chart.SetPlotSettingB(20);
    chart.SetPlotSettingC(5);
    chart.SetPlotSettingD(2);
    EXPECT_EQ((std::vector<int>{chart.LeftMargin(), chart.RightMargin(), chart.MarkerSize(), chart.LineWidth()}),
              (std::vector<int>{50, 20, 5, 2}));
    EXPECT_FALSE(chart.PrintedLegendBelow());
    chart.SetPrintOptionB(256);
    EXPECT_TRUE(chart.PrintedLegendBelow());
    chart.SetSeriesStyle(1, 1);
    chart.BeginData(Values, 2, 1);
    EXPECT_FALSE(chart.Stacked()) << "only the first series' style stacks the block";
    chart.SetSeriesStyle(0, 1);
    EXPECT_TRUE(chart.Stacked());
}

// The screens' traps end a plot at the first write outside the block it opened.
TEST(ChartSurface, PointsOutsideTheOpenBlockRaiseSubscriptOutOfRange)
{
    struct Case {
        Integer series, point;
        int error;
    };
    for (const Case& c : {Case{1, 2, 0}, Case{2, 0, 9}, Case{0, 3, 9}, Case{-1, 0, 9}, Case{0, -1, 9}}) {
        ChartSurface chart;
        chart.BeginData(Values, 2, 3);
        chart.BeginData(XValues, 2, 3);
        EXPECT_EQ(ErrorOf([&] { chart.SetValue(c.series, c.point, 1.0); }), c.error) << c.series << "," << c.point;
        EXPECT_EQ(ErrorOf([&] { chart.SetXValue(c.series, c.point, 1.0); }), c.error) << c.series << "," << c.point;
    }
}

}  // namespace
}  // namespace pemlo
