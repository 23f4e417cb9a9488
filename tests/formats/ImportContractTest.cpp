// The three readers and their shared contract on small files built here: the header
// quirks of real files, the rules for voids, negation and order, and every refusal.
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "formats/FileImport.h"
#include "formats/HostileFiles.h"
#include "formats/FormatDetection.h"
#include "formats/ImportRecord.h"

namespace pemlo::formats {
namespace {

const std::string Qty123 = "#COLUMNINFO= 1, m, length, 1\n#COLUMNINFO= 2, MPa, qc, 2\n#COLUMNINFO= 3, MPa, fs, 3\n";

std::string Gef(const std::string& header, const std::string& data)
{
    return "#GEFID= 1, 1, 0\n" + header + "#EOH=\n" + data;
}

FileImport Import(const std::string& text, DepthChoice depth = DepthChoice::Penetration) { return ImportBytes(text, depth); }

bool SameBits(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(FormatDetection, ByContentNotByName)
{
    const struct { const char* catches; std::string text; FileFormat format; } cases[] = {
        {"a GEF file after blank lines and a byte order mark", "\xEF\xBB\xBF\r\n  \n#GEFID= 1,1,0\n", FileFormat::Gef},
        {"a GEF header line in double quotes", "\"#GEFID = 1,1,0\"\n", FileFormat::Gef},
        {"an AGS4 file after its blank lines", "\r\n\r\n\"GROUP\",\"PROJ\"\r\n", FileFormat::Ags4},
        {"an XML document with a cone result block", "<?xml version=\"1.0\"?><a><b:cptResult/></a>", FileFormat::BroXml},
        {"XML without a cone result is not taken for BRO-XML", "<?xml version=\"1.0\"?><a/>", FileFormat::PlainAscii},
        {"GEF named only in a title line of a plain file", "title #GEFID\n1,2,3\n", FileFormat::PlainAscii},
    };
    for (const auto& c : cases) EXPECT_EQ(DetectFormat(c.text), c.format) << c.catches;
}

// Each file holds the readings (1, 2, 0.03) and (1.5, 3.5, 0.05) however it writes them.
TEST(GefReader, ReadsTheHeaderAndDataQuirksOfRealFiles)
{
    const std::string twoRows = "1;2;0.03;!\n1.5;3.5;0.05;!\n";
    const std::string semicolons = "#COLUMNSEPARATOR= ;\n#RECORDSEPARATOR= !\n";
    const struct { const char* catches; std::string text; } cases[] = {
        {"blanks around '=' in keywords and #EOH",
         "#GEFID = 1,1,0\n#COLUMNINFO =  1, m, a, 1\n#COLUMNINFO= 2 , MPa, b, 2\n#COLUMNINFO   = 3, MPa, c, 3\n"
         "#COLUMNSEPARATOR = ;\n#EOH            =\n" + twoRows},
        {"header lines in double quotes", "\"#GEFID= 1,1,0\"\n\"#COLUMNINFO= 1, m, a, 1\"\n\"#COLUMNINFO= 2, MPa, b, 2\"\n"
         "\"#COLUMNINFO= 3, MPa, c, 3\"\n\"#COLUMNSEPARATOR= ;\"\n\"#EOH=\"\n" + twoRows},
        {"blank and comment lines in the header", Gef("\n#COMMENT= *****\n\n" + Qty123 + "\n#COMMENT=\n" + semicolons, twoRows)},
        {"a value continued on the next line",
         Gef("#COLUMNINFO= 1, m, a, 1\n#COLUMNINFO= 2, MPa, b, 2\n#COLUMNINFO= 3, MPa, sleeve friction\n, 3\n" +
                 semicolons,
             twoRows)},
        {"':' as the column separator", Gef(Qty123 + "#COLUMNSEPARATOR= :\n", "1:2:0.03\n1.5:3.5:0.05\n")},
        {"'|' as the column separator", Gef(Qty123 + "#COLUMNSEPARATOR= |\n", "1|2|0.03|\n1.5|3.5|0.05|\n")},
        {"white space without a declared separator", Gef(Qty123, "   1  2\t0.03\n 1.5   3.5  0.05\n")},
        {"a record separator declared and unused", Gef(Qty123 + semicolons, "1;2;0.03\n1.5;3.5;0.05\n")},
        {"a record separator used and undeclared", Gef(Qty123 + "#COLUMNSEPARATOR= ;\n", twoRows)},
        {"three-digit exponents", Gef(Qty123, "1.0000e+000 2.0000E+000 3.0000e-002\n1.5000e+000 3.5000e+000 5.0000E-002\n")},
        {"a trailing tab on every line", Gef(Qty123 + semicolons, "1;2;0.03;!\t\r\n1.5;3.5;0.05;!\t\r\n")},
        {"columns found by quantity, not by position",
         Gef("#COLUMNINFO= 1, s, time, 12\n#COLUMNINFO= 2, MPa, fs, 3\n#COLUMNINFO= 3, MPa, qc, 2\n#COLUMNINFO= 4, m, l, 1\n",
             "9 0.03 2 1\n9 0.05 3.5 1.5\n")},
        {"a void written differently from its declaration is still a void",
         Gef(Qty123 + "#COLUMNVOID= 3, -9999\n", "0.5 1 -9.9990e+003\n1 2 0.03\n1.5 3.5 0.05\n")},
        {"the void of an unused column drops nothing",
         Gef(Qty123 + "#COLUMNINFO= 4, %, rf, 4\n#COLUMNVOID= 4, -1\n", "1 2 0.03 -1\n1.5 3.5 0.05 -1\n")},
        {"kPa divided by 1000 in double", Gef("#COLUMNINFO= 1, m, a, 1\n#COLUMNINFO= 2, kPa, b, 2\n#COLUMNINFO= 3, kN/m2, c, 3\n",
                                              "1 2000 30\n1.5 3500 50\n")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        const FileImport f = Import(c.text);
        ASSERT_EQ(f.refusal, "");
        ASSERT_EQ(f.soundings.size(), 1u);
        const ImportedSounding& s = f.soundings[0];
        ASSERT_EQ(s.depth.size(), 2u);
        EXPECT_TRUE(SameBits(s.depth[1], 1.5f) && SameBits(s.qc[1], 3.5f) && SameBits(s.fs[1], static_cast<float>(0.05)))
            << s.depth[1] << " " << s.qc[1] << " " << s.fs[1];
        EXPECT_TRUE(SameBits(s.fs[0], static_cast<float>(0.03)));
    }
}

TEST(GefReader, TakesTheTextAsUtf8OrWindows1252AndMapsTheProjectFields)
{
    const std::string header = Qty123 + "#PROJECTID= CPT, 42\n#PROJECTNAME= fallback\n#TESTID= S\xF6\n"
                               "#STARTDATE= 2019, 1, 29\n#STARTTIME= 10, 43, 50\n#MEASUREMENTTEXT= 2, Quay wall, name\n"
                               "#MEASUREMENTTEXT= 4, C10-123, cone\n#MEASUREMENTVAR= 14, 1.25, m, gwl\n"
                               "#MEASUREMENTVAR= 13, 150, cm, predrilled\n";
    const FileImport latin = Import(Gef(header, "1 2 0.03\n"));
    ASSERT_EQ(latin.refusal, "");
    const ImportedSounding& s = latin.soundings[0];
    EXPECT_EQ(s.record.encoding, "Windows-1252");
    EXPECT_EQ(s.id, "S\xC3\xB6");  // the byte 0xF6 read as o with diaeresis
    const ProjectInfo expected{"CPT, 42", "Quay wall", "2019-01-29 10:43:50", "S\xC3\xB6", "1.25 m", "C10-123"};
    EXPECT_EQ(std::tie(s.project.number, s.project.title, s.project.date, s.project.location, s.project.gwt, s.project.coneNo),
              std::tie(expected.number, expected.title, expected.date, expected.location, expected.gwt, expected.coneNo));
    EXPECT_EQ(s.record.predrilled, 1.5);
    // Valid UTF-8 stays as it is, and is not read twice.
    const FileImport utf8 = Import(Gef(Qty123 + "#TESTID= S\xC3\xB6\n", "1 2 0.03\n"));
    EXPECT_EQ(utf8.soundings.at(0).record.encoding, "UTF-8");
    EXPECT_EQ(utf8.soundings.at(0).id, "S\xC3\xB6");
}

// The contract's only changes to the data, each with the record line that states it.
TEST(ImportContract, DropsVoidsNegatesAndSortsAndNothingElse)
{
    const struct {
        const char* catches;
        std::string data;  // depth qc fs per line; void -1 in every column
        std::vector<float> depth, qc, fs;
        std::string record;  // part of the record's third line
    } cases[] = {
        {"depths all at or above zero are negated, and 0 stays +0", "0 1 0.1\n-0.5 2 0.2\n", {0.0f, 0.5f}, {1, 2}, {0.1f, 0.2f},
         "depths negated: yes; moved by the sort: 0"},
        {"mixed signs are left as they are", "-0.1 1 0.1\n0.5 2 0.2\n", {-0.1f, 0.5f}, {1, 2}, {0.1f, 0.2f},
         "depths negated: no"},
        {"rows out of order are sorted stably, equal depths in file order",
         "0.3 1 0.1\n0.1 2 0.2\n0.3 3 0.3\n0.2 4 0.4\n", {0.1f, 0.2f, 0.3f, 0.3f}, {2, 4, 1, 3}, {0.2f, 0.4f, 0.1f, 0.3f},
         "moved by the sort: 4"},
        {"qc of 0 and negative fs are kept for the program's own cleaning", "0.1 0 -0.01\n0.2 2 0.2\n", {0.1f, 0.2f},
         {0, 2}, {-0.01f, 0.2f}, "void rows dropped 0"},
        {"void rows dropped, their runs given in depth order and joined across a reorder",
         "0.4 -1 0.1\n0.1 -1 0.1\n0.2 1 -1\n0.3 2 0.2\n-1 1 0.1\n", {0.3f}, {2}, {0.2f},
         "void rows dropped 4: 0.1-0.2 m (2), 0.4 m (1), depth void (1)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        const FileImport f = Import(Gef(Qty123 + "#COLUMNVOID= 1, -1\n#COLUMNVOID= 2, -1\n#COLUMNVOID= 3, -1\n", c.data));
        ASSERT_EQ(f.refusal, "");
        const ImportedSounding& s = f.soundings[0];
        EXPECT_EQ(s.depth, c.depth);
        EXPECT_EQ(s.qc, c.qc);
        EXPECT_EQ(s.fs, c.fs);
        EXPECT_FALSE(s.depth[0] == 0 && std::signbit(s.depth[0]));
        EXPECT_NE(DescribeImport(s)[2].find(c.record), std::string::npos) << DescribeImport(s)[2];
    }
}

std::string Ags(const std::string& scpt)
{
    return "\"GROUP\",\"PROJ\"\r\n\"HEADING\",\"PROJ_ID\",\"PROJ_NAME\"\r\n\"UNIT\",\"\",\"\"\r\n"
           "\"DATA\",\"P1\",\"Pier, north\"\r\n\r\n"
           "\"GROUP\",\"LOCA\"\r\n\"HEADING\",\"LOCA_ID\",\"LOCA_STAR\"\r\n\"DATA\",\"B\",\"2015-04-10\"\r\n\r\n"
           "\"GROUP\",\"SCPG\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPG_REF\",\"SCPG_WAT\"\r\n"
           "\"UNIT\",\"\",\"\",\"\",\"m\"\r\n\"DATA\",\"B\",\"2\",\"cone \"\"X\"\"\",\"3.5\"\r\n\r\n" + scpt;
}

const std::string ScptHead = "\"GROUP\",\"SCPT\"\r\n"
                             "\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPT_DPTH\",\"SCPT_RES\",\"SCPT_FRES\"\r\n"
                             "\"UNIT\",\"\",\"\",\"m\",\"MN/m2\",\"kN/m2\"\r\n";

TEST(Ags4Reader, OneSoundingPerLocationWithItsPushesMerged)
{
    const FileImport f = Import(Ags(ScptHead + "\"DATA\",\"A\",\"1\",\"1.0\",\"5\",\"50\"\r\n"
                                               "\"DATA\",\"B\",\"1\",\"0.5\",\"6\",\"\"\r\n"
                                               "\"DATA\",\"B\",\"1\",\"1.0\",\"7\",\"70\"\r\n"
                                               "\"DATA\",\"A\",\"2\",\"2.0\",\"8\",\"80\"\r\n"
                                               "\"DATA\",\"B\",\"2\",\"3.0\",\"9\",\"90\"\r\n"));
    ASSERT_EQ(f.refusal, "");
    ASSERT_EQ(f.soundings.size(), 2u);  // A first: the order of their first rows
    const ImportedSounding& a = f.soundings[0];
    const ImportedSounding& b = f.soundings[1];
    EXPECT_EQ(a.locaId, "A");
    EXPECT_EQ(a.depth, (std::vector<float>{1, 2}));
    EXPECT_EQ(b.depth, (std::vector<float>{1, 3}));      // the empty fs of 0.5 m is a void
    EXPECT_TRUE(SameBits(b.fs[0], static_cast<float>(70.0 / 1000)));  // kN/m2 divided by 1000
    ASSERT_EQ(b.pushes.size(), 2u);
    EXPECT_EQ(b.pushes[0].testNumber, "1");
    EXPECT_EQ(b.pushes[0].readings, 1);
    EXPECT_EQ(b.pushes[1].top, 3.0f);
    EXPECT_EQ(b.pushes[0].reference + "|" + b.pushes[1].reference, "|cone \"X\"") << "a push given another's cone";
    EXPECT_EQ(b.project.number + "|" + b.project.title + "|" + b.project.date + "|" + b.project.location + "|" +
                  b.project.gwt + "|" + b.project.coneNo,
              "P1|Pier, north|2015-04-10|B|3.5 m|cone \"X\"");
}

std::string Bro(const std::string& cpts) { return "<?xml version=\"1.0\"?>\n<r xmlns:c=\"urn:c\">" + cpts + "</r>"; }

std::string Cpt(const std::string& id, const std::string& qcFlag, const std::string& values, const std::string& prefix = "c:")
{
    return "<" + prefix + "CPT_O><" + prefix + "broId>" + id + "</" + prefix + "broId><" + prefix + "cptResult><" + prefix +
           "TextEncoding decimalSeparator=\".\" tokenSeparator=\",\" blockSeparator=\";\"/><" + prefix + "values>" + values +
           "</" + prefix + "values></" + prefix + "cptResult><" + prefix + "parameters><" + prefix +
           "localFriction>ja</" + prefix + "localFriction><" + prefix + "penetrationLength>ja</" + prefix +
           "penetrationLength><" + prefix + "coneResistance>" + qcFlag + "</" + prefix + "coneResistance></" + prefix +
           "parameters></" + prefix + "CPT_O>";
}

TEST(BroXmlReader, EachCptObjectWithItsColumnsNamedByTheParametersList)
{
    // Columns fs, depth, qc, in the order the parameters list gives; prefixed and unprefixed names alike.
    const FileImport f = Import(Bro(Cpt("CPT1", "ja", "0.02,0.2,1;0.01,-999999,2;0.03,0.3,3;") +
                                    Cpt("CPT2", "ja", "0.4,0.5,6", "")));
    ASSERT_EQ(f.refusal, "");
    ASSERT_EQ(f.soundings.size(), 2u);
    EXPECT_EQ(f.soundings[0].id, "CPT1");
    EXPECT_EQ(f.soundings[0].depth, (std::vector<float>{0.2f, 0.3f}));  // the void depth row dropped
    EXPECT_EQ(f.soundings[0].fs, (std::vector<float>{0.02f, 0.03f}));
    EXPECT_EQ(f.soundings[1].qc, (std::vector<float>{6}));
    // The separators the document declares, a decimal comma among them.
    std::string declared = Cpt("C", "ja", "0,02;0,2;1|0,03;0,3;3");
    declared.replace(declared.find("\".\" tokenSeparator=\",\" blockSeparator=\";\""), 41,
                     "\",\" tokenSeparator=\";\" blockSeparator=\"|\"");
    const FileImport comma = Import(Bro(declared));
    ASSERT_EQ(comma.refusal, "");
    EXPECT_EQ(comma.soundings[0].depth, (std::vector<float>{0.2f, 0.3f}));
}

// What a reader does once per sounding or per push must not grow with the file: a
// quadratic reader took 12 s, 48 s and 9 s on the first three files, a linear one takes a
// small fraction of a second (bench_cli prints the figures).
TEST(FileImport, ReadsFilesBuiltToBeSlowInTimeLinearInTheirSize)
{
    // soundings, the length of the first one's cone number (each distinct cone once), the version
    const struct { const char* catches; std::string text; std::size_t soundings, coneNo; const char* version; } cases[] = {
        {"the cone references of all pushes joined and searched once per push", test::ManyPushesAgs4(10000), 1,
         10000 * 50 + 9999 * 3, ""},
        {"the root's attributes looked through once per CPT object", test::ManyRootAttributesBroXml(10000, 500000),
         10000, 0, "1.1"},
        {"the headings searched on every row of a wide group", test::WideGroupAgs4(9990, 200000), 1, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        const auto start = std::chrono::steady_clock::now();
        const FileImport f = Import(c.text);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        ASSERT_EQ(f.soundings.size(), c.soundings) << f.refusal;
        EXPECT_EQ(f.soundings.front().project.coneNo.size(), c.coneNo);
        EXPECT_EQ(f.soundings.back().version, c.version);
        EXPECT_LT(seconds.count(), 2.0) << "the order of a quadratic reader";
    }
}

TEST(FileImport, RefusesWhatItCannotReadAndSaysWhereAndWhy)
{
    std::string tooMany = Gef(Qty123, "");
    for (int i = 0; i <= 32767; ++i) tooMany += "1 1 1\n";
    const struct { const char* catches; std::string text; DepthChoice depth; const char* message; } cases[] = {
        {"a GEF without qc", Gef("#COLUMNINFO= 1, m, a, 1\n#COLUMNINFO= 2, MPa, c, 3\n", "1 1\n"), DepthChoice::Penetration,
         "no qc column: no #COLUMNINFO line holds quantity 2"},
        {"a GEF without fs", Gef("#COLUMNINFO= 1, m, a, 1\n#COLUMNINFO= 2, MPa, c, 2\n", "1 1\n"), DepthChoice::Penetration,
         "no fs column"},
        {"corrected depth asked of a file without it", Gef(Qty123, "1 1 1\n"), DepthChoice::Corrected,
         "no corrected depth column"},
        {"a non-number in a used column", Gef(Qty123, "1 1 1\n2 x 1\n"), DepthChoice::Penetration,
         "line 7: column 2 (quantity 2, qc) holds 'x', not a number"},
        {"nan is no number", Gef(Qty123, "1 nan 1\n"), DepthChoice::Penetration, "holds 'nan', not a number"},
        {"a short row", Gef(Qty123, "1 1\n"), DepthChoice::Penetration, "line 6 has 2 values; column 3"},
        {"a force is no stress", Gef("#COLUMNINFO= 1, m, a, 1\n#COLUMNINFO= 2, kN, b, 2\n#COLUMNINFO= 3, MPa, c, 3\n", "1 1 1\n"),
         DepthChoice::Penetration, "line 3: column 2 (quantity 2, qc) is in 'kN', which is not a stress"},
        {"a GEF without #EOH", "#GEFID= 1,1,0\n" + Qty123 + "1 1 1\n", DepthChoice::Penetration, "no #EOH line"},
        {"a GEF of another kind", Gef("#REPORTCODE= GEF-BORE-Report, 1, 0, 0\n" + Qty123, "1 1 1\n"), DepthChoice::Penetration,
         "is not a CPT report"},
        {"a GEF with only void rows", Gef(Qty123 + "#COLUMNVOID= 2, 9\n", "1 9 1\n"), DepthChoice::Penetration, "no CPT data"},
        {"more readings than a 16-bit count", tooMany, DepthChoice::Penetration, "more than 32767 readings"},
        {"an AGS4 file without CPT data", "\"GROUP\",\"PROJ\"\r\n\"HEADING\",\"PROJ_ID\"\r\n\"DATA\",\"1\"\r\n",
         DepthChoice::Penetration, "no CPT data: the file has no SCPT group"},
        {"an AGS4 SCPT group without fs", Ags("\"GROUP\",\"SCPT\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPT_DPTH\",\"SCPT_RES\"\r\n"
                                               "\"UNIT\",\"\",\"m\",\"MPa\"\r\n\"DATA\",\"B\",\"1\",\"1\"\r\n"),
         DepthChoice::Penetration, "no fs column: the SCPT group (line 15) has no SCPT_FRES heading"},
        {"a non-number in AGS4", Ags(ScptHead + "\"DATA\",\"B\",\"1\",\"1\",\"1\",\"-\"\r\n"), DepthChoice::Penetration,
         "line 18: SCPT_FRES holds '-', not a number"},
        {"AGS4 has no corrected depth", Ags(ScptHead + "\"DATA\",\"B\",\"1\",\"1\",\"1\",\"1\"\r\n"), DepthChoice::Corrected,
         "holds no corrected depth"},
        {"a cone resistance not measured", Bro(Cpt("C", "nee", "1,1,1")), DepthChoice::Penetration,
         "no qc column: coneResistance is marked 'nee'"},
        {"a row of the wrong length", Bro(Cpt("C", "ja", "1,1,1;1,1")), DepthChoice::Penetration, "row 2: 2 values where"},
        {"XML that is not well-formed", Bro(Cpt("C", "ja", "1,1,1")).substr(0, 120), DepthChoice::Penetration,
         "not well-formed XML at line 2"},
    };
    for (const auto& c : cases) {
        const FileImport f = Import(c.text, c.depth);
        EXPECT_TRUE(f.soundings.empty()) << c.catches;
        EXPECT_NE(f.refusal.find(c.message), std::string::npos) << c.catches << ": " << f.refusal;
    }
}

TEST(FileImport, RefusesAFileOver64MegabytesByItsSizeBeforeReadingIt)
{
    const auto path = std::filesystem::temp_directory_path() / ("pemlo-large-" + std::to_string(getpid()) + ".gef");
    std::ofstream(path) << "#GEFID= 1,1,0\n";
    std::filesystem::resize_file(path, MaxImportBytes + 1);  // sparse: nothing is written
    const FileImport f = ImportFile(path.string(), DepthChoice::Penetration);
    std::filesystem::remove(path);
    EXPECT_NE(f.refusal.find("files of more than 64 MB are not imported"), std::string::npos) << f.refusal;
}

}  // namespace
}  // namespace pemlo::formats
