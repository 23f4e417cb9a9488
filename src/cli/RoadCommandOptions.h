// The options every sounding command shares: the file's units and title lines, the
// graph units, the cone factors and the output format, with the defaults of the
// desktop program's screens (English data, 10 title lines, factors 50 and 0.5).
#pragma once

#include <functional>
#include <string>

#include "cli/BatchRunner.h"
#include "cli/ResultFormat.h"
#include "core/ProgramRoad.h"

namespace CLI {
class App;
}

namespace pemlo::cli {

struct RoadCommandOptions {
    int dataUnits = DataEnglish;
    int graphUnits = -1;  // not given: the graph units follow the data units
    int titleLines = 10;
    std::string tipFactor = "50";  // as typed: converted straight to single precision
    std::string sleeveFactor = "0.5";
    OutputFormat format = OutputFormat::Csv;
};

// --data-units, --graph-units, --title-lines, --tip-factor, --sleeve-factor.
void AddRoadOptions(CLI::App& command, RoadCommandOptions& options);

// --format csv|table|json.
void AddFormatOption(CLI::App& command, RoadCommandOptions& options);

// The road of one file under these options.
RoadOptions ToRoadOptions(const RoadCommandOptions& options, const std::string& path);

// The facts an output states about a road that ended Done.
RunFacts FactsOf(const RoadCommandOptions& options, const std::string& path, const Declarations& d);

// The exit status of a road that ended this way.
int ExitCodeOf(RoadStatus status);

// Runs the road of one file in a record of its own (classify false: up to the cleaned
// readings) and writes its numbers with `write`, or says what went wrong.
using WriteResults = std::function<std::string(const Declarations& d, const RunFacts& facts)>;
FileOutcome RunFile(const RoadCommandOptions& options, const std::string& path, bool classify,
                    const WriteResults& write);

}  // namespace pemlo::cli
