// The fields of one AGS4 line, as both the importer and the export's checker take a
// line apart: the importer reads whatever it can, the checker wants the strict form.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pemlo::formats {

struct AgsLineFields {
    // The fields as written: the text inside the quotes (doubled quotes read as one)
    // with any text between a closing quote and the next comma, or the bare text of an
    // unquoted field. Blanks are kept: the importer trims them, the checker must not.
    std::vector<std::string> fields;
    // Every field double-quoted, closed, and followed by a comma or the line's end,
    // with nothing else between them.
    bool strict = true;
};

// At most maxFields fields; a line with more stops there (the caller sees maxFields
// and decides). Blanks and tabs before a field are skipped, and make the line loose.
AgsLineFields SplitAgsLine(std::string_view line, std::size_t maxFields);

}  // namespace pemlo::formats
