// Unit conversions of the readings and of the interval arrays: the published
// figures, the units recorded afterwards, and what a failure leaves behind.
#include <gtest/gtest.h>

#include <cfloat>
#include <functional>
#include <string>

#include "classify/PrintedDigits.h"
#include "core/Declarations.h"
#include "input/Module_Units.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

struct Reading {
    float depth, tip, sleeve;
};

// The procedures on the readings, with the default cone factors where they take any.
using ReadingConversion = std::function<void(Declarations&)>;
void MvEnglish(Declarations& d) { float tip = 50.0f, sleeve = 0.5f; MilliVoltsToEnglish(d, tip, sleeve); }
void MvSI(Declarations& d) { float tip = 50.0f, sleeve = 0.5f; MilliVoltsToSI(d, tip, sleeve); }

struct ReadingCase {
    const char* name;
    ReadingConversion convert;
    Reading in;
    std::string depth, tip, sleeve;  // as printed
    Integer unitsAfter;
};

TEST(ModuleUnits, ReadingsReachThePublishedFigures)
{
    const ReadingCase cases[] = {
        {"mV to English", MvEnglish, {10.0f, 1.0f, 1.0f}, "32.8084", "522.1387", "5.221387", DataEnglish},
        {"mV to SI", MvSI, {10.0f, 1.0f, 1.0f}, "10", "50", "0.5", DataSI},
        {"SI to English", SIToEnglish, {1.0f, 1.0f, 1.0f}, "3.28084", "10.44277", "10.44277", DataEnglish},
        {"English to SI", EnglishToSI, {30.0f, 10.44277f, 10.44277f}, "9.144", "1.0", "1.0", DataSI},
    };
    for (const ReadingCase& c : cases) {
        SCOPED_TRACE(c.name);
        Declarations d;
        d.DataUnits = 7;  // anything: the procedures do not look at it
        d.NumLines = 1;
        d.Depth[1] = c.in.depth;
        d.Q_Tip[1] = c.in.tip;
        d.Q_Sleeve[1] = c.in.sleeve;
        c.convert(d);
        EXPECT_PRINTS_AS(d.Depth[1], c.depth);
        EXPECT_PRINTS_AS(d.Q_Tip[1], c.tip);
        EXPECT_PRINTS_AS(d.Q_Sleeve[1], c.sleeve);
        EXPECT_EQ(d.DataUnits, c.unitsAfter);
        EXPECT_EQ(d.UnitIndex, 2);
    }
}

TEST(ModuleUnits, IntervalConversionsOfTheClassification)
{
    struct Case {
        const char* name;
        void (*convert)(Declarations&);
        float depth, force;
        std::string depthOut, forceOut;
    } const cases[] = {
        {"English to metric", IntervalsEnglishToMetric, 10.0f, 100.0f, "3.048", "97.64860"},
        {"metric to English", IntervalsMetricToEnglish, 3.048f, 97.6486f, "10.0000", "100.0000"},
        {"SI to English", IntervalsSIToEnglish, 1.0f, 1.0f, "3.28084", "10.44277"},
        {"English to SI", IntervalsEnglishToSI, 3.28084f, 10.44277f, "1.00000", "1.00000"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Declarations d;
        d.DataUnits = DataSI;
        d.NumIntervals = 2;
        for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve}) a->Allocate(2);
        d.IntDepth[2] = c.depth;
        d.IntQTip[2] = c.force;
        d.IntQSleeve[2] = c.force;
        c.convert(d);
        EXPECT_PRINTS_AS(d.IntDepth[2], c.depthOut);
        EXPECT_PRINTS_AS(d.IntQTip[2], c.forceOut);
        EXPECT_PRINTS_AS(d.IntQSleeve[2], c.forceOut);
        EXPECT_EQ(d.DataUnits, DataSI);
        EXPECT_EQ(d.UnitIndex, 3);
    }
}

