// A fresh program for every screen test: the record back to program start, every
// screen unloaded and registered anew, the pointer normal, no file channel open; and
// the few moves the screen tests make on it.
#pragma once

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <array>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "app/AllScreens.h"
#include "core/Declarations.h"
#include "core/ui/Screens.h"
#include "runtime/FileChannels.h"
#include "runtime/ui/MousePointer.h"
#include "runtime/RunTimeError.h"
#include "support/ModalWatcher.h"

namespace pemlo::test {

class ScreenFixture : public ::testing::Test {
protected:
    void SetUp() override { Fresh(); }
    void TearDown() override { Fresh(); }

    static void Fresh()
    {
        Screens::Instance().Reset();
        RegisterAllScreens();
        ResetRecord();
        for (Integer n = 1; n <= FileChannels::MaxChannel; ++n) {
            ProgramChannels().Close(n);
        }
        SetMousePointer(MousePointer::Default);
    }

    // A fresh program past its open-file screen: that screen is loaded before the entry
    // screens are ever shown, and its load sets the units, so readings come after it.
    static void FreshPastOpenFile()
    {
        Fresh();
        screens().Show(ScreenId::Frm_OpenFile);
    }

    // Lets queued work run (deferred deletes, the end-of-program check).
    static void Settle()
    {
        for (int i = 0; i < 3; ++i) {
            QApplication::processEvents();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    // Writes bytes to a file of the test's own folder and returns its full path.
    QString WriteFile(const QString& name, const std::string& bytes)
    {
        const QString path = dir_.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        return path;
    }

    template <class T> static T* Find(QWidget* screen, const char* name)
    {
        T* found = screen->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    static Screens& screens() { return Screens::Instance(); }
    static bool Loaded(ScreenId id) { return Screens::Instance().IsLoaded(id); }

    // A click, then the turn of the event loop that runs a command queued after the
    // press (one that opens a modal window).
    static void Press(QWidget* screen, const char* button)
    {
        QTest::mouseClick(Find<QPushButton>(screen, button), Qt::LeftButton);
        QCoreApplication::sendPostedEvents();
    }

    // A screen shown and active, so that keys reach it.
    template <class Screen> static Screen* ShowActive(ScreenId id)
    {
        screens().Show(id);
        auto* screen = screens().GetAs<Screen>(id);
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen));
        return screen;
    }

public:
    // The record after a load of these readings (depth, qc, fs) in the given units; of
    // one reading, tip and sleeve alike.
    static void Readings(const std::vector<std::array<float, 3>>& readings, Integer dataUnits, Integer graphUnits)
    {
        Declarations& d = TheRecord();
        d.DataUnits = dataUnits;
        d.GraphUnits = graphUnits;
        d.NumLines = static_cast<Integer>(readings.size());
        for (int i = 1; i <= d.NumLines; ++i)
            std::tie(d.Depth[i], d.Q_Tip[i], d.Q_Sleeve[i]) = std::tuple_cat(readings[static_cast<std::size_t>(i - 1)]);
    }
    static void OneReading(Integer dataUnits, Integer graphUnits, float depth = 10.0f, float tip = 1.0f)
    {
        Readings({{depth, tip, tip}}, dataUnits, graphUnits);
    }

protected:
    // The CPT data screen's load fails from now on, as a plot's run-time error would.
    static void PlotsFailToLoad()
    {
        screens().Register(ScreenId::Frm_CPTData, []() -> QWidget* { Raise(ErrOverflow); });
    }

private:
    QTemporaryDir dir_;
};

}  // namespace pemlo::test
