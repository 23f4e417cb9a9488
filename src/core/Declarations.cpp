#include "core/Declarations.h"

#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {
inline void CheckIndex(int i, int upper)
{
    if (i < 1 || i > upper) Raise(ErrSubscriptOutOfRange);
}
}  // namespace

float& ReadingArray::operator[](int i)
{
    CheckIndex(i, MaxReadings);
    return values_[static_cast<std::size_t>(i - 1)];
}

float ReadingArray::operator[](int i) const
{
    CheckIndex(i, MaxReadings);
    return values_[static_cast<std::size_t>(i - 1)];
}

void IntervalArray::Allocate(int count)
{
    if (count < 1) Raise(ErrSubscriptOutOfRange);
    values_.assign(static_cast<std::size_t>(count), 0.0f);
}

float& IntervalArray::operator[](int i)
{
    CheckIndex(i, Size());
    return values_[static_cast<std::size_t>(i - 1)];
}

float IntervalArray::operator[](int i) const
{
    CheckIndex(i, Size());
    return values_[static_cast<std::size_t>(i - 1)];
}

Declarations& TheRecord()
{
    static Declarations record;
    return record;
}

void ResetRecord() { TheRecord() = Declarations{}; }

}  // namespace pemlo
