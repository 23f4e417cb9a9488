#include "cli/LayersCommand.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <memory>
#include <optional>

#include "cli/BatchOutput.h"
#include "cli/LayerFormat.h"
#include "cli/RoadCommandOptions.h"
#include "cli/YardstickOptions.h"
#include "profile/SoilLayers.h"

namespace pemlo::cli {

namespace {

// Feet in a metre as the conversion to English graph units takes it: an English
// layer's readings are found by their depth in feet.
constexpr double FeetPerMetre = 3.28084;

struct LayersState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::string outDir;
    std::string minThickness;
    YardstickOptions yardstick;
};

std::optional<double> ParseThickness(const std::string& text)
{
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || result.ec != std::errc{} || result.ptr != text.data() + text.size() ||
        !std::isfinite(value) || value < 0.0)
        return std::nullopt;
    return value;
}

// The layers of one input under the options, found in the worker and written in the
// format when the input's turn comes.
FileOutcome LayersOfInput(const LayersState& state, const Input& input, CsvLayout layout, bool recordInNotes)
{
    std::size_t layerCount = 0;
    const OutputFormat format = state.options.format;
    const Yardstick yardstick = YardstickOf(state.yardstick, state.options, input);
    FileOutcome outcome = RunInput(
        state.options, input, true, recordInNotes,
        [&](std::shared_ptr<const Declarations> d, const RunFacts& facts) -> WriteOutput {
            const double minThickness = MinThicknessOf(state.minThickness, d->GraphUnits);
            auto layers = profile::GroupIntoLayers(profile::IntervalsOf(*d), d->IntervalSize, minThickness);
            layerCount = layers.size();
            LayerFacts layerFacts{facts, d->NumIntervals, d->IntervalSize, minThickness,
                                  profile::MinIntervals(minThickness, d->IntervalSize), {}};
            if (yardstick.result)
                layerFacts.sbtn = sbtn::SbtnOfLayers(*yardstick.result, LayerRanges(layers),
                                                     d->GraphUnits == GraphEnglish ? FeetPerMetre : 1.0);
            return [layers = std::move(layers), layerFacts, format, layout](std::ostream& out) {
                WriteLayers(out, layers, layerFacts, format, layout);
            };
        });
    if (outcome.exitCode == ExitOk) outcome.rows = static_cast<int>(layerCount);
    if (outcome.exitCode == ExitOk) outcome.notes += yardstick.notes;
    return outcome;
}

}  // namespace

std::vector<std::pair<double, double>> LayerRanges(const std::vector<profile::SoilLayer>& layers)
{
    std::vector<std::pair<double, double>> ranges;
    for (const profile::SoilLayer& layer : layers) ranges.emplace_back(layer.top, layer.bottom);
    return ranges;
}

void AddMinThicknessOption(CLI::App& command, std::string& minThickness)
{
    command
        .add_option("--min-thickness", minThickness,
                    "Thinnest layer kept as it is, in the graph units; thinner ones are merged into their "
                    "closest neighbour. Default 0.5 (m) in SI graphs, 1.64 (ft) in English graphs")
        ->check(CLI::Validator(
            [](std::string& text) -> std::string {
                return ParseThickness(text) ? std::string() : "'" + text + "' is not a thickness of 0 or more";
            },
            ""))
        ->type_name("T");
}

double MinThicknessOf(const std::string& typed, Integer graphUnits)
{
    return ParseThickness(typed).value_or(profile::DefaultMinThickness(graphUnits));
}

void AddLayersCommand(CLI::App& app)
{
    auto state = std::make_shared<LayersState>();
    CLI::App* command = app.add_subcommand(
        "layers", "Group the classified depth intervals of one or more soundings into soil layers: depth range, "
                  "soil (sand, silt or clay) and the mean values of each layer");
    AddInputFilesOption(*command, state->files);
    AddRoadOptions(*command, state->options);
    AddFormatOption(*command, state->options);
    AddMinThicknessOption(*command, state->minThickness);
    AddYardstickOptions(*command, state->yardstick, state->options, true);
    command->add_option("--out-dir", state->outDir,
                        "Write one result file per input into this directory and print a summary")
        ->type_name("DIR");
    command->callback([state] {
        CheckYardstickCall(state->yardstick, state->options);
        const BatchJob job{ExpandInputs(state->files, state->options.depth), state->outDir, state->options.format,
                           "layers", LayerCsvHeader(true),
                           [&state](const Input& input, CsvLayout layout, bool recordInNotes) {
                               return LayersOfInput(*state, input, layout, recordInNotes);
                           }};
        const int exitCode = DeliverResults(job);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
