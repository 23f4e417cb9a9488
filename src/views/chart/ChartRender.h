// Turns a chart model into a Qt chart: series, axes (reversed where the model's min
// stands above its max), caption, margins and fonts. The on-screen widget and the
// painting onto a page or an image use the very same drawing.
#pragma once

#include <QRectF>
#include <QSizeF>

#include "views/chart/ChartSurface.h"

class QChart;
class QPainter;

namespace pemlo {

struct ChartRenderOptions {
    bool printing = false;   // the print options (series legend) apply
    bool thin = false;       // long lines thinned to the screen's pixels
};

// Empties `chart` and fills it from the model.
void FillChart(QChart& chart, const ChartSurface& surface, const ChartRenderOptions& options);

// The plot area for the chart's size, the legend's place, and the layout done at
// once for that size.
void LayoutChart(QChart& chart, const ChartSurface& surface, const ChartRenderOptions& options);

// Where the plot stands in a chart of the given size, in its logical pixels. Its top
// is the same on every chart, and so is its bottom on charts of one height that agree
// on keeping a legend band: the depth axes of one screen or page line up.
QRectF PlotAreaOf(const ChartSurface& surface, const QSizeF& size, const ChartRenderOptions& options);
double PlotTop();
double HorizontalLabelsBand();

// Draws the chart into `target` of the painter, laid out at the rectangle's size on
// the painter's device with every text at its type size. Needs no widget: a chart
// never shown draws the same.
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
DrawnRange RangeOf(const ChartSurface& surface, ChartAxis axis);

}  // namespace pemlo
