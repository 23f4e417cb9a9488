// Writing to standard output and standard error, and the one form of a failure
// message: "pemlo-cli: FILE: what went wrong".
#pragma once

#include <string>

#include "cli/BatchRunner.h"

namespace pemlo::cli {

void WriteOut(const std::string& text);
void WriteErr(const std::string& text);

// The failure of one file's outcome, on standard error.
void ReportFailure(const std::string& file, const FileOutcome& outcome);

}  // namespace pemlo::cli
