// The road of one sounding from its file to its results, as the screens walk it:
// the reader, the conversion to the graph units, the cleaning of the readings and the
// classification pipeline. The command line runs it in one call; the screens run its
// steps one by one as the user moves on.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/Declarations.h"
#include "formats/ImportedSounding.h"
#include "input/Module_FileData.h"

namespace pemlo {

// The conversion that confirming the project information runs for English or SI
// readings: to the graph units where they differ; nothing for millivolt readings.
void ConvertToGraphUnits(Declarations& d);

// The conversion that confirming the cone factors runs for millivolt readings:
// MilliVoltsToSI for SI graphs, MilliVoltsToEnglish otherwise.
void ConvertMilliVolts(Declarations& d, float& TipFactor, float& SleeveFactor);

// The road runs over a plain ASCII file (path, with its units, title lines and cone
// factors) or over an imported sounding (path then only names it): SI readings whose
// graph units are SI unless given.
struct RoadOptions {
    std::string path;
    Integer dataUnits = DataEnglish;  // as on the open-file screen at start
    Integer graphUnits = -1;          // -1: follow the data units as the screen does
    Integer titleLines = 10;
    float tipFactor = 50.0f;
    float sleeveFactor = 0.5f;
    bool classify = true;             // false: stop with the cleaned readings, as the
                                      // CPT data screen holds them
    std::shared_ptr<const formats::ImportedSounding> imported = nullptr;
};

enum class RoadStatus { Done, ReadFailed, RunTimeFailed };

struct RoadResult {
    RoadStatus status = RoadStatus::Done;
    ReadReport read;            // the reader's report
    bool counterFailed = false; // the column counter failed (read.errorNumber): no reading was tried
    int errorNumber = 0;        // for RunTimeFailed
    std::string errorMessage;   // "Run-time error '9': Subscript out of range"
    std::string step;           // where it happened: "reading", "conversion", "cleaning",
                                // "grid", "averaging", "interval ratio", "classification"
    std::vector<std::string> warnings;  // the unit check, once the readings are converted
};

// The imported sounding's readings, project information and name into d: SI data,
// the reading arrays widened to hold all of them (up to 32767) where 4000 do not.
void LoadImported(const formats::ImportedSounding& s, const std::string& name, Declarations& d);

// The road's reading step for a plain ASCII file (d prepared by the caller): the
// open-file screen's load, the column counter's failure reported rather than ended
// on silently; false, with result.status ReadFailed, when it failed. `further`
// keeps column 4 or 5 of every reading.
bool ReadPlainFile(const RoadOptions& options, Declarations& d, RoadResult& result,
                   FurtherColumn* further = nullptr);

// Runs the whole road into d (which it resets first). Never throws RunTimeError.
RoadResult RunRoad(const RoadOptions& options, Declarations& d);

// The graph units the open-file screen selects for given data units.
Integer DefaultGraphUnits(Integer dataUnits);

// What went wrong on a road that did not end Done, in one or two sentences for
// people: "Could not read data from file: ..." with what was found and where, or the
// run-time error with the step it happened in. d is the record the road ran on.
std::string DescribeRoadFailure(const RoadResult& result, const RoadOptions& options,
                                const Declarations& d);

}  // namespace pemlo
