#include "oracle/Oracle.h"

#include <cmath>
#include <cstddef>

namespace pemlo::oracle {

namespace {

const int Overflow = 6;
const int Subscript = 9;
const int DivideByZero = 11;

float Store(double x)
{
    const float f = static_cast<float>(x);
    if (!std::isfinite(f)) throw Fault{Overflow};
    return f;
}

double Finite(double x)
{
    if (!std::isfinite(x)) throw Fault{Overflow};
    return x;
}

double Quotient(double a, double b)
{
    if (b == 0.0) throw Fault{DivideByZero};
    return Finite(a / b);
}

float& At(std::vector<float>& a, int i)
{
    if (i < 1 || i > static_cast<int>(a.size())) throw Fault{Subscript};
    return a[static_cast<std::size_t>(i - 1)];
}

// The end of a 16-bit For loop's body: counter + 1, overflowing beyond 32767.
void Next(std::int16_t& counter)
{
    if (counter == 32767) throw Fault{Overflow};
    ++counter;
}

// Factor kinds of the conversion tables.
enum class Op { Times, TimesInverse, Over };

float Convert(float v, Op op, double c)
{
    switch (op) {
    case Op::Times: return Store(Finite(v * c));
    case Op::TimesInverse: return Store(Finite(v * Quotient(1.0, c)));
    case Op::Over: return Store(Quotient(v, c));
    }
    return v;
}

void ConvertArrays(std::int16_t& index, std::int16_t count, std::vector<float>& depth,
                   std::vector<float>& tip, std::vector<float>& sleeve, Op depthOp, double depthC,
                   Op forceOp, double tipC, double sleeveC)
{
    index = 1;
    if (count < 1) return;
    for (index = 1; index <= count;) {
        const float d = Convert(At(depth, index), depthOp, depthC);
        const float q = Convert(At(tip, index), forceOp, tipC);
        const float s = Convert(At(sleeve, index), forceOp, sleeveC);
        At(depth, index) = d;
        At(tip, index) = q;
        At(sleeve, index) = s;
        Next(index);
    }
}

// Millivolts: the factor, then the divisor 0.09576.
float MilliVolts(float v, float factor, bool toTsf)
{
    const double product = static_cast<double>(v) * static_cast<double>(factor);
    return toTsf ? Store(Quotient(product, 0.09576)) : Store(Finite(product));
}

void MilliVoltLoop(Record& r, float tipFactor, float sleeveFactor, bool toEnglish)
{
    r.UnitIndex = 1;
    const std::int16_t count = r.NumLines;
    if (count >= 1) {
        for (r.UnitIndex = 1; r.UnitIndex <= count;) {
            const int k = r.UnitIndex;
            const float d = toEnglish ? Store(Finite(At(r.Depth, k) * 3.28084)) : At(r.Depth, k);
            const float q = MilliVolts(At(r.Q_Tip, k), tipFactor, toEnglish);
            const float s = MilliVolts(At(r.Q_Sleeve, k), sleeveFactor, toEnglish);
            At(r.Depth, k) = d;
            At(r.Q_Tip, k) = q;
            At(r.Q_Sleeve, k) = s;
            Next(r.UnitIndex);
        }
    }
    r.DataUnits = toEnglish ? 1 : 2;
}

void Allocate(std::vector<float>& a, int n)
{
    if (n < 1) throw Fault{Subscript};
    a.assign(static_cast<std::size_t>(n), 0.0f);
}

}  // namespace

void MilliVoltsToEnglish(Record& r, float tipFactor, float sleeveFactor)
{
    MilliVoltLoop(r, tipFactor, sleeveFactor, true);
}

void MilliVoltsToSI(Record& r, float tipFactor, float sleeveFactor)
{
    MilliVoltLoop(r, tipFactor, sleeveFactor, false);
}

void SIToEnglish(Record& r)
{
    ConvertArrays(r.UnitIndex, r.NumLines, r.Depth, r.Q_Tip, r.Q_Sleeve, Op::Times, 3.28084,
                  Op::Times, 10.44277, 10.44277);
    r.DataUnits = 1;
}

void EnglishToSI(Record& r)
{
    ConvertArrays(r.UnitIndex, r.NumLines, r.Depth, r.Q_Tip, r.Q_Sleeve, Op::TimesInverse, 3.28084,
                  Op::TimesInverse, 10.44277, 10.44277);
    r.DataUnits = 2;
}

void IntervalsSIToEnglish(Record& r)
{
    ConvertArrays(r.UnitIndex, r.NumIntervals, r.IntDepth, r.IntQTip, r.IntQSleeve, Op::Times,
                  3.28084, Op::Times, 10.44277, 10.44277);
}

void IntervalsEnglishToSI(Record& r)
{
    ConvertArrays(r.UnitIndex, r.NumIntervals, r.IntDepth, r.IntQTip, r.IntQSleeve,
                  Op::TimesInverse, 3.28084, Op::TimesInverse, 10.44277, 10.44277);
}

void IntervalsEnglishToMetric(Record& r)
{
    ConvertArrays(r.UnitIndex, r.NumIntervals, r.IntDepth, r.IntQTip, r.IntQSleeve, Op::Times,
                  0.3048, Op::Times, 0.976486, 0.976486);
}

void IntervalsMetricToEnglish(Record& r)
{
    ConvertArrays(r.UnitIndex, r.NumIntervals, r.IntDepth, r.IntQTip, r.IntQSleeve, Op::Over,
                  0.3048, Op::Over, 0.976486, 0.976486);
}

void CleanReadings(Record& r)
{
    const std::int16_t count = r.NumLines;
    r.CleanIndex = 1;
    if (count < 1) return;
    for (r.CleanIndex = 1; r.CleanIndex <= count;) {
        const int i = r.CleanIndex;
        if (At(r.Q_Tip, i) <= 0) At(r.Q_Tip, i) = 1.0f;
        if (At(r.Q_Sleeve, i) < 0) At(r.Q_Sleeve, i) = 0.0f;
        At(r.Ratio, i) = Store(Quotient(At(r.Q_Sleeve, i) * 100.0, At(r.Q_Tip, i)));
        if (At(r.Ratio, i) > 20) At(r.Ratio, i) = 20.0f;
        Next(r.CleanIndex);
    }
}

void BuildIntervalGrid(Record& r)
{
    if (r.DataUnits == 1)
        r.IntervalSize = 0.328f;
    else
        r.IntervalSize = 0.1f;
    const double quotient = Quotient(At(r.Depth, r.NumLines), r.IntervalSize);
    const double whole = std::floor(quotient);
    if (whole > 32767 || whole < -32768) throw Fault{Overflow};
    r.NumIntervals = static_cast<std::int16_t>(whole);
    Allocate(r.IntDepth, r.NumIntervals);
    Allocate(r.IntQTip, r.NumIntervals);
    Allocate(r.IntQSleeve, r.NumIntervals);
    Allocate(r.IntRatio, r.NumIntervals);
    Allocate(r.IntReserve, r.NumIntervals);
    Allocate(r.IntProb1, r.NumIntervals);
    Allocate(r.IntProb2, r.NumIntervals);
    Allocate(r.IntProb3, r.NumIntervals);
    Allocate(r.IntU, r.NumIntervals);
    Allocate(r.IntV, r.NumIntervals);
}

void AverageIntervals(Record& r)
{
    const float t = r.IntervalSize;
    float top;
    if (At(r.Depth, 1) <= t) {
        top = t;
        At(r.IntDepth, 1) = Store(Quotient(t, 2));
    } else {
        top = At(r.Depth, 1);
        At(r.IntDepth, 1) = Store(Quotient(t, 2) + At(r.Depth, 1));
        At(r.IntQTip, 1) = At(r.Q_Tip, 1);
        At(r.IntQSleeve, 1) = At(r.Q_Sleeve, 1);
    }
    const std::int16_t n = r.NumIntervals;
    for (r.RefineIndex = 2; r.RefineIndex <= n;) {
        const int j = r.RefineIndex;
        const float bottom = Store(static_cast<double>(t) + top);
        float tipSum = 0.0f;
        float sleeveSum = 0.0f;
        std::int16_t count = 0;
        for (int k = 1; k <= r.NumLines; ++k) {
            if (top < At(r.Depth, k) && At(r.Depth, k) <= bottom) {
                tipSum = Store(static_cast<double>(tipSum) + At(r.Q_Tip, k));
                sleeveSum = Store(static_cast<double>(sleeveSum) + At(r.Q_Sleeve, k));
                Next(count);
            }
        }
        At(r.IntDepth, j) = Store(static_cast<double>(t) + At(r.IntDepth, j - 1));
        if (count > 0) {
            At(r.IntQTip, j) = Store(Quotient(tipSum, count));
            At(r.IntQSleeve, j) = Store(Quotient(sleeveSum, count));
        } else {
            At(r.IntQTip, j) = At(r.IntQTip, j - 1);
            At(r.IntQSleeve, j) = At(r.IntQSleeve, j - 1);
        }
        top = Store(static_cast<double>(t) + top);
        Next(r.RefineIndex);
    }
    At(r.IntQTip, 1) = At(r.IntQTip, 2);
    At(r.IntQSleeve, 1) = At(r.IntQSleeve, 2);
}

void ComputeIntervalRatio(Record& r)
{
    std::int16_t i = 1;
    for (i = 1; i <= r.NumIntervals;) {
        At(r.IntRatio, i) = Store(Quotient(At(r.IntQSleeve, i), At(r.IntQTip, i)) * 100);
        if (At(r.IntRatio, i) > 20) At(r.IntRatio, i) = 20.0f;
        Next(i);
    }
}

void ClassifySoil(Record& r)
{
    if (r.DataUnits != 1) IntervalsSIToEnglish(r);
    IntervalsEnglishToMetric(r);
    r.ClassifyIndex = 1;
    const std::int16_t n = r.NumIntervals;
    for (r.ClassifyIndex = 1; r.ClassifyIndex <= n;) {
        const int i = r.ClassifyIndex;
        if (At(r.IntQTip, i) <= 0) At(r.IntQTip, i) = 1.0f;
        if (At(r.IntQSleeve, i) < 0) At(r.IntQSleeve, i) = 0.0f;
        const double L = Quotient(std::log(static_cast<double>(At(r.IntQTip, i))), std::log(10.0));
        const double R = At(r.IntRatio, i);
        const double x1 = 0.1539 * R + 0.887 * L - 3.35;
        const double x2 = -0.2957 * R + 0.4617 * L - 0.37;
        const double y1 = -0.269 * x1 + 0.759 * x2 - 2.96;
        const double y2 = -0.759 * x1 - 0.269 * x2 + 2.477;
        const double y3 = -11.345 * x1 + 3.795 * x2 + 15.202;
        const double y4 = -3.795 * x1 - 11.345 * x2 + 5.085;
        const double D = Finite(std::pow(y1, 2) + std::pow(y2, 2));
        const double U = Finite(Quotient(-(y1 * y3), D) - Quotient(y2 * y4, D));
        const double V = Finite(Quotient(y1 * y4, D) + 10 - Quotient(y2 * y3, D));
        At(r.IntU, i) = Store(U);
        At(r.IntV, i) = Store(V);
        if (-0.14 <= U && U <= 2.91) {
            At(r.IntProb1, i) = Store(0.0900763 * std::pow(U, 2) + 0.0741935 * U + 0.00132408);
            At(r.IntProb2, i) = Store(0.0611049 * std::pow(U, 3) - 0.499014 * std::pow(U, 2) +
                                      0.896769 * U + 0.147853);
            At(r.IntProb3, i) = Store(-0.0296526 * std::pow(U, 3) + 0.275413 * std::pow(U, 2) -
                                      0.841851 * U + 0.848617);
            if (At(r.IntProb1, i) < 0.0035) At(r.IntProb1, i) = Store(0.0035);
            if (At(r.IntProb2, i) < 0.0184) At(r.IntProb2, i) = Store(0.0184);
            if (At(r.IntProb3, i) < 0) At(r.IntProb3, i) = 0.0f;
        } else if (U < -0.14) {
            At(r.IntProb1, i) = Store(0.0035);
            At(r.IntProb2, i) = Store(0.0184);
            At(r.IntProb3, i) = Store(0.9781);
        } else {
            At(r.IntProb1, i) = Store(0.9771);
            At(r.IntProb2, i) = Store(0.0229);
            At(r.IntProb3, i) = 0.0f;
        }
        const double S = static_cast<double>(At(r.IntProb2, i)) + At(r.IntProb1, i) + At(r.IntProb3, i);
        At(r.IntProb1, i) = Store(Quotient(At(r.IntProb1, i) * 100.0, S));
        At(r.IntProb2, i) = Store(Quotient(At(r.IntProb2, i) * 100.0, S));
        At(r.IntProb3, i) = Store(Quotient(At(r.IntProb3, i) * 100.0, S));
        Next(r.ClassifyIndex);
    }
    IntervalsMetricToEnglish(r);
    if (r.DataUnits != 1) IntervalsEnglishToSI(r);
}

void RunClassificationPipeline(Record& r)
{
    BuildIntervalGrid(r);
    AverageIntervals(r);
    ComputeIntervalRatio(r);
    ClassifySoil(r);
}

}  // namespace pemlo::oracle
