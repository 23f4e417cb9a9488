// The command line's "report": the page of each screen into a PDF file, and the exit
// status of a wrong call or an unreadable file.
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "ReportTestSupport.h"

namespace pemlo {
namespace {

struct CliRun {
    int exitCode = -1;
    QString err;
};

CliRun RunCli(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(PEMLO_CLI_PATH), arguments);
    if (!process.waitForFinished(120000)) return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

TEST(ReportCommand, PrintsEachScreenOnOneLandscapePage)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no soundings directory";
    if (!test::HaveTool(QStringLiteral("pdfinfo"))) GTEST_SKIP() << "poppler-utils are not installed";
    QTemporaryDir dir;
    const QString sounding = QStringLiteral(PEMLO_SOUNDINGS_DIR "/b099543.txt");
    struct Case {
        const char* view;
        const char* paper;
        const char* size;
        const char* caption;   // the word only this screen's charts show, if any
    };
    for (const Case c : {Case{"cpt", "letter", "792 x 612", nullptr}, Case{"results", "a4", "842 x 595", "Probability"},
                         Case{"UV", "letter", "792 x 612", "In-situ"}}) {
        SCOPED_TRACE(c.view);
        const QString pdf = dir.filePath(QString::fromLatin1(c.view) + QStringLiteral(".pdf"));
        const CliRun run = RunCli({QStringLiteral("report"), sounding, QStringLiteral("--data-units"), QStringLiteral("si"),
                                QStringLiteral("--view"), QString::fromLatin1(c.view), QStringLiteral("--paper"),
                                QString::fromLatin1(c.paper), QStringLiteral("--pdf"), pdf,
                                QStringLiteral("--number"), QStringLiteral("B099543")});
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        const auto info = test::RunTool(QStringLiteral("pdfinfo"), {pdf});
        ASSERT_TRUE(info);
        EXPECT_TRUE(info->contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n"))));
        EXPECT_TRUE(info->contains(QString::fromLatin1(c.size))) << info->toStdString();
        if (test::HaveTool(QStringLiteral("pdftotext"))) {
            const auto words = test::PdfWords(pdf);
            EXPECT_NE(test::FindWord(words, QStringLiteral("B099543")), nullptr);
            int captions = 0;
            for (const char* caption : {"Probability", "In-situ"})
                captions += test::FindWord(words, QString::fromLatin1(caption)) != nullptr;
            EXPECT_EQ(captions, c.caption ? 1 : 0);
            if (c.caption) {
                EXPECT_NE(test::FindWord(words, QString::fromLatin1(c.caption)), nullptr);
            }
        }
    }
}

TEST(ReportCommand, WrongCallsAndUnreadableFilesEndWithTheirStatus)
{
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("out.pdf"));
    const QString missing = dir.filePath(QStringLiteral("missing.txt"));
    struct Case {
        const char* name;
        QStringList arguments;
        int exitCode;
    };
    const Case cases[] = {
        {"unknown view", {QStringLiteral("report"), missing, QStringLiteral("--view"), QStringLiteral("plan"),
                          QStringLiteral("--pdf"), pdf}, 2},
        {"no pdf named", {QStringLiteral("report"), missing}, 2},
        {"missing file", {QStringLiteral("report"), missing, QStringLiteral("--pdf"), pdf}, 3},
        {"unwritable pdf", {QStringLiteral("report"), QStringLiteral(PEMLO_SOUNDINGS_DIR "/b099543.txt"),
                            QStringLiteral("--data-units"), QStringLiteral("si"), QStringLiteral("--pdf"),
                            QStringLiteral("/nonexistent/folder/out.pdf")}, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const CliRun run = RunCli(c.arguments);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
        EXPECT_FALSE(QFileInfo::exists(pdf));
    }
}

}  // namespace
}  // namespace pemlo
