#include "formats/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include <dragonbox/dragonbox.h>

namespace pemlo::formats {

namespace {

template <typename Real>
std::string Shortest(Real value)
{
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

constexpr char DigitPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Eight digits of v < 10^8, zeros in front.
void PutEight(char* at, std::uint32_t v)
{
    const std::uint32_t high = v / 10000, low = v % 10000;
    std::memcpy(at, DigitPairs + 2 * (high / 100), 2);
    std::memcpy(at + 2, DigitPairs + 2 * (high % 100), 2);
    std::memcpy(at + 4, DigitPairs + 2 * (low / 100), 2);
    std::memcpy(at + 6, DigitPairs + 2 * (low % 100), 2);
}

constexpr std::array<std::uint64_t, 18> PowersOfTen = [] {
    std::array<std::uint64_t, 18> p{};
    p[0] = 1;
    for (std::size_t i = 1; i < p.size(); ++i) p[i] = p[i - 1] * 10;
    return p;
}();

// The number of decimal digits of 0 < v < 10^17, from its bit length.
int DigitCount(std::uint64_t v)
{
    const int guess = ((64 - __builtin_clzll(v)) * 1233) >> 12;  // 1233 / 4096 ~ log10(2)
    return guess + (v >= PowersOfTen[static_cast<std::size_t>(guess)]);
}

// Integers from 2^53 up are left to std::to_chars: there its fixed notation writes
// the exact integer, not the shortest digits padded with zeros.
constexpr double ExactIntegersEnd = 9007199254740992.0;

}  // namespace

std::string ShortestText(float value) { return Shortest(value); }

std::string ShortestText(double value)
{
    std::array<char, ShortestRoom> buffer;
    return std::string(buffer.data(), PutShortest(buffer.data(), value));
}

char* PutShortest(char* at, double value)
{
    if (!std::isfinite(value) || value == 0.0 || std::fabs(value) >= ExactIntegersEnd)
        return std::to_chars(at, at + ShortestRoom, value).ptr;
    const auto decimal = jkj::dragonbox::to_decimal(value);
    const std::uint64_t significand = decimal.significand;  // at most 17 digits

    // All seventeen digits with zeros in front, then zeros behind for the copies below.
    std::array<char, 48> digits;
    digits[0] = static_cast<char>('0' + significand / 10000000000000000u);
    const std::uint64_t rest = significand % 10000000000000000u;
    PutEight(digits.data() + 1, static_cast<std::uint32_t>(rest / 100000000));
    PutEight(digits.data() + 9, static_cast<std::uint32_t>(rest % 100000000));
    std::memset(digits.data() + 17, '0', digits.size() - 17);
    const int n = DigitCount(significand);
    const char* d = digits.data() + 17 - n;

    // value = d × 10^e; `point` digits stand before the decimal point.
    const int e = decimal.exponent;
    const int point = n + e;
    const int exponent = point - 1;
    const int magnitude = exponent < 0 ? -exponent : exponent;
    const int scientificLength = n + (n > 1) + (magnitude >= 100 ? 5 : 4);
    const int fixedLength = e >= 0 ? point : (point > 0 ? n + 1 : 2 - e);

    std::array<char, 64> text;
    char* out = text.data();
    *out = '-';
    out += decimal.is_negative;
    int length = 0;
    if (fixedLength <= scientificLength) {
        length = fixedLength;
        if (e >= 0) {  // an integer: the digits, then zeros
            std::memcpy(out, d, 24);
        } else if (point > 0) {  // the point among the digits
            std::memcpy(out, d, 24);
            out[point] = '.';
            std::memcpy(out + point + 1, d + point, 17);
        } else {  // "0.", zeros, the digits
            std::memset(out, '0', 24);
            out[1] = '.';
            std::memcpy(out + 2 - point, d, 17);
        }
    } else {
        length = scientificLength;
        out[0] = d[0];
        out[1] = '.';  // overwritten by the 'e' of a single digit
        std::memcpy(out + 2, d + 1, 16);
        char* p = out + n + (n > 1);
        p[0] = 'e';
        p[1] = exponent < 0 ? '-' : '+';
        if (magnitude >= 100) {
            p[2] = static_cast<char>('0' + magnitude / 100);
            std::memcpy(p + 3, DigitPairs + 2 * (magnitude % 100), 2);
        } else {
            std::memcpy(p + 2, DigitPairs + 2 * magnitude, 2);
        }
    }
    length += decimal.is_negative;
    std::memcpy(at, text.data(), ShortestRoom);
    return at + length;
}

}  // namespace pemlo::formats
