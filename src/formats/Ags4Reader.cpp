#include "formats/Ags4Reader.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "formats/Ags4Fields.h"
#include "formats/TextDecoding.h"

namespace pemlo::formats {

namespace {

// More locations than any site investigation holds, and more pushes than any
// location: a file beyond them is refused rather than fill the memory.
constexpr std::size_t MaxSoundings = 10000;
// More headings than any group has: a line of a million commas is no AGS4 line.
constexpr std::size_t MaxFields = 10000;
// Rows of LOCA and SCPG kept for the project information; further rows are not needed.
constexpr std::size_t MaxInfoRows = 100000;

std::string At(long long line) { return "line " + std::to_string(line); }

// The headings the reader uses. Each one's column is found once, when the HEADING
// line is read: a group may name 10000 headings over a million rows, and a search
// per row made the import take rows x headings.
enum Heading {
    LocaId, ProjId, ProjName, TranAgs, LocaStar, LocaNate, LocaNatn, LocaGref, LocaGl, LocaDatm,
    ScpgTesn, ScpgRef, ScpgWat, ScpgCar, ScptDpth, ScptRes, ScptFres, ScptPwp2, HeadingCount
};
constexpr std::array<std::string_view, HeadingCount> HeadingNames = {
    "LOCA_ID",   "PROJ_ID",   "PROJ_NAME", "TRAN_AGS", "LOCA_STAR", "LOCA_NATE", "LOCA_NATN", "LOCA_GREF", "LOCA_GL",
    "LOCA_DATM", "SCPG_TESN", "SCPG_REF",  "SCPG_WAT", "SCPG_CAR",  "SCPT_DPTH", "SCPT_RES",  "SCPT_FRES", "SCPT_PWP2"};

// The group being read: its name, headings and units.
struct Group {
    std::string name;
    long long line = 0;
    std::vector<std::string> headings;
    std::vector<std::string> units;
    std::array<int, HeadingCount> column = Absent();  // -1 where the group lacks the heading

    static std::array<int, HeadingCount> Absent()
    {
        std::array<int, HeadingCount> none{};
        none.fill(-1);
        return none;
    }
    // Where a heading repeats, its first column counts.
    void SetHeadings(std::vector<std::string> names)
    {
        headings = std::move(names);
        column = Absent();
        for (std::size_t i = headings.size(); i-- > 0;)
            for (std::size_t k = 0; k < HeadingCount; ++k)
                if (headings[i] == HeadingNames[k]) column[k] = static_cast<int>(i);
    }
    int Index(Heading heading) const { return column[heading]; }
    // The row's value under a heading, empty where there is none.
    std::string Value(const std::vector<std::string>& row, Heading heading) const
    {
        const int i = Index(heading);
        return i >= 0 && static_cast<std::size_t>(i) < row.size() ? row[static_cast<std::size_t>(i)] : std::string();
    }
    std::string Unit(Heading heading) const
    {
        const int i = Index(heading);
        return i >= 0 && static_cast<std::size_t>(i) < units.size() ? units[static_cast<std::size_t>(i)] : std::string();
    }
    // The row's number under a heading, divided by `divisor`; empty where it is no number.
    std::optional<double> Number(const std::vector<std::string>& row, Heading heading,
                                 std::optional<double> divisor = 1.0) const
    {
        double v = 0;
        if (!divisor || !ParseNumber(TrimBlanks(Value(row, heading)), v)) return std::nullopt;
        return v / *divisor;
    }
};

struct PushInfo {
    std::string reference;  // SCPG_REF
    std::string water;      // SCPG_WAT with its unit
    std::optional<double> waterDepth;  // SCPG_WAT in metres
    std::optional<double> areaRatio;   // SCPG_CAR
};

struct Location {
    std::unique_ptr<SoundingBuilder> builder;
    std::vector<Push> pushes;
    std::map<std::string, int> pushIndex;
    int lastPush = 0;
};

// LOCA_NATE and LOCA_NATN on the national grid LOCA_GREF names (the national grid
// when it names none), LOCA_GL above the datum of LOCA_DATM (the grid's own).
SiteLocation SiteOf(const Group& g, const std::vector<std::string>& row)
{
    SiteLocation site;
    double x = 0, y = 0, level = 0;
    if (ParseNumber(g.Value(row, LocaNate), x) && ParseNumber(g.Value(row, LocaNatn), y)) {
        site.x = x, site.y = y;
        site.system = g.Value(row, LocaGref);
        if (site.system.empty()) site.system = "national grid";
    }
    if (ParseNumber(g.Value(row, LocaGl), level)) {
        site.level = level;
        site.datum = g.Value(row, LocaDatm);
        if (site.datum.empty()) site.datum = "national datum";
    }
    return site;
}

class Ags4Import {
public:
    explicit Ags4Import(DepthChoice depth) : depth_(depth) {}
    void Line(const TextLine& line);
    std::vector<ImportedSounding> Soundings(const std::string& encoding);

private:
    void Data(const std::vector<std::string>& row, long long line);
    void ScptColumns(long long line);
    void ScptRow(const std::vector<std::string>& row, long long line);

