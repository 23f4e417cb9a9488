#include "cli/ReadingsCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

#include "cli/OutputFiles.h"
#include "cli/RoadCommandOptions.h"
#include "cli/RunInput.h"
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
    command->add_option("FILE", state->file, "Cone data file, GEF, AGS4 or BRO-XML file, or FILE#ID")->required();
    AddRoadOptions(*command, state->options);
    AddFormatOption(*command, state->options);
    command->callback([state] {
        const OutputFormat format = state->options.format;
        const Input input = SingleInput(state->file, state->options.depth);
        const FileOutcome outcome =
            RunInput(state->options, input, false, true,
                     [format](std::shared_ptr<const Declarations> d, const RunFacts& facts) -> WriteOutput {
                         return [d, facts, format](std::ostream& out) { WriteReadings(out, *d, facts, format); };
                     });
        int exitCode = ExitOk;
        if (TallyFailure(input.name, outcome, exitCode)) throw CLI::RuntimeError(exitCode);
        outcome.write(Out());
    });
}

}  // namespace pemlo::cli
