// The log's pages: how many a scale takes, that each takes up the depth where the last
// ended, the ticks and labels of its axes, which layer and zone a reading belongs to,
// and where the sounding has gaps.
// That every column measures depth on its page's one axis is checked on the drawn
// pages (tests/cli/ui/LogCommandTest.cpp).
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "log/LogData.h"
#include "log/LogLayout.h"

namespace pemlo::log {
namespace {

TEST(LogLayout, PagesAtAScaleFollowOnWithoutGapOrOverlap)
{
    const struct {
        const char* fault;
        Paper paper;
        double deepest;
        int scale;
        std::size_t pages;
        double firstPageBottom;  // metres
    } cases[] = {
        {"the whole sounding must fit one page, to the next whole metre", Paper::A4, 24.31, 0, 1, 25.0},
        {"a sounding ending on a whole metre is not widened", Paper::A4, 25.0, 0, 1, 25.0},
        {"a sounding of no depth still gets a metre", Paper::Letter, 0.0, 0, 1, 1.0},
        // The plot runs from 10 + 33 + 2 + 11 mm down to 10 + 17 + 2 mm above the page's
        // foot: 212 mm on A4, 194.4 mm on letter.
        {"1:100 is 21.2 m per A4 page", Paper::A4, 24.31, 100, 2, 21.2},
        {"a depth just past a page's end opens one more", Paper::A4, 21.21, 100, 2, 21.2},
        {"a depth on a page's end needs no empty page", Paper::A4, 21.2, 100, 1, 21.2},
        {"1:50 on letter is 9.72 m per page", Paper::Letter, 30.0, 50, 4, 9.72},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        const LogLayout layout = MakeLayout(c.paper, false, c.deepest, c.scale);
        ASSERT_EQ(layout.pages.size(), c.pages);
        EXPECT_NEAR(layout.pages.front().bottomDepth, c.firstPageBottom, 1e-9);
        EXPECT_EQ(layout.pages.front().topDepth, 0.0);
        EXPECT_GE(layout.pages.back().bottomDepth, c.deepest);
        for (std::size_t i = 1; i < layout.pages.size(); ++i)
            EXPECT_EQ(layout.pages[i].topDepth, layout.pages[i - 1].bottomDepth);
        if (c.scale > 0) {
            // 1:N: one metre of depth is 1000/N mm of paper.
            const DepthAxis& a = layout.pages.front();
            EXPECT_NEAR(a.Y(1.0) - a.Y(0.0), 1000.0 / c.scale, 1e-9);
        }
    }
}

TEST(LogLayout, AxisLabelsShowZeroAndBothEnds)
{
    // About 6 point Arial: 1.18 mm a digit, 0.7 mm a minus sign.
    const LabelWidth width = [](const std::string& text) {
        return std::accumulate(text.begin(), text.end(), 0.0,
                               [](double w, char c) { return w + (c == '-' ? 0.7 : 1.18); });
    };
    const struct {
        const char* fault;
        double low, high;
        int most;
        double mm, axisLow, axisHigh;
        std::vector<double> labels;
    } cases[] = {
        {"fs to 2509 kPa: the axis end 3000 unlabelled", 0, 2509, 3, 17.6, 0, 3000, {0, 3000}},
        {"u2 from -291 kPa: 0 unlabelled beside -1000", -291, 2072, 3, 18.7, -2000, 3000, {-2000, 0, 3000}},
        {"u2 from -62 kPa: the negative end widened past what its label needs", -62, 539, 3, 18.7, -500, 750,
         {-500, 0, 750}},
        {"qc to 23.7 MPa: an axis whose labels all fit changed", 0, 23.7, 4, 24.9, 0, 30, {0, 10, 20, 30}},
        {"a column of zeros left without an axis", 0, 0, 3, 17.6, 0, 1, {0, 0.5, 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        const Ticks t = AxisTicks(c.low, c.high, c.most, c.mm, width, 1.0);
        EXPECT_NEAR(t.low, c.axisLow, 1e-9);
        EXPECT_NEAR(t.high, c.axisHigh, 1e-9);
        std::vector<double> labels;
        for (const int i : LabelledTicks(t, c.mm, width, 1.0)) labels.push_back(t.low + i * t.step);
        EXPECT_EQ(labels, c.labels);
    }
    EXPECT_EQ(TickText(-0.0, 1), "0") << "a label -0";
}

TEST(LogData, ReadingsBelongToLayersByTheRuleOfLayers)
{
    sbtn::SbtnResult sbt;
    for (const auto& [depth, zone] : {std::pair{0.3, 6}, {0.5, 6}, {0.9, 3}, {2.2, 5}}) {
        sbtn::SbtnRow r;
        r.depth = depth;
        r.values.zone = zone;
        sbt.rows.push_back(r);
    }
    std::vector<profile::SoilLayer> feet(2);
    feet[0].top = 0.0, feet[0].bottom = 0.5 / 0.3048, feet[1].top = feet[0].bottom, feet[1].bottom = 10.0;
    const auto layers = LogLayers(feet, 0.3048, sbt);
    ASSERT_EQ(layers.size(), 2u);
    EXPECT_NEAR(layers[1].bottom, 3.048, 1e-12) << "feet must become metres";
    EXPECT_EQ(layers[0].zone, 6) << "the readings must be taken to the layers' feet";
    std::vector<profile::SoilLayer> metres(2);
    metres[0].bottom = 0.5, metres[1].top = 0.5, metres[1].bottom = 3.0;
    const auto si = LogLayers(metres, 1.0, sbt);
    const struct {
        const char* fault;
        double depth;
        int layer;
    } cases[] = {
        {"a reading on a boundary belongs to the layer above, as in layers", 0.5, 0},
        {"just below a boundary", 0.51, 1},
        {"below the last layer: the last", 9.0, 1},
    };
    for (const auto& c : cases) EXPECT_EQ(LayerIndexAt(si, c.depth), c.layer) << c.fault;
    EXPECT_EQ(LayerIndexAt({}, 1.0), -1);
}

TEST(LogData, GapsAreWherePushesChangeOrTheStepFarExceedsTheUsual)
{
    const struct {
        const char* fault;
        std::vector<double> depths;
        std::vector<int> pushes;
        std::vector<std::size_t> gaps;
    } cases[] = {
        {"a step between pushes drawn across", {1.0, 1.02, 1.04, 2.36, 2.38, 2.4}, {}, {3}},
        {"a step under 0.1 m taken for a gap", {0, 0.01, 0.02, 0.1, 0.11, 0.12}, {}, {}},
        {"a fixed threshold: 0.5 m is no gap where readings are 0.2 m apart", {0, 0.2, 0.4, 0.9, 1.1, 1.3}, {}, {}},
        {"a new push at the usual step not broken", {1.0, 1.02, 1.04, 1.06}, {0, 0, 1, 1}, {2}},
        {"pushes that are not one per reading trusted", {1.0, 1.02, 1.04, 1.06}, {0, 1}, {}},
    };
    for (const auto& c : cases) EXPECT_EQ(GapsOf(c.depths, c.pushes), c.gaps) << c.fault;
}

}  // namespace
}  // namespace pemlo::log
