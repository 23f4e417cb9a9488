// The readings the normalised soil behaviour type takes from each kind of input: u2,
// the area ratio and the groundwater depth of every format, and plain files' u2
// column through the conversion to SI units.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "formats/FileImport.h"
#include "sbtn/SbtnInputs.h"

namespace pemlo::sbtn {
namespace {

using Optionals = std::vector<std::optional<double>>;

const std::string GefColumns = "#GEFID= 1, 1, 0\n#COLUMNINFO= 1, m, l, 1\n#COLUMNINFO= 2, MPa, qc, 2\n"
                               "#COLUMNINFO= 3, MPa, fs, 3\n";

const std::string AgsFile =
    "\"GROUP\",\"SCPG\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPG_WAT\",\"SCPG_CAR\"\r\n"
           "\"UNIT\",\"\",\"\",\"m\",\"\"\r\n\"DATA\",\"B\",\"1\",\"\",\"0.75\"\r\n\"DATA\",\"B\",\"2\",\"2.5\",\"\"\r\n\r\n"
           "\"GROUP\",\"SCPT\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPT_DPTH\",\"SCPT_RES\",\"SCPT_FRES\","
           "\"SCPT_PWP2\"\r\n\"UNIT\",\"\",\"\",\"m\",\"MPa\",\"MPa\",\"kN/m2\"\r\n"
           "\"DATA\",\"B\",\"1\",\"1\",\"2\",\"0.03\",\"100\"\r\n\"DATA\",\"B\",\"2\",\"1.5\",\"3.5\",\"0.05\",\"\"\r\n";

// Rows out of depth order: u2 goes with its row through the sort.
const std::string BroFile =
    "<?xml version=\"1.0\"?><r xmlns:c=\"urn:c\"><c:CPT_O><c:broId>C</c:broId>"
           "<c:coneSurfaceQuotient uom=\"1\">0.75</c:coneSurfaceQuotient><c:cptResult><c:values>"
           "1.5,3.5,0.05,-999999;1,2,0.03,0.02</c:values></c:cptResult><c:parameters>"
           "<c:penetrationLength>ja</c:penetrationLength><c:coneResistance>ja</c:coneResistance>"
           "<c:localFriction>ja</c:localFriction><c:porePressureU2>ja</c:porePressureU2></c:parameters></c:CPT_O></r>";

TEST(GatherSbtnReadings, TakesU2AreaRatioAndGroundwaterFromEachFormat)
{
    const struct { const char* catches; std::string text; Optionals u2, areaRatio; std::string record; } cases[] = {
        {"GEF: u2 scaled as qc is and kept with its row through negation, sort and a void row; a void u2 "
         "keeping its row; groundwater in its own unit",
         GefColumns + "#COLUMNINFO= 4, kPa, u2, 6\n#COLUMNVOID= 3, -1\n#COLUMNVOID= 4, -1\n#MEASUREMENTVAR= 3, 0.8, -, a\n"
                      "#MEASUREMENTVAR= 14, 150, cm, gwl\n#EOH=\n-1.5 3.5 0.05 20\n-0.7 9 -1 5\n-1 2 0.03 -1\n",
         {std::nullopt, 0.02f}, {0.8, 0.8},
         "u2: quantity 6 [kPa, /1000]; readings without u2: 1 (qt = qc there)|area ratio: 0.8 from #MEASUREMENTVAR 3|"
         "groundwater: 1.5 m below depth 0, from #MEASUREMENTVAR 14|"},
        {"GEF: a u2 column in an unknown unit is not read, and the file is not refused for it",
         GefColumns + "#COLUMNINFO= 4, bar, u2, 6\n#MEASUREMENTVAR= 3, -, -, a\n#EOH=\n1 2 0.03 1\n1.5 3.5 0.05 x\n",
         {std::nullopt, std::nullopt}, {std::nullopt, std::nullopt},
         "u2: not read, column 4 (quantity 6, u2) is in 'bar', which is not a stress the import knows; qt = qc "
         "throughout|area ratio: not stated in the file|groundwater: not stated in the file|"},
        {"AGS4: each reading keeps its own push's SCPG_CAR; SCPG_WAT of the first push that gives it", AgsFile,
         {0.1f, std::nullopt}, {0.75, std::nullopt},
         "u2: SCPT_PWP2 [kN/m2, /1000]; readings without u2: 1 (qt = qc there)|area ratio: 0.75 from SCPG_CAR; "
         "readings without it: 1|groundwater: 2.5 m below depth 0, from SCPG_WAT of push 2|"},
        {"BRO-XML: u2 by the parameters list, sorted with its row; the cone's area ratio", BroFile,
         {0.02f, std::nullopt}, {0.75, 0.75},
         "u2: porePressureU2 [MPa]; readings without u2: 1 (qt = qc there)|area ratio: 0.75 from coneSurfaceQuotient|"
         "groundwater: not stated in the file|"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        const formats::FileImport f = formats::ImportBytes(c.text, formats::DepthChoice::Penetration);
        RoadOptions options;
        options.imported = std::make_shared<const formats::ImportedSounding>(f.soundings.at(0));
        const SbtnReadings r = GatherSbtnReadings(options, 0).readings;
        EXPECT_EQ(r.depth, (std::vector<double>{1, 1.5}));
        EXPECT_EQ(r.u2, c.u2);
        EXPECT_EQ(r.areaRatio, c.areaRatio);
        std::string record;
        for (const std::string& line : DescribeSbtnInputs(r)) record += line + "|";
        EXPECT_EQ(record, c.record);
    }
}

TEST(GatherSbtnReadings, ReadsAPlainFilesU2ColumnThroughTheConversionToSi)
{
    const auto path = std::filesystem::temp_directory_path() / ("pemlo-sbtn-" + std::to_string(getpid()) + ".txt");
    // u2 is written equal to qc wherever it is read, so it must come out equal to qc.
    const struct { const char* catches; std::string data; Integer units; int column; const char* refusal; } cases[] = {
        {"SI: column 4 as written; qc 0 and fs < 0 not yet cleaned", "0.1,0,-0.01,0\n0.2,2,0.2,2\n", DataSI, 4, ""},
        {"English: column 5, not 4, converted to MPa exactly as qc is", "1 3 0.1 9 3\n2 4 0.2 9 4\n", DataEnglish, 5, ""},
        {"a column the file does not have", "1 3 0.1 3\n", DataSI, 5, "--u2-column 5 names no column: the file has 4"},
        {"depths that decrease", "0.1 1 0.1 1\n0.2 1 0.1 1\n0.15 1 0.1 1\n", DataSI, 4,
         "the depths decrease: reading 3 lies at 0.15 m, above reading 2 at 0.2 m"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        std::ofstream(path) << c.data;
        const GatherResult g = GatherSbtnReadings({.path = path.string(), .dataUnits = c.units, .titleLines = 0}, c.column);
        ASSERT_EQ(g.road.status, RoadStatus::Done);
        EXPECT_NE(g.refusal.find(c.refusal), std::string::npos) << g.refusal;
        if (*c.refusal != '\0') continue;
        EXPECT_EQ(g.refusal, "");
        const SbtnReadings& r = g.readings;
        ASSERT_EQ(r.u2.size(), r.qc.size());
        for (std::size_t i = 0; i < r.qc.size(); ++i) EXPECT_EQ(r.u2[i], r.qc[i]);
        EXPECT_EQ(r.u2Source, "column " + std::to_string(c.column));
        EXPECT_TRUE(c.units != DataSI || r.fs[0] == static_cast<double>(-0.01f));
    }
    std::filesystem::remove(path);
}

}  // namespace
}  // namespace pemlo::sbtn
