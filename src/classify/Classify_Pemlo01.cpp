#include "classify/Classify_Pemlo01.h"

#include <cmath>

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
    const double U = Checked(Div(-(y1 * y3), D) - Div(y2 * y4, D));
    const double V = Checked(Div(y1 * y4, D) + 10 - Div(y2 * y3, D));
    return {U, V};
}

// Raw probabilities of sand, silt and clay, stored before they are floored and
// normalised. The polynomials hold on the closed range -0.14..2.91; outside it fixed
// triples take over (the jump at 2.91 is part of the method as published).
void StoreRawProbabilities(Declarations& d, int i, double U)
{
    if (-0.14 <= U && U <= 2.91) {
        d.IntProb1[i] = ToSingle(Checked(0.0900763 * std::pow(U, 2) + 0.0741935 * U + 0.00132408));
        d.IntProb2[i] = ToSingle(Checked(0.0611049 * std::pow(U, 3) - 0.499014 * std::pow(U, 2) +
                                         0.896769 * U + 0.147853));
        d.IntProb3[i] = ToSingle(Checked(-0.0296526 * std::pow(U, 3) + 0.275413 * std::pow(U, 2) -
                                         0.841851 * U + 0.848617));
        if (d.IntProb1[i] < 0.0035) d.IntProb1[i] = ToSingle(0.0035);
        if (d.IntProb2[i] < 0.0184) d.IntProb2[i] = ToSingle(0.0184);
        if (d.IntProb3[i] < 0) d.IntProb3[i] = 0.0f;
    } else if (U < -0.14) {
        d.IntProb1[i] = ToSingle(0.0035);
        d.IntProb2[i] = ToSingle(0.0184);
        d.IntProb3[i] = ToSingle(0.9781);
    } else {
        d.IntProb1[i] = ToSingle(0.9771);
        d.IntProb2[i] = ToSingle(0.0229);
        d.IntProb3[i] = 0.0f;
    }
}

}  // namespace

void ClassifyInterval(Declarations& d, int i)
{
    // Guards whose replacements stay in the arrays, and so show in the views.
    if (d.IntQTip[i] <= 0.0f) d.IntQTip[i] = 1.0f;
    if (d.IntQSleeve[i] < 0.0f) d.IntQSleeve[i] = 0.0f;

    const Indices ix = ComputeIndices(d.IntQTip[i], d.IntRatio[i]);
    d.IntU[i] = ToSingle(ix.U);
    d.IntV[i] = ToSingle(ix.V);
    // The branch and the polynomials take the double U, not the stored one.
    StoreRawProbabilities(d, i, ix.U);

    // The polynomials do not quite sum to 1, so every interval is normalised; the sum
    // is taken once, in this order, before any probability changes.
    const double S = static_cast<double>(d.IntProb2[i]) + d.IntProb1[i] + d.IntProb3[i];
    d.IntProb1[i] = ToSingle(Div(static_cast<double>(d.IntProb1[i]) * 100, S));
    d.IntProb2[i] = ToSingle(Div(static_cast<double>(d.IntProb2[i]) * 100, S));
    d.IntProb3[i] = ToSingle(Div(static_cast<double>(d.IntProb3[i]) * 100, S));
}

void ClassifySoil(Declarations& d)
{
    // The coefficients expect metres and kg/cm2: convert there, and back on the way out.
    if (d.DataUnits != DataEnglish) IntervalsSIToEnglish(d);
    IntervalsEnglishToMetric(d);

    const Integer n = d.NumIntervals;
    d.ClassifyIndex = 1;
    if (n >= 1) {
        while (true) {
            ClassifyInterval(d, d.ClassifyIndex);
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
