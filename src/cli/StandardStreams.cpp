#include "cli/StandardStreams.h"

#include <cstdio>
#include <iostream>

namespace pemlo::cli {

std::ostream& Out() { return std::cout; }

void WriteOut(const std::string& text) { std::cout << text; }

void WriteErr(const std::string& text)
{
    std::cout.flush();
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

void ReportFailure(const std::string& file, const FileOutcome& outcome)
{
    WriteErr("pemlo-cli: " + file + ": " + outcome.error + "\n");
}

}  // namespace pemlo::cli
