// Thinning keeps what a pixel row shows: its first and last point and the two
// horizontal extremes, in the order drawn.
#include <gtest/gtest.h>

#include "views/ChartThinning.h"

namespace pemlo {
namespace {

QList<QPointF> Line(std::initializer_list<std::pair<double, double>> xy)
{
    QList<QPointF> out;
    for (const auto& [x, y] : xy) out.append(QPointF(x, y));
    return out;
}

TEST(ChartThinning, KeepsTheEnvelopeOfEveryPixelRow)
{
    struct Case {
        const char* why;
        QList<QPointF> in;
        double pixel;
        QList<QPointF> out;
    };
    const auto zigzag = Line({{1, 0.00}, {9, 0.01}, {2, 0.02}, {8, 0.03}, {3, 0.04},
                              {7, 0.05}, {4, 0.06}, {5, 0.07}, {6, 1.50}, {6, 1.60}});
    const Case cases[] = {
        {"first, extremes, last of a row; a lone row point stays", zigzag, 1.0,
         Line({{1, 0.00}, {9, 0.01}, {5, 0.07}, {6, 1.50}, {6, 1.60}})},
        {"rows finer than the points keep everything", zigzag, 0.001, zigzag},
        {"short lines are never thinned", Line({{1, 0}, {2, 0}, {3, 0}}), 1.0, Line({{1, 0}, {2, 0}, {3, 0}})},
        {"no pixel size keeps everything", zigzag, 0.0, zigzag},
    };
    for (const Case& c : cases) EXPECT_EQ(ThinForScreen(c.in, c.pixel), c.out) << c.why;
}

// Depth that goes back up (a line drawn deepest first, or a rod pulled back) starts a
// new run whenever the row changes, so no point jumps across another row.
TEST(ChartThinning, RowsAreRunsOfConsecutivePoints)
{
    const auto in = Line({{1, 0.1}, {2, 0.2}, {3, 5.1}, {4, 0.3}, {5, 0.4}, {6, 5.2}, {7, 5.3}, {8, 0.5}});
    EXPECT_EQ(ThinForScreen(in, 1.0), in);
}

}  // namespace
}  // namespace pemlo
