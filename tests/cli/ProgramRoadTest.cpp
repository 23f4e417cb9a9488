// The road of one sounding in one call: the same numbers as the screens' steps, the
// routing to the graph units, and records that never share anything.
#include <cstring>
#include <ostream>
#include <string>
#include <thread>
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

struct RoutingCase {
    const char* name;
    Integer dataUnits;
    Integer graphUnits;
    Integer dataUnitsAfter;
    float depthAfter;  // of a reading at depth 30 in the file's units
};

void PrintTo(const RoutingCase& c, std::ostream* os) { *os << c.name; }

class RoutingToGraphUnits : public ::testing::TestWithParam<RoutingCase> {};

TEST_P(RoutingToGraphUnits, ConvertsOnlyWhereTheUnitsDiffer)
{
    const RoutingCase& c = GetParam();
    Declarations d;
    d.NumLines = 1;
    d.Depth[1] = 30.0f;
    d.DataUnits = c.dataUnits;
    d.GraphUnits = c.graphUnits;
    ConvertToGraphUnits(d);
    EXPECT_EQ(d.DataUnits, c.dataUnitsAfter);
    EXPECT_FLOAT_EQ(d.Depth[1], c.depthAfter);
    ConvertToGraphUnits(d);  // a second confirmation converts nothing more
    EXPECT_FLOAT_EQ(d.Depth[1], c.depthAfter);
}

INSTANTIATE_TEST_SUITE_P(Units, RoutingToGraphUnits,
                         ::testing::Values(RoutingCase{"EnglishAsIs", DataEnglish, GraphEnglish, DataEnglish, 30.0f},
                                           RoutingCase{"EnglishToSI", DataEnglish, GraphSI, DataSI, 9.144f},
                                           RoutingCase{"SIToEnglish", DataSI, GraphEnglish, DataEnglish, 98.4252f},
                                           RoutingCase{"SIAsIs", DataSI, GraphSI, DataSI, 30.0f},
                                           // millivolts wait for the cone factors
                                           RoutingCase{"MilliVoltsWait", DataMilliVolts, GraphSI, DataMilliVolts, 30.0f}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(DefaultGraphUnits, FollowTheDataUnitsAsTheOpenFileScreenSetsThem)
{
    EXPECT_EQ(DefaultGraphUnits(DataEnglish), GraphEnglish);
    EXPECT_EQ(DefaultGraphUnits(DataSI), GraphSI);
    EXPECT_EQ(DefaultGraphUnits(DataMilliVolts), GraphEnglish);
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

void ExpectSameIntervals(const Declarations& a, const Declarations& b)
{
    ASSERT_EQ(a.NumIntervals, b.NumIntervals);
    const IntervalArray Declarations::*arrays[] = {&Declarations::IntDepth, &Declarations::IntQTip,
                                                   &Declarations::IntQSleeve, &Declarations::IntRatio,
                                                   &Declarations::IntU, &Declarations::IntV,
                                                   &Declarations::IntProb1, &Declarations::IntProb2,
                                                   &Declarations::IntProb3};
    for (const auto array : arrays)
        EXPECT_EQ(std::memcmp((a.*array).data(), (b.*array).data(), sizeof(float) * a.NumIntervals), 0);
}

TEST(RunRoad, GivesTheNumbersOfTheScreensStepByStep)
{
    ScratchDir scratch;
    WriteDataFile(scratch.File("s.txt"), 3, SiSounding(200, 0.02f));
    RoadOptions options;
    options.path = scratch.File("s.txt");
    options.dataUnits = DataSI;
    options.graphUnits = GraphEnglish;
    options.titleLines = 3;
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
    ExpectSameIntervals(viaRoad, viaScreens);
}

TEST(RunRoad, RoadsOnSeveralThreadsShareNothing)
{
    ScratchDir scratch;
    std::vector<RoadOptions> options(6);
    for (std::size_t i = 0; i < options.size(); ++i) {
        options[i].path = scratch.File(std::to_string(i).append(".txt"));
        options[i].dataUnits = DataSI;
        WriteDataFile(options[i].path, 10, SiSounding(300 + 250 * static_cast<int>(i), 0.02f));
    }
    std::vector<Declarations> alone(options.size());
    for (std::size_t i = 0; i < options.size(); ++i) ASSERT_EQ(RunRoad(options[i], alone[i]).status, RoadStatus::Done);

    std::vector<Declarations> together(options.size());
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < options.size(); ++i)
            threads.emplace_back([&, i] { RunRoad(options[i], together[i]); });
    }
    for (std::size_t i = 0; i < options.size(); ++i) ExpectSameIntervals(together[i], alone[i]);
}

}  // namespace
}  // namespace pemlo
