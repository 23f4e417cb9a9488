// The interval grid: thickness from the units, the whole count of intervals down to
// the last reading (with the stored thickness), and what each failure leaves behind.
#include <gtest/gtest.h>

#include "classify/BuildIntervalGrid.h"
#include "core/Declarations.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

TEST(BuildIntervalGrid, CountsWholeIntervalsOfTheStoredThickness)
{
    struct Case {
        Integer units, lines;
        float lastDepth, size;
        int intervals;  // 7, as before the build, when it fails before the count
        int error;
    } const cases[] = {
        {DataSI, 3, 20.0f, 0.1f, 199, 0},  // 0.1 is stored slightly above one tenth
        {DataSI, 3, 3.0f, 0.1f, 29, 0},
        {DataEnglish, 3, 10.0f, 0.328f, 30, 0},
        {DataEnglish, 3, 3.28f, 0.328f, 9, 0},
        {DataMilliVolts, 3, 3.0f, 0.1f, 29, 0},
        {DataSI, 3, 3276.79f, 0.1f, 32767, 0},
        {DataSI, 3, 0.15f, 0.1f, 1, 0},
        {DataSI, 3, 0.05f, 0.1f, 0, ErrSubscriptOutOfRange},    // no whole interval
        {DataSI, 3, -0.05f, 0.1f, -1, ErrSubscriptOutOfRange},  // floor, not truncation
        {DataEnglish, 0, 1.0f, 0.328f, 7, ErrSubscriptOutOfRange},  // no readings: no last depth
        {DataSI, 3, 3276.8f, 0.1f, 7, ErrOverflow},             // quotient 32768
        {DataEnglish, 3, 10748.0f, 0.328f, 7, ErrOverflow},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "units " << c.units << ", last depth " << c.lastDepth);
        Declarations d;
        d.DataUnits = c.units;
        d.NumLines = c.lines;
        d.Depth[1] = 99.0f;  // only the last reading counts, deepest or not
        d.Depth[3] = c.lastDepth;
        d.NumIntervals = 7;
        int error = 0;
        try { BuildIntervalGrid(d); } catch (const RunTimeError& e) { error = e.Number(); }
        EXPECT_EQ(error, c.error);
        EXPECT_EQ(d.IntervalSize, c.size);
        EXPECT_EQ(d.NumIntervals, c.intervals);
        for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntReserve,
                                 &d.IntProb1, &d.IntProb2, &d.IntProb3, &d.IntU, &d.IntV})
            EXPECT_EQ(a->Size(), c.error ? 0 : c.intervals);
    }
}

}  // namespace
}  // namespace pemlo
