#include "core/Declarations.h"

#include <algorithm>

#include "runtime/RunTimeError.h"

namespace pemlo {

void ReadingArray::SetBound(int bound)
{
    if (bound < MaxReadings || bound > MaxImportedReadings) Raise(ErrSubscriptOutOfRange);
    values_.assign(static_cast<std::size_t>(bound), 0.0f);
}

void Declarations::SetReadingBound(int bound)
{
    for (ReadingArray* a : {&Depth, &Q_Tip, &Q_Sleeve, &Ratio}) a->SetBound(bound);
}

void AllocateIntervalArrays(std::initializer_list<IntervalArray*> arrays, int count)
{
    if (count < 1) Raise(ErrSubscriptOutOfRange);
    const auto n = static_cast<std::size_t>(count);
    auto memory = std::make_shared<IntervalMemory>(n * arrays.size());
    float* next = memory->data();
    for (IntervalArray* array : arrays) {
        array->memory_ = memory;
        array->values_ = next;
        array->size_ = count;
        next += n;
    }
}

void IntervalArray::Allocate(int count) { AllocateIntervalArrays({this}, count); }

IntervalArray::IntervalArray(const IntervalArray& other)
{
    if (other.size_ < 1) return;
    Allocate(other.size_);
    std::copy(other.values_, other.values_ + other.size_, values_);
}

IntervalArray& IntervalArray::operator=(const IntervalArray& other)
{
    if (this != &other) *this = IntervalArray(other);
    return *this;
}

Declarations& TheRecord()
{
    static Declarations record;
    return record;
}

void ResetRecord() { TheRecord() = Declarations{}; }

}  // namespace pemlo
