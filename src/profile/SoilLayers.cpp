#include "profile/SoilLayers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <utility>

namespace pemlo::profile {

namespace {

constexpr double MetresThinnest = 0.5;
constexpr double FeetThinnest = 1.64;

// A layer while the layers are being merged. A layer is known by its top interval,
// which it keeps through every merge, so the nodes live at the index of that interval.
struct Node {
    int count = 0;
    int prev = -1;  // the layer above, -1 at the top
    int next = -1;  // the layer below, -1 at the bottom
    Soil soil = Soil::Sand;
    double sand = 0.0;
    double silt = 0.0;
    double clay = 0.0;
};

double Mean(std::span<const IntervalResult> intervals, int first, int count, float IntervalResult::*value)
{
    // From the top down, in double: every mean is recomputed from its intervals, never
    // from the means of the layers it was made of, so no merge order changes a digit.
    double sum = 0.0;
    for (int k = first; k < first + count; ++k) sum += static_cast<double>(intervals[static_cast<std::size_t>(k)].*value);
    return sum / static_cast<double>(count);
}

double Distance(const Node& a, const Node& b)
{
    return std::abs(a.sand - b.sand) + std::abs(a.silt - b.silt) + std::abs(a.clay - b.clay);
}

class Merger {
public:
    Merger(std::span<const IntervalResult> intervals, std::int64_t minIntervals)
        : intervals_(intervals), minIntervals_(minIntervals), nodes_(intervals.size())
    {
        int previous = -1;
        for (int start = 0; start < static_cast<int>(intervals.size());) {
            const Soil soil = SoilOf(start);
            int end = start + 1;
            while (end < static_cast<int>(intervals.size()) && SoilOf(end) == soil) ++end;
            Node& node = nodes_[static_cast<std::size_t>(start)];
            node.count = end - start;
            node.soil = soil;
            node.prev = previous;
            if (previous >= 0) nodes_[static_cast<std::size_t>(previous)].next = start;
            Refresh(start);
            previous = start;
            ++layers_;
            start = end;
        }
    }

    void MergeThinLayers()
    {
        while (layers_ > 1 && !thin_.empty()) {
            const int thin = thin_.begin()->second;
            const Node& t = At(thin);
            int above = t.prev;
            if (above >= 0 && t.next >= 0 && Distance(t, At(t.next)) < Distance(t, At(above))) above = -1;
            int merged = above >= 0 ? Join(above, thin) : Join(thin, t.next);
            At(merged).soil = DominantSoil(At(merged).sand, At(merged).silt, At(merged).clay);
            // Every other pair of neighbours already differs in soil, so only the merged
            // layer can have a neighbour of its own soil.
            const Soil soil = At(merged).soil;
            if (const int up = At(merged).prev; up >= 0 && At(up).soil == soil) merged = Join(up, merged);
            if (const int down = At(merged).next; down >= 0 && At(down).soil == soil) merged = Join(merged, down);
        }
    }

    std::vector<SoilLayer> Layers(float intervalSize) const
    {
        const double half = static_cast<double>(intervalSize) / 2.0;
        std::vector<SoilLayer> layers;
        for (int id = intervals_.empty() ? -1 : 0; id >= 0; id = At(id).next) {
            const Node& node = At(id);
            SoilLayer layer;
            layer.first = id;
            layer.count = node.count;
            layer.top = static_cast<double>(intervals_[static_cast<std::size_t>(id)].depth) - half;
            layer.bottom = static_cast<double>(intervals_[static_cast<std::size_t>(id + node.count - 1)].depth) + half;
            layer.soil = node.soil;
            layer.means = {Mean(intervals_, id, node.count, &IntervalResult::qc),
                           Mean(intervals_, id, node.count, &IntervalResult::fs),
                           Mean(intervals_, id, node.count, &IntervalResult::ratio),
                           Mean(intervals_, id, node.count, &IntervalResult::u),
                           Mean(intervals_, id, node.count, &IntervalResult::v),
                           node.sand,
                           node.silt,
                           node.clay};
            layers.push_back(layer);
        }
        return layers;
    }

private:
    Node& At(int id) { return nodes_[static_cast<std::size_t>(id)]; }
    const Node& At(int id) const { return nodes_[static_cast<std::size_t>(id)]; }

    Soil SoilOf(int k) const
    {
        const IntervalResult& r = intervals_[static_cast<std::size_t>(k)];
        return DominantSoil(r.sand, r.silt, r.clay);
    }

    // The mean probabilities of a layer from its intervals, and its place among the
    // thin layers: the fewest intervals first, then the shallowest.
    void Refresh(int id)
    {
        Node& node = At(id);
        node.sand = Mean(intervals_, id, node.count, &IntervalResult::sand);
        node.silt = Mean(intervals_, id, node.count, &IntervalResult::silt);
        node.clay = Mean(intervals_, id, node.count, &IntervalResult::clay);
        if (node.count < minIntervals_) thin_.emplace(node.count, id);
    }

    // The layer below `upper` becomes part of it; the soil is the caller's to set.
    int Join(int upper, int lower)
    {
        Node& up = At(upper);
        const Node& low = At(lower);
        thin_.erase({up.count, upper});
        thin_.erase({low.count, lower});
        up.count += low.count;
        up.next = low.next;
        if (low.next >= 0) At(low.next).prev = upper;
        --layers_;
        Refresh(upper);
        return upper;
    }

    std::span<const IntervalResult> intervals_;
    std::int64_t minIntervals_;
    std::vector<Node> nodes_;
    std::set<std::pair<int, int>> thin_;  // (intervals, top interval)
    int layers_ = 0;
};

}  // namespace

std::vector<IntervalResult> IntervalsOf(const Declarations& d)
{
    std::vector<IntervalResult> intervals;
    for (int j = 1; j <= d.NumIntervals; ++j)
        intervals.push_back({d.IntDepth[j], d.IntQTip[j], d.IntQSleeve[j], d.IntRatio[j], d.IntU[j], d.IntV[j],
                             d.IntProb1[j], d.IntProb2[j], d.IntProb3[j]});
    return intervals;
}

Soil DominantSoil(double sand, double silt, double clay)
{
    if (clay >= silt && clay >= sand) return Soil::Clay;
    if (silt >= sand) return Soil::Silt;
    return Soil::Sand;
}

const char* SoilName(Soil soil)
{
    switch (soil) {
    case Soil::Silt: return "silt";
    case Soil::Clay: return "clay";
    case Soil::Sand: break;
    }
    return "sand";
}

double DefaultMinThickness(Integer graphUnits) { return graphUnits == GraphEnglish ? FeetThinnest : MetresThinnest; }

std::int64_t MinIntervals(double minThickness, float intervalSize)
{
    constexpr double Largest = 1e15;  // more intervals than any sounding has
    const double n = std::round(minThickness / static_cast<double>(intervalSize));
    if (std::isnan(n) || n < 1.0) return 1;
    return static_cast<std::int64_t>(std::min(n, Largest));
}

std::vector<SoilLayer> GroupIntoLayers(std::span<const IntervalResult> intervals, float intervalSize,
                                       double minThickness)
{
    Merger merger(intervals, MinIntervals(minThickness, intervalSize));
    merger.MergeThinLayers();
    return merger.Layers(intervalSize);
}

}  // namespace pemlo::profile
