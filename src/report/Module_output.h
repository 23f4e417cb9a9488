// The printed report: one landscape page on the default printer with a framed
// project header and the screen's charts side by side.
#pragma once

#include "views/ChartSurface.h"

namespace pemlo {

// Prints ChartCount charts (3; any other count prints four) left to right. A caller
// with three charts passes its third chart twice. Any failure shows " A Printing
// Error ...." and leaves; nothing propagates to the caller.
void PrintReport(int ChartCount, ChartSurface& Chart1, ChartSurface& Chart2, ChartSurface& Chart3,
                 ChartSurface& Chart4);

}  // namespace pemlo
