// Gathers one input's readings for the normalised soil behaviour type: an imported
// sounding's as the import stored them, a plain ASCII file's through its reader and the
// conversion to SI units, with u2 read from the column the user names.
#pragma once

#include <string>

#include "core/ProgramRoad.h"
#include "sbtn/SbtnReadings.h"

namespace pemlo::sbtn {

struct GatherResult {
    RoadResult road;      // a plain file's reader or conversion failure, as the road reports it
    std::string refusal;  // not empty: the input cannot be used, and why (exit 3)
    SbtnReadings readings;
};

// u2Column: 0 for none, or 4 or 5 (plain ASCII files only; refused for millivolt data,
// for which no factor is known). options.graphUnits is ignored: the readings are SI.
GatherResult GatherSbtnReadings(const RoadOptions& options, int u2Column);

}  // namespace pemlo::sbtn
