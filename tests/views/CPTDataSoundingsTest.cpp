// The CPT data screen on real soundings, at the loaded size and at the smallest
// size the window may take: every chart shows its readings over the whole depth.
// With PEMLO_SCREENSHOT_DIR set, the screens are also saved there as pictures.
#include <QCoreApplication>
#include <QDir>
#include <QToolBar>
#include <gtest/gtest.h>

#include "ChartImage.h"
#include "core/Screens.h"
#include "input/Module_FileData.h"
#include "views/Frm_CPTData.h"

namespace pemlo {
namespace {

class CPTDataSoundings : public ::testing::TestWithParam<const char*> {};

TEST_P(CPTDataSoundings, ChartsShowTheWholeSounding)
{
    const QString dir = QStringLiteral(PEMLO_SOUNDINGS_DIR);
    if (dir.isEmpty()) GTEST_SKIP() << "no soundings beside the repository";
    ResetRecord();
    Screens::Instance().Reset();
    RegisterFrm_CPTData();
    Declarations& d = TheRecord();
    d.DataFileName = (dir + QStringLiteral("/") + QString::fromLatin1(GetParam())).toStdString();
    d.NumTitleLines = 10;
    d.DataUnits = DataSI;
    d.GraphUnits = GraphSI;
    FileChannels files;
    d.FileNum = files.FreeFile();
    ASSERT_EQ(LoadDataFile(d, files).outcome, ReadOutcome::Loaded);
    ASSERT_GT(d.NumLines, 10);

    auto* screen = Screens::Instance().GetAs<Frm_CPTData>(ScreenId::Frm_CPTData);
    screen->show();
    const QSize loaded = screen->size();
    const QString shots = qEnvironmentVariable("PEMLO_SCREENSHOT_DIR");
    const QColor colours[] = {QColor(0, 0, 255), QColor(0, 255, 0), QColor(255, 0, 0)};
    for (const QSize size : {loaded, screen->minimumSize()}) {
        screen->resize(size);
        QCoreApplication::processEvents();
        const QImage picture = screen->grab().toImage();
        if (!shots.isEmpty())
            picture.save(QDir(shots).filePath(QStringLiteral("%1-%2x%3.png")
                                                  .arg(QString::fromLatin1(GetParam()).section('.', 0, 0))
                                                  .arg(size.width())
                                                  .arg(size.height())));
        ChartView* views[] = {screen->ChartFX1(), screen->ChartFX2(), screen->ChartFX3()};
        for (int k = 0; k < 3; ++k) {
            const QImage chart = views[k]->ChartImage();
            const auto line = test::ExtentOf(chart, colours[k]);
            ASSERT_TRUE(line) << "chart " << k + 1 << " at " << size.width() << "x" << size.height();
            EXPECT_GT(line->bottom - line->top, chart.height() / 2) << "chart " << k + 1;
        }
    }
    Screens::Instance().Reset();
}

INSTANTIATE_TEST_SUITE_P(Real, CPTDataSoundings,
                         ::testing::Values("b003688.txt", "pg_a011.txt", "dov02111.txt", "bwfs12.txt"));

}  // namespace
}  // namespace pemlo
