// Text files on numbered channels, as the program's file procedures use them: take a
// free channel number, open a file for reading on it, read lines, characters and
// delimited numbers, test for its end, close it. A channel left open by a failure
// stays taken, but the file itself is read into memory when it is opened, so no
// operating-system handle is ever held between calls.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "runtime/Arith.h"

namespace pemlo {

// One open file: its bytes (Windows-1252 text) and a read position.
class TextChannel {
public:
    explicit TextChannel(std::string bytes);

    // Length of the file in bytes.
    long long Length() const noexcept;

    // Reads up to the next line end (CR LF, LF or CR), which is consumed and not
    // returned. At the end of the file raises error 62 "Input past end of file".
    std::string LineInput();

    // Reads exactly n bytes, line breaks included; fewer left raises error 62.
    std::string InputChars(long long n);

    // Delimited numeric input: skips blanks, tabs and line breaks, reads one value
    // (optional sign, digits with an optional decimal point, optional exponent with
    // E, e, D or d and an optional sign) that ends at a comma, blank, tab or line end,
    // then skips blanks and tabs and consumes at most one comma. The value is parsed
    // as a double and stored in single precision. A field that is not a number raises
    // error 13 "Type mismatch", one beyond single range error 6, the end of the file
    // error 62; a value too small for single precision is stored as 0.
    float InputNumber();

    // End-of-file test of the reading loops: skips trailing blanks, tabs and line
    // breaks first, so blank lines after the last reading end the file normally.
    bool AtEndOfFile();

    // 1-based line number of the read position (for messages).
    long long LineNumber() const noexcept;
    // The text of the line the read position is on, without its line end.
    std::string CurrentLineText() const;

    // Byte offset of the read position, and where the field that InputNumber last
    // looked at began (after the skipped blanks), so that a reader can say where
    // a reading or a bad value stands.
    std::size_t Position() const noexcept { return pos_; }
    std::size_t FieldStart() const noexcept { return fieldStart_; }
    long long LineNumberAt(std::size_t pos) const noexcept;
    std::string LineTextAt(std::size_t pos) const;

private:
    void SkipBlanksAndLineBreaks() noexcept;

    std::string bytes_;
    std::size_t pos_ = 0;
    std::size_t fieldStart_ = 0;
};

class FileChannels {
public:
    static constexpr Integer MaxChannel = 255;

    // The lowest channel number not taken; none free raises error 67.
    Integer FreeFile() const;

    // Opens path for reading on channel n: the file is read whole and closed at the
    // operating-system level at once. A taken channel raises error 55, a missing or
    // unreadable file error 53, a number outside 1..255 error 52.
    void OpenForInput(Integer n, const std::string& path);

    // The open file on channel n; a channel not open raises error 52.
    TextChannel& Channel(Integer n);

    // Closes channel n (closing a channel that is not open does nothing).
    void Close(Integer n);

    bool IsOpen(Integer n) const;
    int OpenCount() const noexcept { return static_cast<int>(open_.size()); }

private:
    std::map<Integer, std::unique_ptr<TextChannel>> open_;
};

// The desktop program's one channel table, shared by its screens. The command line
// and the tests make tables of their own.
FileChannels& ProgramChannels();

// Windows-1252 bytes as UTF-8 text, for showing a file's text to people.
std::string Windows1252ToUtf8(const std::string& bytes);

// A line of a file as a message quotes it: in double quotes, as UTF-8, control
// characters spelled out (\t, \x0D), cut after `most` characters ("...").
std::string QuotedLine(const std::string& bytes, std::size_t most = 60);

}  // namespace pemlo
