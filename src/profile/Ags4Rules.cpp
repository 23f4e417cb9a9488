#include "profile/Ags4Rules.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "profile/Ags4Dictionary.h"

namespace pemlo::profile {

namespace {

bool Digits(std::string_view s)
{
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "-12.345" as its whole and decimal digits; nothing where it is not a plain decimal.
struct Decimal {
    std::string_view whole;
    std::string_view fraction;
    bool point = false;
};

bool ReadDecimal(std::string_view s, Decimal& d)
{
    if (!s.empty() && s.front() == '-') s.remove_prefix(1);
    const std::size_t dot = s.find('.');
    d.point = dot != std::string_view::npos;
    d.whole = s.substr(0, dot);
    d.fraction = d.point ? s.substr(dot + 1) : std::string_view();
    return Digits(d.whole) && (!d.point || Digits(d.fraction));
}

bool SignificantFigures(const Decimal& d, int n)
{
    std::string digits = std::string(d.whole) + std::string(d.fraction);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.empty()) return true;  // zero has as many figures as it is written with
    if (d.point) return static_cast<int>(digits.size()) == n;
    // Trailing zeros of a whole number may or may not be significant.
    const std::size_t last = digits.find_last_not_of('0');
    return static_cast<int>(last + 1) <= n && n <= static_cast<int>(digits.size());
}

// "1.23E-4" with n decimals in its mantissa; any number of them where n is -1.
bool Scientific(std::string_view s, int n)
{
    const std::size_t e = s.find_first_of("Ee");
    if (e == std::string_view::npos) return false;
    std::string_view exponent = s.substr(e + 1);
    if (!exponent.empty() && (exponent.front() == '-' || exponent.front() == '+')) exponent.remove_prefix(1);
    Decimal m;
    if (!ReadDecimal(s.substr(0, e), m) || m.whole.size() != 1 || !Digits(exponent)) return false;
    return n < 0 || (static_cast<int>(m.fraction.size()) == n && (n == 0) != m.point);
}

// A date or time written as its unit says ("yyyy-mm-dd"): a digit for each of the
// letters y, m, d, h and s, every other character as it stands.
bool DateLike(std::string_view value, std::string_view format)
{
    if (value.size() != format.size()) return false;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool digit = std::string_view("ymdhs").find(format[i]) != std::string_view::npos;
        if (digit ? !std::isdigit(static_cast<unsigned char>(value[i])) : value[i] != format[i]) return false;
    }
    return true;
}

bool ValidGroupName(std::string_view name)
{
    return name.size() == 4 && std::all_of(name.begin(), name.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
           });
}

bool ValidHeading(std::string_view h)
{
    if (h.size() < 6 || h.size() > 9 || h[4] != '_' || !ValidGroupName(h.substr(0, 4))) return false;
    return std::all_of(h.begin() + 5, h.end(),
                       [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; });
}

std::string Joined(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& p : parts) text += (text.empty() ? "" : ", ") + p;
    return text;
}

class Checker {
public:
    Checker(const AgsFile& file, std::vector<AgsFinding>& findings) : file_(file), findings_(findings)
    {
        if (const AgsGroup* dict = file.Find("DICT"))
            for (const AgsRow& row : dict->rows)
                if (dict->Value(row, "DICT_TYPE") == "HEADING")
                    declared_[{dict->Value(row, "DICT_GRP"), dict->Value(row, "DICT_HDNG")}] =
                        dict->Value(row, "DICT_STAT");
        units_ = Listed("UNIT", "UNIT_UNIT");
        types_ = Listed("TYPE", "TYPE_TYPE");
    }

    void Run()
    {
        Mandatory();
        for (std::size_t i = 0; i < file_.groups.size(); ++i) {
            const AgsGroup& g = file_.groups[i];
            Order(g, i);
            Headings(g);
            KeysAndRequired(g);
            Parents(g);
            Values(g);
        }
    }

private:
    void Find(AgsRule rule, int line, std::string what) { findings_.push_back({rule, line, std::move(what)}); }

    std::set<std::string> Listed(std::string_view group, std::string_view heading) const
    {
        std::set<std::string> values;
        if (const AgsGroup* g = file_.Find(group))
            for (const AgsRow& row : g->rows) values.insert(g->Value(row, heading));
        return values;
    }

    void Mandatory()
    {
        for (const char* name : {"PROJ", "TRAN", "UNIT", "TYPE"}) {
            const AgsGroup* g = file_.Find(name);
            if (!g) Find(AgsRule::RequiredGroups, 0, std::string("there is no ") + name + " group");
            const bool single = std::string_view(name) == "PROJ" || std::string_view(name) == "TRAN";
            if (g && single && g->rows.size() != 1)
                Find(AgsRule::RequiredGroups, g->line, std::string(name) + " has " + std::to_string(g->rows.size()) +
                                                           " DATA rows, not one");
        }
    }

