// The normalised soil behaviour type over a layer: which readings a layer takes, and
// the zone and mean Ic of its valid ones.
#include <gtest/gtest.h>

#include "sbtn/SbtnLayers.h"

namespace pemlo::sbtn {
namespace {

TEST(SbtnOfLayers, TakesTheReadingsWithinEachLayerAndTheZoneMostFallIn)
{
    SbtnResult result;
    for (const auto& [depth, zone, ic] : {std::tuple{1.0, 3, 3.0}, {1.5, 3, 3.2}, {2.0, 5, 2.4}, {2.5, 4, 2.8},
                                          {3.0, 5, 2.2}, {3.5, 6, 1.8}, {4.0, 6, 1.6}}) {
        result.rows.emplace_back().depth = depth;
        result.rows.back().values.ic = ic;
        result.rows.back().values.zone = zone;
    }
    result.rows[5].invalid = Invalid::SleeveFriction;
    // Layers (1, 2], (2, 3], (3, 3.5], (3.5, 5], the first one with its top: all in metres.
    const auto layers = SbtnOfLayers(result, {{1, 2}, {2, 3}, {3, 3.5}, {3.5, 5}}, 1.0);
    const struct { const char* fault; int valid, zone; double share, ic; } cases[] = {
        {"leaves out the first layer's top or takes a reading on a bottom below", 3, 3, 200.0 / 3, 8.6 / 3},
        {"gives a tie to the higher zone number or counts a reading on a top twice", 2, 4, 50, 2.5},
        {"counts an invalid reading", 0, 0, 0, 0},
        {"loses the last reading", 1, 6, 100, 1.6},
    };
    ASSERT_EQ(layers.size(), 4u);
    for (std::size_t k = 0; k < 4; ++k) {
        const auto& c = cases[k];
        EXPECT_EQ(std::tie(layers[k].valid, layers[k].zone), std::tie(c.valid, c.zone)) << c.fault;
        EXPECT_NEAR(layers[k].share, c.share, 1e-12) << c.fault;
        EXPECT_NEAR(layers[k].ic.value_or(0), c.ic, 1e-12) << c.fault;
    }
    // Bounds worked out in single precision part by a hair: a reading goes to one layer,
    // never to two or none, and the first layer's top is no bound at all.
    const double hair = 2e-8;
    const auto parted = SbtnOfLayers(result, {{1 + hair, 2 + hair}, {2, 3 - hair}, {3 + hair, 5}}, 1.0);
    EXPECT_EQ(parted[0].valid + parted[1].valid + parted[2].valid, 6) << "a reading counted twice or lost";
    EXPECT_EQ(std::pair(parted[0].valid, parted[1].valid), std::pair(3, 2)) << "the first layer's top or a next top";
    // A reading at 1 m lies at 3.28 ft.
    EXPECT_EQ(SbtnOfLayers(result, {{3.2, 3.3}}, 3.28084)[0].valid, 1) << "does not take the depths to the layers' units";
}

}  // namespace
}  // namespace pemlo::sbtn
