#include "cli/BatchOutput.h"

#include "cli/OutputFiles.h"
#include "cli/ProgressLine.h"
#include "cli/StandardStreams.h"

namespace pemlo::cli {

namespace {

std::vector<std::string> NamesOf(const std::vector<Input>& inputs)
{
    std::vector<std::string> names;
    for (const Input& input : inputs) names.push_back(input.name);
    return names;
}

int RunOnStandardOutput(const BatchJob& job, ProgressLine& progress)
{
    const bool several = job.inputs.size() > 1;
    const OutputFormat format = job.format;
    const CsvLayout layout = several ? CsvLayout::ManyFiles : CsvLayout::OneFile;
    const auto work = [&](std::size_t i, const std::string&) { return job.run(job.inputs[i], layout, true); };

    int exitCode = ExitOk;
    std::size_t written = 0;
    if (several && format == OutputFormat::Csv) WriteOut(job.manyFilesCsvHeader);
    if (several && format == OutputFormat::Json) WriteOut("[\n");
    const auto deliver = [&](std::size_t i, FileOutcome& outcome) {
        progress.Clear();
        if (!TallyFailure(job.inputs[i].name, outcome, exitCode)) {
            if (written > 0 && format == OutputFormat::Json) WriteOut(",\n");
            if (written > 0 && format == OutputFormat::Table) WriteOut("\n");
            if (outcome.write) outcome.write(Out());
            ++written;
        }
        progress.Restore();
    };
    RunInParallel(NamesOf(job.inputs), work, deliver,
                  [&](std::size_t done, std::size_t total) { progress.Show(done, total); });
    if (several && format == OutputFormat::Json) WriteOut("]\n");
    return exitCode;
}

int RunIntoDirectory(const BatchJob& job, ProgressLine& progress)
{
    const auto targets = ResultPaths(job.inputs, job.outDir, FileExtension(job.format));
    if (!CreateOutputDirectory(job.outDir)) return ExitWriteFailed;
    const auto work = [&](std::size_t i, const std::string&) {
        return WriteResultFile(job.run(job.inputs[i], CsvLayout::OneFile, false), job.inputs[i], targets[i],
                               job.rowsName);
    };
    return RunIntoFiles(NamesOf(job.inputs), work, job.outDir, progress);
}

}  // namespace

int DeliverResults(const BatchJob& job)
{
    ProgressLine progress(job.inputs.size() > 1);
    return job.outDir.empty() ? RunOnStandardOutput(job, progress) : RunIntoDirectory(job, progress);
}

}  // namespace pemlo::cli
