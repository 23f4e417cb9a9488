// Runs the pemlo-cli executable the way a user does and keeps what it said, and writes
// small soundings for it into a scratch directory of the test.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace pemlo::cli::test {

struct CliRun {
    int exitCode = -1;  // 124: killed after the time limit (a hang)
    std::string out;
    std::string err;
};

// A scratch directory of its own for each test, removed afterwards.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir() { std::error_code ec; std::filesystem::remove_all(path_, ec); }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

// Runs pemlo-cli in the scratch directory with the arguments (each passed as one word)
// under a time limit, without XDG_RUNTIME_DIR (which Qt would miss aloud). Standard
// output goes to stdoutPath where one is given (out is then empty).
CliRun RunCli(const std::vector<std::string>& args, const ScratchDir& scratch, const std::string& stdoutPath = {});

// A data file: titleLines lines of text, then the data lines as given, CR LF ended.
void WriteDataFile(const std::string& path, int titleLines, const std::vector<std::string>& dataLines);

// The text of a file, and text split into lines (without their ends).
std::string ReadAll(const std::filesystem::path& path);
std::vector<std::string> Lines(const std::string& text);

}  // namespace pemlo::cli::test
