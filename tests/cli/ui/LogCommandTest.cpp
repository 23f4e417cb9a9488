// pemlo-cli log as a user runs it, the PDF read back with poppler's tools: the title
// block's fields from each format, the chart's count, the layers of `layers` on the log
// and chart pages, no word overlapping another, the page count at a scale, a depth on
// one line in every column of every page, the same bytes twice, fonts embedded, and the
// good inputs written when one fails.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "log/LogLayout.h"

namespace pemlo::cli::test {
namespace {

const std::string Formats = PEMLO_FORMATS_DIR;
const std::string Soundings = PEMLO_SOUNDINGS_DIR;

std::string Output(const std::string& command, const ScratchDir& scratch)
{
    const std::string out = scratch.File(".tool");
    return std::system((command + " >'" + out + "' 2>/dev/null").c_str()) == 0 ? ReadAll(out) : std::string();
}

// Skips unless the real files, poppler and the drawing helper are there.
bool CanRun(const ScratchDir& scratch)
{
    return !Formats.empty() && !Soundings.empty() && !Output("command -v pdftotext", scratch).empty() &&
           RunCli({"log", "--help"}, scratch).exitCode == 0;
}

int Pages(const std::string& pdf, const ScratchDir& scratch)
{
    const std::string info = Output("pdfinfo '" + pdf + "'", scratch);
    const std::size_t at = info.find("Pages:");
    return at == std::string::npos ? -1 : std::stoi(info.substr(at + 6));
}

// The text of a PDF (or of one page) with its line breaks turned to blanks.
std::string PdfText(const std::string& pdf, const ScratchDir& scratch, int page = 0)
{
    const std::string pages = page > 0 ? " -f " + std::to_string(page) + " -l " + std::to_string(page) : "";
    std::string text = Output("pdftotext -layout" + pages + " '" + pdf + "' -", scratch);
    for (char& c : text) c = c == '\n' ? ' ' : c;
    return text;
}

struct Word {
    double xMin = 0, yMin = 0, xMax = 0, yMax = 0;  // points from the page's top left
    std::string text;
};

std::vector<Word> Words(const std::string& pdf, int page, const ScratchDir& scratch)
{
    const std::string p = std::to_string(page);
    std::istringstream boxes(Output("pdftotext -bbox -f " + p + " -l " + p + " '" + pdf + "' -", scratch));
    std::vector<Word> words;
    Word w;
    char text[256] = {};
    for (std::string line; std::getline(boxes, line);)
        if (std::sscanf(line.c_str(), " <word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\" yMax=\"%lf\">%255[^<]", &w.xMin,
                        &w.yMin, &w.xMax, &w.yMax, text) == 5)
            w.text = text, words.push_back(w);
    return words;
}

// Every word below `from` (mm) is set in `points` or more (its box about 1.12 times
// that), stays on the page and overlaps no other.
void ExpectLegible(const std::vector<Word>& words, const log::LogLayout& layout, double points, double from)
{
    constexpr double Pt = 72 / 25.4;  // points a millimetre
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Word& a = words[i];
        if (a.yMin < from * Pt) continue;
        EXPECT_GE(a.yMax - a.yMin, 1.1 * points) << a.text;
        EXPECT_TRUE(a.xMin >= 0 && a.xMax <= layout.pageWidth * Pt && a.yMax <= layout.pageHeight * Pt) << a.text;
        for (std::size_t j = i + 1; j < words.size(); ++j)
            EXPECT_FALSE(std::min(a.xMax, words[j].xMax) - std::max(a.xMin, words[j].xMin) > 0.5 &&
                         std::min(a.yMax, words[j].yMax) - std::max(a.yMin, words[j].yMin) > 0.5)
                << a.text << " overlaps " << words[j].text;
    }
}

TEST(LogCommand, PagesStateWhatTheInputAndOptionsGive)
{
    ScratchDir scratch;
    if (!CanRun(scratch)) GTEST_SKIP() << "no real files, poppler-utils or drawing helper";
    const std::string pdf = scratch.File("log.pdf");
    const std::string longName = scratch.File("Northern_junction_widening_scheme_CPT_14_west_embankment_rev2.txt");
    std::filesystem::copy_file(Soundings + "/b003688.txt", longName);
    const struct {
        const char* fault;
        std::string file;
        std::vector<std::string> options;
        std::vector<std::string> texts;
    } cases[] = {
        {"GEF #XYID and #ZID not read", Formats + "/gef/bro_CPT000000003688.gef", {},
         {"x 91931, y 438294 (EPSG:28992)", "-1.75 m GEF 31000 (NAP)", "Date: 2000-03-06", "Page 1 of 2"}},
        {"BRO delivered location and offset not read", Formats + "/bro-xml/CPT000000003688.xml", {},
         {"x 91931, y 438294 (EPSG:28992)", "-1.75 m NAP", "Sounding: CPT000000003688"}},
        {"AGS4 LOCA_NATE and LOCA_NATN, or the pushes' area ratios, not read; a long project title cut; the "
         "axis sized by the interval grid's 74.36 m, not the last reading's 64.30 m (68 m a page at 1:350)",
         Formats + "/ags/borssele_WFS1-2A.ags", {"--scale", "350"},
         {"x 502763.64, y 5732537.58 (national grid)", "Surface level: not stated", "0.5 to 0.75 (file: SCPG_CAR)",
          "end of sounding 64.30 m", "SECTOR, NORTH SEA", "Page 1 of 2"}},
        {"GEF u2 and area ratio not shown; a thickness in feet on a page in metres",
         Formats + "/gef/mos_inclination.gef", {"--graph-units", "english"},
         {"u2, u0 (kPa)", "0.8 (file: #MEASUREMENTVAR 3)", "Coordinates: x 79578.38, y 424838.97",
          "Min. layer thickness: 0.4999 m (1.64 ft)"}},
        {"the options not taken over the file's or the defaults; long fields cut off or run into others",
         longName,
         {"--data-units", "si", "--gwt", "1.5", "--unit-weight", "19", "--min-thickness", "1", "--number", "P-17",
          "--title", "Northern junction widening scheme, west embankment line C, second revision"},
         {"Project number: P-17", "Groundwater: 1.5 m (option)", "19 kN/m3 (option)", "Min. layer thickness: 1 m",
          "Coordinates: not stated", "0.8 (assumed)", "second revision", "Page 1 of 2"}},
        {"1:100 on A4 is not 21.2 m a page", Soundings + "/b003688.txt",
         {"--data-units", "si", "--paper", "a4", "--scale", "100"}, {"Page 1 of 3"}},
        {"readings beyond the chart's edges left out unsaid (Fr over 10 %)", Soundings + "/pg_n0425.txt",
         {"--data-units", "si"},
         {"1034 valid readings of 1039; 270 beyond the chart's edges, drawn open on the edge"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        std::vector<std::string> args{"log", c.file, "--pdf", pdf};
        args.insert(args.end(), c.options.begin(), c.options.end());
        const CliRun run = RunCli(args, scratch);
        ASSERT_EQ(run.exitCode, 0) << run.err;
        const std::string text = PdfText(pdf, scratch);
        for (const std::string& expected : c.texts) EXPECT_NE(text.find(expected), std::string::npos) << expected;
        const bool a4 = std::find(c.options.begin(), c.options.end(), "a4") != c.options.end();
        const log::LogLayout page = log::MakeLayout(a4 ? log::Paper::A4 : log::Paper::Letter, false, 1, 0);
        ExpectLegible(Words(pdf, 1, scratch), page, 4.5, 0);
    }
}

TEST(LogCommand, LayersOnTheLogAndChartPagesAreThoseOfTheLayersCommand)
{
    ScratchDir scratch;
    if (!CanRun(scratch)) GTEST_SKIP() << "no real files, poppler-utils or drawing helper";
    const std::string pdf = scratch.File("log.pdf");
    const std::string gef = Formats + "/gef/bro_CPT000000003688.gef";
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{gef}, {gef, "--min-thickness", "2"},
          // 49 layers: a legend that once shrank to 3.7 points with its markers touching
          {Soundings + "/bwfs12.txt", "--data-units", "si", "--min-thickness", "0.1"}}) {
        std::vector<std::string> log{"log", "--pdf", pdf};
        std::vector<std::string> layers{"layers"};
        log.insert(log.end(), options.begin(), options.end());
        layers.insert(layers.end(), options.begin(), options.end());
        ASSERT_EQ(RunCli(log, scratch).exitCode, 0);
        const CliRun csv = RunCli(layers, scratch);
        ASSERT_EQ(csv.exitCode, 0);
        const std::string logPage = PdfText(pdf, scratch, 1), chart = PdfText(pdf, scratch, 2);
        const auto rows = Lines(csv.out);
        ASSERT_GT(rows.size(), 2u);
        for (std::size_t i = 1; i < rows.size(); ++i) {
            int number = 0;
            double top = 0, bottom = 0;
            char soil[16] = {}, label[96];
            ASSERT_EQ(std::sscanf(rows[i].c_str(), "%d,%lf,%lf,%*f,%15[^,]", &number, &top, &bottom, soil), 4);
            std::snprintf(label, sizeof label, "%d %s %.2f\xE2\x80\x93%.2f m, zone", number, soil,
                          top < 0.005 ? 0.0 : top, bottom);  // the page reads -0.0001 as 0.00
            EXPECT_NE(logPage.find(label), std::string::npos) << label;
            EXPECT_NE(chart.find(label), std::string::npos) << "the chart's legend: " << label;
        }
        const log::LogLayout letter = log::MakeLayout(log::Paper::Letter, false, 1.0, 0);
        ExpectLegible(Words(pdf, 2, scratch), letter, 6.0, letter.titleBlock.Bottom());
    }
}

// A page in grey at 300 dpi without smoothing, so that every line keeps its shade.
struct Picture {
    static constexpr double PixelsPerMm = 300 / 25.4;
    int width = 0, height = 0;
    std::string grey;
    bool Is(double xMm, int row, int shade) const
    {
        const auto at = static_cast<std::size_t>(row) * width + static_cast<std::size_t>(xMm * PixelsPerMm);
        return std::abs(static_cast<unsigned char>(grey[at]) - shade) < 4;
    }
};

Picture Draw(const std::string& pdf, int page, const ScratchDir& scratch)
{
    const std::string prefix = scratch.File("page"), p = std::to_string(page);
    Output("pdftoppm -gray -r 300 -aa no -aaVector no -singlefile -f " + p + " -l " + p + " '" + pdf + "' '" + prefix +
               "'",
           scratch);
    const std::string pgm = ReadAll(prefix + ".pgm");
    Picture picture;
    int header = 0;
    std::sscanf(pgm.c_str(), "P5 %d %d 255%n", &picture.width, &picture.height, &header);
    picture.grey = pgm.substr(static_cast<std::size_t>(header) + 1);
    return picture;
}

// The heights (mm) of the lines across a column: rows where most of 15 points across it
// hold the given grey, a line's rows taken together at their middle.
std::vector<double> LinesAcross(const Picture& picture, const log::Box& b, int grey)
{
    std::vector<double> lines;
    int first = -1;
    for (int row = static_cast<int>(b.top * Picture::PixelsPerMm) + 3;
         row < static_cast<int>(b.Bottom() * Picture::PixelsPerMm) - 3; ++row) {
        int hits = 0;
        for (int k = 1; k < 16; ++k) hits += picture.Is(b.left + k * b.width / 16, row, grey) ? 1 : 0;
        if (hits >= 8 && first < 0) first = row;
        if (hits < 8 && first >= 0) lines.push_back((first + row) / 2.0 / Picture::PixelsPerMm), first = -1;
    }
    return lines;
}

TEST(LogCommand, EveryColumnOfEveryPageStandsADepthOnTheSameLine)
{
    ScratchDir scratch;
    if (!CanRun(scratch) || Output("command -v pdftoppm", scratch).empty()) GTEST_SKIP() << "no real files or poppler";
    const std::string pdf = scratch.File("log.pdf");
    const int scale = 40;  // 8.48 m a page: three log pages of 24.46 m
    const std::string gef = Formats + "/gef/bro_CPT000000003688.gef";
    const CliRun run = RunCli({"log", gef, "--paper", "a4", "--scale", std::to_string(scale), "--pdf", pdf}, scratch);
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const log::LogLayout layout = log::MakeLayout(log::Paper::A4, false, 24.46, scale);
    ASSERT_EQ(layout.pages.size(), 3u);
    for (std::size_t p = 0; p < layout.pages.size(); ++p) {
        const log::DepthAxis& axis = layout.pages[p];
        const Picture picture = Draw(pdf, static_cast<int>(p) + 1, scratch);
        const double step = log::DepthStep(axis, 7.0);
        std::vector<double> depths;  // inside the page: its ends are the frames' lines
        for (double d = std::floor(axis.topDepth / step + 1) * step; d < axis.bottomDepth - 1e-9; d += step)
            depths.push_back(d);
        ASSERT_GE(depths.size(), 4u);
        for (const log::Column& column : layout.columns) {
            if (column.kind == log::ColumnKind::Layers) continue;  // blocks, no grid
            SCOPED_TRACE("page " + std::to_string(p + 1) + ", column " + std::to_string(static_cast<int>(column.kind)));
            // The depth column's ticks are black marks at its right edge; the others draw a grey grid.
            const bool ticks = column.kind == log::ColumnKind::Depth;
            const log::Box b = ticks ? log::Box{column.box.Right() - 0.9, column.box.top, 0.6, column.box.height}
                                     : column.box;
            const std::vector<double> lines = LinesAcross(picture, b, ticks ? 0 : 200);
            ASSERT_EQ(lines.size(), depths.size());
            for (std::size_t i = 0; i < depths.size(); ++i) EXPECT_NEAR(lines[i], axis.Y(depths[i]), 0.2) << depths[i];
        }
    }
}

TEST(LogCommand, SameInputSameBytesWithEveryFontEmbedded)
{
    ScratchDir scratch;
    if (!CanRun(scratch)) GTEST_SKIP() << "no real files, poppler-utils or drawing helper";
    const std::vector<std::string> args{"log", Formats + "/ags/borssele_WFS1-2A.ags",
                                        Formats + "/gef/mos_inclination.gef", "--pdf"};
    std::string bytes[2];
    for (int run = 0; run < 2; ++run) {
        const std::string pdf = scratch.File("run" + std::to_string(run) + ".pdf");
        auto a = args;
        a.push_back(pdf);
        ::setenv("SOURCE_DATE_EPOCH", "1764067800", 1);
        const CliRun r = RunCli(a, scratch);
        ::unsetenv("SOURCE_DATE_EPOCH");
        ASSERT_EQ(r.exitCode, 0) << r.err;
        bytes[run] = ReadAll(pdf);
        EXPECT_NE(Output("pdfinfo '" + pdf + "'", scratch).find("Tue Nov 25 10:50:00 2025"), std::string::npos);
        const auto fonts = Lines(Output("pdffonts '" + pdf + "'", scratch));
        ASSERT_GT(fonts.size(), 2u);
        for (std::size_t i = 2; i < fonts.size(); ++i) EXPECT_NE(fonts[i].find(" yes "), std::string::npos) << fonts[i];
    }
    EXPECT_TRUE(bytes[0] == bytes[1]) << "two runs gave different bytes";
    ::setenv("SOURCE_DATE_EPOCH", "soon", 1);
    EXPECT_EQ(RunCli({"log", Formats + "/gef/mos_inclination.gef", "--pdf", scratch.File("x.pdf")}, scratch).exitCode,
              2);
    ::unsetenv("SOURCE_DATE_EPOCH");
}

TEST(LogCommand, AFailedInputLeavesTheOthersWritten)
{
    ScratchDir scratch;
    if (!CanRun(scratch)) GTEST_SKIP() << "no real files, poppler-utils or drawing helper";
    const std::string good = Formats + "/gef/mos_inclination.gef";
    const std::string refused = Formats + "/gef/voids_small.gef";  // no fs column
    const std::string pdf = scratch.File("all.pdf");
    const struct {
        const char* fault;
        std::vector<std::string> args;
        int exitCode;
        std::vector<std::string> files;  // written, with their page counts
        std::vector<int> pages;
    } cases[] = {
        {"one PDF: the good inputs' pages, the first failure's status",
         {"log", good, refused, "missing.gef", good, "--pdf", pdf}, 3, {pdf}, {4}},
        {"a folder: a PDF per good input", {"log", good, refused, "--out-dir", scratch.File("logs")}, 3,
         {scratch.File("logs/mos_inclination.pdf")}, {2}},
        {"no output named", {"log", good}, 2, {}, {}},
        {"both outputs named", {"log", good, "--pdf", pdf, "--out-dir", scratch.File("logs")}, 2, {}, {}},
        {"the PDF over an input", {"log", scratch.File("copy.gef"), "--pdf", scratch.File("copy.gef")}, 2, {}, {}},
        {"the PDF over a directory", {"log", good, "--pdf", scratch.Path().string()}, 2, {}, {}},
    };
    std::filesystem::copy_file(good, scratch.File("copy.gef"));
    const std::string copy = ReadAll(scratch.File("copy.gef"));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        std::filesystem::remove(pdf);
        const CliRun run = RunCli(c.args, scratch);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err;
        for (std::size_t i = 0; i < c.files.size(); ++i) EXPECT_EQ(Pages(c.files[i], scratch), c.pages[i]);
        if (c.exitCode == 3) {
            EXPECT_NE(run.err.find("voids_small.gef"), std::string::npos) << run.err;
            const std::string summary = "1 of 2 files written to " + scratch.File("logs") + ", 1 failed";
            EXPECT_TRUE(c.args.back() != scratch.File("logs") || run.out.find(summary) != std::string::npos) << run.out;
        }
    }
    EXPECT_EQ(ReadAll(scratch.File("copy.gef")), copy) << "an input was overwritten";
    EXPECT_FALSE(std::filesystem::exists(scratch.File("logs/voids_small.pdf")));
}

}  // namespace
}  // namespace pemlo::cli::test
