// The program against the oracle, bit for bit: every generated sounding takes the
// screens' road (conversion to the graph units, cleaning, grid, means, ratio,
// classification) through both, and the two must agree on every stored value, every
// counter and the run-time error, including where a failure leaves things half done.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <string>

#include "classify/BuildIntervalGrid.h"
#include "classify/ReadingSteps.h"
#include "classify/RefineLayers.h"
#include "core/Declarations.h"
#include "input/Module_FileData.h"
#include "input/Module_Units.h"
#include "oracle/Oracle.h"
#include "oracle/SoundingGenerator.h"
#include "runtime/FileChannels.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

using oracle::Record;
using oracle::Sounding;

struct Outcome {
    int error = 0;
    std::string step = "done";
    Integer cleanIndex = 0;
    bool operator==(const Outcome&) const = default;
};

template <class Step>
bool Try(Outcome& out, const char* step, Step run)
{
    try {
        run();
        return true;
    } catch (const RunTimeError& e) {
        out.error = e.Number();
    } catch (const oracle::Fault& f) {
        out.error = f.number;
    }
    out.step = step;
    return false;
}

// A second load overwrites only the readings it has: both records keep the rest.
template <class Rec>
void Load(Rec& r, float* depth, float* tip, float* sleeve, const Sounding& s)
{
    r.NumLines = s.numLines;
    r.DataUnits = s.dataUnits;
    for (std::size_t k = 0; k < s.depth.size(); ++k) {
        depth[k] = s.depth[k];
        tip[k] = s.tip[k];
        sleeve[k] = s.sleeve[k];
    }
}

Outcome RunProgram(Declarations& d, const Sounding& s)
{
    Load(d, d.Depth.data(), d.Q_Tip.data(), d.Q_Sleeve.data(), s);
    d.GraphUnits = s.graphUnits;
    Outcome out;
    float tipFactor = s.tipFactor, sleeveFactor = s.sleeveFactor;
    const bool converted = Try(out, "conversion", [&] {
        if (d.DataUnits == DataMilliVolts)
            d.GraphUnits == GraphEnglish ? MilliVoltsToEnglish(d, tipFactor, sleeveFactor)
                                         : MilliVoltsToSI(d, tipFactor, sleeveFactor);
        else if (d.DataUnits == DataEnglish && d.GraphUnits != GraphEnglish)
            EnglishToSI(d);
        else if (d.DataUnits != DataEnglish && d.GraphUnits == GraphEnglish)
            SIToEnglish(d);
    });
    if (converted && (!s.cleaned || Try(out, "cleaning", [&] { CleanReadings(d, out.cleanIndex); })))
        Try(out, "pipeline", [&] { RunClassificationPipeline(d); });
    return out;
}

Outcome RunOracle(Record& r, const Sounding& s)
{
    Load(r, r.Depth.data(), r.Q_Tip.data(), r.Q_Sleeve.data(), s);
    Outcome out;
    const bool converted = Try(out, "conversion", [&] {
        if (r.DataUnits == 0)
            s.graphUnits == 0 ? oracle::MilliVoltsToEnglish(r, s.tipFactor, s.sleeveFactor)
                              : oracle::MilliVoltsToSI(r, s.tipFactor, s.sleeveFactor);
        else if (r.DataUnits == 1 && s.graphUnits != 0)
            oracle::EnglishToSI(r);
        else if (r.DataUnits != 1 && s.graphUnits == 0)
            oracle::SIToEnglish(r);
    });
    if (converted && s.cleaned) {
        const bool cleaned = Try(out, "cleaning", [&] { oracle::CleanReadings(r); });
        out.cleanIndex = r.CleanIndex;
        if (!cleaned) return out;
    }
    if (converted) Try(out, "pipeline", [&] { oracle::RunClassificationPipeline(r); });
    return out;
}

// Bitwise equality, reporting the first index that differs.
void ExpectSameBits(const char* name, const float* program, int programSize, const std::vector<float>& expected)
{
    ASSERT_EQ(programSize, static_cast<int>(expected.size())) << name << " size";
    if (programSize == 0 || std::memcmp(program, expected.data(), expected.size() * sizeof(float)) == 0) return;
    for (int i = 0; i < programSize; ++i)
        if (std::memcmp(&program[i], &expected[static_cast<std::size_t>(i)], sizeof(float)) != 0) {
            ADD_FAILURE() << name << "(" << i + 1 << "): program " << program[i] << ", oracle "
                          << expected[static_cast<std::size_t>(i)];
            return;
        }
}

