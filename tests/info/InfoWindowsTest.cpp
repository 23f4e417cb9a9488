// The About and Help windows: the Help wording word for word with its formatting, the
// About sections, their size on the screen, and OK.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextFragment>
#include <vector>

#include "core/Screens.h"
#include "info/Frm_About.h"
#include "info/Frm_HelpInfo.h"

namespace pemlo::test {
namespace {

const QString Arrow = QString(QChar(0x27A2));

class InfoWindows : public ::testing::Test {
protected:
    void SetUp() override
    {
        Screens::Instance().Reset();
        RegisterFrm_About();
        RegisterFrm_HelpInfo();
    }
    void TearDown() override { Screens::Instance().Reset(); }

    static QTextDocument* Text(ScreenId id)
    {
        auto* box = Screens::Instance().Get(id)->findChild<QTextBrowser*>(QStringLiteral("RichTextBox1"));
        EXPECT_NE(box, nullptr);
        EXPECT_TRUE(box->isReadOnly());
        return box->document();
    }

    // The paragraphs of a document, without their empty ones.
    static std::vector<QTextBlock> Paragraphs(QTextDocument* document)
    {
        std::vector<QTextBlock> blocks;
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            if (!block.text().isEmpty()) blocks.push_back(block);
        }
        return blocks;
    }
};

// Marker and text of every non-empty Help paragraph, as the user reads them.
struct HelpLine {
    const char* marker;  // "" none, "arrow" first level, "o" second level
    const char* text;
};
const HelpLine HelpLines[] = {
    {"", "Help on Using the Program"},
    {"arrow", "The program reads cone data files in ASCII format with extensions:  *.txt (the default extension), *.dat, and *.prn."},
    {"arrow", "Cone data in each line should be in the order: depth, tip resistance, and sleeve resistance."},
    {"arrow", "The Readings in each line can be separated by either commas or space."},
    {"arrow", "The program discards other columns in the file such as pore pressure readings when a piezocone is used."},
    {"arrow", "The program can be used to view data, plot data, and plot soil classification."},
    {"arrow", "To View Data:"},
    {"o", "Select \"View Data File\""},
    {"o", "Browse to File"},
    {"o", "Select File"},
    {"o", "Click \"Open\""},
    {"arrow", "To Plot Data:"},
    {"o", "View data to determine units of measurement and the number of title lines in the file. Follow the steps above to view data (Optional)."},
    {"o", "Specify the number of title lines in the file (Default = 10 title lines)."},
    {"o", "Specify the units of the data. The program reads CPT data in English units (default), SI units, and direct readings from instruments in Millivolts. "},
    {"o", "Select \"Load Data File\", Browse to data file, select data file, and Click \"Open\" to load the file into the program\""},
    {"o", "Specify the preferred display units for output results. The program plots graphs in English units (default) and SI units."},
    {"o", "Select \"Plot Cone Data\"."},
    {"o", "Enter project information (Date/Time, Project Number\xE2\x80\xA6) "},
    {"o", "Enter Cone Conversion Factor (Only for units in Millivolts). "},
    {"arrow", "To Plot Soil Classification:"},
    {"o", "Follow the steps above to plot data."},
    {"o", "Select \"Classify Soil\" from the top menu."},
    {"arrow", "To Plot Soil Classification Index U and Soil In-situ State Index V:"},
    {"o", "Follow the steps above to plot data."},
    {"o", "Select \"Plot U & V\" from the top menu."},
    {"", "Note:  The SI unit of Depth is meter (m) and of Tip and Sleeve resistance is MPa (MN/m2). The English unit of depth is feet (ft) and of Tip and Sleeve resistance is TSF (ton/ft2)."},
};

TEST_F(InfoWindows, HelpReadsWordForWordWithItsMarkersAndIndents)
{
    const std::vector<QTextBlock> blocks = Paragraphs(Text(ScreenId::Frm_HelpInfo));
    ASSERT_EQ(blocks.size(), std::size(HelpLines));
    double arrowIndent = -1.0;
    double subIndent = -1.0;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const HelpLine& line = HelpLines[i];
        const QString expected = QString::fromUtf8(line.text);
        const QString marker = QString::fromLatin1(line.marker);
        const QString text = blocks[i].text();
        SCOPED_TRACE(line.text);
        const QTextBlockFormat format = blocks[i].blockFormat();
        if (marker.isEmpty()) {
            EXPECT_EQ(text, expected);
            continue;
        }
        EXPECT_EQ(text, (marker == QStringLiteral("arrow") ? Arrow : marker) + QLatin1Char('\t') + expected);
        // Hanging indent: the marker sits left of the text's margin.
        EXPECT_LT(format.textIndent(), 0.0);
        EXPECT_GT(format.leftMargin() + format.textIndent(), -0.5);
        (marker == QStringLiteral("o") ? subIndent : arrowIndent) = format.leftMargin();
        if (marker == QStringLiteral("o")) {
            const QTextFragment first = blocks[i].begin().fragment();
            EXPECT_EQ(first.text(), QStringLiteral("o"));
            EXPECT_TRUE(first.charFormat().fontFamilies().toStringList().contains(QStringLiteral("Courier New")));
        }
    }
    EXPECT_GT(subIndent, arrowIndent);
    EXPECT_GT(blocks.back().blockFormat().leftMargin(), 0.0);  // the note is indented
}

