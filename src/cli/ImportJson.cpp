#include "cli/ImportJson.h"

#include "cli/ResultFormat.h"
#include "formats/ImportRecord.h"

namespace pemlo::cli {

namespace {

std::string Number(double value) { return formats::ShortestText(value); }

std::string Optional(const std::optional<double>& value) { return value ? Number(*value) : "null"; }

template <class T, class F>
std::string List(const std::vector<T>& items, F item)
{
    std::string out = "[";
    for (std::size_t i = 0; i < items.size(); ++i) out += (i == 0 ? "" : ", ") + item(items[i]);
    return out + "]";
}

std::string Project(const formats::ProjectInfo& p)
{
    return "{\"number\": " + JsonString(p.number) + ", \"title\": " + JsonString(p.title) +
           ", \"date\": " + JsonString(p.date) + ", \"location\": " + JsonString(p.location) +
           ", \"gwt\": " + JsonString(p.gwt) + ", \"coneNo\": " + JsonString(p.coneNo) + "}";
}

std::string Site(const formats::SiteLocation& site)
{
    return "{\"x\": " + Optional(site.x) + ", \"y\": " + Optional(site.y) + ", \"system\": " +
           JsonString(site.system) + ", \"level\": " + Optional(site.level) + ", \"datum\": " +
           JsonString(site.datum) + "}";
}

std::string Import(const formats::ImportedSounding& s)
{
    const formats::ImportRecord& r = s.record;
    const auto column = [](const formats::ColumnUse& c) {
        return "{\"role\": " + JsonString(c.role) + ", \"source\": " + JsonString(c.source) +
               ", \"unit\": " + JsonString(c.unit) + ", \"divisor\": " + Number(c.divisor) + "}";
    };
    const auto run = [](const formats::VoidRun& v) {
        return "{\"rows\": " + std::to_string(v.rows) + ", \"top\": " + Optional(v.top) +
               ", \"bottom\": " + Optional(v.bottom) + "}";
    };
    const auto push = [](const formats::Push& p) {
        return "{\"testNumber\": " + JsonString(p.testNumber) + ", \"readings\": " + std::to_string(p.readings) +
               ", \"top\": " + ShortestText(p.top) + ", \"bottom\": " + ShortestText(p.bottom) + "}";
    };
    std::string out = "{\n";
    out += "    \"format\": " + JsonString(formats::FormatName(s.format)) + ", \"version\": " + JsonString(s.version) +
           ", \"id\": " + JsonString(s.id) + ", \"encoding\": " + JsonString(r.encoding) + ",\n";
    out += "    \"columns\": " + List(r.columns, column) + ",\n";
    out += "    \"rowsRead\": " + std::to_string(r.rowsRead) + ", \"voidRowsDropped\": " + std::to_string(r.voidRows) +
           ", \"voidRuns\": " + List(r.voidRuns, run) + ",\n";
    out += std::string("    \"negated\": ") + (r.negated ? "true" : "false") + ", \"sortMoved\": " +
           std::to_string(r.sortMoved) + ", \"predrilled\": " + Optional(r.predrilled) +
           ", \"readingsKept\": " + std::to_string(r.kept) + ",\n";
    if (s.format == formats::FileFormat::Ags4)
        out += "    \"locaId\": " + JsonString(s.locaId) + ", \"pushes\": " + List(s.pushes, push) + ",\n";
    out += "    \"project\": " + Project(s.project) + ",\n";
    out += "    \"site\": " + Site(s.site) + "\n  }";
    return out;
}

}  // namespace

std::string ImportJsonMembers(const formats::ImportedSounding* imported, const std::vector<std::string>& warnings)
{
    return "  \"import\": " + (imported ? Import(*imported) : std::string("null")) + ",\n  \"warnings\": " +
           List(warnings, [](const std::string& w) { return JsonString(w); }) + ",\n";
}

}  // namespace pemlo::cli
