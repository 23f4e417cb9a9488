// The normalised soil behaviour type of one sounding, reading by reading, as CSV, an
// aligned table or JSON; always in SI units (m, MPa, kPa, kN/m³). Every number in CSV
// and JSON is the shortest text that reads back to the very same double.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/ResultFormat.h"
#include "sbtn/Sbtn.h"

namespace pemlo::cli {

// What the output says besides the rows.
struct SbtFacts {
    RunFacts run;                          // file, data units, import record, unit warnings
    std::vector<std::string> inputLines;   // where u2, a and D came from
};

// depth,qc,fs,u2,qt,rf,gamma,sigma_v0,u0,sigma_v0_eff,qn,qt1,fr,bq,n,qtn,ic,zone; with
// a first "file" column for the rows of several inputs.
std::string SbtCsvHeader(bool withFileColumn);

void WriteSbt(std::ostream& out, const sbtn::SbtnResult& result, const SbtFacts& facts, OutputFormat format,
              CsvLayout layout);

}  // namespace pemlo::cli
