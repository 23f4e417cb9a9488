#include "log/ui/LogPainter.h"

#include <QFontMetricsF>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "profile/SoilLayers.h"
#include "views/chart/SoilColours.h"

namespace pemlo::log {

void PagePainter::Line(double x1, double y1, double x2, double y2, double widthMm, const QColor& colour)
{
    painter_.setPen(QPen(colour, U(widthMm), Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(P(x1, y1), P(x2, y2));
}

void PagePainter::Frame(const Box& b, double widthMm, const QColor& colour)
{
    painter_.setPen(QPen(colour, U(widthMm), Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(R(b));
}

void PagePainter::Fill(const Box& b, const QColor& colour) { painter_.fillRect(R(b), colour); }

void PagePainter::Text(const Box& b, const QString& text, double points, int flags, bool bold, const QColor& colour)
{
    painter_.setFont(LogFont(points, bold));
    painter_.setPen(colour);
    painter_.drawText(R(b), flags, text);
}

double PagePainter::TextWidth(const QString& text, double points, bool bold) const
{
    // Measured on the writer's own resolution, as it will be drawn.
    return QFontMetricsF(LogFont(points, bold), painter_.device()).horizontalAdvance(text) / unit_;
}

double PagePainter::LineSpacing(double points, bool bold) const
{
    return QFontMetricsF(LogFont(points, bold), painter_.device()).lineSpacing() / unit_;
}

QString PagePainter::Elided(const QString& text, double points, bool bold, double width) const
{
    return QFontMetricsF(LogFont(points, bold), painter_.device()).elidedText(text, Qt::ElideRight, U(width));
}

QFont LogFont(double points, bool bold)
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(points);
    font.setBold(bold);
    // Glyphs as outlines in the embedded font, never as pictures.
    font.setStyleStrategy(QFont::ForceOutline);
    return font;
}

QString DepthText(double metres)
{
    return QString::number(std::abs(metres) < 0.005 ? 0.0 : metres, 'f', 2);
}

QColor FromRef(ColorRef c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

QColor ZoneColour(int zone)
{
    static const QColor Colours[] = {
        QColor(0xC0, 0x30, 0x30),  // 1 sensitive fine-grained
        QColor(0x5A, 0x3A, 0x1E),  // 2 organic soil
        FromRef(ClayColour),       // 3 clay
        FromRef(SiltColour),       // 4 silt mixture
        QColor(0xB5, 0xC9, 0x7A),  // 5 sand mixture
        FromRef(SandColour),       // 6 sand
        QColor(0xF0, 0xB0, 0x40),  // 7 dense sand to gravelly sand
        QColor(0x9E, 0x9E, 0x9E),  // 8 very stiff sand to clayey sand
        QColor(0x7A, 0x5C, 0x9E),  // 9 very stiff fine-grained
    };
    return zone >= 1 && zone <= 9 ? Colours[zone - 1] : QColor(Qt::white);
}

QColor LayerColour(int number)
{
    static const QColor Colours[] = {
        QColor(0x1F, 0x77, 0xB4), QColor(0xD6, 0x27, 0x28), QColor(0x2C, 0xA0, 0x2C), QColor(0xFF, 0x7F, 0x0E),
        QColor(0x94, 0x67, 0xBD), QColor(0x8C, 0x56, 0x4B), QColor(0xE3, 0x77, 0xC2), QColor(0x17, 0xBE, 0xCF),
        QColor(0xBC, 0xBD, 0x22), QColor(0x44, 0x44, 0x44),
    };
    return Colours[(number - 1 + 1000) % 10];
}

namespace {

constexpr int Shapes = 8;

// A shape about the origin, reaching 1 at its farthest; empty for the circle.
QPolygonF Shape(int index)
{
    const auto star = [](int points, double inner, double turn) {
        QPolygonF polygon;
        for (int i = 0; i < 2 * points; ++i) {
            const double a = turn + i * M_PI / points, r = i % 2 == 0 ? 1.0 : inner;
            polygon << QPointF(r * std::cos(a), r * std::sin(a));
        }
        return polygon;
    };
    const double up = -M_PI / 2;
    switch (index % Shapes) {
    case 1: return star(2, 1.0, M_PI / 4);     // square
    case 2: return star(3, 0.5, up);           // triangle, point up
    case 3: return star(2, 1.0, 0.0);          // diamond
    case 4: return star(3, 0.5, -up);          // triangle, point down
    case 5: return star(4, 0.42, 0.0);         // four-pointed star
    case 6: return star(4, 0.42, M_PI / 4);    // the same, turned
    case 7: return star(5, 0.45, up);          // five-pointed star
    default: return {};                        // circle
    }
}

}  // namespace

void DrawLayerMarker(PagePainter& p, double x, double y, double size, int number, bool open)
{
    QPainter& painter = p.Painter();
    const QColor colour = LayerColour(number);
    painter.setPen(open ? QPen(colour, p.U(0.15)) : QPen(Qt::NoPen));
    painter.setBrush(open ? QBrush(Qt::NoBrush) : QBrush(colour));
    const double r = p.U(size / 2);
    QPolygonF shape = Shape((std::max(number, 1) - 1) / 10);
    if (shape.isEmpty()) {
        painter.drawEllipse(p.P(x, y), r, r);
        return;
    }
    for (QPointF& corner : shape) corner = p.P(x, y) + corner * r;
    painter.drawPolygon(shape);
}

QColor SoilColour(int soil)
{
    switch (static_cast<profile::Soil>(soil)) {
    case profile::Soil::Sand: return FromRef(SandColour);
    case profile::Soil::Silt: return FromRef(SiltColour);
    case profile::Soil::Clay: return FromRef(ClayColour);
    }
    return Qt::white;
}

}  // namespace pemlo::log
