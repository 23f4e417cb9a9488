// The part of the AGS 4.1 standard dictionary the soil profile export writes and
// checks: the groups PROJ, TRAN, UNIT, TYPE, DICT, LOCA, SCPG, SCPP and SCPT with every
// standard heading of theirs in the dictionary's order, its status, and each group's
// parent. Both the writer and the checker read it from here.
#pragma once

#include <span>
#include <string_view>

namespace pemlo::profile {

// Key fields must be present with a unique combination of values in every row;
// required fields must be present and hold a value in every row.
enum class HeadingStatus { KeyRequired, Key, Required, Other };

struct StandardHeading {
    std::string_view name;
    HeadingStatus status;
};

struct StandardGroup {
    std::string_view name;
    std::string_view parent;  // empty: none
    std::span<const StandardHeading> headings;
};

// The group, or nullptr where it is not one of those above.
const StandardGroup* FindStandardGroup(std::string_view group);

// The heading's place among the group's standard headings, or -1.
int StandardPosition(const StandardGroup& group, std::string_view heading);

bool IsKey(HeadingStatus status);
bool IsRequired(HeadingStatus status);

}  // namespace pemlo::profile
