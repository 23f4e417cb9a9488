// The one in-memory record of a run: the data file and its layout, the units, the
// project information, the readings, the depth interval grid with its results, and
// the counters the charts share. Every screen and procedure works on this record.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "core/IntervalMemory.h"
#include "runtime/Arith.h"

namespace pemlo {

// Readings the plain ASCII layout holds, and the most an imported sounding may hold
// (its count is a 16-bit counter like every count of the record).
constexpr int MaxReadings = 4000;
constexpr int MaxImportedReadings = 32767;

// Unit codes, deliberately asymmetric: the data units count millivolts as 0,
// the graph units have no millivolts at all.
enum DataUnitCode : Integer { DataMilliVolts = 0, DataEnglish = 1, DataSI = 2 };
enum GraphUnitCode : Integer { GraphEnglish = 0, GraphSI = 1 };

// Truth values are stored as 0 and -1.
constexpr Integer VbFalse = 0;
constexpr Integer VbTrue = -1;

// Readings: single-precision values at indices 1 to the bound, 4000 unless an
// imported sounding widened it. Every access checks its index; an index outside
// 1..bound raises error 9 "Subscript out of range".
// An index outside 1..bound raises error 9 "Subscript out of range". Inline: the
// classification reads an array some twenty times an interval.
inline void CheckIndex(int i, int bound)
{
    if (i < 1 || i > bound) [[unlikely]] Raise(ErrSubscriptOutOfRange);
}

class ReadingArray {
public:
    ReadingArray() : values_(MaxReadings, 0.0f) {}
    float& operator[](int i)
    {
        CheckIndex(i, Bound());
        return values_[static_cast<std::size_t>(i - 1)];
    }
    float operator[](int i) const
    {
        CheckIndex(i, Bound());
        return values_[static_cast<std::size_t>(i - 1)];
    }
    int Bound() const noexcept { return static_cast<int>(values_.size()); }
    // A new bound, MaxReadings..MaxImportedReadings (outside: error 9), all entries 0.
    void SetBound(int bound);
    // Unchecked view for loops whose bounds were checked beforehand.
    float* data() noexcept { return values_.data(); }
    const float* data() const noexcept { return values_.data(); }

private:
    std::vector<float> values_;
};

// Interval arrays: indices 1 to the size of their last allocation, all zero after
// each Allocate. Before the first allocation they have no valid index at all.
class IntervalArray {
public:
    IntervalArray() = default;
    IntervalArray(const IntervalArray& other);  // a copy of its own
    IntervalArray& operator=(const IntervalArray& other);
    IntervalArray(IntervalArray&&) noexcept = default;
    IntervalArray& operator=(IntervalArray&&) noexcept = default;

    // Indices 1..count, all 0.0; count below 1 raises error 9 and keeps the old contents.
    void Allocate(int count);
    int Size() const noexcept { return size_; }
    float& operator[](int i)
    {
        CheckIndex(i, Size());
        return values_[i - 1];
    }
    float operator[](int i) const
    {
        CheckIndex(i, Size());
        return values_[i - 1];
    }
    float* data() noexcept { return values_; }
    const float* data() const noexcept { return values_; }

private:
    friend void AllocateIntervalArrays(std::initializer_list<IntervalArray*> arrays, int count);

    std::shared_ptr<IntervalMemory> memory_;  // shared by the arrays of one grid build
    float* values_ = nullptr;
    int size_ = 0;
};

// Allocates the arrays afresh, each with indices 1..count, all 0.0, in one block of
// memory. A count below 1 raises error 9 before any array changes.
void AllocateIntervalArrays(std::initializer_list<IntervalArray*> arrays, int count);

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

    // Readings, entries 1..NumLines in use; SetReadingBound widens all four arrays.
    ReadingArray Depth;
    ReadingArray Q_Tip;
    ReadingArray Q_Sleeve;
    ReadingArray Ratio;
    Integer NumLines = 0;
    void SetReadingBound(int bound);

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
