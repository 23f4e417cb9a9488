#include "cli/AgsCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <ctime>
#include <memory>
#include <optional>

#include "cli/LayersCommand.h"
#include "cli/OutputFiles.h"
#include "cli/OutputPath.h"
#include "cli/ProgressLine.h"
#include "cli/RoadCommandOptions.h"
#include "cli/RunInput.h"
#include "cli/StandardStreams.h"
#include "cli/YardstickOptions.h"
#include "formats/SafeText.h"
#include "profile/Ags4Export.h"
#include "profile/Ags4Rules.h"

namespace pemlo::cli {

namespace {


constexpr std::size_t FindingsShown = 5;

// Two digits at `at` making a number up to `max`.
bool TwoDigits(const std::string& text, std::size_t at, int max)
{
    const auto digit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    return digit(at) && digit(at + 1) && (text[at] - '0') * 10 + (text[at + 1] - '0') <= max;
}

// yyyy-mm-dd, alone or with a time HH:MM or HH:MM:SS after one blank: a date followed
// by anything else would lose the rest without a word.
bool IsDateOption(const std::string& text)
{
    if (profile::CalendarDate(text).empty()) return false;
    if (text.size() == 10) return true;
    const bool minutes = (text.size() == 16 || text.size() == 19) && text[10] == ' ' && TwoDigits(text, 11, 23) &&
                         text[13] == ':' && TwoDigits(text, 14, 59);
    return minutes && (text.size() == 16 || (text[16] == ':' && TwoDigits(text, 17, 59)));
}

struct AgsState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    std::vector<Input> inputs;
    std::string out;
    std::string minThickness;
    formats::ProjectInfo project;
    std::string recipient;
    YardstickOptions yardstick;
    bool readings = false;
};

struct Profiled {
    profile::AgsSounding sounding;
    float intervalSize = 0.0f;
};

std::string Today()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[16] = {};
    std::strftime(text, sizeof text, "%Y-%m-%d", &local);
    return text;
}

// The push of each reading: an AGS4 sounding's own, else the one push of the source.
std::vector<std::string> PushOfEachReading(const Input& input, const profile::ProfileSource& source, std::size_t n)
{
    std::vector<std::string> ids(n, source.pushes.front().id);
    const formats::ImportedSounding* s = input.sounding.get();
    if (!s || s->readingPush.size() != n) return ids;
    for (std::size_t i = 0; i < n; ++i)
        if (const auto p = static_cast<std::size_t>(s->readingPush[i]); p < s->pushes.size())
            ids[i] = s->pushes[p].testNumber;
    return ids;
}

// The yardstick beside the layers: each layer's SBTn, the D used, each push's a (that
// of its first reading; none where no reading of it was kept), and the readings.
void AddYardstick(profile::AgsSounding& a, const Yardstick& y, const Input& input, bool withReadings)
{
    if (!y.result) return;
    a.sbtn = sbtn::SbtnOfLayers(*y.result, LayerRanges(a.layers), 1.0);
    if (y.result->groundwaterSource != sbtn::ValueSource::Assumed) a.groundwater = y.result->groundwater;
    const std::vector<std::string> push = PushOfEachReading(input, a.source, y.result->rows.size());
    for (profile::PushRange& range : a.source.pushes) {
        const auto first = std::find(push.begin(), push.end(), range.id);
        if (first != push.end())
            range.areaRatio = sbtn::AreaRatioUsed(*y.result, static_cast<std::size_t>(first - push.begin()));
    }
    if (!withReadings) return;
    a.readings = y.result;
    a.readingPush = push;
}

// The profile of one input, in metres, under the location and pushes it comes from.
FileOutcome ProfileOfInput(const AgsState& state, const Input& input, std::optional<Profiled>& profiled)
{
    const Yardstick yardstick = YardstickOf(state.yardstick, state.options, input);
    FileOutcome outcome = RunInput(state.options, input, true, true,
                    [&](std::shared_ptr<const Declarations> d, const RunFacts&) -> WriteOutput {
                        const double minThickness = MinThicknessOf(state.minThickness, d->GraphUnits);
                        const double last = d->Depth[d->NumLines];
                        profile::ProfileSource source =
                            input.sounding ? profile::SourceOfSounding(input.name, input.path, *input.sounding)
                                           : profile::SourceOfDataFile(input.path, d->Depth[1], last);
                        source.name = input.name;
                        source.project = ProjectOf(input, state.project);
                        // --cone-no names the cone of every push; without it each push keeps its own.
                        if (!state.project.coneNo.empty())
                            for (profile::PushRange& push : source.pushes) push.reference = state.project.coneNo;
                        auto layers = profile::GroupIntoLayers(profile::IntervalsOf(*d), d->IntervalSize, minThickness);
                        profiled = Profiled{{source, std::move(layers), last}, d->IntervalSize};
                        AddYardstick(profiled->sounding, yardstick, input, state.readings);
                        return {};  // the one AGS4 file is written when every sounding is done
                    });
    if (outcome.exitCode != ExitOk) return outcome;
    outcome.notes += yardstick.notes;
    if (const std::size_t left = profiled ? profile::ScptRowsLeftOut(profiled->sounding) : 0; left > 0)
        outcome.notes += "pemlo-cli: note: " + input.name + ": " + std::to_string(left) +
                         " readings without an SCPT row: each repeats the depth of the reading before it\n";
    return outcome;
}

void RefuseWrongCalls(const AgsState& state)
{
    if (state.options.graphUnits == GraphEnglish)
        throw CLI::ValidationError("--graph-units", "AGS4 depths are in metres: the ags command works in SI graph units");
}

