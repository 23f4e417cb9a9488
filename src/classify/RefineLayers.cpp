#include "classify/RefineLayers.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "runtime/Arith.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

// The rule engineers' earlier results rest on: every interval j >= 2 scans every
// reading in file order and averages those with top < depth <= bottom, where the
// boundaries are accumulated in single precision (bottom = t + top, top = t + top)
// and so drift by rounding. A deep sounding makes that scan tens of thousands of
// intervals times 4000 readings. Here each reading is placed once, by binary search
// over the very same boundaries, into the bucket of its interval, in file order; the
// sums then accumulate the same values in the same order and every stored bit, every
// run-time error and every partial write is the scan's. The oracle test compares the
// two on thousands of generated soundings; keep it passing when touching this file.

namespace {

struct Buckets {
    std::vector<int> start;    // start[j]..start[j + 1] - 1 index `readings`
    std::vector<int> readings; // reading numbers, grouped by interval, in file order
};

// boundary[j] is the bottom of interval j (j = 1..n): boundary[1] is the top the grid
// starts at, boundary[j] = t + boundary[j - 1] in single precision.
std::vector<float> Boundaries(float t, float top, int n)
{
    std::vector<float> boundary(static_cast<std::size_t>(n) + 1, 0.0f);
    boundary[1] = top;
    for (int j = 2; j <= n; ++j)
        boundary[static_cast<std::size_t>(j)] =
            ToSingle(static_cast<double>(t) + static_cast<double>(boundary[static_cast<std::size_t>(j) - 1]));
    return boundary;
}

// Interval of each reading: the j in 2..n with boundary[j - 1] < depth <= boundary[j],
// or none. Needs boundaries that never decrease.
Buckets Distribute(const std::vector<float>& boundary, int n, const float* depth, int numReadings)
{
    Buckets b;
    std::vector<int> owner(static_cast<std::size_t>(numReadings), 0);
    b.start.assign(static_cast<std::size_t>(n) + 2, 0);
    const auto first = boundary.begin() + 1;
    const auto last = boundary.begin() + n + 1;
    for (int k = 0; k < numReadings; ++k) {
        // First boundary at or below the depth; a NaN depth compares false and lands on 1.
        const auto it = std::lower_bound(first, last, depth[k]);
        const int j = static_cast<int>(it - boundary.begin());
        if (j >= 2 && j <= n) {
            owner[static_cast<std::size_t>(k)] = j;
            ++b.start[static_cast<std::size_t>(j) + 1];
        }
    }
    for (std::size_t j = 1; j < b.start.size(); ++j) b.start[j] += b.start[j - 1];
    b.readings.assign(static_cast<std::size_t>(b.start.back()), 0);
    std::vector<int> fill(b.start.begin(), b.start.end() - 1);
    for (int k = 0; k < numReadings; ++k) {
        const int j = owner[static_cast<std::size_t>(k)];
        if (j != 0) b.readings[static_cast<std::size_t>(fill[static_cast<std::size_t>(j)]++)] = k + 1;
    }
    return b;
}

// The scan itself, for boundaries that do not rise (no interval size of the program
// gives them, but the record's fields are public).
Buckets ScanAll(const std::vector<float>& boundary, int n, const float* depth, int numReadings)
{
    Buckets b;
    b.start.assign(static_cast<std::size_t>(n) + 2, 0);
    for (int j = 2; j <= n; ++j) {
        b.start[static_cast<std::size_t>(j)] = static_cast<int>(b.readings.size());
        const float top = boundary[static_cast<std::size_t>(j) - 1];
        const float bottom = boundary[static_cast<std::size_t>(j)];
        for (int k = 0; k < numReadings; ++k)
            if (top < depth[k] && depth[k] <= bottom) b.readings.push_back(k + 1);
    }
    b.start[static_cast<std::size_t>(n) + 1] = static_cast<int>(b.readings.size());
    return b;
}

struct Means {
    float tipSum = 0.0f;
    float sleeveSum = 0.0f;
    Integer count = 0;
};

Means Sum(const Declarations& d, const Buckets& b, int j)
{
    Means m;
    for (int at = b.start[static_cast<std::size_t>(j)]; at < b.start[static_cast<std::size_t>(j) + 1]; ++at) {
        const int k = b.readings[static_cast<std::size_t>(at)];
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
        // Readings beyond index 4000 do not exist: the scan stops there with error 9,
        // after the second interval's own readings have been summed.
        const int scanned = std::clamp<int>(d.NumLines, 0, MaxReadings);
        const bool scanRunsOffTheEnd = d.NumLines > MaxReadings;
        const std::vector<float> boundary = Boundaries(t, top, n);
        const bool rising = std::is_sorted(boundary.begin() + 1, boundary.end());
        const Buckets buckets = rising ? Distribute(boundary, n, d.Depth.data(), scanned)
                                       : ScanAll(boundary, n, d.Depth.data(), scanned);
        while (true) {
            const int j = d.RefineIndex;
            const Means m = Sum(d, buckets, j);
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
