#include "cli/SbtCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

#include "cli/BatchOutput.h"
#include "cli/RoadCommandOptions.h"
#include "cli/RunInput.h"
#include "cli/SbtFormat.h"
#include "cli/YardstickOptions.h"
#include "sbtn/SbtnInputs.h"

namespace pemlo::cli {

namespace {

struct SbtState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::string outDir;
    YardstickOptions yardstick;
};

// What a plain file's road that failed says, in the words classify uses: the road is
// run again up to the cleaning to describe it.
std::string RoadFailure(const RoadOptions& options, const sbtn::GatherResult& gathered)
{
    if (!gathered.refusal.empty()) return gathered.refusal;
    RoadOptions again = options;
    again.classify = false;
    const auto d = std::make_unique<Declarations>();
    const RoadResult result = RunRoad(again, *d);
    return result.status != RoadStatus::Done ? DescribeRoadFailure(result, again, *d)
                                             : DescribeRoadFailure(gathered.road, again, *d);
}

FileOutcome RunSbt(const SbtState& state, const Input& input, CsvLayout layout, bool recordInNotes)
{
    if (!input.refusal.empty()) return Failed(ExitReadFailed, input.refusal);
    if (auto refused = StrictRefusal(state.options, input)) return *refused;
    const RoadOptions road = ToRoadOptions(state.options, input);
    sbtn::GatherResult gathered = sbtn::GatherSbtnReadings(road, state.yardstick.u2Column);
    std::string notes = InputNotes(state.options, input, recordInNotes);
    for (const std::string& warning : gathered.road.warnings)
        notes += "pemlo-cli: warning: " + input.name + ": " + warning + "\n";
    if (gathered.road.status != RoadStatus::Done)
        return Failed(ExitCodeOf(gathered.road.status), RoadFailure(road, gathered), notes);
    if (!gathered.refusal.empty()) return Failed(ExitReadFailed, gathered.refusal, notes);
    if (state.options.strict && !gathered.road.warnings.empty())
        return Failed(ExitReadFailed, "--strict: " + std::to_string(gathered.road.warnings.size()) + " unit warning" +
                                          (gathered.road.warnings.size() == 1 ? "" : "s"),
                      notes);

    auto result = std::make_shared<const sbtn::SbtnResult>(sbtn::ComputeSbtn(gathered.readings, state.yardstick.sbtn));
    if (!result->refusal.empty()) return Failed(ExitReadFailed, result->refusal, notes);
    SbtFacts facts{{input.name, input.sounding ? Integer{DataSI} : static_cast<Integer>(state.options.dataUnits),
                    GraphSI, static_cast<int>(result->rows.size()), nullptr, gathered.road.warnings},
                   sbtn::DescribeSbtnInputs(gathered.readings)};
    for (const std::string& line : facts.inputLines) notes += "pemlo-cli: note: " + input.name + ": " + line + "\n";
    for (const std::string& line : sbtn::AssumedValues(*result))
        notes += "pemlo-cli: note: " + input.name + ": " + line + "\n";

    FileOutcome outcome;
    outcome.notes = std::move(notes);
    outcome.rows = static_cast<int>(result->rows.size());
    const OutputFormat format = state.options.format;
    outcome.write = [result, facts = std::move(facts), input, format, layout](std::ostream& out) {
        SbtFacts f = facts;
        f.run.imported = input.sounding.get();  // kept alive by the input held here
        WriteSbt(out, *result, f, format, layout);
    };
    return outcome;
}

}  // namespace

void AddSbtCommand(CLI::App& app)
{
    auto state = std::make_shared<SbtState>();
    CLI::App* command = app.add_subcommand(
        "sbt", "Robertson's normalised soil behaviour type (Robertson 2009) of every reading: qt, unit weight, "
               "stresses, Qtn, Fr, Bq, n, Ic and zone, in SI units");
    AddInputFilesOption(*command, state->files);
    AddRoadOptions(*command, state->options);
    AddYardstickOptions(*command, state->yardstick, state->options, true);
    AddFormatOption(*command, state->options);
    command->add_option("--out-dir", state->outDir,
                        "Write one result file per input into this directory and print a summary")
        ->type_name("DIR");
    command->callback([state] {
        CheckYardstickCall(state->yardstick, state->options);
        const SbtState& s = *state;
        const BatchJob job{ExpandInputs(s.files, s.options.depth), s.outDir, s.options.format, "readings",
                           SbtCsvHeader(true), [&s](const Input& input, CsvLayout layout, bool recordInNotes) {
                               return RunSbt(s, input, layout, recordInNotes);
                           }};
        const int exitCode = DeliverResults(job);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
