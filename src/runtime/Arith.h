// Checked arithmetic of the run time. Reals are stored in single precision and
// computed in double; every result that is not a finite number raises a run-time
// error instead of travelling on as inf or nan, and 16-bit counters overflow as
// the user's earlier results expect (error 6).
#pragma once

#include <cstdint>

namespace pemlo {

using Integer = std::int16_t;  // the program's counters and indices

// A double result that must be finite: inf or nan raise error 6 "Overflow".
double Checked(double x);

// a / b in double precision; b == 0 raises error 11 "Division by zero"
// (0 / 0 included), an infinite quotient error 6.
double Div(double a, double b);

// Stores a double as single precision; a value beyond single range (or nan)
// raises error 6 "Overflow". Rounds to nearest, as every store does.
float ToSingle(double x);

// Whole number to a 16-bit counter; outside -32768..32767 raises error 6.
Integer ToInteger(long long whole);

// Real to a 16-bit integer, rounding halves to even (the platform's CInt).
Integer RoundToInteger(double x);

// Real to a 32-bit integer, rounding halves to even (the platform's CLng).
std::int32_t RoundToLong(double x);

// counter = counter + 1, raising error 6 beyond 32767 (the counter keeps its value).
void Increment(Integer& counter);

}  // namespace pemlo
