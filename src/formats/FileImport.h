// The one entry to the import: a file's size is checked before it is read, its
// format detected, and its soundings read under the import contract, or the reason
// it is refused stated. A plain ASCII file is left to the desktop program's reader.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/ImportContract.h"
#include "formats/ImportedSounding.h"

namespace pemlo::formats {

constexpr std::uintmax_t MaxImportBytes = 64ull * 1024 * 1024;

struct FileImport {
    FileFormat format = FileFormat::PlainAscii;
    std::vector<ImportedSounding> soundings;  // none for a plain ASCII file
    std::string refusal;  // not empty: the file cannot be imported, and why (line or element)
};

// A file that does not exist or cannot be read is left to the plain ASCII road,
// which says so as it always has.
FileImport ImportFile(const std::string& path, DepthChoice depth);

// The same on bytes in memory (tests, fuzzing).
FileImport ImportBytes(std::string_view bytes, DepthChoice depth);

}  // namespace pemlo::formats
