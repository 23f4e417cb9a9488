#include "cli/StandardStreams.h"

#include <cstdio>

namespace pemlo::cli {

void WriteOut(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

void WriteErr(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

void ReportFailure(const std::string& file, const FileOutcome& outcome)
{
    WriteErr("pemlo-cli: " + file + ": " + outcome.error + "\n");
}

}  // namespace pemlo::cli
