// pemlo-cli report: the page of each view in a PDF file of the paper asked for, the
// header whole above the charts at the resolution asked for, and the status of each
// failure with no PDF left behind. The PDF is read back with poppler's tools.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/CliRun.h"

namespace pemlo::cli::test {
namespace {

// What a command prints on standard output; empty when it cannot run.
std::string Output(const std::string& command, const ScratchDir& scratch)
{
    const std::string out = scratch.File(".tool");
    return std::system((command + " >'" + out + "' 2>/dev/null").c_str()) == 0 ? ReadAll(out) : std::string();
}

// The lowest edge, in points from the page's top, of the words of the header's second
// row: the charts start 600 twips (30 points) down and paint out anything below that.
double SecondHeaderRowBottom(const std::string& pdf, const ScratchDir& scratch)
{
    // One word per line: <word xMin=".." yMin=".." xMax=".." yMax="..">GWT:</word>
    // (read by hand: std::regex trips GCC 12's uninitialised-use warning under ASan).
    std::istringstream boxes(Output("pdftotext -bbox '" + pdf + "' -", scratch));
    double bottom = -1;
    for (std::string line; std::getline(boxes, line);) {
        const std::size_t at = line.find("yMax=\"");
        if (at == std::string::npos) continue;
        const std::string word = line.substr(line.find('>', at) + 1);
        for (const char* label : {"Location/No:</word>", "GWT:</word>", "Cone</word>", "No:</word>"})
            if (word == label) bottom = std::max(bottom, std::stod(line.substr(at + 6)));
    }
    return bottom;
}

TEST(ReportCommand, WritesOnePagePerViewOrEndsWithTheFailuresStatus)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no soundings directory";
    ScratchDir scratch;
    if (Output("command -v pdftotext", scratch).empty()) GTEST_SKIP() << "no poppler-utils";
    if (RunCli({"report", "--help"}, scratch).exitCode != 0) GTEST_SKIP() << "built without the report helper";
    const std::string pdf = scratch.File("out.pdf");
    const std::string sounding = PEMLO_SOUNDINGS_DIR "/b099543.txt";
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        const char* size;        // of the page, points
        const char* caption;     // the word only this view's charts show, if any
        std::string file = {};   // empty: the sounding
    } cases[] = {
        {{"--view", "cpt", "--paper", "letter", "--dpi", "300"}, 0, "792 x 612", ""},
        {{"--view", "results", "--paper", "a4"}, 0, "842 x 595", "Probability"},
        {{"--view", "UV", "--dpi", "1200"}, 0, "792 x 612", "In-situ"},
        {{"--view", "cpt", "--dpi", "2400"}, 0, "792 x 612", ""},
        {{"--view", "plan"}, 2, "", ""},
        {{"--pdf", "/nonexistent/folder/out.pdf"}, 1, "", ""},
        {{}, 3, "", "", "missing.txt"},
        // The PDF path under the rule of every output: no input, directory or device removed.
        {{"--pdf", "in.txt"}, 2, "", "", "in.txt"},
        {{"--pdf", "folder"}, 2, "", ""},
        {{"--pdf", "/dev/null"}, 2, "", ""},
    };
    std::filesystem::copy_file(sounding, scratch.File("in.txt"));
    std::filesystem::create_directory(scratch.File("folder"));
    for (const auto& c : cases) {
        std::vector<std::string> args{"report", c.file.empty() ? sounding : c.file, "--data-units", "si", "--number", "B099543"};
        args.insert(args.end(), c.arguments.begin(), c.arguments.end());
        if (std::find(args.begin(), args.end(), "--pdf") == args.end()) args.insert(args.end(), {"--pdf", pdf});
        SCOPED_TRACE(args[1] + " " + args[6] + " " + args[7]);
        std::filesystem::remove(pdf);
        const CliRun run = RunCli(args, scratch);
        ASSERT_EQ(run.exitCode, c.exitCode) << run.err;
        // Only the program's own lines (a message, an option's refusal and its hint, a record
        // line), none of Qt's (QStandardPaths, QPainter), printed or quoted as a cause.
        const auto qtName = [](char a, char b) { return a == 'Q' && std::isupper(static_cast<unsigned char>(b)); };
        for (const std::string& line : Lines(run.err))
            EXPECT_TRUE((line.starts_with("pemlo-cli: ") || line.starts_with("--") || line.starts_with("  ") ||
                         line == "Run with --help for more information.") &&
                        std::ranges::adjacent_find(line, qtName) == line.end()) << line;
        if (c.exitCode != 0) {
            EXPECT_FALSE(std::filesystem::exists(pdf));
            continue;
        }
        const std::string info = Output("pdfinfo '" + pdf + "'", scratch);
        EXPECT_NE(info.find("Pages:           1\n"), std::string::npos) << info;
        EXPECT_NE(info.find(c.size), std::string::npos) << info;
        const std::string text = Output("pdftotext '" + pdf + "' -", scratch);
        EXPECT_NE(text.find("B099543"), std::string::npos);
        for (const std::string caption : {"Probability", "In-situ"})
            EXPECT_EQ(text.find(caption) != std::string::npos, caption == c.caption) << caption;
        const double rowBottom = SecondHeaderRowBottom(pdf, scratch);
        EXPECT_GT(rowBottom, 0.0) << "the second header row is printed";
        EXPECT_LE(rowBottom, 30.0) << "the second header row stands above the charts";
    }
    EXPECT_TRUE(ReadAll(scratch.Path() / "in.txt") == ReadAll(sounding) && std::filesystem::is_directory(scratch.File("folder")))
        << "the input or a directory written over";
}

}  // namespace
}  // namespace pemlo::cli::test
