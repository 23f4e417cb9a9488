#include "cli/SbtFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <cstring>
#include <ostream>
#include <semaphore>
#include <thread>
#include <utility>

#include "cli/ImportJson.h"
#include "formats/NumberText.h"

namespace pemlo::cli {

namespace {

using sbtn::Invalid;
using sbtn::SbtnResult;
using sbtn::SbtnRow;

struct Column {
    const char* key;
    const char* title;  // the table's, with its unit
    int decimals;       // the table's
};

// The numbers of a row, then the zone.
constexpr std::array<Column, 17> Columns{{
    {"depth", "Depth (m)", 3},          {"qc", "qc (MPa)", 3},           {"fs", "fs (MPa)", 4},
    {"u2", "u2 (MPa)", 4},              {"qt", "qt (MPa)", 3},           {"rf", "Rf (%)", 3},
    {"gamma", "Gamma (kN/m3)", 2},      {"sigma_v0", "Sv0 (kPa)", 1},    {"u0", "u0 (kPa)", 1},
    {"sigma_v0_eff", "S'v0 (kPa)", 1},  {"qn", "qn (kPa)", 1},           {"qt1", "Qt1", 2},
    {"fr", "Fr (%)", 3},                {"bq", "Bq", 4},                 {"n", "n", 3},
    {"qtn", "Qtn", 2},                  {"ic", "Ic", 3},
}};
constexpr std::size_t FirstDerived = 11;  // qt1: from here on empty for a reading without values

using Cells = std::array<std::optional<double>, Columns.size()>;

Cells CellsOf(const SbtnRow& r)
{
    Cells c{r.depth, r.qc, r.fs, r.u2, r.qt, r.rf, r.gamma, r.sigmaV0, r.u0, r.sigmaV0Eff, r.qn};
    if (r.invalid == Invalid::None) {
        const sbtn::Normalised& v = r.values;
        c[11] = v.qt1, c[12] = v.fr, c[13] = v.bq, c[14] = v.n, c[15] = v.qtn, c[16] = v.ic;
    }
    static_assert(FirstDerived == 11);
    return c;
}

// Text put into a fixed buffer and handed on some kilobytes at a time, to the stream
// or to a string (a part of the rows made on another core).
class Buffer {
public:
    explicit Buffer(std::ostream& out) : out_(&out) {}
    explicit Buffer(std::string& text) : text_(&text) {}
    ~Buffer() { Flush(); }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    void Text(std::string_view s)
    {
        if (used_ + s.size() > buffer_.size()) Flush();
        if (s.size() > buffer_.size()) return Hand(s);
        std::memcpy(buffer_.data() + used_, s.data(), s.size());
        used_ += s.size();
    }
    void Char(char c) { buffer_[used_++] = c; }  // within a row: EndRow leaves room for one
    // JSON and CSV have no text for a value that is not finite: it is left empty.
    void Number(double value)
    {
        if (std::isfinite(value))
            used_ = static_cast<std::size_t>(formats::PutShortest(buffer_.data() + used_, value) - buffer_.data());
    }
    void Integer(long long value)
    {
        used_ = static_cast<std::size_t>(
            std::to_chars(buffer_.data() + used_, buffer_.data() + used_ + 24, value).ptr - buffer_.data());
    }
    void EndRow()
    {
        Char('\n');
        RowDone();
    }
    // The end of a row: the buffer goes on once it has no room for another.
    void RowDone()
    {
        if (used_ > buffer_.size() - Room) Flush();
    }

