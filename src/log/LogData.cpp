#include "log/LogData.h"

#include <algorithm>
#include <array>

namespace pemlo::log {

int DominantZone(const sbtn::SbtnResult& sbt, double top, double bottom)
{
    std::array<int, 10> counts{};
    for (const sbtn::SbtnRow& r : sbt.rows)
        if (r.invalid == sbtn::Invalid::None && r.depth >= top && r.depth < bottom) ++counts[r.values.zone];
    const auto most = std::max_element(counts.begin() + 1, counts.end());
    return *most == 0 ? 0 : static_cast<int>(most - counts.begin());
}

std::vector<LogLayer> LogLayers(const std::vector<profile::SoilLayer>& layers, double metresPerUnit,
                                const sbtn::SbtnResult& sbt)
{
    std::vector<LogLayer> out;
    for (const profile::SoilLayer& l : layers) {
        LogLayer layer{static_cast<int>(out.size()) + 1, l.top * metresPerUnit, l.bottom * metresPerUnit, l.soil, 0};
        // Readings above the first layer or below the last belong to it, as on the chart.
        const double from = out.empty() ? -1e300 : layer.top;
        const double to = &l == &layers.back() ? 1e300 : layer.bottom;
        layer.zone = DominantZone(sbt, from, to);
        out.push_back(layer);
    }
    return out;
}

int LayerIndexAt(const std::vector<LogLayer>& layers, double depth)
{
    if (layers.empty()) return -1;
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (depth < layers[i].bottom) return static_cast<int>(i);
    return static_cast<int>(layers.size()) - 1;
}

double DeepestOf(const LogSounding& s)
{
    double deepest = 0.0;
    for (const sbtn::SbtnRow& r : s.sbt.rows) deepest = std::max(deepest, r.depth);
    for (const LogInterval& i : s.intervals) deepest = std::max(deepest, i.bottom);
    return deepest;
}

}  // namespace pemlo::log
