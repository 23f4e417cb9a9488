#include "profile/Ags4Export.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <span>

#include "profile/Ags4Groups.h"

namespace pemlo::profile {

namespace {

constexpr const char* Method = "Korvu & Pemlo (1999)";
constexpr const char* NotStated = "Not stated";

struct Column {
    const char* heading;
    const char* unit;
    const char* type;
};

constexpr std::array<Column, 3> ProjColumns{{{"PROJ_ID", "", "ID"}, {"PROJ_NAME", "", "X"}, {"PROJ_LOC", "", "X"}}};
constexpr std::array<Column, 9> TranColumns{{
    {"TRAN_ISNO", "", "X"}, {"TRAN_DATE", "yyyy-mm-dd", "DT"}, {"TRAN_PROD", "", "X"},
    {"TRAN_STAT", "", "X"}, {"TRAN_DESC", "", "X"},            {"TRAN_AGS", "", "X"},
    {"TRAN_RECV", "", "X"}, {"TRAN_DLIM", "", "X"},            {"TRAN_RCON", "", "X"},
}};
constexpr std::array<Column, 2> UnitColumns{{{"UNIT_UNIT", "", "X"}, {"UNIT_DESC", "", "X"}}};
constexpr std::array<Column, 2> TypeColumns{{{"TYPE_TYPE", "", "X"}, {"TYPE_DESC", "", "X"}}};
constexpr std::array<Column, 9> DictColumns{{
    {"DICT_TYPE", "", "X"}, {"DICT_GRP", "", "X"},  {"DICT_HDNG", "", "X"},
    {"DICT_STAT", "", "X"}, {"DICT_DTYP", "", "PT"}, {"DICT_DESC", "", "X"},
    {"DICT_UNIT", "", "PU"}, {"DICT_EXMP", "", "X"}, {"DICT_PGRP", "", "X"},
}};
constexpr std::array<Column, 4> LocaColumns{{
    {"LOCA_ID", "", "ID"}, {"LOCA_REM", "", "X"}, {"LOCA_FDEP", "m", "2DP"}, {"LOCA_STAR", "yyyy-mm-dd", "DT"}}};
constexpr std::array<Column, 6> ScpgColumns{{
    {"LOCA_ID", "", "ID"}, {"SCPG_TESN", "", "X"}, {"SCPG_REF", "", "X"}, {"SCPG_WAT", "m", "2DP"},
    {"SCPG_REM", "", "X"}, {"SCPG_CAR", "", "3DP"}}};
// The normalised soil behaviour type after every former heading: the standard SCPP_CIC
// (at the dictionary's one decimal) and two of our own.
constexpr std::array<Column, 14> ScppColumns{{
    {"LOCA_ID", "", "ID"},     {"SCPG_TESN", "", "X"},    {"SCPP_TOP", "m", "2DP"}, {"SCPP_BASE", "m", "2DP"},
    {"SCPP_REF", "", "X"},     {"SCPP_CSBT", "", "X"},    {"SCPP_UIDX", "", "3DP"}, {"SCPP_VIDX", "", "3DP"},
    {"SCPP_PSND", "%", "1DP"}, {"SCPP_PSLT", "%", "1DP"}, {"SCPP_PCLY", "%", "1DP"}, {"SCPP_CIC", "", "1DP"},
    {"SCPP_SBTN", "", "0DP"},  {"SCPP_SBTP", "%", "1DP"},
}};
// One row per reading: the measured values and the derived ones under the standard
// headings with the dictionary's units and decimals, then ours. The depth takes one
// decimal more than the dictionary's two, since cones record every 5 mm.
constexpr std::array<Column, 20> ScptColumns{{
    {"LOCA_ID", "", "ID"},       {"SCPG_TESN", "", "X"},       {"SCPT_DPTH", "m", "3DP"},
    {"SCPT_RES", "MPa", "3DP"},  {"SCPT_FRES", "MPa", "4DP"},  {"SCPT_PWP2", "MPa", "4DP"},
    {"SCPT_FRR", "%", "2DP"},    {"SCPT_QT", "MPa", "4DP"},    {"SCPT_BDEN", "Mg/m3", "2DP"},
    {"SCPT_CPO", "kPa", "2DP"},  {"SCPT_CPOD", "kPa", "2DP"},  {"SCPT_QNET", "MPa", "4DP"},
    {"SCPT_BQ", "", "4DP"},      {"SCPT_ISPP", "MPa", "4DP"},  {"SCPT_NQT", "", "4DP"},
    {"SCPT_NFR", "%", "4DP"},    {"SCPT_QTN", "", "4DP"},      {"SCPT_NEXP", "", "4DP"},
    {"SCPT_CIC", "", "4DP"},     {"SCPT_SBTN", "", "0DP"},
}};

// The headings of our own, declared in DICT.
struct OwnHeading {
    const char* heading;
    const char* description;
    const char* example;
};
constexpr std::array<OwnHeading, 7> OwnHeadings{{
    {"SCPP_UIDX", "Soil classification index U, mean over the layer", "1.322"},
    {"SCPP_VIDX", "Soil in-situ index V, mean over the layer", "2.291"},
    {"SCPP_PSND", "Probability of sand, mean over the layer", "25.5"},
    {"SCPP_PSLT", "Probability of silt, mean over the layer", "59.8"},
    {"SCPP_PCLY", "Probability of clay, mean over the layer", "14.7"},
    {"SCPP_SBTN", "Normalised soil behaviour type zone (Robertson 2009) most valid readings of the layer fall in",
     "3"},
    {"SCPP_SBTP", "Share of the layer's valid readings in zone SCPP_SBTN", "85.6"},
}};
constexpr std::array<OwnHeading, 4> OwnReadingHeadings{{
    {"SCPT_QTN", "Normalised cone resistance Qtn (stress exponent SCPT_NEXP)", "47.1502"},
    {"SCPT_NEXP", "Stress exponent n of Qtn", "0.7314"},
    {"SCPT_CIC", "Soil behaviour type index Ic (Robertson 2009)", "2.3815"},
    {"SCPT_SBTN", "Normalised soil behaviour type zone 1 to 9 (Robertson 2009)", "5"},
}};

struct Named {
    std::string_view code;
    const char* description;
};
constexpr std::array<Named, 6> UnitNames{{{"m", "metre"},
                                          {"%", "percent"},
                                          {"yyyy-mm-dd", "year month day"},
                                          {"MPa", "megapascal"},
                                          {"kPa", "kilopascal"},
                                          {"Mg/m3", "megagram per cubic metre"}}};
constexpr std::array<Named, 10> TypeNames{{
    {"ID", "Unique identifier"}, {"X", "Text"}, {"DT", "Date time in international format"},
    {"PT", "Text listed in TYPE group"}, {"PU", "Text listed in UNIT group"}, {"0DP", "Value; 0 decimal places"},
    {"1DP", "Value; 1 decimal place"}, {"2DP", "Value; 2 decimal places"}, {"3DP", "Value; 3 decimal places"},
    {"4DP", "Value; 4 decimal places"}}};

// A column's unit or type that has no description here is a slip of this file.
std::string DescriptionOf(std::span<const Named> names, std::string_view code)
{
    for (const Named& n : names)
        if (n.code == code) return n.description;
    return std::string(code);
}

using Rows = std::vector<std::vector<std::string>>;

std::string Group(const char* name, std::span<const Column> columns, const Rows& rows)
{
    std::vector<std::string> headings{"HEADING"}, units{"UNIT"}, types{"TYPE"};
    for (const Column& c : columns) {
        headings.emplace_back(c.heading);
        units.emplace_back(c.unit);
        types.emplace_back(c.type);
    }
    std::string text = AgsLine({"GROUP", name}) + AgsLine(headings) + AgsLine(units) + AgsLine(types);
    for (const auto& row : rows) {
        std::vector<std::string> fields{"DATA"};
        fields.insert(fields.end(), row.begin(), row.end());
        text += AgsLine(fields);
    }
    return text + "\r\n";
}

// Text as the file may hold it: printable ASCII, anything else a question mark.
std::string Plain(const std::string& text)
{
    std::string plain = text;
    for (char& c : plain)
        if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7E) c = '?';
    return plain;
}

std::string Fixed(double value, int decimals)
{
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed,
                                      decimals);
    std::string text(buffer.data(), result.ptr);
    if (text.find_first_not_of("-0.") == std::string::npos && text.front() == '-') text.erase(0, 1);  // no "-0.00"
    return text;
}

}  // namespace

