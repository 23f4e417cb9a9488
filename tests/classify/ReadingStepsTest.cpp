// The cleaning of the readings and the interval ratio the views compute.
#include <gtest/gtest.h>

#include "classify/ReadingSteps.h"
#include "core/Declarations.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

float Percent(double fraction) { return static_cast<float>(fraction * 100); }

// Guards, the ratio multiplied before the division and held at 20, then the index
// check of a reading beyond the 4000 the arrays hold.
TEST(CleanReadings, GuardsRatioAndLastIndex)
{
    struct Case {
        float qc, fs, qcAfter, fsAfter, ratio;
    } const cases[] = {
        {0.0f, 0.3f, 1.0f, 0.3f, 20.0f},    // zero qc becomes 1.0, ratio held at 20
        {0.0f, 0.05f, 1.0f, 0.05f, 5.0f},
        {-2.0f, -0.5f, 1.0f, 0.0f, 0.0f},
        {5.0f, 1.0f, 5.0f, 1.0f, 20.0f},    // exactly 20 stays
        {1.0f, 0.200001f, 1.0f, 0.200001f, 20.0f},
        {3.0f, 0.1f, 3.0f, 0.1f, static_cast<float>(static_cast<double>(0.1f) * 100 / 3.0)},
    };
    Declarations d;
    d.NumLines = static_cast<Integer>(std::size(cases));
    for (int i = 1; i <= d.NumLines; ++i) d.Q_Tip[i] = cases[i - 1].qc, d.Q_Sleeve[i] = cases[i - 1].fs;
    Integer index = 0;
    CleanReadings(d, index);
    EXPECT_EQ(index, d.NumLines + 1);
    for (int i = 1; i <= d.NumLines; ++i) {
        EXPECT_EQ(d.Q_Tip[i], cases[i - 1].qcAfter) << i;
        EXPECT_EQ(d.Q_Sleeve[i], cases[i - 1].fsAfter) << i;
        EXPECT_EQ(d.Ratio[i], cases[i - 1].ratio) << i;
    }
    d.NumLines = 4001;
    EXPECT_THROW(CleanReadings(d, index), RunTimeError);
    EXPECT_EQ(index, 4001);
    EXPECT_EQ(d.Q_Tip[4000], 1.0f);
}

// Divided, then made a percentage; held at 20 above, with no lower limit.
TEST(ComputeIntervalRatio, DivisionThenPercentHeldAt20)
{
    const float cases[][3] = {{57.5f, 0.45f, Percent(static_cast<double>(0.45f) / 57.5)},
                              {3.0f, 0.1f, Percent(static_cast<double>(0.1f) / 3.0)},
                              {1.0f, 0.2f, 20.0f}, {1.0f, 0.3f, 20.0f}, {2.0f, -0.5f, -25.0f}};
    Declarations d;
    d.NumIntervals = static_cast<Integer>(std::size(cases));
    for (IntervalArray* a : {&d.IntQTip, &d.IntQSleeve, &d.IntRatio}) a->Allocate(d.NumIntervals);
    for (int i = 1; i <= d.NumIntervals; ++i) d.IntQTip[i] = cases[i - 1][0], d.IntQSleeve[i] = cases[i - 1][1];
    ComputeIntervalRatio(d);
    for (int i = 1; i <= d.NumIntervals; ++i) EXPECT_EQ(d.IntRatio[i], cases[i - 1][2]) << i;
}

}  // namespace
}  // namespace pemlo
