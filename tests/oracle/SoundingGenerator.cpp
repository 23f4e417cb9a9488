#include "oracle/SoundingGenerator.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <utility>

namespace pemlo::oracle {

namespace {

float Decimals3(double x) { return static_cast<float>(std::round(x * 1000.0) / 1000.0); }

}  // namespace

double SoundingGenerator::Uniform()
{
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1.0p-53;
}

Sounding SoundingGenerator::Regular(int n, float top, float spacing, std::int16_t dataUnits)
{
    Sounding s;
    s.dataUnits = dataUnits;
    s.numLines = static_cast<std::int16_t>(n);
    for (int k = 0; k < n; ++k) {
        s.depth.push_back(static_cast<float>(static_cast<double>(top) + k * static_cast<double>(spacing)));
        s.tip.push_back(static_cast<float>(5.0 + 4.0 * std::sin(k * 0.01)));
        s.sleeve.push_back(static_cast<float>(0.05 + 0.04 * std::cos(k * 0.013)));
    }
    return s;
}

Sounding SoundingGenerator::Next()
{
    static const float spacings[] = {0.005f, 0.01f, 0.02f, 0.025f, 0.05f, 0.1f, 0.2f, 0.328f, 0.5f};
    static const char* const kinds[] = {"regular", "unsorted", "duplicates", "gaps", "boundaries",
                                        "first reading deep", "extreme values", "zero and negative",
                                        "tiny sounding", "deep grid", "millivolt factors", "non-finite",
                                        "4000 readings"};
    const int kind = Below(13);
    Sounding s;
    s.kind = kinds[kind];
    s.dataUnits = static_cast<std::int16_t>(Below(3));
    s.graphUnits = static_cast<std::int16_t>(Below(2));
    s.cleaned = !Chance(0.2);
    const int n = kind == 12 ? 4000 : kind == 9 ? 2 + Below(40) : 2 + Below(150);
    double spacing = kind == 12 ? 0.005 : spacings[Below(9)];
    // Tens of thousands of intervals: few readings keep the oracle's scans short.
    if (kind == 9) spacing = (Chance(0.5) ? 3276.79 : 3000.0 + Uniform() * 1000.0) / n;
    const double top = kind == 5 ? 0.4 + Uniform() * 60.0 : Uniform() * 0.3;
    for (int k = 0; k < n; ++k) {
        const double qc = std::exp(std::log(0.05) + Uniform() * (std::log(80.0) - std::log(0.05)));  // 0.05 to 80
        s.depth.push_back(Decimals3(top + k * spacing));
        s.tip.push_back(Decimals3(qc));
        s.sleeve.push_back(Chance(0.05) ? 0.0f : Decimals3(qc * Uniform() * 0.08));
    }
    auto pick = [&] { return static_cast<std::size_t>(Below(n)); };
    if (kind == 1)
        for (int swaps = 1 + Below(n / 3 + 1); swaps > 0; --swaps) std::swap(s.depth[pick()], s.depth[pick()]);
    if (kind == 2)
        for (int copies = 1 + Below(n / 2 + 1); copies > 0; --copies)
            if (const std::size_t k = pick(); k + 1 < s.depth.size()) s.depth[k + 1] = s.depth[k];
    double shift = 0.0;
    if (kind == 3)
        for (float& d : s.depth) shift += Chance(0.05) ? 0.5 + Uniform() * 5.0 : 0.0, d = Decimals3(d + shift);
    if (kind == 4) {
        // Depths on the boundaries the averaging accumulates, and one step either side.
        s.dataUnits = Chance(0.5) ? 1 : 2;
        s.graphUnits = s.dataUnits == 1 ? 0 : 1;
        const float t = s.dataUnits == 1 ? 0.328f : 0.1f;
        float bound = Chance(0.7) ? t : Decimals3(0.5 + Uniform() * 3.0);
        s.depth[0] = bound > t ? bound : static_cast<float>(Uniform() * t);
        for (std::size_t k = 1; k < s.depth.size(); ++k) {
            bound = static_cast<float>(static_cast<double>(t) + bound);
            const int side = Below(3);
            s.depth[k] = side == 0 ? bound : std::nextafter(bound, side == 1 ? 0.0f : FLT_MAX);
        }
    }
    static const float extremes[] = {1e37f, 3e38f, -3e38f, 1e-40f, 1e-45f, 0.0f, -1.0f, FLT_MAX, 1e20f};
    if (kind == 6)
        for (int m = 1 + Below(4); m > 0; --m) (Chance(0.5) ? s.tip : s.sleeve)[pick()] = extremes[Below(9)];
    if (kind == 7) {
        s.cleaned = Chance(0.3);
        for (int m = 1 + Below(n); m > 0; --m) (Chance(0.6) ? s.tip : s.sleeve)[pick()] = -static_cast<float>(Below(3));
    }
    if (kind == 8) {  // none to three readings, all within the first few intervals
        const auto keep = static_cast<std::size_t>(Below(4));
        s.depth.resize(keep), s.tip.resize(keep), s.sleeve.resize(keep);
        for (float& d : s.depth) d = Decimals3(Uniform() * 0.7);
    }
    if (kind == 9) {
        s.dataUnits = Chance(0.5) ? 2 : 0;
        s.graphUnits = 1;
        if (Chance(0.3)) s.depth.back() = Chance(0.5) ? 3276.79f : 3276.8f;
    }
    if (kind == 10) {
        s.dataUnits = 0;
        s.tipFactor = Chance(0.3) ? 1e35f : static_cast<float>(Uniform() * 100.0);
        s.sleeveFactor = Chance(0.2) ? 1e37f : static_cast<float>(Uniform());
    }
    if (kind == 11 && !s.depth.empty()) {
        const float odd[] = {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN()};
        std::vector<float>& where = Below(3) == 0 ? s.depth : (Chance(0.5) ? s.tip : s.sleeve);
        where[pick()] = odd[Below(3)];
    }
    s.numLines = static_cast<std::int16_t>(s.depth.size());
    return s;
}

}  // namespace pemlo::oracle
