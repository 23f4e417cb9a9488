#include "views/IndexPlots.h"

#include "views/Module_ConePlots.h"

#include <QString>
#include <array>

namespace pemlo {

namespace {

constexpr ColorRef Blue = 0xFF0000;
constexpr ColorRef Red = 0x0000FF;
constexpr ColorRef DarkRed = 0x000080;

// The ranges the U and V charts find while they are filled; the combined chart
// spans the union of both.
struct IndexRanges {
    double MinU = 0;
    double MaxU = 0;
    double MinV = 0;
    double MaxV = 0;
};

enum class Tracks { U, V, Nothing };

struct IndexSeries {
    const char* legend;
    ColorRef colour;
    const IntervalArray Declarations::*xs;
};

struct IndexChart {
    Integer seriesCount;
    std::array<IndexSeries, 2> series;
    ColorRef captionColour;
    Tracks tracks;
};

// The V chart's one series is labelled "u" like the U chart's: engineers' printed
// reports have always read so, and the legend picture below names the indices.
const IndexChart UChart{1, {{{"u", Blue, &Declarations::IntU}, {}}}, Blue, Tracks::U};
const IndexChart VChart{1, {{{"u", Blue, &Declarations::IntV}, {}}}, DarkRed, Tracks::V};
const IndexChart UVChart{
    2, {{{"u", Blue, &Declarations::IntU}, {"v", Red, &Declarations::IntV}}}, Blue, Tracks::Nothing};

void Track(double x, double& lowest, double& highest)
{
    if (lowest > x) lowest = x;
    if (highest < x) highest = x;
}

// The index axis leaves one unit of margin on each side of the plotted range.
void SetIndexAxis(ChartSurface& chart, Tracks tracks, const IndexRanges& r)
{
    switch (tracks) {
    case Tracks::U:
        chart.SetAxisMax(XAxis, r.MaxU + 1);
        chart.SetAxisMin(XAxis, r.MinU - 1);
        break;
    case Tracks::V:
        chart.SetAxisMax(XAxis, r.MaxV + 1);
        chart.SetAxisMin(XAxis, r.MinV - 1);
        break;
    case Tracks::Nothing:
        chart.SetAxisMax(XAxis, r.MaxU < r.MaxV ? r.MaxV + 1 : r.MaxU + 1);
        chart.SetAxisMin(XAxis, r.MinU < r.MinV ? r.MinU - 1 : r.MinV - 1);
        break;
    }
}

void FillIndexChart(Declarations& d, ChartSurface& chart, const IndexChart& design, IndexRanges& r)
{
    d.NumPoints = d.NumIntervals;
    d.NumSeries = design.seriesCount;
    chart.BeginData(Values, design.seriesCount, d.NumIntervals);
    chart.BeginData(XValues, d.NumSeries, d.NumPoints);
    SetIntervalLineSettings(chart);
    for (Integer s = 0; s < design.seriesCount; ++s) {
        chart.SetSeriesLegend(s, QString::fromLatin1(design.series[s].legend));
        chart.SetSeriesColor(s, design.series[s].colour);
    }
    // The caption text is the chart's own; the load only colours it.
    chart.SetTitleColor(2, design.captionColour);
    if (design.tracks == Tracks::U) r.MinU = r.MaxU = d.IntU[1];
    if (design.tracks == Tracks::V) r.MinV = r.MaxV = d.IntV[1];

    for (int p = 0; p <= d.NumPoints - 1; ++p) {
        const int interval = p + 1;
        for (Integer s = 0; s < design.seriesCount; ++s) {
            chart.SetValue(s, static_cast<Integer>(p), d.IntDepth[interval]);
            chart.SetXValue(s, static_cast<Integer>(p), (d.*(design.series[s].xs))[interval]);
        }
        if (design.tracks == Tracks::U) Track(d.IntU[interval], r.MinU, r.MaxU);
        if (design.tracks == Tracks::V) Track(d.IntV[interval], r.MinV, r.MaxV);
    }

    if (design.tracks == Tracks::U) {
        chart.SetAxisTitle(ValueAxis, d.GraphUnits == GraphEnglish ? QStringLiteral("Depth (ft)")
                                                                   : QStringLiteral("Depth (m)"));
    }
    // Depth grows downward to the second-to-last interval, as on every plotting
    // screen; the deepest interval lies just below the axis end.
    chart.SetAxisMax(ValueAxis, d.IntDepth[1]);
    chart.SetAxisMin(ValueAxis, d.IntDepth[d.NumPoints - 1]);
    SetIndexAxis(chart, design.tracks, r);
    chart.Refresh();
    chart.EndData(Values);
    chart.EndData(XValuesClosedByFive);
}

}  // namespace

void PlotIndexCharts(Declarations& d, ChartSurface& chartU, ChartSurface& chartV, ChartSurface& chartUV)
{
    IndexRanges ranges;
    FillIndexChart(d, chartU, UChart, ranges);
    FillIndexChart(d, chartV, VChart, ranges);
    FillIndexChart(d, chartUV, UVChart, ranges);
}

}  // namespace pemlo
