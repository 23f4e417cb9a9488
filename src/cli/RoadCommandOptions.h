// The options every sounding command shares: the file's units and title lines, the
// graph units, the cone factors and the output format, with the defaults of the
// desktop program's screens (English data, 10 title lines, factors 50 and 0.5); the
// depth an import takes and --strict.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/BatchRunner.h"
#include "cli/Inputs.h"
#include "cli/ResultFormat.h"
#include "road/ProgramRoad.h"

namespace CLI {
class App;
class Option;
class Validator;
}

namespace pemlo::cli {

struct RoadCommandOptions {
    int dataUnits = DataEnglish;
    int graphUnits = -1;  // not given: the graph units follow the data units
    int titleLines = 10;
    std::string tipFactor = "50";  // as typed: converted straight to single precision
    std::string sleeveFactor = "0.5";
    OutputFormat format = OutputFormat::Csv;
    formats::DepthChoice depth = formats::DepthChoice::Penetration;
    bool strict = false;
    std::vector<const CLI::Option*> asciiOnly;  // the options an imported file ignores
};

// --data-units, --graph-units, --title-lines, --tip-factor, --sleeve-factor, and the
// import options.
void AddRoadOptions(CLI::App& command, RoadCommandOptions& options);

// Checks an option's value is a finite number (a depth, a thickness): "nan", "inf"
// and numbers beyond double are refused (exit 2).
CLI::Validator FiniteNumber();

// --depth penetration|corrected, --strict.
void AddImportOptions(CLI::App& command, RoadCommandOptions& options);

// The six project fields (--number, --title, --date, --location, --gwt, --cone-no);
// each one given overrides what the file states. Without --gwt where the command's own
// --gwt, a depth it computes with, takes the table's place (log).
void AddProjectOptions(CLI::App& command, formats::ProjectInfo& overrides, bool withGwt = true);
formats::ProjectInfo ProjectOf(const Input& input, const formats::ProjectInfo& overrides);

// The FILE arguments of a command over several soundings.
void AddInputFilesOption(CLI::App& command, std::vector<std::string>& files);

// --format csv|table|json.
void AddFormatOption(CLI::App& command, RoadCommandOptions& options);

// The road of one input under these options.
RoadOptions ToRoadOptions(const RoadCommandOptions& options, const Input& input);

}  // namespace pemlo::cli
