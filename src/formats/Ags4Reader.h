// Reads an AGS4 file: the SCPT group's depth, cone resistance and sleeve friction by
// their headings, scaled by the group's UNIT row, one sounding per LOCA_ID with its
// pushes (SCPG_TESN) merged; project information from PROJ, LOCA and SCPG.
#pragma once

#include <string_view>
#include <vector>

#include "formats/ImportContract.h"
#include "formats/ImportedSounding.h"

namespace pemlo::formats {

// The soundings in order of their first SCPT row. Refuses (ImportRefusal) what
// cannot be read, naming the line.
std::vector<ImportedSounding> ReadAgs4(std::string_view bytes, DepthChoice depth);

}  // namespace pemlo::formats
