// PrintReport on a recording printer of a landscape Letter page at 600 dpi: the order
// and values of every printer call, where each chart lands on the page, and the
// failure path with its message.
#include <QMessageBox>
#include <functional>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"
#include "core/Declarations.h"
#include "report/Module_output.h"
#include "runtime/MessageBox.h"
#include "runtime/RunTimeError.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

using test::CountInk;
using test::PrinterLog;

const QColor ChartColours[4] = {QColor(255, 0, 0), QColor(0, 160, 0), QColor(0, 0, 255), QColor(255, 0, 255)};

class PrintReportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ResetRecord();
        Declarations& d = TheRecord();
        d.ProjectNumber = "P-117";
        d.ProjectTitle = "Harbour quay";
        d.ProjectDate = "12/05/1998";
        d.ProjectLocation = "CPT 4";
        d.GWT = "2.5";
        d.ConeNo = "C-10";
        for (int i = 0; i < 4; ++i) test::FillLineChart(charts_[i], ChartColours[i]);
    }
    void TearDown() override
    {
        SetPrinterFactory({});
        ResetRecord();
    }

    // Prints with the given count; charts by index (a caller with three passes the third twice).
    void Print(int count, std::array<int, 4> which = {0, 1, 2, 3})
    {
        PrintReport(count, charts_[which[0]], charts_[which[1]], charts_[which[2]], charts_[which[3]]);
    }

    ChartSurface charts_[4];
};

TEST_F(PrintReportTest, CallsThePrinterInTheReportsOrder)
{
    const auto log = test::UseRecordingPrinter();
    test::ModalWatcher watcher;
    Print(3, {0, 1, 2, 2});
    EXPECT_TRUE(watcher.Messages().empty());
    const std::vector<std::string> expected = {
        "Orientation 2", "Width", "FontName Arial", "FontSize 12.00", "Bold", "TwipsPerPixelX",
        "TwipsPerPixelY", "Height", "Box 41.67 41.67 15048.00 548.72",
        "X 208.33", "Y 166.67", "Normal", "FontSize 9.00", "Print Project Number: ",
        "X 1652.33", "Y 166.67", "Bold", "Print P-117",
        "X 5016.00", "Y 166.67", "Print Title: ;Harbour quay",
        "X 12882.00", "Y 166.67", "Normal", "Print Date: ",
        "X 13604.00", "Y 166.67", "Bold", "Print 12/05/1998",
        "X 5016.00", "Y 383.27", "Normal", "Print Location/No: ;CPT 4,     GWT: ;2.5",
        "X 12882.00", "Y 383.27", "Normal", "Print Cone No: ",
        "X 13748.00", "Y 383.27", "Bold", "Print C-10",
        "hDC", "hDC", "hDC", "EndDoc"};
    EXPECT_EQ(log->calls, expected);
}

// Ink of each chart's colour inside each share of the band, and none outside the band.
TEST_F(PrintReportTest, EachChartFillsItsShareOfTheBand)
{
    struct Case {
        const char* name;
        int count;
        std::array<int, 4> charts;
        std::vector<int> edges;   // device pixels, left to right
    };
    const Case cases[] = {
        {"three charts", 3, {0, 1, 2, 2}, {42, 2090, 4180, 6270}},
        {"four charts", 4, {0, 1, 2, 3}, {42, 1568, 3135, 4702, 6270}},
        {"a count of 2 prints four", 2, {0, 1, 2, 3}, {42, 1568, 3135, 4702, 6270}},
        {"a count of 5 prints four", 5, {0, 1, 2, 3}, {42, 1568, 3135, 4702, 6270}},
    };
    constexpr int top = 250;
    constexpr int bottom = 4803;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto log = test::UseRecordingPrinter();
        Print(c.count, c.charts);
        ASSERT_TRUE(log->Called("EndDoc"));
        const QImage& page = log->page;
        const std::size_t shares = c.edges.size() - 1;
        for (std::size_t i = 0; i < shares; ++i) {
            const QRect share(QPoint(c.edges[i] + 2, top + 2), QPoint(c.edges[i + 1] - 3, bottom - 3));
            for (int k = 0; k < 4; ++k) {
                const long ink = CountInk(page, share, ChartColours[k], 40);
                if (k == c.charts[i]) EXPECT_GT(ink, 2000) << "chart " << k + 1 << " in share " << i + 1;
                else EXPECT_EQ(ink, 0) << "chart " << k + 1 << " in share " << i + 1;
            }
        }
        const int right = c.edges.back();
        EXPECT_EQ(CountInk(page, QRect(QPoint(0, 0), QPoint(page.width(), top - 2))), 0) << "above";
        EXPECT_EQ(CountInk(page, QRect(QPoint(0, bottom + 2), QPoint(page.width(), page.height()))), 0) << "below";
        EXPECT_EQ(CountInk(page, QRect(QPoint(0, 0), QPoint(c.edges.front() - 2, page.height()))), 0) << "left";
        EXPECT_EQ(CountInk(page, QRect(QPoint(right + 2, 0), QPoint(page.width(), page.height()))), 0) << "right";
    }
}

TEST_F(PrintReportTest, EveryFailureShowsThePrintingErrorAndSendsNothing)
{
    struct Case {
        const char* name;
        std::function<std::shared_ptr<PrinterLog>()> setUp;
    };
    const Case cases[] = {
        {"no default printer",
         [] {
             SetPrinterFactory([]() -> std::unique_ptr<Printer> { Raise(ErrNoPrinter); });
             return std::shared_ptr<PrinterLog>();
         }},
        {"a printer that refuses the page",
         [] {
             SetPrinterFactory([] {
                 return MakeQtPrinter(MakePdfQPrinter(QStringLiteral("/nonexistent/folder/report.pdf"), 600,
                                                      QStringLiteral("Letter")));
             });
             return std::shared_ptr<PrinterLog>();
         }},
        {"a chart that cannot paint",
         [] {
             auto log = test::UseRecordingPrinter();
             log->deviceFails = true;
             return log;
         }},
        {"a printer without a pixel size", [] { return test::UseRecordingPrinter(12240, 15840, 0.0); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto log = c.setUp();
        test::ModalWatcher watcher;
        EXPECT_NO_THROW(Print(4));
        ASSERT_EQ(watcher.Messages().size(), 1u);
        EXPECT_EQ(watcher.Messages()[0].text, QStringLiteral(" A Printing Error ...."));
        EXPECT_EQ(watcher.Messages()[0].title, AppTitle());
        EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Critical);
        if (log) {
            EXPECT_FALSE(log->Called("EndDoc"));
        }
        SetPrinterFactory({});
    }
}

TEST_F(PrintReportTest, APageLeftByAFailureStaysPendingUntilTheNextPrintSendsIt)
{
    const auto log = test::UseRecordingPrinter();
    log->deviceFails = true;
    {
        test::ModalWatcher watcher;
        Print(3, {0, 1, 2, 2});
        EXPECT_EQ(watcher.Messages().size(), 1u);
    }
    EXPECT_EQ(log->opened, 1);
    EXPECT_FALSE(log->Called("EndDoc"));

    // The same printer object takes the next page: what the failed print drew is still on it.
    log->deviceFails = false;
    Print(3, {0, 1, 2, 2});
    EXPECT_EQ(log->opened, 1);
    EXPECT_TRUE(log->Called("EndDoc"));

    // After a page was sent, the next print opens the default printer of that moment.
    Print(4);
    EXPECT_EQ(log->opened, 2);
}

}  // namespace
}  // namespace pemlo