void ExpectSameState(Declarations& d, const Record& r)
{
    EXPECT_EQ(d.DataUnits, r.DataUnits);
    EXPECT_EQ(d.NumIntervals, r.NumIntervals);
    EXPECT_EQ(std::memcmp(&d.IntervalSize, &r.IntervalSize, sizeof(float)), 0);
    EXPECT_EQ(d.UnitIndex, r.UnitIndex);
    EXPECT_EQ(d.RefineIndex, r.RefineIndex);
    EXPECT_EQ(d.ClassifyIndex, r.ClassifyIndex);
    ExpectSameBits("Depth", d.Depth.data(), MaxReadings, r.Depth);
    ExpectSameBits("Q_Tip", d.Q_Tip.data(), MaxReadings, r.Q_Tip);
    ExpectSameBits("Q_Sleeve", d.Q_Sleeve.data(), MaxReadings, r.Q_Sleeve);
    ExpectSameBits("Ratio", d.Ratio.data(), MaxReadings, r.Ratio);
    const std::pair<const char*, std::pair<IntervalArray*, const std::vector<float>*>> arrays[] = {
        {"IntDepth", {&d.IntDepth, &r.IntDepth}},     {"IntQTip", {&d.IntQTip, &r.IntQTip}},
        {"IntQSleeve", {&d.IntQSleeve, &r.IntQSleeve}}, {"IntRatio", {&d.IntRatio, &r.IntRatio}},
        {"IntReserve", {&d.IntReserve, &r.IntReserve}}, {"IntProb1", {&d.IntProb1, &r.IntProb1}},
        {"IntProb2", {&d.IntProb2, &r.IntProb2}},     {"IntProb3", {&d.IntProb3, &r.IntProb3}},
        {"IntU", {&d.IntU, &r.IntU}},                 {"IntV", {&d.IntV, &r.IntV}},
    };
    for (const auto& [name, pair] : arrays) ExpectSameBits(name, pair.first->data(), pair.first->Size(), *pair.second);
}

// Runs one sounding through both on records that may hold an earlier run's state.
Outcome Compare(Declarations& d, Record& r, const Sounding& s, int number)
{
    SCOPED_TRACE(testing::Message() << "sounding " << number << " (" << s.kind << ", units " << s.dataUnits
                                    << " to " << s.graphUnits << ", " << s.numLines << " readings)");
    const Outcome program = RunProgram(d, s);
    const Outcome expected = RunOracle(r, s);
    EXPECT_EQ(program.error, expected.error);
    EXPECT_EQ(program.step, expected.step);
    if (s.cleaned) {
        EXPECT_EQ(program.cleanIndex, expected.cleanIndex);
    }
    ExpectSameState(d, r);
    return expected;
}

TEST(OracleComparison, GeneratedSoundingsAgreeBitForBit)
{
    oracle::SoundingGenerator generator(20261123);
    std::map<std::string, int> outcomes;
    Declarations d;
    Record r;
    const int count = 3000;
    for (int number = 1; number <= count && !HasFailure(); ++number) {
        if (number % 3 == 1) {  // fresh records now and then; otherwise the last run's state stays
            d = Declarations{};
            r = Record{};
        }
        const Outcome o = Compare(d, r, generator.Next(), number);
        ++outcomes[o.step + " " + std::to_string(o.error)];
        if (o.error == ErrOverflow && r.RefineIndex == 32767) ++outcomes["averaging index overflow"];
    }
    for (const auto& [what, n] : outcomes) std::printf("  %-28s %d\n", what.c_str(), n);
    // The generator must reach every way the road can end, or the comparison proves little.
    for (const char* must : {"done 0", "conversion 6", "cleaning 6", "pipeline 6", "pipeline 9", "pipeline 11",
                             "averaging index overflow"})
        EXPECT_GT(outcomes[must], 0) << must;
}

