#include "sbtn/SbtnInputs.h"

#include <algorithm>
#include <memory>

#include "formats/ImportRecord.h"
#include "formats/NumberText.h"
#include "formats/TextDecoding.h"
#include "road/UnitCheck.h"
#include "input/Module_Units.h"
#include "runtime/RunTimeError.h"

namespace pemlo::sbtn {

namespace {

using formats::ShortestText;

void CountWithoutU2(SbtnReadings& r)
{
    r.withoutU2 = static_cast<int>(std::count(r.u2.begin(), r.u2.end(), std::nullopt));
}

// Each reading takes its push's area ratio in AGS4, the file's elsewhere.
void TakeAreaRatio(const formats::ImportedSounding& s, SbtnReadings& r)
{
    const std::size_t n = s.depth.size();
    if (s.readingPush.size() == n && !s.pushes.empty()) {
        for (const int push : s.readingPush)
            r.areaRatio.push_back(push >= 0 && static_cast<std::size_t>(push) < s.pushes.size()
                                      ? s.pushes[static_cast<std::size_t>(push)].areaRatio
                                      : std::nullopt);
        if (std::any_of(r.areaRatio.begin(), r.areaRatio.end(), [](const auto& a) { return a.has_value(); }))
            r.areaRatioSource = "SCPG_CAR";
        return;
    }
    r.areaRatio.assign(n, s.areaRatio);
    if (s.areaRatio)
        r.areaRatioSource = s.format == formats::FileFormat::BroXml ? "coneSurfaceQuotient" : "#MEASUREMENTVAR 3";
}

GatherResult GatherImported(const formats::ImportedSounding& s)
{
    GatherResult result;
    SbtnReadings& r = result.readings;
    r.depth.assign(s.depth.begin(), s.depth.end());
    r.qc.assign(s.qc.begin(), s.qc.end());
    r.fs.assign(s.fs.begin(), s.fs.end());
    if (s.u2.size() == s.depth.size() && !s.u2Column.source.empty()) {
        for (const auto& u2 : s.u2) r.u2.push_back(u2 ? std::optional<double>(*u2) : std::nullopt);
        r.u2Source = formats::DescribeColumn(s.u2Column);
        CountWithoutU2(r);
    } else {
        r.u2.assign(s.depth.size(), std::nullopt);
        r.u2Unread = s.u2Unread;
    }
    TakeAreaRatio(s, r);
    r.groundwater = s.groundwater;
    if (s.groundwater) r.groundwaterSource = s.groundwaterSource;
    return result;
}

// The converted readings into r; refused when a depth lies above the one before.
std::string TakePlainReadings(const Declarations& d, const FurtherColumn& further, SbtnReadings& r)
{
    const auto n = static_cast<std::size_t>(std::max<Integer>(d.NumLines, 0));
    r.depth.assign(d.Depth.data(), d.Depth.data() + n);
    r.qc.assign(d.Q_Tip.data(), d.Q_Tip.data() + n);
    r.fs.assign(d.Q_Sleeve.data(), d.Q_Sleeve.data() + n);
    r.areaRatio.assign(n, std::nullopt);
    if (further.column == 0 || further.values.size() != n) {
        r.u2.assign(n, std::nullopt);
    } else {
        r.u2.assign(further.values.begin(), further.values.end());
        r.u2Source = "column " + std::to_string(further.column);
    }
    for (std::size_t i = 1; i < n; ++i) {
        if (!(r.depth[i] < r.depth[i - 1])) continue;
        // Stored in single precision, so written as the single they are.
        return "the depths decrease: reading " + std::to_string(i + 1) + " lies at " +
               ShortestText(static_cast<float>(r.depth[i])) + " m, above reading " + std::to_string(i) + " at " +
               ShortestText(static_cast<float>(r.depth[i - 1])) +
               " m; the stresses need depths that never decrease";
    }
    return {};
}

// Reading and conversion to SI units as the road takes them, before the cleaning;
// u2 follows qc through the conversion.
GatherResult GatherPlain(const RoadOptions& options, int u2Column)
{
    GatherResult result;
    if (u2Column != 0 && u2Column != 4 && u2Column != 5) {
        result.refusal = "--u2-column is 4 or 5, not " + std::to_string(u2Column);
        return result;
    }
    if (u2Column != 0 && options.dataUnits == DataMilliVolts) {
        result.refusal = "--u2-column cannot be used with millivolt readings: no factor is known for u2";
        return result;
    }
    auto d = std::make_unique<Declarations>();
    d->NumTitleLines = options.titleLines;
    d->DataUnits = options.dataUnits;
    d->GraphUnits = GraphSI;
    FurtherColumn further{u2Column, {}};
    if (!ReadPlainFile(options, *d, result.road, u2Column != 0 ? &further : nullptr)) return result;
    if (u2Column > d->NumColumns) {
        result.refusal = "--u2-column " + std::to_string(u2Column) + " names no column: the file has " +
                         std::to_string(d->NumColumns) + " columns";
        return result;
    }
    try {
        if (d->DataUnits == DataMilliVolts) {
            float tip = options.tipFactor;
            float sleeve = options.sleeveFactor;
            ConvertMilliVolts(*d, tip, sleeve);
        } else {
            if (d->DataUnits == DataEnglish)
                for (float& u2 : further.values) u2 = StressEnglishToSI(u2);
            ConvertToGraphUnits(*d);
        }
    } catch (const RunTimeError& e) {
        result.road.status = RoadStatus::RunTimeFailed;
        result.road.errorNumber = e.Number();
        result.road.errorMessage = e.what();
        result.road.step = "conversion";
        return result;
    }
    result.road.warnings = formats::CheckUnits(*d, true);
    result.refusal = TakePlainReadings(*d, further, result.readings);
    return result;
}

std::string U2Line(const SbtnReadings& r)
{
    if (r.u2Source.empty() && !r.u2Unread.empty()) return "u2: not read, " + r.u2Unread + "; qt = qc throughout";
    if (r.u2Source.empty()) return "u2: none in the file; qt = qc throughout";
    return "u2: " + r.u2Source + "; readings without u2: " + std::to_string(r.withoutU2) +
           (r.withoutU2 > 0 ? " (qt = qc there)" : "");
}

std::string AreaRatioLine(const SbtnReadings& r)
{
    if (r.areaRatioSource.empty()) return "area ratio: not stated in the file";
    double low = 1e300, high = -1e300;
    int without = 0;
    for (const auto& a : r.areaRatio) {
        if (!a) {
            ++without;
            continue;
        }
        low = std::min(low, *a);
        high = std::max(high, *a);
    }
    std::string text = "area ratio: " + ShortestText(low) + (high > low ? " to " + ShortestText(high) : "") +
                       " from " + r.areaRatioSource;
    if (without > 0) text += "; readings without it: " + std::to_string(without);
    return text;
}

}  // namespace

GatherResult GatherSbtnReadings(const RoadOptions& options, int u2Column)
{
    if (options.imported) return GatherImported(*options.imported);
    return GatherPlain(options, u2Column);
}

std::vector<std::string> DescribeSbtnInputs(const SbtnReadings& r)
{
    return {U2Line(r), AreaRatioLine(r),
            r.groundwater ? "groundwater: " + ShortestText(*r.groundwater) + " m below depth 0, from " +
                                r.groundwaterSource
                          : "groundwater: not stated in the file"};
}

}  // namespace pemlo::sbtn
