// The report printed through Qt's printer into a PDF file (Letter, 600 dpi) and read
// back with the poppler tools: one landscape page, the header words where the layout
// puts them, and each chart in its share of the page.
#include <QFileInfo>
#include <QFontMetricsF>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"
#include "core/Declarations.h"
#include "report/Module_output.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

using test::CountInk;
using test::FindWord;
using test::PdfWords;

const QColor ChartColours[4] = {QColor(255, 0, 0), QColor(0, 160, 0), QColor(0, 0, 255), QColor(255, 0, 255)};
constexpr double TwipsPerPoint = 20.0;

class PdfReportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!test::HaveTool(QStringLiteral("pdftotext")) || !test::HaveTool(QStringLiteral("pdftoppm")) ||
            !test::HaveTool(QStringLiteral("pdfinfo")))
            GTEST_SKIP() << "poppler-utils (pdftotext, pdftoppm, pdfinfo) are not installed";
        ASSERT_TRUE(dir_.isValid());
        pdf_ = dir_.filePath(QStringLiteral("report.pdf"));
        ResetRecord();
        for (int i = 0; i < 4; ++i) test::FillLineChart(charts_[i], ChartColours[i]);
        const QString pdf = pdf_;
        SetPrinterFactory([pdf] { return MakeQtPrinter(MakePdfQPrinter(pdf, 600, QStringLiteral("Letter"))); });
    }
    void TearDown() override
    {
        SetPrinterFactory({});
        ResetRecord();
    }

    void SetProject(const char* number, const char* title, const char* date, const char* location,
                    const char* gwt, const char* cone)
    {
        Declarations& d = TheRecord();
        d.ProjectNumber = number;
        d.ProjectTitle = title;
        d.ProjectDate = date;
        d.ProjectLocation = location;
        d.GWT = gwt;
        d.ConeNo = cone;
    }

    void Print(int count)
    {
        test::ModalWatcher watcher;
        if (count == 3) PrintReport(3, charts_[0], charts_[1], charts_[2], charts_[2]);
        else PrintReport(count, charts_[0], charts_[1], charts_[2], charts_[3]);
        ASSERT_TRUE(watcher.Messages().empty());
        ASSERT_TRUE(QFileInfo::exists(pdf_));
    }

    QTemporaryDir dir_;
    QString pdf_;
    ChartSurface charts_[4];
};

TEST_F(PdfReportTest, HeaderWordsStandWhereTheLayoutPutsThem)
{
    SetProject("P-117", "Harbour", "12/05/1998", "CPT-4", "2.5", "C-10");
    Print(4);
    const auto words = PdfWords(pdf_);
    struct Case {
        const char* word;
        double xTwips;   // where the piece starts
        double yTwips;   // the top of its row
    };
    const Case cases[] = {
        {"Project", 208.33, 166.67}, {"P-117", 1652.33, 166.67}, {"Title:", 5016, 166.67},
        {"Date:", 12882, 166.67},    {"12/05/1998", 13604, 166.67}, {"Location/No:", 5016, 383.27},
        {"Cone", 12882, 383.27},     {"C-10", 13748, 383.27},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.word);
        const test::PdfWord* w = FindWord(words, QString::fromLatin1(c.word));
        ASSERT_NE(w, nullptr);
        EXPECT_NEAR(w->xMin * TwipsPerPoint, c.xTwips, 30);   // within the glyph's side bearing
        EXPECT_NEAR(w->yMin * TwipsPerPoint, c.yTwips, 40);
    }
    // The labels run into their values; the ground water table starts at a print zone.
    const test::PdfWord* title = FindWord(words, QStringLiteral("Harbour"));
    const test::PdfWord* location = FindWord(words, QStringLiteral("CPT-4"));
    const test::PdfWord* gwt = FindWord(words, QStringLiteral("GWT:"));
    ASSERT_TRUE(title && location && gwt);
    EXPECT_LT(title->xMin - FindWord(words, QStringLiteral("Title:"))->xMax, 6);
    EXPECT_LT(location->xMin - FindWord(words, QStringLiteral("Location/No:"))->xMax, 6);

    auto printer = MakePdfQPrinter(dir_.filePath(QStringLiteral("metrics.pdf")), 600, QStringLiteral("Letter"));
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(9);
    const QFontMetricsF metrics(font, printer.get());
    const double px = 1440.0 / 600;
    const double zone = 14 * metrics.averageCharWidth() * px;
    const double itemStart = gwt->xMin * TwipsPerPoint - metrics.horizontalAdvance(QStringLiteral("     ")) * px;
    const double zones = itemStart / zone;
    EXPECT_NEAR(zones, std::round(zones), 0.05) << "GWT item at " << itemStart << " twips, zone " << zone;
    EXPECT_GT(itemStart, location->xMax * TwipsPerPoint);
}

TEST_F(PdfReportTest, EmptyProjectFieldsPrintOnlyTheLabels)
{
    SetProject("", "", "", "", "", "");
    Print(4);
    QStringList header;
    for (const test::PdfWord& w : PdfWords(pdf_))
        if (w.yMin * TwipsPerPoint < 548.72) header << w.text;
    header.sort();
    EXPECT_EQ(header.join(QLatin1Char(' ')).toStdString(), "Cone Date: GWT: Location/No: No: Number: Project Title:");
}

TEST_F(PdfReportTest, ChartsAndFrameOnTheRenderedPage)
{
    struct Case {
        int count;
        std::vector<int> edges;   // device pixels at 600 dpi
    };
    const Case cases[] = {{3, {42, 2090, 4180, 6270}}, {4, {42, 1568, 3135, 4702, 6270}}};
    constexpr int dpi = 100;
    constexpr double scale = dpi / 600.0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.count);
        Print(c.count);
        const QImage page = test::RenderPdf(pdf_, dpi);
        ASSERT_EQ(page.size(), QSize(1100, 850));
        const int top = static_cast<int>(250 * scale);
        const int bottom = static_cast<int>(4803 * scale);
        for (std::size_t i = 0; i + 1 < c.edges.size(); ++i) {
            const QRect share(QPoint(static_cast<int>(c.edges[i] * scale) + 1, top + 1),
                              QPoint(static_cast<int>(c.edges[i + 1] * scale) - 1, bottom - 1));
            EXPECT_GT(CountInk(page, share, ChartColours[i], 60), 100) << "chart " << i + 1;
        }
        EXPECT_EQ(CountInk(page, QRect(QPoint(0, bottom + 2), QPoint(1099, 849))), 0) << "below the charts";
        EXPECT_EQ(CountInk(page, QRect(QPoint(static_cast<int>(6270 * scale) + 2, 40), QPoint(1099, 849))), 0)
            << "right of the charts";
        // The header frame's bottom line, 548.72 twips from the top edge.
        const int frameRow = static_cast<int>(std::lround(548.72 / 1440 * dpi));
        const QRect line(QPoint(10, frameRow - 1), QPoint(1040, frameRow + 1));
        const long frame = CountInk(page, line, QColor(0, 0, 0), 250);
        EXPECT_GT(frame, 1000);
        if (frame < 1000) page.copy(line).save("/tmp/rq/frame.png");
    }
}

}  // namespace
}  // namespace pemlo
