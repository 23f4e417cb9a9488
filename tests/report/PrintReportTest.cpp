// The printed report on a landscape Letter page at 600 dpi (2.4 twips per pixel): the
// page's quantities, the order and values of every printer call, where each chart
// lands on the page, the failure path with its message, and one page through a real
// print queue.
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QThread>
#include <QTransform>
#include <functional>
#include <tuple>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"
#include "core/Declarations.h"
#include "report/Module_output.h"
#include "report/ReportLayout.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/RunTimeError.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

using test::ChartColours;
using test::CountInk;

class PrintReportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ResetRecord();
        for (int i = 0; i < 4; ++i) test::FillLineChart(charts_[i], ChartColours[i]);
    }
    void TearDown() override
    {
        SetPrinterFactory({});
        ResetRecord();
    }
    // Prints with the given count; a caller with three charts passes its third twice.
    void Print(int count) { PrintReport(count, charts_[0], charts_[1], charts_[2], charts_[count == 3 ? 2 : 3]); }

    ChartSurface charts_[4];
};

// The header's frame and its eight pieces on a 600 dpi Letter page: place, weight and
// text, the labels left standing when a field is empty.
TEST(ReportLayout, HeaderPiecesStandWhereTheReportPutsThem)
{
    const ProjectTexts texts{"P-117", "Harbour quay", "12/05/1998", "CPT 4", "2.5", "C-10"};
    const ReportLayout r = LayoutReport(ComputePageQuantities(15840, 12240, 2.4, 2.4), 3, texts);
    for (const auto& [edge, twips] : {std::pair{r.frameLeft, 41.67}, {r.frameTop, 41.67}, {r.frameRight, 15048.0},
                                      {r.frameBottom, 548.72}})
        EXPECT_NEAR(edge, twips, 0.005);
    using W = PieceWeight;
    const struct { float x, y; W weight; const char* text; } expected[] = {
        {208.33f, 166.67f, W::Normal, "Project Number: "}, {1652.33f, 166.67f, W::Bold, "P-117"},
        {5016.0f, 166.67f, W::Unchanged, "Title: ;Harbour quay"}, {12882.0f, 166.67f, W::Normal, "Date: "},
        {13604.0f, 166.67f, W::Bold, "12/05/1998"}, {5016.0f, 383.27f, W::Normal, "Location/No: ;CPT 4,     GWT: ;2.5"},
        {12882.0f, 383.27f, W::Normal, "Cone No: "}, {13748.0f, 383.27f, W::Bold, "C-10"},
    };
    for (std::size_t i = 0; i < r.pieces.size(); ++i) {
        const HeaderPiece& p = r.pieces[i];
        QString text;
        for (std::size_t k = 0; k < p.items.size(); ++k)
            text += (k == 0 ? QString() : p.items[k].before == PrintSeparator::Join ? ";" : ",") + p.items[k].text;
        EXPECT_NEAR(p.x, expected[i].x, 0.005) << i;
        EXPECT_NEAR(p.y, expected[i].y, 0.005) << i;
        EXPECT_EQ(p.weight, expected[i].weight) << i;
        EXPECT_EQ(text.toStdString(), expected[i].text);
    }
    const ReportLayout empty = LayoutReport(ComputePageQuantities(15840, 12240, 2.4, 2.4), 3, ProjectTexts{});
    EXPECT_EQ(empty.pieces[5].items[1].text, QString()) << "the location's label stands without its value";
    EXPECT_EQ(empty.pieces[5].items[2].text, QStringLiteral("     GWT: "));
}

