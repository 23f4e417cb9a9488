// What every fuzz target does with an input: read it with one reader and, where the
// reader takes it, check the import contract's promises on the result, then take the
// soundings through the record, convert's writer and the whole road. A broken
// promise traps, so that the fuzzer keeps the input; a refusal is a fine outcome.
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string_view>
#include <vector>

#include "road/ProgramRoad.h"
#include "formats/ConeDataFileWriter.h"
#include "formats/ImportContract.h"
#include "formats/ImportRecord.h"

namespace pemlo::fuzz {

inline void Check(bool promise)
{
    if (!promise) __builtin_trap();
}

inline void Exercise(const formats::ImportedSounding& s)
{
    const std::size_t n = s.depth.size();
    Check(n > 0 && n <= MaxImportedReadings && s.qc.size() == n && s.fs.size() == n);
    Check(static_cast<std::size_t>(s.record.kept) == n && s.record.rowsRead == s.record.kept + s.record.voidRows);
    for (std::size_t i = 0; i < n; ++i) {
        Check(std::isfinite(s.depth[i]) && std::isfinite(s.qc[i]) && std::isfinite(s.fs[i]));
        Check(i == 0 || s.depth[i - 1] <= s.depth[i]);
    }
    (void)formats::DescribeImport(s);
    std::ostringstream converted;
    formats::WriteConeDataFile(converted, formats::ConeDataFileOf(s, s.project, "fuzz", std::nullopt, std::nullopt));
    RoadOptions road;
    road.path = "fuzz";
    road.imported = std::make_shared<const formats::ImportedSounding>(s);
    Declarations d;
    (void)RunRoad(road, d);  // run-time errors end the road with a status, never a throw
}

template <class Read>
int Run(const std::uint8_t* data, std::size_t size, Read read)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const auto depth : {formats::DepthChoice::Penetration, formats::DepthChoice::Corrected}) {
        try {
            const std::vector<formats::ImportedSounding> soundings = read(bytes, depth);
            for (std::size_t i = 0; i < soundings.size() && i < 3; ++i)
                if (!soundings[i].depth.empty()) Exercise(soundings[i]);
        } catch (const formats::ImportRefusal&) {
        }
    }
    return 0;
}

}  // namespace pemlo::fuzz
