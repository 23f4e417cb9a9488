// What one sounding's log shows, gathered without Qt from the very functions behind
// sbt, classify and layers, so that the pages carry their values: the title block's
// fields, the readings with their normalised soil behaviour type, the classified
// intervals and the layers, every depth in metres.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "profile/SoilLayers.h"
#include "sbtn/Sbtn.h"

namespace pemlo::log {

struct TitleField {
    std::string label;  // "Project number"
    std::string value;  // as printed; may be empty
};

// One classified interval: its depth range and its percent sand, silt and clay.
struct LogInterval {
    double top = 0.0;
    double bottom = 0.0;
    double sand = 0.0;
    double silt = 0.0;
    double clay = 0.0;
};

struct LogLayer {
    int number = 0;  // 1 from the top
    double top = 0.0;
    double bottom = 0.0;
    profile::Soil soil = profile::Soil::Sand;
    int zone = 0;  // the zone most of its valid readings fall in, as layers reports it; 0: none
};

struct LogSounding {
    std::string name;     // the input's name
    std::string heading;  // what the title block is headed with: the sounding's id
    std::vector<TitleField> fields;
    sbtn::SbtnResult sbt;
    bool hasU2 = false;
    std::vector<LogInterval> intervals;
    std::vector<LogLayer> layers;
    std::vector<std::size_t> gaps;  // GapsOf the readings: rows after which none was made for a while
};

// The layers of a classified sounding in metres, each with its dominant zone.
// metresPerUnit: 1 for SI graph units, 0.3048 for feet.
std::vector<LogLayer> LogLayers(const std::vector<profile::SoilLayer>& layers, double metresPerUnit,
                                const sbtn::SbtnResult& sbt);

// The index of the layer a depth belongs to, by the rule of layers (top < z <= bottom,
// the first layer taking its top as well, a layer's bottom taken as the next one's top:
// sbtn::SbtnOfLayers); above the first the first, below the last the last; -1 without
// layers.
int LayerIndexAt(const std::vector<LogLayer>& layers, double depth);

// The readings that follow a gap, in order: reading i where there is none between it
// and reading i - 1 over a depth that the sounding would otherwise have covered. That
// is where a new push starts (where the import records each reading's push), or where
// the step between the two is more than 5 times the median step and more than 0.1 m,
// which finds the pushes of a plain file and a run of dropped readings, but not a
// slightly slower stretch of one push. A trace or the zone band is broken there rather
// than drawn straight across depths without readings.
std::vector<std::size_t> GapsOf(const std::vector<double>& depths, const std::vector<int>& pushOfEach);
bool GapBefore(const LogSounding& s, std::size_t reading);

// Where the sounding ends: its deepest reading. The interval grid may run on below it
// (its last intervals repeat the last reading), so the log's axis is sized from the
// readings alone and the intervals and layers are drawn down to here.
double DeepestOf(const LogSounding& s);

}  // namespace pemlo::log
