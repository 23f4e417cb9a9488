// The normalised soil behaviour type as layers and ags carry it, on the real files with
// u2: each push states the area ratio its readings used, and layers and ags agree on
// every layer. (tools/check-sbt.py reads ags --readings back against sbt.)
#include <gtest/gtest.h>

#include <map>

#include "cli/CliRun.h"
#include "profile/Ags4File.h"
#include "profile/Ags4Rules.h"

namespace pemlo::cli::test {
namespace {

// The CSV under its header, each row a map from column to text.
std::vector<std::map<std::string, std::string>> Table(const std::string& csv)
{
    std::vector<std::map<std::string, std::string>> rows;
    std::vector<std::string> header;
    for (const std::string& line : Lines(csv)) {
        std::vector<std::string> cells{""};
        for (char c : line) {
            if (c == ',') cells.emplace_back();
            else cells.back().push_back(c);
        }
        if (header.empty()) header = cells;
        else rows.emplace_back();
        for (std::size_t i = 0; i < cells.size() && !rows.empty() && i < header.size(); ++i) rows.back()[header[i]] = cells[i];
    }
    return rows;
}

TEST(Yardstick, LayersAndAgsAgreeAndEachPushStatesItsAreaRatio)
{
    if (std::string(PEMLO_FORMATS_DIR).empty()) GTEST_SKIP() << "the formats folder was not found";
    const struct { const char* file; std::map<std::string, std::string> areaRatioOfPush; } cases[] = {
        {"gef/mos_inclination.gef", {{"CPTU17.8 + 83BITE", "0.800"}}},
        {"bro-xml/CPT000000155283.xml", {{"CPT000000155283", "0.750"}}},
        {"ags/borssele_WFS1-2A.ags", {{"CPT01", "0.750"}, {"CPT14", "0.500"}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        ScratchDir scratch;
        const std::string path = std::string(PEMLO_FORMATS_DIR) + "/" + c.file;
        const auto layers = Table(RunCli({"layers", path}, scratch).out);
        ASSERT_EQ(RunCli({"ags", path, "--readings", "-o", "out.ags"}, scratch).exitCode, 0);
        std::vector<profile::AgsFinding> findings;
        const std::string text = ReadAll(scratch.Path() / "out.ags");
        EXPECT_TRUE(profile::CheckAgs4(text).empty());
        const profile::AgsFile file = profile::ReadAgs4(text, findings);
        const profile::AgsGroup* scpp = file.Find("SCPP");
        const profile::AgsGroup* scpg = file.Find("SCPG");
        ASSERT_TRUE(scpp && scpg && file.Find("SCPT"));
        for (const auto& row : scpg->rows) {
            const auto push = c.areaRatioOfPush.find(scpg->Value(row, "SCPG_TESN"));
            const std::string expected = push == c.areaRatioOfPush.end() ? "" : push->second;
            EXPECT_TRUE(expected.empty() || scpg->Value(row, "SCPG_CAR") == expected) << scpg->Value(row, "SCPG_TESN");
        }
        ASSERT_EQ(scpp->rows.size(), layers.size());
        for (std::size_t k = 0; k < layers.size(); ++k) {
            const std::string ic = scpp->Value(scpp->rows[k], "SCPP_CIC");
            EXPECT_NEAR(std::stod(ic), std::stod(layers[k].at("ic")), 0.05 + 1e-12) << k;
            EXPECT_EQ(scpp->Value(scpp->rows[k], "SCPP_SBTN"), layers[k].at("sbtn"));
        }
    }
}

}  // namespace
}  // namespace pemlo::cli::test
