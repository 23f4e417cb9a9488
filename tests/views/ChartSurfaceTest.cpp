// The chart model's calling-order rules, which the plotting screens rely on.
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "runtime/RunTimeError.h"
#include "views/ChartSurface.h"

namespace pemlo {
namespace {

int ErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const RunTimeError& e) {
        return e.Number();
    }
    return 0;
}

TEST(ChartSurface, BeginDataDiscardsPointsButKeepsSettings)
{
    ChartSurface chart;
    chart.SetSeriesStyle(2, 1);   // styled before any block is open, as the soil chart does
    chart.SetTitle(2, QStringLiteral(" Probability of Soil Types"));
    chart.SetTitleColor(2, 0xFF0000);
    chart.SetPlotSettingB(20);
    chart.SetAxisMin(ValueAxis, 0);
    chart.SetAxisMax(ValueAxis, 100);
    chart.BeginData(Values, 3, 4);
    chart.BeginData(XValues, 3, 4);
    chart.SetValue(1, 3, 42.0);
    chart.SetXValue(1, 3, 7.5);

    chart.BeginData(Values, 3, 2);
    ASSERT_EQ(chart.PointCount(), 2);
    for (Integer s = 0; s < 3; ++s) {
        EXPECT_EQ(chart.SeriesList()[s].values, std::vector<double>(2, 0.0)) << "series " << s;
        EXPECT_EQ(chart.SeriesList()[s].xs, std::vector<double>(2, 0.0)) << "series " << s;
    }
    EXPECT_FALSE(chart.HasXValues());
    EXPECT_EQ(chart.SeriesList()[2].style, 1);
    EXPECT_EQ(chart.Title(2), QStringLiteral(" Probability of Soil Types"));
    EXPECT_EQ(chart.TitleColor(2), 0xFF0000);
    EXPECT_EQ(chart.PlotSetting('B'), 20);
    EXPECT_EQ(chart.AxisOf(ValueAxis).min, 0.0);
    EXPECT_EQ(chart.AxisOf(ValueAxis).max, 100.0);
}

// The screens' traps end a plot at the first write outside the block it opened.
TEST(ChartSurface, PointsOutsideTheOpenBlockRaiseSubscriptOutOfRange)
{
    struct Case {
        Integer series, point;
        int error;
    };
    const Case cases[] = {
        {0, 0, 0}, {1, 2, 0}, {2, 0, 9}, {0, 3, 9}, {-1, 0, 9}, {0, -1, 9},
    };
    for (const Case& c : cases) {
        ChartSurface chart;
        chart.BeginData(Values, 2, 3);
        chart.BeginData(XValues, 2, 3);
        EXPECT_EQ(ErrorOf([&] { chart.SetValue(c.series, c.point, 1.0); }), c.error)
            << "SetValue " << c.series << "," << c.point;
        EXPECT_EQ(ErrorOf([&] { chart.SetXValue(c.series, c.point, 1.0); }), c.error)
            << "SetXValue " << c.series << "," << c.point;
    }
    ChartSurface never;
    EXPECT_EQ(ErrorOf([&] { never.SetValue(0, 0, 1.0); }), 9) << "no block opened at all";
}

TEST(ChartSurface, EndDataOfAKindNotOpenChangesNothing)
{
    ChartSurface chart;
    chart.BeginData(Values, 1, 2);
    chart.BeginData(XValues, 1, 2);
    chart.SetXValue(0, 0, 3.0);
    chart.SetXValue(0, 1, 4.0);
    chart.EndData(Values);
    const unsigned before = chart.Revision();
    chart.EndData(XValuesClosedByFive);
    chart.EndData(Values);   // already closed
    EXPECT_EQ(chart.Revision(), before);
    EXPECT_TRUE(chart.IsOpen(XValues));
    EXPECT_TRUE(chart.HasXValues());
    EXPECT_EQ(chart.SeriesList()[0].xs, (std::vector<double>{3.0, 4.0}));
    chart.EndData(XValues);
    EXPECT_FALSE(chart.IsOpen(XValues));
    EXPECT_EQ(chart.SeriesList()[0].xs, (std::vector<double>{3.0, 4.0}));
}

TEST(ChartSurface, RefreshSignalsTheWidgetEveryTime)
{
    ChartSurface chart;
    QSignalSpy spy(&chart, &ChartSurface::Changed);
    chart.BeginData(Values, 1, 1);
    chart.SetValue(0, 0, 1.0);
    EXPECT_EQ(spy.count(), 0) << "only Refresh redraws";
    chart.Refresh();
    chart.Refresh();
    EXPECT_EQ(spy.count(), 2);
    EXPECT_EQ(chart.RefreshCount(), 2);
}

TEST(ChartSurface, SeriesColourFallsBackToDesignThenCaption)
{
    ChartSurface chart;
    chart.BeginData(Values, 2, 1);
    chart.SetTitleColor(2, 0x00FF00);
    EXPECT_EQ(chart.DrawnSeriesColor(0), 0x00FF00) << "a one-line chart is drawn in its caption's colour";
    chart.SetDesignSeriesColors({0x99FFFF, 0x808066});
    EXPECT_EQ(chart.DrawnSeriesColor(1), 0x808066);
    chart.SetSeriesColor(1, 0x0000FF);
    EXPECT_EQ(chart.DrawnSeriesColor(1), 0x0000FF);
}

}  // namespace
}  // namespace pemlo
