// The pages of one sounding's log: the title block on every page, the columns of each
// log page against its depth axis, the legend, and the chart page.
#pragma once

#include <QString>

#include "log/LogData.h"
#include "log/LogLayout.h"
#include "log/ui/LogPainter.h"

namespace pemlo::log {

// "3 clay 4.90–8.80 m, zone 3": a layer as the log and the chart's legend name it.
QString LayerLabel(const LogLayer& layer);

// The title block with "page i of n".
void DrawTitleBlock(PagePainter& p, const Box& box, const LogSounding& s, int page, int pages);

// One log page: the columns against the page's depth axis, then the legend.
void DrawLogPage(PagePainter& p, const LogLayout& layout, const DepthAxis& axis, const LogSounding& s);

// The soil behaviour type chart with every valid reading in its layer's colour.
void DrawChartPage(PagePainter& p, const LogLayout& layout, const LogSounding& s);

}  // namespace pemlo::log
