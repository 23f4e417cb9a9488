#include "cli/YardstickOptions.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>

#include "sbtn/SbtnInputs.h"

namespace pemlo::cli {

namespace {

std::optional<double> ParseUnitWeight(const std::string& text)
{
    if (CLI::detail::to_lower(text) == "auto") return std::nullopt;
    double value = 0.0;
    const auto r = std::from_chars(text.data(), text.data() + text.size(), value);
    if (r.ec != std::errc{} || r.ptr != text.data() + text.size() || !std::isfinite(value) || value <= 0.0)
        throw CLI::ValidationError("--unit-weight", "'" + text + "' is neither auto nor a positive number");
    return value;
}

}  // namespace

void AddYardstickOptions(CLI::App& command, YardstickOptions& yardstick, RoadCommandOptions& road, bool withGwt)
{
    if (withGwt)
        command.add_option("--gwt", yardstick.sbtn.groundwater,
                           "Groundwater depth in metres below depth 0 for the SBTn columns (negative: water "
                           "standing above it); default the file's, else 0")
            ->type_name("D");
    command.add_option("--area-ratio", yardstick.sbtn.areaRatio,
                       "Net area ratio a of the cone for the SBTn columns, 0 < a <= 1; default the file's, else 0.8")
        ->type_name("A");
    command.add_option("--unit-weight", yardstick.unitWeight,
                       "Soil unit weight in kN/m3 for the SBTn columns, or auto (default): estimated from qt and Rf")
        ->type_name("auto|G");
    command.add_option("--water-unit-weight", yardstick.sbtn.waterUnitWeight,
                       "Unit weight of water for the SBTn columns, kN/m3; default 9.81")
        ->type_name("W");
    road.asciiOnly.push_back(command
                                 .add_option("--u2-column", yardstick.u2Column,
                                             "Column of a plain ASCII file that holds u2, in the units of qc "
                                             "(not with mv data)")
                                 ->check(CLI::IsMember({4, 5}).description(""))
                                 ->type_name("4|5"));
}

void CheckYardstickCall(YardstickOptions& yardstick, const RoadCommandOptions& road)
{
    yardstick.sbtn.unitWeight = ParseUnitWeight(yardstick.unitWeight);
    if (const std::string why = sbtn::CheckOptions(yardstick.sbtn); !why.empty()) throw CLI::ValidationError(why);
    if (yardstick.u2Column != 0 && road.dataUnits == DataMilliVolts)
        throw CLI::ValidationError("--u2-column is refused for mv data: no factor is known for u2");
}

Yardstick YardstickOf(const YardstickOptions& yardstick, const RoadCommandOptions& road, const Input& input)
{
    Yardstick y;
    const std::string head = "pemlo-cli: note: " + input.name + ": ";
    sbtn::GatherResult gathered = sbtn::GatherSbtnReadings(ToRoadOptions(road, input), yardstick.u2Column);
    std::string why = gathered.refusal;
    if (why.empty() && gathered.road.status != RoadStatus::Done) why = gathered.road.errorMessage;
    auto result = std::make_shared<sbtn::SbtnResult>();
    if (why.empty()) {
        *result = sbtn::ComputeSbtn(gathered.readings, yardstick.sbtn);
        why = result->refusal;
    }
    if (!why.empty()) {
        y.notes = head + "no SBTn columns: " + why + "\n";
        return y;
    }
    for (const std::string& line : sbtn::AssumedValues(*result)) y.notes += head + "SBTn: " + line + "\n";
    y.result = std::move(result);
    y.readings = std::make_shared<const sbtn::SbtnReadings>(std::move(gathered.readings));
    return y;
}

}  // namespace pemlo::cli
