// The columns of measured and derived values against depth: qc and qt, fs, Rf, u2 and
// u0, Ic with its zone boundaries. Each column's axis is chosen from its values; the
// readings are drawn as lines, broken where a reading has no value.
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "log/ui/LogColumns.h"

namespace pemlo::log {

namespace {

using sbtn::Invalid;
using sbtn::SbtnRow;

constexpr double TraceWidth = 0.25;
constexpr double RatioCap = 10.0;  // %: beyond it Rf says no more about the soil, and a spike would squash the rest

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

// The readings of a trace as lines, broken where a reading has no value and at the
// sounding's gaps.
void DrawTrace(PagePainter& p, const Box& b, const Ticks& t, const DepthAxis& axis, const LogSounding& s,
               const Trace& trace)
{
    QPen pen(trace.colour, p.U(TraceWidth), trace.style, Qt::FlatCap, Qt::RoundJoin);
    p.Painter().setPen(pen);
    QPolygonF run;
    const auto flush = [&] {
        if (run.size() > 1) p.Painter().drawPolyline(run);
        run.clear();
    };
    for (std::size_t i = 0; i < s.sbt.rows.size(); ++i) {
        const SbtnRow& r = s.sbt.rows[i];
        const std::optional<double> v = trace.value(r);
        if (GapBefore(s, i) || !v || !std::isfinite(*v)) flush();
        if (v && std::isfinite(*v)) run << p.P(X(b, t, std::clamp(*v, t.low, t.high)), axis.Y(r.depth));
    }
    flush();
}

std::optional<double> Valid(const SbtnRow& r, double value)
{
    return r.invalid == Invalid::None ? std::optional<double>(value) : std::nullopt;
}

// From 0 (or the lowest value, where negative values matter) to the highest, capped,
// in ticks whose labels show 0 and both ends.
Ticks RangeOf(const PagePainter& p, double width, const std::vector<SbtnRow>& rows, const std::vector<Trace>& traces,
              int maxTicks, bool negative, double cap = 1e300)
{
    double low = 0.0, high = 0.0;
    for (const SbtnRow& r : rows)
        for (const Trace& t : traces)
            if (const auto v = t.value(r); v && std::isfinite(*v)) low = std::min(low, *v), high = std::max(high, *v);
    return AxisTicks(negative ? low : 0.0, std::min(high, cap), maxTicks, width, TickLabelWidth(p), TickLabelGap);
}

ValueColumn MakeColumn(const PagePainter& p, const Column& column, const LogSounding& s)
{
    const auto& rows = s.sbt.rows;
    ValueColumn c;
    const double width = column.box.width;
    switch (column.kind) {
    case ColumnKind::Cone:
        c.title = QStringLiteral("qc, qt (MPa)");
        c.traces = {{[](const SbtnRow& r) { return std::optional<double>(r.qc); }, ConeBlue},
                    {[](const SbtnRow& r) { return std::optional<double>(r.qt); }, QtColour, Qt::DashLine}};
        c.ticks = RangeOf(p, width, rows, c.traces, 4, false);
        break;
    case ColumnKind::Sleeve:
        c.title = QStringLiteral("fs (kPa)");
        c.traces = {{[](const SbtnRow& r) { return std::optional<double>(1000.0 * r.fs); }, SleeveGreen}};
        // A slightly negative fs is the sleeve's zero drifting: drawn at the axis, not given an axis below 0.
        c.ticks = RangeOf(p, width, rows, c.traces, 3, false);
        break;
    case ColumnKind::Ratio:
        c.title = QStringLiteral("Rf (%)");
        c.traces = {{[](const SbtnRow& r) { return r.rf; }, RatioRed}};
        c.ticks = RangeOf(p, width, rows, c.traces, 3, false, RatioCap);
        break;
    case ColumnKind::PorePressure:
        c.title = QStringLiteral("u2, u0 (kPa)");
        c.traces = {{[](const SbtnRow& r) { return r.u2 ? std::optional<double>(1000.0 * *r.u2) : std::nullopt; },
                     ConeBlue},
                    {[](const SbtnRow& r) { return std::optional<double>(r.u0); }, Qt::black, Qt::DashLine}};
        // Below the water table u2 falls under u0 in dilating soil: the axis goes below 0 for it.
        c.ticks = RangeOf(p, width, rows, c.traces, 3, true);
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

}  // namespace

void DrawValueColumn(PagePainter& p, const Column& column, const DepthAxis& axis, double depthStep, double headerTop,
                     const LogSounding& s)
{
    const Box& b = column.box;
    const ValueColumn c = MakeColumn(p, column, s);
    DrawFrame(p, b, axis, depthStep, c.title, &c.ticks, headerTop);
    p.Painter().save();
    p.Painter().setClipRect(p.R(b));
    if (column.kind == ColumnKind::Ic) DrawIcBoundaries(p, b, c.ticks);
    for (const Trace& t : c.traces) DrawTrace(p, b, c.ticks, axis, s, t);
    p.Painter().restore();
}

}  // namespace pemlo::log
