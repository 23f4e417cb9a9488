// The one in-memory record of a run: the data file and its layout, the units, the
// project information, the readings, the depth interval grid with its results, and
// the counters the charts share. Every screen and procedure works on this record.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "runtime/Arith.h"

namespace pemlo {

constexpr int MaxReadings = 4000;

// Unit codes, deliberately asymmetric: the data units count millivolts as 0,
// the graph units have no millivolts at all.
enum DataUnitCode : Integer { DataMilliVolts = 0, DataEnglish = 1, DataSI = 2 };
enum GraphUnitCode : Integer { GraphEnglish = 0, GraphSI = 1 };

// Truth values are stored as 0 and -1.
constexpr Integer VbFalse = 0;
constexpr Integer VbTrue = -1;

// Readings: single-precision values at indices 1 to 4000. Every access checks its
// index; an index outside 1..4000 raises error 9 "Subscript out of range".
class ReadingArray {
public:
    float& operator[](int i);
    float operator[](int i) const;
    // Unchecked view for loops whose bounds were checked beforehand.
    float* data() noexcept { return values_.data(); }
    const float* data() const noexcept { return values_.data(); }

private:
    std::array<float, MaxReadings> values_{};
};

// Interval arrays: indices 1 to the size of their last allocation, all zero after
// each Allocate. Before the first allocation they have no valid index at all.
class IntervalArray {
public:
    // Indices 1..count, all 0.0; count below 1 raises error 9 and keeps the old contents.
    void Allocate(int count);
    int Size() const noexcept { return static_cast<int>(values_.size()); }
    float& operator[](int i);
    float operator[](int i) const;
    float* data() noexcept { return values_.data(); }
    const float* data() const noexcept { return values_.data(); }

private:
    std::vector<float> values_;
};

struct Declarations {
    // The data file and its layout.
    std::string DataFileName;
    Integer FileNum = 0;
    Integer NumTitleLines = 0;
    Integer DataUnits = 0;
    Integer GraphUnits = 0;
    Integer FileReadError = 0;

    // Project information, exactly as typed.
    std::string ProjectNumber;
    std::string ProjectTitle;
    std::string ProjectLocation;
    std::string GWT;
    std::string ConeNo;
    std::string ProjectDate;

    // Readings, entries 1..NumLines in use.
    ReadingArray Depth;
    ReadingArray Q_Tip;
    ReadingArray Q_Sleeve;
    ReadingArray Ratio;
    Integer NumLines = 0;

    // Depth interval grid and the classification results.
    float IntervalSize = 0.0f;
    Integer NumIntervals = 0;
    IntervalArray IntDepth;
    IntervalArray IntQTip;
    IntervalArray IntQSleeve;
    IntervalArray IntRatio;
    IntervalArray IntReserve;
    IntervalArray IntProb1;
    IntervalArray IntProb2;
    IntervalArray IntProb3;
    IntervalArray IntU;
    IntervalArray IntV;

    // Chart counters: one chart is filled at a time.
    Integer NumPoints = 0;
    Integer NumSeries = 0;

    // Working fields of single modules; loop counters keep their last value.
    Integer NumColumns = 0;
    std::string LineBuffer;
    Integer UnitIndex = 0;
    Integer ClassifyIndex = 0;
    Integer RefineIndex = 0;
    Integer PlotIndex = 0;
};

// The desktop program's one record. The command line and the tests make records of
// their own, so that several soundings can be worked on at once.
Declarations& TheRecord();

// Sets every field of the program's record back to its state at program start.
void ResetRecord();

}  // namespace pemlo
