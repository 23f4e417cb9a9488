#include "cli/ReadingsCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

#include "cli/RoadCommandOptions.h"
#include "cli/StandardStreams.h"

namespace pemlo::cli {

namespace {

struct ReadingsState {
    RoadCommandOptions options;
    std::string file;
};

}  // namespace

void AddReadingsCommand(CLI::App& app)
{
    auto state = std::make_shared<ReadingsState>();
    CLI::App* command = app.add_subcommand(
        "readings", "Print the readings of one sounding after unit conversion and cleaning: depth, qc, fs, ratio");
    command->add_option("FILE", state->file, "Cone data file")->required();
    AddRoadOptions(*command, state->options);
    AddFormatOption(*command, state->options);
    command->callback([state] {
        const OutputFormat format = state->options.format;
        const FileOutcome outcome =
            RunFile(state->options, state->file, false, [format](const Declarations& d, const RunFacts& facts) {
                return FormatReadings(d, facts, format);
            });
        if (outcome.exitCode != ExitOk) {
            ReportFailure(state->file, outcome);
            throw CLI::RuntimeError(outcome.exitCode);
        }
        WriteOut(outcome.output);
    });
}

}  // namespace pemlo::cli
