// The About and Help windows: the Help wording word for word, the About disclaimer,
// their size on the screen, and OK.
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

#include "info/Frm_About.h"
#include "info/Frm_HelpInfo.h"
#include "support/ScreenFixture.h"

namespace pemlo::test {
namespace {

using InfoWindows = ScreenFixture;

QTextDocument* Text(ScreenId id)
{
    auto* box = Screens::Instance().Get(id)->findChild<QTextBrowser*>(QStringLiteral("RichTextBox1"));
    EXPECT_NE(box, nullptr);
    EXPECT_TRUE(box->isReadOnly());
    return box->document();
}

#define ARROW "\xE2\x9E\xA2\t"
// Every non-empty Help paragraph as the user reads it: an arrow or an "o"
// one level down, a tab, then the text.
const char* const HelpLines[] = {
    "Help on Using the Program",
    ARROW "The program reads cone data files in ASCII format with extensions:  *.txt (the default extension), *.dat, and *.prn.",
    ARROW "Cone data in each line should be in the order: depth, tip resistance, and sleeve resistance.",
    ARROW "The Readings in each line can be separated by either commas or space.",
    ARROW "The program discards other columns in the file such as pore pressure readings when a piezocone is used.",
    ARROW "The program can be used to view data, plot data, and plot soil classification.",
    ARROW "To View Data:",
    "o\tSelect \"View Data File\"",
    "o\tBrowse to File",
    "o\tSelect File",
    "o\tClick \"Open\"",
    ARROW "To Plot Data:",
    "o\tView data to determine units of measurement and the number of title lines in the file. Follow the steps above to view data (Optional).",
    "o\tSpecify the number of title lines in the file (Default = 10 title lines).",
    "o\tSpecify the units of the data. The program reads CPT data in English units (default), SI units, and direct readings from instruments in Millivolts. ",
    "o\tSelect \"Load Data File\", Browse to data file, select data file, and Click \"Open\" to load the file into the program\"",
    "o\tSpecify the preferred display units for output results. The program plots graphs in English units (default) and SI units.",
    "o\tSelect \"Plot Cone Data\".",
    "o\tEnter project information (Date/Time, Project Number\xE2\x80\xA6) ",
    "o\tEnter Cone Conversion Factor (Only for units in Millivolts). ",
    ARROW "To Plot Soil Classification:",
    "o\tFollow the steps above to plot data.",
    "o\tSelect \"Classify Soil\" from the top menu.",
    ARROW "To Plot Soil Classification Index U and Soil In-situ State Index V:",
    "o\tFollow the steps above to plot data.",
    "o\tSelect \"Plot U & V\" from the top menu.",
    "Note:  The SI unit of Depth is meter (m) and of Tip and Sleeve resistance is MPa (MN/m2). The English unit of depth is feet (ft) and of Tip and Sleeve resistance is TSF (ton/ft2).",
};
#undef ARROW

TEST_F(InfoWindows, HelpReadsWordForWordWithItsMarkers)
{
    QStringList paragraphs;
    for (QTextBlock block = Text(ScreenId::Frm_HelpInfo)->begin(); block.isValid(); block = block.next()) {
        if (!block.text().isEmpty()) paragraphs << block.text();
    }
    QStringList expected;
    for (const char* line : HelpLines) expected << QString::fromUtf8(line);
    EXPECT_EQ(paragraphs, expected);
}

TEST_F(InfoWindows, AboutKeepsItsDisclaimer)
{
    const QString text = Text(ScreenId::Frm_About)->toPlainText();
    EXPECT_TRUE(text.contains(QStringLiteral("The contents of this computer code reflect the views of the authors, who "
                                             "are responsible for the fact and the accuracy of the data presented herein.")));
    EXPECT_TRUE(text.contains(QStringLiteral("does not constitute a standard, speci") +
                              QStringLiteral("fication, or regulation.")));
}

TEST_F(InfoWindows, ModalSizedFromTheScreenAndClosedByOk)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    for (ScreenId id : {ScreenId::Frm_About, ScreenId::Frm_HelpInfo}) {
        QWidget* window = screens().Get(id);
        EXPECT_EQ(window->windowModality(), Qt::ApplicationModal) << ScreenName(id).toStdString();
        const QString text = Text(id)->toPlainText();
        screens().Show(id);
        // Shown, not only built: the contents must not force a larger window.
        EXPECT_EQ(window->size(), QSize(static_cast<int>(0.72 * screen.width()), static_cast<int>(0.6 * screen.height())));
        QTest::mouseClick(Find<QPushButton>(window, "CmdOK"), Qt::LeftButton);
        EXPECT_FALSE(screens().IsLoaded(id));
        EXPECT_EQ(Text(id)->toPlainText(), text);  // the next opening is a fresh window with the same text
        screens().Close(id);
    }
}

}  // namespace
}  // namespace pemlo::test
