// pemlo-report: the report command of pemlo-cli, which hands its command line over
// here: the one part of the command line that draws with Qt.
#include <CLI/CLI.hpp>

#include <iostream>

#include "cli/CommandLine.h"
#include "cli/ReportCommand.h"

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    CLI::App app;
    pemlo::cli::SetUpApp(app);
    pemlo::cli::AddReportCommand(app);
    return pemlo::cli::RunApp(app, argc, argv);
}
