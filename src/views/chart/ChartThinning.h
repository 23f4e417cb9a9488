// Thinning a long line for the screen: of the readings that fall within one pixel
// of depth, the first, the last and the two horizontal extremes are drawn, so the
// drawn line looks exactly as the full one at that size while thousands of
// readings cost little to paint. Printing and zooming in draw every reading.
#pragma once

#include <QList>
#include <QPointF>

namespace pemlo {

// points in drawing order; pixel: the depth (y) one pixel covers, > 0.
QList<QPointF> ThinForScreen(const QList<QPointF>& points, double pixel);

}  // namespace pemlo
