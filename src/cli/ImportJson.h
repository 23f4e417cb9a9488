// The record of an import and the unit warnings as JSON members, for the JSON output
// of the commands: "import" (null for a plain ASCII file) and "warnings".
#pragma once

#include <string>
#include <vector>

#include "formats/ImportedSounding.h"

namespace pemlo::cli {

// `  "import": {...},\n  "warnings": [...],\n`, indented as members of the output's object.
std::string ImportJsonMembers(const formats::ImportedSounding* imported, const std::vector<std::string>& warnings);

}  // namespace pemlo::cli
