// The "classify" command: the results of one or more soundings, interval by interval,
// as CSV, a table or JSON, on standard output or as one result file per input.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

void AddClassifyCommand(CLI::App& app);

}  // namespace pemlo::cli
