#include "runtime/FileChannels.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <tuple>
#include <vector>

#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

namespace fs = std::filesystem;

int ErrorOf(const std::function<void()>& step)
{
    try {
        step();
    } catch (const RunTimeError& e) {
        return e.Number();
    }
    return 0;
}

struct NumberCase {
    const char* fault;  // what goes wrong if this case fails
    std::string text;
    std::vector<float> values;
    int errorAfter;  // error of the next read after the values; 0: the file has ended
};

TEST(TextChannelInputNumber, ReadsValuesAndRejectsWhatIsNotANumber)
{
    const std::vector<NumberCase> cases = {
        {"comma-separated values", "1.5,12.3,0.4", {1.5f, 12.3f, 0.4f}, 0},
        {"a blank after a comma taken for an empty field", "1.5, 12.3, 0.4", {1.5f, 12.3f, 0.4f}, 0},
        {"blanks and tabs do not end a value", "1.5 12.3\t0.4", {1.5f, 12.3f, 0.4f}, 0},
        {"blanks before a comma", "1.5 , 12.3\t,0.4", {1.5f, 12.3f, 0.4f}, 0},
        {"exponent letters D, d, E, e", "1D3,2d-2,3E+1,4e0", {1000.0f, 0.02f, 30.0f, 4.0f}, 0},
        {"signs and a bare decimal point", "+1.5,-2,-.5,5.", {1.5f, -2.0f, -0.5f, 5.0f}, 0},
        {"CR LF, LF and lone CR all end a line", "1\r\n2\n3\r4\r\n", {1, 2, 3, 4}, 0},
        {"single precision is stored after a double parse", "16777217,0.1", {16777216.0f, 0.1f}, 0},
        {"largest single value", "3.4028234e38", {3.4028234e38f}, 0},
        {"underflow is zero, not an error", "1e-400,-1e-50", {0.0f, -0.0f}, 0},
        {"a trailing comma on a line", "1,\r\n2,", {1, 2}, 0},
        {"blank lines after the last value", "1\r\n\r\n \t\r\n", {1}, 0},
        {"empty field between two commas", "1,,2", {1}, ErrTypeMismatch},
        {"empty field at a line start", "1\n,2", {1}, ErrTypeMismatch},
        {"text", "abc", {}, ErrTypeMismatch},
        {"number followed by text", "12abc", {}, ErrTypeMismatch},
        {"two decimal points", "1.2.3", {}, ErrTypeMismatch},
        {"exponent without digits", "1e", {}, ErrTypeMismatch},
        {"point alone", ".", {}, ErrTypeMismatch},
        {"sign alone", "-", {}, ErrTypeMismatch},
        {"infinity spelled out", "inf", {}, ErrTypeMismatch},
        {"nan spelled out", "nan", {}, ErrTypeMismatch},
        {"hexadecimal", "0x10", {}, ErrTypeMismatch},
        {"zero bytes", std::string("\0\0", 2), {}, ErrTypeMismatch},
        {"beyond single range", "3.5e38", {}, ErrOverflow},
        {"beyond single range, negative", "-1e39", {}, ErrOverflow},
        {"beyond double range", "1e400", {}, ErrOverflow},
        {"huge exponent", "1e99999999999999999999", {}, ErrOverflow},
        {"end of file before a value", "1,  \r\n", {1}, ErrInputPastEndOfFile},
        {"empty file", "", {}, ErrInputPastEndOfFile},
    };
    for (const NumberCase& c : cases) {
        SCOPED_TRACE(c.fault);
        TextChannel ch(c.text);
        for (float expected : c.values) EXPECT_EQ(ch.InputNumber(), expected);
        if (c.errorAfter != 0) {
            EXPECT_EQ(ErrorOf([&] { ch.InputNumber(); }), c.errorAfter);
        } else {
            EXPECT_TRUE(ch.AtEndOfFile());
        }
    }
}

