// The program against the oracle, bit for bit: every generated sounding takes the
// screens' road (conversion to the graph units, cleaning, grid, means, ratio,
// classification) through both, and the two must agree on every stored value, every
// counter and the run-time error, including where a failure leaves things half done.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

#include "classify/ReadingSteps.h"
#include "core/Declarations.h"
#include "road/ProgramRoad.h"
#include "oracle/Oracle.h"
#include "oracle/SoundingGenerator.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

using oracle::Record;
using oracle::Sounding;

struct Outcome { int error = 0; std::string step = "done"; Integer cleanIndex = 0; };

template <class Step>
bool Try(Outcome& out, const char* step, Step run)
{
    try { run(); return true; }
    catch (const RunTimeError& e) { out.error = e.Number(); }
    catch (const oracle::Fault& f) { out.error = f.number; }
    out.step = step;
    return false;
}

// A second load overwrites only the readings it has: both records keep the rest.
template <class Rec>
void Load(Rec& r, float* depth, float* tip, float* sleeve, const Sounding& s)
{
    r.NumLines = s.numLines;
    r.DataUnits = s.dataUnits;
    std::copy(s.depth.begin(), s.depth.end(), depth);
    std::copy(s.tip.begin(), s.tip.end(), tip);
    std::copy(s.sleeve.begin(), s.sleeve.end(), sleeve);
}

Outcome RunProgram(Declarations& d, const Sounding& s)
{
    Load(d, d.Depth.data(), d.Q_Tip.data(), d.Q_Sleeve.data(), s);
    d.GraphUnits = s.graphUnits;
    Outcome out;
    float tipFactor = s.tipFactor, sleeveFactor = s.sleeveFactor;
    // The screens' own routing: the cone factors' screen for millivolts, the project
    // information's OK for the rest.
    const bool converted = Try(out, "conversion", [&] {
        d.DataUnits == DataMilliVolts ? ConvertMilliVolts(d, tipFactor, sleeveFactor) : ConvertToGraphUnits(d);
    });
    if (converted && (!s.cleaned || Try(out, "cleaning", [&] { CleanReadings(d, out.cleanIndex); })))
        Try(out, "pipeline", [&] { RunClassificationPipeline(d); });
    return out;
}

Outcome RunOracle(Record& r, const Sounding& s)
{
    Load(r, r.Depth.data(), r.Q_Tip.data(), r.Q_Sleeve.data(), s);
    Outcome out;
    if (!Try(out, "conversion", [&] { oracle::ConvertReadings(r, s.graphUnits, s.tipFactor, s.sleeveFactor); }))
        return out;
    const bool cleaned = !s.cleaned || Try(out, "cleaning", [&] { oracle::CleanReadings(r); });
    out.cleanIndex = r.CleanIndex;
    if (cleaned) Try(out, "pipeline", [&] { oracle::RunClassificationPipeline(r); });
    return out;
}

// Bitwise equality, reporting the first index that differs.
void ExpectSameBits(const char* name, const float* program, int size, const std::vector<float>& expected)
{
    ASSERT_EQ(size, static_cast<int>(expected.size())) << name << " size";
    for (std::size_t i = 0; i < expected.size(); ++i)
        if (std::memcmp(&program[i], &expected[i], sizeof(float)) != 0) {
            ADD_FAILURE() << name << "(" << i + 1 << "): program " << program[i] << ", oracle " << expected[i];
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
    const auto interval = [](const IntervalArray& a) { return std::pair(a.data(), a.Size()); };
    const std::tuple<const char*, std::pair<const float*, int>, const std::vector<float>&> arrays[] = {
        {"Depth", {d.Depth.data(), d.Depth.Bound()}, r.Depth}, {"Q_Tip", {d.Q_Tip.data(), d.Q_Tip.Bound()}, r.Q_Tip},
        {"Q_Sleeve", {d.Q_Sleeve.data(), d.Q_Sleeve.Bound()}, r.Q_Sleeve}, {"Ratio", {d.Ratio.data(), d.Ratio.Bound()}, r.Ratio},
        {"IntDepth", interval(d.IntDepth), r.IntDepth},       {"IntQTip", interval(d.IntQTip), r.IntQTip},
        {"IntQSleeve", interval(d.IntQSleeve), r.IntQSleeve}, {"IntRatio", interval(d.IntRatio), r.IntRatio},
        {"IntReserve", interval(d.IntReserve), r.IntReserve}, {"IntProb1", interval(d.IntProb1), r.IntProb1},
        {"IntProb2", interval(d.IntProb2), r.IntProb2},       {"IntProb3", interval(d.IntProb3), r.IntProb3},
        {"IntU", interval(d.IntU), r.IntU},                   {"IntV", interval(d.IntV), r.IntV},
    };
    for (const auto& [name, program, expected] : arrays) ExpectSameBits(name, program.first, program.second, expected);
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
    if (s.cleaned) { EXPECT_EQ(program.cleanIndex, expected.cleanIndex); }
    ExpectSameState(d, r);
    return expected;
}

TEST(OracleComparison, GeneratedSoundingsAgreeBitForBit)
{
    oracle::SoundingGenerator generator(20261123);
    std::map<std::string, int> outcomes;
    Declarations d;
    Record r;
    for (int number = 1; number <= 3000 && !HasFailure(); ++number) {
        // Now and then fresh records; otherwise the last run's state stays.
        if (number % 3 == 1) d = Declarations{}, r = Record{};
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

// Soundings at the limits the generator does not reach, each with the end the road
// must come to; the last two on the wider record of an imported sounding.
TEST(OracleComparison, SoundingsAtTheLimits)
{
    // refineIndex: where the averaging stopped; 0 when it did not run
    struct Case {
        const char* name; int n; float top, spacing; std::string step; int error, refineIndex, bound;
        std::int16_t graphUnits = 1;
        bool cleaned = false;
    };
    const Case cases[] = {
        {"4001 claimed, English graphs: the conversion stops at reading 4001", 4001, 0.005f, 0.005f, "conversion",
         ErrSubscriptOutOfRange, 0, MaxReadings, 0},
        {"4001 claimed, cleaned: the cleaning stops at reading 4001", 4001, 0.005f, 0.005f, "cleaning",
         ErrSubscriptOutOfRange, 0, MaxReadings, 1, true},
        {"4001 claimed: the grid finds no last depth", 4001, 0.005f, 0.005f, "pipeline", ErrSubscriptOutOfRange, 0,
         MaxReadings},
        {"6000 imported readings, the last at 30 m", 6000, 0.005f, 0.005f, "done", 0, 300, MaxImportedReadings},
        {"32767 imported readings, the most a sounding holds", 32767, 0.01f, 0.01f, "done", 0, 3277, MaxImportedReadings},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Sounding s = oracle::SoundingGenerator::Regular(std::min(c.n, c.bound), c.top, c.spacing, DataSI);
        s.numLines = static_cast<Integer>(c.n);
        s.graphUnits = c.graphUnits;
        s.cleaned = c.cleaned;
        Declarations d;
        Record r;
        if (c.bound != MaxReadings) d.SetReadingBound(c.bound);
        for (auto* a : {&r.Depth, &r.Q_Tip, &r.Q_Sleeve, &r.Ratio}) a->resize(static_cast<std::size_t>(c.bound));
        const Outcome o = Compare(d, r, s, 0);
        EXPECT_EQ(d.RefineIndex, c.refineIndex);
        EXPECT_EQ(o.step, c.step);
        EXPECT_EQ(o.error, c.error);
    }
}

}  // namespace
}  // namespace pemlo
