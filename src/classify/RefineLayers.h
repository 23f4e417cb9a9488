// Brings the readings onto the interval grid: a representative depth and the mean
// tip resistance and sleeve friction of every interval.
#pragma once

#include "core/Declarations.h"

namespace pemlo {

// Bit for bit what a scan of every reading for every interval gives, without that scan.
void AverageIntervals(Declarations& d);

}  // namespace pemlo
