// Files built to make a reader slow: as large as the readers' limits let them be,
// with what a careless reader does once per sounding (or per push) made costly.
// The tests bound their reading time; the benchmarks print it.
#pragma once

#include <string>

namespace pemlo::formats::test {

// One AGS4 location of `pushes` pushes with one reading each, every push with a cone
// reference of its own 50 characters long (R00000xxx...).
std::string ManyPushesAgs4(int pushes);

// An AGS4 file whose SCPG group names `headings` headings, those the reader uses
// last, over `rows` bare DATA rows, then one location of one reading.
std::string WideGroupAgs4(int headings, int rows);

// A BRO-XML document of `cpts` one-reading CPT objects under a root element that
// carries `attributes` attributes before the namespace declaration of the objects.
std::string ManyRootAttributesBroXml(int cpts, int attributes);

}  // namespace pemlo::formats::test
