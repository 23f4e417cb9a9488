// The "sbt" command: Robertson's normalised soil behaviour type (Robertson 2009) of
// one or more soundings, reading by reading, beside the program's own U and V; as
// CSV, a table or JSON, on standard output or as one result file per input.
#pragma once

#include <string>
#include <vector>

#include "cli/RoadCommandOptions.h"
#include "sbtn/Sbtn.h"

namespace CLI {
class App;
}

namespace pemlo::cli {

// What the command is called with; log takes the same inputs and options.
struct SbtState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::string outDir;
    sbtn::SbtnOptions sbtn;
    std::string unitWeight = "auto";
    int u2Column = 0;
};

// --gwt, --area-ratio, --unit-weight, --water-unit-weight, --u2-column.
void AddSbtOptions(CLI::App& command, SbtState& state);

// The options as one whole, once parsed: a value that cannot be used, or --u2-column
// with millivolt readings (no factor is known for u2), is a wrong call
// (CLI::ValidationError).
void CheckSbtCall(SbtState& state);

void AddSbtCommand(CLI::App& app);

}  // namespace pemlo::cli
