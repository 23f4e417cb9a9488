// The sbt command as a user meets it: its options and their refusals, the three
// formats, several inputs and the output folder. Each row says what fault it catches.
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CliRun.h"

namespace pemlo::cli::test {
namespace {

namespace fs = std::filesystem;

// Three readings with u2 in column 4 (one void), the area ratio and the groundwater
// stated: a valid reading at 1 m, qn <= 0 at 2 m, fs = 0 at 3 m.
void WriteGef(const std::string& path)
{
    WriteDataFile(path, 0,
                  {"#GEFID= 1, 1, 0", "#COLUMN= 4", "#COLUMNINFO= 1, m, penetration length, 1",
                   "#COLUMNINFO= 2, MPa, qc, 2", "#COLUMNINFO= 3, MPa, fs, 3", "#COLUMNINFO= 4, MPa, u2, 6",
                   "#COLUMNVOID= 4, -9999", "#MEASUREMENTVAR= 3, 0.75, -, a", "#MEASUREMENTVAR= 14, 1.5, m, gw",
                   "#REPORTCODE= GEF-CPT-Report, 1, 1, 2", "#EOH=", "1.0 5.0 0.05 0.1", "2.0 0.001 0.05 -9999",
                   "3.0 2.0 0 0.2"});
}

struct SbtCase {
    const char* catches;
    std::vector<std::string> args;  // after "sbt"; "u2.gef" is the fixture
    int exitCode;
    std::vector<std::string> out, err;  // each must appear
    std::vector<std::string> notInErr = {};
};

TEST(SbtCommand, DoesWhatItSaysWithTheRightStatus)
{
    const SbtCase cases[] = {
        {"the columns in the order docs/sbtn.md gives", {"u2.gef"}, 0,
         {"depth,qc,fs,u2,qt,rf,gamma,sigma_v0,u0,sigma_v0_eff,qn,qt1,fr,bq,n,qtn,ic,zone\n1,5,"}, {}},
        {"an invalid reading keeps its stresses and leaves Qt1 to the zone empty", {"u2.gef"}, 0,
         {"\n2,0.0010000000474974513,0.05000000074505806,,", ",,,,,,,\n3,2,0,"}, {}},
        {"the file's u2, a and D, each with its source", {"u2.gef", "--format", "json"}, 0,
         {"\"inputs\": [\"u2: quantity 6", "\"groundwater\": {\"value\": 1.5, \"source\": \"file\"}",
          "\"area_ratio\": {\"value\": 0.75, \"source\": \"file\"}", "\"u2\": 0.10000000149011612, \"qt\": 5.025"},
         {"u2.gef: u2: quantity 6"}, {"groundwater not stated", "area ratio not stated"}},
        {"water standing above depth 0 and fixed weights: exact stresses",
         {"u2.gef", "--format", "json", "--gwt", "-2", "--unit-weight", "20", "--water-unit-weight", "10"}, 0,
         {"\"sigma_v0\": 40, \"u0\": 30, \"sigma_v0_eff\": 10,", "\"groundwater\": {\"value\": -2, \"source\": \"option\"}",
          "\"water_unit_weight\": {\"value\": 10, \"source\": \"option\"}", "\"unit_weight\": 20,"}, {}},
        {"JSON says why a reading has no values and counts each cause", {"u2.gef", "--format", "json"}, 0,
         {"\"qt1\": null", "\"zone\": null, \"invalid\": \"qn <= 0\"}", "\"invalid\": \"fs <= 0\"}",
          "\"counts\": {\"valid\": 1, \"invalid\": {\"qn <= 0\": 1, \"effective stress <= 0\": 0, \"fs <= 0\": 1, "
          "\"no convergence\": 0}}"}, {}},
        {"the table names the zone and the reason", {"u2.gef", "--format", "table"}, 0,
         {"Robertson 2009", "Ic", "6 sand\n", "- qn <= 0\n", "- fs <= 0\n"}, {}},
        {"an area ratio outside 0 < a <= 1 is a wrong call", {"u2.gef", "--area-ratio", "1.01"}, 2, {}, {"--area-ratio"}},
        {"a unit weight that is neither auto nor positive", {"u2.gef", "--unit-weight", "-3"}, 2, {}, {"--unit-weight"}},
        {"a water unit weight of 0", {"u2.gef", "--water-unit-weight", "0"}, 2, {}, {"--water-unit-weight"}},
        {"u2 only from column 4 or 5", {"u2.gef", "--u2-column", "3"}, 2, {}, {"--u2-column"}},
        {"no factor is known for u2 in millivolts", {"u2.gef", "--u2-column", "4", "--data-units", "mv"}, 2, {},
         {"no factor is known for u2"}},
        {"one table for several inputs, and the others go on after a failure", {"u2.gef", "missing.gef", "u2.gef"}, 3,
         {"file,depth,qc,", "\nu2.gef,1,5,"}, {"missing.gef"}},
        {"a plain-file option on an import is named as ignored", {"u2.gef", "--u2-column", "5"}, 0, {},
         {"--u2-column applies to plain ASCII files only"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        ScratchDir scratch;
        WriteGef(scratch.File("u2.gef"));
        std::vector<std::string> args{"sbt"};
        args.insert(args.end(), c.args.begin(), c.args.end());
        const CliRun run = RunCli(args, scratch);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err;
        for (const std::string& text : c.out) EXPECT_NE(run.out.find(text), std::string::npos) << text << "\n" << run.out;
        for (const std::string& text : c.err) EXPECT_NE(run.err.find(text), std::string::npos) << text << "\n" << run.err;
        for (const std::string& text : c.notInErr) EXPECT_EQ(run.err.find(text), std::string::npos) << text;
    }
}

TEST(SbtCommand, SiUnitsWhateverTheGraphUnitsAndOneFilePerInput)
{
    ScratchDir scratch;
    WriteGef(scratch.File("u2.gef"));
    const CliRun si = RunCli({"sbt", "u2.gef"}, scratch);
    const CliRun english = RunCli({"sbt", "u2.gef", "--graph-units", "english"}, scratch);
    ASSERT_EQ(si.exitCode, 0) << si.err;
    EXPECT_EQ(english.out, si.out) << "the graph units must not reach the rows";

    const CliRun folder = RunCli({"sbt", "u2.gef", "--out-dir", "out"}, scratch);
    ASSERT_EQ(folder.exitCode, 0) << folder.err;
    EXPECT_NE(folder.out.find("u2.gef -> out/u2.csv (3 readings)"), std::string::npos) << folder.out;
    EXPECT_EQ(ReadAll(scratch.Path() / "out" / "u2.csv"), si.out);
}

// One reading of a real file of each format with u2, checked by hand: qt from the
// file's qc, u2 and area ratio, u0 from the depth (groundwater at depth 0); Qtn and Ic
// as the independent reading in tools/check-sbt.py gives them.
TEST(SbtCommand, RealFilesWithU2AgainstRowsCheckedByHand)
{
    if (std::string(PEMLO_FORMATS_DIR).empty()) GTEST_SKIP() << "the formats folder was not found";
    const struct {
        const char* catches;
        const char* file;
        const char* depth;  // the row's first field
        double qc, u2, a, qtn, ic;
        int zone;
    } cases[] = {
        {"GEF quantity 6 and #MEASUREMENTVAR 3", "gef/mos_inclination.gef", "1.9900000095367432", 0.399, -0.03, 0.8,
         17.121880375149704, 2.332473991292585, 5},
        {"BRO porePressureU2 and coneSurfaceQuotient", "bro-xml/CPT000000155283.xml", "2.559999942779541", 0.332, 0.074,
         0.75, 23.130376621264777, 2.873178245978981, 4},
        {"AGS4 SCPT_PWP2 in kPa and the push's SCPG_CAR", "ags/borssele_WFS1-2A.ags", "12.039999961853027", 30.398,
         0.133, 0.75, 291.0971526859902, 1.3759831375257079, 6},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        ScratchDir scratch;
        const CliRun run = RunCli({"sbt", std::string(PEMLO_FORMATS_DIR) + "/" + c.file}, scratch);
        ASSERT_EQ(run.exitCode, 0) << run.err;
        std::vector<double> f;
        for (const std::string& line : Lines(run.out)) {
            if (line.rfind(c.depth, 0) != 0) continue;
            std::istringstream fields(line);
            for (std::string field; std::getline(fields, field, ',');) f.push_back(std::stod(field));
        }
        ASSERT_EQ(f.size(), 18u) << "the row at " << c.depth;
        const double depth = f[0];
        EXPECT_NEAR(f[4], c.qc + c.u2 * (1 - c.a), 1e-6) << "qt";
        EXPECT_NEAR(f[8], 9.81 * depth, 1e-9) << "u0";
        EXPECT_NEAR(f[15], c.qtn, 1e-9 * c.qtn) << "Qtn";
        EXPECT_NEAR(f[16], c.ic, 1e-9) << "Ic";
        EXPECT_EQ(f[17], c.zone);
    }
}

}  // namespace
}  // namespace pemlo::cli::test
