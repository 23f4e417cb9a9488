// The "sbt" command: Robertson's normalised soil behaviour type (Robertson 2009) of
// one or more soundings, reading by reading, beside the program's own U and V; as
// CSV, a table or JSON, on standard output or as one result file per input.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

void AddSbtCommand(CLI::App& app);

}  // namespace pemlo::cli