    static constexpr std::size_t Room = 2048;  // more than any row takes

private:
    void Hand(std::string_view s)
    {
        if (out_) out_->write(s.data(), static_cast<std::streamsize>(s.size()));
        if (text_) text_->append(s);
    }
    void Flush()
    {
        Hand({buffer_.data(), used_});
        used_ = 0;
    }
    std::ostream* out_ = nullptr;
    std::string* text_ = nullptr;
    std::array<char, 32768> buffer_;
    std::size_t used_ = 0;
};

// The rows of a long sounding are made in chunks, every other one on a second core
// into one of two strings that take turns; each chunk reaches the stream in its
// place, so the text is that of one core. The strings keep their room from chunk to
// chunk: the text of the whole sounding (10 MB at 32,767 readings) is never held at
// once, and its pages are not faulted in anew.
template <class MakeRows>
void InChunks(std::ostream& out, std::size_t count, const MakeRows& make)
{
    constexpr std::size_t SplitFrom = 8192;
    constexpr std::size_t ChunkRows = 512;
    if (count < SplitFrom || std::thread::hardware_concurrency() < 2) {
        Buffer b(out);
        make(b, 0, count);
        return;
    }
    const std::size_t chunks = (count + ChunkRows - 1) / ChunkRows;
    std::array<std::string, 2> texts;
    std::array<std::binary_semaphore, 2> filled{std::binary_semaphore(0), std::binary_semaphore(0)};
    std::array<std::binary_semaphore, 2> emptied{std::binary_semaphore(1), std::binary_semaphore(1)};
    const auto rowsOf = [&](std::size_t chunk) {
        return std::pair{chunk * ChunkRows, std::min(count, (chunk + 1) * ChunkRows)};
    };
    std::jthread other([&] {
        for (std::size_t chunk = 1, turn = 0; chunk < chunks; chunk += 2, turn ^= 1) {
            emptied[turn].acquire();
            texts[turn].clear();
            {
                Buffer b(texts[turn]);
                const auto [from, to] = rowsOf(chunk);
                make(b, from, to);
            }
            filled[turn].release();
        }
    });
    Buffer b(out);
    for (std::size_t chunk = 0, turn = 0; chunk < chunks; ++chunk) {
        const auto [from, to] = rowsOf(chunk);
        if (chunk % 2 == 0) {
            make(b, from, to);
            continue;
        }
        filled[turn].acquire();
        b.Text(texts[turn]);
        emptied[turn].release();
        turn ^= 1;
    }
}

void CsvRow(Buffer& b, const SbtnRow& r, std::string_view fileField)
{
    b.Text(fileField);
    const Cells cells = CellsOf(r);
    for (std::size_t c = 0; c < cells.size(); ++c) {
        if (c > 0) b.Char(',');
        if (cells[c]) b.Number(*cells[c]);
    }
    b.Char(',');
    if (r.invalid == Invalid::None) b.Integer(r.values.zone);
    b.EndRow();
}

void Csv(std::ostream& out, const SbtnResult& result, const std::string& file, CsvLayout layout)
{
    const bool withFile = layout == CsvLayout::ManyFiles;
    if (!withFile) out << SbtCsvHeader(false);
    const std::string fileField = withFile ? CsvField(file) + "," : std::string();
    InChunks(out, result.rows.size(), [&](Buffer& b, std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i) CsvRow(b, result.rows[i], fileField);
    });
}

std::string SourceMember(const char* key, double value, sbtn::ValueSource source)
{
    return std::string("  \"") + key + "\": {\"value\": " + ShortestText(value) + ", \"source\": \"" +
           sbtn::SourceName(source) + "\"},\n";
}

std::string AreaRatioMember(const SbtnResult& result)
{
    std::string out = "  \"area_ratio\": {\"value\": " + ShortestText(result.areaRatios.front().value) +
                      ", \"source\": \"" + sbtn::SourceName(result.areaRatioSource) + "\"";
    if (result.areaRatios.size() > 1) {  // pushes of different cones: from which reading each holds
        out += ", \"from_reading\": [";
        for (std::size_t i = 0; i < result.areaRatios.size(); ++i)
            out += (i ? ", [" : "[") + std::to_string(result.areaRatios[i].fromIndex + 1) + ", " +
                   ShortestText(result.areaRatios[i].value) + "]";
        out += "]";
    }
    return out + "},\n";
}

std::string JsonHeadOf(const SbtnResult& result, const SbtFacts& facts)
{
    std::string out = "  \"file\": " + JsonString(facts.run.file) + ",\n";
    out += "  \"dataUnits\": \"" + DataUnitsName(facts.run.dataUnits) + "\",\n";
    out += "  \"units\": {\"depth\": \"m\", \"qc\": \"MPa\", \"fs\": \"MPa\", \"u2\": \"MPa\", \"qt\": \"MPa\", "
           "\"rf\": \"%\", \"gamma\": \"kN/m3\", \"sigma_v0\": \"kPa\", \"u0\": \"kPa\", \"sigma_v0_eff\": "
           "\"kPa\", \"qn\": \"kPa\", \"fr\": \"%\"},\n";
    out += "  \"numReadings\": " + std::to_string(result.rows.size()) + ",\n";
    out += ImportJsonMembers(facts.run.imported, facts.run.warnings);
    out += "  \"inputs\": [";
    for (std::size_t i = 0; i < facts.inputLines.size(); ++i)
        out += (i ? ", " : "") + JsonString(facts.inputLines[i]);
    out += "],\n";
    out += SourceMember("groundwater", result.groundwater, result.groundwaterSource);
    out += AreaRatioMember(result);
    out += SourceMember("water_unit_weight", result.waterUnitWeight, result.waterUnitWeightSource);
    out += "  \"unit_weight\": " + (result.unitWeight ? ShortestText(*result.unitWeight) : "\"auto\"") + ",\n";
    out += "  \"counts\": {\"valid\": " + std::to_string(result.valid) + ", \"invalid\": {";
    for (int cause = 1; cause < sbtn::InvalidCauses; ++cause)
        out += std::string(cause > 1 ? ", " : "") + JsonString(sbtn::InvalidName(static_cast<Invalid>(cause))) +
               ": " + std::to_string(result.invalidByCause[static_cast<std::size_t>(cause)]);
    return out + "}},\n";
}

void JsonRow(Buffer& b, const SbtnRow& r, bool first)
{
    b.Text(first ? "\n    {" : ",\n    {");
    const Cells cells = CellsOf(r);
    for (std::size_t c = 0; c < cells.size(); ++c) {
        b.Text(c ? ", \"" : "\"");
        b.Text(Columns[c].key);
        b.Text("\": ");
        if (cells[c] && std::isfinite(*cells[c]))
            b.Number(*cells[c]);
        else
            b.Text("null");
    }
    b.Text(", \"zone\": ");
    if (r.invalid == Invalid::None) {
        b.Integer(r.values.zone);
    } else {
        b.Text("null, \"invalid\": \"");
        b.Text(sbtn::InvalidName(r.invalid));
        b.Char('"');
    }
    b.Char('}');
    b.RowDone();
}

void Json(std::ostream& out, const SbtnResult& result, const SbtFacts& facts)
{
    out << "{\n" << JsonHeadOf(result, facts) << "  \"readings\": [";
    InChunks(out, result.rows.size(), [&](Buffer& b, std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i) JsonRow(b, result.rows[i], i == 0);
    });
    out << (result.rows.empty() ? "]\n}\n" : "\n  ]\n}\n");
}

