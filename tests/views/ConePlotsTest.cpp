// The interval cone plots of the classification results view, checked on the chart
// model: which interval lands on which point, captions and legends in both unit
// systems, the one-interval-short depth axis, and the silent end of a failing plot.
#include <gtest/gtest.h>

#include <QChar>

#include "IntervalRecord.h"
#include "views/ChartSurface.h"
#include "views/Module_ConePlots.h"

namespace pemlo {
namespace {

struct ConeCase {
    Integer index;
    Integer graphUnits;
    QString caption;
    ColorRef captionColour;
    QString legend;
    QString depthTitle;
    const IntervalArray Declarations::*xs;
};

const QString Sq = QString(QChar(0x00B2));

class ConePlotCases : public ::testing::TestWithParam<ConeCase> {};

TEST_P(ConePlotCases, HoldsIntervalPPlusOneAtPointPWithItsCaptionAndLegend)
{
    const ConeCase& c = GetParam();
    Declarations d;
    testing::FillIntervals(d, 50, c.graphUnits);
    ChartSurface chart;
    Integer index = c.index;
    ConePlot(d, index, chart);

    EXPECT_EQ(chart.Title(2), c.caption);
    EXPECT_EQ(chart.TitleColor(2), c.captionColour);
    EXPECT_EQ(chart.AxisOf(ValueAxis).title, c.depthTitle);
    ASSERT_EQ(chart.PointCount(), 50);
    const ChartSurface::Series& s = chart.SeriesList().at(0);
    EXPECT_EQ(s.legend, c.legend);
    for (int p = 0; p < 50; ++p) {
        EXPECT_EQ(s.values[p], static_cast<double>(d.IntDepth[p + 1])) << "point " << p;
        EXPECT_EQ(s.xs[p], static_cast<double>((d.*c.xs)[p + 1])) << "point " << p;
    }
    // Depth grows downward from the first interval to the second-to-last.
    EXPECT_EQ(chart.AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
    EXPECT_EQ(chart.AxisOf(ValueAxis).min, static_cast<double>(d.IntDepth[49]));
    EXPECT_EQ(d.PlotIndex, 50);
    EXPECT_EQ(chart.RefreshCount(), 1);
    EXPECT_FALSE(chart.IsOpen(Values));
}

INSTANTIATE_TEST_SUITE_P(
    TipSleeveRatioInBothUnits, ConePlotCases,
    ::testing::Values(
        ConeCase{0, 0, " Tip Resistance (ton/ft" + Sq + ") ", 0xFF0000, "Tip Resistance [qc].", "Depth (ft)",
                 &Declarations::IntQTip},
        ConeCase{0, 1, " Tip Resistance (MPa)", 0xFF0000, "Tip Resistance [qc].", "Depth (m)",
                 &Declarations::IntQTip},
        ConeCase{1, 0, " Sleeve Resistance (ton/ft" + Sq + ") ", 0x00FF00, " Sleeve Resistance [fs] ", "",
                 &Declarations::IntQSleeve},
        ConeCase{1, 1, " Sleeve Resistance (MPa)", 0x00FF00, " Sleeve Resistance [fs] ", "",
                 &Declarations::IntQSleeve},
        ConeCase{2, 0, " Sleeve/Tip Ratio (%) ", 0x0000FF, " [Sleeve/tip] Ratio ", "", &Declarations::IntRatio},
        ConeCase{2, 1, " Sleeve/Tip Ratio (%) ", 0x0000FF, " [Sleeve/tip] Ratio ", "",
                 &Declarations::IntRatio}));

TEST(ConePlot, OneIntervalEndsSilentlyAfterThePointsAndTheAxisMax)
{
    // The axis minimum would be read at interval 0, outside the arrays.
    Declarations d;
    testing::FillIntervals(d, 1, 1);
    for (Integer index = 0; index <= 2; ++index) {
        ChartSurface chart;
        Integer k = index;
        EXPECT_NO_THROW(ConePlot(d, k, chart));
        EXPECT_EQ(chart.SeriesList().at(0).values.at(0), static_cast<double>(d.IntDepth[1]));
        EXPECT_EQ(chart.AxisOf(ValueAxis).max, static_cast<double>(d.IntDepth[1]));
        EXPECT_FALSE(chart.AxisOf(ValueAxis).min.has_value());
        EXPECT_EQ(chart.RefreshCount(), 0);
        EXPECT_TRUE(chart.IsOpen(Values)) << "the data is not ended after a failure";
    }
}

}  // namespace
}  // namespace pemlo
