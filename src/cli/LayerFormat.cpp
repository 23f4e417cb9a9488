#include "cli/LayerFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <ostream>

namespace pemlo::cli {

namespace {

using profile::SoilLayer;

// One column of a layer: its key, its table title and units, the decimals the table
// shows, and its value.
struct Column {
    const char* key;
    const char* title;
    const char* englishUnit;  // nullptr: no unit
    const char* siUnit;
    int decimals;             // -1: a whole number or a word
};

constexpr std::array Columns{
    Column{"top", "Top", "ft", "m", 3},         Column{"bottom", "Bottom", "ft", "m", 3},
    Column{"thickness", "Thickness", "ft", "m", 3}, Column{"soil", "Soil", nullptr, nullptr, -1},
    Column{"intervals", "Intervals", nullptr, nullptr, -1}, Column{"qc", "qc", "tsf", "MPa", 3},
    Column{"fs", "fs", "tsf", "MPa", 4},        Column{"ratio", "Ratio", "%", "%", 2},
    Column{"u", "U", nullptr, nullptr, 3},      Column{"v", "V", nullptr, nullptr, 3},
    Column{"sand", "Sand", "%", "%", 1},        Column{"silt", "Silt", "%", "%", 1},
    Column{"clay", "Clay", "%", "%", 1},
    // The yardstick beside U and V, after every former column.
    Column{"ic", "Ic", nullptr, nullptr, 3},    Column{"sbtn", "SBTn", nullptr, nullptr, -1},
    Column{"sbtn_share", "SBTn share", "%", "%", 1},
};

// The layer's numbers in the order of Columns, soil and intervals left out.
std::array<double, 11> Numbers(const SoilLayer& l)
{
    const auto& m = l.means;
    return {l.top, l.bottom, l.bottom - l.top, m.qc, m.fs, m.ratio, m.u, m.v, m.sand, m.silt, m.clay};
}

// The cells of a layer, each number written by `text`, a missing one as `missing`.
template <typename Text>
std::vector<std::string> Cells(const SoilLayer& layer, const sbtn::LayerSbtn* y, Text text, const std::string& missing)
{
    const auto numbers = Numbers(layer);
    std::vector<std::string> cells;
    std::size_t n = 0;
    for (const Column& c : Columns) {
        const std::string_view key = c.key;
        if (key == "soil") {
            cells.emplace_back(profile::SoilName(layer.soil));
        } else if (key == "intervals") {
            cells.push_back(std::to_string(layer.count));
        } else if (key == "ic") {
            cells.push_back(y && y->ic ? text(*y->ic, c.decimals) : missing);
        } else if (key == "sbtn") {
            cells.push_back(y && y->zone > 0 ? std::to_string(y->zone) : missing);
        } else if (key == "sbtn_share") {
            cells.push_back(y && y->zone > 0 ? text(y->share, c.decimals) : missing);
        } else {
            cells.push_back(text(numbers[n++], c.decimals));
        }
    }
    return cells;
}

const sbtn::LayerSbtn* YardstickOf(const LayerFacts& facts, std::size_t layer)
{
    return layer < facts.sbtn.size() ? &facts.sbtn[layer] : nullptr;
}

void Csv(std::ostream& out, const std::vector<SoilLayer>& layers, const LayerFacts& facts, CsvLayout layout)
{
    const bool withFile = layout == CsvLayout::ManyFiles;
    if (!withFile) out << LayerCsvHeader(false);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        std::string row = (withFile ? CsvField(facts.run.file) + "," : std::string()) + std::to_string(i + 1);
        for (const std::string& cell :
             Cells(layers[i], YardstickOf(facts, i), [](double v, int) { return ShortestText(v); }, ""))
            row += "," + cell;
        out << row << '\n';
    }
}

void Table(std::ostream& out, const std::vector<SoilLayer>& layers, const LayerFacts& facts)
{
    const bool english = facts.run.graphUnits == GraphEnglish;
    std::vector<std::vector<std::string>> rows{{"Layer"}};
    for (const Column& c : Columns) {
        const char* unit = english ? c.englishUnit : c.siUnit;
        rows[0].push_back(unit ? std::string(c.title) + " (" + unit + ")" : std::string(c.title));
    }
    for (std::size_t i = 0; i < layers.size(); ++i) {
        rows.push_back({std::to_string(i + 1)});
        for (std::string& cell : Cells(layers[i], YardstickOf(facts, i), FixedText, "-"))
            rows.back().push_back(std::move(cell));
    }
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const auto& row : rows)
        for (std::size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], row[c].size());

    const std::string shown = std::to_string(facts.numIntervals) + " depth intervals grouped into " +
                              std::to_string(layers.size()) + " layers (minimum thickness " +
                              ShortestText(facts.minThickness) + (english ? " ft, " : " m, ") +
                              std::to_string(facts.minIntervals) + (facts.minIntervals == 1 ? " interval)" : " intervals)");
    out << TableHeading(facts.run, shown);
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c)
            line += (c > 0 ? "  " : "") + std::string(widths[c] - row[c].size(), ' ') + row[c];
        out << line << '\n';
    }
}

std::string JsonNumber(double value) { return std::isfinite(value) ? ShortestText(value) : "null"; }

void Json(std::ostream& out, const std::vector<SoilLayer>& layers, const LayerFacts& facts)
{
    out << "{\n" << JsonHead(facts.run, ", \"probabilities\": \"%\"");
    out << "  \"numIntervals\": " << facts.numIntervals << ",\n";
    out << "  \"intervalSize\": " << ShortestText(facts.intervalSize) << ",\n";
    out << "  \"minThickness\": " << JsonNumber(facts.minThickness) << ",\n";
    out << "  \"minIntervals\": " << facts.minIntervals << ",\n";
    out << "  \"layers\": [";
    for (std::size_t i = 0; i < layers.size(); ++i) {
        std::string row = std::string(i == 0 ? "\n" : ",\n") + "    {\"layer\": " + std::to_string(i + 1);
        const sbtn::LayerSbtn* y = YardstickOf(facts, i);
        const auto cells = Cells(layers[i], y, [](double v, int) { return JsonNumber(v); }, "null");
        for (std::size_t c = 0; c < Columns.size(); ++c) {
            const bool word = std::string_view(Columns[c].key) == "soil";
            row += std::string(", \"") + Columns[c].key + "\": " + (word ? "\"" + cells[c] + "\"" : cells[c]);
        }
        row += ", \"sbtn_readings\": " + (y ? std::to_string(y->valid) : std::string("null"));
        out << row << "}";
    }
    out << (layers.empty() ? "]\n}\n" : "\n  ]\n}\n");
}

}  // namespace

std::string LayerCsvHeader(bool withFileColumn)
{
    std::string header = withFileColumn ? "file,layer" : "layer";
    for (const Column& c : Columns) header += std::string(",") + c.key;
    return header + '\n';
}

void WriteLayers(std::ostream& out, const std::vector<profile::SoilLayer>& layers, const LayerFacts& facts,
                 OutputFormat format, CsvLayout layout)
{
    switch (format) {
    case OutputFormat::Table: Table(out, layers, facts); return;
    case OutputFormat::Json: Json(out, layers, facts); return;
    case OutputFormat::Csv: break;
    }
    Csv(out, layers, facts, layout);
}

}  // namespace pemlo::cli
