// Who a soil profile belongs to when it goes back into an engineer's project: the
// location and the pushes of the sounding, and the project information it carries.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/ImportedSounding.h"

namespace pemlo::profile {

// One push of the cone (a test reference) and the depth range of its readings, metres.
struct PushRange {
    std::string id;
    double top = 0.0;
    double base = 0.0;
    std::string reference;  // the cone it was made with; empty: the project's cone number
    std::optional<double> areaRatio = std::nullopt;  // the one the normalised soil behaviour type used
};

struct ProfileSource {
    std::string name;   // as shown to the user: FILE, or FILE#ID for one sounding of several
    std::string locaId; // the location's identifier in the project
    std::vector<PushRange> pushes;  // at least one
    formats::ProjectInfo project;  // an empty field is not known
};

// A plain data file: the location and its one push are named after the file's stem,
// the push covering the readings from the first to the last depth (metres).
ProfileSource SourceOfDataFile(const std::string& path, double firstDepth, double lastDepth);

// An imported sounding named `name`: an AGS4 sounding keeps its LOCA_ID and its pushes
// (SCPG_TESN), so that the layers go back under them; any other sounding is one push
// named, like its location, after its id (GEF #TESTID, the BRO id) or else the file.
ProfileSource SourceOfSounding(const std::string& name, const std::string& path,
                               const formats::ImportedSounding& sounding);

// The push a layer whose top lies at `top` belongs to: of the pushes that start at or
// above the top, the one that starts deepest (the first listed of equals). So a top
// inside a push belongs to that push, a top in a gap between pushes to the nearest
// push above it, and a top above every push to the push that starts shallowest.
// Needs at least one push.
std::size_t PushOfTop(const std::vector<PushRange>& pushes, double top);

// The same choice for many layers of one sounding: the pushes are ordered by their
// tops once, so that each layer costs a binary search, not a pass over every push.
class PushesByTop {
public:
    explicit PushesByTop(const std::vector<PushRange>& pushes);
    std::size_t Of(double top) const;

private:
    std::vector<std::pair<double, std::size_t>> order_;  // (top, index), stable in index order
};

}  // namespace pemlo::profile
