// The interval grid: thickness from the units, the whole count of intervals down to
// the last reading (with the stored thickness), and what each failure leaves behind.
#include <gtest/gtest.h>

#include <array>

#include "classify/BuildIntervalGrid.h"
#include "core/Declarations.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

std::array<IntervalArray*, 10> AllArrays(Declarations& d)
{
    return {&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntReserve,
            &d.IntProb1, &d.IntProb2, &d.IntProb3, &d.IntU, &d.IntV};
}

int BuildError(Declarations& d)
{
    try {
        BuildIntervalGrid(d);
    } catch (const RunTimeError& e) {
        return e.Number();
    }
    return 0;
}

TEST(BuildIntervalGrid, CountsWholeIntervalsOfTheStoredThickness)
{
    struct Case {
        Integer units;
        float lastDepth;
        float size;
        int intervals;  // when no error
        int error;
    } const cases[] = {
        {DataSI, 20.0f, 0.1f, 199, 0},  // 0.1 is stored slightly above one tenth
        {DataSI, 3.0f, 0.1f, 29, 0},
        {DataEnglish, 10.0f, 0.328f, 30, 0},
        {DataEnglish, 3.28f, 0.328f, 9, 0},
        {DataMilliVolts, 3.0f, 0.1f, 29, 0},
        {DataSI, 3276.79f, 0.1f, 32767, 0},
        {DataSI, 0.15f, 0.1f, 1, 0},
        {DataSI, 0.05f, 0.1f, 0, ErrSubscriptOutOfRange},        // no whole interval
        {DataSI, -0.05f, 0.1f, -1, ErrSubscriptOutOfRange},      // floor, not truncation
        {DataSI, 3276.8f, 0.1f, 7, ErrOverflow},                 // quotient 32768
        {DataEnglish, 10748.0f, 0.328f, 7, ErrOverflow},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "units " << c.units << ", last depth " << c.lastDepth);
        Declarations d;
        d.DataUnits = c.units;
        d.NumLines = 3;
        d.Depth[1] = 99.0f;  // only the last reading counts, deepest or not
        d.Depth[3] = c.lastDepth;
        d.NumIntervals = 7;
        EXPECT_EQ(BuildError(d), c.error);
        EXPECT_EQ(d.IntervalSize, c.size);
        EXPECT_EQ(d.NumIntervals, c.intervals);
        for (IntervalArray* a : AllArrays(d)) EXPECT_EQ(a->Size(), c.error ? 0 : c.intervals);
    }
}

TEST(BuildIntervalGrid, NoReadingsIsAnIndexError)
{
    Declarations d;
    d.DataUnits = DataEnglish;
    d.NumLines = 0;
    EXPECT_EQ(BuildError(d), ErrSubscriptOutOfRange);
    EXPECT_EQ(d.IntervalSize, 0.328f);
    EXPECT_EQ(d.NumIntervals, 0);
}

// A second build starts from nothing; a failing one keeps the arrays it found.
TEST(BuildIntervalGrid, EveryBuildStartsAfresh)
{
    Declarations d;
    d.DataUnits = DataSI;
    d.NumLines = 1;
    d.Depth[1] = 1.0f;
    BuildIntervalGrid(d);
    const auto arrays = AllArrays(d);
    for (int a = 0; a < 10; ++a) (*arrays[a])[3] = static_cast<float>(a + 1);
    BuildIntervalGrid(d);
    for (int a = 0; a < 10; ++a) {
        ASSERT_EQ(arrays[a]->Size(), 9);
        for (int i = 1; i <= 9; ++i) EXPECT_EQ((*arrays[a])[i], 0.0f);
        (*arrays[a])[3] = 5.0f;
    }
    d.Depth[1] = 0.01f;
    EXPECT_EQ(BuildError(d), ErrSubscriptOutOfRange);
    for (int a = 0; a < 10; ++a) EXPECT_EQ((*arrays[a])[3], 5.0f);
}

}  // namespace
}  // namespace pemlo
