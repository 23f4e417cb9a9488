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
constexpr double DotDiameter = 1.1;

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

// Every valid reading in its layer's marker; one beyond the chart on its edge, open.
// Returns how many lie beyond.
int DrawReadings(PagePainter& p, const ChartFrame& f, const LogSounding& s)
{
    int beyond = 0;
    for (const sbtn::SbtnRow& r : s.sbt.rows) {
        if (r.invalid != sbtn::Invalid::None) continue;
        const int layer = LayerIndexAt(s.layers, r.depth);
        const ChartPoint c{r.values.fr, r.values.qtn};
        const ChartPoint on = OnChart(c);
        beyond += BeyondChart(c) ? 1 : 0;
        DrawLayerMarker(p, f.X(on.fr), f.Y(on.qtn), DotDiameter,
                        layer < 0 ? 0 : s.layers[static_cast<std::size_t>(layer)].number, BeyondChart(c));
    }
    return beyond;
}

// The layers' list: the largest type size from 7 to 6 points at which it fits beside
// the chart and, flowing on in columns, below it; where even 6 points is too large,
// the last line says how many more the log pages list.
void DrawLayerLegend(PagePainter& p, const Box& beside, const Box& below, const LogSounding& s)
{
    constexpr double MarkerRoom = 3.5, ColumnGap = 3.0, HeadingHeight = 5.0;
    p.Text({beside.left, beside.top, beside.width, HeadingHeight}, QStringLiteral("Layers"), 8,
           Qt::AlignLeft | Qt::AlignVCenter, true);
    const std::vector<Box> boxes{{beside.left, beside.top + HeadingHeight, beside.width, beside.height - HeadingHeight},
                                 {below.left, below.top + HeadingHeight, below.width, below.height - HeadingHeight}};
    double points = 7.0, row = 0.0;
    std::vector<Point> at;
    for (; points >= 6.0; points -= 0.5) {
        double widest = 0.0;
        for (const LogLayer& l : s.layers) widest = std::max(widest, p.TextWidth(LayerLabel(l), points));
        row = points * 0.45;
        at = FlowIntoColumns(boxes, widest + MarkerRoom + ColumnGap, row, s.layers.size());
        if (at.size() == s.layers.size() || points == 6.0) break;
    }
    if (!at.empty() && at.back().y >= boxes[1].top)
        p.Text({below.left, below.top, below.width, HeadingHeight}, QStringLiteral("Layers, continued"), 8,
               Qt::AlignLeft | Qt::AlignVCenter, true);
    for (std::size_t i = 0; i < at.size(); ++i) {
        const LogLayer& l = s.layers[i];
        const bool last = i + 1 == at.size() && at.size() < s.layers.size();
        if (!last) DrawLayerMarker(p, at[i].x + 1.2, at[i].y + row / 2, 1.8, l.number, false);
        const QString text = last ? QStringLiteral("\u2026 and %1 more: see the log pages").arg(s.layers.size() - i)
                                  : LayerLabel(l);
        p.Text({at[i].x + MarkerRoom, at[i].y, boxes[1].Right() - at[i].x - MarkerRoom, row}, text, points,
               Qt::AlignLeft | Qt::AlignVCenter);
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
    DrawAxes(p, f);
    p.Painter().save();
    p.Painter().setClipRect(p.R({f.plot.left - 1, f.plot.top - 1, f.plot.width + 2, f.plot.height + 2}));
    const int beyond = DrawReadings(p, f, s);
    p.Painter().restore();
    DrawZoneLines(p, f);
    p.Frame(f.plot, 0.3);
    QString heading =
        QStringLiteral("Soil behaviour type chart: %1 valid readings of %2").arg(s.sbt.valid).arg(s.sbt.rows.size());
    if (beyond > 0) heading += QStringLiteral("; %1 beyond the chart's edges, drawn open on the edge").arg(beyond);
    p.Text({layout.titleBlock.left, layout.headerTop, layout.titleBlock.width, 5}, heading, 9,
           Qt::AlignLeft | Qt::AlignVCenter, true);
    const double side = f.plot.Right() + 6;
    const Box names{side, top, layout.titleBlock.Right() - side, 42};
    DrawZoneNames(p, names);
    const double belowTop = f.plot.Bottom() + 13;
    DrawLayerLegend(p, {side, names.Bottom() + 4, names.width, top + height - names.Bottom() - 4},
                    {layout.titleBlock.left, belowTop, layout.titleBlock.width, layout.legend.Bottom() - belowTop}, s);
}

}  // namespace pemlo::log
