// Drawing of the chart model with Qt Charts. Depth is always vertical: the value
// axis in the cone charts, the x axis where the chart's axes are exchanged.
#include "views/chart/ChartRender.h"

#include "views/chart/ChartThinning.h"

#include <QAreaSeries>
#include <QChart>
#include <QFontMetricsF>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QLegend>
#include <QLineSeries>
#include <QPainter>
#include <QScreen>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

namespace pemlo {

namespace {

constexpr int DefaultLabelPoints = 8;
constexpr int CaptionPoints = 10;
constexpr int AxisTitlePoints = 9;
constexpr int DefaultWidth = 270;    // a chart never shown and never sized
constexpr int DefaultHeight = 455;

QColor FromColorRef(ColorRef c)
{
    return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
}

QFont Arial(int points, bool bold = false)
{
    QFont f(QStringLiteral("Arial"));
    f.setPointSize(points);
    f.setBold(bold);
    return f;
}

// The coordinate of point p on `axis`: values on ValueAxis; x positions on XAxis,
// or 1, 2, ... while the chart has none.
double Coordinate(const ChartSurface& s, const ChartSurface::Series& series, ChartAxis axis, size_t p)
{
    if (axis == ValueAxis) return series.values[p];
    return s.HasXValues() ? series.xs[p] : static_cast<double>(p + 1);
}

// A tick step of 1, 2 or 5 times a power of ten giving about `wanted` ticks.
double NiceStep(double span, int wanted)
{
    const double raw = span / std::max(1, wanted);
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (double m : {1.0, 2.0, 5.0, 10.0})
        if (m * power >= raw) return m * power;
    return 10.0 * power;
}

}  // namespace

DrawnRange RangeOf(const ChartSurface& s, ChartAxis axis)
{
    double lo = 0.0, hi = 0.0;
    bool any = false;
    const bool stack = s.Stacked() && axis == ValueAxis;
    for (size_t p = 0; p < static_cast<size_t>(s.PointCount()); ++p) {
        double sum = 0.0;
        for (Integer k = 0; k < s.SeriesCount(); ++k) {
            double v = Coordinate(s, s.SeriesList()[k], axis, p);
            if (stack) v = (sum += v);
            if (!std::isfinite(v)) continue;
            lo = any ? std::min(lo, v) : v;
            hi = any ? std::max(hi, v) : v;
            any = true;
        }
    }
    if (!any) { lo = 0.0; hi = 10.0; }
    const ChartSurface::Axis& a = s.AxisOf(axis);
    DrawnRange r;
    if (a.min && a.max) {
        r.low = std::min(*a.min, *a.max);
        r.high = std::max(*a.min, *a.max);
        r.reversed = *a.min > *a.max;
    } else if (a.min || a.max) {
        // One end set: the other covers the data on its side of it.
        const double set = a.min ? *a.min : *a.max;
        const double other = a.min ? (hi > set ? hi : lo) : (lo < set ? lo : hi);
        r.low = std::min(set, other);
        r.high = std::max(set, other);
        r.reversed = a.min ? *a.min > other : other > *a.max;
    } else {
        r.low = lo;
        r.high = hi;
        if (r.high > r.low) {
            const double step = NiceStep(r.high - r.low, 5);
            r.low = std::floor(r.low / step) * step;
            r.high = std::ceil(r.high / step) * step;
        }
    }
    if (!(r.high > r.low)) {
        const double pad = r.low == 0.0 ? 1.0 : std::abs(r.low) * 0.1;
        r.low -= pad;
        r.high += pad;
    }
    return r;
}

namespace {

QValueAxis* MakeAxis(const ChartSurface& s, ChartAxis axis, double lengthPx)
{
    auto* a = new QValueAxis;
    const DrawnRange r = RangeOf(s, axis);
    a->setRange(r.low, r.high);
    a->setReverse(r.reversed);
    const double step = NiceStep(r.high - r.low, std::clamp(static_cast<int>(lengthPx / 45.0), 2, 12));
    a->setTickType(QValueAxis::TicksDynamic);
    a->setTickAnchor(std::ceil(r.low / step) * step);
    a->setTickInterval(step);
    a->setLabelFormat(QStringLiteral("%.6g"));
    const ChartSurface::Axis& model = s.AxisOf(axis);
    a->setLabelsFont(Arial(model.fontSize > 0 ? model.fontSize : DefaultLabelPoints));
    a->setTitleText(model.title);
    a->setTitleVisible(!model.title.isEmpty());
    a->setTitleFont(Arial(AxisTitlePoints, true));
    a->setGridLineColor(QColor(220, 220, 220));
    a->setLinePenColor(Qt::black);
    a->setLabelsColor(Qt::black);
    return a;
}

// A line is at least one pixel wide, whatever the setting.
Integer LineWidth(const ChartSurface& s) { return std::max<Integer>(1, s.LineWidth()); }

QPen SeriesPen(const ChartSurface& s, Integer k)
{
    QPen pen(FromColorRef(s.DrawnSeriesColor(k)));
    pen.setWidthF(LineWidth(s));
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

// Horizontal and vertical coordinate of a point: depth is the vertical one.
QPointF Place(const ChartSurface& s, const ChartSurface::Series& series, size_t p, double value)
{
    const double x = Coordinate(s, series, XAxis, p);
    return s.AxesExchanged() ? QPointF(value, x) : QPointF(x, value);
}

// The depth one pixel covers on screen, for thinning long lines; 0: draw them whole.
double DepthPixel(const ChartSurface& s, double plotHeight)
{
    const DrawnRange r = RangeOf(s, s.VerticalAxis());
    return plotHeight > 0 ? (r.high - r.low) / plotHeight : 0.0;
}

void AddLines(QChart& chart, const ChartSurface& s, double depthPixel)
{
    const Integer marker = s.MarkerSize();
    for (Integer k = 0; k < s.SeriesCount(); ++k) {
        const auto& series = s.SeriesList()[k];
        QList<QPointF> points;
        points.reserve(static_cast<qsizetype>(series.values.size()));
        for (size_t p = 0; p < series.values.size(); ++p) points.append(Place(s, series, p, series.values[p]));
        auto* line = new QLineSeries;
        line->setName(series.legend);
        line->setPen(SeriesPen(s, k));
        if (marker > 0) {
            line->setPointsVisible(true);
            // The marker's outline is drawn with the line's pen: the whole dot is the setting.
            line->setMarkerSize(std::max(2, marker - LineWidth(s)));
        }
        // Thinning works along the drawn vertical, which is depth.
        line->replace(depthPixel > 0 && marker <= 0 ? ThinForScreen(points, depthPixel) : points);
        chart.addSeries(line);
    }
}

// Stacked series are shares of one whole: each fills the band between the sum of
// the series before it and the sum including it.
void AddStackedAreas(QChart& chart, const ChartSurface& s)
{
    const size_t n = static_cast<size_t>(s.PointCount());
    std::vector<double> below(n, 0.0);
    for (Integer k = 0; k < s.SeriesCount(); ++k) {
        const auto& series = s.SeriesList()[k];
        auto* lower = new QLineSeries;
        auto* upper = new QLineSeries;
        QList<QPointF> lo, up;
        for (size_t p = 0; p < n; ++p) {
            lo.append(Place(s, series, p, below[p]));
            below[p] += series.values[p];
            up.append(Place(s, series, p, below[p]));
        }
        lower->replace(lo);
        upper->replace(up);
        auto* area = new QAreaSeries(upper, lower);
        area->setName(series.legend);
        const QColor colour = FromColorRef(s.DrawnSeriesColor(k));
        area->setBrush(colour);
        area->setPen(QPen(colour.darker(130), 1));
        chart.addSeries(area);
    }
}

}  // namespace

namespace {

// Room below the plot for the labels of the horizontal axis: the largest label type
// any chart uses, so that every chart of a row keeps the same room whatever its own.
constexpr int LargestLabelPoints = 10;
constexpr double TickRoom = 6.0;
constexpr int DefaultRightMargin = 8;

bool LegendHasText(const ChartSurface& s)
{
    for (Integer k = 0; k < s.SeriesCount(); ++k)
        if (!s.SeriesList()[k].legend.trimmed().isEmpty()) return true;
    return false;
}

bool LegendToolShown(const ChartSurface& s)
{
    return s.ShowsTool(QStringLiteral("Series Legend")) || s.ShowsTool(QStringLiteral("Legend"));
}

// Whether the chart keeps a band for its series legend. On paper the band follows
// the print preparation alone, text or not, so that every chart prepared for one
// page keeps the same band; on screen only a legend that shows takes room.
bool LegendBand(const ChartSurface& s, const ChartRenderOptions& options)
{
    if (options.printing) return s.PrintsLegend() || LegendToolShown(s);
    return LegendToolShown(s) && LegendHasText(s);
}

double LegendHeight(const ChartSurface& s, const ChartRenderOptions& options)
{
    if (options.printing && s.PrintedLegendHeight() > 0) return s.PrintedLegendHeight();
    return QFontMetricsF(Arial(8)).height() + 12.0;
}

}  // namespace

void FillChart(QChart& chart, const ChartSurface& s, const ChartRenderOptions& options)
{
    chart.removeAllSeries();
    for (QAbstractAxis* a : chart.axes()) {
        chart.removeAxis(a);
        delete a;
    }
    chart.setAnimationOptions(QChart::NoAnimation);
    chart.setBackgroundVisible(true);
    chart.setBackgroundBrush(Qt::white);
    chart.setBackgroundPen(Qt::NoPen);
    chart.setBackgroundRoundness(0);
    chart.setDropShadowEnabled(false);
    chart.setTitle(s.Caption());
    chart.setTitleFont(Arial(CaptionPoints, true));
    chart.setTitleBrush(FromColorRef(s.CaptionColor().value_or(0)));

    const QSizeF size = chart.size().isEmpty() ? QSizeF(DefaultWidth, DefaultHeight) : chart.size();
    if (s.Stacked()) AddStackedAreas(chart, s);
    else AddLines(chart, s, options.thin ? DepthPixel(s, size.height()) : 0.0);

    QValueAxis* h = MakeAxis(s, s.HorizontalAxis(), size.width());
    QValueAxis* v = MakeAxis(s, s.VerticalAxis(), size.height());
    chart.addAxis(h, Qt::AlignBottom);
    chart.addAxis(v, Qt::AlignLeft);
    for (QAbstractSeries* series : chart.series()) {
        series->attachAxis(h);
        series->attachAxis(v);
    }

    QLegend* legend = chart.legend();
    legend->setVisible(LegendBand(s, options) && LegendHasText(s));
    legend->setFont(Arial(8));
    LayoutChart(chart, s, options);
}


// The plot area of a chart of the given size. Its top and bottom depend on nothing
// but the chart's height and whether it keeps a legend band: the charts of one screen
// or one printed page share their depth axis, and a depth must stand on the same row
// on each of them. The caption above and the horizontal labels below get fixed
// bands; the margins only act sideways, so that no setting moves a plot up or down
// against its neighbours.
QRectF PlotAreaOf(const ChartSurface& s, const QSizeF& size, const ChartRenderOptions& options)
{
    const double top = PlotTop();
    double bottom = size.height() - HorizontalLabelsBand();
    if (LegendBand(s, options)) bottom -= LegendHeight(s, options);

    const ChartSurface::Axis& depth = s.AxisOf(s.VerticalAxis());
    const DrawnRange r = RangeOf(s, s.VerticalAxis());
    const Integer pts = depth.fontSize;
    const QFontMetricsF fm(Arial(pts > 0 ? pts : DefaultLabelPoints));
    const double labels = std::max(fm.horizontalAdvance(QString::number(r.low, 'g', 6)),
                                   fm.horizontalAdvance(QString::number(r.high, 'g', 6))) + 10.0;
    const double title = depth.title.isEmpty() ? 0.0 : QFontMetricsF(Arial(AxisTitlePoints, true)).height() + 6.0;
    const double left = std::max<double>(s.LeftMargin(), labels + title);
    const double right = size.width() - std::max<int>(DefaultRightMargin, s.RightMargin());
    return QRectF(QPointF(left, top), QPointF(std::max(left + 1.0, right), std::max(top + 1.0, bottom)));
}

double PlotTop() { return 2.0 + QFontMetricsF(Arial(CaptionPoints, true)).height() + 10.0; }

double HorizontalLabelsBand() { return TickRoom + QFontMetricsF(Arial(LargestLabelPoints)).height() + 6.0; }

namespace {

void ActivateLayout(QChart& chart)
{
    if (QGraphicsLayout* layout = chart.layout()) {
        layout->invalidate();
        layout->activate();
    }
}

}  // namespace

void LayoutChart(QChart& chart, const ChartSurface& s, const ChartRenderOptions& options)
{
    chart.setMargins(QMargins(4, 2, 4, 2));
    if (chart.layout()) chart.layout()->setContentsMargins(0, 0, 0, 0);

    QLegend* legend = chart.legend();
    if (legend->isVisible()) {
        const bool below = !options.printing || s.PrintedLegendBelow();
        legend->setAlignment(below ? Qt::AlignBottom : Qt::AlignTop);
        legend->setBackgroundVisible(false);
        legend->setMaximumHeight(LegendHeight(s, options));
    }
    // Lay the chart out now: a chart painted before the event loop runs again (a
    // page, an image, a grab) must not show the layout of its previous size. Qt places
    // the caption and the legend only while it places the plot itself, so the chart is
    // laid out once freely and then with its plot where it belongs.
    const QSizeF size = chart.size().isEmpty() ? QSizeF(DefaultWidth, DefaultHeight) : chart.size();
    chart.setPlotArea(QRectF());
    ActivateLayout(chart);
    chart.setPlotArea(PlotAreaOf(s, size, options));
    ActivateLayout(chart);
}

// The pixels fonts are laid out in: the screen's logical dots per inch.
double LayoutDotsPerInch()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen && screen->logicalDotsPerInchY() > 0 ? screen->logicalDotsPerInchY() : 96.0;
}

void RenderChart(const ChartSurface& s, QPainter& painter, const QRectF& target, const ChartRenderOptions& options)
{
    if (target.width() <= 0 || target.height() <= 0) return;
    // Laid out at the size the rectangle has on the device, in the pixels fonts are
    // laid out in: on paper every text keeps its type size, whatever the size of the
    // window the chart was shown in.
    const QPaintDevice* device = painter.device();
    const double deviceDpi = device && device->logicalDpiY() > 0 ? device->logicalDpiY() : LayoutDotsPerInch();
    const double scale = deviceDpi / LayoutDotsPerInch();
    const QSizeF logical(target.width() / scale, target.height() / scale);
    QGraphicsScene scene;
    auto* chart = new QChart;   // owned by the scene
    scene.addItem(chart);
    chart->setGeometry(QRectF(QPointF(0, 0), logical));
    FillChart(*chart, s, options);
    scene.setSceneRect(QRectF(QPointF(0, 0), logical));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    scene.render(&painter, target, scene.sceneRect(), Qt::IgnoreAspectRatio);
    painter.restore();
}

}  // namespace pemlo
