// The columns of a log page. Every column takes its depths from the page's one
// DepthAxis and draws the same depth grid, so that a depth stands on one line across
// the page; values come from the sbt rows, the classified intervals and the layers
// as they are, readings without normalised values left out of the derived columns.
#include <QPen>
#include <algorithm>
#include <cmath>

#include "log/ui/LogColumns.h"
#include "log/ui/LogPages.h"

namespace pemlo::log {

namespace {

using sbtn::Invalid;
using sbtn::SbtnRow;

const QColor Grid(0xC8, 0xC8, 0xC8);

QString Q(const std::string& s) { return QString::fromStdString(s); }

double X(const Box& b, const Ticks& t, double v) { return b.left + (v - t.low) / (t.high - t.low) * b.width; }

}  // namespace

// The column's frame, its value grid and labels, and the page's depth grid.
void DrawFrame(PagePainter& p, const Box& b, const DepthAxis& axis, double depthStep, const QString& title,
               const Ticks* ticks, double headerTop)
{
    p.Text({b.left - 1, headerTop, b.width + 2, b.top - headerTop - TickLabelHeight}, title, TitlePoints,
           Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap, true);
    for (double d = std::ceil(axis.topDepth / depthStep - 1e-9) * depthStep; d <= axis.bottomDepth + 1e-9;
         d += depthStep)
        p.Line(b.left, axis.Y(d), b.Right(), axis.Y(d), GridWidth, Grid);
    if (ticks) {
        const int n = static_cast<int>(std::lround((ticks->high - ticks->low) / ticks->step));
        for (int i = 1; i < n; ++i) {
            const double x = X(b, *ticks, ticks->low + i * ticks->step);
            p.Line(x, b.top, x, b.Bottom(), GridWidth, Grid);
        }
        for (const int i : LabelledTicks(*ticks, b.width, TickLabelWidth(p), TickLabelGap)) {
            const double v = ticks->low + i * ticks->step;
            const QString text = Q(TickText(v, ticks->step));
            // The end labels stand inside the column, so that neighbours' labels never meet.
            const int align = i == 0 ? Qt::AlignLeft : i == n ? Qt::AlignRight : Qt::AlignHCenter;
            const double w = p.TextWidth(text, TickPoints) + 1.0, x = X(b, *ticks, v);
            const double left = i == 0 ? x : i == n ? x - w : x - w / 2;
            p.Text({left, b.top - TickLabelHeight, w, TickLabelHeight}, text, TickPoints, align | Qt::AlignVCenter);
        }
    }
    p.Frame(b, FrameWidth);
}

namespace {

// Each reading's zone from midway to the reading above to midway to the one below;
// neighbours of one zone are drawn as one band, which ends at the reading next to a gap.
void DrawZones(PagePainter& p, const Box& b, const DepthAxis& axis, const LogSounding& s)
{
    const std::vector<SbtnRow>& rows = s.sbt.rows;
    const auto zoneOf = [&](std::size_t i) { return rows[i].invalid == Invalid::None ? rows[i].values.zone : 0; };
    const auto joined = [&](std::size_t i) { return i > 0 && i < rows.size() && !GapBefore(s, i); };
    std::size_t i = 0;
    while (i < rows.size()) {
        std::size_t j = i;
        while (joined(j + 1) && zoneOf(j + 1) == zoneOf(i)) ++j;
        const double top = joined(i) ? (rows[i - 1].depth + rows[i].depth) / 2 : rows[i].depth;
        const double bottom = joined(j + 1) ? (rows[j].depth + rows[j + 1].depth) / 2 : rows[j].depth;
        if (zoneOf(i) != 0) {
            const double y1 = std::max(axis.Y(top), b.top), y2 = std::min(axis.Y(bottom), b.Bottom());
            if (y2 > y1) p.Fill({b.left, y1, b.width, y2 - y1}, ZoneColour(zoneOf(i)));
        }
        i = j + 1;
    }
}

// The intervals down to the end of the sounding: the grid runs on below the last reading.
void DrawSoil(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<LogInterval>& intervals,
              double end)
{
    const double bottom = std::min(b.Bottom(), axis.Y(end));
    for (const LogInterval& in : intervals) {
        const double y1 = std::max(axis.Y(in.top), b.top), y2 = std::min(axis.Y(in.bottom), bottom);
        if (y2 <= y1) continue;
        double x = b.left;
        for (const auto& [percent, soil] : {std::pair{in.sand, profile::Soil::Sand},
                                            std::pair{in.silt, profile::Soil::Silt},
                                            std::pair{in.clay, profile::Soil::Clay}}) {
            const double w = b.width * percent / 100.0;
            p.Fill({x, y1, w, y2 - y1}, SoilColour(static_cast<int>(soil)));
            x += w;
        }
    }
}

void DrawDepthColumn(PagePainter& p, const Box& b, const DepthAxis& axis, double step, double headerTop)
{
    p.Text({b.left - 1, headerTop, b.width + 2, b.top - headerTop - TickLabelHeight}, QStringLiteral("Depth (m)"),
           TitlePoints, Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap, true);
    for (double d = std::ceil(axis.topDepth / step - 1e-9) * step; d <= axis.bottomDepth + 1e-9; d += step) {
        const double y = axis.Y(d);
        p.Line(b.Right() - 1.2, y, b.Right(), y, FrameWidth);
        p.Text({b.left, y - 1.5, b.width - 1.6, 3.0}, Q(TickText(d, step)), TickPoints,
               Qt::AlignRight | Qt::AlignVCenter);
    }
    p.Line(b.Right(), b.top, b.Right(), b.Bottom(), FrameWidth);
}

struct LegendEntry {
    QString text;
    QColor colour;
    bool line = false;
    Qt::PenStyle style = Qt::SolidLine;
};

void DrawLegend(PagePainter& p, const Box& box, bool withPorePressure)
{
    std::vector<std::vector<LegendEntry>> rows(3);
    for (int z = 1; z <= 9; ++z)
        rows[z <= 5 ? 0 : 1].push_back(
            {QStringLiteral("%1 %2").arg(z).arg(QString::fromLatin1(sbtn::ZoneName(z))), ZoneColour(z)});
    for (const profile::Soil soil : {profile::Soil::Sand, profile::Soil::Silt, profile::Soil::Clay})
        rows[2].push_back({QString::fromLatin1(profile::SoilName(soil)), SoilColour(static_cast<int>(soil))});
    rows[2].push_back({QStringLiteral("qc"), ConeBlue, true});
    rows[2].push_back({QStringLiteral("qt"), QtColour, true, Qt::DashLine});
    if (withPorePressure) {
        rows[2].push_back({QStringLiteral("u2"), ConeBlue, true});
        rows[2].push_back({QStringLiteral("u0"), Qt::black, true, Qt::DashLine});
    }
    p.Text({box.left, box.top, box.width, 4.0},
           QStringLiteral("Soil behaviour type zones (Robertson 2009); soils of the intervals and layers; traces"),
           LabelPoints, Qt::AlignLeft | Qt::AlignVCenter, true);
    const double rowHeight = (box.height - 4.0) / 3;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const double y = box.top + 4.0 + r * rowHeight;
        const double width = box.width / (r == 2 ? 8 : 5);
        for (std::size_t i = 0; i < rows[r].size(); ++i) {
            const LegendEntry& e = rows[r][i];
            const double x = box.left + i * width;
            if (e.line) {
                p.Painter().setPen(QPen(e.colour, p.U(0.35), e.style, Qt::FlatCap));
                p.Painter().drawLine(p.P(x, y + rowHeight / 2), p.P(x + 5, y + rowHeight / 2));
            } else {
                const Box swatch{x, y + rowHeight / 2 - 1.4, 5, 2.8};
                p.Fill(swatch, e.colour);
                p.Frame(swatch, 0.1);
            }
            p.Text({x + 6, y, width - 6.5, rowHeight}, e.text, LabelPoints, Qt::AlignLeft | Qt::AlignVCenter);
        }
    }
}

}  // namespace

