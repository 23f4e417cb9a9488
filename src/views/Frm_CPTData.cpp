#include "views/Frm_CPTData.h"

#include <QLabel>

#include "classify/ReadingSteps.h"
#include "core/ui/Screens.h"
#include "runtime/ui/MousePointer.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

// Layout as designed, in twips; the toolbar's 480 twips included.
constexpr int ClientWidth = 11880;
constexpr int ClientHeight = 8235;

const std::vector<ToolButtonSpec>& Buttons()
{
    static const std::vector<ToolButtonSpec> buttons = {
        {QStringLiteral("Back      "), QStringLiteral("Back"), QStringLiteral("Back to previous form"), {}},
        {QStringLiteral("Classify Soil   "), QStringLiteral("Next"), QStringLiteral("Select Classification Method  "),
         // The entries only name the methods; the button itself always runs the first.
         {{QStringLiteral("Pemlo & Korvu (1999) Method"), QStringLiteral("Pemlo1")},
          {QStringLiteral("Robertson & Campanella (19**)"), QStringLiteral("Robertson")},
          {QStringLiteral("Pemlo (19**)"), QStringLiteral("Pemlo2")}}},
        // Qt shows a doubled ampersand as one: the button reads "Plot U & V".
        {QStringLiteral("Plot U && V"), QStringLiteral("Next2"), QStringLiteral("Plot U and V"), {}},
        {QStringLiteral("Print All     "), QStringLiteral("Print"), QString(), {}},
        {QStringLiteral("Exit           "), QStringLiteral("Exit"), QStringLiteral("Exit the program"), {}},
    };
    return buttons;
}

struct ChartPlace {
    const char* name;
    TwipsRect rect;
};
constexpr ChartPlace Charts[3] = {
    {"ChartFX1", {120, 600, 4056, 6828}},
    {"ChartFX2", {4176, 600, 3816, 6828}},
    {"ChartFX3", {8004, 600, 3816, 6828}},
};

const std::vector<ProjectBandItem>& Band()
{
    static const std::vector<ProjectBandItem> band = {
        {"Project/Number:", {180, 7560, 1335, 225}, "TxtProjNum", {1560, 7554, 1452, 216}, ProjectField::Number},
        {"Project Title:", {3060, 7560, 972, 204}, "TxtTitle", {4140, 7554, 3852, 216}, ProjectField::Title},
        {"Date/Time:", {8100, 7545, 900, 225}, "TxtDate", {9060, 7545, 1212, 216}, ProjectField::Date},
        {"Cone No:", {720, 7845, 780, 225}, "TxtConeNo", {1560, 7842, 1452, 216}, ProjectField::ConeNo},
        {"Location/No:", {3060, 7860, 1095, 225}, "TxtLocationNo", {4140, 7860, 1452, 216}, ProjectField::Location},
        {"GWT:", {6720, 7860, 450, 225}, "TxtGWT", {7260, 7860, 735, 216}, ProjectField::GWT},
    };
    return band;
}

const std::vector<TwipsLine>& Frame()
{
    static const std::vector<TwipsLine> lines = {
        {"Line1", 120, 7500, 11820, 7500},
        {"Line2", 120, 8100, 11820, 8100},
        {"Line3", 120, 7500, 120, 8100},
        {"Line4", 11820, 7500, 11820, 8100},
    };
    return lines;
}

QString DepthTitle(const Declarations& d)
{
    return d.GraphUnits == GraphEnglish ? QStringLiteral("Depth (ft)") : QStringLiteral("Depth (m)");
}

// English captions carry the superscript two and end in a blank; SI captions do not.
QString Caption(const Declarations& d, const char* quantity)
{
    const QString name = QString::fromLatin1(quantity);
    if (d.GraphUnits == GraphEnglish) return name + QStringLiteral(" (ton/ft") + QChar(0x00B2) + QStringLiteral(") ");
    return name + QStringLiteral(" (MPa)");
}

constexpr ColorRef Blue = 0xFF0000;
constexpr ColorRef Green = 0x00FF00;
constexpr ColorRef Red = 0x0000FF;

// The line width is designed as 1.5 and reaches the chart as a whole number.
const Integer LineWidth = RoundToInteger(1.5);

}  // namespace

Frm_CPTData::Frm_CPTData(QWidget* parent)
    : ResultScreen(QStringLiteral("Frm_CPTData"), ClientWidth, ClientHeight, Buttons(), parent)
{
    // The empty picture of the design lies behind the tip chart and shows nothing.
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    PlaceDesign(image, {480, 3240, 1815, 1215});
    for (int k = 0; k < 3; ++k)
        charts_[k] = AddChart(QString::fromLatin1(Charts[k].name), Charts[k].rect, {QStringLiteral("Toolbar")},
                              {QStringLiteral("Toolbar")});
    image->lower();
    AddProjectBand(Band());
    AddDesignLines(Frame());
    Form_Load();
}

