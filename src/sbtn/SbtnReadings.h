// One sounding's readings as the normalised soil behaviour type (Robertson 2009) takes
// them: metres and MPa in double, exactly as the import (or, for a plain file, the road
// to SI units) stored them in single precision, before the program's cleaning of qc and
// fs; with the pore pressure u2, the cone's net area ratio and the groundwater depth
// where the file states them, and where each came from.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pemlo::sbtn {

struct SbtnReadings {
    std::vector<double> depth;  // m, never decreasing
    std::vector<double> qc;     // MPa
    std::vector<double> fs;     // MPa
    // One per reading; an empty optional is a reading without u2 (every one of them
    // when the file has no u2 column).
    std::vector<std::optional<double>> u2;  // MPa
    // One per reading where the file states the area ratio (an AGS4 reading takes the
    // SCPG_CAR of its own push); empty optionals where it states none.
    std::vector<std::optional<double>> areaRatio;
    std::optional<double> groundwater;  // metres below depth 0, as the file states it

    std::string u2Source;           // "quantity 6 [MPa]", "SCPT_PWP2 [MPa]", "column 4"; empty: none
    std::string u2Unread;           // why the file's u2 column was not read; empty: it was, or none
    int withoutU2 = 0;              // readings that have no u2 although the column exists
    std::string areaRatioSource;    // "#MEASUREMENTVAR 3", "coneSurfaceQuotient", "SCPG_CAR"; empty: none
    std::string groundwaterSource;  // "#MEASUREMENTVAR 14", "SCPG_WAT"; empty: none
};

}  // namespace pemlo::sbtn
