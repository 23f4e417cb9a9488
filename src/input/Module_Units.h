// Converts the readings, or the interval arrays, in place from one system of units
// to another. The constants are deliberately not derived from one another, and
// "multiply by the reciprocal" is kept apart from "divide": engineers' earlier
// results depend on the last bit of both.
#pragma once

#include "core/Declarations.h"

namespace pemlo {

// Readings (Depth, Q_Tip, Q_Sleeve, 1..NumLines); each records the units it produced
// in DataUnits, also when there is nothing to convert.
void MilliVoltsToEnglish(Declarations& d, float& TipFactor, float& SleeveFactor);
void MilliVoltsToSI(Declarations& d, float& TipFactor, float& SleeveFactor);
void SIToEnglish(Declarations& d);
void EnglishToSI(Declarations& d);

// One stress in tsf to MPa exactly as EnglishToSI converts qc, for a further column
// that is in the units of qc (a plain file's u2).
float StressEnglishToSI(float value);

// Interval arrays (IntDepth, IntQTip, IntQSleeve, 1..NumIntervals), for the
// classification only; DataUnits is not changed.
void IntervalsSIToEnglish(Declarations& d);
void IntervalsEnglishToSI(Declarations& d);
void IntervalsEnglishToMetric(Declarations& d);
void IntervalsMetricToEnglish(Declarations& d);

}  // namespace pemlo
