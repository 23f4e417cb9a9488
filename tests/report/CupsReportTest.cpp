// The report on a real print queue: the system's default printer reached through
// CUPS, a cups-pdf queue as tools/start-print-server.sh sets one up. The page comes
// back as the PDF file cups-pdf writes; the print system re-encodes the text, so the
// page is checked on its rendering. Without a print server the tests skip.
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QThread>
#include <QTransform>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"
#include "core/Declarations.h"
#include "report/Module_output.h"
#include "support/ModalWatcher.h"

namespace pemlo {
namespace {

const QColor ChartColours[4] = {QColor(255, 0, 0), QColor(0, 160, 0), QColor(0, 0, 255), QColor(255, 0, 255)};

// Where cups-pdf puts the files of this user: the Out line of its configuration.
QString CupsPdfOutDir()
{
    QString out = QStringLiteral("${HOME}/PDF");
    QFile conf(QStringLiteral("/etc/cups/cups-pdf.conf"));
    if (conf.open(QIODevice::ReadOnly | QIODevice::Text)) {
        static const QRegularExpression line(QStringLiteral("^Out\\s+(\\S.*)$"));
        for (const QString& l : QString::fromUtf8(conf.readAll()).split(QLatin1Char('\n'))) {
            const auto m = line.match(l.trimmed());
            if (m.hasMatch()) out = m.captured(1).trimmed();
        }
    }
    return out.replace(QStringLiteral("${HOME}"), QDir::homePath());
}

// The newest PDF written there since `since`, once its size has settled.
QString WaitForPdf(const QString& dir, const QDateTime& since, int timeoutMs)
{
    QString found;
    qint64 lastSize = -1;
    for (int waited = 0; waited < timeoutMs; waited += 250) {
        QThread::msleep(250);
        const QFileInfoList files =
            QDir(dir).entryInfoList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Time);
        if (files.isEmpty() || files.front().lastModified() < since) continue;
        if (files.front().filePath() == found && files.front().size() == lastSize && lastSize > 0) return found;
        found = files.front().filePath();
        lastSize = files.front().size();
    }
    return {};
}

class CupsReportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
        if (printer.isNull())
            GTEST_SKIP() << "no print server with a default printer (tools/start-print-server.sh starts one)";
        const auto device = test::RunTool(QStringLiteral("lpstat"), {QStringLiteral("-v"), printer.printerName()});
        if (!device || !device->contains(QStringLiteral("cups-pdf:")))
            GTEST_SKIP() << "the default printer " << printer.printerName().toStdString()
                         << " is no cups-pdf queue: its page cannot be read back";
        if (!test::HaveTool(QStringLiteral("pdftoppm")) || !test::HaveTool(QStringLiteral("pdfinfo")))
            GTEST_SKIP() << "poppler-utils are not installed";
        SetPrinterFactory({});
        ResetRecord();
        TheRecord().ProjectNumber = "P-117";
        TheRecord().ProjectTitle = "Harbour quay";
        for (int i = 0; i < 4; ++i) test::FillLineChart(charts_[i], ChartColours[i]);
    }
    void TearDown() override { ResetRecord(); }

    ChartSurface charts_[4];
};

TEST_F(CupsReportTest, OneLandscapePageWithHeaderAndChartsSideBySide)
{
    struct Case {
        int count;
        int shares;
    };
    for (const Case c : {Case{3, 3}, Case{4, 4}}) {
        SCOPED_TRACE(c.count);
        const QDateTime start = QDateTime::currentDateTime().addSecs(-1);
        test::ModalWatcher watcher;
        if (c.count == 3) PrintReport(3, charts_[0], charts_[1], charts_[2], charts_[2]);
        else PrintReport(4, charts_[0], charts_[1], charts_[2], charts_[3]);
        ASSERT_TRUE(watcher.Messages().empty()) << watcher.Messages()[0].text.toStdString();

        const QString pdf = WaitForPdf(CupsPdfOutDir(), start, 60000);
        ASSERT_FALSE(pdf.isEmpty()) << "no PDF arrived in " << CupsPdfOutDir().toStdString();
        const auto info = test::RunTool(QStringLiteral("pdfinfo"), {pdf});
        ASSERT_TRUE(info);
        EXPECT_TRUE(info->contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n")))) << info->toStdString();

        QImage page = test::RenderPdf(pdf, 50);
        ASSERT_FALSE(page.isNull());
        // The print system may put the landscape page on an upright sheet, turned a
        // quarter: its top edge then runs along the sheet's left edge.
        if (page.height() > page.width()) page = page.transformed(QTransform().rotate(90));
        // The header band: the top 548.72 twips of the page.
        const int headerRows = static_cast<int>(548.72 / 1440 * 50);
        EXPECT_GT(test::CountInk(page, QRect(0, 0, page.width(), headerRows)), 100) << "header";
        // Each chart's line stands in its share of the usable 95 percent of the width.
        for (int i = 0; i < c.shares; ++i) {
            const double share = 0.95 * page.width() / c.shares;
            const QRect zone(QPoint(static_cast<int>(i * share), headerRows),
                             QPoint(static_cast<int>((i + 1) * share), page.height() - 1));
            EXPECT_GT(test::CountInk(page, zone, ChartColours[i], 60), 50) << "chart " << i + 1;
        }
        QFile::remove(pdf);
    }
}

}  // namespace
}  // namespace pemlo
