// The small steps the plotting screens run on the record before they draw: cleaning
// the readings with their ratio, and the friction ratio of every interval. The
// command line runs the very same steps, so its numbers are the screens' numbers.
#pragma once

#include "core/Declarations.h"

namespace pemlo {

// For every reading 1..NumLines: qc of 0 or less becomes 1.0, negative fs becomes 0,
// Ratio = fs x 100 / qc, held at most 20. `index` is the screen's running reading index.
void CleanReadings(Declarations& d, Integer& index);
void CleanReadings(Declarations& d);

// For every interval 1..NumIntervals: IntRatio = IntQSleeve / IntQTip x 100, held at most 20.
void ComputeIntervalRatio(Declarations& d);

// The pipeline both results views run when they load: grid, interval means,
// interval ratio, classification.
void RunClassificationPipeline(Declarations& d);

}  // namespace pemlo