TEST_F(InfoWindows, HelpFormatsItsHeadingBodyAndUnderlines)
{
    QTextDocument* document = Text(ScreenId::Frm_HelpInfo);
    QStringList underlined;
    bool headingSeen = false;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            if (format.fontUnderline()) underlined << fragment.text();
            if (fragment.text() == QStringLiteral("Help on Using the Program")) {
                headingSeen = true;
                EXPECT_EQ(format.fontWeight(), QFont::Bold);
                EXPECT_EQ(format.foreground().color(), QColor(0, 128, 0));
                EXPECT_TRUE(format.fontFamilies().toStringList().contains(QStringLiteral("Times New Roman")));
                EXPECT_EQ(format.fontPointSize(), 11.0);
            } else if (fragment.text().startsWith(QStringLiteral("The Readings"))) {
                EXPECT_TRUE(format.fontFamilies().toStringList().contains(QStringLiteral("Arial")));
                EXPECT_EQ(format.fontPointSize(), 10.0);
                EXPECT_NE(format.fontWeight(), QFont::Bold);
            }
        }
    }
    EXPECT_TRUE(headingSeen);
    EXPECT_EQ(underlined, (QStringList{QStringLiteral("Optional"), QStringLiteral("Only"), QStringLiteral("Note:")}));
}

TEST_F(InfoWindows, AboutHasItsThreeSectionsDisclaimerAndFiveReferences)
{
    QTextDocument* document = Text(ScreenId::Frm_About);
    const QString plain = document->toPlainText();
    const QString standard = QStringLiteral("This classification/computer code does not constitute a standard, speci") +
                             QStringLiteral("fication, or regulation.");
    EXPECT_TRUE(plain.contains(QStringLiteral(
        "The contents of this computer code reflect the views of the authors, who are responsible for the fact "
        "and the accuracy of the data presented herein.")));
    EXPECT_TRUE(plain.contains(standard));

    QStringList headings;
    QStringList numbers;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        if (block.text().isEmpty()) continue;
        const QTextCharFormat format = block.begin().fragment().charFormat();
        if (format.fontWeight() == QFont::Bold && format.foreground().color() == QColor(0, 128, 0) &&
            format.fontFamilies().toStringList().contains(QStringLiteral("Times New Roman"))) {
            headings << block.text();
        }
        const QString text = block.text();
        const int dot = text.indexOf(QStringLiteral(".\t"));
        if (dot > 0 && dot < 3) numbers << text.left(dot);
    }
    EXPECT_EQ(headings, (QStringList{QStringLiteral("Disclaimer"), QStringLiteral("References"),
                                     QStringLiteral("Acknowledgements")}));
    EXPECT_EQ(numbers, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                                    QStringLiteral("4"), QStringLiteral("5")}));
}

TEST_F(InfoWindows, ModalSizedFromTheScreenAndClosedByOk)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    for (ScreenId id : {ScreenId::Frm_About, ScreenId::Frm_HelpInfo}) {
        SCOPED_TRACE(ScreenName(id).toStdString());
        for (int opening = 0; opening < 2; ++opening) {
            QWidget* window = Screens::Instance().Get(id);
            EXPECT_EQ(window->objectName(), ScreenName(id));
            EXPECT_EQ(window->windowModality(), Qt::ApplicationModal);
            const QString text = Text(id)->toPlainText();
            Screens::Instance().Show(id);
            // Shown, not only built: the contents must not force a larger window.
            EXPECT_EQ(window->width(), static_cast<int>(0.72 * screen.width()));
            EXPECT_EQ(window->height(), static_cast<int>(0.6 * screen.height()));
            auto* ok = window->findChild<QPushButton*>(QStringLiteral("CmdOK"));
            ASSERT_NE(ok, nullptr);
            EXPECT_EQ(ok->text(), QStringLiteral("OK"));
            QTest::mouseClick(ok, Qt::LeftButton);
            EXPECT_FALSE(Screens::Instance().IsLoaded(id));
            // The next opening is a fresh window with the same text.
            EXPECT_EQ(Text(id)->toPlainText(), text);
            Screens::Instance().Close(id);
        }
    }
}

}  // namespace
}  // namespace pemlo::test