std::string CalendarDate(const std::string& date)
{
    const auto number = [&](std::size_t from, std::size_t count) {
        int value = 0;
        for (std::size_t i = from; i < from + count; ++i) {
            if (i >= date.size() || date[i] < '0' || date[i] > '9') return -1;
            value = value * 10 + (date[i] - '0');
        }
        return value;
    };
    const int year = number(0, 4), month = number(5, 2), day = number(8, 2);
    const bool shape = year >= 0 && month >= 0 && day >= 0 && date[4] == '-' && date[7] == '-' &&
                       (date.size() == 10 || date[10] == ' ' || date[10] == 'T');
    if (!shape || month < 1 || month > 12 || day < 1) return {};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int inMonth = Days[month - 1] + (month == 2 && leap ? 1 : 0);
    return day <= inMonth ? date.substr(0, 10) : std::string();
}

namespace {

std::string WaterDepth(const std::string& gwt)
{
    const std::optional<double> depth = WaterDepthOf(gwt);
    return depth ? Fixed(*depth, 2) : std::string();
}

std::string Ref(const AgsSettings& s)
{
    return std::string(Method) + ", layers of at least " + Fixed(s.minThickness, 2) + " m, Pemlo CPT " +
           s.programVersion;
}

Rows LocaRows(const std::vector<AgsSounding>& soundings)
{
    Rows rows;
    for (const AgsSounding& s : soundings) {
        const formats::ProjectInfo& p = s.source.project;
        std::string remark = "Readings from " + s.source.name;
        if (!p.date.empty() && CalendarDate(p.date).empty()) remark += "; sounding date " + p.date;
        rows.push_back({Plain(s.source.locaId), Plain(remark), Fixed(s.finalDepth, 2), CalendarDate(p.date)});
    }
    return rows;
}

Rows ScpgRows(const std::vector<AgsSounding>& soundings, const AgsSettings& settings)
{
    Rows rows;
    for (const AgsSounding& s : soundings) {
        const formats::ProjectInfo& p = s.source.project;
        std::string remark = "SCPP: soil layers from the probabilistic classification of depth intervals after " +
                             std::string(Method) + ", layers of fewer than " + std::to_string(settings.minIntervals) +
                             " intervals (" + Fixed(settings.minThickness, 2) +
                             " m) merged into their closest neighbour";
        const std::string water = WaterDepth(p.gwt);
        if (!p.gwt.empty() && water.empty()) remark += "; ground water table " + p.gwt;
        // SCPG_WAT and SCPG_CAR hold the D and a the normalised soil behaviour type used.
        // Where nothing stated it (the SBTn then took it at depth 0) SCPG_WAT stays empty:
        // a 0.00 there would pass an assumption off as a measurement.
        const std::string used = s.groundwater ? Fixed(*s.groundwater, 2) : water;
        for (const PushRange& push : s.source.pushes)
            rows.push_back({Plain(s.source.locaId), Plain(push.id),
                            Plain(push.reference.empty() ? p.coneNo : push.reference), used, Plain(remark),
                            push.areaRatio ? Fixed(*push.areaRatio, 3) : std::string()});
    }
    return rows;
}

Rows ScppRows(const std::vector<AgsSounding>& soundings, const AgsSettings& settings)
{
    Rows rows;
    const std::string ref = Plain(Ref(settings));
    for (const AgsSounding& s : soundings) {
        const PushesByTop pushes(s.source.pushes);
        for (std::size_t k = 0; k < s.layers.size(); ++k) {
            const SoilLayer& layer = s.layers[k];
            // A layer ends where the next begins, so that rounding leaves no gap or overlap.
            const double base = k + 1 < s.layers.size() ? s.layers[k + 1].top : layer.bottom;
            const PushRange& push = s.source.pushes[pushes.Of(layer.top)];
            const LayerMeans& m = layer.means;
            rows.push_back({Plain(s.source.locaId), Plain(push.id), Fixed(layer.top, 2), Fixed(base, 2), ref,
                            SoilDescription(layer.soil), Fixed(m.u, 3), Fixed(m.v, 3), Fixed(m.sand, 1),
                            Fixed(m.silt, 1), Fixed(m.clay, 1)});
            const sbtn::LayerSbtn* y = k < s.sbtn.size() ? &s.sbtn[k] : nullptr;
            const bool any = y && y->zone > 0;
            rows.back().insert(rows.back().end(), {any ? Fixed(*y->ic, 1) : "", any ? std::to_string(y->zone) : "",
                                                   any ? Fixed(y->share, 1) : ""});
        }
    }
    return rows;
}

void AddDictRows(Rows& rows, const char* group, std::span<const OwnHeading> own, std::span<const Column> columns)
{
    for (const OwnHeading& o : own) {
        for (const Column& c : columns)
            if (std::string_view(c.heading) == o.heading)
                rows.push_back({"HEADING", group, o.heading, "OTHER", c.type, o.description, c.unit, o.example, ""});
    }
}

Rows DictRows(bool withReadings)
{
    Rows rows;
    AddDictRows(rows, "SCPP", OwnHeadings, ScppColumns);
    if (withReadings) AddDictRows(rows, "SCPT", OwnReadingHeadings, ScptColumns);
    return rows;
}

// A value at the decimals of its heading; empty where there is none.
std::string Cell(std::optional<double> value, int decimals)
{
    return value && std::isfinite(*value) ? Fixed(*value, decimals) : std::string();
}

// The text of a reading's depth as SCPT_DPTH holds it.
std::string DepthText(double depth) { return Fixed(depth, 3); }

// SCPT_BDEN is a density: the unit weight over the acceleration of gravity, not over
// the unit weight of water the method was given (sea water's 10.05 would skew it).
constexpr double StandardGravity = 9.80665;  // m/s²

std::vector<std::string> ScptRow(const std::string& loca, const std::string& push, const sbtn::SbtnRow& r)
{
    const bool valid = r.invalid == sbtn::Invalid::None;
    const auto ifValid = [valid](double v) { return valid ? std::optional<double>(v) : std::nullopt; };
    const sbtn::Normalised& v = r.values;
    return {loca,
            push,
            DepthText(r.depth),
            Cell(r.qc, 3),
            Cell(r.fs, 4),
            Cell(r.u2, 4),
            Cell(r.rf, 2),
            Cell(r.qt, 4),
            Cell(r.gamma / StandardGravity, 2),
            Cell(r.sigmaV0, 2),
            Cell(r.sigmaV0Eff, 2),
            Cell(r.qn / 1000.0, 4),
            Cell(valid ? v.bq : std::nullopt, 4),
            Cell(r.u0 / 1000.0, 4),
            Cell(ifValid(v.qt1), 4),
            Cell(ifValid(v.fr), 4),
            Cell(ifValid(v.qtn), 4),
            Cell(ifValid(v.n), 4),
            Cell(ifValid(v.ic), 4),
            valid ? std::to_string(v.zone) : std::string()};
}

// A reading whose depth reads as that of the reading before it in the same push
// would repeat the row's key: it is left out (ScptRowsLeftOut counts them).
template <typename Each>
void ForEachScptReading(const AgsSounding& s, Each each)
{
    if (!s.readings || s.readingPush.size() != s.readings->rows.size()) return;
    std::map<std::string, std::string> lastDepth;  // by push
    for (std::size_t i = 0; i < s.readings->rows.size(); ++i) {
        std::string& last = lastDepth[s.readingPush[i]];
        const std::string depth = DepthText(s.readings->rows[i].depth);
        each(i, depth == last);
        last = depth;
    }
}

Rows ScptRows(const std::vector<AgsSounding>& soundings)
{
    Rows rows;
    for (const AgsSounding& s : soundings) {
        ForEachScptReading(s, [&](std::size_t i, bool repeated) {
            if (!repeated)
                rows.push_back(ScptRow(Plain(s.source.locaId), Plain(s.readingPush[i]), s.readings->rows[i]));
        });
    }
    return rows;
}

// Every unit and every type some column of the file uses, with its description.
std::pair<Rows, Rows> UnitAndTypeRows(bool withReadings)
{
    std::map<std::string, std::string> units, types;
    for (const std::span<const Column> group :
         {std::span<const Column>(ProjColumns), std::span<const Column>(TranColumns),
          std::span<const Column>(UnitColumns), std::span<const Column>(TypeColumns),
          std::span<const Column>(DictColumns), std::span<const Column>(LocaColumns),
          std::span<const Column>(ScpgColumns), std::span<const Column>(ScppColumns),
          withReadings ? std::span<const Column>(ScptColumns) : std::span<const Column>()}) {
        for (const Column& c : group) {
            if (*c.unit) units[c.unit] = DescriptionOf(UnitNames, c.unit);
            types[c.type] = DescriptionOf(TypeNames, c.type);
        }
    }
    Rows unitRows, typeRows;
    for (const auto& [unit, name] : units) unitRows.push_back({unit, name});
    for (const auto& [type, name] : types) typeRows.push_back({type, name});
    return {unitRows, typeRows};
}

}  // namespace