TEST(TextChannelLineInput, LineEndsOfEveryKindAndTheEndOfTheFile)
{
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
        {"a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"a\r\n", {"a"}},  // no phantom empty line after the last line end
        {"\r\n\n", {"", ""}},
        {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
        {"", {}},
    };
    for (const auto& [text, lines] : cases) {
        SCOPED_TRACE(text);
        TextChannel ch(text);
        for (const std::string& line : lines) EXPECT_EQ(ch.LineInput(), line);
        EXPECT_EQ(ErrorOf([&] { ch.LineInput(); }), ErrInputPastEndOfFile);
    }
}

TEST(TextChannelInputChars, ReadsLineBreaksAndStopsAtTheEnd)
{
    TextChannel ch("ab\r\ncd");
    EXPECT_EQ(ch.Length(), 6);
    EXPECT_EQ(ch.InputChars(4), "ab\r\n");
    EXPECT_EQ(ErrorOf([&] { ch.InputChars(3); }), ErrInputPastEndOfFile);
    EXPECT_EQ(ErrorOf([&] { ch.InputChars(-1); }), ErrInvalidProcedureCall);
    EXPECT_EQ(ch.InputChars(2), "cd");
}

int OpenDescriptors()
{
    int n = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++n;
    return n;
}

class FileChannelsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        dir_ = fs::temp_directory_path() / ("pemlo-channels-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
        path_ = (dir_ / "a.txt").string();
        std::ofstream(path_) << "1,2,3\r\n";
    }
    void TearDown() override { fs::remove_all(dir_); }
    fs::path dir_;
    std::string path_;
    FileChannels files_;
};

TEST_F(FileChannelsTest, FreeFileIsTheLowestNumberNotTaken)
{
    EXPECT_EQ(files_.FreeFile(), 1);
    for (Integer n = 1; n <= 3; ++n) files_.OpenForInput(n, path_);
    EXPECT_EQ(files_.FreeFile(), 4);
    files_.Close(2);
    EXPECT_EQ(files_.FreeFile(), 2);
    files_.Close(2);  // closing a closed channel does nothing
    for (Integer n = 4; n <= FileChannels::MaxChannel; ++n) files_.OpenForInput(n, path_);
    files_.OpenForInput(2, path_);
    EXPECT_EQ(ErrorOf([&] { files_.FreeFile(); }), ErrTooManyFiles);
}

TEST_F(FileChannelsTest, OpenErrors)
{
    files_.OpenForInput(1, path_);
    const std::vector<std::tuple<const char*, Integer, std::string, int>> cases = {
        {"channel taken", 1, path_, ErrFileAlreadyOpen},
        {"channel 0", 0, path_, ErrBadFileNameOrNumber},
        {"channel 256", 256, path_, ErrBadFileNameOrNumber},
        {"missing file", 2, (dir_ / "none.txt").string(), ErrFileNotFound},
        {"empty name", 2, "", ErrFileNotFound},
        {"a folder", 2, dir_.string(), ErrPathFileAccess},
        {"a device that never ends", 2, "/dev/zero", ErrPathFileAccess},
    };
    for (const auto& [fault, n, path, error] : cases) {
        SCOPED_TRACE(fault);
        EXPECT_EQ(ErrorOf([&, n = n, p = path] { files_.OpenForInput(n, p); }), error);
    }
    EXPECT_EQ(files_.OpenCount(), 1);  // a failed open takes no channel
    EXPECT_EQ(ErrorOf([&] { files_.Channel(2); }), ErrBadFileNameOrNumber);
}

TEST_F(FileChannelsTest, OpenChannelsHoldNoSystemHandle)
{
    const int before = OpenDescriptors();
    for (Integer n = 1; n <= 20; ++n) files_.OpenForInput(n, path_);
    EXPECT_EQ(OpenDescriptors(), before);
    fs::remove(path_);  // the text stays readable: it was read whole at open
    EXPECT_EQ(files_.Channel(20).LineInput(), "1,2,3");
}

}  // namespace
}  // namespace pemlo
