// Each plotting screen with a real sounding taken along the program's road: every chart
// draws the sounding at the smallest size the window takes and maximised, the depth
// axes of its charts line up, and Print (pressed on the toolbar, the page caught by a
// recording printer) puts the screen's own charts side by side on the same page
// whatever the window's size. (The command line's report: tests/cli.)
#include <QApplication>
#include <algorithm>
#include <optional>
#include <QToolButton>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"
#include "app/AllScreens.h"
#include "core/Declarations.h"
#include "road/ProgramRoad.h"
#include "report/ReportLayout.h"
#include "core/ui/Screens.h"
#include "support/ModalWatcher.h"
#include "views/chart/ChartView.h"

namespace pemlo {
namespace {

// The rows a depth axis spans on each chart of a screen, or of a page, agree within
// `tolerance` pixels: a depth stands on the same row on every chart.
void ExpectDepthAxesLineUp(const QImage& image, const std::vector<QRect>& charts, int tolerance)
{
    const auto first = test::DepthAxisRows(image, charts.front());
    EXPECT_GT(first.second - first.first, charts.front().height() / 3) << "a depth axis spans the chart";
    for (std::size_t i = 1; i < charts.size(); ++i) {
        const auto rows = test::DepthAxisRows(image, charts[i]);
        EXPECT_NEAR(rows.first, first.first, tolerance) << "top of chart " << i + 1;
        EXPECT_NEAR(rows.second, first.second, tolerance) << "bottom of chart " << i + 1;
    }
}

// Series and captions are drawn in strong colours; frame, grid and axis texts in grey.
bool Coloured(QRgb p)
{
    return std::max({qRed(p), qGreen(p), qBlue(p)}) - std::min({qRed(p), qGreen(p), qBlue(p)}) > 60;
}

// The rows and columns of an image that hold coloured pixels: their bounds, if any.
struct Extent {
    int left, right, top, bottom;
};
std::optional<Extent> ColouredExtent(const QImage& image)
{
    std::optional<Extent> e;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (Coloured(image.pixel(x, y)))
                e = e ? Extent{std::min(e->left, x), std::max(e->right, x), std::min(e->top, y), y} : Extent{x, x, y, y};
    return e;
}

// The screen's charts as they stand on it, and the page Print sends for it.
std::vector<QRect> ChartRects(QWidget* screen)
{
    std::vector<QRect> rects;
    for (const ChartView* chart : screen->findChildren<ChartView*>())
        rects.emplace_back(chart->mapTo(screen, QPoint(0, 0)), chart->size());
    std::sort(rects.begin(), rects.end(), [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
    return rects;
}

// Each screen prints its charts side by side in their shares of the page. Whatever the
// size of the window, the page is the same (a maximised window must not shrink the
// charts' type on paper), and the depth axes of the charts line up, on screen and on
// paper: within 2 pixels on screen and 1 mm on paper.
TEST(ScreensPrint, EachScreenDrawsAndPrintsItsChartsInLine)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no soundings directory";
    Screens& screens = Screens::Instance();
    screens.Reset();
    ResetRecord();
    const RoadOptions road{.path = std::string(PEMLO_SOUNDINGS_DIR) + "/b003688.txt", .dataUnits = DataSI};
    ASSERT_EQ(RunRoad(road, TheRecord()).status, RoadStatus::Done);
    TheRecord().ProjectNumber = "B003688";
    RegisterAllScreens();

    // The page at 150 dpi: the depth axes must agree within 1 mm (6 pixels).
    const PageQuantities page = ComputePageQuantities(15840, 12240, 9.6, 9.6);
    for (const auto& [screen, charts] : {std::pair{ScreenId::Frm_CPTData, 3}, {ScreenId::Frm_Pemlo01, 4}, {ScreenId::Frm_UandV, 3}}) {
        SCOPED_TRACE(static_cast<int>(screen));
        screens.Show(ScreenId::Frm_CPTData);
        screens.Show(screen);
        auto* print = screens.Get(screen)->findChild<QToolButton*>(QStringLiteral("Print"));
        ASSERT_NE(print, nullptr);
        const auto log = test::UseRecordingPrinter(9.6);
        test::ModalWatcher watcher;
        print->click();
        EXPECT_FALSE(log->Called("Print B003688")) << "the press is answered before the page is printed";
        QApplication::processEvents();
        EXPECT_TRUE(log->Called("Print B003688"));
        EXPECT_EQ(std::count(log->calls.begin(), log->calls.end(), "hDC"), charts);
        const ReportLayout layout = LayoutReport(page, charts, ProjectTexts{});
        std::vector<QRect> shares;
        for (std::size_t i = 0; i + 1 < layout.edges.size(); ++i) {
            shares.emplace_back(QPoint(layout.edges[i] + 1, layout.chartTop + 1), QPoint(layout.edges[i + 1] - 1, layout.chartBottom - 1));
            EXPECT_GT(test::CountInk(log->page, shares.back()), 300) << "share " << i + 1;
        }
        ExpectDepthAxesLineUp(log->page, shares, 6);

        QWidget* window = screens.Get(screen);
        for (const QSize size : {window->minimumSize(), QSize(1920, 1080)}) {
            SCOPED_TRACE(size.width());
            window->resize(size);
            for (int turn = 0; turn < 3; ++turn) QApplication::processEvents();
            const std::vector<QRect> rects = ChartRects(window);
            ExpectDepthAxesLineUp(window->grab().toImage(), rects, 2);
            EXPECT_GT(rects.back().right(), window->width() * 8 / 10) << "the charts grow with the window";
            for (const ChartView* chart : window->findChildren<ChartView*>()) {
                const QImage image = chart->ChartImage();
                const auto drawn = ColouredExtent(image);
                ASSERT_TRUE(drawn) << chart->objectName().toStdString() << " is blank";
                EXPECT_GT(drawn->bottom - drawn->top, image.height() / 2) << "the sounding spans the depth";
            }
            // Depth grows downward: this sounding's tip resistance is low down to 14 m
            // and high below 15 m, so its line reaches further right low on the chart.
            if (screen == ScreenId::Frm_CPTData) {
                const QImage tip = window->findChild<ChartView*>(QStringLiteral("ChartFX1"))->ChartImage();
                const int h = tip.height();
                const auto shallow = ColouredExtent(tip.copy(0, h / 5, tip.width(), h / 4));
                const auto deep = ColouredExtent(tip.copy(0, h * 7 / 10, tip.width(), h / 4));
                ASSERT_TRUE(shallow && deep);
                EXPECT_GT(deep->right, shallow->right + tip.width() / 4) << "the shallowest readings on top";
            }
            const auto again = test::UseRecordingPrinter(9.6);
            print->click();
            QApplication::processEvents();
            EXPECT_TRUE(again->page == log->page) << "printed from a window of " << size.width();
        }
        screens.Close(screen);
    }
    screens.Reset();
    SetPrinterFactory({});
    ResetRecord();
}

}  // namespace
}  // namespace pemlo
