// A one-line progress count on standard error while several files are worked, shown
// only when standard error is a terminal, so that logs and pipes stay clean.
#pragma once

#include <cstddef>

namespace pemlo::cli {

class ProgressLine {
public:
    // Shows nothing unless enabled and standard error is a terminal.
    explicit ProgressLine(bool enabled);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Show(std::size_t done, std::size_t total);
    // Removes the line, so that other output starts on a clean line; Restore brings
    // the last count back.
    void Clear();
    void Restore();

private:
    bool active_ = false;
    bool shown_ = false;
    std::size_t done_ = 0;
    std::size_t total_ = 0;
};

}  // namespace pemlo::cli
