// The project information screen: its boxes, keys and tab order, what OK stores and
// where it routes the readings, its data entry error, and Cancel.
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QTest>

#include "EntryScreensFixture.h"
#include "support/ModalWatcher.h"
#include "views/Frm_CPTData.h"

namespace pemlo::test {
namespace {

using TitlesScreen = EntryScreens;

struct BoxCase {
    int index;
    const char* label;
    const char* caption;
    int maxLength;
    std::string Declarations::*field;
};
const BoxCase Boxes[] = {
    {8, "LblDate", "Date/Time: ", 12, &Declarations::ProjectDate},
    {0, "LblProjNum", "Project Number:", 15, &Declarations::ProjectNumber},
    {2, "LblTitle", "Project Title:", 40, &Declarations::ProjectTitle},
    {3, "Label3", "Location/No:", 15, &Declarations::ProjectLocation},
    {4, "LblOffset", "GWT (ft):", 9, &Declarations::GWT},
    {5, "LblElev", "Cone No:", 12, &Declarations::ConeNo},
};

TEST_F(TitlesScreen, BoxesCarryTheirLabelsLimitsAndTabOrder)
{
    Frm_Titles* titles = ShowTitles();
    for (const BoxCase& box : Boxes) {
        SCOPED_TRACE(box.caption);
        auto* edit = titles->findChild<QLineEdit*>(QStringLiteral("TxtInfo_%1").arg(box.index));
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(edit->maxLength(), box.maxLength);
        EXPECT_TRUE(edit->text().isEmpty());
        auto* label = titles->findChild<QLabel*>(QString::fromLatin1(box.label));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text(), QString::fromLatin1(box.caption));
        // Label and box share a line of the screen.
        EXPECT_LT(std::abs(label->geometry().center().y() - edit->geometry().center().y()), 4);
    }
    auto* ok = titles->findChild<QPushButton*>(QStringLiteral("CmdOK"));
    auto* cancel = titles->findChild<QPushButton*>(QStringLiteral("CmdCancel"));
    ASSERT_NE(ok, nullptr);
    ASSERT_NE(cancel, nullptr);
    EXPECT_EQ(ok->text(), QStringLiteral("OK"));
    EXPECT_EQ(cancel->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(TabWalk(titles->TxtInfo(8), 8).join(QLatin1Char(' ')),
              QStringLiteral("TxtInfo_8 TxtInfo_0 TxtInfo_2 TxtInfo_3 TxtInfo_4 TxtInfo_5 CmdOK CmdCancel TxtInfo_8"));
    EXPECT_EQ(titles->findChild<QLabel*>(QStringLiteral("LblMain"))->text(), QStringLiteral("Enter Project Information"));
    EXPECT_EQ(titles->findChild<QLabel*>(QStringLiteral("Label1"))->text(), QStringLiteral("(Ground Water Table)"));
}

TEST_F(TitlesScreen, OnlyTheConeNumberBoxFiltersItsKeys)
{
    struct Case {
        int index;
        const char* keys;
        const char* left;
    };
    const Case cases[] = {
        {5, "A1-2", "1-2"},          // the letter is refused
        {4, "A1-2", "A1-2"},         // the ground water table box takes anything
        {5, "x3.5 -7/", "3.5-7"},    // digits, points and minus signs only
        {0, "P-12 b", "P-12 b"},     // other boxes are not filtered
        {5, "123456789012345", "123456789012"},  // and it holds at most 12
    };
    Frm_Titles* titles = ShowTitles();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.keys);
        QLineEdit* box = titles->TxtInfo(c.index);
        box->clear();
        box->setFocus();
        QTest::keyClicks(box, QString::fromLatin1(c.keys));
        EXPECT_EQ(box->text(), QString::fromLatin1(c.left));
    }
    // Backspace still edits the cone number.
    QLineEdit* cone = titles->TxtInfo(5);
    cone->setText(QStringLiteral("12"));
    cone->setFocus();
    cone->end(false);
    QTest::keyClick(cone, Qt::Key_Backspace);
    EXPECT_EQ(cone->text(), QStringLiteral("1"));
}

TEST_F(TitlesScreen, TheFortyFirstTitleCharacterIsRefused)
{
    Frm_Titles* titles = ShowTitles();
    QLineEdit* title = titles->TxtInfo(2);
    title->setFocus();
    const QString typed = QStringLiteral("Bridge foundation at the river crossing, pier 4");
    QTest::keyClicks(title, typed);
    EXPECT_EQ(title->text(), typed.left(40));
}

