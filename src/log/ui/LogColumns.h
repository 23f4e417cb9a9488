// What the columns of a log page share: the frame with the page's depth grid, the
// trace colours (the legend names them too), and the columns drawn in files of their
// own: the value columns with their traces, and the layers.
#pragma once

#include <QColor>
#include <QString>

#include "log/LogData.h"
#include "log/LogLayout.h"
#include "log/ui/LogPainter.h"

namespace pemlo::log {

inline constexpr double TitlePoints = 7.5;
inline constexpr double TickPoints = 6.0;
inline constexpr double LabelPoints = 6.3;
inline constexpr double TickLabelHeight = 3.2;
inline constexpr double FrameWidth = 0.25;
inline constexpr double GridWidth = 0.1;

inline const QColor ConeBlue{0x00, 0x00, 0xFF};  // the CPT data screen's tip colour
inline const QColor SleeveGreen{0x00, 0x99, 0x00};
inline const QColor RatioRed{0xFF, 0x00, 0x00};
inline const QColor QtColour{0xC0, 0x00, 0x60};

// A tick label's width as the axes draw it, and the least room between two labels.
inline LabelWidth TickLabelWidth(const PagePainter& p)
{
    return [&p](const std::string& text) { return p.TextWidth(QString::fromStdString(text), TickPoints); };
}
inline constexpr double TickLabelGap = 1.0;

// The column's frame, its value grid and labels (none without ticks), and the page's depth grid.
void DrawFrame(PagePainter& p, const Box& b, const DepthAxis& axis, double depthStep, const QString& title,
               const Ticks* ticks, double headerTop);

// A column of measured or derived values (qc and qt, fs, Rf, u2 and u0, Ic): frame, grid and traces.
void DrawValueColumn(PagePainter& p, const Column& column, const DepthAxis& axis, double depthStep, double headerTop,
                     const LogSounding& s);

// The layers as blocks in their soil's colour down to `end`, the deepest reading, each
// labelled, and the end of the sounding marked on the page that shows it.
void DrawLayers(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<LogLayer>& layers, double end);

}  // namespace pemlo::log