const char* SoilDescription(Soil soil)
{
    switch (soil) {
    case Soil::Silt: return "SILT";
    case Soil::Clay: return "CLAY";
    case Soil::Sand: break;
    }
    return "SAND";
}

std::string WriteAgs4(const std::vector<AgsSounding>& soundings, const AgsSettings& settings)
{
    const formats::ProjectInfo project = soundings.empty() ? formats::ProjectInfo{} : soundings.front().source.project;
    const std::string producer = "Pemlo CPT " + settings.programVersion;
    const bool withReadings =
        std::any_of(soundings.begin(), soundings.end(), [](const AgsSounding& s) { return s.readings != nullptr; });
    const auto [unitRows, typeRows] = UnitAndTypeRows(withReadings);
    std::string text;
    text += Group("PROJ", ProjColumns,
                  {{project.number.empty() ? NotStated : Plain(project.number), Plain(project.title),
                    Plain(project.location)}});
    text += Group("TRAN", TranColumns,
                  {{"1", settings.date, producer, "Draft", "Soil profiles interpreted from cone penetration tests",
                    "4.1", settings.recipient.empty() ? NotStated : Plain(settings.recipient), "|", "+"}});
    text += Group("UNIT", UnitColumns, unitRows);
    text += Group("TYPE", TypeColumns, typeRows);
    text += Group("DICT", DictColumns, DictRows(withReadings));
    text += Group("LOCA", LocaColumns, LocaRows(soundings));
    text += Group("SCPG", ScpgColumns, ScpgRows(soundings, settings));
    text += Group("SCPP", ScppColumns, ScppRows(soundings, settings));
    if (withReadings) text += Group("SCPT", ScptColumns, ScptRows(soundings));
    return text;
}

std::size_t ScptRowsLeftOut(const AgsSounding& sounding)
{
    std::size_t count = 0;
    ForEachScptReading(sounding, [&count](std::size_t, bool repeated) { count += repeated ? 1 : 0; });
    return count;
}

std::optional<double> WaterDepthOf(const std::string& gwt)
{
    const char* const end = gwt.data() + gwt.size();
    double value = 0.0;
    const auto [ptr, ec] = std::from_chars(gwt.data(), end, value);
    if (gwt.empty() || ec != std::errc{} || !std::isfinite(value)) return std::nullopt;
    std::string_view unit(ptr, static_cast<std::size_t>(end - ptr));
    while (!unit.empty() && unit.front() == ' ') unit.remove_prefix(1);
    if (!unit.empty() && unit != "m") return std::nullopt;
    return value;
}

}  // namespace pemlo::profile
