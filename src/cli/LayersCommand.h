// The "layers" command: the soil profile of one or more soundings, the classified
// intervals grouped into layers, as CSV, a table or JSON, on standard output or as
// one result file per input.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/Declarations.h"
#include "profile/SoilLayers.h"

namespace CLI {
class App;
}

namespace pemlo::cli {

void AddLayersCommand(CLI::App& app);

// --min-thickness T, kept as typed (empty: not given).
void AddMinThicknessOption(CLI::App& command, std::string& minThickness);

// T as typed, or the default of the graph units: 0.5 m or 1.64 ft.
double MinThicknessOf(const std::string& typed, Integer graphUnits);

// Each layer's (top, bottom), for the yardstick over it.
std::vector<std::pair<double, double>> LayerRanges(const std::vector<profile::SoilLayer>& layers);

}  // namespace pemlo::cli
