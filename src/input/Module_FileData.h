// Reads a cone data file into the readings of the record: skips the title lines,
// counts the columns of the first data line, then reads depth, tip resistance and
// sleeve friction of every reading, discarding up to two further columns.
#pragma once

#include <string>
#include <vector>

#include "core/Declarations.h"
#include "runtime/FileChannels.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

// The column counter: opens DataFileName on channel FileNum, skips NumTitleLines
// lines, reads the first data line into LineBuffer (trimmed of blanks) and counts
// the commas, blanks and tabs among all but its last character. Closes the channel
// and returns the count + 1. Raises the run-time error of a failing step (a file
// that ends inside its title lines: error 62, the channel then stays open).
Integer CountColumns(Declarations& d, FileChannels& files);

// What the reader did with the file.
enum class ReadOutcome {
    Loaded,     // read to its end: NumLines set, FileReadError 0, channel closed
    Failed,     // the failure path: FileReadError -1, channel left open, NumLines unchanged
    NeverEnds,  // fewer than 3 columns: the program waits for an end that never comes
};

// Why a failed read failed, for the command line's message.
enum class ReadFailure {
    None, TooManyColumns, TooManyReadings, NotANumber, PastEndOfFile, OutOfRange, Other,
    EndsInTitleLines,  // the file has no data line after its title lines
    LineTooLong,       // the first data line is too long to count its columns
};

struct ReadReport {
    ReadOutcome outcome = ReadOutcome::Loaded;
    ReadFailure failure = ReadFailure::None;
    int errorNumber = 0;      // the run-time error that led to the failure path
    long long line = 0;       // 1-based line of the file where it happened
    std::string lineText;     // that line's text (Windows-1252 bytes, at most 200)
    int columns = 0;          // NumColumns the reader worked with
    int titleLines = 0;       // NumTitleLines the reader worked with
    int readings = 0;         // readings stored (all of them on Loaded, so far on Failed)
    std::string Describe() const;  // one sentence for people: what and where
};

// A further column (4 or 5) of every reading, read as the reader reads every value
// and kept for a caller that wants it (u2); the desktop program discards it.
struct FurtherColumn {
    int column = 0;
    std::vector<float> values;  // one per reading read
};

// The reader: NumColumns must hold the counter's result. Reads every reading on
// channel FileNum as the open-file screen's load does and reports the outcome; on
// NeverEnds nothing is read and the channel stays open.
ReadReport ReadConeData(Declarations& d, FileChannels& files, FurtherColumn* further = nullptr);

// Counter then reader, as "Load Data File" runs them: NumColumns = CountColumns().
// A run-time error of the counter propagates (the caller ends silently on it).
ReadReport LoadDataFile(Declarations& d, FileChannels& files, FurtherColumn* further = nullptr);

// The report for a run-time error that the column counter raised, for callers that
// want to tell the user why (the desktop program ends silently instead). Reads, but
// does not close, the channel the counter left open.
ReadReport ReportCountError(const RunTimeError& error, const Declarations& d, FileChannels& files);

}  // namespace pemlo
