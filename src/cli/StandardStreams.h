// Writing to standard output and standard error, and the one form of a failure
// message: "pemlo-cli: FILE: what went wrong". Standard output is a buffered stream
// that results are written into as they are made (main turns off its sync with C's
// stdio, which would flush it at every line).
#pragma once

#include <iosfwd>
#include <string>

#include "cli/BatchRunner.h"

namespace pemlo::cli {

std::ostream& Out();
void WriteOut(const std::string& text);

// Flushes standard output first, so that a message stands after what was written
// before it. Control characters and bytes that are no UTF-8 go out escaped.
void WriteErr(const std::string& text);

// Flushes standard output; false (and a message on standard error saying why) when
// anything written to it was lost, as on a full disk or a closed pipe.
bool FlushOut();

// The failure of one file's outcome, on standard error.
void ReportFailure(const std::string& file, const FileOutcome& outcome);

}  // namespace pemlo::cli
