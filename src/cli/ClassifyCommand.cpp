#include "cli/ClassifyCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

#include "cli/BatchOutput.h"
#include "cli/RoadCommandOptions.h"
#include "cli/RunInput.h"

namespace pemlo::cli {

namespace {

struct ClassifyState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::string outDir;
};

}  // namespace

void AddClassifyCommand(CLI::App& app)
{
    auto state = std::make_shared<ClassifyState>();
    CLI::App* command = app.add_subcommand(
        "classify", "Classify every depth interval of one or more soundings: depth, qc, fs, ratio, U, V "
                    "and percent sand, silt and clay");
    AddInputFilesOption(*command, state->files);
    AddRoadOptions(*command, state->options);
    AddFormatOption(*command, state->options);
    command->add_option("--out-dir", state->outDir,
                        "Write one result file per input into this directory and print a summary")
        ->type_name("DIR");
    command->callback([state] {
        const RoadCommandOptions& options = state->options;
        const BatchJob job{ExpandInputs(state->files, options.depth), state->outDir, options.format, "intervals",
                           IntervalCsvHeader(true),
                           [&options](const Input& input, CsvLayout layout, bool recordInNotes) {
                               const OutputFormat format = options.format;
                               return RunInput(options, input, true, recordInNotes,
                                               [format, layout](std::shared_ptr<const Declarations> d,
                                                                const RunFacts& facts) -> WriteOutput {
                                                   return [d, facts, format, layout](std::ostream& out) {
                                                       WriteIntervals(out, *d, facts, format, layout);
                                                   };
                                               });
                           }};
        const int exitCode = DeliverResults(job);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
