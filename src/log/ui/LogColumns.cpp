// The columns of a log page. Every column takes its depths from the page's one
// DepthAxis and draws the same depth grid, so that a depth stands on one line across
// the page; values come from the sbt rows, the classified intervals and the layers
// as they are, readings without normalised values left out of the derived columns.
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "log/ui/LogPages.h"

namespace pemlo::log {

namespace {

using sbtn::Invalid;
using sbtn::SbtnRow;

constexpr double TitlePoints = 7.5;
constexpr double TickPoints = 6.0;
constexpr double LabelPoints = 6.3;
constexpr double TickLabelHeight = 3.2;
constexpr double FrameWidth = 0.25;
constexpr double GridWidth = 0.1;
constexpr double TraceWidth = 0.25;
constexpr double RatioCap = 10.0;  // %: beyond it Rf says no more about the soil, and a spike would squash the rest
const QColor Grid(0xC8, 0xC8, 0xC8);
const QColor ConeBlue(0x00, 0x00, 0xFF);  // the CPT data screen's tip colour
const QColor SleeveGreen(0x00, 0x99, 0x00);
const QColor RatioRed(0xFF, 0x00, 0x00);
const QColor QtColour(0xC0, 0x00, 0x60);

QString Q(const std::string& s) { return QString::fromStdString(s); }

using Value = std::function<std::optional<double>(const SbtnRow&)>;

struct Trace {
    Value value;
    QColor colour;
    Qt::PenStyle style = Qt::SolidLine;
};

struct ValueColumn {
    QString title;
    Ticks ticks;
    std::vector<Trace> traces;
};

double X(const Box& b, const Ticks& t, double v) { return b.left + (v - t.low) / (t.high - t.low) * b.width; }

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
        // Every k-th tick is labelled, k the fewest that keeps the widest label clear of its neighbours.
        double widest = 0.0;
        for (int i = 0; i <= n; ++i)
            widest = std::max(widest, p.TextWidth(Q(TickText(ticks->low + i * ticks->step, ticks->step)), TickPoints));
        int k = 1;
        while (k < n && k * b.width / n < widest + 1.5) ++k;
        for (int i = 0; i <= n; ++i) {
            const double v = ticks->low + i * ticks->step;
            const double x = X(b, *ticks, v);
            if (i > 0 && i < n) p.Line(x, b.top, x, b.Bottom(), GridWidth, Grid);
            if (i % k != 0) continue;
            // The end labels stand inside the column, so that neighbours' labels never meet.
            const int align = i == 0 ? Qt::AlignLeft : i == n ? Qt::AlignRight : Qt::AlignHCenter;
            const double w = widest + 1.0;
            const double left = i == 0 ? x : i == n ? x - w : x - w / 2;
            p.Text({left, b.top - TickLabelHeight, w, TickLabelHeight}, Q(TickText(v, ticks->step)), TickPoints,
                   align | Qt::AlignVCenter);
        }
    }
    p.Frame(b, FrameWidth);
}

// The readings of a trace as lines, broken where a reading has no value.
void DrawTrace(PagePainter& p, const Box& b, const Ticks& t, const DepthAxis& axis,
               const std::vector<SbtnRow>& rows, const Trace& trace)
{
    QPen pen(trace.colour, p.U(TraceWidth), trace.style, Qt::FlatCap, Qt::RoundJoin);
    p.Painter().setPen(pen);
    QPolygonF run;
    const auto flush = [&] {
        if (run.size() > 1) p.Painter().drawPolyline(run);
        run.clear();
    };
    for (const SbtnRow& r : rows) {
        const std::optional<double> v = trace.value(r);
        if (!v || !std::isfinite(*v)) {
            flush();
            continue;
        }
        run << p.P(X(b, t, std::clamp(*v, t.low, t.high)), axis.Y(r.depth));
    }
    flush();
}

std::optional<double> Valid(const SbtnRow& r, double value)
{
    return r.invalid == Invalid::None ? std::optional<double>(value) : std::nullopt;
}