    void Order(const AgsGroup& g, std::size_t at)
    {
        if (!ValidGroupName(g.name)) Find(AgsRule::Names, g.line, "group name \"" + g.name + "\"");
        if ((g.name == "PROJ" && at != 0) || (g.name == "TRAN" && at != 1))
            Find(AgsRule::GroupOrder, g.line, g.name + " is group " + std::to_string(at + 1) +
                                                  " of the file; PROJ comes first and TRAN second");
        const StandardGroup* standard = FindStandardGroup(g.name);
        if (!standard || standard->parent.empty()) return;
        const AgsGroup* parent = file_.Find(standard->parent);
        if (!parent)
            Find(AgsRule::Parents, g.line, g.name + " has no parent group " + std::string(standard->parent));
        else if (parent->line > g.line)
            Find(AgsRule::GroupOrder, g.line, g.name + " comes before its parent group " + parent->name);
    }

    void Headings(const AgsGroup& g)
    {
        const StandardGroup* standard = FindStandardGroup(g.name);
        int last = -1;
        std::string lastName;
        for (const std::string& h : g.headings) {
            if (!ValidHeading(h)) Find(AgsRule::Names, g.line, g.name + ": heading \"" + h + "\"");
            const int at = standard ? StandardPosition(*standard, h) : -1;
            if (at < 0 && !declared_.contains({g.name, h}))
                Find(AgsRule::Dictionary, g.line, g.name + ": " + h + " is neither standard nor declared in DICT");
            if (at >= 0 && at < last)
                Find(AgsRule::HeadingOrder, g.line, g.name + ": " + h + " comes after " + lastName);
            if (at >= 0) {
                last = at;
                lastName = h;
            }
        }
    }

    // The group's headings of a kind: the standard ones and those declared in DICT.
    std::vector<std::string> HeadingsWhere(const AgsGroup& g, bool key) const
    {
        std::vector<std::string> names;
        if (const StandardGroup* standard = FindStandardGroup(g.name))
            for (const StandardHeading& h : standard->headings)
                if (key ? IsKey(h.status) : IsRequired(h.status)) names.emplace_back(h.name);
        for (const auto& [where, status] : declared_)
            if (where.first == g.name && status.find(key ? "KEY" : "REQUIRED") != std::string::npos)
                names.push_back(where.second);
        return names;
    }

    void KeysAndRequired(const AgsGroup& g)
    {
        const std::vector<std::string> keys = HeadingsWhere(g, true);
        for (const std::string& k : keys)
            if (g.Column(k) < 0) Find(AgsRule::Keys, g.line, g.name + ": key heading " + k + " is missing");
        std::map<std::vector<std::string>, int> seen;
        for (const AgsRow& row : keys.empty() ? std::vector<AgsRow>{} : g.rows) {
            std::vector<std::string> key;
            for (const std::string& k : keys) key.push_back(g.Value(row, k));
            if (const auto [it, fresh] = seen.emplace(key, row.line); !fresh)
                Find(AgsRule::Keys, row.line, g.name + ": key " + Joined(keys) + " = " + Joined(key) +
                                                  " repeats line " + std::to_string(it->second));
        }
        for (const std::string& r : HeadingsWhere(g, false)) {
            if (g.Column(r) < 0) {
                Find(AgsRule::RequiredData, g.line, g.name + ": required heading " + r + " is missing");
                continue;
            }
            for (const AgsRow& row : g.rows)
                if (g.Value(row, r).empty()) Find(AgsRule::RequiredData, row.line, g.name + ": " + r + " is empty");
        }
    }

    void Parents(const AgsGroup& g)
    {
        const StandardGroup* standard = FindStandardGroup(g.name);
        const AgsGroup* parent = standard && !standard->parent.empty() ? file_.Find(standard->parent) : nullptr;
        if (!parent) return;
        std::vector<std::string> keys = HeadingsWhere(*parent, true);
        // A child carries its parent's keys; a group that does not (LOCA under PROJ)
        // has no row-by-row parent.
        if (keys.empty() || std::any_of(keys.begin(), keys.end(), [&](const auto& k) { return g.Column(k) < 0; }))
            return;
        std::set<std::vector<std::string>> parents;
        for (const AgsRow& row : parent->rows) {
            std::vector<std::string> key;
            for (const std::string& k : keys) key.push_back(parent->Value(row, k));
            parents.insert(key);
        }
        for (const AgsRow& row : g.rows) {
            std::vector<std::string> key;
            for (const std::string& k : keys) key.push_back(g.Value(row, k));
            if (!parents.contains(key))
                Find(AgsRule::Parents, row.line, g.name + ": no " + parent->name + " row for " + Joined(keys) +
                                                     " = " + Joined(key));
        }
    }

