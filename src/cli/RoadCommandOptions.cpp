#include "cli/RoadCommandOptions.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <utility>
#include <vector>
#include <memory>
#include <optional>

namespace pemlo::cli {

namespace {

// The text of a cone factor straight to single precision, as the factor boxes of the
// desktop program convert it (no detour through double, which could round twice).
std::optional<float> ParseSingle(const std::string& text)
{
    const char* first = text.data();
    const char* last = text.data() + text.size();
    if (first != last && *first == '+') ++first;
    float value = 0.0f;
    const auto result = std::from_chars(first, last, value);
    if (result.ec != std::errc{} || result.ptr != last || !std::isfinite(value)) return std::nullopt;
    return value;
}

const CLI::Validator SingleReal(
    [](std::string& text) -> std::string {
        return ParseSingle(text) ? std::string() : "'" + text + "' is not a number single precision can hold";
    },
    "");

// Accepts one of the names (in any case) and hands its number on to the option.
// Numbers themselves are refused: "--data-units 1" would be too easy to misread.
CLI::Validator Named(std::vector<std::pair<std::string, int>> names)
{
    return CLI::Validator(
        [names](std::string& text) -> std::string {
            std::string allowed;
            for (const auto& [name, value] : names) {
                if (CLI::detail::to_lower(text) == name) {
                    text = std::to_string(value);
                    return {};
                }
                allowed += (allowed.empty() ? "" : ", ") + name;
            }
            return "'" + text + "' is not one of " + allowed;
        },
        "");
}

}  // namespace

void AddRoadOptions(CLI::App& command, RoadCommandOptions& options)
{
    command.add_option("--data-units", options.dataUnits,
                       "Units of the readings in the file: mv (depth m, millivolts), english (ft, tsf), "
                       "si (m, MPa); default english")
        ->transform(Named({{"mv", DataMilliVolts}, {"english", DataEnglish}, {"si", DataSI}}))
        ->type_name("mv|english|si");
    command.add_option("--graph-units", options.graphUnits,
                       "Units of the results; default si for si data, english otherwise")
        ->transform(Named({{"english", GraphEnglish}, {"si", GraphSI}}))
        ->type_name("english|si");
    command.add_option("--title-lines", options.titleLines, "Title lines before the first reading, 0 to 15")
        ->check(CLI::Range(0, 15).description(""))
        ->type_name("N")
        ->capture_default_str();
    command.add_option("--tip-factor", options.tipFactor, "Cone tip factor for mv data, MPa per millivolt")
        ->check(SingleReal)
        ->type_name("X")
        ->capture_default_str();
    command.add_option("--sleeve-factor", options.sleeveFactor,
                       "Cone sleeve factor for mv data, MPa per millivolt")
        ->check(SingleReal)
        ->type_name("Y")
        ->capture_default_str();
}

void AddFormatOption(CLI::App& command, RoadCommandOptions& options)
{
    command.add_option("--format", options.format, "Output: csv (default), table (for people) or json")
        ->transform(Named({{"csv", static_cast<int>(OutputFormat::Csv)},
                           {"table", static_cast<int>(OutputFormat::Table)},
                           {"json", static_cast<int>(OutputFormat::Json)}}))
        ->type_name("csv|table|json");
}
RoadOptions ToRoadOptions(const RoadCommandOptions& options, const std::string& path)
{
    RoadOptions road;
    road.path = path;
    road.dataUnits = static_cast<Integer>(options.dataUnits);
    road.graphUnits = static_cast<Integer>(options.graphUnits);
    road.titleLines = static_cast<Integer>(options.titleLines);
    road.tipFactor = ParseSingle(options.tipFactor).value_or(0.0f);
    road.sleeveFactor = ParseSingle(options.sleeveFactor).value_or(0.0f);
    return road;
}

RunFacts FactsOf(const RoadCommandOptions& options, const std::string& path, const Declarations& d)
{
    RunFacts facts;
    facts.file = path;
    facts.dataUnits = static_cast<Integer>(options.dataUnits);
    facts.graphUnits = d.GraphUnits;
    facts.numReadings = d.NumLines;
    return facts;
}

int ExitCodeOf(RoadStatus status)
{
    switch (status) {
    case RoadStatus::Done: return ExitOk;
    case RoadStatus::ReadFailed: return ExitReadFailed;
    case RoadStatus::RunTimeFailed: break;
    }
    return ExitRunTimeFailed;
}

FileOutcome RunFile(const RoadCommandOptions& options, const std::string& path, bool classify,
                    const WriteResults& write)
{
    RoadOptions road = ToRoadOptions(options, path);
    road.classify = classify;
    const auto d = std::make_unique<Declarations>();  // some 70 kB: not on a thread's stack
    const RoadResult result = RunRoad(road, *d);
    if (result.status != RoadStatus::Done)
        return {ExitCodeOf(result.status), {}, DescribeRoadFailure(result, road, *d)};
    return {ExitOk, write(*d, FactsOf(options, path, *d)), {}, classify ? d->NumIntervals : d->NumLines};
}

}  // namespace pemlo::cli
