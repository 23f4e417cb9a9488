// The probabilistic soil classification: for every interval, the classification
// index U, the in-situ index V and the percent sand, silt and clay.
#pragma once

#include "core/Declarations.h"

namespace pemlo {

// Converts the interval arrays to metres and kg/cm2, classifies intervals
// 1..NumIntervals and converts back to the units of DataUnits.
void ClassifySoil(Declarations& d);

// The method for interval i alone, with IntQTip(i) already in kg/cm2 and IntRatio(i)
// in percent: guards IntQTip(i) and IntQSleeve(i), writes IntU, IntV and the three
// probabilities of interval i.
void ClassifyInterval(Declarations& d, int i);

}  // namespace pemlo
