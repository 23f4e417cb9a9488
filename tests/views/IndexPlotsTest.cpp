// The three index charts of the U and V view, checked on the chart model: axis ends
// with their margin of one unit and the union range of the combined chart. (Which
// interval each point holds: IntervalPlots.)
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "IntervalRecord.h"
#include "views/chart/ChartSurface.h"
#include "views/IndexPlots.h"

namespace pemlo {
namespace {

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
        ChartSurface u, v, uv;
        PlotIndexCharts(d, u, v, uv);
        constexpr double tol = 1e-6;  // the indices are stored in single precision
        for (const auto& [chart, low, high] : {std::tuple{&u, c.uMin, c.uMax}, {&v, c.vMin, c.vMax}, {&uv, c.bothMin, c.bothMax}}) {
            EXPECT_NEAR(*chart->AxisOf(XAxis).min, low, tol);
            EXPECT_NEAR(*chart->AxisOf(XAxis).max, high, tol);
        }
    }
}

}  // namespace
}  // namespace pemlo