    void Values(const AgsGroup& g)
    {
        for (std::size_t c = 0; c < g.headings.size(); ++c) {
            const std::string unit = c < g.units.size() ? g.units[c] : std::string();
            const std::string type = c < g.types.size() ? g.types[c] : std::string();
            const std::string where = g.name + ": " + g.headings[c];
            if (!unit.empty() && !units_.contains(unit))
                Find(AgsRule::UnitsListed, g.line, where + ": unit \"" + unit + "\" is not listed in UNIT");
            if (!types_.contains(type))
                Find(AgsRule::TypesListed, g.line, where + ": type \"" + type + "\" is not listed in TYPE");
            for (const AgsRow& row : g.rows) {
                const std::string& value = row.fields[c];
                if (value.empty()) continue;
                if (type == "PU" && !units_.contains(value))
                    Find(AgsRule::UnitsListed, row.line, where + ": \"" + value + "\" is not listed in UNIT");
                else if (type == "PT" && !types_.contains(value))
                    Find(AgsRule::TypesListed, row.line, where + ": \"" + value + "\" is not listed in TYPE");
                else if (!MatchesType(value, type, unit))
                    Find(AgsRule::DataTypes, row.line, where + ": \"" + value + "\" is not of type " + type);
            }
        }
    }

    const AgsFile& file_;
    std::vector<AgsFinding>& findings_;
    std::map<std::pair<std::string, std::string>, std::string> declared_;  // (group, heading) -> status
    std::set<std::string> units_;
    std::set<std::string> types_;
};

}  // namespace

bool MatchesType(const std::string& value, const std::string& type, const std::string& unit)
{
    const std::size_t n = type.find_first_not_of("0123456789");
    const std::string_view code = std::string_view(type).substr(n == std::string::npos ? type.size() : n);
    const int places = n > 0 && n != std::string::npos && n < 3 ? std::stoi(type.substr(0, n)) : -1;
    Decimal d;
    if (places >= 0 && code == "DP")
        return ReadDecimal(value, d) && static_cast<int>(d.fraction.size()) == places && (places > 0) == d.point;
    if (places > 0 && code == "SF") return ReadDecimal(value, d) && SignificantFigures(d, places);
    if (places >= 0 && code == "SCI") return Scientific(value, places);
    if (type == "U") return ReadDecimal(value, d) || Scientific(value, -1);
    if (type == "YN") return value == "Y" || value == "N";
    if (type == "DT") {
        if (!unit.empty()) return DateLike(value, unit);
        for (const char* format : {"yyyy-mm-dd", "yyyy-mm-ddThh:mm", "yyyy-mm-ddThh:mm:ss", "hh:mm", "hh:mm:ss"})
            if (DateLike(value, format)) return true;
        return false;
    }
    return true;  // text of one kind or another
}

std::vector<AgsFinding> CheckAgs4(std::string_view text)
{
    std::vector<AgsFinding> findings;
    const AgsFile file = ReadAgsGroups(text, findings);
    Checker(file, findings).Run();
    std::stable_sort(findings.begin(), findings.end(),
                     [](const AgsFinding& a, const AgsFinding& b) { return a.line < b.line; });
    return findings;
}

const char* RuleText(AgsRule rule)
{
    switch (rule) {
    case AgsRule::Ascii: return "only printable ASCII characters";
    case AgsRule::LineEnds: return "every line ends CR LF";
    case AgsRule::Quoting: return "every field double-quoted";
    case AgsRule::GroupRows: return "each group starts GROUP, HEADING, UNIT, TYPE and has DATA rows";
    case AgsRule::FieldCount: return "as many fields as headings";
    case AgsRule::Names: return "group names of 4 characters, headings GRUP_XXXX of at most 9";
    case AgsRule::RequiredGroups: return "PROJ, TRAN, UNIT and TYPE present, PROJ and TRAN with one row";
    case AgsRule::GroupOrder: return "PROJ first, TRAN second, parents before children";
    case AgsRule::Dictionary: return "every heading standard or declared in DICT";
    case AgsRule::HeadingOrder: return "standard headings in the dictionary's order";
    case AgsRule::Keys: return "key headings present and unique";
    case AgsRule::RequiredData: return "required headings present and filled";
    case AgsRule::Parents: return "every row has its parent row";
    case AgsRule::UnitsListed: return "every unit listed in UNIT";
    case AgsRule::TypesListed: return "every type listed in TYPE";
    case AgsRule::DataTypes: return "every value matches its type";
    }
    return "";
}

std::string Describe(const AgsFinding& finding)
{
    const std::string where = finding.line > 0 ? "line " + std::to_string(finding.line) + ": " : std::string();
    return where + RuleText(finding.rule) + ": " + finding.what;
}

}  // namespace pemlo::profile