void Frm_CPTData::Form_Load()
{
    Declarations& d = TheRecord();
    ApplyResizeSettings();
    setWindowTitle(QStringLiteral("CPT Data -  File:  ") + QString::fromStdString(d.DataFileName));
    FillProjectBand(d);
    CleanReadings(d, readingIndex_);
    SetMousePointer(MousePointer::Hourglass);
    TipPlot();
    SleevePlot();
    Ratioplot();
    SetMousePointer(MousePointer::Default);
}

// Depth is the point value, the plotted quantity its x position.
void Frm_CPTData::PlotPoints(ChartSurface& chart, const ReadingArray& xs)
{
    const Declarations& d = TheRecord();
    const Integer last = static_cast<Integer>(d.NumPoints - 1);
    for (pointIndex_ = 0; pointIndex_ <= last; Increment(pointIndex_)) {
        chart.SetValue(0, pointIndex_, d.Depth[pointIndex_ + 1]);
        chart.SetXValue(0, pointIndex_, xs[pointIndex_ + 1]);
    }
}

// Depth grows downward, ending one reading short of the deepest: that is how these
// charts have always been scaled. A sounding of one reading fails on the minimum.
void Frm_CPTData::DepthAxis(ChartSurface& chart)
{
    const Declarations& d = TheRecord();
    chart.SetAxisMax(ValueAxis, d.Depth[1]);
    chart.SetAxisMin(ValueAxis, d.Depth[d.NumPoints - 1]);
    chart.Refresh();
    chart.EndData(Values);
    chart.EndData(XValues);
}

void Frm_CPTData::TipPlot()
{
    try {
        Declarations& d = TheRecord();
        ChartSurface& chart = charts_[0]->Surface();
        d.NumSeries = 1;
        d.NumPoints = d.NumLines;
        chart.BeginData(Values, d.NumSeries, d.NumPoints);
        chart.BeginData(XValues, d.NumSeries, d.NumPoints);
        chart.SetAxisTitle(ValueAxis, DepthTitle(d));
        chart.SetTitle(2, Caption(d, " Tip Resistance"));
        chart.SetPlotSettingA(50);
        chart.SetTitleColor(2, Blue);
        chart.SetPlotSettingD(LineWidth);
        chart.SetAxisFontSize(ValueAxis, 10);
        PlotPoints(chart, d.Q_Tip);
        DepthAxis(chart);
    } catch (const RunTimeError&) {
        // The plot ends at its first failure; the chart keeps what was set.
    }
}

void Frm_CPTData::SleevePlot()
{
    try {
        Declarations& d = TheRecord();
        ChartSurface& chart = charts_[1]->Surface();
        chart.BeginData(Values, d.NumSeries, d.NumPoints);
        chart.BeginData(XValues, d.NumSeries, d.NumPoints);
        chart.SetTitle(2, Caption(d, " Sleeve Resistance"));
        chart.SetPlotSettingA(50);
        chart.SetPlotSettingB(10);
        chart.SetPlotSettingD(LineWidth);
        chart.SetTitleColor(2, Green);
        PlotPoints(chart, d.Q_Sleeve);
        DepthAxis(chart);
    } catch (const RunTimeError&) {
    }
}

void Frm_CPTData::Ratioplot()
{
    try {
        Declarations& d = TheRecord();
        ChartSurface& chart = charts_[2]->Surface();
        chart.BeginData(Values, d.NumSeries, d.NumPoints);
        chart.BeginData(XValues, d.NumSeries, d.NumPoints);
        chart.SetTitle(2, QStringLiteral(" Sleeve/Tip Ratio (%) "));
        chart.SetPlotSettingA(50);
        chart.SetPlotSettingB(10);
        chart.SetPlotSettingD(LineWidth);
        chart.SetTitleColor(2, Red);
        PlotPoints(chart, d.Ratio);
        DepthAxis(chart);
    } catch (const RunTimeError&) {
    }
}

void Frm_CPTData::OnCommand(const QString& key)
{
    Screens& screens = Screens::Instance();
    if (key == QLatin1String("Back")) {
        screens.Close(ScreenId::Frm_CPTData);
        screens.Reveal(ScreenId::Frm_Titles);
    } else if (key == QLatin1String("Next")) {
        screens.Show(ScreenId::Frm_Pemlo01);
    } else if (key == QLatin1String("Next2")) {
        screens.Show(ScreenId::Frm_UandV);
    } else if (key == QLatin1String("Print")) {
        PrintToDefaultPrinter();
    } else if (key == QLatin1String("Exit")) {
        screens.Close(ScreenId::Frm_CPTData);
        screens.EndProgram();
    }
}

void RegisterFrm_CPTData()
{
    Screens::Instance().Register(ScreenId::Frm_CPTData, [] { return new Frm_CPTData; });
}

}  // namespace pemlo
