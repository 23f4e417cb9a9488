// The record of an import in words: what was read, which columns in which units,
// what was dropped, negated and sorted, and what was kept; and what --strict objects
// to in it.
#pragma once

#include <string>
#include <vector>

#include "formats/ImportedSounding.h"

namespace pemlo::formats {

// A few lines for people, without line ends: format and id, columns, changes, kept.
std::vector<std::string> DescribeImport(const ImportedSounding& s);

// "x 91931, y 438294 (EPSG:28992); surface level -1.75 m NAP"; empty when the file
// states neither.
std::string DescribeSite(const SiteLocation& site);

// What the import changed in the data ("dropped 5 void rows, negated the depths"),
// empty when it changed nothing.
std::string ChangesMade(const ImportRecord& r);

// A column as the record names it: "quantity 2 [MPa]", "SCPT_FRES [kN/m2, /1000]".
std::string DescribeColumn(const ColumnUse& c);

}  // namespace pemlo::formats
