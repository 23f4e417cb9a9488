// Holds AGS4 text to the rules that apply to what this program writes: the format's
// own (characters, CR LF, quoting, rows and field counts, names), the mandatory groups
// and their order, the dictionary (standard or declared in DICT, in order), keys,
// required values, parent rows, units and types listed, and values that match their
// type. The export runs it on its own output and writes nothing that fails.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "profile/Ags4Groups.h"

namespace pemlo::profile {

// Every place the text breaks a rule; none for a good file.
std::vector<AgsFinding> CheckAgs4(std::string_view text);

// Whether a value is written as its type says: nDP, nSF, nSCI, U (a number), YN, DT
// (as its unit gives the format, or an ISO date or time where there is no unit); text
// of any other type. The listed types (PA, PT, PU) are checked against their lists apart.
bool MatchesType(const std::string& value, const std::string& type, const std::string& unit);

// The rule in a few words: "every field double-quoted".
const char* RuleText(AgsRule rule);

// "line 12: every field double-quoted: the fields are not ..." for people.
std::string Describe(const AgsFinding& finding);

}  // namespace pemlo::profile
