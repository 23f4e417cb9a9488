// Reads BRO-XML CPT documents: each CPT object's cone result block, its columns
// found by name in the object's parameters list, parsed with pugixml. Elements are
// matched by their local names, since the namespaces differ between sources.
#pragma once

#include <string_view>
#include <vector>

#include "formats/ImportContract.h"
#include "formats/ImportedSounding.h"

namespace pemlo::formats {

// The soundings in document order. Refuses (ImportRefusal) what cannot be read,
// naming the element and its line.
std::vector<ImportedSounding> ReadBroXml(std::string_view bytes, DepthChoice depth);

}  // namespace pemlo::formats
