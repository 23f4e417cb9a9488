#include "formats/SafeText.h"

namespace pemlo::formats {

namespace {

constexpr char Hex[] = "0123456789ABCDEF";

// The length of the valid UTF-8 character at text[i] (shortest form, no surrogate,
// at most U+10FFFF), or 0 where the byte starts none.
std::size_t CharacterLength(std::string_view text, std::size_t i)
{
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char b = byte(i);
    if (b < 0x80) return 1;
    std::size_t length = 0;
    unsigned char low = 0x80, high = 0xBF;  // the range of the second byte
    if (b >= 0xC2 && b <= 0xDF) {
        length = 2;
    } else if (b >= 0xE0 && b <= 0xEF) {
        length = 3;
        if (b == 0xE0) low = 0xA0;
        if (b == 0xED) high = 0x9F;
    } else if (b >= 0xF0 && b <= 0xF4) {
        length = 4;
        if (b == 0xF0) low = 0x90;
        if (b == 0xF4) high = 0x8F;
    } else {
        return 0;
    }
    if (i + length > text.size() || byte(i + 1) < low || byte(i + 1) > high) return 0;
    for (std::size_t k = 2; k < length; ++k)
        if (byte(i + k) < 0x80 || byte(i + k) > 0xBF) return 0;
    return length;
}

// A C0 control character, DEL, or a C1 control character (U+0080 to U+009F, which
// UTF-8 writes as C2 80 to C2 9F).
bool IsControl(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character.front());
    if (character.size() == 1) return first < 0x20 || first == 0x7F;
    return character.size() == 2 && first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

// Calls visit(character, valid) for each character of the text; a byte that starts
// no valid character is handed on alone, not valid.
template <class Visit>
void EachCharacter(std::string_view text, Visit visit)
{
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterLength(text, i);
        visit(text.substr(i, length == 0 ? 1 : length), length != 0);
        i += length == 0 ? 1 : length;
    }
}

void AppendHex(std::string& out, std::string_view bytes)
{
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        out += "\\x";
        out += Hex[b >> 4];
        out += Hex[b & 15];
    }
}

std::string Escaped(std::string_view text, bool keepLineEnds)
{
    std::string out;
    out.reserve(text.size());
    EachCharacter(text, [&](std::string_view c, bool valid) {
        if (valid && IsControl(c) && !(keepLineEnds && c == "\n")) valid = false;
        if (valid) out += c;
        else AppendHex(out, c);
    });
    return out;
}

}  // namespace

std::string TerminalField(std::string_view text) { return Escaped(text, false); }

std::string TerminalText(std::string_view text) { return Escaped(text, true); }

std::string JsonStringContent(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    EachCharacter(text, [&](std::string_view c, bool valid) {
        if (!valid) {
            out += "\xEF\xBF\xBD";  // U+FFFD, the replacement character
        } else if (c == "\"" || c == "\\") {
            out += '\\';
            out += c;
        } else if (c == "\n") {
            out += "\\n";
        } else if (c == "\r") {
            out += "\\r";
        } else if (c == "\t") {
            out += "\\t";
        } else if (IsControl(c)) {
            const auto code = static_cast<unsigned char>(c.size() == 1 ? c[0] : c[1]);  // C2 xx is U+00xx
            out += "\\u00";
            out += Hex[code >> 4];
            out += Hex[code & 15];
        } else {
            out += c;
        }
    });
    return out;
}

std::string FileNamePart(std::string_view text)
{
    std::string out;
    EachCharacter(text, [&](std::string_view c, bool valid) {
        const auto b = static_cast<unsigned char>(c.front());
        const bool safe = valid && !IsControl(c) &&
                          (b >= 0x80 || (b >= '0' && b <= '9') || (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z') ||
                           b == '-' || b == '_' || b == '.' || b == '+');
        if (safe) out += c;
        else out += '_';
    });
    return out;
}

std::string_view CutText(std::string_view text, std::size_t maxBytes)
{
    if (text.size() <= maxBytes) return text;
    std::size_t end = maxBytes;
    // Back over the continuation bytes of a character the cut would split (at most
    // three: more are no character anyway).
    while (end > 0 && maxBytes - end < 3 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return text.substr(0, end);
}

}  // namespace pemlo::formats
