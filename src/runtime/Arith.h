// Checked arithmetic of the run time. Reals are stored in single precision and
// computed in double; every result that is not a finite number raises a run-time
// error instead of travelling on as inf or nan, and 16-bit counters overflow as
// the user's earlier results expect (error 6).
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "runtime/RunTimeError.h"

namespace pemlo {

// Raises the run-time error; kept out of line so the checks below stay small enough
// to inline into the hot loops of the averaging and the classification.
[[noreturn]] void RaiseArithmetic(int number);

using Integer = std::int16_t;  // the program's counters and indices

// A double result that must be finite: inf or nan raise error 6 "Overflow".
inline double Checked(double x)
{
    if (!std::isfinite(x)) [[unlikely]] RaiseArithmetic(ErrOverflow);
    return x;
}

// a / b in double precision; b == 0 raises error 11 "Division by zero"
// (0 / 0 included), an infinite quotient error 6.
inline double Div(double a, double b)
{
    if (b == 0.0) [[unlikely]] RaiseArithmetic(ErrDivisionByZero);
    return Checked(a / b);
}

// Stores a double as single precision; a value beyond single range (or nan)
// raises error 6 "Overflow". Rounds to nearest, as every store does.
inline float ToSingle(double x)
{
    const float f = static_cast<float>(x);
    if (!std::isfinite(f)) [[unlikely]] RaiseArithmetic(ErrOverflow);
    return f;
}

// Whole number to a 16-bit counter; outside -32768..32767 raises error 6.
inline Integer ToInteger(long long whole)
{
    if (whole < std::numeric_limits<Integer>::min() || whole > std::numeric_limits<Integer>::max()) [[unlikely]]
        RaiseArithmetic(ErrOverflow);
    return static_cast<Integer>(whole);
}

// Real to a 16-bit integer, rounding halves to even (the platform's CInt).
Integer RoundToInteger(double x);

// Real to a 32-bit integer, rounding halves to even (the platform's CLng).
std::int32_t RoundToLong(double x);

// counter = counter + 1, raising error 6 beyond 32767 (the counter keeps its value).
inline void Increment(Integer& counter)
{
    counter = ToInteger(static_cast<long long>(counter) + 1);
}

}  // namespace pemlo
