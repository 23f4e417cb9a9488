// Unit conversions of the readings and of the interval arrays: the published
// figures, the units recorded afterwards, and what a failure leaves behind.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "classify/PrintedDigits.h"
#include "core/Declarations.h"
#include "input/Module_Units.h"

namespace pemlo {
namespace {

// The procedures on the readings, with the default cone factors where they take any.
void MvEnglish(Declarations& d) { float tip = 50.0f, sleeve = 0.5f; MilliVoltsToEnglish(d, tip, sleeve); }
void MvSI(Declarations& d) { float tip = 50.0f, sleeve = 0.5f; MilliVoltsToSI(d, tip, sleeve); }

// Each case converts one entry of both the readings and the intervals; the readings'
// procedures record the units, the intervals' ones leave DataUnits alone. (An empty
// sounding and every failure: OracleComparison.)
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

    }
}

}  // namespace
}  // namespace pemlo
