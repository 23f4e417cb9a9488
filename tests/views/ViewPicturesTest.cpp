// What the views look like: the legend pictures they ship with, pixel by pixel, and
// every chart of the three views drawn from real soundings, at the size a view opens
// with and at the smallest it may take.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <functional>
#include <memory>
#include <algorithm>

#include "ChartImage.h"
#include "classify/ReadingSteps.h"
#include "core/ProgramRoad.h"
#include "input/Module_FileData.h"
#include "views/ChartView.h"
#include "views/Frm_CPTData.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"
#include "views/LegendPictures.h"

namespace pemlo {
namespace {

const QRgb Grey = qRgb(212, 208, 200);

TEST(LegendPictures, SoilLegendSquaresStandWhereTheyBelong)
{
    const QImage image = SoilLegendPicture().toImage();
    ASSERT_EQ(image.size(), QSize(215, 19));
    const QRgb sand = qRgb(255, 255, 153), silt = qRgb(102, 128, 128), clay = qRgb(128, 64, 64);
    const struct {
        int x, y;
        QRgb colour;
    } cases[] = {
        {0, 0, Grey},   {214, 18, Grey}, {2, 9, Grey},    {16, 9, Grey},   {3, 2, Grey},
        {3, 3, sand},   {15, 15, sand},  {82, 3, silt},   {94, 15, silt},  {81, 9, Grey},
        {161, 3, clay}, {173, 15, clay}, {160, 9, Grey},  {174, 9, Grey},
    };
    for (const auto& c : cases) EXPECT_EQ(image.pixel(c.x, c.y), c.colour) << c.x << "," << c.y;
}

// The U sample line is blue in the left half, the V line dark red in the right.
TEST(LegendPictures, IndexLegendHasABlueUAndADarkRedV)
{
    const QImage image = IndexLegendPicture().toImage();
    ASSERT_EQ(image.size(), QSize(208, 30));
    EXPECT_EQ(image.pixel(0, 0), Grey);
    const QRgb blue = qRgb(0, 0, 255), red = qRgb(128, 0, 0);
    for (const auto& [from, line, absent] : {std::tuple{0, blue, red}, std::tuple{104, red, blue}}) {
        int found = 0, wrong = 0;
        for (int x = from; x < from + 104; ++x)
            for (int y = 0; y < 30; ++y) {
                found += image.pixel(x, y) == line;
                wrong += image.pixel(x, y) == absent;
            }
        EXPECT_GT(found, 20) << "line sample from column " << from;
        EXPECT_EQ(wrong, 0) << "from column " << from;
    }
}

// Series and captions are drawn in strong colours; frame, grid and axis texts in grey.
bool Coloured(QRgb p)
{
    return std::max({qRed(p), qGreen(p), qBlue(p)}) - std::min({qRed(p), qGreen(p), qBlue(p)}) > 60;
}

class RealSoundings : public ::testing::TestWithParam<const char*> {};

TEST_P(RealSoundings, EveryChartOfEveryViewShowsTheSounding)
{
    const QString dir = QStringLiteral(PEMLO_SOUNDINGS_DIR);
    if (dir.isEmpty()) GTEST_SKIP() << "no soundings beside the repository";
    ResetRecord();
    Declarations& d = TheRecord();
    d.DataFileName = (dir + QLatin1Char('/') + QString::fromLatin1(GetParam())).toStdString();
    d.NumTitleLines = 10;
    d.DataUnits = DataSI;
    d.GraphUnits = GraphSI;
    FileChannels files;
    d.FileNum = files.FreeFile();
    ASSERT_EQ(LoadDataFile(d, files).outcome, ReadOutcome::Loaded);
    ConvertToGraphUnits(d);
    CleanReadings(d);

    struct View {
        const char* name;
        std::function<QWidget*()> make;
        std::vector<const char*> charts;
    };
    const View views[] = {
        {"cpt-data", [] { return new Frm_CPTData; }, {"ChartFX1", "ChartFX2", "ChartFX3"}},
        {"classification", [] { return new Frm_Pemlo01; }, {"ChartFX_0", "ChartFX_1", "ChartFX_2", "ChartFX_3"}},
        {"u-and-v", [] { return new Frm_UandV; }, {"ChartFX1", "ChartFX2", "ChartFX3"}},
    };
    for (const View& v : views) {
        std::unique_ptr<QWidget> screen(v.make());
        screen->show();
        for (const QSize size : {screen->size(), screen->minimumSize()}) {
            SCOPED_TRACE(std::string(v.name) + " at width " + std::to_string(size.width()));
            screen->resize(size);
            for (int turn = 0; turn < 3; ++turn) QApplication::processEvents();
            for (const char* name : v.charts) {
                auto* view = screen->findChild<ChartView*>(QString::fromLatin1(name));
                ASSERT_NE(view, nullptr) << name;
                const QImage image = view->ChartImage();
                const auto drawn = test::ExtentWhere(image, Coloured);
                ASSERT_TRUE(drawn) << name << " is blank";
                EXPECT_GT(drawn->bottom - drawn->top, image.height() / 2) << name << ": the sounding spans the depth";
            }
        }
    }
    ResetRecord();
}

INSTANTIATE_TEST_SUITE_P(Real, RealSoundings,
                         ::testing::Values("b003688.txt", "pg_a011.txt", "dov02111.txt", "bwfs12.txt"));

}  // namespace
}  // namespace pemlo
