#include "classify/BuildIntervalGrid.h"

#include <cmath>

#include "runtime/Arith.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

// One tenth of a metre, in feet rounded to three decimals, or in metres. Both are
// held in single precision, so 20.0 m holds 199 whole intervals, not 200.
constexpr float FeetInterval = 0.328f;
constexpr float MetreInterval = 0.1f;

// The whole number of intervals down to a depth, rounded downwards (a negative
// quotient too); a count beyond the 16-bit range is an overflow.
Integer WholeIntervals(float lastDepth, float size)
{
    const double whole = std::floor(Div(lastDepth, size));
    if (whole < -32768.0 || whole > 32767.0) Raise(ErrOverflow);
    return ToInteger(static_cast<long long>(whole));
}

}  // namespace

void BuildIntervalGrid(Declarations& d)
{
    d.IntervalSize = d.DataUnits == DataEnglish ? FeetInterval : MetreInterval;
    // The last reading is taken as the deepest: soundings are recorded downwards.
    d.NumIntervals = WholeIntervals(d.Depth[d.NumLines], d.IntervalSize);
    // In this order, in one block; a count below 1 fails before any array changes, and
    // the arrays then keep what they held.
    AllocateIntervalArrays({&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntReserve, &d.IntProb1,
                            &d.IntProb2, &d.IntProb3, &d.IntU, &d.IntV},
                           d.NumIntervals);
}

}  // namespace pemlo
