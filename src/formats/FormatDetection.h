// Which reader a file goes to, decided by its content, never by its name: a first
// non-blank line #GEFID (possibly in double quotes) is GEF; a first non-blank line
// "GROUP" is AGS4; an XML document with a cone result block (cptResult) is BRO-XML;
// anything else is the plain ASCII cone data layout.
#pragma once

#include <string_view>

#include "formats/ImportedSounding.h"

namespace pemlo::formats {

FileFormat DetectFormat(std::string_view bytes);

// What the first bytes of a file alone say (no search for the cone result block):
// whether it may be a GEF, AGS4 or XML file at all.
bool LooksImported(std::string_view start);

}  // namespace pemlo::formats
