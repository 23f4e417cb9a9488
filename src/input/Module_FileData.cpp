#include "input/Module_FileData.h"

#include <algorithm>
#include <cstdio>

namespace pemlo {

namespace {

constexpr int MinColumns = 3;  // depth, tip resistance, sleeve friction
constexpr int MaxColumns = 5;  // up to two further columns are read and discarded
constexpr std::size_t MaxLineTextBytes = 200;
constexpr std::size_t MaxQuotedChars = 60;

std::string TrimBlanks(const std::string& s)
{
    // Blanks only: a tab at either end stays and is counted as a separator.
    const std::size_t first = s.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

bool IsSeparator(char c) { return c == ',' || c == ' ' || c == '\t'; }

// One reading: NumColumns values, the first three into the readings at index i.
// The index is checked before anything is read, so the 4001st reading fails as an
// index error whatever its line holds.
void ReadReading(Declarations& d, TextChannel& ch, Integer i, Integer columns, FurtherColumn* further)
{
    float* const targets[] = {&d.Depth[i], &d.Q_Tip[i], &d.Q_Sleeve[i]};
    for (Integer k = 0; k < columns; ++k) {
        const float value = ch.InputNumber();
        if (k < MinColumns) *targets[k] = value;
        if (further && k + 1 == further->column) further->values.push_back(value);
    }
}

// Where the reader stood when something went wrong.
struct Progress {
    TextChannel* channel = nullptr;
    bool inTitleLines = true;
    std::size_t readingStart = 0;
    int readings = 0;
};

// Lines in the file, a last line without its line end included.
long long LinesIn(const TextChannel& ch)
{
    const auto size = static_cast<std::size_t>(ch.Length());
    if (size == 0) return 0;
    return ch.LineNumberAt(size) - (ch.LineTextAt(size).empty() ? 1 : 0);
}

void PlaceAt(ReadReport& r, const TextChannel& ch, std::size_t pos)
{
    r.line = ch.LineNumberAt(pos);
    r.lineText = ch.LineTextAt(pos).substr(0, MaxLineTextBytes);
}

ReadReport FailureReport(int error, const Progress& p, const Declarations& d)
{
    ReadReport r;
    r.outcome = ReadOutcome::Failed;
    r.errorNumber = error;
    r.columns = d.NumColumns;
    r.titleLines = d.NumTitleLines;
    r.readings = p.readings;
    switch (error) {
    case ErrSubscriptOutOfRange: r.failure = ReadFailure::TooManyReadings; break;
    case ErrTypeMismatch: r.failure = ReadFailure::NotANumber; break;
    case ErrOverflow: r.failure = ReadFailure::OutOfRange; break;
    case ErrInputPastEndOfFile:
        r.failure = p.inTitleLines ? ReadFailure::EndsInTitleLines : ReadFailure::PastEndOfFile;
        break;
    default: r.failure = ReadFailure::Other; break;
    }
    if (p.channel == nullptr) return r;
    const bool atField = r.failure == ReadFailure::NotANumber || r.failure == ReadFailure::OutOfRange;
    if (r.failure == ReadFailure::EndsInTitleLines) {
        r.line = LinesIn(*p.channel) + 1;  // the first line the file lacks
    } else {
        PlaceAt(r, *p.channel, atField ? p.channel->FieldStart() : p.readingStart);
    }
    return r;
}

std::string Plural(long long n, const char* word)
{
    return std::to_string(n) + " " + word + (n == 1 ? "" : "s");
}

std::string FirstDataLine(const ReadReport& r)
{
    return "the first data line (line " + std::to_string(r.titleLines + 1) + ")";
}

}  // namespace

Integer CountColumns(Declarations& d, FileChannels& files)
{
    files.OpenForInput(d.FileNum, d.DataFileName);
    TextChannel& ch = files.Channel(d.FileNum);
    for (int t = 1; t <= d.NumTitleLines; ++t) ch.LineInput();
    d.LineBuffer = TrimBlanks(ch.LineInput());

    // The last character is never examined, so a trailing separator does not add a
    // column. Position and count are 16-bit counters: a first data line longer than
    // 32768 characters overflows the position (error 6), which ends the load as any
    // failure of the counter does.
    const long long n = static_cast<long long>(d.LineBuffer.size()) - 1;
    Integer count = 0;
    for (Integer k = 1; k <= n; Increment(k)) {
        if (IsSeparator(d.LineBuffer[static_cast<std::size_t>(k - 1)])) Increment(count);
        if (k == n) break;  // stop before the counter steps past the last position
    }
    files.Close(d.FileNum);
    Increment(count);
    return count;
}

ReadReport ReadConeData(Declarations& d, FileChannels& files, FurtherColumn* further)
{
    Progress p;
    try {
        files.OpenForInput(d.FileNum, d.DataFileName);
        p.channel = &files.Channel(d.FileNum);
        TextChannel& ch = *p.channel;
        for (int t = 1; t <= d.NumTitleLines; ++t) ch.LineInput();
        p.inTitleLines = false;
        p.readingStart = ch.Position();

        // The counter has just read a line here, so the file cannot be at its end
        // yet: the column count decides first. Fewer than 3 columns read nothing
        // and so never reach the end; the open-file screen keeps waiting on it.
        if (d.NumColumns > MaxColumns) {
            ReadReport r = FailureReport(0, p, d);
            r.failure = ReadFailure::TooManyColumns;
            d.FileReadError = VbTrue;
            return r;
        }
        if (d.NumColumns < MinColumns) {
            ReadReport r;
            r.outcome = ReadOutcome::NeverEnds;
            r.columns = d.NumColumns;
            r.titleLines = d.NumTitleLines;
            PlaceAt(r, ch, p.readingStart);
            return r;
        }

        Integer i = 1;
        do {
            p.readingStart = ch.Position();
            ReadReading(d, ch, i, d.NumColumns, further);
            Increment(i);
            ++p.readings;
        } while (!ch.AtEndOfFile());

        files.Close(d.FileNum);
        d.NumLines = static_cast<Integer>(i - 1);
        d.FileReadError = VbFalse;
        ReadReport r;
        r.columns = d.NumColumns;
        r.titleLines = d.NumTitleLines;
        r.readings = d.NumLines;
        return r;
    } catch (const RunTimeError& e) {
        d.FileReadError = VbTrue;
        return FailureReport(e.Number(), p, d);
    }
}

ReadReport LoadDataFile(Declarations& d, FileChannels& files, FurtherColumn* further)
{
    d.NumColumns = CountColumns(d, files);
    return ReadConeData(d, files, further);
}

ReadReport ReportCountError(const RunTimeError& error, const Declarations& d, FileChannels& files)
{
    Progress p;
    p.inTitleLines = true;
    if (files.IsOpen(d.FileNum) && error.Number() != ErrFileAlreadyOpen) p.channel = &files.Channel(d.FileNum);
    ReadReport r = FailureReport(error.Number(), p, d);
    r.columns = 0;
    if (error.Number() == ErrOverflow && p.channel != nullptr) {
        r.failure = ReadFailure::LineTooLong;
        r.line = d.NumTitleLines + 1;
        r.lineText = d.LineBuffer.substr(0, MaxLineTextBytes);
    }
    return r;
}

std::string ReadReport::Describe() const
{
    const std::string at = "line " + std::to_string(line) + ": " + QuotedLine(lineText, MaxQuotedChars);
    switch (outcome) {
    case ReadOutcome::Loaded:
        return "read " + Plural(readings, "reading") + " of " + std::to_string(columns) + " columns";
    case ReadOutcome::NeverEnds:
        return FirstDataLine(*this) + " has " + Plural(columns, "column") +
               "; depth, tip resistance and sleeve friction need at least 3";
    case ReadOutcome::Failed: break;
    }
    switch (failure) {
    case ReadFailure::TooManyColumns:
        return FirstDataLine(*this) + " has " + std::to_string(columns) + " columns; at most 5 can be read";
    case ReadFailure::TooManyReadings:
        return "more than 4000 readings; the 4001st begins on line " + std::to_string(line);
    case ReadFailure::NotANumber: return at + " holds a value that is not a number";
    case ReadFailure::OutOfRange: return at + " holds a value too large to store";
    case ReadFailure::PastEndOfFile:
        return at + " begins a reading of " + std::to_string(columns) +
               " values, but the file ends before its last value";
    case ReadFailure::EndsInTitleLines:
        if (line - 1 == titleLines)
            return "the file has no data line after its " + Plural(titleLines, "title line");
        return "the file ends inside its " + Plural(titleLines, "title line") + " (it has " +
               Plural(line - 1, "line") + ")";
    case ReadFailure::LineTooLong:
        return FirstDataLine(*this) + " is too long to count its columns (more than 32768 characters)";
    case ReadFailure::Other:
    case ReadFailure::None: break;
    }
    if (errorNumber == ErrFileNotFound || errorNumber == ErrPathFileAccess || errorNumber == ErrFileAlreadyOpen ||
        errorNumber == ErrBadFileNameOrNumber || errorNumber == ErrOutOfMemory)
        return "the file cannot be opened: " + MessageOf(errorNumber) + " (error " + std::to_string(errorNumber) + ")";
    std::string text = "run-time error " + std::to_string(errorNumber) + " (" + MessageOf(errorNumber) + ")";
    if (line > 0) text += " at " + at;
    return text;
}

}  // namespace pemlo
