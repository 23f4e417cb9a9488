// Drives the project information and cone factors screens on the program's record,
// with stand-ins for the open-file and CPT data screens (the plots can fail their
// load step), so that the routing of OK is seen without the plots.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "core/Declarations.h"
#include "core/Screens.h"
#include "input/Frm_ConeFactors.h"
#include "input/Frm_Titles.h"
#include "runtime/RunTimeError.h"

namespace pemlo::test {

class EntryScreens : public ::testing::Test {
protected:
    void SetUp() override { Restart(); }
    void TearDown() override { Screens::Instance().Reset(); }

    // Back to a freshly started program with a file loaded; tables restart per case.
    void Restart()
    {
        failPlotLoad = false;
        Screens& screens = Screens::Instance();
        screens.Reset();
        ResetRecord();
        RegisterFrm_Titles();
        RegisterFrm_ConeFactors();
        screens.Register(ScreenId::Frm_OpenFile, [] { return StandIn("Frm_OpenFile"); });
        screens.Register(ScreenId::Frm_CPTData, [this] {
            if (failPlotLoad) Raise(ErrOverflow);
            return StandIn("Frm_CPTData");
        });
        // The open-file screen loads before the project information is ever shown.
        TheRecord().DataUnits = DataEnglish;
        TheRecord().NumTitleLines = 10;
        screens.Show(ScreenId::Frm_OpenFile);
    }

    static QWidget* StandIn(const char* name)
    {
        auto* screen = new QWidget;
        screen->setObjectName(QString::fromLatin1(name));
        return screen;
    }

    // One reading at the given depth with tip and sleeve alike, in the given units.
    static void OneReading(Integer dataUnits, Integer graphUnits, float depth = 10.0f, float tip = 1.0f)
    {
        Declarations& d = TheRecord();
        d.DataUnits = dataUnits;
        d.GraphUnits = graphUnits;
        d.Depth[1] = depth;
        d.Q_Tip[1] = tip;
        d.Q_Sleeve[1] = tip;
        d.NumLines = 1;
    }

    // A screen shown and active so that keys reach it.
    template <class Screen> static Screen* ShowActive(ScreenId id)
    {
        Screens::Instance().Show(id);
        auto* screen = Screens::Instance().GetAs<Screen>(id);
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen));
        return screen;
    }
    static Frm_Titles* ShowTitles() { return ShowActive<Frm_Titles>(ScreenId::Frm_Titles); }
    static Frm_ConeFactors* ShowConeFactors() { return ShowActive<Frm_ConeFactors>(ScreenId::Frm_ConeFactors); }

    static void Press(QWidget* screen, const char* button)
    {
        auto* found = screen->findChild<QPushButton*>(QString::fromLatin1(button));
        ASSERT_NE(found, nullptr) << button;
        QTest::mouseClick(found, Qt::LeftButton);
    }

    static bool Loaded(ScreenId id) { return Screens::Instance().IsLoaded(id); }

    bool failPlotLoad = false;
};

// Runs an action on a screen the first time it is loaded and visible; meant for the
// modal cone factors screen, which holds the test inside OK until it is gone.
class WhenShown : public QObject {
public:
    WhenShown(ScreenId id, std::function<void(QWidget*)> action) : id_(id), action_(std::move(action))
    {
        timer_.setInterval(5);
        connect(&timer_, &QTimer::timeout, this, [this] {
            Screens& screens = Screens::Instance();
            if (done_ || !screens.IsLoaded(id_) || !screens.Get(id_)->isVisible()) return;
            done_ = true;
            timer_.stop();
            action_(screens.Get(id_));
        });
        timer_.start();
    }
    bool Done() const { return done_; }

private:
    ScreenId id_;
    std::function<void(QWidget*)> action_;
    QTimer timer_;
    bool done_ = false;
};

}  // namespace pemlo::test
