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
    // Colours of the series that the screen never colours itself (0x00BBGGRR, by series).
    void SetDesignSeriesColors(const std::vector<ColorRef>& colours);

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

    // Draws the whole chart, with everything set on it, into the rectangle
    // (left, top)-(right, bottom) of the device, in device units. Texts keep their
    // type size on the device, so a printed chart does not depend on the size of the
    // window it is shown in.
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
    // Every series with data or settings; the data block is the first seriesCount of them.
    const std::vector<Series>& SeriesList() const;
    Integer SeriesCount() const { return seriesCount_; }
    Integer PointCount() const { return pointCount_; }
    bool HasXValues() const { return hasXValues_; }
    const Axis& AxisOf(ChartAxis axis) const;
    // The codes as the screens set them, for the tests of the screens' commands; the
    // drawing reads the named settings below.
    QString Title(Integer position) const;
    Integer PlotSetting(char which) const;   // 'A'..'D'
    bool IsOpen(Integer kind) const;
    int RefreshCount() const;                // how often Refresh ran
    bool AxesExchanged() const { return axesExchanged_; }
    const std::vector<QString>& StoredToolWindows() const { return toolsStored_; }
    const std::vector<QString>& ShownToolWindows() const { return toolsShown_; }
    bool ShowsTool(const QString& name) const;
    // The series' colour as drawn: its own, else the design colour, else (series 0)
    // the caption's colour, else a fixed palette.
    ColorRef DrawnSeriesColor(Integer series) const;
    // Grows with every change; the widget redraws a chart whose revision it has not drawn.
    unsigned Revision() const { return revision_; }

    // --- The settings by what they mean in the drawing: the key to the codes above ---
    // SetPlotSettingA: the room left of the plot for the depth labels, in pixels.
    Integer LeftMargin() const { return settings_[0]; }
    // SetPlotSettingB: the gap right of the plot, in pixels. Every plot of one screen
    // or page shares its depth rows, so no setting may move a plot up or down.
    Integer RightMargin() const { return settings_[1]; }
    // SetPlotSettingC: the diameter of each point's marker in pixels; 0 draws none.
    Integer MarkerSize() const { return settings_[2]; }
    // SetPlotSettingD: the width of the series' lines in pixels.
    Integer LineWidth() const { return settings_[3]; }
    // SetSeriesStyle(0, 1): the series of the data block are shares of one whole,
    // drawn as stacked areas instead of lines.
    bool Stacked() const;
    // Depth always runs upright: the value axis, or the x axis where the axes are exchanged.
    ChartAxis VerticalAxis() const { return axesExchanged_ ? XAxis : ValueAxis; }
    ChartAxis HorizontalAxis() const { return axesExchanged_ ? ValueAxis : XAxis; }
    // SetTitle and SetTitleColor at the one position the screens use: the caption
    // naming the quantity plotted.
    QString Caption() const { return captions_[CaptionPosition]; }
    std::optional<ColorRef> CaptionColor() const { return captionColours_[CaptionPosition]; }
    // The print preparation of the results view. SetPrintOptionA: the series legend
    // shows on paper; SetPrintOptionB with bit 256: it stands below the plot, else
    // above; SetPrintOptionC: its height in pixels, 0 for the usual height.
    bool PrintsLegend() const { return printLegend_; }
    bool PrintedLegendBelow() const { return (printLegendPlace_ & LegendBelowBit) != 0; }
    Integer PrintedLegendHeight() const { return printLegendHeight_; }

signals:
    void Changed();  // Refresh ran: the widget redraws

private:
    Series& SeriesAt(Integer series);          // a settings slot, grown on demand
    void CheckPoint(Integer series, Integer point) const;
    Axis& AxisAt(Integer axis);
    void Touch() { ++revision_; }

    std::vector<Series> series_;
    Integer seriesCount_ = 0;                  // the data block opened by BeginData
    Integer pointCount_ = 0;
    bool valuesOpen_ = false;
    bool xValuesOpen_ = false;
    bool hasXValues_ = false;                  // without x positions points stand at 1, 2, ...
    Axis axes_[3];
    static constexpr int CaptionPositions = 4;  // positions 0..3; the screens use 2
    static constexpr int CaptionPosition = 2;
    static constexpr std::int32_t LegendBelowBit = 256;
    QString captions_[CaptionPositions];
    std::optional<ColorRef> captionColours_[CaptionPositions];
    Integer settings_[4] = {0, 0, 0, 0};
    bool printLegend_ = false;
    std::int32_t printLegendPlace_ = 0;
    Integer printLegendHeight_ = 0;
    bool axesExchanged_ = false;
    std::vector<QString> toolsStored_;
    std::vector<QString> toolsShown_;
    std::vector<ColorRef> designColours_;
    int refreshCount_ = 0;
    unsigned revision_ = 0;
};

}  // namespace pemlo
