#include "road/ProgramRoad.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string_view>

#include "classify/BuildIntervalGrid.h"
#include "classify/Classify_Pemlo01.h"
#include "classify/ReadingSteps.h"
#include "classify/RefineLayers.h"
#include "road/UnitCheck.h"
#include "input/Module_Units.h"
#include "runtime/FileChannels.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

Integer DefaultGraphUnits(Integer dataUnits)
{
    // English and SI data select the matching graph units; millivolt data leave
    // them at their start value, English.
    return dataUnits == DataSI ? Integer{GraphSI} : Integer{GraphEnglish};
}

void ConvertToGraphUnits(Declarations& d)
{
    if (d.DataUnits == DataMilliVolts) return;  // the cone factors convert these
    if (d.DataUnits == DataEnglish) {
        if (d.GraphUnits != GraphEnglish) EnglishToSI(d);
    } else if (d.GraphUnits == GraphEnglish) {
        SIToEnglish(d);
    }
}

void ConvertMilliVolts(Declarations& d, float& TipFactor, float& SleeveFactor)
{
    if (d.GraphUnits != GraphEnglish) {
        MilliVoltsToSI(d, TipFactor, SleeveFactor);
    } else {
        MilliVoltsToEnglish(d, TipFactor, SleeveFactor);
    }
}

void LoadImported(const formats::ImportedSounding& s, const std::string& name, Declarations& d)
{
    d.DataFileName = name;
    d.DataUnits = DataSI;
    const auto n = static_cast<Integer>(std::min<std::size_t>(s.depth.size(), MaxImportedReadings));
    // As wide as the sounding needs and never narrower than the plain layout's 4000.
    if (n > MaxReadings) d.SetReadingBound(n);
    std::copy_n(s.depth.begin(), n, d.Depth.data());
    std::copy_n(s.qc.begin(), n, d.Q_Tip.data());
    std::copy_n(s.fs.begin(), n, d.Q_Sleeve.data());
    d.NumLines = n;
    d.ProjectNumber = s.project.number;
    d.ProjectTitle = s.project.title;
    d.ProjectDate = s.project.date;
    d.ProjectLocation = s.project.location;
    d.GWT = s.project.gwt;
    d.ConeNo = s.project.coneNo;
}

bool ReadPlainFile(const RoadOptions& options, Declarations& d, RoadResult& result, FurtherColumn* further)
{
    FileChannels files;  // this sounding's own channels: several roads may run at once
    d.DataFileName = options.path;
    d.FileNum = files.FreeFile();
    try {
        result.read = LoadDataFile(d, files, further);
    } catch (const RunTimeError& e) {
        // The desktop program ends the file choice silently here; the command
        // line says what the column counter ran into.
        result.read = ReportCountError(e, d, files);
        result.counterFailed = true;
    }
    if (result.read.outcome == ReadOutcome::Loaded) return true;
    result.status = RoadStatus::ReadFailed;
    return false;
}

RoadResult RunRoad(const RoadOptions& options, Declarations& d)
{
    d = Declarations{};
    const Integer dataUnits = options.imported ? Integer{DataSI} : options.dataUnits;
    d.NumTitleLines = options.imported ? Integer{0} : options.titleLines;
    d.DataUnits = dataUnits;
    d.GraphUnits = options.graphUnits < 0 ? DefaultGraphUnits(dataUnits) : options.graphUnits;

    RoadResult result;
    std::string_view step = "reading";
    try {
        if (options.imported) {
            LoadImported(*options.imported, options.path, d);
            result.read.readings = d.NumLines;
        } else if (!ReadPlainFile(options, d, result)) {
            return result;
        }

        step = "conversion";
        if (d.DataUnits == DataMilliVolts) {
            float tip = options.tipFactor;
            float sleeve = options.sleeveFactor;
            ConvertMilliVolts(d, tip, sleeve);
        } else {
            ConvertToGraphUnits(d);
        }
        result.warnings = formats::CheckUnits(d, !options.imported);

        step = "cleaning";
        CleanReadings(d);
        if (!options.classify) return result;

        // The results views' pipeline, step by step so that a failure names its step.
        step = "grid";
        BuildIntervalGrid(d);
        step = "averaging";
        AverageIntervals(d);
        step = "interval ratio";
        ComputeIntervalRatio(d);
        step = "classification";
        ClassifySoil(d);
    } catch (const RunTimeError& e) {
        result.status = RoadStatus::RunTimeFailed;
        result.errorNumber = e.Number();
        result.errorMessage = e.what();
        result.step = std::string(step);
    }
    return result;
}

