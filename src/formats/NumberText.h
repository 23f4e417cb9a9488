// The shortest text of a number that reads back to the very same value: what the
// readers put in their records and messages and the writers put in every result.
#pragma once

#include <string>

namespace pemlo::formats {

// Shortest round-trip text of a single-precision or double value ("57.5", "1e-05").
std::string ShortestText(float value);
std::string ShortestText(double value);

}  // namespace pemlo::formats
