// The soil profile of a sounding: its classified depth intervals grouped into a few
// layers of one dominant soil each, thin interbeds merged into their closest neighbour.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/Declarations.h"

namespace pemlo::profile {

enum class Soil { Sand, Silt, Clay };

// One classified interval as the record holds it, in the graph units.
struct IntervalResult {
    float depth = 0.0f;  // the interval's representative depth (its middle)
    float qc = 0.0f;
    float fs = 0.0f;
    float ratio = 0.0f;
    float u = 0.0f;
    float v = 0.0f;
    float sand = 0.0f;  // percent
    float silt = 0.0f;
    float clay = 0.0f;
};

// Means over a layer's intervals, summed in double from the top down.
struct LayerMeans {
    double qc = 0.0;
    double fs = 0.0;
    double ratio = 0.0;
    double u = 0.0;
    double v = 0.0;
    double sand = 0.0;
    double silt = 0.0;
    double clay = 0.0;
};

struct SoilLayer {
    int first = 0;       // its top interval, 0-based in the intervals it was built from
    int count = 0;       // its intervals
    double top = 0.0;    // top of its first interval, graph units
    double bottom = 0.0; // bottom of its last interval
    Soil soil = Soil::Sand;
    LayerMeans means;
};

// The intervals 1..NumIntervals of a classified record.
std::vector<IntervalResult> IntervalsOf(const Declarations& d);

// The largest of the three probabilities; a tie goes to the finer soil
// (clay before silt before sand).
Soil DominantSoil(double sand, double silt, double clay);

// "sand", "silt" or "clay".
const char* SoilName(Soil soil);

// The thinnest layer kept as it is, in the graph units: 0.5 m or 1.64 ft.
double DefaultMinThickness(Integer graphUnits);

// N = max(1, round(T / t)): a layer of fewer intervals is thin. t is the interval
// size as stored (single precision, widened); halves round away from zero.
std::int64_t MinIntervals(double minThickness, float intervalSize);

// The layers of the intervals, from the top down. Interval j stands for the depth
// range depth(j) -/+ t/2. Raw layers are runs of one dominant soil; while there is
// more than one layer and a thin one, the thin layer with the fewest intervals (the
// shallowest of equals) is merged into the neighbour whose mean probabilities are
// closest (sum of absolute differences; the one above on a tie; at either end the
// only neighbour), the merged layer takes the soil of its mean probabilities, and
// neighbours of the same soil are joined.
std::vector<SoilLayer> GroupIntoLayers(std::span<const IntervalResult> intervals, float intervalSize,
                                       double minThickness);

}  // namespace pemlo::profile
