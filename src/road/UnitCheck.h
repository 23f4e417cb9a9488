// A sanity check of the units of every input, the plain ASCII layout included, on
// the readings as routed to the graph units and before the cleaning: medians far
// beyond what soil gives, a deepest reading beyond any cone's reach, and plain ASCII
// depths out of order. Each warning says what it suggests; nothing is changed.
#pragma once

#include <string>
#include <vector>

#include "core/Declarations.h"

namespace pemlo::formats {

// The warnings for readings 1..NumLines of d in the units d.DataUnits says (English
// or SI). depthOrder: also check that the depths increase (the plain ASCII layout;
// an import has sorted them).
std::vector<std::string> CheckUnits(const Declarations& d, bool depthOrder);

}  // namespace pemlo::formats
