// Writes an imported sounding as a plain ASCII cone data file that the desktop
// program loads with "SI Units" and 10 title lines: the title lines say where the
// readings came from and what the import did; then depth,qc,fs per line, CR LF,
// every number the shortest text the program's own reader turns back into the
// very same single-precision value.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "formats/ImportedSounding.h"

namespace pemlo::formats {

constexpr int ConeDataTitleLines = 10;

// The readings at depths from..to (metres, either end open) as a cone data file;
// `source` names the input file. A selection of more than 4000 readings, or of none,
// is refused with `refusal` set and nothing to write.
struct ConeDataFile {
    std::vector<std::string> titles;   // the title lines
    std::vector<float> depth, qc, fs;  // the readings kept
    std::string refusal;
    int Readings() const { return static_cast<int>(depth.size()); }
};
ConeDataFile ConeDataFileOf(const ImportedSounding& s, const ProjectInfo& project, const std::string& source,
                            std::optional<double> from, std::optional<double> to);

// Writes the file's lines, CR LF ended, a line at a time.
void WriteConeDataFile(std::ostream& out, const ConeDataFile& file);

// The shortest text of the value that the cone data reader reads back bit for bit.
std::string RoundTripText(float value);

}  // namespace pemlo::formats
