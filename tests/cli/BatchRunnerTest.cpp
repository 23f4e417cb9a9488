// Several files at once: results come back in the order of the files, whatever order
// the work finishes in, and one file's failure stays its own.
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "cli/BatchRunner.h"

namespace pemlo::cli {
namespace {

TEST(RunInParallel, DeliversInInputOrderWhenLaterFilesFinishFirst)
{
    const std::vector<std::string> paths{"slow", "b", "c", "d", "e", "f"};
    const auto work = [](std::size_t index, const std::string& path) {
        if (index == 0) std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return FileOutcome{ExitOk, path, {}, 0};
    };
    std::vector<std::string> delivered;
    std::size_t lastDone = 0;
    RunInParallel(
        paths, work,
        [&](std::size_t index, FileOutcome& outcome) {
            EXPECT_EQ(index, delivered.size());
            delivered.push_back(outcome.output);
        },
        [&](std::size_t done, std::size_t total) {
            EXPECT_GT(done, lastDone);
            EXPECT_EQ(total, paths.size());
            lastDone = done;
        },
        4);
    EXPECT_EQ(delivered, paths);
    EXPECT_EQ(lastDone, paths.size());
}

TEST(RunInParallel, AnEscapingExceptionFailsOnlyItsOwnFile)
{
    const std::vector<std::string> paths{"a", "bad", "c"};
    std::atomic<int> ran{0};
    const auto work = [&](std::size_t, const std::string& path) {
        ++ran;
        if (path == "bad") throw std::runtime_error("disk on fire");
        return FileOutcome{ExitOk, path, {}, 0};
    };
    std::vector<FileOutcome> outcomes;
    RunInParallel(paths, work, [&](std::size_t, FileOutcome& o) { outcomes.push_back(o); }, {}, 2);
    ASSERT_EQ(outcomes.size(), 3u);
    EXPECT_EQ(ran.load(), 3);
    EXPECT_EQ(outcomes[0].exitCode, ExitOk);
    EXPECT_NE(outcomes[1].exitCode, ExitOk);
    EXPECT_NE(outcomes[1].error.find("disk on fire"), std::string::npos);
    EXPECT_EQ(outcomes[2].output, "c");
}

}  // namespace
}  // namespace pemlo::cli