namespace {

std::string MissingFileDetail(const std::string& path)
{
    namespace fs = std::filesystem;
    std::error_code ec;
    const auto status = fs::status(path, ec);
    if (ec == std::errc::too_many_symbolic_link_levels) return "its path goes round a loop of symbolic links";
    if (ec == std::errc::filename_too_long) return "its name is too long for the system";
    if (ec == std::errc::permission_denied) return "a folder on its path may not be read";
    if (!fs::exists(status)) return "the file does not exist";
    if (fs::is_directory(status)) return "it is a directory, not a file";
    if (!fs::is_regular_file(status)) return "it is not a regular file";
    return "the file cannot be opened for reading";
}

std::string TooLargeDetail(const std::string& path)
{
    std::error_code ec;
    const auto bytes = std::filesystem::file_size(path, ec);
    std::string detail = "the file is too large to be a cone data file";
    if (!ec) detail += " (" + std::to_string(bytes / (1024 * 1024)) + " MB)";
    return detail + "; it was not read";
}

std::string ReadFailureDetail(const RoadResult& result, const RoadOptions& options)
{
    const ReadReport& read = result.read;
    if (result.counterFailed && (read.errorNumber == ErrFileNotFound || read.errorNumber == ErrPathFileAccess))
        return MissingFileDetail(options.path);
    if (result.counterFailed && read.errorNumber == ErrOutOfMemory) return TooLargeDetail(options.path);
    // A wrong column count is easiest to fix when the line is in front of you.
    const bool columnsWrong =
        read.outcome == ReadOutcome::NeverEnds || read.failure == ReadFailure::TooManyColumns;
    const std::string described = read.Describe();
    if (!columnsWrong || (!read.lineText.empty() && described.find(read.lineText) != std::string::npos))
        return described;
    return described + (read.lineText.empty() ? "; the line is empty" : "; the line reads " + QuotedLine(read.lineText));
}

// Which intervals hold no mean tip resistance to divide by, and why. An interval
// without readings repeats the one above it, and interval 1 repeats interval 2; where
// the grid starts at depth 0 no reading above one interval thickness feeds an
// interval, so intervals 1, 2, ... hold 0 down to the first one a reading falls in.
std::string EmptyIntervalsHint(const Declarations& d)
{
    int last = 0;  // the run of intervals from 1 that hold no mean ends here
    while (last < d.NumIntervals && d.IntQTip.data()[last] == 0.0f) ++last;
    if (last == 0) return {};
    const auto depth = [](double v) {
        std::ostringstream text;
        text << v;
        return text.str();
    };
    const double t = d.IntervalSize;
    std::string hint = "intervals 1 to " + std::to_string(last) + " hold no mean tip resistance: no reading lies in ";
    hint += last == 1 ? "interval 2" : "intervals 2 to " + std::to_string(last);
    hint += " (" + depth(t) + " to " + depth(last * t) + (d.DataUnits == DataEnglish ? " ft" : " m");
    return hint + "), an interval without readings repeats the one above it, and interval 1 repeats interval 2";
}

// Why a step of the pipeline could not go on, where the cause is a known one.
std::string RunTimeHint(const RoadResult& result, const Declarations& d)
{
    const std::string interval = d.DataUnits == DataEnglish ? "0.328 ft" : "0.1 m";
    if (result.errorNumber == ErrSubscriptOutOfRange && result.step == "grid" && d.NumIntervals < 1)
        return "the last reading lies less than one depth interval (" + interval + ") deep";
    if (result.errorNumber == ErrSubscriptOutOfRange && result.step == "averaging" && d.NumIntervals == 1)
        return "the sounding reaches only one depth interval (" + interval +
               "); the classification needs at least two";
    if (result.errorNumber == ErrOverflow && result.step == "grid")
        return "the last depth makes more than 32767 depth intervals of " + interval;
    if (result.errorNumber == ErrDivisionByZero && result.step == "interval ratio") return EmptyIntervalsHint(d);
    return {};
}

}  // namespace

std::string DescribeRoadFailure(const RoadResult& result, const RoadOptions& options,
                                const Declarations& d)
{
    switch (result.status) {
    case RoadStatus::Done: return {};
    case RoadStatus::ReadFailed:
        return "Could not read data from file: " + ReadFailureDetail(result, options);
    case RoadStatus::RunTimeFailed: break;
    }
    std::string text = result.errorMessage + " in the " + result.step + " step";
    const std::string hint = RunTimeHint(result, d);
    if (!hint.empty()) text += ": " + hint;
    return text;
}

}  // namespace pemlo
