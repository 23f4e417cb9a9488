// The chart model: commands from the screens change it, Refresh tells the widget to
// draw it. Index checks stand where the screens' plotting traps expect a failure.
#include "views/chart/ChartSurface.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>

#include "runtime/RunTimeError.h"
#include "views/chart/ChartRender.h"

namespace pemlo {

namespace {

// Settings may name series beyond the data block (the soil chart styles its series
// before it opens the block); this bounds them as the component did.
constexpr int MaxSeriesSlots = 128;

int SettingIndex(char which)
{
    if (which < 'A' || which > 'D') Raise(ErrInvalidProcedureCall);
    return which - 'A';
}

}  // namespace

ChartSurface::ChartSurface(QObject* parent) : QObject(parent) {}

void ChartSurface::SetAxesExchanged(bool exchanged) { axesExchanged_ = exchanged; Touch(); }

void ChartSurface::SetToolWindows(const std::vector<QString>& stored, const std::vector<QString>& shown)
{
    toolsStored_ = stored;
    toolsShown_ = shown;
    Touch();
}

void ChartSurface::SetDesignSeriesColors(const std::vector<ColorRef>& colours)
{
    designColours_ = colours;
    Touch();
}


bool ChartSurface::ShowsTool(const QString& name) const
{
    for (const QString& t : toolsShown_)
        if (t == name) return true;
    return false;
}

ChartSurface::Series& ChartSurface::SeriesAt(Integer series)
{
    if (series < 0 || series >= MaxSeriesSlots) Raise(ErrSubscriptOutOfRange);
    if (static_cast<size_t>(series) >= series_.size()) series_.resize(static_cast<size_t>(series) + 1);
    return series_[static_cast<size_t>(series)];
}

void ChartSurface::CheckPoint(Integer series, Integer point) const
{
    if (series < 0 || series >= seriesCount_ || point < 0 || point >= pointCount_)
        Raise(ErrSubscriptOutOfRange);
}

ChartSurface::Axis& ChartSurface::AxisAt(Integer axis)
{
    if (axis < 0 || axis > 2) Raise(ErrInvalidProcedureCall);
    return axes_[axis];
}

// Values opens a fresh block of the given size: every earlier point goes, every
// setting stays. XValues opens the x positions of that block; a count that differs
// from the open block resizes it, so a point write never lands outside its arrays.
void ChartSurface::BeginData(Integer kind, Integer seriesCount, Integer pointCount)
{
    if (kind != Values && kind != XValues) Raise(ErrInvalidProcedureCall);
    if (seriesCount < 0 || pointCount < 0 || seriesCount > MaxSeriesSlots) Raise(ErrInvalidProcedureCall);
    const bool resize = kind == Values || seriesCount != seriesCount_ || pointCount != pointCount_;
    if (resize) {
        if (series_.size() < static_cast<size_t>(seriesCount)) series_.resize(static_cast<size_t>(seriesCount));
        for (size_t s = 0; s < series_.size(); ++s) {
            const size_t n = s < static_cast<size_t>(seriesCount) ? static_cast<size_t>(pointCount) : 0;
            if (kind == Values) {
                series_[s].values.assign(n, 0.0);
                series_[s].xs.assign(n, 0.0);
            } else {
                series_[s].values.resize(n, 0.0);
                series_[s].xs.resize(n, 0.0);
            }
        }
        seriesCount_ = seriesCount;
        pointCount_ = pointCount;
    }
    if (kind == Values) {
        valuesOpen_ = true;
        hasXValues_ = false;
    } else {
        for (Series& s : series_) std::fill(s.xs.begin(), s.xs.end(), 0.0);
        xValuesOpen_ = true;
        hasXValues_ = true;
    }
    Touch();
}

// Closing a kind that is not open (code 5 included) changes nothing.
void ChartSurface::EndData(Integer kind)
{
    if (kind == Values && valuesOpen_) valuesOpen_ = false;
    else if (kind == XValues && xValuesOpen_) xValuesOpen_ = false;
    else return;
    Touch();
}

bool ChartSurface::IsOpen(Integer kind) const
{
    if (kind == Values) return valuesOpen_;
    if (kind == XValues) return xValuesOpen_;
    return false;
}

void ChartSurface::SetPlotSettingA(Integer v) { settings_[0] = v; Touch(); }
void ChartSurface::SetPlotSettingB(Integer v) { settings_[1] = v; Touch(); }
void ChartSurface::SetPlotSettingC(Integer v) { settings_[2] = v; Touch(); }
void ChartSurface::SetPlotSettingD(Integer v) { settings_[3] = v; Touch(); }
Integer ChartSurface::PlotSetting(char which) const { return settings_[SettingIndex(which)]; }

void ChartSurface::SetAxisFontSize(Integer axis, Integer points)
{
    if (points < 1) Raise(ErrInvalidProcedureCall);
    AxisAt(axis).fontSize = points;
    Touch();
}

void ChartSurface::SetAxisTitle(Integer axis, const QString& text) { AxisAt(axis).title = text; Touch(); }
void ChartSurface::SetAxisMax(Integer axis, double v) { AxisAt(axis).max = v; Touch(); }
void ChartSurface::SetAxisMin(Integer axis, double v) { AxisAt(axis).min = v; Touch(); }

const ChartSurface::Axis& ChartSurface::AxisOf(ChartAxis axis) const
{
    if (axis < 0 || axis > 2) Raise(ErrInvalidProcedureCall);
    return axes_[axis];
}

void ChartSurface::SetTitle(Integer position, const QString& text)
{
    if (position < 0 || position >= CaptionPositions) Raise(ErrInvalidProcedureCall);
    captions_[position] = text;
    Touch();
}

void ChartSurface::SetTitleColor(Integer position, ColorRef colour)
{
    if (position < 0 || position >= CaptionPositions) Raise(ErrInvalidProcedureCall);
    captionColours_[position] = colour;
    Touch();
}

QString ChartSurface::Title(Integer position) const
{
    return position >= 0 && position < CaptionPositions ? captions_[position] : QString();
}

void ChartSurface::SetSeriesLegend(Integer series, const QString& text) { SeriesAt(series).legend = text; Touch(); }
void ChartSurface::SetSeriesColor(Integer series, ColorRef colour) { SeriesAt(series).colour = colour; Touch(); }
void ChartSurface::SetSeriesStyle(Integer series, Integer style) { SeriesAt(series).style = style; Touch(); }

ColorRef ChartSurface::DrawnSeriesColor(Integer series) const
{
    static constexpr ColorRef palette[] = {0xFF0000, 0x0000FF, 0x008000, 0x800080, 0x008080, 0x000080};
    if (series >= 0 && static_cast<size_t>(series) < series_.size() && series_[series].colour)
        return *series_[series].colour;
    if (series >= 0 && static_cast<size_t>(series) < designColours_.size()) return designColours_[series];
    if (series == 0 && CaptionColor()) return *CaptionColor();
    return palette[static_cast<size_t>(series < 0 ? 0 : series) % std::size(palette)];
}

void ChartSurface::SetValue(Integer series, Integer point, double value)
{
    CheckPoint(series, point);
    series_[series].values[point] = value;
    Touch();
}

void ChartSurface::SetXValue(Integer series, Integer point, double x)
{
    CheckPoint(series, point);
    series_[series].xs[point] = x;
    Touch();
}

const std::vector<ChartSurface::Series>& ChartSurface::SeriesList() const { return series_; }

// The first series decides for the whole block: the soil chart styles all three alike.
bool ChartSurface::Stacked() const { return seriesCount_ > 0 && series_[0].style == 1; }

void ChartSurface::Refresh()
{
    ++refreshCount_;
    Touch();
    emit Changed();
}

int ChartSurface::RefreshCount() const { return refreshCount_; }

void ChartSurface::SetPrintOptionA(bool on) { printLegend_ = on; Touch(); }
void ChartSurface::SetPrintOptionB(std::int32_t v) { printLegendPlace_ = v; Touch(); }
void ChartSurface::SetPrintOptionC(Integer v) { printLegendHeight_ = v; Touch(); }

// The printed report may already hold a painter on the printer: the chart then draws
// with that painter, since a device takes one painter at a time.
void ChartSurface::PaintTo(QPaintDevice* device, std::int32_t left, std::int32_t top, std::int32_t right,
                           std::int32_t bottom, std::int32_t /*mode*/, std::int32_t /*options*/) const
{
    if (device == nullptr) Raise(ErrInvalidProcedureCall);
    const QRectF target(QPointF(left, top), QPointF(right, bottom));
    ChartRenderOptions options;
    options.printing = true;
    if (device->paintingActive() && device->paintEngine() && device->paintEngine()->painter()) {
        RenderChart(*this, *device->paintEngine()->painter(), target, options);
        return;
    }
    QPainter painter;
    if (!painter.begin(device)) Raise(ErrInvalidProcedureCall);
    RenderChart(*this, painter, target, options);
    painter.end();
}

}  // namespace pemlo
