#include "formats/GefReader.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "formats/TextDecoding.h"

namespace pemlo::formats {

namespace {

// No real header comes near these; a longer one is not a GEF header.
constexpr std::size_t MaxHeaderValue = 65536;
constexpr std::size_t MaxHeaderLines = 100000;

struct HeaderEntry {
    std::string keyword;  // upper case, without '#'
    std::string value;
    long long line = 0;
};

std::string Upper(std::string_view s)
{
    std::string out(s);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

std::string At(long long line) { return "line " + std::to_string(line); }

// Header lines up to #EOH. Real headers put blanks around '=', wrap whole lines in
// double quotes, leave blank lines, and continue a value on the next line (a line
// without '#', which belongs to the keyword above it).
std::vector<HeaderEntry> ReadHeader(LineCursor& cursor)
{
    std::vector<HeaderEntry> entries;
    TextLine line;
    long long last = 0;
    while (cursor.Next(line)) {
        last = line.number;
        std::string_view text = TrimBlanks(line.text);
        if (text.starts_with('"')) {
            text.remove_prefix(1);
            if (text.ends_with('"')) text.remove_suffix(1);
            text = TrimBlanks(text);
        }
        if (text.empty()) continue;
        if (text.front() != '#') {
            if (!entries.empty()) entries.back().value.append(" ").append(text);
        } else {
            const std::size_t equals = text.find('=');
            const std::string_view keyword =
                text.substr(1, equals == std::string_view::npos ? std::string_view::npos : equals - 1);
            HeaderEntry entry{
                Upper(TrimBlanks(keyword)),
                equals == std::string_view::npos ? std::string() : std::string(TrimBlanks(text.substr(equals + 1))),
                line.number};
            if (entry.keyword == "EOH") return entries;
            if (entries.size() >= MaxHeaderLines)
                Refuse(At(line.number) + ": more than " + std::to_string(MaxHeaderLines) + " header lines before #EOH");
            entries.push_back(std::move(entry));
        }
        if (entries.empty() || entries.back().value.size() <= MaxHeaderValue) continue;
        Refuse(At(line.number) + ": a header value of more than " + std::to_string(MaxHeaderValue) + " characters");
    }
    Refuse("no #EOH line: the header never ends (the file has " + std::to_string(last) + " lines)");
}

std::vector<std::string_view> Fields(const HeaderEntry& e)
{
    std::vector<std::string_view> fields = SplitOn(e.value, ',');
    for (auto& f : fields) f = TrimBlanks(f);
    return fields;
}

const HeaderEntry* First(const std::vector<HeaderEntry>& header, std::string_view keyword)
{
    for (const HeaderEntry& e : header)
        if (e.keyword == keyword) return &e;
    return nullptr;
}

// The entry of an indexed keyword (#MEASUREMENTTEXT= 4, ...) with the given index.
const HeaderEntry* Indexed(const std::vector<HeaderEntry>& header, std::string_view keyword, int index)
{
    for (const HeaderEntry& e : header) {
        double n = 0;
        if (e.keyword == keyword && ParseNumber(Fields(e).front(), n) && n == index) return &e;
    }
    return nullptr;
}

bool WholeNumber(std::string_view field, int& value)
{
    double n = 0;
    if (!ParseNumber(field, n) || n < 0 || n > 1e6 || n != std::floor(n)) return false;
    value = static_cast<int>(n);
    return true;
}

struct GefColumn {
    int number = 0;
    std::string unit;
    int quantity = 0;
    long long line = 0;
};

std::vector<GefColumn> Columns(const std::vector<HeaderEntry>& header)
{
    std::vector<GefColumn> columns;
    for (const HeaderEntry& e : header) {
        if (e.keyword != "COLUMNINFO") continue;
        const auto f = Fields(e);
        GefColumn c{0, f.size() > 1 ? std::string(f[1]) : std::string(), 0, e.line};
        // Free text may hold commas: the quantity number is the last field.
        if (f.size() < 4 || !WholeNumber(f[0], c.number) || !WholeNumber(f.back(), c.quantity) || c.number < 1)
            Refuse(At(e.line) + ": #COLUMNINFO needs a column number, a unit, a name and a quantity number, not " +
                   Quoted(e.value));
        columns.push_back(c);
    }
    return columns;
}

struct Wanted {
    int quantity;
    const char* role;
    const char* what;
    Dimension dimension;
};

const GefColumn& FindQuantity(const std::vector<GefColumn>& columns, const Wanted& w)
{
    const GefColumn* found = nullptr;
    for (const GefColumn& c : columns) {
        if (c.quantity != w.quantity) continue;
        if (found)
            Refuse(At(c.line) + ": columns " + std::to_string(found->number) + " and " + std::to_string(c.number) +
                   " both hold quantity " + std::to_string(w.quantity) + " (" + w.what + ")");
        found = &c;
    }
    if (!found)
        Refuse(std::string("no ") + w.role + " column: no #COLUMNINFO line holds quantity " +
               std::to_string(w.quantity) + " (" + w.what + ")");
    return *found;
}

// How the scans are written and which of their values the import takes.
struct Layout {
    char columnSeparator = 0;  // 0: blanks and tabs
    char recordSeparator = 0;  // 0: none declared
    std::array<int, 3> column{};
    std::array<std::optional<double>, 3> voids;
    std::array<std::string, 3> name;
    int u2Column = 0;  // 0: none read
    std::optional<double> u2Void;
    ColumnUse u2;
    std::string u2Unread;  // why the file's u2 column is not read
};

char SeparatorOf(const std::vector<HeaderEntry>& header, std::string_view keyword)
{
    const HeaderEntry* e = First(header, keyword);
    if (!e || e->value.empty()) return 0;
    return e->value.front() == ' ' ? 0 : e->value.front();
}

// The u2 column (quantity 6) where the file has one. Nothing about it refuses the
// file, which the program has always read whatever its u2 column holds: what keeps
// it from being read is returned instead.
std::string FindU2(const std::vector<GefColumn>& columns, Layout& layout)
{
    const GefColumn* found = nullptr;
    for (const GefColumn& c : columns) {
        if (c.quantity != 6) continue;
        if (found)
            return "columns " + std::to_string(found->number) + " and " + std::to_string(c.number) +
                   " both hold quantity 6 (u2)";
        found = &c;
    }
    if (!found) return {};
    const auto divisor = FindDivisor(found->unit, Dimension::Stress);
    if (!divisor)
        return "column " + std::to_string(found->number) + " (quantity 6, u2) is in " + Quoted(found->unit) +
               ", which is not a stress the import knows";
    layout.u2Column = found->number;
    layout.u2 = {"u2", "quantity 6", found->unit, *divisor};
    return {};
}

Layout MakeLayout(const std::vector<HeaderEntry>& header, DepthChoice depth, std::array<ColumnUse, 3>& uses)
{
    const std::vector<GefColumn> columns = Columns(header);
    const Wanted wanted[3] = {
        depth == DepthChoice::Corrected ? Wanted{11, "corrected depth", "corrected depth", Dimension::Length}
                                        : Wanted{1, "depth", "penetration length", Dimension::Length},
        {2, "qc", "cone resistance qc", Dimension::Stress},
        {3, "fs", "sleeve friction fs", Dimension::Stress}};
    Layout layout;
    layout.columnSeparator = SeparatorOf(header, "COLUMNSEPARATOR");
    layout.recordSeparator = SeparatorOf(header, "RECORDSEPARATOR");
    for (std::size_t k = 0; k < 3; ++k) {
        const GefColumn& c = FindQuantity(columns, wanted[k]);
        layout.column[k] = c.number;
        layout.name[k] = "column " + std::to_string(c.number) + " (quantity " + std::to_string(c.quantity) + ", " +
                         wanted[k].role + ")";
        uses[k] = {k == 0 ? "depth" : wanted[k].role, "quantity " + std::to_string(c.quantity), c.unit,
                   UnitDivisor(c.unit, wanted[k].dimension, At(c.line) + ": " + layout.name[k])};
    }
    layout.u2Unread = FindU2(columns, layout);
    for (const HeaderEntry& e : header) {
        if (e.keyword != "COLUMNVOID") continue;
        const auto f = Fields(e);
        int number = 0;
        if (f.size() < 2 || !WholeNumber(f[0], number)) continue;
        if (double v = 0; number == layout.u2Column && ParseNumber(f[1], v)) layout.u2Void = v;
        for (std::size_t k = 0; k < 3; ++k) {
            double v = 0;
            if (number != layout.column[k]) continue;
            if (!ParseNumber(f[1], v))
                Refuse(At(e.line) + ": the void of " + layout.name[k] + " is " + Quoted(f[1]) + ", not a number");
            layout.voids[k] = v;
        }
    }
    return layout;
}

// One scan: its values by column up to the last column used, separators and record
// ends stripped.
std::vector<std::string_view> ScanFields(std::string_view record, char separator, std::size_t columns)
{
    record = TrimBlanks(record);
    if (separator == 0) return SplitOnBlanks(record, columns + 1);
    if (record.ends_with(separator)) record.remove_suffix(1);
    std::vector<std::string_view> fields = SplitOn(record, separator, columns + 1);
    for (auto& f : fields) f = TrimBlanks(f);
    return fields;
}

void ReadScan(std::string_view record, long long line, const Layout& layout, SoundingBuilder& builder)
{
    const auto used = static_cast<std::size_t>(
        std::max(*std::max_element(layout.column.begin(), layout.column.end()), layout.u2Column));
    const std::vector<std::string_view> fields = ScanFields(record, layout.columnSeparator, used);
    RowValues values;
    for (std::size_t k = 0; k < 3; ++k) {
        const auto column = static_cast<std::size_t>(layout.column[k]);
        if (column > fields.size())
            Refuse(At(line) + " has " + std::to_string(fields.size()) + " values; " + layout.name[k] + " is missing");
        double v = 0;
        if (!ParseNumber(fields[column - 1], v))
            Refuse(At(line) + ": " + layout.name[k] + " holds " + Quoted(fields[column - 1]) + ", not a number");
        if (!(layout.voids[k] && v == *layout.voids[k])) values[k] = v;
    }
    // A short row or a value that is no number leaves the reading without u2.
    std::optional<double> u2;
    const auto u2Column = static_cast<std::size_t>(layout.u2Column);
    if (double v = 0; u2Column > 0 && u2Column <= fields.size() && ParseNumber(fields[u2Column - 1], v) &&
                      !(layout.u2Void && v == *layout.u2Void))
        u2 = v;
    builder.AddRow(line, values, 0, u2);
}

void ReadScans(LineCursor& cursor, const Layout& layout, SoundingBuilder& builder)
{
    TextLine line;
    while (cursor.Next(line)) {
        std::string_view text = TrimBlanks(line.text);
        // A record separator may be declared and never used, or used undeclared ('!').
        if (layout.recordSeparator == 0 && text.ends_with('!')) text.remove_suffix(1);
        while (!text.empty()) {
            const std::size_t end =
                layout.recordSeparator == 0 ? std::string_view::npos : text.find(layout.recordSeparator);
            const std::string_view record = text.substr(0, end);
            if (!TrimBlanks(record).empty()) ReadScan(record, line.number, layout, builder);
            text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        }
    }
}

std::string Joined(const std::vector<std::string_view>& fields, std::size_t from, std::size_t to, const char* glue)
{
    std::string out;
    for (std::size_t i = from; i < to && i < fields.size(); ++i) out += (i > from ? glue : "") + std::string(fields[i]);
    return out;
}

// "2019, 01, 29" and "10, 43, 50" as 2019-01-29 10:43:50; text that is not a date as written.
std::string DateOf(const std::vector<HeaderEntry>& header)
{
    const HeaderEntry* date = First(header, "STARTDATE");
    if (!date) return {};
    const auto f = Fields(*date);
    int y = 0, m = 0, d = 0;
    if (f.size() < 3 || !WholeNumber(f[0], y) || !WholeNumber(f[1], m) || !WholeNumber(f[2], d)) return date->value;
    char text[48];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", y, m, d);
    std::string out = text;
    const HeaderEntry* time = First(header, "STARTTIME");
    const auto t = time ? Fields(*time) : std::vector<std::string_view>{};
    double h = 0, min = 0, s = 0;
    if (t.size() >= 3 && ParseNumber(t[0], h) && ParseNumber(t[1], min) && ParseNumber(t[2], s) && h >= 0 && h < 24 &&
        min >= 0 && min < 60 && s >= 0 && s < 61) {
        std::snprintf(text, sizeof text, " %02d:%02d:%02d", static_cast<int>(h), static_cast<int>(min),
                      static_cast<int>(s));
        out += text;
    }
    return out;
}

// The text of #MEASUREMENTTEXT n: the fields after the index, without a trailing
// description when there is one.
std::string MeasurementText(const std::vector<HeaderEntry>& header, int index)
{
    const HeaderEntry* e = Indexed(header, "MEASUREMENTTEXT", index);
    if (!e) return {};
    const auto f = Fields(*e);
    return Joined(f, 1, f.size() > 3 ? f.size() - 1 : 2, ", ");
}

ProjectInfo Project(const std::vector<HeaderEntry>& header)
{
    ProjectInfo p;
    if (const HeaderEntry* e = First(header, "PROJECTID")) p.number = e->value;
    p.title = MeasurementText(header, 2);
    if (const HeaderEntry* e = First(header, "PROJECTNAME"); p.title.empty() && e) p.title = e->value;
    p.date = DateOf(header);
    if (const HeaderEntry* e = First(header, "TESTID")) p.location = e->value;
    if (const HeaderEntry* e = Indexed(header, "MEASUREMENTVAR", 14)) {
        const auto f = Fields(*e);
        double v = 0;
        if (f.size() > 1 && ParseNumber(f[1], v)) p.gwt = Joined(f, 1, 3, " ");
    }
    p.coneNo = MeasurementText(header, 4);
    return p;
}

// A GEF coordinate or height code in words where it is a known one; BRO exports
// write an EPSG code in #XYID instead.
std::string CodeName(std::string_view code, bool height)
{
    double n = -1;
    if (!ParseNumber(code, n)) return std::string(code);
    const int c = static_cast<int>(n);
    if (c == 28992 && !height) return "EPSG:28992";
    const char* name = nullptr;
    if (c == 31000) name = height ? "NAP" : "RD";
    if (c == 32000) name = height ? "Ostend level" : "Belgian Lambert 72";
    if (c == 32001 && height) name = "TAW";
    const std::string number = "GEF " + std::string(code);
    return name ? number + " (" + name + ")" : number;
}

// #XYID and #ZID. "0, 0, 0" states nothing; of two #ZID lines (seabed and datum) the
// last one that states a level relative to a datum is taken.
SiteLocation Site(const std::vector<HeaderEntry>& header)
{
    SiteLocation site;
    double x = 0, y = 0, z = 0;
    if (const HeaderEntry* e = First(header, "XYID")) {
        const auto f = Fields(*e);
        if (f.size() >= 3 && ParseNumber(f[1], x) && ParseNumber(f[2], y) && !(x == 0 && y == 0)) {
            site.x = x, site.y = y;
            site.system = CodeName(f[0], false);
        }
    }
    for (const HeaderEntry& e : header) {
        if (e.keyword != "ZID") continue;
        const auto f = Fields(e);
        if (f.size() < 2 || !ParseNumber(f[1], z)) continue;
        const bool ownReference = ParseNumber(f[0], x) && x == 0;
        if (site.level && ownReference) continue;
        site.level = z;
        site.datum = CodeName(f[0], true);
    }
    return site;
}

// #MEASUREMENTVAR n in metres, a length without a unit taken as metres; empty
// where it is absent, "-" or in a unit that is no length.
std::optional<double> MeasuredLength(const std::vector<HeaderEntry>& header, int index)
{
    const HeaderEntry* e = Indexed(header, "MEASUREMENTVAR", index);
    if (!e) return std::nullopt;
    const auto f = Fields(*e);
    double v = 0;
    if (f.size() < 2 || !ParseNumber(f[1], v)) return std::nullopt;
    const auto divisor = FindDivisor(f.size() > 2 ? f[2] : std::string_view("m"), Dimension::Length);
    return divisor ? std::optional<double>(v / *divisor) : std::nullopt;
}

// #MEASUREMENTVAR 3, the net area ratio of the cone, where it is a number.
std::optional<double> AreaRatio(const std::vector<HeaderEntry>& header)
{
    const HeaderEntry* e = Indexed(header, "MEASUREMENTVAR", 3);
    if (!e) return std::nullopt;
    const auto f = Fields(*e);
    double v = 0;
    return f.size() > 1 && ParseNumber(f[1], v) ? std::optional<double>(v) : std::nullopt;
}

// "1.1.0 (GEF-CPT-Report 1.1.2)"; refuses a report of another kind (GEF-BORE, say).
std::string Version(const std::vector<HeaderEntry>& header)
{
    std::string version;
    if (const HeaderEntry* e = First(header, "GEFID")) version = Joined(Fields(*e), 0, 3, ".");
    const HeaderEntry* code = First(header, "REPORTCODE");
    if (!code) code = First(header, "PROCEDURECODE");
    if (!code) return version;
    const auto f = Fields(*code);
    if (Lower(code->value).find("cpt") == std::string::npos)
        Refuse(At(code->line) + ": the report code " + Quoted(f.front()) +
               " is not a CPT report; the file holds no CPT data");
    return version + " (" + std::string(f.front()) + " " + Joined(f, 1, 4, ".") + ")";
}

}  // namespace

ImportedSounding ReadGef(std::string_view bytes, DepthChoice depth)
{
    const DecodedText decoded = DecodeText(bytes);
    LineCursor cursor(decoded.Text());
    const std::vector<HeaderEntry> header = ReadHeader(cursor);
    const std::string version = Version(header);
    std::array<ColumnUse, 3> uses;
    const Layout layout = MakeLayout(header, depth, uses);
    SoundingBuilder builder(uses, "line");
    if (layout.u2Column > 0) builder.TakeU2(layout.u2);
    ReadScans(cursor, layout, builder);
    ImportedSounding s = builder.Finish();
    s.format = FileFormat::Gef;
    s.version = version;
    s.project = Project(header);
    s.site = Site(header);
    s.id = s.project.location;
    s.record.encoding = decoded.encoding;
    s.record.predrilled = MeasuredLength(header, 13);
    s.u2Unread = layout.u2Unread;
    s.areaRatio = AreaRatio(header);
    s.groundwater = MeasuredLength(header, 14);
    if (s.groundwater) s.groundwaterSource = "#MEASUREMENTVAR 14";
    return s;
}

}  // namespace pemlo::formats
