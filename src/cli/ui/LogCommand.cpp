#include "cli/ui/LogCommand.h"

#include <CLI/CLI.hpp>

#include <QGuiApplication>
#include <QHashSeed>
#include <QtGlobal>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <ostream>

#include "cli/LayersCommand.h"
#include "cli/OutputFiles.h"
#include "cli/OutputPath.h"
#include "cli/ProgressLine.h"
#include "cli/RunInput.h"
#include "cli/StandardStreams.h"
#include "cli/YardstickOptions.h"
#include "formats/ImportRecord.h"
#include "formats/SafeText.h"
#include "log/ui/LogDocument.h"
#include "log/PdfStamp.h"
#include "profile/SoilLayers.h"

namespace pemlo::cli {

namespace {

namespace fs = std::filesystem;

struct LogState {
    RoadCommandOptions options;
    std::vector<std::string> files;
    YardstickOptions sbt;  // the options of sbt
    std::string outDir;
    std::string pdf;
    std::string minThickness;
    std::string paper = "letter";
    int scale = 0;
    formats::ProjectInfo project;
};

std::string Text(double value) { return ShortestText(value); }

std::string Sourced(const std::string& value, sbtn::ValueSource source, const std::string& where)
{
    std::string text = value + " (" + sbtn::SourceName(source);
    if (source == sbtn::ValueSource::File && !where.empty()) text += ": " + where;
    return text + ")";
}

std::string AreaRatioText(const sbtn::SbtnResult& r, const std::string& where)
{
    double low = r.areaRatios.front().value, high = low;
    for (const sbtn::AreaRatioSpan& s : r.areaRatios) low = std::min(low, s.value), high = std::max(high, s.value);
    return Sourced(low == high ? Text(low) : Text(low) + " to " + Text(high), r.areaRatioSource, where);
}

// The page measures depth in metres whatever the graph units: a thickness the options
// give in feet is printed in metres, to the tenth of a millimetre, and as given.
std::string ThicknessText(double thickness, Integer graphUnits)
{
    if (graphUnits == GraphSI) return Text(thickness) + " m";
    return Text(std::round(thickness * 0.3048 * 1e4) / 1e4) + " m (" + Text(thickness) + " ft)";
}

std::vector<log::TitleField> TitleFields(const LogState& state, const Input& input, const sbtn::SbtnReadings& g,
                                         const sbtn::SbtnResult& r, const std::string& minThickness)
{
    const formats::ProjectInfo project = ProjectOf(input, state.project);
    const formats::SiteLocation site = input.sounding ? input.sounding->site : formats::SiteLocation{};
    const std::string coordinates = site.x ? formats::DescribeSite({site.x, site.y, site.system, {}, {}}) : "";
    const std::string level = site.level ? Text(*site.level) + " m " + site.datum : "";
    const std::string format = formats::FormatName(input.format);
    const std::string id = input.sounding ? input.sounding->id : fs::path(input.path).stem().string();
    return {
        {"Project number", project.number},
        {"Project title", project.title},
        {"Location", project.location},
        {"Date", project.date},
        {"Cone", project.coneNo},
        {"File", fs::path(input.path).filename().string() + " (" + format + ")"},
        {"Sounding", id},
        {"Coordinates", coordinates.empty() ? "not stated" : coordinates},
        {"Surface level", level.empty() ? "not stated" : level},
        {"Groundwater", Sourced(Text(r.groundwater) + " m", r.groundwaterSource, g.groundwaterSource)},
        {"Area ratio", AreaRatioText(r, g.areaRatioSource)},
        {"Unit weight", r.unitWeight ? Text(*r.unitWeight) + " kN/m3 (option)"
                                     : std::string("from qt and Rf (Robertson & Cabal 2010)")},
        {"Min. layer thickness", minThickness},
        {"Soil behaviour type", "Robertson 2009; water " + Text(r.waterUnitWeight) + " kN/m3"},
        {"Program", "pemlo-cli " PEMLO_VERSION},
    };
}

// One input's log: the sbt road for the readings, the classify road for the
// intervals and the layers, under the same options.
FileOutcome GatherLog(const LogState& state, const Input& input, std::shared_ptr<log::LogSounding>& out)
{
    const RoadCommandOptions& options = state.options;
    if (!input.refusal.empty()) return Failed(ExitReadFailed, input.refusal);
    if (auto refused = StrictRefusal(options, input)) return *refused;
    auto s = std::make_shared<log::LogSounding>();
    std::shared_ptr<const Declarations> record;
    FileOutcome outcome = RunInput(options, input, true, true,
                                   [&](std::shared_ptr<const Declarations> d, const RunFacts&) -> WriteOutput {
                                       record = std::move(d);
                                       return {};
                                   });
    if (outcome.exitCode != ExitOk) return outcome;
    const Yardstick y = YardstickOf(state.sbt, options, input);
    if (!y.result) return Failed(ExitReadFailed, "the soil behaviour type cannot be worked out", outcome.notes + y.notes);
    outcome.notes += y.notes;
    s->sbt = *y.result;

    const Declarations& d = *record;
    const double metres = d.GraphUnits == GraphSI ? 1.0 : 0.3048;
    const auto intervals = profile::IntervalsOf(d);
    const double t = d.IntervalSize;
    for (const profile::IntervalResult& i : intervals)
        s->intervals.push_back({(i.depth - t / 2) * metres, (i.depth + t / 2) * metres, i.sand, i.silt, i.clay});
    const double minThickness = MinThicknessOf(state.minThickness, d.GraphUnits);
    s->layers = log::LogLayers(profile::GroupIntoLayers(intervals, d.IntervalSize, minThickness), metres, s->sbt);
    s->fields = TitleFields(state, input, *y.readings, s->sbt, ThicknessText(minThickness, d.GraphUnits));
    s->name = input.name;
    s->heading = input.sounding ? input.sounding->id : fs::path(input.path).stem().string();
    std::vector<double> depths;
    for (const sbtn::SbtnRow& r : s->sbt.rows) s->hasU2 = s->hasU2 || r.u2.has_value(), depths.push_back(r.depth);
    s->gaps = log::GapsOf(depths, input.sounding ? input.sounding->readingPush : std::vector<int>{});
    out = std::move(s);
    return outcome;
}

// By the one rule for outputs (OutputPath.h): written beside the target and renamed.
std::string WritePdf(const fs::path& target, const std::string& bytes, const std::vector<std::string>& inputs)
{
    if (const std::string why = OutputPathRefusal(target, inputs); !why.empty()) return why;
    return WriteOutputFile(target, [&](std::ostream& out) {
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    });
}

// Qt's own lines ("QStandardPaths: XDG_RUNTIME_DIR not set") are no message of this
// program: they are kept off standard error for the time of the command.
class QuietQt {
public:
    QuietQt() : previous_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {}
    ~QuietQt() { qInstallMessageHandler(previous_); }
    QuietQt(const QuietQt&) = delete;
    QuietQt& operator=(const QuietQt&) = delete;

private:
    QtMessageHandler previous_;
};

// Qt draws the pages: a GUI application for the time of the command, offscreen
// whatever the display, with fixed hashing (the fonts are written in the order of a
// hash table) and times in UTC, so that the same input gives the same bytes.
std::unique_ptr<QGuiApplication> EnsureApplication()
{
    if (QCoreApplication::instance()) return nullptr;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::setenv("TZ", "UTC", 1);
    ::tzset();
    static int argc = 1;
    static char name[] = "pemlo-cli";
    static char* argv[] = {name, nullptr};
    QHashSeed::setDeterministicGlobalSeed();
    return std::make_unique<QGuiApplication>(argc, argv);
}

int RunLog(const LogState& state, const log::LogOptions& options)
{
    const std::vector<Input> inputs = ExpandInputs(state.files, state.options.depth);
    std::vector<std::string> paths;
    for (const Input& input : inputs) paths.push_back(input.path);
    const bool intoDir = !state.outDir.empty();
    if (!intoDir) CheckOutputPath("--pdf", state.pdf, paths);
    const auto targets = intoDir ? ResultPaths(inputs, state.outDir, "pdf") : std::vector<fs::path>{};
    if (intoDir && !CreateOutputDirectory(state.outDir)) return ExitWriteFailed;
    const QuietQt quiet;
    const auto application = EnsureApplication();

    std::vector<std::shared_ptr<log::LogSounding>> logs(inputs.size());
    std::vector<std::string> names;
    for (const Input& input : inputs) names.push_back(input.name);
    const auto work = [&](std::size_t i, const std::string&) { return GatherLog(state, inputs[i], logs[i]); };

    int exitCode = ExitOk;
    std::size_t written = 0;
    ProgressLine progress(inputs.size() > 1);
    const auto deliver = [&](std::size_t i, FileOutcome& outcome) {
        progress.Clear();
        if (!TallyFailure(names[i], outcome, exitCode) && intoDir) {
            const std::string bytes = log::DrawLogs({logs[i].get()}, options);
            const std::string error = bytes.empty() ? "the pages could not be drawn" : WritePdf(targets[i], bytes, paths);
            if (error.empty()) {
                WriteOut(SummaryLine(names[i], targets[i],
                                     std::to_string(log::PageCount(*logs[i], options)) + " pages"));
                ++written;
            } else {
                TallyFailure(names[i], Failed(ExitWriteFailed, error), exitCode);
            }
            logs[i].reset();
        }
        progress.Restore();
    };
    RunInParallel(names, work, deliver, [&](std::size_t done, std::size_t total) { progress.Show(done, total); });
    progress.Clear();
    if (intoDir) {
        WriteOut(FilesWrittenLine(written, inputs.size(), state.outDir));
        return exitCode;
    }
    std::vector<const log::LogSounding*> drawn;
    int pages = 0;
    for (const auto& s : logs)
        if (s) drawn.push_back(s.get()), pages += log::PageCount(*s, options);
    if (drawn.empty()) return exitCode;
    const std::string bytes = log::DrawLogs(drawn, options);
    const std::string error = bytes.empty() ? "the pages could not be drawn" : WritePdf(state.pdf, bytes, paths);
    if (!error.empty()) {
        WriteErr("pemlo-cli: " + formats::TerminalField(state.pdf) + ": " + error + "\n");
        return exitCode == ExitOk ? ExitWriteFailed : exitCode;
    }
    WriteOut(std::to_string(drawn.size()) + " of " + std::to_string(inputs.size()) + " soundings -> " +
             formats::TerminalField(state.pdf) + " (" + std::to_string(pages) + " pages)\n");
    return exitCode;
}

}  // namespace

void AddLogCommand(CLI::App& app)
{
    auto state = std::make_shared<LogState>();
    CLI::App* command = app.add_subcommand(
        "log", "Draw the CPT log of one or more soundings as PDF pages: qc, qt, fs, Rf, u2, Ic, the soil "
               "behaviour type zones (Robertson 2009), percent sand, silt and clay and the layers on one depth "
               "axis, under a title block, then the soil behaviour type chart");
    AddInputFilesOption(*command, state->files);
    AddRoadOptions(*command, state->options);
    AddYardstickOptions(*command, state->sbt, state->options, true);
    AddMinThicknessOption(*command, state->minThickness);
    auto* pdf = command->add_option("--pdf", state->pdf, "Write the logs of all inputs into this PDF file, each "
                                                         "starting on a new page")
                    ->type_name("OUT.pdf");
    auto* outDir = command->add_option("--out-dir", state->outDir,
                                       "Write one PDF per input into this directory, named as classify names its "
                                       "result files, and print a summary")
                       ->type_name("DIR");
    pdf->excludes(outDir);
    command->add_option("--paper", state->paper, "Paper size: letter or a4; default letter")
        ->check(CLI::IsMember({"letter", "a4"}, CLI::ignore_case))
        ->type_name("letter|a4");
    command->add_option("--scale", state->scale, "Draw the depth at 1:N and go on over as many pages as that "
                                                 "takes; default: each sounding on one page")
        ->check(CLI::Range(10, 100000))
        ->type_name("N");
    AddProjectOptions(*command, state->project, false);
    command->callback([state] {
        if (state->pdf.empty() && state->outDir.empty())
            throw CLI::RequiredError("--pdf or --out-dir");
        CheckYardstickCall(state->sbt, state->options);
        std::string error;
        log::LogOptions options;
        options.creation = log::SourceDateEpoch(std::getenv("SOURCE_DATE_EPOCH"), error);
        if (!error.empty()) throw CLI::ValidationError(error);
        options.paper = CLI::detail::to_lower(state->paper) == "a4" ? log::Paper::A4 : log::Paper::Letter;
        options.scale = state->scale;
        options.program = "Pemlo CPT " PEMLO_VERSION;
        const int exitCode = RunLog(*state, options);
        if (exitCode != ExitOk) throw CLI::RuntimeError(exitCode);
    });
}

}  // namespace pemlo::cli
