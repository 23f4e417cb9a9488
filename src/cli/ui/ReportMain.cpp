// pemlo-report: the report and log commands of pemlo-cli, which hands their command
// lines over here: the part of the command line that draws with Qt.
#include <CLI/CLI.hpp>

#include <iostream>

#include "cli/CommandLine.h"
#include "cli/ui/LogCommand.h"
#include "cli/ui/ReportCommand.h"

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    CLI::App app;
    pemlo::cli::SetUpApp(app);
    pemlo::cli::AddReportCommand(app);
    pemlo::cli::AddLogCommand(app);
    return pemlo::cli::RunApp(app, argc, argv);
}
