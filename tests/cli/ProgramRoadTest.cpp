// The routing to the graph units, and the road of one sounding in one call giving the
// very numbers of the screens' steps.
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CliRun.h"
#include "classify/ReadingSteps.h"
#include "core/ProgramRoad.h"
#include "input/Module_FileData.h"

namespace pemlo {
namespace {

using cli::test::ScratchDir;
using cli::test::WriteDataFile;

// Only the routes between differing units convert, once; millivolts wait for the cone
// factors. A reading at depth 30 in the file's units.
TEST(ConvertToGraphUnits, ConvertsOnlyWhereTheUnitsDiffer)
{
    const struct { Integer data, graph, dataAfter; float depthAfter; } cases[] = {
        {DataEnglish, GraphEnglish, DataEnglish, 30.0f}, {DataEnglish, GraphSI, DataSI, 9.144f},
        {DataSI, GraphEnglish, DataEnglish, 98.4252f},   {DataSI, GraphSI, DataSI, 30.0f},
        {DataMilliVolts, GraphSI, DataMilliVolts, 30.0f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.data * 10 + c.graph);
        Declarations d;
        d.NumLines = 1;
        d.Depth[1] = 30.0f;
        d.DataUnits = c.data;
        d.GraphUnits = c.graph;
        for (int twice = 0; twice < 2; ++twice) {  // a second confirmation converts nothing more
            ConvertToGraphUnits(d);
            EXPECT_EQ(d.DataUnits, c.dataAfter);
            EXPECT_FLOAT_EQ(d.Depth[1], c.depthAfter);
        }
    }
}

std::vector<std::string> SiSounding(int count, float step)
{
    std::vector<std::string> lines;
    for (int i = 1; i <= count; ++i) {
        const float depth = step * static_cast<float>(i);
        lines.push_back(std::to_string(depth) + "," + std::to_string(1.0 + (i * 7) % 13) + "," +
                        std::to_string(0.01 * ((i * 5) % 11)));
    }
    return lines;
}

TEST(RunRoad, GivesTheNumbersOfTheScreensStepByStep)
{
    ScratchDir scratch;
    WriteDataFile(scratch.File("s.txt"), 3, SiSounding(200, 0.02f));
    const RoadOptions options{.path = scratch.File("s.txt"), .dataUnits = DataSI, .graphUnits = GraphEnglish, .titleLines = 3};
    Declarations viaRoad;
    viaRoad.NumLines = 4000;  // stale state the road must not see
    ASSERT_EQ(RunRoad(options, viaRoad).status, RoadStatus::Done);

    // What the open-file screen, the project information OK, the CPT data screen and
    // a results view do one after the other.
    Declarations viaScreens;
    FileChannels files;
    viaScreens.NumTitleLines = 3;
    viaScreens.DataUnits = DataSI;
    viaScreens.GraphUnits = GraphEnglish;
    viaScreens.DataFileName = options.path;
    viaScreens.FileNum = files.FreeFile();
    ASSERT_EQ(LoadDataFile(viaScreens, files).outcome, ReadOutcome::Loaded);
    ConvertToGraphUnits(viaScreens);
    CleanReadings(viaScreens);
    RunClassificationPipeline(viaScreens);

    EXPECT_EQ(viaRoad.NumLines, 200);
    EXPECT_EQ(viaRoad.DataUnits, DataEnglish);
    ASSERT_EQ(viaRoad.NumIntervals, viaScreens.NumIntervals);
    for (const auto array : {&Declarations::IntDepth, &Declarations::IntQTip, &Declarations::IntQSleeve,
                             &Declarations::IntRatio, &Declarations::IntU, &Declarations::IntV,
                             &Declarations::IntProb1, &Declarations::IntProb2, &Declarations::IntProb3})
        EXPECT_EQ(std::memcmp((viaRoad.*array).data(), (viaScreens.*array).data(), sizeof(float) * viaRoad.NumIntervals), 0);
}

}  // namespace
}  // namespace pemlo
