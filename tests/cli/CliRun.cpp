#include "CliRun.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace pemlo::cli::test {

namespace {

std::string ShellQuoted(const std::string& word)
{
    std::string quoted = "'";
    for (char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

std::vector<std::string> Split(const std::string& text, char end)
{
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, end);) parts.push_back(part);
    return parts;
}

}  // namespace

ScratchDir::ScratchDir()
{
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = "pemlo-cli-" + std::to_string(getpid()) + '-' + test->test_suite_name() + '.' + test->name();
    for (char& c : name)
        if (c == '/') c = '_';
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

CliRun RunCli(const std::vector<std::string>& args, const ScratchDir& scratch, const std::string& stdoutPath)
{
    // A time limit turns a hang into a failed test instead of a stuck suite.
    const auto out = stdoutPath.empty() ? scratch.Path() / ".stdout" : std::filesystem::path(stdoutPath);
    const auto err = scratch.Path() / ".stderr";
    std::string command = "cd " + ShellQuoted(scratch.Path().string()) + " && env -u XDG_RUNTIME_DIR timeout 60 " +
                          ShellQuoted(PEMLO_CLI_PATH);
    for (const std::string& arg : args) command += ' ' + ShellQuoted(arg);
    command += " >" + ShellQuoted(out.string()) + " 2>" + ShellQuoted(err.string()) + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, stdoutPath.empty() ? ReadAll(out) : "", ReadAll(err)};
}

void WriteDataFile(const std::string& path, int titleLines, const std::vector<std::string>& dataLines)
{
    std::ofstream file(path, std::ios::binary);
    for (int i = 1; i <= titleLines; ++i) file << "title line " << i << "\r\n";
    for (const std::string& line : dataLines) file << line << "\r\n";
}

std::string ReadAll(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> Lines(const std::string& text) { return Split(text, '\n'); }

}  // namespace pemlo::cli::test
