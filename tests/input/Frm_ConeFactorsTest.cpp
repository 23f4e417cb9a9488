// The cone factors screen: what its boxes let a user type, Continue's check for empty
// boxes, the conversion of millivolt readings, and the way back through Cancel.
#include "classify/PrintedDigits.h"
#include "EntryScreensFixture.h"
#include "runtime/MessageBox.h"
#include "support/ModalWatcher.h"

namespace pemlo::test {
namespace {

using ConeFactorsScreen = EntryScreens;

TEST_F(ConeFactorsScreen, WhatIsNotYetANumberIsEmptiedAtOnce)
{
    const struct {
        const char* keys;
        const char* left;
    } cases[] = {
        {"0.5", "0.5"}, {".", ""},  // a value cannot start with a decimal point
        {".5", "5"},    {"-", ""},  // nor with a minus sign
        {"-2", "2"},    {"12.", "12."},
        {"1e", ""},     // an exponent cannot be typed, its letter empties the box
        {"4a", ""},     {"123456", "12345"},  // five characters at most
    };
    Frm_ConeFactors* screen = ShowConeFactors();
    QLineEdit* box = screen->TxtFactor(1);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.keys);
        box->clear();
        box->setFocus();
        QTest::keyClicks(box, QString::fromLatin1(c.keys));
        EXPECT_EQ(box->text(), QString::fromLatin1(c.left));
        EXPECT_EQ(screen->TxtFactor(0)->text(), QStringLiteral("50"));  // the other box is kept
    }
    // A minus sign put in front of digits already there stays.
    box->setText(QStringLiteral("5"));
    box->home(false);
    QTest::keyClick(box, Qt::Key_Minus);
    EXPECT_EQ(box->text(), QStringLiteral("-5"));
}

TEST_F(ConeFactorsScreen, NumericTestOfPastedTexts)
{
    const struct {
        const char* text;
        bool numeric;
    } cases[] = {
        {"50", true}, {" 7 ", true}, {"-0.5", true}, {"+3", true}, {".5", true}, {"5.", true},
        {"1E5", true}, {"2d-3", true}, {"", false}, {"-", false}, {".", false}, {"-.", false},
        {"1e", false}, {"1,5", false}, {"5-", false}, {"0x10", false}, {"1.2.3", false},
    };
    for (const auto& c : cases) EXPECT_EQ(IsNumericText(QString::fromLatin1(c.text)), c.numeric) << c.text;
}

TEST_F(ConeFactorsScreen, ContinueAsksForTheFirstEmptyBox)
{
    const struct {
        const char *tip, *sleeve;
        int focused;
    } cases[] = {{"", "0.5", 0}, {"50", "", 1}, {"", "", 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.tip) + "|" + c.sleeve);
        Restart();
        OneReading(DataMilliVolts, GraphEnglish);
        Frm_ConeFactors* screen = ShowConeFactors();
        screen->TxtFactor(0)->setText(QString::fromLatin1(c.tip));
        screen->TxtFactor(1)->setText(QString::fromLatin1(c.sleeve));
        ModalWatcher watcher;
        Press(screen, "CmdNext");
        ASSERT_EQ(watcher.Messages().size(), 1u);  // only the first empty box is reported
        EXPECT_EQ(watcher.Messages()[0].text, QStringLiteral(" Missing Data Entry .. Please Enter "));
        EXPECT_EQ(watcher.Messages()[0].title, AppTitle());
        EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Critical);
        EXPECT_EQ(screen->focusWidget(), screen->TxtFactor(c.focused));
        EXPECT_TRUE(Loaded(ScreenId::Frm_ConeFactors));
        EXPECT_EQ(TheRecord().DataUnits, DataMilliVolts);
        EXPECT_FLOAT_EQ(TheRecord().Q_Tip[1], 1.0f);
    }
}