TEST_F(TitlesScreen, EnterMovesToTheNextControlWithoutPressingIt)
{
    struct Case {
        int from;
        const char* to;
    };
    const Case cases[] = {{8, "TxtInfo_0"}, {0, "TxtInfo_2"}, {4, "TxtInfo_5"}, {5, "CmdOK"}};
    OneReading(DataSI, GraphEnglish);
    Frm_Titles* titles = ShowTitles();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.to);
        titles->TxtInfo(c.from)->setFocus();
        QTest::keyClick(titles->TxtInfo(c.from), Qt::Key_Return);
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), QString::fromLatin1(c.to));
        EXPECT_EQ(titles->TxtInfo(c.from)->text(), QString());
    }
    // OK has the focus but was not pressed: nothing stored, converted or shown.
    EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
    EXPECT_EQ(TheRecord().DataUnits, DataSI);
    EXPECT_FLOAT_EQ(TheRecord().Depth[1], 10.0f);
    EXPECT_TRUE(Loaded(ScreenId::Frm_OpenFile));

    // A second Enter, now on OK, presses it.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(Loaded(ScreenId::Frm_CPTData));
    EXPECT_EQ(TheRecord().DataUnits, DataEnglish);
}

TEST_F(TitlesScreen, OkStoresTheSixTextsAsTyped)
{
    Frm_Titles* titles = ShowTitles();
    const char* typed[] = {"03/14 09:30", " P-2041 ", "Overpass ramp B", "CPT-7", "2.5 below", "15-2."};
    for (std::size_t i = 0; i < std::size(Boxes); ++i) titles->TxtInfo(Boxes[i].index)->setText(QString::fromLatin1(typed[i]));
    QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
    for (std::size_t i = 0; i < std::size(Boxes); ++i) {
        EXPECT_EQ(TheRecord().*Boxes[i].field, typed[i]) << Boxes[i].caption;
    }
}

