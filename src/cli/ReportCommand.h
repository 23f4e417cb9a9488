// The "report" command: draws a sounding's CPT data, results or U and V view as the
// printed report and writes it to a PDF. It needs Qt, so it exists only in builds with
// the desktop program (PEMLO_BUILD_GUI). Its definition goes into ReportCommand.cpp in
// this folder; CMakeLists.txt here compiles that file, links pemlo_ui and defines
// PEMLO_CLI_HAS_REPORT once the file exists, and main.cpp then calls the function.
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
