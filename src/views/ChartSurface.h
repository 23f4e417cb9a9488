// The chart model every plot is drawn on: a block of series by points (value and x
// position of each), per-series legend, colour and style, two axes with their ranges,
// titles and label font sizes, the caption above the plot, four plot settings and the
// print options. Screens only issue commands to it; ChartView shows it on screen and
// PaintTo draws the same chart into any paint device (the printer, an image in tests).
#pragma once

#include <QObject>
#include <QString>
#include <optional>
#include <vector>

#include "runtime/Arith.h"

class QPaintDevice;

namespace pemlo {

// Kinds of data a chart opens and closes. Code 5 names no data the views open:
// ending it changes nothing, so the x positions stay in force.
enum ChartDataKind : Integer { Values = 1, XValuesClosedByFive = 5, XValues = 6 };

// The component's axis numbers; number 1 exists and is never used.
enum ChartAxis : Integer { ValueAxis = 0, XAxis = 2 };

// Colours arrive as 24-bit references in the layout 0x00BBGGRR.
using ColorRef = std::int32_t;

class ChartSurface : public QObject {
    Q_OBJECT
public:
    explicit ChartSurface(QObject* parent = nullptr);

    // --- Design-time attributes (fixed per chart by its screen's layout data) ---
    // Which axis runs vertically: depth is always vertical. false: ValueAxis vertical
    // (cone data, U and V charts); true: XAxis vertical (the soil probability chart).
    void SetAxesExchanged(bool exchanged);
    // The tool windows stored with the chart ("Toolbar", "Data Editor", "Series Legend",
    // "Legend", "Menu") and which of them show.
    void SetToolWindows(const std::vector<QString>& stored, const std::vector<QString>& shown);

    // --- Operations the screens call ---
    void BeginData(Integer kind, Integer seriesCount, Integer pointCount);
    void EndData(Integer kind);
    void SetPlotSettingA(Integer v);
    void SetPlotSettingB(Integer v);
    void SetPlotSettingC(Integer v);
    void SetPlotSettingD(Integer v);
    void SetAxisFontSize(Integer axis, Integer points);
    void SetTitle(Integer position, const QString& text);
    void SetTitleColor(Integer position, ColorRef colour);
    void SetSeriesLegend(Integer series, const QString& text);
    void SetSeriesColor(Integer series, ColorRef colour);
    void SetSeriesStyle(Integer series, Integer style);
    void SetAxisTitle(Integer axis, const QString& text);
    void SetValue(Integer series, Integer point, double value);
    void SetXValue(Integer series, Integer point, double x);
    void SetAxisMax(Integer axis, double v);
    void SetAxisMin(Integer axis, double v);
    void Refresh();
    void SetPrintOptionA(bool on);
    void SetPrintOptionB(std::int32_t v);
    void SetPrintOptionC(Integer v);

    // Draws the whole chart, as it stands on screen, scaled to the rectangle
    // (left, top)-(right, bottom) of the device, in device units.
    void PaintTo(QPaintDevice* device, std::int32_t left, std::int32_t top, std::int32_t right,
                 std::int32_t bottom, std::int32_t mode, std::int32_t options) const;

    // --- Read back, for the chart widget, the report and the tests ---
    struct Series {
        QString legend;
        std::optional<ColorRef> colour;
        Integer style = 0;
        std::vector<double> values;
        std::vector<double> xs;
    };
    struct Axis {
        std::optional<double> min;
        std::optional<double> max;
        QString title;
        Integer fontSize = 0;
    };
    const std::vector<Series>& SeriesList() const;
    const Axis& AxisOf(Integer axis) const;
    QString Title(Integer position) const;
    std::optional<ColorRef> TitleColor(Integer position) const;
    Integer PlotSetting(char which) const;   // 'A'..'D'
    bool IsOpen(Integer kind) const;
    int RefreshCount() const;                // how often Refresh ran

signals:
    void Changed();  // Refresh ran: the widget redraws
};

}  // namespace pemlo