// From 0 (or the lowest value, where negative values matter) to the highest, capped.
Ticks RangeOf(const std::vector<SbtnRow>& rows, const std::vector<Trace>& traces, int maxTicks, bool negative,
              double cap = 1e300)
{
    double low = 0.0, high = 0.0;
    for (const SbtnRow& r : rows)
        for (const Trace& t : traces)
            if (const auto v = t.value(r); v && std::isfinite(*v)) low = std::min(low, *v), high = std::max(high, *v);
    return RoundTicks(negative ? low : 0.0, std::min(high, cap), maxTicks);
}

ValueColumn MakeColumn(ColumnKind kind, const LogSounding& s)
{
    const auto& rows = s.sbt.rows;
    ValueColumn c;
    switch (kind) {
    case ColumnKind::Cone:
        c.title = QStringLiteral("qc, qt (MPa)");
        c.traces = {{[](const SbtnRow& r) { return std::optional<double>(r.qc); }, ConeBlue},
                    {[](const SbtnRow& r) { return std::optional<double>(r.qt); }, QtColour, Qt::DashLine}};
        c.ticks = RangeOf(rows, c.traces, 4, false);
        break;
    case ColumnKind::Sleeve:
        c.title = QStringLiteral("fs (kPa)");
        c.traces = {{[](const SbtnRow& r) { return std::optional<double>(1000.0 * r.fs); }, SleeveGreen}};
        // A slightly negative fs is the sleeve's zero drifting: drawn at the axis, not given an axis below 0.
        c.ticks = RangeOf(rows, c.traces, 3, false);
        break;
    case ColumnKind::Ratio:
        c.title = QStringLiteral("Rf (%)");
        c.traces = {{[](const SbtnRow& r) { return r.rf; }, RatioRed}};
        c.ticks = RangeOf(rows, c.traces, 3, false, RatioCap);
        break;
    case ColumnKind::PorePressure:
        c.title = QStringLiteral("u2, u0 (kPa)");
        c.traces = {{[](const SbtnRow& r) { return r.u2 ? std::optional<double>(1000.0 * *r.u2) : std::nullopt; },
                     ConeBlue},
                    {[](const SbtnRow& r) { return std::optional<double>(r.u0); }, Qt::black, Qt::DashLine}};
        // Below the water table u2 falls under u0 in dilating soil: the axis goes below 0 for it.
        c.ticks = RangeOf(rows, c.traces, 3, true);
        break;
    case ColumnKind::Ic:
        c.title = QStringLiteral("Ic");
        c.traces = {{[](const SbtnRow& r) { return Valid(r, r.values.ic); }, Qt::black}};
        c.ticks = {1.0, 4.0, 1.0};
        break;
    default: break;
    }
    return c;
}

void DrawIcBoundaries(PagePainter& p, const Box& b, const Ticks& t)
{
    for (const double ic : {1.31, 2.05, 2.60, 2.95, 3.60}) {
        const double x = X(b, t, ic);
        p.Painter().setPen(QPen(QColor(0x80, 0x80, 0x80), p.U(0.15), Qt::DashLine, Qt::FlatCap));
        p.Painter().drawLine(p.P(x, b.top), p.P(x, b.Bottom()));
    }
}

// Each reading's zone from midway to the reading above to midway to the one below;
// neighbours of one zone are drawn as one band.
void DrawZones(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<SbtnRow>& rows)
{
    const auto zoneOf = [&](std::size_t i) { return rows[i].invalid == Invalid::None ? rows[i].values.zone : 0; };
    std::size_t i = 0;
    while (i < rows.size()) {
        std::size_t j = i;
        while (j + 1 < rows.size() && zoneOf(j + 1) == zoneOf(i)) ++j;
        const double top = i == 0 ? rows[i].depth : (rows[i - 1].depth + rows[i].depth) / 2;
        const double bottom = j + 1 == rows.size() ? rows[j].depth : (rows[j].depth + rows[j + 1].depth) / 2;
        if (zoneOf(i) != 0) {
            const double y1 = std::max(axis.Y(top), b.top), y2 = std::min(axis.Y(bottom), b.Bottom());
            if (y2 > y1) p.Fill({b.left, y1, b.width, y2 - y1}, ZoneColour(zoneOf(i)));
        }
        i = j + 1;
    }
}

