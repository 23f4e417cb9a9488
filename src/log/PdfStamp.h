// What the PDF writer puts in a file that is not the drawing: the moment it was made
// and a random document id. Set from the outside, the same drawing gives the same
// bytes, so that a log checked into a project compares equal when nothing changed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace pemlo::log {

// The seconds SOURCE_DATE_EPOCH gives: empty when it is unset; a value that is not a
// whole number of seconds since 1970 is refused with a message in `error`.
std::optional<std::int64_t> SourceDateEpoch(const char* value, std::string& error);

// "D:20261125103000Z" for a time in seconds since 1970, UTC.
std::string PdfDate(std::int64_t seconds);

// Sets the creation date (when given) and replaces a document id with one made from
// the rest of the bytes; each in place, the same length, so that the offsets of the
// cross-reference table stay right. False when a date is given and the bytes hold
// none as the writer writes it.
bool StampPdf(std::string& bytes, std::optional<std::int64_t> creation);

}  // namespace pemlo::log
