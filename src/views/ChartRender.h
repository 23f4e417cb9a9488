// Turns a chart model into a Qt chart: series, axes (reversed where the model's min
// stands above its max), caption, margins and fonts. The on-screen widget and the
// painting onto a page or an image use the very same drawing.
#pragma once

#include <QRectF>

#include "views/ChartSurface.h"

class QChart;
class QPainter;

namespace pemlo {

struct ChartRenderOptions {
    bool printing = false;   // the print options (series legend) apply
    bool thin = false;       // long lines thinned to the screen's pixels
};

// Empties `chart` and fills it from the model.
void FillChart(QChart& chart, const ChartSurface& surface, const ChartRenderOptions& options);

// The margins around the plot from the plot settings (room for the depth labels,
// space above), the legend's place, and the layout done at once for the chart's size.
void LayoutChart(QChart& chart, const ChartSurface& surface, const ChartRenderOptions& options);

// Draws the chart as it stands on screen (its screen width, the rectangle's shape)
// into `target` of the painter, scaled uniformly so that fonts and lines grow with
// the rectangle. Needs no widget: a chart never shown draws the same.
void RenderChart(const ChartSurface& surface, QPainter& painter, const QRectF& target,
                 const ChartRenderOptions& options);

// The axis range as drawn: low and high ends and whether the axis runs reversed.
// An axis never set covers the data (rounded out to a tick step); with one end set,
// the other covers the data on its side of it.
struct DrawnRange {
    double low = 0.0;
    double high = 1.0;
    bool reversed = false;
};
DrawnRange RangeOf(const ChartSurface& surface, Integer axis);

}  // namespace pemlo
