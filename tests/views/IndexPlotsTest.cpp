// The three index charts of the U and V view, checked on the chart model: axis ends
// with their margin of one unit, the union range of the combined chart, legends and
// colours, depth titles, and the uncaught index error of a one-interval grid.
#include <gtest/gtest.h>

#include <ostream>
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

void SetIndices(Declarations& d, const std::vector<float>& u, const std::vector<float>& v)
{
    for (int i = 1; i <= d.NumIntervals; ++i) {
        d.IntU[i] = u[static_cast<size_t>(i - 1) % u.size()];
        d.IntV[i] = v[static_cast<size_t>(i - 1) % v.size()];
    }
}

struct RangeCase {
    const char* what;
    std::vector<float> u;
    std::vector<float> v;
    double uMin, uMax, vMin, vMax, bothMin, bothMax;
};

void PrintTo(const RangeCase& c, std::ostream* os) { *os << c.what; }

class IndexAxisCases : public ::testing::TestWithParam<RangeCase> {};

TEST_P(IndexAxisCases, LeaveOneUnitOfMarginAroundTheRangeFound)
{
    const RangeCase& c = GetParam();
    Declarations d;
    testing::FillIntervals(d, 12, 1);
    SetIndices(d, c.u, c.v);
    Charts ch;
    PlotIndexCharts(d, ch.u, ch.v, ch.uv);

    constexpr double tol = 1e-6;  // the indices are stored in single precision
    EXPECT_NEAR(*ch.u.AxisOf(XAxis).min, c.uMin, tol) << c.what;
    EXPECT_NEAR(*ch.u.AxisOf(XAxis).max, c.uMax, tol) << c.what;
    EXPECT_NEAR(*ch.v.AxisOf(XAxis).min, c.vMin, tol) << c.what;
    EXPECT_NEAR(*ch.v.AxisOf(XAxis).max, c.vMax, tol) << c.what;
    EXPECT_NEAR(*ch.uv.AxisOf(XAxis).min, c.bothMin, tol) << c.what;
    EXPECT_NEAR(*ch.uv.AxisOf(XAxis).max, c.bothMax, tol) << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, IndexAxisCases,
    ::testing::Values(
        RangeCase{"U constant 0.5", {0.5f}, {0.0f}, -0.5, 1.5, -1.0, 1.0, -1.0, 1.5},
        // The extremes sit in the middle of the sounding, not at its ends.
        RangeCase{"U 0.2..3.1, V -1.4..2.0", {1.0f, 0.2f, 3.1f, 2.0f}, {0.5f, 2.0f, -1.4f, 0.0f}, -0.8, 4.1,
                  -2.4, 3.0, -2.4, 4.1},
        RangeCase{"V reaches higher, U lower", {-2.0f, 1.0f}, {0.0f, 5.0f}, -3.0, 2.0, -1.0, 6.0, -3.0, 6.0},
        RangeCase{"equal maxima and minima", {-1.0f, 2.5f}, {2.5f, -1.0f}, -2.0, 3.5, -2.0, 3.5, -2.0, 3.5},
        // The first interval starts the search: a range that only falls must be found too.
        RangeCase{"first interval highest", {3.0f, 2.0f, 1.0f}, {-1.0f, -2.0f, -3.0f}, 0.0, 4.0, -4.0, 0.0,
                  -4.0, 4.0}));

struct UnitsCase {
    Integer graphUnits;
    const char* depthTitle;
};

void PrintTo(const UnitsCase& c, std::ostream* os) { *os << "graph units " << c.graphUnits; }

class IndexChartUnits : public ::testing::TestWithParam<UnitsCase> {};

TEST_P(IndexChartUnits, OnlyTheUChartNamesTheDepth)
{
    Declarations d;
    testing::FillIntervals(d, 40, GetParam().graphUnits);
    Charts ch;
    PlotIndexCharts(d, ch.u, ch.v, ch.uv);
    EXPECT_EQ(ch.u.AxisOf(ValueAxis).title, QString::fromLatin1(GetParam().depthTitle));
    EXPECT_TRUE(ch.v.AxisOf(ValueAxis).title.isEmpty());
    EXPECT_TRUE(ch.uv.AxisOf(ValueAxis).title.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(BothUnits, IndexChartUnits,
                         ::testing::Values(UnitsCase{0, "Depth (ft)"}, UnitsCase{1, "Depth (m)"}));

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
        ColorRef caption;
    };
    const Expect table[] = {
        {&ch.u, 0, "u", 0xFF0000, &Declarations::IntU, 0xFF0000},
        {&ch.v, 0, "u", 0xFF0000, &Declarations::IntV, 0x000080},  // the V chart's legend reads "u"
        {&ch.uv, 0, "u", 0xFF0000, &Declarations::IntU, 0xFF0000},
        {&ch.uv, 1, "v", 0x0000FF, &Declarations::IntV, 0xFF0000},
    };
    for (const Expect& e : table) {
        SCOPED_TRACE(e.legend);
        const ChartSurface::Series& s = e.chart->SeriesList().at(e.series);
        EXPECT_EQ(s.legend, QString::fromLatin1(e.legend));
        EXPECT_EQ(s.colour, e.colour);
        EXPECT_EQ(e.chart->TitleColor(2), e.caption);
        EXPECT_TRUE(e.chart->Title(2).isEmpty()) << "the load colours the caption, never writes it";
        ASSERT_EQ(s.values.size(), 40u);
        for (int p = 0; p < 40; ++p) {
            EXPECT_EQ(s.values[p], static_cast<double>(d.IntDepth[p + 1]));
            EXPECT_EQ(s.xs[p], static_cast<double>((d.*e.xs)[p + 1]));
        }
        // Depth from interval 1 at the top to interval 39; interval 40 lies below the end.
        EXPECT_EQ(e.chart->AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
        EXPECT_EQ(e.chart->AxisOf(ValueAxis).min, static_cast<double>(d.IntDepth[39]));
        EXPECT_EQ(e.chart->PlotSetting('A'), 50);
        EXPECT_EQ(e.chart->PlotSetting('C'), 5);
        EXPECT_EQ(e.chart->PlotSetting('D'), 2);
        EXPECT_EQ(e.chart->RefreshCount(), 1);
        EXPECT_FALSE(e.chart->IsOpen(Values));
        EXPECT_TRUE(e.chart->HasXValues()) << "the x positions stay in force";
    }
    EXPECT_EQ(ch.u.SeriesCount(), 1);
    EXPECT_EQ(ch.v.SeriesCount(), 1);
    EXPECT_EQ(ch.uv.SeriesCount(), 2);
    EXPECT_EQ(d.NumPoints, 40);
    EXPECT_EQ(d.NumSeries, 2);
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
    ASSERT_EQ(ch.u.SeriesList().at(0).values.size(), 1u);
    EXPECT_EQ(ch.u.SeriesList()[0].xs[0], static_cast<double>(d.IntU[1]));
    EXPECT_EQ(ch.u.AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
    EXPECT_FALSE(ch.u.AxisOf(ValueAxis).min.has_value());
    EXPECT_EQ(ch.u.RefreshCount(), 0);
    EXPECT_EQ(ch.v.PointCount(), 0) << "nothing after the failure runs";
}

}  // namespace
}  // namespace pemlo
