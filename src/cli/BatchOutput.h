// How a command that works through several soundings delivers their results: on
// standard output in input order (several inputs as one CSV table or one JSON array),
// or as one result file per input in a directory, followed by a summary. A failed
// input is reported and the others go on; the status is that of the first failure.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/BatchRunner.h"
#include "cli/Inputs.h"
#include "cli/ResultFormat.h"

namespace pemlo::cli {

struct BatchJob {
    std::vector<Input> inputs;
    std::string outDir;              // empty: standard output
    OutputFormat format = OutputFormat::Csv;
    std::string rowsName;            // what the summary counts: "intervals", "layers"
    std::string manyFilesCsvHeader;  // written once above the rows of several inputs
    // One input's results in the format. The layout matters for CSV on standard
    // output; recordInNotes: the import record goes to standard error, as no summary
    // holds it.
    std::function<FileOutcome(const Input& input, CsvLayout layout, bool recordInNotes)> run;
};

// Runs the job on all cores and returns the exit status.
int DeliverResults(const BatchJob& job);

}  // namespace pemlo::cli
