// The three index charts of the U and V view: the soil classification index U, the
// soil in-situ index V, and both together, each against the depth of the intervals.
#pragma once

#include "core/Declarations.h"
#include "views/chart/ChartSurface.h"

namespace pemlo {

// Fills the U chart, the V chart and the combined chart, in that order, from the
// record's intervals. Traps nothing: a run-time error (an interval index outside the
// arrays, a failing chart operation) leaves at once, with the charts as far as they got.
void PlotIndexCharts(Declarations& d, ChartSurface& chartU, ChartSurface& chartV, ChartSurface& chartUV);

}  // namespace pemlo
