// The soil profiles of one or more soundings as an AGS4 file (AGS 4.1 conventions):
// PROJ, TRAN, UNIT, TYPE, DICT, LOCA, SCPG and one SCPP row ("derived parameters by
// depth range") per layer, so that the layers can go back into the engineer's project;
// each layer with the normalised soil behaviour type beside U and V, and on request one
// SCPT row per reading with the values that type derives from it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "profile/ProfileSource.h"
#include "profile/SoilLayers.h"
#include "sbtn/SbtnLayers.h"

namespace pemlo::profile {

// One sounding's profile, depths in metres.
struct AgsSounding {
    ProfileSource source;  // its project fields as they are to be written
    std::vector<SoilLayer> layers;
    double finalDepth = 0.0;  // of its deepest reading
    std::vector<sbtn::LayerSbtn> sbtn = {};  // one per layer; empty: not computed, the columns stay empty
    std::optional<double> groundwater = std::nullopt;  // D the normalised soil behaviour type used (SCPG_WAT)
    // With readingPush (the push id of each reading): one SCPT row per reading.
    std::shared_ptr<const sbtn::SbtnResult> readings = nullptr;
    std::vector<std::string> readingPush = {};
};

struct AgsSettings {
    std::string programVersion;  // "3.0"
    std::string date;            // of the file's production, yyyy-mm-dd
    std::string recipient;       // empty: not stated
    double minThickness = 0.5;   // metres
    std::int64_t minIntervals = 5;
};

// The soil as the interpreted soil type SCPP_CSBT gives it: "SAND", "SILT", "CLAY".
const char* SoilDescription(Soil soil);

// "2015-05-10" where the text begins with that calendar date in this form (followed by
// nothing, or by a blank or 'T' and a time); else nothing. Only such a date goes into
// LOCA_STAR; any other stays in the location's remark.
std::string CalendarDate(const std::string& date);

// The ground water table typed as a depth in metres, "2.5" or "2.5 m"; else nothing
// (the text then stays in the remark of SCPG).
std::optional<double> WaterDepthOf(const std::string& gwt);

// The whole file, CR LF line ends. The project group comes from the first sounding.
std::string WriteAgs4(const std::vector<AgsSounding>& soundings, const AgsSettings& settings);

// The readings of a sounding that have no SCPT row: each repeats the depth, as
// SCPT_DPTH writes it, of the reading before it in the same push (a row's key).
std::size_t ScptRowsLeftOut(const AgsSounding& sounding);

}  // namespace pemlo::profile
