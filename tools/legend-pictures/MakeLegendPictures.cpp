// Draws the two legend pictures of the result screens once, as fixed bitmaps that
// ship with the program: the soil legend (three colour squares with "% Sand",
// "% Silt", "% Clay") under the probability chart, and the index legend (a blue
// line sample with "U", a dark red one with "V") under the U and V charts.
// The screens show these files as they are and never draw them at run time.
//
// Regenerate:  pemlo_make_legend_pictures <output folder>   (then commit both PNGs)
#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPolygon>
#include <QString>
#include <cstdio>

namespace {

const QColor Background(212, 208, 200);

QFont LegendFont(int pixelSize)
{
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixelSize);
    font.setStyleStrategy(QFont::NoAntialias);  // a crisp 24-bit bitmap, no blended edges
    return font;
}

// 215 x 19: squares of 13 x 13 at columns 3, 82, 161, rows 3 to 15, text beside each.
QImage SoilLegend()
{
    QImage image(215, 19, QImage::Format_RGB888);
    image.fill(Background);
    QPainter painter(&image);
    painter.setFont(LegendFont(11));
    struct Entry {
        int column;
        QColor colour;
        const char* text;
    };
    const Entry entries[] = {
        {3, QColor(255, 255, 153), "% Sand"},
        {82, QColor(102, 128, 128), "% Silt"},
        {161, QColor(128, 64, 64), "% Clay"},
    };
    for (const Entry& e : entries) {
        painter.fillRect(e.column, 3, 13, 13, e.colour);
        painter.setPen(Qt::black);
        painter.drawText(QRect(e.column + 18, 2, 56, 15), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::fromLatin1(e.text));
    }
    return image;
}

// A short jagged line in a thin black frame, followed by its letter.
void LineSample(QPainter& painter, int left, const QColor& colour, const QString& letter)
{
    const QRect frame(left, 6, 44, 17);
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
    QPolygon zigzag;
    const int ys[] = {18, 11, 16, 9, 14, 10, 17};
    for (int i = 0; i < 7; ++i) {
        zigzag << QPoint(left + 4 + i * 6, ys[i]);
    }
    painter.setPen(QPen(colour, 2));
    painter.drawPolyline(zigzag);
    painter.setPen(Qt::black);
    painter.drawText(QRect(left + 52, 4, 24, 22), Qt::AlignLeft | Qt::AlignVCenter, letter);
}

// 208 x 30: the blue U sample at the left, the dark red V sample right of the middle.
QImage IndexLegend()
{
    QImage image(208, 30, QImage::Format_RGB888);
    image.fill(Background);
    QPainter painter(&image);
    QFont font = LegendFont(15);
    font.setBold(true);
    painter.setFont(font);
    LineSample(painter, 10, QColor(0, 0, 255), QStringLiteral("U"));
    LineSample(painter, 116, QColor(128, 0, 0), QStringLiteral("V"));
    return image;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <output folder>\n", argv[0]);
        return 2;
    }
    QGuiApplication app(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const bool ok = SoilLegend().save(folder + QStringLiteral("/SoilLegend.png"), "PNG") &&
                    IndexLegend().save(folder + QStringLiteral("/IndexLegend.png"), "PNG");
    if (!ok) {
        std::fprintf(stderr, "could not write the pictures into %s\n", argv[1]);
        return 1;
    }
    return 0;
}
