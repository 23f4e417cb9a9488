#include "cli/OutputFiles.h"

#include <CLI/CLI.hpp>

#include <map>

#include "cli/OutputPath.h"
#include "cli/StandardStreams.h"
#include "formats/SafeText.h"

namespace pemlo::cli {

namespace fs = std::filesystem;

bool TallyFailure(const std::string& name, const FileOutcome& outcome, int& exitCode)
{
    if (!outcome.notes.empty()) WriteErr(outcome.notes);
    if (outcome.exitCode == ExitOk) return false;
    ReportFailure(name, outcome);
    if (exitCode == ExitOk) exitCode = outcome.exitCode;
    return true;
}

namespace {

// The folder, or the nearest of its parents that exists, must be a folder: creating it
// through a regular file could only fail.
void CheckOutputDirectory(const std::string& outDir)
{
    std::error_code ec;
    for (fs::path p = outDir; !p.empty(); p = p.parent_path()) {
        const fs::file_status status = fs::status(p, ec);
        if (fs::is_directory(status)) return;
        if (fs::exists(status))
            throw CLI::ValidationError("--out-dir", formats::TerminalField(p.string()) + " is not a directory");
        if (p == p.parent_path()) return;
    }
}

}  // namespace

std::vector<fs::path> ResultPaths(const std::vector<Input>& inputs, const std::string& outDir,
                                  const std::string& extension)
{
    CheckOutputDirectory(outDir);
    std::vector<fs::path> targets;
    std::map<fs::path, std::string> taken;
    const auto key = [](const fs::path& p) {
        std::error_code ec;
        fs::path k = fs::weakly_canonical(p, ec);
        return ec ? fs::absolute(p, ec).lexically_normal() : k;
    };
    for (const Input& input : inputs) {
        fs::path target = fs::path(outDir) / ResultStem(input);
        target += "." + extension;
        if (const auto it = taken.find(key(target)); it != taken.end())
            throw CLI::ValidationError("--out-dir", input.name + " and " + it->second + " would both be written to " +
                                                        formats::TerminalField(target.string()));
        taken.emplace(key(target), input.name);
        targets.push_back(target);
    }
    for (const Input& input : inputs)
        if (const auto it = taken.find(key(input.path)); it != taken.end())
            throw CLI::ValidationError("--out-dir", "the result of " + it->second + " would overwrite " +
                                                        formats::TerminalField(input.path));
    const std::vector<std::string> paths = PathsOf(inputs);
    for (const fs::path& target : targets) CheckOutputPath("--out-dir", target, paths);
    return targets;
}

bool CreateOutputDirectory(const std::string& outDir)
{
    std::error_code ec;
    fs::create_directories(outDir, ec);
    if (!ec) return true;
    WriteErr("pemlo-cli: could not create " + formats::TerminalField(outDir) + ": " + ec.message() + "\n");
    return false;
}

FileOutcome WriteResultFile(FileOutcome outcome, const Input& input, const fs::path& target, const std::string& what)
{
    if (outcome.exitCode != ExitOk) return outcome;
    const std::string failure = WriteOutputFile(target, [&](std::ostream& out) {
        if (outcome.write) outcome.write(out);
    });
    if (!failure.empty()) return Failed(ExitWriteFailed, failure, outcome.notes);
    const std::string summary = SummaryLine(input.name, target, std::to_string(outcome.rows) + " " + what);
    return {ExitOk, TextOutput(summary + RecordLines(input)), {}, outcome.rows, outcome.notes};
}

std::string SummaryLine(const std::string& name, const fs::path& target, const std::string& what)
{
    return name + " -> " + formats::TerminalField(target.string()) + " (" + what + ")\n";
}

std::string FilesWrittenLine(std::size_t written, std::size_t inputs, const std::string& outDir)
{
    const std::size_t failed = inputs - written;
    return std::to_string(written) + " of " + std::to_string(inputs) + " files written to " +
           formats::TerminalField(outDir) + (failed > 0 ? ", " + std::to_string(failed) + " failed\n" : "\n");
}

int RunIntoFiles(const std::vector<std::string>& names, const FileWork& work, const std::string& outDir,
                 ProgressLine& progress)
{
    int exitCode = ExitOk;
    std::size_t written = 0;
    const auto deliver = [&](std::size_t i, FileOutcome& outcome) {
        progress.Clear();
        if (!TallyFailure(names[i], outcome, exitCode)) {
            if (outcome.write) outcome.write(Out());
            ++written;
        }
        progress.Restore();
    };
    RunInParallel(names, work, deliver, [&](std::size_t done, std::size_t total) { progress.Show(done, total); });
    progress.Clear();
    WriteOut(FilesWrittenLine(written, names.size(), outDir));
    return exitCode;
}

}  // namespace pemlo::cli
