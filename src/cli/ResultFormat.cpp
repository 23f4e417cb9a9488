#include "cli/ResultFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <vector>

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

// Rows of numbers: a 1-based index, then one value per column.
struct Sheet {
    const char* indexKey;    // "interval" or "index"
    const char* indexTitle;  // "Interval" or "Reading"
    std::span<const Column> columns;
    std::vector<std::vector<float>> rows;
};

Sheet IntervalSheet(const Declarations& d)
{
    Sheet sheet{"interval", "Interval", IntervalColumns, {}};
    for (int i = 1; i <= d.NumIntervals; ++i) {
        sheet.rows.push_back({d.IntDepth[i], d.IntQTip[i], d.IntQSleeve[i], d.IntRatio[i], d.IntU[i],
                              d.IntV[i], d.IntProb1[i], d.IntProb2[i], d.IntProb3[i]});
    }
    return sheet;
}

Sheet ReadingSheet(const Declarations& d)
{
    Sheet sheet{"index", "Reading", ReadingColumns, {}};
    for (int i = 1; i <= d.NumLines; ++i)
        sheet.rows.push_back({d.Depth[i], d.Q_Tip[i], d.Q_Sleeve[i], d.Ratio[i]});
    return sheet;
}

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

std::string JsonString(const std::string& text)
{
    std::string out = "\"";
    for (unsigned char c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (c < 0x20) {
                constexpr char hex[] = "0123456789abcdef";
                out += "\\u00";
                out += hex[c >> 4];
                out += hex[c & 15];
            } else {
                out += static_cast<char>(c);
            }
        }
    }
    return out + '"';
}

// JSON has no text for a value that is not finite; the checked arithmetic never
// stores one, but a stray one must not make the whole document unreadable.
std::string JsonNumber(float value) { return std::isfinite(value) ? ShortestText(value) : "null"; }

std::string CsvHeader(const Sheet& sheet, bool withFileColumn)
{
    std::string out = withFileColumn ? "file," : "";
    out += sheet.indexKey;
    for (const Column& c : sheet.columns) out += std::string(",") + c.key;
    return out + '\n';
}

std::string Csv(const Sheet& sheet, const std::string& file, CsvLayout layout)
{
    const bool withFileColumn = layout == CsvLayout::ManyFiles;
    std::string out = withFileColumn ? std::string() : CsvHeader(sheet, false);
    const std::string fileField = withFileColumn ? CsvField(file) + "," : std::string();
    for (std::size_t r = 0; r < sheet.rows.size(); ++r) {
        out += fileField + std::to_string(r + 1);
        for (float v : sheet.rows[r]) {
            out += ',';
            out += ShortestText(v);
        }
        out += '\n';
    }
    return out;
}

std::string Title(const Column& c, Integer graphUnits)
{
    const char* unit = graphUnits == GraphEnglish ? c.englishUnit : c.siUnit;
    return unit ? std::string(c.title) + " (" + unit + ")" : std::string(c.title);
}

