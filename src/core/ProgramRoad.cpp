#include "core/ProgramRoad.h"

#include <filesystem>
#include <string_view>

#include "classify/BuildIntervalGrid.h"
#include "classify/Classify_Pemlo01.h"
#include "classify/ReadingSteps.h"
#include "classify/RefineLayers.h"
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

RoadResult RunRoad(const RoadOptions& options, Declarations& d)
{
    d = Declarations{};
    d.NumTitleLines = options.titleLines;
    d.DataUnits = options.dataUnits;
    d.GraphUnits = options.graphUnits < 0 ? DefaultGraphUnits(options.dataUnits) : options.graphUnits;

    RoadResult result;
    std::string_view step = "reading";
    FileChannels files;  // this sounding's own channels: several roads may run at once
    try {
        d.DataFileName = options.path;
        d.FileNum = files.FreeFile();
        try {
            result.read = LoadDataFile(d, files);
        } catch (const RunTimeError& e) {
            // The desktop program ends the file choice silently here; the command
            // line says what the column counter ran into.
            result.read = ReportCountError(e, d, files);
            result.counterFailed = true;
        }
        if (result.read.outcome != ReadOutcome::Loaded) {
            result.status = RoadStatus::ReadFailed;
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
    std::error_code ec;
    const auto status = std::filesystem::status(path, ec);
    if (!std::filesystem::exists(status)) return "the file does not exist";
    if (std::filesystem::is_directory(status)) return "it is a directory, not a file";
    if (!std::filesystem::is_regular_file(status)) return "it is not a regular file";
    return "the file cannot be opened for reading";
}

// The text of a line as a message can show it: control characters escaped, long
// lines cut.
std::string Shown(const std::string& text)
{
    constexpr std::size_t MaxShown = 60;
    std::string shown = "\"";
    for (std::size_t i = 0; i < text.size() && i < MaxShown; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '\t') {
            shown += "\\t";
        } else if (c < 0x20 || c == 0x7F) {
            shown += '?';
        } else {
            shown += static_cast<char>(c);
        }
    }
    return shown + (text.size() > MaxShown ? "...\"" : "\"");
}

std::string ReadFailureDetail(const RoadResult& result, const RoadOptions& options)
{
    const ReadReport& read = result.read;
    if (result.counterFailed && (read.errorNumber == ErrFileNotFound || read.errorNumber == ErrPathFileAccess))
        return MissingFileDetail(options.path);
    // A wrong column count is easiest to fix when the line is in front of you.
    const bool columnsWrong =
        read.outcome == ReadOutcome::NeverEnds || read.failure == ReadFailure::TooManyColumns;
    const std::string described = read.Describe();
    if (!columnsWrong || (!read.lineText.empty() && described.find(read.lineText) != std::string::npos))
        return described;
    return described + (read.lineText.empty() ? "; the line is empty" : "; the line reads " + Shown(read.lineText));
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
