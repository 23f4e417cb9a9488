#include "input/Module_Units.h"

#include <algorithm>

#include "runtime/Arith.h"

namespace pemlo {

namespace {

// The constants as engineers' earlier results used them; none is derived from another.
constexpr double FeetPerMetre = 3.28084;
constexpr double MetresPerFoot = 0.3048;
constexpr double TsfPerMPa = 10.44277;
constexpr double MPaPerTsf = 0.09576;
constexpr double KgPerCm2PerTsf = 0.976486;

// Each value is loaded from single precision, worked in double and stored single; a
// product beyond single range (or nan) fails at its store with error 6.
float Times(float value, double c) { return ToSingle(static_cast<double>(value) * c); }
float Over(float value, double c) { return ToSingle(Div(static_cast<double>(value), c)); }

// "Multiply by the reciprocal": the reciprocal is formed first, which changes the
// last bit of some results compared with dividing.
double Reciprocal(double c) { return Div(1.0, c); }

int Extent(const ReadingArray& a) { return a.Bound(); }
int Extent(const IntervalArray& a) { return a.Size(); }

// The loop all eight conversions share. UnitIndex runs from 1 and holds count + 1
// afterwards; its final increment overflows at a count of 32767. An entry is written
// only when all three of its values converted, so a failure leaves the entries before
// it converted and the rest as they were. Entries within all three arrays' bounds are
// reached directly; the first one beyond takes the checked access and its error 9.
template <class Array, class DepthOp, class TipOp, class SleeveOp>
void ConvertEntries(Declarations& d, Integer count, Array& depth, Array& tip, Array& sleeve,
                    DepthOp depthOp, TipOp tipOp, SleeveOp sleeveOp)
{
    d.UnitIndex = 1;
    if (count < 1) return;
    const int inBounds = std::min({Extent(depth), Extent(tip), Extent(sleeve)});
    while (true) {
        const int k = d.UnitIndex;
        if (k <= inBounds) {
            float& depthK = depth.data()[k - 1];
            float& tipK = tip.data()[k - 1];
            float& sleeveK = sleeve.data()[k - 1];
            const float newDepth = depthOp(depthK);
            const float newTip = tipOp(tipK);
            const float newSleeve = sleeveOp(sleeveK);
            depthK = newDepth;
            tipK = newTip;
            sleeveK = newSleeve;
        } else {
            const float newDepth = depthOp(depth[k]);
            const float newTip = tipOp(tip[k]);
            const float newSleeve = sleeveOp(sleeve[k]);
            depth[k] = newDepth;
            tip[k] = newTip;
            sleeve[k] = newSleeve;
        }
        Increment(d.UnitIndex);
        if (d.UnitIndex > count) return;
    }
}

template <class DepthOp, class ForceOp>
void ConvertReadings(Declarations& d, Integer unitsAfter, DepthOp depthOp, ForceOp forceOp)
{
    ConvertEntries(d, d.NumLines, d.Depth, d.Q_Tip, d.Q_Sleeve, depthOp, forceOp, forceOp);
    d.DataUnits = unitsAfter;
}

template <class DepthOp, class ForceOp>
void ConvertIntervals(Declarations& d, DepthOp depthOp, ForceOp forceOp)
{
    ConvertEntries(d, d.NumIntervals, d.IntDepth, d.IntQTip, d.IntQSleeve, depthOp, forceOp,
                   forceOp);
}

}  // namespace

void MilliVoltsToEnglish(Declarations& d, float& TipFactor, float& SleeveFactor)
{
    // Millivolts reach tsf through MPa: the cone factor first, then the divisor.
    const double tipFactor = TipFactor;
    const double sleeveFactor = SleeveFactor;
    ConvertEntries(
        d, d.NumLines, d.Depth, d.Q_Tip, d.Q_Sleeve, [](float v) { return Times(v, FeetPerMetre); },
        [tipFactor](float v) { return ToSingle(Div(static_cast<double>(v) * tipFactor, MPaPerTsf)); },
        [sleeveFactor](float v) {
            return ToSingle(Div(static_cast<double>(v) * sleeveFactor, MPaPerTsf));
        });
    d.DataUnits = DataEnglish;
}

void MilliVoltsToSI(Declarations& d, float& TipFactor, float& SleeveFactor)
{
    const double tipFactor = TipFactor;
    const double sleeveFactor = SleeveFactor;
    ConvertEntries(
        d, d.NumLines, d.Depth, d.Q_Tip, d.Q_Sleeve, [](float v) { return v; },
        [tipFactor](float v) { return Times(v, tipFactor); },
        [sleeveFactor](float v) { return Times(v, sleeveFactor); });
    d.DataUnits = DataSI;
}

void SIToEnglish(Declarations& d)
{
    ConvertReadings(
        d, DataEnglish, [](float v) { return Times(v, FeetPerMetre); },
        [](float v) { return Times(v, TsfPerMPa); });
}

void EnglishToSI(Declarations& d)
{
    const double metresPerFoot = Reciprocal(FeetPerMetre);
    const double mpaPerTsf = Reciprocal(TsfPerMPa);
    ConvertReadings(
        d, DataSI, [metresPerFoot](float v) { return Times(v, metresPerFoot); },
        [mpaPerTsf](float v) { return Times(v, mpaPerTsf); });
}

float StressEnglishToSI(float value) { return Times(value, Reciprocal(TsfPerMPa)); }

void IntervalsSIToEnglish(Declarations& d)
{
    ConvertIntervals(
        d, [](float v) { return Times(v, FeetPerMetre); },
        [](float v) { return Times(v, TsfPerMPa); });
}

void IntervalsEnglishToSI(Declarations& d)
{
    const double metresPerFoot = Reciprocal(FeetPerMetre);
    const double mpaPerTsf = Reciprocal(TsfPerMPa);
    ConvertIntervals(
        d, [metresPerFoot](float v) { return Times(v, metresPerFoot); },
        [mpaPerTsf](float v) { return Times(v, mpaPerTsf); });
}

void IntervalsEnglishToMetric(Declarations& d)
{
    ConvertIntervals(
        d, [](float v) { return Times(v, MetresPerFoot); },
        [](float v) { return Times(v, KgPerCm2PerTsf); });
}

void IntervalsMetricToEnglish(Declarations& d)
{
    ConvertIntervals(
        d, [](float v) { return Over(v, MetresPerFoot); },
        [](float v) { return Over(v, KgPerCm2PerTsf); });
}

}  // namespace pemlo
