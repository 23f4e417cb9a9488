#include "sbtn/Sbtn.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <thread>
#include <utility>

#include "formats/NumberText.h"
#include "formats/TextDecoding.h"

namespace pemlo::sbtn {

namespace {

// The stress exponent is iterated until it moves by no more than this; a reading
// that needs more steps than MaxSteps has no normalised values.
constexpr double Tolerance = 1e-9;
constexpr int MaxSteps = 100;

// Ic from Qtn and log10 Fr + 1.22, which the iteration computes once.
double IndexOf(double qtn, double frTerm)
{
    const double x = 3.47 - std::log10(qtn);
    return std::sqrt(x * x + frTerm * frTerm);
}

bool IsUsableAreaRatio(double a) { return std::isfinite(a) && a > 0.0 && a <= 1.0; }

// γ from Rf and qt (Robertson & Cabal 2010), held within 12 to 22 kN/m³; a reading
// whose fs or qt gives no logarithm takes the weight of the one above.
double UnitWeight(double qt, double fs, double waterUnitWeight, double weightAbove)
{
    if (fs <= 0.0 || qt <= 0.0) return weightAbove;
    const double rf = 100.0 * fs / qt;
    const double gamma = waterUnitWeight * (0.27 * std::log10(rf) + 0.36 * std::log10(qt / 0.1) + 1.236);
    return std::clamp(gamma, 12.0, 22.0);
}

struct Settings {
    double groundwater = 0.0;
    double waterUnitWeight = DefaultWaterUnitWeight;
};

// D and γw with their sources, into the result.
Settings ChooseSettings(const SbtnReadings& readings, const SbtnOptions& options, SbtnResult& result)
{
    if (options.groundwater) {
        result.groundwater = *options.groundwater;
        result.groundwaterSource = ValueSource::Option;
    } else if (readings.groundwater && std::isfinite(*readings.groundwater)) {
        result.groundwater = *readings.groundwater;
        result.groundwaterSource = ValueSource::File;
    }
    if (options.waterUnitWeight) {
        result.waterUnitWeight = *options.waterUnitWeight;
        result.waterUnitWeightSource = ValueSource::Option;
    }
    result.unitWeight = options.unitWeight;
    return {result.groundwater, result.waterUnitWeight};
}

// The area ratio of every reading: the option's, else the file's, else the default.
// A file's value outside 0 < a <= 1 refuses the sounding.
std::vector<double> ChooseAreaRatios(const SbtnReadings& readings, const SbtnOptions& options, SbtnResult& result)
{
    const std::size_t count = readings.depth.size();
    std::vector<double> ratios(count, options.areaRatio.value_or(DefaultAreaRatio));
    if (options.areaRatio) {
        result.areaRatioSource = ValueSource::Option;
    } else {
        for (std::size_t i = 0; i < count && i < readings.areaRatio.size(); ++i) {
            if (!readings.areaRatio[i]) continue;
            const double a = *readings.areaRatio[i];
            if (!IsUsableAreaRatio(a)) {
                result.refusal = "the file's area ratio " + formats::ShortestText(a) + " (reading " +
                                 std::to_string(i + 1) + ") is outside 0 < a <= 1";
                return {};
            }
            ratios[i] = a;
            result.areaRatioSource = ValueSource::File;
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (i == 0 || ratios[i] != ratios[i - 1]) result.areaRatios.push_back({i, ratios[i]});
        const bool stated = options.areaRatio || (i < readings.areaRatio.size() && readings.areaRatio[i]);
        if (!stated && i < readings.u2.size() && readings.u2[i]) ++result.areaRatioAssumedWithU2;
    }
    if (result.areaRatios.empty()) result.areaRatios.push_back({0, ratios.empty() ? DefaultAreaRatio : ratios[0]});
    return ratios;
}

// The index of the first reading shallower than the one before it, or the count.
std::size_t FirstDecrease(const std::vector<double>& depth)
{
    for (std::size_t i = 1; i < depth.size(); ++i)
        if (depth[i] < depth[i - 1]) return i;
    return depth.size();
}

// The readings of every other block of 256 from block `first` on.
void NormaliseBlocks(std::span<SbtnRow> rows, std::size_t first, std::size_t step)
{
    constexpr std::size_t Block = 256;
    for (std::size_t from = first * Block; from < rows.size(); from += step * Block) {
        for (SbtnRow& r : rows.subspan(from, std::min(Block, rows.size() - from))) {
            const NormaliseOutcome outcome = Normalise(r.qt, r.fs, r.u2, r.sigmaV0, r.u0);
            r.invalid = outcome.invalid;
            r.values = outcome.values;
        }
    }
}

// Each reading's iteration depends on its own stresses only: a long sounding's
// readings are worked on two cores, with the very same results. The blocks alternate
// between them, since deep readings (n held at 1) take fewer steps than shallow ones.
void NormaliseAll(std::vector<SbtnRow>& rows)
{
    constexpr std::size_t SplitFrom = 8192;
    const std::span<SbtnRow> all(rows);
    if (rows.size() < SplitFrom || std::thread::hardware_concurrency() < 2) {
        NormaliseBlocks(all, 0, 1);
        return;
    }
    std::jthread second([all] { NormaliseBlocks(all, 1, 2); });
    NormaliseBlocks(all, 0, 2);
}

}  // namespace

const char* SourceName(ValueSource source)
{
    switch (source) {
    case ValueSource::Option: return "option";
    case ValueSource::File: return "file";
    case ValueSource::Assumed: break;
    }
    return "assumed";
}

const char* InvalidName(Invalid cause)
{
    switch (cause) {
    case Invalid::None: return "valid";
    case Invalid::NetResistance: return "qn <= 0";
    case Invalid::EffectiveStress: return "effective stress <= 0";
    case Invalid::SleeveFriction: return "fs <= 0";
    case Invalid::NoConvergence: break;
    }
    return "no convergence";
}

const char* ZoneName(int zone)
{
    static constexpr const char* Names[] = {"",
                                            "sensitive fine-grained",
                                            "organic soil",
                                            "clay",
                                            "silt mixture",
                                            "sand mixture",
                                            "sand",
                                            "dense sand to gravelly sand",
                                            "very stiff sand to clayey sand",
                                            "very stiff fine-grained"};
    return zone >= 1 && zone <= 9 ? Names[zone] : "";
}

double BehaviourIndex(double qtn, double fr) { return IndexOf(qtn, std::log10(fr) + 1.22); }

int Zone(double qtn, double fr, double ic)
{
    if (qtn < 12.0 * std::exp(-1.4 * fr)) return 1;
    const double f = 0.005 * (fr - 1.0) - 0.0003 * ((fr - 1.0) * (fr - 1.0)) - 0.002;
    if (f > 0.0 && qtn > 1.0 / f) return fr <= 4.5 ? 8 : 9;
    // Strictly below each bound: a value on a boundary takes the lower zone number.
    static constexpr std::pair<double, int> Bands[] = {{1.31, 7}, {2.05, 6}, {2.60, 5}, {2.95, 4}, {3.60, 3}};
    for (const auto& [bound, zone] : Bands)
        if (ic < bound) return zone;
    return 2;
}

NormaliseOutcome Normalise(double qt, double fs, std::optional<double> u2, double sigmaV0, double u0)
{
    const double qn = 1000.0 * qt - sigmaV0;
    const double effective = sigmaV0 - u0;
    if (qn <= 0.0) return {Invalid::NetResistance, {}};
    if (effective <= 0.0) return {Invalid::EffectiveStress, {}};
    if (fs <= 0.0) return {Invalid::SleeveFriction, {}};
    Normalised v;
    v.qt1 = qn / effective;
    v.fr = 100.0 * 1000.0 * fs / qn;
    if (u2) v.bq = (1000.0 * *u2 - u0) / qn;
    const double pa = ReferencePressure;
    const double frTerm = std::log10(v.fr) + 1.22;
    double n = 1.0;
    for (int k = 0; k < MaxSteps; ++k) {
        const double qtn = (qn / pa) * std::pow(pa / effective, n);
        const double ic = IndexOf(qtn, frTerm);
        const double next = std::min(1.0, 0.381 * ic + 0.05 * effective / pa - 0.15);
        if (std::abs(next - n) <= Tolerance) {
            v.n = n;
            v.qtn = qtn;
            v.ic = ic;
            v.zone = Zone(qtn, v.fr, ic);
            return {Invalid::None, v};
        }
        n = next;
    }
    return {Invalid::NoConvergence, {}};
}

std::vector<std::string> AssumedValues(const SbtnResult& result)
{
    std::vector<std::string> lines;
    if (result.groundwaterSource == ValueSource::Assumed) lines.push_back("groundwater not stated: taken at depth 0");
    const std::string ratio = formats::ShortestText(DefaultAreaRatio);
    if (result.areaRatioAssumedWithU2 > 0 && result.areaRatioSource == ValueSource::Assumed)
        lines.push_back("area ratio not stated: " + ratio + " assumed");
    else if (result.areaRatioAssumedWithU2 > 0)  // some pushes state one, others do not
        lines.push_back("area ratio not stated for " + std::to_string(result.areaRatioAssumedWithU2) + " reading" +
                        (result.areaRatioAssumedWithU2 == 1 ? "" : "s") + " with u2: " + ratio + " assumed");
    return lines;
}

std::string CheckOptions(const SbtnOptions& options)
{
    if (options.groundwater && !std::isfinite(*options.groundwater)) return "--gwt must be a finite depth";
    if (options.areaRatio && !IsUsableAreaRatio(*options.areaRatio))
        return "--area-ratio must lie in 0 < a <= 1";
    if (options.unitWeight && !(std::isfinite(*options.unitWeight) && *options.unitWeight > 0.0))
        return "--unit-weight must be auto or a positive number";
    if (options.waterUnitWeight && !(std::isfinite(*options.waterUnitWeight) && *options.waterUnitWeight > 0.0))
        return "--water-unit-weight must be a positive number";
    return {};
}

SbtnResult ComputeSbtn(const SbtnReadings& readings, const SbtnOptions& options)
{
    SbtnResult result;
    if (result.refusal = CheckOptions(options); !result.refusal.empty()) return result;
    const Settings s = ChooseSettings(readings, options, result);
    const std::vector<double> ratios = ChooseAreaRatios(readings, options, result);
    if (!result.refusal.empty()) return result;
    if (const std::size_t i = FirstDecrease(readings.depth); i < readings.depth.size()) {
        result.refusal = "depths must not decrease: reading " + std::to_string(i + 1) + " at " +
                         formats::ShortestText(readings.depth[i]) + " m lies above the one before it";
        return result;
    }

    const double gw = s.waterUnitWeight;
    const double d = s.groundwater;
    double sigma = gw * std::max(0.0, -d);  // water standing above depth 0 weighs on it
    double previousDepth = 0.0;
    double weightAbove = FirstUnitWeight;
    result.rows.reserve(readings.depth.size());
    for (std::size_t i = 0; i < readings.depth.size(); ++i) {
        SbtnRow r;
        r.depth = readings.depth[i];
        r.qc = readings.qc[i];
        r.fs = readings.fs[i];
        r.u2 = i < readings.u2.size() ? readings.u2[i] : std::nullopt;
        r.qt = r.u2 ? r.qc + *r.u2 * (1.0 - ratios[i]) : r.qc;
        if (r.qt != 0.0) r.rf = 100.0 * r.fs / r.qt;
        r.gamma = options.unitWeight ? *options.unitWeight : UnitWeight(r.qt, r.fs, gw, weightAbove);
        weightAbove = r.gamma;
        sigma = sigma + r.gamma * (r.depth - previousDepth);
        previousDepth = r.depth;
        r.sigmaV0 = sigma;
        r.u0 = r.depth > d ? gw * (r.depth - d) : 0.0;
        r.sigmaV0Eff = r.sigmaV0 - r.u0;
        r.qn = 1000.0 * r.qt - r.sigmaV0;
        result.rows.push_back(r);
    }
    NormaliseAll(result.rows);
    for (const SbtnRow& r : result.rows) {
        if (r.invalid == Invalid::None)
            ++result.valid;
        else
            ++result.invalidByCause[static_cast<std::size_t>(r.invalid)];
    }
    return result;
}

}  // namespace pemlo::sbtn
