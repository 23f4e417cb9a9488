// The shortest text of a number that reads back to the very same value: what the
// readers put in their records and messages and the writers put in every result.
#pragma once

#include <cstddef>
#include <string>

namespace pemlo::formats {

// Shortest round-trip text of a single-precision or double value ("57.5", "1e-05").
std::string ShortestText(float value);
std::string ShortestText(double value);

// The room PutShortest needs at `at`: it copies whole blocks and returns the text's end.
constexpr std::size_t ShortestRoom = 32;

// The shortest round-trip text of a double put at `at`, byte for byte what
// std::to_chars(first, last, value) writes: the same digits, the same choice between
// fixed and exponent notation (the shorter, fixed on a tie). It is the command line's
// hot loop (sbt writes 18 numbers a reading), so the digits come from Dragonbox
// (Jeon 2020) and are laid out with fixed-size copies; std::to_chars stays the
// oracle the tests hold it to.
char* PutShortest(char* at, double value);

}  // namespace pemlo::formats
