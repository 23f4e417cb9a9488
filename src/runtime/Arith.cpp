#include "runtime/Arith.h"

#include <cfenv>
#include <cmath>
#include <limits>

#include "runtime/RunTimeError.h"

namespace pemlo {

double Checked(double x)
{
    if (!std::isfinite(x)) Raise(ErrOverflow);
    return x;
}

double Div(double a, double b)
{
    if (b == 0.0) Raise(ErrDivisionByZero);
    return Checked(a / b);
}

float ToSingle(double x)
{
    const float f = static_cast<float>(x);
    if (!std::isfinite(f)) Raise(ErrOverflow);
    return f;
}

Integer ToInteger(long long whole)
{
    if (whole < std::numeric_limits<Integer>::min() || whole > std::numeric_limits<Integer>::max())
        Raise(ErrOverflow);
    return static_cast<Integer>(whole);
}

Integer RoundToInteger(double x)
{
    if (!std::isfinite(x) || x < -32768.5 || x > 32767.5) Raise(ErrOverflow);
    return ToInteger(static_cast<long long>(std::nearbyint(x)));  // default mode: halves to even
}

std::int32_t RoundToLong(double x)
{
    if (!std::isfinite(x) || x < -2147483648.5 || x > 2147483647.5) Raise(ErrOverflow);
    const double r = std::nearbyint(x);
    if (r < -2147483648.0 || r > 2147483647.0) Raise(ErrOverflow);
    return static_cast<std::int32_t>(r);
}

void Increment(Integer& counter)
{
    counter = ToInteger(static_cast<long long>(counter) + 1);
}

}  // namespace pemlo
