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
    for (char c : word) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    quoted += '\'';
    return quoted;
}

std::string ReadAll(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

ScratchDir::ScratchDir()
{
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = "pemlo-cli-";
    name += std::to_string(getpid());
    if (test) {
        name += '-';
        name += test->test_suite_name();
        name += '.';
        name += test->name();
    }
    for (char& c : name)
        if (c == '/') c = '_';
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

ScratchDir::~ScratchDir()
{
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

CliRun RunCli(const std::vector<std::string>& args, const ScratchDir& scratch)
{
    // A time limit turns a hang into a failed test instead of a stuck suite.
    const auto out = scratch.Path() / ".stdout";
    const auto err = scratch.Path() / ".stderr";
    std::vector<std::string> words{"cd", ShellQuoted(scratch.Path().string()), "&&", "timeout", "60",
                                   ShellQuoted(PEMLO_CLI_PATH)};
    for (const std::string& arg : args) words.push_back(ShellQuoted(arg));
    words.push_back(">");
    words.push_back(ShellQuoted(out.string()));
    words.push_back("2>");
    words.push_back(ShellQuoted(err.string()));
    std::string command;
    for (const std::string& word : words) {
        command += word;
        command += ' ';
    }
    command += "</dev/null";
    const int status = std::system(command.c_str());
    CliRun run;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = ReadAll(out);
    run.err = ReadAll(err);
    return run;
}

void WriteDataFile(const std::string& path, int titleLines, const std::vector<std::string>& dataLines)
{
    std::ofstream file(path, std::ios::binary);
    for (int i = 1; i <= titleLines; ++i) file << "title line " << i << "\r\n";
    for (const std::string& line : dataLines) file << line << "\r\n";
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> Fields(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, ',');) fields.push_back(field);
    return fields;
}

}  // namespace pemlo::cli::test
