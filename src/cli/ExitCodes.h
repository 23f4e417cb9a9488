// The command line's exit status: scripts tell a wrong call, an unreadable file and a
// computation that could not finish apart by it.
#pragma once

namespace pemlo::cli {

enum ExitCode : int {
    ExitOk = 0,
    ExitWriteFailed = 1,    // a result file could not be written, or an unexpected failure
    ExitUsage = 2,          // wrong options or arguments
    ExitReadFailed = 3,     // "Could not read data from file"
    ExitRunTimeFailed = 4,  // a run-time error of the computation
};

}  // namespace pemlo::cli
