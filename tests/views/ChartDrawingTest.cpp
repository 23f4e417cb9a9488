// The charts as drawn: reversed depth axes, exchanged axes, open data, one point,
// and painting into an image of a chart that was never shown.
#include <QApplication>
#include <QChart>
#include <QLineSeries>
#include <QPainter>
#include <gtest/gtest.h>

#include "ChartImage.h"
#include "views/ChartRender.h"
#include "views/ChartView.h"

namespace pemlo {
namespace {

using test::ExtentOf;
using test::MeanRow;

const QColor BlueLine(0, 0, 255);

// A blue line from (x 0.1, depth 0.1) to (x 9.9, depth 9.9), depth on the value axis.
void DiagonalDepthChart(ChartSurface& chart, double axisMin, double axisMax)
{
    chart.SetScreenSize(300, 450);
    chart.BeginData(Values, 1, 99);
    chart.BeginData(XValues, 1, 99);
    chart.SetTitle(2, QStringLiteral(" Tip Resistance (MPa)"));
    chart.SetSeriesColor(0, 0xFF0000);   // the caption stays black: only the line is blue
    chart.SetPlotSettingA(50);
    chart.SetPlotSettingD(2);
    for (Integer p = 0; p < 99; ++p) {
        chart.SetValue(0, p, 0.1 * (p + 1));
        chart.SetXValue(0, p, 0.1 * (p + 1));
    }
    chart.SetAxisMax(ValueAxis, axisMax);
    chart.SetAxisMin(ValueAxis, axisMin);
    chart.Refresh();
    chart.EndData(Values);
    chart.EndData(XValues);
}

QImage Paint(const ChartSurface& chart, int w, int h)
{
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(Qt::white);
    chart.PaintTo(&image, 0, 0, w, h, 1, 0);
    return image;
}

// Depth grows downward when the axis min (deep) stands above its max (shallow).
TEST(ChartDrawing, DepthAxisWithMinAboveMaxPutsTheShallowestOnTop)
{
    struct Case {
        double min, max;
        bool shallowOnTop;
    };
    for (const Case c : {Case{9.9, 0.1, true}, Case{0.1, 9.9, false}}) {
        ChartSurface chart;
        DiagonalDepthChart(chart, c.min, c.max);
        const DrawnRange r = RangeOf(chart, ValueAxis);
        EXPECT_DOUBLE_EQ(r.low, 0.1);
        EXPECT_DOUBLE_EQ(r.high, 9.9);
        EXPECT_EQ(r.reversed, c.shallowOnTop);

        const QImage image = Paint(chart, 300, 450);
        const auto line = ExtentOf(image, BlueLine);
        ASSERT_TRUE(line) << "the line is drawn";
        const int third = (line->right - line->left) / 3;
        const double leftRow = MeanRow(image, BlueLine, line->left, line->left + third);
        const double rightRow = MeanRow(image, BlueLine, line->right - third, line->right + 1);
        // x grows with depth: the shallow end is the left end of the line.
        EXPECT_EQ(leftRow < rightRow, c.shallowOnTop) << "min " << c.min << " max " << c.max;
    }
}

// The soil chart: depth on its x axis drawn vertically, probability 0..100 across.
TEST(ChartDrawing, ExchangedAxesPutProbabilityZeroAtTheLeftEnd)
{
    ChartSurface chart;
    chart.SetAxesExchanged(true);
    chart.SetScreenSize(220, 500);
    chart.SetAxisMin(ValueAxis, 0);
    chart.SetAxisMax(ValueAxis, 100);
    chart.BeginData(Values, 1, 10);
    chart.BeginData(XValues, 1, 10);
    chart.SetSeriesColor(0, 0xFF0000);
    chart.SetPlotSettingD(3);
    for (Integer p = 0; p < 10; ++p) {
        chart.SetXValue(0, p, 10 - p);   // deepest first
        chart.SetValue(0, p, 90.0);
    }
    chart.SetAxisMax(XAxis, 1);
    chart.SetAxisMin(XAxis, 9);
    chart.Refresh();
    chart.EndData(Values);
    chart.EndData(XValuesClosedByFive);

    const DrawnRange p = RangeOf(chart, ValueAxis);
    EXPECT_EQ(p.low, 0.0);
    EXPECT_EQ(p.high, 100.0);
    EXPECT_FALSE(p.reversed);
    EXPECT_TRUE(RangeOf(chart, XAxis).reversed);

    const QImage image = Paint(chart, 220, 500);
    const auto line = ExtentOf(image, BlueLine);
    ASSERT_TRUE(line);
    EXPECT_GT(line->left, image.width() * 0.6) << "90 percent stands near the far (right) end";
    EXPECT_GT(line->bottom - line->top, image.height() / 2) << "the line runs down the depth";
}

// Code 5 closes nothing: the x positions written stay the points' positions.
TEST(ChartDrawing, XPositionsSurviveEndDataFive)
{
    ChartSurface chart;
    chart.BeginData(Values, 1, 3);
    chart.BeginData(XValues, 1, 3);
    for (Integer p = 0; p < 3; ++p) {
        chart.SetValue(0, p, p + 1.0);
        chart.SetXValue(0, p, 100.0 + 50.0 * p);
    }
    chart.Refresh();
    chart.EndData(Values);
    chart.EndData(XValuesClosedByFive);
    const DrawnRange x = RangeOf(chart, XAxis);
    EXPECT_LE(x.low, 100.0);
    EXPECT_GE(x.high, 200.0);
    EXPECT_GT(x.low, 3.0) << "points are not placed at 1, 2, 3";
}

TEST(ChartDrawing, OnePointDraws)
{
    ChartSurface chart;
    chart.BeginData(Values, 1, 1);
    chart.BeginData(XValues, 1, 1);
    chart.SetTitle(2, QStringLiteral(" Sleeve/Tip Ratio (%) "));
    chart.SetTitleColor(2, 0x0000FF);
    chart.SetPlotSettingC(5);
    chart.SetValue(0, 0, 2.5);
    chart.SetXValue(0, 0, 4.0);
    chart.SetAxisMax(ValueAxis, 2.5);
    chart.Refresh();
    for (Integer axis : {ValueAxis, XAxis}) {
        const DrawnRange r = RangeOf(chart, axis);
        EXPECT_LT(r.low, r.high) << "axis " << axis;
    }
    const QImage image = Paint(chart, 200, 300);
    EXPECT_GT(test::CountNear(image, QColor(255, 0, 0)), 20) << "caption and marker in red";
}

// Refresh comes before EndData: the widget shows the data still open, all of it.
TEST(ChartDrawing, RefreshBeforeEndDataShowsEveryPoint)
{
    ChartView view;
    view.resize(300, 450);
    view.show();
    ChartSurface& chart = view.Surface();
    chart.BeginData(Values, 1, 500);
    chart.BeginData(XValues, 1, 500);
    for (Integer p = 0; p < 500; ++p) {
        chart.SetValue(0, p, p);
        chart.SetXValue(0, p, p % 7);
    }
    ASSERT_TRUE(view.Chart()->series().isEmpty()) << "nothing drawn before the refresh";
    chart.Refresh();
    ASSERT_EQ(view.Chart()->series().size(), 1);
    const auto* line = qobject_cast<QLineSeries*>(view.Chart()->series().first());
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->count(), 500);
    EXPECT_EQ(line->at(499), QPointF(499 % 7, 499));
}

// A chart never shown paints the same drawing into any device, at any size.
TEST(ChartDrawing, PaintToDrawsAHiddenChartScaledToTheRectangle)
{
    ChartView view;   // never shown
    DiagonalDepthChart(view.Surface(), 9.9, 0.1);
    view.Surface().SetScreenSize(270, 455);
    const QImage small = Paint(view.Surface(), 270, 600);
    QImage page(1200, 2800, QImage::Format_RGB32);
    page.fill(Qt::white);
    view.Surface().PaintTo(&page, 100, 50, 1100, 2750, 1, 0);
    const auto a = ExtentOf(small, BlueLine);
    const auto b = ExtentOf(page, BlueLine);
    ASSERT_TRUE(a && b);
    EXPECT_GE(b->left, 100);
    EXPECT_LE(b->right, 1100);
    // Scaled about 3.7 times: the line is much longer, and so is its width.
    EXPECT_GT(b->right - b->left, 3 * (a->right - a->left));
    EXPECT_GT(test::CountNear(page, BlueLine), 3 * test::CountNear(small, BlueLine));

    // A painter already open on the device (the report's) is used, not refused.
    QImage shared(300, 450, QImage::Format_RGB32);
    shared.fill(Qt::white);
    QPainter open(&shared);
    view.Surface().PaintTo(&shared, 0, 0, 300, 450, 1, 0);
    open.end();
    EXPECT_TRUE(ExtentOf(shared, BlueLine));
}

}  // namespace
}  // namespace pemlo
