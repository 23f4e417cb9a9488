// The project information screen: its key filter, Enter as Tab, what OK stores, where
// it routes the readings, and its data entry error.
#include <QLineEdit>

#include "input/ui/Frm_Titles.h"
#include "support/ScreenFixture.h"

namespace pemlo::test {
namespace {

class TitlesScreen : public ScreenFixture {
protected:
    static Frm_Titles* ShowTitles()
    {
        return ShowActive<Frm_Titles>(ScreenId::Frm_Titles);
    }
    void SetUp() override { FreshPastOpenFile(); }
};

// Only the cone number box filters its keys; Enter moves on like Tab without
// pressing anything, until it reaches OK.
TEST_F(TitlesScreen, KeysOfTheBoxes)
{
    const struct {
        int index;
        const char *keys, *left;
        const char* focusAfter = nullptr;  // Enter moves the focus; other keys leave it
        std::vector<Qt::Key> editing{};    // pressed after the keys typed
    } cases[] = {
        {5, "A1-2", "1-2"},                      // the letter is refused
        {4, "A1-2", "A1-2"},                     // the ground water table box takes anything
        {5, "x3.5 -7/", "3.5-7"},                // digits, points and minus signs only
        {0, "P-12 b", "P-12 b"},                 // other boxes are not filtered
        {5, "123456789012345", "123456789012"},  // and it holds at most 12
        {5, "12\b", "1"},                        // Backspace still edits it
        {5, "12.5", "25", nullptr, {Qt::Key_Home, Qt::Key_Delete, Qt::Key_End, Qt::Key_Left, Qt::Key_Left,
                                    Qt::Key_Delete}},  // so do Delete, Home, End and the arrows
        {2, "Bridge foundation at the river crossing, pier 4", "Bridge foundation at the river crossing,"},
        {8, "\r", "", "TxtInfo_0"}, {0, "P\r", "P", "TxtInfo_2"}, {4, "\r", "", "TxtInfo_5"}, {5, "7\r", "7", "CmdOK"},
    };
    OneReading(DataSI, GraphEnglish);
    Frm_Titles* titles = ShowTitles();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.keys);
        QLineEdit* box = titles->TxtInfo(c.index);
        box->clear();
        box->setFocus();
        QTest::keyClicks(box, QString::fromLatin1(c.keys));
        for (Qt::Key key : c.editing) QTest::keyClick(box, key);
        EXPECT_EQ(box->text(), QString::fromLatin1(c.left));
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), c.focusAfter ? QString::fromLatin1(c.focusAfter) : box->objectName());
    }
    // OK has the focus but was not pressed: nothing converted or shown.
    EXPECT_FALSE(Loaded(ScreenId::Frm_CPTData));
    EXPECT_EQ(TheRecord().DataUnits, DataSI);
    // A second Enter, now on OK, presses it; OK runs once the press is answered.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(Loaded(ScreenId::Frm_CPTData));
    EXPECT_EQ(TheRecord().DataUnits, DataEnglish);
}

// OK stores the six texts as typed, then brings English and SI readings into the graph
// units, once: a second OK (after Back) converts nothing. A failure is reported, what
// was stored stays stored and the open-file screen stays.
TEST_F(TitlesScreen, OkStoresConvertsOnceOrReportsItsFailure)
{
    const struct {
        int index;
        const char* typed;
        std::string Declarations::*field;
    } boxes[] = {
        {8, "03/14 09:30", &Declarations::ProjectDate},   {0, " P-2041 ", &Declarations::ProjectNumber},
        {2, "Overpass ramp B", &Declarations::ProjectTitle}, {3, "CPT-7", &Declarations::ProjectLocation},
        {4, "2.5 below", &Declarations::GWT},             {5, "15-2.", &Declarations::ConeNo},
    };
    const struct {
        const char* name;
        Integer dataUnits, graphUnits;
        float depth, tip;
        double depthAfter, tipAfter;  // 0: OK fails
        bool plotsFail = false;
    } cases[] = {
        {"English data, English graphs: nothing", DataEnglish, GraphEnglish, 10.0f, 1.0f, 10.0, 1.0},
        {"SI data, English graphs", DataSI, GraphEnglish, 10.0f, 1.0f, 32.8084, 10.44277},
        {"SI data, SI graphs: nothing", DataSI, GraphSI, 10.0f, 1.0f, 10.0, 1.0},
        {"conversion overflows", DataSI, GraphEnglish, 10.0f, 3.0e38f, 0.0, 0.0},  // beyond single range in tsf
        {"plots fail to load", DataSI, GraphEnglish, 10.0f, 1.0f, 0.0, 0.0, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        FreshPastOpenFile();
        if (c.plotsFail) PlotsFailToLoad();
        OneReading(c.dataUnits, c.graphUnits, c.depth, c.tip);
        Frm_Titles* titles = ShowTitles();
        for (const auto& box : boxes) titles->TxtInfo(box.index)->setText(QString::fromLatin1(box.typed));
        ModalWatcher watcher;
        Press(titles, "CmdOK");
        for (const auto& box : boxes) EXPECT_EQ(TheRecord().*box.field, box.typed);
        const bool fails = c.depthAfter == 0.0;
        EXPECT_EQ(Loaded(ScreenId::Frm_CPTData), !fails);
        EXPECT_EQ(Loaded(ScreenId::Frm_OpenFile), fails);
        EXPECT_TRUE(titles->isVisible());  // stays behind the plots
        EXPECT_FALSE(Screens::Instance().HasEnded());
        if (fails) {
            ExpectOneMessage(watcher, QStringLiteral(" Data Entry Error in Please ReEnter "), QStringLiteral(" Data Entry Message"),
                             QMessageBox::Critical);
            EXPECT_EQ(titles->focusWidget(), titles->TxtInfo(5));
            continue;
        }
        EXPECT_TRUE(watcher.Messages().empty());
        const Declarations& d = TheRecord();
        for (int press = 0; press < 2; ++press) {
            if (press > 0) Press(titles, "CmdOK");
            EXPECT_EQ(d.DataUnits, c.graphUnits == GraphSI ? DataSI : DataEnglish);  // the readings are now in graph units
            EXPECT_NEAR(d.Depth[1], c.depthAfter, 5e-6 * c.depthAfter);
            EXPECT_NEAR(d.Q_Tip[1], c.tipAfter, 5e-6 * c.tipAfter);
            EXPECT_NEAR(d.Q_Sleeve[1], c.tipAfter, 5e-6 * c.tipAfter);
        }
        // Cancel after OK starts over on a fresh open-file screen in its defaults, but
        // the graph units chosen stay: the next millivolt load is converted into them.
        Press(titles, "CmdCancel");
        EXPECT_TRUE(Loaded(ScreenId::Frm_OpenFile));
        EXPECT_EQ(d.GraphUnits, c.graphUnits);
    }
}

}  // namespace
}  // namespace pemlo::test
