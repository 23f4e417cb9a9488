// Where everything stands on a log page, in millimetres from the page's top left
// corner, and which depths each page shows. Every column of a page measures depth
// with the one DepthAxis of that page: a depth stands on the same line in all of them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace pemlo::log {

enum class Paper { A4, Letter };

struct Box {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    double Right() const { return left + width; }
    double Bottom() const { return top + height; }
};

enum class ColumnKind { Depth, Cone, Sleeve, Ratio, PorePressure, Ic, Zone, Soil, Layers };

struct Column {
    ColumnKind kind;
    Box box;  // the plot area of the column, from the plot's top to its bottom
};

// The depths a page shows and the line each stands on.
struct DepthAxis {
    double topDepth = 0.0;     // metres, at the plot's top
    double bottomDepth = 1.0;  // metres, at the plot's bottom
    double plotTop = 0.0;      // mm
    double plotBottom = 1.0;   // mm
    double Y(double depth) const
    {
        return plotTop + (depth - topDepth) / (bottomDepth - topDepth) * (plotBottom - plotTop);
    }
};

struct LogLayout {
    double pageWidth = 0.0;
    double pageHeight = 0.0;
    Box titleBlock;
    double headerTop = 0.0;  // the columns' titles and value labels stand between this and the plot
    std::vector<Column> columns;
    Box legend;
    std::vector<DepthAxis> pages;  // one per log page, in order
};

struct Point {
    double x = 0.0;
    double y = 0.0;
};

// Where the entries of a list go when it flows down columns `columnWidth` wide, one
// entry `rowHeight` high, through the boxes in turn: the top left of each entry that
// fits, in order; fewer than `count` where they do not all fit.
std::vector<Point> FlowIntoColumns(const std::vector<Box>& boxes, double columnWidth, double rowHeight,
                                   std::size_t count);

// The page, in millimetres.
Box PageOf(Paper paper);

// The layout of a sounding's log whose deepest depth is `deepest` metres. scale 0:
// the whole sounding on one page, 0 to the deepest rounded up to a whole metre;
// otherwise 1:scale, each page taking up the depth where the last one ended.
LogLayout MakeLayout(Paper paper, bool withPorePressure, double deepest, int scale);

// Round ticks over [low, high]: a step of 1, 2, 2.5 or 5 times a power of ten giving
// at most maxTicks intervals, and the axis ends widened to whole steps.
struct Ticks {
    double low = 0.0;
    double high = 1.0;
    double step = 1.0;
};
Ticks RoundTicks(double low, double high, int maxTicks);

// The width of a tick's label in mm, as the page draws it.
using LabelWidth = std::function<double(const std::string& text)>;

// Which ticks of an axis `width` mm wide carry a label (indices from the low end): both
// ends and 0 where the axis holds it, and every k-th tick counted from 0 (from the low
// end where the axis does not reach 0), k the smallest at which no two labels come
// nearer than `gap` mm. The end labels stand inside the axis, the others centred.
std::vector<int> LabelledTicks(const Ticks& t, double width, const LabelWidth& labelWidth, double gap);

// The ticks of a value axis: RoundTicks at maxTicks or fewer, whichever the values fill
// the most of in two steps or more. A negative low end too near 0 for both labels is widened a step at a
// time until they stand apart, so that LabelledTicks labels 0 and both ends.
Ticks AxisTicks(double low, double high, int maxTicks, double width, const LabelWidth& labelWidth, double gap);

// The depth ticks of a page: a round step at least minSpacing mm apart.
double DepthStep(const DepthAxis& axis, double minSpacing);

// A tick's text: as few decimals as the step needs.
std::string TickText(double value, double step);

}  // namespace pemlo::log
