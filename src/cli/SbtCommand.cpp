#include "cli/SbtCommand.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <memory>

#include "cli/BatchOutput.h"
#include "cli/RoadCommandOptions.h"
#include "cli/SbtFormat.h"
#include "sbtn/SbtnInputs.h"

namespace pemlo::cli {

namespace {

struct SbtState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::string outDir;
    sbtn::SbtnOptions sbtn;
    std::string unitWeight = "auto";
    int u2Column = 0;
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

// The values taken for want of the file's.
std::string AssumedNotes(const std::string& name, const sbtn::SbtnResult& result)
{
    std::string notes;
    const std::string head = "pemlo-cli: note: " + name + ": ";
    if (result.groundwaterSource == sbtn::ValueSource::Assumed)
        notes += head + "groundwater not stated: taken at depth 0\n";
    if (result.areaRatioSource == sbtn::ValueSource::Assumed)
        notes += head + "area ratio not stated: " + ShortestText(sbtn::DefaultAreaRatio) + " assumed\n";
    return notes;
}

FileOutcome RunSbt(const SbtState& state, const Input& input, CsvLayout layout, bool recordInNotes)
{
    if (!input.refusal.empty()) return Failed(ExitReadFailed, input.refusal);
    if (auto refused = StrictRefusal(state.options, input)) return *refused;
    const RoadOptions road = ToRoadOptions(state.options, input);
    sbtn::GatherResult gathered = sbtn::GatherSbtnReadings(road, state.u2Column);
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

    auto result = std::make_shared<const sbtn::SbtnResult>(sbtn::ComputeSbtn(gathered.readings, state.sbtn));
    if (!result->refusal.empty()) return Failed(ExitReadFailed, result->refusal, notes);
    SbtFacts facts{{input.name, input.sounding ? Integer{DataSI} : static_cast<Integer>(state.options.dataUnits),
                    GraphSI, static_cast<int>(result->rows.size()), nullptr, gathered.road.warnings},
                   sbtn::DescribeSbtnInputs(gathered.readings)};
    for (const std::string& line : facts.inputLines) notes += "pemlo-cli: note: " + input.name + ": " + line + "\n";
    notes += AssumedNotes(input.name, *result);

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

// "auto" or a number, as --unit-weight takes it.
std::optional<double> ParseUnitWeight(const std::string& text)
{
    if (CLI::detail::to_lower(text) == "auto") return std::nullopt;
    double value = 0.0;
    const auto r = std::from_chars(text.data(), text.data() + text.size(), value);
    if (r.ec != std::errc{} || r.ptr != text.data() + text.size() || !std::isfinite(value) || value <= 0.0)
        throw CLI::ValidationError("--unit-weight", "'" + text + "' is neither auto nor a positive number");
    return value;
}

// The options as one whole: a value that cannot be used, or --u2-column with
// millivolt readings (no factor is known for u2), is a wrong call.
void CheckCall(SbtState& state)
{
    state.sbtn.unitWeight = ParseUnitWeight(state.unitWeight);
    if (const std::string why = sbtn::CheckOptions(state.sbtn); !why.empty())
        throw CLI::ValidationError(why);
    if (state.u2Column != 0 && state.options.dataUnits == DataMilliVolts)
        throw CLI::ValidationError("--u2-column is refused for mv data: no factor is known for u2");
}

void AddSbtOptions(CLI::App& command, SbtState& state)
{
    command.add_option("--gwt", state.sbtn.groundwater,
                       "Groundwater depth in metres below depth 0 (negative: water standing above it); default the "
                       "file's, else 0")
        ->type_name("D");
    command.add_option("--area-ratio", state.sbtn.areaRatio,
                       "Net area ratio a of the cone, 0 < a <= 1, for every reading; default the file's, else 0.8")
        ->type_name("A");
    command.add_option("--unit-weight", state.unitWeight,
                       "Soil unit weight in kN/m3 for every reading, or auto (default): estimated from qt and Rf")
        ->type_name("auto|G");
    command.add_option("--water-unit-weight", state.sbtn.waterUnitWeight, "Unit weight of water, kN/m3; default 9.81")
        ->type_name("W");
    state.options.asciiOnly.push_back(
        command
            .add_option("--u2-column", state.u2Column,
                        "Column of a plain ASCII file that holds u2, in the units of qc (not with mv data)")
            ->check(CLI::IsMember({4, 5}).description(""))
            ->type_name("4|5"));
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
    AddSbtOptions(*command, *state);
    AddFormatOption(*command, state->options);
    command->add_option("--out-dir", state->outDir,
                        "Write one result file per input into this directory and print a summary")
        ->type_name("DIR");
    command->callback([state] {
        CheckCall(*state);
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
