// The "report" command: draws a sounding's CPT data, results or U and V view as the
// printed report and writes it to a PDF. It draws with Qt, so it lives in the
// pemlo-report executable, which pemlo-cli hands a report command line over to.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

// Adds the subcommand to app. Like the other commands it runs from its subcommand's
// callback and ends a failing run by throwing CLI::RuntimeError(exit code) after it
// has written its message to standard error (see ExitCodes.h and RoadCommandOptions.h).
void AddReportCommand(CLI::App& app);

}  // namespace pemlo::cli
