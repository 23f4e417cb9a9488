// PutShortest must write, byte for byte, what std::to_chars writes: results files,
// golden outputs and the independent checks all read that text. std::to_chars is the
// oracle; the cases name the layouts a fault would break.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "formats/NumberText.h"

namespace pemlo::formats {
namespace {

std::string Oracle(double value)
{
    char text[64];
    return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::string Put(double value)
{
    char text[64];
    std::memset(text, '#', sizeof text);
    char* end = PutShortest(text, value);
    return std::string(text, end);
}

TEST(PutShortest, WritesWhatToCharsWritesInEveryLayout)
{
    const double denormalMin = std::numeric_limits<double>::denorm_min();
    const struct {
        double value;
        const char* fault;
    } cases[] = {
        {57.5, "the point among the digits"},
        {0.004999999888241291, "a widened float: seventeen digits behind zeros"},
        {0.0001, "a tie of lengths goes to fixed (0.0001 against 1e-04)"},
        {0.00001, "exponent notation once it is shorter (1e-05)"},
        {1.5e-7, "a negative exponent with two digits"},
        {123400.0, "an integer with zeros behind its digits"},
        {1e15, "a power of ten as 1e+15"},
        {9007199254740991.0, "the last integer below 2^53"},
        {9007199254740992.0, "2^53: handed to to_chars for its exact integers"},
        {1.7976931348623157e308, "the largest double"},
        {2.2250738585072014e-308, "the smallest normal, a three-digit exponent"},
        {denormalMin, "the smallest subnormal"},
        {-1.25e-100, "negative with a three-digit exponent"},
        {0.0, "zero"},
        {-0.0, "negative zero"},
        {std::numeric_limits<double>::infinity(), "infinity"},
        {std::numeric_limits<double>::quiet_NaN(), "not a number"},
    };
    for (const auto& c : cases) EXPECT_EQ(Put(c.value), Oracle(c.value)) << c.fault;
}

// Every magnitude and sign, random digits: a layout a fault breaks shows here even
// where the table has no case for it.
TEST(PutShortest, AgreesWithToCharsOnRandomDoubles)
{
    std::mt19937_64 random(20261125);
    int mismatches = 0;
    for (int i = 0; i < 400000 && mismatches < 5; ++i) {
        const std::uint64_t bits = random();
        const double anyBits = std::bit_cast<double>(bits);
        const double everyday = std::ldexp(static_cast<double>(bits >> 11), -53) * std::pow(10.0, static_cast<int>(bits % 24) - 8);
        for (const double value : {anyBits, everyday, static_cast<double>(static_cast<float>(everyday)),
                                   std::round(everyday * 1000) / 1000}) {
            if (Put(value) != Oracle(value)) {
                ++mismatches;
                ADD_FAILURE() << Put(value) << " where to_chars writes " << Oracle(value);
            }
        }
    }
}

}  // namespace
}  // namespace pemlo::formats
