#include "log/PdfStamp.h"

#include <cctype>
#include <charconv>
#include <chrono>
#include <cstdio>

namespace pemlo::log {

namespace {

// FNV-1a, 64 bits: enough to tell documents apart, no more is asked of an id.
std::uint64_t Fnv(const std::string& bytes, std::uint64_t seed)
{
    std::uint64_t h = 14695981039346656037ull ^ seed;
    for (const unsigned char c : bytes) h = (h ^ c) * 1099511628211ull;
    return h;
}

// Overwrites the text between `opening` and the next `closing` with what `make`
// gives for its length; false when it is not there or `make` cannot give it.
template <class Make>
bool Replace(std::string& bytes, const std::string& opening, char closing, Make make)
{
    const std::size_t at = bytes.find(opening);
    if (at == std::string::npos) return false;
    const std::size_t from = at + opening.size();
    const std::size_t to = bytes.find(closing, from);
    if (to == std::string::npos) return false;
    const std::string text = make(to - from);
    if (text.size() != to - from) return false;
    bytes.replace(from, text.size(), text);
    return true;
}

}  // namespace

std::optional<std::int64_t> SourceDateEpoch(const char* value, std::string& error)
{
    if (value == nullptr || *value == '\0') return std::nullopt;
    const std::string_view text(value);
    std::int64_t seconds = 0;
    const auto r = std::from_chars(text.data(), text.data() + text.size(), seconds);
    // Up to the year 9999, which the date's four digits can hold.
    if (r.ec != std::errc{} || r.ptr != text.data() + text.size() || seconds < 0 || seconds > 253402300799) {
        error = "SOURCE_DATE_EPOCH must be whole seconds since 1970, not '" + std::string(text) + "'";
        return std::nullopt;
    }
    return seconds;
}

std::string PdfDate(std::int64_t seconds)
{
    using namespace std::chrono;
    const sys_seconds t{std::chrono::seconds(seconds)};
    const auto day = floor<days>(t);
    const year_month_day ymd{day};
    const hh_mm_ss time{t - day};
    char text[32];
    std::snprintf(text, sizeof text, "D:%04d%02u%02u%02d%02d%02dZ", static_cast<int>(ymd.year()),
                  static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text;
}

bool StampPdf(std::string& bytes, std::optional<std::int64_t> creation)
{
    if (creation &&
        !Replace(bytes, "/CreationDate (", ')', [&](std::size_t) { return PdfDate(*creation); }))
        return false;
    // The id is made with its own digits blanked, so that it depends on the drawing only.
    const std::size_t found = bytes.find("/ID [");
    if (found == std::string::npos) return true;  // not every writer writes one
    const std::size_t at = found + 5;
    std::string blanked = bytes;
    const std::size_t end = bytes.find(']', at);
    if (end == std::string::npos) return false;
    for (std::size_t i = at; i < end; ++i)
        if (std::isxdigit(static_cast<unsigned char>(blanked[i]))) blanked[i] = '0';
    char digits[40];
    std::snprintf(digits, sizeof digits, "%016llx%016llx", static_cast<unsigned long long>(Fnv(blanked, 1)),
                  static_cast<unsigned long long>(Fnv(blanked, 2)));
    for (std::size_t i = at, k = 0; i < end; ++i)
        if (std::isxdigit(static_cast<unsigned char>(bytes[i]))) bytes[i] = digits[k++ % 32];
    return true;
}

}  // namespace pemlo::log
