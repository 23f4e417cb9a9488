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
    try { step(); } catch (const RunTimeError& e) { return e.Number(); }
    return 0;
}

TEST(TextChannelInputNumber, ReadsValuesAndRejectsWhatIsNotANumber)
{
    // What goes wrong if the case fails, the text, the values read from it, and the error
    // of the next read after them (0: the file has ended instead).
    const std::vector<std::tuple<const char*, std::string, std::vector<float>, int>> cases = {
        {"blanks and tabs, before a comma too", "1.5 12.3\t,0.4 ,7", {1.5f, 12.3f, 0.4f, 7}, 0},
        {"exponent letters D, d, E, e", "1D3,2d-2,3E+1,4e0", {1000.0f, 0.02f, 30.0f, 4.0f}, 0},
        {"signs and a bare decimal point", "+1.5,-2,-.5,5.", {1.5f, -2.0f, -0.5f, 5.0f}, 0},
        {"CR LF, LF and lone CR all end a line", "1\r\n2\n3\r4\r\n", {1, 2, 3, 4}, 0},
        {"largest single value; underflow is zero", "3.4028234e38,1e-400", {3.4028234e38f, 0.0f}, 0},
        {"number followed by text", "12abc", {}, ErrTypeMismatch},
        {"exponent without digits", "1e", {}, ErrTypeMismatch},
        {"infinity spelled out", "inf", {}, ErrTypeMismatch},
        {"beyond single range", "3.5e38", {}, ErrOverflow},
        {"beyond double range", "-1e400", {}, ErrOverflow},
        {"end of file before a value", "1,  \r\n", {1}, ErrInputPastEndOfFile},
        {"empty file", "", {}, ErrInputPastEndOfFile},
    };
    for (const auto& [fault, text, values, errorAfter] : cases) {
        SCOPED_TRACE(fault);
        TextChannel ch(text);
        for (float expected : values) EXPECT_EQ(ch.InputNumber(), expected);
        if (errorAfter != 0) {
            EXPECT_EQ(ErrorOf([&] { ch.InputNumber(); }), errorAfter);
        } else {
            EXPECT_TRUE(ch.AtEndOfFile());
        }
    }
}

TEST(FileChannels, ChannelNumbersAndOpenErrors)
{
    const fs::path dir = fs::temp_directory_path() / ("pemlo-channels-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string path = (dir / "a.txt").string();
    std::ofstream(path) << "1,2,3\r\n";
    FileChannels files;
    EXPECT_EQ(files.FreeFile(), 1);
    for (Integer n = 1; n <= 3; ++n) files.OpenForInput(n, path);
    files.Close(2);
    files.Close(2);  // closing a closed channel does nothing
    EXPECT_EQ(files.FreeFile(), 2);
    const std::vector<std::tuple<const char*, Integer, std::string, int>> cases = {
        {"channel taken", 1, path, ErrFileAlreadyOpen},
        {"channel 0", 0, path, ErrBadFileNameOrNumber},
        {"channel 256", 256, path, ErrBadFileNameOrNumber},
        {"missing file", 2, (dir / "none.txt").string(), ErrFileNotFound},
        {"a folder", 2, dir.string(), ErrPathFileAccess},
        {"a device that never ends", 2, "/dev/zero", ErrPathFileAccess},
    };
    for (const auto& [fault, n, p, error] : cases)
        EXPECT_EQ(ErrorOf([&, n = n, p = p] { files.OpenForInput(n, p); }), error) << fault;
    EXPECT_EQ(files.OpenCount(), 2);  // a failed open takes no channel
    EXPECT_EQ(ErrorOf([&] { files.Channel(2); }), ErrBadFileNameOrNumber);
    files.Close(3);
    for (Integer n = 2; n <= FileChannels::MaxChannel; ++n) files.OpenForInput(n, path);
    EXPECT_EQ(ErrorOf([&] { files.FreeFile(); }), ErrTooManyFiles);
    fs::remove_all(dir);
}

}  // namespace
}  // namespace pemlo