// The table: each column as wide as its widest entry, numbers right-aligned, then the
// zone with its name (or why the reading has none).
void Table(std::ostream& out, const SbtnResult& result, const SbtFacts& facts)
{
    std::vector<std::array<std::string, Columns.size() + 1>> texts;
    texts.reserve(result.rows.size());
    std::array<std::size_t, Columns.size() + 1> widths{};
    for (std::size_t c = 0; c < Columns.size(); ++c) widths[c] = std::string(Columns[c].title).size();
    widths.back() = 4;
    for (const SbtnRow& r : result.rows) {
        const Cells cells = CellsOf(r);
        auto& line = texts.emplace_back();
        for (std::size_t c = 0; c < cells.size(); ++c) {
            if (cells[c]) line[c] = FixedText(*cells[c], Columns[c].decimals);
            widths[c] = std::max(widths[c], line[c].size());
        }
        line.back() = r.invalid == Invalid::None
                          ? std::to_string(r.values.zone) + " " + sbtn::ZoneName(r.values.zone)
                          : std::string("- ") + sbtn::InvalidName(r.invalid);
    }
    out << TableHeading(facts.run, "the normalised soil behaviour type (Robertson 2009)");
    for (const std::string& line : facts.inputLines) out << line << '\n';
    Buffer b(out);
    const auto pad = [&b](const std::string& text, std::size_t width) {
        b.Text(std::string(width > text.size() ? width - text.size() : 0, ' '));
        b.Text(text);
    };
    for (std::size_t c = 0; c < Columns.size(); ++c) pad(Columns[c].title, c ? widths[c] + 2 : widths[c]);
    b.Text("  Zone");
    b.EndRow();
    for (const auto& line : texts) {
        for (std::size_t c = 0; c < Columns.size(); ++c) pad(line[c], c ? widths[c] + 2 : widths[c]);
        b.Text("  ");
        b.Text(line.back());
        b.EndRow();
    }
}

}  // namespace

std::string SbtCsvHeader(bool withFileColumn)
{
    std::string out = withFileColumn ? "file," : "";
    for (const Column& c : Columns) out += std::string(c.key) + ",";
    return out + "zone\n";
}

void WriteSbt(std::ostream& out, const SbtnResult& result, const SbtFacts& facts, OutputFormat format,
              CsvLayout layout)
{
    switch (format) {
    case OutputFormat::Table: Table(out, result, facts); return;
    case OutputFormat::Json: Json(out, result, facts); return;
    case OutputFormat::Csv: break;
    }
    Csv(out, result, facts.run.file, layout);
}

}  // namespace pemlo::cli
