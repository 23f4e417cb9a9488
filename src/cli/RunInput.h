// Running one input of a sounding command apart from parsing its options: the one
// sounding of a single-file command, the notes and refusals of an import, and the
// road of the input in a record of its own.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cli/BatchRunner.h"
#include "cli/Inputs.h"
#include "cli/ResultFormat.h"
#include "cli/RoadCommandOptions.h"
#include "road/ProgramRoad.h"

namespace pemlo::cli {

// The one sounding a command of one sounding reads: a file that holds several is a
// wrong call (CLI::ValidationError) naming them.
Input SingleInput(const std::string& file, formats::DepthChoice depth);

// The exit status of a road that ended this way.
int ExitCodeOf(RoadStatus status);

// What stands before an input's output on standard error: its import record (unless
// a summary holds it) and a note naming the options it ignores. An input refused by
// --strict for what its import changed yields the refusal.
std::string InputNotes(const RoadCommandOptions& options, const Input& input, bool withRecord);
std::optional<FileOutcome> StrictRefusal(const RoadCommandOptions& options, const Input& input);

// Runs the road of one input in a record of its own (classify false: up to the
// cleaned readings) and hands the record to `use`, which makes of it the output to
// write when the input's turn comes (keeping the record alive, or only what it needs);
// or says what went wrong. The unit warnings go into the outcome's notes (and with
// --strict fail the input).
using UseResults = std::function<WriteOutput(std::shared_ptr<const Declarations> d, const RunFacts& facts)>;
FileOutcome RunInput(const RoadCommandOptions& options, const Input& input, bool classify, bool recordInNotes,
                     const UseResults& use);

}  // namespace pemlo::cli