// Soundings at the limits, each with the end the road must come to.
TEST(OracleComparison, SoundingsAtTheLimits)
{
    auto regular = [](int n, float top, float spacing) {
        Sounding s = oracle::SoundingGenerator::Regular(n, top, spacing, DataSI);
        s.cleaned = false;
        return s;
    };
    struct Case {
        const char* name;
        Sounding sounding;
        std::string step;
        int error;
        int refineIndex;  // where the averaging stopped; 0 when it did not run
    };
    std::vector<Case> cases = {
        {"deepest grid: the averaging index overflows after interval 32767",
         regular(2, 1.0f, 3275.79f), "pipeline", ErrOverflow, 32767},
        {"one interval: the repeat of interval 2 fails", regular(2, 0.05f, 0.1f), "pipeline",
         ErrSubscriptOutOfRange, 2},
        {"no readings", regular(0, 0.0f, 0.1f), "pipeline", ErrSubscriptOutOfRange, 0},
        {"4000 readings, the last at 20 m", regular(4000, 0.005f, 0.005f), "done", 0, 200},
        {"more readings claimed than exist: the grid finds no last depth",
         regular(4000, 0.005f, 0.005f), "pipeline", ErrSubscriptOutOfRange, 0},
    };
    cases[4].sounding.numLines = 4001;
    int number = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Declarations d;
        Record r;
        const Outcome o = Compare(d, r, c.sounding, ++number);
        EXPECT_EQ(d.RefineIndex, c.refineIndex);
        EXPECT_EQ(o.step, c.step);
        EXPECT_EQ(o.error, c.error);
    }
}

// The averaging on its own, told of more readings than exist: the scan of interval 2
// sums what it finds (here an overflow comes first when huge values are there) and
// then runs off the end of the readings.
TEST(OracleComparison, AveragingRunsOffTheReadings)
{
    for (const float tip : {5.0f, 3e38f}) {
        SCOPED_TRACE(tip);
        Sounding s = oracle::SoundingGenerator::Regular(4000, 0.005f, 0.005f, DataSI);
        s.tip[25] = s.tip[30] = tip;  // both in interval 2, (0.1, 0.2] m
        Declarations d;
        Record r;
        Load(d, d.Depth.data(), d.Q_Tip.data(), d.Q_Sleeve.data(), s);
        Load(r, r.Depth.data(), r.Q_Tip.data(), r.Q_Sleeve.data(), s);
        BuildIntervalGrid(d);
        oracle::BuildIntervalGrid(r);
        d.NumLines = r.NumLines = 4001;
        Outcome program, expected;
        Try(program, "averaging", [&] { AverageIntervals(d); });
        Try(expected, "averaging", [&] { oracle::AverageIntervals(r); });
        EXPECT_EQ(program.error, tip > 1e30f ? ErrOverflow : ErrSubscriptOutOfRange);
        EXPECT_EQ(program.error, expected.error);
        ExpectSameState(d, r);
    }
}

// Published soundings, read by the program's own reader, on both graph-unit routes.
TEST(OracleComparison, RealSoundingsAgreeBitForBit)
{
    const std::string dir = PEMLO_SOUNDINGS_DIR;
    if (dir.empty()) GTEST_SKIP() << "no soundings directory";
    int compared = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir)) {
        if (entry.path().extension() != ".txt") continue;
        Declarations loaded;
        FileChannels files;
        loaded.DataFileName = entry.path().string();
        loaded.NumTitleLines = 10;
        loaded.FileNum = files.FreeFile();
        ASSERT_EQ(LoadDataFile(loaded, files).outcome, ReadOutcome::Loaded) << loaded.DataFileName;
        for (const Integer graphUnits : {GraphSI, GraphEnglish}) {
            Sounding s;
            s.kind = entry.path().filename().string();
            s.dataUnits = DataSI;
            s.graphUnits = graphUnits;
            s.numLines = loaded.NumLines;
            for (int k = 1; k <= loaded.NumLines; ++k) {
                s.depth.push_back(loaded.Depth[k]);
                s.tip.push_back(loaded.Q_Tip[k]);
                s.sleeve.push_back(loaded.Q_Sleeve[k]);
            }
            Declarations d;
            Record r;
            EXPECT_EQ(Compare(d, r, s, ++compared).step, "done");
        }
    }
    EXPECT_GT(compared, 0);
}

}  // namespace
}  // namespace pemlo
