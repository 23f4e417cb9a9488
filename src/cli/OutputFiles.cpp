#include "cli/OutputFiles.h"

#include <CLI/CLI.hpp>

#include <map>

#include "cli/OutputPath.h"
#include "cli/StandardStreams.h"

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

std::vector<fs::path> ResultPaths(const std::vector<Input>& inputs, const std::string& outDir,
                                  const std::string& extension)
{
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
                                                        target.string());
        taken.emplace(key(target), input.name);
        targets.push_back(target);
    }
    for (const Input& input : inputs)
        if (const auto it = taken.find(key(input.path)); it != taken.end())
            throw CLI::ValidationError("--out-dir", "the result of " + it->second + " would overwrite " + input.path);
    const std::vector<std::string> paths = PathsOf(inputs);
    for (const fs::path& target : targets) CheckOutputPath("--out-dir", target, paths);
    return targets;
}

bool CreateOutputDirectory(const std::string& outDir)
{
    std::error_code ec;
    fs::create_directories(outDir, ec);
    if (!ec) return true;
    WriteErr("pemlo-cli: could not create " + outDir + ": " + ec.message() + "\n");
    return false;
}

FileOutcome WriteResultFile(FileOutcome outcome, const Input& input, const fs::path& target, const std::string& what)
{
    if (outcome.exitCode != ExitOk) return outcome;
    const std::string failure = WriteOutputFile(target, [&](std::ostream& out) {
        if (outcome.write) outcome.write(out);
    });
    if (!failure.empty()) return Failed(ExitWriteFailed, failure, outcome.notes);
    std::string summary =
        input.name + " -> " + target.string() + " (" + std::to_string(outcome.rows) + " " + what + ")\n";
    return {ExitOk, TextOutput(summary + RecordLines(input)), {}, outcome.rows, outcome.notes};
}

std::string FilesWrittenLine(std::size_t written, std::size_t inputs, const std::string& outDir)
{
    const std::size_t failed = inputs - written;
    return std::to_string(written) + " of " + std::to_string(inputs) + " files written to " + outDir +
           (failed > 0 ? ", " + std::to_string(failed) + " failed\n" : "\n");
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
