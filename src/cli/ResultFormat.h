// The command line's three ways of writing a sounding's results: CSV for programs,
// an aligned table with units for people, JSON with the file name and units. Every
// number in CSV and JSON is the shortest text that reads back to the very same
// single-precision value, so nothing is lost between this program and the next.
#pragma once

#include <string>

#include "core/Declarations.h"

namespace pemlo::cli {

enum class OutputFormat { Csv, Table, Json };

// What the output says about the run besides the numbers.
struct RunFacts {
    std::string file;            // the path as the user gave it
    Integer dataUnits = 1;       // units of the file: 0 mV, 1 English, 2 SI
    Integer graphUnits = 0;      // units of every number written: 0 English, 1 SI
    int numReadings = 0;
};

// Shortest round-trip text of a single-precision value ("57.5", "0.164", "1e-05").
std::string ShortestText(float value);

// Fixed-point text with the given number of decimals ("0.7826"), for the table.
std::string FixedText(float value, int decimals);

// "english", "si" or "mv", as the options spell them.
std::string DataUnitsName(Integer dataUnits);
std::string GraphUnitsName(Integer graphUnits);

// CSV of one file has its header; CSV of several files is one table whose rows name
// their file in a first column, under IntervalCsvHeader(true) written once.
enum class CsvLayout { OneFile, ManyFiles };

// The classified intervals 1..NumIntervals. The layout matters for CSV only: the
// table and JSON always name the file.
std::string FormatIntervals(const Declarations& d, const RunFacts& facts, OutputFormat format,
                            CsvLayout layout = CsvLayout::OneFile);

// The cleaned readings 1..NumLines with their ratio.
std::string FormatReadings(const Declarations& d, const RunFacts& facts, OutputFormat format);

// The CSV header of FormatIntervals, with or without the file column.
std::string IntervalCsvHeader(bool withFileColumn);

// The file extension of a result file in the format ("csv", "txt", "json").
std::string FileExtension(OutputFormat format);

}  // namespace pemlo::cli
