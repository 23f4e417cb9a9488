#include "sbtn/SbtnLayers.h"

#include <algorithm>
#include <array>

namespace pemlo::sbtn {

namespace {

LayerSbtn Summarise(const std::vector<const SbtnRow*>& rows)
{
    LayerSbtn s;
    double sum = 0.0;
    std::array<int, 10> count{};
    for (const SbtnRow* row : rows) {
        if (row->invalid != Invalid::None) continue;
        ++s.valid;
        sum += row->values.ic;
        ++count[static_cast<std::size_t>(std::clamp(row->values.zone, 0, 9))];
    }
    if (s.valid == 0) return s;
    s.ic = sum / s.valid;
    // max_element finds the first of equals: the lower zone number wins a tie.
    const auto most = std::max_element(count.begin() + 1, count.end());
    s.zone = static_cast<int>(most - count.begin());
    s.share = 100.0 * *most / s.valid;
    return s;
}

}  // namespace

std::vector<LayerSbtn> SbtnOfLayers(const SbtnResult& result, const std::vector<std::pair<double, double>>& layers,
                                    double depthScale)
{
    std::vector<std::vector<const SbtnRow*>> in(layers.size());
    std::size_t k = 0;
    for (const SbtnRow& row : result.rows) {  // depths never decrease: the layer only moves down
        const double z = row.depth * depthScale;
        while (k < layers.size() && z > (k + 1 < layers.size() ? layers[k + 1].first : layers[k].second)) ++k;
        if (k == layers.size()) break;
        in[k].push_back(&row);
    }
    std::vector<LayerSbtn> out;
    for (const auto& rows : in) out.push_back(Summarise(rows));
    return out;
}

double AreaRatioUsed(const SbtnResult& result, std::size_t reading)
{
    double a = DefaultAreaRatio;
    for (const AreaRatioSpan& span : result.areaRatios)
        if (span.fromIndex <= reading) a = span.value;
    return a;
}

}  // namespace pemlo::sbtn
