// Text from a file on its way to the terminal, JSON and file names: whatever bytes a
// file holds, what comes out is valid UTF-8 without control characters.
#include <gtest/gtest.h>

#include "formats/SafeText.h"
#include "formats/TextDecoding.h"

namespace pemlo::formats {
namespace {

TEST(SafeText, EscapesWhatWouldDriveTheTerminalOrBreakUtf8AndCutsOnACharacter)
{
    const struct { const char* catches; std::string text, terminal, json, fileName; } cases[] = {
        {"an escape sequence or a bell reaching the terminal", "A\x1B[31mB\x07", "A\\x1B[31mB\\x07", "A\\u001B[31mB\\u0007",
         "A__31mB_"},
        {"bytes that are no UTF-8 passed on", "X\xFF\xFEY", "X\\xFF\\xFEY", "X\xEF\xBF\xBD\xEF\xBF\xBDY", "X__Y"},
        {"a C1 control (U+009B, a terminal's CSI) taken for a letter", "a\xC2\x9B" "b", "a\\xC2\\x9Bb", "a\\u009Bb", "a_b"},
        {"an overlong form or a surrogate taken for UTF-8", "\xC0\xAF\xED\xA0\x80", "\\xC0\\xAF\\xED\\xA0\\x80",
         "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "_____"},
        {"a line end forging a line, a tab, quote, backslash or letter beyond ASCII mangled", "S\xC3\xB6\n\t\"\\",
         "S\xC3\xB6\\x0A\\x09\"\\", "S\xC3\xB6\\n\\t\\\"\\\\", "S\xC3\xB6____"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        EXPECT_EQ(TerminalField(c.text), c.terminal);
        EXPECT_EQ(JsonStringContent(c.text), c.json);
        EXPECT_EQ(FileNamePart(c.text), c.fileName);
    }
    EXPECT_EQ(Quoted(std::string(39, 'a') + "\xC3\xB6z"), "'" + std::string(39, 'a') + "...'") << "half a letter left";
    EXPECT_EQ(Quoted("a\x1B\n"), "'a\\x1B\\x0A'") << "a control character quoted as '?', not as \\xHH";
}

}  // namespace
}  // namespace pemlo::formats
