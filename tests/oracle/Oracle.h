// A second, deliberately plain transcription of the interval numerics: the unit
// conversions, the cleaning of the readings, the grid, the averaging by a full scan of
// every reading for every interval, the interval ratio and the classification. It
// shares no code with the program (not even its checked arithmetic or its record), so
// that comparing the two bit for bit tests the program's faster averaging and every
// run-time error it raises. Written for obviousness, not speed.
#pragma once

#include <cstdint>
#include <vector>

namespace pemlo::oracle {

// A run-time error of the transcription: the number the program must raise too.
struct Fault {
    int number;
};

// The fields the numerics read and write, with the program's index ranges.
struct Record {
    std::int16_t DataUnits = 0;  // 0 millivolts, 1 English, 2 SI
    std::int16_t NumLines = 0;
    std::vector<float> Depth = std::vector<float>(4000), Q_Tip = std::vector<float>(4000),
                       Q_Sleeve = std::vector<float>(4000), Ratio = std::vector<float>(4000);

    float IntervalSize = 0.0f;
    std::int16_t NumIntervals = 0;
    std::vector<float> IntDepth, IntQTip, IntQSleeve, IntRatio, IntReserve;
    std::vector<float> IntProb1, IntProb2, IntProb3, IntU, IntV;

    std::int16_t UnitIndex = 0, RefineIndex = 0, ClassifyIndex = 0, CleanIndex = 0;
};

// The readings into the units of the graphs (0 English, 1 SI), as the screens do
// before anything is averaged; the cone factors serve millivolt files only.
void ConvertReadings(Record& r, std::int16_t graphUnits, float tipFactor, float sleeveFactor);
void CleanReadings(Record& r);
// Grid, means, interval ratio and classification, in that order.
void RunClassificationPipeline(Record& r);

}  // namespace pemlo::oracle
