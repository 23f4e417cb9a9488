// The plots of the result views on the chart model: which interval lands on which
// point, the one-interval-short depth axis, and how each plot ends on a grid of one
// interval.
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "IntervalRecord.h"
#include "support/ErrorOf.h"
#include "views/chart/ChartSurface.h"
#include "views/IndexPlots.h"
#include "views/Module_ConePlots.h"

namespace pemlo {
namespace {

// Every line chart of the two result views holds interval p + 1 at point p, against
// its depth, with the depth axis from the first interval down to the second-to-last.
TEST(IntervalPlots, HoldIntervalPPlusOneAtPointP)
{
    Declarations d;
    testing::FillIntervals(d, 50, GraphSI);
    ChartSurface tip, sleeve, ratio, u, v, uv;
    for (Integer k = 0; k < 3; ++k) {
        Integer index = k;
        ConePlot(d, index, *std::array{&tip, &sleeve, &ratio}[static_cast<std::size_t>(k)]);
    }
    EXPECT_EQ(d.PlotIndex, 50);
    PlotIndexCharts(d, u, v, uv);
    const struct {
        const ChartSurface& chart;
        std::size_t series;
        const IntervalArray Declarations::*xs;
    } cases[] = {{tip, 0, &Declarations::IntQTip}, {sleeve, 0, &Declarations::IntQSleeve}, {ratio, 0, &Declarations::IntRatio},
                 {u, 0, &Declarations::IntU},       {v, 0, &Declarations::IntV},          {uv, 0, &Declarations::IntU},
                 {uv, 1, &Declarations::IntV}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const ChartSurface::Series& s = c.chart.SeriesList().at(c.series);
        ASSERT_EQ(s.values.size(), 50u);
        for (int p = 0; p < 50; ++p) {
            EXPECT_EQ(s.values[p], static_cast<double>(d.IntDepth[p + 1])) << "point " << p;
            EXPECT_EQ(s.xs[p], static_cast<double>((d.*c.xs)[p + 1])) << "point " << p;
        }
        EXPECT_EQ(c.chart.AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
        EXPECT_EQ(c.chart.AxisOf(ValueAxis).min, static_cast<double>(d.IntDepth[49]));
        EXPECT_EQ(c.chart.RefreshCount(), 1);
    }
    EXPECT_FALSE(tip.IsOpen(Values));
    EXPECT_TRUE(uv.HasXValues()) << "the index charts' x positions stay in force";
}

// With one interval a depth axis minimum would be read at interval 0: the results
// view's plots end there silently, after their points and the axis maximum, with the
// data left open (its soil plot too: ResultViews); the U and V view lets the index
// error through.
TEST(OneIntervalPlots, EndAfterTheirPointsAndTheAxisMax)
{
    Declarations d;
    testing::FillIntervals(d, 1, GraphSI);
    const struct {
        const char* plot;
        std::function<void(ChartSurface&)> run;
        bool raises;
    } cases[] = {
        {"tip", [&](ChartSurface& c) { Integer k = 0; ConePlot(d, k, c); }, false},
        {"U", [&](ChartSurface& c) { ChartSurface v, uv; PlotIndexCharts(d, c, v, uv); }, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.plot);
        ChartSurface chart;
        EXPECT_EQ(test::ErrorOf([&] { c.run(chart); }), c.raises ? ErrSubscriptOutOfRange : 0);
        EXPECT_FALSE(chart.SeriesList().at(0).values.empty());
        EXPECT_EQ(chart.AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
        EXPECT_FALSE(chart.AxisOf(ValueAxis).min.has_value());
        EXPECT_EQ(chart.RefreshCount(), 0);
        EXPECT_TRUE(chart.IsOpen(Values)) << "the data is not ended after a failure";
    }
}

}  // namespace
}  // namespace pemlo
