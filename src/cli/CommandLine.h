// What pemlo-cli and its report executable share: the application with its help and
// exit statuses, and the run of a parsed command line with every failure turned
// into its exit status.
#pragma once

#include <CLI/CLI.hpp>

namespace pemlo::cli {

// The application "pemlo-cli" with --version and the exit status help; commands are
// added to it by the caller.
void SetUpApp(CLI::App& app);

// Parses and runs the command; returns the exit status. --help and --version print
// and return 0; a wrong call says why and returns 2; an unexpected failure, or results
// that standard output did not take, return 1.
int RunApp(CLI::App& app, int argc, char** argv);

}  // namespace pemlo::cli
