#include "cli/StandardStreams.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "formats/SafeText.h"

namespace pemlo::cli {

std::ostream& Out() { return std::cout; }

void WriteOut(const std::string& text) { std::cout << text; }

void WriteErr(const std::string& text)
{
    std::cout.flush();
    // Messages quote names and fields of the files: none may drive the terminal.
    const std::string safe = formats::TerminalText(text);
    std::fwrite(safe.data(), 1, safe.size(), stderr);
    std::fflush(stderr);
}

bool FlushOut()
{
    std::cout.flush();
    if (std::cout) return true;
    // The cause went with the write that failed, perhaps long before: the bytes still
    // waiting are tried once more to learn it (ENOSPC, EIO, ...).
    std::cout.clear();
    errno = 0;
    std::cout.flush();
    const int error = errno;
    std::cout.setstate(std::ios::badbit);
    const std::string why = error != 0 ? std::string(": ") + std::strerror(error) : std::string();
    WriteErr("pemlo-cli: could not write the results to standard output" + why + "\n");
    return false;
}

void ReportFailure(const std::string& file, const FileOutcome& outcome)
{
    WriteErr("pemlo-cli: " + file + ": " + outcome.error + "\n");
}

}  // namespace pemlo::cli
