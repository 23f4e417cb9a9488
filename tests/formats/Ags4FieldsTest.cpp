// The one AGS4 line splitter: the importer reads loose lines, the export's checker
// must see exactly which lines are not in the strict form.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "formats/Ags4Fields.h"

namespace pemlo::formats {
namespace {

constexpr std::size_t All = std::numeric_limits<std::size_t>::max();

TEST(SplitAgsLine, ReadsLooseLinesAndTellsWhetherTheyAreStrict)
{
    const struct {
        const char* catches;
        std::string line;
        std::vector<std::string> fields;
        bool strict;
    } cases[] = {
        {"a doubled quote or a comma inside quotes splitting the field", R"("DATA","a ""b"", c")",
         {"DATA", R"(a "b", c)"}, true},
        {"blanks inside quotes lost (the checker compares them)", R"("DATA"," x ")", {"DATA", " x "}, true},
        {"an unquoted field dropped instead of read", R"("DATA",12.5,"m")", {"DATA", "12.5", "m"}, false},
        {"a blank after the comma taken as strict", R"("DATA", "m")", {"DATA", "m"}, false},
        {"text after a closing quote lost or taken as strict", R"("DATA","1"x,"m")", {"DATA", "1x", "m"}, false},
        {"a quote left open running into a crash or strict", R"("DATA","open)", {"DATA", "open"}, false},
        {"a trailing comma's empty field lost", R"("DATA","a",)", {"DATA", "a", ""}, false},
        {"an empty quoted field lost", R"("DATA","")", {"DATA", ""}, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        const AgsLineFields split = SplitAgsLine(c.line, All);
        EXPECT_EQ(split.fields, c.fields);
        EXPECT_EQ(split.strict, c.strict);
    }
    // The importer asks for one more field than it takes, to refuse a line of too many.
    EXPECT_EQ(SplitAgsLine(R"("a","b","c","d")", 3).fields, (std::vector<std::string>{"a", "b", "c"}));
}

}  // namespace
}  // namespace pemlo::formats
