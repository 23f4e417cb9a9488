#include "profile/ProfileSource.h"

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
    return {path, name, {{name, firstDepth, lastDepth}}, {}};
}

ProfileSource SourceOfSounding(const std::string& name, const std::string& path,
                               const formats::ImportedSounding& sounding)
{
    ProfileSource source{name, {}, {}, sounding.project};
    source.locaId = !sounding.locaId.empty() ? sounding.locaId : !sounding.id.empty() ? sounding.id : StemOf(path);
    for (const formats::Push& push : sounding.pushes) source.pushes.push_back({push.testNumber, push.top, push.bottom});
    if (source.pushes.empty() && !sounding.depth.empty())
        source.pushes.push_back({source.locaId, sounding.depth.front(), sounding.depth.back()});
    return source;
}

std::size_t PushOfTop(const std::vector<PushRange>& pushes, double top)
{
    std::size_t shallowest = 0;
    std::size_t found = pushes.size();
    for (std::size_t i = 0; i < pushes.size(); ++i) {
        if (pushes[i].top < pushes[shallowest].top) shallowest = i;
        if (pushes[i].top <= top && (found == pushes.size() || pushes[i].top > pushes[found].top)) found = i;
    }
    return found == pushes.size() ? shallowest : found;
}

}  // namespace pemlo::profile
