#include "cli/ResultFormat.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <array>
#include <charconv>
#include <cmath>
#include <ostream>
#include <span>

#include "cli/ImportJson.h"
#include "formats/SafeText.h"

namespace pemlo::cli {

namespace {

// One numeric column: its CSV/JSON key, its table title with units, and the
// decimals the table shows (the digits engineers read results at).
struct Column {
    const char* key;
    const char* title;
    const char* englishUnit;  // nullptr: no unit
    const char* siUnit;
    int decimals;
};

constexpr std::array IntervalColumns{
    Column{"depth", "Depth", "ft", "m", 3},   Column{"qc", "qc", "tsf", "MPa", 3},
    Column{"fs", "fs", "tsf", "MPa", 4},      Column{"ratio", "Ratio", "%", "%", 4},
    Column{"u", "U", nullptr, nullptr, 4},    Column{"v", "V", nullptr, nullptr, 4},
    Column{"sand", "Sand", "%", "%", 2},      Column{"silt", "Silt", "%", "%", 2},
    Column{"clay", "Clay", "%", "%", 2},
};

constexpr std::array ReadingColumns{
    Column{"depth", "Depth", "ft", "m", 3},
    Column{"qc", "qc", "tsf", "MPa", 3},
    Column{"fs", "fs", "tsf", "MPa", 4},
    Column{"ratio", "Ratio", "%", "%", 4},
};
constexpr std::size_t MostColumns = IntervalColumns.size();

// Rows of numbers read straight from the record: a 1-based index, then one value per
// column, each column an array of `count` values.
struct Sheet {
    const char* indexKey;    // "interval" or "index"
    const char* indexTitle;  // "Interval" or "Reading"
    const char* listKey;     // the JSON list: "intervals" or "readings"
    std::span<const Column> columns;
    std::array<const float*, MostColumns> values{};
    int count = 0;
};

Sheet IntervalSheet(const Declarations& d)
{
    return {"interval", "Interval", "intervals", IntervalColumns,
            {d.IntDepth.data(), d.IntQTip.data(), d.IntQSleeve.data(), d.IntRatio.data(), d.IntU.data(),
             d.IntV.data(), d.IntProb1.data(), d.IntProb2.data(), d.IntProb3.data()},
            d.NumIntervals};
}

Sheet ReadingSheet(const Declarations& d)
{
    return {"index", "Reading", "readings", ReadingColumns,
            {d.Depth.data(), d.Q_Tip.data(), d.Q_Sleeve.data(), d.Ratio.data()}, d.NumLines};
}

// The shortest text of the values of one column, kept for the value last written:
// where intervals outnumber readings, runs of intervals repeat the same means.
class ColumnText {
public:
    static constexpr std::size_t MostChars = 32;

    // Puts the text of the value at `at`, which has room for MostChars, and returns
    // its end. The whole buffer is copied: a copy of fixed size is a few moves, where
    // one of the text's own length is a call.
    char* Put(char* at, float value)
    {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        if (length_ == 0 || bits != bits_) {
            bits_ = bits;
            length_ = static_cast<std::size_t>(std::to_chars(text_, text_ + MostChars, value).ptr - text_);
        }
        std::memcpy(at, text_, MostChars);
        return at + length_;
    }

private:
    std::uint32_t bits_ = 0;
    char text_[MostChars];
    std::size_t length_ = 0;
};

// Rows are made in a buffer and written to the stream a few kilobytes at a time:
// the stream sees one call for dozens of rows, not one a number.
class Row {
public:
    explicit Row(std::ostream& out) : out_(out) {}
    ~Row() { Flush(); }
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    void Text(std::string_view text)
    {
        if (text.size() > Room) {  // longer than any row: straight through
            Flush();
            out_.write(text.data(), static_cast<std::streamsize>(text.size()));
            return;
        }
        Reserve(text.size());
        std::memcpy(buffer_.data() + used_, text.data(), text.size());
        used_ += text.size();
    }
    void Char(char c)
    {
        Reserve(1);
        buffer_[used_++] = c;
    }
    void Integer(long long n)
    {
        Reserve(24);
        used_ = static_cast<std::size_t>(std::to_chars(buffer_.data() + used_, buffer_.data() + used_ + 24, n).ptr -
                                         buffer_.data());
    }
    void Shortest(float value)
    {
        Reserve(32);
        used_ = static_cast<std::size_t>(std::to_chars(buffer_.data() + used_, buffer_.data() + used_ + 32, value).ptr -
                                         buffer_.data());
    }
    // A row of short fields put straight into the buffer: room for a row is made once,
    // the fields are put from the pointer returned, and RowEnds takes their end.
    char* RowRoom()
    {
        Reserve(Room);
        return buffer_.data() + used_;
    }
    void RowEnds(char* end)
    {
        used_ = static_cast<std::size_t>(end - buffer_.data());
        EndRow();
    }
    // The end of a row: the buffer goes out once it holds no room for another.
    void EndRow()
    {
        Char('\n');
        if (used_ > buffer_.size() - Room) Flush();
    }

