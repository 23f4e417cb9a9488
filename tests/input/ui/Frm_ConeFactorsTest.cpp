// The cone factors screen: what its boxes let a user type, Continue's check for empty
// boxes and overflow, the conversion of millivolt readings, and Cancel.
#include "classify/PrintedDigits.h"
#include "input/ui/Frm_ConeFactors.h"
#include "input/ui/Frm_Titles.h"
#include "runtime/ui/MessageBox.h"
#include "support/ScreenFixture.h"

namespace pemlo::test {
namespace {

class ConeFactorsScreen : public ScreenFixture {
protected:
    static Frm_ConeFactors* ShowConeFactors()
    {
        return ShowActive<Frm_ConeFactors>(ScreenId::Frm_ConeFactors);
    }
    void SetUp() override { FreshPastOpenFile(); }
};

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

// Continue with an empty box asks for the first one; a factor or a product beyond
// single precision is not trapped: the run-time error is reported and the program
// ends. Either way nothing is converted.
TEST_F(ConeFactorsScreen, ContinueRefusesEmptyBoxesAndEndsOnOverflow)
{
    const struct {
        const char *tip, *sleeve;
        float reading;
        int focused;  // -1: the program ends
    } cases[] = {
        {"", "0.5", 1.0f, 0}, {"50", "", 1.0f, 1}, {"", "", 1.0f, 0},  // only the first empty box is reported
        {"1e39", "0.5", 1.0f, -1},   // the factor itself does not fit
        {"3e38", "0.5", 10.0f, -1},  // the product does not: entry 1 fails at its tip
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.tip) + "|" + c.sleeve);
        FreshPastOpenFile();
        OneReading(DataMilliVolts, GraphSI, 10.0f, c.reading);
        Frm_ConeFactors* screen = ShowConeFactors();
        screen->TxtFactor(0)->setText(QString::fromLatin1(c.tip));
        screen->TxtFactor(1)->setText(QString::fromLatin1(c.sleeve));
        ASSERT_EQ(screen->TxtFactor(0)->text(), QString::fromLatin1(c.tip));
        ModalWatcher watcher;
        Press(screen, "CmdNext");
        if (c.focused >= 0) {
            ExpectOneMessage(watcher, QStringLiteral(" Missing Data Entry .. Please Enter "), AppTitle(), QMessageBox::Critical);
            EXPECT_EQ(screen->focusWidget(), screen->TxtFactor(c.focused));
        } else {  // the platform's report of the error, in its words
            ExpectOneMessage(watcher, QStringLiteral("Run-time error '6':\n\nOverflow"), AppTitle(), QMessageBox::Critical);
        }
        EXPECT_EQ(Screens::Instance().HasEnded(), c.focused < 0);
        EXPECT_EQ(TheRecord().DataUnits, DataMilliVolts);
        EXPECT_FLOAT_EQ(TheRecord().Q_Tip[1], c.reading);
        EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
    }
}

// OK on the project information screen with millivolt readings shows the factors
// modally. Cancel converts nothing and returns there; the next OK shows the defaults
// again, not what was typed before Cancel; Continue converts into the graph units.
TEST_F(ConeFactorsScreen, CancelShowsTheDefaultsAgainAndContinueConverts)
{
    const struct {
        Integer graphUnits, unitsAfter;
        const char *tip, *sleeve;  // as the default factors make them
    } cases[] = {
        {GraphEnglish, DataEnglish, "522.1387", "5.221387"},
        {GraphSI, DataSI, "50", "0.5"},
    };
    for (const auto& c : cases) {
        FreshPastOpenFile();
        OneReading(DataMilliVolts, c.graphUnits);
        auto* titles = ShowActive<Frm_Titles>(ScreenId::Frm_Titles);
        const Declarations& d = TheRecord();
        for (const std::string button : {"CmdCancel", "CmdCancel", "CmdNext"}) {
            SCOPED_TRACE(std::string(c.tip) + " " + button);
            QString tip, sleeve;
            WhenShown answer(ScreenId::Frm_ConeFactors, [&](QWidget* screen) {
                auto* factors = static_cast<Frm_ConeFactors*>(screen);
                tip = factors->TxtFactor(0)->text();
                sleeve = factors->TxtFactor(1)->text();
                if (button == "CmdCancel") factors->TxtFactor(0)->setText(QStringLiteral("7"));
                Press(screen, button.c_str());
            });
            Press(titles, "CmdOK");
            ASSERT_TRUE(answer.Done());
            EXPECT_EQ(tip, QStringLiteral("50"));
            EXPECT_EQ(sleeve, QStringLiteral("0.5"));
            const bool continued = button == "CmdNext";
            EXPECT_EQ(d.DataUnits, continued ? c.unitsAfter : static_cast<Integer>(DataMilliVolts));
            EXPECT_PRINTS_AS(d.Q_Tip[1], continued ? c.tip : "1");
            EXPECT_PRINTS_AS(d.Q_Sleeve[1], continued ? c.sleeve : "1");
            EXPECT_FALSE(Loaded(ScreenId::Frm_ConeFactors));
            EXPECT_FALSE(Loaded(ScreenId::Frm_OpenFile));  // OK closes it once the factors are gone
            EXPECT_EQ(Loaded(ScreenId::Frm_CPTData), continued);
            EXPECT_EQ(titles->isVisible(), !continued);  // Continue hides it, not closes it
        }
    }
}

}  // namespace
}  // namespace pemlo::test