// The page's quantities, the band and the edges of its shares (the frame is the Box the
// printer is given), the ink of each chart in its own share and none outside the band.
TEST_F(PrintReportTest, EachChartFillsItsShareOfTheBand)
{
    const PageQuantities q = ComputePageQuantities(15840, 12240, 2.4, 2.4);
    EXPECT_EQ(q.Wp, 15048.0f);
    EXPECT_EQ(q.Hp, 11628.0f);
    EXPECT_NEAR(q.m, 41.667, 0.0005);
    const std::vector<std::int32_t> three = {42, 2090, 4180, 6270};
    const std::vector<std::int32_t> four = {42, 1568, 3135, 4702, 6270};   // 1567.5 and 4702.5 round to even
    EXPECT_EQ(std::tuple(ChartsPrinted(2), ChartsPrinted(3), ChartsPrinted(5)), std::tuple(4, 3, 4));
    for (const auto& [count, edges] : {std::pair{3, three}, {4, four}}) {
        SCOPED_TRACE(count);
        const ReportLayout r = LayoutReport(q, count, ProjectTexts{});
        EXPECT_EQ(r.chartTop, 250);
        EXPECT_EQ(r.chartBottom, 4803);
        EXPECT_EQ(r.edges, edges);
        const auto log = test::UseRecordingPrinter();
        Print(count);
        ASSERT_TRUE(log->Called("EndDoc"));
        const QImage page = log->page.convertToFormat(QImage::Format_RGB32);
        for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
            const QRect share(QPoint(edges[i] + 2, 252), QPoint(edges[i + 1] - 3, 4800));
            EXPECT_GT(CountInk(page, share, ChartColours[i], 40), 2000) << "chart " << i + 1;
            EXPECT_EQ(CountInk(page, share, ChartColours[(i + 1) % 4], 40), 0) << "chart " << i + 2 << " overflows";
        }
        // Nothing above, below or right of the band.
        for (const QRect outside : {QRect(0, 0, page.width(), 249), QRect(0, 4805, page.width(), page.height()),
                                    QRect(0, 0, edges.front() - 1, page.height()),
                                    QRect(QPoint(edges.back() + 2, 0), page.rect().bottomRight())})
            EXPECT_EQ(CountInk(page, outside), 0) << "outside the band";
    }
}

// A printer is used at the highest resolution it offers up to the 600 dpi the page is
// laid out for, so that the header's second row (a 9-point line) stays above the
// charts; at 1200 dpi it would fall under them and be painted out.
TEST(ReportResolution, BothHeaderRowsStayAboveTheChartsOnAnyPrinter)
{
    const struct {
        const char* printer;
        QList<int> offered;
        int chosen;
    } cases[] = {
        {"a PDF queue offering 150 to 2400 dpi", {150, 300, 600, 1200, 2400}, 600},
        {"a printer offering only more than the layout", {1200, 2400}, 600},
        {"a draft printer", {150, 300}, 300},
        {"a printer that names no resolution", {}, 600},
        {"the command line's --dpi 2400", {2400}, 600},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.printer);
        EXPECT_EQ(ReportResolution(c.offered), c.chosen);
        const double px = 1440.0 / ReportResolution(c.offered);
        const ReportLayout r = LayoutReport(ComputePageQuantities(15840, 12240, px, px), 3, ProjectTexts{});
        const double lineOf9Points = 9 * 20 * 1.15;
        EXPECT_LE(r.pieces[5].y + lineOf9Points, r.chartTop * px) << "the second row ends above the charts";
    }
}

// The Qt printer refuses a page it cannot write; the recording one may hand out no
// device or no pixel size.
TEST_F(PrintReportTest, EveryFailureShowsThePrintingErrorAndSendsNothing)
{
    const std::pair<const char*, std::function<std::shared_ptr<test::PrinterLog>()>> cases[] = {
        {"no default printer", [] { SetPrinterFactory([]() -> std::unique_ptr<Printer> { Raise(ErrNoPrinter); }); return nullptr; }},
        {"a chart that cannot paint", [] { auto log = test::UseRecordingPrinter(); log->deviceFails = true; return log; }},
        {"a printer without a pixel size", [] { return test::UseRecordingPrinter(0.0); }},
    };
    for (const auto& [name, setUp] : cases) {
        SCOPED_TRACE(name);
        const auto log = setUp();
        test::ModalWatcher watcher;
        EXPECT_NO_THROW(Print(4));
        test::ExpectOneMessage(watcher, QStringLiteral(" A Printing Error ...."), AppTitle(), QMessageBox::Critical);
        EXPECT_FALSE(log && log->Called("EndDoc"));
    }
}

