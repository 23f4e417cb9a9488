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

namespace pemlo {
namespace {

// The bottom of interval 2 as the averaging accumulates it in single precision.
const float SecondBottom = static_cast<float>(static_cast<double>(0.1f) + 0.1f);

TEST(AverageIntervals, WhereTheGridStartsAndWhichReadingsEachIntervalTakes)
{
    struct Case {
        const char* name;
        Integer units;
        std::vector<float> depths, tips;
        std::vector<std::string> intDepth;
        std::vector<float> intTip;
    } const cases[] = {
        {"starts at 0: readings above one thickness and the last feed nothing", DataEnglish,
         {0.2f, 0.4f, 0.6f, 0.8f, 1.0f}, {10, 20, 30, 40, 50}, {"0.164", "0.492", "0.820"}, {25, 25, 40}},
        {"starts at the first reading, whose own values are used nowhere", DataEnglish,
         {1.0f, 1.2f, 1.4f, 1.6f, 1.8f}, {10, 20, 30, 40, 50},
         {"1.164", "1.492", "1.820", "2.148", "2.476"}, {20, 20, 35, 50, 50}},
        {"a gap repeats the interval above while the depths advance", DataEnglish,
         {0.2f, 0.4f, 1.5f, 1.6f, 1.7f}, {10, 20, 30, 40, 50},
         {"0.164", "0.492", "0.820", "1.148", "1.476"}, {20, 20, 20, 20, 35}},
        {"a reading on a bottom boundary belongs to the interval above it", DataSI,
         {0.05f, SecondBottom, std::nextafter(SecondBottom, 1.0f), 0.45f}, {1, 8, 16, 2},
         {"0.05", "0.15", "0.25", "0.35"}, {8, 8, 16, 16}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Declarations d;
        d.DataUnits = c.units;
        d.NumLines = static_cast<Integer>(c.depths.size());
        for (std::size_t k = 0; k < c.depths.size(); ++k)
            d.Depth[k + 1] = c.depths[k], d.Q_Tip[k + 1] = c.tips[k], d.Q_Sleeve[k + 1] = c.tips[k] / 100.0f;
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

}  // namespace
}  // namespace pemlo
