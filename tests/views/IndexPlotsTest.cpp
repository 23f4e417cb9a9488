// The three index charts of the U and V view, checked on the chart model: axis ends
// with their margin of one unit, the union range of the combined chart, legends and
// colours, and the uncaught index error of a one-interval grid.
#include <gtest/gtest.h>

#include <vector>

#include "IntervalRecord.h"
#include "runtime/RunTimeError.h"
#include "views/ChartSurface.h"
#include "views/IndexPlots.h"

namespace pemlo {
namespace {

struct Charts {
    ChartSurface u, v, uv;
};

TEST(IndexCharts, AxesLeaveOneUnitOfMarginAroundTheRangeFound)
{
    struct Case {
        const char* what;
        std::vector<float> u, v;
        double uMin, uMax, vMin, vMax, bothMin, bothMax;
    };
    const Case cases[] = {
        {"U constant 0.5", {0.5f}, {0.0f}, -0.5, 1.5, -1.0, 1.0, -1.0, 1.5},
        // The extremes sit in the middle of the sounding, not at its ends.
        {"U 0.2..3.1, V -1.4..2.0", {1.0f, 0.2f, 3.1f, 2.0f}, {0.5f, 2.0f, -1.4f, 0.0f}, -0.8, 4.1, -2.4, 3.0, -2.4,
         4.1},
        // The first interval starts the search: a range that only falls must be found too.
        {"first interval highest", {3.0f, 2.0f, 1.0f}, {-1.0f, -2.0f, -3.0f}, 0.0, 4.0, -4.0, 0.0, -4.0, 4.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Declarations d;
        testing::FillIntervals(d, 12, 1);
        for (int i = 1; i <= 12; ++i) {
            d.IntU[i] = c.u[static_cast<size_t>(i - 1) % c.u.size()];
            d.IntV[i] = c.v[static_cast<size_t>(i - 1) % c.v.size()];
        }
        Charts ch;
        PlotIndexCharts(d, ch.u, ch.v, ch.uv);
        constexpr double tol = 1e-6;  // the indices are stored in single precision
        EXPECT_NEAR(*ch.u.AxisOf(XAxis).min, c.uMin, tol);
        EXPECT_NEAR(*ch.u.AxisOf(XAxis).max, c.uMax, tol);
        EXPECT_NEAR(*ch.v.AxisOf(XAxis).min, c.vMin, tol);
        EXPECT_NEAR(*ch.v.AxisOf(XAxis).max, c.vMax, tol);
        EXPECT_NEAR(*ch.uv.AxisOf(XAxis).min, c.bothMin, tol);
        EXPECT_NEAR(*ch.uv.AxisOf(XAxis).max, c.bothMax, tol);
    }
}

TEST(IndexCharts, SeriesLegendsColoursAndPoints)
{
    Declarations d;
    testing::FillIntervals(d, 40, 1);
    Charts ch;
    PlotIndexCharts(d, ch.u, ch.v, ch.uv);

    struct Expect {
        const ChartSurface* chart;
        size_t series;
        const char* legend;
        ColorRef colour;
        const IntervalArray Declarations::*xs;
    };
    const Expect table[] = {
        {&ch.u, 0, "u", 0xFF0000, &Declarations::IntU},
        {&ch.v, 0, "u", 0xFF0000, &Declarations::IntV},  // the V chart's legend reads "u"
        {&ch.uv, 0, "u", 0xFF0000, &Declarations::IntU},
        {&ch.uv, 1, "v", 0x0000FF, &Declarations::IntV},
    };
    for (const Expect& e : table) {
        SCOPED_TRACE(e.legend);
        const ChartSurface::Series& s = e.chart->SeriesList().at(e.series);
        EXPECT_EQ(s.legend, QString::fromLatin1(e.legend));
        EXPECT_EQ(s.colour, e.colour);
        EXPECT_EQ(s.values.at(39), static_cast<double>(d.IntDepth[40]));
        EXPECT_EQ(s.xs.at(39), static_cast<double>((d.*e.xs)[40]));
        // Depth from interval 1 at the top to interval 39; interval 40 lies below the end.
        EXPECT_EQ(e.chart->AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
        EXPECT_EQ(e.chart->AxisOf(ValueAxis).min, static_cast<double>(d.IntDepth[39]));
        EXPECT_EQ(e.chart->RefreshCount(), 1);
        EXPECT_TRUE(e.chart->HasXValues()) << "the x positions stay in force";
    }
    EXPECT_EQ(ch.u.AxisOf(ValueAxis).title, QStringLiteral("Depth (m)"));
    EXPECT_TRUE(ch.v.AxisOf(ValueAxis).title.isEmpty()) << "only the U chart names the depth";
}

TEST(IndexCharts, OneIntervalRaisesAnIndexErrorAfterTheUChartsPoints)
{
    Declarations d;
    testing::FillIntervals(d, 1, 1);
    Charts ch;
    try {
        PlotIndexCharts(d, ch.u, ch.v, ch.uv);
        FAIL() << "the depth axis minimum reads interval 0";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrSubscriptOutOfRange);
    }
    EXPECT_EQ(ch.u.SeriesList().at(0).xs.at(0), static_cast<double>(d.IntU[1]));
    EXPECT_EQ(ch.u.AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
    EXPECT_FALSE(ch.u.AxisOf(ValueAxis).min.has_value());
    EXPECT_EQ(ch.u.RefreshCount(), 0);
    EXPECT_EQ(ch.v.PointCount(), 0) << "nothing after the failure runs";
}

}  // namespace
}  // namespace pemlo
