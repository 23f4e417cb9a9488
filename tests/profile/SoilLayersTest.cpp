// The layering rule on small hand-built interval sequences, each row a way the rule
// can go wrong.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "profile/SoilLayers.h"

namespace pemlo::profile {
namespace {

// Interval probabilities (sand, silt, clay) by letter.
const std::map<char, IntervalResult> Kinds{
    {'S', {0, 0, 0, 0, 0, 0, 100, 0, 0}}, {'s', {0, 0, 0, 0, 0, 0, 60, 40, 0}},
    {'I', {0, 0, 0, 0, 0, 0, 0, 100, 0}}, {'i', {0, 0, 0, 0, 0, 0, 30, 60, 10}},
    {'C', {0, 0, 0, 0, 0, 0, 0, 0, 100}}, {'c', {0, 0, 0, 0, 0, 0, 0, 40, 60}},
    {'a', {0, 0, 0, 0, 0, 0, 50, 50, 0}}, {'b', {0, 0, 0, 0, 0, 0, 20, 40, 40}},
    {'T', {0, 0, 0, 0, 0, 0, 30, 30, 30}},
};

struct LayeringCase {
    const char* fault;   // what a wrong rule would do here
    const char* runs;    // "C4 s1": four intervals of kind C, then one of kind s
    double minThickness; // T in metres; t = 0.1 m
    const char* layers;  // the layers expected: soil and intervals, top down
    double firstSand = -1.0;  // where given: the first layer's mean sand
};

const LayeringCase Cases[] = {
    {"merges a thin layer into the thicker or the lower neighbour, not the closer", "S5 c2 C5", 0.5,
     "sand5 clay7"},
    {"breaks a tie in closeness towards the layer below", "S5 I2 C5", 0.5, "sand7 clay5"},
    {"breaks a tie in soil towards the coarser soil (50/50 sand-silt, 40/40 silt-clay, all equal)",
     "a5 b5 T5 a5", 0.5, "silt5 clay10 silt5"},
    {"leaves a thin top layer, or looks for a neighbour above it", "C2 S6", 0.5, "sand8"},
    {"leaves a thin bottom layer, or looks for a neighbour below it", "S6 C2", 0.5, "sand8"},
    {"merges the first thin layer instead of the one with the fewest intervals", "C4 s1 i5", 0.5, "clay10"},
    {"merges the deepest of equally thin layers first", "c6 S3 c3", 0.5, "clay12"},
    {"leaves two neighbours of one soil apart after a merge", "S6 I1 S5 C6", 0.5, "sand12 clay6"},
    {"keeps the soil of the layer merged into, or averages layer means", "s5 I4", 0.5, "silt9", 300.0 / 9.0},
    {"merges a single interval with nothing, or returns no layer", "S1", 0.5, "sand1"},
    {"splits a layer of one soil", "C7", 0.5, "clay7"},
    {"rounds T / t = 2.5 to even (N 2) instead of away from zero (N 3)", "S2 C10",
     2.5 * static_cast<double>(0.1f), "clay12"},
    {"merges layers when T is 0 (N is 1: no layer is thin)", "S1 C1 S1", 0.0, "sand1 clay1 sand1"},
};

std::vector<IntervalResult> Intervals(const std::string& runs)
{
    std::vector<IntervalResult> intervals;
    std::istringstream in(runs);
    for (std::string run; in >> run;) {
        for (int k = 0; k < std::stoi(run.substr(1)); ++k) {
            IntervalResult r = Kinds.at(run[0]);
            r.depth = static_cast<float>(0.05 + 0.1 * static_cast<double>(intervals.size()));
            intervals.push_back(r);
        }
    }
    return intervals;
}

TEST(SoilLayers, FollowTheLayeringRule)
{
    for (const LayeringCase& c : Cases) {
        SCOPED_TRACE(std::string(c.runs) + ": " + c.fault);
        const auto intervals = Intervals(c.runs);
        const auto layers = GroupIntoLayers(intervals, 0.1f, c.minThickness);
        std::string got;
        for (const SoilLayer& l : layers) {
            if (!got.empty()) got += ' ';
            got += SoilName(l.soil);
            got += std::to_string(l.count);
        }
        EXPECT_EQ(got, c.layers);
        if (layers.empty()) continue;
        // A layer spans its intervals' ranges, each interval's depth -/+ t/2.
        EXPECT_NEAR(layers.front().top, 0.0, 1e-6);
        EXPECT_NEAR(layers.back().bottom, 0.1 * static_cast<double>(intervals.size()), 1e-6);
        if (c.firstSand >= 0.0) {
            EXPECT_EQ(layers.front().means.sand, c.firstSand);
        }
    }
}

}  // namespace
}  // namespace pemlo::profile
