// pemlo-cli: the sounding's road from its file to its classification, without the
// screens, for scripts and for checking results. Each command lives in a file of its
// own and adds itself to the application here; "report" is handed over to the
// executable that draws it.
#include <CLI/CLI.hpp>

#include <iostream>
#include <string_view>

#include "cli/AgsCommand.h"
#include "cli/ClassifyCommand.h"
#include "cli/CommandLine.h"
#include "cli/ConvertCommand.h"
#include "cli/LayersCommand.h"
#include "cli/ReadingsCommand.h"
#include "cli/ReportHandover.h"
#include "cli/SbtCommand.h"

namespace {

struct Command {
    std::string_view name;
    void (*add)(CLI::App& app);
};

constexpr Command Commands[] = {
    {"classify", pemlo::cli::AddClassifyCommand}, {"readings", pemlo::cli::AddReadingsCommand},
    {"convert", pemlo::cli::AddConvertCommand},   {"layers", pemlo::cli::AddLayersCommand},
    {"ags", pemlo::cli::AddAgsCommand},           {"sbt", pemlo::cli::AddSbtCommand},
    {"report", pemlo::cli::AddReportEntry},       {"log", pemlo::cli::AddLogEntry},
};

}  // namespace

int main(int argc, char** argv)
{
    // Results go to a buffered standard output; in sync with C's stdio it would be
    // flushed at every write.
    std::ios::sync_with_stdio(false);
    if (pemlo::cli::AsksForReport(argc, argv)) return pemlo::cli::HandOverToReport(argv);

    CLI::App app;
    pemlo::cli::SetUpApp(app);
    // Only the command asked for is built: building them all, with their options and
    // checks, was most of the work of a start. Help and a wrong call get them all.
    const std::string_view asked = argc > 1 ? argv[1] : "";
    bool known = false;
    for (const Command& command : Commands) known = known || command.name == asked;
    for (const Command& command : Commands)
        if (!known || command.name == asked) command.add(app);
    return pemlo::cli::RunApp(app, argc, argv);
}
