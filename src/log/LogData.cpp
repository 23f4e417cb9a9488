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
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (depth <= layers[i].bottom) return static_cast<int>(i);
    return static_cast<int>(layers.size()) - 1;
}

double DeepestOf(const LogSounding& s)
{
    double deepest = 0.0;
    for (const sbtn::SbtnRow& r : s.sbt.rows) deepest = std::max(deepest, r.depth);
    return deepest;
}

}  // namespace pemlo::log
