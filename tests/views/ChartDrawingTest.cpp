// The charts as drawn: reversed depth axes, and data still open when the widget is
// refreshed.
#include <QChart>
#include <QLineSeries>
#include <gtest/gtest.h>

#include "ChartImage.h"
#include "views/ChartRender.h"
#include "views/ChartView.h"

namespace pemlo {
namespace {

const QColor BlueLine(0, 0, 255);

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
        // A blue line from (x 0.1, depth 0.1) to (x 9.9, depth 9.9), depth on the value axis.
        ChartSurface chart;
        chart.BeginData(Values, 1, 99);
        chart.BeginData(XValues, 1, 99);
        chart.SetSeriesColor(0, 0xFF0000);
        for (Integer p = 0; p < 99; ++p) {
            chart.SetValue(0, p, 0.1 * (p + 1));
            chart.SetXValue(0, p, 0.1 * (p + 1));
        }
        chart.SetAxisMax(ValueAxis, c.max);
        chart.SetAxisMin(ValueAxis, c.min);
        chart.Refresh();
        chart.EndData(Values);
        chart.EndData(XValues);

        const QImage image = Paint(chart, 300, 450);
        const auto line = test::ExtentOf(image, BlueLine);
        ASSERT_TRUE(line) << "the line is drawn";
        // x grows with depth: the shallow end is the left end of the line.
        const int third = (line->right - line->left) / 3;
        const auto left = test::ExtentOf(image.copy(line->left, 0, third, image.height()), BlueLine);
        const auto right = test::ExtentOf(image.copy(line->right - third, 0, third, image.height()), BlueLine);
        ASSERT_TRUE(left && right);
        EXPECT_EQ(left->top < right->top, c.shallowOnTop) << "min " << c.min << " max " << c.max;
    }
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

}  // namespace
}  // namespace pemlo
