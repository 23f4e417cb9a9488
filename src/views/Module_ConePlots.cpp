#include "views/Module_ConePlots.h"

#include <QChar>
#include <QString>
#include <array>

#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

// Captions, legend and colour of one cone plot. The English captions carry the
// superscript two and end in ") " with one blank, as printed reports always showed.
struct ConeQuantity {
    QString englishCaption;
    QString siCaption;
    ColorRef captionColour;
    QString legend;
    const IntervalArray Declarations::*values;
};

QString SquareUnits(const char* text)
{
    return QString::fromLatin1(text) + QChar(0x00B2) + QStringLiteral(") ");
}

const std::array<ConeQuantity, 3>& Quantities()
{
    static const std::array<ConeQuantity, 3> table{{
        {SquareUnits(" Tip Resistance (ton/ft"), QStringLiteral(" Tip Resistance (MPa)"), 0xFF0000,
         QStringLiteral("Tip Resistance [qc]."), &Declarations::IntQTip},
        {SquareUnits(" Sleeve Resistance (ton/ft"), QStringLiteral(" Sleeve Resistance (MPa)"), 0x00FF00,
         QStringLiteral(" Sleeve Resistance [fs] "), &Declarations::IntQSleeve},
        {QStringLiteral(" Sleeve/Tip Ratio (%) "), QStringLiteral(" Sleeve/Tip Ratio (%) "), 0x0000FF,
         QStringLiteral(" [Sleeve/tip] Ratio "), &Declarations::IntRatio},
    }};
    return table;
}

void PlotQuantity(Declarations& d, Integer index, ChartSurface& chart)
{
    const ConeQuantity& q = Quantities()[static_cast<std::size_t>(index)];
    chart.SetTitle(2, d.GraphUnits == GraphEnglish ? q.englishCaption : q.siCaption);
    chart.SetTitleColor(2, q.captionColour);
    chart.SetSeriesLegend(0, q.legend);
    // Only the left chart names the depth: the row of charts shares it.
    if (index == ConeTip) {
        chart.SetAxisTitle(ValueAxis, d.GraphUnits == GraphEnglish ? QStringLiteral("Depth (ft)")
                                                                   : QStringLiteral("Depth (m)"));
    }

    const IntervalArray& xs = d.*(q.values);
    // The shared running index keeps its last value: NumPoints once the loop is done.
    for (d.PlotIndex = 0; d.PlotIndex <= d.NumPoints - 1; Increment(d.PlotIndex)) {
        const int interval = d.PlotIndex + 1;
        chart.SetValue(0, d.PlotIndex, d.IntDepth[interval]);
        chart.SetXValue(0, d.PlotIndex, xs[interval]);
    }

    // Depth grows downward, from the first interval to the second-to-last one: the
    // deepest interval lies just beyond the axis end, as on the cone data screen.
    chart.SetAxisMax(ValueAxis, d.IntDepth[1]);
    chart.SetAxisMin(ValueAxis, d.IntDepth[d.NumPoints - 1]);
    chart.Refresh();
}

}  // namespace

void SetIntervalLineSettings(ChartSurface& chart)
{
    chart.SetPlotSettingA(50);
    chart.SetPlotSettingC(5);
    chart.SetPlotSettingD(RoundToInteger(1.5));
    chart.SetAxisFontSize(ValueAxis, 10);
    chart.SetAxisFontSize(XAxis, 10);
}

void ConePlot(Declarations& d, Integer& index, ChartSurface& chart)
{
    try {
        d.NumSeries = 1;
        d.NumPoints = d.NumIntervals;
        chart.BeginData(Values, 1, d.NumPoints);
        chart.BeginData(XValues, d.NumSeries, d.NumPoints);
        SetIntervalLineSettings(chart);
        if (index >= ConeTip && index <= ConeRatio) {
            PlotQuantity(d, index, chart);
        }
        chart.EndData(Values);
        chart.EndData(XValues);
    } catch (const RunTimeError&) {
        // A plot that fails stops where it is; the view goes on with its next chart.
    }
}

}  // namespace pemlo
