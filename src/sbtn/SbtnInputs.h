// Gathers one input's readings for the normalised soil behaviour type: an imported
// sounding's as the import stored them, a plain ASCII file's through its reader and the
// conversion to SI units, with u2 read from the column the user names.
#pragma once

#include <string>
#include <vector>

#include "road/ProgramRoad.h"
#include "sbtn/SbtnReadings.h"

namespace pemlo::sbtn {

struct GatherResult {
    RoadResult road;      // a plain file's reader or conversion failure, as the road reports it
    std::string refusal;  // not empty: the input cannot be used, and why (exit 3)
    SbtnReadings readings;
};

// u2Column: 0 for none, or 4 or 5 (plain ASCII files only; refused for millivolt data,
// for which no factor is known). An imported file reads its own u2 column, whatever
// u2Column says. options.graphUnits is ignored: the readings are SI. A plain file's
// depths must not decrease (an import has sorted its own).
GatherResult GatherSbtnReadings(const RoadOptions& options, int u2Column);

// The lines of the record on what the file gave beyond depth, qc and fs: the u2 column
// and how many readings lack u2, the area ratio and the groundwater depth with their
// sources ("u2: quantity 6 [MPa]; readings without u2: 3"), without line ends.
std::vector<std::string> DescribeSbtnInputs(const SbtnReadings& readings);

}  // namespace pemlo::sbtn
