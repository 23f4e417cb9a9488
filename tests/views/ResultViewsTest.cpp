// The classification results view and the U and V view as a user meets them: what
// each load puts on the charts of a sounding, the window captions, the command bars
// and their commands, the legend pictures, and the errors a load lets through.
#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QTemporaryDir>
#include <QToolButton>
#include <cmath>
#include <functional>
#include <memory>

#include "IntervalRecord.h"
#include "core/Screens.h"
#include "runtime/MousePointer.h"
#include "runtime/Printer.h"
#include "runtime/RunTimeError.h"
#include "support/ModalWatcher.h"
#include "views/ChartView.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"

namespace pemlo {
namespace {

// An SI sounding of readings every 5 cm down to `lastDepth`, with tip resistance
// and friction that vary enough to give every soil type some probability.
void MakeSounding(Declarations& d, double lastDepth)
{
    d.DataFileName = "C:\\data\\s1.txt";
    d.DataUnits = DataSI;
    d.GraphUnits = GraphSI;
    d.ProjectNumber = "P-17";
    d.ProjectTitle = "Quay wall";
    d.ProjectLocation = "North pier";
    d.GWT = "1.2";
    d.ConeNo = "C5";
    d.ProjectDate = "2024-05-01 09:30";
    const int n = static_cast<int>(std::lround(lastDepth / 0.05));
    for (int k = 1; k <= n; ++k) {
        d.Depth[k] = static_cast<float>(0.05 * k);
        d.Q_Tip[k] = static_cast<float>(2.0 + 1.5 * std::sin(k / 7.0) + 0.05 * k);
        d.Q_Sleeve[k] = static_cast<float>(0.02 + 0.015 * (1.0 + std::cos(k / 5.0)));
        d.Ratio[k] = d.Q_Sleeve[k] * 100.0f / d.Q_Tip[k];
    }
    d.NumLines = static_cast<Integer>(n);
}

ChartSurface& Chart(QWidget& screen, const char* name)
{
    auto* view = screen.findChild<ChartView*>(QString::fromLatin1(name));
    if (view == nullptr) throw std::runtime_error(std::string("no chart ") + name);
    return view->Surface();
}

class ResultViews : public ::testing::Test {
protected:
    void SetUp() override
    {
        Screens::Instance().Reset();
        ResetRecord();
        SetMousePointer(MousePointer::Default);
    }
    void TearDown() override
    {
        Screens::Instance().Reset();
        ResetRecord();
        SetPrinterFactory({});
    }
};

TEST_F(ResultViews, ResultsViewPlotsEveryIntervalInItsPlace)
{
    Declarations& d = TheRecord();
    MakeSounding(d, 5.05);  // 5.05 / 0.1 gives 50 intervals
    Frm_Pemlo01 screen;
    ASSERT_EQ(d.NumIntervals, 50);
    EXPECT_EQ(d.PlotIndex, 50);

    const IntervalArray* cone[] = {&d.IntQTip, &d.IntQSleeve, &d.IntRatio};
    for (int k = 0; k < 3; ++k) {
        SCOPED_TRACE(k);
        const ChartSurface& c = Chart(screen, QStringLiteral("ChartFX_%1").arg(k).toLatin1().constData());
        EXPECT_EQ(&c, &screen.ChartFX(static_cast<Integer>(k)));
        // Each chart of the row shows its own quantity (the plots are tested point by point apart).
        const ChartSurface::Series& s = c.SeriesList().at(0);
        ASSERT_EQ(s.values.size(), 50u);
        EXPECT_EQ(s.xs[0], static_cast<double>((*cone[k])[1]));
        EXPECT_EQ(s.xs[49], static_cast<double>((*cone[k])[50]));
        EXPECT_EQ(c.AxisOf(ValueAxis).min, static_cast<double>(d.IntDepth[49]));
        EXPECT_FALSE(c.AxesExchanged());
    }

    const ChartSurface& soil = Chart(screen, "ChartFX_3");
    EXPECT_TRUE(soil.AxesExchanged()) << "depth runs vertically on the soil chart too";
    EXPECT_EQ(soil.Title(2), QStringLiteral(" Probability of Soil Types"));
    EXPECT_EQ(soil.TitleColor(2), 0xFF0000);
    ASSERT_EQ(soil.SeriesCount(), 3);
    const IntervalArray* prob[] = {&d.IntProb1, &d.IntProb2, &d.IntProb3};
    for (int s = 0; s < 3; ++s) {
        const ChartSurface::Series& series = soil.SeriesList().at(static_cast<size_t>(s));
        EXPECT_EQ(series.style, 1);
        for (int p = 0; p < 50; ++p) {
            const int j = 50 - p;  // point 0 is the deepest interval
            EXPECT_EQ(series.xs[p], static_cast<double>(d.IntDepth[j]));
            EXPECT_EQ(series.values[p], static_cast<double>((*prob[s])[j]));
        }
    }
    EXPECT_EQ(soil.AxisOf(XAxis).max, static_cast<double>(d.IntDepth[1]));
    EXPECT_EQ(soil.AxisOf(XAxis).min, static_cast<double>(d.IntDepth[49]));
    EXPECT_EQ(soil.AxisOf(ValueAxis).min, 0.0);
    EXPECT_EQ(soil.AxisOf(ValueAxis).max, 100.0);
    EXPECT_EQ(soil.PlotSetting('B'), 20);
    // The series wear the colours of the legend picture's squares: sand, silt, clay.
    EXPECT_EQ(soil.DrawnSeriesColor(0), 0x99FFFF);
    EXPECT_EQ(soil.DrawnSeriesColor(1), 0x808066);
    EXPECT_EQ(soil.DrawnSeriesColor(2), 0x404080);
    EXPECT_TRUE(soil.HasXValues());

    EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
    EXPECT_NE(screen.Chart0Height(), 0);
    auto* method = screen.findChild<QLabel*>(QStringLiteral("Label1"));
    ASSERT_NE(method, nullptr);
    EXPECT_EQ(method->text(), QStringLiteral("Classification using: Korvu & Pemlo (1999)"));
}

TEST_F(ResultViews, UandVViewKeepsItsDesignCaptionsAndColoursThem)
{
    Declarations& d = TheRecord();
    MakeSounding(d, 4.05);
    Frm_UandV screen;
    ASSERT_EQ(d.NumIntervals, 40);

    struct Expect {
        const char* name;
        const char* caption;
        ColorRef captionColour;
        const IntervalArray* x;
    };
    const Expect table[] = {
        {"ChartFX1", "Soil Classification Index U", 0xFF0000, &d.IntU},
        {"ChartFX2", "Soil In-situ Index V", 0x000080, &d.IntV},
        {"ChartFX3", "U and V", 0xFF0000, &d.IntU},
    };
    for (const Expect& e : table) {
        SCOPED_TRACE(e.name);
        const ChartSurface& c = Chart(screen, e.name);
        EXPECT_EQ(c.Title(2), QString::fromLatin1(e.caption));
        EXPECT_EQ(c.TitleColor(2), e.captionColour);
        EXPECT_EQ(c.SeriesList().at(0).xs.at(39), static_cast<double>((*e.x)[40]));
    }
    EXPECT_EQ(d.NumPoints, 40);
    EXPECT_EQ(d.NumSeries, 2);
    EXPECT_EQ(CurrentMousePointer(), MousePointer::Default);
    // The label array has no index 5.
    for (const char* label : {"Label_0", "Label_1", "Label_2", "Label_3", "Label_4", "Label_6"}) {
        EXPECT_NE(screen.findChild<QLabel*>(QString::fromLatin1(label)), nullptr) << label;
    }
}

// Both views: caption, project band, command bar.
struct ScreenCase {
    const char* name;
    std::function<QWidget*()> make;
    const char* caption;
    std::vector<ToolButtonSpec> buttons;
};

std::vector<ScreenCase> ScreenCases()
{
    return {
        {"Frm_Pemlo01", [] { return new Frm_Pemlo01; },
         " Classification using: Korvu & Pemlo (1999) - File: C:\\data\\s1.txt",
         {{"Back      ", "Back", "Back to previous form", {}},
          {"Print All      ", "Print", "", {}},
          {"Exit            ", "Exit", "Exit the program", {}}}},
        {"Frm_UandV", [] { return new Frm_UandV; }, " U and V Plot - File: C:\\data\\s1.txt",
         {{"Back      ", "Back", "Back to previous form", {}},
          {"Print All     ", "Print", "", {}},
          {"Exit           ", "Exit", "Exit the program", {}}}},
    };
}

TEST_F(ResultViews, CaptionBandAndCommandBarOfBothViews)
{
    for (const ScreenCase& c : ScreenCases()) {
        SCOPED_TRACE(c.name);
        ResetRecord();
        MakeSounding(TheRecord(), 3.0);
        std::unique_ptr<QWidget> screen(c.make());
        EXPECT_EQ(screen->objectName(), QString::fromLatin1(c.name));
        EXPECT_EQ(screen->windowTitle(), QString::fromLatin1(c.caption));
        const std::pair<const char*, const char*> band[] = {
            {"TxtProjNum", "P-17"}, {"TxtTitle", "Quay wall"}, {"TxtLocationNo", "North pier"},
            {"TxtGWT", "1.2"},      {"TxtConeNo", "C5"},       {"TxtDate", "2024-05-01 09:30"},
        };
        for (const auto& [box, text] : band) {
            auto* edit = screen->findChild<QLineEdit*>(QString::fromLatin1(box));
            ASSERT_NE(edit, nullptr) << box;
            EXPECT_EQ(edit->text(), QString::fromLatin1(text));
        }
        for (const ToolButtonSpec& b : c.buttons) {
            auto* button = screen->findChild<QToolButton*>(b.key);
            ASSERT_NE(button, nullptr) << b.key.toStdString();
            EXPECT_EQ(button->text(), b.caption);
            EXPECT_EQ(button->toolTip(), b.tooltip);
        }
    }
}

TEST_F(ResultViews, LoadErrorsOfTheClassificationLeaveBothViews)
{
    struct Case {
        const char* what;
        double lastDepth;   // 0: no readings at all
        int error;
    };
    const Case cases[] = {
        {"one interval: its means read a second interval", 0.15, ErrSubscriptOutOfRange},
        {"no readings: the grid reads reading 0", 0.0, ErrSubscriptOutOfRange},
        {"less than one interval deep", 0.05, ErrSubscriptOutOfRange},
    };
    for (const Case& c : cases) {
        for (const ScreenCase& s : ScreenCases()) {
            SCOPED_TRACE(std::string(c.what) + " on " + s.name);
            ResetRecord();
            MakeSounding(TheRecord(), c.lastDepth);
            try {
                std::unique_ptr<QWidget> screen(s.make());
                ADD_FAILURE() << "the load completed";
            } catch (const RunTimeError& e) {
                EXPECT_EQ(e.Number(), c.error);
            }
        }
    }
}

TEST_F(ResultViews, SoilPlotOfOneIntervalEndsSilentlyAfterItsPoints)
{
    MakeSounding(TheRecord(), 3.0);
    Frm_Pemlo01 screen;
    testing::FillIntervals(TheRecord(), 1, GraphSI);
    ChartSurface soil;
    EXPECT_NO_THROW(screen.SoilPlot(soil));
    ASSERT_EQ(soil.SeriesCount(), 3);
    EXPECT_EQ(soil.SeriesList()[2].values.at(0), static_cast<double>(TheRecord().IntProb3[1]));
    EXPECT_EQ(soil.AxisOf(XAxis).max, static_cast<double>(TheRecord().IntDepth[1]));
    EXPECT_FALSE(soil.AxisOf(XAxis).min.has_value());
    EXPECT_EQ(soil.RefreshCount(), 0);
    EXPECT_TRUE(soil.IsOpen(Values));
}

TEST_F(ResultViews, PrintPreparesEveryChartOfTheResultsViewForPaper)
{
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("report.pdf"));
    SetPrinterFactory([pdf] { return MakeQtPrinter(MakePdfQPrinter(pdf, 300, QStringLiteral("Letter"))); });
    MakeSounding(TheRecord(), 3.0);
    Frm_Pemlo01 screen;
    test::ModalWatcher watcher;
    screen.findChild<QToolButton*>(QStringLiteral("Print"))->click();
    EXPECT_TRUE(watcher.Messages().empty());
    for (Integer k = 0; k <= 3; ++k) {
        SCOPED_TRACE(k);
        EXPECT_TRUE(screen.ChartFX(k).PrintOptionA());
        EXPECT_EQ(screen.ChartFX(k).PrintOptionB(), 256);
        EXPECT_EQ(screen.ChartFX(k).PrintOptionC(), 34);  // 15 twips a pixel x 2.3, halves to even
    }
    EXPECT_TRUE(QFile::exists(pdf));
}

TEST_F(ResultViews, PrintOfTheUandVViewLeavesItsChartsAsTheyAre)
{
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("report.pdf"));
    SetPrinterFactory([pdf] { return MakeQtPrinter(MakePdfQPrinter(pdf, 300, QStringLiteral("Letter"))); });
    MakeSounding(TheRecord(), 3.0);
    Frm_UandV screen;
    test::ModalWatcher watcher;
    screen.findChild<QToolButton*>(QStringLiteral("Print"))->click();
    EXPECT_TRUE(watcher.Messages().empty());
    EXPECT_FALSE(screen.ChartFX1().PrintOptionA());
    EXPECT_TRUE(QFile::exists(pdf));
}