std::string Pad(const std::string& text, std::size_t width)
{
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string PeopleUnits(Integer dataUnits)
{
    switch (dataUnits) {
    case DataMilliVolts: return "millivolt";
    case DataEnglish: return "English";
    default: return "SI";
    }
}

// The table's first two lines: the file, then what was read and how it is shown.
std::string TableHeading(const RunFacts& facts, const std::string& shown)
{
    const std::string graph = facts.graphUnits == GraphEnglish ? "English" : "SI";
    return facts.file + "\n" + std::to_string(facts.numReadings) + " readings in " +
           PeopleUnits(facts.dataUnits) + " units; " + shown + " in " + graph + " units\n";
}

std::string AlignedTable(const Sheet& sheet, const std::string& heading, Integer graphUnits)
{
    // Each column as wide as its widest entry, numbers right-aligned.
    std::vector<std::vector<std::string>> cells(sheet.columns.size() + 1);
    cells[0].push_back(sheet.indexTitle);
    for (std::size_t c = 0; c < sheet.columns.size(); ++c)
        cells[c + 1].push_back(Title(sheet.columns[c], graphUnits));
    for (std::size_t r = 0; r < sheet.rows.size(); ++r) {
        cells[0].push_back(std::to_string(r + 1));
        for (std::size_t c = 0; c < sheet.columns.size(); ++c)
            cells[c + 1].push_back(FixedText(sheet.rows[r][c], sheet.columns[c].decimals));
    }
    std::vector<std::size_t> widths;
    for (const auto& column : cells) {
        std::size_t w = 0;
        for (const auto& cell : column) w = std::max(w, cell.size());
        widths.push_back(w);
    }

    std::string out = heading;
    for (std::size_t row = 0; row <= sheet.rows.size(); ++row) {
        for (std::size_t c = 0; c < cells.size(); ++c) {
            if (c > 0) out += "  ";
            out += Pad(cells[c][row], widths[c]);
        }
        out += '\n';
    }
    return out;
}

std::string Json(const Sheet& sheet, const RunFacts& facts, const char* listKey)
{
    const bool english = facts.graphUnits == GraphEnglish;
    std::string out = "{\n";
    out += "  \"file\": " + JsonString(facts.file) + ",\n";
    out += "  \"dataUnits\": \"" + DataUnitsName(facts.dataUnits) + "\",\n";
    out += "  \"graphUnits\": \"" + GraphUnitsName(facts.graphUnits) + "\",\n";
    out += std::string("  \"units\": {\"depth\": \"") + (english ? "ft" : "m") + "\", \"qc\": \"" +
           (english ? "tsf" : "MPa") + "\", \"fs\": \"" + (english ? "tsf" : "MPa") +
           "\", \"ratio\": \"%\"},\n";
    out += "  \"numReadings\": " + std::to_string(facts.numReadings) + ",\n";
    out += std::string("  \"") + listKey + "\": [";
    for (std::size_t r = 0; r < sheet.rows.size(); ++r) {
        out += r == 0 ? "\n" : ",\n";
        out += std::string("    {\"") + sheet.indexKey + "\": " + std::to_string(r + 1);
        for (std::size_t c = 0; c < sheet.columns.size(); ++c)
            out += std::string(", \"") + sheet.columns[c].key + "\": " + JsonNumber(sheet.rows[r][c]);
        out += "}";
    }
    out += sheet.rows.empty() ? "]\n}\n" : "\n  ]\n}\n";
    return out;
}

}  // namespace

std::string ShortestText(float value)
{
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

std::string FixedText(float value, int decimals)
{
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<double>(value),
                                      std::chars_format::fixed, decimals);
    if (result.ec != std::errc{}) return ShortestText(value);
    return std::string(buffer.data(), result.ptr);
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
    const Sheet empty{"interval", "Interval", IntervalColumns, {}};
    return CsvHeader(empty, withFileColumn);
}

std::string FormatIntervals(const Declarations& d, const RunFacts& facts, OutputFormat format,
                            CsvLayout layout)
{
    const Sheet sheet = IntervalSheet(d);
    switch (format) {
    case OutputFormat::Table:
        return AlignedTable(sheet,
                            TableHeading(facts, std::to_string(sheet.rows.size()) + " depth intervals"),
                            facts.graphUnits);
    case OutputFormat::Json: return Json(sheet, facts, "intervals");
    case OutputFormat::Csv: break;
    }
    return Csv(sheet, facts.file, layout);
}

std::string FormatReadings(const Declarations& d, const RunFacts& facts, OutputFormat format)
{
    const Sheet sheet = ReadingSheet(d);
    switch (format) {
    case OutputFormat::Table:
        return AlignedTable(sheet, TableHeading(facts, "cleaned and shown"), facts.graphUnits);
    case OutputFormat::Json: return Json(sheet, facts, "readings");
    case OutputFormat::Csv: break;
    }
    return Csv(sheet, facts.file, CsvLayout::OneFile);
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
