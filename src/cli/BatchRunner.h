// Works through several soundings at once, one file per core, and hands the outcomes
// back in the order of the files, each as soon as it and all before it are done. Each
// file is worked in a record and on file channels of its own: nothing is shared.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "cli/ExitCodes.h"

namespace pemlo::cli {

struct FileOutcome {
    int exitCode = ExitOk;
    std::string output;  // what goes to standard output (or the summary line)
    std::string error;   // what goes to standard error when exitCode is not ExitOk
    int rows = 0;        // intervals or readings in the output
};

using FileWork = std::function<FileOutcome(std::size_t index, const std::string& path)>;
// Called on the calling thread, in input order.
using DeliverOutcome = std::function<void(std::size_t index, FileOutcome& outcome)>;
// Called on the calling thread whenever the number of finished files grows.
using ShowProgress = std::function<void(std::size_t done, std::size_t total)>;

// Runs work for every path on up to `threads` threads (0: one per core). An exception
// escaping work becomes a failed outcome of its file; the other files go on.
void RunInParallel(const std::vector<std::string>& paths, const FileWork& work,
                   const DeliverOutcome& deliver, const ShowProgress& progress, unsigned threads = 0);

}  // namespace pemlo::cli
