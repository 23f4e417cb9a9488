// The chart's zone lines against the rule, at points worked out by hand from the
// published equations: each line must pass where the equation puts it, and an Ic
// contour that parts no zones (inside zone 8) must not be drawn.
#include <gtest/gtest.h>

#include <cmath>

#include "log/ChartZones.h"
#include "sbtn/Sbtn.h"

namespace pemlo::log {
namespace {

// The Qtn of every line at Fr, interpolated in the logarithms between its points.
std::vector<double> LinesAt(double fr)
{
    std::vector<double> found;
    for (const auto& line : ZoneBoundaries())
        for (std::size_t i = 1; i < line.size(); ++i) {
            const ChartPoint& a = line[i - 1];
            const ChartPoint& b = line[i];
            if (a.fr == b.fr || fr < std::min(a.fr, b.fr) || fr > std::max(a.fr, b.fr)) continue;
            const double t = (std::log10(fr) - std::log10(a.fr)) / (std::log10(b.fr) - std::log10(a.fr));
            found.push_back(std::pow(10.0, std::log10(a.qtn) + t * (std::log10(b.qtn) - std::log10(a.qtn))));
        }
    return found;
}

TEST(ChartZones, BoundariesStandWhereTheRulePutsThem)
{
    const struct {
        const char* fault;
        double fr;
        double qtn;  // from the equation, by hand
        bool drawn;
    } cases[] = {
        {"Ic 2.60 (zones 4 and 5) misplaced", 1.0, 14.93, true},
        {"Ic 2.05 (zones 5 and 6) misplaced", 0.5, 43.40, true},
        {"Ic 3.60 (zones 2 and 3) misplaced", 5.0, 2.6555, true},
        {"Ic 1.31 (zones 6 and 7) misplaced", 0.2, 185.37, true},
        {"zone 1's curve 12 exp(-1.4 Fr) misplaced", 0.5, 5.959, true},
        {"the curve of zones 8 and 9 misplaced", 3.0, 147.06, true},
        {"Ic 2.05 drawn inside zone 8, where it parts nothing", 3.0, 208.9, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        bool near = false;
        for (const double qtn : LinesAt(c.fr)) near = near || std::abs(qtn / c.qtn - 1.0) < 0.005;
        EXPECT_EQ(near, c.drawn);
    }
}

TEST(ChartZones, EveryNumberStandsInsideItsZoneAndOnTheChart)
{
    const auto labels = ZoneLabelPoints();
    for (int z = 1; z <= 9; ++z) {
        const ChartPoint& p = labels[static_cast<std::size_t>(z - 1)];
        SCOPED_TRACE(z);
        EXPECT_EQ(sbtn::Zone(p.qtn, p.fr, sbtn::BehaviourIndex(p.qtn, p.fr)), z);
        EXPECT_TRUE(p.fr >= ChartFrLow && p.fr <= ChartFrHigh && p.qtn >= ChartQtnLow && p.qtn <= ChartQtnHigh);
    }
}

}  // namespace
}  // namespace pemlo::log
