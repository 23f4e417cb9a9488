// The normalised soil behaviour type over a layer of the program's own profile, so that
// engineers see the yardstick beside U and V, and the values a file of readings takes.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "sbtn/Sbtn.h"

namespace pemlo::sbtn {

// What the valid readings of one layer say.
struct LayerSbtn {
    int valid = 0;              // valid readings in the layer
    std::optional<double> ic;   // their mean Ic, summed in double from the top down; empty without any
    int zone = 0;               // the zone most of them fall in (a tie to the lower number); 0 without any
    double share = 0.0;         // percent of them in that zone
};

// One LayerSbtn per layer (top, bottom), the layers from the top down. A reading lies
// in a layer when top < z <= bottom, the first layer taking its top as well, where a
// layer's bottom is taken as the next one's top. The two are worked out from
// single-precision interval depths and may part by some 1e-8 m, which would put a
// reading in two layers or in none; taken so, the layers share their bounds as
// SCPP_TOP and SCPP_BASE write them. The first layer takes what lies above its top
// too (the grid begins at the first reading, so only rounding puts one there). z is
// the reading's depth in metres times depthScale, which takes it to the layers' units
// (1 for metres); the readings' depths never decrease.
std::vector<LayerSbtn> SbtnOfLayers(const SbtnResult& result, const std::vector<std::pair<double, double>>& layers,
                                    double depthScale);

// The area ratio the method used for reading i.
double AreaRatioUsed(const SbtnResult& result, std::size_t reading);

}  // namespace pemlo::sbtn