// Back closes the view alone; Exit closes the views and the CPT data screen and ends.
TEST_F(ResultViews, BackAndExitCommands)
{
    struct Case {
        ScreenId view;
        const char* key;
        bool ends;
    };
    const Case cases[] = {
        {ScreenId::Frm_Pemlo01, "Back", false},
        {ScreenId::Frm_UandV, "Back", false},
        {ScreenId::Frm_Pemlo01, "Exit", true},
        {ScreenId::Frm_UandV, "Exit", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(ScreenName(c.view).toStdString() + " " + c.key);
        Screens& screens = Screens::Instance();
        screens.Reset();
        ResetRecord();
        MakeSounding(TheRecord(), 3.0);
        RegisterFrm_Pemlo01();
        RegisterFrm_UandV();
        screens.Register(ScreenId::Frm_CPTData, [] {
            auto* w = new QWidget;
            w->setObjectName(QStringLiteral("Frm_CPTData"));
            return w;
        });
        screens.Get(ScreenId::Frm_CPTData);
        screens.Get(ScreenId::Frm_Pemlo01);
        screens.Get(ScreenId::Frm_UandV);
        const ScreenId other = c.view == ScreenId::Frm_Pemlo01 ? ScreenId::Frm_UandV : ScreenId::Frm_Pemlo01;
        screens.Get(c.view)->findChild<QToolButton*>(QString::fromLatin1(c.key))->click();
        EXPECT_FALSE(screens.IsLoaded(c.view));
        EXPECT_EQ(screens.IsLoaded(ScreenId::Frm_CPTData), !c.ends);
        EXPECT_EQ(screens.HasEnded(), c.ends);
        if (!c.ends) {
            EXPECT_TRUE(screens.IsLoaded(other)) << "the other view stays";
        }
    }
}

// Each load recomputes: a view opened again after Back shows the sounding as it is now.
TEST_F(ResultViews, ReopeningRebuildsFromTheRecord)
{
    Screens& screens = Screens::Instance();
    RegisterFrm_Pemlo01();
    MakeSounding(TheRecord(), 3.0);
    screens.Get(ScreenId::Frm_Pemlo01)->findChild<QToolButton*>(QStringLiteral("Back"))->click();
    MakeSounding(TheRecord(), 4.05);
    auto* again = screens.GetAs<Frm_Pemlo01>(ScreenId::Frm_Pemlo01);
    EXPECT_EQ(again->ChartFX(3).PointCount(), 40);
    EXPECT_EQ(again->ChartFX(0).PointCount(), 40);
}

}  // namespace
}  // namespace pemlo