// Holds the text to the AGS4 rules and writes it only when it keeps them all.
int WriteChecked(const std::string& path, const std::string& text)
{
    const auto findings = profile::CheckAgs4(text);
    if (!findings.empty()) {
        std::string message = "pemlo-cli: " + formats::TerminalField(path) + " not written: the AGS4 text breaks a rule\n";
        for (std::size_t i = 0; i < findings.size() && i < FindingsShown; ++i)
            message += "  " + profile::Describe(findings[i]) + "\n";
        if (findings.size() > FindingsShown)
            message += "  and " + std::to_string(findings.size() - FindingsShown) + " more\n";
        WriteErr(message);
        return ExitWriteFailed;
    }
    const std::string failure = WriteOutputFile(path, [&](std::ostream& out) { out << text; });
    if (failure.empty()) return ExitOk;
    WriteErr("pemlo-cli: " + failure + "\n");
    return ExitWriteFailed;
}

int Run(AgsState& state)
{
    RefuseWrongCalls(state);
    state.options.graphUnits = GraphSI;
    // A --gwt that reads as a depth in metres is the groundwater depth D as well.
    if (const auto d = profile::WaterDepthOf(state.project.gwt)) state.yardstick.sbtn.groundwater = d;
    CheckYardstickCall(state.yardstick, state.options);

    state.inputs = ExpandInputs(state.files, state.options.depth);
    CheckOutputPath("--out", state.out, PathsOf(state.inputs));
    std::vector<std::string> names;
    for (const Input& input : state.inputs) names.push_back(input.name);
    std::vector<std::optional<Profiled>> results(state.inputs.size());
    int exitCode = ExitOk;
    ProgressLine progress(state.inputs.size() > 1);
    RunInParallel(
        names, [&](std::size_t i, const std::string&) { return ProfileOfInput(state, state.inputs[i], results[i]); },
        [&](std::size_t i, FileOutcome& outcome) {
            progress.Clear();
            TallyFailure(names[i], outcome, exitCode);
            progress.Restore();
        },
        [&](std::size_t done, std::size_t total) { progress.Show(done, total); });
    progress.Clear();

    std::vector<profile::AgsSounding> soundings;
    std::size_t layers = 0;
    float intervalSize = 0.0f;
    for (const auto& r : results) {
        if (!r) continue;
        soundings.push_back(r->sounding);
        layers += r->sounding.layers.size();
        intervalSize = r->intervalSize;
    }
    if (soundings.empty()) {
        WriteErr("pemlo-cli: " + formats::TerminalField(state.out) + " not written: no sounding went through\n");
        return exitCode;
    }
    const double minThickness = MinThicknessOf(state.minThickness, GraphSI);
    const profile::AgsSettings settings{PEMLO_VERSION, Today(), state.recipient, minThickness,
                                        profile::MinIntervals(minThickness, intervalSize)};
    if (const int written = WriteChecked(state.out, profile::WriteAgs4(soundings, settings)); written != ExitOk)
        return written;
    WriteOut(formats::TerminalField(state.out) + ": " + std::to_string(soundings.size()) + " of " + std::to_string(state.inputs.size()) +
             " soundings, " + std::to_string(layers) + " layers (AGS 4.1)\n");
    return exitCode;
}

}  // namespace

void AddAgsCommand(CLI::App& app)
{
    auto state = std::make_shared<AgsState>();
    CLI::App* command = app.add_subcommand(
        "ags", "Write the soil layers of one or more soundings as one AGS4 file: PROJ, TRAN, UNIT, TYPE, DICT, "
               "LOCA, SCPG and one SCPP row per layer. Depths in metres (SI graph units)");
    AddInputFilesOption(*command, state->files);
    command->add_option("-o,--out", state->out, "The AGS4 file to write")->required()->type_name("OUT.ags");
    AddRoadOptions(*command, state->options);
    command->get_option("--graph-units")->description("Only si: AGS4 depths are in metres");
    AddMinThicknessOption(*command, state->minThickness);
    command->get_option("--min-thickness")
        ->description("Thinnest layer kept as it is, m; thinner ones are merged into their closest neighbour. "
                      "Default 0.5");
    command->add_option("--number", state->project.number, "Project number (PROJ_ID)")->type_name("TEXT");
    command->add_option("--title", state->project.title, "Project title (PROJ_NAME)")->type_name("TEXT");
    command
        ->add_option("--date", state->project.date,
                     "Date of the sounding for LOCA_STAR: a calendar date, yyyy-mm-dd, alone or followed by a "
                     "blank and a time, HH:MM or HH:MM:SS; anything else is refused")
        ->check(CLI::Validator(
            [](std::string& text) -> std::string {
                return IsDateOption(text) ? std::string()
                                          : "'" + formats::TerminalField(text) +
                                                "' is not a calendar date yyyy-mm-dd, with or without a time HH:MM[:SS]";
            },
            ""))
        ->type_name("yyyy-mm-dd");
    command->add_option("--location", state->project.location, "Location of the site (PROJ_LOC)")
        ->type_name("TEXT");
    command->add_option("--gwt", state->project.gwt,
                        "Ground water table, m (SCPG_WAT); a depth in metres (2.5 or \"2.5 m\") is also the "
                        "groundwater depth D of the SBTn columns")
        ->type_name("TEXT");
    command->add_option("--cone-no", state->project.coneNo, "Cone number (SCPG_REF)")->type_name("TEXT");
    command->add_option("--recipient", state->recipient, "Recipient of the file (TRAN_RECV)")->type_name("TEXT");
    AddYardstickOptions(*command, state->yardstick, state->options, false);
    command->add_flag("--readings", state->readings,
                      "Also one SCPT row per reading: qc, fs, u2 and the values the SBTn derives from them");
    command->callback([state] {
        const int exitCode = Run(*state);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
