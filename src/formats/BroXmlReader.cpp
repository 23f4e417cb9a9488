#include "formats/BroXmlReader.h"

#include <pugixml.hpp>

#include <algorithm>
#include <string>
#include <functional>
#include <set>
#include <unordered_map>
#include <vector>

#include "formats/TextDecoding.h"

namespace pemlo::formats {

namespace {

// A CPT document holds a few hundred elements and attributes; a document with
// millions is refused before it is parsed, so that its tree cannot fill the memory.
constexpr std::size_t MaxMarkup = 2'000'000;
constexpr std::size_t MaxSoundings = 10000;
constexpr double BroVoid = -999999;

std::string_view LocalName(const pugi::xml_node& node)
{
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// The next element after `node` in document order within `root`, without recursion
// (a deeply nested document must not exhaust the stack).
pugi::xml_node NextInOrder(pugi::xml_node node, const pugi::xml_node& root, bool descend = true)
{
    if (descend && node.first_child()) return node.first_child();
    while (node && node != root) {
        if (node.next_sibling()) return node.next_sibling();
        node = node.parent();
    }
    return {};
}

std::vector<pugi::xml_node> AllNamed(const pugi::xml_node& root, std::string_view name)
{
    std::vector<pugi::xml_node> found;
    for (pugi::xml_node n = NextInOrder(root, root); n; n = NextInOrder(n, root))
        if (n.type() == pugi::node_element && LocalName(n) == name) found.push_back(n);
    return found;
}

pugi::xml_node FirstNamed(const pugi::xml_node& root, std::string_view name)
{
    for (pugi::xml_node n = NextInOrder(root, root); n; n = NextInOrder(n, root))
        if (n.type() == pugi::node_element && LocalName(n) == name) return n;
    return {};
}

std::string Text(const pugi::xml_node& node) { return std::string(TrimBlanks(node.child_value())); }

// "element values (line 88)": counted only when a refusal needs it, since the count
// walks the document from its start.
std::string Where(std::string_view bytes, const pugi::xml_node& node)
{
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
    const auto line =
        std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(offset, bytes.size())), '\n') +
        1;
    return "element " + std::string(LocalName(node)) + " (line " + std::to_string(line) + ")";
}

// "urn:ogc:def:crs:EPSG::28992" as "EPSG:28992".
std::string SystemName(std::string_view srs)
{
    const std::size_t epsg = srs.find("EPSG");
    if (epsg == std::string_view::npos) return std::string(srs);
    const std::size_t code = srs.find_last_of(':');
    return "EPSG:" + std::string(srs.substr(code + 1));
}

// The delivered location (in the system it was surveyed in) and the offset of the
// surface to the vertical datum.
SiteLocation SiteOf(const pugi::xml_node& cpt)
{
    SiteLocation site;
    const pugi::xml_node location = FirstNamed(FirstNamed(cpt, "deliveredLocation"), "location");
    const std::string pos = Text(FirstNamed(location, "pos"));
    const std::size_t blank = pos.find_first_of(" \t\r\n");
    double x = 0, y = 0;
    if (blank != std::string::npos && ParseNumber(pos.substr(0, blank), x) &&
        ParseNumber(TrimBlanks(std::string_view(pos).substr(blank)), y)) {
        site.x = x, site.y = y;
        site.system = SystemName(location.attribute("srsName").value());
    }
    const pugi::xml_node offset = FirstNamed(FirstNamed(cpt, "deliveredVerticalPosition"), "offset");
    double level = 0;
    if (ParseNumber(Text(offset), level)) {
        site.level = level;
        site.datum = Text(FirstNamed(FirstNamed(cpt, "deliveredVerticalPosition"), "verticalDatum"));
    }
    return site;
}

class Document {
public:
    explicit Document(std::string_view bytes) : bytes_(bytes) {}
    void Parse();
    std::vector<ImportedSounding> Soundings(DepthChoice depth);

private:
    ImportedSounding Sounding(const pugi::xml_node& cpt, DepthChoice depth);
    std::string VersionOf(const pugi::xml_node& cpt);
    static std::string NamespaceAttribute(const pugi::xml_node& cpt);
    using Declarations = std::unordered_map<std::string_view, std::string_view>;  // into the document's text
    const Declarations& DeclarationsOf(const pugi::xml_node& node);

