// Running one input: its notes and refusals, the road in a record of its own, and
// the outcome the batch writes.
#include "cli/RunInput.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/ExitCodes.h"
#include "formats/ImportRecord.h"

namespace pemlo::cli {

Input SingleInput(const std::string& file, formats::DepthChoice depth)
{
    std::vector<Input> inputs = ExpandInputs({file}, depth);
    if (inputs.size() == 1) return std::move(inputs.front());
    std::string names;
    for (const Input& input : inputs) names += (names.empty() ? "" : ", ") + input.name;
    throw CLI::ValidationError("FILE", file + " holds " + std::to_string(inputs.size()) +
                                           " soundings; name one of them: " + names);
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