TEST_F(TitlesScreen, OkBringsEnglishAndSiReadingsToTheGraphUnits)
{
    struct Case {
        const char* name;
        Integer dataUnits;
        Integer graphUnits;
        float depth, tip;
        Integer unitsAfter;
        double depthAfter, tipAfter;
    };
    const Case cases[] = {
        {"English data, English graphs: nothing", DataEnglish, GraphEnglish, 10.0f, 1.0f, DataEnglish, 10.0, 1.0},
        {"SI data, SI graphs: nothing", DataSI, GraphSI, 10.0f, 1.0f, DataSI, 10.0, 1.0},
        {"SI data, English graphs", DataSI, GraphEnglish, 10.0f, 1.0f, DataEnglish, 32.8084, 10.44277},
        {"English data, SI graphs", DataEnglish, GraphSI, 30.0f, 10.44277f, DataSI, 9.144, 1.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Restart();
        OneReading(c.dataUnits, c.graphUnits, c.depth, c.tip, c.tip);
        Frm_Titles* titles = ShowTitles();
        QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
        const Declarations& d = TheRecord();
        EXPECT_EQ(d.DataUnits, c.unitsAfter);
        EXPECT_NEAR(d.Depth[1], c.depthAfter, 5e-6 * c.depthAfter);
        EXPECT_NEAR(d.Q_Tip[1], c.tipAfter, 5e-6 * c.tipAfter);
        EXPECT_NEAR(d.Q_Sleeve[1], c.tipAfter, 5e-6 * c.tipAfter);
        EXPECT_TRUE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_FALSE(Loaded(ScreenId::Frm_OpenFile));
        EXPECT_TRUE(titles->isVisible());  // stays behind the plots

        // A second OK (after Back) does not convert again.
        QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
        EXPECT_EQ(d.DataUnits, c.unitsAfter);
        EXPECT_NEAR(d.Depth[1], c.depthAfter, 5e-6 * c.depthAfter);
    }
}

TEST_F(TitlesScreen, AFailureOfOkIsReportedAndTheOpenFileScreenStays)
{
    struct Case {
        const char* name;
        float tip;          // a tip beyond single range once in tsf makes the conversion overflow
        bool plotsFail;     // or the plots fail in their load step
    };
    const Case cases[] = {
        {"conversion overflows", 3.0e38f, false},
        {"plots fail to load", 1.0f, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Restart();
        failPlotLoad = c.plotsFail;
        OneReading(DataSI, GraphEnglish, 10.0f, c.tip, 1.0f);
        Frm_Titles* titles = ShowTitles();
        titles->TxtInfo(0)->setText(QStringLiteral("P-77"));
        ModalWatcher watcher;
        QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
        ASSERT_EQ(watcher.Messages().size(), 1u);
        EXPECT_EQ(watcher.Messages()[0].text, QStringLiteral(" Data Entry Error in Please ReEnter "));
        EXPECT_EQ(watcher.Messages()[0].title, QStringLiteral(" Data Entry Message"));
        EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Critical);
        EXPECT_EQ(titles->focusWidget(), titles->TxtInfo(5));
        EXPECT_TRUE(Loaded(ScreenId::Frm_OpenFile));
        EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_FALSE(Screens::Instance().HasEnded());
        EXPECT_EQ(TheRecord().ProjectNumber, "P-77");  // what was stored stays stored
    }
}

TEST_F(TitlesScreen, CancelReturnsToTheOpenFileScreenFreshIfOkClosedIt)
{
    OneReading(DataEnglish, GraphEnglish);
    Frm_Titles* titles = ShowTitles();
    titles->TxtInfo(2)->setText(QStringLiteral("typed before Cancel"));
    QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdCancel")), Qt::LeftButton);
    EXPECT_FALSE(Loaded(ScreenId::Frm_Titles));
    EXPECT_TRUE(Loaded(ScreenId::Frm_OpenFile));
    EXPECT_EQ(openFileBuilds, 1);  // the one still loaded, not a new one

    titles = ShowTitles();
    EXPECT_TRUE(titles->TxtInfo(2)->text().isEmpty());  // Cancel lost the texts
    QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
    ASSERT_FALSE(Loaded(ScreenId::Frm_OpenFile));
    QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdCancel")), Qt::LeftButton);
    EXPECT_TRUE(Loaded(ScreenId::Frm_OpenFile));
    EXPECT_TRUE(Screens::Instance().Get(ScreenId::Frm_OpenFile)->isVisible());
    EXPECT_EQ(openFileBuilds, 2);
}

// With the real plots: they open on the converted readings, Back reveals this screen
// (hidden by the cone factors for millivolt data), and OK again converts nothing.
TEST_F(TitlesScreen, RoundTripThroughThePlotsConvertsOnce)
{
    const struct {
        const char* name;
        Integer dataUnits;
        bool titlesVisibleBehindPlots;
    } cases[] = {
        {"SI readings", DataSI, true},
        {"millivolt readings", DataMilliVolts, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Restart();
        RegisterFrm_CPTData();
        Declarations& d = TheRecord();
        OneReading(c.dataUnits, GraphEnglish);
        d.Depth[2] = 10.1f;
        d.Q_Tip[2] = 1.0f;
        d.Q_Sleeve[2] = 1.0f;
        d.NumLines = 2;
        Frm_Titles* titles = ShowTitles();
        WhenShown accept(ScreenId::Frm_ConeFactors, [](QWidget* screen) {
            QTest::mouseClick(screen->findChild<QPushButton*>(QStringLiteral("CmdNext")), Qt::LeftButton);
        });
        QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
        ASSERT_TRUE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_EQ(titles->isVisible(), c.titlesVisibleBehindPlots);
        EXPECT_EQ(d.DataUnits, DataEnglish);
        const float depthInFeet = d.Depth[1];
        EXPECT_NEAR(depthInFeet, 32.8084, 1e-4);

        auto* back = Screens::Instance().Get(ScreenId::Frm_CPTData)->findChild<QToolButton*>(QStringLiteral("Back"));
        ASSERT_NE(back, nullptr);
        QTest::mouseClick(back, Qt::LeftButton);
        EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_TRUE(titles->isVisible());

        QTest::mouseClick(titles->findChild<QPushButton*>(QStringLiteral("CmdOK")), Qt::LeftButton);
        EXPECT_TRUE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_FALSE(Loaded(ScreenId::Frm_ConeFactors));  // English now: no factors asked again
        EXPECT_EQ(d.Depth[1], depthInFeet);
    }
}

}  // namespace
}  // namespace pemlo::test
