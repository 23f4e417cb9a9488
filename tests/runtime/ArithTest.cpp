// Checked arithmetic: the run-time errors a user would otherwise meet as inf, nan or
// a wrapped counter.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "runtime/Arith.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

int ErrorOf(void (*f)())
{
    try { f(); } catch (const RunTimeError& e) { return e.Number(); }
    return 0;
}

TEST(Arith, InvalidResultsRaiseTheirErrors)
{
    struct Case { const char* what; void (*f)(); int number; };
    const Case cases[] = {
        {"x / 0", [] { Div(1.0, 0.0); }, ErrDivisionByZero},
        {"0 / 0", [] { Div(0.0, 0.0); }, ErrDivisionByZero},
        {"quotient beyond double", [] { Div(DBL_MAX, 0.5); }, ErrOverflow},
        {"store beyond single", [] { ToSingle(3.5e38); }, ErrOverflow},
        {"store of nan", [] { ToSingle(std::nan("")); }, ErrOverflow},
        {"counter above 32767", [] { ToInteger(32768); }, ErrOverflow},
        {"counter below -32768", [] { ToInteger(-32769); }, ErrOverflow},
        {"CInt of 32767.5", [] { RoundToInteger(32767.5); }, ErrOverflow},
        {"increment of 32767", [] { Integer i = 32767; Increment(i); }, ErrOverflow},
        {"within range", [] { ToSingle(FLT_MAX); ToInteger(-32768); }, 0},
    };
    for (const Case& c : cases) EXPECT_EQ(ErrorOf(c.f), c.number) << c.what;
}

TEST(Arith, RoundingIsHalfToEvenAndErrorsSayTheirNumber)
{
    EXPECT_EQ(RoundToInteger(2.5), 2);
    EXPECT_EQ(RoundToLong(1567.5), 1568);
    EXPECT_EQ(RoundToLong(4702.5), 4702);
    EXPECT_STREQ(RunTimeError(9).what(), "Run-time error '9': Subscript out of range");
}

}  // namespace
}  // namespace pemlo
