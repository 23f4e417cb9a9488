// Files that must not outlive the program: a hidden file being written beside its
// target is removed should the program be stopped by SIGINT, SIGTERM or SIGHUP (a
// Ctrl-C, a timeout, a closed terminal) before it is renamed into place.
#pragma once

#include <atomic>
#include <memory>
#include <string>

namespace pemlo::cli {

// Registers a path for the time it lives. The signal's handler removes every path
// registered, then the signal ends the program as it would have without it. A signal
// the program was started to ignore stays ignored.
class RemovedOnSignal {
public:
    explicit RemovedOnSignal(const std::string& path);
    ~RemovedOnSignal();
    RemovedOnSignal(const RemovedOnSignal&) = delete;
    RemovedOnSignal& operator=(const RemovedOnSignal&) = delete;

private:
    std::unique_ptr<char[]> path_;  // the handler reads it: a C string that does not move
    std::atomic<const char*>* slot_ = nullptr;
};

}  // namespace pemlo::cli
