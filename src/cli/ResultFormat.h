// The command line's three ways of writing a sounding's results: CSV for programs,
// an aligned table with units for people, JSON with the file name and units. Every
// number in CSV and JSON is the shortest text that reads back to the very same
// single-precision value, so nothing is lost between this program and the next.
// Results are written straight into the output stream, a row at a time.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "core/Declarations.h"
#include "formats/ImportedSounding.h"
#include "formats/TextDecoding.h"

namespace pemlo::cli {

enum class OutputFormat { Csv, Table, Json };

// What the output says about the run besides the numbers.
struct RunFacts {
    std::string file;            // the path as the user gave it
    Integer dataUnits = 1;       // units of the file: 0 mV, 1 English, 2 SI
    Integer graphUnits = 0;      // units of every number written: 0 English, 1 SI
    int numReadings = 0;
    const formats::ImportedSounding* imported = nullptr;  // none for a plain ASCII file
    std::vector<std::string> warnings;                    // the unit check's
};

using formats::ShortestText;

// Fixed-point text with the given number of decimals ("0.7826"), for tables. A value
// that rounds to zero reads 0, not -0.
std::string FixedText(double value, int decimals);

// "english", "si" or "mv", as the options spell them.
std::string DataUnitsName(Integer dataUnits);
std::string GraphUnitsName(Integer graphUnits);

// CSV of one file has its header; CSV of several files is one table whose rows name
// their file in a first column, under IntervalCsvHeader(true) written once.
enum class CsvLayout { OneFile, ManyFiles };

// The classified intervals 1..NumIntervals. The layout matters for CSV only: the
// table and JSON always name the file.
void WriteIntervals(std::ostream& out, const Declarations& d, const RunFacts& facts, OutputFormat format,
                    CsvLayout layout = CsvLayout::OneFile);

// The cleaned readings 1..NumLines with their ratio.
void WriteReadings(std::ostream& out, const Declarations& d, const RunFacts& facts, OutputFormat format);

// The CSV header of WriteIntervals, with or without the file column.
std::string IntervalCsvHeader(bool withFileColumn);

// A CSV field, quoted where it holds a comma, a quote or a line end.
std::string CsvField(const std::string& text);

// A JSON string literal of the text: valid UTF-8, control characters escaped.
std::string JsonString(const std::string& text);

// The table's first two lines: the file, then what was read and how `shown` is shown.
std::string TableHeading(const RunFacts& facts, const std::string& shown);

// The members every JSON result starts with: file, units, readings, import, warnings
// (indented as members of the result's object, each ending in ",\n").
std::string JsonHead(const RunFacts& facts, const std::string& extraUnits = {});

// The file extension of a result file in the format ("csv", "txt", "json").
std::string FileExtension(OutputFormat format);

}  // namespace pemlo::cli
