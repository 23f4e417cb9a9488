#include "runtime/FileChannels.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <tuple>
#include <vector>

#include "support/ErrorOf.h"

namespace pemlo {
namespace {

namespace fs = std::filesystem;
using test::ErrorOf;

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
