#include "formats/Ags4Fields.h"

#include <algorithm>

namespace pemlo::formats {

namespace {

// Reads the quoted text from the opening quote at line[i]; moves i past the closing
// quote, or past the line's end when there is none.
std::string QuotedText(std::string_view line, std::size_t& i, bool& closed)
{
    std::string text;
    closed = false;
    for (++i; i < line.size();) {
        const std::size_t quote = line.find('"', i);
        if (quote == std::string_view::npos) {
            text.append(line.substr(i));
            i = line.size() + 1;
            return text;
        }
        text.append(line.substr(i, quote - i));
        i = quote + 1;
        if (i >= line.size() || line[i] != '"') {
            closed = true;
            return text;
        }
        text += '"';  // a doubled quote
        ++i;
    }
    return text;
}

}  // namespace

AgsLineFields SplitAgsLine(std::string_view line, std::size_t maxFields)
{
    AgsLineFields out;
    std::size_t i = 0;
    while (out.fields.size() < maxFields) {
        const std::size_t start = i;
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
        if (i != start) out.strict = false;
        std::string field;
        if (i < line.size() && line[i] == '"') {
            bool closed = false;
            field = QuotedText(line, i, closed);
            if (!closed) out.strict = false;
        } else {
            out.strict = false;
        }
        // Unquoted text, or text after the closing quote, up to the comma.
        const std::size_t comma = std::min(line.find(',', std::min(i, line.size())), line.size());
        if (comma > i) {
            field.append(line.substr(i, comma - i));
            out.strict = false;
        }
        out.fields.push_back(std::move(field));
        if (comma >= line.size()) return out;
        i = comma + 1;
    }
    return out;
}

}  // namespace pemlo::formats
