// What the two result views look like: the legend pictures they ship with, pixel by
// pixel, and their charts drawn from real soundings (not blank, depth growing
// downward). Set PEMLO_SCREENSHOT_DIR to keep the screens as PNG files.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <functional>
#include <memory>
#include <set>

#include "IntervalRecord.h"
#include "classify/ReadingSteps.h"
#include "core/ProgramRoad.h"
#include "core/Screens.h"
#include "input/Module_FileData.h"
#include "views/ChartView.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"
#include "views/IndexPlots.h"
#include "views/LegendPictures.h"
#include "views/Module_ConePlots.h"

namespace pemlo {
namespace {

struct PixelCase {
    int x, y;
    QRgb colour;
};

const QRgb Grey = qRgb(212, 208, 200);

TEST(LegendPictures, SoilLegendSquaresStandWhereTheyBelong)
{
    const QImage image = SoilLegendPicture().toImage();
    ASSERT_EQ(image.size(), QSize(215, 19));
    const QRgb sand = qRgb(255, 255, 153), silt = qRgb(102, 128, 128), clay = qRgb(128, 64, 64);
    const PixelCase cases[] = {
        {0, 0, Grey},    {214, 18, Grey},  {2, 9, Grey},     {16, 9, Grey},   {3, 2, Grey},    {3, 16, Grey},
        {3, 3, sand},    {15, 15, sand},   {9, 9, sand},     {82, 3, silt},   {94, 15, silt},  {88, 9, silt},
        {161, 3, clay},  {173, 15, clay},  {167, 9, clay},   {81, 9, Grey},   {160, 9, Grey},  {174, 9, Grey},
    };
    for (const PixelCase& c : cases) {
        EXPECT_EQ(image.pixel(c.x, c.y), c.colour) << c.x << "," << c.y;
    }
    // Black text beside each square.
    for (int left : {17, 96, 175}) {
        int black = 0;
        for (int x = left; x < left + 60 && x < 215; ++x)
            for (int y = 0; y < 19; ++y) black += image.pixel(x, y) == qRgb(0, 0, 0);
        EXPECT_GT(black, 15) << "text after column " << left;
    }
}

TEST(LegendPictures, IndexLegendHasABlueUAndADarkRedV)
{
    const QImage image = IndexLegendPicture().toImage();
    ASSERT_EQ(image.size(), QSize(208, 30));
    EXPECT_EQ(image.pixel(0, 0), Grey);
    EXPECT_EQ(image.pixel(207, 29), Grey);
    struct Half {
        int from, to;
        QRgb line;
        QRgb absent;
    };
    const Half halves[] = {{0, 104, qRgb(0, 0, 255), qRgb(128, 0, 0)}, {104, 208, qRgb(128, 0, 0), qRgb(0, 0, 255)}};
    for (const Half& h : halves) {
        int line = 0, absent = 0, black = 0;
        for (int x = h.from; x < h.to; ++x) {
            for (int y = 0; y < 30; ++y) {
                line += image.pixel(x, y) == h.line;
                absent += image.pixel(x, y) == h.absent;
                black += image.pixel(x, y) == qRgb(0, 0, 0);
            }
        }
        EXPECT_GT(line, 20) << "line sample from column " << h.from;
        EXPECT_EQ(absent, 0);
        EXPECT_GT(black, 100) << "frame and letter from column " << h.from;
    }
}

bool IsNear(QRgb a, QRgb b, int tolerance)
{
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

// Mean column of the pixels of one colour in a band of rows, as fractions of the height.
double MeanColumn(const QImage& image, QRgb colour, double fromRow, double toRow)
{
    double sum = 0;
    int count = 0;
    for (int y = static_cast<int>(fromRow * image.height()); y < static_cast<int>(toRow * image.height()); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (IsNear(image.pixel(x, y), colour, 40)) {
                sum += x;
                ++count;
            }
        }
    }
    return count == 0 ? -1.0 : sum / count;
}

int DistinctColours(const QImage& image)
{
    std::set<QRgb> seen;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) seen.insert(image.pixel(x, y));
    return static_cast<int>(seen.size());
}

// Every plotted quantity of the prepared record grows with depth: U, the interval tip
// resistance and the probability of sand. With the shallowest interval drawn at the
// top, each line (or the sand area, which starts at 0 %) leans from the upper left
// to the lower right, on the axes-exchanged soil chart too.
TEST(ResultCharts, ShallowestDepthIsDrawnAtTheTop)
{
    Screens::Instance().Reset();
    ResetRecord();
    Declarations& d = TheRecord();
    testing::FillIntervals(d, 60, GraphSI);
    ChartSurface u, v, uv, tip;
    PlotIndexCharts(d, u, v, uv);
    Integer tipIndex = 0;
    ConePlot(d, tipIndex, tip);
    // The screen loads from a plain sounding, then its soil chart draws the prepared record.
    d.DataUnits = DataSI;
    for (int k = 1; k <= 120; ++k) {
        d.Depth[k] = 0.05f * static_cast<float>(k);
        d.Q_Tip[k] = 5.0f;
        d.Q_Sleeve[k] = 0.05f;
    }
    d.NumLines = 120;
    auto screen = std::make_unique<Frm_Pemlo01>();
    testing::FillIntervals(d, 60, GraphSI);
    screen->SoilPlot(screen->ChartFX(3));
    struct Case {
        const char* what;
        const ChartSurface* chart;
        QRgb colour;
    };
    const Case cases[] = {
        {"U chart", &u, qRgb(0, 0, 255)},
        {"tip cone plot", &tip, qRgb(0, 0, 255)},
        {"soil chart", &screen->ChartFX(3), qRgb(255, 255, 153)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        QImage image(300, 500, QImage::Format_RGB32);
        image.fill(Qt::white);
        c.chart->PaintTo(&image, 0, 0, 300, 500, 1, 0);
        const double upper = MeanColumn(image, c.colour, 0.25, 0.45);
        const double lower = MeanColumn(image, c.colour, 0.65, 0.85);
        ASSERT_GT(upper, 0) << "nothing of the series in the upper half";
        ASSERT_GT(lower, 0) << "nothing of the series in the lower half";
        EXPECT_LT(upper, lower);
    }
    screen.reset();
    ResetRecord();
}

bool LoadSounding(Declarations& d, const QString& name)
{
    d.DataFileName = (QStringLiteral(PEMLO_SOUNDINGS_DIR) + QLatin1Char('/') + name).toStdString();
    d.NumTitleLines = 10;
    d.DataUnits = DataSI;
    d.GraphUnits = GraphSI;
    d.ProjectNumber = "2015-117";
    d.ProjectTitle = "Seabed sounding";
    d.ProjectLocation = "WFS I";
    d.GWT = "0.0";
    d.ConeNo = "CPT 2";
    d.ProjectDate = "2015-05-10";
    FileChannels files;
    d.FileNum = files.FreeFile();
    if (LoadDataFile(d, files).outcome != ReadOutcome::Loaded) return false;
    ConvertToGraphUnits(d);
    CleanReadings(d);
    return true;
}

struct ViewCase {
    const char* name;
    const char* file;
    std::function<QWidget*()> make;
    std::vector<const char*> charts;
};

TEST(ResultCharts, RealSoundingsDrawReadableScreens)
{
    if (QStringLiteral(PEMLO_SOUNDINGS_DIR).isEmpty()) GTEST_SKIP() << "no soundings beside the repository";
    const ViewCase views[] = {
        {"classification", "bwfs12.txt", [] { return new Frm_Pemlo01; },
         {"ChartFX_0", "ChartFX_1", "ChartFX_2", "ChartFX_3"}},
        {"u-and-v", "bwfs12.txt", [] { return new Frm_UandV; }, {"ChartFX1", "ChartFX2", "ChartFX3"}},
    };
    const QString keep = qEnvironmentVariable("PEMLO_SCREENSHOT_DIR");
    for (const ViewCase& v : views) {
        SCOPED_TRACE(v.name);
        Screens::Instance().Reset();
        ResetRecord();
        ASSERT_TRUE(LoadSounding(TheRecord(), QString::fromLatin1(v.file)));
        for (const QSize& size : {QSize(1100, 760), QSize(1600, 1000)}) {
            std::unique_ptr<QWidget> screen(v.make());
            screen->resize(size);
            screen->show();
            for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
            for (const char* chart : v.charts) {
                auto* view = screen->findChild<ChartView*>(QString::fromLatin1(chart));
                ASSERT_NE(view, nullptr);
                EXPECT_GT(DistinctColours(view->grab().toImage()), 8) << chart << " looks blank";
            }
            if (!keep.isEmpty()) {
                QDir().mkpath(keep);
                screen->grab().save(QStringLiteral("%1/%2-%3.png").arg(keep, QString::fromLatin1(v.name)).arg(size.width()));
            }
        }
    }
    Screens::Instance().Reset();
    ResetRecord();
}

}  // namespace
}  // namespace pemlo
