#include "log/LogData.h"

#include <algorithm>

#include "sbtn/SbtnLayers.h"

namespace pemlo::log {

std::vector<LogLayer> LogLayers(const std::vector<profile::SoilLayer>& layers, double metresPerUnit,
                                const sbtn::SbtnResult& sbt)
{
    std::vector<std::pair<double, double>> ranges;
    for (const profile::SoilLayer& l : layers) ranges.emplace_back(l.top, l.bottom);
    const std::vector<sbtn::LayerSbtn> zones = sbtn::SbtnOfLayers(sbt, ranges, 1.0 / metresPerUnit);
    std::vector<LogLayer> out;
    for (std::size_t i = 0; i < layers.size(); ++i)
        out.push_back({static_cast<int>(i) + 1, layers[i].top * metresPerUnit, layers[i].bottom * metresPerUnit,
                       layers[i].soil, zones[i].zone});
    return out;
}

int LayerIndexAt(const std::vector<LogLayer>& layers, double depth)
{
    if (layers.empty()) return -1;
    // As sbtn::SbtnOfLayers takes them: a layer's bottom is the next one's top.
    for (std::size_t i = 0; i + 1 < layers.size(); ++i)
        if (depth <= layers[i + 1].top) return static_cast<int>(i);
    return static_cast<int>(layers.size()) - 1;
}

std::vector<std::size_t> GapsOf(const std::vector<double>& depths, const std::vector<int>& pushOfEach)
{
    constexpr double MedianSteps = 5.0, ShortestGap = 0.1;  // metres
    if (depths.size() < 2) return {};
    std::vector<double> steps;
    for (std::size_t i = 1; i < depths.size(); ++i) steps.push_back(depths[i] - depths[i - 1]);
    std::vector<double> sorted = steps;
    std::nth_element(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2), sorted.end());
    const double wide = std::max(MedianSteps * sorted[sorted.size() / 2], ShortestGap);
    const bool pushes = pushOfEach.size() == depths.size();
    std::vector<std::size_t> gaps;
    for (std::size_t i = 1; i < depths.size(); ++i)
        if (steps[i - 1] > wide || (pushes && pushOfEach[i] != pushOfEach[i - 1])) gaps.push_back(i);
    return gaps;
}

bool GapBefore(const LogSounding& s, std::size_t reading)
{
    return std::binary_search(s.gaps.begin(), s.gaps.end(), reading);
}

double DeepestOf(const LogSounding& s)
{
    double deepest = 0.0;
    for (const sbtn::SbtnRow& r : s.sbt.rows) deepest = std::max(deepest, r.depth);
    return deepest;
}

}  // namespace pemlo::log
