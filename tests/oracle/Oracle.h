// A second, deliberately plain transcription of the interval numerics: the grid, the
// averaging by a full scan of every reading for every interval, the interval ratio,
// the classification, the unit conversions and the cleaning of the readings. It
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
    std::int16_t DataUnits = 0;
    std::int16_t NumLines = 0;
    std::vector<float> Depth = std::vector<float>(4000, 0.0f);
    std::vector<float> Q_Tip = std::vector<float>(4000, 0.0f);
    std::vector<float> Q_Sleeve = std::vector<float>(4000, 0.0f);
    std::vector<float> Ratio = std::vector<float>(4000, 0.0f);

    float IntervalSize = 0.0f;
    std::int16_t NumIntervals = 0;
    std::vector<float> IntDepth, IntQTip, IntQSleeve, IntRatio, IntReserve;
    std::vector<float> IntProb1, IntProb2, IntProb3, IntU, IntV;

    std::int16_t UnitIndex = 0;
    std::int16_t RefineIndex = 0;
    std::int16_t ClassifyIndex = 0;
    std::int16_t CleanIndex = 0;
};

void MilliVoltsToEnglish(Record& r, float tipFactor, float sleeveFactor);
void MilliVoltsToSI(Record& r, float tipFactor, float sleeveFactor);
void SIToEnglish(Record& r);
void EnglishToSI(Record& r);
void IntervalsSIToEnglish(Record& r);
void IntervalsEnglishToSI(Record& r);
void IntervalsEnglishToMetric(Record& r);
void IntervalsMetricToEnglish(Record& r);

void CleanReadings(Record& r);
void BuildIntervalGrid(Record& r);
void AverageIntervals(Record& r);
void ComputeIntervalRatio(Record& r);
void ClassifySoil(Record& r);
void RunClassificationPipeline(Record& r);

}  // namespace pemlo::oracle
