// The command line on the real soundings beside the repository.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "CliRun.h"

namespace pemlo::cli::test {
namespace {

namespace fs = std::filesystem;

const std::string SoundingsDir = PEMLO_SOUNDINGS_DIR;

// The CSV of one real sounding, SI data shown in English units (so that both the
// routing conversion and the classification's own conversions are on the way), is
// compared with the file the program wrote when its results were last checked. After a
// deliberate change of the results, regenerate it from the repository's top folder with
//   build/src/cli/pemlo-cli classify ../shared/soundings/b155283.txt --data-units si
//     --graph-units english > tests/data/cli_b155283_si_english.csv
// (one command line)
// and say in the commit why the numbers changed.
TEST(PemloCliSoundings, CsvMatchesTheCheckedResults)
{
    if (SoundingsDir.empty()) GTEST_SKIP() << "the soundings folder was not found";
    ScratchDir scratch;
    const CliRun run = RunCli({"classify", SoundingsDir + "/b155283.txt", "--data-units", "si", "--graph-units", "english"},
                              scratch);
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::string golden = ReadAll(fs::path(PEMLO_TEST_DATA_DIR) / "cli_b155283_si_english.csv");
    ASSERT_FALSE(golden.empty());
    EXPECT_EQ(run.out, golden);
}

// Every real sounding goes the whole road, and every interval's probabilities add up.
TEST(PemloCliSoundings, EverySoundingClassifiesAndItsProbabilitiesSumTo100)
{
    if (SoundingsDir.empty()) GTEST_SKIP() << "the soundings folder was not found";
    ScratchDir scratch;
    int files = 0;
    for (const auto& entry : fs::directory_iterator(SoundingsDir)) {
        if (entry.path().extension() != ".txt") continue;
        ++files;
        const std::string name = entry.path().filename().string();
        const CliRun run = RunCli({"classify", entry.path().string(), "--data-units", "si"}, scratch);
        ASSERT_EQ(run.exitCode, 0) << name << ": " << run.err;
        const auto lines = Lines(run.out);
        ASSERT_GT(lines.size(), 2u) << name;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const auto f = Fields(lines[i]);
            ASSERT_EQ(f.size(), 10u) << name << " line " << i;
            const float sand = std::strtof(f[7].c_str(), nullptr);
            const float silt = std::strtof(f[8].c_str(), nullptr);
            const float clay = std::strtof(f[9].c_str(), nullptr);
            // three single-precision quotients, each within half a unit in the last place
            EXPECT_NEAR(double(sand) + silt + clay, 100.0, 3 * 100.0 * 6e-8) << name << " interval " << f[0];
        }
    }
    EXPECT_GT(files, 0);
}

}  // namespace
}  // namespace pemlo::cli::test
