#include "classify/Classify_Pemlo01.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "input/Module_Units.h"
#include "runtime/Arith.h"

namespace pemlo {

// Everything is worked in double and stored in single precision, in the order the
// formulas are written: engineers compare these numbers with their earlier results
// to the last printed digit, so do not regroup, fuse or simplify any of them.

namespace {

// The closed-form method: qc in kg/cm2 and the friction ratio in percent give the
// classification index U and the in-situ index V.
struct Indices {
    double U;
    double V;
};

Indices ComputeIndices(float qc, float ratio)
{
    const double L = Div(std::log(static_cast<double>(qc)), std::log(10.0));
    const double R = ratio;
    const double x1 = 0.1539 * R + 0.887 * L - 3.35;
    const double x2 = -0.2957 * R + 0.4617 * L - 0.37;
    const double y1 = -0.269 * x1 + 0.759 * x2 - 2.96;
    const double y2 = -0.759 * x1 - 0.269 * x2 + 2.477;
    const double y3 = -11.345 * x1 + 3.795 * x2 + 15.202;
    const double y4 = -3.795 * x1 - 11.345 * x2 + 5.085;
    const double D = Checked(std::pow(y1, 2) + std::pow(y2, 2));
    // U and V beyond range fail at their store, before anything else happens.
    const double U = Div(-(y1 * y3), D) - Div(y2 * y4, D);
    const double V = Div(y1 * y4, D) + 10 - Div(y2 * y3, D);
    return {U, V};
}

struct Probabilities {
    float& sand;
    float& silt;
    float& clay;
};

// Raw probabilities of sand, silt and clay, stored before they are floored and
// normalised. The polynomials hold on the closed range -0.14..2.91 (where they stay
// far inside single range); outside it fixed triples take over (the jump at 2.91 is
// part of the method as published).
void StoreRawProbabilities(const Probabilities& p, double U)
{
    if (-0.14 <= U && U <= 2.91) {
        // Each power once: the power operation gives the same bits every time.
        const double U2 = std::pow(U, 2);
        const double U3 = std::pow(U, 3);
        p.sand = ToSingle(0.0900763 * U2 + 0.0741935 * U + 0.00132408);
        p.silt = ToSingle(0.0611049 * U3 - 0.499014 * U2 + 0.896769 * U + 0.147853);
        p.clay = ToSingle(-0.0296526 * U3 + 0.275413 * U2 - 0.841851 * U + 0.848617);
        if (p.sand < 0.0035) p.sand = ToSingle(0.0035);
        if (p.silt < 0.0184) p.silt = ToSingle(0.0184);
        if (p.clay < 0) p.clay = 0.0f;
    } else if (U < -0.14) {
        p.sand = ToSingle(0.0035);
        p.silt = ToSingle(0.0184);
        p.clay = ToSingle(0.9781);
    } else {
        p.sand = ToSingle(0.9771);
        p.silt = ToSingle(0.0229);
        p.clay = 0.0f;
    }
}

// Interval i holds the very inputs interval i - 1 was classified from (after its
// guards): same bits in, same bits out, so its results are copied, not worked again.
// A deep grid over few readings is mostly such runs, since an interval without
// readings repeats the one above. Only for intervals every array holds, so that an
// index out of range still fails where and as the method fails.
bool RepeatsIntervalAbove(Declarations& d, int i, int allHold)
{
    if (i < 2 || i > allHold) return false;
    const auto same = [i](const IntervalArray& a) {
        return std::bit_cast<std::uint32_t>(a.data()[i - 1]) == std::bit_cast<std::uint32_t>(a.data()[i - 2]);
    };
    if (!same(d.IntQTip) || !same(d.IntQSleeve) || !same(d.IntRatio)) return false;
    for (IntervalArray* result : {&d.IntU, &d.IntV, &d.IntProb1, &d.IntProb2, &d.IntProb3})
        result->data()[i - 1] = result->data()[i - 2];
    return true;
}

int IntervalsAllArraysHold(const Declarations& d)
{
    return std::min({d.IntQTip.Size(), d.IntQSleeve.Size(), d.IntRatio.Size(), d.IntU.Size(), d.IntV.Size(),
                     d.IntProb1.Size(), d.IntProb2.Size(), d.IntProb3.Size()});
}

}  // namespace

void ClassifyInterval(Declarations& d, int i)
{
    // Guards whose replacements stay in the arrays, and so show in the views. Each
    // array is indexed once, where the method first touches it.
    float& qc = d.IntQTip[i];
    if (qc <= 0.0f) qc = 1.0f;
    float& fs = d.IntQSleeve[i];
    if (fs < 0.0f) fs = 0.0f;

    const Indices ix = ComputeIndices(qc, d.IntRatio[i]);
    d.IntU[i] = ToSingle(ix.U);
    d.IntV[i] = ToSingle(ix.V);
    // The branch and the polynomials take the double U, not the stored one.
    const Probabilities p{d.IntProb1[i], d.IntProb2[i], d.IntProb3[i]};
    StoreRawProbabilities(p, ix.U);

    // The polynomials do not quite sum to 1, so every interval is normalised; the sum
    // is taken once, in this order, before any probability changes.
    const double S = static_cast<double>(p.silt) + p.sand + p.clay;
    p.sand = ToSingle(Div(static_cast<double>(p.sand) * 100, S));
    p.silt = ToSingle(Div(static_cast<double>(p.silt) * 100, S));
    p.clay = ToSingle(Div(static_cast<double>(p.clay) * 100, S));
}

void ClassifySoil(Declarations& d)
{
    // The coefficients expect metres and kg/cm2: convert there, and back on the way out.
    if (d.DataUnits != DataEnglish) IntervalsSIToEnglish(d);
    IntervalsEnglishToMetric(d);

    const Integer n = d.NumIntervals;
    const int allHold = IntervalsAllArraysHold(d);
    d.ClassifyIndex = 1;
    if (n >= 1) {
        while (true) {
            if (!RepeatsIntervalAbove(d, d.ClassifyIndex, allHold)) ClassifyInterval(d, d.ClassifyIndex);
            // With 32767 intervals this overflows after the last one, and the way
            // back to the units of the readings is never taken.
            Increment(d.ClassifyIndex);
            if (d.ClassifyIndex > n) break;
        }
    }

    IntervalsMetricToEnglish(d);
    if (d.DataUnits != DataEnglish) IntervalsEnglishToSI(d);
}

}  // namespace pemlo
