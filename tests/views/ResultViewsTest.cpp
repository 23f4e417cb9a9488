// The classification results view and the U and V view as a user meets them: what
// each load puts on the charts of a sounding, the window captions and the errors a
// load lets through.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

#include "IntervalRecord.h"
#include "core/Screens.h"
#include "runtime/RunTimeError.h"
#include "views/ChartRender.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"

namespace pemlo {
namespace {

// An SI sounding of readings every 5 cm down to `lastDepth`, with tip resistance
// and friction that vary enough to give every soil type some probability.
void MakeSounding(Declarations& d, double lastDepth)
{
    d.DataFileName = "C:\\data\\s1.txt";
    d.DataUnits = DataSI;
    d.GraphUnits = GraphSI;
    const int n = static_cast<int>(std::lround(lastDepth / 0.05));
    for (int k = 1; k <= n; ++k) {
        d.Depth[k] = static_cast<float>(0.05 * k);
        d.Q_Tip[k] = static_cast<float>(2.0 + 1.5 * std::sin(k / 7.0) + 0.05 * k);
        d.Q_Sleeve[k] = static_cast<float>(0.02 + 0.015 * (1.0 + std::cos(k / 5.0)));
    }
    d.NumLines = static_cast<Integer>(n);
}

class ResultViews : public ::testing::Test {
protected:
    void SetUp() override { Screens::Instance().Reset(), ResetRecord(); }
    void TearDown() override { Screens::Instance().Reset(), ResetRecord(); }
};

TEST_F(ResultViews, ResultsViewPlotsEveryIntervalInItsPlace)
{
    Declarations& d = TheRecord();
    MakeSounding(d, 5.05);  // 5.05 / 0.1 gives 50 intervals
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
    MakeSounding(TheRecord(), 3.0);
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

struct ViewCase {
    const char* name;
    std::function<QWidget*()> make;
    const char* caption;
};

const ViewCase Views[] = {
    {"Frm_Pemlo01", [] { return new Frm_Pemlo01; },
     " Classification using: Korvu & Pemlo (1999) - File: C:\\data\\s1.txt"},
    {"Frm_UandV", [] { return new Frm_UandV; }, " U and V Plot - File: C:\\data\\s1.txt"},
};

TEST_F(ResultViews, WindowCaptionsAndLoadErrorsOfBothViews)
{
    struct Case {
        const char* what;
        double lastDepth;   // 0: no readings at all
        int error;
    };
    const Case cases[] = {
        {"a sounding of 30 intervals loads", 3.0, 0},
        {"one interval: its means read a second interval", 0.15, ErrSubscriptOutOfRange},
        {"no readings: the grid reads reading 0", 0.0, ErrSubscriptOutOfRange},
    };
    for (const Case& c : cases) {
        for (const ViewCase& v : Views) {
            SCOPED_TRACE(std::string(c.what) + " on " + v.name);
            ResetRecord();
            MakeSounding(TheRecord(), c.lastDepth);
            try {
                std::unique_ptr<QWidget> screen(v.make());
                EXPECT_EQ(c.error, 0) << "the load completed";
                EXPECT_EQ(screen->windowTitle(), QString::fromLatin1(v.caption));
            } catch (const RunTimeError& e) {
                EXPECT_EQ(e.Number(), c.error);
            }
        }
    }
}

}  // namespace
}  // namespace pemlo
