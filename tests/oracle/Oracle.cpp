#include "oracle/Oracle.h"

#include <cmath>
#include <cstddef>

namespace pemlo::oracle {

namespace {

const int Overflow = 6, Subscript = 9, DivideByZero = 11;

// A value stored in single precision: anything beyond its range is an overflow.
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

// The step of a 16-bit For loop, after its body: counter + 1, overflowing beyond 32767.
void Next(std::int16_t& counter)
{
    if (counter == 32767) throw Fault{Overflow};
    ++counter;
}

const double FeetPerMetre = 3.28084, TsfPerMPa = 10.44277, MetresPerFoot = 0.3048, KgPerTsf = 0.976486;

enum class Op { Times, TimesInverse, Over };

auto Scale(Op op, double c)
{
    return [op, c](float v) {
        if (op == Op::Times) return Store(v * c);
        if (op == Op::TimesInverse) return Store(v * Quotient(1.0, c));
        return Store(Quotient(v, c));
    };
}

// One 16-bit loop over three parallel arrays: a row is converted whole, then stored.
template <class D, class T, class S>
void ConvertRows(std::int16_t& index, std::int16_t count, std::vector<float>& depth, std::vector<float>& tip,
                 std::vector<float>& sleeve, D toDepth, T toTip, S toSleeve)
{
    for (index = 1; index <= count; Next(index)) {
        const float d = toDepth(At(depth, index)), q = toTip(At(tip, index)), s = toSleeve(At(sleeve, index));
        At(depth, index) = d, At(tip, index) = q, At(sleeve, index) = s;
    }
}

// The same factor for every row, of the readings or of the intervals.
void ConvertRows(Record& r, bool intervals, Op op, double depthFactor, double forceFactor)
{
    const auto depth = Scale(op, depthFactor), force = Scale(op, forceFactor);
    if (intervals) ConvertRows(r.UnitIndex, r.NumIntervals, r.IntDepth, r.IntQTip, r.IntQSleeve, depth, force, force);
    if (!intervals) ConvertRows(r.UnitIndex, r.NumLines, r.Depth, r.Q_Tip, r.Q_Sleeve, depth, force, force);
}

// Millivolts: the factor, then for tsf the divisor 0.09576, with no rounding between.
auto MilliVolts(float factor, bool toTsf)
{
    return [factor, toTsf](float v) {
        const double product = static_cast<double>(v) * static_cast<double>(factor);
        return toTsf ? Store(Quotient(product, 0.09576)) : Store(product);
    };
}

void BuildIntervalGrid(Record& r)
{
    r.IntervalSize = r.DataUnits == 1 ? 0.328f : 0.1f;
    const double whole = std::floor(Quotient(At(r.Depth, r.NumLines), r.IntervalSize));
    if (whole > 32767 || whole < -32768) throw Fault{Overflow};
    r.NumIntervals = static_cast<std::int16_t>(whole);
    for (std::vector<float>* a : {&r.IntDepth, &r.IntQTip, &r.IntQSleeve, &r.IntRatio, &r.IntReserve,
                                  &r.IntProb1, &r.IntProb2, &r.IntProb3, &r.IntU, &r.IntV}) {
        if (r.NumIntervals < 1) throw Fault{Subscript};
        a->assign(static_cast<std::size_t>(r.NumIntervals), 0.0f);
    }
}

void AverageIntervals(Record& r)
{
    const float t = r.IntervalSize;
    // A first reading deeper than one interval starts the grid there, with its own values.
    const bool deep = At(r.Depth, 1) > t;
    float top = deep ? At(r.Depth, 1) : t;
    At(r.IntDepth, 1) = deep ? Store(Quotient(t, 2) + At(r.Depth, 1)) : Store(Quotient(t, 2));
    if (deep) At(r.IntQTip, 1) = At(r.Q_Tip, 1), At(r.IntQSleeve, 1) = At(r.Q_Sleeve, 1);
    for (r.RefineIndex = 2; r.RefineIndex <= r.NumIntervals; Next(r.RefineIndex)) {
        const int j = r.RefineIndex;
        const float bottom = Store(static_cast<double>(t) + top);
        float tipSum = 0.0f, sleeveSum = 0.0f;
        std::int16_t count = 0;
        for (int k = 1; k <= r.NumLines; ++k) {
            if (top < At(r.Depth, k) && At(r.Depth, k) <= bottom) {
                tipSum = Store(static_cast<double>(tipSum) + At(r.Q_Tip, k));
                sleeveSum = Store(static_cast<double>(sleeveSum) + At(r.Q_Sleeve, k));
                Next(count);
            }
        }
        At(r.IntDepth, j) = Store(static_cast<double>(t) + At(r.IntDepth, j - 1));
        At(r.IntQTip, j) = count > 0 ? Store(Quotient(tipSum, count)) : At(r.IntQTip, j - 1);
        At(r.IntQSleeve, j) = count > 0 ? Store(Quotient(sleeveSum, count)) : At(r.IntQSleeve, j - 1);
        top = Store(static_cast<double>(t) + top);
    }
    At(r.IntQTip, 1) = At(r.IntQTip, 2);
    At(r.IntQSleeve, 1) = At(r.IntQSleeve, 2);
}

void ComputeIntervalRatio(Record& r)
{
    for (std::int16_t i = 1; i <= r.NumIntervals; Next(i)) {
        At(r.IntRatio, i) = Store(Quotient(At(r.IntQSleeve, i), At(r.IntQTip, i)) * 100);
        if (At(r.IntRatio, i) > 20) At(r.IntRatio, i) = 20.0f;
    }
}

void ClassifyOne(Record& r, int i)
{
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
    float &p1 = At(r.IntProb1, i), &p2 = At(r.IntProb2, i), &p3 = At(r.IntProb3, i);
    if (-0.14 <= U && U <= 2.91) {
        p1 = Store(0.0900763 * std::pow(U, 2) + 0.0741935 * U + 0.00132408);
        p2 = Store(0.0611049 * std::pow(U, 3) - 0.499014 * std::pow(U, 2) + 0.896769 * U + 0.147853);
        p3 = Store(-0.0296526 * std::pow(U, 3) + 0.275413 * std::pow(U, 2) - 0.841851 * U + 0.848617);
        if (p1 < 0.0035) p1 = Store(0.0035);
        if (p2 < 0.0184) p2 = Store(0.0184);
        if (p3 < 0) p3 = 0.0f;
    } else if (U < -0.14) {
        p1 = Store(0.0035), p2 = Store(0.0184), p3 = Store(0.9781);
    } else {
        p1 = Store(0.9771), p2 = Store(0.0229), p3 = 0.0f;
    }
    const double S = static_cast<double>(p2) + p1 + p3;
    p1 = Store(Quotient(p1 * 100.0, S));
    p2 = Store(Quotient(p2 * 100.0, S));
    p3 = Store(Quotient(p3 * 100.0, S));
}

// In metres and kg/cm2 for the method, back to the units of the graphs after.
void ClassifySoil(Record& r)
{
    if (r.DataUnits != 1) ConvertRows(r, true, Op::Times, FeetPerMetre, TsfPerMPa);
    ConvertRows(r, true, Op::Times, MetresPerFoot, KgPerTsf);
    for (r.ClassifyIndex = 1; r.ClassifyIndex <= r.NumIntervals; Next(r.ClassifyIndex)) ClassifyOne(r, r.ClassifyIndex);
    ConvertRows(r, true, Op::Over, MetresPerFoot, KgPerTsf);
    if (r.DataUnits != 1) ConvertRows(r, true, Op::TimesInverse, FeetPerMetre, TsfPerMPa);
}

}  // namespace

void ConvertReadings(Record& r, std::int16_t graphUnits, float tipFactor, float sleeveFactor)
{
    if (r.DataUnits == 0) {
        const bool toEnglish = graphUnits == 0;
        const auto depth = [toEnglish](float v) { return toEnglish ? Store(v * FeetPerMetre) : v; };
        ConvertRows(r.UnitIndex, r.NumLines, r.Depth, r.Q_Tip, r.Q_Sleeve, depth, MilliVolts(tipFactor, toEnglish),
                    MilliVolts(sleeveFactor, toEnglish));
        r.DataUnits = toEnglish ? 1 : 2;
    } else if (r.DataUnits == 1 && graphUnits != 0) {
        ConvertRows(r, false, Op::TimesInverse, FeetPerMetre, TsfPerMPa);
        r.DataUnits = 2;
    } else if (r.DataUnits != 1 && graphUnits == 0) {
        ConvertRows(r, false, Op::Times, FeetPerMetre, TsfPerMPa);
        r.DataUnits = 1;
    }
}

void CleanReadings(Record& r)
{
    for (r.CleanIndex = 1; r.CleanIndex <= r.NumLines; Next(r.CleanIndex)) {
        const int i = r.CleanIndex;
        if (At(r.Q_Tip, i) <= 0) At(r.Q_Tip, i) = 1.0f;
        if (At(r.Q_Sleeve, i) < 0) At(r.Q_Sleeve, i) = 0.0f;
        At(r.Ratio, i) = Store(Quotient(At(r.Q_Sleeve, i) * 100.0, At(r.Q_Tip, i)));
        if (At(r.Ratio, i) > 20) At(r.Ratio, i) = 20.0f;
    }
}

void RunClassificationPipeline(Record& r)
{
    BuildIntervalGrid(r);
    AverageIntervals(r);
    ComputeIntervalRatio(r);
    ClassifySoil(r);
}

}  // namespace pemlo::oracle
