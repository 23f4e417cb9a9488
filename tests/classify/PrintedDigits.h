// Compares a computed value with a figure as engineers print it: the value rounded to
// as many decimals as the figure shows must read the same.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace pemlo::printed {

inline std::string AtDecimalsOf(double value, const std::string& printed)
{
    const auto dot = printed.find('.');
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", dot == std::string::npos ? 0 : int(printed.size() - dot - 1), value);
    const bool negativeZero = text[0] == '-' && std::string(text).find_first_not_of("-0.") == std::string::npos;
    return negativeZero ? text + 1 : text;  // -0.00 prints as 0.00
}

#define EXPECT_PRINTS_AS(value, figure) \
    EXPECT_EQ(::pemlo::printed::AtDecimalsOf((value), (figure)), (figure)) << #value

}  // namespace pemlo::printed
