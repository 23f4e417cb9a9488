// The normalised soil behaviour type over a layer: which readings a layer takes, and
// the zone and mean Ic of its valid ones.
#include <gtest/gtest.h>

#include "sbtn/SbtnLayers.h"

namespace pemlo::sbtn {
namespace {

SbtnRow Reading(double depth, int zone, double ic, Invalid invalid = Invalid::None)
{
    SbtnRow row;
    row.depth = depth;
    row.invalid = invalid;
    row.values.zone = zone;
    row.values.ic = ic;
    return row;
}

TEST(SbtnOfLayers, TakesTheReadingsWithinEachLayerAndTheZoneMostFallIn)
{
    SbtnResult result;
    result.rows = {Reading(1.0, 3, 3.0), Reading(1.5, 3, 3.2), Reading(2.0, 5, 2.4), Reading(2.5, 4, 2.8),
                   Reading(3.0, 5, 2.2), Reading(3.5, 6, 1.8, Invalid::SleeveFriction), Reading(4.0, 6, 1.6)};
    // Layers (1, 2], (2, 3], (3, 3.5], (3.5, 5], the first one with its top: all in metres.
    const auto layers = SbtnOfLayers(result, {{1, 2}, {2, 3}, {3, 3.5}, {3.5, 5}}, 1.0);
    const struct {
        const char* fault;
        int valid, zone;
        double share, ic;
    } cases[] = {
        {"leaves out the first layer's top or takes a reading on a bottom into the layer below", 3, 3, 100.0 * 2 / 3,
         (3.0 + 3.2 + 2.4) / 3},
        {"gives a tie to the higher zone number or counts a reading on the top twice", 2, 4, 50, (2.8 + 2.2) / 2},
        {"counts an invalid reading", 0, 0, 0, 0},
        {"loses the last reading", 1, 6, 100, 1.6},
    };
    ASSERT_EQ(layers.size(), 4u);
    for (std::size_t k = 0; k < 4; ++k) {
        const auto& c = cases[k];
        EXPECT_EQ(layers[k].valid, c.valid) << c.fault;
        EXPECT_EQ(layers[k].zone, c.zone) << c.fault;
        EXPECT_DOUBLE_EQ(layers[k].share, c.share) << c.fault;
        EXPECT_DOUBLE_EQ(layers[k].ic.value_or(0), c.ic) << c.fault;
    }
    // The same layers in feet: a reading at 1 m lies at 3.28 ft.
    EXPECT_EQ(SbtnOfLayers(result, {{3.2, 3.3}}, 3.28084)[0].valid, 1) << "does not take the depths to the layers' units";
}

}  // namespace
}  // namespace pemlo::sbtn
