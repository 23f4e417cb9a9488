// The classification results view and the U and V view: what a load puts on the
// charts of a sounding, and the errors a load lets through.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "IntervalRecord.h"
#include "support/ScreenFixture.h"
#include "support/ErrorOf.h"
#include "views/chart/ChartRender.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"

namespace pemlo {
namespace {

// An SI sounding of readings every 5 cm down to `lastDepth`, with tip resistance
// and friction that vary enough to give every soil type some probability.
void MakeSounding(double lastDepth)
{
    std::vector<std::array<float, 3>> readings;
    for (int k = 1; k <= std::lround(lastDepth / 0.05); ++k)
        readings.push_back({static_cast<float>(0.05 * k), static_cast<float>(2.0 + 1.5 * std::sin(k / 7.0) + 0.05 * k),
                            static_cast<float>(0.02 + 0.015 * (1.0 + std::cos(k / 5.0)))});
    test::ScreenFixture::Readings(readings, DataSI, GraphSI);
}

using ResultViews = test::ScreenFixture;

TEST_F(ResultViews, ResultsViewPlotsEveryIntervalInItsPlace)
{
    Declarations& d = TheRecord();
    MakeSounding(5.05);  // 5.05 / 0.1 gives 50 intervals
    Frm_Pemlo01 screen;
    ASSERT_EQ(d.NumIntervals, 50);
    EXPECT_EQ(d.PlotIndex, 50);
    const IntervalArray* cone[] = {&d.IntQTip, &d.IntQSleeve, &d.IntRatio};
    for (Integer k = 0; k < 3; ++k) {  // each chart of the row shows its own quantity
        EXPECT_EQ(screen.ChartFX(k).SeriesList().at(0).xs.at(49), static_cast<double>((*cone[k])[50])) << k;
    }

    const ChartSurface& soil = screen.ChartFX(3);
    EXPECT_TRUE(soil.AxesExchanged()) << "depth runs vertically on the soil chart too";
    ASSERT_EQ(soil.SeriesCount(), 3);
    const IntervalArray* prob[] = {&d.IntProb1, &d.IntProb2, &d.IntProb3};
    for (int s = 0; s < 3; ++s) {
        const ChartSurface::Series& series = soil.SeriesList().at(static_cast<size_t>(s));
        for (int p = 0; p < 50; ++p) {
            const int j = 50 - p;  // point 0 is the deepest interval
            EXPECT_EQ(series.xs[p], static_cast<double>(d.IntDepth[j])) << s << "," << p;
            EXPECT_EQ(series.values[p], static_cast<double>((*prob[s])[j])) << s << "," << p;
        }
    }
    EXPECT_EQ(soil.AxisOf(XAxis).max, static_cast<double>(d.IntDepth[1]));
    EXPECT_EQ(soil.AxisOf(XAxis).min, static_cast<double>(d.IntDepth[49]));
    const DrawnRange probability = RangeOf(soil, ValueAxis);
    EXPECT_EQ(probability.low, 0.0);
    EXPECT_EQ(probability.high, 100.0);
    EXPECT_FALSE(probability.reversed) << "0 % at the left";
    EXPECT_TRUE(RangeOf(soil, XAxis).reversed) << "the shallowest interval at the top";
}

// With one interval the soil chart's axis minimum would read interval 0: the results
// view's plots end silently there, unlike the U and V view's (see IndexCharts).
TEST_F(ResultViews, SoilPlotOfOneIntervalEndsSilentlyAfterItsPoints)
{
    MakeSounding(3.0);
    Frm_Pemlo01 screen;
    testing::FillIntervals(TheRecord(), 1, GraphSI);
    ChartSurface soil;
    EXPECT_NO_THROW(screen.SoilPlot(soil));
    ASSERT_EQ(soil.SeriesCount(), 3);
    EXPECT_EQ(soil.SeriesList()[2].values.at(0), static_cast<double>(TheRecord().IntProb3[1]));
    EXPECT_EQ(soil.AxisOf(XAxis).max, static_cast<double>(TheRecord().IntDepth[1]));
    EXPECT_FALSE(soil.AxisOf(XAxis).min.has_value());
    EXPECT_EQ(soil.RefreshCount(), 0);
}

// A load lets the index error of a grid too small through, on both views.
TEST_F(ResultViews, BothViewsLetAGridTooSmallFail)
{
    const std::pair<const char*, double> cases[] = {
        {"one interval: its means read a second interval", 0.15},
        {"no readings: the grid reads reading 0", 0.0},
    };
    for (const auto& [what, lastDepth] : cases) {
        SCOPED_TRACE(what);
        ResetRecord();
        MakeSounding(lastDepth);
        for (const std::function<void()>& load : {std::function<void()>([] { Frm_Pemlo01 view; }),
                                                  std::function<void()>([] { Frm_UandV view; })}) {
            EXPECT_EQ(test::ErrorOf(load), ErrSubscriptOutOfRange);
        }
    }
}

}  // namespace
}  // namespace pemlo
