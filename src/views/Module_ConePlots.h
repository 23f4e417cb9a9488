// The three interval cone plots of the classification results view: mean tip
// resistance, mean sleeve friction and sleeve-to-tip ratio of every depth interval,
// each against depth.
#pragma once

#include "core/Declarations.h"
#include "views/chart/ChartSurface.h"

namespace pemlo {

// Which quantity a cone plot shows.
enum ConePlotIndex : Integer { ConeTip = 0, ConeSleeve = 1, ConeRatio = 2 };

// Fills `chart` with the interval quantity `index` (0 tip, 1 sleeve, 2 ratio) of the
// record. Runs under its own trap: the first failing operation ends the plot
// silently and the chart keeps what was set before. Any other index gets the plot
// settings and fonts only. Leaves PlotIndex at NumPoints after a complete plot.
void ConePlot(Declarations& d, Integer& index, ChartSurface& chart);

// The plot settings and axis label sizes every interval line chart receives (the
// cone plots and the U and V charts): left margin 50, marker size 5, and a line
// width written as 1.5, which the 16-bit setting rounds half to even to 2.
void SetIntervalLineSettings(ChartSurface& chart);

}  // namespace pemlo