// The command line prints through PrintReportOn without anyone to answer a message
// box: the failure must come back as a value, with nothing shown.
TEST_F(PrintReportTest, OnAGivenPrinterTheFailureIsReturnedNotShown)
{
    const auto log = test::UseRecordingPrinter();
    log->deviceFails = true;
    test::ModalWatcher watcher;
    const auto failure = PrintReportOn(ThePrinter(), {4, {&charts_[0], &charts_[1], &charts_[2], &charts_[3]}});
    ASSERT_TRUE(failure.has_value());
    EXPECT_FALSE(failure->message.empty());
    EXPECT_TRUE(watcher.Messages().empty());
    EXPECT_FALSE(log->Called("EndDoc"));
}

// Where cups-pdf puts the files of this user: the Out line of its configuration.
QString CupsPdfOutDir()
{
    QFile conf(QStringLiteral("/etc/cups/cups-pdf.conf"));
    const auto m = QRegularExpression(QStringLiteral("^Out\\s+(\\S.*)$"), QRegularExpression::MultilineOption)
                       .match(conf.open(QIODevice::ReadOnly) ? QString::fromUtf8(conf.readAll()) : QString());
    return (m.hasMatch() ? m.captured(1).trimmed() : QStringLiteral("${HOME}/PDF")).replace(QStringLiteral("${HOME}"), QDir::homePath());
}

// The newest PDF written there since `since`, once the PDF reader takes it whole.
QString WaitForPdf(const QString& dir, const QDateTime& since)
{
    for (int waited = 0; waited < 60000; waited += 250) {
        QThread::msleep(250);
        const QFileInfoList files = QDir(dir).entryInfoList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Time);
        if (!files.isEmpty() && files.front().lastModified() >= since &&
            test::RunTool(QStringLiteral("pdfinfo"), {files.front().filePath()}))
            return files.front().filePath();
    }
    return {};
}

// The report on a real print queue: the system's default printer reached through
// CUPS, a cups-pdf queue as tools/start-print-server.sh sets one up. The page comes
// back as the PDF file cups-pdf writes; the print system re-encodes the text, so the
// page is checked on its rendering. Without a print server the test skips.
TEST_F(PrintReportTest, OnARealPrintQueueOneLandscapePageWithTheHeaderAndFourCharts)
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    if (printer.isNull()) GTEST_SKIP() << "no print server with a default printer (tools/start-print-server.sh)";
    const auto device = test::RunTool(QStringLiteral("lpstat"), {QStringLiteral("-v"), printer.printerName()});
    if (!device || !device->contains(QStringLiteral("cups-pdf:"))) GTEST_SKIP() << "the default printer is no cups-pdf queue";
    if (!test::HaveTool(QStringLiteral("pdftoppm"))) GTEST_SKIP() << "poppler-utils are not installed";
    TheRecord().ProjectNumber = "P-117";
    const QDateTime start = QDateTime::currentDateTime().addSecs(-1);
    test::ModalWatcher watcher;
    Print(4);
    ASSERT_TRUE(watcher.Messages().empty()) << watcher.Messages()[0].text.toStdString();
    const QString pdf = WaitForPdf(CupsPdfOutDir(), start);
    ASSERT_FALSE(pdf.isEmpty()) << "no PDF arrived in " << CupsPdfOutDir().toStdString();
    const QString info = test::RunTool(QStringLiteral("pdfinfo"), {pdf}).value_or(QString());
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n")))) << info.toStdString();
    QImage page = test::RenderPdf(pdf, 50);   // a null page shows no ink
    // The print system may put the landscape page on an upright sheet, turned a quarter.
    if (page.height() > page.width()) page = page.transformed(QTransform().rotate(90));
    const int headerRows = static_cast<int>(548.72 / 1440 * 50);
    EXPECT_GT(CountInk(page, QRect(0, 0, page.width(), headerRows)), 100) << "header";
    // Each chart's line stands in its share of the usable 95 percent of the width.
    const double share = 0.95 * page.width() / 4;
    for (int i = 0; i < 4; ++i) {
        const QRect zone(QPoint(static_cast<int>(i * share), headerRows), QPoint(static_cast<int>((i + 1) * share), page.height() - 1));
        EXPECT_GT(CountInk(page, zone, ChartColours[i], 60), 50) << "chart " << i + 1;
    }
    QFile::remove(pdf);
}

}  // namespace
}  // namespace pemlo
