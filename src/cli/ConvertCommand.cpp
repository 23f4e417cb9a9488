#include "cli/ConvertCommand.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <optional>

#include "cli/OutputFiles.h"
#include "cli/OutputPath.h"
#include "cli/RoadCommandOptions.h"
#include "cli/RunInput.h"
#include "cli/StandardStreams.h"
#include "road/ProgramRoad.h"
#include "formats/ConeDataFileWriter.h"
#include "road/UnitCheck.h"

namespace pemlo::cli {

namespace fs = std::filesystem;

namespace {

struct ConvertState {
    RoadCommandOptions options;
    formats::ProjectInfo project;
    std::vector<std::string> files;
    std::string out, outDir;
    std::optional<double> from, to;
};

// The unit check of the sounding as the desktop program will read it (SI).
std::vector<std::string> UnitWarnings(const formats::ImportedSounding& s)
{
    const auto d = std::make_unique<Declarations>();
    LoadImported(s, {}, *d);
    return formats::CheckUnits(*d, false);
}

FileOutcome Convert(const ConvertState& state, const Input& input, bool recordInNotes)
{
    if (!input.refusal.empty()) return Failed(ExitReadFailed, input.refusal);
    if (!input.sounding)
        return Failed(ExitReadFailed,
                      "a plain ASCII cone data file already; convert reads GEF, AGS4 and BRO-XML files");
    if (auto refused = StrictRefusal(state.options, input)) return *refused;
    FileOutcome outcome;
    outcome.notes = InputNotes(state.options, input, recordInNotes);
    const std::vector<std::string> warnings = UnitWarnings(*input.sounding);
    for (const std::string& w : warnings) outcome.notes += "pemlo-cli: warning: " + input.name + ": " + w + "\n";
    if (state.options.strict && !warnings.empty()) {
        outcome.exitCode = ExitReadFailed;
        outcome.error = "--strict: " + std::to_string(warnings.size()) + " unit warnings";
        return outcome;
    }
    auto file = std::make_shared<const formats::ConeDataFile>(
        formats::ConeDataFileOf(*input.sounding, ProjectOf(input, state.project),
                                fs::path(input.path).filename().string(), state.from, state.to));
    if (!file->refusal.empty()) {
        outcome.exitCode = ExitReadFailed;
        outcome.error = file->refusal;
        return outcome;
    }
    outcome.write = [file](std::ostream& out) { formats::WriteConeDataFile(out, *file); };
    outcome.rows = file->Readings();
    return outcome;
}

void CheckDestination(const ConvertState& state, const std::vector<Input>& inputs)
{
    if (!state.out.empty() && inputs.size() != 1)
        throw CLI::ValidationError("-o",
                                   std::to_string(inputs.size()) + " soundings cannot go into one file; use --out-dir");
    if (state.out.empty() && state.outDir.empty() && inputs.size() != 1)
        throw CLI::ValidationError("FILE",
                                   std::to_string(inputs.size()) + " soundings; give --out-dir for their files");
    if (!state.out.empty()) CheckOutputPath("-o", state.out, PathsOf(inputs));
}

int ConvertOne(const ConvertState& state, const Input& input)
{
    FileOutcome outcome = Convert(state, input, true);
    int exitCode = ExitOk;
    if (TallyFailure(input.name, outcome, exitCode)) return exitCode;
    if (state.out.empty()) {
        outcome.write(Out());
        return ExitOk;
    }
    const std::string failure = WriteOutputFile(state.out, outcome.write);
    if (failure.empty()) return ExitOk;
    WriteErr("pemlo-cli: " + failure + "\n");
    return ExitWriteFailed;
}

int ConvertIntoDirectory(const ConvertState& state, const std::vector<Input>& inputs)
{
    const std::vector<fs::path> targets = ResultPaths(inputs, state.outDir, "txt");
    if (!CreateOutputDirectory(state.outDir)) return ExitWriteFailed;
    std::vector<std::string> names;
    for (const Input& input : inputs) names.push_back(input.name);
    ProgressLine progress(inputs.size() > 1);
    return RunIntoFiles(
        names,
        [&](std::size_t i, const std::string&) {
            return WriteResultFile(Convert(state, inputs[i], false), inputs[i], targets[i], "readings");
        },
        state.outDir, progress);
}

}  // namespace

void AddConvertCommand(CLI::App& app)
{
    auto state = std::make_shared<ConvertState>();
    CLI::App* command = app.add_subcommand(
        "convert", "Write each sounding of GEF, AGS4 and BRO-XML files as a plain ASCII cone data file (SI units, "
                   "10 title lines, depth,qc,fs per line) that the desktop program loads");
    command->add_option("FILE", state->files, "GEF, AGS4 or BRO-XML files; FILE#ID names one sounding")->required();
    auto* out = command->add_option("-o", state->out, "The file to write (one sounding); default standard output")
                    ->type_name("OUT");
    command
        ->add_option("--out-dir", state->outDir, "Write one file per sounding into this directory and print a summary")
        ->type_name("DIR")
        ->excludes(out);
    command->add_option("--from", state->from, "Keep the readings from this depth down (m)")
        ->check(FiniteNumber())
        ->type_name("D");
    command->add_option("--to", state->to, "Keep the readings down to this depth (m)")
        ->check(FiniteNumber())
        ->type_name("D");
    AddImportOptions(*command, state->options);
    AddProjectOptions(*command, state->project);
    command->callback([state] {
        const std::vector<Input> inputs = ExpandInputs(state->files, state->options.depth);
        CheckDestination(*state, inputs);
        const int exitCode =
            state->outDir.empty() ? ConvertOne(*state, inputs.front()) : ConvertIntoDirectory(*state, inputs);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
