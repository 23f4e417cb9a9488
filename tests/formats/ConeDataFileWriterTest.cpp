// The plain cone data file convert writes: numbers that the program's own reader turns
// back into the very same bits, and the layout the desktop program is told to expect.
#include <gtest/gtest.h>

#include <sstream>

#include <cstring>
#include <limits>

#include "formats/ConeDataFileWriter.h"
#include "runtime/FileChannels.h"

namespace pemlo::formats {
namespace {

TEST(ConeDataFileWriter, EveryNumberReadsBackBitForBitThroughTheReader)
{
    float hardest = 0;  // the one normal single value whose shortest text, read as a double, rounds wrong
    const std::uint32_t bits = 0x15ae43fd;
    std::memcpy(&hardest, &bits, sizeof bits);
    const struct { const char* catches; float value; } cases[] = {
        {"shortest text read as a double and stored single rounds twice", hardest},
        {"its negative", -hardest},
        {"negative zero keeps its sign", -0.0f},
        {"the smallest subnormal", std::numeric_limits<float>::denorm_min()},
        {"the largest single value", std::numeric_limits<float>::max()},
        {"a depth", 19.97f},
    };
    for (const auto& c : cases) {
        const std::string text = RoundTripText(c.value);
        TextChannel channel(text);
        const float back = channel.InputNumber();
        EXPECT_EQ(std::memcmp(&back, &c.value, sizeof back), 0) << c.catches << ": " << text;
    }
    EXPECT_NE(RoundTripText(hardest), "7.038531e-26");
}

TEST(ConeDataFileWriter, TenTitleLinesThenOneReadingPerLineWithinTheRange)
{
    ImportedSounding s;
    s.id = "S1";
    s.depth = {0.1f, 0.2f, 0.3f};
    s.qc = {1, 2, 3};
    s.fs = {0.01f, 0.02f, 0.03f};
    const ConeDataFile file = ConeDataFileOf(s, {"N\r\n1", "", "", "", "", ""}, "x.gef", 0.2, 0.3);
    ASSERT_EQ(file.refusal, "");
    std::ostringstream written;
    WriteConeDataFile(written, file);
    const std::string text = written.str();
    std::size_t data = 0;  // where the line after the 10 title lines begins
    for (int i = 0; i < 10; ++i) data = text.find("\r\n", data) + 2;
    EXPECT_EQ(text.substr(data), "0.2,2,0.02\r\n0.3,3,0.03\r\n");  // a line break in a field stays in its line
    EXPECT_NE(ConeDataFileOf(s, {}, "x.gef", 5.0, {}).refusal.find("no readings between 5 and the bottom"), std::string::npos);
}

}  // namespace
}  // namespace pemlo::formats
