// Robertson's normalised soil behaviour type (Robertson 2009; the unit weight of
// Robertson & Cabal 2010), reading by reading, on the cone resistance corrected for
// the pore pressure on the shoulder and the vertical stresses. Every choice the
// published method leaves open is fixed here and stated in docs/sbtn.md: a zone
// boundary belongs to the lower zone number, no cap on the stress normalisation, a
// reading without u2 takes qt = qc, n is computed from qt. Stresses are in kPa,
// resistances in MPa, depths in metres; everything in double.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "sbtn/SbtnReadings.h"

namespace pemlo::sbtn {

// The settings as the user gives them; an empty optional takes the file's value or
// the stated default.
struct SbtnOptions {
    std::optional<double> groundwater;  // D, metres below depth 0; negative: water above it
    std::optional<double> areaRatio;    // a, for every reading
    std::optional<double> unitWeight;   // kN/m³ for every reading; empty: from qt and Rf
    std::optional<double> waterUnitWeight;  // γw, kN/m³; empty: 9.81
};

constexpr double DefaultAreaRatio = 0.8;
constexpr double DefaultWaterUnitWeight = 9.81;  // kN/m³
constexpr double ReferencePressure = 100.0;  // pa, kPa
constexpr double FirstUnitWeight = 18.0;     // kN/m³, for a first reading whose own cannot be estimated

enum class ValueSource { Option, File, Assumed };
const char* SourceName(ValueSource source);  // "option", "file", "assumed"

// Why a reading has no normalised values; None: it has them.
enum class Invalid { None, NetResistance, EffectiveStress, SleeveFriction, NoConvergence };
constexpr int InvalidCauses = 5;
const char* InvalidName(Invalid cause);  // "qn <= 0", "effective stress <= 0", "fs <= 0", "no convergence"

// The values of a valid reading, from Qt1 on.
struct Normalised {
    double qt1 = 0.0;
    double fr = 0.0;               // %
    std::optional<double> bq;      // empty without u2
    double n = 0.0;
    double qtn = 0.0;
    double ic = 0.0;
    int zone = 0;                  // 1..9
};

struct SbtnRow {
    double depth = 0.0;            // m
    double qc = 0.0;               // MPa
    double fs = 0.0;               // MPa
    std::optional<double> u2;      // MPa
    double qt = 0.0;               // MPa
    std::optional<double> rf;      // %, empty where qt = 0
    double gamma = 0.0;            // kN/m³
    double sigmaV0 = 0.0;          // kPa
    double u0 = 0.0;               // kPa
    double sigmaV0Eff = 0.0;       // kPa
    double qn = 0.0;               // kPa
    Invalid invalid = Invalid::None;
    Normalised values;             // meaningful only where invalid is None
};

// One area ratio over the readings from `fromIndex` on (an AGS4 file's pushes may
// state different ones).
struct AreaRatioSpan {
    std::size_t fromIndex = 0;
    double value = DefaultAreaRatio;
};

struct SbtnResult {
    std::vector<SbtnRow> rows;
    double groundwater = 0.0;
    ValueSource groundwaterSource = ValueSource::Assumed;
    std::vector<AreaRatioSpan> areaRatios;  // at least one
    ValueSource areaRatioSource = ValueSource::Assumed;
    int areaRatioAssumedWithU2 = 0;  // readings with u2 whose a is the default: neither option nor file gave one
    double waterUnitWeight = DefaultWaterUnitWeight;
    ValueSource waterUnitWeightSource = ValueSource::Assumed;
    std::optional<double> unitWeight;       // the option's, else estimated reading by reading
    int valid = 0;
    std::array<int, InvalidCauses> invalidByCause{};  // indexed by Invalid
    std::string refusal;  // not empty: a value of the file is unusable (exit 3), and why
};

// Ic from Qtn and Fr (%).
double BehaviourIndex(double qtn, double fr);

// The zone 1..9 of a point of the chart; a value on an Ic boundary goes to the lower
// zone number.
int Zone(double qtn, double fr, double ic);

// The normalised values of one reading from qt, fs, u2 (MPa), σv0 and u0 (kPa);
// `invalid` says why there are none.
struct NormaliseOutcome {
    Invalid invalid = Invalid::None;
    Normalised values;
};
NormaliseOutcome Normalise(double qt, double fs, std::optional<double> u2, double sigmaV0, double u0);

// A value of the options that cannot be used: empty when all are usable (exit 2 otherwise).
std::string CheckOptions(const SbtnOptions& options);

// One row per reading. The options are checked with CheckOptions first.
SbtnResult ComputeSbtn(const SbtnReadings& readings, const SbtnOptions& options);

// What was taken for want of a stated value, a sentence each ("groundwater not stated:
// taken at depth 0"). The area ratio is named only where a reading with u2 took it:
// without u2 it changes nothing.
std::vector<std::string> AssumedValues(const SbtnResult& result);

// The zone's name ("dense sand to gravelly sand").
const char* ZoneName(int zone);

}  // namespace pemlo::sbtn
