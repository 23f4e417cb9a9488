#include "runtime/Arith.h"

#include <cfenv>
#include <cmath>
#include <limits>

#include "runtime/RunTimeError.h"

namespace pemlo {

void RaiseArithmetic(int number) { Raise(number); }

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

}  // namespace pemlo
