#include "cli/RoadCommandOptions.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <utility>
#include <vector>
#include <memory>
#include <optional>

#include "formats/ImportRecord.h"

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

CLI::Validator FiniteNumber()
{
    return CLI::Validator(
        [](std::string& text) -> std::string {
            const char* first = text.data();
            const char* last = text.data() + text.size();
            if (first != last && *first == '+') ++first;
            double value = 0.0;
            const auto result = std::from_chars(first, last, value);
            const bool finite = result.ec == std::errc{} && result.ptr == last && std::isfinite(value);
            return finite ? std::string() : "'" + text + "' is not a finite number";
        },
        "");
}

void AddRoadOptions(CLI::App& command, RoadCommandOptions& options)
{
    options.asciiOnly.push_back(
        command
            .add_option("--data-units", options.dataUnits,
                        "Units of the readings in a plain ASCII file: mv (depth m, millivolts), english (ft, tsf), "
                        "si (m, MPa); default english")
            ->transform(Named({{"mv", DataMilliVolts}, {"english", DataEnglish}, {"si", DataSI}}))
            ->type_name("mv|english|si"));
    command.add_option("--graph-units", options.graphUnits,
                       "Units of the results; default si for si data and imported files, english otherwise")
        ->transform(Named({{"english", GraphEnglish}, {"si", GraphSI}}))
        ->type_name("english|si");
    options.asciiOnly.push_back(
        command
            .add_option("--title-lines", options.titleLines,
                        "Title lines before the first reading of a plain ASCII file, 0 to 15")
            ->check(CLI::Range(0, 15).description(""))
            ->type_name("N")
            ->capture_default_str());
    options.asciiOnly.push_back(
        command
            .add_option("--tip-factor", options.tipFactor,
                        "Cone tip factor for mv data (plain ASCII files), MPa per millivolt")
            ->check(SingleReal)
            ->type_name("X")
            ->capture_default_str());
    options.asciiOnly.push_back(
        command
            .add_option("--sleeve-factor", options.sleeveFactor,
                        "Cone sleeve factor for mv data (plain ASCII files), MPa per millivolt")
            ->check(SingleReal)
            ->type_name("Y")
            ->capture_default_str());
    AddImportOptions(command, options);
}

void AddImportOptions(CLI::App& command, RoadCommandOptions& options)
{
    command.add_option("--depth", options.depth,
                       "Depth of a GEF, AGS4 or BRO-XML file: penetration (length, default) or corrected; a file "
                       "without the corrected depth is refused")
        ->transform(Named({{"penetration", static_cast<int>(formats::DepthChoice::Penetration)},
                           {"corrected", static_cast<int>(formats::DepthChoice::Corrected)}}))
        ->type_name("penetration|corrected");
    command.add_flag(
        "--strict", options.strict,
        "Refuse (exit 3) a file whose import would drop, negate or reorder readings, and any unit warning");
}

void AddFormatOption(CLI::App& command, RoadCommandOptions& options)
{
    command.add_option("--format", options.format, "Output: csv (default), table (for people) or json")
        ->transform(Named({{"csv", static_cast<int>(OutputFormat::Csv)},
                           {"table", static_cast<int>(OutputFormat::Table)},
                           {"json", static_cast<int>(OutputFormat::Json)}}))
        ->type_name("csv|table|json");
}

void AddProjectOptions(CLI::App& command, formats::ProjectInfo& overrides, bool withGwt)
{
    command.add_option("--number", overrides.number, "Project number")->type_name("TEXT");
    command.add_option("--title", overrides.title, "Project title")->type_name("TEXT");
    command.add_option("--date", overrides.date, "Date and time of the sounding")->type_name("TEXT");
    command.add_option("--location", overrides.location, "Location or sounding number")->type_name("TEXT");
    if (withGwt) command.add_option("--gwt", overrides.gwt, "Ground water table")->type_name("TEXT");
    command.add_option("--cone-no", overrides.coneNo, "Cone number")->type_name("TEXT");
}

formats::ProjectInfo ProjectOf(const Input& input, const formats::ProjectInfo& overrides)
{
    formats::ProjectInfo p = input.sounding ? input.sounding->project : formats::ProjectInfo{};
    for (auto [field, given] : {std::pair{&p.number, &overrides.number}, {&p.title, &overrides.title},
                                {&p.date, &overrides.date}, {&p.location, &overrides.location},
                                {&p.gwt, &overrides.gwt}, {&p.coneNo, &overrides.coneNo}})
        if (!given->empty()) *field = *given;
    return p;
}

void AddInputFilesOption(CLI::App& command, std::vector<std::string>& files)
{
    command
        .add_option("FILE", files,
                    "Cone data files (plain ASCII: depth, qc, fs per line), GEF, AGS4 or BRO-XML files; FILE#ID "
                    "names one sounding of a file")
        ->required();
}

RoadOptions ToRoadOptions(const RoadCommandOptions& options, const Input& input)
{
    RoadOptions road;
    road.path = input.sounding ? input.name : input.path;
    road.imported = input.sounding;
    road.dataUnits = static_cast<Integer>(options.dataUnits);
    road.graphUnits = static_cast<Integer>(options.graphUnits);
    road.titleLines = static_cast<Integer>(options.titleLines);
    road.tipFactor = ParseSingle(options.tipFactor).value_or(0.0f);
    road.sleeveFactor = ParseSingle(options.sleeveFactor).value_or(0.0f);
    return road;
}

}  // namespace pemlo::cli