// OK on the project information screen with millivolt readings: the cone factors
// screen is shown modally and Continue converts into the graph units.
TEST_F(ConeFactorsScreen, ContinueConvertsMilliVoltsIntoTheGraphUnits)
{
    const struct {
        Integer graphUnits, unitsAfter;
        const char *depth, *tip, *sleeve;
    } cases[] = {
        {GraphEnglish, DataEnglish, "32.8084", "522.1387", "5.221387"},
        {GraphSI, DataSI, "10", "50", "0.5"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tip);
        Restart();
        OneReading(DataMilliVolts, c.graphUnits);
        Frm_Titles* titles = ShowTitles();
        WhenShown answer(ScreenId::Frm_ConeFactors, [](QWidget* screen) { Press(screen, "CmdNext"); });
        Press(titles, "CmdOK");
        ASSERT_TRUE(answer.Done());
        const Declarations& d = TheRecord();
        EXPECT_EQ(d.DataUnits, c.unitsAfter);
        EXPECT_PRINTS_AS(d.Depth[1], c.depth);
        EXPECT_PRINTS_AS(d.Q_Tip[1], c.tip);
        EXPECT_PRINTS_AS(d.Q_Sleeve[1], c.sleeve);
        EXPECT_FALSE(Loaded(ScreenId::Frm_ConeFactors));
        EXPECT_FALSE(Loaded(ScreenId::Frm_OpenFile));
        EXPECT_TRUE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_FALSE(titles->isVisible());  // hidden, not closed
    }
}

// Cancel converts nothing and returns to the project information; the next OK shows
// the factors screen with its defaults again, not what was typed before Cancel.
TEST_F(ConeFactorsScreen, CancelLeavesMilliVoltsAndShowsTheDefaultsAgain)
{
    OneReading(DataMilliVolts, GraphEnglish);
    Frm_Titles* titles = ShowTitles();
    for (int opening = 0; opening < 2; ++opening) {
        SCOPED_TRACE(opening);
        QString tip, sleeve;
        WhenShown typeThenCancel(ScreenId::Frm_ConeFactors, [&](QWidget* screen) {
            auto* factors = static_cast<Frm_ConeFactors*>(screen);
            tip = factors->TxtFactor(0)->text();
            sleeve = factors->TxtFactor(1)->text();
            factors->TxtFactor(0)->setText(QStringLiteral("7"));
            factors->TxtFactor(1)->setText(QStringLiteral("0.25"));
            Press(screen, "CmdCancel");
        });
        Press(titles, "CmdOK");
        ASSERT_TRUE(typeThenCancel.Done());
        EXPECT_EQ(tip, QStringLiteral("50"));
        EXPECT_EQ(sleeve, QStringLiteral("0.5"));
        EXPECT_EQ(TheRecord().DataUnits, DataMilliVolts);
        EXPECT_FLOAT_EQ(TheRecord().Q_Tip[1], 1.0f);
        EXPECT_FLOAT_EQ(TheRecord().Depth[1], 10.0f);
        EXPECT_FALSE(Loaded(ScreenId::Frm_ConeFactors));
        EXPECT_FALSE(Loaded(ScreenId::Frm_OpenFile));  // OK closes it once the factors are gone
        EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
        EXPECT_TRUE(titles->isVisible());
    }
}

// A factor or a product beyond single precision is not trapped: the run-time error
// is reported and the program ends; the factor case converts nothing.
TEST_F(ConeFactorsScreen, OverflowEndsTheProgramWithTheRunTimeError)
{
    const struct {
        const char* tip;
        float reading;
    } cases[] = {
        {"1e39", 1.0f},   // the factor itself does not fit
        {"3e38", 10.0f},  // the product does not: entry 1 fails at its tip
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tip);
        Restart();
        OneReading(DataMilliVolts, GraphSI, 10.0f, c.reading);
        Frm_ConeFactors* screen = ShowConeFactors();
        screen->TxtFactor(0)->setText(QString::fromLatin1(c.tip));
        ASSERT_EQ(screen->TxtFactor(0)->text(), QString::fromLatin1(c.tip));
        ModalWatcher watcher;
        Press(screen, "CmdNext");
        ASSERT_EQ(watcher.Messages().size(), 1u);
        EXPECT_TRUE(watcher.Messages()[0].text.startsWith(QStringLiteral("Run-time error '6':")));
        EXPECT_TRUE(Screens::Instance().HasEnded());
        EXPECT_EQ(TheRecord().DataUnits, DataMilliVolts);
        EXPECT_FLOAT_EQ(TheRecord().Q_Tip[1], c.reading);
        EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
    }
}

}  // namespace
}  // namespace pemlo::test
