#include "info/ConePicture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace pemlo {

ConePicture::ConePicture(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void ConePicture::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    const double w = box.width();
    const double h = box.height();

    // Soil layers: sand, silt, clay, from the surface down.
    const QColor layers[] = {QColor(0xE8, 0xD3, 0x9A), QColor(0xC9, 0xB0, 0x82), QColor(0x9C, 0x8A, 0x72)};
    const double surface = box.top() + h * 0.18;
    const double band = (box.bottom() - surface) / 3.0;
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 3; ++i) {
        p.setBrush(layers[i]);
        p.drawRect(QRectF(box.left(), surface + i * band, w, band + 0.5));
    }
    p.setPen(QPen(QColor(0x5A, 0x4A, 0x3A), 1.2));
    p.drawLine(QPointF(box.left(), surface), QPointF(box.right(), surface));

    // The penetrometer: rod from above the surface, friction sleeve, conical tip.
    const double cx = box.center().x();
    const double rodHalf = w * 0.06;
    const double sleeveHalf = w * 0.09;
    const double tipBase = box.top() + h * 0.80;
    const double sleeveTop = box.top() + h * 0.60;
    const double tipPoint = box.top() + h * 0.93;

    QLinearGradient steel(cx - sleeveHalf, 0, cx + sleeveHalf, 0);
    steel.setColorAt(0.0, QColor(0x6E, 0x76, 0x80));
    steel.setColorAt(0.45, QColor(0xF2, 0xF4, 0xF6));
    steel.setColorAt(1.0, QColor(0x55, 0x5C, 0x66));
    p.setPen(QPen(QColor(0x33, 0x38, 0x40), 1.0));
    p.setBrush(steel);
    p.drawRect(QRectF(cx - rodHalf, box.top() + h * 0.02, 2 * rodHalf, sleeveTop - box.top() - h * 0.02));
    p.drawRect(QRectF(cx - sleeveHalf, sleeveTop, 2 * sleeveHalf, tipBase - sleeveTop));

    QPainterPath tip;
    tip.moveTo(cx - sleeveHalf, tipBase);
    tip.lineTo(cx + sleeveHalf, tipBase);
    tip.lineTo(cx, tipPoint);
    tip.closeSubpath();
    p.drawPath(tip);

    // Arrow of the push.
    p.setPen(QPen(QColor(0x1F, 0x4E, 0x8C), 2.0));
    const double ax = cx + w * 0.28;
    p.drawLine(QPointF(ax, box.top() + h * 0.04), QPointF(ax, box.top() + h * 0.14));
    p.drawLine(QPointF(ax, box.top() + h * 0.14), QPointF(ax - w * 0.05, box.top() + h * 0.10));
    p.drawLine(QPointF(ax, box.top() + h * 0.14), QPointF(ax + w * 0.05, box.top() + h * 0.10));
}

}  // namespace pemlo
