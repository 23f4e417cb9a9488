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

Input SingleInput(const std::string& file, formats::DepthChoice depth)
{
    std::vector<Input> inputs = ExpandInputs({file}, depth);
    if (inputs.size() == 1) return std::move(inputs.front());
    std::string names;
    for (const Input& input : inputs) names += (names.empty() ? "" : ", ") + input.name;
    throw CLI::ValidationError("FILE", file + " holds " + std::to_string(inputs.size()) +
                                           " soundings; name one of them: " + names);
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

int ExitCodeOf(RoadStatus status)
{
    switch (status) {
    case RoadStatus::Done: return ExitOk;
    case RoadStatus::ReadFailed: return ExitReadFailed;
    case RoadStatus::RunTimeFailed: break;
    }
    return ExitRunTimeFailed;
}

std::string InputNotes(const RoadCommandOptions& options, const Input& input, bool withRecord)
{
    if (!input.sounding) return {};
    std::string ignored;
    int count = 0;
    for (const CLI::Option* o : options.asciiOnly)
        if (o->count() > 0) ignored += (count++ == 0 ? "" : ", ") + o->get_name();
    std::string notes = withRecord ? RecordBlock(input) : std::string();
    if (count > 0)
        notes += "pemlo-cli: note: " + input.name + ": " + ignored + (count == 1 ? " applies" : " apply") +
                 " to plain ASCII files only; ignored for this " + formats::FormatName(input.format) + " file\n";
    return notes;
}

std::optional<FileOutcome> StrictRefusal(const RoadCommandOptions& options, const Input& input)
{
    if (!options.strict || !input.sounding) return std::nullopt;
    const std::string changes = formats::ChangesMade(input.sounding->record);
    if (changes.empty()) return std::nullopt;
    return Failed(ExitReadFailed, "--strict: the import " + changes, RecordBlock(input));
}

FileOutcome RunInput(const RoadCommandOptions& options, const Input& input, bool classify, bool recordInNotes,
                     const UseResults& use)
{
    if (!input.refusal.empty()) return Failed(ExitReadFailed, input.refusal);
    if (auto refused = StrictRefusal(options, input)) return *refused;
    RoadOptions road = ToRoadOptions(options, input);
    road.classify = classify;
    const auto d = std::make_shared<Declarations>();  // a record of its own for each input
    const RoadResult result = RunRoad(road, *d);
    FileOutcome outcome;
    outcome.notes = InputNotes(options, input, recordInNotes);
    for (const std::string& warning : result.warnings)
        outcome.notes += "pemlo-cli: warning: " + input.name + ": " + warning + "\n";
    if (result.status != RoadStatus::Done) {
        outcome.exitCode = ExitCodeOf(result.status);
        outcome.error = DescribeRoadFailure(result, road, *d);
    } else if (options.strict && !result.warnings.empty()) {
        outcome.exitCode = ExitReadFailed;
        outcome.error = "--strict: " + std::to_string(result.warnings.size()) + " unit warning" +
                        (result.warnings.size() == 1 ? "" : "s");
    } else {
        const RunFacts facts{input.name, input.sounding ? Integer{DataSI} : static_cast<Integer>(options.dataUnits),
                             d->GraphUnits, d->NumLines, input.sounding.get(), result.warnings};
        outcome.write = use(d, facts);
        outcome.rows = classify ? d->NumIntervals : d->NumLines;
    }
    return outcome;
}

}  // namespace pemlo::cli
