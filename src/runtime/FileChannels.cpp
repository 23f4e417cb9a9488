#include "runtime/FileChannels.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <new>
#include <system_error>

#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

// A cone data file holds at most a few hundred kilobytes; anything beyond this is
// not a data file, and refusing it by its size, before a byte is read, keeps a
// mistaken choice from eating the memory.
constexpr std::uintmax_t MaxFileBytes = 64ull * 1024 * 1024;

// The system's handle of an open file, closed however the read ends.
struct FileHandle {
    explicit FileHandle(int opened) : fd(opened) {}
    ~FileHandle()
    {
        if (fd >= 0) ::close(fd);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    const int fd;
};

bool IsLineBreak(char c) noexcept { return c == '\r' || c == '\n'; }
bool IsBlankOrTab(char c) noexcept { return c == ' ' || c == '\t'; }
bool EndsField(char c) noexcept { return c == ',' || IsBlankOrTab(c) || IsLineBreak(c); }
bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

// The parts of a field written as a number: sign, mantissa digits with the place of
// the decimal point, and the exponent digits with their sign.
struct NumberText {
    bool negative = false;
    std::string mantissa;        // digits and at most one '.'
    bool exponentNegative = false;
    std::string exponentDigits;  // empty when the field has no exponent
};

// Splits a field by the grammar [sign] digits [. digits] [(E|e|D|d) [sign] digits];
// false when the field is anything else.
bool SplitNumber(const char* p, const char* end, NumberText& out)
{
    if (p != end && (*p == '+' || *p == '-')) out.negative = (*p++ == '-');
    bool digits = false, point = false;
    for (; p != end && (IsDigit(*p) || (*p == '.' && !point)); ++p) {
        if (*p == '.') point = true; else digits = true;
        out.mantissa += *p;
    }
    if (!digits) return false;
    if (p == end) return true;
    if (*p != 'E' && *p != 'e' && *p != 'D' && *p != 'd') return false;
    ++p;
    if (p != end && (*p == '+' || *p == '-')) out.exponentNegative = (*p++ == '-');
    for (; p != end && IsDigit(*p); ++p) out.exponentDigits += *p;
    return p == end && !out.exponentDigits.empty();
}

// Decimal order of magnitude of a value too large or too small for a double, to
// tell an overflow (error) from an underflow (a value that is simply 0).
long long DecimalOrder(const NumberText& n)
{
    long long exponent = 0;
    for (char c : n.exponentDigits) exponent = std::min(exponent * 10 + (c - '0'), 1'000'000'000LL);
    if (n.exponentNegative) exponent = -exponent;
    const std::size_t point = std::min(n.mantissa.find('.'), n.mantissa.size());
    const std::size_t first = n.mantissa.find_first_not_of("0.");
    if (first == std::string::npos) return -1'000'000'000LL;  // all zeros
    const long long lead = first < point ? static_cast<long long>(point - first)
                                         : -static_cast<long long>(first - point - 1);
    return lead + exponent;
}

// The common field as the parser takes it as it stands: [-]digits[.digits][(E|e)[sign]digits].
// A '+' sign and a D exponent are spelled out the long way.
bool IsPlainNumber(const char* p, const char* end) noexcept
{
    if (p != end && *p == '-') ++p;
    bool digits = false, point = false;
    for (; p != end && (IsDigit(*p) || (*p == '.' && !point)); ++p) {
        if (*p == '.') point = true; else digits = true;
    }
    if (!digits) return false;
    if (p == end) return true;
    if (*p != 'E' && *p != 'e') return false;
    ++p;
    if (p != end && (*p == '+' || *p == '-')) ++p;
    const char* exponent = p;
    while (p != end && IsDigit(*p)) ++p;
    return p == end && p != exponent;
}

float ParseField(const char* begin, const char* end)
{
    if (IsPlainNumber(begin, end)) {
        double value = 0.0;
        const auto [ptr, ec] = std::from_chars(begin, end, value);
        if (ec == std::errc() && ptr == end) return ToSingle(value);
    }
    NumberText n;
    if (!SplitNumber(begin, end, n)) Raise(ErrTypeMismatch);
    std::string text = n.mantissa;
    if (!n.exponentDigits.empty()) text += (n.exponentNegative ? "e-" : "e") + n.exponentDigits;
    double value = 0.0;
    const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec == std::errc::result_out_of_range) {
        if (DecimalOrder(n) > 0) Raise(ErrOverflow);
        value = 0.0;
    } else if (ec != std::errc() || ptr != text.data() + text.size()) {
        Raise(ErrTypeMismatch);
    }
    return ToSingle(n.negative ? -value : value);
}

std::string ReadWholeFile(const std::string& path)
{
    namespace fs = std::filesystem;
    std::error_code ec;
    if (path.empty() || !fs::exists(path, ec)) Raise(ErrFileNotFound);
    // Folders, devices and pipes are no data files; a pipe would wait forever.
    if (!fs::is_regular_file(path, ec)) Raise(ErrPathFileAccess);
    const std::uintmax_t size = fs::file_size(path, ec);
    if (ec) Raise(ErrPathFileAccess);
    if (size > MaxFileBytes) Raise(ErrOutOfMemory);
    const FileHandle file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.fd < 0) Raise(ErrPathFileAccess);
    // Read in one piece at the size the file has now; a file that grew since is read
    // to its new end all the same.
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::size_t got = 0;
    char beyond[4096];  // for what lies beyond the size, and for learning that nothing does
    while (true) {
        const bool full = got == bytes.size();
        const ssize_t n = full ? ::read(file.fd, beyond, sizeof beyond) : ::read(file.fd, bytes.data() + got, bytes.size() - got);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) Raise(ErrPathFileAccess);
        if (n == 0) break;
        if (full) bytes.append(beyond, static_cast<std::size_t>(n));
        got += static_cast<std::size_t>(n);
        if (got > MaxFileBytes) Raise(ErrOutOfMemory);
    }
    bytes.resize(got);
    return bytes;
}

}  // namespace

