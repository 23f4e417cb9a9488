// Works through several soundings at once, one file per core, and hands the outcomes
// back in the order of the files, each as soon as it and all before it are done. Each
// file is worked in a record and on file channels of its own: nothing is shared.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "cli/ExitCodes.h"

namespace pemlo::cli {

// What goes to standard output for one input, written when the input's turn comes:
// straight into the stream, never first into a string. It keeps alive what it needs
// (the input's record, its layers) until then.
using WriteOutput = std::function<void(std::ostream& out)>;

struct FileOutcome {
    int exitCode = ExitOk;
    WriteOutput write;   // the results, or the summary line; empty: nothing
    std::string error;   // what goes to standard error when exitCode is not ExitOk
    int rows = 0;        // intervals, readings or layers in the output
    std::string notes;   // goes to standard error first: the import record, warnings
};

// An outcome that failed with the exit code, saying why.
inline FileOutcome Failed(int exitCode, std::string error, std::string notes = {})
{
    return {exitCode, {}, std::move(error), 0, std::move(notes)};
}

// A line of text as an output (a summary).
WriteOutput TextOutput(std::string text);

using FileWork = std::function<FileOutcome(std::size_t index, const std::string& path)>;
// Called on the calling thread, in input order.
using DeliverOutcome = std::function<void(std::size_t index, FileOutcome& outcome)>;
// Called on the calling thread whenever the number of finished files grows.
using ShowProgress = std::function<void(std::size_t done, std::size_t total)>;

// Runs work for every path on up to `threads` threads (0: one per core). An exception
// escaping work becomes a failed outcome of its file; the other files go on. A single
// file is worked on the calling thread. Workers stay at most a few files ahead of the
// delivery, so that the outcomes waiting for their turn (each holding its results)
// stay few however many files there are.
void RunInParallel(const std::vector<std::string>& paths, const FileWork& work,
                   const DeliverOutcome& deliver, const ShowProgress& progress, unsigned threads = 0);

}  // namespace pemlo::cli