QString LayerLabel(const LogLayer& l)
{
    return QStringLiteral("%1 %2 %3\u2013%4 m, zone %5")
        .arg(l.number)
        .arg(QString::fromLatin1(profile::SoilName(l.soil)))
        .arg(DepthText(l.top))
        .arg(DepthText(l.bottom))
        .arg(l.zone == 0 ? QStringLiteral("-") : QString::number(l.zone));
}

void DrawLogPage(PagePainter& p, const LogLayout& layout, const DepthAxis& axis, const LogSounding& s)
{
    const double step = DepthStep(axis, 7.0);
    const double end = DeepestOf(s);
    for (const Column& column : layout.columns) {
        const Box& b = column.box;
        switch (column.kind) {
        case ColumnKind::Depth: DrawDepthColumn(p, b, axis, step, layout.headerTop); break;
        case ColumnKind::Zone:
            p.Painter().save();
            p.Painter().setClipRect(p.R(b));
            DrawZones(p, b, axis, s);
            p.Painter().restore();
            DrawFrame(p, b, axis, step, QStringLiteral("SBTn zone"), nullptr, layout.headerTop);
            break;
        case ColumnKind::Soil:
            DrawSoil(p, b, axis, s.intervals, end);
            DrawFrame(p, b, axis, step, QStringLiteral("Sand, silt, clay (%)"), nullptr, layout.headerTop);
            break;
        case ColumnKind::Layers:
            DrawLayers(p, b, axis, s.layers, end);
            p.Text({b.left, layout.headerTop, b.width, b.top - layout.headerTop - TickLabelHeight},
                   QStringLiteral("Layers"), TitlePoints, Qt::AlignHCenter | Qt::AlignBottom, true);
            break;
        default: DrawValueColumn(p, column, axis, step, layout.headerTop, s); break;
        }
    }
    DrawLegend(p, layout.legend, s.hasU2);
}

}  // namespace pemlo::log
