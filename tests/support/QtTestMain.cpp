// Entry of the screen tests: an offscreen QApplication, whatever the environment says,
// so that the tests drive every screen without a display or a person.
#include <QApplication>
#include <QLocale>
#include <clocale>
#include <cstdlib>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
