// Seeded soundings for comparing the program with the oracle: sorted and unsorted,
// duplicates, gaps, readings on interval boundaries, huge and tiny values, zero and
// negative readings, every unit route, first readings deeper than one interval, and
// the sizes where the grid, the averaging and the counters fail.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pemlo::oracle {

struct Sounding {
    std::string kind;               // what the generator meant to exercise
    std::int16_t dataUnits = 2;     // units of the file: 0 mV, 1 English, 2 SI
    std::int16_t graphUnits = 1;    // 0 English, 1 SI
    float tipFactor = 50.0f;        // cone factors for millivolt files
    float sleeveFactor = 0.5f;
    bool cleaned = true;            // whether the readings pass the cleaning first
    std::int16_t numLines = 0;      // may differ from depth.size() only where it is 0
    std::vector<float> depth, tip, sleeve;
};

// Deterministic for a seed on every platform (splitmix64, no standard distributions).
class SoundingGenerator {
public:
    explicit SoundingGenerator(std::uint64_t seed) : state_(seed) {}
    Sounding Next();

    // A sounding of n readings at a fixed spacing from `top` down.
    static Sounding Regular(int n, float top, float spacing, std::int16_t dataUnits);

private:
    double Uniform();  // [0, 1)
    int Below(int n) { return static_cast<int>(Uniform() * n); }
    bool Chance(double p) { return Uniform() < p; }
    std::uint64_t state_;
};

}  // namespace pemlo::oracle
