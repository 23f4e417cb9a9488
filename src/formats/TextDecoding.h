// The text of an imported file: UTF-8 where the bytes are valid UTF-8, otherwise
// Windows-1252, always handed on as UTF-8; and the small field tools the readers
// share (trimming, splitting, numbers as the import contract reads them).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pemlo::formats {

bool IsValidUtf8(std::string_view bytes);

// The text is the bytes themselves where they are UTF-8 already (they must then
// outlive it), else its own converted copy.
struct DecodedText {
    std::string_view original;
    std::string converted;
    bool isConverted = false;
    std::string encoding;  // "UTF-8" or "Windows-1252"
    // UTF-8, without a byte order mark.
    std::string_view Text() const { return isConverted ? std::string_view(converted) : original; }
};
DecodedText DecodeText(std::string_view bytes);

// The text as Windows-1252 bytes for the title lines of a cone data file: characters
// outside that code page become '?', control characters blanks.
std::string ToTitleBytes(std::string_view utf8);

// The lines of a text one by one, numbered from 1; line ends CR LF, LF or CR.
struct TextLine {
    long long number = 0;
    std::string_view text;
};
class LineCursor {
public:
    explicit LineCursor(std::string_view text) : text_(text) {}
    bool Next(TextLine& line);

private:
    std::string_view text_;
    std::size_t pos_ = 0;
    long long number_ = 0;
};

std::string_view TrimBlanks(std::string_view s);  // blanks, tabs, CR and LF
// At most maxParts parts, the last holding the rest: a line of a million separators
// must not become a million fields.
std::vector<std::string_view> SplitOn(std::string_view s, char separator, std::size_t maxParts = 1024);
std::vector<std::string_view> SplitOnBlanks(std::string_view s, std::size_t maxParts = 1024);
std::string Lower(std::string_view s);

// A whole field as a number: [sign] digits [. digits] [e|E [sign] digits], blanks
// around allowed; false for anything else, "nan" and "inf" included, and for a value
// beyond double range.
bool ParseNumber(std::string_view field, double& value);

// A field for messages: quoted, cut at 40 bytes on a character boundary, escaped as
// TerminalField escapes it.
std::string Quoted(std::string_view field);

}  // namespace pemlo::formats