    DepthChoice depth_;
    Group group_;
    std::string projectId_, projectName_, version_;
    std::map<std::string, std::string> startDate_;                         // by LOCA_ID
    std::map<std::string, SiteLocation> sites_;                            // by LOCA_ID
    std::map<std::pair<std::string, std::string>, PushInfo> pushInfo_;  // by LOCA_ID, SCPG_TESN
    long long scptLine_ = 0;
    bool scptHasRows_ = false;
    std::array<int, 5> scpt_{};  // LOCA_ID, SCPG_TESN, depth, qc, fs
    std::array<ColumnUse, 3> uses_;
    int u2Index_ = -1;  // SCPT_PWP2, where it is read
    ColumnUse u2Use_;
    std::string u2Unread_;
    std::vector<std::string> order_;  // LOCA_IDs as they first appear
    std::map<std::string, Location> locations_;
    Location* last_ = nullptr;  // the location of the row before, and its id
    std::string lastId_;
};

void Ags4Import::Line(const TextLine& line)
{
    if (TrimBlanks(line.text).empty()) return;
    std::vector<std::string> fields = SplitAgsLine(line.text, MaxFields + 1).fields;
    for (std::string& field : fields) field = std::string(TrimBlanks(field));
    if (fields.size() > MaxFields) Refuse(At(line.number) + " has more than " + std::to_string(MaxFields) + " fields");
    const std::string descriptor = fields.front();
    fields.erase(fields.begin());
    if (descriptor == "GROUP") {
        group_ = Group{};
        group_.name = fields.empty() ? std::string() : fields.front();
        group_.line = line.number;
        if (group_.name == "SCPT" && scptLine_ != 0)
            Refuse(At(line.number) + ": a second SCPT group (the first begins on " + At(scptLine_) + ")");
        if (group_.name == "SCPT") scptLine_ = line.number;
    } else if (descriptor == "HEADING") {
        group_.SetHeadings(std::move(fields));
    } else if (descriptor == "UNIT") {
        group_.units = std::move(fields);
    } else if (descriptor == "DATA") {
        Data(fields, line.number);
    }
}

void Ags4Import::Data(const std::vector<std::string>& row, long long line)
{
    const Group& g = group_;
    if (g.name == "PROJ" && projectId_.empty() && projectName_.empty()) {
        projectId_ = g.Value(row, ProjId);
        projectName_ = g.Value(row, ProjName);
    } else if (g.name == "TRAN" && version_.empty()) {
        version_ = g.Value(row, TranAgs);
    } else if (g.name == "LOCA" && startDate_.size() < MaxInfoRows) {
        startDate_.emplace(g.Value(row, LocaId), g.Value(row, LocaStar));
        sites_.emplace(g.Value(row, LocaId), SiteOf(g, row));
    } else if (g.name == "SCPG" && pushInfo_.size() < MaxInfoRows) {
        const std::string unit = g.Unit(ScpgWat);
        const std::string water = g.Value(row, ScpgWat);
        pushInfo_.emplace(std::pair(g.Value(row, LocaId), g.Value(row, ScpgTesn)),
                          PushInfo{g.Value(row, ScpgRef), water.empty() || unit.empty() ? water : water + " " + unit,
                                   g.Number(row, ScpgWat, FindDivisor(unit.empty() ? "m" : unit, Dimension::Length)),
                                   g.Number(row, ScpgCar)});
    } else if (g.name == "SCPT") {
        if (!scptHasRows_) ScptColumns(line);
        scptHasRows_ = true;
        ScptRow(row, line);
    }
}

void Ags4Import::ScptColumns(long long line)
{
    if (depth_ == DepthChoice::Corrected)
        Refuse(At(group_.line) + ": the SCPT group holds no corrected depth, only SCPT_DPTH; use --depth penetration");
    struct Wanted { Heading heading; const char* role; Dimension dimension; };
    const Wanted wanted[] = {{ScptDpth, "depth", Dimension::Length},
                             {ScptRes, "qc", Dimension::Stress},
                             {ScptFres, "fs", Dimension::Stress}};
    scpt_[0] = group_.Index(LocaId);
    scpt_[1] = group_.Index(ScpgTesn);
    if (scpt_[0] < 0) Refuse(At(group_.line) + ": the SCPT group has no LOCA_ID heading");
    for (std::size_t k = 0; k < 3; ++k) {
        const int i = group_.Index(wanted[k].heading);
        const std::string heading(HeadingNames[wanted[k].heading]);
        if (i < 0)
            Refuse(std::string("no ") + wanted[k].role + " column: the SCPT group (" + At(group_.line) + ") has no " + heading +
                   " heading");
        if (static_cast<std::size_t>(i) >= group_.units.size())
            Refuse(At(line) + ": the SCPT group has no UNIT row giving the unit of " + heading);
        const std::string& unit = group_.units[static_cast<std::size_t>(i)];
        scpt_[k + 2] = i;
        uses_[k] = {
            wanted[k].role, heading, unit,
            UnitDivisor(unit, wanted[k].dimension, "the SCPT group (" + At(group_.line) + "): " + heading)};
    }
    // u2, where the group has it; nothing about it refuses the file.
    if (const int i = group_.Index(ScptPwp2); i >= 0) {
        const std::string unit = group_.Unit(ScptPwp2);
        if (const auto divisor = FindDivisor(unit, Dimension::Stress)) {
            u2Index_ = i;
            u2Use_ = {"u2", "SCPT_PWP2", unit, *divisor};
        } else {
            u2Unread_ = "SCPT_PWP2 is in " + Quoted(unit) + ", which is not a stress the import knows";
        }
    }
}

void Ags4Import::ScptRow(const std::vector<std::string>& row, long long line)
{
    const auto field = [&](int i) -> std::string_view {
        if (i < 0) return {};
        if (static_cast<std::size_t>(i) >= row.size())
            Refuse(At(line) + " has " + std::to_string(row.size()) + " values; the SCPT headings name " +
                   std::to_string(group_.headings.size()));
        return TrimBlanks(row[static_cast<std::size_t>(i)]);
    };
    // Rows come location by location and push by push: the last ones are looked up first.
    const std::string_view id = field(scpt_[0]);
    if (id.empty()) Refuse(At(line) + ": the SCPT row has no LOCA_ID");
    if (!last_ || id != lastId_) {
        auto [it, added] = locations_.try_emplace(std::string(id));
        if (added && order_.size() >= MaxSoundings)
            Refuse(At(line) + ": more than " + std::to_string(MaxSoundings) + " locations in one file");
        if (added) order_.push_back(it->first);
        if (added) it->second.builder = std::make_unique<SoundingBuilder>(uses_, "line");
        if (added && u2Index_ >= 0) it->second.builder->TakeU2(u2Use_);
        last_ = &it->second;
        lastId_ = id;
    }
    Location& loc = *last_;
    const std::string_view testNumber = field(scpt_[1]);
    if (loc.pushes.empty() || testNumber != loc.pushes[static_cast<std::size_t>(loc.lastPush)].testNumber) {
        const auto [push, added] = loc.pushIndex.try_emplace(std::string(testNumber), static_cast<int>(loc.pushes.size()));
        if (added && loc.pushes.size() >= MaxSoundings)
            Refuse(At(line) + ": more than " + std::to_string(MaxSoundings) + " pushes of one location");
        if (added) loc.pushes.push_back({push->first, 0, 0.0f, 0.0f, {}});
        loc.lastPush = push->second;
    }
    RowValues values;
    for (std::size_t k = 0; k < 3; ++k) {
        const std::string_view text = field(scpt_[k + 2]);
        double v = 0;
        if (text.empty()) continue;  // an empty field is AGS4's void
        if (!ParseNumber(text, v))
            Refuse(At(line) + ": " + uses_[k].source + " holds " + Quoted(text) + ", not a number");
        values[k] = v;
    }
    // An empty or unreadable u2 leaves the reading without u2.
    std::optional<double> u2;
    if (double v = 0; u2Index_ >= 0 && static_cast<std::size_t>(u2Index_) < row.size() &&
                      ParseNumber(TrimBlanks(row[static_cast<std::size_t>(u2Index_)]), v))
        u2 = v;
    loc.builder->AddRow(line, values, loc.lastPush, u2);
}

std::vector<ImportedSounding> Ags4Import::Soundings(const std::string& encoding)
{
    if (scptLine_ == 0) Refuse("no CPT data: the file has no SCPT group");
    if (!scptHasRows_) Refuse("no CPT data: the SCPT group (" + At(scptLine_) + ") has no DATA rows");
    std::vector<ImportedSounding> soundings;
    for (const std::string& id : order_) {
        Location& loc = locations_[id];
        ImportedSounding s = loc.builder->Finish(loc.pushes);
        s.format = FileFormat::Ags4;
        s.version = version_;
        s.id = s.locaId = id;
        s.record.encoding = encoding;
        s.project = {projectId_, projectName_, startDate_[id], id, {}, {}};
        s.site = sites_[id];
        // Each push keeps its own cone; the project's cone number names every distinct
        // one once, found in a set (not by searching the joined text, which grows with
        // every push).
        s.u2Unread = u2Unread_;
        std::set<std::string_view> named;
        for (Push& p : s.pushes) {
            const auto info = pushInfo_.find({id, p.testNumber});
            if (info == pushInfo_.end()) continue;
            p.reference = info->second.reference;
            p.areaRatio = info->second.areaRatio;
            if (!s.groundwater && info->second.waterDepth) {
                s.groundwater = info->second.waterDepth;
                s.groundwaterSource = "SCPG_WAT of push " + p.testNumber;
            }
            if (s.project.gwt.empty()) s.project.gwt = info->second.water;
            if (!p.reference.empty() && named.insert(info->second.reference).second)
                s.project.coneNo += (s.project.coneNo.empty() ? "" : " / ") + p.reference;
        }
        soundings.push_back(std::move(s));
    }
    return soundings;
}

}  // namespace

std::vector<ImportedSounding> ReadAgs4(std::string_view bytes, DepthChoice depth)
{
    const DecodedText decoded = DecodeText(bytes);
    Ags4Import file(depth);
    LineCursor cursor(decoded.Text());
    for (TextLine line; cursor.Next(line);) file.Line(line);
    return file.Soundings(decoded.encoding);
}

}  // namespace pemlo::formats
