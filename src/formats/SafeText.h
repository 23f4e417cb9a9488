// Text read from a file on its way to a terminal, a file name or JSON. A file may hold
// any bytes: escape sequences that would drive the terminal, bytes that are no UTF-8,
// fields of any length. Each function hands on valid UTF-8 without control
// characters, in the form its reader can take.
#pragma once

#include <string>
#include <string_view>

namespace pemlo::formats {

// For standard error and output: control characters (C0 but the line end, DEL, C1)
// and bytes that are no UTF-8 written as \xHH, so that a person sees they were there.
std::string TerminalText(std::string_view text);

// For a JSON string's content (without its quotes): '"' and '\' escaped, control
// characters as \u00XX (\n, \r, \t as such), a byte that is no UTF-8 as U+FFFD.
std::string JsonStringContent(std::string_view text);

// For a part of a file name: letters, digits, "-_.+" and characters beyond ASCII kept,
// everything else ('/', blanks, control characters, bytes that are no UTF-8) as '_'.
std::string FileNamePart(std::string_view text);

// At most maxBytes bytes of the text, never ending in part of a character.
std::string_view CutText(std::string_view text, std::size_t maxBytes);

}  // namespace pemlo::formats