// The published 29.9976 kg/cm2 of a 30.72 tsf mean is cut, not rounded, from the
// stored 29.99765.
TEST(ModuleUnits, ThirtyTsfEnterTheMethodInKilograms)
{
    Declarations d;
    d.NumIntervals = 1;
    for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve}) a->Allocate(1);
    d.IntQTip[1] = 30.72f;
    IntervalsEnglishToMetric(d);
    EXPECT_NEAR(d.IntQTip[1], 29.9976, 1e-4);
}

// Nothing to convert: the reading procedures still record their units, the interval
// procedures leave everything alone; no array entry is touched either way.
TEST(ModuleUnits, EmptyCountsTouchNoEntry)
{
    struct Case {
        ReadingConversion convert;
        Integer unitsAfter;
    } const cases[] = {{MvEnglish, DataEnglish}, {MvSI, DataSI}, {SIToEnglish, DataEnglish},
                       {EnglishToSI, DataSI}, {IntervalsSIToEnglish, 0}, {IntervalsEnglishToMetric, 0}};
    for (const Case& c : cases) {
        Declarations d;
        d.NumLines = 0;
        d.NumIntervals = 0;
        d.Depth[1] = 5.0f;
        d.Q_Tip[1] = 6.0f;
        c.convert(d);
        EXPECT_EQ(d.DataUnits, c.unitsAfter);
        EXPECT_EQ(d.UnitIndex, 1);
        EXPECT_EQ(d.Depth[1], 5.0f);
        EXPECT_EQ(d.Q_Tip[1], 6.0f);
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
        for (int k = 1; k <= 4; ++k) {
            d.Depth[k] = static_cast<float>(k);
            d.Q_Tip[k] = tips[k - 1];
            d.Q_Sleeve[k] = 1.0f;
        }
        float tip = 1e10f, sleeve = 0.5f;
        try {
            toEnglish ? MilliVoltsToEnglish(d, tip, sleeve) : MilliVoltsToSI(d, tip, sleeve);
            ADD_FAILURE() << "no overflow";
        } catch (const RunTimeError& e) {
            EXPECT_EQ(e.Number(), ErrOverflow);
        }
        EXPECT_EQ(d.UnitIndex, 3);
        EXPECT_EQ(d.DataUnits, DataMilliVolts);
        EXPECT_NE(d.Q_Tip[2], 2.0f);
        EXPECT_EQ(d.Q_Tip[3], 1e30f);
        EXPECT_EQ(d.Depth[3], 3.0f);
        EXPECT_EQ(d.Q_Sleeve[3], 1.0f);
        EXPECT_EQ(d.Q_Tip[4], 3.0f);
        EXPECT_FLOAT_EQ(d.Depth[2], toEnglish ? 2.0f * 3.28084f : 2.0f);
    }
}

// The running index is 16-bit: past index 4000 there is no reading (error 9), and a
// count of 32767 intervals converts every one of them before its increment overflows.
TEST(ModuleUnits, RunningIndexLimits)
{
    Declarations d;
    d.NumLines = 4001;
    d.Depth[4000] = 1.0f;
    try {
        SIToEnglish(d);
        ADD_FAILURE() << "index 4001 accepted";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrSubscriptOutOfRange);
    }
    EXPECT_EQ(d.UnitIndex, 4001);
    EXPECT_FLOAT_EQ(d.Depth[4000], 3.28084f);
    EXPECT_EQ(d.DataUnits, 0);

    Declarations big;
    big.NumIntervals = 32767;
    for (IntervalArray* a : {&big.IntDepth, &big.IntQTip, &big.IntQSleeve}) a->Allocate(32767);
    big.IntQTip[32767] = 1.0f;
    try {
        IntervalsSIToEnglish(big);
        ADD_FAILURE() << "the counter did not overflow";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrOverflow);
    }
    EXPECT_EQ(big.UnitIndex, 32767);
    EXPECT_FLOAT_EQ(big.IntQTip[32767], 10.44277f);
}

}  // namespace
}  // namespace pemlo
