#include "sbtn/SbtnInputs.h"

namespace pemlo::sbtn {

// A first cut: imported soundings without u2; the readers' u2, area ratio and
// groundwater and the plain files' road come next.
GatherResult GatherSbtnReadings(const RoadOptions& options, int /*u2Column*/)
{
    GatherResult result;
    if (!options.imported) {
        result.refusal = "plain ASCII files are not read for this yet";
        return result;
    }
    const auto& s = *options.imported;
    auto& r = result.readings;
    r.depth.assign(s.depth.begin(), s.depth.end());
    r.qc.assign(s.qc.begin(), s.qc.end());
    r.fs.assign(s.fs.begin(), s.fs.end());
    r.u2.assign(s.depth.size(), std::nullopt);
    r.areaRatio.assign(s.depth.size(), std::nullopt);
    return result;
}

}  // namespace pemlo::sbtn
