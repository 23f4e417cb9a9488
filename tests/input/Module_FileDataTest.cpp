#include "input/Module_FileData.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <vector>

namespace pemlo {
namespace {

namespace fs = std::filesystem;

std::string TitleLines(int n)
{
    std::string s;
    while (n-- > 0) s += "title line\r\n";
    return s;
}

// Reading k is "k.5,k+10,0.(k mod 10)".
std::string Readings(int n, const char* lineEnd = "\r\n")
{
    std::string s;
    for (int k = 1; k <= n; ++k) s += std::to_string(k) + ".5," + std::to_string(k + 10) + ",0." + std::to_string(k % 10) + lineEnd;
    return s;
}

long OpenDescriptors() { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); }

class ModuleFileDataTest : public ::testing::Test {
protected:
    void SetUp() override { fs::create_directories(dir_); }
    void TearDown() override { fs::remove_all(dir_); }

    // Loads a file with this text as the open-file screen does, after a load of 77 readings.
    ReadReport Load(const std::string& text, int titleLines)
    {
        d_.DataFileName = (dir_ / (std::to_string(++files_made_) + ".txt")).string();
        std::ofstream(d_.DataFileName, std::ios::binary) << text;
        d_.FileNum = files_.FreeFile();
        d_.NumTitleLines = static_cast<Integer>(titleLines);
        d_.NumLines = 77;
        return LoadDataFile(d_, files_);
    }

