// Unit conversions of the readings and of the interval arrays: the published
// figures, the units recorded afterwards, and what a failure leaves behind.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <tuple>

#include "classify/PrintedDigits.h"
#include "core/Declarations.h"
#include "input/Module_Units.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

// The procedures on the readings, with the default cone factors where they take any.
void MvEnglish(Declarations& d) { float tip = 50.0f, sleeve = 0.5f; MilliVoltsToEnglish(d, tip, sleeve); }
void MvSI(Declarations& d) { float tip = 50.0f, sleeve = 0.5f; MilliVoltsToSI(d, tip, sleeve); }

int ErrorOf(const std::function<void()>& step)
{
    try { step(); } catch (const RunTimeError& e) { return e.Number(); }
    return 0;
}

// Each case converts one entry of both the readings and the intervals, then nothing at
// all; the readings' procedures record the units, the intervals' ones leave DataUnits alone.
TEST(ModuleUnits, ConversionsReachThePublishedFigures)
{
    struct Case {
        const char* name; void (*convert)(Declarations&); bool intervals;
        float depth, tip, sleeve;
        std::string depthOut, tipOut, sleeveOut;  // as printed
        Integer unitsAfter;
    } const cases[] = {
        {"mV to English", MvEnglish, false, 10, 1, 1, "32.8084", "522.1387", "5.221387", DataEnglish},
        {"mV to SI", MvSI, false, 10, 1, 1, "10", "50", "0.5", DataSI},
        {"SI to English", SIToEnglish, false, 1, 1, 1, "3.28084", "10.44277", "10.44277", DataEnglish},
        {"English to SI", EnglishToSI, false, 30, 10.44277f, 10.44277f, "9.144", "1.0", "1.0", DataSI},
        {"intervals English to metric", IntervalsEnglishToMetric, true, 10, 100, 100, "3.048", "97.64860", "97.64860", 7},
        {"intervals metric to English", IntervalsMetricToEnglish, true, 3.048f, 97.6486f, 97.6486f, "10.0000", "100.0000", "100.0000", 7},
        {"intervals SI to English", IntervalsSIToEnglish, true, 1, 1, 1, "3.28084", "10.44277", "10.44277", 7},
        {"intervals English to SI", IntervalsEnglishToSI, true, 3.28084f, 10.44277f, 10.44277f, "1.00000", "1.00000", "1.00000", 7},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Declarations d;
        d.DataUnits = 7;  // anything: the procedures do not look at it
        d.NumLines = 1;
        d.NumIntervals = 1;
        for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve}) a->Allocate(1);
        d.Depth[1] = d.IntDepth[1] = c.depth;
        d.Q_Tip[1] = d.IntQTip[1] = c.tip;
        d.Q_Sleeve[1] = d.IntQSleeve[1] = c.sleeve;
        c.convert(d);
        EXPECT_PRINTS_AS(c.intervals ? d.IntDepth[1] : d.Depth[1], c.depthOut);
        EXPECT_PRINTS_AS(c.intervals ? d.IntQTip[1] : d.Q_Tip[1], c.tipOut);
        EXPECT_PRINTS_AS(c.intervals ? d.IntQSleeve[1] : d.Q_Sleeve[1], c.sleeveOut);
        EXPECT_EQ(c.intervals ? d.Depth[1] : d.IntDepth[1], c.depth);  // the other arrays are left alone
        EXPECT_EQ(d.DataUnits, c.unitsAfter);
        EXPECT_EQ(d.UnitIndex, 2);

        Declarations empty;  // nothing to convert: no entry is touched, the units are still recorded
        empty.DataUnits = 7;
        empty.Depth[1] = 5.0f;
        c.convert(empty);
        EXPECT_EQ(std::tuple(empty.DataUnits, empty.UnitIndex, empty.Depth[1]), std::tuple(c.unitsAfter, Integer{1}, 5.0f));
    }
}

// An enormous cone factor overflows at the third reading: the first two are converted,
// the third and fourth are as loaded, and the units are not recorded.
TEST(ModuleUnits, OverflowLeavesAPartlyConvertedSounding)
{
    for (const bool toEnglish : {true, false}) {
        Declarations d;
        d.DataUnits = DataMilliVolts;
        d.NumLines = 4;
        const float tips[] = {1.0f, 2.0f, 1e30f, 3.0f};
        for (int k = 1; k <= 4; ++k) std::tie(d.Depth[k], d.Q_Tip[k], d.Q_Sleeve[k]) = std::tuple(float(k), tips[k - 1], 1.0f);
        float tip = 1e10f, sleeve = 0.5f;
        EXPECT_EQ(ErrorOf([&] { toEnglish ? MilliVoltsToEnglish(d, tip, sleeve) : MilliVoltsToSI(d, tip, sleeve); }), ErrOverflow);
        EXPECT_EQ(d.UnitIndex, 3);
        EXPECT_EQ(d.DataUnits, DataMilliVolts);
        EXPECT_FLOAT_EQ(d.Depth[2], toEnglish ? 2.0f * 3.28084f : 2.0f);
        EXPECT_NE(d.Q_Tip[2], 2.0f);
        EXPECT_EQ((std::array{d.Depth[3], d.Q_Tip[3], d.Q_Sleeve[3], d.Q_Tip[4]}), (std::array{3.0f, 1e30f, 1.0f, 3.0f}));
    }
}

// The running index is 16-bit: past index 4000 there is no reading (error 9), and a
// count of 32767 intervals converts every one of them before its increment overflows.
TEST(ModuleUnits, RunningIndexLimits)
{
    Declarations d;
    d.NumLines = 4001;
    d.Depth[4000] = 1.0f;
    EXPECT_EQ(ErrorOf([&] { SIToEnglish(d); }), ErrSubscriptOutOfRange);
    EXPECT_EQ(d.UnitIndex, 4001);
    EXPECT_FLOAT_EQ(d.Depth[4000], 3.28084f);
    EXPECT_EQ(d.DataUnits, 0);

    d.NumIntervals = 32767;
    for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve}) a->Allocate(32767);
    d.IntQTip[32767] = 1.0f;
    EXPECT_EQ(ErrorOf([&] { IntervalsSIToEnglish(d); }), ErrOverflow);
    EXPECT_EQ(d.UnitIndex, 32767);
    EXPECT_FLOAT_EQ(d.IntQTip[32767], 10.44277f);
}

}  // namespace
}  // namespace pemlo
