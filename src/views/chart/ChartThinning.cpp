#include "views/chart/ChartThinning.h"

#include <cmath>

namespace pemlo {

QList<QPointF> ThinForScreen(const QList<QPointF>& points, double pixel)
{
    if (!(pixel > 0) || points.size() < 8) return points;
    QList<QPointF> out;
    out.reserve(points.size());
    qsizetype i = 0;
    while (i < points.size()) {
        // One run of consecutive points within the same pixel row.
        const double row = std::floor(points[i].y() / pixel);
        qsizetype end = i + 1;
        qsizetype lo = i, hi = i;
        while (end < points.size() && std::floor(points[end].y() / pixel) == row) {
            if (points[end].x() < points[lo].x()) lo = end;
            if (points[end].x() > points[hi].x()) hi = end;
            ++end;
        }
        const qsizetype last = end - 1;
        // The kept points in their original order, each once.
        qsizetype keep[4] = {i, std::min(lo, hi), std::max(lo, hi), last};
        qsizetype previous = -1;
        for (qsizetype k : keep) {
            if (k != previous) out.append(points[k]);
            previous = k;
        }
        i = end;
    }
    return out;
}

}  // namespace pemlo
