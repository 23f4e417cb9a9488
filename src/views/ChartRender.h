// Turns a chart model into a Qt chart: series, axes (reversed where the model's min
// stands above its max), caption, margins and fonts. The on-screen widget and the
// painting onto a page or an image use the very same drawing.
#pragma once

#include <QRectF>

#include "views/ChartSurface.h"

class QPainter;
QT_BEGIN_NAMESPACE
class QChart;
QT_END_NAMESPACE

namespace pemlo {

struct ChartRenderOptions {
    bool printing = false;   // the print options (series legend) apply
    bool thin = false;       // long lines thinned to the screen's pixels
};

// Empties `chart` and fills it from the model.
void FillChart(QChart& chart, const ChartSurface& surface, const ChartRenderOptions& options);

// Places the plot area inside a chart of the given logical size: the left room for
// the depth labels, the caption and top margin, the bottom axis.
void LayoutChart(QChart& chart, const ChartSurface& surface, const ChartRenderOptions& options);

// Draws the chart as it stands at `logicalSize` into `target` of the painter,
// scaled uniformly so that fonts and lines grow with the rectangle.
void RenderChart(const ChartSurface& surface, QPainter& painter, const QRectF& target,
                 const ChartRenderOptions& options);

// The axis range as drawn: low and high ends and whether the axis runs reversed.
struct DrawnRange {
    double low = 0.0;
    double high = 1.0;
    bool reversed = false;
};
DrawnRange RangeOf(const ChartSurface& surface, Integer axis);

}  // namespace pemlo
