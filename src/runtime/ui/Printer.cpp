// The printer object over a Qt printer. Lengths arrive in twips from the page corner
// and become device pixels through the printer's twips per pixel; the page is begun
// at the first drawing and sent by EndDoc.
#include "runtime/ui/Printer.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <cmath>

#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

constexpr double TwipsPerInch = 1440.0;
constexpr int ColumnsPerPrintZone = 14;

class QtPrinter final : public Printer {
public:
    explicit QtPrinter(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer))
    {
        if (!printer_ || !printer_->isValid()) Raise(ErrPrinterError);
        printer_->setFullPage(false);
        UseHardwareMargins();
        font_.setFamily(QStringLiteral("Arial"));
        font_.setPointSizeF(12);
    }
    ~QtPrinter() override
    {
        // A page left pending by a failed print goes out with the printer object: at
        // the next successful print, or when the program ends.
        if (painter_) painter_->end();
    }

    void SetOrientation(Integer code) override
    {
        printer_->setPageOrientation(code == OrientationLandscape ? QPageLayout::Landscape
                                                                  : QPageLayout::Portrait);
        UseHardwareMargins();
    }
    std::int32_t Width() override { return ToTwips(printer_->pageLayout().fullRect(QPageLayout::Inch).width()); }
    std::int32_t Height() override { return ToTwips(printer_->pageLayout().fullRect(QPageLayout::Inch).height()); }
    double TwipsPerPixelX() override { return TwipsPerInch / printer_->logicalDpiX(); }
    double TwipsPerPixelY() override { return TwipsPerInch / printer_->logicalDpiY(); }

    void SetFontName(const QString& name) override { font_.setFamily(name); }
    void SetFontSize(double points) override { font_.setPointSizeF(points); }
    void SetFontBold(bool bold) override { font_.setBold(bold); }

    void SetCurrentX(double twips) override { x_ = twips; }
    void SetCurrentY(double twips) override { y_ = twips; }
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }

    void Print(const std::vector<PrintItem>& items) override
    {
        QPainter& painter = Page();
        painter.setFont(font_);
        painter.setPen(Qt::black);
        const QFontMetricsF metrics(font_, printer_.get());
        const double px = TwipsPerPixelX();
        const double py = TwipsPerPixelY();
        const double zone = ColumnsPerPrintZone * metrics.averageCharWidth() * px;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i > 0 && items[i].before == PrintSeparator::NextZone)
                x_ = (std::floor(x_ / zone) + 1) * zone;
            painter.drawText(QPointF(x_ / px, y_ / py + metrics.ascent()), items[i].text);
            x_ += metrics.horizontalAdvance(items[i].text) * px;
        }
        x_ = 0;
        y_ += metrics.height() * py;
    }

    void Box(double x1, double y1, double x2, double y2) override
    {
        QPainter& painter = Page();
        const double px = TwipsPerPixelX();
        const double py = TwipsPerPixelY();
        painter.setPen(QPen(Qt::black, 1.0));  // one device pixel, as the printer drew it
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(QPointF(x1 / px, y1 / py), QPointF(x2 / px, y2 / py)).normalized());
    }

    QPaintDevice* hDC() override
    {
        Page();
        return printer_.get();
    }

    void EndDoc() override
    {
        if (!painter_) return;  // nothing drawn: nothing to send
        const bool sent = painter_->end();
        painter_.reset();
        if (!sent) Raise(ErrPrinterError);
    }

private:
    // Coordinates count from the corner of the printable area, where printers have
    // always put them: on paper without hardware margins (a PDF, a PDF queue) that is
    // the sheet's corner; on a printer with margins the page moves in by them instead
    // of losing the header frame and the first depth labels to the unprintable edge,
    // and the usable 95 percent of the width leaves room for that. Qt's own default
    // margins would move every page in by 10 points more.
    void UseHardwareMargins()
    {
        const QPageLayout layout = printer_->pageLayout();
        printer_->setPageMargins(layout.minimumMargins(), layout.units());
    }

    static std::int32_t ToTwips(double inches) { return RoundToLong(inches * TwipsPerInch); }

    QPainter& Page()
    {
        if (!painter_) {
            auto painter = std::make_unique<QPainter>();
            if (!painter->begin(printer_.get())) Raise(ErrPrinterError);
            painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
            painter_ = std::move(painter);
        }
        return *painter_;
    }

    std::unique_ptr<QPrinter> printer_;
    std::unique_ptr<QPainter> painter_;
    QFont font_;
    double x_ = 0.0;
    double y_ = 0.0;
};

std::unique_ptr<Printer> OpenDefaultPrinter()
{
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) Raise(ErrNoPrinter);
    auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    printer->setResolution(ReportResolution(info.supportedResolutions()));
    printer->setDocName(QStringLiteral("Pemlo CPT report"));
    return MakeQtPrinter(std::move(printer));
}

struct PrinterState {
    PrinterFactory factory;
    std::unique_ptr<Printer> held;
    bool cleanupRegistered = false;
};

PrinterState& State()
{
    static PrinterState state;
    return state;
}

// The printer object must go before the application does: ending a pending page
// needs the fonts and the print system that the application holds.
void ReleaseAtExit() { State().held.reset(); }

}  // namespace

int ReportResolution(const QList<int>& offered)
{
    int chosen = 0;
    for (const int dpi : offered)
        if (dpi > chosen && dpi <= ReportLayoutDotsPerInch) chosen = dpi;
    return chosen > 0 ? chosen : ReportLayoutDotsPerInch;
}

std::unique_ptr<Printer> MakeQtPrinter(std::unique_ptr<QPrinter> printer)
{
    return std::make_unique<QtPrinter>(std::move(printer));
}

std::unique_ptr<QPrinter> MakePdfQPrinter(const QString& path, int dotsPerInch, const QString& paper)
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(path);
    printer->setResolution(ReportResolution({dotsPerInch}));
    printer->setPageSize(paper.compare(QStringLiteral("A4"), Qt::CaseInsensitive) == 0
                             ? QPageSize(QPageSize::A4)
                             : QPageSize(QPageSize::Letter));
    printer->setDocName(QStringLiteral("Pemlo CPT report"));
    return printer;
}

Printer& ThePrinter()
{
    PrinterState& state = State();
    if (!state.held) {
        state.held = state.factory ? state.factory() : OpenDefaultPrinter();
        if (!state.held) Raise(ErrNoPrinter);
        if (!state.cleanupRegistered && QCoreApplication::instance()) {
            qAddPostRoutine(ReleaseAtExit);
            state.cleanupRegistered = true;
        }
    }
    return *state.held;
}

void ForgetPrinter() { State().held.reset(); }

void SetPrinterFactory(PrinterFactory factory)
{
    PrinterState& state = State();
    state.held.reset();
    state.factory = std::move(factory);
}

}  // namespace pemlo
