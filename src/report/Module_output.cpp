// The printed report: one landscape page, a framed header with the project information, and the screen's charts side by side below it, each drawn
// by the chart itself into its share of the page.
#include "report/Module_output.h"

#include <array>
#include <exception>

#include "core/Declarations.h"
#include "report/ReportLayout.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/ui/Printer.h"
#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

ProjectTexts ProjectOf(const Declarations& d)
{
    return ProjectTexts{QString::fromStdString(d.ProjectNumber), QString::fromStdString(d.ProjectTitle),
                        QString::fromStdString(d.ProjectDate),   QString::fromStdString(d.ProjectLocation),
                        QString::fromStdString(d.GWT),           QString::fromStdString(d.ConeNo)};
}

void PrintHeader(Printer& printer, const ReportLayout& layout)
{
    printer.Box(layout.frameLeft, layout.frameTop, layout.frameRight, layout.frameBottom);
    bool first = true;
    for (const HeaderPiece& piece : layout.pieces) {
        printer.SetCurrentX(piece.x);
        printer.SetCurrentY(piece.y);
        if (piece.weight != PieceWeight::Unchanged) printer.SetFontBold(piece.weight == PieceWeight::Bold);
        if (first) printer.SetFontSize(9);  // the header is 9 point from its first piece on
        first = false;
        printer.Print(piece.items);
    }
}

void PrintCharts(Printer& printer, const ReportLayout& layout, const std::array<ChartSurface*, 4>& charts)
{
    const std::size_t count = layout.edges.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        charts[i]->PaintTo(printer.hDC(), layout.edges[i], layout.chartTop, layout.edges[i + 1],
                           layout.chartBottom, 1, 0);
    }
}

void PrintPage(Printer& printer, const ReportCharts& report)
{
    printer.SetOrientation(OrientationLandscape);
    const std::int32_t W = printer.Width();
    printer.SetFontName(QStringLiteral("Arial"));
    printer.SetFontSize(12);
    printer.SetFontBold(true);
    const double px = printer.TwipsPerPixelX();
    const double py = printer.TwipsPerPixelY();
    const std::int32_t H = printer.Height();
    const ReportLayout layout =
        LayoutReport(ComputePageQuantities(W, H, px, py), report.count, ProjectOf(TheRecord()));

    PrintHeader(printer, layout);
    PrintCharts(printer, layout, report.charts);
    printer.EndDoc();
}

}  // namespace

std::optional<PrintFailure> PrintReportOn(Printer& printer, const ReportCharts& charts)
{
    try {
        PrintPage(printer, charts);
        return std::nullopt;
    } catch (const RunTimeError& e) {
        return PrintFailure{e.Number(), e.Message()};
    } catch (const std::exception& e) {
        // A fault of the platform beneath the printer (a font, the print system).
        return PrintFailure{ErrPrinterError, e.what()};
    }
}

void PrintReport(int ChartCount, ChartSurface& Chart1, ChartSurface& Chart2, ChartSurface& Chart3,
                 ChartSurface& Chart4)
{
    std::optional<PrintFailure> failure;
    try {
        failure = PrintReportOn(ThePrinter(), ReportCharts{ChartCount, {&Chart1, &Chart2, &Chart3, &Chart4}});
    } catch (const std::exception& e) {
        failure = PrintFailure{ErrNoPrinter, e.what()};  // no printer to open
    }
    if (!failure) {
        ForgetPrinter();
        return;
    }
    // The screen stays as it was.
    ShowMessage(nullptr, QStringLiteral(" A Printing Error ...."), QMessageBox::Critical, AppTitle());
}

}  // namespace pemlo
