// Text read from a file on its way to a terminal, a file name or JSON. A file may hold
// any bytes: escape sequences that would drive the terminal, bytes that are no UTF-8,
// fields of any length. Each function hands on valid UTF-8 without control
// characters, in the form its reader can take.
#pragma once

#include <string>
#include <string_view>

namespace pemlo::formats {

// For a field of a file (a name, an id, a value) on its way into a message or a line
// of standard output: control characters (C0, DEL, C1), the line end among them, and
// bytes that are no UTF-8 written as \xHH, so that a person sees they were there and
// no field can start a line that looks like the program's own.
std::string TerminalField(std::string_view text);

// For a whole message on standard error or output, its fields escaped already: the
// same, but the message's own line ends kept.
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
