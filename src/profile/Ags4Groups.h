// AGS4 text as rows and groups: the one way this program writes a row, and a reader
// that takes a file apart into its groups and says where its lines break the rules
// of the format itself (characters, line ends, quoting, the rows of a group).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pemlo::profile {

// The rules of the format the checker holds a file to.
enum class AgsRule {
    Ascii,          // only printable ASCII characters
    LineEnds,       // every line ends CR LF
    Quoting,        // every field double-quoted, fields separated by commas
    GroupRows,      // GROUP, HEADING, UNIT, TYPE rows start each group, then DATA rows
    FieldCount,     // UNIT, TYPE and DATA rows have as many fields as HEADING
    Names,          // group names of 4 characters, headings GRUP_XXXX of at most 9
    RequiredGroups, // PROJ and TRAN with one row each, UNIT and TYPE present
    GroupOrder,     // PROJ first, TRAN second, a parent before its children
    Dictionary,     // a heading is in the standard dictionary or declared in DICT
    HeadingOrder,   // standard headings in the dictionary's order
    Keys,           // key headings present, their combination unique in the group
    RequiredData,   // required headings present and holding a value
    Parents,        // every row has its parent row
    UnitsListed,    // every unit used is listed in UNIT
    TypesListed,    // every type used is listed in TYPE
    DataTypes,      // every value matches its type
};

struct AgsFinding {
    AgsRule rule;
    int line = 0;  // 1-based; 0 for the file as a whole
    std::string what;
};

struct AgsRow {
    int line = 0;
    std::vector<std::string> fields;  // without the leading DATA
};

struct AgsGroup {
    std::string name;
    int line = 0;                      // of its GROUP row
    std::vector<std::string> headings; // empty where the row is missing
    std::vector<std::string> units;
    std::vector<std::string> types;
    std::vector<AgsRow> rows;

    // The column of a heading, or -1.
    int Column(std::string_view heading) const;
    // The row's value under a heading; empty where the heading or the field is missing.
    std::string Value(const AgsRow& row, std::string_view heading) const;
};

struct AgsFile {
    std::vector<AgsGroup> groups;  // in the order of the file
    const AgsGroup* Find(std::string_view name) const;
};

// One row as written: every field double-quoted, quotes inside doubled, CR LF.
std::string AgsLine(const std::vector<std::string>& fields);

// The groups of the text; the lines that break the format's own rules are added to
// `findings` and left out (a group whose rows come out of order is kept as far as it
// was read).
AgsFile ReadAgsGroups(std::string_view text, std::vector<AgsFinding>& findings);

}  // namespace pemlo::profile
