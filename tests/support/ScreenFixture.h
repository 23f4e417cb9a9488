// A fresh program for every screen test: the record back to program start, every
// screen unloaded and registered anew, the pointer normal, no file channel open.
#pragma once

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>
#include <string>

#include <gtest/gtest.h>

#include "core/AllScreens.h"
#include "core/Declarations.h"
#include "core/Screens.h"
#include "runtime/FileChannels.h"
#include "runtime/MousePointer.h"

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

private:
    QTemporaryDir dir_;
};

}  // namespace pemlo::test
