// One result file per input in an output folder, as classify and convert write them,
// and the summary they print: a line per input (with its import record indented) and
// the count of files written.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/BatchRunner.h"
#include "cli/Inputs.h"
#include "cli/ProgressLine.h"

namespace pemlo::cli {

// Reports an input that failed (its notes first) and keeps the exit code of the first
// failure in input order; false when the input went through.
bool TallyFailure(const std::string& name, const FileOutcome& outcome, int& exitCode);

// The result file of every input: folder / ResultStem + "." + extension. Two inputs
// that would write the same file, a folder that is something else (a regular file, say),
// or a result that the output path rule (OutputPath.h) forbids, are a wrong call
// (CLI::ValidationError).
std::vector<std::filesystem::path> ResultPaths(const std::vector<Input>& inputs, const std::string& outDir,
                                               const std::string& extension);

// Creates the folder; false (and a message) when it cannot.
bool CreateOutputDirectory(const std::string& outDir);

// A summary line "NAME -> TARGET (what)": the target, named after the input, escaped
// as the input's name is (formats::TerminalField).
std::string SummaryLine(const std::string& name, const std::filesystem::path& target, const std::string& what);

// Writes a done outcome's output to the target (beside it, then renamed into place);
// the outcome then holds the summary lines: "NAME -> TARGET (N what)" and the input's import record.
FileOutcome WriteResultFile(FileOutcome outcome, const Input& input, const std::filesystem::path& target,
                            const std::string& what);

// The count that ends a run into a folder: "3 of 5 files written to DIR, 2 failed".
std::string FilesWrittenLine(std::size_t written, std::size_t inputs, const std::string& outDir);

// Runs work over the inputs on all cores, prints each summary in order, then the count.
int RunIntoFiles(const std::vector<std::string>& names, const FileWork& work, const std::string& outDir,
                 ProgressLine& progress);

}  // namespace pemlo::cli
