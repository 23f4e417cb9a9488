// Interval means: where the grid starts, which readings each interval takes, how
// gaps carry the interval above, and what the first interval repeats.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "classify/BuildIntervalGrid.h"
#include "classify/PrintedDigits.h"
#include "classify/RefineLayers.h"
#include "core/Declarations.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

Declarations EnglishSounding(const std::vector<float>& depths, const std::vector<float>& tips)
{
    Declarations d;
    d.DataUnits = DataEnglish;
    d.NumLines = static_cast<Integer>(depths.size());
    for (int k = 1; k <= d.NumLines; ++k) {
        d.Depth[k] = depths[static_cast<std::size_t>(k - 1)];
        d.Q_Tip[k] = tips[static_cast<std::size_t>(k - 1)];
        d.Q_Sleeve[k] = tips[static_cast<std::size_t>(k - 1)] / 100.0f;
    }
    return d;
}

TEST(AverageIntervals, GridStartsAtZeroOrAtTheFirstReading)
{
    struct Case {
        const char* name;
        std::vector<float> depths, tips;
        std::vector<std::string> intDepth;
        std::vector<float> intTip;
    } const cases[] = {
        {"starts at 0: readings above one thickness and the last feed nothing",
         {0.2f, 0.4f, 0.6f, 0.8f, 1.0f}, {10, 20, 30, 40, 50},
         {"0.164", "0.492", "0.820"}, {25, 25, 40}},
        {"starts at the first reading, whose own values are used nowhere",
         {1.0f, 1.2f, 1.4f, 1.6f, 1.8f}, {10, 20, 30, 40, 50},
         {"1.164", "1.492", "1.820", "2.148", "2.476"}, {20, 20, 35, 50, 50}},
        {"a gap repeats the interval above while the depths advance",
         {0.2f, 0.4f, 1.5f, 1.6f, 1.7f}, {10, 20, 30, 40, 50},
         {"0.164", "0.492", "0.820", "1.148", "1.476"}, {20, 20, 20, 20, 35}},
        {"unsorted readings are taken wherever they fall",
         {0.2f, 0.8f, 0.5f, 0.4f, 1.0f}, {10, 20, 30, 40, 50},
         {"0.164", "0.492", "0.820"}, {35, 35, 20}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Declarations d = EnglishSounding(c.depths, c.tips);
        BuildIntervalGrid(d);
        AverageIntervals(d);
        ASSERT_EQ(d.NumIntervals, static_cast<Integer>(c.intDepth.size()));
        for (int j = 1; j <= d.NumIntervals; ++j) {
            SCOPED_TRACE(testing::Message() << "interval " << j);
            EXPECT_PRINTS_AS(d.IntDepth[j], c.intDepth[static_cast<std::size_t>(j - 1)]);
            EXPECT_FLOAT_EQ(d.IntQTip[j], c.intTip[static_cast<std::size_t>(j - 1)]);
            EXPECT_FLOAT_EQ(d.IntQSleeve[j], c.intTip[static_cast<std::size_t>(j - 1)] / 100.0f);
        }
        EXPECT_EQ(d.RefineIndex, d.NumIntervals + 1);
    }
}

// The bottom bound is closed: a reading exactly on a boundary, as the boundary is
// accumulated in single precision, belongs to the interval above it.
TEST(AverageIntervals, ReadingOnABoundaryBelongsAbove)
{
    const float t = 0.1f;
    const float second = static_cast<float>(static_cast<double>(t) + t);  // bottom of interval 2
    Declarations d;
    d.DataUnits = DataSI;
    d.NumLines = 4;
    const float depths[] = {0.05f, second, std::nextafter(second, 1.0f), 0.45f};
    const float tips[] = {1, 8, 16, 2};
    for (int k = 1; k <= 4; ++k) {
        d.Depth[k] = depths[k - 1];
        d.Q_Tip[k] = tips[k - 1];
    }
    BuildIntervalGrid(d);
    AverageIntervals(d);
    ASSERT_EQ(d.NumIntervals, 4);
    EXPECT_EQ(d.IntQTip[2], 8.0f);
    EXPECT_EQ(d.IntQTip[3], 16.0f);
}

// One interval only: the first interval's depth is written, then repeating the
// second interval fails.
TEST(AverageIntervals, SingleIntervalFailsOnTheRepeat)
{
    struct Case {
        float first;
        float tipOfInterval1;  // as left when the error is raised
    } const cases[] = {{0.05f, 0.0f}, {0.12f, 7.0f}};
    for (const Case& c : cases) {
        Declarations d;
        d.DataUnits = DataSI;
        d.NumLines = 2;
        d.Depth[1] = c.first;
        d.Q_Tip[1] = 7.0f;
        d.Depth[2] = 0.15f;
        BuildIntervalGrid(d);
        ASSERT_EQ(d.NumIntervals, 1);
        try {
            AverageIntervals(d);
            ADD_FAILURE() << "no index error";
        } catch (const RunTimeError& e) {
            EXPECT_EQ(e.Number(), ErrSubscriptOutOfRange);
        }
        EXPECT_NE(d.IntDepth[1], 0.0f);
        EXPECT_EQ(d.IntQTip[1], c.tipOfInterval1);
        EXPECT_EQ(d.RefineIndex, 2);
    }
}

// Sums beyond single range stop the averaging in the interval that holds them; the
// intervals above keep their means.
TEST(AverageIntervals, SumOverflowStopsAtItsInterval)
{
    Declarations d;
    d.DataUnits = DataSI;
    d.NumLines = 5;
    const float depths[] = {0.05f, 0.15f, 0.25f, 0.26f, 0.45f};
    const float tips[] = {1, 5, 3e38f, 3e38f, 1};
    for (int k = 1; k <= 5; ++k) {
        d.Depth[k] = depths[k - 1];
        d.Q_Tip[k] = tips[k - 1];
    }
    BuildIntervalGrid(d);
    try {
        AverageIntervals(d);
        ADD_FAILURE() << "no overflow";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrOverflow);
    }
    EXPECT_EQ(d.RefineIndex, 3);
    EXPECT_EQ(d.IntQTip[2], 5.0f);
    EXPECT_EQ(d.IntDepth[3], 0.0f);
}

}  // namespace
}  // namespace pemlo
