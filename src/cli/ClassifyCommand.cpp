#include "cli/ClassifyCommand.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "cli/BatchRunner.h"
#include "cli/ProgressLine.h"
#include "cli/RoadCommandOptions.h"
#include "cli/StandardStreams.h"

namespace pemlo::cli {

namespace fs = std::filesystem;

namespace {

// Reports a file that failed and keeps the exit code of the first failure in input
// order; false when the file went through.
bool TallyFailure(const std::string& file, const FileOutcome& outcome, int& exitCode)
{
    if (outcome.exitCode == ExitOk) return false;
    ReportFailure(file, outcome);
    if (exitCode == ExitOk) exitCode = outcome.exitCode;
    return true;
}

struct ClassifyState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::string outDir;
};

// One result file per input, named after it. Two inputs that would write the same
// result file, or a result file that would overwrite an input, are a wrong call.
std::vector<fs::path> ResultPaths(const ClassifyState& state)
{
    std::vector<fs::path> targets;
    std::map<fs::path, std::string> taken;
    for (const std::string& file : state.files) {
        fs::path target = fs::path(state.outDir) / fs::path(file).stem();
        target += "." + FileExtension(state.options.format);
        std::error_code ec;
        fs::path key = fs::weakly_canonical(target, ec);
        if (ec) key = fs::absolute(target, ec).lexically_normal();
        if (const auto it = taken.find(key); it != taken.end())
            throw CLI::ValidationError("--out-dir", file + " and " + it->second + " would both be written to " +
                                                        target.string());
        taken.emplace(key, file);
        targets.push_back(target);
    }
    for (const std::string& file : state.files) {
        std::error_code ec;
        if (const auto it = taken.find(fs::weakly_canonical(file, ec)); !ec && it != taken.end())
            throw CLI::ValidationError("--out-dir", "the result of " + it->second + " would overwrite " + file);
    }
    return targets;
}

FileOutcome WriteResultFile(FileOutcome outcome, const std::string& file, const fs::path& target)
{
    if (outcome.exitCode != ExitOk) return outcome;
    std::ofstream out(target, std::ios::binary | std::ios::trunc);
    out << outcome.output;
    out.close();
    if (!out) return {ExitWriteFailed, {}, "could not write " + target.string()};
    return {ExitOk, file + " -> " + target.string() + " (" + std::to_string(outcome.rows) + " intervals)\n", {},
            outcome.rows};
}

int RunOnStandardOutput(const ClassifyState& state, ProgressLine& progress)
{
    const bool several = state.files.size() > 1;
    const OutputFormat format = state.options.format;
    const CsvLayout layout = several ? CsvLayout::ManyFiles : CsvLayout::OneFile;
    const auto work = [&](std::size_t, const std::string& file) {
        return RunFile(state.options, file, true, [&](const Declarations& d, const RunFacts& facts) {
            return FormatIntervals(d, facts, format, layout);
        });
    };

    int exitCode = ExitOk;
    std::size_t written = 0;
    if (several && format == OutputFormat::Csv) WriteOut(IntervalCsvHeader(true));
    if (several && format == OutputFormat::Json) WriteOut("[\n");
    const auto deliver = [&](std::size_t i, FileOutcome& outcome) {
        progress.Clear();
        if (!TallyFailure(state.files[i], outcome, exitCode)) {
            if (written > 0 && format == OutputFormat::Json) WriteOut(",\n");
            if (written > 0 && format == OutputFormat::Table) WriteOut("\n");
            WriteOut(outcome.output);
            ++written;
        }
        progress.Restore();
    };
    RunInParallel(state.files, work, deliver,
                  [&](std::size_t done, std::size_t total) { progress.Show(done, total); });
    if (several && format == OutputFormat::Json) WriteOut("]\n");
    return exitCode;
}

int RunIntoDirectory(const ClassifyState& state, ProgressLine& progress)
{
    const std::vector<fs::path> targets = ResultPaths(state);
    std::error_code ec;
    fs::create_directories(state.outDir, ec);
    if (ec) {
        WriteErr("pemlo-cli: could not create " + state.outDir + ": " + ec.message() + "\n");
        return ExitWriteFailed;
    }

    const auto work = [&](std::size_t i, const std::string& file) {
        FileOutcome outcome = RunFile(state.options, file, true, [&](const Declarations& d, const RunFacts& facts) {
            return FormatIntervals(d, facts, state.options.format);
        });
        return WriteResultFile(std::move(outcome), file, targets[i]);
    };

    int exitCode = ExitOk;
    std::size_t written = 0;
    const auto deliver = [&](std::size_t i, FileOutcome& outcome) {
        progress.Clear();
        if (!TallyFailure(state.files[i], outcome, exitCode)) {
            WriteOut(outcome.output);
            ++written;
        }
        progress.Restore();
    };
    RunInParallel(state.files, work, deliver,
                  [&](std::size_t done, std::size_t total) { progress.Show(done, total); });
    progress.Clear();
    const std::size_t failed = state.files.size() - written;
    WriteOut(std::to_string(written) + " of " + std::to_string(state.files.size()) + " files written to " +
             state.outDir + (failed > 0 ? ", " + std::to_string(failed) + " failed\n" : "\n"));
    return exitCode;
}

}  // namespace

void AddClassifyCommand(CLI::App& app)
{
    auto state = std::make_shared<ClassifyState>();
    CLI::App* command = app.add_subcommand(
        "classify", "Classify every depth interval of one or more soundings: depth, qc, fs, ratio, U, V "
                    "and percent sand, silt and clay");
    command->add_option("FILE", state->files, "Cone data files (depth, qc, fs per line)")->required();
    AddRoadOptions(*command, state->options);
    AddFormatOption(*command, state->options);
    command->add_option("--out-dir", state->outDir,
                        "Write one result file per input into this directory and print a summary")
        ->type_name("DIR");
    command->callback([state] {
        ProgressLine progress(state->files.size() > 1);
        const int exitCode =
            state->outDir.empty() ? RunOnStandardOutput(*state, progress) : RunIntoDirectory(*state, progress);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
