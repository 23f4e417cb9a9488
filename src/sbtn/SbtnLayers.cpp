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
    std::vector<LayerSbtn> out;
    for (std::size_t k = 0; k < layers.size(); ++k) {
        const auto [top, bottom] = layers[k];
        std::vector<const SbtnRow*> in;
        for (const SbtnRow& row : result.rows) {
            const double z = row.depth * depthScale;
            if ((z > top || (k == 0 && z == top)) && z <= bottom) in.push_back(&row);
        }
        out.push_back(Summarise(in));
    }
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
