#include "cli/BatchRunner.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <ostream>
#include <thread>

namespace pemlo::cli {

namespace {

FileOutcome RunGuarded(const FileWork& work, std::size_t index, const std::string& path)
{
    try {
        return work(index, path);
    } catch (const std::exception& e) {
        return Failed(ExitWriteFailed, std::string("unexpected failure: ") + e.what());
    } catch (...) {
        return Failed(ExitWriteFailed, "unexpected failure");
    }
}

}  // namespace

WriteOutput TextOutput(std::string text)
{
    return [text = std::move(text)](std::ostream& out) { out << text; };
}

void RunInParallel(const std::vector<std::string>& paths, const FileWork& work,
                   const DeliverOutcome& deliver, const ShowProgress& progress, unsigned threads)
{
    const std::size_t total = paths.size();
    if (total == 0) return;
    if (total == 1) {
        FileOutcome outcome = RunGuarded(work, 0, paths[0]);
        if (progress) progress(1, 1);
        deliver(0, outcome);
        return;
    }
    if (threads == 0) threads = std::max(1u, std::thread::hardware_concurrency());
    threads = static_cast<unsigned>(std::min<std::size_t>(threads, total));
    const std::size_t ahead = 4 * static_cast<std::size_t>(threads);  // files worked beyond the one delivered

    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::optional<FileOutcome>> finished(total);
    std::size_t doneCount = 0;
    std::size_t delivered = 0;   // guarded by mutex: the workers wait on it
    std::condition_variable advanced;
    std::atomic<std::size_t> nextFile{0};

    std::vector<std::jthread> workers;
    for (unsigned t = 0; t < threads; ++t) {
        workers.emplace_back([&] {
            for (std::size_t i = nextFile++; i < total; i = nextFile++) {
                {
                    std::unique_lock lock(mutex);
                    advanced.wait(lock, [&] { return i < delivered + ahead; });
                }
                FileOutcome outcome = RunGuarded(work, i, paths[i]);
                {
                    const std::lock_guard lock(mutex);
                    finished[i] = std::move(outcome);
                    ++doneCount;
                }
                changed.notify_one();
            }
        });
    }

    // Deliver outside the lock, so that slow output never holds the workers up.
    std::size_t handedOut = 0;
    std::size_t reported = 0;
    while (handedOut < total) {
        std::vector<FileOutcome> ready;
        std::size_t done = 0;
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return doneCount != reported || finished[handedOut].has_value(); });
            done = doneCount;
            for (std::size_t i = handedOut; i < total && finished[i]; ++i) {
                ready.push_back(std::move(*finished[i]));
                finished[i].reset();
            }
        }
        if (done != reported) {
            reported = done;
            if (progress) progress(done, total);
        }
        for (FileOutcome& outcome : ready) {
            deliver(handedOut++, outcome);
            outcome = FileOutcome{};  // its results go as soon as they are written
            {
                const std::lock_guard lock(mutex);
                delivered = handedOut;
            }
            advanced.notify_all();
        }
    }
}

}  // namespace pemlo::cli
