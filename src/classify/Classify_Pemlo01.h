// The probabilistic soil classification: for every interval, the classification
// index U, the in-situ index V and the percent sand, silt and clay.
#pragma once

#include "core/Declarations.h"

namespace pemlo {

void ClassifySoil(Declarations& d);

}  // namespace pemlo
