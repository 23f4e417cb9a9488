// The normalised soil behaviour type as layers and ags carry it beside U and V: its
// options, and its result for one input, with the notes that say what was assumed.
// An input whose readings the method cannot take still gets its layers; only the
// yardstick's columns stay empty, and a note says why.
#pragma once

#include <memory>
#include <string>

#include "cli/RoadCommandOptions.h"
#include "sbtn/Sbtn.h"
#include "sbtn/SbtnReadings.h"

namespace pemlo::cli {

struct YardstickOptions {
    sbtn::SbtnOptions sbtn;
    std::string unitWeight = "auto";
    int u2Column = 0;
};

// --area-ratio, --unit-weight, --water-unit-weight, --u2-column and, with withGwt,
// --gwt D (ags has a --gwt of its own: the project's text, read as D where it is a number).
void AddYardstickOptions(CLI::App& command, YardstickOptions& yardstick, RoadCommandOptions& road, bool withGwt);

// Reads --unit-weight and refuses values the method cannot use (CLI::ValidationError).
void CheckYardstickCall(YardstickOptions& yardstick, const RoadCommandOptions& road);

struct Yardstick {
    std::shared_ptr<const sbtn::SbtnResult> result;  // null: none, and the notes say why
    std::shared_ptr<const sbtn::SbtnReadings> readings;
    std::string notes;
};

Yardstick YardstickOf(const YardstickOptions& yardstick, const RoadCommandOptions& road, const Input& input);

}  // namespace pemlo::cli
