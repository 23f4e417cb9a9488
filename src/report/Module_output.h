// The printed report: one landscape page with a framed project header and the
// screen's charts side by side, on the default printer or on any printer passed in.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "views/chart/ChartSurface.h"

namespace pemlo {

class Printer;

// What a screen hands the report: the chart count (3; any other count prints four)
// and four charts left to right. A screen with three charts passes its third twice.
struct ReportCharts {
    int count = 3;
    std::array<ChartSurface*, 4> charts{};
};

// Why a page was not printed: the run-time error that stopped it.
struct PrintFailure {
    int number = 0;
    std::string message;
};

// Prints the page on the printer given. A failure stops the page where it is and is
// returned: whatever was drawn stays pending with the printer, neither sent nor
// cancelled. Nothing is shown; the caller decides what to tell.
std::optional<PrintFailure> PrintReportOn(Printer& printer, const ReportCharts& charts);

// The screens' Print: the page on the default printer. Any failure shows " A Printing
// Error ...." and leaves; nothing propagates to the caller.
void PrintReport(int ChartCount, ChartSurface& Chart1, ChartSurface& Chart2, ChartSurface& Chart3,
                 ChartSurface& Chart4);

}  // namespace pemlo
