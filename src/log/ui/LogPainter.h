// Drawing on a page in millimetres: the painter works in the PDF writer's device
// units, in which fonts keep their sizes in points; this turns millimetres into
// those units. Text is drawn as text and lines as lines, never as pictures.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

#include "log/LogLayout.h"
#include "views/chart/ChartSurface.h"

namespace pemlo::log {

class PagePainter {
public:
    PagePainter(QPainter& painter, double dotsPerInch) : painter_(painter), unit_(dotsPerInch / 25.4) {}

    QPainter& Painter() { return painter_; }
    double U(double mm) const { return mm * unit_; }
    QPointF P(double x, double y) const { return {U(x), U(y)}; }
    QRectF R(const Box& b) const { return {U(b.left), U(b.top), U(b.width), U(b.height)}; }

    void Line(double x1, double y1, double x2, double y2, double widthMm, const QColor& colour = Qt::black);
    void Frame(const Box& b, double widthMm, const QColor& colour = Qt::black);
    void Fill(const Box& b, const QColor& colour);
    // Text in points, aligned within the box by the Qt flags.
    void Text(const Box& b, const QString& text, double points, int flags, bool bold = false,
              const QColor& colour = Qt::black);
    // The width of a text in millimetres.
    double TextWidth(const QString& text, double points, bool bold = false) const;
    // The distance from one line of text to the next, in millimetres.
    double LineSpacing(double points, bool bold = false) const;
    // The text cut short with an ellipsis to fit the width (mm); as it is where it fits.
    QString Elided(const QString& text, double points, bool bold, double width) const;

private:
    QPainter& painter_;
    double unit_;
};

QFont LogFont(double points, bool bold = false);

// A layer boundary in metres to the centimetre; a top a rounding below 0 reads 0.00.
QString DepthText(double metres);
QColor FromRef(ColorRef c);

// The colours of the nine soil behaviour type zones (index 0 is zone 1); sand, silt
// and clay mixtures take the results view's soil colours.
QColor ZoneColour(int zone);
// A colour per layer on the chart page, so that neighbours stand apart; ten in turn.
QColor LayerColour(int number);
// A layer's marker on the chart page, centred on (x, y) and `size` across, in mm: its
// colour, and a shape for each round of the ten colours (circle, square, triangle,
// diamond, ...), so that no two of the first 80 layers look alike; open for a reading
// drawn on the chart's edge because it lies beyond it.
void DrawLayerMarker(PagePainter& p, double x, double y, double size, int number, bool open);
QColor SoilColour(int soil);  // profile::Soil as int

}  // namespace pemlo::log
