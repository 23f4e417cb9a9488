// The number texts and layouts of the command line's output.
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "cli/ResultFormat.h"

namespace pemlo::cli {
namespace {

bool SameBits(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(ShortestText, ReadsBackToTheVerySameSingle)
{
    // Values whose decimal forms are awkward: one tenth, accumulated depths, the
    // smallest and largest singles, a value just off a round number.
    const float values[] = {0.1f, 0.164f, 0.328f * 5, 57.5f, 1e-5f, FLT_MIN, FLT_MAX, 97.81f,
                            std::nextafter(100.0f, 0.0f), -0.0500f, 0.0f, 3.3333333f};
    for (float v : values) {
        const std::string text = ShortestText(v);
        EXPECT_TRUE(SameBits(std::strtof(text.c_str(), nullptr), v)) << text;
    }
    EXPECT_EQ(ShortestText(57.5f), "57.5");
    EXPECT_EQ(ShortestText(0.1f), "0.1");  // not 0.100000001
}


Declarations TwoIntervals()
{
    Declarations d;
    d.NumLines = 3;
    d.NumIntervals = 2;
    for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntU, &d.IntV,
                             &d.IntProb1, &d.IntProb2, &d.IntProb3})
        a->Allocate(2);
    d.IntDepth[1] = 0.05f;
    d.IntDepth[2] = 0.15f;
    d.IntProb1[2] = 100.0f;
    return d;
}

TEST(FormatIntervals, SeveralFilesShareOneCsvTableWithAFileColumn)
{
    const Declarations d = TwoIntervals();
    RunFacts facts;
    facts.file = "dir,with comma/a \"b\".txt";
    const std::string rows = FormatIntervals(d, facts, OutputFormat::Csv, CsvLayout::ManyFiles);
    // quoted as CSV readers expect, no header of its own
    EXPECT_EQ(rows, "\"dir,with comma/a \"\"b\"\".txt\",1,0.05,0,0,0,0,0,0,0,0\n"
                    "\"dir,with comma/a \"\"b\"\".txt\",2,0.15,0,0,0,0,0,100,0,0\n");
    EXPECT_EQ(IntervalCsvHeader(true), "file,interval,depth,qc,fs,ratio,u,v,sand,silt,clay\n");
}

TEST(FormatIntervals, JsonEscapesTheFileNameAndNamesTheUnits)
{
    const Declarations d = TwoIntervals();
    RunFacts facts;
    facts.file = "C:\\cpt\\\"x\".txt";
    facts.dataUnits = DataSI;
    facts.graphUnits = GraphSI;
    facts.numReadings = 3;
    const std::string json = FormatIntervals(d, facts, OutputFormat::Json);
    EXPECT_NE(json.find(R"("file": "C:\\cpt\\\"x\".txt")"), std::string::npos) << json;
    EXPECT_NE(json.find(R"("dataUnits": "si")"), std::string::npos);
    EXPECT_NE(json.find(R"("units": {"depth": "m", "qc": "MPa", "fs": "MPa", "ratio": "%"})"), std::string::npos);
    EXPECT_NE(json.find(R"({"interval": 2, "depth": 0.15, )"), std::string::npos);
}

TEST(FormatIntervals, TableAlignsEveryColumnUnderItsTitle)
{
    const Declarations d = TwoIntervals();
    RunFacts facts;
    facts.file = "a.txt";
    const std::string table = FormatIntervals(d, facts, OutputFormat::Table);
    std::vector<std::string> lines;
    for (std::size_t at = 0, end; (end = table.find('\n', at)) != std::string::npos; at = end + 1)
        lines.push_back(table.substr(at, end - at));
    ASSERT_EQ(lines.size(), 5u) << table;
    EXPECT_EQ(lines[2].find("Depth (ft)"), lines[2].find("Interval") + 10);
    // right-aligned: every row ends where the header ends
    EXPECT_EQ(lines[3].size(), lines[2].size());
    EXPECT_EQ(lines[4].size(), lines[2].size());
    EXPECT_NE(lines[4].find("100.00"), std::string::npos);
}

}  // namespace
}  // namespace pemlo::cli
