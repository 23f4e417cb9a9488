// The buffered writer of the command line's results: rows are put together in a
// buffer of their own and reach the stream a few kilobytes at a time, with the text
// of each column's last value kept for the rows that repeat it.
#pragma once

#include <array>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <string_view>

namespace pemlo::cli {

// The shortest text of the values of one column, kept for the value last written:
// where intervals outnumber readings, runs of intervals repeat the same means.
class ColumnText {
public:
    static constexpr std::size_t MostChars = 32;

    // Puts the text of the value at `at`, which has room for MostChars, and returns
    // its end. The whole buffer is copied: a copy of fixed size is a few moves, where
    // one of the text's own length is a call.
    char* Put(char* at, float value)
    {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        if (length_ == 0 || bits != bits_) {
            bits_ = bits;
            length_ = static_cast<std::size_t>(std::to_chars(text_, text_ + MostChars, value).ptr - text_);
        }
        std::memcpy(at, text_, MostChars);
        return at + length_;
    }

private:
    std::uint32_t bits_ = 0;
    char text_[MostChars];
    std::size_t length_ = 0;
};

// Rows are made in a buffer and written to the stream a few kilobytes at a time:
// the stream sees one call for dozens of rows, not one a number.
class RowWriter {
public:
    explicit RowWriter(std::ostream& out) : out_(out) {}
    ~RowWriter() { Flush(); }
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    void Text(std::string_view text)
    {
        if (text.size() > Room) {  // longer than any row: straight through
            Flush();
            out_.write(text.data(), static_cast<std::streamsize>(text.size()));
            return;
        }
        Reserve(text.size());
        std::memcpy(buffer_.data() + used_, text.data(), text.size());
        used_ += text.size();
    }
    void Char(char c)
    {
        Reserve(1);
        buffer_[used_++] = c;
    }
    void Integer(long long n)
    {
        Reserve(24);
        used_ = static_cast<std::size_t>(std::to_chars(buffer_.data() + used_, buffer_.data() + used_ + 24, n).ptr -
                                         buffer_.data());
    }
    void Shortest(float value)
    {
        Reserve(32);
        used_ = static_cast<std::size_t>(std::to_chars(buffer_.data() + used_, buffer_.data() + used_ + 32, value).ptr -
                                         buffer_.data());
    }
    // A row of short fields put straight into the buffer: room for a row is made once,
    // the fields are put from the pointer returned, and RowEnds takes their end.
    char* RowRoom()
    {
        Reserve(Room);
        return buffer_.data() + used_;
    }
    void RowEnds(char* end)
    {
        used_ = static_cast<std::size_t>(end - buffer_.data());
        EndRow();
    }
    // The end of a row: the buffer goes out once it holds no room for another.
    void EndRow()
    {
        Char('\n');
        if (used_ > buffer_.size() - Room) Flush();
    }

    static constexpr std::size_t Room = 1024;  // more than a row of numbers takes

private:
    void Reserve(std::size_t n)
    {
        if (used_ + n > buffer_.size()) Flush();
    }
    void Flush()
    {
        out_.write(buffer_.data(), static_cast<std::streamsize>(used_));
        used_ = 0;
    }

    std::ostream& out_;
    std::array<char, 16384> buffer_;
    std::size_t used_ = 0;
};

}  // namespace pemlo::cli
