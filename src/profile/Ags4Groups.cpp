#include "profile/Ags4Groups.h"

#include <limits>
#include <optional>

#include "formats/Ags4Fields.h"

namespace pemlo::profile {

namespace {

// The rows a group reads next.
enum class Next { Heading, Unit, Type, Data };

// The fields of a line written "a","b","c"; nothing where the line is not.
std::optional<std::vector<std::string>> QuotedFields(std::string_view line)
{
    formats::AgsLineFields split = formats::SplitAgsLine(line, std::numeric_limits<std::size_t>::max());
    if (!split.strict) return std::nullopt;
    return std::move(split.fields);
}

bool PrintableAscii(std::string_view line)
{
    for (const char c : line)
        if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7E) return false;
    return true;
}

class Reader {
public:
    explicit Reader(std::vector<AgsFinding>& findings) : findings_(findings) {}

    void Line(std::string_view line, int number)
    {
        if (line.empty()) return;  // groups are set apart by blank lines
        if (!PrintableAscii(line)) Find(AgsRule::Ascii, number, "a character that is not printable ASCII");
        const auto fields = QuotedFields(line);
        if (!fields) {
            Find(AgsRule::Quoting, number, "the fields are not all double-quoted and separated by commas");
            return;
        }
        const std::string& descriptor = fields->front();
        std::vector<std::string> rest(fields->begin() + 1, fields->end());
        if (descriptor == "GROUP") {
            StartGroup(rest, number);
        } else if (descriptor == "HEADING") {
            Header(Next::Heading, number, descriptor, [&](AgsGroup& g) { g.headings = std::move(rest); });
        } else if (descriptor == "UNIT" || descriptor == "TYPE") {
            const Next row = descriptor == "UNIT" ? Next::Unit : Next::Type;
            Header(row, number, descriptor, [&](AgsGroup& g) {
                if (rest.size() != g.headings.size()) CountFinding(number, descriptor, rest.size(), g);
                (row == Next::Unit ? g.units : g.types) = std::move(rest);
            });
        } else if (descriptor == "DATA") {
            if (!open_ || next_ != Next::Data) {
                Find(AgsRule::GroupRows, number, "a DATA row before its group's GROUP, HEADING, UNIT and TYPE rows");
            } else if (rest.size() != Current().headings.size()) {
                CountFinding(number, descriptor, rest.size(), Current());
            } else {
                Current().rows.push_back({number, std::move(rest)});
            }
        } else {
            Find(AgsRule::GroupRows, number, "a row that starts with \"" + descriptor +
                                                  "\", not GROUP, HEADING, UNIT, TYPE or DATA");
        }
    }

    AgsFile Finish()
    {
        CloseGroup();
        return std::move(file_);
    }

private:
    AgsGroup& Current() { return file_.groups.back(); }

    void Find(AgsRule rule, int line, std::string what) { findings_.push_back({rule, line, std::move(what)}); }

    void CountFinding(int line, const std::string& row, std::size_t count, const AgsGroup& g)
    {
        Find(AgsRule::FieldCount, line, "group " + g.name + ": a " + row + " row of " + std::to_string(count) +
                                            " fields under " + std::to_string(g.headings.size()) + " headings");
    }

    void StartGroup(const std::vector<std::string>& rest, int line)
    {
        CloseGroup();
        if (rest.size() != 1) {
            Find(AgsRule::GroupRows, line, "a GROUP row must name one group");
            return;
        }
        if (const AgsGroup* earlier = file_.Find(rest.front()))
            Find(AgsRule::GroupRows, line,
                 "group " + rest.front() + " appears again (first at line " + std::to_string(earlier->line) + ")");
        file_.groups.push_back({rest.front(), line, {}, {}, {}, {}});
        open_ = true;
        next_ = Next::Heading;
    }

    template <typename Take>
    void Header(Next row, int line, const std::string& name, Take take)
    {
        if (!open_ || next_ != row) {
            Find(AgsRule::GroupRows, line, "a " + name + " row out of place: a group starts GROUP, HEADING, UNIT, TYPE");
            return;
        }
        take(Current());
        next_ = row == Next::Heading ? Next::Unit : row == Next::Unit ? Next::Type : Next::Data;
    }

    void CloseGroup()
    {
        if (!open_) return;
        const AgsGroup& g = Current();
        if (next_ != Next::Data)
            Find(AgsRule::GroupRows, g.line, "group " + g.name + " lacks its HEADING, UNIT or TYPE row");
        else if (g.rows.empty())
            Find(AgsRule::GroupRows, g.line, "group " + g.name + " has no DATA row");
        open_ = false;
    }

    std::vector<AgsFinding>& findings_;
    AgsFile file_;
    bool open_ = false;
    Next next_ = Next::Heading;
};

}  // namespace

int AgsGroup::Column(std::string_view heading) const
{
    for (std::size_t i = 0; i < headings.size(); ++i)
        if (headings[i] == heading) return static_cast<int>(i);
    return -1;
}

std::string AgsGroup::Value(const AgsRow& row, std::string_view heading) const
{
    const int c = Column(heading);
    if (c < 0 || static_cast<std::size_t>(c) >= row.fields.size()) return {};
    return row.fields[static_cast<std::size_t>(c)];
}

const AgsGroup* AgsFile::Find(std::string_view name) const
{
    for (const AgsGroup& g : groups)
        if (g.name == name) return &g;
    return nullptr;
}

std::string AgsLine(const std::vector<std::string>& fields)
{
    std::string line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) line += ',';
        line += '"';
        for (const char c : fields[i]) line += c == '"' ? std::string("\"\"") : std::string(1, c);
        line += '"';
    }
    return line + "\r\n";
}

AgsFile ReadAgsGroups(std::string_view text, std::vector<AgsFinding>& findings)
{
    Reader reader(findings);
    int number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = text.find_first_of("\r\n", at);
        if (end == std::string_view::npos) {
            findings.push_back({AgsRule::LineEnds, number, "the last line has no CR LF at its end"});
            reader.Line(text.substr(at), number);
            break;
        }
        reader.Line(text.substr(at, end - at), number);
        if (text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') {
            at = end + 2;
        } else {
            findings.push_back({AgsRule::LineEnds, number, "the line ends in a lone CR or LF, not CR LF"});
            at = end + 1;
        }
    }
    return reader.Finish();
}

}  // namespace pemlo::profile
