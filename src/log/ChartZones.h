// The soil behaviour type chart as lines: Fr (0.1 to 10 %) across, Qtn (1 to 1000) up,
// both logarithmic, the zones' boundaries traced from the rule itself (sbtn::Zone): the
// Ic contours where they part two zones, and the curves of zones 1, 8 and 9.
#pragma once

#include <array>
#include <vector>

namespace pemlo::log {

struct ChartPoint {
    double fr = 0.0;   // %
    double qtn = 0.0;
};

constexpr double ChartFrLow = 0.1, ChartFrHigh = 10.0;
constexpr double ChartQtnLow = 1.0, ChartQtnHigh = 1000.0;

// A reading's point as the chart shows it: where it lies, or the nearest point of the
// chart's edge for one beyond it (Fr over 10 %, say), so that no reading goes unseen.
ChartPoint OnChart(const ChartPoint& c);
bool BeyondChart(const ChartPoint& c);

// The boundary lines, each a run of points close enough to be joined straight.
std::vector<std::vector<ChartPoint>> ZoneBoundaries();

// A point inside each zone, for its number: index 0 is zone 1.
std::array<ChartPoint, 9> ZoneLabelPoints();

}  // namespace pemlo::log
