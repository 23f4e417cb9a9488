// The Print command of each plotting screen reaches the report with the screen's own
// charts: a real sounding taken along the program's road, the screen built as the
// user opens it, Print pressed on its toolbar, the page caught by a recording printer.
#include <QToolButton>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"
#include "core/AllScreens.h"
#include "core/Declarations.h"
#include "core/ProgramRoad.h"
#include "core/Screens.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

class ScreensPrintTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no soundings directory";
        Screens::Instance().Reset();
        ResetRecord();
        RoadOptions road;
        road.path = std::string(PEMLO_SOUNDINGS_DIR) + "/b003688.txt";
        road.dataUnits = DataSI;
        ASSERT_EQ(RunRoad(road, TheRecord()).status, RoadStatus::Done);
        TheRecord().ProjectNumber = "B003688";
        RegisterAllScreens();
    }
    void TearDown() override
    {
        Screens::Instance().Reset();
        SetPrinterFactory({});
        ResetRecord();
    }
};

TEST_F(ScreensPrintTest, PrintOnEachScreenPrintsItsChartsSideBySide)
{
    struct Case {
        const char* name;
        ScreenId screen;
        std::vector<int> edges;                 // device pixels of a Letter page at 600 dpi
        std::vector<std::optional<QColor>> caption;   // a colour each share must show
    };
    const QColor blue(0, 0, 255), green(0, 255, 0), red(255, 0, 0);
    const Case cases[] = {
        {"CPT data", ScreenId::Frm_CPTData, {42, 2090, 4180, 6270}, {blue, green, red}},
        {"classification results", ScreenId::Frm_Pemlo01, {42, 1568, 3135, 4702, 6270},
         {blue, green, red, std::nullopt}},
        {"U and V", ScreenId::Frm_UandV, {42, 2090, 4180, 6270}, {blue, std::nullopt, red}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Screens& screens = Screens::Instance();
        screens.Show(ScreenId::Frm_CPTData);
        screens.Show(c.screen);
        auto* print = screens.Get(c.screen)->findChild<QToolButton*>(QStringLiteral("Print"));
        ASSERT_NE(print, nullptr);

        const auto log = test::UseRecordingPrinter();
        test::ModalWatcher watcher;
        print->click();
        EXPECT_TRUE(watcher.Messages().empty());
        EXPECT_TRUE(log->Called("Print B003688"));
        EXPECT_TRUE(log->Called("EndDoc"));
        const auto devices = std::count(log->calls.begin(), log->calls.end(), std::string("hDC"));
        EXPECT_EQ(devices, static_cast<long>(c.edges.size()) - 1);
        for (std::size_t i = 0; i + 1 < c.edges.size(); ++i) {
            const QRect share(QPoint(c.edges[i] + 2, 252), QPoint(c.edges[i + 1] - 3, 4800));
            EXPECT_GT(test::CountInk(log->page, share), 5000) << "share " << i + 1;
            if (c.caption[i]) {
                EXPECT_GT(test::CountInk(log->page, share, *c.caption[i], 40), 500) << "share " << i + 1;
            }
        }
        screens.Close(c.screen);
    }
}

}  // namespace
}  // namespace pemlo
