#include "info/InfoPictures.h"

#include <QColor>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace pemlo {

namespace {

QPixmap BlankPixmap(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

// Ground in three layers, as a classification would find them: sand over silt
// over clay, under a strip of sky.
void DrawGround(QPainter& painter, double s)
{
    painter.fillRect(QRectF(0, 0, s, 0.3 * s), QColor(0xd8, 0xea, 0xf8));
    const struct {
        double top;
        QColor colour;
    } layers[] = {
        {0.30, QColor(0xe8, 0xd0, 0x8a)},  // sand
        {0.52, QColor(0xc8, 0xa8, 0x78)},  // silt
        {0.74, QColor(0x9a, 0x86, 0x78)},  // clay
    };
    for (const auto& layer : layers) {
        painter.fillRect(QRectF(0, layer.top * s, s, s), layer.colour);
    }
    // A few grains in the sand.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xb0, 0x90, 0x50));
    for (int i = 0; i < 14; ++i) {
        const double x = (0.05 + 0.067 * i) * s;
        const double y = (0.34 + 0.05 * (i % 3)) * s;
        painter.drawEllipse(QPointF(x, y), 0.008 * s, 0.008 * s);
    }
}

// The rod comes down from a pushing frame; the sleeve sits above the conical tip.
void DrawCone(QPainter& painter, double s)
{
    const double cx = 0.5 * s;
    const double rod = 0.035 * s;
    painter.setPen(QPen(QColor(0x30, 0x30, 0x30), 0.01 * s));
    // Pushing frame on the surface.
    painter.setBrush(QColor(0x50, 0x60, 0x78));
    painter.drawRect(QRectF(cx - 0.2 * s, 0.14 * s, 0.4 * s, 0.06 * s));
    painter.drawRect(QRectF(cx - 0.18 * s, 0.20 * s, 0.05 * s, 0.1 * s));
    painter.drawRect(QRectF(cx + 0.13 * s, 0.20 * s, 0.05 * s, 0.1 * s));

    QLinearGradient steel(cx - rod, 0, cx + rod, 0);
    steel.setColorAt(0.0, QColor(0x90, 0x90, 0x98));
    steel.setColorAt(0.5, QColor(0xf0, 0xf0, 0xf4));
    steel.setColorAt(1.0, QColor(0x70, 0x70, 0x78));
    painter.setBrush(steel);
    painter.drawRect(QRectF(cx - rod, 0.05 * s, 2 * rod, 0.72 * s));
    // Friction sleeve.
    painter.setBrush(QColor(0xd0, 0x60, 0x30));
    painter.drawRect(QRectF(cx - rod, 0.67 * s, 2 * rod, 0.1 * s));
    // Conical tip.
    painter.setBrush(steel);
    const QPolygonF tip({QPointF(cx - rod, 0.77 * s), QPointF(cx + rod, 0.77 * s), QPointF(cx, 0.86 * s)});
    painter.drawPolygon(tip);
}

}  // namespace

QPixmap DrawConePicture(int size)
{
    QPixmap pixmap = BlankPixmap(size);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const double s = size;
    QPainterPath frame;
    frame.addRoundedRect(QRectF(0, 0, s, s), 0.08 * s, 0.08 * s);
    painter.setClipPath(frame);
    DrawGround(painter, s);
    DrawCone(painter, s);
    painter.setClipping(false);
    painter.setPen(QPen(QColor(0x40, 0x40, 0x40), 0.015 * s));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(frame);
    return pixmap;
}

QPixmap DrawHelpPicture(int size)
{
    QPixmap pixmap = BlankPixmap(size);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const double s = size;
    QLinearGradient disc(0, 0, 0, s);
    disc.setColorAt(0.0, QColor(0x4a, 0x90, 0xd8));
    disc.setColorAt(1.0, QColor(0x1c, 0x50, 0x98));
    painter.setPen(QPen(QColor(0x10, 0x30, 0x60), 0.02 * s));
    painter.setBrush(disc);
    painter.drawEllipse(QRectF(0.04 * s, 0.04 * s, 0.92 * s, 0.92 * s));
    QFont font(QStringLiteral("Liberation Serif"));
    font.setBold(true);
    font.setPixelSize(static_cast<int>(0.62 * s));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, 0, s, s), Qt::AlignCenter, QStringLiteral("?"));
    return pixmap;
}

}  // namespace pemlo
