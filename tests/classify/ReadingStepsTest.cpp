// The cleaning of the readings and the interval ratio the views compute.
#include <gtest/gtest.h>

#include "classify/ReadingSteps.h"
#include "core/Declarations.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

TEST(CleanReadings, GuardsAndRatio)
{
    struct Case {
        const char* name;
        float qc, fs;
        float qcAfter, fsAfter, ratio;
    } const cases[] = {
        {"zero qc becomes 1.0, ratio held at 20", 0.0f, 0.3f, 1.0f, 0.3f, 20.0f},
        {"zero qc, small fs: ratio fs x 100", 0.0f, 0.05f, 1.0f, 0.05f, 5.0f},
        {"negative qc and fs", -2.0f, -0.5f, 1.0f, 0.0f, 0.0f},
        {"exactly 20 stays", 5.0f, 1.0f, 5.0f, 1.0f, 20.0f},
        {"above 20 is held at 20", 1.0f, 0.200001f, 1.0f, 0.200001f, 20.0f},
        {"multiplied before the division", 3.0f, 0.1f, 3.0f, 0.1f,
         static_cast<float>(static_cast<double>(0.1f) * 100 / 3.0)},
    };
    Declarations d;
    d.NumLines = static_cast<Integer>(std::size(cases));
    for (int i = 1; i <= d.NumLines; ++i) {
        d.Q_Tip[i] = cases[i - 1].qc;
        d.Q_Sleeve[i] = cases[i - 1].fs;
    }
    Integer index = 0;
    CleanReadings(d, index);
    EXPECT_EQ(index, d.NumLines + 1);
    for (int i = 1; i <= d.NumLines; ++i) {
        SCOPED_TRACE(cases[i - 1].name);
        EXPECT_EQ(d.Q_Tip[i], cases[i - 1].qcAfter);
        EXPECT_EQ(d.Q_Sleeve[i], cases[i - 1].fsAfter);
        EXPECT_EQ(d.Ratio[i], cases[i - 1].ratio);
    }
}

TEST(CleanReadings, NoReadingBeyond4000)
{
    Declarations d;
    d.NumLines = 4001;
    Integer index = 0;
    EXPECT_THROW(CleanReadings(d, index), RunTimeError);
    EXPECT_EQ(index, 4001);
    EXPECT_EQ(d.Q_Tip[4000], 1.0f);
}

TEST(ComputeIntervalRatio, DivisionThenPercentHeldAt20)
{
    struct Case {
        float tip, sleeve, ratio;
    } const cases[] = {
        {57.5f, 0.45f, static_cast<float>(static_cast<double>(0.45f) / 57.5 * 100)},
        {3.0f, 0.1f, static_cast<float>(static_cast<double>(0.1f) / 3.0 * 100)},
        {1.0f, 0.2f, 20.0f},
        {1.0f, 0.3f, 20.0f},
        {2.0f, -0.5f, -25.0f},  // no lower limit
    };
    Declarations d;
    d.NumIntervals = static_cast<Integer>(std::size(cases));
    for (IntervalArray* a : {&d.IntQTip, &d.IntQSleeve, &d.IntRatio}) a->Allocate(d.NumIntervals);
    for (int i = 1; i <= d.NumIntervals; ++i) {
        d.IntQTip[i] = cases[i - 1].tip;
        d.IntQSleeve[i] = cases[i - 1].sleeve;
    }
    ComputeIntervalRatio(d);
    for (int i = 1; i <= d.NumIntervals; ++i) EXPECT_EQ(d.IntRatio[i], cases[i - 1].ratio) << i;
}

// A zero mean tip resistance is not guarded here: the intervals above get their ratio,
// the rest keep theirs.
TEST(ComputeIntervalRatio, ZeroTipDividesByZero)
{
    Declarations d;
    d.NumIntervals = 3;
    for (IntervalArray* a : {&d.IntQTip, &d.IntQSleeve, &d.IntRatio}) a->Allocate(3);
    d.IntQTip[1] = 10.0f;
    d.IntQSleeve[1] = 0.1f;
    d.IntQTip[2] = 0.0f;
    d.IntRatio[3] = 7.0f;
    try {
        ComputeIntervalRatio(d);
        ADD_FAILURE() << "no division error";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrDivisionByZero);
    }
    EXPECT_FLOAT_EQ(d.IntRatio[1], 1.0f);
    EXPECT_EQ(d.IntRatio[2], 0.0f);
    EXPECT_EQ(d.IntRatio[3], 7.0f);
}

}  // namespace
}  // namespace pemlo
