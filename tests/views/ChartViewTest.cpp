// The chart control's own parts: its toolbar tool window, zoom, copy, and the
// series legend that printing adds.
#include <QApplication>
#include <QChart>
#include <QClipboard>
#include <QLegend>
#include <QLineSeries>
#include <QToolBar>
#include <QValueAxis>
#include <gtest/gtest.h>

#include "views/ChartRender.h"
#include "views/ChartView.h"

namespace pemlo {
namespace {

// 4000 readings zigzagging across, as a sounding through layered ground does.
void Sounding(ChartSurface& chart, int n = 4000)
{
    chart.BeginData(Values, 1, static_cast<Integer>(n));
    chart.BeginData(XValues, 1, static_cast<Integer>(n));
    for (Integer p = 0; p < n; ++p) {
        chart.SetValue(0, p, 0.005 * (p + 1));
        chart.SetXValue(0, p, (p % 2) ? 10.0 : 2.0 + (p % 7));
    }
    chart.SetAxisMax(ValueAxis, 0.005);
    chart.SetAxisMin(ValueAxis, 0.005 * (n - 1));
}

int DrawnPoints(const ChartView& view) { return static_cast<QLineSeries*>(view.Chart()->series().first())->count(); }

TEST(ChartView, ToolbarShowsWhereTheChartCarriesIt)
{
    struct Case {
        std::vector<QString> shown;
        bool visible;
    };
    for (const Case& c : {Case{{"Toolbar"}, true}, Case{{"Series Legend"}, false}, Case{{}, false}}) {
        ChartView view;
        view.Surface().SetToolWindows({"Toolbar", "Series Legend"}, c.shown);
        view.Surface().Refresh();
        view.show();
        EXPECT_EQ(view.Tools()->isVisible(), c.visible) << c.shown.size();
    }
}

TEST(ChartView, ZoomInDrawsEveryReadingAndResetThinsAgain)
{
    ChartView view;
    view.Surface().SetToolWindows({"Toolbar"}, {"Toolbar"});
    view.resize(300, 450);
    view.show();
    Sounding(view.Surface());
    view.Surface().Refresh();
    const int whole = DrawnPoints(view);
    EXPECT_LT(whole, 4000) << "a 4000-reading line is thinned to the pixel rows";
    EXPECT_GT(whole, 400) << "each pixel row keeps its extremes";

    auto* vertical = qobject_cast<QValueAxis*>(view.Chart()->axes(Qt::Vertical).first());
    const double span = vertical->max() - vertical->min();
    view.ZoomIn();
    EXPECT_EQ(DrawnPoints(view), 4000);
    vertical = qobject_cast<QValueAxis*>(view.Chart()->axes(Qt::Vertical).first());
    EXPECT_LT(vertical->max() - vertical->min(), span * 0.75);
    EXPECT_TRUE(vertical->isReverse()) << "zoomed, depth still grows downward";
    const double zoomedSpan = vertical->max() - vertical->min();
    view.resize(320, 480);   // the screen scales its charts
    vertical = qobject_cast<QValueAxis*>(view.Chart()->axes(Qt::Vertical).first());
    EXPECT_DOUBLE_EQ(vertical->max() - vertical->min(), zoomedSpan) << "a new size keeps the zoom";
    view.ZoomReset();
    EXPECT_LT(DrawnPoints(view), 4000) << "back at the whole chart, the line is thinned again";
}

TEST(ChartView, CopyPutsTheChartOnTheClipboard)
{
    ChartView view;
    view.resize(240, 360);
    view.show();
    Sounding(view.Surface(), 50);
    view.Surface().Refresh();
    view.CopyToClipboard();
    const QImage copied = QApplication::clipboard()->image();
    ASSERT_FALSE(copied.isNull());
    EXPECT_EQ(copied.size(), view.ChartImage().size());
}

// The cone plots set legend texts that only a printed chart shows (print option A).
TEST(ChartView, SeriesLegendShowsWhenPrintedOrWhereTheChartShowsIt)
{
    struct Case {
        const char* why;
        bool printing, optionA;
        std::vector<QString> shown;
        QString legend;
        bool visible;
    };
    const Case cases[] = {
        {"screen, legend tool hidden", false, true, {"Toolbar"}, "Tip Resistance [qc].", false},
        {"printed with option A", true, true, {"Toolbar"}, "Tip Resistance [qc].", true},
        {"printed without option A", true, false, {"Toolbar"}, "Tip Resistance [qc].", false},
        {"screen, legend tool shown", false, false, {"Series Legend"}, "u", true},
        {"no legend text to show", true, true, {"Series Legend"}, "", false},
    };
    for (const Case& c : cases) {
        ChartSurface surface;
        surface.SetToolWindows({"Toolbar", "Series Legend"}, c.shown);
        Sounding(surface, 10);
        surface.SetSeriesLegend(0, c.legend);
        surface.SetPrintOptionA(c.optionA);
        QChart chart;
        chart.resize(300, 450);
        ChartRenderOptions options;
        options.printing = c.printing;
        FillChart(chart, surface, options);
        EXPECT_EQ(chart.legend()->isVisible(), c.visible) << c.why;
    }
}

}  // namespace
}  // namespace pemlo
