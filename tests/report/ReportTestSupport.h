// What the report tests share: a printer that records every call and keeps its page as
// an image, charts with one coloured line, ink counting on a page, and the poppler
// tools that read a printed PDF back.
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QStringList>
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/ui/Printer.h"
#include "views/chart/ChartSurface.h"

namespace pemlo::test {

// The colours of the test charts, one per chart position.
inline const QColor ChartColours[4] = {QColor(255, 0, 0), QColor(0, 160, 0), QColor(0, 0, 255),
                                       QColor(255, 0, 255)};

// What a recording printer saw: the texts printed ("Print Title: ;Acme"), each chart's
// device ("hDC"), the end of the page ("EndDoc"), and the landscape page image the
// charts painted into. The test keeps it; the report lets go of the printer after each
// page.
struct PrinterLog {
    std::vector<std::string> calls;
    QImage page;
    bool deviceFails = false;   // hDC hands out no device

    bool Called(const std::string& call) const { return std::find(calls.begin(), calls.end(), call) != calls.end(); }
};

// Installs recording printers as the program's printer: a Letter page at 600 dpi
// unless told otherwise. Returns the log they share.
std::shared_ptr<PrinterLog> UseRecordingPrinter(double twipsPerPixel = 1440.0 / 600);

// Fills a chart with one line of the given colour against depth, as the screens do.
void FillLineChart(ChartSurface& chart, QColor colour);

// Pixels of the rectangle close to the colour (each channel within the tolerance),
// or, without a colour, pixels that are not white.
long CountInk(const QImage& image, const QRect& area, std::optional<QColor> colour = std::nullopt,
              int tolerance = 60);

// The rows the plot of the one chart standing in the area spans: the top of its depth
// axis (the longest vertical line of black or grey) and its bottom axis (the longest
// horizontal one).
std::pair<int, int> DepthAxisRows(const QImage& image, const QRect& area);

// Runs a tool; nullopt when it is not installed or fails.
std::optional<QString> RunTool(const QString& program, const QStringList& arguments);
bool HaveTool(const QString& program);

// The first page of a PDF rendered at the given resolution.
QImage RenderPdf(const QString& pdf, int dotsPerInch);

}  // namespace pemlo::test
