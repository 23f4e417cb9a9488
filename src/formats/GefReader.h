// Reads a GEF-CPT file (GEF 1.0 and 1.1.x): the header up to #EOH, the columns by
// their quantity numbers, the per-column voids and separators, then the scans, into
// one imported sounding under the import contract.
#pragma once

#include <string_view>

#include "formats/ImportContract.h"
#include "formats/ImportedSounding.h"

namespace pemlo::formats {

// Refuses (ImportRefusal) what cannot be read, naming the line.
ImportedSounding ReadGef(std::string_view bytes, DepthChoice depth);

}  // namespace pemlo::formats
