// The command line on the real soundings beside the repository.
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

}  // namespace
}  // namespace pemlo::cli::test
