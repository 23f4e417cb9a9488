#include "views/Frm_Pemlo01.h"

#include <QLabel>

#include "classify/ReadingSteps.h"
#include "core/ui/Screens.h"
#include "runtime/ui/MousePointer.h"
#include "runtime/RunTimeError.h"
#include "runtime/ui/RunTimeErrorReport.h"
#include "views/LegendPictures.h"
#include "views/Module_ConePlots.h"
#include "views/chart/SoilColours.h"

namespace pemlo {

namespace {

constexpr int ClientWidth = 13980;
constexpr int ClientHeight = 9525;

const std::vector<ToolButtonSpec>& Buttons()
{
    static const std::vector<ToolButtonSpec> buttons{
        {QStringLiteral("Back      "), QStringLiteral("Back"), QStringLiteral("Back to previous form"), {}},
        {QStringLiteral("Print All      "), QStringLiteral("Print"), QString(), {}},
        {QStringLiteral("Exit            "), QStringLiteral("Exit"), QStringLiteral("Exit the program"), {}},
    };
    return buttons;
}

const TwipsRect ChartRects[4] = {
    {100, 600, 3300, 8148},
    {3450, 600, 3300, 8148},
    {6800, 600, 3300, 8148},
    {10200, 600, 3300, 8145},
};

const std::vector<ProjectBandItem> Band{
    {"Project/Number:", {180, 8880, 1335, 225}, "TxtProjNum", {1560, 8880, 1452, 216}, ProjectField::Number},
    {"Project Title:", {3060, 8880, 975, 210}, "TxtTitle", {4140, 8880, 3615, 216}, ProjectField::Title},
    {"Date/Time:", {7860, 8865, 900, 225}, "TxtDate", {8820, 8865, 975, 216}, ProjectField::Date},
    {"Cone No:", {720, 9165, 780, 225}, "TxtConeNo", {1560, 9165, 1452, 216}, ProjectField::ConeNo},
    {"Location/No:", {3060, 9180, 1095, 225}, "TxtLocationNo", {4140, 9180, 1452, 216}, ProjectField::Location},
    {"GWT:", {6480, 9180, 450, 225}, "TxtGWT", {7020, 9180, 735, 216}, ProjectField::GWT},
};

// The frame of the project band, and the frame of the soil legend divided between
// the picture and the name of the method.
const std::vector<TwipsLine> Lines{
    {"Line1", 120, 8820, 10080, 8820},   {"Line2", 120, 9420, 10080, 9420},
    {"Line3", 120, 8820, 120, 9420},     {"Line4", 10080, 8820, 10080, 9420},
    {"Line5", 10140, 8820, 13440, 8820}, {"Line6", 10140, 9420, 13440, 9420},
    {"Line7", 10140, 8820, 10140, 9420}, {"Line8", 13440, 8820, 13440, 9420},
    {"Line9", 10140, 9180, 13440, 9180},
};

const std::vector<QString> ConeTools{QStringLiteral("Toolbar"), QStringLiteral("Data Editor"),
                                     QStringLiteral("Series Legend"), QStringLiteral("Legend"),
                                     QStringLiteral("Menu")};
const std::vector<QString> SoilTools{QStringLiteral("Toolbar"), QStringLiteral("Series Legend")};

}  // namespace

Frm_Pemlo01::Frm_Pemlo01(QWidget* parent)
    : ResultScreen(QStringLiteral("Frm_Pemlo01"), ClientWidth, ClientHeight, Buttons(), parent)
{
    setWindowTitle(QStringLiteral("Classification"));
    BuildDesign();
    Load();
}

void Frm_Pemlo01::BuildDesign()
{
    for (int k = 0; k < 4; ++k) {
        const bool soil = k == 3;
        charts_[k] = AddChart(QStringLiteral("ChartFX_%1").arg(k), ChartRects[k], soil ? SoilTools : ConeTools,
                              soil ? SoilTools : std::vector<QString>{});
    }
    // Depth runs vertically on every chart; the soil chart holds depth as its x positions.
    charts_[3]->Surface().SetAxesExchanged(true);
    charts_[3]->Surface().SetDesignSeriesColors({SandColour, SiltColour, ClayColour});

    AddProjectBand(Band);
    AddDesignLines(Lines);

    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("Image1"));
    picture->setPixmap(SoilLegendPicture());
    picture->setScaledContents(true);  // stretched to the control, as designed
    PlaceDesign(picture, {10200, 8880, 3225, 285});

    auto* method = new QLabel(QStringLiteral("Classification using: Korvu & Pemlo (1999)"), this);
    method->setObjectName(QStringLiteral("Label1"));
    method->setTextFormat(Qt::PlainText);
    // One point below the band's labels: at 9 points the method's name is wider than
    // the frame it stands in and would lose its year.
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(8);
    method->setFont(font);
    PlaceDesign(method, {10200, 9180, 3225, 195});
}

