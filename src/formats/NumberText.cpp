#include "formats/NumberText.h"

#include <array>
#include <charconv>

namespace pemlo::formats {

namespace {

template <typename Real>
std::string Shortest(Real value)
{
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

}  // namespace

std::string ShortestText(float value) { return Shortest(value); }

std::string ShortestText(double value) { return Shortest(value); }

}  // namespace pemlo::formats
