// The normalised soil behaviour type as layers and ags carry it, on the real files with
// u2: ags --readings reads back to sbt's values at each heading's decimals, each push
// states the area ratio its readings used, and layers and ags agree on every layer.
#include <gtest/gtest.h>

#include <cmath>
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

// Written at `decimals`, the text reads back to the value (empty to empty).
void ExpectAt(const std::string& written, const std::string& value, int decimals, const std::string& what)
{
    if (value.empty() || written.empty()) {
        EXPECT_EQ(written, value) << what;
        return;
    }
    EXPECT_NEAR(std::stod(written), std::stod(value), 0.5 * std::pow(10.0, -decimals) * (1 + 1e-9)) << what;
}

TEST(Yardstick, AgsReadingsReadBackToSbtAndLayersAgreeWithAgs)
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
        const auto sbt = Table(RunCli({"sbt", path}, scratch).out);
        const auto layers = Table(RunCli({"layers", path}, scratch).out);
        ASSERT_EQ(RunCli({"ags", path, "--readings", "-o", "out.ags"}, scratch).exitCode, 0);
        std::vector<profile::AgsFinding> findings;
        const std::string text = ReadAll(scratch.Path() / "out.ags");
        EXPECT_TRUE(profile::CheckAgs4(text).empty());
        const profile::AgsFile file = profile::ReadAgs4(text, findings);
        const profile::AgsGroup* scpt = file.Find("SCPT");
        const profile::AgsGroup* scpp = file.Find("SCPP");
        const profile::AgsGroup* scpg = file.Find("SCPG");
        ASSERT_TRUE(scpt && scpp && scpg);
        ASSERT_EQ(scpt->rows.size(), sbt.size());
        const std::pair<const char*, std::pair<const char*, int>> headings[] = {
            {"SCPT_DPTH", {"depth", 3}}, {"SCPT_PWP2", {"u2", 4}}, {"SCPT_QT", {"qt", 4}},
            {"SCPT_CPOD", {"sigma_v0_eff", 2}}, {"SCPT_NFR", {"fr", 4}}, {"SCPT_QTN", {"qtn", 4}},
            {"SCPT_CIC", {"ic", 4}}, {"SCPT_SBTN", {"zone", 0}}};
        for (std::size_t i = 0; i < sbt.size(); ++i)
            for (const auto& [heading, column] : headings)
                ExpectAt(scpt->Value(scpt->rows[i], heading), sbt[i].at(column.first), column.second, heading);
        for (const auto& row : scpg->rows) {
            const auto push = c.areaRatioOfPush.find(scpg->Value(row, "SCPG_TESN"));
            const std::string expected = push == c.areaRatioOfPush.end() ? "" : push->second;
            EXPECT_TRUE(expected.empty() || scpg->Value(row, "SCPG_CAR") == expected) << scpg->Value(row, "SCPG_TESN");
        }
        ASSERT_EQ(scpp->rows.size(), layers.size());
        for (std::size_t k = 0; k < layers.size(); ++k) {
            ExpectAt(scpp->Value(scpp->rows[k], "SCPP_CIC"), layers[k].at("ic"), 1, "SCPP_CIC");
            EXPECT_EQ(scpp->Value(scpp->rows[k], "SCPP_SBTN"), layers[k].at("sbtn"));
        }
    }
}

}  // namespace
}  // namespace pemlo::cli::test
