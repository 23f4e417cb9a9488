// The default printer as the program's report sees it: a page whose lengths are in
// twips (1/1440 inch), a font, a text position, lists of text items, rectangle
// outlines, the device the charts paint into, and the end of the document that sends
// the page. One program-wide printer object, opened on first use from the system's
// default printer; tests and the command line put a PDF printer in its place.
#pragma once

#include <QList>
#include <QPrinter>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "runtime/Arith.h"

class QPaintDevice;

namespace pemlo {

// How an item of a printed list stands to the one before it: run on directly, or
// start at the next print zone (the next multiple of 14 average character widths of
// the current font, counted from the left edge of the page).
enum class PrintSeparator { Join, NextZone };

struct PrintItem {
    PrintSeparator before = PrintSeparator::Join;  // ignored for the first item
    QString text;
};

constexpr Integer OrientationPortrait = 1;
constexpr Integer OrientationLandscape = 2;

// Error numbers of the printer: no printer at all, and a printer that fails.
constexpr int ErrPrinterError = 482;
constexpr int ErrNoPrinter = 484;

class Printer {
public:
    virtual ~Printer() = default;

    virtual void SetOrientation(Integer code) = 0;
    virtual std::int32_t Width() = 0;   // the whole page, twips
    virtual std::int32_t Height() = 0;
    virtual double TwipsPerPixelX() = 0;
    virtual double TwipsPerPixelY() = 0;

    virtual void SetFontName(const QString& name) = 0;
    virtual void SetFontSize(double points) = 0;
    virtual void SetFontBold(bool bold) = 0;

    // The text position in twips from the page corner: the top left of the next text.
    virtual void SetCurrentX(double twips) = 0;
    virtual void SetCurrentY(double twips) = 0;
    virtual double CurrentX() const = 0;
    virtual double CurrentY() const = 0;

    // Prints the items from the text position and ends the print line: the position
    // goes back to the left edge, one line lower.
    virtual void Print(const std::vector<PrintItem>& items) = 0;
    // A black outline between two corners, twips.
    virtual void Box(double x1, double y1, double x2, double y2) = 0;
    // The page being printed, in device pixels; valid until EndDoc. Whoever paints into
    // it while the page is open must use the painter already active on it
    // (device->paintEngine()->painter()): a device takes one painter at a time.
    virtual QPaintDevice* hDC() = 0;
    // Sends the page to the printer.
    virtual void EndDoc() = 0;
};

// The resolution the report's page is laid out for. Its header rows stand 4 m and
// 4 m + 216.6 twips from the top while the charts start 6 m pixels down (m = 100 / px):
// up to 600 dots per inch both rows stay above the charts; at 1200 the second row
// falls under them and is painted out.
constexpr int ReportLayoutDotsPerInch = 600;

// The resolution a page is printed at on a printer offering these resolutions: the
// highest of them up to the layout's 600 dpi; 600 itself where none is that low (the
// page is drawn in vectors, so the printer takes it at any resolution).
int ReportResolution(const QList<int>& offered);

// A printer object over a Qt printer, which it owns: used for the system's default
// printer and for PDF files. Raises ErrPrinterError when the printer is not valid or
// refuses to start the page.
std::unique_ptr<Printer> MakeQtPrinter(std::unique_ptr<QPrinter> printer);

// A PDF file printer of the given page ("Letter", "A4") that offers resolutions up to
// dotsPerInch, printing at ReportResolution of them.
std::unique_ptr<QPrinter> MakePdfQPrinter(const QString& path, int dotsPerInch, const QString& paper);

// The program's printer object, opened on first use: the system's default printer in
// high resolution, or whatever the installed factory makes. Raises ErrNoPrinter when
// there is no default printer.
Printer& ThePrinter();

// Lets go of the printer object after its document ended, so that the next print
// goes to the default printer of that moment. A document left open by a failure
// stays pending instead, as the user's printer would keep it.
void ForgetPrinter();

// Replaces the way the printer object is opened (tests, the command line); an empty
// factory restores the system's default printer. Drops any printer object held.
using PrinterFactory = std::function<std::unique_ptr<Printer>()>;
void SetPrinterFactory(PrinterFactory factory);

}  // namespace pemlo
