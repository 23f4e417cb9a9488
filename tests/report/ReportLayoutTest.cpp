// The page layout of the printed report, checked on a landscape Letter page at 600 dpi
// (15840 by 12240 twips, 2.4 twips per pixel) without any printer.
#include <gtest/gtest.h>

#include "report/ReportLayout.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

constexpr std::int32_t LetterWide = 15840;
constexpr std::int32_t LetterHigh = 12240;
constexpr double Px600 = 1440.0 / 600;

ProjectTexts SomeProject()
{
    return ProjectTexts{QStringLiteral("P-117"), QStringLiteral("Harbour quay"),
                        QStringLiteral("12/05/1998 10:15"), QStringLiteral("CPT 4"),
                        QStringLiteral("2.5 m"), QStringLiteral("C-10")};
}

ReportLayout Letter600(int chartCount, const ProjectTexts& texts = SomeProject())
{
    return LayoutReport(ComputePageQuantities(LetterWide, LetterHigh, Px600, Px600), chartCount, texts);
}

TEST(ReportLayout, PageQuantitiesOfLetterAt600Dpi)
{
    const PageQuantities q = ComputePageQuantities(LetterWide, LetterHigh, Px600, Px600);
    EXPECT_EQ(q.Wp, 15048.0f);
    EXPECT_EQ(q.Hp, 11628.0f);
    EXPECT_NEAR(q.m, 41.667, 0.0005);
}

TEST(ReportLayout, HeaderFrameMixesPixelsAndTwips)
{
    const ReportLayout r = Letter600(3);
    EXPECT_NEAR(r.frameLeft, 41.667, 0.0005);
    EXPECT_NEAR(r.frameTop, 41.667, 0.0005);
    EXPECT_EQ(r.frameRight, 15048.0f);
    EXPECT_EQ(r.frameBottom, 548.72f);
}

TEST(ReportLayout, HeaderPiecesStandAtTheirPositions)
{
    struct Case {
        int piece;
        double x;
        double y;
        PieceWeight weight;
    };
    const Case cases[] = {
        {0, 208.33, 166.67, PieceWeight::Normal},   {1, 1652.33, 166.67, PieceWeight::Bold},
        {2, 5016, 166.67, PieceWeight::Unchanged},  {3, 12882, 166.67, PieceWeight::Normal},
        {4, 13604, 166.67, PieceWeight::Bold},      {5, 5016, 383.27, PieceWeight::Normal},
        {6, 12882, 383.27, PieceWeight::Normal},    {7, 13748, 383.27, PieceWeight::Bold},
    };
    const ReportLayout r = Letter600(3);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.piece + 1);
        const HeaderPiece& p = r.pieces[static_cast<std::size_t>(c.piece)];
        EXPECT_NEAR(p.x, c.x, 0.005);
        EXPECT_NEAR(p.y, c.y, 0.005);
        EXPECT_EQ(p.weight, c.weight);
    }
}

// Separators as text: ";" runs on, "," moves to the next print zone.
std::string Joined(const HeaderPiece& piece)
{
    std::string s;
    for (std::size_t i = 0; i < piece.items.size(); ++i) {
        if (i > 0) s += piece.items[i].before == PrintSeparator::Join ? ";" : ",";
        s += piece.items[i].text.toStdString();
    }
    return s;
}

TEST(ReportLayout, HeaderTextsWithFullAndEmptyProjectFields)
{
    struct Case {
        const char* name;
        ProjectTexts texts;
        std::array<const char*, 8> printed;
    };
    const Case cases[] = {
        {"filled", SomeProject(),
         {"Project Number: ", "P-117", "Title: ;Harbour quay", "Date: ", "12/05/1998 10:15",
          "Location/No: ;CPT 4,     GWT: ;2.5 m", "Cone No: ", "C-10"}},
        // Empty fields leave their labels standing with nothing after them.
        {"empty", ProjectTexts{},
         {"Project Number: ", "", "Title: ;", "Date: ", "", "Location/No: ;,     GWT: ;", "Cone No: ", ""}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const ReportLayout r = Letter600(4, c.texts);
        for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(Joined(r.pieces[i]), c.printed[i]) << "piece " << i + 1;
    }
}

TEST(ReportLayout, ChartBandAndEdgesByChartCount)
{
    struct Case {
        int count;
        std::vector<std::int32_t> edges;
    };
    // 1567.5 and 4702.5 round to the even neighbour: 1568 and 4702.
    const std::vector<std::int32_t> four = {42, 1568, 3135, 4702, 6270};
    const Case cases[] = {
        {3, {42, 2090, 4180, 6270}}, {4, four}, {2, four}, {5, four}, {0, four}, {-3, four},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.count);
        const ReportLayout r = Letter600(c.count);
        EXPECT_EQ(r.chartTop, 250);
        EXPECT_EQ(r.chartBottom, 4803);
        EXPECT_EQ(r.edges, c.edges);
    }
}

TEST(ReportLayout, OtherResolutionsKeepTheLastEdgeAtTheUsableWidth)
{
    // A 300 dpi A4 page: edges halve with the resolution, the header does not move
    // with it but for the margin unit.
    const PageQuantities q = ComputePageQuantities(16838, 11906, 4.8, 4.8);
    const ReportLayout r = LayoutReport(q, 3, SomeProject());
    EXPECT_EQ(q.Wp, 15996.1f);
    EXPECT_NEAR(q.m, 20.833, 0.0005);
    EXPECT_EQ(r.edges, (std::vector<std::int32_t>{21, 1111, 2222, 3333}));
    EXPECT_EQ(r.chartTop, 125);
    EXPECT_EQ(r.chartBottom, 2336);
    EXPECT_NEAR(r.pieces[0].x, 104.17, 0.005);
}

TEST(ReportLayout, NoPixelSizeIsARunTimeError)
{
    try {
        ComputePageQuantities(LetterWide, LetterHigh, 0.0, 0.0);
        FAIL() << "no error";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrDivisionByZero);
    }
}

}  // namespace
}  // namespace pemlo
