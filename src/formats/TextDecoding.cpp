#include "formats/TextDecoding.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "formats/SafeText.h"
#include "runtime/FileChannels.h"

namespace pemlo::formats {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The grammar of a number field; the text after an optional '+' goes to the parser.
bool LooksNumeric(std::string_view s)
{
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    bool digits = false;
    while (i < s.size() && IsDigit(s[i])) ++i, digits = true;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && IsDigit(s[i])) ++i, digits = true;
    }
    if (!digits) return false;
    if (i == s.size()) return true;
    if (s[i] != 'e' && s[i] != 'E') return false;
    ++i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    const std::size_t exponentStart = i;
    while (i < s.size() && IsDigit(s[i])) ++i;
    return i == s.size() && i > exponentStart;
}

// Code point of one UTF-8 sequence at s[i] (valid text assumed); advances i.
char32_t NextCodePoint(std::string_view s, std::size_t& i)
{
    const auto b = static_cast<unsigned char>(s[i++]);
    if (b < 0x80) return b;
    const int extra = b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : 1;
    char32_t cp = b & (0x3F >> extra);
    for (int k = 0; k < extra && i < s.size(); ++k) cp = (cp << 6) | (static_cast<unsigned char>(s[i++]) & 0x3F);
    return cp;
}

}  // namespace

bool IsValidUtf8(std::string_view bytes)
{
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        int extra = 0;
        char32_t min = 0;
        if (b < 0x80) { ++i; continue; }
        if (b >= 0xC2 && b <= 0xDF) extra = 1, min = 0x80;
        else if (b >= 0xE0 && b <= 0xEF) extra = 2, min = 0x800;
        else if (b >= 0xF0 && b <= 0xF4) extra = 3, min = 0x10000;
        else return false;
        if (i + static_cast<std::size_t>(extra) >= bytes.size()) return false;
        char32_t cp = b & (0x3F >> extra);
        for (int k = 1; k <= extra; ++k) {
            const auto c = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
            if ((c & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (c & 0x3F);
        }
        // Overlong forms, surrogates and code points beyond U+10FFFF are not UTF-8.
        if (cp < min || (cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF) return false;
        i += static_cast<std::size_t>(extra) + 1;
    }
    return true;
}

DecodedText DecodeText(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (IsValidUtf8(bytes)) return {bytes, {}, false, "UTF-8"};
    return {{}, Windows1252ToUtf8(std::string(bytes)), true, "Windows-1252"};
}

std::string ToTitleBytes(std::string_view utf8)
{
    std::string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const char32_t cp = NextCodePoint(utf8, i);
        if (cp < 0x20 || cp == 0x7F || (cp >= 0x80 && cp < 0xA0)) out += ' ';
        else if (cp <= 0xFF) out += static_cast<char>(cp);
        else out += '?';
    }
    return out;
}

bool LineCursor::Next(TextLine& line)
{
    if (pos_ >= text_.size()) return false;
    std::size_t end = pos_;
    while (end < text_.size() && text_[end] != '\r' && text_[end] != '\n') ++end;
    line = {++number_, text_.substr(pos_, end - pos_)};
    if (end < text_.size() && text_[end] == '\r' && end + 1 < text_.size() && text_[end + 1] == '\n') ++end;
    pos_ = end + 1;
    return true;
}

std::string_view TrimBlanks(std::string_view s)
{
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

std::vector<std::string_view> SplitOn(std::string_view s, char separator, std::size_t maxParts)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = parts.size() + 1 >= maxParts ? std::string_view::npos : s.find(separator, start);
        parts.push_back(s.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
        if (end == std::string_view::npos) return parts;
        start = end + 1;
    }
}

std::vector<std::string_view> SplitOnBlanks(std::string_view s, std::size_t maxParts)
{
    std::vector<std::string_view> parts;
    s = TrimBlanks(s);
    while (!s.empty()) {
        std::size_t end = 0;
        while (end < s.size() && !IsBlank(s[end])) ++end;
        if (parts.size() + 1 >= maxParts) end = s.size();
        parts.push_back(s.substr(0, end));
        s = TrimBlanks(s.substr(end));
    }
    return parts;
}

std::string Lower(std::string_view s)
{
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool ParseNumber(std::string_view field, double& value)
{
    field = TrimBlanks(field);
    if (!LooksNumeric(field)) return false;
    if (field.front() == '+') field.remove_prefix(1);
    const auto [ptr, ec] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (ec == std::errc::result_out_of_range) {
        // Too small for a double is a zero; too large is no value this program can hold.
        const double classified = std::strtod(std::string(field).c_str(), nullptr);
        if (std::isinf(classified)) return false;
        value = classified;
        return true;
    }
    return ec == std::errc() && ptr == field.data() + field.size();
}

std::string Quoted(std::string_view field)
{
    constexpr std::size_t Shown = 40;
    std::string out = "'";
    out += TerminalField(CutText(field, Shown));
    out += field.size() > Shown ? "...'" : "'";
    return out;
}

}  // namespace pemlo::formats
