#include "profile/ProfileSource.h"

#include <algorithm>
#include <filesystem>

namespace pemlo::profile {

namespace {

std::string StemOf(const std::string& path)
{
    const std::filesystem::path file(path);
    const std::string stem = file.stem().string();
    return stem.empty() ? file.filename().string() : stem;
}

}  // namespace

ProfileSource SourceOfDataFile(const std::string& path, double firstDepth, double lastDepth)
{
    const std::string name = StemOf(path);
    return {path, name, {{name, firstDepth, lastDepth, {}}}, {}};
}

ProfileSource SourceOfSounding(const std::string& name, const std::string& path,
                               const formats::ImportedSounding& sounding)
{
    ProfileSource source{name, {}, {}, sounding.project};
    source.locaId = !sounding.locaId.empty() ? sounding.locaId : !sounding.id.empty() ? sounding.id : StemOf(path);
    for (const formats::Push& push : sounding.pushes)
        source.pushes.push_back({push.testNumber, push.top, push.bottom, push.reference});
    if (source.pushes.empty() && !sounding.depth.empty())
        source.pushes.push_back({source.locaId, sounding.depth.front(), sounding.depth.back(), {}});
    return source;
}

std::size_t PushOfTop(const std::vector<PushRange>& pushes, double top) { return PushesByTop(pushes).Of(top); }

PushesByTop::PushesByTop(const std::vector<PushRange>& pushes)
{
    for (std::size_t i = 0; i < pushes.size(); ++i) order_.emplace_back(pushes[i].top, i);
    std::stable_sort(order_.begin(), order_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
}

std::size_t PushesByTop::Of(double top) const
{
    const auto byTop = [](const auto& a, const auto& b) { return a.first < b.first; };
    auto above = std::upper_bound(order_.begin(), order_.end(), std::pair{top, std::size_t{0}}, byTop);
    // Above every push: the shallowest; else the deepest start at or above the top.
    const double start = above == order_.begin() ? order_.front().first : std::prev(above)->first;
    return std::lower_bound(order_.begin(), order_.end(), std::pair{start, std::size_t{0}}, byTop)->second;
}

}  // namespace pemlo::profile