    static constexpr std::size_t Room = 1024;  // more than a row of numbers takes

private:
    void Reserve(std::size_t n)
    {
        if (used_ + n > buffer_.size()) Flush();
    }
    void Flush()
    {
        out_.write(buffer_.data(), static_cast<std::streamsize>(used_));
        used_ = 0;
    }

    std::ostream& out_;
    std::array<char, 16384> buffer_;
    std::size_t used_ = 0;
};

std::string CsvHeader(const Sheet& sheet, bool withFileColumn)
{
    std::string out = withFileColumn ? "file," : "";
    out += sheet.indexKey;
    for (const Column& c : sheet.columns) out += std::string(",") + c.key;
    return out + '\n';
}

void Csv(std::ostream& out, const Sheet& sheet, const std::string& file, CsvLayout layout)
{
    const bool withFileColumn = layout == CsvLayout::ManyFiles;
    if (!withFileColumn) out << CsvHeader(sheet, false);
    const std::string fileField = withFileColumn ? CsvField(file) + "," : std::string();
    std::array<ColumnText, MostColumns> texts;
    static_assert(24 + MostColumns * (1 + ColumnText::MostChars) < Row::Room, "a row of numbers fits the room");
    Row row(out);
    for (int r = 0; r < sheet.count; ++r) {
        row.Text(fileField);
        char* at = row.RowRoom();
        at = std::to_chars(at, at + 24, r + 1).ptr;
        for (std::size_t c = 0; c < sheet.columns.size(); ++c) {
            *at++ = ',';
            at = texts[c].Put(at, sheet.values[c][r]);
        }
        row.RowEnds(at);
    }
}

std::string Title(const Column& c, Integer graphUnits)
{
    const char* unit = graphUnits == GraphEnglish ? c.englishUnit : c.siUnit;
    return unit ? std::string(c.title) + " (" + unit + ")" : std::string(c.title);
}

std::string PeopleUnits(Integer dataUnits)
{
    switch (dataUnits) {
    case DataMilliVolts: return "millivolt";
    case DataEnglish: return "English";
    default: return "SI";
    }
}

void Pad(Row& row, const std::string& text, std::size_t width)
{
    row.Text(std::string(width > text.size() ? width - text.size() : 0, ' '));
    row.Text(text);
}

// Each column as wide as its widest entry, numbers right-aligned: the widths are
// measured in a first pass, and the rows written in a second.
void AlignedTable(std::ostream& out, const Sheet& sheet, const std::string& heading, Integer graphUnits)
{
    std::array<std::size_t, MostColumns + 1> widths{};
    widths[0] = std::max(std::string(sheet.indexTitle).size(), std::to_string(sheet.count).size());
    for (std::size_t c = 0; c < sheet.columns.size(); ++c) {
        widths[c + 1] = Title(sheet.columns[c], graphUnits).size();
        for (int r = 0; r < sheet.count; ++r)
            widths[c + 1] = std::max(widths[c + 1], FixedText(sheet.values[c][r], sheet.columns[c].decimals).size());
    }
    out << heading;
    Row row(out);
    Pad(row, sheet.indexTitle, widths[0]);
    for (std::size_t c = 0; c < sheet.columns.size(); ++c) {
        row.Text("  ");
        Pad(row, Title(sheet.columns[c], graphUnits), widths[c + 1]);
    }
    row.EndRow();
    for (int r = 0; r < sheet.count; ++r) {
        Pad(row, std::to_string(r + 1), widths[0]);
        for (std::size_t c = 0; c < sheet.columns.size(); ++c) {
            row.Text("  ");
            Pad(row, FixedText(sheet.values[c][r], sheet.columns[c].decimals), widths[c + 1]);
        }
        row.EndRow();
    }
}

// JSON has no text for a value that is not finite; the checked arithmetic never
// stores one, but a stray one must not make the whole document unreadable.
void JsonNumber(Row& row, float value)
{
    if (std::isfinite(value)) {
        row.Shortest(value);
    } else {
        row.Text("null");
    }
}

// The list's entries, each "{...}" after a comma and a line break.
void JsonRows(std::ostream& out, const Sheet& sheet)
{
    Row row(out);
    for (int r = 0; r < sheet.count; ++r) {
        row.Text(r == 0 ? "\n    {\"" : ",\n    {\"");
        row.Text(sheet.indexKey);
        row.Text("\": ");
        row.Integer(r + 1);
        for (std::size_t c = 0; c < sheet.columns.size(); ++c) {
            row.Text(", \"");
            row.Text(sheet.columns[c].key);
            row.Text("\": ");
            JsonNumber(row, sheet.values[c][r]);
        }
        row.Char('}');
    }
}

void Json(std::ostream& out, const Sheet& sheet, const RunFacts& facts)
{
    out << "{\n" << JsonHead(facts) << "  \"" << sheet.listKey << "\": [";
    JsonRows(out, sheet);
    out << (sheet.count == 0 ? "]\n}\n" : "\n  ]\n}\n");
}

void Write(std::ostream& out, const Sheet& sheet, const RunFacts& facts, OutputFormat format, CsvLayout layout,
           const std::string& shown)
{
    switch (format) {
    case OutputFormat::Table: AlignedTable(out, sheet, TableHeading(facts, shown), facts.graphUnits); return;
    case OutputFormat::Json: Json(out, sheet, facts); return;
    case OutputFormat::Csv: break;
    }
    Csv(out, sheet, facts.file, layout);
}

}  // namespace

std::string CsvField(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

std::string JsonString(const std::string& text) { return '"' + formats::JsonStringContent(text) + '"'; }

std::string TableHeading(const RunFacts& facts, const std::string& shown)
{
    const std::string graph = facts.graphUnits == GraphEnglish ? "English" : "SI";
    return facts.file + "\n" + std::to_string(facts.numReadings) + " readings in " +
           PeopleUnits(facts.dataUnits) + " units; " + shown + " in " + graph + " units\n";
}

std::string JsonHead(const RunFacts& facts, const std::string& extraUnits)
{
    const bool english = facts.graphUnits == GraphEnglish;
    std::string out = "  \"file\": " + JsonString(facts.file) + ",\n";
    out += "  \"dataUnits\": \"" + DataUnitsName(facts.dataUnits) + "\",\n";
    out += "  \"graphUnits\": \"" + GraphUnitsName(facts.graphUnits) + "\",\n";
    out += std::string("  \"units\": {\"depth\": \"") + (english ? "ft" : "m") + "\", \"qc\": \"" +
           (english ? "tsf" : "MPa") + "\", \"fs\": \"" + (english ? "tsf" : "MPa") + "\", \"ratio\": \"%\"" +
           extraUnits + "},\n";
    out += "  \"numReadings\": " + std::to_string(facts.numReadings) + ",\n";
    out += ImportJsonMembers(facts.imported, facts.warnings);
    return out;
}

std::string FixedText(double value, int decimals)
{
    std::array<char, 400> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc{}) return ShortestText(value);
    std::string text(buffer.data(), result.ptr);
    if (text.front() == '-' && text.find_first_not_of("-0.") == std::string::npos) text.erase(0, 1);
    return text;
}

std::string DataUnitsName(Integer dataUnits)
{
    switch (dataUnits) {
    case DataMilliVolts: return "mv";
    case DataEnglish: return "english";
    default: return "si";
    }
}

std::string GraphUnitsName(Integer graphUnits) { return graphUnits == GraphEnglish ? "english" : "si"; }

std::string IntervalCsvHeader(bool withFileColumn)
{
    Sheet empty{"interval", "Interval", "intervals", IntervalColumns, {}, 0};
    return CsvHeader(empty, withFileColumn);
}

void WriteIntervals(std::ostream& out, const Declarations& d, const RunFacts& facts, OutputFormat format,
                    CsvLayout layout)
{
    const Sheet sheet = IntervalSheet(d);
    Write(out, sheet, facts, format, layout, std::to_string(sheet.count) + " depth intervals");
}

void WriteReadings(std::ostream& out, const Declarations& d, const RunFacts& facts, OutputFormat format)
{
    Write(out, ReadingSheet(d), facts, format, CsvLayout::OneFile, "cleaned and shown");
}

std::string FileExtension(OutputFormat format)
{
    switch (format) {
    case OutputFormat::Table: return "txt";
    case OutputFormat::Json: return "json";
    case OutputFormat::Csv: break;
    }
    return "csv";
}

}  // namespace pemlo::cli