    std::string_view bytes_;
    pugi::xml_document doc_;
    std::set<std::string, std::less<>> asked_;  // "xmlns" or "xmlns:PREFIX" of each CPT object
    std::unordered_map<const pugi::xml_node_struct*, Declarations> declarations_;
};

void Document::Parse()
{
    const auto markup = std::count_if(bytes_.begin(), bytes_.end(), [](char c) { return c == '<' || c == '='; });
    if (static_cast<std::size_t>(markup) > MaxMarkup)
        Refuse("more than " + std::to_string(MaxMarkup) + " XML tags and attributes; not a CPT document");
    const pugi::xml_parse_result result =
        doc_.load_buffer(bytes_.data(), bytes_.size(), pugi::parse_default, pugi::encoding_auto);
    if (!result) {
        const auto at = static_cast<std::size_t>(
            std::clamp<std::ptrdiff_t>(result.offset, 0, static_cast<std::ptrdiff_t>(bytes_.size())));
        Refuse("not well-formed XML at line " +
               std::to_string(std::count(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1) +
               ": " + result.description());
    }
}

// The declarations of an element of the namespaces CPT objects are named in. A root
// may carry any number of attributes: each element's are looked through once,
// however many CPT objects below it ask for their version.
const Document::Declarations& Document::DeclarationsOf(const pugi::xml_node& node)
{
    auto [it, added] = declarations_.try_emplace(node.internal_object());
    if (added) {
        for (const pugi::xml_attribute& a : node.attributes()) {
            const std::string_view name = a.name();
            if (asked_.contains(name)) it->second.emplace(name, a.value());
        }
    }
    return it->second;
}

std::string Document::NamespaceAttribute(const pugi::xml_node& cpt)
{
    const std::string_view name = cpt.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? "xmlns" : "xmlns:" + std::string(name.substr(0, colon));
}

// "1.1" from the namespace of the CPT element, http(s)://.../xsd/dscpt/1.1.
std::string Document::VersionOf(const pugi::xml_node& cpt)
{
    const std::string attribute = NamespaceAttribute(cpt);
    // The declaration stands a few levels up; a document nested deeper has no version.
    int level = 0;
    for (pugi::xml_node n = cpt; n && level < 64; n = n.parent(), ++level) {
        const Declarations& declared = DeclarationsOf(n);
        const auto found = declared.find(attribute);
        if (found == declared.end() || found->second.empty()) continue;
        const std::string_view uri = found->second;
        const std::size_t at = uri.find("/dscpt/");
        return at == std::string_view::npos ? std::string() : std::string(uri.substr(at + 7));
    }
    return {};
}

std::vector<ImportedSounding> Document::Soundings(DepthChoice depth)
{
    // The CPT objects, none inside another: each object's elements are then walked
    // once, however many objects the document holds.
    std::vector<pugi::xml_node> cpts;
    for (pugi::xml_node n = NextInOrder(doc_, doc_); n;) {
        const bool cpt = n.type() == pugi::node_element && LocalName(n) == "CPT_O";
        if (cpt && FirstNamed(n, "CPT_O")) Refuse(Where(bytes_, n) + " holds another CPT object");
        if (cpt) cpts.push_back(n);
        n = NextInOrder(n, doc_, !cpt);
    }
    if (cpts.empty()) cpts.push_back(doc_.document_element());
    if (cpts.size() > MaxSoundings)
        Refuse("more than " + std::to_string(MaxSoundings) + " CPT objects in one document");
    for (const pugi::xml_node& cpt : cpts) asked_.insert(NamespaceAttribute(cpt));
    std::vector<ImportedSounding> soundings;
    for (const pugi::xml_node& cpt : cpts) {
        soundings.push_back(Sounding(cpt, depth));
        if (soundings.back().id.empty()) soundings.back().id = std::to_string(soundings.size());  // its place, then
    }
    return soundings;
}

struct Columns {
    std::array<std::size_t, 3> index{};
    std::size_t count = 0;
    std::array<ColumnUse, 3> uses;
    std::optional<std::size_t> u2;  // porePressureU2, where it is marked measured
};

// The parameters list names the columns of the cone result in their order, each
// marked "ja" (measured) or "nee".
Columns FindColumns(const pugi::xml_node& cpt, DepthChoice depth, std::string_view bytes)
{
    pugi::xml_node parameters;
    for (const pugi::xml_node& p : AllNamed(cpt, "parameters")) {
        for (pugi::xml_node child = p.first_child(); child && !parameters; child = child.next_sibling())
            if (LocalName(child) == "coneResistance") parameters = p;
        if (parameters) break;
    }
    if (!parameters) Refuse(Where(bytes, cpt) + ": no parameters list names the columns of the cone result");
    const char* names[3] = {depth == DepthChoice::Corrected ? "depth" : "penetrationLength", "coneResistance",
                            "localFriction"};
    const char* roles[3] = {depth == DepthChoice::Corrected ? "corrected depth" : "depth", "qc", "fs"};
    Columns c;
    std::array<bool, 3> found{};
    for (pugi::xml_node p = parameters.first_child(); p; p = p.next_sibling()) {
        if (p.type() != pugi::node_element) continue;
        if (LocalName(p) == "porePressureU2" && Text(p) == "ja") c.u2 = c.count;
        for (std::size_t k = 0; k < 3; ++k) {
            if (LocalName(p) != names[k]) continue;
            if (Text(p) != "ja")
                Refuse(std::string("no ") + roles[k] + " column: " + names[k] + " is marked " + Quoted(Text(p)) +
                       " in the parameters list (not measured)");
            c.index[k] = c.count;
            found[k] = true;
        }
        ++c.count;
    }
    for (std::size_t k = 0; k < 3; ++k) {
        if (!found[k]) Refuse(std::string("no ") + roles[k] + " column: the parameters list has no " + names[k]);
        c.uses[k] = {k == 0 ? "depth" : roles[k], names[k], k == 0 ? "m" : "MPa", 1};
    }
    return c;
}

char SeparatorAttribute(const pugi::xml_node& encoding, const char* name, char fallback)
{
    const std::string_view value = encoding.attribute(name).value();
    return value.size() == 1 ? value.front() : fallback;
}

// A row's u2: empty where it is void or no number, which never refuses the file.
std::optional<double> U2Of(std::string_view field, char decimal)
{
    std::string text(TrimBlanks(field));
    std::replace(text.begin(), text.end(), decimal, '.');
    double value = 0;
    return ParseNumber(text, value) && value != BroVoid ? std::optional<double>(value) : std::nullopt;
}

void ReadValues(const pugi::xml_node& result, const Columns& c, std::string_view bytes, SoundingBuilder& builder)
{
    const pugi::xml_node values = FirstNamed(result, "values");
    if (!values) Refuse(Where(bytes, result) + " has no values element");
    const pugi::xml_node encoding = FirstNamed(result, "TextEncoding");
    const char decimal = SeparatorAttribute(encoding, "decimalSeparator", '.');
    const char token = SeparatorAttribute(encoding, "tokenSeparator", ',');
    const char block = SeparatorAttribute(encoding, "blockSeparator", ';');
    long long row = 0;
    for (std::string_view rest = values.child_value(); !rest.empty();) {
        const std::size_t end = rest.find(block);
        const std::string_view b = rest.substr(0, end);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        if (TrimBlanks(b).empty()) continue;
        const std::vector<std::string_view> fields = SplitOn(b, token, c.count + 1);
        ++row;
        if (fields.size() != c.count)
            Refuse(Where(bytes, values) + ", row " + std::to_string(row) + ": " + std::to_string(fields.size()) +
                   " values where the parameters list names " + std::to_string(c.count));
        RowValues v;
        for (std::size_t k = 0; k < 3; ++k) {
            std::string text(TrimBlanks(fields[c.index[k]]));
            std::replace(text.begin(), text.end(), decimal, '.');
            double value = 0;
            if (!ParseNumber(text, value))
                Refuse(Where(bytes, values) + ", row " + std::to_string(row) + ": " + c.uses[k].source + " holds " +
                       Quoted(text) + ", not a number");
            if (value != BroVoid) v[k] = value;
        }
        builder.AddRow(row, v, 0, c.u2 ? U2Of(fields[*c.u2], decimal) : std::nullopt);
    }
}

ImportedSounding Document::Sounding(const pugi::xml_node& cpt, DepthChoice depth)
{
    const pugi::xml_node result = FirstNamed(cpt, "cptResult");
    if (!result) Refuse(Where(bytes_, cpt) + " has no cone result (cptResult)");
    const Columns columns = FindColumns(cpt, depth, bytes_);
    SoundingBuilder builder(columns.uses, "cone result row");
    if (columns.u2) builder.TakeU2({"u2", "porePressureU2", "MPa", 1});
    ReadValues(result, columns, bytes_, builder);
    ImportedSounding s = builder.Finish();
    s.format = FileFormat::BroXml;
    s.version = VersionOf(cpt);
    s.id = Text(FirstNamed(cpt, "broId"));
    if (s.id.empty()) s.id = cpt.attribute("gml:id").value();
    s.record.encoding = "UTF-8";
    if (const pugi::xml_node pre = FirstNamed(cpt, "predrilledDepth")) {
        double v = 0;
        const auto divisor = FindDivisor(pre.attribute("uom").value(), Dimension::Length);
        if (ParseNumber(Text(pre), v) && divisor) s.record.predrilled = v / *divisor;
    }
    s.site = SiteOf(cpt);
    if (double v = 0; ParseNumber(Text(FirstNamed(cpt, "coneSurfaceQuotient")), v)) s.areaRatio = v;
    s.project.location = s.id;
    s.project.coneNo = Text(FirstNamed(cpt, "conePenetrometerType"));
    std::string date = Text(FirstNamed(FirstNamed(cpt, "conePenetrationTest"), "timePosition"));
    if (date.empty()) date = Text(FirstNamed(FirstNamed(cpt, "researchReportDate"), "date"));
    std::replace(date.begin(), date.end(), 'T', ' ');
    s.project.date = date;
    return s;
}

}  // namespace

std::vector<ImportedSounding> ReadBroXml(std::string_view bytes, DepthChoice depth)
{
    Document document(bytes);
    document.Parse();
    return document.Soundings(depth);
}

}  // namespace pemlo::formats
