// The chart page: Fr across and Qtn up on logarithmic axes, the zones' boundaries
// as the rule draws them and numbered, every valid reading a dot in the colour of
// its layer, and the layers' legend beside the chart.
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <cmath>

#include "log/ChartZones.h"
#include "log/ui/LogPages.h"

namespace pemlo::log {

namespace {

constexpr double DecadeWidth = 55.0;  // mm per tenfold, on both axes
constexpr double AxisRoom = 16.0;     // left of the chart: Qtn labels and title
constexpr double DotDiameter = 0.9;

struct ChartFrame {
    Box plot;
    double X(double fr) const
    {
        return plot.left + (std::log10(fr) - std::log10(ChartFrLow)) * DecadeWidth;
    }
    double Y(double qtn) const
    {
        return plot.Bottom() - (std::log10(qtn) - std::log10(ChartQtnLow)) * DecadeWidth;
    }
    QPointF At(const PagePainter& p, const ChartPoint& c) const { return p.P(X(c.fr), Y(c.qtn)); }
};

void DrawAxes(PagePainter& p, const ChartFrame& f)
{
    const QColor minor(0xDD, 0xDD, 0xDD), major(0xA0, 0xA0, 0xA0);
    for (double decade = ChartFrLow; decade < ChartFrHigh * 1.001; decade *= 10) {
        for (int m = 1; m <= 9 && decade * m <= ChartFrHigh * 1.001; ++m) {
            const double x = f.X(decade * m);
            p.Line(x, f.plot.top, x, f.plot.Bottom(), m == 1 ? 0.15 : 0.08, m == 1 ? major : minor);
        }
        p.Text({f.X(decade) - 8, f.plot.Bottom() + 1, 16, 4}, QString::number(decade), 7, Qt::AlignCenter);
    }
    for (double decade = ChartQtnLow; decade < ChartQtnHigh * 1.001; decade *= 10) {
        for (int m = 1; m <= 9 && decade * m <= ChartQtnHigh * 1.001; ++m) {
            const double y = f.Y(decade * m);
            p.Line(f.plot.left, y, f.plot.Right(), y, m == 1 ? 0.15 : 0.08, m == 1 ? major : minor);
        }
        p.Text({f.plot.left - 12, f.Y(decade) - 2, 10.5, 4}, QString::number(decade), 7,
               Qt::AlignRight | Qt::AlignVCenter);
    }
    p.Text({f.plot.left, f.plot.Bottom() + 5, f.plot.width, 5},
           QStringLiteral("Normalised friction ratio Fr (%)"), 8, Qt::AlignCenter, true);
    // The Qtn title runs up the left side.
    QPainter& painter = p.Painter();
    painter.save();
    painter.translate(p.P(f.plot.left - AxisRoom + 1, f.plot.top + f.plot.height / 2));
    painter.rotate(-90);
    painter.setFont(LogFont(8, true));
    painter.setPen(Qt::black);
    painter.drawText(QRectF(-p.U(60), 0, p.U(120), p.U(5)), Qt::AlignCenter,
                     QStringLiteral("Normalised cone resistance Qtn"));
    painter.restore();
}

void DrawZoneLines(PagePainter& p, const ChartFrame& f)
{
    p.Painter().setPen(QPen(Qt::black, p.U(0.3), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const auto& line : ZoneBoundaries()) {
        QPolygonF polyline;
        for (const ChartPoint& c : line) polyline << f.At(p, c);
        p.Painter().drawPolyline(polyline);
    }
    const auto labels = ZoneLabelPoints();
    for (int z = 1; z <= 9; ++z) {
        const ChartPoint& c = labels[static_cast<std::size_t>(z - 1)];
        const Box circle{f.X(c.fr) - 2.5, f.Y(c.qtn) - 2.5, 5, 5};
        p.Painter().setPen(QPen(Qt::black, p.U(0.2)));
        p.Painter().setBrush(ZoneColour(z));
        p.Painter().drawEllipse(p.R(circle));
        p.Text(circle, QString::number(z), 8, Qt::AlignCenter, true, z == 2 || z == 3 ? Qt::white : Qt::black);
    }
}

void DrawReadings(PagePainter& p, const ChartFrame& f, const LogSounding& s)
{
    p.Painter().save();
    p.Painter().setClipRect(p.R(f.plot));
    p.Painter().setPen(Qt::NoPen);
    for (const sbtn::SbtnRow& r : s.sbt.rows) {
        if (r.invalid != sbtn::Invalid::None) continue;
        const int layer = LayerIndexAt(s.layers, r.depth);
        p.Painter().setBrush(LayerColour(layer < 0 ? 0 : s.layers[static_cast<std::size_t>(layer)].number));
        const QPointF c = f.At(p, {r.values.fr, r.values.qtn});
        p.Painter().drawEllipse(c, p.U(DotDiameter / 2), p.U(DotDiameter / 2));
    }
    p.Painter().restore();
}

void DrawLayerLegend(PagePainter& p, const Box& box, const LogSounding& s)
{
    p.Text({box.left, box.top, box.width, 5}, QStringLiteral("Layers"), 8, Qt::AlignLeft | Qt::AlignVCenter, true);
    const double row = std::min(4.2, (box.height - 6) / std::max<std::size_t>(1, s.layers.size()));
    const double points = std::min(7.0, row * 1.6);
    for (std::size_t i = 0; i < s.layers.size(); ++i) {
        const LogLayer& l = s.layers[i];
        const double y = box.top + 6 + static_cast<double>(i) * row;
        p.Painter().setPen(Qt::NoPen);
        p.Painter().setBrush(LayerColour(l.number));
        p.Painter().drawEllipse(p.P(box.left + 1.5, y + row / 2), p.U(1.1), p.U(1.1));
        p.Text({box.left + 4, y, box.width - 4, row},
               LayerLabel(l), points, Qt::AlignLeft | Qt::AlignVCenter);
    }
}

void DrawZoneNames(PagePainter& p, const Box& box)
{
    p.Text({box.left, box.top, box.width, 5}, QStringLiteral("Zones (Robertson 2009)"), 8,
           Qt::AlignLeft | Qt::AlignVCenter, true);
    for (int z = 1; z <= 9; ++z)
        p.Text({box.left, box.top + 1 + z * 4.0, box.width, 4},
               QStringLiteral("%1 %2").arg(z).arg(QString::fromLatin1(sbtn::ZoneName(z))), 6.5,
               Qt::AlignLeft | Qt::AlignVCenter);
}

}  // namespace

void DrawChartPage(PagePainter& p, const LogLayout& layout, const LogSounding& s)
{
    const double width = 2 * DecadeWidth, height = 3 * DecadeWidth;
    const double top = layout.headerTop + 6;
    const ChartFrame f{{layout.titleBlock.left + AxisRoom, top, width, height}};
    p.Text({layout.titleBlock.left, layout.headerTop, layout.titleBlock.width, 5},
           QStringLiteral("Soil behaviour type chart: %1 valid readings of %2").arg(s.sbt.valid).arg(s.sbt.rows.size()),
           9, Qt::AlignLeft | Qt::AlignVCenter, true);
    DrawAxes(p, f);
    DrawReadings(p, f, s);
    DrawZoneLines(p, f);
    p.Frame(f.plot, 0.3);
    const double side = f.plot.Right() + 6;
    const Box names{side, top, layout.titleBlock.Right() - side, 42};
    DrawZoneNames(p, names);
    DrawLayerLegend(p, {side, names.Bottom() + 4, names.width, top + height - names.Bottom() - 4}, s);
}

}  // namespace pemlo::log
