// Draws the start screens into PNG files, to look at them as a user would:
//   pemlo_grab_screens <output folder> [data file to preview]
//   pemlo_grab_screens --root <file.png>   (the whole display, e.g. the running program)
// Run it under a real X server (Xvfb) for the fonts a user gets.
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <clocale>
#include <cstdio>

#include "app/AllScreens.h"
#include "core/Declarations.h"
#include "core/ui/Screens.h"
#include "input/ui/Frm_OpenFile.h"
#include "runtime/FileChannels.h"

namespace {

void Save(QWidget* screen, const QSize& size, const QString& path)
{
    screen->resize(size);
    screen->show();
    QApplication::processEvents();
    screen->grab().save(path);
    std::printf("%s (%dx%d)\n", qPrintable(path), screen->width(), screen->height());
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <output folder> [data file]\n", argv[0]);
        return 2;
    }
    if (QString::fromLocal8Bit(argv[1]) == QLatin1String("--root") && argc > 2) {
        return QGuiApplication::primaryScreen()->grabWindow(0).save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    pemlo::RegisterAllScreens();
    pemlo::Screens& screens = pemlo::Screens::Instance();

    QWidget* splash = screens.Get(pemlo::ScreenId::Frm_Splash);
    Save(splash, splash->size(), out.filePath("splash.png"));
    screens.Close(pemlo::ScreenId::Frm_Splash);

    QWidget* open = screens.Get(pemlo::ScreenId::Frm_OpenFile);
    Save(open, open->size(), out.filePath("open-file-as-loaded.png"));
    Save(open, open->minimumSize(), out.filePath("open-file-small.png"));
    Save(open, QSize(1100, 760), out.filePath("open-file-large.png"));
    Save(open, QSize(760, 560), out.filePath("open-file.png"));

    if (argc > 2) {
        // Load the file through the dialog as a user would, and grab the message.
        const QString file = QString::fromLocal8Bit(argv[2]);
        QTimer answer;
        answer.setInterval(50);
        QObject::connect(&answer, &QTimer::timeout, [&] {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (auto* dialog = qobject_cast<QFileDialog*>(w); dialog && dialog->isVisible()) {
                    // Typed into the file name box, as a user would.
                    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
                    QMetaObject::invokeMethod(dialog, "accept");
                } else if (auto* box = qobject_cast<QMessageBox*>(w); box && box->isVisible()) {
                    box->grab().save(out.filePath("load-message.png"));
                    box->accept();
                }
            }
        });
        answer.start();
        static_cast<pemlo::Frm_OpenFile*>(open)->Toolbar1_ButtonClick("File");
        answer.stop();
        Save(open, QSize(760, 560), out.filePath("open-file-loaded.png"));

        pemlo::Declarations& d = pemlo::TheRecord();
        d.DataFileName = argv[2];
        d.FileNum = pemlo::ProgramChannels().FreeFile();
        QWidget* preview = screens.Get(pemlo::ScreenId::Frm_ViewFile);
        Save(preview, QSize(640, 480), out.filePath("view-file.png"));
    }
    return 0;
}
