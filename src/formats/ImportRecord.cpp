#include "formats/ImportRecord.h"

#include "formats/NumberText.h"
#include "formats/TextDecoding.h"

namespace pemlo::formats {

namespace {

// Void runs the text lists before it only counts the rest.
constexpr std::size_t ListedRuns = 6;

std::string RunText(const VoidRun& run)
{
    std::string text;
    if (!run.top) text = "depth void";
    else if (*run.top == *run.bottom) text = ShortestText(*run.top) + " m";
    else text = ShortestText(*run.top) + "-" + ShortestText(*run.bottom) + " m";
    return text + " (" + std::to_string(run.rows) + ")";
}

std::string VoidText(const ImportRecord& r)
{
    std::string text = "void rows dropped " + std::to_string(r.voidRows);
    for (std::size_t i = 0; i < r.voidRuns.size() && i < ListedRuns; ++i)
        text += (i == 0 ? ": " : ", ") + RunText(r.voidRuns[i]);
    if (r.voidRuns.size() > ListedRuns)
        text += " and " + std::to_string(r.voidRuns.size() - ListedRuns) + " more runs";
    return text;
}

}  // namespace

std::string FormatName(FileFormat format)
{
    switch (format) {
    case FileFormat::Gef: return "GEF";
    case FileFormat::Ags4: return "AGS4";
    case FileFormat::BroXml: return "BRO-XML";
    case FileFormat::PlainAscii: break;
    }
    return "plain ASCII";
}

std::string DescribeColumn(const ColumnUse& c)
{
    std::string text = c.source + " [" + c.unit;
    if (c.divisor != 1) text += ", /" + ShortestText(c.divisor);
    return text + "]";
}

std::string DescribeSite(const SiteLocation& site)
{
    std::string text;
    if (site.x && site.y) {
        text = "x " + ShortestText(*site.x) + ", y " + ShortestText(*site.y);
        if (!site.system.empty()) text += " (" + site.system + ")";
    }
    if (site.level) {
        text += (text.empty() ? "" : "; ") + std::string("surface level ") + ShortestText(*site.level) + " m";
        if (!site.datum.empty()) text += " " + site.datum;
    }
    return text;
}

std::vector<std::string> DescribeImport(const ImportedSounding& s)
{
    const ImportRecord& r = s.record;
    std::string columns = "columns:";
    for (const ColumnUse& c : r.columns) columns += " " + c.role + " = " + DescribeColumn(c) + ";";
    columns.pop_back();
    std::string kept = "readings kept " + std::to_string(r.kept);
    if (!s.depth.empty())
        kept += ", " + ShortestText(s.depth.front()) + " to " + ShortestText(s.depth.back()) + " m";
    if (!s.pushes.empty())
        kept += "; pushes " + std::to_string(s.pushes.size()) + " (" + s.pushes.front().testNumber +
                (s.pushes.size() > 1 ? " to " + s.pushes.back().testNumber : std::string()) + ")";
    std::vector<std::string> lines{
        FormatName(s.format) + (s.version.empty() ? "" : " " + s.version) + ", id " +
            (s.id.empty() ? "(none)" : s.id) + ", text " + r.encoding,
        columns,
        "rows read " + std::to_string(r.rowsRead) + "; " + VoidText(r) + "; depths negated: " +
            (r.negated ? "yes" : "no") + "; moved by the sort: " + std::to_string(r.sortMoved) +
            "; pre-drilled depth: " + (r.predrilled ? ShortestText(*r.predrilled) + " m" : "not stated"),
        kept,
    };
    if (const std::string site = DescribeSite(s.site); !site.empty()) lines.push_back("site: " + site);
    return lines;
}

std::string ChangesMade(const ImportRecord& r)
{
    std::string text;
    const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (r.voidRows > 0) add("dropped " + std::to_string(r.voidRows) + " void rows");
    if (r.negated) add("negated the depths");
    if (r.sortMoved > 0) add("moved " + std::to_string(r.sortMoved) + " readings into depth order");
    return text;
}

}  // namespace pemlo::formats
