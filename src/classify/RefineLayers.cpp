#include "classify/RefineLayers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "runtime/Arith.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

// The rule engineers' earlier results rest on: every interval j >= 2 scans every
// reading in file order and averages those with top < depth <= bottom, where the
// boundaries are accumulated in single precision (bottom = t + top, top = t + top)
// and so drift by rounding. A deep sounding makes that scan tens of thousands of
// intervals times thousands of readings. Here the readings, taken in order of depth,
// meet the very same boundaries in one walk down the grid, each is placed in its
// interval, and the sums then accumulate the same values in the same (file) order:
// every stored bit, every run-time error and every partial write is the scan's. The
// walk keeps no array as long as the grid: on a deep grid over few readings, fresh
// memory for one would cost more than the averaging. The oracle test compares the
// two on thousands of generated soundings; keep it passing when touching this file.

namespace {

// A reading (1-based, as the arrays count) in the interval it is averaged into.
struct Placed {
    int interval;
    int reading;
};
using Placement = std::vector<Placed>;  // by interval, then in file order

float NextBoundary(float t, float above) { return ToSingle(static_cast<double>(t) + static_cast<double>(above)); }

// The bottoms of intervals 1..n are top, t + top, t + (t + top), ... in single
// precision. Working them all out first raises their errors (an overflow) before any
// interval is written, as the scan does; and says whether they never decrease.
bool BoundariesRise(float t, float top, int n)
{
    bool rising = true;
    float above = top;
    for (int j = 2; j <= n; ++j) {
        const float bottom = NextBoundary(t, above);
        if (bottom < above) rising = false;
        above = bottom;
    }
    return rising;
}

void InFileOrder(Placement& placed)
{
    std::sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return a.interval != b.interval ? a.interval < b.interval : a.reading < b.reading;
    });
}

// For boundaries that never decrease, a reading belongs to the first interval j in
// 1..n whose bottom is not below its depth, and only j >= 2 is averaged. A NaN
// depth is below no bottom and above none: it lands in interval 1, as in the scan.
Placement Distribute(float t, float top, int n, const float* depth, int numReadings)
{
    std::vector<int> byDepth;
    byDepth.reserve(static_cast<std::size_t>(numReadings));
    for (int k = 0; k < numReadings; ++k)
        if (!std::isnan(depth[k])) byDepth.push_back(k);
    std::sort(byDepth.begin(), byDepth.end(), [depth](int a, int b) { return depth[a] < depth[b]; });

    Placement placed;
    placed.reserve(byDepth.size());
    int j = 1;
    float bottom = top;
    for (const int k : byDepth) {
        while (j <= n && bottom < depth[k])
            if (++j <= n) bottom = NextBoundary(t, bottom);
        if (j > n) break;  // deeper than the grid, as every reading after it
        if (j >= 2) placed.push_back({j, k + 1});
    }
    InFileOrder(placed);
    return placed;
}

// The scan itself, for boundaries that do fall somewhere (no interval size of the
// program gives them, but the record's fields are public).
Placement ScanAll(float t, float top, int n, const float* depth, int numReadings)
{
    Placement placed;
    float above = top;
    for (int j = 2; j <= n; ++j) {
        const float bottom = NextBoundary(t, above);
        for (int k = 0; k < numReadings; ++k)
            if (above < depth[k] && depth[k] <= bottom) placed.push_back({j, k + 1});
        above = bottom;
    }
    return placed;
}

struct Means {
    float tipSum = 0.0f;
    float sleeveSum = 0.0f;
    Integer count = 0;
};

// The sums of interval j, from the placement's next entries on.
Means Sum(const Declarations& d, const Placement& placed, std::size_t& next, int j)
{
    Means m;
    for (; next < placed.size() && placed[next].interval == j; ++next) {
        const int k = placed[next].reading;
        m.tipSum = ToSingle(static_cast<double>(m.tipSum) + static_cast<double>(d.Q_Tip[k]));
        m.sleeveSum = ToSingle(static_cast<double>(m.sleeveSum) + static_cast<double>(d.Q_Sleeve[k]));
        Increment(m.count);
    }
    return m;
}

}  // namespace

void AverageIntervals(Declarations& d)
{
    const float t = d.IntervalSize;
    const float firstDepth = d.Depth[1];
    float top = 0.0f;
    if (firstDepth <= t) {
        top = t;
        d.IntDepth[1] = ToSingle(Div(t, 2.0));
    } else {
        // The grid starts at the first reading; its own values are overwritten below.
        top = firstDepth;
        d.IntDepth[1] = ToSingle(Div(t, 2.0) + static_cast<double>(firstDepth));
        d.IntQTip[1] = d.Q_Tip[1];
        d.IntQSleeve[1] = d.Q_Sleeve[1];
    }

    const Integer n = d.NumIntervals;
    d.RefineIndex = 2;
    if (n >= 2) {
        // Readings beyond the arrays' bound (4000 on the plain ASCII road) do not
        // exist: the scan stops there with error 9, after the second interval's own
        // readings have been summed.
        const int bound = std::min({d.Depth.Bound(), d.Q_Tip.Bound(), d.Q_Sleeve.Bound()});
        const int scanned = std::clamp<int>(d.NumLines, 0, bound);
        const bool scanRunsOffTheEnd = d.NumLines > bound;
        const Placement placed = BoundariesRise(t, top, n) ? Distribute(t, top, n, d.Depth.data(), scanned)
                                                           : ScanAll(t, top, n, d.Depth.data(), scanned);
        std::size_t next = 0;
        while (true) {
            const int j = d.RefineIndex;
            const Means m = Sum(d, placed, next, j);
            if (scanRunsOffTheEnd) Raise(ErrSubscriptOutOfRange);
            d.IntDepth[j] = ToSingle(static_cast<double>(t) + static_cast<double>(d.IntDepth[j - 1]));
            if (m.count > 0) {
                d.IntQTip[j] = ToSingle(Div(m.tipSum, m.count));
                d.IntQSleeve[j] = ToSingle(Div(m.sleeveSum, m.count));
            } else {
                // A gap in the sounding repeats the interval above.
                d.IntQTip[j] = d.IntQTip[j - 1];
                d.IntQSleeve[j] = d.IntQSleeve[j - 1];
            }
            Increment(d.RefineIndex);
            if (d.RefineIndex > n) break;
        }
    }

    // The first interval is never averaged: it repeats the second, as engineers'
    // earlier results show it.
    d.IntQTip[1] = d.IntQTip[2];
    d.IntQSleeve[1] = d.IntQSleeve[2];
}

}  // namespace pemlo