void DrawSoil(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<LogInterval>& intervals)
{
    for (const LogInterval& in : intervals) {
        const double y1 = std::max(axis.Y(in.top), b.top), y2 = std::min(axis.Y(in.bottom), b.Bottom());
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


// Blocks in the soil's colour on the left, their labels on the right, each at its
// block's middle and pushed apart where blocks are too thin for them, with a leader
// from the label to its block.
void DrawLayers(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<LogLayer>& layers)
{
    const double blockWidth = b.width * 0.16;
    const double labelLeft = b.left + blockWidth + 2.5;
    const double lineHeight = 2.6;
    struct Label {
        const LogLayer* layer;
        double middle;  // of the visible block
        double y;       // of the label's middle
    };
    std::vector<Label> labels;
    for (const LogLayer& l : layers) {
        const double y1 = std::max(axis.Y(l.top), b.top), y2 = std::min(axis.Y(l.bottom), b.Bottom());
        if (y2 <= y1) continue;
        p.Fill({b.left, y1, blockWidth, y2 - y1}, SoilColour(static_cast<int>(l.soil)));
        p.Line(b.left, y1, b.left + blockWidth, y1, 0.15);
        p.Line(b.left, y2, b.left + blockWidth, y2, 0.15);
        labels.push_back({&l, (y1 + y2) / 2, (y1 + y2) / 2});
    }
    // Down from the top, then back up from the bottom, so that every label fits.
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const double lowest = i == 0 ? b.top + lineHeight / 2 : labels[i - 1].y + lineHeight;
        labels[i].y = std::max(labels[i].y, lowest);
    }
    for (std::size_t i = labels.size(); i-- > 0;) {
        const double highest = i + 1 == labels.size() ? b.Bottom() - lineHeight / 2 : labels[i + 1].y - lineHeight;
        labels[i].y = std::min(labels[i].y, highest);
    }
    // One type size for all labels, the largest at which the longest fits.
    double points = LabelPoints;
    for (const Label& l : labels)
        while (points > 4.5 && p.TextWidth(LayerLabel(*l.layer), points) > b.Right() - labelLeft) points -= 0.25;
    for (const Label& l : labels) {
        p.Line(b.left + blockWidth, l.middle, labelLeft - 0.8, l.y, 0.1, QColor(0x60, 0x60, 0x60));
        p.Text({labelLeft, l.y - lineHeight / 2, b.Right() - labelLeft + 2.0, lineHeight}, LayerLabel(*l.layer),
               points, Qt::AlignLeft | Qt::AlignVCenter);
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
    for (const Column& column : layout.columns) {
        const Box& b = column.box;
        switch (column.kind) {
        case ColumnKind::Depth: DrawDepthColumn(p, b, axis, step, layout.headerTop); break;
        case ColumnKind::Zone:
            p.Painter().save();
            p.Painter().setClipRect(p.R(b));
            DrawZones(p, b, axis, s.sbt.rows);
            p.Painter().restore();
            DrawFrame(p, b, axis, step, QStringLiteral("SBTn zone"), nullptr, layout.headerTop);
            break;
        case ColumnKind::Soil:
            DrawSoil(p, b, axis, s.intervals);
            DrawFrame(p, b, axis, step, QStringLiteral("Sand, silt, clay (%)"), nullptr, layout.headerTop);
            break;
        case ColumnKind::Layers:
            DrawLayers(p, b, axis, s.layers);
            p.Text({b.left, layout.headerTop, b.width, b.top - layout.headerTop - TickLabelHeight},
                   QStringLiteral("Layers"), TitlePoints, Qt::AlignHCenter | Qt::AlignBottom, true);
            break;
        default: {
            const ValueColumn c = MakeColumn(column.kind, s);
            DrawFrame(p, b, axis, step, c.title, &c.ticks, layout.headerTop);
            p.Painter().save();
            p.Painter().setClipRect(p.R(b));
            if (column.kind == ColumnKind::Ic) DrawIcBoundaries(p, b, c.ticks);
            for (const Trace& t : c.traces) DrawTrace(p, b, c.ticks, axis, s.sbt.rows, t);
            p.Painter().restore();
            break;
        }
        }
    }
    DrawLegend(p, layout.legend, s.hasU2);
}

}  // namespace pemlo::log
