// The command line as a user meets it: the executable run on files, its output and
// its exit status.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CliRun.h"

namespace pemlo::cli::test {
namespace {

namespace fs = std::filesystem;

// The published ten-reading English sounding: every 0.2 ft from 0.2 to 2.0 ft.
std::vector<std::string> TenReadings()
{
    const char* qc[] = {"50", "60", "55", "40", "30", "20", "15", "12", "10", "10"};
    const char* fs[] = {"0.3", "0.4", "0.5", "0.6", "0.6", "0.5", "0.4", "0.4", "0.35", "0.3"};
    const char* depth[] = {"0.2", "0.4", "0.6", "0.8", "1.0", "1.2", "1.4", "1.6", "1.8", "2.0"};
    std::vector<std::string> lines;
    for (int i = 0; i < 10; ++i) lines.push_back(std::string(depth[i]) + "," + qc[i] + "," + fs[i]);
    return lines;
}

// A value agrees with a printed figure when it rounds to it at the figure's digits.
void ExpectPrinted(const std::string& actual, const std::string& printed, const std::string& what)
{
    const auto point = printed.find('.');
    const int decimals = point == std::string::npos ? 0 : static_cast<int>(printed.size() - point - 1);
    const double halfUnit = 0.5 * std::pow(10.0, -decimals) * (1 + 1e-9);
    EXPECT_NEAR(std::strtod(actual.c_str(), nullptr), std::strtod(printed.c_str(), nullptr), halfUnit)
        << what << ": printed " << printed << ", got " << actual;
}

TEST(PemloCli, ClassifiesThePublishedEnglishSounding)
{
    ScratchDir scratch;
    WriteDataFile(scratch.File("ten.txt"), 10, TenReadings());
    const CliRun run = RunCli({"classify", "ten.txt"}, scratch);
    ASSERT_EQ(run.exitCode, 0) << run.err;

    // interval, depth, qc, fs, ratio, U, V, sand, silt, clay as the published table prints them
    const std::vector<std::vector<std::string>> expected{
        {"1", "0.164", "57.5", "0.45", "0.7826", "2.5383", "2.1381", "78.61", "21.26", "0.13"},
        {"2", "0.492", "57.5", "0.45", "0.7826", "2.5383", "2.1381", "78.61", "21.26", "0.13"},
        {"3", "0.820", "40", "0.6", "1.5", "1.9328", "2.2710", "49.33", "46.96", "3.71"},
        {"4", "1.148", "25", "0.55", "2.2", "1.3219", "2.2913", "25.48", "59.78", "14.74"},
        {"5", "1.476", "13.5", "0.4", "2.963", "0.6709", "2.2289", "8.86", "52.56", "38.58"},
        {"6", "1.804", "10", "0.35", "3.5", "0.3125", "2.2485", "3.25", "37.15", "59.60"},
    };
    const auto lines = Lines(run.out);
    ASSERT_EQ(lines.size(), expected.size() + 1) << run.out;
    EXPECT_EQ(lines[0], "interval,depth,qc,fs,ratio,u,v,sand,silt,clay");
    const auto names = Fields(lines[0]);
    for (std::size_t row = 0; row < expected.size(); ++row) {
        const auto fields = Fields(lines[row + 1]);
        ASSERT_EQ(fields.size(), expected[row].size()) << lines[row + 1];
        EXPECT_EQ(fields[0], expected[row][0]);
        for (std::size_t c = 1; c < fields.size(); ++c)
            ExpectPrinted(fields[c], expected[row][c], "interval " + expected[row][0] + " " + names[c]);
    }
}

// Each case says what fault it would catch.
struct FailureCase {
    const char* name;
    std::vector<std::string> dataLines;  // written after 10 title lines; empty: no file
    int titleLinesInFile;
    std::vector<std::string> extraArgs;
    int exitCode;
    const char* message;  // must appear on standard error
};

std::vector<std::string> Numbered(int count, const std::string& rest)
{
    std::vector<std::string> lines;
    for (int i = 1; i <= count; ++i) lines.push_back(std::to_string(i * 0.01) + rest);
    return lines;
}

class PemloCliFailure : public ::testing::TestWithParam<FailureCase> {};

TEST_P(PemloCliFailure, SaysWhatWentWrongWithTheRightStatus)
{
    const FailureCase& c = GetParam();
    ScratchDir scratch;
    if (!c.dataLines.empty() || c.titleLinesInFile > 0) WriteDataFile(scratch.File("f.txt"), c.titleLinesInFile, c.dataLines);
    std::vector<std::string> args{"classify", "f.txt"};
    args.insert(args.end(), c.extraArgs.begin(), c.extraArgs.end());
    const CliRun run = RunCli(args, scratch);
    EXPECT_EQ(run.exitCode, c.exitCode) << run.err;
    EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Files, PemloCliFailure,
    ::testing::Values(
        // a missing file must not look like an empty result
        FailureCase{"MissingFile", {}, 0, {}, 3, "Could not read data from file: the file does not exist"},
        // a mistyped option must stop before any file is read
        FailureCase{"UnknownOption", {"1,2,3"}, 10, {"--units", "si"}, 2, "--units"},
        FailureCase{"TitleLinesOutOfRange", {"1,2,3"}, 10, {"--title-lines", "16"}, 2, "--title-lines"},
        // the desktop program waits forever on two columns; the command line must not
        FailureCase{"TwoColumns", {"1.0,2.0", "1.2,3.0"}, 10, {}, 3, "(line 11) has 2 columns"},
        FailureCase{"TooManyReadings", Numbered(4001, ",1.0,0.01"), 10, {}, 3, "more than 4000 readings"},
        FailureCase{"EndsInTitleLines", {}, 7, {}, 3, "title lines"},
        FailureCase{"NotANumber", {"0.1,1,0.1", "0.2,x,0.1"}, 10, {}, 3, "line 12"},
        // one interval only: averaging reads the second, which does not exist
        FailureCase{"ShallowSounding", {"0.1,1,0.1", "0.2,1,0.1", "0.5,1,0.1"}, 10, {}, 4,
                    "Run-time error '9': Subscript out of range in the averaging step"},
        // less than one interval deep: the grid itself cannot be sized
        FailureCase{"ShallowerThanOneInterval", {"0.1,1,0.1", "0.2,1,0.1"}, 10, {}, 4,
                    "Run-time error '9': Subscript out of range in the grid step"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PemloCli, GoesOnAfterAFailedFileAndSaysSoInItsStatus)
{
    ScratchDir scratch;
    WriteDataFile(scratch.File("a.txt"), 10, TenReadings());
    WriteDataFile(scratch.File("c.txt"), 10, TenReadings());
    const CliRun run = RunCli({"classify", "a.txt", "b.txt", "c.txt"}, scratch);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_NE(run.err.find("b.txt: Could not read data from file"), std::string::npos) << run.err;
    const auto lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 13u) << run.out;  // one header, six intervals of each good file
    EXPECT_EQ(lines[0], "file,interval,depth,qc,fs,ratio,u,v,sand,silt,clay");
    EXPECT_EQ(lines[1].rfind("a.txt,1,", 0), 0u);
    EXPECT_EQ(lines[12].rfind("c.txt,6,", 0), 0u);
}

TEST(PemloCli, WritesOneResultFilePerInputIntoTheOutputDirectory)
{
    ScratchDir scratch;
    fs::create_directories(scratch.Path() / "x");
    for (const char* name : {"a.txt", "b.txt", "x/a.txt"}) WriteDataFile(scratch.File(name), 10, TenReadings());
    const CliRun single = RunCli({"classify", "a.txt"}, scratch);
    const CliRun run = RunCli({"classify", "a.txt", "b.txt", "--out-dir", "results"}, scratch);
    ASSERT_EQ(run.exitCode, 0) << run.err;
    for (const char* name : {"a.csv", "b.csv"})
        EXPECT_EQ(ReadAll(scratch.Path() / "results" / name), single.out) << name;  // the very output of a single run
    EXPECT_NE(run.out.find("2 of 2 files written to results"), std::string::npos) << run.out;

    // Two inputs that would write the same result file are refused before anything is written.
    const CliRun clash = RunCli({"classify", "a.txt", "x/a.txt", "--out-dir", "clash"}, scratch);
    EXPECT_EQ(clash.exitCode, 2);
    EXPECT_FALSE(fs::exists(scratch.Path() / "clash" / "a.csv"));
}

}  // namespace
}  // namespace pemlo::cli::test
