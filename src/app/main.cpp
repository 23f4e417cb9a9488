// The desktop program: registers its screens and starts with the splash screen.
// Everything else happens in the screens' event handlers.
#include <QApplication>
#include <QLocale>
#include <clocale>

#include "app/AllScreens.h"
#include "core/ui/Screens.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/ui/RunTimeErrorReport.h"

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    // Numbers in files and on screen are read and written the same way everywhere.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    // The name assistive technology announces. No display name: Qt would append it
    // to every window title, and the titles are the screens' own, word for word.
    QApplication::setApplicationName(pemlo::AppTitle());
    // A hidden screen keeps the program running; the registry decides when it ends.
    QApplication::setQuitOnLastWindowClosed(false);

    pemlo::Screens& screens = pemlo::Screens::Instance();
    screens.SetEndsApplication(true);
    pemlo::RegisterAllScreens();
    pemlo::Untrapped([&screens] { screens.Show(pemlo::ScreenId::Frm_Splash); });
    if (screens.HasEnded()) {
        return 0;
    }
    return QApplication::exec();
}