TextChannel::TextChannel(std::string bytes) : bytes_(std::move(bytes)) {}

long long TextChannel::Length() const noexcept { return static_cast<long long>(bytes_.size()); }

std::string TextChannel::LineInput()
{
    if (pos_ >= bytes_.size()) Raise(ErrInputPastEndOfFile);
    const std::size_t start = pos_;
    while (pos_ < bytes_.size() && !IsLineBreak(bytes_[pos_])) ++pos_;
    std::string line = bytes_.substr(start, pos_ - start);
    if (pos_ < bytes_.size() && bytes_[pos_++] == '\r' && pos_ < bytes_.size() && bytes_[pos_] == '\n')
        ++pos_;
    return line;
}

std::string TextChannel::InputChars(long long n)
{
    if (n < 0) Raise(ErrInvalidProcedureCall);
    if (static_cast<unsigned long long>(n) > bytes_.size() - pos_) Raise(ErrInputPastEndOfFile);
    std::string chars = bytes_.substr(pos_, static_cast<std::size_t>(n));
    pos_ += static_cast<std::size_t>(n);
    return chars;
}

void TextChannel::SkipBlanksAndLineBreaks() noexcept
{
    while (pos_ < bytes_.size() && (IsBlankOrTab(bytes_[pos_]) || IsLineBreak(bytes_[pos_]))) ++pos_;
}

float TextChannel::InputNumber()
{
    SkipBlanksAndLineBreaks();
    fieldStart_ = pos_;
    if (pos_ >= bytes_.size()) Raise(ErrInputPastEndOfFile);
    while (pos_ < bytes_.size() && !EndsField(bytes_[pos_])) ++pos_;
    const float value = ParseField(bytes_.data() + fieldStart_, bytes_.data() + pos_);
    while (pos_ < bytes_.size() && IsBlankOrTab(bytes_[pos_])) ++pos_;
    if (pos_ < bytes_.size() && bytes_[pos_] == ',') ++pos_;
    return value;
}

bool TextChannel::AtEndOfFile()
{
    SkipBlanksAndLineBreaks();
    return pos_ >= bytes_.size();
}

long long TextChannel::LineNumberAt(std::size_t pos) const noexcept
{
    pos = std::min(pos, bytes_.size());
    long long line = 1;
    for (std::size_t i = 0; i < pos; ++i) {
        if (bytes_[i] == '\n' || (bytes_[i] == '\r' && !(i + 1 < pos && bytes_[i + 1] == '\n'))) ++line;
    }
    return line;
}

std::string TextChannel::LineTextAt(std::size_t pos) const
{
    pos = std::min(pos, bytes_.size());
    std::size_t start = pos;
    while (start > 0 && !IsLineBreak(bytes_[start - 1])) --start;
    std::size_t end = pos;
    while (end < bytes_.size() && !IsLineBreak(bytes_[end])) ++end;
    return bytes_.substr(start, end - start);
}

long long TextChannel::LineNumber() const noexcept { return LineNumberAt(pos_); }

std::string TextChannel::CurrentLineText() const { return LineTextAt(pos_); }

Integer FileChannels::FreeFile() const
{
    for (Integer n = 1; n <= MaxChannel; ++n) {
        if (!open_.contains(n)) return n;
    }
    Raise(ErrTooManyFiles);
}

void FileChannels::OpenForInput(Integer n, const std::string& path)
{
    if (n < 1 || n > MaxChannel) Raise(ErrBadFileNameOrNumber);
    if (open_.contains(n)) Raise(ErrFileAlreadyOpen);
    open_.emplace(n, std::make_unique<TextChannel>(ReadWholeFile(path)));
}

TextChannel& FileChannels::Channel(Integer n)
{
    const auto it = open_.find(n);
    if (it == open_.end()) Raise(ErrBadFileNameOrNumber);
    return *it->second;
}

void FileChannels::Close(Integer n) { open_.erase(n); }

bool FileChannels::IsOpen(Integer n) const { return open_.contains(n); }

FileChannels& ProgramChannels()
{
    static FileChannels channels;
    return channels;
}

std::string Windows1252ToUtf8(const std::string& bytes)
{
    // Code points of 0x80..0x9F; the five bytes the code page leaves undefined
    // keep their own value, as the system's conversion does.
    static constexpr std::array<char16_t, 32> high = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    std::string out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        const char32_t cp = (b >= 0x80 && b <= 0x9F) ? high[b - 0x80] : b;
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

std::string QuotedLine(const std::string& bytes, std::size_t most)
{
    std::string shown;
    const std::size_t n = std::min(bytes.size(), most);
    for (std::size_t i = 0; i < n; ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        if (c == '\t') {
            shown += "\\t";
        } else if (c < 0x20 || c == 0x7F) {
            constexpr char hex[] = "0123456789ABCDEF";
            shown += "\\x";
            shown += hex[c >> 4];
            shown += hex[c & 15];
        } else {
            shown += static_cast<char>(c);
        }
    }
    std::string quoted(1, '"');
    quoted.append(Windows1252ToUtf8(shown));
    quoted.append(bytes.size() > n ? "...\"" : "\"");
    return quoted;
}

}  // namespace pemlo