    const fs::path dir_ = fs::temp_directory_path() / ("pemlo-filedata-" + std::to_string(::getpid()));
    int files_made_ = 0;
    Declarations d_;
    FileChannels files_;
};

struct ReadCase {
    const char* fault;
    std::string text;
    int titleLines;
    ReadOutcome outcome;
    ReadFailure failure;
    int columns;         // the counter's NumColumns (0: the counter failed and the load ended)
    int numLines;        // NumLines afterwards (77: unchanged)
    std::string said;    // the report's sentence (empty: not checked)
    std::vector<std::array<float, 4>> stored;  // index, depth, tip, sleeve
};

TEST_F(ModuleFileDataTest, ReaderOutcomes)
{
    using O = ReadOutcome;
    using F = ReadFailure;
    const auto before = OpenDescriptors();
    const std::vector<ReadCase> cases = {
        {"4001 readings: those before stay", TitleLines(10) + Readings(4001), 10, O::Failed, F::TooManyReadings, 3, 77,
         "more than 4000 readings; the 4001st begins on line 4011", {{4000, 4000.5f, 4010, 0.0f}}},
        {"4000 readings, LF line ends", TitleLines(10) + Readings(4000, "\n"), 10, O::Loaded, F::None, 3, 4000, "",
         {{1, 1.5f, 11, 0.1f}, {250, 250.5f, 260, 0.0f}}},
        {"blank lines after the last reading", "1,2,3\r\n\r\n  \r\n\t\r\n", 0, O::Loaded, F::None, 3, 1, "", {}},
        {"the last character is never counted", "1,2,3,\r\n4,5,6,\r\n", 0, O::Loaded, F::None, 3, 2, "", {{2, 4, 5, 6}}},
        {"leading and trailing blanks are not counted", "  1,2,3  \r\n", 0, O::Loaded, F::None, 3, 1, "", {{1, 1, 2, 3}}},
        {"4 columns: the fourth is discarded", "1,2,3,99\r\n4,5,6,99\r\n", 0, O::Loaded, F::None, 4, 2, "", {{2, 4, 5, 6}}},
        {"5 columns: two discarded", "1,2,3,98,99\r\n4,5,6,98,99", 0, O::Loaded, F::None, 5, 2, "", {{2, 4, 5, 6}}},
        {"comma and blank count twice: read out of step", "1.5, 12.3, 0.4\r\n2, 13, 0.5\r\n3, 14, 0.6\r\n4, 15, 0.7\r\n5, 16, 0.8\r\n",
         0, O::Loaded, F::None, 5, 3, "", {{1, 1.5f, 12.3f, 0.4f}, {2, 0.5f, 3, 14}, {3, 15, 0.7f, 5}}},
        {"three blanks count three", TitleLines(10) + "1   2   3\r\n", 10, O::Failed, F::TooManyColumns, 7, 77,
         "the first data line (line 11) has 7 columns; at most 5 can be read", {}},
        {"a leading tab is counted: the fourth value is missing", "\t1,2,3\r\n", 0, O::Failed, F::PastEndOfFile, 4, 77,
         "line 1: \"\\t1,2,3\" begins a reading of 4 values, but the file ends before its last value", {}},
        {"empty field; earlier readings stay", TitleLines(3) + "1,2,3\r\n4,,6\r\n", 3, O::Failed, F::NotANumber, 3, 77,
         "line 5: \"4,,6\" holds a value that is not a number", {{1, 1, 2, 3}}},
        {"value beyond single range", "1,2,3\r\n4,1e39,6\r\n", 0, O::Failed, F::OutOfRange, 3, 77, "", {}},
        {"D and E exponents, signs, bare points, the largest single, underflow to 0, CR and LF line ends",
         "1D1,+2.,-.5\r2e-1,3.4028234e38,1e-400\n", 0, O::Loaded, F::None, 3, 2, "", {{1, 10, 2, -0.5f}, {2, 0.2f, 3.4028234e38f, 0}}},
        {"inf is no number, nor a number running into text", "1,inf,3\r\n", 0, O::Failed, F::NotANumber, 3, 77, "", {}},
        {"file ends in the middle of a reading", "1,2,3\r\n4,5\r\n", 0, O::Failed, F::PastEndOfFile, 3, 77,
         "line 2: \"4,5\" begins a reading of 3 values, but the file ends before its last value", {}},
        {"text, shown as the user's code page", "1,\t2\x80,3\r\n", 0, O::Failed, F::NotANumber, 4, 77,
         "line 1: \"1,\\t2\u20AC,3\" holds a value that is not a number", {}},
        {"first data line of tabs only: no empty load", "\t\t\t\r\n", 0, O::Failed, F::PastEndOfFile, 3, 77, "", {}},
        {"an empty first data line: 1 column never ends", TitleLines(1) + "\r\n1,2,3\r\n", 1, O::NeverEnds, F::None, 1, 77,
         "the first data line (line 2) has 1 column; depth, tip resistance and sleeve friction need at least 3", {}},
        {"the file ends inside its title lines", TitleLines(4), 10, O::Failed, F::EndsInTitleLines, 0, 77,
         "the file ends inside its 10 title lines (it has 4 lines)", {}},
        {"no data line after the title lines", TitleLines(10), 10, O::Failed, F::EndsInTitleLines, 0, 77,
         "the file has no data line after its 10 title lines", {}},
        {"a first data line too long for the 16-bit counter", std::string(40000, '1') + "\r\n", 0, O::Failed,
         F::LineTooLong, 0, 77, "the first data line (line 1) is too long to count its columns (more than 32768 characters)", {}},
    };
    for (const ReadCase& c : cases) {
        SCOPED_TRACE(c.fault);
        d_.FileReadError = 1;  // neither outcome of a load: shows whether this one set it
        d_.NumColumns = 0;
        ReadReport r;
        try {
            r = Load(c.text, c.titleLines);
        } catch (const RunTimeError& e) {  // the desktop program ends silently here
            r = ReportCountError(e, d_, files_);
        }
        EXPECT_EQ(r.outcome, c.outcome) << r.Describe();
        EXPECT_EQ(r.failure, c.failure) << r.Describe();
        EXPECT_EQ(d_.NumColumns, c.columns);
        EXPECT_EQ(d_.NumLines, c.numLines);
        const Integer readError[] = {VbFalse, VbTrue, 1};  // Loaded, Failed, NeverEnds
        EXPECT_EQ(d_.FileReadError, c.columns == 0 ? 1 : readError[static_cast<int>(c.outcome)]);
        EXPECT_EQ(files_.IsOpen(d_.FileNum), c.outcome != O::Loaded);  // only success closes
        EXPECT_TRUE(c.said.empty() || r.Describe() == c.said) << r.Describe();
        for (const auto& [i, depth, tip, sleeve] : c.stored) {
            const int k = static_cast<int>(i);
            EXPECT_EQ((std::array{d_.Depth[k], d_.Q_Tip[k], d_.Q_Sleeve[k]}), (std::array{depth, tip, sleeve})) << k;
        }
    }
    EXPECT_EQ(OpenDescriptors(), before);  // channels kept by failed loads hold no system handle
}

// Random files over the characters that matter to the reader, and huge ones: every
// one ends in a report or a counter error, quickly.
TEST_F(ModuleFileDataTest, AnyBytesEndInADefinedOutcome)
{
    const std::string alphabet = std::string("0123456789.,eEdD+- \t\r\n\r\nx") + '\0';
    std::uint32_t seed = 12345;
    std::vector<std::string> texts = {std::string(10'000'000, '7'), std::string(10'000'000, ','),
                                      "1,2,3\r\n" + std::string(10'000'000, ' '), Readings(200'000)};
    for (int k = 0; k < 300; ++k) {
        std::string& t = texts.emplace_back((seed = seed * 1664525u + 1013904223u) % 200, ' ');
        for (char& c : t) c = alphabet[(seed = seed * 1664525u + 1013904223u) % alphabet.size()];
    }
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t k = 0; k < texts.size(); ++k) {
        try {
            EXPECT_FALSE(Load(texts[k], k < 4 ? 0 : static_cast<int>(k % 3)).Describe().empty());
            EXPECT_TRUE(d_.NumLines == 77 || (d_.NumLines >= 0 && d_.NumLines <= MaxReadings));
        } catch (const RunTimeError&) {  // the counter failed: the screen ends silently
        }
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace pemlo
