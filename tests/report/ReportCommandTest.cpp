// The report as a user asks for it. On screen: Print on each plotting screen reaches
// the report with the screen's own charts (a real sounding taken along the program's
// road, Print pressed on the toolbar, the page caught by a recording printer). On the
// command line: "report" writes the page of each view into a PDF file, and a wrong
// call, an unreadable file or an unwritable PDF ends with its status.
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
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

TEST(ScreensPrint, PrintOnEachScreenPrintsItsChartsSideBySide)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no soundings directory";
    Screens& screens = Screens::Instance();
    screens.Reset();
    ResetRecord();
    const RoadOptions road{.path = std::string(PEMLO_SOUNDINGS_DIR) + "/b003688.txt", .dataUnits = DataSI};
    ASSERT_EQ(RunRoad(road, TheRecord()).status, RoadStatus::Done);
    TheRecord().ProjectNumber = "B003688";
    RegisterAllScreens();

    // The edges of the shares in device pixels of a Letter page at 600 dpi.
    const std::pair<ScreenId, std::vector<int>> cases[] = {
        {ScreenId::Frm_CPTData, {42, 2090, 4180, 6270}},
        {ScreenId::Frm_Pemlo01, {42, 1568, 3135, 4702, 6270}},
        {ScreenId::Frm_UandV, {42, 2090, 4180, 6270}},
    };
    for (const auto& [screen, edges] : cases) {
        SCOPED_TRACE(static_cast<int>(screen));
        screens.Show(ScreenId::Frm_CPTData);
        screens.Show(screen);
        auto* print = screens.Get(screen)->findChild<QToolButton*>(QStringLiteral("Print"));
        ASSERT_NE(print, nullptr);
        const auto log = test::UseRecordingPrinter();
        test::ModalWatcher watcher;
        print->click();
        EXPECT_TRUE(log->Called("Print B003688"));
        EXPECT_TRUE(log->Called("EndDoc"));
        EXPECT_EQ(std::count(log->calls.begin(), log->calls.end(), "hDC"), static_cast<long>(edges.size()) - 1);
        for (std::size_t i = 0; i + 1 < edges.size(); ++i)
            EXPECT_GT(test::CountInk(log->page, QRect(QPoint(edges[i] + 2, 252), QPoint(edges[i + 1] - 3, 4800))), 5000)
                << "share " << i + 1;
        screens.Close(screen);
    }
    screens.Reset();
    SetPrinterFactory({});
    ResetRecord();
}

std::pair<int, std::string> RunCli(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(PEMLO_CLI_PATH), arguments);
    if (!process.waitForFinished(120000)) return {-1, "timed out"};
    return {process.exitCode(), process.readAllStandardError().toStdString()};
}

// Each view on one page of the paper asked for, and the status of each failure with no
// PDF left behind.
TEST(ReportCommand, WritesOnePagePerViewOrEndsWithTheFailuresStatus)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no soundings directory";
    if (!test::HaveTool(QStringLiteral("pdfinfo")) || !test::HaveTool(QStringLiteral("pdftotext"))) GTEST_SKIP() << "no poppler-utils";
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("out.pdf"));
    const QString sounding = QStringLiteral(PEMLO_SOUNDINGS_DIR "/b099543.txt");
    struct Case {
        QStringList arguments;
        int exitCode;
        const char* size = nullptr;   // of the page, points
        QString caption = {};         // the word only this view's charts show, if any
    };
    const Case cases[] = {
        {{sounding, "--view", "cpt", "--paper", "letter", "--pdf", pdf}, 0, "792 x 612"},
        {{sounding, "--view", "results", "--paper", "a4", "--pdf", pdf}, 0, "842 x 595", "Probability"},
        {{sounding, "--view", "UV", "--paper", "letter", "--pdf", pdf}, 0, "792 x 612", "In-situ"},
        {{sounding, "--view", "plan", "--pdf", pdf}, 2},
        {{sounding}, 2},                                                      // no PDF named
        {{sounding, "--pdf", "/nonexistent/folder/out.pdf"}, 1},
        {{dir.filePath(QStringLiteral("missing.txt")), "--pdf", pdf}, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.arguments.join(QLatin1Char(' ')).toStdString());
        QFile::remove(pdf);
        const auto [exitCode, err] = RunCli(QStringList{"report", "--data-units", "si", "--number", "B099543"} + c.arguments);
        ASSERT_EQ(exitCode, c.exitCode) << err;
        if (c.exitCode != 0) {
            EXPECT_FALSE(QFile::exists(pdf));
            continue;
        }
        const QString info = test::RunTool(QStringLiteral("pdfinfo"), {pdf}).value_or(QString());
        EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n"))));
        EXPECT_TRUE(info.contains(QString::fromLatin1(c.size))) << info.toStdString();
        const QString text = test::RunTool(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")}).value_or(QString());
        EXPECT_TRUE(text.contains(QStringLiteral("B099543")));
        for (const QString& caption : {QStringLiteral("Probability"), QStringLiteral("In-situ")})
            EXPECT_EQ(text.contains(caption), caption == c.caption) << caption.toStdString();
    }
}

}  // namespace
}  // namespace pemlo
