#include "cli/ProgressLine.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>

namespace pemlo::cli {

ProgressLine::ProgressLine(bool enabled) : active_(enabled && isatty(STDERR_FILENO) == 1) {}

ProgressLine::~ProgressLine() { Clear(); }

void ProgressLine::Show(std::size_t done, std::size_t total)
{
    done_ = done;
    total_ = total;
    if (!active_) return;
    const std::string line = "\r\033[Kpemlo-cli: " + std::to_string(done) + " of " + std::to_string(total) +
                             " files done";
    std::cout.flush();
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    shown_ = true;
}

void ProgressLine::Clear()
{
    if (!shown_) return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    shown_ = false;
}

void ProgressLine::Restore()
{
    if (total_ > 0 && done_ < total_) Show(done_, total_);
}

}  // namespace pemlo::cli