// The load step, in the order engineers' earlier results depend on.
void Frm_Pemlo01::Load()
{
    ApplyResizeSettings();
    Declarations& d = TheRecord();
    setWindowTitle(QStringLiteral(" Classification using: Korvu & Pemlo (1999) - File: ") +
                   QString::fromStdString(d.DataFileName));
    FillProjectBand(d);
    SetMousePointer(MousePointer::Hourglass);
    RunClassificationPipeline(d);
    StoreChart0Height();
    for (chartIndex_ = 0; chartIndex_ <= 2; ++chartIndex_) {
        ConePlot(d, chartIndex_, ChartFX(chartIndex_));
    }
    SoilPlot(ChartFX(3));
    SetMousePointer(MousePointer::Default);
}

ChartSurface& Frm_Pemlo01::ChartFX(Integer index)
{
    if (index < 0 || index > 3) Raise(ErrSubscriptOutOfRange);
    return charts_[static_cast<std::size_t>(index)]->Surface();
}

void Frm_Pemlo01::SoilPlot(ChartSurface& ChartSoil)
{
    Declarations& d = TheRecord();
    try {
        d.NumSeries = 3;
        d.NumPoints = d.NumIntervals;
        for (seriesIndex_ = 0; seriesIndex_ <= d.NumSeries - 1; ++seriesIndex_) {
            ChartSoil.SetSeriesStyle(seriesIndex_, 1);
        }
        ChartSoil.SetPlotSettingA(50);
        ChartSoil.SetPlotSettingB(20);
        ChartSoil.SetTitle(2, QStringLiteral(" Probability of Soil Types"));
        ChartSoil.SetTitleColor(2, 0xFF0000);
        ChartSoil.SetAxisMin(ValueAxis, 0);
        ChartSoil.SetAxisMax(ValueAxis, 100);
        ChartSoil.BeginData(Values, d.NumSeries, d.NumPoints);
        ChartSoil.BeginData(XValues, d.NumSeries, d.NumPoints);
        // The points run from the deepest interval up to the shallowest.
        for (pointIndex_ = 0; pointIndex_ <= d.NumPoints - 1; Increment(pointIndex_)) {
            const int j = d.NumPoints - pointIndex_;
            ChartSoil.SetXValue(0, pointIndex_, d.IntDepth[j]);
            ChartSoil.SetValue(0, pointIndex_, d.IntProb1[j]);
            ChartSoil.SetXValue(1, pointIndex_, d.IntDepth[j]);
            ChartSoil.SetValue(1, pointIndex_, d.IntProb2[j]);
            ChartSoil.SetXValue(2, pointIndex_, d.IntDepth[j]);
            ChartSoil.SetValue(2, pointIndex_, d.IntProb3[j]);
        }
        // The same depth range as the cone plots, so the four charts line up.
        ChartSoil.SetAxisMax(XAxis, d.IntDepth[1]);
        ChartSoil.SetAxisMin(XAxis, d.IntDepth[d.NumPoints - 1]);
        ChartSoil.Refresh();
        ChartSoil.EndData(Values);
        ChartSoil.EndData(XValuesClosedByFive);
    } catch (const RunTimeError&) {
        // A plot that fails stops where it is; the chart keeps what was set.
    }
}

void Frm_Pemlo01::StoreChart0Height() { chart0Height_ = ToInteger(charts_[0]->height()); }

void Frm_Pemlo01::resizeEvent(QResizeEvent* event)
{
    ResultScreen::resizeEvent(event);
    if (charts_[0] != nullptr) Untrapped([this] { StoreChart0Height(); });
}

// Every chart shows its series legend on paper, placed and sized for the page.
ReportCharts Frm_Pemlo01::ChartsToPrint()
{
    const Integer legendHeight = RoundToInteger(TwipsPerPixel * 2.3);
    for (Integer k = 0; k <= 3; ++k) {
        ChartFX(k).SetPrintOptionA(true);
        ChartFX(k).SetPrintOptionB(256);
        ChartFX(k).SetPrintOptionC(legendHeight);
    }
    return ReportCharts{4, {&ChartFX(0), &ChartFX(1), &ChartFX(2), &ChartFX(3)}};
}

void Frm_Pemlo01::OnCommand(const QString& key)
{
    Screens& screens = Screens::Instance();
    if (key == QLatin1String("Back")) {
        screens.Close(ScreenId::Frm_Pemlo01);
    } else if (key == QLatin1String("Print")) {
        PrintToDefaultPrinter();
    } else if (key == QLatin1String("Exit")) {
        screens.Close(ScreenId::Frm_Pemlo01);
        screens.Close(ScreenId::Frm_CPTData);
        screens.Close(ScreenId::Frm_UandV);
        screens.EndProgram();
    }
}

void RegisterFrm_Pemlo01()
{
    Screens::Instance().Register(ScreenId::Frm_Pemlo01, [] { return new Frm_Pemlo01; });
}

}  // namespace pemlo
