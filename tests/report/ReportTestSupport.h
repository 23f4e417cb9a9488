// What the report tests share: a printer that records every call and keeps its page as
// an image, charts with one coloured line, ink counting on a page, and the poppler
// tools that read a printed PDF back.
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Printer.h"
#include "views/ChartSurface.h"

namespace pemlo::test {

// What a recording printer saw: every call in order ("X 208.33", "Print Title: ;Acme",
// "hDC", "EndDoc") and the landscape page image the charts painted into. The test
// keeps it; the report lets go of the printer object after each page.
struct PrinterLog {
    std::vector<std::string> calls;
    QImage page;
    bool deviceFails = false;   // hDC hands out no device
    int opened = 0;             // printer objects opened on it

    bool Called(const std::string& call) const;
    // The calls from the first one equal to `from` on.
    std::vector<std::string> From(const std::string& from) const;
};

// A printer of a given page (portrait twips) and resolution that writes into a log.
class RecordingPrinter : public Printer {
public:
    RecordingPrinter(std::shared_ptr<PrinterLog> log, std::int32_t portraitWidth,
                     std::int32_t portraitHeight, double twipsPerPixel);

    void SetOrientation(Integer code) override;
    std::int32_t Width() override;
    std::int32_t Height() override;
    double TwipsPerPixelX() override;
    double TwipsPerPixelY() override;
    void SetFontName(const QString& name) override;
    void SetFontSize(double points) override;
    void SetFontBold(bool bold) override;
    void SetCurrentX(double twips) override;
    void SetCurrentY(double twips) override;
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }
    void Print(const std::vector<PrintItem>& items) override;
    void Box(double x1, double y1, double x2, double y2) override;
    QPaintDevice* hDC() override;
    void EndDoc() override;

private:
    std::shared_ptr<PrinterLog> log_;
    std::int32_t portraitWidth_;
    std::int32_t portraitHeight_;
    double twipsPerPixel_;
    Integer orientation_ = OrientationPortrait;
    double x_ = 0.0;
    double y_ = 0.0;
};

// Installs recording printers as the program's printer: a Letter page at 600 dpi
// unless told otherwise. Returns the log they share.
std::shared_ptr<PrinterLog> UseRecordingPrinter(std::int32_t portraitWidth = 12240,
                                                std::int32_t portraitHeight = 15840,
                                                double twipsPerPixel = 1440.0 / 600);

// Fills a chart with one line of the given colour against depth, as the screens do.
void FillLineChart(ChartSurface& chart, QColor colour);

// Pixels of the rectangle close to the colour (each channel within the tolerance),
// or, without a colour, pixels that are not white.
long CountInk(const QImage& image, const QRect& area, std::optional<QColor> colour = std::nullopt,
              int tolerance = 60);

// Runs a tool; nullopt when it is not installed or fails.
std::optional<QString> RunTool(const QString& program, const QStringList& arguments);
bool HaveTool(const QString& program);

// The first page of a PDF rendered at the given resolution.
QImage RenderPdf(const QString& pdf, int dotsPerInch);

struct PdfWord {
    QString text;
    double xMin = 0, yMin = 0, xMax = 0, yMax = 0;   // points from the top left
};
std::vector<PdfWord> PdfWords(const QString& pdf);
const PdfWord* FindWord(const std::vector<PdfWord>& words, const QString& text);

}  // namespace pemlo::test
