#include "classify/ReadingSteps.h"

#include "classify/BuildIntervalGrid.h"
#include "classify/Classify_Pemlo01.h"
#include "classify/RefineLayers.h"
#include "runtime/Arith.h"

namespace pemlo {

namespace {
// Friction ratios above 20 percent are held at 20; exactly 20 stays as it is.
constexpr float RatioCap = 20.0f;
}  // namespace

void CleanReadings(Declarations& d, Integer& index)
{
    const Integer count = d.NumLines;
    index = 1;
    if (count < 1) return;
    while (true) {
        const int i = index;
        // Every later screen sees the cleaned values: qc of 1.0 where it was zero or
        // negative, so no ratio further down divides by zero.
        if (d.Q_Tip[i] <= 0.0f) d.Q_Tip[i] = 1.0f;
        if (d.Q_Sleeve[i] < 0.0f) d.Q_Sleeve[i] = 0.0f;
        d.Ratio[i] = ToSingle(Div(static_cast<double>(d.Q_Sleeve[i]) * 100.0, d.Q_Tip[i]));
        if (d.Ratio[i] > RatioCap) d.Ratio[i] = RatioCap;
        Increment(index);
        if (index > count) return;
    }
}

void CleanReadings(Declarations& d)
{
    Integer index = 0;
    CleanReadings(d, index);
}

void ComputeIntervalRatio(Declarations& d)
{
    const Integer count = d.NumIntervals;
    if (count < 1) return;
    // A 16-bit running index like every loop of the program: 32767 intervals overflow
    // it after the last one.
    Integer i = 1;
    while (true) {
        // Division first, then the percent: the order changes the last bit. A mean tip
        // resistance of 0 is not guarded here and stops the view (error 11).
        const float sleeve = d.IntQSleeve[i];
        const float ratio = ToSingle(Div(sleeve, d.IntQTip[i]) * 100.0);
        float& stored = d.IntRatio[i];
        stored = ratio > RatioCap ? RatioCap : ratio;
        Increment(i);
        if (i > count) return;
    }
}

void RunClassificationPipeline(Declarations& d)
{
    BuildIntervalGrid(d);
    AverageIntervals(d);
    ComputeIntervalRatio(d);
    ClassifySoil(d);
}

}  // namespace pemlo
