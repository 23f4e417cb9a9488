// Sizes the depth interval grid: the interval thickness from the units of the
// readings (0.328 ft or 0.1 m), the number of whole intervals down to the last
// reading, and fresh, all-zero interval arrays.
#pragma once

#include "core/Declarations.h"

namespace pemlo {

void BuildIntervalGrid(Declarations& d);

}  // namespace pemlo
