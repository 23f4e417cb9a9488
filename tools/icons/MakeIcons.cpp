// Draws the program's icon from its cone picture (the penetrometer pushed through the
// soil layers, as the splash and the open-file screen show it) at the sizes desktops
// ask for, as PNG files in the hicolor theme's folders.
//
// Regenerate:  QT_QPA_PLATFORM=offscreen pemlo_make_icons packaging/icons   (then commit)
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <cstdio>

#include "info/ConePicture.h"

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <output folder>\n", argv[0]);
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        // Drawn large and scaled down, so that the small sizes keep the cone's outline.
        constexpr int Drawn = 512;
        pemlo::ConePicture picture;
        picture.resize(Drawn, Drawn);
        QImage image(Drawn, Drawn, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        picture.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        const QString folder = QStringLiteral("hicolor/%1x%1/apps").arg(size);
        out.mkpath(folder);
        const QString path = out.filePath(folder + QStringLiteral("/pemlo-cpt.png"));
        if (!image.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation).save(path)) return 1;
        std::printf("%s\n", qPrintable(path));
    }
    return 0;
}
